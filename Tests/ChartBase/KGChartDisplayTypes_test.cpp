// Colour mode, display category and display style: names to values and back.
#include "ChartBase/KGChartDisplayTypes.h"

#include <gtest/gtest.h>

#include <string>

namespace KGC {
namespace {

using PLIX::PlixUnicodeString;

// "names of -1..3 | values of the names of 0..2, another spelling, name of 2 + " ", empty name"
template <typename E>
std::string Dump(PlixUnicodeString (*nameOf)(E), E (*valueOf)(const PlixUnicodeString&),
                 const std::string& otherSpelling) {
    std::string names, values;
    for (int value = -1; value <= 3; ++value) names += nameOf(E(value)).ToUtf8() + ",";
    for (const PlixUnicodeString& name :
         {nameOf(E(0)), nameOf(E(1)), nameOf(E(2)), PlixUnicodeString(otherSpelling),
          nameOf(E(2)) + u" ", PlixUnicodeString()})
        values += std::to_string(valueOf(name));
    return names + "|" + values;
}

TEST(ChartDisplayTypes, NamesAndValuesConvertBothWays) {
    EXPECT_EQ(Dump(&KGChartColorMode::GetColorModeName, &KGChartColorMode::GetColorMode, "nIGHT"),
              "DayBright,DayBright,Dusk,Night,DayBright,|012200");
    EXPECT_EQ(Dump(&KGChartDisplayCategory::GetDisplayCategoryName,
                   &KGChartDisplayCategory::GetDisplayCategory, "displayBase"),
              "STANDARD,DISPLAYBASE,STANDARD,OTHER,STANDARD,|012011");
    EXPECT_EQ(Dump(&KGChartDisplayStyle::GetChartDisplayStyleTypeName,
                   &KGChartDisplayStyle::GetChartDisplayStyleType, "paperCHART"),
              ",,ENC,PaperChart,,|012200");
}

}  // namespace
}  // namespace KGC
