// Hostile files and unlucky saves: loaders refuse what is not a regular file or is too large
// without blocking, an edit whose save fails leaves nothing behind in memory, a save killed
// midway leaves the file whole and its temporary file is removed by the next save, and a
// dangling link stays a link.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
#include <string>

#include "Base/KGFileStdio.h"
#include "Base/KGMarkup.h"
#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartEnvironment.h"
#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGS57Dictionary.h"
#include "TestSupport.h"

namespace {

using KGC::KGChartEnvironment;
using PLIX::PlixUnicodeString;

// Runs the body in a child process and returns its exit status (-signal when it was killed).
int InChild(const std::function<int()>& body) {
    const pid_t pid = fork();
    if (pid == 0) _exit(body());
    int status = 0;
    waitpid(pid, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

// Everything the environment answers for its styles, in one text.
std::string Answers(KGChartEnvironment& env) {
    PLIX::PlixArray<PlixUnicodeString> names;
    env.GetStyleNames(names);
    std::string out;
    for (const PlixUnicodeString& style : names) {
        out += style.ToUtf8() + ":" + env.GetLineLookupTable(style).ToUtf8() + "," +
               env.GetColorTable(KGC::KGChartColorMode::Dusk, style).ToUtf8();
        for (unsigned char kind = 0; kind < 2; ++kind) {
            out += "," + env.GetPointLookupTable(style, kind).ToUtf8() + "," +
                   env.GetAreaLookupTable(style, kind).ToUtf8();
        }
        out += "\n";
    }
    return out + env.GetS57ObjectDictFile().ToUtf8();
}

TEST(Robustness, LoadersRefuseWhatIsNotARegularFileWithoutBlocking) {
    vltest::TempDir dir;
    // Each kind of bad file stands as ChartConfig.xml in a directory of its own, so that the
    // settings file meets it too.
    const std::function<void(const std::string&)> kinds[] = {
        [](const std::string& p) { ASSERT_EQ(mkfifo(p.c_str(), 0600), 0); },
        [](const std::string& p) { ASSERT_EQ(mkdir(p.c_str(), 0700), 0); },
        [](const std::string& p) { ASSERT_EQ(symlink("/dev/zero", p.c_str()), 0); },
        [](const std::string& p) {
            vltest::WriteFile(p, "<r/>");
            ASSERT_EQ(truncate(p.c_str(), KGC::KGMarkup::MaxFileSize + 1), 0);
        }};
    const char* const kindNames[] = {"fifo", "directory", "dev-zero", "over-the-cap"};
    const char* const expected[] = {"is not a regular file", "is not a regular file",
                                    "is not a regular file", "is larger than"};
    const struct {
        const char* name;
        std::function<std::string(const std::string&)> load;  // the refusal, "" when loaded
    } loaders[] = {
        {"markup",
         [](const std::string& p) {
             KGC::KGMarkup doc;
             return doc.Load(p) ? std::string() : doc.GetError().ToUtf8();
         }},
        {"look-up table reader",
         [](const std::string& p) {
             KGC::KGFileStdio file;
             return file.Open(p, KGC::KGStreamRead, 0, 1) ? std::string() : file.GetError();
         }},
        {"look-up table",
         [](const std::string& p) {
             vltest::LogCapture log;
             KGC::KGChartLookupTable table;
             if (table.LoadPointLookupTable(p)) return std::string();
             return log.Messages().empty() ? std::string("no log record") : log.Messages()[0];
         }},
        {"colour table",
         [](const std::string& p) {
             KGC::KGChartColorTable table;
             return table.LoadXml(p) ? std::string() : std::string("refused");
         }},
        {"dictionary",
         [](const std::string& p) {
             return KGC::KGS57Config::GetInstance()->LoadS57ObjectsFile(p) ? std::string()
                                                                           : std::string("refused");
         }},
        {"settings file",
         [](const std::string& p) {
             vltest::ModulePathOverride home(p.substr(0, p.rfind('/') + 1));
             KGChartEnvironment env;
             return Answers(env).empty() ? std::string("refused") : std::string();
         }},
    };
    for (size_t k = 0; k < 4; ++k) {
        const std::string path = dir.File(kindNames[k]) + "/ChartConfig.xml";
        ASSERT_EQ(mkdir(dir.File(kindNames[k]).c_str(), 0700), 0);
        kinds[k](path);
        for (const auto& loader : loaders) {
            SCOPED_TRACE(std::string(loader.name) + " on " + kindNames[k]);
            const std::string refusal = loader.load(path);
            // The table reader's cap is below the markup's, so every kind is refused as such.
            const std::string want = std::string(loader.name).rfind("look-up", 0) == 0 && k == 3
                                         ? "is larger than the look-up table limit"
                                         : expected[k];
            EXPECT_FALSE(refusal.empty());
            // Loaders that say why must say it plainly.
            if (refusal != "refused") {
                EXPECT_NE(refusal.find(want), std::string::npos) << refusal;
            }
        }
    }
}

TEST(Robustness, AnEditWhoseSaveFailsLeavesTheEnvironmentAsItWas) {
    const struct {
        const char* name;
        std::function<bool(KGChartEnvironment&)> edit;
    } edits[] = {
        {"point table", [](auto& e) { return e.SetPointLookupTableFile(u"/p.dic", u"Base", 1); }},
        {"line table", [](auto& e) { return e.SetLineLookupTableFile(u"/l.dic", u"Paper"); }},
        {"area table", [](auto& e) { return e.SetAreaLookupTableFile(u"/a.dic", u"Base", 0); }},
        {"colour table",
         [](auto& e) { return e.SetColorTable(u"/c.xml", u"Base", KGC::KGChartColorMode::Dusk); }},
        {"dictionary", [](auto& e) { return e.ModifyS57ObjectDictFile(u"/o.xml"); }},
        {"new style",
         [](auto& e) { return e.AddNewStyle(u"Night watch", KGC::KGChartDisplayStyle::ENC); }},
        {"removed style", [](auto& e) { return e.RemoveStyle(u"Paper"); }},
    };
    for (const auto& row : edits) {
        SCOPED_TRACE(row.name);
        vltest::TempDir home;
        const std::string settings = home.File("ChartConfig.xml");
        vltest::WriteFile(settings,
                          vltest::ReadFile(vltest::TestDataDir() + "env/ChartConfig.xml"));
        // A file size limit makes the save fail as a full disk would; it is set in a child so
        // that the rest of the suite keeps writing. Each exit status names the check that failed.
        const int status = InChild([&] {
            vltest::ModulePathOverride module(home.Path());
            KGChartEnvironment env;
            const std::string before = Answers(env);
            const std::string file = vltest::ReadFile(settings);
            signal(SIGXFSZ, SIG_IGN);
            rlimit small{64, RLIM_INFINITY};
            setrlimit(RLIMIT_FSIZE, &small);
            if (row.edit(env)) return 1;
            if (Answers(env) != before) return 2;
            if (vltest::ReadFile(settings) != file) return 3;
            rlimit large{RLIM_INFINITY, RLIM_INFINITY};
            setrlimit(RLIMIT_FSIZE, &large);
            // The retry succeeds, and the file then says what memory says.
            if (!row.edit(env) || Answers(env) == before) return 4;
            KGChartEnvironment reread;
            return Answers(reread) == Answers(env) ? 0 : 5;
        });
        EXPECT_EQ(status, 0) << "1 edit reported success, 2 memory changed, 3 file changed, "
                                "4 retry failed, 5 file differs from memory";
    }
}

TEST(Robustness, SavesKilledMidwayLeaveAWholeFileAndTheNextSaveCleansUp) {
    vltest::TempDir dir;
    const std::string path = dir.File("ChartConfig.xml");
    KGC::KGMarkup doc(
        PlixUnicodeString(vltest::ReadFile(vltest::TestDataDir() + "env/ChartConfig.xml")));
    ASSERT_TRUE(doc.Save(path));
    // Each save also removes what earlier killed writers left, so count what a kill leaves
    // round by round: most kills land inside a save (the flush is the slow part).
    int roundsWithLeftovers = 0;
    for (int round = 0; round < 40; ++round) {
        SCOPED_TRACE(round);
        const pid_t pid = fork();
        if (pid == 0) {
            for (;;) doc.Save(path);
        }
        usleep(static_cast<useconds_t>(500 + (round * 797) % 4000));
        kill(pid, SIGKILL);
        waitpid(pid, nullptr, 0);
        KGC::KGMarkup read;
        ASSERT_TRUE(read.Load(path)) << read.GetError().ToUtf8();
        ASSERT_EQ(read.GetDoc(), doc.GetDoc());
        roundsWithLeftovers += std::distance(std::filesystem::directory_iterator(dir.Path()),
                                             std::filesystem::directory_iterator()) > 1;
    }
    EXPECT_GT(roundsWithLeftovers, 0);
    // A save by a process that died long ago (its PID in the name, no longer running) is swept
    // too, whatever the loop left.
    vltest::WriteFile(dir.File(".ChartConfig.xml.1999999999.abcdef"), "half");
    ASSERT_TRUE(doc.Save(path));
    size_t entries = 0;
    for (const auto& entry : std::filesystem::directory_iterator(dir.Path())) {
        EXPECT_EQ(entry.path().filename(), "ChartConfig.xml");
        ++entries;
    }
    EXPECT_EQ(entries, 1u);
}

TEST(Robustness, ASaveThroughADanglingLinkCreatesItsTargetAndKeepsTheLink) {
    vltest::TempDir dir;
    ASSERT_EQ(mkdir(dir.File("real").c_str(), 0700), 0);
    ASSERT_EQ(symlink("real/settings.xml", dir.File("ChartConfig.xml").c_str()), 0);
    KGC::KGMarkup doc(u"<VeltrinChart/>");
    ASSERT_TRUE(doc.Save(dir.File("ChartConfig.xml")));
    struct stat st {};
    ASSERT_EQ(lstat(dir.File("ChartConfig.xml").c_str(), &st), 0);
    EXPECT_TRUE(S_ISLNK(st.st_mode));
    EXPECT_EQ(vltest::ReadFile(dir.File("real/settings.xml")),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<VeltrinChart />\n");
}

}  // namespace
