// The five look-up tables of the real "S52" style, found through the chart environment, with
// attribute types from the real attribute dictionary: counts, fallbacks, and a dozen entries
// checked field by field.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "ChartBase/KGChartEnvironment.h"
#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGS57Dictionary.h"
#include "TestSupport.h"

using namespace KGC;
using PLIX::PlixUnicodeString;

namespace {

int CountStyles(const KGChartLookupTable::PointTableMap& table) {
    int n = 0;
    for (const auto& entry : table) n += entry.second.Styles.GetSize();
    return n;
}
int CountStyles(const KGChartLookupTable::LineTableMap& table) {
    int n = 0;
    for (const auto& entry : table) n += entry.second.Styles.GetSize();
    return n;
}
int CountStyles(const KGChartLookupTable::AreaTableMap& table) {
    int n = 0;
    for (const auto& entry : table) n += entry.second.Styles.GetSize();
    return n;
}

void ExpectCondition(const KGChartAttributeCondition& c, const char* acronym, int integer,
                     const char* text) {
    EXPECT_EQ(c.AttributeAcronym.ToUtf8(), acronym);
    EXPECT_EQ(c.IntegerValue, integer) << acronym;
    EXPECT_EQ(c.TextValue.ToUtf8(), text) << acronym;
}

void ExpectText(const KGChartTextFormat& t, const char* format, const char* text, int hjust,
                int vjust, int space, int x, int y) {
    EXPECT_EQ(t.Format.ToUtf8(), format);
    EXPECT_EQ(t.Text.ToUtf8(), text);
    EXPECT_EQ(t.HJust, hjust) << text;
    EXPECT_EQ(t.VJust, vjust) << text;
    EXPECT_EQ(t.Space, space) << text;
    EXPECT_EQ(t.XOffset, x) << text;
    EXPECT_EQ(t.YOffset, y) << text;
}

class RealLookupTablesTest : public ::testing::Test {
protected:
    void SetUp() override {
        VLTEST_REQUIRE_REAL_DATA();
        m_module = std::make_unique<vltest::ModulePathOverride>(vltest::RealDataDir());
        KGChartEnvironment env;
        ASSERT_TRUE(KGS57Config::GetInstance()->LoadS57AttributesFile(
            env.GetS57AttributeDictFileAbsolutePath()));
        m_simplified = env.GetPointLookupTableAbsolutePath(u"S52", 1);
        m_paper = env.GetPointLookupTableAbsolutePath(u"S52", 0);
        m_lines = env.GetLineLookupTableAbsolutePath(u"S52");
        m_plain = env.GetAreaLookupTableAbsolutePath(u"S52", 0);
        m_symbolized = env.GetAreaLookupTableAbsolutePath(u"S52", 1);
    }

