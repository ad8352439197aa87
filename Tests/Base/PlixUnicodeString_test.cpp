// Tests of the platform's UTF-16 string: UTF-8 conversion, searching and slicing with clamped
// indices, trimming by sets, replacing, splitting, formatting, number reading and ordering.
#include "Base/PlixUnicodeString.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <unordered_map>
#include <vector>

#include "Base/PlixArray.h"
#include "BaseTestHelpers.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace {

std::vector<std::u16string> Pieces(const PlixArray<PlixUnicodeString>& parts) {
    std::vector<std::u16string> out;
    for (const auto& p : parts) out.push_back(p.Str());
    return out;
}

}  // namespace

TEST(PlixUnicodeString, Utf8RoundTripsThroughUtf16IncludingCharactersBeyondTheBmp) {
    struct Case {
        const char* utf8;
        std::u16string utf16;
    };
    const std::vector<Case> cases = {
        {"LIGHTS", u"LIGHTS"},
        {"", u""},
        {"\xC3\x89tang", u"\u00C9tang"},                       // two-byte form
        {"\xE4\xB8\xAD\xE6\x96\x87", u"\u4E2D\u6587"},         // three-byte form
        {"\xF0\x9F\x98\x80", std::u16string{0xD83D, 0xDE00}},  // U+1F600, a surrogate pair
        {"\xF4\x8F\xBF\xBF", std::u16string{0xDBFF, 0xDFFF}},  // U+10FFFF, the last one
        {"\xF0\x90\x80\x80", std::u16string{0xD800, 0xDC00}},  // U+10000, the first one
        {"\xEF\xBF\xBF", std::u16string{0xFFFF}},              // last three-byte code point
    };
    for (const auto& c : cases) {
        PlixUnicodeString fromPointer(c.utf8);
        PlixUnicodeString fromString{std::string(c.utf8)};
        EXPECT_EQ(fromPointer.Str(), c.utf16) << c.utf8;
        EXPECT_EQ(fromString.Str(), c.utf16) << c.utf8;
        EXPECT_EQ(fromPointer.ToUtf8(), c.utf8);
        EXPECT_EQ(PlixUnicodeString(c.utf16).ToUtf8(), c.utf8);
    }
    // Lengths count UTF-16 code units.
    EXPECT_EQ(PlixUnicodeString("\xE4\xB8\xAD\xF0\x9F\x98\x80").GetLength(), 3);

    // The pointer-and-length form keeps embedded NULs; null pointers give empty strings.
    PlixUnicodeString withNul("a\0b", 3);
    EXPECT_EQ(withNul.GetLength(), 3);
    EXPECT_EQ(withNul.ToUtf8(), std::string("a\0b", 3));
    EXPECT_TRUE(PlixUnicodeString(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_TRUE(PlixUnicodeString(static_cast<const char16_t*>(nullptr)).IsEmpty());
}

TEST(PlixUnicodeString, InvalidUtf8BecomesReplacementCharacters) {
    // Bytes that can never start a character, one replacement each; the text around survives.
    EXPECT_EQ(PlixUnicodeString("a\xFFz").Str(), u"a\uFFFDz");
    EXPECT_EQ(PlixUnicodeString("\x80x").Str(), u"\uFFFDx");
    EXPECT_EQ(PlixUnicodeString("\xFE\xFF").Str(), u"\uFFFD\uFFFD");
    // A Latin-1 byte in the middle of UTF-8 text.
    EXPECT_EQ(PlixUnicodeString("caf\xE9 au lait").Str(), u"caf\uFFFD au lait");
    // A sequence cut short by the end of the text or by an ASCII byte is one replacement.
    EXPECT_EQ(PlixUnicodeString("abc\xE2\x82").Str(), u"abc\uFFFD");
    EXPECT_EQ(PlixUnicodeString("\xE2\x82!").Str(), u"\uFFFD!");
    EXPECT_EQ(PlixUnicodeString("\xF0\x9F\x98").Str(), u"\uFFFD");

    // Overlong forms, encoded surrogates and code points past U+10FFFF never decode to a
    // character: only replacements come out, and ASCII after them is kept.
    for (const char* bad : {"\xC0\xAF", "\xE0\x80\xAF", "\xF0\x80\x80\xAF", "\xED\xA0\x80",
                            "\xED\xBF\xBF", "\xF4\x90\x80\x80", "\xF8\x88\x80\x80\x80"}) {
        PlixUnicodeString s(std::string(bad) + "/");
        ASSERT_GE(s.GetLength(), 2) << bad;
        EXPECT_EQ(s.GetAt(s.GetLength() - 1), u'/') << bad;
        for (int i = 0; i + 1 < s.GetLength(); ++i) EXPECT_EQ(s.GetAt(i), 0xFFFD) << bad;
    }
}

TEST(PlixUnicodeString, LoneSurrogatesBecomeReplacementCharactersInUtf8) {
    const std::string replacement = "\xEF\xBF\xBD";
    EXPECT_EQ(PlixUnicodeString(std::u16string{0xD800, u'a'}).ToUtf8(), replacement + "a");
    EXPECT_EQ(PlixUnicodeString(std::u16string{u'a', 0xDC00}).ToUtf8(), "a" + replacement);
    EXPECT_EQ(PlixUnicodeString(std::u16string{u'a', 0xD83D}).ToUtf8(), "a" + replacement);
    // Low before high is not a pair.
    EXPECT_EQ(PlixUnicodeString(std::u16string{0xDE00, 0xD83D}).ToUtf8(),
              replacement + replacement);
    // Two high surrogates and then a low one: the second pair is still a character.
    EXPECT_EQ(PlixUnicodeString(std::u16string{0xD83D, 0xD83D, 0xDE00}).ToUtf8(),
              replacement + "\xF0\x9F\x98\x80");
}

TEST(PlixUnicodeString, FindGivesTheFirstOccurrenceAtOrAfterStartOrMinusOne) {
    const PlixUnicodeString s("LIGHTS,LIGHTS");
    EXPECT_EQ(s.Find("LIGHTS"), 0);
    EXPECT_EQ(s.Find("LIGHTS", 1), 7);
    EXPECT_EQ(s.Find("LIGHTS", 7), 7);
    EXPECT_EQ(s.Find("LIGHTS", 8), -1);
    EXPECT_EQ(s.Find("BOYLAT"), -1);
    EXPECT_EQ(s.Find("LIGHTS,LIGHTS,"), -1);
    EXPECT_EQ(s.Find("LIGHTS", 13), -1);
    EXPECT_EQ(s.Find("LIGHTS", 1000), -1);
    EXPECT_EQ(s.Find("S", INT_MAX), -1);

    EXPECT_EQ(s.Find(u'S'), 5);
    EXPECT_EQ(s.Find(u'S', 5), 5);
    EXPECT_EQ(s.Find(u'S', 6), 12);
    EXPECT_EQ(s.Find(u','), 6);
    EXPECT_EQ(s.Find(u'x'), -1);
    EXPECT_EQ(s.Find(u'S', 13), -1);
    EXPECT_EQ(s.Find(u'S', INT_MAX), -1);
    EXPECT_EQ(PlixUnicodeString().Find(u'a'), -1);
    EXPECT_EQ(PlixUnicodeString().Find("a"), -1);

    EXPECT_EQ(s.ReverseFind(u'L'), 7);
    EXPECT_EQ(s.ReverseFind(u'x'), -1);
}

TEST(PlixUnicodeString, LeftRightAndMidClampTheirArguments) {
    const PlixUnicodeString s("abcdef");
    EXPECT_EQ(s.Left(2).Str(), u"ab");
    EXPECT_EQ(s.Left(0).Str(), u"");
    EXPECT_EQ(s.Left(-1).Str(), u"");
    EXPECT_EQ(s.Left(6).Str(), u"abcdef");
    EXPECT_EQ(s.Left(INT_MAX).Str(), u"abcdef");

    EXPECT_EQ(s.Right(2).Str(), u"ef");
    EXPECT_EQ(s.Right(0).Str(), u"");
    EXPECT_EQ(s.Right(-3).Str(), u"");
    EXPECT_EQ(s.Right(INT_MAX).Str(), u"abcdef");

    EXPECT_EQ(s.Mid(2).Str(), u"cdef");
    EXPECT_EQ(s.Mid(0).Str(), u"abcdef");
    EXPECT_EQ(s.Mid(-4).Str(), u"abcdef");
    EXPECT_EQ(s.Mid(6).Str(), u"");
    EXPECT_EQ(s.Mid(INT_MAX).Str(), u"");

    EXPECT_EQ(s.Mid(1, 2).Str(), u"bc");
    EXPECT_EQ(s.Mid(4, 100).Str(), u"ef");
    EXPECT_EQ(s.Mid(1, INT_MAX).Str(), u"bcdef");
    EXPECT_EQ(s.Mid(2, 0).Str(), u"");
    EXPECT_EQ(s.Mid(2, -1).Str(), u"");
    EXPECT_EQ(s.Mid(6, 1).Str(), u"");
    EXPECT_EQ(s.Mid(100, 2).Str(), u"");
    EXPECT_EQ(s.Mid(INT_MAX, INT_MAX).Str(), u"");
    // A negative start counts as 0, as in CString; the count is not shortened by it.
    EXPECT_EQ(s.Mid(-2, 3).Str(), u"abc");
    EXPECT_EQ(s.Mid(INT_MIN, -1).Str(), u"");
    EXPECT_EQ(s.Mid(INT_MIN, INT_MAX).Str(), u"abcdef");

    EXPECT_EQ(PlixUnicodeString().Mid(1, 1).Str(), u"");
    EXPECT_EQ(PlixUnicodeString().Right(1).Str(), u"");
}

TEST(PlixUnicodeString, DeleteAndInsertReturnTheNewLength) {
    PlixUnicodeString s("abcdef");
    EXPECT_EQ(s.Delete(1), 5);
    EXPECT_EQ(s.Str(), u"acdef");
    EXPECT_EQ(s.Delete(1, 2), 3);
    EXPECT_EQ(s.Str(), u"aef");
    EXPECT_EQ(s.Delete(3, 1), 3);  // at the end: nothing to delete
    EXPECT_EQ(s.Delete(10, 1), 3);
    EXPECT_EQ(s.Delete(1, 0), 3);
    EXPECT_EQ(s.Delete(1, -2), 3);
    EXPECT_EQ(s.Str(), u"aef");
    EXPECT_EQ(s.Delete(-1, 1), 2);  // a negative index counts as 0
    EXPECT_EQ(s.Str(), u"ef");
    EXPECT_EQ(s.Delete(1, INT_MAX), 1);
    EXPECT_EQ(s.Str(), u"e");
    EXPECT_EQ(s.Delete(0, 100), 0);
    EXPECT_TRUE(s.IsEmpty());
    EXPECT_EQ(s.Delete(0), 0);

    PlixUnicodeString t("ac");
    EXPECT_EQ(t.Insert(1, "b"), 3);
    EXPECT_EQ(t.Insert(-5, "<"), 4);
    EXPECT_EQ(t.Insert(100, ">"), 5);
    EXPECT_EQ(t.Str(), u"<abc>");
}

TEST(PlixUnicodeString, TrimWithoutArgumentRemovesLineEndsTabsAndBlanksOnly) {
    PlixUnicodeString both("\r\n\t  text with  inner blanks \t\r\n");
    EXPECT_EQ(both.Trim().Str(), u"text with  inner blanks");

    PlixUnicodeString left(" \t\ntext \r\n");
    EXPECT_EQ(left.TrimLeft().Str(), u"text \r\n");
    PlixUnicodeString right(" \t\ntext \r\n");
    EXPECT_EQ(right.TrimRight().Str(), u" \t\ntext");

    // Other white space is not in the set.
    PlixUnicodeString other("\v\f\u00A0text\u3000");
    EXPECT_EQ(other.Trim().Str(), u"\v\f\u00A0text\u3000");

    PlixUnicodeString blank(" \r\n\t ");
    EXPECT_TRUE(blank.Trim().IsEmpty());
    PlixUnicodeString empty;
    EXPECT_TRUE(empty.TrimLeft().TrimRight().IsEmpty());
}

TEST(PlixUnicodeString, TrimWithASetRemovesEveryCharacterOfTheSet) {
    PlixUnicodeString commas(",,,a,b,,");
    EXPECT_EQ(commas.TrimLeft(",").Str(), u"a,b,,");
    EXPECT_EQ(commas.TrimRight(",").Str(), u"a,b");

    // The set is a set, not a prefix: order and repetition do not matter.
    PlixUnicodeString mixed("babaXab");
    EXPECT_EQ(mixed.TrimLeft("ab").Str(), u"Xab");
    PlixUnicodeString mixedRight("baXbba");
    EXPECT_EQ(mixedRight.TrimRight("ab").Str(), u"baX");
    PlixUnicodeString quoted(";,;'value';,");
    EXPECT_EQ(quoted.Trim(",;'").Str(), u"value");
    PlixUnicodeString nonAscii("\u00B7\u00B7\u6D77\u00B7");
    EXPECT_EQ(nonAscii.Trim("\u00B7").Str(), u"\u6D77");

    PlixUnicodeString untouched("abc");
    EXPECT_EQ(untouched.TrimLeft("xyz").TrimRight(PlixUnicodeString()).Str(), u"abc");
    PlixUnicodeString all("abab");
    EXPECT_TRUE(all.Trim("ba").IsEmpty());
}

TEST(PlixUnicodeString, TrimWithACharacterRemovesOnlyThatCharacter) {
    PlixUnicodeString zeros("000120");
    EXPECT_EQ(zeros.TrimLeft(u'0').Str(), u"120");
    PlixUnicodeString trailing("000120");
    EXPECT_EQ(trailing.TrimRight(u'0').Str(), u"00012");
    PlixUnicodeString quotes("\"\"a\"b\"");
    EXPECT_EQ(quotes.Trim(u'"').Str(), u"a\"b");
    PlixUnicodeString blanks("  a  ");
    EXPECT_EQ(blanks.Trim(u'\t').Str(), u"  a  ");
    // Chained calls act on the same string.
    PlixUnicodeString chained(" 'x' ");
    chained.Trim().Trim(u'\'');
    EXPECT_EQ(chained.Str(), u"x");
}

TEST(PlixUnicodeString, ReplaceChangesEveryOccurrenceAndCountsThem) {
    PlixUnicodeString s("a.b.c");
    EXPECT_EQ(s.Replace(".", "::"), 2);
    EXPECT_EQ(s.Str(), u"a::b::c");
    EXPECT_EQ(s.Replace("::", ""), 2);
    EXPECT_EQ(s.Str(), u"abc");
    EXPECT_EQ(s.Replace("x", "y"), 0);
    EXPECT_EQ(s.Replace("", "z"), 0);
    EXPECT_EQ(s.Str(), u"abc");

    // Occurrences do not overlap, and replaced text is not searched again.
    PlixUnicodeString run("aaaaa");
    EXPECT_EQ(run.Replace("aa", "b"), 2);
    EXPECT_EQ(run.Str(), u"bba");
    PlixUnicodeString grow("abab");
    EXPECT_EQ(grow.Replace("a", "aa"), 2);
    EXPECT_EQ(grow.Str(), u"aabaab");

    PlixUnicodeString path("a\\b\\c");
    EXPECT_EQ(path.Replace(u'\\', u'/'), 2);
    EXPECT_EQ(path.Str(), u"a/b/c");
    EXPECT_EQ(path.Replace(u'x', u'y'), 0);

    PlixUnicodeString empty;
    EXPECT_EQ(empty.Replace("a", "b"), 0);
    EXPECT_TRUE(empty.IsEmpty());
}

TEST(PlixUnicodeString, SplitKeepsOrDropsEmptyPieces) {
    PlixArray<PlixUnicodeString> parts;
    using V = std::vector<std::u16string>;

    EXPECT_EQ(PlixUnicodeString("a,,b").Split(parts, ",", false), 3);
    EXPECT_EQ(Pieces(parts), (V{u"a", u"", u"b"}));
    EXPECT_EQ(PlixUnicodeString("a,,b").Split(parts, ",", true), 2);
    EXPECT_EQ(Pieces(parts), (V{u"a", u"b"}));

    EXPECT_EQ(PlixUnicodeString(",a,").Split(parts, ",", false), 3);
    EXPECT_EQ(Pieces(parts), (V{u"", u"a", u""}));
    EXPECT_EQ(PlixUnicodeString(",a,").Split(parts, ",", true), 1);
    EXPECT_EQ(Pieces(parts), (V{u"a"}));

    EXPECT_EQ(PlixUnicodeString(",").Split(parts, ",", false), 2);
    EXPECT_EQ(Pieces(parts), (V{u"", u""}));
    EXPECT_EQ(PlixUnicodeString(",,").Split(parts, ",", true), 0);
    EXPECT_TRUE(parts.IsEmpty());

    EXPECT_EQ(PlixUnicodeString("abc").Split(parts, ",", false), 1);
    EXPECT_EQ(Pieces(parts), (V{u"abc"}));

    // A separator of several characters is matched whole.
    EXPECT_EQ(PlixUnicodeString("a::b::::c:d").Split(parts, "::", false), 4);
    EXPECT_EQ(Pieces(parts), (V{u"a", u"b", u"", u"c:d"}));
    EXPECT_EQ(PlixUnicodeString("a::b::::c:d").Split(parts, "::", true), 3);
    EXPECT_EQ(Pieces(parts), (V{u"a", u"b", u"c:d"}));

    // An empty string has no pieces, and earlier content of the array is gone.
    parts.Add("stale");
    EXPECT_EQ(PlixUnicodeString().Split(parts, ",", false), 0);
    EXPECT_TRUE(parts.IsEmpty());
    parts.Add("stale");
    EXPECT_EQ(PlixUnicodeString("x;y").Split(parts, ";", false), 2);
    EXPECT_EQ(Pieces(parts), (V{u"x", u"y"}));
}

TEST(PlixUnicodeString, StaticFormatFollowsPrintfAndTakesUtf8Strings) {
    EXPECT_EQ(PlixUnicodeString::Format("%ld", 1234567890123L).Str(), u"1234567890123");
    EXPECT_EQ(PlixUnicodeString::Format("%ld", -9000000000L).Str(), u"-9000000000");
    EXPECT_EQ(PlixUnicodeString::Format("%d|%5d|%-3d|%03d", 42, 7, 1, -5).Str(),
              u"42|    7|1  |-05");
    EXPECT_EQ(PlixUnicodeString::Format("%f", 1.5).Str(), u"1.500000");
    EXPECT_EQ(PlixUnicodeString::Format("%.2f %.0f", 3.14159, 2.5).Str(), u"3.14 2");
    EXPECT_EQ(PlixUnicodeString::Format("%s-%s", "\xE4\xB8\xAD\xE6\x96\x87", "\xC3\x89").Str(),
              u"\u4E2D\u6587-\u00C9");
    EXPECT_EQ(PlixUnicodeString::Format("100%%").Str(), u"100%");
    EXPECT_TRUE(PlixUnicodeString::Format("%s", "").IsEmpty());

    // Outputs longer than any small fixed buffer come back whole, also when a multi-byte
    // character straddles a power of two.
    for (size_t n : {254u, 255u, 256u, 257u, 1000u, 100000u}) {
        std::string text(n, 'x');
        text += "\xE4\xB8\xAD";
        PlixUnicodeString formatted = PlixUnicodeString::Format("%s|%d", text.c_str(), 7);
        EXPECT_EQ(formatted.GetLength(), static_cast<int>(n) + 3) << n;
        EXPECT_EQ(formatted.ToUtf8(), text + "|7") << n;
    }
}

TEST(PlixUnicodeString, MemberFormatReplacesTheContent) {
    PlixUnicodeString s("previous content");
    s.Format(u"%s=%d", u8"Gr\u00F6\u00DFe", 3);
    EXPECT_EQ(s.Str(), u"Gr\u00F6\u00DFe=3");
    s.Format(u"%ld/%f", 5L, 0.5);
    EXPECT_EQ(s.Str(), u"5/0.500000");
    // The format itself may hold non-ASCII text.
    s.Format(u"\u6DF1\u5EA6 %d m", 12);
    EXPECT_EQ(s.Str(), u"\u6DF1\u5EA6 12 m");
    s.Format(u"%s", std::string(300, 'y').c_str());
    EXPECT_EQ(s.Str(), std::u16string(300, u'y'));
    s.Format(u"");
    EXPECT_TRUE(s.IsEmpty());
}

TEST(PlixUnicodeString, FormatWritesADecimalPointUnderEveryNumericLocale) {
    basetest::ScopedGermanLocale german;
    BASETEST_SKIP_WITHOUT_GERMAN_LOCALE(german);
    char probe[16];
    snprintf(probe, sizeof probe, "%.1f", 1.5);
    ASSERT_STREQ(probe, "1,5") << german.Name() << " does not use a decimal comma";

    // Text written with Format is read back with the locale-free parsers and stored in files.
    EXPECT_EQ(PlixUnicodeString::Format("%f", 1.5).Str(), u"1.500000");
    EXPECT_EQ(PlixUnicodeString::Format("%.3f;%d", -0.25, 7).Str(), u"-0.250;7");
    PlixUnicodeString member;
    member.Format(u"%.1f", 2.5);
    EXPECT_EQ(member.Str(), u"2.5");
}

TEST(PlixUnicodeString, ToIntReadsLikeStrtolAndSaturates) {
    struct Case {
        const char* text;
        int base;
        int expected;
    };
    const std::vector<Case> cases = {
        {"42", 10, 42},
        {"  \t\r\n42", 10, 42},
        {"-42", 10, -42},
        {"+7", 10, 7},
        {"42abc", 10, 42},
        {"12 34", 10, 12},
        {"007", 10, 7},  // leading zeros are not octal in base 10
        {"0x1A", 10, 0},
        {"1.9", 10, 1},
        {"abc", 10, 0},
        {"", 10, 0},
        {"-", 10, 0},
        {"+-3", 10, 0},
        {"- 3", 10, 0},
        {"\xEF\xBC\x91", 10, 0},  // a full-width digit is not a digit
        {"2147483647", 10, INT_MAX},
        {"2147483648", 10, INT_MAX},
        {"99999999999999999999999", 10, INT_MAX},
        {"-2147483648", 10, INT_MIN},
        {"-2147483649", 10, INT_MIN},
        {"-99999999999999999999999", 10, INT_MIN},
        {"ff", 16, 255},
        {"FF", 16, 255},
        {"0x1A", 16, 26},
        {"0X1a", 16, 26},
        {"-0x10", 16, -16},
        {"  7fz", 16, 127},
        {"g", 16, 0},
        {"7FFFFFFF", 16, INT_MAX},
        {"80000000", 16, INT_MAX},
        {"-80000000", 16, INT_MIN},
        {"1011", 2, 11},
        {"102", 2, 2},
        {"zz", 36, 35 * 36 + 35},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(PlixUnicodeString(c.text).ToInt(c.base), c.expected)
            << '"' << c.text << "\" base " << c.base;
    }
    EXPECT_EQ(PlixUnicodeString("123").ToInt(), 123);
}

TEST(PlixUnicodeString, CompareIsCaseSensitiveAndCompareNoCaseFoldsAsciiAndLatinLetters) {
    EXPECT_EQ(PlixUnicodeString("abc").Compare("abc"), 0);
    EXPECT_LT(PlixUnicodeString("abc").Compare("abd"), 0);
    EXPECT_GT(PlixUnicodeString("abd").Compare("abc"), 0);
    EXPECT_LT(PlixUnicodeString("ab").Compare("abc"), 0);
    EXPECT_GT(PlixUnicodeString("abc").Compare(""), 0);
    EXPECT_LT(PlixUnicodeString("ABC").Compare("abc"), 0);  // 'A' comes before 'a'

    const std::vector<std::pair<const char*, const char*>> equalNoCase = {
        {"LIGHTS", "lights"},
        {"LiGhTs", "lIgHtS"},
        {u8"\u00C9cluse", u8"\u00E9CLUSE"},                  // É / é
        {"\xC3\x91", "\xC3\xB1"},                            // Ñ / ñ
        {"\xC3\x9E", "\xC3\xBE"},                            // Þ / þ
        {"\xC3\x80\xC3\x96", "\xC3\xA0\xC3\xB6"},            // ÀÖ / àö
        {"\xC4\x8C", "\xC4\x8D"},                            // Č / č
        {u8"\u0141\u00F3d\u017A", u8"\u0142\u00D3D\u0179"},  // Łódź / łÓDŹ
        {u8"\u017Dirje", u8"\u017EIRJE"},                    // Ž / ž
        {"\xC5\xB8", "\xC3\xBF"},                            // Ÿ / ÿ
        {"", ""},
    };
    for (const auto& p : equalNoCase) {
        EXPECT_EQ(PlixUnicodeString(p.first).CompareNoCase(p.second), 0)
            << p.first << " / " << p.second;
        EXPECT_EQ(PlixUnicodeString(p.second).CompareNoCase(p.first), 0)
            << p.second << " / " << p.first;
        if (p.first[0] != '\0') {
            EXPECT_NE(PlixUnicodeString(p.first).Compare(p.second), 0);
        }
    }
    const std::vector<std::pair<const char*, const char*>> differentNoCase = {
        {"\xC3\x97", "\xC3\xB7"},  // × and ÷ are not letters
        {"\xC3\x9F", "SS"},        // ß has no one-letter capital
        {"\xC4\xB0", "\xC4\xB1"},  // İ and ı are not a case pair
        {"I", "\xC4\xB1"},         // no Turkish rules
        {"@", "`"},                // neighbours of the ASCII letters
        {"[", "{"},
        {"abc", "ab"},
    };
    for (const auto& p : differentNoCase) {
        EXPECT_NE(PlixUnicodeString(p.first).CompareNoCase(p.second), 0)
            << p.first << " / " << p.second;
    }
    // The order ignores case as well.
    EXPECT_LT(PlixUnicodeString("apple").CompareNoCase("BANANA"), 0);
    EXPECT_GT(PlixUnicodeString("b").CompareNoCase("A"), 0);
    EXPECT_LT(PlixUnicodeString("AB").CompareNoCase("abc"), 0);

    EXPECT_EQ(PlixUnicodeString("\xC3\xA9t\xC3\xA9 \xC3\xBF z").MakeUpper().ToUtf8(),
              "\xC3\x89T\xC3\x89 \xC5\xB8 Z");
    EXPECT_EQ(PlixUnicodeString("\xC3\x89T\xC3\x89 \xC5\xBD Z").MakeLower().ToUtf8(),
              "\xC3\xA9t\xC3\xA9 \xC5\xBE z");
}

TEST(PlixUnicodeString, EqualityAndOrderUseCodeUnits) {
    EXPECT_TRUE(PlixUnicodeString("abc") == PlixUnicodeString(u"abc"));
    EXPECT_FALSE(PlixUnicodeString("abc") != PlixUnicodeString(u"abc"));
    EXPECT_TRUE(PlixUnicodeString("abc") != PlixUnicodeString("ABC"));
    EXPECT_TRUE(PlixUnicodeString("abc") != PlixUnicodeString("abc "));

    EXPECT_TRUE(PlixUnicodeString("Z") < PlixUnicodeString("a"));
    EXPECT_FALSE(PlixUnicodeString("a") < PlixUnicodeString("Z"));
    EXPECT_TRUE(PlixUnicodeString("") < PlixUnicodeString("a"));
    EXPECT_TRUE(PlixUnicodeString("ab") < PlixUnicodeString("b"));
    EXPECT_FALSE(PlixUnicodeString("ab") < PlixUnicodeString("ab"));
    // A character beyond the BMP starts with a high surrogate (0xD83D), which sorts before
    // U+FFFD in code-unit order although its code point is larger.
    EXPECT_TRUE(PlixUnicodeString("\xF0\x9F\x98\x80") < PlixUnicodeString("\xEF\xBF\xBD"));
    EXPECT_TRUE(PlixUnicodeString("\xC3\xA9") < PlixUnicodeString("\xE4\xB8\xAD"));
}

TEST(PlixUnicodeString, HashMakesItUsableAsAnUnorderedMapKey) {
    std::unordered_map<PlixUnicodeString, int> map;
    map[PlixUnicodeString("LIGHTS")] = 1;
    map[PlixUnicodeString(u"LIGHTS")] += 10;
    map[PlixUnicodeString("lights")] = 2;
    map[PlixUnicodeString("\xE4\xB8\xAD")] = 3;
    EXPECT_EQ(map.size(), 3u);
    EXPECT_EQ(map.at(PlixUnicodeString(std::u16string(u"LIGHTS"))), 11);
    EXPECT_EQ(map.at(PlixUnicodeString(u"\u4E2D")), 3);
    EXPECT_EQ(map.count(PlixUnicodeString("LIGHT")), 0u);
    std::hash<PlixUnicodeString> hash;
    EXPECT_EQ(hash(PlixUnicodeString("BOYLAT")), hash(PlixUnicodeString(u"BOYLAT")));
}

TEST(PlixUnicodeString, ConcatenationAndCharacterAccess) {
    PlixUnicodeString a("ab");
    PlixUnicodeString b = a + "\xE4\xB8\xAD" + PlixUnicodeString(u"d");
    EXPECT_EQ(b.Str(), u"ab\u4E2Dd");
    EXPECT_EQ(a.Str(), u"ab");
    a += "c";
    a += u'!';
    EXPECT_EQ(a.Str(), u"abc!");
    a += a;  // appending itself
    EXPECT_EQ(a.Str(), u"abc!abc!");
    EXPECT_EQ((PlixUnicodeString() + PlixUnicodeString()).GetLength(), 0);

    const PlixUnicodeString s("abc");
    EXPECT_EQ(s.GetAt(0), u'a');
    EXPECT_EQ(s[2], u'c');
    EXPECT_EQ(s.GetAt(3), 0);
    EXPECT_EQ(s.GetAt(-1), 0);
    EXPECT_EQ(s[100], 0);
    PlixUnicodeString t("abc");
    t.SetAt(1, u'X');
    t.SetAt(3, u'Y');
    t.SetAt(-1, u'Y');
    EXPECT_EQ(t.Str(), u"aXc");

    EXPECT_EQ(PlixUnicodeString(u'-', 3).Str(), u"---");
    EXPECT_TRUE(PlixUnicodeString(u'-', 0).IsEmpty());
    EXPECT_TRUE(PlixUnicodeString(u'-', -2).IsEmpty());
    t.Empty();
    EXPECT_TRUE(t.IsEmpty());
    EXPECT_EQ(t.GetLength(), 0);
    EXPECT_EQ(t.c_str()[0], 0);
}
