// Decoding of the importers' input files and the one-piece writes of their output files.
#include "ImportText.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>

namespace vlchart {

bool IsUtf8(const std::string& bytes) {
    size_t i = 0;
    const size_t n = bytes.size();
    while (i < n) {
        const unsigned char c = static_cast<unsigned char>(bytes[i]);
        size_t extra = 0;
        unsigned long code = 0;
        unsigned long least = 0;
        if (c < 0x80) {
            ++i;
            continue;
        } else if ((c & 0xE0) == 0xC0) {
            extra = 1, code = c & 0x1F, least = 0x80;
        } else if ((c & 0xF0) == 0xE0) {
            extra = 2, code = c & 0x0F, least = 0x800;
        } else if ((c & 0xF8) == 0xF0) {
            extra = 3, code = c & 0x07, least = 0x10000;
        } else {
            return false;
        }
        for (size_t k = 1; k <= extra; ++k) {
            if (i + k >= n) return false;
            const unsigned char next = static_cast<unsigned char>(bytes[i + k]);
            if ((next & 0xC0) != 0x80) return false;
            code = (code << 6) | (next & 0x3F);
        }
        if (code < least || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return false;
        i += extra + 1;
    }
    return true;
}

bool Windows1252ToUtf8(const std::string& bytes, std::string& utf8) {
    // 0x80 to 0x9F; zero marks the bytes the code page leaves undefined.
    static const unsigned short kHigh[32] = {
        0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};
    std::string out;
    out.reserve(bytes.size());
    for (char byte : bytes) {
        unsigned code = static_cast<unsigned char>(byte);
        if (code >= 0x80 && code < 0xA0) {
            code = kHigh[code - 0x80];
            if (code == 0) return false;
        }
        if (code < 0x80) {
            out += static_cast<char>(code);
        } else if (code < 0x800) {
            out += static_cast<char>(0xC0 | (code >> 6));
            out += static_cast<char>(0x80 | (code & 0x3F));
        } else {
            out += static_cast<char>(0xE0 | (code >> 12));
            out += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (code & 0x3F));
        }
    }
    utf8 = std::move(out);
    return true;
}

bool AsUtf8(const std::string& bytes, std::string& utf8) {
    if (IsUtf8(bytes)) {
        utf8 = bytes;
        return true;
    }
    return Windows1252ToUtf8(bytes, utf8);
}

bool ReadBytes(const std::string& path, std::string& bytes) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return false;
    bytes.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

bool WriteBytes(const std::string& path, const std::string& bytes, std::string& error) {
    const std::string temporary = path + ".part";
    FILE* file = std::fopen(temporary.c_str(), "wb");
    if (file == nullptr) {
        error = path + ": " + std::strerror(errno);
        return false;
    }
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    const bool closed = std::fclose(file) == 0;
    if (!written || !closed || std::rename(temporary.c_str(), path.c_str()) != 0) {
        error = path + ": " + std::strerror(errno);
        std::remove(temporary.c_str());
        return false;
    }
    return true;
}

}  // namespace vlchart
