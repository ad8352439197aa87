// Tests of the read-only document: it accepts, refuses and reads every document as the markup
// cursor does.
#include "Base/KGMarkupReader.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "Base/KGMarkup.h"
#include "TestSupport.h"

namespace {

const std::string kData = vltest::TestDataDir() + "markup/";

// Each element as "name=value of attribute value[text]" and its children, through each API.
std::string Dump(KGC::KGMarkup& m) {
    std::string out = m.GetTagName().ToUtf8() + "=" + m.GetAttrib(u"value").ToUtf8() + "[" +
                      m.GetData().ToUtf8() + "]{";
    for (m.IntoElem(); m.FindElem();) out += Dump(m);
    return out + "}" + (m.OutOfElem() ? "" : "!");
}
std::string Dump(KGC::KGMarkupReader::Element e) {
    std::string room = "x";
    EXPECT_EQ(e.TextView(room), e.Text().ToUtf8());
    std::string out = std::string(e.Name()) + "=" + std::string(e.Attribute("value")) + "[" +
                      e.Text().ToUtf8() + "]{";
    for (auto c = e.FirstChild(); c; c = c.Next()) out += Dump(c);
    return out + "}";
}

TEST(KGMarkupReader, AcceptsRefusesAndReadsAsTheCursorDoes) {
    std::vector<std::string> files = {"text.xml", "text-edited.xml", "gbk-refs.xml", "absent.xml"};
    for (const auto& e : std::filesystem::directory_iterator(kData + "encodings"))
        if (e.path().extension() == ".xml")
            files.push_back("encodings/" + e.path().filename().string());
    std::istringstream refused(vltest::ReadFile(kData + "refused.txt"));
    for (std::string file, why; std::getline(refused, file, ':') && std::getline(refused, why);)
        if (file != "100000-deep") files.push_back(file);
    vltest::TempDir
        dir;  // generated: the depth limit on both sides, and a sparse file over the cap
    for (int depth : {KGC::KGMarkup::MaxDepth, KGC::KGMarkup::MaxDepth + 1}) {
        std::string open, close;
        for (int i = 0; i < depth; ++i) open += "<a>", close += "</a>";
        vltest::WriteFile(dir.File(std::to_string(depth)), open + close);
        files.push_back(dir.File(std::to_string(depth)));
    }
    vltest::WriteFile(dir.File("big"), "<a/>");
    std::filesystem::resize_file(dir.File("big"), KGC::KGMarkup::MaxFileSize + 1);
    files.push_back(dir.File("big"));
    for (const auto& file : files) {
        SCOPED_TRACE(file);
        const std::string path = file[0] == '/' ? file : kData + file;
        KGC::KGMarkup cursor;
        KGC::KGMarkupReader reader;
        ASSERT_EQ(cursor.Load(path), reader.Load(path));
        EXPECT_EQ(cursor.GetError().ToUtf8(), reader.GetError().ToUtf8());
        EXPECT_EQ(cursor.IsWellFormed(), reader.IsWellFormed());
        EXPECT_EQ(cursor.GetEncoding(), reader.GetEncoding());
        EXPECT_EQ(cursor.FindElem() ? Dump(cursor) : "", reader.Root() ? Dump(reader.Root()) : "");
    }
    EXPECT_EQ(44u, files.size());
}

}  // namespace
