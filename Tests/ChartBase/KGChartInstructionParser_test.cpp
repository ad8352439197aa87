// Symbolization instructions: cutting the field off an entry, the codes each kind accepts,
// and the SY, LS, TX, TE, AC arguments.
#include <gtest/gtest.h>

#include <string>

#include "ChartBase/KGChartLookupTable.h"

using namespace KGC;
using PLIX::PlixUnicodeString;

namespace {

// Runs a parser on the entry `"<instructions>","5",...` and keeps what it left of the entry.
struct Parsed {
    bool ok = false;
    std::string procedure;
    std::string rest;
};

template <typename Style, typename Parse>
Parsed ParseEntry(Parse parse, const std::string& instructions, Style& style,
                  const std::string& tail = ",\"5\",\"O\"") {
    PlixUnicodeString entry("\"" + instructions + "\"" + tail);
    PlixUnicodeString procedure;
    Parsed out;
    out.ok = parse(entry, procedure, &style);
    out.procedure = procedure.ToUtf8();
    out.rest = entry.ToUtf8();
    return out;
}

Parsed Point(const std::string& instructions, KGChartPointObjectStyle& style) {
    return ParseEntry(KGChartLookupTable::ParseSymbolizationInstructionpPoint, instructions, style);
}
Parsed Line(const std::string& instructions, KGChartLineObjectStyle& style) {
    return ParseEntry(KGChartLookupTable::ParseSymbolizationInstructionpLine, instructions, style);
}
Parsed Area(const std::string& instructions, KGChartAreaObjectStyle& style) {
    return ParseEntry(KGChartLookupTable::ParseSymbolizationInstructionpArea, instructions, style);
}

TEST(InstructionParserTest, PointSymbolAndTextCutTheFieldOffTheEntry) {
    KGChartPointObjectStyle style;
    Parsed r = Point("SY(LIGHTS82);TX(OBJNAM,1,2,2,'15110',0,0,CHBLK,26)", style);
    EXPECT_TRUE(r.ok);
    EXPECT_EQ(r.rest, "\"5\",\"O\"");
    ASSERT_EQ(style.Symbols.GetSize(), 1);
    EXPECT_EQ(style.Symbols[0].SymbolName.ToUtf8(), "LIGHTS82");
    EXPECT_FALSE(style.Symbols[0].RotateByOrient);
    ASSERT_EQ(style.Texts.GetSize(), 1);
    const KGChartTextFormat& text = style.Texts[0];
    EXPECT_EQ(text.Text.ToUtf8(), "OBJNAM");
    EXPECT_EQ(text.HJust, 1);
    EXPECT_EQ(text.VJust, 2);
    EXPECT_EQ(text.Space, 2);
    EXPECT_EQ(text.XOffset, 0);
    EXPECT_EQ(text.YOffset, 0);
    EXPECT_TRUE(text.Format.IsEmpty());
    EXPECT_TRUE(style.HasInstruction);
    EXPECT_FALSE(style.HasProcedure);
    EXPECT_TRUE(r.procedure.empty());
}

TEST(InstructionParserTest, EveryCommaAfterTheFieldGoesAndAnEmptyFieldSetsNothing) {
    KGChartPointObjectStyle style;
    Parsed r =
        ParseEntry(KGChartLookupTable::ParseSymbolizationInstructionpPoint, "", style, ",,,\"5\"");
    EXPECT_TRUE(r.ok);
    EXPECT_EQ(r.rest, "\"5\"");
    EXPECT_FALSE(style.HasInstruction);
    EXPECT_TRUE(style.Symbols.IsEmpty());
}

TEST(InstructionParserTest, EachKindRejectsTheCodesItDoesNotAcceptAndKeepsWhatCameBefore) {
    KGChartPointObjectStyle point;
    Parsed r = Point("SY(BCNGEN01);LS(SOLD,1,CHBLK);TX(OBJNAM,1,2,2,'15110',0,0,CHBLK,26)", point);
    EXPECT_FALSE(r.ok);
    ASSERT_EQ(point.Symbols.GetSize(), 1);
    EXPECT_EQ(point.Symbols[0].SymbolName.ToUtf8(), "BCNGEN01");
    EXPECT_TRUE(point.Texts.IsEmpty()) << "instructions after the rejected one are not read";
    EXPECT_EQ(r.rest, "\"5\",\"O\"") << "the field is cut even when parsing fails";

    for (const char* code : {"LC(X)", "AC(X)", "AP(X)"}) {
        KGChartPointObjectStyle style;
        EXPECT_FALSE(Point(code, style).ok) << code;
        EXPECT_FALSE(style.HasInstruction) << code;
    }
    for (const char* code : {"AC(DEPVS)", "AP(DIAMOND1)"}) {
        KGChartLineObjectStyle style;
        EXPECT_FALSE(Line(code, style).ok) << code;
        EXPECT_FALSE(style.HasInstruction) << code;
    }
    // Codes are upper case; anything else is not an instruction.
    KGChartPointObjectStyle lower;
    EXPECT_FALSE(Point("sy(LIGHTS82)", lower).ok);
    EXPECT_TRUE(lower.Symbols.IsEmpty());
    KGChartAreaObjectStyle unknown;
    EXPECT_FALSE(Area("AC(DEPVS);XX(1);AP(DIAMOND1)", unknown).ok);
    EXPECT_EQ(unknown.FillColorToken.ToUtf8(), "DEPVS");
    EXPECT_TRUE(unknown.PatternName.IsEmpty());
}

TEST(InstructionParserTest, NullStyleFailsWithoutTouchingTheEntry) {
    const PlixUnicodeString original("\"SY(A)\",\"5\"");
    PlixUnicodeString entry = original;
    PlixUnicodeString procedure("kept");
    EXPECT_FALSE(
        KGChartLookupTable::ParseSymbolizationInstructionpPoint(entry, procedure, nullptr));
    EXPECT_FALSE(KGChartLookupTable::ParseSymbolizationInstructionpLine(entry, procedure, nullptr));
    EXPECT_FALSE(KGChartLookupTable::ParseSymbolizationInstructionpArea(entry, procedure, nullptr));
    EXPECT_EQ(entry, original);
    EXPECT_EQ(procedure.ToUtf8(), "kept");
}

TEST(InstructionParserTest, ConditionalProcedureIsHandedBackAndIsNoDrawingInstruction) {
    KGChartPointObjectStyle point;
    Parsed r = Point("CS(LIGHTS05)", point);
    EXPECT_TRUE(r.ok);
    EXPECT_EQ(r.procedure, "LIGHTS05");
    EXPECT_TRUE(point.HasProcedure);
    EXPECT_FALSE(point.HasInstruction);

    // The last CS wins; an empty one still overwrites the name but sets no flag.
    KGChartLineObjectStyle line;
    EXPECT_EQ(Line("CS(DEPCNT02);LS(SOLD,1,DEPCN);CS(RESTRN01)", line).procedure, "RESTRN01");
    KGChartAreaObjectStyle area;
    r = Area("CS()", area);
    EXPECT_TRUE(r.ok);
    EXPECT_TRUE(r.procedure.empty());
    EXPECT_FALSE(area.HasProcedure);
}

TEST(InstructionParserTest, LineStylePatternWidthAndColour) {
    KGChartLineObjectStyle dash;
    EXPECT_TRUE(Line("LS(DASH,2,CHGRD)", dash).ok);
    EXPECT_EQ(dash.LineStyle.Pattern, 2);
    EXPECT_EQ(dash.LineStyle.Width, 2);
    EXPECT_EQ(dash.LineStyle.ColorToken.ToUtf8(), "CHGRD");
    EXPECT_TRUE(dash.HasInstruction);

    KGChartLineObjectStyle dotted;
    Line("LS(dott,1,CHBLK)", dotted);
    EXPECT_EQ(dotted.LineStyle.Pattern, 3);

    KGChartLineObjectStyle wave;
    Line("LS(WAVE,4,CHBLK)", wave);
    EXPECT_EQ(wave.LineStyle.Pattern, 1);
    EXPECT_EQ(wave.LineStyle.Width, 4);

    // Called directly: a lone argument is the colour, untrimmed, and the text is consumed.
    KGChartLineStyle ls;
    ls.Pattern = 2;
    PlixUnicodeString args(" CHBLK ");
    KGChartLookupTable::ParseLS(args, ls);
    EXPECT_EQ(ls.Pattern, 2);
    EXPECT_EQ(ls.Width, 1);
    EXPECT_EQ(ls.ColorToken.ToUtf8(), " CHBLK ");
    EXPECT_TRUE(args.IsEmpty());
}

TEST(InstructionParserTest, ComplexLineAndTheSingleSymbolOfALine) {
    KGChartLineObjectStyle line;
    EXPECT_TRUE(Line("LC(NAVARE51);SY(BOYLAT13,45);SY(EBBSTR01)", line).ok);
    EXPECT_EQ(line.ComplexLineName.ToUtf8(), "NAVARE51");
    // The later SY replaces the name; without a rotation the earlier one stays.
    EXPECT_EQ(line.Symbol.SymbolName.ToUtf8(), "EBBSTR01");
    EXPECT_EQ(line.Symbol.Rotation, 45.0);
    // A style made fresh for an LC entry still has its solid width-1 line.
    EXPECT_EQ(line.LineStyle.Pattern, 1);
    EXPECT_EQ(line.LineStyle.Width, 1);
}

TEST(InstructionParserTest, SymbolRotation) {
    struct Case {
        const char* args;
        const char* name;
        bool byOrient;
        double rotation;
    };
    const Case cases[] = {
        {"BOYLAT13,ORIENT", "BOYLAT13", true, 0.0}, {"BOYLAT13,orient", "BOYLAT13", false, 0.0},
        {"BOYLAT13,45", "BOYLAT13", false, 45.0},   {"BOYLAT13, 12.5 ", "BOYLAT13", false, 12.5},
        {"BOYLAT13,-90", "BOYLAT13", false, -90.0}, {",ORIENT", "", true, 0.0},
    };
    for (const Case& c : cases) {
        KGChartSymbolMarkerStyle symbol;
        symbol.Rotation = 7.0;
        PlixUnicodeString args(c.args);
        KGChartLookupTable::ParseSY(args, symbol);
        EXPECT_EQ(symbol.SymbolName.ToUtf8(), c.name) << c.args;
        EXPECT_EQ(symbol.RotateByOrient, c.byOrient) << c.args;
        EXPECT_EQ(symbol.Rotation, c.rotation) << c.args;
    }
    // Without a rotation argument the symbol keeps what it had.
    KGChartSymbolMarkerStyle kept;
    kept.RotateByOrient = true;
    kept.Rotation = 30.0;
    for (const char* args : {"NEWNAME", "NEWNAME,"}) {
        PlixUnicodeString text(args);
        KGChartLookupTable::ParseSY(text, kept);
        EXPECT_EQ(kept.SymbolName.ToUtf8(), "NEWNAME");
        EXPECT_TRUE(kept.RotateByOrient);
        EXPECT_EQ(kept.Rotation, 30.0);
    }
}

TEST(InstructionParserTest, AreaFillPatternBoundaryAndTransparency) {
    KGChartAreaObjectStyle area;
    EXPECT_TRUE(Area("AC(DEPVS);AP(DIAMOND1);LS(DASH,1,CHGRF)", area).ok);
    EXPECT_EQ(area.FillColorToken.ToUtf8(), "DEPVS");
    EXPECT_EQ(area.FillTransparency, 0);
    EXPECT_EQ(area.PatternName.ToUtf8(), "DIAMOND1");
    EXPECT_EQ(area.LineStyle.Pattern, 2);
    EXPECT_EQ(area.LineStyle.ColorToken.ToUtf8(), "CHGRF");
    EXPECT_TRUE(area.HasInstruction);

    KGChartAreaObjectStyle transparent;
    Area("AC(CHBRN,3);SY(HRBFAC13);SY(CENTRE01)", transparent);
    EXPECT_EQ(transparent.FillColorToken.ToUtf8(), "CHBRN");
    EXPECT_EQ(transparent.FillTransparency, 3);
    ASSERT_EQ(transparent.Symbols.GetSize(), 2);
    EXPECT_EQ(transparent.Symbols[1].SymbolName.ToUtf8(), "CENTRE01");

    // Only the digit right after the comma counts; a later AC without one keeps it.
    KGChartAreaObjectStyle twoDigits;
    Area("AC(CHBRN,35);AC(DEPDW)", twoDigits);
    EXPECT_EQ(twoDigits.FillColorToken.ToUtf8(), "DEPDW");
    EXPECT_EQ(twoDigits.FillTransparency, 3);
}

TEST(InstructionParserTest, TextArgumentsStopAtTheFirstEmptyOne) {
    KGChartPointObjectStyle style;
    Point("TX(OBJNAM,,2,2,'15110',0,0,CHBLK,26)", style);
    ASSERT_EQ(style.Texts.GetSize(), 1);
    EXPECT_EQ(style.Texts[0].Text.ToUtf8(), "OBJNAM");
    EXPECT_EQ(style.Texts[0].HJust, 3);
    EXPECT_EQ(style.Texts[0].VJust, 1);
    EXPECT_EQ(style.Texts[0].Space, 2);

    KGChartTextFormat partial;
    PlixUnicodeString args("'NAME',2,3,1,'15110',-4,,CHBLK,26");
    KGChartLookupTable::ParseTX(args, partial);
    EXPECT_EQ(partial.Text.ToUtf8(), "NAME");
    EXPECT_EQ(partial.HJust, 2);
    EXPECT_EQ(partial.VJust, 3);
    EXPECT_EQ(partial.Space, 1);
    EXPECT_EQ(partial.XOffset, -4);
    EXPECT_EQ(partial.YOffset, 0);
    EXPECT_TRUE(args.IsEmpty());
}

TEST(InstructionParserTest, FormattedTextTakesFormatAndAttributesFirst) {
    KGChartPointObjectStyle style;
    EXPECT_TRUE(Point("TE('%03.0lf deg','ORIENT',3,1,2,'15110',3,-1,CHBLK,23)", style).ok);
    ASSERT_EQ(style.Texts.GetSize(), 1);
    const KGChartTextFormat& te = style.Texts[0];
    EXPECT_EQ(te.Format.ToUtf8(), "%03.0lf deg");
    EXPECT_EQ(te.Text.ToUtf8(), "ORIENT");
    EXPECT_EQ(te.HJust, 3);
    EXPECT_EQ(te.VJust, 1);
    EXPECT_EQ(te.Space, 2);
    EXPECT_EQ(te.XOffset, 3);
    EXPECT_EQ(te.YOffset, -1);

    // Arguments split at every comma regardless of quotes: the format is cut and the rest
    // shifts by one.
    KGChartTextFormat shifted;
    PlixUnicodeString args("'%s, %s','OBJNAM',3,1,2,'15110',1,0,CHBLK,29");
    KGChartLookupTable::ParseTE(args, shifted);
    EXPECT_EQ(shifted.Format.ToUtf8(), "%s");
    EXPECT_EQ(shifted.Text.ToUtf8(), " %s");
    EXPECT_EQ(shifted.HJust, 0) << "'OBJNAM' read as a number";
}

TEST(InstructionParserTest, MalformedInstructionsEndTheParseWithoutLosingEarlierOnes) {
    const char* const malformed[] = {
        "SY(BOYLAT13);SY(TOPMAR02",  // unterminated
        "SY(BOYLAT13);SY",           // no arguments at all
        "SY(BOYLAT13);SYX(A)",       // something between code and "("
        "SY(BOYLAT13);S",            // a lone letter
        "SY(BOYLAT13);;;;)",         // stray ")"
    };
    for (const char* text : malformed) {
        KGChartPointObjectStyle style;
        Parsed r = Point(text, style);
        EXPECT_FALSE(r.ok) << text;
        ASSERT_EQ(style.Symbols.GetSize(), 1) << text;
        EXPECT_EQ(style.Symbols[0].SymbolName.ToUtf8(), "BOYLAT13") << text;
        EXPECT_EQ(r.rest, "\"5\",\"O\"") << text;
    }
    // Repeated code letters and several ";" are tolerated.
    KGChartPointObjectStyle lenient;
    EXPECT_TRUE(Point("SYY(A);;;TXX(OBJNAM,1,2,2,'15110',0,0,CHBLK,26);", lenient).ok);
    EXPECT_EQ(lenient.Symbols.GetSize(), 1);
    EXPECT_EQ(lenient.Texts.GetSize(), 1);
}

TEST(InstructionParserTest, EntryWithoutTwoQuotesGivesAnEmptyField) {
    KGChartPointObjectStyle style;
    PlixUnicodeString entry(",,SY(A)");
    PlixUnicodeString procedure;
    EXPECT_TRUE(KGChartLookupTable::ParseSymbolizationInstructionpPoint(entry, procedure, &style));
    EXPECT_TRUE(style.Symbols.IsEmpty());
    EXPECT_EQ(entry.ToUtf8(), "SY(A)");
}

TEST(InstructionParserTest, LongFieldIsReadInOnePass) {
    // 200 000 instructions: a parser that re-copies the rest of the field per instruction
    // would take minutes here.
    std::string many;
    for (int i = 0; i < 200000; ++i) many += "SY(S);";
    KGChartAreaObjectStyle style;
    Parsed r = Area(many + "AC(DEPVS)", style);
    EXPECT_TRUE(r.ok);
    EXPECT_EQ(style.Symbols.GetSize(), 200000);
    EXPECT_EQ(style.FillColorToken.ToUtf8(), "DEPVS");
}

}  // namespace
