// Tests of the text to number conversions: C atoi/atol/atof semantics with saturation, and
// the same results under a locale whose decimal separator is a comma.
#include "Base/KGNumber.h"

#include <gtest/gtest.h>

#include <climits>
#include <clocale>
#include <cmath>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "BaseTestHelpers.h"

using PLIX::PlixUnicodeString;

TEST(KGNumber, KgatoiReadsTheLongestDecimalPrefixAndSaturates) {
    struct Case {
        const char* text;
        int expected;
    };
    const std::vector<Case> cases = {
        {"42", 42},
        {"   42", 42},
        {"\t\n\v\f\r 42", 42},
        {"+42", 42},
        {"-42", -42},
        {"42abc", 42},
        {"42 43", 42},
        {"0042", 42},  // not octal
        {"0x1A", 0},   // not hexadecimal
        {"1.9", 1},
        {"-1.9", -1},
        {"1e3", 1},
        {"", 0},
        {"abc", 0},
        {"-", 0},
        {"+", 0},
        {"+-1", 0},
        {"- 1", 0},
        {"\xEF\xBC\x94\xEF\xBC\x92", 0},  // full-width digits are not digits
        {u8"\u00A05", 0},                 // a no-break space is not a blank
        {"-0", 0},
        {"2147483647", INT_MAX},
        {"2147483648", INT_MAX},
        {"4294967296", INT_MAX},
        {"99999999999999999999999999", INT_MAX},
        {"-2147483648", INT_MIN},
        {"-2147483649", INT_MIN},
        {"-99999999999999999999999999", INT_MIN},
    };
    for (const auto& c : cases) EXPECT_EQ(kgatoi(c.text), c.expected) << '"' << c.text << '"';
    EXPECT_EQ(kgatoi(PlixUnicodeString(std::u16string{u'1', u'2', 0, u'3'})), 12);
}

TEST(KGNumber, KgatolReadsSixtyFourBitValuesAndSaturates) {
    struct Case {
        const char* text;
        long long expected;
    };
    const std::vector<Case> cases = {
        {"4294967296", 4294967296LL},
        {"  -9000000000 m", -9000000000LL},
        {"+1234567890123", 1234567890123LL},
        {"2147483648", 2147483648LL},
        {"9223372036854775807", LLONG_MAX},
        {"9223372036854775808", LLONG_MAX},
        {"18446744073709551616", LLONG_MAX},
        {"123456789012345678901234567890", LLONG_MAX},
        {"-9223372036854775807", -LLONG_MAX},
        {"-9223372036854775808", LLONG_MIN},
        {"-9223372036854775809", LLONG_MIN},
        {"-123456789012345678901234567890", LLONG_MIN},
        {"000000000000000000000000000007", 7},  // many leading zeros do not overflow
        {"12.5", 12},
        {"", 0},
        {"x1", 0},
    };
    for (const auto& c : cases) EXPECT_EQ(kgatol(c.text), c.expected) << '"' << c.text << '"';
}

TEST(KGNumber, KgatofReadsTheLongestNumericPrefix) {
    struct Case {
        const char* text;
        double expected;
    };
    const std::vector<Case> cases = {
        {"1.5", 1.5},
        {"  1.5", 1.5},
        {"\t+1.5", 1.5},
        {"1.5e3", 1500.0},
        {"1.5E-2", 0.015},
        {"-0.25abc", -0.25},
        {".5", 0.5},
        {"5.", 5.0},
        {"-.75", -0.75},
        {"42", 42.0},
        {"1e", 1.0},
        {"1e+", 1.0},
        {"2.5e3.7", 2500.0},
        {"1,5", 1.0},                // a comma never is the decimal separator
        {"3.25\xE2\x82\xAC", 3.25},  // a non-ASCII character ends the number
        {"", 0.0},
        {"abc", 0.0},
        {"-", 0.0},
        {".", 0.0},
        {"e5", 0.0},
        {"0.1", 0.1},
        {"1.7976931348623157e308", std::numeric_limits<double>::max()},
        {"4.9406564584124654e-324", std::numeric_limits<double>::denorm_min()},
    };
    for (const auto& c : cases) EXPECT_EQ(kgatof(c.text), c.expected) << '"' << c.text << '"';

    EXPECT_EQ(kgatof("1e400"), HUGE_VAL);
    EXPECT_EQ(kgatof("-1e400"), -HUGE_VAL);
    EXPECT_EQ(kgatof("-0"), 0.0);
    EXPECT_TRUE(std::signbit(kgatof("-0")));
    EXPECT_EQ(kgatof("1e-400"), 0.0);
}

TEST(KGNumber, ConversionsDoNotDependOnADecimalCommaLocale) {
    const std::string numericBefore = setlocale(LC_NUMERIC, nullptr);
    {
        basetest::ScopedGermanLocale german;
        BASETEST_SKIP_WITHOUT_GERMAN_LOCALE(german);
        ASSERT_STREQ(localeconv()->decimal_point, ",")
            << german.Name() << " does not use a decimal comma";

        EXPECT_EQ(kgatof("1.5"), 1.5);
        EXPECT_EQ(kgatof("  -0.25abc"), -0.25);
        EXPECT_EQ(kgatof("1.5e3"), 1500.0);
        EXPECT_EQ(kgatof("1,5"), 1.0);
        EXPECT_EQ(kgatoi("1.234"), 1);  // no thousands separators either
        EXPECT_EQ(kgatol("1.234.567"), 1);
        EXPECT_EQ(kgatoi("-17"), -17);
    }
    // The scope put the previous locale back.
    EXPECT_EQ(setlocale(LC_NUMERIC, nullptr), numericBefore);
    EXPECT_STREQ(localeconv()->decimal_point, ".");
}
