// The S-52 look-up tables: the defaults of the style records, the entry field parsers, attribute
// combinations, symbolization instructions, loading and querying the index, the real tables.
#include "ChartBase/KGChartLookupTable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <functional>
#include <initializer_list>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "ChartBase/KGChartEnvironment.h"
#include "ChartBase/KGS57Dictionary.h"
#include "TestSupport.h"

using namespace KGC;
using Str = PLIX::PlixUnicodeString;
using Table = KGChartLookupTable;

namespace {

const auto U = [](const Str& s) { return s.ToUtf8(); };
const auto I = [](int value) { return std::to_string(value); };
const auto Data = [](const char* name) { return Str(vltest::TestDataDir() + "lookup/" + name); };
// Attribute types: E and I give numbers, every other family text, an unknown acronym neither.
void LoadDictionary() {
    ASSERT_TRUE(KGS57Config::GetInstance()->LoadS57AttributesFile(Data("attributes.xml")));
}

// One-line dumps of the records; the rows and expected files below are written in them.
std::string Dump(const KGChartAttributeCondition& c) {
    return "{" + U(c.AttributeAcronym) + "=" + I(c.IntegerValue) + "/" + U(c.TextValue) + "}";
}
std::string Dump(const KGChartSymbolMarkerStyle& s) {
    std::ostringstream out;
    out << " SY(" << U(s.SymbolName) << (s.RotateByOrient ? ",ORIENT," : ",") << s.Rotation << ")";
    return out.str();
}
std::string Dump(const KGChartLineStyle& l) {
    return " LS(" + I(l.Pattern) + "," + I(l.Width) + "," + U(l.ColorToken) + ")";
}
std::string Dump(const KGChartTextFormat& t) {
    return " T(" + U(t.Format) + "|" + U(t.Text) + "|" + I(t.HJust) + "," + I(t.VJust) + "," +
           I(t.Space) + "," + I(t.XOffset) + "," + I(t.YOffset) + ")";
}
template <typename T>
std::string Dump(const PLIX::PlixArray<T>& items) {
    std::string out;
    for (const T& item : items) out += Dump(item);
    return out;
}
// What an instruction field fills, after the procedure and instruction flags.
const auto Flags = [](const auto& s) { return "f" + I(s.HasProcedure) + I(s.HasInstruction); };
std::string Draw(const KGChartPointObjectStyle& s) {
    return Flags(s) + Dump(s.Symbols) + Dump(s.Texts);
}
std::string Draw(const KGChartLineObjectStyle& s) {
    return Flags(s) + " LC(" + U(s.ComplexLineName) + ")" + Dump(s.LineStyle) + Dump(s.Symbol) +
           Dump(s.Texts);
}
std::string Draw(const KGChartAreaObjectStyle& s) {
    return Flags(s) + " LC(" + U(s.ComplexLineName) + ")" + Dump(s.LineStyle) + " AC(" +
           U(s.FillColorToken) + "," + I(s.FillTransparency) + ") AP(" + U(s.PatternName) + ")" +
           Dump(s.Symbols) + Dump(s.Texts);
}
template <typename S>
std::string Entry(const S& s) {
    return Dump(s.AttributeConditions) + " c" + I(s.DisplayCategory) + " p" + I(s.DisplayPriority) +
           " " + Draw(s);
}
template <typename Items>
std::string DumpGroup(const Items& items) {
    std::string out = U(items.ObjectAcronym) + " cs=" + U(items.ProcedureName) + "\n";
    for (const auto* style : items.Styles) out += "  " + Entry(*style) + "\n";
    return out;
}
template <typename Map>
std::string DumpIndex(const Map& table) {
    std::string out;
    for (const auto& entry : table) out += "[" + U(entry.first) + "] " + DumpGroup(entry.second);
    return out;
}

TEST(LookupStyleTest, RecordsStartFromTheDefaultsTheInstructionParserReliesOn) {
    EXPECT_EQ(Entry(KGChartPointObjectStyle()), " c1 p0 f00");
    EXPECT_EQ(Entry(KGChartLineObjectStyle()), " c1 p0 f00 LC() LS(1,1,) SY(,0)");
    EXPECT_EQ(Entry(KGChartAreaObjectStyle()), " c1 p0 f00 LC() LS(1,1,) AC(,0) AP()");
    EXPECT_EQ(Dump(KGChartTextFormat()), " T(||3,1,2,0,0)");
    EXPECT_EQ(Dump(KGChartAttributeCondition()), "{=0/}");
}

template <typename S, typename Parse>
std::function<std::string(Str&)> Instructions(Parse parse) {
    return [parse](Str& entry) {
        S style;
        Str procedure;
        const bool ok = parse(entry, procedure, &style);
        return I(ok) + "[" + U(procedure) + "] " + Draw(style);
    };
}
template <typename Target, typename Parse>
std::function<std::string(Str&)> Arguments(Parse parse, Target start) {
    return [parse, start](Str& args) {
        Target target = start;
        parse(args, target);
        return Dump(target);
    };
}

const std::map<std::string, std::function<std::string(Str&)>> kParsers = {
    {"acronym", [](Str& e) { return U(Table::ParseObjectAcronym(e)); }},
    {"priority", [](Str& e) { return I(Table::ParseDisplayPriority(e)); }},
    {"radar", [](Str& e) { return U(Table::ParseRadar(e)); }},
    {"category", [](Str& e) { return I(Table::ParerDisplayCategory(e)); }},
    {"group", [](Str& e) { return I(Table::ParseGroup(e)); }},
    {"conditions",
     [](Str& e) {
         PLIX::PlixArray<KGChartAttributeCondition> conditions;
         conditions.Add(KGChartAttributeCondition());
         Table::ParseAttributeCombination(e, conditions);
         return Dump(conditions);
     }},
    {"line entry",
     [](Str& e) {
         KGChartLineObjectStyle style;
         Str procedure;
         const std::string acronym = U(Table::ParseOneLineStringLine(e, &style, procedure));
         return acronym + "[" + U(procedure) + "]" + Entry(style);
     }},
    {"SY", Arguments(Table::ParseSY, KGChartSymbolMarkerStyle{Str(), true, 7.0})},
    {"LS", Arguments(Table::ParseLS, KGChartLineStyle{KGChartLineStyle::Dash, 1, Str()})},
    {"TX", Arguments(Table::ParseTX, KGChartTextFormat())},
    {"TE", Arguments(Table::ParseTE, KGChartTextFormat())},
    {"P", Instructions<KGChartPointObjectStyle>(Table::ParseSymbolizationInstructionpPoint)},
    {"L", Instructions<KGChartLineObjectStyle>(Table::ParseSymbolizationInstructionpLine)},
    {"A", Instructions<KGChartAreaObjectStyle>(Table::ParseSymbolizationInstructionpArea)},
};

// The cases are rows of lookup/parsers.txt, which describes its columns.
TEST(LookupParsersTest, FieldAttributeArgumentAndInstructionCases) {
    LoadDictionary();
    std::istringstream cases(vltest::ReadFile(U(Data("parsers.txt"))));
    std::string line;
    int count = 0;
    while (std::getline(cases, line)) {
        if (line.empty() || line[0] == '#') continue;
        SCOPED_TRACE(line);
        std::vector<std::string> column;
        for (size_t start = 0, tab = 0; tab != std::string::npos; start = tab + 1) {
            tab = line.find('\t', start);
            column.push_back(line.substr(start, tab - start));
        }
        ASSERT_EQ(column.size(), 4u);
        Str text(column[1]);
        EXPECT_EQ(kParsers.at(column[0])(text), column[2]);
        const std::string& rest = column[3];
        if (rest != "*") {
            EXPECT_EQ(U(text), rest == "=" ? column[1] : rest == "-" ? "" : rest);
        }
        ++count;
    }
    EXPECT_EQ(count, 84);
}

TEST(LookupInstructionsTest, NullStyleIsRefusedWithoutTouchingTheEntry) {
    Str entry("\"SY(A)\",\"5\"");
    Str procedure(u"kept");
    EXPECT_FALSE(Table::ParseSymbolizationInstructionpPoint(entry, procedure, nullptr));
    EXPECT_FALSE(Table::ParseSymbolizationInstructionpLine(entry, procedure, nullptr));
    EXPECT_FALSE(Table::ParseSymbolizationInstructionpArea(entry, procedure, nullptr));
    EXPECT_EQ(U(entry) + U(procedure), "\"SY(A)\",\"5\"kept");
    EXPECT_TRUE(Table::ParseOneLineStringPoint(entry, nullptr, procedure).IsEmpty());
    EXPECT_TRUE(Table::ParseOneLineStringLine(Str(), nullptr, procedure).IsEmpty());
    EXPECT_TRUE(Table::ParseOneLineStringArea(Str(), nullptr, procedure).IsEmpty());
}

// Loads the fixture table as one kind into a fresh table: its index, then queries.
template <typename Items, typename Map>
std::string LoadAndQuery(bool (Table::*load)(const Str&),
                         bool (Table::*get)(const Str&, Items&) const,
                         const Map& (Table::*index)() const) {
    Table table;
    EXPECT_TRUE((table.*load)(Data("table.dic")));
    std::string out = DumpIndex((table.*index)());
    for (const char* acronym : {"LIGHTS", "lights", "NOSUCH", ""}) {
        Items items;
        items.ObjectAcronym = "untouched";
        const bool found = (table.*get)(Str(acronym), items);
        out += std::string("get '") + acronym + "': " + I(found) + " " + U(items.ObjectAcronym) +
               " " + I(items.Styles.GetSize()) + "\ncs '" + acronym + "':";
        for (const char* geometry : {"P", "p", "L", "l", "A", "a", "Area", ""}) {
            out += std::string(" ") + geometry + "=" +
                   U(table.GetConditionalSymbologyProcedure(Str(acronym), Str(geometry)));
        }
        out += "\n";
    }
    return out;
}

TEST(LookupLoaderTest, FixtureTableLoadedAsEachKind) {
    LoadDictionary();
    const std::string out =
        "== point\n" +
        LoadAndQuery(&Table::LoadPointLookupTable, &Table::GetLookupPointItems,
                     &Table::GetPointTable) +
        "== line\n" +
        LoadAndQuery(&Table::LoadLineLookupTable, &Table::GetLookupLineItems,
                     &Table::GetLineTable) +
        "== area\n" +
        LoadAndQuery(&Table::LoadAreaLookupTable, &Table::GetLookupAreaItems, &Table::GetAreaTable);
    EXPECT_EQ(out, vltest::ReadFile(U(Data("table.expected.txt"))));
}

TEST(LookupLoaderTest, ReloadReplacesItsOwnKindAndAFailedOpenKeepsIt) {
    vltest::TempDir dir;
    vltest::WriteFile(dir.File("p.dic"),
                      "\"BOYLAT\",\"\",\"SY(NEW1)\"\n\"BOYLAT\",\"\",\"SY(NEW2)\"");
    vltest::WriteFile(dir.File("empty.dic"), "");
    setenv("VLCHART_TRACE", dir.File("trace.txt").c_str(), 1);
    Table table;
    EXPECT_TRUE(table.ReadLineString().IsEmpty()) << "no file yet";
    ASSERT_TRUE(table.LoadLineLookupTable(Data("table.dic")));
    const std::string lines = DumpIndex(table.GetLineTable());
    ASSERT_TRUE(table.LoadPointLookupTable(Data("table.dic")));
    unsetenv("VLCHART_TRACE");
    EXPECT_EQ(vltest::ReadFile(dir.File("trace.txt")).rfind("LoadPointLookupTable Cost: "), 0u)
        << "the point load alone writes its timing, once";
    ASSERT_TRUE(table.LoadPointLookupTable(Str(dir.File("p.dic"))));
    const std::string reloaded = DumpIndex(table.GetPointTable());
    EXPECT_EQ(reloaded,
              "[BOYLAT] BOYLAT cs=\n  {=0/} c1 p0 f01 SY(NEW1,0)\n"
              "  {=0/} c1 p0 f01 SY(NEW2,0)\n");
    EXPECT_FALSE(table.LoadPointLookupTable(Str(dir.File("gone.dic"))));
    EXPECT_FALSE(table.LoadPointLookupTable(Str(dir.Path())));
    EXPECT_FALSE(table.LoadLineLookupTable(Str(dir.Path())) ||
                 table.LoadAreaLookupTable(Str(dir.File("gone.dic"))));
    EXPECT_EQ(DumpIndex(table.GetPointTable()), reloaded);
    KGChartLookupPointItems items;
    items.ObjectAcronym = "untouched";
    EXPECT_FALSE(table.GetLookupPointItems(u"LIGHTS", items)) << "no ###### entry";
    EXPECT_EQ(U(items.ObjectAcronym), "untouched");
    EXPECT_TRUE(table.LoadPointLookupTable(Str(dir.File("empty.dic"))));
    EXPECT_TRUE(table.GetPointTable().IsEmpty());
    EXPECT_EQ(DumpIndex(table.GetLineTable()), lines);
    table.DeleteLineStyle();
    table.DeleteLineStyle();
    EXPECT_TRUE(table.GetLineTable().IsEmpty());
    EXPECT_TRUE(table.ReadLineString().IsEmpty()) << "the file is read to its end";
}

TEST(LookupLoaderTest, HostileLinesAreSkippedOrReadAsFarAsTheyGo) {
    LoadDictionary();
    vltest::TempDir dir;
    const char binary[] = "\"BINARY\",\"\x01\x02\",\"SY(B\x00\xff\xfe)\",\"\x7f\"\n";
    std::string content(binary, sizeof(binary) - 1);
    content += "\"HUGE01\",\"";  // read in one pass: a quadratic parse would take minutes
    for (int i = 0; i < 100000; ++i) content += "BOYSHP2";
    content += "\",\"";
    for (int i = 0; i < 200000; ++i) content += "SY(S);";
    content += "AC(DEPVS)\",\"3\"\n" + std::string(1u << 20, 'x') + "\n\"LAST01\",\"\",\"\"\n";
    vltest::WriteFile(dir.File("bad.dic"), content);
    Table table;
    ASSERT_TRUE(table.LoadAreaLookupTable(Str(dir.File("bad.dic"))));
    ASSERT_EQ(table.GetAreaTable().GetCount(), 3);
    KGChartLookupAreaItems items;
    ASSERT_TRUE(table.GetLookupAreaItems(u"BINARY", items));
    EXPECT_EQ(items.Styles[0]->Symbols[0].SymbolName.Str(),
              (std::u16string{u'B', u'\0', u'\xfffd', u'\xfffd'}));
    ASSERT_TRUE(table.GetLookupAreaItems(u"HUGE01", items));
    const KGChartAreaObjectStyle& huge = *items.Styles[0];
    ASSERT_EQ(huge.AttributeConditions.GetSize(), 100000);
    EXPECT_EQ(huge.AttributeConditions[99999].IntegerValue, 2);
    EXPECT_EQ(huge.Symbols.GetSize(), 200000);
    EXPECT_EQ(U(huge.FillColorToken) + I(huge.DisplayPriority), "DEPVS3");
}

template <typename Map>
std::string Count(const Map& table) {
    int styles = 0;
    for (const auto& entry : table) styles += entry.second.Styles.GetSize();
    return I(table.GetCount()) + "/" + I(styles);
}

TEST(LookupRealDataTest, CountsAndAHandfulOfEntries) {
    VLTEST_REQUIRE_REAL_DATA();
    vltest::ModulePathOverride module(vltest::RealDataDir());
    KGChartEnvironment env;
    ASSERT_TRUE(KGS57Config::GetInstance()->LoadS57AttributesFile(
        env.GetS57AttributeDictFileAbsolutePath()));
    Table table;
    std::string out;
    auto show = [&](const char* name, const auto& index, std::initializer_list<const char*> picks) {
        out += std::string("== ") + name + ": points " + Count(table.GetPointTable()) + " lines " +
               Count(table.GetLineTable()) + " areas " + Count(table.GetAreaTable()) + "\n";
        for (const char* acronym : picks) {
            const auto* items = index.Find(Str(acronym));
            out += items ? DumpGroup(*items) : std::string("missing ") + acronym + "\n";
        }
    };
    ASSERT_TRUE(table.LoadPointLookupTable(env.GetPointLookupTableAbsolutePath(u"S52", 1)));
    show("simplified points", table.GetPointTable(),
         {"######", "LIGHTS", "SOUNDG", "BOYLAT", "BUISGL"});
    ASSERT_TRUE(table.LoadPointLookupTable(env.GetPointLookupTableAbsolutePath(u"S52", 0)));
    show("paper chart points", table.GetPointTable(), {"LIGHTS"});
    ASSERT_TRUE(table.LoadLineLookupTable(env.GetLineLookupTableAbsolutePath(u"S52")));
    show("lines", table.GetLineTable(), {"######", "BRIDGE", "NAVLNE", "DEPCNT"});
    ASSERT_TRUE(table.LoadAreaLookupTable(env.GetAreaLookupTableAbsolutePath(u"S52", 0)));
    show("plain areas", table.GetAreaTable(),
         {"######", "DEPARE", "TSEZNE", "DWRTPT", "hrbfac", "dnghlt"});
    ASSERT_TRUE(table.LoadAreaLookupTable(env.GetAreaLookupTableAbsolutePath(u"S52", 1)));
    show("symbolized areas", table.GetAreaTable(), {"CBLARE"});
    EXPECT_EQ(out, vltest::ReadFile(U(Data("real.expected.txt"))));
}

}  // namespace
