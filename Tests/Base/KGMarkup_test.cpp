// Tests of the markup cursor: walking and editing documents the way the chart classes do,
// encodings, atomic saves and hostile input.
#include "Base/KGMarkup.h"

#include <gtest/gtest.h>
#include <iconv.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "TestSupport.h"

using KGC::KGMarkup;
using PLIX::PlixUnicodeString;

namespace {

std::string U8(const PlixUnicodeString& s) {
    return s.ToUtf8();
}

// Converts text strictly (no transliteration); fails the test when it cannot.
std::string Convert(const std::string& text, const char* to, const char* from) {
    iconv_t cd = iconv_open(to, from);
    if (cd == reinterpret_cast<iconv_t>(-1)) {
        ADD_FAILURE() << "iconv does not know " << to << " or " << from;
        return std::string();
    }
    std::string out(text.size() * 4 + 16, '\0');
    char* in = const_cast<char*>(text.data());
    size_t inLeft = text.size();
    char* dst = &out[0];
    size_t dstLeft = out.size();
    if (iconv(cd, &in, &inLeft, &dst, &dstLeft) == static_cast<size_t>(-1)) {
        ADD_FAILURE() << "cannot convert to " << to;
    }
    iconv_close(cd);
    out.resize(out.size() - dstLeft);
    return out;
}

// The entries of a directory, so that a failed save can be shown to leave nothing behind.
std::vector<std::string> Entries(const std::string& dir) {
    std::vector<std::string> names;
    for (const auto& e : std::filesystem::directory_iterator(dir)) {
        names.push_back(e.path().filename().string());
    }
    return names;
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
    ASSERT_TRUE(doc.AddChildElem("Windows", "line\r\nnext\r"));

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
    ASSERT_TRUE(back.FindChildElem("Windows"));
    EXPECT_EQ("line\r\nnext\r", U8(back.GetChildData()));
    EXPECT_EQ(text, back.GetDoc());

    // A declaration read in is kept.
    KGMarkup declared("<?xml version=\"1.0\"?><a/>");
    EXPECT_EQ("<?xml version=\"1.0\"?>\n<a />\n", U8(declared.GetDoc()));
}

// Laid out exactly as Save writes, so that loading and saving reproduces the bytes.
std::string SettingsIn(const std::string& declared, const std::string& style,
                       const std::string& path) {
    return "<?xml version=\"1.0\" encoding=\"" + declared +
           "\"?>\n"
           "<VeltrinChart>\n"
           "  <Display>\n"
           "    <Style value=\"" +
           style +
           "\" type=\"ENC\">\n"
           "      <ColorTable type=\"DayBright\">" +
           path +
           "</ColorTable>\n"
           "    </Style>\n"
           "  </Display>\n"
           "</VeltrinChart>\n";
}

TEST(KGMarkupEncoding, SavesAChineseSettingsFileBackInItsOwnEncoding) {
    vltest::TempDir dir;
    const std::string path = dir.File("ChartConfig.xml");
    const std::string style = "\u6D77\u56FE";  // "chart"
    const std::string colours = "./\u989C\u8272/day.xml";
    for (const char* encoding : {"GB2312", "GBK"}) {
        SCOPED_TRACE(encoding);
        const std::string bytes = Convert(SettingsIn(encoding, style, colours), encoding, "UTF-8");
        ASSERT_EQ(std::string::npos, bytes.find(style)) << "the fixture must not be UTF-8";
        vltest::WriteFile(path, bytes);

        KGMarkup doc;
        ASSERT_TRUE(doc.Load(path)) << U8(doc.GetError());
        EXPECT_EQ(encoding, doc.GetEncoding());
        ASSERT_TRUE(Enter(doc, {"VeltrinChart", "Display"}));
        ASSERT_TRUE(doc.FindElem("Style"));
        EXPECT_EQ(style, U8(doc.GetAttrib("value")));
        ASSERT_TRUE(doc.FindChildElem("ColorTable"));
        EXPECT_EQ(colours, U8(doc.GetChildData()));

        ASSERT_TRUE(doc.Save(path)) << U8(doc.GetError());
        EXPECT_EQ(bytes, vltest::ReadFile(path)) << "an unchanged document saves byte for byte";

        // A style renamed to one with a character GB2312 lacks still saves: it becomes a
        // character reference and reads back as the character.
        const std::string renamed = "\u591C\u95F4 \U0001F6A2";
        ASSERT_TRUE(doc.SetAttrib("value", renamed));
        ASSERT_TRUE(doc.Save(path)) << U8(doc.GetError());
        EXPECT_EQ(
            Convert(SettingsIn(encoding, "\u591C\u95F4 &#x1F6A2;", colours), encoding, "UTF-8"),
            vltest::ReadFile(path));
        KGMarkup back;
        ASSERT_TRUE(back.Load(path)) << U8(back.GetError());
        ASSERT_TRUE(Enter(back, {"VeltrinChart", "Display"}));
        ASSERT_TRUE(back.FindElem("Style"));
        EXPECT_EQ(renamed, U8(back.GetAttrib("value")));
    }
}

TEST(KGMarkupEncoding, ReadsAndWritesEveryEncodingItAccepts) {
    vltest::TempDir dir;
    struct Case {
        const char* declared;  // in the declaration
        const char* iconvName;
        std::string prefix;  // byte order mark
        const char* reported;
        const char* text;
    };
    const Case cases[] = {
        {"UTF-8", "UTF-8", "\xEF\xBB\xBF", "UTF-8", "\u6D77\u56FE \u00C6r\u00F8"},
        {"UTF-16", "UTF-16LE", "\xFF\xFE", "UTF-16LE", "\u6D77\u56FE \U0001F6A2"},
        {"UTF-16", "UTF-16BE", "\xFE\xFF", "UTF-16BE", "\u6D77\u56FE \U0001F6A2"},
        {"GB18030", "GB18030", "", "GB18030", "\u6D77\u56FE \U0001F6A2"},
        {"Big5", "BIG5", "", "Big5", "\u6D77\u5716"},
        {"ISO-8859-1", "ISO-8859-1", "", "ISO-8859-1", "\u00C6r\u00F8 caf\u00E9"},
        {"ISO-8859-7", "ISO-8859-7", "", "ISO-8859-7", "\u03C7\u03AC\u03C1\u03C4\u03B7\u03C2"},
        {"windows-1252", "WINDOWS-1252", "", "windows-1252", "\u20AC 5 \u2013 caf\u00E9"},
        {"windows-1251", "WINDOWS-1251", "", "windows-1251", "\u041A\u0430\u0440\u0442\u0430"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.iconvName);
        const std::string path = dir.File("doc.xml");
        const std::string bytes =
            c.prefix + Convert(SettingsIn(c.declared, c.text, "p"), c.iconvName, "UTF-8");
        vltest::WriteFile(path, bytes);
        KGMarkup doc;
        ASSERT_TRUE(doc.Load(path)) << U8(doc.GetError());
        EXPECT_EQ(c.reported, doc.GetEncoding());
        ASSERT_TRUE(Enter(doc, {"VeltrinChart", "Display"}));
        ASSERT_TRUE(doc.FindElem("Style"));
        EXPECT_EQ(c.text, U8(doc.GetAttrib("value")));
        ASSERT_TRUE(doc.Save(path)) << U8(doc.GetError());
        EXPECT_EQ(bytes, vltest::ReadFile(path));
    }

    // Without a declaration: read as UTF-8, saved with one. A new document likewise.
    vltest::WriteFile(dir.File("plain.xml"), "<a>\xC3\xA9</a>");
    KGMarkup plain;
    ASSERT_TRUE(plain.Load(dir.File("plain.xml")));
    ASSERT_TRUE(plain.FindElem("a"));
    EXPECT_EQ("\u00E9", U8(plain.GetData()));
    EXPECT_EQ("<a>\xC3\xA9</a>\n", U8(plain.GetDoc()));
    ASSERT_TRUE(plain.Save(dir.File("plain.xml")));
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\xC3\xA9</a>\n",
              vltest::ReadFile(dir.File("plain.xml")));
    KGMarkup fresh;
    EXPECT_EQ("UTF-8", fresh.GetEncoding());
    ASSERT_TRUE(fresh.AddElem("New"));
    ASSERT_TRUE(fresh.Save(dir.File("new.xml")));
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<New />\n",
              vltest::ReadFile(dir.File("new.xml")));

    // Document text that declares an encoding is saved in it.
    KGMarkup declared("<?xml version=\"1.0\" encoding=\"GBK\"?><a>\u6D77</a>");
    ASSERT_TRUE(declared.IsWellFormed()) << U8(declared.GetError());
    EXPECT_EQ("GBK", declared.GetEncoding());
    ASSERT_TRUE(declared.Save(dir.File("gbk.xml")));
    EXPECT_EQ(Convert("<?xml version=\"1.0\" encoding=\"GBK\"?>\n<a>\u6D77</a>\n", "GBK", "UTF-8"),
              vltest::ReadFile(dir.File("gbk.xml")));
}

