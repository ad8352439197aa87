// The presentation style records that the S-52 look-up tables are parsed into: one object
// style per look-up entry, with its attribute conditions and what its instructions draw.
//
// Threads: plain records: const access from several threads at once, changes by one thread alone.
#pragma once

#include <cstdint>

#include "Base/PlixArray.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartDisplayTypes.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

// One SY instruction: a symbol, turned by a fixed angle or by the feature's "ORIENT".
class VLCHARTBASE_API KGChartSymbolMarkerStyle {
public:
    PLIX::PlixUnicodeString SymbolName;
    bool RotateByOrient = false;
    // As written in the instruction; the unit is the presentation library's.
    double Rotation = 0.0;
};

// One LS instruction: a simple line.
class VLCHARTBASE_API KGChartLineStyle {
public:
    enum LinePattern : int32_t { Solid = 1, Dash = 2, Dotted = 3 };

    int32_t Pattern = Solid;
    int32_t Width = 1;
    // Looked up in the colour table of the current colour mode.
    PLIX::PlixUnicodeString ColorToken;
};

// One TX or TE instruction. The codes are S-52's and are stored uninterpreted; the font and
// colour arguments of the instruction are not kept.
class VLCHARTBASE_API KGChartTextFormat {
public:
    // TX: the text or attribute to show; TE: the attribute acronyms to format.
    PLIX::PlixUnicodeString Text;
    int32_t HJust = 3;
    int32_t VJust = 1;
    int32_t Space = 2;
    int32_t XOffset = 0;
    int32_t YOffset = 0;
    // TE only: the printf-style format; empty for TX.
    PLIX::PlixUnicodeString Format;
};

// One condition of an entry's attribute combination. The catch-all condition has an empty
// acronym. At most one of the two values is set, chosen by the attribute's dictionary type.
class VLCHARTBASE_API KGChartAttributeCondition {
public:
    PLIX::PlixUnicodeString AttributeAcronym;
    // Enumerated and integer attributes.
    int32_t IntegerValue = 0;
    // Every other attribute type, as written.
    PLIX::PlixUnicodeString TextValue;
};

// The style of one point look-up entry.
class VLCHARTBASE_API KGChartPointObjectStyle {
public:
    PLIX::PlixArray<KGChartAttributeCondition> AttributeConditions;
    KGS52DisplayCategory DisplayCategory = KGChartDisplayCategory::Standard;
    PLIX::PlixArray<KGChartSymbolMarkerStyle> Symbols;
    // A conditional symbology procedure with a name was read.
    bool HasProcedure = false;
    // At least one drawing instruction (anything but CS) was read.
    bool HasInstruction = false;
    PLIX::PlixArray<KGChartTextFormat> Texts;
    int32_t DisplayPriority = 0;
};

// The style of one line look-up entry.
class VLCHARTBASE_API KGChartLineObjectStyle {
public:
    PLIX::PlixArray<KGChartAttributeCondition> AttributeConditions;
    KGS52DisplayCategory DisplayCategory = KGChartDisplayCategory::Standard;
    // The argument of LC.
    PLIX::PlixUnicodeString ComplexLineName;
    // Solid, width 1, no colour until an LS instruction says otherwise.
    KGChartLineStyle LineStyle;
    bool HasProcedure = false;
    bool HasInstruction = false;
    // A line carries a single symbol: a later SY overwrites an earlier one.
    KGChartSymbolMarkerStyle Symbol;
    PLIX::PlixArray<KGChartTextFormat> Texts;
    int32_t DisplayPriority = 0;
};

// The style of one area look-up entry.
class VLCHARTBASE_API KGChartAreaObjectStyle {
public:
    PLIX::PlixArray<KGChartAttributeCondition> AttributeConditions;
    KGS52DisplayCategory DisplayCategory = KGChartDisplayCategory::Standard;
    // The boundary, from LC.
    PLIX::PlixUnicodeString ComplexLineName;
    // The boundary, from LS.
    KGChartLineStyle LineStyle;
    // From AC: the fill colour and its transparency digit.
    PLIX::PlixUnicodeString FillColorToken;
    int32_t FillTransparency = 0;
    // The argument of AP.
    PLIX::PlixUnicodeString PatternName;
    bool HasProcedure = false;
    bool HasInstruction = false;
    // Centred symbols, one per SY.
    PLIX::PlixArray<KGChartSymbolMarkerStyle> Symbols;
    PLIX::PlixArray<KGChartTextFormat> Texts;
    int32_t DisplayPriority = 0;
};

}  // namespace KGC
