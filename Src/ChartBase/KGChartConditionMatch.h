// How a feature's attribute value compares with a look-up condition: the comparisons shared by
// the one-off style choice and the prepared chooser, so both decide alike. Inline, as both call
// them once per condition tested.
#pragma once

#include <cstdint>
#include <string_view>

#include "Base/KGNumber.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartStyle.h"

namespace KGC {
namespace condition {

using View = std::u16string_view;

// The comparisons work on views of the condition and the feature's value: a host chooses once
// per feature over every style of the object class, so nothing here may allocate in the usual
// case.

inline bool IsBlank(char16_t c) {
    return c == u'\r' || c == u'\n' || c == u'\t' || c == u' ';
}

// A decimal number as S-57 writes one: optional sign, digits, at most one point.
inline bool IsNumber(View text) {
    int digits = 0;
    int points = 0;
    for (size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c >= u'0' && c <= u'9') {
            ++digits;
        } else if (c == u'.') {
            if (++points > 1) return false;
        } else if (!(i == 0 && (c == u'-' || c == u'+'))) {
            return false;
        }
    }
    return digits > 0;
}

inline double NumberOf(View text) {
    return kgatof(PLIX::PlixUnicodeString(std::u16string(text)));
}

// What PlixUnicodeString::Trim() leaves.
inline View Trimmed(View text) {
    size_t first = 0;
    while (first < text.size() && IsBlank(text[first])) ++first;
    size_t last = text.size();
    while (last > first && IsBlank(text[last - 1])) --last;
    return text.substr(first, last - first);
}

// Digits alone, few enough that a double holds the value exactly: two such texts are the same
// number exactly when they are the same digits after their leading zeros.
inline bool IsSmallInteger(View text) {
    if (text.empty() || text.size() > 15) return false;
    for (char16_t c : text) {
        if (c < u'0' || c > u'9') return false;
    }
    return true;
}

inline View WithoutLeadingZeros(View digits) {
    size_t i = 0;
    while (i + 1 < digits.size() && digits[i] == u'0') ++i;
    return digits.substr(i);
}

// Both trimmed; numbers compare as numbers.
inline bool SameElement(View a, View b) {
    a = Trimmed(a);
    b = Trimmed(b);
    if (a == b) return true;  // equal text is the same number or the same word
    if (IsSmallInteger(a) && IsSmallInteger(b)) {
        return WithoutLeadingZeros(a) == WithoutLeadingZeros(b);
    }
    if (IsNumber(a) && IsNumber(b)) return NumberOf(a) == NumberOf(b);
    return false;
}

// Equal element by element, in order, numbers as numbers; a single value is a list of one.
inline bool SameValue(View wanted, View value) {
    while (true) {
        const size_t a = wanted.find(u',');
        const size_t b = value.find(u',');
        if ((a == View::npos) != (b == View::npos)) return false;  // lists of different lengths
        if (!SameElement(wanted.substr(0, a), value.substr(0, b))) return false;
        if (a == View::npos) return true;
        wanted.remove_prefix(a + 1);
        value.remove_prefix(b + 1);
    }
}

// The value, trimmed, as digits alone that compare exactly with a 32-bit condition: false, n
// untouched, for any other text.
inline bool ReadSmallInteger(View value, long long& n) {
    value = Trimmed(value);
    if (!IsSmallInteger(value) || WithoutLeadingZeros(value).size() > 10) return false;
    n = 0;
    for (char16_t c : value) n = n * 10 + (c - u'0');
    return true;
}

// The value, trimmed, is a number equal to wanted.
inline bool SameInteger(int32_t wanted, View value) {
    long long n = 0;
    if (ReadSmallInteger(value, n)) return n == wanted;
    value = Trimmed(value);
    return IsNumber(value) && NumberOf(value) == wanted;
}

inline bool IsCatchAll(const KGChartAttributeCondition& c) {
    return c.AttributeAcronym.IsEmpty();
}

}  // namespace condition
}  // namespace KGC
