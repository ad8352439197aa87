// The UTF-16 string of the platform: conversions, slicing, trimming, search and formatting.
#include "Base/PlixUnicodeString.h"

#include <locale.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <vector>

#include "Base/PlixArray.h"

namespace PLIX {
namespace {

size_t Clamp(int value, size_t upper) {
    if (value <= 0) return 0;
    return std::min(static_cast<size_t>(value), upper);
}

// Case folding of ASCII and Latin letters, no locale: Latin-1 capitals and the Latin
// Extended-A pairs are enough for chart names. U+0130 (dotted I) and U+0131 (dotless i)
// are not a pair; Ÿ (U+0178) pairs with ÿ (U+00FF).
char16_t FoldCase(char16_t c) {
    if (c >= u'A' && c <= u'Z') return static_cast<char16_t>(c + 32);
    if (c < 0xC0) return c;
    if (c <= 0xDE && c != 0xD7) return static_cast<char16_t>(c + 32);
    if (c >= 0x100 && c <= 0x12F && (c % 2) == 0) return static_cast<char16_t>(c + 1);
    if (c >= 0x132 && c <= 0x137 && (c % 2) == 0) return static_cast<char16_t>(c + 1);
    if (c >= 0x139 && c <= 0x148 && (c % 2) == 1) return static_cast<char16_t>(c + 1);
    if (c >= 0x14A && c <= 0x177 && (c % 2) == 0) return static_cast<char16_t>(c + 1);
    if (c == 0x178) return 0xFF;
    if (c >= 0x179 && c <= 0x17E && (c % 2) == 1) return static_cast<char16_t>(c + 1);
    return c;
}

char16_t UpperCase(char16_t c) {
    if (c >= u'a' && c <= u'z') return static_cast<char16_t>(c - 32);
    if (c >= 0xE0 && c <= 0xFE && c != 0xF7) return static_cast<char16_t>(c - 32);
    if (c == 0xFF) return 0x178;
    if (c >= 0x101 && c <= 0x12F && (c % 2) == 1) return static_cast<char16_t>(c - 1);
    if (c >= 0x133 && c <= 0x137 && (c % 2) == 1) return static_cast<char16_t>(c - 1);
    if (c >= 0x13A && c <= 0x148 && (c % 2) == 0) return static_cast<char16_t>(c - 1);
    if (c >= 0x14B && c <= 0x177 && (c % 2) == 1) return static_cast<char16_t>(c - 1);
    if (c >= 0x17A && c <= 0x17E && (c % 2) == 0) return static_cast<char16_t>(c - 1);
    return c;
}

bool InSet(char16_t c, std::u16string_view set) {
    return set.find(c) != std::u16string_view::npos;
}

// The default trim set, tested without building a string: lines of every table are trimmed.
bool IsTrimmed(char16_t c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

// Formatted text ends up in documents read back with the locale-free parsers, so numbers are
// written in the "C" locale whatever LC_NUMERIC the host has set (only this thread switches).
class CNumericScope {
public:
    CNumericScope() {
        static locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
        if (c != static_cast<locale_t>(0)) m_previous = uselocale(c);
    }
    ~CNumericScope() {
        if (m_previous != static_cast<locale_t>(0)) uselocale(m_previous);
    }
    CNumericScope(const CNumericScope&) = delete;
    CNumericScope& operator=(const CNumericScope&) = delete;

private:
    locale_t m_previous = static_cast<locale_t>(0);
};

}  // namespace

namespace {

// Decodes into o, which has room for length units (every byte gives at most one code unit);
// returns the number of units written. Writing into a presized buffer keeps the common
// all-ASCII text free of per-character checks.
size_t DecodeUtf8(const char* data, size_t length, char16_t* const begin) {
    char16_t* o = begin;
    const auto* s = reinterpret_cast<const unsigned char*>(data);
    size_t i = 0;
    while (i < length) {
        unsigned char c = s[i];
        if (c < 0x80) {
            *o++ = c;
            ++i;
            continue;
        }
        int extra;
        char32_t cp;
        char32_t minimum;
        if (c >= 0xC2 && c <= 0xDF) {
            extra = 1;
            cp = c & 0x1F;
            minimum = 0x80;
        } else if (c >= 0xE0 && c <= 0xEF) {
            extra = 2;
            cp = c & 0x0F;
            minimum = 0x800;
        } else if (c >= 0xF0 && c <= 0xF4) {
            extra = 3;
            cp = c & 0x07;
            minimum = 0x10000;
        } else {
            *o++ = 0xFFFD;
            ++i;
            continue;
        }
        size_t j = i + 1;
        int got = 0;
        while (got < extra && j < length && (s[j] & 0xC0) == 0x80) {
            cp = (cp << 6) | (s[j] & 0x3F);
            ++j;
            ++got;
        }
        if (got < extra || cp < minimum || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) {
            // A truncated sequence is one replacement; an overlong or surrogate form gives one
            // for its lead byte and one for each stray continuation byte after it.
            *o++ = 0xFFFD;
            i = (got < extra) ? j : i + 1;
            continue;
        }
        if (cp >= 0x10000) {
            cp -= 0x10000;
            *o++ = static_cast<char16_t>(0xD800 + (cp >> 10));
            *o++ = static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
        } else {
            *o++ = static_cast<char16_t>(cp);
        }
        i = j;
    }
    return static_cast<size_t>(o - begin);
}

}  // namespace

std::u16string Utf8ToUtf16(const char* data, size_t length) {
    std::u16string out(length, u'\0');
    out.resize(DecodeUtf8(data, length, out.data()));
    return out;
}

void Utf8ToUtf16(const char* data, size_t length, std::u16string& out) {
    out.resize(length);
    out.resize(DecodeUtf8(data, length, out.data()));
}

std::string Utf16ToUtf8(const char16_t* data, size_t length) {
    std::string out;
    out.reserve(length);
    for (size_t i = 0; i < length; ++i) {
        // Runs of ASCII, the usual content of names and numbers, are copied in one go.
        size_t run = i;
        while (run < length && data[run] < 0x80) ++run;
        if (run > i) {
            size_t at = out.size();
            out.resize(at + (run - i));
            for (size_t k = i; k < run; ++k) out[at + (k - i)] = static_cast<char>(data[k]);
            i = run;
            if (i == length) break;
        }
        char32_t cp = data[i];
        if (cp >= 0xD800 && cp <= 0xDBFF && i + 1 < length && data[i + 1] >= 0xDC00 &&
            data[i + 1] <= 0xDFFF) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (data[i + 1] - 0xDC00);
            ++i;
        } else if (cp >= 0xD800 && cp <= 0xDFFF) {
            cp = 0xFFFD;  // a lone surrogate has no UTF-8 form
        }
        if (cp < 0x80) {
            out.push_back(static_cast<char>(cp));
        } else if (cp < 0x800) {
            out.push_back(static_cast<char>(0xC0 | (cp >> 6)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else if (cp < 0x10000) {
            out.push_back(static_cast<char>(0xE0 | (cp >> 12)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        } else {
            out.push_back(static_cast<char>(0xF0 | (cp >> 18)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 12) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | ((cp >> 6) & 0x3F)));
            out.push_back(static_cast<char>(0x80 | (cp & 0x3F)));
        }
    }
    return out;
}

PlixUnicodeString::PlixUnicodeString(const char16_t* text) {
    if (text != nullptr) m_text = text;
}

PlixUnicodeString::PlixUnicodeString(const char* utf8) {
    if (utf8 != nullptr) m_text = Utf8ToUtf16(utf8, std::char_traits<char>::length(utf8));
}

PlixUnicodeString::PlixUnicodeString(const std::string& utf8)
    : m_text(Utf8ToUtf16(utf8.data(), utf8.size())) {}

PlixUnicodeString::PlixUnicodeString(const char* utf8, size_t length) {
    if (utf8 != nullptr) m_text = Utf8ToUtf16(utf8, length);
}

PlixUnicodeString::PlixUnicodeString(char16_t ch, int count)
    : m_text(count > 0 ? static_cast<size_t>(count) : 0, ch) {}

std::string PlixUnicodeString::ToUtf8() const {
    return Utf16ToUtf8(m_text.data(), m_text.size());
}

char16_t PlixUnicodeString::GetAt(int index) const {
    if (index < 0 || static_cast<size_t>(index) >= m_text.size()) return 0;
    return m_text[static_cast<size_t>(index)];
}

void PlixUnicodeString::SetAt(int index, char16_t ch) {
    if (index < 0 || static_cast<size_t>(index) >= m_text.size()) return;
    m_text[static_cast<size_t>(index)] = ch;
}

int PlixUnicodeString::Find(const PlixUnicodeString& text, int start) const {
    if (start < 0) start = 0;
    if (static_cast<size_t>(start) > m_text.size()) return -1;
    size_t pos = m_text.find(text.m_text, static_cast<size_t>(start));
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

int PlixUnicodeString::Find(char16_t ch, int start) const {
    if (start < 0) start = 0;
    if (static_cast<size_t>(start) >= m_text.size()) return -1;
    size_t pos = m_text.find(ch, static_cast<size_t>(start));
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

int PlixUnicodeString::ReverseFind(char16_t ch) const {
    size_t pos = m_text.rfind(ch);
    return pos == std::u16string::npos ? -1 : static_cast<int>(pos);
}

PlixUnicodeString PlixUnicodeString::Left(int count) const {
    return PlixUnicodeString(m_text.substr(0, Clamp(count, m_text.size())));
}

PlixUnicodeString PlixUnicodeString::Right(int count) const {
    size_t n = Clamp(count, m_text.size());
    return PlixUnicodeString(m_text.substr(m_text.size() - n));
}

PlixUnicodeString PlixUnicodeString::Mid(int start) const {
    size_t s = Clamp(start, m_text.size());
    return PlixUnicodeString(m_text.substr(s));
}

PlixUnicodeString PlixUnicodeString::Mid(int start, int count) const {
    // As CString: a negative start counts as 0 and leaves the count as it is.
    size_t s = Clamp(start, m_text.size());
    size_t n = Clamp(count, m_text.size() - s);
    return PlixUnicodeString(m_text.substr(s, n));
}

int PlixUnicodeString::Delete(int index, int count) {
    if (index < 0) index = 0;
    if (count > 0 && static_cast<size_t>(index) < m_text.size()) {
        m_text.erase(static_cast<size_t>(index), static_cast<size_t>(count));
    }
    return GetLength();
}

int PlixUnicodeString::Insert(int index, const PlixUnicodeString& text) {
    m_text.insert(Clamp(index, m_text.size()), text.m_text);
    return GetLength();
}

PlixUnicodeString& PlixUnicodeString::TrimLeft() {
    size_t i = 0;
    while (i < m_text.size() && IsTrimmed(m_text[i])) ++i;
    m_text.erase(0, i);
    return *this;
}

PlixUnicodeString& PlixUnicodeString::TrimLeft(const PlixUnicodeString& set) {
    size_t i = 0;
    while (i < m_text.size() && InSet(m_text[i], set.m_text)) ++i;
    m_text.erase(0, i);
    return *this;
}

PlixUnicodeString& PlixUnicodeString::TrimLeft(char16_t ch) {
    size_t i = 0;
    while (i < m_text.size() && m_text[i] == ch) ++i;
    m_text.erase(0, i);
    return *this;
}

PlixUnicodeString& PlixUnicodeString::TrimRight() {
    size_t n = m_text.size();
    while (n > 0 && IsTrimmed(m_text[n - 1])) --n;
    m_text.resize(n);
    return *this;
}

PlixUnicodeString& PlixUnicodeString::TrimRight(const PlixUnicodeString& set) {
    size_t n = m_text.size();
    while (n > 0 && InSet(m_text[n - 1], set.m_text)) --n;
    m_text.resize(n);
    return *this;
}

PlixUnicodeString& PlixUnicodeString::TrimRight(char16_t ch) {
    size_t n = m_text.size();
    while (n > 0 && m_text[n - 1] == ch) --n;
    m_text.resize(n);
    return *this;
}

PlixUnicodeString& PlixUnicodeString::Trim() {
    return TrimRight().TrimLeft();
}

PlixUnicodeString& PlixUnicodeString::Trim(const PlixUnicodeString& set) {
    return TrimRight(set).TrimLeft(set);
}

PlixUnicodeString& PlixUnicodeString::Trim(char16_t ch) {
    return TrimRight(ch).TrimLeft(ch);
}

int PlixUnicodeString::Replace(const PlixUnicodeString& oldText, const PlixUnicodeString& newText) {
    if (oldText.m_text.empty() || m_text.empty()) return 0;
    std::u16string out;
    int count = 0;
    size_t pos = 0;
    while (true) {
        size_t hit = m_text.find(oldText.m_text, pos);
        if (hit == std::u16string::npos) break;
        out.append(m_text, pos, hit - pos);
        out.append(newText.m_text);
        pos = hit + oldText.m_text.size();
        ++count;
    }
    if (count == 0) return 0;
    out.append(m_text, pos, std::u16string::npos);
    m_text.swap(out);
    return count;
}

int PlixUnicodeString::Replace(char16_t oldCh, char16_t newCh) {
    int count = 0;
    for (char16_t& c : m_text) {
        if (c == oldCh) {
            c = newCh;
            ++count;
        }
    }
    return count;
}

int PlixUnicodeString::Split(PlixArray<PlixUnicodeString>& parts,
                             const PlixUnicodeString& separator, bool skipEmpty) const {
    parts.RemoveAll();
    if (m_text.empty()) return 0;
    if (separator.m_text.empty()) {
        parts.Add(*this);
        return 1;
    }
    size_t pos = 0;
    while (true) {
        size_t hit = m_text.find(separator.m_text, pos);
        size_t end = (hit == std::u16string::npos) ? m_text.size() : hit;
        if (!(skipEmpty && end == pos)) parts.Add(PlixUnicodeString(m_text.substr(pos, end - pos)));
        if (hit == std::u16string::npos) break;
        pos = hit + separator.m_text.size();
    }
    return parts.GetSize();
}

PlixUnicodeString PlixUnicodeString::FormatV(const char* format, va_list args) {
    if (format == nullptr) return PlixUnicodeString();
    CNumericScope cLocale;
    char small[256];
    va_list copy;
    va_copy(copy, args);
    int n = vsnprintf(small, sizeof small, format, copy);
    va_end(copy);
    if (n < 0) return PlixUnicodeString();
    if (static_cast<size_t>(n) < sizeof small)
        return PlixUnicodeString(small, static_cast<size_t>(n));
    std::vector<char> big(static_cast<size_t>(n) + 1);
    vsnprintf(big.data(), big.size(), format, args);
    return PlixUnicodeString(big.data(), static_cast<size_t>(n));
}

PlixUnicodeString PlixUnicodeString::Format(const char* format, ...) {
    va_list args;
    va_start(args, format);
    PlixUnicodeString out = FormatV(format, args);
    va_end(args);
    return out;
}

void PlixUnicodeString::Format(const char16_t* format, ...) {
    std::string fmt = format ? Utf16ToUtf8(format, std::char_traits<char16_t>::length(format)) : "";
    va_list args;
    va_start(args, format);
    *this = FormatV(fmt.c_str(), args);
    va_end(args);
}

int PlixUnicodeString::ToInt(int base) const {
    if (base != 0 && (base < 2 || base > 36)) return 0;
    size_t i = 0;
    const size_t n = m_text.size();
    while (i < n && (m_text[i] == u' ' || (m_text[i] >= u'\t' && m_text[i] <= u'\r'))) ++i;
    bool negative = false;
    if (i < n && (m_text[i] == u'+' || m_text[i] == u'-')) negative = m_text[i++] == u'-';
    if (base == 0 || base == 16) {
        if (i + 1 < n && m_text[i] == u'0' && (m_text[i + 1] == u'x' || m_text[i + 1] == u'X')) {
            base = 16;
            i += 2;
        } else if (base == 0) {
            base = (i < n && m_text[i] == u'0') ? 8 : 10;
        }
    }
    long long value = 0;
    const long long limit = static_cast<long long>(INT_MAX) + 1;
    for (; i < n; ++i) {
        char16_t c = m_text[i];
        int digit;
        if (c >= u'0' && c <= u'9')
            digit = c - u'0';
        else if (c >= u'a' && c <= u'z')
            digit = c - u'a' + 10;
        else if (c >= u'A' && c <= u'Z')
            digit = c - u'A' + 10;
        else
            break;
        if (digit >= base) break;
        if (value <= limit) value = value * base + digit;
    }
    if (negative) value = -value;
    if (value > INT_MAX) return INT_MAX;
    if (value < INT_MIN) return INT_MIN;
    return static_cast<int>(value);
}

int PlixUnicodeString::Compare(const PlixUnicodeString& other) const {
    int r = m_text.compare(other.m_text);
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

int PlixUnicodeString::CompareNoCase(const PlixUnicodeString& other) const {
    const size_t n = std::min(m_text.size(), other.m_text.size());
    for (size_t i = 0; i < n; ++i) {
        char16_t a = FoldCase(m_text[i]);
        char16_t b = FoldCase(other.m_text[i]);
        if (a != b) return a < b ? -1 : 1;
    }
    if (m_text.size() == other.m_text.size()) return 0;
    return m_text.size() < other.m_text.size() ? -1 : 1;
}

PlixUnicodeString PlixUnicodeString::MakeUpper() const {
    PlixUnicodeString r(*this);
    for (char16_t& c : r.m_text) c = UpperCase(c);
    return r;
}

PlixUnicodeString PlixUnicodeString::MakeLower() const {
    PlixUnicodeString r(*this);
    for (char16_t& c : r.m_text) c = FoldCase(c);
    return r;
}

PlixUnicodeString& PlixUnicodeString::operator+=(const PlixUnicodeString& other) {
    m_text += other.m_text;
    return *this;
}

PlixUnicodeString& PlixUnicodeString::operator+=(char16_t ch) {
    m_text.push_back(ch);
    return *this;
}

}  // namespace PLIX
