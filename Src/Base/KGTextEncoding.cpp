// Byte encodings of XML documents: byte order marks and UTF-16 are handled here, every
// other named encoding goes through glibc's iconv.
#include "KGTextEncoding.h"

#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "Base/PlixUnicodeString.h"

namespace KGC {
namespace TextEncoding {
namespace {

// Upper case without '-' and '_', so "utf-8", "UTF8" and "Utf_8" compare equal.
std::string Canonical(const std::string& name) {
    std::string out;
    for (char c : name) {
        if (c == '-' || c == '_') continue;
        out.push_back((c >= 'a' && c <= 'z') ? static_cast<char>(c - 'a' + 'A') : c);
    }
    return out;
}

bool IsUtf8Name(const std::string& name) {
    std::string c = Canonical(name);
    return c.empty() || c == "UTF8";
}

bool IsUtf16Name(const std::string& name) {
    std::string c = Canonical(name);
    return c == "UTF16" || c == "UTF16LE" || c == "UTF16BE" || c == "UCS2";
}

class Converter {
public:
    Converter(const char* to, const char* from) : m_cd(iconv_open(to, from)) {}
    ~Converter() {
        if (IsOpen()) iconv_close(m_cd);
    }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;
    bool IsOpen() const { return m_cd != reinterpret_cast<iconv_t>(-1); }