TEST(KGMarkupEncoding, RefusesTextItCannotDecode) {
    vltest::TempDir dir;
    const std::pair<const char*, std::string> bad[] = {
        {"unknown encoding", "<?xml version=\"1.0\" encoding=\"x-no-such\"?><a/>"},
        {"invalid GB2312", "<?xml version=\"1.0\" encoding=\"GB2312\"?><a>\xFF\xFF</a>"},
        {"UTF-16 without BOM", "<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>"},
        {"BOM against declaration", "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"GBK\"?><a/>"},
        {"control in the name", "<?xml version=\"1.0\" encoding=\"GBK\x01\"?><a/>"},
        {"late declaration", "<!--c--><?xml version=\"1.0\" encoding=\"GBK\"?><a/>"},
        {"odd UTF-16", std::string("\xFF\xFE<\0a\0/\0>", 9)},
        {"UTF-32", std::string("\xFF\xFE\0\0<\0\0\0", 8)},
    };
    for (const auto& [what, bytes] : bad) {
        SCOPED_TRACE(what);
        vltest::WriteFile(dir.File("bad.xml"), bytes);
        KGMarkup doc("<previous/>");
        EXPECT_FALSE(doc.Load(dir.File("bad.xml")));
        EXPECT_FALSE(doc.IsWellFormed());
        EXPECT_FALSE(doc.GetError().IsEmpty());
        EXPECT_FALSE(doc.FindElem()) << "a failed load leaves an empty document";
    }
    KGMarkup doc;
    EXPECT_FALSE(doc.SetDoc("<?xml version=\"1.0\" encoding=\"x-no-such\"?><a/>"));
    EXPECT_TRUE(doc.SetDoc(u"\uFEFF<a/>")) << "a leading byte order mark is allowed";
}

