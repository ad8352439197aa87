// PlixUnicodeString: the UTF-16 string every name, path, token and XML text is held in.
// It follows MFC CString semantics where nothing else is said (clamped indices, never throws).
//
// Threads: as std::u16string: const members from several threads at once, any change by one thread
// alone.
#pragma once

#include <cstdarg>
#include <cstddef>
#include <functional>
#include <string>

#include "Base/VlBaseExport.h"

namespace PLIX {

template <typename T>
class PlixArray;

class VLBASE_API PlixUnicodeString {
public:
    PlixUnicodeString() = default;
    PlixUnicodeString(const char16_t* text);
    PlixUnicodeString(const std::u16string& text) : m_text(text) {}
    PlixUnicodeString(std::u16string&& text) noexcept : m_text(std::move(text)) {}
    // UTF-8 text; invalid bytes become U+FFFD.
    PlixUnicodeString(const char* utf8);
    PlixUnicodeString(const std::string& utf8);
    PlixUnicodeString(const char* utf8, size_t length);
    explicit PlixUnicodeString(char16_t ch, int count = 1);

    PlixUnicodeString(const PlixUnicodeString&) = default;
    PlixUnicodeString(PlixUnicodeString&&) noexcept = default;
    PlixUnicodeString& operator=(const PlixUnicodeString&) = default;
    PlixUnicodeString& operator=(PlixUnicodeString&&) noexcept = default;

    std::string ToUtf8() const;
    const std::u16string& Str() const { return m_text; }
    std::u16string& Str() { return m_text; }
    const char16_t* c_str() const { return m_text.c_str(); }

    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }
    void Empty() { m_text.clear(); }
    // Out-of-range indices give 0 (and SetAt does nothing).
    char16_t GetAt(int index) const;
    char16_t operator[](int index) const { return GetAt(index); }
    void SetAt(int index, char16_t ch);

    // Index of the first occurrence at or after start, or -1.
    int Find(const PlixUnicodeString& text, int start = 0) const;
    int Find(char16_t ch, int start = 0) const;
    int ReverseFind(char16_t ch) const;

    PlixUnicodeString Left(int count) const;
    PlixUnicodeString Right(int count) const;
    PlixUnicodeString Mid(int start) const;
    PlixUnicodeString Mid(int start, int count) const;

    // Removes count characters from index; returns the new length.
    int Delete(int index, int count = 1);
    // Inserts text before index (clamped); returns the new length.
    int Insert(int index, const PlixUnicodeString& text);

    // Without an argument these trim "\r\n\t "; with a string, every character of that set.
    PlixUnicodeString& TrimLeft();
    PlixUnicodeString& TrimLeft(const PlixUnicodeString& set);
    PlixUnicodeString& TrimLeft(char16_t ch);
    PlixUnicodeString& TrimRight();
    PlixUnicodeString& TrimRight(const PlixUnicodeString& set);
    PlixUnicodeString& TrimRight(char16_t ch);
    PlixUnicodeString& Trim();
    PlixUnicodeString& Trim(const PlixUnicodeString& set);
    PlixUnicodeString& Trim(char16_t ch);

    // Replaces every occurrence; returns how many were replaced. An empty old text replaces
    // nothing.
    int Replace(const PlixUnicodeString& oldText, const PlixUnicodeString& newText);
    int Replace(char16_t oldCh, char16_t newCh);

    // Clears parts and fills it with the pieces between separators. With skipEmpty false empty
    // pieces are kept ("a,,b" gives three); with true they are dropped. An empty string has no
    // pieces. Returns the number of pieces.
    int Split(PlixArray<PlixUnicodeString>& parts, const PlixUnicodeString& separator,
              bool skipEmpty) const;

    // printf formatting; %s takes UTF-8 const char*. Numbers are written as in the "C" locale
    // (a decimal point whatever LC_NUMERIC says). The static form builds a new string, the
    // member form replaces this string's content.
    static PlixUnicodeString Format(const char* format, ...) __attribute__((format(printf, 1, 2)));
    void Format(const char16_t* format, ...);
    static PlixUnicodeString FormatV(const char* format, va_list args);

    // Like strtol on the text (leading blanks, sign, digits); 0 when there is no number,
    // saturated to the int range.
    int ToInt(int base = 10) const;

    int Compare(const PlixUnicodeString& other) const;
    // Case-insensitive for ASCII and Latin letters; no locale involved.
    int CompareNoCase(const PlixUnicodeString& other) const;
    PlixUnicodeString MakeUpper() const;
    PlixUnicodeString MakeLower() const;

    PlixUnicodeString& operator+=(const PlixUnicodeString& other);
    PlixUnicodeString& operator+=(char16_t ch);

    friend bool operator==(const PlixUnicodeString& a, const PlixUnicodeString& b) {
        return a.m_text == b.m_text;
    }
    friend bool operator!=(const PlixUnicodeString& a, const PlixUnicodeString& b) {
        return a.m_text != b.m_text;
    }
    friend bool operator<(const PlixUnicodeString& a, const PlixUnicodeString& b) {
        return a.m_text < b.m_text;
    }
    friend PlixUnicodeString operator+(const PlixUnicodeString& a, const PlixUnicodeString& b) {
        PlixUnicodeString r(a);
        r += b;
        return r;
    }

private:
    std::u16string m_text;
};

// UTF conversions used across the platform layer.
VLBASE_API std::u16string Utf8ToUtf16(const char* data, size_t length);
// The same into out, whose storage is reused when it is large enough.
VLBASE_API void Utf8ToUtf16(const char* data, size_t length, std::u16string& out);
VLBASE_API std::string Utf16ToUtf8(const char16_t* data, size_t length);

}  // namespace PLIX

template <>
struct std::hash<PLIX::PlixUnicodeString> {
    size_t operator()(const PLIX::PlixUnicodeString& s) const noexcept {
        return std::hash<std::u16string>()(s.Str());
    }
};
