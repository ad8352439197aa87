// libFuzzer harness for the look-up tables: the input is loaded as a point, line and area
// table file; every group must be queryable and hold only live styles; the prepared chooser
// must pick what KGChooseStyle picks for features made from the table's own condition values;
// and each line read in one pass must give what the field parsers give in turn.
//   VLFUZZ_ATTRIBUTES=<S57Attributes.xml> KGChartLookupTable_fuzz -max_total_time=60 corpus/
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGChartStyleChoice.h"
#include "ChartBase/KGChartStyleChooser.h"
#include "ChartBase/KGS57Dictionary.h"

namespace {

using KGC::KGChartAreaObjectStyle;
using KGC::KGChartLookupTable;
using PLIX::PlixUnicodeString;

void Check(bool condition) {
    if (!condition) __builtin_trap();
}

bool SameText(const KGC::KGChartTextFormat& a, const KGC::KGChartTextFormat& b) {
    return a.Text == b.Text && a.Format == b.Format && a.HJust == b.HJust && a.VJust == b.VJust &&
           a.Space == b.Space && a.XOffset == b.XOffset && a.YOffset == b.YOffset;
}

bool SameStyle(const KGChartAreaObjectStyle& a, const KGChartAreaObjectStyle& b) {
    if (a.AttributeConditions.GetSize() != b.AttributeConditions.GetSize()) return false;
    for (int i = 0; i < a.AttributeConditions.GetSize(); ++i) {
        const auto& x = a.AttributeConditions[i];
        const auto& y = b.AttributeConditions[i];
        if (x.AttributeAcronym != y.AttributeAcronym || x.IntegerValue != y.IntegerValue ||
            x.TextValue != y.TextValue) {
            return false;
        }
    }
    if (a.Symbols.GetSize() != b.Symbols.GetSize() || a.Texts.GetSize() != b.Texts.GetSize()) {
        return false;
    }
    for (int i = 0; i < a.Symbols.GetSize(); ++i) {
        const auto& x = a.Symbols[i];
        const auto& y = b.Symbols[i];
        // Rotations compare as bits: a NaN read from the text must come out the same.
        if (x.SymbolName != y.SymbolName || x.RotateByOrient != y.RotateByOrient ||
            std::to_string(x.Rotation) != std::to_string(y.Rotation)) {
            return false;
        }
    }
    for (int i = 0; i < a.Texts.GetSize(); ++i) {
        if (!SameText(a.Texts[i], b.Texts[i])) return false;
    }
    return a.DisplayCategory == b.DisplayCategory && a.DisplayPriority == b.DisplayPriority &&
           a.ComplexLineName == b.ComplexLineName && a.LineStyle.Pattern == b.LineStyle.Pattern &&
           a.LineStyle.Width == b.LineStyle.Width &&
           a.LineStyle.ColorToken == b.LineStyle.ColorToken &&
           a.FillColorToken == b.FillColorToken && a.FillTransparency == b.FillTransparency &&
           a.PatternName == b.PatternName && a.HasProcedure == b.HasProcedure &&
           a.HasInstruction == b.HasInstruction;
}

void CompareOnePassWithFieldParsers(const PlixUnicodeString& line) {
    KGChartAreaObjectStyle expected;
    PlixUnicodeString entry(line);
    PlixUnicodeString expectedProcedure;
    const PlixUnicodeString acronym = KGChartLookupTable::ParseObjectAcronym(entry);
    KGChartLookupTable::ParseAttributeCombination(entry, expected.AttributeConditions);
    KGChartLookupTable::ParseSymbolizationInstructionpArea(entry, expectedProcedure, &expected);
    expected.DisplayPriority = KGChartLookupTable::ParseDisplayPriority(entry);
    KGChartLookupTable::ParseRadar(entry);
    expected.DisplayCategory = KGChartLookupTable::ParerDisplayCategory(entry);
    KGChartLookupTable::ParseGroup(entry);
    Check(entry.IsEmpty());

    KGChartAreaObjectStyle style;
    PlixUnicodeString procedure;
    Check(KGChartLookupTable::ParseOneLineStringArea(line, &style, procedure) == acronym);
    Check(procedure == expectedProcedure);
    Check(SameStyle(style, expected));
}

// A feature with the values one style's conditions name, as written; with emptied, the first
// attribute present without a value.
template <typename Style>
KGC::KGFeatureAttributes FeatureFrom(const Style& style, bool emptied) {
    KGC::KGFeatureAttributes feature;
    for (const auto& c : style.AttributeConditions) {
        if (c.AttributeAcronym.IsEmpty()) continue;
        feature.SetAt(c.AttributeAcronym, !c.TextValue.IsEmpty() ? c.TextValue
                                          : c.IntegerValue != 0
                                              ? PlixUnicodeString(std::to_string(c.IntegerValue))
                                              : PlixUnicodeString(u"x"));
    }
    if (emptied && feature.GetCount() > 0) feature.begin()->second.Empty();
    return feature;
}

template <typename Map, typename Items, typename Get, typename Prepared>
void CheckTable(const KGChartLookupTable& table, const Map& map, Get get, Prepared prepared) {
    const KGC::KGChartStyleChooser chooser(table);
    for (const auto& entry : map) {
        Items items;
        Check((table.*get)(entry.first, items));
        Check(items.ObjectAcronym == entry.first);
        Check(!items.Styles.IsEmpty());
        for (const auto* style : items.Styles) {
            Check(style != nullptr);
            Check(!style->AttributeConditions.IsEmpty());
            for (bool emptied : {false, true}) {
                const auto feature = FeatureFrom(*style, emptied);
                Check((chooser.*prepared)(entry.first, feature) ==
                      KGC::KGChooseStyle(items, feature));
            }
        }
    }
}

}  // namespace

