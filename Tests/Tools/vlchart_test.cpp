// The vlchart tool, run as a chart engineer runs it.
#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdio>
#include <string>

#include "TestSupport.h"

namespace {

struct RunResult {
    int status = -1;
    std::string output;
};

RunResult RunTool(const std::string& arguments, const std::string& home = "") {
    std::string command;
    if (!home.empty()) command += "VLCHART_HOME='" + home + "' ";
    command += std::string("'") + VLTEST_VLCHART + "' " + arguments + " 2>/dev/null";
    RunResult r;
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return r;
    char buf[4096];
    size_t n;
    while ((n = fread(buf, 1, sizeof buf, pipe)) > 0) r.output.append(buf, n);
    int raw = pclose(pipe);
    r.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    return r;
}

const char kSettings[] = R"(<?xml version="1.0" encoding="UTF-8"?>
<VeltrinChart><ElectronicChart>
  <Display>
    <Style value="Day" type="ENC"><LookupTables>
      <PointLookupTable>
        <SymbolType value="simplified">./pt.dic</SymbolType>
        <SymbolType value="paperchart">./gone.dic</SymbolType>
      </PointLookupTable>
      <LineLookupTable>./pt.dic</LineLookupTable>
      <AreaLookupTable><EdgeType value="plain">./pt.dic</EdgeType><EdgeType value="symbolized">./pt.dic</EdgeType></AreaLookupTable>
    </LookupTables>
    <ColorTables><ColorTable type="DayBright">./pt.dic</ColorTable></ColorTables></Style>
  </Display>
  <Dictionary><S57Object>./pt.dic</S57Object></Dictionary>
</ElectronicChart></VeltrinChart>
)";

TEST(VlchartEnv, ReportsStylesTablesAndMarksMissingFiles) {
    vltest::TempDir dir;
    vltest::WriteFile(dir.File("ChartConfig.xml"), kSettings);
    vltest::WriteFile(dir.File("pt.dic"), "\n");

    RunResult r = RunTool("--home '" + dir.Path() + "' env");
    EXPECT_EQ(r.status, 2) << r.output;  // one named file is missing
    EXPECT_NE(r.output.find("Settings file: " + dir.Path() + "ChartConfig.xml"), std::string::npos)
        << r.output;
    EXPECT_NE(r.output.find("Day  (ENC)"), std::string::npos) << r.output;
    EXPECT_NE(r.output.find(dir.Path() + "gone.dic  [missing]"), std::string::npos) << r.output;
    EXPECT_NE(r.output.find(dir.Path() + "pt.dic\n"), std::string::npos) << r.output;
    EXPECT_NE(r.output.find("colours, Dusk"), std::string::npos) << r.output;
    EXPECT_NE(r.output.find("(not set)"), std::string::npos) << r.output;  // no Dusk table
    EXPECT_NE(r.output.find("1 missing"), std::string::npos) << r.output;

    // VLCHART_HOME works as well as --home.
    RunResult viaEnv = RunTool("env", dir.Path());
    EXPECT_EQ(viaEnv.output, r.output);
}

TEST(VlchartEnv, MissingOrBrokenSettingsFileIsAnError) {
    vltest::TempDir dir;
    RunResult missing = RunTool("--home '" + dir.Path() + "' env");
    EXPECT_EQ(missing.status, 1);
    EXPECT_NE(missing.output.find("not found"), std::string::npos) << missing.output;

    vltest::WriteFile(dir.File("ChartConfig.xml"), "<VeltrinChart><Elec");
    RunResult broken = RunTool("--home '" + dir.Path() + "' env");
    EXPECT_EQ(broken.status, 1);
    EXPECT_NE(broken.output.find("cannot be read"), std::string::npos) << broken.output;
}

TEST(VlchartEnv, DefaultEnvironmentIsComplete) {
    RunResult r = RunTool("env", vltest::DefaultDataDir());
    EXPECT_EQ(r.status, 0) << r.output;
    EXPECT_NE(r.output.find("Standard  (ENC)"), std::string::npos) << r.output;
    EXPECT_NE(r.output.find("Paper  (PaperChart)"), std::string::npos) << r.output;
    EXPECT_NE(r.output.find(" 0 missing"), std::string::npos) << r.output;
}

TEST(VlchartUsage, UnknownCommandFailsWithUsage) {
    RunResult r = RunTool("frobnicate");
    EXPECT_NE(r.status, 0);
    RunResult none = RunTool("");
    EXPECT_NE(none.status, 0);
}

}  // namespace
