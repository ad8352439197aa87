// The quoted fields of a look-up entry: cutting them, and the fields other than the attribute
// combination and the symbolization instructions.
#include "KGChartLookupFields.h"

#include <algorithm>
#include <climits>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "ChartBase/KGChartLookupTable.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace lookup {

int32_t ToInt32(long long value) {
    if (value > INT_MAX) return INT_MAX;
    if (value < INT_MIN) return INT_MIN;
    return static_cast<int32_t>(value);
}

// kgatol on the field itself, without building a string: leading blanks, a sign, the digits
// up to the first other character, saturated at the 64-bit range; then ToInt32.
int32_t ReadInt32(View text) {
    size_t i = 0;
    while (i < text.size() && (text[i] == u' ' || (text[i] >= u'\t' && text[i] <= u'\r'))) ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'+' || text[i] == u'-')) negative = text[i++] == u'-';
    // Accumulated as a negative number, as kgatol does, so that the minimum is reachable.
    long long value = 0;
    bool saturated = false;
    for (; i < text.size() && text[i] >= u'0' && text[i] <= u'9'; ++i) {
        const int digit = text[i] - u'0';
        if (value < (LLONG_MIN + digit) / 10) {
            saturated = true;
            continue;
        }
        value = value * 10 - digit;
    }
    if (!negative) return ToInt32(saturated || value < -LLONG_MAX ? LLONG_MAX : -value);
    return ToInt32(saturated ? LLONG_MIN : value);
}

PlixUnicodeString CutFront(PlixUnicodeString& entry, View (EntryCursor::*cut)()) {
    EntryCursor cursor(entry);
    PlixUnicodeString field = ToString((cursor.*cut)());
    // The rest may view the entry itself: copy it out before the entry changes.
    std::u16string rest(cursor.Rest());
    entry = PlixUnicodeString(std::move(rest));
    return field;
}

size_t FindChar(View text, char16_t c, size_t from) {
    size_t i = from;
#if defined(__SSE2__)
    const __m128i quote = _mm_set1_epi16(static_cast<short>(c));
    for (; i + 8 <= text.size(); i += 8) {
        const __m128i chars = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text.data() + i));
        const int hits = _mm_movemask_epi8(_mm_cmpeq_epi16(chars, quote));
        if (hits != 0) return i + static_cast<size_t>(__builtin_ctz(hits)) / 2;
    }
#endif
    for (; i < text.size(); ++i) {
        if (text[i] == c) return i;
    }
    return View::npos;
}

bool EntryCursor::FindQuotes(size_t& first, size_t& second) const {
    first = FindChar(m_rest, u'"');
    if (first == View::npos) return false;
    second = FindChar(m_rest, u'"', first + 1);
    return second != View::npos;
}

void EntryCursor::SkipCommas() {
    size_t n = 0;
    while (n < m_rest.size() && m_rest[n] == u',') ++n;
    m_rest.remove_prefix(n);
}

View EntryCursor::Cut() {
    size_t first = 0;
    size_t second = 0;
    if (!FindQuotes(first, second)) {
        SkipCommas();
        return View();
    }
    return CutAt(first, second);
}

View EntryCursor::CutAt(size_t first, size_t second) {
    View field;
    if (first == 0) {
        field = m_rest.substr(1, second - 1);
        m_rest.remove_prefix(second + 1);
    } else {
        // Deliberately kept: second + 1 characters go from the opening quote on, so text before
        // the quote makes the cut reach that much further.
        m_field.assign(m_rest.substr(first + 1, second - first - 1));
        std::u16string edited(m_rest.substr(0, first));
        const size_t resume = std::min(m_rest.size(), first + second + 1);
        edited.append(m_rest.substr(resume));
        m_edited.swap(edited);
        m_rest = m_edited;
        field = m_field;
    }
    SkipCommas();
    return field;
}

View EntryCursor::CutAcronym() {
    size_t first = 0;
    size_t second = 0;
    if (!FindQuotes(first, second) || second - first != 7) return View();
    return CutAt(first, second);
}

View EntryCursor::CutLast() {
    size_t first = 0;
    size_t second = 0;
    View field;
    if (FindQuotes(first, second)) field = m_rest.substr(first + 1, second - first - 1);
    m_rest = View();
    return field;
}

KGS52DisplayCategory ParseCategory(View field) {
    if (field.empty()) return KGChartDisplayCategory::Standard;
    // The spellings the tables use, recognised without building a string; every other text
    // gets the case-insensitive match.
    using namespace std::string_view_literals;
    if (field == u"STANDARD"sv) return KGChartDisplayCategory::Standard;
    if (field == u"DISPLAYBASE"sv) return KGChartDisplayCategory::DisplayBase;
    if (field == u"OTHER"sv) return KGChartDisplayCategory::Other;
    return KGChartDisplayCategory::GetDisplayCategory(ToString(field));
}

}  // namespace lookup

PlixUnicodeString KGChartLookupTable::ParseObjectAcronym(PlixUnicodeString& entry) {
    return lookup::CutFront(entry, &lookup::EntryCursor::CutAcronym);
}

int32_t KGChartLookupTable::ParseDisplayPriority(PlixUnicodeString& entry) {
    return lookup::ReadInt32(lookup::CutFront(entry, &lookup::EntryCursor::Cut).Str());
}

PlixUnicodeString KGChartLookupTable::ParseRadar(PlixUnicodeString& entry) {
    return lookup::CutFront(entry, &lookup::EntryCursor::Cut);
}

KGS52DisplayCategory KGChartLookupTable::ParerDisplayCategory(PlixUnicodeString& entry) {
    return lookup::ParseCategory(lookup::CutFront(entry, &lookup::EntryCursor::Cut).Str());
}

int32_t KGChartLookupTable::ParseGroup(PlixUnicodeString& entry) {
    return lookup::ReadInt32(lookup::CutFront(entry, &lookup::EntryCursor::CutLast).Str());
}

}  // namespace KGC
