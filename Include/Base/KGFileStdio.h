// KGFileStdio: a text file read line by line in large blocks.
//
// Threads: one reader belongs to one thread at a time.
#pragma once

#include <cstdint>
#include <cstdio>
#include <string>

#include "Base/PlixUnicodeString.h"
#include "Base/VlBaseExport.h"

namespace KGC {

enum KGStreamDirection : int32_t { KGStreamWrite = 1, KGStreamRead = 2 };

class VLBASE_API KGFileStdio {
public:
    KGFileStdio() = default;
    ~KGFileStdio();
    KGFileStdio(const KGFileStdio&) = delete;
    KGFileStdio& operator=(const KGFileStdio&) = delete;

    // Opens for reading (direction KGStreamRead); size is a hint for the read block (kept within
    // 64 KiB..4 MiB); charset 0 or 1 reads UTF-8 with an optional BOM, invalid bytes becoming
    // U+FFFD. Anything but a regular file (FIFO, device, socket, directory) and files over
    // MaxFileSize are refused before a byte is read; GetError says why.
    bool Open(const PLIX::PlixUnicodeString& path, int direction, int size, int charset);
    // One line without its "\n" (a "\r" before it is kept); empty at end of file.
    PLIX::PlixUnicodeString ReadLine();
    // The same into line, reusing its storage: for readers that go through a file line by line.
    void ReadLine(PLIX::PlixUnicodeString& line);
    // True once every byte of the file has been returned (or no file is open).
    bool IsEOF();
    void Close();
    bool IsOpen() const { return m_file != nullptr; }
    // Why the last Open failed; empty after a success.
    const std::string& GetError() const { return m_error; }

    static constexpr long long MaxFileSize = 64LL * 1024 * 1024;

private:
    bool Fill();

    FILE* m_file = nullptr;
    std::string m_buffer;
    size_t m_pos = 0;
    size_t m_blockSize = 65536;
    bool m_fileEnd = true;
    bool m_firstBlock = true;
    unsigned long long m_left = 0;
    std::string m_error;
};

}  // namespace KGC