    std::unique_ptr<vltest::ModulePathOverride> m_module;
    PlixUnicodeString m_simplified, m_paper, m_lines, m_plain, m_symbolized;
    KGChartLookupTable m_table;
};

TEST_F(RealLookupTablesTest, EveryEntryOfEveryTableYieldsAStyle) {
    ASSERT_TRUE(m_table.LoadPointLookupTable(m_simplified));
    EXPECT_EQ(m_table.GetPointTable().GetCount(), 152);
    EXPECT_EQ(CountStyles(m_table.GetPointTable()), 751);
    ASSERT_TRUE(m_table.LoadPointLookupTable(m_paper));
    EXPECT_EQ(m_table.GetPointTable().GetCount(), 152);
    EXPECT_EQ(CountStyles(m_table.GetPointTable()), 1273);
    ASSERT_TRUE(m_table.LoadLineLookupTable(m_lines));
    EXPECT_EQ(m_table.GetLineTable().GetCount(), 89);
    EXPECT_EQ(CountStyles(m_table.GetLineTable()), 273);
    ASSERT_TRUE(m_table.LoadAreaLookupTable(m_plain));
    EXPECT_EQ(m_table.GetAreaTable().GetCount(), 144);
    EXPECT_EQ(CountStyles(m_table.GetAreaTable()), 340);
    ASSERT_TRUE(m_table.LoadAreaLookupTable(m_symbolized));
    EXPECT_EQ(m_table.GetAreaTable().GetCount(), 146);
    EXPECT_EQ(CountStyles(m_table.GetAreaTable()), 347);
    // Loading the symbolized areas left points and lines alone.
    EXPECT_EQ(CountStyles(m_table.GetPointTable()), 1273);
    EXPECT_EQ(CountStyles(m_table.GetLineTable()), 273);
}

TEST_F(RealLookupTablesTest, ProceduresAndTheFallback) {
    ASSERT_TRUE(m_table.LoadPointLookupTable(m_simplified));
    ASSERT_TRUE(m_table.LoadLineLookupTable(m_lines));
    ASSERT_TRUE(m_table.LoadAreaLookupTable(m_plain));
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"LIGHTS", u"P").ToUtf8(), "LIGHTS05");
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"SOUNDG", u"p").ToUtf8(), "SOUNDG02");
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"DEPCNT", u"L").ToUtf8(), "DEPCNT02");
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"DEPARE", u"A").ToUtf8(), "DEPARE01");
    EXPECT_TRUE(m_table.GetConditionalSymbologyProcedure(u"NOSUCH", u"P").IsEmpty());

    KGChartLookupPointItems point;
    ASSERT_TRUE(m_table.GetLookupPointItems(u"NOSUCH", point));
    EXPECT_EQ(point.ObjectAcronym.ToUtf8(), "######");
    ASSERT_EQ(point.Styles.GetSize(), 1);
    EXPECT_EQ(point.Styles[0]->Symbols[0].SymbolName.ToUtf8(), "QUESMRK1");
    KGChartLookupLineItems line;
    ASSERT_TRUE(m_table.GetLookupLineItems(u"NOSUCH", line));
    EXPECT_EQ(line.Styles[0]->ComplexLineName.ToUtf8(), "QUESMRK1");
    KGChartLookupAreaItems area;
    ASSERT_TRUE(m_table.GetLookupAreaItems(u"NOSUCH", area));
    EXPECT_EQ(area.Styles[0]->PatternName.ToUtf8(), "QUESMRK1");
    EXPECT_EQ(area.Styles[0]->LineStyle.Pattern, 2);
}

TEST_F(RealLookupTablesTest, LightsAndBuoysOfThePointTables) {
    ASSERT_TRUE(m_table.LoadPointLookupTable(m_simplified));
    KGChartLookupPointItems items;
    ASSERT_TRUE(m_table.GetLookupPointItems(u"LIGHTS", items));
    EXPECT_EQ(items.ProcedureName.ToUtf8(), "LIGHTS05");
    ASSERT_EQ(items.Styles.GetSize(), 1);
    const KGChartPointObjectStyle* light = items.Styles[0];
    ASSERT_EQ(light->AttributeConditions.GetSize(), 1);
    ExpectCondition(light->AttributeConditions[0], "", 0, "");
    EXPECT_TRUE(light->HasProcedure);
    EXPECT_FALSE(light->HasInstruction);
    EXPECT_EQ(light->DisplayPriority, 8);
    EXPECT_EQ(light->DisplayCategory, KGChartDisplayCategory::Standard);

    // "BOYLAT","BOYSHP1COLOUR3,4,3","SY(BOYLAT14);TE('%s','OBJNAM',2,1,2,'15110',-1,-1,CHBLK,21)"
    ASSERT_TRUE(m_table.GetLookupPointItems(u"BOYLAT", items));
    ASSERT_GE(items.Styles.GetSize(), 5);
    const KGChartPointObjectStyle* buoy = items.Styles[0];
    ASSERT_EQ(buoy->AttributeConditions.GetSize(), 2);
    ExpectCondition(buoy->AttributeConditions[0], "BOYSHP", 1, "");
    ExpectCondition(buoy->AttributeConditions[1], "COLOUR", 0, "3,4,3");
    ASSERT_EQ(buoy->Symbols.GetSize(), 1);
    EXPECT_EQ(buoy->Symbols[0].SymbolName.ToUtf8(), "BOYLAT14");
    ASSERT_EQ(buoy->Texts.GetSize(), 1);
    ExpectText(buoy->Texts[0], "%s", "OBJNAM", 2, 1, 2, -1, -1);
    EXPECT_EQ(buoy->DisplayPriority, 8);
    EXPECT_TRUE(buoy->HasInstruction);
    EXPECT_FALSE(buoy->HasProcedure);
    // "BOYLAT","CATLAM3COLOUR3,4,3",...: the enumerated CATLAM is a number.
    ExpectCondition(items.Styles[4]->AttributeConditions[0], "CATLAM", 3, "");
    EXPECT_EQ(items.Styles[4]->Symbols[0].SymbolName.ToUtf8(), "BOYLAT24");

    // "BUISGL","FUNCTN33CONVIS1OBJNAM","SY(POSGEN03);TX(OBJNAM,3,2,2,'15110',1,0,CHBLK,26)"
    ASSERT_TRUE(m_table.GetLookupPointItems(u"BUISGL", items));
    const KGChartPointObjectStyle* building = items.Styles[0];
    ASSERT_EQ(building->AttributeConditions.GetSize(), 3);
    ExpectCondition(building->AttributeConditions[0], "FUNCTN", 0, "33");
    ExpectCondition(building->AttributeConditions[1], "CONVIS", 1, "");
    ExpectCondition(building->AttributeConditions[2], "OBJNAM", 0, "");
    ASSERT_EQ(building->Texts.GetSize(), 1);
    ExpectText(building->Texts[0], "", "OBJNAM", 3, 2, 2, 1, 0);
    EXPECT_EQ(building->DisplayPriority, 6);

    // The paper-chart lights: "LIGHTS","CATLIT1,18COLOUR3","SY(LIGHTS11,ORIENT)".
    ASSERT_TRUE(m_table.LoadPointLookupTable(m_paper));
    ASSERT_TRUE(m_table.GetLookupPointItems(u"LIGHTS", items));
    EXPECT_EQ(items.ProcedureName.ToUtf8(), "LIGHTS05") << "the first named procedure";
    const KGChartPointObjectStyle* sector = items.Styles[0];
    ASSERT_EQ(sector->AttributeConditions.GetSize(), 2);
    ExpectCondition(sector->AttributeConditions[0], "CATLIT", 0, "1,18");
    ExpectCondition(sector->AttributeConditions[1], "COLOUR", 0, "3");
    ASSERT_EQ(sector->Symbols.GetSize(), 1);
    EXPECT_EQ(sector->Symbols[0].SymbolName.ToUtf8(), "LIGHTS11");
    EXPECT_TRUE(sector->Symbols[0].RotateByOrient);
    EXPECT_FALSE(sector->HasProcedure);
}

