// Colour tables: the colour text rules, merging a second file, and files that are no colour table.
#include "ChartBase/KGChartColorTable.h"

#include <gtest/gtest.h>

#include <string>

#include "Base/PlixTypes.h"
#include "ChartBase/KGChartEnvironment.h"
#include "TestSupport.h"

using KGC::KGChartColorTable;

namespace {

const std::string kDir = vltest::TestDataDir() + "env/";

// Every token with its colour, "TOKEN=r,g,b ", in token order.
std::string Dump(const KGChartColorTable& table) {
    std::string out;
    for (const auto& [token, c] : table.GetColors())
        out += token.ToUtf8() + "=" + std::to_string(c & 0xFF) + "," +
               std::to_string(c >> 8 & 0xFF) + "," + std::to_string(c >> 16) + " ";
    return out;
}

TEST(ChartColorTable, ReadsMergesAndRefusesFiles) {
    KGChartColorTable table;
    ASSERT_TRUE(table.LoadXml(kDir + "colors-none.xml"));  // well-formed, without colours
    ASSERT_TRUE(table.LoadXml(kDir + "colors.xml"));
    // Deliberately lenient: "10,,20" and "10,20" both give green 0; text without digits is black.
    EXPECT_EQ(Dump(table),
              "BLANKS=255,128,0 CHBLK=3,3,3 FIRSTRGB=7,8,9 FOURTH=1,2,3 NEWLINES=7,8,9 "
              "NOGREEN=10,0,20 TWO=10,0,20 WORDS=0,0,0 WRAPS=0,255,255 chblk=2,2,2 ");
    EXPECT_EQ(table.GetRGBColor(u"NOGREEN"), PLIX::PLIXRGB(10, 0, 20));
    EXPECT_EQ(table.GetRGBColor(u"ChBlk"), 0u);  // tokens are exact; unknown: black
    ASSERT_TRUE(table.LoadColorTable(kDir + "colors-dusk.xml"));  // its colours win
    const std::string merged = Dump(table);
    EXPECT_EQ(
        merged,
        "BLANKS=255,128,0 CHBLK=20,20,20 FIRSTRGB=7,8,9 FOURTH=1,2,3 NEWLINES=7,8,9 "
        "NOGREEN=10,0,20 THIRD=30,30,30 TWO=10,0,20 WORDS=0,0,0 WRAPS=0,255,255 chblk=2,2,2 ");
    for (const char* name : {"missing.xml", "colors-bad-root.xml", "colors-bad-nested.xml",
                             "colors-bad-broken.xml", "colors-bad-empty.xml"}) {
        EXPECT_FALSE(table.LoadXml(kDir + name)) << name;
        EXPECT_FALSE(table.LoadColorTable(kDir + name)) << name;
    }
    EXPECT_EQ(Dump(table), merged);
}

// The real presentation data, read only: every colour mode of both styles has a table that loads.
TEST(ChartColorTableRealData, EveryModeOfTheRealStylesHasATable) {
    VLTEST_REQUIRE_REAL_DATA();
    vltest::ModulePathOverride module(vltest::RealDataDir());
    KGC::KGChartEnvironment env;
    std::string out;
    for (int i = 0; i < 6; ++i) {  // S52, then Paper, in each colour mode
        const std::string path =
            env.GetColorTableAbsolutePath(KGC::KGS52ColorMode(i % 3), i < 3 ? u"S52" : u"Paper")
                .ToUtf8();
        KGChartColorTable table;
        EXPECT_TRUE(table.LoadColorTable(path)) << path;
        out += path.substr(path.rfind('/') + 1) + "=" + std::to_string(table.GetCount()) + " ";
    }
    EXPECT_EQ(out,
              "DayBright.xml=63 Dusk.xml=63 Night.xml=63 DayBright.xml=63 DayBright.xml=63 "
              "DayBright.xml=63 ");
}

}  // namespace
