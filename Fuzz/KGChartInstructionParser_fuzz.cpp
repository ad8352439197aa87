// libFuzzer harness for the instruction parsers: each line of the input as the instruction
// field of a point, line and area entry, and as the arguments of SY, LS, TX and TE; a point
// or line entry parsed in one pass names no object or the one the acronym parser names.
#include "ChartBase/KGChartLookupTable.h"
#include "FuzzSupport.h"

namespace {

using KGC::KGChartLookupTable;
using PLIX::PlixUnicodeString;

void ParseLine(const PlixUnicodeString& line) {
    PlixUnicodeString procedure;
    {
        KGC::KGChartPointObjectStyle style;
        PlixUnicodeString entry(line);
        KGChartLookupTable::ParseSymbolizationInstructionpPoint(entry, procedure, &style);
        PlixUnicodeString copy(line);
        const PlixUnicodeString acronym =
            KGChartLookupTable::ParseOneLineStringPoint(line, &style, procedure);
        vlfuzz::Check(acronym.IsEmpty() || acronym == KGChartLookupTable::ParseObjectAcronym(copy));
    }
    {
        KGC::KGChartLineObjectStyle style;
        PlixUnicodeString entry(line);
        KGChartLookupTable::ParseSymbolizationInstructionpLine(entry, procedure, &style);
        PlixUnicodeString copy(line);
        const PlixUnicodeString acronym =
            KGChartLookupTable::ParseOneLineStringLine(line, &style, procedure);
        vlfuzz::Check(acronym.IsEmpty() || acronym == KGChartLookupTable::ParseObjectAcronym(copy));
    }
    {
        KGC::KGChartAreaObjectStyle style;
        PlixUnicodeString entry(line);
        KGChartLookupTable::ParseSymbolizationInstructionpArea(entry, procedure, &style);
    }
    PlixUnicodeString args(line);
    KGC::KGChartSymbolMarkerStyle symbol;
    KGChartLookupTable::ParseSY(args, symbol);
    args = line;
    KGC::KGChartLineStyle lineStyle;
    KGChartLookupTable::ParseLS(args, lineStyle);
    args = line;
    KGC::KGChartTextFormat text;
    KGChartLookupTable::ParseTX(args, text);
    args = line;
    KGChartLookupTable::ParseTE(args, text);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const PlixUnicodeString text(reinterpret_cast<const char*>(data), size);
    int start = 0;
    while (start <= text.GetLength()) {
        int end = text.Find(u'\n', start);
        if (end < 0) end = text.GetLength();
        ParseLine(text.Mid(start, end - start));
        start = end + 1;
    }
    return 0;
}
