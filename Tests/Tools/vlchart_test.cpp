// The vlchart tool, run as a chart engineer runs it, over the small environment of
// Tests/Data/tool/home: each run's whole output and exit status against the transcripts of
// Tests/Data/tool/expected/ (VLTEST_UPDATE=1 rewrites them from the actual runs); and the check
// over a copy of the real data with one fault of each kind planted.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <tuple>

#include "TestSupport.h"

namespace fs = std::filesystem;

namespace {

std::string DataDir() {
    return fs::canonical(vltest::TestDataDir() + "tool").string() + "/";
}

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

// Standard output, then standard error and the exit status, with the directories written back
// as their placeholders.
std::string Transcript(std::string arguments, const std::string& home) {
    ReplaceAll(arguments, "@HOME@/", home);
    ReplaceAll(arguments, "@DATA@/", DataDir());
    const vltest::ToolRun run = vltest::RunVlchart(arguments);
    std::string text = run.out + (run.err.empty() ? "" : "--- stderr\n" + run.err) + "--- exit " +
                       std::to_string(run.status) + "\n";
    ReplaceAll(text, home, "@HOME@/");
    ReplaceAll(text, DataDir(), "@DATA@/");
    return text;
}

void ExpectSameAsFile(const std::string& actual, const std::string& name) {
    const std::string path = DataDir() + "expected/" + name;
    if (std::getenv("VLTEST_UPDATE") != nullptr) vltest::WriteFile(path, actual);
    EXPECT_EQ(actual, vltest::ReadFile(path)) << "differs from " << path;
}

// Runs the tool with each line of Tests/Data/tool/NAME.txt, the name of the expected transcript
// and the arguments, and compares the transcripts.
void RunCases(const std::string& name, const std::string& home) {
    std::istringstream lines(vltest::ReadFile(DataDir() + name));
    int count = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.empty() || line[0] == '#') continue;
        ++count;
        SCOPED_TRACE(line);
        const size_t space = line.find(' ');
        ExpectSameAsFile(Transcript(line.substr(space + 1), home), line.substr(0, space) + ".txt");
    }
    EXPECT_GT(count, 0) << name;
}

TEST(Vlchart, EachCommandOverTheSmallEnvironment) {
    RunCases("reading.txt", DataDir() + "home/");
}

TEST(Vlchart, StyleEditsAndThePaletteAreWrittenWhole) {
    vltest::TempDir copy;
    fs::copy(DataDir() + "home", copy.Path(), fs::copy_options::recursive);
    const std::string home = fs::canonical(copy.Path()).string() + "/";
    RunCases("editing.txt", home);
    ExpectSameAsFile(vltest::ReadFile(home + "ChartConfig.xml"), "edited-ChartConfig.xml");
    for (const char* picture : {"palette.svg", "line.svg", "gallery.svg"})
        ExpectSameAsFile(vltest::ReadFile(home + picture), picture);
}

using Finding = std::tuple<std::string, std::string, int, std::string>;

// Kind, file below the home, line (0: none) and name of each finding of `check --json`.
std::set<Finding> Findings(const std::string& home) {
    const vltest::ToolRun run = vltest::RunVlchart("--home '" + home + "' check --json");
    EXPECT_LE(run.status, 1) << run.err;
    std::set<Finding> findings;
    const nlohmann::json document = nlohmann::json::parse(run.out);
    for (const auto& f : document.at("findings")) {
        std::string file = f.at("file");
        EXPECT_EQ(file.rfind(home, 0), 0u) << file;
        findings.emplace(f.at("kind"), file.substr(std::min(home.size(), file.size())),
                         f.at("line").is_null() ? 0 : f.at("line").get<int>(),
                         f.at("name").is_null() ? "" : f.at("name").get<std::string>());
    }
    return findings;
}

// Planted in a copy of the real data: a look-up table (.dic) gets the line appended, where
// the finding is expected; an XML file gets the text before its closing tag.
struct Fault {
    const char* kind;
    const char* file;
    const char* name;
    const char* text;
};