TEST(KGMarkupSave, ReplacesTheFileAndKeepsItsPermissions) {
    vltest::TempDir dir;
    const std::string path = dir.File("settings.xml");
    vltest::WriteFile(path, "<old/>");
    ASSERT_EQ(0, chmod(path.c_str(), 0640));
    ASSERT_EQ(0, symlink("settings.xml", dir.File("link.xml").c_str()));

    KGMarkup doc("<new>1</new>");
    ASSERT_TRUE(doc.Save(path)) << U8(doc.GetError());
    EXPECT_TRUE(doc.GetError().IsEmpty());
    struct stat st {};
    ASSERT_EQ(0, stat(path.c_str(), &st));
    EXPECT_EQ(0640u, st.st_mode & 07777);
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<new>1</new>\n", vltest::ReadFile(path));

    // Through a link the file it names is replaced and the link stays.
    ASSERT_TRUE(doc.SetDoc("<new>2</new>"));
    ASSERT_TRUE(doc.Save(dir.File("link.xml"))) << U8(doc.GetError());
    struct stat lst {};
    ASSERT_EQ(0, lstat(dir.File("link.xml").c_str(), &lst));
    EXPECT_TRUE(S_ISLNK(lst.st_mode));
    EXPECT_NE(std::string::npos, vltest::ReadFile(path).find("<new>2</new>"));
    EXPECT_EQ(2u, Entries(dir.Path()).size());

    // Failures before anything is written.
    EXPECT_FALSE(doc.Save(dir.File("missing/settings.xml")));
    EXPECT_FALSE(doc.GetError().IsEmpty());
    ASSERT_EQ(0, mkdir(dir.File("sub").c_str(), 0755));
    EXPECT_FALSE(doc.Save(dir.File("sub")));
    KGMarkup empty;
    EXPECT_FALSE(empty.Save(path)) << "an empty document must not replace a settings file";
    EXPECT_NE(std::string::npos, vltest::ReadFile(path).find("<new>2</new>"));
    EXPECT_EQ(3u, Entries(dir.Path()).size());
}

