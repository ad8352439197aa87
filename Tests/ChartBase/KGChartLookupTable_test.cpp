// Look-up tables: the entry fields, reading table files, grouping by acronym, queries with the
// "######" fallback, reloading, freeing, and lines no table should contain.
#include "ChartBase/KGChartLookupTable.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "TestSupport.h"

using namespace KGC;
using PLIX::PlixUnicodeString;

namespace {

std::string Entry(const std::string& acronym, const std::string& conditions,
                  const std::string& instructions, const std::string& priority = "5",
                  const std::string& category = "STANDARD", const std::string& group = "21010") {
    return "\"" + acronym + "\",\"" + conditions + "\",\"" + instructions + "\",\"" + priority +
           "\",\"O\",\"" + category + "\",\"" + group + "\"\n";
}

std::vector<std::string> SymbolNames(const KGChartLookupPointItems& items) {
    std::vector<std::string> names;
    for (const KGChartPointObjectStyle* style : items.Styles) {
        names.push_back(style->Symbols.IsEmpty() ? "" : style->Symbols[0].SymbolName.ToUtf8());
    }
    return names;
}

class LookupTableTest : public ::testing::Test {
protected:
    PlixUnicodeString Write(const std::string& name, const std::string& content) {
        vltest::WriteFile(m_dir.File(name), content);
        return PlixUnicodeString(m_dir.File(name));
    }