const Fault kFaults[] = {
    {"unreadable-file", "Colors/Dusk.xml", "", "<Color token="},
    {"short-entry", "Lookup/Lines.dic", "_cmapl", R"x("_cmapl","","LS(SOLD,1,CHMGD)","5","O")x"},
    {"rejected-instruction", "Lookup/Lines.dic", "_cmapl",
     R"x("_cmapl","","XX(foo)","5","O","OTHER","1")x"},
    {"unknown-colour", "Lookup/Lines.dic", "NOSUCH",
     R"x("_cmapl","","LS(SOLD,1,NOSUCH)","5","O","OTHER","1")x"},
    {"unknown-attribute", "Lookup/Lines.dic", "ZZZZZZ",
     R"x("_cmapl","ZZZZZZ1","LS(SOLD,1,CHMGD)","5","O","OTHER","1")x"},
    {"dropped-entry", "Lookup/Lines.dic", "",
     R"x("_cmap","","LS(SOLD,1,CHMGD)","5","O","OTHER","1")x"},
    {"split-run", "Lookup/AreaSymbolized.dic", "ACHARE",
     R"x("ACHARE","","SY(ACHARE51)","3","S","STANDARD","1")x"},
    {"unknown-object", "Lookup/PointSimplified.dic", "ZZZZZZ",
     R"x("ZZZZZZ","","SY(QUESMRK1)","5","O","OTHER","1")x"},
    {"bad-dictionary-record", "Dictionary/S57Objects.xml", "17",
     R"x(<ObjectClass Code="17" Acronym="QQQQQQ" Type="Geo"><Name>Twin</Name></ObjectClass>)x"},
    // Names the symbol library defines, but as another kind: a symbol drawn as a pattern, a
    // pattern as a complex line.
    {"unknown-symbol", "Lookup/AreaSymbolized.dic", "BOYLAT13",
     R"x("ACHARE","","AP(BOYLAT13)","3","S","STANDARD","1")x"},
    {"unknown-symbol", "Lookup/Lines.dic", "DIAMOND1",
     R"x("_cmapl","","LC(DIAMOND1)","5","O","STANDARD","10000")x"},
};

TEST(VlchartCheck, ReportsEachPlantedFaultWithItsKindFileAndLine) {
    VLTEST_REQUIRE_REAL_DATA();
    vltest::TempDir copy;
    fs::copy(vltest::RealDataDir(), copy.Path(), fs::copy_options::recursive);
    for (const auto& entry : fs::recursive_directory_iterator(copy.Path()))
        fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add);
    const std::string home = fs::canonical(copy.Path()).string() + "/";
    // The default symbol library, for the style's names to be checked against.
    fs::create_directories(home + "Symbols");
    fs::copy_file(vltest::DefaultDataDir() + "Symbols/SymbolLibrary.xml",
                  home + "Symbols/SymbolLibrary.xml");
    ASSERT_EQ(vltest::RunVlchart("--home '" + home + "' style set-symbols S52 " +
                                 "./Symbols/SymbolLibrary.xml")
                  .status,
              0);
    const std::set<Finding> before = Findings(home);

    std::set<Finding> planted;
    for (const Fault& f : kFaults) {
        std::string content = vltest::ReadFile(home + f.file);
        int line = 0;
        if (std::string(f.file).find(".dic") != std::string::npos) {
            if (!content.empty() && content.back() != '\n') content += '\n';
            line = static_cast<int>(std::count(content.begin(), content.end(), '\n')) + 1;
            content += std::string(f.text) + "\n";
        } else {
            content.insert(content.rfind("</"), f.text);
        }
        vltest::WriteFile(home + f.file, content);
        planted.emplace(f.kind, f.file, line, f.name);
    }
    const std::set<Finding> after = Findings(home);
    std::set<Finding> added;
    std::set_difference(after.begin(), after.end(), before.begin(), before.end(),
                        std::inserter(added, added.end()));
    EXPECT_EQ(added, planted);
    // Nothing found before went unnoticed after.
    EXPECT_TRUE(std::includes(after.begin(), after.end(), before.begin(), before.end()));
}

}  // namespace