TEST(KGMarkupSave, AFullDiskLeavesTheOldFile) {
    vltest::TempDir dir;
    const std::string path = dir.File("settings.xml");
    const std::string old = "<?xml version=\"1.0\"?>\n<old>keep me</old>\n";
    vltest::WriteFile(path, old);
    KGMarkup doc;
    ASSERT_TRUE(doc.AddElem("Big"));
    for (int i = 0; i < 2000; ++i) ASSERT_TRUE(doc.AddChildElem("Item", "some text to fill"));

    struct rlimit saved {};
    ASSERT_EQ(0, getrlimit(RLIMIT_FSIZE, &saved));
    struct rlimit small = saved;
    small.rlim_cur = 4096;
    auto oldHandler = signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(0, setrlimit(RLIMIT_FSIZE, &small));
    const bool saved_ok = doc.Save(path);
    setrlimit(RLIMIT_FSIZE, &saved);
    signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(saved_ok);
    EXPECT_FALSE(doc.GetError().IsEmpty());
    EXPECT_EQ(old, vltest::ReadFile(path));
    EXPECT_EQ(std::vector<std::string>{"settings.xml"}, Entries(dir.Path()));
    ASSERT_TRUE(doc.Save(path)) << "the document is still intact";
}

TEST(KGMarkupSave, AReadOnlyDirectoryLeavesTheOldFile) {
    vltest::TempDir dir;
    ASSERT_EQ(0, chmod(dir.Path().c_str(), 0755));
    const std::string locked = dir.File("locked");
    ASSERT_EQ(0, mkdir(locked.c_str(), 0755));
    const std::string path = locked + "/settings.xml";
    vltest::WriteFile(path, "<old/>");
    ASSERT_EQ(0, chmod(path.c_str(), 0666));
    ASSERT_EQ(0, chmod(locked.c_str(), 0555));

    // Root ignores permission bits, so the save runs in a child without privileges.
    pid_t pid = fork();
    ASSERT_NE(-1, pid);
    if (pid == 0) {
        if (geteuid() == 0 && (setgid(65534) != 0 || setuid(65534) != 0)) _exit(3);
        KGMarkup doc("<new/>");
        const bool ok = doc.Save(path);
        _exit(ok ? 1 : doc.GetError().IsEmpty() ? 2 : 0);
    }
    int status = 0;
    ASSERT_EQ(pid, waitpid(pid, &status, 0));
    chmod(locked.c_str(), 0755);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(0, WEXITSTATUS(status)) << "1: saved anyway, 2: no reason given, 3: setuid failed";
    EXPECT_EQ("<old/>", vltest::ReadFile(path));
    EXPECT_EQ(std::vector<std::string>{"settings.xml"}, Entries(locked));
}