    vltest::TempDir m_dir;
    KGChartLookupTable m_table;
};

// ---- fields ----

TEST(LookupFieldsTest, ObjectAcronymIsExactlySixCharacters) {
    PlixUnicodeString entry("\"LIGHTS\",,\"CATLIT1\"");
    EXPECT_EQ(KGChartLookupTable::ParseObjectAcronym(entry).ToUtf8(), "LIGHTS");
    EXPECT_EQ(entry.ToUtf8(), "\"CATLIT1\"");

    PlixUnicodeString fallback("\"######\",\"\"");
    EXPECT_EQ(KGChartLookupTable::ParseObjectAcronym(fallback).ToUtf8(), "######");

    for (const char* text : {"\"LIGHT\",\"\"", "\"LIGHTSS\",\"\"", "LIGHTS", "\"LIGHTS", ""}) {
        PlixUnicodeString untouched(text);
        EXPECT_TRUE(KGChartLookupTable::ParseObjectAcronym(untouched).IsEmpty()) << text;
        EXPECT_EQ(untouched.ToUtf8(), text);
    }
}

TEST(LookupFieldsTest, NumbersAndCategory) {
    PlixUnicodeString entry("\"8\",\"O\",\"DISPLAYBASE\",\"27070\",\"extra\"");
    EXPECT_EQ(KGChartLookupTable::ParseDisplayPriority(entry), 8);
    EXPECT_EQ(KGChartLookupTable::ParseRadar(entry).ToUtf8(), "O");
    EXPECT_EQ(KGChartLookupTable::ParerDisplayCategory(entry), KGChartDisplayCategory::DisplayBase);
    EXPECT_EQ(KGChartLookupTable::ParseGroup(entry), 27070);
    EXPECT_TRUE(entry.IsEmpty()) << "the viewing group is the last field";

    PlixUnicodeString empty("\"\",\"\",\"\",\"\"");
    EXPECT_EQ(KGChartLookupTable::ParseDisplayPriority(empty), 0);
    EXPECT_TRUE(KGChartLookupTable::ParseRadar(empty).IsEmpty());
    EXPECT_EQ(KGChartLookupTable::ParerDisplayCategory(empty), KGChartDisplayCategory::Standard);
    EXPECT_EQ(KGChartLookupTable::ParseGroup(empty), 0);

    PlixUnicodeString odd("\"x9\",\"other\",\"MARINERS STANDARD\",\"99999999999\"");
    EXPECT_EQ(KGChartLookupTable::ParseDisplayPriority(odd), 0);
    EXPECT_EQ(KGChartLookupTable::ParerDisplayCategory(odd), KGChartDisplayCategory::Other);
    EXPECT_EQ(KGChartLookupTable::ParerDisplayCategory(odd), KGChartDisplayCategory::Standard);
    EXPECT_EQ(KGChartLookupTable::ParseGroup(odd), 2147483647) << "saturated, not wrapped";
}

TEST(LookupFieldsTest, TextBeforeTheOpeningQuoteMakesTheCutReachFurther) {
    // Deliberately kept: the cut deletes (closing quote index + 1) characters from the opening
    // quote, so a leading blank costs the comma after the field.
    PlixUnicodeString entry(" \"CATLIT1\",\"SY(A)\"");
    EXPECT_EQ(KGChartLookupTable::ParseRadar(entry).ToUtf8(), "CATLIT1");
    EXPECT_EQ(entry.ToUtf8(), " \"SY(A)\"");

    PlixUnicodeString noQuotes(",,,text");
    EXPECT_TRUE(KGChartLookupTable::ParseRadar(noQuotes).IsEmpty());
    EXPECT_EQ(noQuotes.ToUtf8(), "text");
}

TEST(LookupFieldsTest, OneLineFillsTheStyle) {
    KGChartPointObjectStyle style;
    PlixUnicodeString procedure;
    const PlixUnicodeString line(
        "\"BOYLAT\",\"\",\"SY(BOYLAT13);TE('%s','OBJNAM',2,1,2,'15110',-1,-1,CHBLK,21)\","
        "\"8\",\"O\",\"OTHER\",\"17010\",\"ignored\"");
    EXPECT_EQ(KGChartLookupTable::ParseOneLineStringPoint(line, &style, procedure).ToUtf8(),
              "BOYLAT");
    ASSERT_EQ(style.AttributeConditions.GetSize(), 1);
    EXPECT_TRUE(style.AttributeConditions[0].AttributeAcronym.IsEmpty());
    ASSERT_EQ(style.Symbols.GetSize(), 1);
    EXPECT_EQ(style.Symbols[0].SymbolName.ToUtf8(), "BOYLAT13");
    ASSERT_EQ(style.Texts.GetSize(), 1);
    EXPECT_EQ(style.Texts[0].XOffset, -1);
    EXPECT_EQ(style.DisplayPriority, 8);
    EXPECT_EQ(style.DisplayCategory, KGChartDisplayCategory::Other);
    EXPECT_TRUE(procedure.IsEmpty());

    // An unusable acronym stays in the text and the fields shift by one: the rest of the entry
    // is still parsed, and the loader throws the style away.
    KGChartLineObjectStyle shifted;
    PlixUnicodeString lineProcedure;
    EXPECT_TRUE(KGChartLookupTable::ParseOneLineStringLine(
                    "\"DEPCN\",\"\",\"CS(DEPCNT02)\",\"5\",\"O\",\"OTHER\",\"33020\"", &shifted,
                    lineProcedure)
                    .IsEmpty());
    ASSERT_EQ(shifted.AttributeConditions.GetSize(), 1);
    EXPECT_EQ(shifted.AttributeConditions[0].AttributeAcronym.ToUtf8(), "DEPCN");
    EXPECT_TRUE(lineProcedure.IsEmpty());
    EXPECT_EQ(shifted.DisplayPriority, 0);
    EXPECT_EQ(shifted.DisplayCategory, KGChartDisplayCategory::Standard);

    PlixUnicodeString unused;
    EXPECT_TRUE(KGChartLookupTable::ParseOneLineStringPoint(line, nullptr, unused).IsEmpty());
    EXPECT_TRUE(KGChartLookupTable::ParseOneLineStringArea("", nullptr, unused).IsEmpty());
}

// The loader reads an entry in one pass; it must give what the field parsers give in turn.
KGChartAreaObjectStyle FieldByField(const std::string& line, std::string& acronym,
                                    std::string& procedure) {
    KGChartAreaObjectStyle style;
    PlixUnicodeString entry(line);
    PlixUnicodeString proc;
    acronym = KGChartLookupTable::ParseObjectAcronym(entry).ToUtf8();
    KGChartLookupTable::ParseAttributeCombination(entry, style.AttributeConditions);
    KGChartLookupTable::ParseSymbolizationInstructionpArea(entry, proc, &style);
    style.DisplayPriority = KGChartLookupTable::ParseDisplayPriority(entry);
    KGChartLookupTable::ParseRadar(entry);
    style.DisplayCategory = KGChartLookupTable::ParerDisplayCategory(entry);
    KGChartLookupTable::ParseGroup(entry);
    procedure = proc.ToUtf8();
    return style;
}

std::string Describe(const KGChartAreaObjectStyle& s) {
    std::string d;
    for (const auto& c : s.AttributeConditions) {
        d += "[" + c.AttributeAcronym.ToUtf8() + "|" + std::to_string(c.IntegerValue) + "|" +
             c.TextValue.ToUtf8() + "]";
    }
    d += " cat " + std::to_string(s.DisplayCategory) + " pri " + std::to_string(s.DisplayPriority);
    d += " lc " + s.ComplexLineName.ToUtf8() + " ls " + std::to_string(s.LineStyle.Pattern) + "," +
         std::to_string(s.LineStyle.Width) + "," + s.LineStyle.ColorToken.ToUtf8();
    d += " ac " + s.FillColorToken.ToUtf8() + "," + std::to_string(s.FillTransparency);
    d += " ap " + s.PatternName.ToUtf8() + " flags " + std::to_string(s.HasProcedure) +
         std::to_string(s.HasInstruction);
    for (const auto& y : s.Symbols) {
        d += " sy " + y.SymbolName.ToUtf8() + "," + std::to_string(y.RotateByOrient) + "," +
             std::to_string(y.Rotation);
    }
    for (const auto& t : s.Texts) {
        d += " tx " + t.Text.ToUtf8() + "," + t.Format.ToUtf8() + "," + std::to_string(t.HJust) +
             std::to_string(t.VJust) + std::to_string(t.Space) + "," + std::to_string(t.XOffset) +
             "," + std::to_string(t.YOffset);
    }
    return d;
}

TEST(LookupFieldsTest, OneLineParseEqualsTheFieldParsersInTurn) {
    const char* const lines[] = {
        "\"DEPARE\",\"DRVAL1?DRVAL2?\",\"AC(NODTA);AP(PRTSUR01);LS(SOLD,2,CHGRD)\",\"1\",\"S\","
        "\"DISPLAYBASE\",\"13030\"",
        "\"ACHBRT\",\"\",\"SY(ACHBRT07);TE('%s','OBJNAM',3,1,2,'15110',1,0,CHBLK,29)\",\"5\"",
        "\"LIGHTS\", \"CATLIT1\", \"SY(A)\", \"8\", \"O\", \"other\", \"1\"",
        "x\"LIGHTS\",\"CATLIT1\",\"SY(A)\",\"8\",\"O\",\"OTHER\",\"1\"",
        "ab\"LIGHTS\",\"CATLIT1\",\"SY(A)\",\"8\",\"O\",\"OTHER\",\"1\",\"2\"",
        "\"LIGHTS\",  \"CATLIT1\",  \"SY(A)\",  \"8\",  \"O\",  \"OTHER\",  \"1\"",
        "\"LIGHTS\",,,\"\",,\"CS(X)\",\"8\"",
        "\"DEPCN\",\"\",\"CS(DEPCNT02)\",\"5\",\"O\",\"OTHER\",\"33020\"",
        "\"LIGHTS\",\"CATLIT1\",\"SY(A",
        "\"LIGHTS\",\"BOYSHP2\" \"SY(B)\" x \"7\" \"S\" \"standard\"",
        "\"ABCDEF\" junk \"CATLIT1\"",
        "\"ABCDEF\"",
        "\"\"",
        "no quotes",
        ",\"ABCDEF\",\"\",\"AC(X,9)\",\"2\",\"\",\"\",\"\",\"extra\"",
    };
    for (const char* line : lines) {
        std::string acronym;
        std::string procedure;
        const KGChartAreaObjectStyle expected = FieldByField(line, acronym, procedure);
        KGChartAreaObjectStyle style;
        PlixUnicodeString proc;
        EXPECT_EQ(KGChartLookupTable::ParseOneLineStringArea(line, &style, proc).ToUtf8(), acronym)
            << line;
        EXPECT_EQ(proc.ToUtf8(), procedure) << line;
        EXPECT_EQ(Describe(style), Describe(expected)) << line;
    }
}

// ---- loading and queries ----

TEST_F(LookupTableTest, EmptyAndCommentOnlyFilesLoadEmptyTables) {
    EXPECT_TRUE(m_table.LoadPointLookupTable(Write("empty.dic", "")));
    EXPECT_TRUE(m_table.GetPointTable().IsEmpty());
    EXPECT_TRUE(m_table.LoadLineLookupTable(Write(
        "comments.dic", "* a comment\n\n   \r\n" + std::string("\"LIGHTS\",\"\",\"SY(*)\"\n"))));
    EXPECT_TRUE(m_table.GetLineTable().IsEmpty());
    KGChartLookupLineItems items;
    items.ObjectAcronym = "before";
    EXPECT_FALSE(m_table.GetLookupLineItems(u"LIGHTS", items));
    EXPECT_EQ(items.ObjectAcronym.ToUtf8(), "before");
    EXPECT_FALSE(m_table.LoadAreaLookupTable(m_dir.File("missing.dic")));
    EXPECT_FALSE(m_table.LoadAreaLookupTable(m_dir.Path()));
}

TEST_F(LookupTableTest, LineEndsAndBlanksAroundAnEntryAreIgnored) {
    ASSERT_TRUE(m_table.LoadPointLookupTable(
        Write("p.dic", " \t" + Entry("ACHARE", "", "SY(ACHARE02)") + "\t \r\n" +
                           Entry("LIGHTS", "", "CS(LIGHTS05)", "8") + "\r\n")));
    KGChartLookupPointItems items;
    ASSERT_TRUE(m_table.GetLookupPointItems(u"LIGHTS", items));
    ASSERT_EQ(items.Styles.GetSize(), 1);
    EXPECT_EQ(items.Styles[0]->DisplayPriority, 8);
    EXPECT_EQ(items.Styles[0]->DisplayCategory, KGChartDisplayCategory::Standard);
    ASSERT_TRUE(m_table.GetLookupPointItems(u"ACHARE", items));
    EXPECT_EQ(SymbolNames(items), std::vector<std::string>{"ACHARE02"});
}

TEST_F(LookupTableTest, ConsecutiveEntriesGroupIgnoringCaseUnderTheFirstSpelling) {
    ASSERT_TRUE(m_table.LoadPointLookupTable(Write(
        "p.dic", Entry("######", "", "SY(QUESMRK1)") + Entry("LIGHTS", "", "SY(L1)") +
                     Entry("lights", "", "SY(L2)") + Entry("LIGHTS", "", "SY(L3)") +
                     Entry("LIGHT", "", "SY(DROPPED)") + Entry("LIGHTSS", "", "SY(DROPPED)"))));
    EXPECT_EQ(m_table.GetPointTable().GetCount(), 2);
    KGChartLookupPointItems items;
    ASSERT_TRUE(m_table.GetLookupPointItems(u"LIGHTS", items));
    EXPECT_EQ(items.ObjectAcronym.ToUtf8(), "LIGHTS");
    EXPECT_EQ(SymbolNames(items), (std::vector<std::string>{"L1", "L2", "L3"}));
    // Look-up is case-sensitive, so the other spelling falls back.
    ASSERT_TRUE(m_table.GetLookupPointItems(u"lights", items));
    EXPECT_EQ(items.ObjectAcronym.ToUtf8(), "######");
    EXPECT_EQ(SymbolNames(items), std::vector<std::string>{"QUESMRK1"});
}

TEST_F(LookupTableTest, ALaterRunOfAnAcronymReplacesTheEarlierOne) {
    // The earlier run's styles are freed when they are replaced; the sanitizer build checks
    // that nothing leaks.
    ASSERT_TRUE(m_table.LoadPointLookupTable(Write(
        "p.dic", Entry("BOYLAT", "", "SY(FIRST1)") + Entry("BOYLAT", "", "SY(FIRST2)") +
                     Entry("BCNLAT", "", "SY(BCNLAT15)") + Entry("BOYLAT", "", "SY(THIRD)", "4"))));
    KGChartLookupPointItems items;
    ASSERT_TRUE(m_table.GetLookupPointItems(u"BOYLAT", items));
    EXPECT_EQ(SymbolNames(items), std::vector<std::string>{"THIRD"});
    EXPECT_EQ(items.Styles[0]->DisplayPriority, 4);
    EXPECT_FALSE(m_table.GetLookupPointItems(u"BOYCAR", items)) << "no ###### entry";
}

TEST_F(LookupTableTest, GroupTakesTheFirstNonEmptyProcedure) {
    ASSERT_TRUE(m_table.LoadAreaLookupTable(
        Write("a.dic", Entry("DEPARE", "DRVAL1?DRVAL2?", "AC(NODTA)") +
                           Entry("DEPARE", "", "CS(DEPARE01)") +
                           Entry("DEPARE", "", "CS(DEPARE02)") + Entry("DRGARE", "", "CS(X1)"))));
    KGChartLookupAreaItems items;
    ASSERT_TRUE(m_table.GetLookupAreaItems(u"DEPARE", items));
    EXPECT_EQ(items.ProcedureName.ToUtf8(), "DEPARE01");
    ASSERT_EQ(items.Styles.GetSize(), 3);
    EXPECT_FALSE(items.Styles[0]->HasProcedure);
    EXPECT_TRUE(items.Styles[2]->HasProcedure);
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"DEPARE", u"a").ToUtf8(), "DEPARE01");
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"DRGARE", u"A").ToUtf8(), "X1");
}

