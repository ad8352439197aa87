// Decimal text to numbers, independent of the process locale.
#include "Base/KGNumber.h"

#include <locale.h>
#include <stdlib.h>

#include <cerrno>
#include <climits>
#include <string>

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

bool IsBlank(char16_t c) {
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

long long ParseInteger(const PlixUnicodeString& text, long long lo, long long hi) {
    const std::u16string& s = text.Str();
    size_t i = 0;
    while (i < s.size() && IsBlank(s[i])) ++i;
    bool negative = false;
    if (i < s.size() && (s[i] == u'+' || s[i] == u'-')) negative = s[i++] == u'-';
    // Accumulate as a negative number so that the type's minimum is reachable.
    long long value = 0;
    bool saturated = false;
    for (; i < s.size() && s[i] >= u'0' && s[i] <= u'9'; ++i) {
        int digit = s[i] - u'0';
        if (value < (LLONG_MIN + digit) / 10) {
            saturated = true;
            continue;
        }
        value = value * 10 - digit;
    }
    if (!negative) {
        if (saturated || value < -hi) return hi;
        return -value;
    }
    if (saturated || value < lo) return lo;
    return value;
}

locale_t CLocale() {
    static locale_t c = newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(0));
    return c;
}

}  // namespace

int kgatoi(const PlixUnicodeString& text) {
    return static_cast<int>(ParseInteger(text, INT_MIN, INT_MAX));
}

long long kgatol(const PlixUnicodeString& text) {
    return ParseInteger(text, LLONG_MIN, LLONG_MAX);
}

double kgatof(const PlixUnicodeString& text) {
    // Only ASCII can belong to a number: the text is narrowed up to its first other character
    // and parsed in the "C" locale, whatever LC_NUMERIC the host has set.
    const std::u16string& s = text.Str();
    std::string narrow;
    narrow.reserve(s.size());
    for (char16_t c : s) {
        if (c == 0 || c > 0x7F) break;
        narrow.push_back(static_cast<char>(c));
    }
    locale_t c = CLocale();
    if (c == static_cast<locale_t>(0)) return 0.0;
    return strtod_l(narrow.c_str(), nullptr, c);
}

}  // namespace KGC
