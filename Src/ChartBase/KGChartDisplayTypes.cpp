// Names of the colour modes, display categories and display style types, both ways.
#include "ChartBase/KGChartDisplayTypes.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

// Each list in the order of the values. Built once: the look-up table loader converts the
// category of every entry.
struct Names {
    const PlixUnicodeString* names;
    int count;
};

Names ColorModeNames() {
    static const PlixUnicodeString names[] = {u"DayBright", u"Dusk", u"Night"};
    return {names, 3};
}

Names CategoryNames() {
    static const PlixUnicodeString names[] = {u"DISPLAYBASE", u"STANDARD", u"OTHER"};
    return {names, 3};
}

Names StyleNames() {
    static const PlixUnicodeString names[] = {u"", u"ENC", u"PaperChart"};
    return {names, 3};
}

// Index of the first name equal to text without regard to case, or fallback.
int MatchName(Names list, const PlixUnicodeString& text, int fallback) {
    for (int i = 0; i < list.count; ++i) {
        if (text.CompareNoCase(list.names[i]) == 0) return i;
    }
    return fallback;
}

PlixUnicodeString NameOf(Names list, int value, int fallback) {
    if (value < 0 || value >= list.count) value = fallback;
    return list.names[value];
}

}  // namespace

PlixUnicodeString KGChartColorMode::GetColorModeName(KGS52ColorMode mode) {
    return NameOf(ColorModeNames(), mode, DayBright);
}

KGChartColorMode::KGS52ColorMode KGChartColorMode::GetColorMode(const PlixUnicodeString& name) {
    return static_cast<KGS52ColorMode>(MatchName(ColorModeNames(), name, DayBright));
}

PlixUnicodeString KGChartDisplayCategory::GetDisplayCategoryName(KGS52DisplayCategory category) {
    return NameOf(CategoryNames(), category, Standard);
}

KGChartDisplayCategory::KGS52DisplayCategory KGChartDisplayCategory::GetDisplayCategory(
    const PlixUnicodeString& name) {
    return static_cast<KGS52DisplayCategory>(MatchName(CategoryNames(), name, Standard));
}

PlixUnicodeString KGChartDisplayStyle::GetChartDisplayStyleTypeName(KGChartDisplayStyleType type) {
    return NameOf(StyleNames(), type, NoStyle);
}

KGChartDisplayStyle::KGChartDisplayStyleType KGChartDisplayStyle::GetChartDisplayStyleType(
    const PlixUnicodeString& name) {
    return static_cast<KGChartDisplayStyleType>(MatchName(StyleNames(), name, NoStyle));
}

}  // namespace KGC