TEST_F(LookupTableTest, ProcedureQueryChoosesTheTableByGeometryWithoutFallback) {
    ASSERT_TRUE(m_table.LoadPointLookupTable(
        Write("p.dic", Entry("######", "", "CS(QUESTN01)") + Entry("LIGHTS", "", "CS(LIGHTS05)"))));
    ASSERT_TRUE(m_table.LoadLineLookupTable(Write("l.dic", Entry("LIGHTS", "", "CS(LINE01)"))));
    ASSERT_TRUE(m_table.LoadAreaLookupTable(Write("a.dic", Entry("LIGHTS", "", "CS(AREA01)"))));
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"LIGHTS", u"P").ToUtf8(), "LIGHTS05");
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"LIGHTS", u"p").ToUtf8(), "LIGHTS05");
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"LIGHTS", u"l").ToUtf8(), "LINE01");
    EXPECT_EQ(m_table.GetConditionalSymbologyProcedure(u"LIGHTS", u"a").ToUtf8(), "AREA01");
    EXPECT_TRUE(m_table.GetConditionalSymbologyProcedure(u"LIGHTS", u"Area").IsEmpty());
    EXPECT_TRUE(m_table.GetConditionalSymbologyProcedure(u"LIGHTS", u"").IsEmpty());
    EXPECT_TRUE(m_table.GetConditionalSymbologyProcedure(u"", u"P").IsEmpty());
    EXPECT_TRUE(m_table.GetConditionalSymbologyProcedure(u"lights", u"P").IsEmpty());
    EXPECT_TRUE(m_table.GetConditionalSymbologyProcedure(u"BOYLAT", u"P").IsEmpty());
}

