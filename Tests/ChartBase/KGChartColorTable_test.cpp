// Colour tables: reading "Colors" files, the RGB text rules, merging and look-up.
#include "ChartBase/KGChartColorTable.h"

#include <gtest/gtest.h>

#include <string>

#include "Base/PlixTypes.h"
#include "TestSupport.h"

using KGC::KGChartColorTable;
using PLIX::PLIXRGB;
using PLIX::PlixUnicodeString;

namespace {

std::string ColorsFile(const std::string& colors) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Colors>\n" + colors + "</Colors>\n";
}

std::string Color(const std::string& token, const std::string& rgb) {
    return "  <Color token=\"" + token + "\"><RGB>" + rgb + "</RGB></Color>\n";
}

class ChartColorTableTest : public ::testing::Test {
protected:
    // Writes a file into the test directory and returns its path.
    PlixUnicodeString Write(const std::string& name, const std::string& content) {
        vltest::WriteFile(m_dir.File(name), content);
        return PlixUnicodeString(m_dir.File(name));
    }

    vltest::TempDir m_dir;
    KGChartColorTable m_table;
};

TEST_F(ChartColorTableTest, ReadsThreeCommaSeparatedComponentsWithBlanksAroundThem) {
    PlixUnicodeString path = Write(
        "day.xml", ColorsFile(Color("CHRED", " \t255, 128 ,0\r\n ") +
                              Color("CHBLK", "\n  7 ,\t8,\n9  \n") + Color("EXTRA", "1,2,3,4")));
    ASSERT_TRUE(m_table.LoadXml(path));
    EXPECT_EQ(m_table.GetRGBColor(u"CHRED"), PLIXRGB(255, 128, 0));
    EXPECT_EQ(m_table.GetRGBColor(u"CHBLK"), PLIXRGB(7, 8, 9));
    // Blue is read up to where its number ends.
    EXPECT_EQ(m_table.GetRGBColor(u"EXTRA"), PLIXRGB(1, 2, 3));
    EXPECT_EQ(m_table.GetCount(), 3);
}

TEST_F(ChartColorTableTest, AMissingGreenIsZeroAndComponentsKeepTheirLowEightBits) {
    PlixUnicodeString path = Write(
        "day.xml", ColorsFile(Color("EMPTY", "10,,20") + Color("SHORT", "10,20") +
                              Color("WRAPS", "256,-1,511") + Color("WORDS", "red,green,blue")));
    ASSERT_TRUE(m_table.LoadXml(path));
    // Deliberately lenient: with only one usable comma the rest is blue.
    EXPECT_EQ(m_table.GetRGBColor(u"EMPTY"), PLIXRGB(10, 0, 20));
    EXPECT_EQ(m_table.GetRGBColor(u"SHORT"), PLIXRGB(10, 0, 20));
    EXPECT_EQ(m_table.GetRGBColor(u"WRAPS"), 0xFFFF00u);
    EXPECT_EQ(m_table.GetRGBColor(u"WORDS"), PLIXRGB(0, 0, 0));
    // Text without digits is still a colour (black), not a skipped element.
    EXPECT_EQ(m_table.GetCount(), 4);
}

TEST_F(ChartColorTableTest, SkipsMalformedColoursAndKeepsReadingTheOthers) {
    std::string colors;
    colors += Color("LEADC", ",10,20");     // comma is the first character
    colors += Color("LEAD2", " \n,10,20");  // ... once the blanks are trimmed
    colors += Color("NOCOM", "255");
    colors += Color("EMPTY", "");
    colors += Color("BLANK", " \t\r\n ");
    colors += Color("NOBLU", "10,");
    colors += Color("NOBL2", "10,20,");
    colors += Color("GOOD1", "1,2,3");
    colors += Color("", "4,5,6");
    colors += "  <Color><RGB>4,5,6</RGB></Color>\n";
    colors += "  <Color Token=\"UPPER\"><RGB>4,5,6</RGB></Color>\n";
    colors += "  <Color token=\"NORGB\"/>\n";
    colors += "  <Color token=\"LOWER\"><rgb>4,5,6</rgb></Color>\n";
    colors += "  <Colour token=\"OTHER\"><RGB>4,5,6</RGB></Colour>\n";
    colors +=
        "  <Color token=\"GOOD2\"><Name>grey</Name><RGB>7,8,9</RGB><RGB>1,1,1</RGB></Color>\n";
    PlixUnicodeString path = Write("day.xml", ColorsFile(colors));

    ASSERT_TRUE(m_table.LoadXml(path));
    EXPECT_EQ(m_table.GetCount(), 2);
    EXPECT_EQ(m_table.GetRGBColor(u"GOOD1"), PLIXRGB(1, 2, 3));
    // Only the first "RGB" child counts; other children are ignored.
    EXPECT_EQ(m_table.GetRGBColor(u"GOOD2"), PLIXRGB(7, 8, 9));
    for (const char16_t* token : {u"LEADC", u"LEAD2", u"NOCOM", u"EMPTY", u"BLANK", u"NOBLU",
                                  u"NOBL2", u"", u"UPPER", u"NORGB", u"LOWER", u"OTHER"}) {
        EXPECT_EQ(m_table.GetColors().Find(token), nullptr)
            << "stored " << PlixUnicodeString(token).ToUtf8();
    }
}

