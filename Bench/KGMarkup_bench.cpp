// Loading a 1 MB dictionary-like document through KGMarkup against pugixml's own load_file on
// the same file; the cursor layer should add no more than 30% to pugixml's parse.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <map>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "Base/KGMarkup.h"

namespace {

// Written once, removed when the program ends.
class DocumentFile {
public:
    DocumentFile() {
        char name[] = "/tmp/kgmarkup_bench_XXXXXX";
        int fd = mkstemp(name);
        if (fd < 0) return;
        m_path = name;
        std::string text = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<ObjectClasses>\n";
        for (int code = 1; text.size() < 1024 * 1024; ++code) {
            const std::string n = std::to_string(code);
            text += "  <ObjectClass Code=\"" + n + "\" Acronym=\"OBJ" + n + "\" Type=\"Geo\">\n";
            text += "    <Name>Object class " + n + " &amp; r\xC3\xA9gion</Name>\n";
            text +=
                "    <Definition>A navigational object described at some length, so that the "
                "text nodes weigh as much as in the real catalogue &lt;" +
                n + "&gt;.</Definition>\n";
            text += "    <References>S-57 Ed 3.1 " + n + "</References>\n";
            text += "  </ObjectClass>\n";
        }
        text += "</ObjectClasses>\n";
        const bool ok = write(fd, text.data(), text.size()) == static_cast<ssize_t>(text.size());
        close(fd);
        if (!ok) {
            unlink(name);
            m_path.clear();
        }
    }
    ~DocumentFile() {
        if (!m_path.empty()) unlink(m_path.c_str());
    }
    const std::string& Path() const { return m_path; }

private:
    std::string m_path;
};

const std::string& Document() {
    static DocumentFile file;
    return file.Path();
}

void BM_KGMarkupLoad(benchmark::State& state) {
    const PLIX::PlixUnicodeString path(Document());
    for (auto _ : state) {
        KGC::KGMarkup doc;
        if (!doc.Load(path)) state.SkipWithError("KGMarkup::Load failed");
        benchmark::DoNotOptimize(doc);
    }
}
BENCHMARK(BM_KGMarkupLoad)->Unit(benchmark::kMicrosecond);

void BM_PugixmlLoadFile(benchmark::State& state) {
    const std::string& path = Document();
    // The same options KGMarkup parses with, so that only the cursor layer differs.
    const unsigned options = pugi::parse_default | pugi::parse_declaration | pugi::parse_comments |
                             pugi::parse_pi | pugi::parse_doctype | pugi::parse_ws_pcdata_single;
    for (auto _ : state) {
        pugi::xml_document doc;
        if (!doc.load_file(path.c_str(), options, pugi::encoding_utf8)) {
            state.SkipWithError("pugixml load_file failed");
        }
        benchmark::DoNotOptimize(doc);
    }
}
BENCHMARK(BM_PugixmlLoadFile)->Unit(benchmark::kMicrosecond);

// Reports as usual and keeps each benchmark's times for the ratio printed at the end: the
// median over repetitions when there are several, else the single run.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        for (const Run& run : runs) {
            const bool median = run.run_type == Run::RT_Aggregate && run.aggregate_name == "median";
            if (run.error_occurred || !(median || run.run_type == Run::RT_Iteration)) continue;
            Times& t = m_times[run.run_name.function_name];
            if (median || !t.fromMedian) {
                // Reported in microseconds.
                t = Times{run.GetAdjustedRealTime() * 1e3, run.GetAdjustedCPUTime() * 1e3, median};
            }
        }
        ConsoleReporter::ReportRuns(runs);
    }
    void PrintRatio() const {
        auto cursor = m_times.find("BM_KGMarkupLoad");
        auto pugi = m_times.find("BM_PugixmlLoadFile");
        if (cursor == m_times.end() || pugi == m_times.end()) return;
        const Times& a = cursor->second;
        const Times& b = pugi->second;
        std::printf(
            "KGMarkup::Load %.0f ns (CPU %.0f ns), pugixml load_file %.0f ns (CPU %.0f ns)\n"
            "ratio %.3f real, %.3f CPU (target <= 1.30)\n",
            a.real, a.cpu, b.real, b.cpu, a.real / b.real, a.cpu / b.cpu);
    }

private:
    struct Times {
        double real = 0;
        double cpu = 0;
        bool fromMedian = false;
    };
    std::map<std::string, Times> m_times;
};

}  // namespace

int main(int argc, char** argv) {
    // Both loads are repeated in random order, so that a machine busy with other work slows
    // both alike; options given on the command line come later and win.
    std::vector<char*> args(argv, argv + argc);
    char repetitions[] = "--benchmark_repetitions=15";
    char interleave[] = "--benchmark_enable_random_interleaving=true";
    char aggregates[] = "--benchmark_report_aggregates_only=true";
    char minTime[] = "--benchmark_min_time=0.2";
    args.insert(args.begin() + 1, {repetitions, interleave, aggregates, minTime});
    argc = static_cast<int>(args.size());
    argv = args.data();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    if (Document().empty()) {
        std::fprintf(stderr, "cannot write the benchmark document to /tmp\n");
        return 1;
    }
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatio();
    benchmark::Shutdown();
    return 0;
}
