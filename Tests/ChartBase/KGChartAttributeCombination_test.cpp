// Attribute combinations: cutting the field off an entry, splitting it into six-character
// acronyms and values, and keeping each value as a number or as text by the attribute's type.
#include <gtest/gtest.h>

#include <string>

#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGS57Dictionary.h"
#include "TestSupport.h"

using namespace KGC;
using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace {

// The types as in the S-57 attribute catalogue; SCAMIN is the integer one.
const char kAttributes[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<Attributes>
  <Attribute Code="4" Acronym="BOYSHP" Type="E"><Name>Buoy shape</Name></Attribute>
  <Attribute Code="36" Acronym="CATLAM" Type="E"/>
  <Attribute Code="37" Acronym="CATLIT" Type="L"/>
  <Attribute Code="75" Acronym="COLOUR" Type="L"/>
  <Attribute Code="87" Acronym="DRVAL1" Type="F"/>
  <Attribute Code="116" Acronym="OBJNAM" Type="S"/>
  <Attribute Code="117" Acronym="ORIENT" Type="F"/>
  <Attribute Code="133" Acronym="SCAMIN" Type="I"/>
  <Attribute Code="179" Acronym="VALSOU" Type="F"/>
  <Attribute Code="300" Acronym="NOTYPE"/>
</Attributes>
)";

struct Condition {
    std::string acronym;
    int integer;
    std::string text;
    bool operator==(const Condition& o) const {
        return acronym == o.acronym && integer == o.integer && text == o.text;
    }
};

std::ostream& operator<<(std::ostream& os, const Condition& c) {
    return os << "{" << c.acronym << ", " << c.integer << ", \"" << c.text << "\"}";
}

class AttributeCombinationTest : public ::testing::Test {
protected:
    void SetUp() override {
        vltest::WriteFile(m_dir.File("attributes.xml"), kAttributes);
        ASSERT_TRUE(
            KGS57Config::GetInstance()->LoadS57AttributesFile(m_dir.File("attributes.xml")));
    }

    // Parses the field given without its quotes.
    static std::vector<Condition> Parse(const std::string& field) {
        PlixUnicodeString entry("\"" + field + "\",\"SY(A)\"");
        PlixArray<KGChartAttributeCondition> conditions;
        KGChartLookupTable::ParseAttributeCombination(entry, conditions);
        EXPECT_EQ(entry.ToUtf8(), "\"SY(A)\"") << field;
        std::vector<Condition> out;
        for (const auto& c : conditions) {
            out.push_back({c.AttributeAcronym.ToUtf8(), c.IntegerValue, c.TextValue.ToUtf8()});
        }
        return out;
    }

    vltest::TempDir m_dir;
};

using Conditions = std::vector<Condition>;

TEST_F(AttributeCombinationTest, ValuesAreNumbersOrTextByTheAttributeType) {
    EXPECT_EQ(Parse(""), (Conditions{{"", 0, ""}}));
    EXPECT_EQ(Parse("CATLIT1,6"), (Conditions{{"CATLIT", 0, "1,6"}}));
    EXPECT_EQ(Parse("BOYSHP2COLOUR3"), (Conditions{{"BOYSHP", 2, ""}, {"COLOUR", 0, "3"}}));
    EXPECT_EQ(Parse("ORIENT?"), (Conditions{{"ORIENT", 0, "?"}}));
    EXPECT_EQ(Parse("CATLAM?"), (Conditions{{"CATLAM", 0, ""}}));
    EXPECT_EQ(Parse("SCAMIN 20000"), (Conditions{{"SCAMIN", 20000, ""}}));
    EXPECT_EQ(Parse("DRVAL1-2.5"), (Conditions{{"DRVAL1", 0, "-2.5"}}));
    EXPECT_EQ(Parse("NOTYPE7"), (Conditions{{"NOTYPE", 0, "7"}})) << "an untyped attribute is text";
    EXPECT_EQ(Parse("XXXXXX5"), (Conditions{{"XXXXXX", 0, ""}})) << "unknown: no value";
    EXPECT_EQ(Parse("boyshp2"), (Conditions{{"boyshp", 0, ""}})) << "looked up as written";
    EXPECT_EQ(Parse("SCAMIN99999999999"), (Conditions{{"SCAMIN", 2147483647, ""}}));
}

TEST_F(AttributeCombinationTest, ValuesRunToTheNextLetter) {
    EXPECT_EQ(Parse("VALSOU"), (Conditions{{"VALSOU", 0, ""}}));
    EXPECT_EQ(Parse("ABC"), (Conditions{{"ABC", 0, ""}}));
    EXPECT_EQ(Parse("CATLIT1,6 COLOUR3"), (Conditions{{"CATLIT", 0, "1,6 "}, {"COLOUR", 0, "3"}}));
    EXPECT_EQ(Parse("SCAMIN 5 BOYSHP2"), (Conditions{{"SCAMIN", 5, ""}, {"BOYSHP", 2, ""}}));
    EXPECT_EQ(Parse("OBJNAM12abcdefgh"),
              (Conditions{{"OBJNAM", 0, "12"}, {"abcdef", 0, ""}, {"gh", 0, ""}}));
    EXPECT_EQ(Parse("BOYSHPCOLOUR3"), (Conditions{{"BOYSHP", 0, ""}, {"COLOUR", 0, "3"}}));
    EXPECT_EQ(Parse("DRVAL1?DRVAL2?"), (Conditions{{"DRVAL1", 0, "?"}, {"DRVAL2", 0, ""}}))
        << "DRVAL2 is not in this dictionary";
    // Non-ASCII letters are not letters here: they belong to the value.
    EXPECT_EQ(Parse("OBJNAM\xc3\xa9t\xc3\xa9"),
              (Conditions{{"OBJNAM", 0, "\xc3\xa9"}, {"t\xc3\xa9", 0, ""}}));
}

TEST_F(AttributeCombinationTest, CutsTheFieldAndEveryCommaAfterIt) {
    PlixArray<KGChartAttributeCondition> conditions;
    conditions.Add(KGChartAttributeCondition());
    PlixUnicodeString entry("\"BOYSHP2\",,,\"SY(A)\"");
    KGChartLookupTable::ParseAttributeCombination(entry, conditions);
    EXPECT_EQ(entry.ToUtf8(), "\"SY(A)\"");
    ASSERT_EQ(conditions.GetSize(), 2) << "appended, not cleared";
    EXPECT_EQ(conditions[1].IntegerValue, 2);

    // Deliberately kept: a leading blank makes the cut reach one character further.
    PlixUnicodeString blank(" \"CATLIT1\",\"SY(A)\"");
    PlixArray<KGChartAttributeCondition> lit;
    KGChartLookupTable::ParseAttributeCombination(blank, lit);
    EXPECT_EQ(blank.ToUtf8(), " \"SY(A)\"");
    ASSERT_EQ(lit.GetSize(), 1);
    EXPECT_EQ(lit[0].TextValue.ToUtf8(), "1");

    PlixUnicodeString noQuotes(",,CATLIT1");
    PlixArray<KGChartAttributeCondition> none;
    KGChartLookupTable::ParseAttributeCombination(noQuotes, none);
    EXPECT_EQ(noQuotes.ToUtf8(), "CATLIT1");
    ASSERT_EQ(none.GetSize(), 1);
    EXPECT_TRUE(none[0].AttributeAcronym.IsEmpty());
}

TEST_F(AttributeCombinationTest, WithoutAnAttributeDictionaryOnlyAcronymsAreKept) {
    vltest::WriteFile(m_dir.File("other.xml"), "<Other/>");
    ASSERT_TRUE(KGS57Config::GetInstance()->LoadS57AttributesFile(m_dir.File("other.xml")));
    EXPECT_EQ(Parse("BOYSHP2COLOUR3"), (Conditions{{"BOYSHP", 0, ""}, {"COLOUR", 0, ""}}));
}

TEST_F(AttributeCombinationTest, LongCombinationIsReadInOnePass) {
    std::string field;
    for (int i = 0; i < 100000; ++i) field += "BOYSHP2";
    PlixUnicodeString entry("\"" + field + "\"");
    PlixArray<KGChartAttributeCondition> conditions;
    KGChartLookupTable::ParseAttributeCombination(entry, conditions);
    ASSERT_EQ(conditions.GetSize(), 100000);
    EXPECT_EQ(conditions[99999].IntegerValue, 2);
}

}  // namespace