TEST_F(LookupTableTest, ReloadingReplacesOnlyItsOwnKindAndAFailedOpenKeepsIt) {
    const PlixUnicodeString first = Write("p1.dic", Entry("LIGHTS", "", "SY(OLD)"));
    const PlixUnicodeString second =
        Write("p2.dic", Entry("BOYLAT", "", "SY(NEW1)") + Entry("BOYLAT", "", "SY(NEW2)"));
    ASSERT_TRUE(
        m_table.LoadLineLookupTable(Write("l.dic", Entry("NAVLNE", "", "LS(DASH,1,CHBLK)"))));
    ASSERT_TRUE(m_table.LoadPointLookupTable(first));
    ASSERT_TRUE(m_table.LoadPointLookupTable(second));
    KGChartLookupPointItems items;
    EXPECT_FALSE(m_table.GetLookupPointItems(u"LIGHTS", items));
    ASSERT_TRUE(m_table.GetLookupPointItems(u"BOYLAT", items));
    EXPECT_EQ(SymbolNames(items), (std::vector<std::string>{"NEW1", "NEW2"}));

    EXPECT_FALSE(m_table.LoadPointLookupTable(m_dir.File("gone.dic")));
    ASSERT_TRUE(m_table.GetLookupPointItems(u"BOYLAT", items));
    EXPECT_EQ(SymbolNames(items), (std::vector<std::string>{"NEW1", "NEW2"}));
    KGChartLookupLineItems lines;
    EXPECT_TRUE(m_table.GetLookupLineItems(u"NAVLNE", lines));

    m_table.DeletePointStyle();
    m_table.DeletePointStyle();
    EXPECT_FALSE(m_table.GetLookupPointItems(u"BOYLAT", items));
    EXPECT_TRUE(m_table.GetLookupLineItems(u"NAVLNE", lines));
}

