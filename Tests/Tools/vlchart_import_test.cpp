// The importers of vlchart, run as a chart engineer runs them: every file they write and
// everything they print is compared with the expected files under Tests/Data/import/.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <string>
#include <vector>

#include "TestSupport.h"

namespace {

struct ImportCase {
    const char* name;
    // Shell command lines; @VLCHART@, @IN@ (Tests/Data/import/), @HOME@ (a fresh directory),
    // @SHARED@ (../shared/data/) and @SOURCE@ (the checkout) are replaced before running.
    std::vector<std::string> commands;
    // What the commands print, each followed by "exit STATUS", under @IN@; empty: not compared.
    std::string output;
    // Where the expected files are (placeholders as above) and which files to compare.
    std::string expected;
    std::vector<std::string> files;
    bool needsShared;
    bool needsGdal;
};

const std::vector<std::string> kLookups = {"Lookup/PointSimplified.dic",
                                           "Lookup/PointPaperChart.dic", "Lookup/Lines.dic",
                                           "Lookup/AreaPlain.dic", "Lookup/AreaSymbolized.dic"};

std::vector<std::string> With(std::vector<std::string> files,
                              const std::vector<std::string>& more) {
    files.insert(files.end(), more.begin(), more.end());
    return files;
}

const std::vector<std::string> kImported =
    With(kLookups, {"Colors/DayBright.xml", "Colors/Dusk.xml", "Colors/Night.xml",
                    "Symbols/SymbolLibrary.xml", "Dictionary/S57Objects.xml",
                    "Dictionary/S57Attributes.xml", "Dictionary/Agencies.xml"});

const char kPreslib[] =
    "@VLCHART@ --home @HOME@ import-preslib @IN@edition4.dai --style S52 --paper Paper "
    "--out @HOME@";
const char kS57[] = "@VLCHART@ --home @HOME@ import-s57 --from @IN@gdal --out @HOME@Dictionary";

const ImportCase kCases[] = {
    {"Edition4IntoANewHome",
     {kPreslib, kS57},
     "import.txt",
     "@IN@expected/",
     With(kImported, {"ChartConfig.xml"}),
     false,
     false},
    {"ImportingAgainReplacesTheStyles",
     {kPreslib, std::string(kPreslib) + " --json", std::string(kS57) + " --json"},
     "import-again.json",
     "@IN@expected/",
     With(kImported, {"ChartConfig.xml"}),
     false,
     false},
    {"PresentationLibraryGivesTheRealLookupTables",
     {"@VLCHART@ --home @HOME@ import-preslib @SHARED@preslib/S52RAZDS.RLE --style S52 "
      "--out @HOME@"},
     "",
     "@SHARED@s52-real/",
     kLookups,
     true,
     false},
    {"RegeneratedDefaultDataEqualsData",
     {"VLCHART=@VLCHART@ @SOURCE@scripts/make-default-data.sh @HOME@"},
     "",
     "@SOURCE@Data/",
     kImported,
     true,
     true},
};

void ReplaceAll(std::string& text, const std::string& from, const std::string& to) {
    for (size_t at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

class Placeholders {
public:
    explicit Placeholders(const std::string& home)
        : m_pairs{{"@VLCHART@", VLTEST_VLCHART},
                  {"@IN@", vltest::TestDataDir() + "import/"},
                  {"@HOME@", home},
                  {"@SHARED@", std::string(VLTEST_SHARED_DATA_DIR) + "/"},
                  {"@SOURCE@", std::string(VLTEST_SOURCE_DIR) + "/"}} {}
    std::string Expand(std::string text) const {
        for (const auto& pair : m_pairs) ReplaceAll(text, pair.first, pair.second);
        return text;
    }
    // The other way round, so that outputs can be compared on any machine.
    std::string Fold(std::string text) const {
        for (const auto& pair : m_pairs) ReplaceAll(text, pair.second, pair.first);
        return text;
    }

private:
    std::vector<std::pair<std::string, std::string>> m_pairs;
};

// Standard output of the command and its exit status; the library's default home is Data/.
std::string RunCommand(const std::string& command) {
    const std::string line =
        "VLCHART_HOME='" + vltest::DefaultDataDir() + "' " + command + " 2>/dev/null";
    std::string output;
    FILE* pipe = popen(line.c_str(), "r");
    if (pipe == nullptr) return "cannot run " + command;
    char buffer[4096];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) output.append(buffer, n);
    const int raw = pclose(pipe);
    return output + "exit " + std::to_string(WIFEXITED(raw) ? WEXITSTATUS(raw) : -1) + "\n";
}

void PrintTo(const ImportCase& c, std::ostream* out) {
    *out << c.name;
}

class ImportTest : public testing::TestWithParam<ImportCase> {};

TEST_P(ImportTest, WritesAndPrintsWhatIsExpected) {
    const ImportCase& c = GetParam();
    if (c.needsShared && vltest::RealDataDir().empty())
        GTEST_SKIP() << "the presentation data (../shared/data) is not beside this checkout";
    if (c.needsGdal && !vltest::FileExists("/usr/share/gdal/s57objectclasses.csv"))
        GTEST_SKIP() << "GDAL's S-57 tables (/usr/share/gdal, package gdal-data) are absent";
    vltest::TempDir home;
    const Placeholders places(home.Path());
    std::string output;
    for (const auto& command : c.commands) output += RunCommand(places.Expand(command));
    if (!c.output.empty()) {
        EXPECT_EQ(places.Fold(output), vltest::ReadFile(places.Expand("@IN@expected/" + c.output)));
    } else {
        EXPECT_EQ(output.substr(output.rfind("exit ")), "exit 0\n") << output;
    }
    for (const auto& file : c.files) {
        EXPECT_EQ(places.Fold(vltest::ReadFile(home.File(file))),
                  vltest::ReadFile(places.Expand(c.expected) + file))
            << file;
    }
}

INSTANTIATE_TEST_SUITE_P(Importers, ImportTest, testing::ValuesIn(kCases),
                         [](const testing::TestParamInfo<ImportCase>& info) {
                             return std::string(info.param.name);
                         });

}  // namespace