    // Converts [in, in + size) and appends to out. Stops at the first byte sequence that
    // cannot be converted: returns false with its offset in failedAt (size when the input
    // ends inside a sequence).
    bool Append(const char* in, size_t size, std::string& out, size_t& failedAt) {
        char* src = const_cast<char*>(in);
        size_t srcLeft = size;
        size_t used = out.size();
        out.resize(used + size * 2 + 16);
        for (;;) {
            char* dst = &out[used];
            size_t dstLeft = out.size() - used;
            size_t rc = iconv(m_cd, &src, &srcLeft, &dst, &dstLeft);
            used = out.size() - dstLeft;
            if (rc != static_cast<size_t>(-1)) {
                // Flush the shift state of stateful encodings.
                rc = iconv(m_cd, nullptr, nullptr, &dst, &dstLeft);
                if (rc == static_cast<size_t>(-1) && errno == E2BIG) {
                    out.resize(out.size() + 16);
                    continue;
                }
                out.resize(out.size() - dstLeft);
                return true;
            }
            if (errno == E2BIG) {
                out.resize(out.size() * 2);
                continue;
            }
            out.resize(used);
            failedAt = errno == EINVAL ? size : static_cast<size_t>(src - in);
            return false;
        }
    }

private:
    iconv_t m_cd;
};

// The code point of the UTF-8 sequence at s, and its length; U+FFFD and 1 for a bad byte.
char32_t DecodeOne(const unsigned char* s, size_t left, size_t& length) {
    length = 1;
    unsigned char c = s[0];
    int extra = c >= 0xF0 ? 3 : c >= 0xE0 ? 2 : c >= 0xC0 ? 1 : 0;
    if (extra == 0 || static_cast<size_t>(extra) >= left) return 0xFFFD;
    char32_t cp = c & (0x3F >> extra);
    for (int i = 1; i <= extra; ++i) {
        if ((s[i] & 0xC0) != 0x80) return 0xFFFD;
        cp = (cp << 6) | (s[i] & 0x3F);
    }
    length = static_cast<size_t>(extra) + 1;
    return cp;
}

// Known to iconv, and writing markup as ASCII: the declaration is found by reading the bytes
// as ASCII, so an encoding that writes "<" otherwise (UTF-7, EBCDIC, UCS-4) would save a file
// that cannot be read back.
bool IsUsableIconvEncoding(const std::string& name) {
    Converter in("UTF-8", name.c_str());
    Converter out(name.c_str(), "UTF-8");
    if (!in.IsOpen() || !out.IsOpen()) return false;
    static const std::string probe =
        "<?xml version=\"1.0\" encoding='x-_.09AZaz'?>\n<a b=\"c\">&#x3B; [/]\t\r</a>";
    std::string written;
    size_t failedAt = 0;
    return out.Append(probe.data(), probe.size(), written, failedAt) && written == probe;
}

// XML's rule for encoding names. iconv is more forgiving (it skips characters it does not
// expect), which would let a name through that reads differently once written back.
bool IsValidName(const std::string& name) {
    for (size_t i = 0; i < name.size(); ++i) {
        const char c = name[i];
        const bool letter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
        if (letter || (i > 0 && ((c >= '0' && c <= '9') || c == '.' || c == '_' || c == '-'))) {
            continue;
        }
        return false;
    }
    return true;
}

bool FromName(const std::string& declared, Encoding& encoding, std::string& error) {
    encoding = Encoding();
    if (!IsValidName(declared)) {
        error = "invalid encoding name \"" + declared + "\"";
        return false;
    }
    if (IsUtf8Name(declared)) return true;
    if (IsUtf16Name(declared)) {
        encoding.form = Canonical(declared) == "UTF16BE" ? Form::Utf16BE : Form::Utf16LE;
        encoding.bom = true;
        encoding.name = encoding.form == Form::Utf16BE ? "UTF-16BE" : "UTF-16LE";
        return true;
    }
    if (!IsUsableIconvEncoding(declared)) {
        error = "unsupported encoding \"" + declared + "\"";
        return false;
    }
    encoding.form = Form::Iconv;
    encoding.name = declared;
    return true;
}

}  // namespace

bool StartsWithDeclaration(const char* data, size_t size) {
    // pugixml takes "<?xml" followed by a blank or "?" as the declaration.
    return size >= 6 && std::memcmp(data, "<?xml", 5) == 0 && data[5] != '\0' &&
           std::strchr(" \t\r\n?", data[5]) != nullptr;
}

bool Agrees(const Encoding& encoding, const std::string& declared) {
    if (declared.empty()) return true;
    switch (encoding.form) {
        case Form::Utf8:
            return IsUtf8Name(declared);
        case Form::Utf16LE:
        case Form::Utf16BE:
            return IsUtf16Name(declared);
        case Form::Iconv:
            break;
    }
    return declared == encoding.name;
}

std::string DeclaredEncoding(const char* data, size_t size) {
    if (!StartsWithDeclaration(data, size)) return std::string();
    // A declaration is short; a bounded look keeps a huge first line from being scanned.
    const size_t limit = size < 4096 ? size : 4096;
    std::string decl(data, limit);
    size_t end = decl.find("?>");
    if (end == std::string::npos) return std::string();
    decl.resize(end);
    for (size_t pos = decl.find("encoding"); pos != std::string::npos;
         pos = decl.find("encoding", pos + 1)) {
        if (std::strchr(" \t\r\n", decl[pos - 1]) == nullptr) continue;
        size_t i = pos + 8;
        while (i < decl.size() && std::strchr(" \t\r\n", decl[i]) != nullptr) ++i;
        if (i >= decl.size() || decl[i] != '=') continue;
        ++i;
        while (i < decl.size() && std::strchr(" \t\r\n", decl[i]) != nullptr) ++i;
        if (i >= decl.size() || (decl[i] != '"' && decl[i] != '\'')) continue;
        size_t close = decl.find(decl[i], i + 1);
        if (close == std::string::npos) return std::string();
        return decl.substr(i + 1, close - i - 1);
    }
    return std::string();
}

bool EncodingOfText(const char* utf8, size_t size, Encoding& encoding, std::string& error) {
    return FromName(DeclaredEncoding(utf8, size), encoding, error);
}

bool Detect(const char* data, size_t size, Encoding& encoding, size_t& bomLength,
            std::string& error) {
    const auto* b = reinterpret_cast<const unsigned char*>(data);
    encoding = Encoding();
    bomLength = 0;
    if (size >= 4 && ((b[0] == 0xFF && b[1] == 0xFE && b[2] == 0 && b[3] == 0) ||
                      (b[0] == 0 && b[1] == 0 && b[2] == 0xFE && b[3] == 0xFF))) {
        error = "UTF-32 documents are not supported";
        return false;
    }
    if (size >= 3 && b[0] == 0xEF && b[1] == 0xBB && b[2] == 0xBF) {
        encoding.bom = true;
        bomLength = 3;
        return true;
    }
    if (size >= 2 && ((b[0] == 0xFF && b[1] == 0xFE) || (b[0] == 0xFE && b[1] == 0xFF))) {
        encoding.form = b[0] == 0xFF ? Form::Utf16LE : Form::Utf16BE;
        encoding.bom = true;
        encoding.name = b[0] == 0xFF ? "UTF-16LE" : "UTF-16BE";
        bomLength = 2;
        return true;
    }
    std::string declared = DeclaredEncoding(data, size);
    if (IsUtf16Name(declared)) {
        // The declaration was just read as ASCII, so the bytes cannot be UTF-16.
        error = "declared " + declared + " but has no byte order mark";
        return false;
    }
    return FromName(declared, encoding, error);
}

bool CheckUtf8(const char* data, size_t size, size_t offsetBase, std::string& error) {
    const auto* s = reinterpret_cast<const unsigned char*>(data);
    size_t i = 0;
    while (i < size) {
        // Markup is mostly ASCII: 64 bytes, then eight, at a time while no byte has its high
        // bit set.
#if defined(__SSE2__)
        const auto block = [s](size_t at) {
            return _mm_loadu_si128(reinterpret_cast<const __m128i*>(s + at));
        };
        while (i + 64 <= size &&
               _mm_movemask_epi8(_mm_or_si128(_mm_or_si128(block(i), block(i + 16)),
                                              _mm_or_si128(block(i + 32), block(i + 48)))) == 0)
            i += 64;
#endif
        uint64_t eight = 0;
        while (i + 8 <= size &&
               (std::memcpy(&eight, s + i, 8), (eight & 0x8080808080808080ull) == 0))
            i += 8;
        if (i >= size) break;
        const unsigned char c = s[i];
        if (c < 0x80) {
            ++i;
            continue;
        }
        // The second byte's range rules out overlong forms, surrogates and values past
        // U+10FFFF in one comparison.
        size_t extra = 0;
        unsigned char lo = 0x80, hi = 0xBF;
        if (c >= 0xC2 && c <= 0xDF) {
            extra = 1;
        } else if (c >= 0xE0 && c <= 0xEF) {
            extra = 2;
            if (c == 0xE0) lo = 0xA0;
            if (c == 0xED) hi = 0x9F;
        } else if (c >= 0xF0 && c <= 0xF4) {
            extra = 3;
            if (c == 0xF0) lo = 0x90;
            if (c == 0xF4) hi = 0x8F;
        }
        bool ok = extra > 0 && i + extra < size && s[i + 1] >= lo && s[i + 1] <= hi;
        for (size_t k = 2; ok && k <= extra; ++k) ok = (s[i + k] & 0xC0) == 0x80;
        if (!ok) {
            error = "invalid UTF-8 text at byte " + std::to_string(offsetBase + i);
            return false;
        }
        i += extra + 1;
    }
    return true;
}

bool Decode(const char* data, size_t size, const Encoding& encoding, std::string& utf8,
            std::string& error, size_t offsetBase) {
    utf8.clear();
    if (encoding.form == Form::Utf8) {
        utf8.assign(data, size);
        return true;
    }
    if (encoding.form == Form::Utf16LE || encoding.form == Form::Utf16BE) {
        if (size % 2 != 0) {
            error = "truncated UTF-16 text";
            return false;
        }
        std::u16string units(size / 2, u'\0');
        const auto* b = reinterpret_cast<const unsigned char*>(data);
        const bool little = encoding.form == Form::Utf16LE;
        for (size_t i = 0; i < units.size(); ++i) {
            unsigned lo = b[2 * i + (little ? 0 : 1)];
            unsigned hi = b[2 * i + (little ? 1 : 0)];
            units[i] = static_cast<char16_t>(lo | (hi << 8));
        }
        for (size_t i = 0; i < units.size(); ++i) {
            const char16_t u = units[i];
            const bool high = u >= 0xD800 && u <= 0xDBFF;
            const bool paired =
                high && i + 1 < units.size() && units[i + 1] >= 0xDC00 && units[i + 1] <= 0xDFFF;
            if (paired) {
                ++i;
            } else if (u >= 0xD800 && u <= 0xDFFF) {
                error = "invalid UTF-16 text at byte " + std::to_string(offsetBase + 2 * i);
                return false;
            }
        }
        utf8 = PLIX::Utf16ToUtf8(units.data(), units.size());
        return true;
    }
    Converter cd("UTF-8", encoding.name.c_str());
    if (!cd.IsOpen()) {
        error = "unsupported encoding \"" + encoding.name + "\"";
        return false;
    }
    size_t failedAt = 0;
    if (!cd.Append(data, size, utf8, failedAt)) {
        error =
            "invalid " + encoding.name + " text at byte " + std::to_string(offsetBase + failedAt);
        utf8.clear();
        return false;
    }
    return true;
}

bool Encode(const std::string& utf8, const Encoding& encoding, std::string& out,
            std::string& error) {
    out.clear();
    if (encoding.form == Form::Utf8) {
        if (encoding.bom) out = "\xEF\xBB\xBF";
        out += utf8;
        return true;
    }
    if (encoding.form == Form::Utf16LE || encoding.form == Form::Utf16BE) {
        std::u16string units = PLIX::Utf8ToUtf16(utf8.data(), utf8.size());
        const bool little = encoding.form == Form::Utf16LE;
        out.reserve(2 + units.size() * 2);
        auto put = [&](char16_t u) {
            char lo = static_cast<char>(u & 0xFF);
            char hi = static_cast<char>(u >> 8);
            out.push_back(little ? lo : hi);
            out.push_back(little ? hi : lo);
        };
        put(0xFEFF);
        for (char16_t u : units) put(u);
        return true;
    }
    Converter cd(encoding.name.c_str(), "UTF-8");
    if (!cd.IsOpen()) {
        error = "unsupported encoding \"" + encoding.name + "\"";
        return false;
    }
    size_t pos = 0;
    while (pos < utf8.size()) {
        size_t failedAt = 0;
        if (cd.Append(utf8.data() + pos, utf8.size() - pos, out, failedAt)) break;
        pos += failedAt;
        size_t length = 1;
        char32_t cp = 0xFFFD;
        if (pos < utf8.size()) {
            cp = DecodeOne(reinterpret_cast<const unsigned char*>(utf8.data()) + pos,
                           utf8.size() - pos, length);
        }
        pos += length;
        // Deliberately a character reference, not a failure: a text the legacy encoding
        // cannot hold must not make the settings file unsaveable.
        char ref[16];
        int n = std::snprintf(ref, sizeof ref, "&#x%X;", static_cast<unsigned>(cp));
        if (!cd.Append(ref, static_cast<size_t>(n), out, failedAt)) {
            error = "cannot write text in " + encoding.name;
            out.clear();
            return false;
        }
    }
    return true;
}

std::string DeclarationName(const Encoding& encoding) {
    switch (encoding.form) {
        case Form::Utf8:
            return "UTF-8";
        case Form::Utf16LE:
        case Form::Utf16BE:
            return "UTF-16";
        case Form::Iconv:
            break;
    }
    return encoding.name;
}

}  // namespace TextEncoding
}  // namespace KGC
