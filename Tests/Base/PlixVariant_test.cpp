// Tests of the tagged value and the small value types: conversions between the kinds of
// value, packed colours and tolerant double equality.
#include "Base/PlixVariant.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "Base/KGNumber.h"
#include "Base/PlixTypes.h"
#include "BaseTestHelpers.h"

using PLIX::PlixUnicodeString;
using PLIX::PlixVariant;

TEST(PlixVariant, EachConstructorGivesItsTypeAndClearMakesNull) {
    EXPECT_EQ(PlixVariant().GetType(), PlixVariant::Null);
    EXPECT_EQ(PlixVariant(true).GetType(), PlixVariant::Bool);
    EXPECT_EQ(PlixVariant(5).GetType(), PlixVariant::Int32);
    EXPECT_EQ(PlixVariant(5LL).GetType(), PlixVariant::Int64);
    EXPECT_EQ(PlixVariant(5.0).GetType(), PlixVariant::Double);
    EXPECT_EQ(PlixVariant("5").GetType(), PlixVariant::String);
    EXPECT_EQ(PlixVariant(PlixUnicodeString(u"5")).GetType(), PlixVariant::String);
    EXPECT_EQ(static_cast<int>(PlixVariant::Null), 0);

    std::vector<PlixVariant> values = {PlixVariant(true), PlixVariant(7), PlixVariant(8LL),
                                       PlixVariant(9.5), PlixVariant("text")};
    for (auto& v : values) {
        EXPECT_FALSE(v.IsNull());
        v.Clear();
        EXPECT_TRUE(v.IsNull());
        EXPECT_EQ(v.GetType(), PlixVariant::Null);
        EXPECT_EQ(v.ToInt(), 0);
        EXPECT_EQ(v.ToLong(), 0);
        EXPECT_EQ(v.ToDouble(), 0.0);
        EXPECT_TRUE(v.ToString().IsEmpty());
        EXPECT_TRUE(v == PlixVariant());
    }
}

TEST(PlixVariant, IntegersAndBoolsConvert) {
    PlixVariant yes(true);
    PlixVariant no(false);
    EXPECT_EQ(yes.ToInt(), 1);
    EXPECT_EQ(no.ToLong(), 0);
    EXPECT_EQ(yes.ToDouble(), 1.0);
    EXPECT_EQ(yes.ToString().Str(), u"1");
    EXPECT_EQ(no.ToString().Str(), u"0");

    PlixVariant small(-42);
    EXPECT_EQ(small.ToInt(), -42);
    EXPECT_EQ(small.ToLong(), -42);
    EXPECT_EQ(small.ToDouble(), -42.0);
    EXPECT_EQ(small.ToString().Str(), u"-42");
    EXPECT_EQ(PlixVariant(INT_MIN).ToString().Str(), u"-2147483648");

    PlixVariant big(9000000000LL);
    EXPECT_EQ(big.ToLong(), 9000000000LL);
    EXPECT_EQ(big.ToDouble(), 9e9);
    EXPECT_EQ(big.ToString().Str(), u"9000000000");
    EXPECT_EQ(PlixVariant(LLONG_MIN).ToString().Str(), u"-9223372036854775808");
    EXPECT_EQ(PlixVariant(LLONG_MAX).ToLong(), LLONG_MAX);
}

TEST(PlixVariant, DoublesTruncateTowardZeroAndSaturate) {
    EXPECT_EQ(PlixVariant(2.9).ToInt(), 2);
    EXPECT_EQ(PlixVariant(-2.9).ToInt(), -2);
    EXPECT_EQ(PlixVariant(-0.5).ToLong(), 0);
    EXPECT_EQ(PlixVariant(1e20).ToInt(), INT_MAX);
    EXPECT_EQ(PlixVariant(-1e20).ToInt(), INT_MIN);
    EXPECT_EQ(PlixVariant(2147483647.9).ToInt(), INT_MAX);
    EXPECT_EQ(PlixVariant(2147483648.0).ToInt(), INT_MAX);
    EXPECT_EQ(PlixVariant(-2147483648.9).ToInt(), INT_MIN);
    EXPECT_EQ(PlixVariant(5e9).ToLong(), 5000000000LL);
    EXPECT_EQ(PlixVariant(1e20).ToLong(), LLONG_MAX);
    EXPECT_EQ(PlixVariant(-1e20).ToLong(), LLONG_MIN);
    EXPECT_EQ(PlixVariant(9223372036854775808.0).ToLong(), LLONG_MAX);  // 2^63
    EXPECT_EQ(PlixVariant(-9223372036854775808.0).ToLong(), LLONG_MIN);
    EXPECT_EQ(PlixVariant(9223372036854774784.0).ToLong(), 9223372036854774784LL);

    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(PlixVariant(inf).ToLong(), LLONG_MAX);
    EXPECT_EQ(PlixVariant(-inf).ToInt(), INT_MIN);
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(PlixVariant(nan).ToInt(), 0);
    EXPECT_EQ(PlixVariant(nan).ToLong(), 0);
    EXPECT_TRUE(std::isnan(PlixVariant(nan).ToDouble()));
    EXPECT_TRUE(PlixVariant(nan) == PlixVariant(nan));
    EXPECT_FALSE(PlixVariant(5) == PlixVariant(5LL));  // the type is part of the value
}

