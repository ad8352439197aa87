// Tests of the markup cursor: positions, text, encodings, atomic saves and hostile input.
#include "Base/KGMarkup.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <sstream>
#include <string>

#include "TestSupport.h"

using KGC::KGMarkup;
using PLIX::PlixUnicodeString;
namespace fs = std::filesystem;

namespace {

const auto U8 = [](const PlixUnicodeString& s) { return s.ToUtf8(); };
const std::string kData = vltest::TestDataDir() + "markup/";

std::string Nest(int depth) {
    std::string open, close;
    for (int i = 0; i < depth; ++i) open += "<a>", close += "</a>";
    return open + close;
}

// Runs cursor steps separated by blanks: "F:name"/"C:name" FindElem/FindChildElem, "I"/"O"
// Into/OutOfElem, "R"/"M"/"H" ResetPos/ResetMainPos/ResetChildPos, "A:name"/"a:name"
// AddElem/AddChildElem, "X"/"x" RemoveElem/RemoveChildElem, "~" moves the cursor out into a
// temporary. Gives per step "+" or "-" for the result, then the main and child tag names.
std::string Walk(KGMarkup& m, const std::string& steps) {
    std::istringstream in(steps);
    std::string out;
    for (std::string step; in >> step;) {
        const PlixUnicodeString name(step.size() > 2 ? step.substr(2) : std::string());
        const char16_t* raw = step.size() > 2 ? name.c_str() : nullptr;  // null: any name
        const char op = step[0];
        bool ok = true;
        if (op == 'F' || op == 'C') ok = op == 'F' ? m.FindElem(raw) : m.FindChildElem(raw);
        if (op == 'I' || op == 'O') ok = op == 'I' ? m.IntoElem() : m.OutOfElem();
        if (op == 'A' || op == 'a') ok = op == 'A' ? m.AddElem(name) : m.AddChildElem(name);
        if (op == 'X' || op == 'x') ok = op == 'X' ? m.RemoveElem() : m.RemoveChildElem();
        if (op == 'R') m.ResetPos();
        if (op == 'M') m.ResetMainPos();
        if (op == 'H') m.ResetChildPos();
        if (op == '~') (void)KGMarkup(std::move(m));
        // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move): "~" wants that
        out += (ok ? " +" : " -") + U8(m.GetTagName()) + "/" + U8(m.GetChildTagName());
    }
    return out.substr(1);
}

TEST(KGMarkupCursor, MovesFindsAddsAndRemoves) {
    // cursor-steps.txt, case by case: "# what", the document, lines of steps each followed by
    // the trace they give, and the document after them ("\n" for line breaks).
    std::istringstream cases(vltest::ReadFile(kData + "cursor-steps.txt"));
    int count = 0;
    for (std::string name, text, steps, trace;
         std::getline(cases, name) && std::getline(cases, text); ++count) {
        SCOPED_TRACE(name);
        KGMarkup doc(text);
        while (std::getline(cases, steps) && std::getline(cases, trace) && !trace.empty())
            EXPECT_EQ(trace, Walk(doc, steps));
        for (size_t i; (i = steps.find("\\n")) != std::string::npos;) steps.replace(i, 2, "\n");
        EXPECT_EQ(steps, U8(doc.GetDoc()));
    }
    EXPECT_EQ(4, count);
}

// "tag=text@m|" for every child of the main element, m its attribute "m".
std::string Children(KGMarkup& doc) {
    std::string out;
    for (doc.ResetChildPos(); doc.FindChildElem();)
        out += U8(doc.GetChildTagName()) + "=" + U8(doc.GetChildData()) + "@" +
               U8(doc.GetChildAttrib(u"m")) + "|";
    return out;
}

TEST(KGMarkupText, DecodesEntitiesKeepsBlanksAndWritesCarriageReturnsAsReferences) {
    KGMarkup doc(vltest::ReadFile(kData + "text.xml"));
    ASSERT_TRUE(doc.FindElem(u"r"));
    EXPECT_EQ("x & <", U8(doc.GetAttrib("a")));
    EXPECT_EQ("b=  a & b <c> d\n@|w=  @|c=older@|p=@|", Children(doc));
    EXPECT_FALSE(doc.SetData("x") || doc.SetAttrib("a b", "x")) << "over child elements; a name";
    ASSERT_TRUE(doc.SetAttrib("a", "\"q' <&>") && doc.SetAttrib(u"名", -7));
    doc.ResetChildPos();
    ASSERT_TRUE(doc.FindChildElem(u"b") && doc.SetChildData("line\r\nnext\r"));
    ASSERT_TRUE(doc.SetChildAttrib("m", 3) && doc.SetChildAttrib("s", "v"));
    ASSERT_TRUE(doc.FindChildElem(u"c") && doc.SetChildData("new"));  // the comment stays
    ASSERT_TRUE(doc.AddChildElem(u"样", u"红 🚢"));
    ASSERT_TRUE(doc.AddChildElem("e", "x") && doc.SetChildData(""));
    const std::string expected = vltest::ReadFile(kData + "text-edited.xml");
    EXPECT_EQ(expected, U8(doc.GetDoc()));

    KGMarkup back(expected);
    ASSERT_TRUE(back.FindElem());
    EXPECT_EQ("-7", U8(back.GetAttrib(u"名")));
    EXPECT_EQ("b=line\r\nnext\r@3|w=  @|c=new@|样=红 🚢@|e=@|p=@|", Children(back));
}

TEST(KGMarkupEncoding, ReadsEachEncodingAndSavesItBackByteForByte) {
    // encodings/ENCODING[.variant].xml is read in that encoding; the .txt is the same as text.
    const char* const files[] = {"UTF-8",      "UTF-8.bom",    "UTF-16LE",     "UTF-16BE",
                                 "GB2312",     "GB18030",      "Big5",         "ISO-8859-1",
                                 "ISO-8859-7", "windows-1252", "windows-1251", "GBK"};
    vltest::TempDir dir;
    const std::string out = dir.File("out.xml");
    KGMarkup doc;  // one cursor for all: each Load starts afresh
    for (const std::string name : files) {
        SCOPED_TRACE(name);
        const std::string file = kData + "encodings/" + name;
        KGMarkup text(vltest::ReadFile(file + ".txt"));
        ASSERT_TRUE(doc.Load(file + ".xml")) << U8(doc.GetError());
        EXPECT_EQ(U8(text.GetDoc()), U8(doc.GetDoc()));
        for (KGMarkup* m : {&doc, &text}) {  // saved in the encoding read or declared
            EXPECT_EQ(name.substr(0, name.find('.')), m->GetEncoding());
            ASSERT_TRUE(m->Save(out)) << U8(m->GetError());
            EXPECT_EQ(vltest::ReadFile(file + ".xml"), vltest::ReadFile(out));
        }
    }
    // Deliberately kept: a character GBK lacks is written as a character reference, so that
    // such a text cannot make the settings file unsaveable. The cursor holds the GBK file.
    ASSERT_TRUE(doc.FindElem() && doc.SetAttrib("value", "夜间 🚢") && doc.Save(out));
    EXPECT_EQ(vltest::ReadFile(kData + "gbk-refs.xml"), vltest::ReadFile(out));
    ASSERT_TRUE(doc.SetDoc("") && doc.AddElem("new"));
    EXPECT_EQ("UTF-8", doc.GetEncoding()) << "a new document is UTF-8";
}

TEST(KGMarkupHostile, RefusesHostileUndecodableAndTruncatedInput) {
    // refused.txt: per line a document refused as a file and as text (under refused/, or made
    // here) or only as a file (under refused-files/), and why.
    std::istringstream list(vltest::ReadFile(kData + "refused.txt"));
    vltest::TempDir dir;
    KGMarkup doc("<previous/>");  // and again after each refusal
    int count = 0;
    for (std::string file, why; std::getline(list, file, ':') && std::getline(list, why); ++count) {
        SCOPED_TRACE(file);
        const auto bytes = file == "100000-deep" ? Nest(100000) : vltest::ReadFile(kData + file);
        vltest::WriteFile(dir.File("in.xml"), bytes);
        for (int text = 0; text < (file.rfind("refused-files/", 0) == 0 ? 1 : 2); ++text) {
            EXPECT_FALSE(text ? doc.SetDoc(bytes) : doc.Load(dir.File("in.xml")));
            EXPECT_TRUE(!doc.IsWellFormed() && doc.GetDoc().IsEmpty() && !doc.FindElem());
            const std::string error = U8(doc.GetError());  // the parser's offsets vary
            EXPECT_EQ(why, " " + error.substr(0, error.find(" at offset")));
            ASSERT_TRUE(doc.SetDoc("<previous/>") && doc.GetError().IsEmpty());
        }
    }
    EXPECT_EQ(26, count);
    const std::string whole = "<r a=\"1\"><b>t&amp;</b><![CDATA[x]]><!--c--><c/></r>";
    for (size_t n = 1; n < whole.size(); ++n)
        EXPECT_FALSE(KGMarkup(whole.substr(0, n)).IsWellFormed()) << whole.substr(0, n);

    fs::resize_file(dir.File("in.xml"), KGMarkup::MaxFileSize + 1);  // sparse: never read
    EXPECT_FALSE(doc.Load(dir.File("in.xml")));
    EXPECT_NE(std::string::npos, U8(doc.GetError()).find("larger than"));
    EXPECT_FALSE(doc.Load(dir.File("absent.xml")) || doc.Load(dir.Path()));

    // 1024 levels are read; edits cannot build deeper.
    ASSERT_TRUE(doc.SetDoc(Nest(KGMarkup::MaxDepth)));
    for (int i = 0; i < KGMarkup::MaxDepth; ++i) ASSERT_TRUE(doc.FindElem() && doc.IntoElem());
    EXPECT_TRUE(!doc.AddElem("a") && doc.OutOfElem() && !doc.AddChildElem("a"));
    EXPECT_TRUE(doc.OutOfElem() && doc.AddChildElem("b"));
}

TEST(KGMarkupSave, ReplacesAtomicallyOrLeavesTheOldFile) {
    vltest::TempDir dir;
    const std::string path = dir.File("settings.xml"), link = dir.File("link.xml");
    vltest::WriteFile(path, "<old/>");
    fs::permissions(path, fs::perms(0640));
    fs::create_symlink("settings.xml", link);
    KGMarkup doc;
    EXPECT_FALSE(!doc.IsWellFormed() || doc.Save(path) || doc.GetError().IsEmpty()) << "no root";
    ASSERT_TRUE(doc.AddElem("new", "1"));
    EXPECT_FALSE(doc.Save(dir.File("missing/x.xml")) || doc.Save(dir.Path()) ||
                 doc.GetError().IsEmpty());

    // A write that fails half-way (a full disk), in a child process.
    const pid_t pid = fork();
    if (pid == 0) {
        KGMarkup big("<Big/>");
        big.FindElem();
        for (int i = 0; i < 2000; ++i) big.AddChildElem("Item", "filler");
        signal(SIGXFSZ, SIG_IGN);
        const struct rlimit small = {4096, 4096};
        const bool failed = setrlimit(RLIMIT_FSIZE, &small) == 0 && !big.Save(path);
        _exit(failed && !big.GetError().IsEmpty() ? 0 : 1);
    }
    int status = 0;
    ASSERT_TRUE(pid > 0 && waitpid(pid, &status, 0) == pid);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_EQ("<old/>", vltest::ReadFile(path));
    EXPECT_EQ(2, std::distance(fs::directory_iterator(dir.Path()), {})) << "a temporary is left";

    // Through a link the file it names is replaced, keeping its permissions; the link stays.
    ASSERT_TRUE(doc.Save(link)) << U8(doc.GetError());
    EXPECT_TRUE(doc.GetError().IsEmpty() && fs::is_symlink(link));
    EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<new>1</new>\n", vltest::ReadFile(path));
    EXPECT_EQ(fs::perms(0640), fs::status(path).permissions());
    const mode_t mask = umask(027);
    EXPECT_TRUE(doc.Save(dir.File("new.xml")));
    umask(mask);
    EXPECT_EQ(fs::perms(0640), fs::status(dir.File("new.xml")).permissions()) << "umask applies";
}

}  // namespace
