// Colour mode, display category and display style: names to values and back.
#include "ChartBase/KGChartDisplayTypes.h"

#include <gtest/gtest.h>

#include <string>

using KGC::KGChartColorMode;
using KGC::KGChartDisplayCategory;
using KGC::KGChartDisplayStyle;
using PLIX::PlixUnicodeString;

namespace {

std::string ModeName(int value) {
    return KGChartColorMode::GetColorModeName(static_cast<KGC::KGS52ColorMode>(value)).ToUtf8();
}
std::string CategoryName(int value) {
    return KGChartDisplayCategory::GetDisplayCategoryName(
               static_cast<KGC::KGS52DisplayCategory>(value))
        .ToUtf8();
}
std::string StyleName(int value) {
    return KGChartDisplayStyle::GetChartDisplayStyleTypeName(
               static_cast<KGC::KGChartDisplayStyleType>(value))
        .ToUtf8();
}
int Mode(const char* name) {
    return KGChartColorMode::GetColorMode(PlixUnicodeString(name));
}
int Category(const char* name) {
    return KGChartDisplayCategory::GetDisplayCategory(PlixUnicodeString(name));
}
int Style(const char* name) {
    return KGChartDisplayStyle::GetChartDisplayStyleType(PlixUnicodeString(name));
}

TEST(ChartColorMode, NamesAreWrittenInMixedCaseAndOutOfRangeValuesAreDayBright) {
    EXPECT_EQ(ModeName(0), "DayBright");
    EXPECT_EQ(ModeName(1), "Dusk");
    EXPECT_EQ(ModeName(2), "Night");
    EXPECT_EQ(ModeName(3), "DayBright");
    EXPECT_EQ(ModeName(7), "DayBright");
    EXPECT_EQ(ModeName(-1), "DayBright");
}

TEST(ChartColorMode, NamesMatchWithoutRegardToCaseButUntrimmedAndUnknownGiveDayBright) {
    EXPECT_EQ(Mode("night"), 2);
    EXPECT_EQ(Mode("NIGHT"), 2);
    EXPECT_EQ(Mode("Night"), 2);
    EXPECT_EQ(Mode("dUSK"), 1);
    EXPECT_EQ(Mode("daybright"), 0);

    EXPECT_EQ(Mode("Night "), 0);
    EXPECT_EQ(Mode(" Dusk"), 0);
    EXPECT_EQ(Mode("Twilight"), 0);
    EXPECT_EQ(Mode(""), 0);
}

TEST(ChartDisplayCategory, NamesAreWrittenInUpperCaseAndOutOfRangeValuesAreStandard) {
    EXPECT_EQ(CategoryName(0), "DISPLAYBASE");
    EXPECT_EQ(CategoryName(1), "STANDARD");
    EXPECT_EQ(CategoryName(2), "OTHER");
    EXPECT_EQ(CategoryName(3), "STANDARD");
    EXPECT_EQ(CategoryName(7), "STANDARD");
    EXPECT_EQ(CategoryName(-1), "STANDARD");
}

TEST(ChartDisplayCategory, NamesMatchWithoutRegardToCaseButUntrimmedAndUnknownGiveStandard) {
    EXPECT_EQ(Category("displaybase"), 0);
    EXPECT_EQ(Category("DisplayBase"), 0);
    EXPECT_EQ(Category("standard"), 1);
    EXPECT_EQ(Category("Other"), 2);

    // An unmatched name is STANDARD, not the first value of the list.
    EXPECT_EQ(Category(""), 1);
    EXPECT_EQ(Category("OTHER\t"), 1);
    EXPECT_EQ(Category(" DISPLAYBASE"), 1);
    EXPECT_EQ(Category("ALL"), 1);
}

TEST(ChartDisplayStyle, NamesAreEncAndPaperChartAndEverythingElseIsEmpty) {
    EXPECT_EQ(StyleName(0), "");
    EXPECT_EQ(StyleName(1), "ENC");
    EXPECT_EQ(StyleName(2), "PaperChart");
    EXPECT_EQ(StyleName(3), "");
    EXPECT_EQ(StyleName(-5), "");
}

TEST(ChartDisplayStyle, NamesMatchWithoutRegardToCaseButUntrimmedAndUnknownGiveNoStyle) {
    EXPECT_EQ(Style("enc"), 1);
    EXPECT_EQ(Style("ENC"), 1);
    EXPECT_EQ(Style("paperchart"), 2);
    EXPECT_EQ(Style("PAPERCHART"), 2);

    EXPECT_EQ(Style("Paper Chart"), 0);
    EXPECT_EQ(Style("ENC "), 0);
    EXPECT_EQ(Style("Vector"), 0);
    EXPECT_EQ(Style(""), 0);
}

}  // namespace