TEST(PlixVariant, DoubleTextReadsBackEqual) {
    for (double d :
         {0.0, 1.5, -0.25, 0.1, 1.0 / 3.0, 123456789.123, 1e300, -2.5e-310, 6.02214076e23,
          std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()}) {
        PlixUnicodeString text = PlixVariant(d).ToString();
        EXPECT_EQ(kgatof(text), d) << text.ToUtf8();
        EXPECT_EQ(PlixVariant(text).ToDouble(), d) << text.ToUtf8();
    }
    EXPECT_EQ(PlixVariant(1.5).ToString().Str(), u"1.5");
    EXPECT_EQ(PlixVariant(-3.0).ToString().Str(), u"-3");
    EXPECT_TRUE(std::isnan(kgatof(PlixVariant(std::nan("")).ToString())));
}

TEST(PlixVariant, StringsConvertWithTheLocaleFreeParsers) {
    PlixVariant text("  42.9abc");
    EXPECT_EQ(text.ToInt(), 42);
    EXPECT_EQ(text.ToLong(), 42);
    EXPECT_EQ(text.ToDouble(), 42.9);
    EXPECT_EQ(text.ToString().Str(), u"  42.9abc");  // the text itself

    EXPECT_EQ(PlixVariant("1.5e3").ToDouble(), 1500.0);
    EXPECT_EQ(PlixVariant("1.5e3").ToInt(), 1);
    EXPECT_EQ(PlixVariant("9000000000").ToLong(), 9000000000LL);
    EXPECT_EQ(PlixVariant("9000000000").ToInt(), INT_MAX);
    EXPECT_EQ(PlixVariant("-9000000000").ToInt(), INT_MIN);
    EXPECT_EQ(PlixVariant("none").ToInt(), 0);
    EXPECT_EQ(PlixVariant("none").ToDouble(), 0.0);
    EXPECT_EQ(PlixVariant("").ToLong(), 0);
    EXPECT_EQ(PlixVariant("1,5").ToDouble(), 1.0);
    EXPECT_EQ(PlixVariant("\xE4\xB8\xAD").ToString().Str(), u"\u4E2D");
}

TEST(PlixVariant, StringsAndDoublesIgnoreADecimalCommaLocale) {
    basetest::ScopedGermanLocale german;
    BASETEST_SKIP_WITHOUT_GERMAN_LOCALE(german);
    EXPECT_EQ(PlixVariant("1.5").ToDouble(), 1.5);
    EXPECT_EQ(PlixVariant("1,5").ToDouble(), 1.0);
    EXPECT_EQ(PlixVariant(1.5).ToString().Str(), u"1.5");
    EXPECT_EQ(PlixVariant(-0.125).ToString().Str(), u"-0.125");
}

TEST(PlixTypes, RgbPacksMaskedComponentsAndUnpacksThem) {
    EXPECT_EQ(PLIX::PLIXRGB(0x12, 0x34, 0x56), 0x563412u);
    EXPECT_EQ(PLIX::PLIXRGB(255, 255, 255), 0xFFFFFFu);
    EXPECT_EQ(PLIX::PLIXRGB(0, 0, 0), 0u);
    // Each component is cut to 8 bits and cannot spill into its neighbour.
    EXPECT_EQ(PLIX::PLIXRGB(0x10A, 0x1FF, 0x201), 0x01FF0Au);
    EXPECT_EQ(PLIX::PLIXRGB(-1, 0, 0), 0x0000FFu);
    EXPECT_EQ(PLIX::PLIXRGB(0, -1, 0), 0x00FF00u);

    for (int r : {0, 1, 127, 128, 255}) {
        for (int g : {0, 64, 255}) {
            for (int b : {0, 200, 255}) {
                PLIX::PLIXCOLOR c = PLIX::PLIXRGB(r, g, b);
                EXPECT_EQ(PLIX::PLIXGetR(c), r);
                EXPECT_EQ(PLIX::PLIXGetG(c), g);
                EXPECT_EQ(PLIX::PLIXGetB(c), b);
            }
        }
    }
    // Bits above the blue byte are not part of blue.
    EXPECT_EQ(PLIX::PLIXGetB(0xFF000000u | PLIX::PLIXRGB(1, 2, 3)), 3);
}

TEST(PlixTypes, PlixEqualAcceptsADifferenceOfExactlyTheTolerance) {
    EXPECT_TRUE(PLIX::plixequal(1.0, 1.5, 0.5));
    EXPECT_TRUE(PLIX::plixequal(1.5, 1.0, 0.5));
    EXPECT_FALSE(PLIX::plixequal(1.0, 1.5000001, 0.5));
    EXPECT_FALSE(PLIX::plixequal(-1.0, 1.0, 1.5));
    EXPECT_TRUE(PLIX::plixequal(2.0, 2.0, 0.0));
    EXPECT_FALSE(PLIX::plixequal(2.0, std::nextafter(2.0, 3.0), 0.0));
    EXPECT_FALSE(PLIX::plixequal(std::nan(""), std::nan(""), 1.0));
}