TEST_F(LookupTableTest, EveryEntryYieldsAStyleEvenWhenItsInstructionsAreRejected) {
    ASSERT_TRUE(m_table.LoadPointLookupTable(
        Write("p.dic", Entry("BCNGEN", "", "SY(BCNGEN01);LS(SOLD,1,CHBLK)", "7", "other"))));
    KGChartLookupPointItems items;
    ASSERT_TRUE(m_table.GetLookupPointItems(u"BCNGEN", items));
    ASSERT_EQ(items.Styles.GetSize(), 1);
    EXPECT_EQ(SymbolNames(items), std::vector<std::string>{"BCNGEN01"});
    EXPECT_EQ(items.Styles[0]->DisplayPriority, 7);
    EXPECT_EQ(items.Styles[0]->DisplayCategory, KGChartDisplayCategory::Other);
}

TEST_F(LookupTableTest, PointLoadWritesItsTimingTrace) {
    const std::string trace = m_dir.File("trace.txt");
    setenv("VLCHART_TRACE", trace.c_str(), 1);
    m_table.LoadLineLookupTable(Write("l.dic", Entry("NAVLNE", "", "LS(DASH,1,CHBLK)")));
    m_table.LoadPointLookupTable(Write("p.dic", Entry("LIGHTS", "", "CS(LIGHTS05)")));
    unsetenv("VLCHART_TRACE");
    const std::string text = vltest::ReadFile(trace);
    EXPECT_EQ(text.find("LoadPointLookupTable Cost: "), 0u) << text;
    EXPECT_EQ(text.find("LoadPointLookupTable", 1), std::string::npos) << "written once";
}