TEST(KGMarkupHostile, RefusesEntitiesDeepNestingAndBrokenDocuments) {
    vltest::TempDir dir;
    std::string laughs = "<?xml version=\"1.0\"?>\n<!DOCTYPE lolz [\n<!ENTITY lol \"lol\">\n";
    for (int i = 1; i <= 9; ++i) {
        laughs += "<!ENTITY lol" + std::to_string(i) + " \"";
        for (int j = 0; j < 10; ++j)
            laughs += "&lol" + (i == 1 ? std::string() : std::to_string(i - 1)) + ";";
        laughs += "\">\n";
    }
    laughs += "]>\n<lolz>&lol9;</lolz>\n";
    const std::string external =
        "<?xml version=\"1.0\"?>\n<!DOCTYPE r [<!ENTITY xxe SYSTEM \"file:///etc/passwd\">]>\n"
        "<r>&xxe;</r>";
    std::string deep;
    for (int i = 0; i < 100000; ++i) deep += "<a>";
    for (int i = 0; i < 100000; ++i) deep += "</a>";

    const std::pair<const char*, std::string> hostile[] = {
        {"billion laughs", laughs}, {"external entity", external},
        {"100000 deep", deep},      {"two roots", "<a/><b/>"},
        {"no root", "just text"},   {"NUL inside", std::string("<a>x\0y</a>", 11)},
    };
    for (const auto& [what, text] : hostile) {
        SCOPED_TRACE(what);
        KGMarkup fromText(PlixUnicodeString(text.data(), text.size()));
        EXPECT_FALSE(fromText.IsWellFormed());
        EXPECT_FALSE(fromText.GetError().IsEmpty());
        EXPECT_FALSE(fromText.FindElem());
        vltest::WriteFile(dir.File("hostile.xml"), text);
        KGMarkup fromFile;
        EXPECT_FALSE(fromFile.Load(dir.File("hostile.xml")));
        EXPECT_TRUE(fromFile.GetDoc().IsEmpty());
    }

    // The depth limit is exact, and edits cannot build past it either.
    std::string limit;
    for (int i = 0; i < KGMarkup::MaxDepth; ++i) limit = "<a>" + limit + "</a>";
    EXPECT_TRUE(KGMarkup(limit).IsWellFormed());
    EXPECT_FALSE(KGMarkup("<a>" + limit + "</a>").IsWellFormed());
    KGMarkup built;
    ASSERT_TRUE(built.AddElem("a"));
    for (int i = 1; i < KGMarkup::MaxDepth; ++i) {
        ASSERT_TRUE(built.AddChildElem("a"));
        ASSERT_TRUE(built.IntoElem());
    }
    EXPECT_FALSE(built.AddChildElem("a"));
    EXPECT_TRUE(KGMarkup(built.GetDoc()).IsWellFormed());

    // Every truncation of a document fails cleanly.
    const std::string whole = "<r a=\"1\"><b>t&amp;</b><![CDATA[x]]><!--c--><c/></r>";
    for (size_t n = 0; n < whole.size(); ++n) {
        KGMarkup cut;
        EXPECT_EQ(n == 0, cut.SetDoc(whole.substr(0, n))) << whole.substr(0, n);
    }
    KGMarkup recovered;
    EXPECT_FALSE(recovered.SetDoc(whole.substr(0, 5)));
    EXPECT_TRUE(recovered.SetDoc(whole));
    EXPECT_TRUE(recovered.IsWellFormed());
    EXPECT_TRUE(recovered.GetError().IsEmpty());
}

TEST(KGMarkupHostile, RefusesOversizedAndMissingFilesBeforeReading) {
    vltest::TempDir dir;
    const std::string big = dir.File("big.xml");
    vltest::WriteFile(big, "<a/>");
    // Sparse: nothing of it is ever written to disk or read.
    ASSERT_EQ(0, truncate(big.c_str(), KGMarkup::MaxFileSize + 1));
    KGMarkup doc;
    EXPECT_FALSE(doc.Load(big));
    EXPECT_NE(std::string::npos, U8(doc.GetError()).find("larger than"));
    EXPECT_FALSE(doc.Load(dir.File("absent.xml")));
    EXPECT_FALSE(doc.GetError().IsEmpty());
    EXPECT_FALSE(doc.Load(dir.Path()));
    vltest::WriteFile(dir.File("empty.xml"), "");
    EXPECT_FALSE(doc.Load(dir.File("empty.xml")));
}

TEST(KGMarkupCursor, MovesWithItsPositions) {
    KGMarkup doc("<r><a/><b/></r>");
    ASSERT_TRUE(doc.FindElem("r"));
    ASSERT_TRUE(doc.IntoElem());
    ASSERT_TRUE(doc.FindElem("b"));
    KGMarkup moved(std::move(doc));
    EXPECT_EQ("b", U8(moved.GetTagName()));
    // The moved-from cursor is an empty document that can be used again.
    EXPECT_FALSE(doc.FindElem());  // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(doc.GetDoc().IsEmpty());
    ASSERT_TRUE(doc.AddElem("again"));
    EXPECT_EQ("<again />\n", U8(doc.GetDoc()));
    moved = std::move(doc);
    EXPECT_EQ("again", U8(moved.GetTagName()));
}

}  // namespace
