// Presentation style records: the defaults a look-up entry starts from, and value copies.
#include "ChartBase/KGChartStyle.h"

#include <gtest/gtest.h>

using namespace KGC;

namespace {

TEST(ChartStyleTest, LineAndAreaStylesStartSolidWidthOneWithoutColour) {
    // A "LC" entry without "LS" must still carry a usable simple line.
    KGChartLineObjectStyle line;
    KGChartAreaObjectStyle area;
    for (const KGChartLineStyle* ls : {&line.LineStyle, &area.LineStyle}) {
        EXPECT_EQ(ls->Pattern, 1);
        EXPECT_EQ(ls->Width, 1);
        EXPECT_TRUE(ls->ColorToken.IsEmpty());
    }
    EXPECT_TRUE(line.ComplexLineName.IsEmpty());
    EXPECT_TRUE(line.Symbol.SymbolName.IsEmpty());
    EXPECT_FALSE(line.Symbol.RotateByOrient);
    EXPECT_EQ(line.Symbol.Rotation, 0.0);
    EXPECT_EQ(area.FillTransparency, 0);
    EXPECT_TRUE(area.FillColorToken.IsEmpty());
    EXPECT_TRUE(area.PatternName.IsEmpty());
}

TEST(ChartStyleTest, NewObjectStylesAreStandardPriorityZeroAndEmpty) {
    KGChartPointObjectStyle point;
    KGChartLineObjectStyle line;
    KGChartAreaObjectStyle area;
    EXPECT_EQ(point.DisplayCategory, KGChartDisplayCategory::Standard);
    EXPECT_EQ(line.DisplayCategory, KGChartDisplayCategory::Standard);
    EXPECT_EQ(area.DisplayCategory, KGChartDisplayCategory::Standard);
    EXPECT_EQ(point.DisplayPriority + line.DisplayPriority + area.DisplayPriority, 0);
    EXPECT_FALSE(point.HasProcedure || point.HasInstruction);
    EXPECT_FALSE(line.HasProcedure || line.HasInstruction);
    EXPECT_FALSE(area.HasProcedure || area.HasInstruction);
    EXPECT_TRUE(point.AttributeConditions.IsEmpty() && point.Symbols.IsEmpty() &&
                point.Texts.IsEmpty());
    EXPECT_TRUE(area.AttributeConditions.IsEmpty() && area.Symbols.IsEmpty() &&
                area.Texts.IsEmpty());
}

TEST(ChartStyleTest, TextFormatAndConditionDefaults) {
    KGChartTextFormat text;
    EXPECT_EQ(text.HJust, 3);
    EXPECT_EQ(text.VJust, 1);
    EXPECT_EQ(text.Space, 2);
    EXPECT_EQ(text.XOffset, 0);
    EXPECT_EQ(text.YOffset, 0);
    EXPECT_TRUE(text.Text.IsEmpty() && text.Format.IsEmpty());

    KGChartAttributeCondition condition;
    EXPECT_TRUE(condition.AttributeAcronym.IsEmpty());
    EXPECT_EQ(condition.IntegerValue, 0);
    EXPECT_TRUE(condition.TextValue.IsEmpty());
}

TEST(ChartStyleTest, CopiesAreIndependent) {
    KGChartPointObjectStyle original;
    KGChartSymbolMarkerStyle symbol;
    symbol.SymbolName = "BOYLAT13";
    original.Symbols.Add(symbol);
    symbol.SymbolName = "TOPMAR02";
    symbol.RotateByOrient = true;
    original.Symbols.Add(symbol);
    KGChartTextFormat text;
    text.Text = "OBJNAM";
    text.XOffset = -1;
    original.Texts.Add(text);
    original.DisplayPriority = 8;

    KGChartPointObjectStyle copy(original);
    original.Symbols[0].SymbolName = "changed";
    original.Texts[0].Text = "changed";
    original.Symbols.RemoveAt(1);

    ASSERT_EQ(copy.Symbols.GetSize(), 2);
    EXPECT_EQ(copy.Symbols[0].SymbolName.ToUtf8(), "BOYLAT13");
    EXPECT_EQ(copy.Symbols[1].SymbolName.ToUtf8(), "TOPMAR02");
    EXPECT_TRUE(copy.Symbols[1].RotateByOrient);
    ASSERT_EQ(copy.Texts.GetSize(), 1);
    EXPECT_EQ(copy.Texts[0].Text.ToUtf8(), "OBJNAM");
    EXPECT_EQ(copy.Texts[0].XOffset, -1);
    EXPECT_EQ(copy.DisplayPriority, 8);

    KGChartAreaObjectStyle area;
    area.FillColorToken = "DEPVS";
    area.AttributeConditions.Add(KGChartAttributeCondition());
    KGChartAreaObjectStyle assigned;
    assigned = area;
    area.FillColorToken = "changed";
    area.AttributeConditions[0].AttributeAcronym = "changed";
    EXPECT_EQ(assigned.FillColorToken.ToUtf8(), "DEPVS");
    ASSERT_EQ(assigned.AttributeConditions.GetSize(), 1);
    EXPECT_TRUE(assigned.AttributeConditions[0].AttributeAcronym.IsEmpty());
}

}  // namespace
