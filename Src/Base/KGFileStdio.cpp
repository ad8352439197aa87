// Line-by-line reading of a text file in large blocks, UTF-8 with invalid bytes replaced.
#include "Base/KGFileStdio.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "Base/PlixTypes.h"

namespace KGC {
namespace {

// A line longer than this is cut: the rest up to its line end is skipped, so that a file
// without line ends cannot make the reader hold it whole.
constexpr size_t kMaxLineBytes = 16u * 1024 * 1024;
constexpr size_t kMinBlock = 64u * 1024;
// A caller's block size is a hint; beyond this it would only waste memory.
constexpr size_t kMaxBlock = 4u * 1024 * 1024;

}  // namespace

KGFileStdio::~KGFileStdio() {
    Close();
}

bool KGFileStdio::Open(const PLIX::PlixUnicodeString& path, int direction, int size, int charset) {
    Close();
    if (direction != KGStreamRead) return false;
    if (charset != PLIX::PLIXCharset::Default && charset != PLIX::PLIXCharset::UTF8) return false;
    if (path.IsEmpty()) return false;
    const std::string file = path.ToUtf8();
    // Non-blocking, so that a FIFO is refused below instead of waiting for a writer.
    const int fd = ::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    if (fd < 0) {
        m_error = file + ": " + std::strerror(errno);
        return false;
    }
    struct stat st {};
    const char* refused = nullptr;
    if (::fstat(fd, &st) != 0) {
        refused = "cannot be examined";
    } else if (!S_ISREG(st.st_mode)) {
        // A device such as /dev/zero would be read forever.
        refused = "is not a regular file";
    } else if (st.st_size > MaxFileSize) {
        refused = "is larger than the look-up table limit";
    }
    FILE* f = refused == nullptr ? ::fdopen(fd, "rb") : nullptr;
    if (f == nullptr) {
        m_error = file + " " + (refused ? refused : "cannot be read");
        ::close(fd);
        return false;
    }
    m_error.clear();
    m_left = static_cast<unsigned long long>(MaxFileSize);
    m_file = f;
    m_blockSize = std::clamp(size > 0 ? static_cast<size_t>(size) : 0, kMinBlock, kMaxBlock);
    m_buffer.clear();
    m_pos = 0;
    m_fileEnd = false;
    m_firstBlock = true;
    return true;
}

bool KGFileStdio::Fill() {
    if (m_file == nullptr || m_fileEnd) return false;
    if (m_pos > 0) {
        m_buffer.erase(0, m_pos);
        m_pos = 0;
    }
    size_t old = m_buffer.size();
    // A file that grows while it is read still stops at the cap.
    const size_t want = static_cast<size_t>(std::min<unsigned long long>(m_blockSize, m_left));
    m_buffer.resize(old + want);
    size_t got = want > 0 ? fread(&m_buffer[old], 1, want, m_file) : 0;
    m_buffer.resize(old + got);
    m_left -= got;
    if (got < m_blockSize) m_fileEnd = true;
    if (m_firstBlock && (m_buffer.size() >= 3 || m_fileEnd)) {
        m_firstBlock = false;
        if (m_buffer.compare(0, 3, "\xEF\xBB\xBF") == 0) m_pos = 3;
    }
    return got > 0;
}

PLIX::PlixUnicodeString KGFileStdio::ReadLine() {
    PLIX::PlixUnicodeString line;
    ReadLine(line);
    return line;
}

void KGFileStdio::ReadLine(PLIX::PlixUnicodeString& line) {
    std::u16string& out = line.Str();
    // Not cleared first: the decoder sizes out itself, and a string that already holds the
    // previous line needs no zero fill.
    if (m_file == nullptr) {
        out.clear();
        return;
    }
    size_t scanned = m_pos;
    while (true) {
        const char* start = m_buffer.data() + scanned;
        const void* nl = memchr(start, '\n', m_buffer.size() - scanned);
        if (nl != nullptr) {
            size_t end = static_cast<size_t>(static_cast<const char*>(nl) - m_buffer.data());
            size_t len = std::min(end - m_pos, kMaxLineBytes);
            PLIX::Utf8ToUtf16(m_buffer.data() + m_pos, len, out);
            m_pos = end + 1;
            return;
        }
        if (m_buffer.size() - m_pos >= kMaxLineBytes) {
            // Keep the first part of an overlong line and drop the rest up to its line end.
            PLIX::Utf8ToUtf16(m_buffer.data() + m_pos, kMaxLineBytes, out);
            while (true) {
                const void* hit = memchr(m_buffer.data() + m_pos, '\n', m_buffer.size() - m_pos);
                if (hit != nullptr) {
                    m_pos =
                        static_cast<size_t>(static_cast<const char*>(hit) - m_buffer.data()) + 1;
                    break;
                }
                m_pos = m_buffer.size();
                if (!Fill()) break;
            }
            return;
        }
        if (m_fileEnd) {
            PLIX::Utf8ToUtf16(m_buffer.data() + m_pos, m_buffer.size() - m_pos, out);
            m_pos = m_buffer.size();
            return;
        }
        size_t before = m_buffer.size() - m_pos;
        Fill();
        scanned = m_pos + before;
        if (m_pos > scanned) scanned = m_pos;  // a byte-order mark was skipped
    }
}

bool KGFileStdio::IsEOF() {
    if (m_file == nullptr) return true;
    if (m_pos < m_buffer.size()) return false;
    if (m_fileEnd) return true;
    Fill();
    return m_pos >= m_buffer.size() && m_fileEnd;
}

void KGFileStdio::Close() {
    if (m_file != nullptr) fclose(m_file);
    m_file = nullptr;
    m_buffer.clear();
    m_buffer.shrink_to_fit();
    m_pos = 0;
    m_fileEnd = true;
}

}  // namespace KGC