TEST_F(RealLookupTablesTest, LinesWithFormattedTexts) {
    ASSERT_TRUE(m_table.LoadLineLookupTable(m_lines));
    KGChartLookupLineItems items;
    // "BRIDGE","CATBRG2","LS(SOLD,5,CHGRD);SY(BRIDGE01);TE('clr cl %4.1lf','VERCCL',3,1,2,
    // '15110',1,0,CHBLK,11);TE('clr op %4.1lf','VERCOP',3,1,2,'15110',1,1,CHBLK,11)"
    ASSERT_TRUE(m_table.GetLookupLineItems(u"BRIDGE", items));
    const KGChartLineObjectStyle* bridge = items.Styles[0];
    ExpectCondition(bridge->AttributeConditions[0], "CATBRG", 0, "2");
    EXPECT_EQ(bridge->LineStyle.Pattern, 1);
    EXPECT_EQ(bridge->LineStyle.Width, 5);
    EXPECT_EQ(bridge->LineStyle.ColorToken.ToUtf8(), "CHGRD");
    EXPECT_EQ(bridge->Symbol.SymbolName.ToUtf8(), "BRIDGE01");
    ASSERT_EQ(bridge->Texts.GetSize(), 2);
    ExpectText(bridge->Texts[0], "clr cl %4.1lf", "VERCCL", 3, 1, 2, 1, 0);
    ExpectText(bridge->Texts[1], "clr op %4.1lf", "VERCOP", 3, 1, 2, 1, 1);
    EXPECT_EQ(bridge->DisplayPriority, 8);
    EXPECT_EQ(bridge->DisplayCategory, KGChartDisplayCategory::DisplayBase);

    // "NAVLNE","CATNAV1","LS(DASH,1,CHGRD);TE('%03.0lf deg','ORIENT',3,1,2,'15110',1,-1,...)"
    ASSERT_TRUE(m_table.GetLookupLineItems(u"NAVLNE", items));
    ASSERT_EQ(items.Styles.GetSize(), 3);
    const KGChartLineObjectStyle* navigation = items.Styles[0];
    EXPECT_EQ(navigation->LineStyle.Pattern, 2);
    ExpectText(navigation->Texts[0], "%03.0lf deg", "ORIENT", 3, 1, 2, 1, -1);
    EXPECT_TRUE(items.ProcedureName.IsEmpty());
}

