// Tests of the markup cursor: walking and editing documents the way the chart classes do,
// encodings, atomic saves and hostile input.
#include "Base/KGMarkup.h"

#include <gtest/gtest.h>

#include <string>

#include "TestSupport.h"

using KGC::KGMarkup;
using PLIX::PlixUnicodeString;

namespace {

std::string U8(const PlixUnicodeString& s) {
    return s.ToUtf8();
}

const char* const kSettings =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<!-- chart settings -->\n"
    "<VeltrinChart>\n"
    "  <ElectronicChart>\n"
    "    <Display>\n"
    "      <Style value=\"S52\" type=\"ENC\">\n"
    "        <LookupTables>\n"
    "          <PointLookupTable>\n"
    "            <SymbolType value=\"simplified\">./pt_simple.dic</SymbolType>\n"
    "            <SymbolType value=\"paperchart\">./pt_paper.dic</SymbolType>\n"
    "          </PointLookupTable>\n"
    "          <LineLookupTable>./line.dic</LineLookupTable>\n"
    "        </LookupTables>\n"
    "      </Style>\n"
    "      <?editor keep?>\n"
    "      <Style value=\"Paper\" type=\"PaperChart\"/>\n"
    "    </Display>\n"
    "    <Dictionary>\n"
    "      <S57Object>./s57objects.xml</S57Object>\n"
    "      <Blank>  </Blank>\n"
    "      <Mixed>a &amp; b<![CDATA[ <c> ]]>d</Mixed>\n"
    "    </Dictionary>\n"
    "  </ElectronicChart>\n"
    "</VeltrinChart>\n";

// Steps from the top into the path of element names.
bool Enter(KGMarkup& doc, std::initializer_list<const char*> path) {
    doc.ResetPos();
    for (const char* name : path) {
        if (!doc.FindElem(name) || !doc.IntoElem()) return false;
    }
    return true;
}

TEST(KGMarkupCursor, WalksASettingsDocument) {
    KGMarkup doc(kSettings);
    ASSERT_TRUE(doc.IsWellFormed()) << U8(doc.GetError());
    EXPECT_TRUE(doc.GetError().IsEmpty());

    // The declaration, comment and processing instruction are no positions.
    EXPECT_FALSE(doc.FindElem("ElectronicChart"));
    ASSERT_TRUE(doc.FindElem());
    EXPECT_EQ("VeltrinChart", U8(doc.GetTagName()));
    EXPECT_FALSE(doc.FindElem());
    EXPECT_EQ("VeltrinChart", U8(doc.GetTagName())) << "a failed search must not move";

    ASSERT_TRUE(Enter(doc, {"VeltrinChart", "ElectronicChart", "Display"}));
    ASSERT_TRUE(doc.FindElem("Style"));
    EXPECT_EQ("S52", U8(doc.GetAttrib("value")));
    EXPECT_TRUE(doc.GetAttrib("missing").IsEmpty());
    ASSERT_TRUE(doc.FindChildElem("LookupTables"));
    EXPECT_EQ("LookupTables", U8(doc.GetChildTagName()));
    ASSERT_TRUE(doc.IntoElem());  // the child position becomes the main position
    EXPECT_EQ("LookupTables", U8(doc.GetTagName()));
    ASSERT_TRUE(doc.FindChildElem("PointLookupTable"));
    ASSERT_TRUE(doc.IntoElem());
    ASSERT_TRUE(doc.FindChildElem("SymbolType"));
    EXPECT_EQ("simplified", U8(doc.GetChildAttrib("value")));
    EXPECT_EQ("./pt_simple.dic", U8(doc.GetChildData()));
    ASSERT_TRUE(doc.FindChildElem("SymbolType"));
    EXPECT_EQ("./pt_paper.dic", U8(doc.GetChildData()));
    EXPECT_FALSE(doc.FindChildElem("SymbolType"));
    EXPECT_EQ("paperchart", U8(doc.GetChildAttrib("value")));
    doc.ResetChildPos();
    ASSERT_TRUE(doc.FindChildElem());
    EXPECT_EQ("simplified", U8(doc.GetChildAttrib("value")));

    // Backing out: the old parent becomes main, the old main the child.
    ASSERT_TRUE(doc.OutOfElem());
    EXPECT_EQ("LookupTables", U8(doc.GetTagName()));
    EXPECT_EQ("PointLookupTable", U8(doc.GetChildTagName()));
    ASSERT_TRUE(doc.FindChildElem());
    EXPECT_EQ("./line.dic", U8(doc.GetChildData()));
    ASSERT_TRUE(doc.OutOfElem());
    ASSERT_TRUE(doc.OutOfElem());
    EXPECT_EQ("Display", U8(doc.GetTagName()));
    ASSERT_TRUE(doc.IntoElem());  // the old main, S52, is the main position again
    EXPECT_EQ("S52", U8(doc.GetAttrib("value")));
    EXPECT_FALSE(doc.FindElem("LookupTables"));
    ASSERT_TRUE(doc.FindElem("Style"));
    EXPECT_EQ("PaperChart", U8(doc.GetAttrib("type")));
    doc.ResetMainPos();
    ASSERT_TRUE(doc.FindElem("Style"));
    EXPECT_EQ("S52", U8(doc.GetAttrib("value")));

    // Text: untrimmed, entities decoded, CDATA joined, blanks-only kept.
    ASSERT_TRUE(Enter(doc, {"VeltrinChart", "ElectronicChart", "Dictionary"}));
    ASSERT_TRUE(doc.FindElem("Blank"));
    EXPECT_EQ("  ", U8(doc.GetData()));
    ASSERT_TRUE(doc.FindElem("Mixed"));
    EXPECT_EQ("a & b <c> d", U8(doc.GetData()));

    // Into an empty main and out again; OutOfElem stops at the top.
    doc.ResetPos();
    EXPECT_FALSE(doc.IntoElem());
    EXPECT_FALSE(doc.OutOfElem());
    EXPECT_FALSE(doc.FindChildElem());
    EXPECT_TRUE(doc.GetData().IsEmpty());
    EXPECT_TRUE(doc.GetTagName().IsEmpty());
}

TEST(KGMarkupCursor, ReadsDictionariesWithRepeatedChildren) {
    KGMarkup doc(
        "<ObjectClasses>"
        "<ObjectClass Code=\"75\" Acronym=\"LIGHTS\"><Remarks>r</Remarks><Name>Light</Name>"
        "</ObjectClass>"
        "<Other/>"
        "<ObjectClass Code=\"5\" Acronym=\"BCNCAR\"><Name>Beacon</Name></ObjectClass>"
        "</ObjectClasses>");
    ASSERT_TRUE(doc.FindElem("ObjectClasses"));
    ASSERT_TRUE(doc.IntoElem());
    int count = 0;
    while (doc.FindElem("ObjectClass")) ++count;
    EXPECT_EQ(2, count);
    doc.ResetMainPos();
    std::string seen;
    while (doc.FindElem("ObjectClass")) {
        // Each field is sought from the first child, whatever order they stand in.
        doc.FindChildElem("Name");
        seen += U8(doc.GetAttrib("Acronym")) + "=" + U8(doc.GetChildData());
        doc.ResetChildPos();
        if (doc.FindChildElem("Remarks")) seen += "/" + U8(doc.GetChildData());
        doc.ResetChildPos();
        seen += ";";
    }
    EXPECT_EQ("LIGHTS=Light/r;BCNCAR=Beacon;", seen);
}

TEST(KGMarkupEdit, EditsLikeTheSettingsFile) {
    KGMarkup doc(kSettings);
    ASSERT_TRUE(Enter(doc, {"VeltrinChart", "ElectronicChart", "Display"}));
    // Append a style after the last one.
    while (doc.FindElem("Style")) {
    }
    ASSERT_TRUE(doc.AddElem("Style"));
    EXPECT_TRUE(doc.SetAttrib("type", "ENC"));
    EXPECT_TRUE(doc.SetAttrib("value", "Night"));
    EXPECT_TRUE(doc.SetAttrib("value", "Night2"));  // replaces
    EXPECT_TRUE(doc.SetAttrib("order", -7));
    ASSERT_TRUE(doc.IntoElem());
    ASSERT_TRUE(doc.AddElem("LookupTables"));
    ASSERT_TRUE(doc.AddChildElem("PointLookupTable"));
    ASSERT_TRUE(doc.AddChildElem("AreaLookupTable", "./area.dic"));
    doc.ResetChildPos();
    ASSERT_TRUE(doc.FindChildElem("PointLookupTable"));
    ASSERT_TRUE(doc.AddChildElem("LineLookupTable"));  // after the child position
    EXPECT_TRUE(doc.SetChildAttrib("n", 3));
    EXPECT_TRUE(doc.SetChildData("./line.dic"));
    EXPECT_FALSE(doc.AddChildElem("bad name"));
    EXPECT_FALSE(doc.AddChildElem(""));
    EXPECT_FALSE(doc.AddElem("1st"));
    EXPECT_FALSE(doc.SetAttrib("a b", "x"));
    ASSERT_TRUE(doc.OutOfElem());
    EXPECT_FALSE(doc.SetData("x")) << "text over child elements would destroy them";

    KGMarkup copy(doc.GetDoc());
    ASSERT_TRUE(Enter(copy, {"VeltrinChart", "ElectronicChart", "Display"}));
    std::string names;
    while (copy.FindElem("Style")) names += U8(copy.GetAttrib("value")) + ",";
    EXPECT_EQ("S52,Paper,Night2,", names);
    EXPECT_EQ("-7", U8(copy.GetAttrib("order")));
    ASSERT_TRUE(copy.IntoElem());
    ASSERT_TRUE(copy.FindElem("LookupTables"));
    std::string children;
    while (copy.FindChildElem()) {
        children += U8(copy.GetChildTagName()) + "=" + U8(copy.GetChildData()) + ";";
    }
    EXPECT_EQ("PointLookupTable=;LineLookupTable=./line.dic;AreaLookupTable=./area.dic;", children);

    // SetData replaces the text and keeps comments beside it.
    KGMarkup leaf("<a><b>old<!--why-->er</b></a>");
    ASSERT_TRUE(leaf.FindElem("a"));
    ASSERT_TRUE(leaf.FindChildElem("b"));
    ASSERT_TRUE(leaf.SetChildData("new"));
    EXPECT_EQ("new", U8(leaf.GetChildData()));
    EXPECT_NE(std::string::npos, U8(leaf.GetDoc()).find("<!--why-->"));
    ASSERT_TRUE(leaf.SetChildData(""));
    EXPECT_TRUE(leaf.GetChildData().IsEmpty());

    // One root only; a new document gets one.
    KGMarkup fresh;
    EXPECT_FALSE(fresh.AddChildElem("x")) << "no main position";
    ASSERT_TRUE(fresh.AddElem("Root", "text"));
    EXPECT_FALSE(fresh.AddElem("Second"));
    fresh.ResetPos();
    EXPECT_FALSE(fresh.AddElem("Second"));
    EXPECT_EQ("<Root>text</Root>\n", U8(fresh.GetDoc()));
}

TEST(KGMarkupEdit, RemovesAndMovesToThePreviousSibling) {
    KGMarkup doc("<r><a/><!--c--><b><x/><y/><z/></b><c/></r>");
    ASSERT_TRUE(doc.FindElem("r"));
    ASSERT_TRUE(doc.IntoElem());
    ASSERT_TRUE(doc.FindElem("b"));
    ASSERT_TRUE(doc.FindChildElem("y"));
    ASSERT_TRUE(doc.RemoveChildElem());
    EXPECT_EQ("x", U8(doc.GetChildTagName()));
    ASSERT_TRUE(doc.RemoveChildElem());
    EXPECT_TRUE(doc.GetChildTagName().IsEmpty()) << "the first child has no previous one";
    EXPECT_FALSE(doc.RemoveChildElem());
    ASSERT_TRUE(doc.FindChildElem());
    EXPECT_EQ("z", U8(doc.GetChildTagName()));

    ASSERT_TRUE(doc.RemoveElem());  // b with everything inside
    EXPECT_EQ("a", U8(doc.GetTagName())) << "the comment between is skipped";
    ASSERT_TRUE(doc.FindElem());
    EXPECT_EQ("c", U8(doc.GetTagName()));
    ASSERT_TRUE(doc.RemoveElem());
    ASSERT_TRUE(doc.RemoveElem());
    EXPECT_TRUE(doc.GetTagName().IsEmpty());
    EXPECT_FALSE(doc.RemoveElem());
    EXPECT_FALSE(doc.FindElem());
    EXPECT_EQ("<r>\n  <!--c-->\n</r>\n", U8(doc.GetDoc()));
}

TEST(KGMarkupText, RoundTripsSpecialCharactersAndNonAsciiText) {
    const PlixUnicodeString special = "a & b < c > d \" e ' f";
    const PlixUnicodeString chinese = u"\u7EA2\u8272\u6D77\u56FE \U0001F6A2";
    KGMarkup doc;
    ASSERT_TRUE(doc.AddElem("Root"));
    ASSERT_TRUE(doc.SetAttrib("special", special));
    ASSERT_TRUE(doc.SetAttrib(u"\u540D", chinese));
    ASSERT_TRUE(doc.SetAttrib("lines", "one\ntwo\tthree"));
    ASSERT_TRUE(doc.AddChildElem("Text", special));
    ASSERT_TRUE(doc.AddChildElem(u"\u6837\u5F0F", chinese));
    ASSERT_TRUE(doc.AddChildElem("Spaces", "  padded\n  "));

    const PlixUnicodeString text = doc.GetDoc();
    EXPECT_EQ(std::string::npos, U8(text).find("<?xml")) << "no declaration is added";
    KGMarkup back(text);
    ASSERT_TRUE(back.IsWellFormed()) << U8(back.GetError());
    ASSERT_TRUE(back.FindElem("Root"));
    EXPECT_EQ(special, back.GetAttrib("special"));
    EXPECT_EQ(chinese, back.GetAttrib(u"\u540D"));
    EXPECT_EQ("one\ntwo\tthree", U8(back.GetAttrib("lines")));
    ASSERT_TRUE(back.FindChildElem("Text"));
    EXPECT_EQ(special, back.GetChildData());
    ASSERT_TRUE(back.FindChildElem(u"\u6837\u5F0F"));
    EXPECT_EQ(chinese, back.GetChildData());
    ASSERT_TRUE(back.FindChildElem("Spaces"));
    EXPECT_EQ("  padded\n  ", U8(back.GetChildData()));
    EXPECT_EQ(text, back.GetDoc());

    // A declaration read in is kept.
    KGMarkup declared("<?xml version=\"1.0\"?><a/>");
    EXPECT_EQ("<?xml version=\"1.0\"?>\n<a />\n", U8(declared.GetDoc()));
}

}  // namespace
