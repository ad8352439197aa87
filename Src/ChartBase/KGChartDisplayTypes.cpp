#include "ChartBase/KGChartDisplayTypes.h"

#include <iterator>

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

const char16_t* const kColorModeNames[] = {u"DayBright", u"Dusk", u"Night"};
const char16_t* const kCategoryNames[] = {u"DISPLAYBASE", u"STANDARD", u"OTHER"};
const char16_t* const kStyleNames[] = {u"", u"ENC", u"PaperChart"};

// Index of the first name equal to text without regard to case, or fallback.
template <size_t N>
int MatchName(const char16_t* const (&names)[N], const PlixUnicodeString& text, int fallback) {
    for (size_t i = 0; i < N; ++i) {
        if (text.CompareNoCase(PlixUnicodeString(names[i])) == 0) return static_cast<int>(i);
    }
    return fallback;
}

template <size_t N>
PlixUnicodeString NameOf(const char16_t* const (&names)[N], int value, int fallback) {
    if (value < 0 || static_cast<size_t>(value) >= N) value = fallback;
    return PlixUnicodeString(names[value]);
}

}  // namespace

PlixUnicodeString KGChartColorMode::GetColorModeName(KGS52ColorMode mode) {
    return NameOf(kColorModeNames, mode, DayBright);
}

KGChartColorMode::KGS52ColorMode KGChartColorMode::GetColorMode(const PlixUnicodeString& name) {
    return static_cast<KGS52ColorMode>(MatchName(kColorModeNames, name, DayBright));
}

PlixUnicodeString KGChartDisplayCategory::GetDisplayCategoryName(KGS52DisplayCategory category) {
    return NameOf(kCategoryNames, category, Standard);
}

KGChartDisplayCategory::KGS52DisplayCategory KGChartDisplayCategory::GetDisplayCategory(
    const PlixUnicodeString& name) {
    return static_cast<KGS52DisplayCategory>(MatchName(kCategoryNames, name, Standard));
}

PlixUnicodeString KGChartDisplayStyle::GetChartDisplayStyleTypeName(KGChartDisplayStyleType type) {
    return NameOf(kStyleNames, type, NoStyle);
}

KGChartDisplayStyle::KGChartDisplayStyleType KGChartDisplayStyle::GetChartDisplayStyleType(
    const PlixUnicodeString& name) {
    return static_cast<KGChartDisplayStyleType>(MatchName(kStyleNames, name, NoStyle));
}

}  // namespace KGC