TEST_F(RealLookupTablesTest, AreasWithDepthRangesTransparencyAndBoundaries) {
    ASSERT_TRUE(m_table.LoadAreaLookupTable(m_plain));
    KGChartLookupAreaItems items;
    // "DEPARE","DRVAL1?DRVAL2?","AC(NODTA);AP(PRTSUR01);LS(SOLD,2,CHGRD)","1","S","DISPLAYBASE"
    ASSERT_TRUE(m_table.GetLookupAreaItems(u"DEPARE", items));
    ASSERT_EQ(items.Styles.GetSize(), 2);
    const KGChartAreaObjectStyle* depth = items.Styles[0];
    ASSERT_EQ(depth->AttributeConditions.GetSize(), 2);
    ExpectCondition(depth->AttributeConditions[0], "DRVAL1", 0, "?");
    ExpectCondition(depth->AttributeConditions[1], "DRVAL2", 0, "?");
    EXPECT_EQ(depth->FillColorToken.ToUtf8(), "NODTA");
    EXPECT_EQ(depth->FillTransparency, 0);
    EXPECT_EQ(depth->PatternName.ToUtf8(), "PRTSUR01");
    EXPECT_EQ(depth->LineStyle.Pattern, 1);
    EXPECT_EQ(depth->LineStyle.Width, 2);
    EXPECT_EQ(depth->LineStyle.ColorToken.ToUtf8(), "CHGRD");
    EXPECT_EQ(depth->DisplayPriority, 1);
    EXPECT_EQ(depth->DisplayCategory, KGChartDisplayCategory::DisplayBase);
    EXPECT_EQ(items.ProcedureName.ToUtf8(), "DEPARE01");

    // "TSEZNE","","AC(TRFCF,3)"
    ASSERT_TRUE(m_table.GetLookupAreaItems(u"TSEZNE", items));
    EXPECT_EQ(items.Styles[0]->FillColorToken.ToUtf8(), "TRFCF");
    EXPECT_EQ(items.Styles[0]->FillTransparency, 3);

    // "DWRTPT","ORIENT TRAFIC1","SY(TSSLPT51,ORIENT);SY(DWRTPT51);LS(DASH,3,TRFCD);CS(RESTRN01)"
    ASSERT_TRUE(m_table.GetLookupAreaItems(u"DWRTPT", items));
    const KGChartAreaObjectStyle* route = items.Styles[0];
    ExpectCondition(route->AttributeConditions[0], "ORIENT", 0, " ");
    ExpectCondition(route->AttributeConditions[1], "TRAFIC", 1, "");
    ASSERT_EQ(route->Symbols.GetSize(), 2);
    EXPECT_TRUE(route->Symbols[0].RotateByOrient);
    EXPECT_EQ(route->Symbols[1].SymbolName.ToUtf8(), "DWRTPT51");
    EXPECT_EQ(route->LineStyle.Width, 3);
    EXPECT_TRUE(route->HasProcedure);
    EXPECT_EQ(items.ProcedureName.ToUtf8(), "RESTRN01");

    // The lower-case entries: "hrbfac","cathaf12","AC(CHBRN,3);SY(HRBFAC13)" is its own key,
    // and its attribute is looked up as written (the dictionary has a lower-case "cathaf").
    ASSERT_TRUE(m_table.GetLookupAreaItems(u"hrbfac", items));
    EXPECT_EQ(items.ObjectAcronym.ToUtf8(), "hrbfac");
    ExpectCondition(items.Styles[0]->AttributeConditions[0], "cathaf", 0, "12");
    EXPECT_EQ(items.Styles[0]->FillTransparency, 3);
    EXPECT_EQ(items.Styles[0]->Symbols[0].SymbolName.ToUtf8(), "HRBFAC13");
    // "dnghlt",...,"MARINERS STANDARD" is no category name: STANDARD.
    ASSERT_TRUE(m_table.GetLookupAreaItems(u"dnghlt", items));
    EXPECT_EQ(items.Styles[0]->DisplayCategory, KGChartDisplayCategory::Standard);
    EXPECT_EQ(items.Styles[0]->DisplayPriority, 8);

    // The symbolized boundary: "CBLARE","","SY(CBLARE51);LC(CBLARE51);CS(RESTRN01)".
    ASSERT_TRUE(m_table.LoadAreaLookupTable(m_symbolized));
    ASSERT_TRUE(m_table.GetLookupAreaItems(u"CBLARE", items));
    EXPECT_EQ(items.Styles[0]->ComplexLineName.ToUtf8(), "CBLARE51");
    EXPECT_EQ(items.Styles[0]->LineStyle.Pattern, 1);
    EXPECT_EQ(items.Styles[0]->LineStyle.Width, 1);
    EXPECT_TRUE(items.Styles[0]->LineStyle.ColorToken.IsEmpty());
}

}  // namespace
