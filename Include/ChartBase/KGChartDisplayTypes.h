// The presentation vocabularies of the settings file and the look-up tables: colour mode,
// display category and display style, converted between names and values.
//
// Threads: pure functions, safe from any thread.
#pragma once

#include <cstdint>

#include "Base/PlixUnicodeString.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class VLCHARTBASE_API KGChartColorMode {
public:
    enum KGS52ColorMode : int32_t { DayBright = 0, Dusk = 1, Night = 2 };

    // Out-of-range values are named "DayBright".
    static PLIX::PlixUnicodeString GetColorModeName(KGS52ColorMode mode);
    // Case-insensitive, untrimmed; an unknown name gives DayBright.
    static KGS52ColorMode GetColorMode(const PLIX::PlixUnicodeString& name);
};

class VLCHARTBASE_API KGChartDisplayCategory {
public:
    enum KGS52DisplayCategory : int32_t { DisplayBase = 0, Standard = 1, Other = 2 };

    // Out-of-range values are named "STANDARD".
    static PLIX::PlixUnicodeString GetDisplayCategoryName(KGS52DisplayCategory category);
    // Case-insensitive, untrimmed; an unknown name gives Standard.
    static KGS52DisplayCategory GetDisplayCategory(const PLIX::PlixUnicodeString& name);
};

class VLCHARTBASE_API KGChartDisplayStyle {
public:
    enum KGChartDisplayStyleType : int32_t { NoStyle = 0, ENC = 1, PaperChart = 2 };

    // Out-of-range values and NoStyle are named "".
    static PLIX::PlixUnicodeString GetChartDisplayStyleTypeName(KGChartDisplayStyleType type);
    // Case-insensitive, untrimmed; an unknown name gives NoStyle.
    static KGChartDisplayStyleType GetChartDisplayStyleType(const PLIX::PlixUnicodeString& name);
};

using KGS52ColorMode = KGChartColorMode::KGS52ColorMode;
using KGS52DisplayCategory = KGChartDisplayCategory::KGS52DisplayCategory;
using KGChartDisplayStyleType = KGChartDisplayStyle::KGChartDisplayStyleType;

}  // namespace KGC