// Attribute types come from the attribute dictionary named by VLFUZZ_ATTRIBUTES, when set;
// without it every attribute is unknown and conditions keep only their acronyms.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    if (const char* attributes = getenv("VLFUZZ_ATTRIBUTES")) {
        KGC::KGS57Config::GetInstance()->LoadS57AttributesFile(attributes);
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // One scratch file for every input, removed when the fuzzer exits.
    static const struct ScratchFile {
        std::string path;
        ScratchFile() {
            char name[] = "/tmp/vlfuzz-lookup-XXXXXX";
            const int fd = mkstemp(name);
            if (fd >= 0) close(fd);
            path = name;
        }
        ~ScratchFile() { unlink(path.c_str()); }
    } scratch;
    const std::string& path = scratch.path;
    FILE* file = fopen(path.c_str(), "wb");
    if (file == nullptr) return 0;
    fwrite(data, 1, size, file);
    fclose(file);

    KGChartLookupTable table;
    Check(table.LoadPointLookupTable(path));
    Check(table.LoadLineLookupTable(path));
    Check(table.LoadAreaLookupTable(path));
    CheckTable<KGChartLookupTable::PointTableMap, KGC::KGChartLookupPointItems>(
        table, table.GetPointTable(), &KGChartLookupTable::GetLookupPointItems,
        &KGC::KGChartStyleChooser::ChoosePoint);
    CheckTable<KGChartLookupTable::LineTableMap, KGC::KGChartLookupLineItems>(
        table, table.GetLineTable(), &KGChartLookupTable::GetLookupLineItems,
        &KGC::KGChartStyleChooser::ChooseLine);
    CheckTable<KGChartLookupTable::AreaTableMap, KGC::KGChartLookupAreaItems>(
        table, table.GetAreaTable(), &KGChartLookupTable::GetLookupAreaItems,
        &KGC::KGChartStyleChooser::ChooseArea);
    table.GetConditionalSymbologyProcedure(u"LIGHTS", u"p");

    // Each line of the input, as the loader would see it after trimming.
    const PlixUnicodeString text(reinterpret_cast<const char*>(data), size);
    int start = 0;
    while (start <= text.GetLength()) {
        int end = text.Find(u'\n', start);
        if (end < 0) end = text.GetLength();
        PlixUnicodeString line = text.Mid(start, end - start);
        line.Trim();
        if (!line.IsEmpty()) CompareOnePassWithFieldParsers(line);
        start = end + 1;
    }
    return 0;
}