TEST_F(LookupTableTest, MalformedLinesAreSkippedOrReadAsFarAsTheyGo) {
    std::string content;
    content += "no quotes at all\n";
    content += "\"ONEQUOTE\n";
    content += "\"\",\"\",\"SY(EMPTYACRONYM)\"\n";
    content += Entry("UNTERM", "", "SY(GOOD01);SY(BROKEN");
    content += "\"NOFLDS\"\n";
    const char binary[] = "\"BINARY\",\"\x01\x02\",\"SY(B\x00\xff\xfe)\",\"\x7f\"\n";
    content += std::string(binary, sizeof(binary) - 1);
    content += Entry("NONASC", "",
                     "TX('Hafen S\xc3\xbc"
                     "d',1,2,2,'15110',0,0,CHBLK,26)");
    content += Entry("\xc3\x84\xc3\x96\xc3\x9c\xc3\xa4\xc3\xb6\xc3\xbc", "", "SY(UMLAUT)");
    content += Entry("\xc3\x84\xc3\x96\xc3\x9c", "", "SY(THREE)");  // 6 bytes, 3 characters
    std::string huge = "\"HUGE01\",\"\",\"";
    while (huge.size() < (1u << 20)) huge += "SY(S);";
    content += huge + "\",\"3\"\n";
    content += std::string(1u << 20, 'x') + "\n";
    content += Entry("LAST01", "", "SY(LAST)");
    ASSERT_TRUE(m_table.LoadPointLookupTable(Write("bad.dic", content)));

    const auto& table = m_table.GetPointTable();
    EXPECT_EQ(table.GetCount(), 7);
    KGChartLookupPointItems items;
    ASSERT_TRUE(m_table.GetLookupPointItems(u"UNTERM", items));
    EXPECT_EQ(SymbolNames(items), std::vector<std::string>{"GOOD01"});
    EXPECT_EQ(items.Styles[0]->DisplayPriority, 5) << "fields after the instructions are read";

    ASSERT_TRUE(m_table.GetLookupPointItems(u"NOFLDS", items));
    EXPECT_TRUE(items.Styles[0]->Symbols.IsEmpty());

    ASSERT_TRUE(m_table.GetLookupPointItems(u"BINARY", items));
    ASSERT_EQ(items.Styles[0]->Symbols.GetSize(), 1);
    EXPECT_EQ(items.Styles[0]->Symbols[0].SymbolName.Str(),
              (std::u16string{u'B', u'\0', u'\xfffd', u'\xfffd'}));

    ASSERT_TRUE(m_table.GetLookupPointItems(u"NONASC", items));
    EXPECT_EQ(items.Styles[0]->Texts[0].Text.ToUtf8(),
              "Hafen S\xc3\xbc"
              "d");
    EXPECT_TRUE(m_table.GetLookupPointItems(u"\u00c4\u00d6\u00dc\u00e4\u00f6\u00fc", items));
    EXPECT_EQ(SymbolNames(items), std::vector<std::string>{"UMLAUT"});

    ASSERT_TRUE(m_table.GetLookupPointItems(u"HUGE01", items));
    EXPECT_GT(items.Styles[0]->Symbols.GetSize(), 170000);
    EXPECT_EQ(items.Styles[0]->DisplayPriority, 3);
    EXPECT_TRUE(m_table.GetLookupPointItems(u"LAST01", items));
}

TEST_F(LookupTableTest, ReadLineStringWithoutAFileIsEmpty) {
    EXPECT_TRUE(m_table.ReadLineString().IsEmpty());
    ASSERT_TRUE(m_table.LoadLineLookupTable(Write("l.dic", Entry("NAVLNE", "", "LC(NAVARE51)"))));
    // The loader has read everything; the file stays open at its end.
    EXPECT_TRUE(m_table.ReadLineString().IsEmpty());
}

}  // namespace