TEST_F(ChartColorTableTest, TokensAreExactAndTheLastOccurrenceWins) {
    PlixUnicodeString path =
        Write("day.xml", ColorsFile(Color("CHBLK", "1,1,1") + Color("chblk", "2,2,2") +
                                    Color("CHBLK", "3,3,3") + Color("CHBLK", "bad")));
    ASSERT_TRUE(m_table.LoadXml(path));
    EXPECT_EQ(m_table.GetCount(), 2);
    EXPECT_EQ(m_table.GetRGBColor(u"CHBLK"), PLIXRGB(3, 3, 3));
    EXPECT_EQ(m_table.GetRGBColor(u"chblk"), PLIXRGB(2, 2, 2));
    EXPECT_EQ(m_table.GetRGBColor(u"ChBlk"), PLIXRGB(0, 0, 0));
    EXPECT_EQ(m_table.GetRGBColor(u" CHBLK"), PLIXRGB(0, 0, 0));
    EXPECT_EQ(m_table.GetRGBColor(u"UNKNW"), PLIXRGB(0, 0, 0));
    EXPECT_EQ(m_table.GetRGBColor(u""), PLIXRGB(0, 0, 0));
}

TEST_F(ChartColorTableTest, AnEmptyTableGivesBlackForEveryToken) {
    EXPECT_EQ(m_table.GetCount(), 0);
    EXPECT_EQ(m_table.GetRGBColor(u"CHBLK"), PLIXRGB(0, 0, 0));
    EXPECT_EQ(m_table.GetRGBColor(u""), PLIXRGB(0, 0, 0));

    // A well-formed file without colours loads and leaves the table empty.
    ASSERT_TRUE(m_table.LoadXml(Write("none.xml", ColorsFile("  <Other/>\n"))));
    EXPECT_EQ(m_table.GetCount(), 0);
    EXPECT_EQ(m_table.GetRGBColor(u"CHBLK"), PLIXRGB(0, 0, 0));
}

TEST_F(ChartColorTableTest, ASecondFileIsMergedIntoWhatTheTableHolds) {
    PlixUnicodeString day =
        Write("day.xml", ColorsFile(Color("FIRST", "1,1,1") + Color("SHARE", "2,2,2")));
    PlixUnicodeString dusk =
        Write("dusk.xml", ColorsFile(Color("SHARE", "20,20,20") + Color("THIRD", "30,30,30")));
    ASSERT_TRUE(m_table.LoadColorTable(day));
    ASSERT_TRUE(m_table.LoadColorTable(dusk));
    EXPECT_EQ(m_table.GetCount(), 3);
    EXPECT_EQ(m_table.GetRGBColor(u"FIRST"), PLIXRGB(1, 1, 1));
    EXPECT_EQ(m_table.GetRGBColor(u"SHARE"), PLIXRGB(20, 20, 20));
    EXPECT_EQ(m_table.GetRGBColor(u"THIRD"), PLIXRGB(30, 30, 30));
}

TEST_F(ChartColorTableTest, AFileThatCannotBeReadAsColoursFailsAndKeepsTheTable) {
    ASSERT_TRUE(m_table.LoadXml(Write("day.xml", ColorsFile(Color("KEEPS", "1,2,3")))));

    PlixUnicodeString missing(m_dir.File("missing.xml"));
    PlixUnicodeString otherRoot =
        Write("palette.xml", "<Palette>\n" + Color("OTHER", "9,9,9") + "</Palette>\n");
    PlixUnicodeString nested =
        Write("nested.xml",
              "<Palette>\n<Colors>\n" + Color("INNER", "9,9,9") + "</Colors>\n</Palette>\n");
    PlixUnicodeString broken = Write("broken.xml", "<Colors>\n" + Color("BROKE", "9,9,9"));
    PlixUnicodeString empty = Write("empty.xml", "");

    for (const PlixUnicodeString& path : {missing, otherRoot, nested, broken, empty}) {
        EXPECT_FALSE(m_table.LoadXml(path)) << path.ToUtf8();
        EXPECT_FALSE(m_table.LoadColorTable(path)) << path.ToUtf8();
    }
    EXPECT_FALSE(m_table.LoadXml(PlixUnicodeString()));
    EXPECT_EQ(m_table.GetCount(), 1);
    EXPECT_EQ(m_table.GetRGBColor(u"KEEPS"), PLIXRGB(1, 2, 3));
}

}  // namespace
