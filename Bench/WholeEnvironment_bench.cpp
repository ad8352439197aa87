// The whole presentation environment as a host loads it at start-up (the dictionary registry,
// the five look-up tables, the three colour tables) against the floor of reading it: pugixml
// parsing the five dictionaries and the three colour files, and the five look-up files read
// line by line with their quoted fields found. The registry alone is set beside the parse of
// its five files in the same way.
//
// Each iteration runs the load and then its floor, timing both in this thread's processor
// time, so both sides see the same machine; "x_floor" is the load's time over the floor's.
#include <benchmark/benchmark.h>

#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartEnvironment.h"
#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGS57Dictionary.h"
#include "KGChartLookupBenchData.h"

namespace {

using lookupbench::ThreadSeconds;
using PLIX::PlixUnicodeString;

struct EnvironmentFiles {
    std::vector<std::string> dictionaries;
    std::vector<std::string> colourFiles;
    std::vector<PlixUnicodeString> colourTables;
};

const EnvironmentFiles& Files() {
    static const EnvironmentFiles files = [] {
        EnvironmentFiles f;
        if (!lookupbench::Real().ok) return f;
        KGC::KGS57Config* config = KGC::KGS57Config::GetInstance();
        config->LoadDicts();
        for (const PlixUnicodeString* path :
             {&config->GetAgencyDictPath(), &config->GetObjectDictPath(),
              &config->GetAttributeDictPath(), &config->GetSpecsObjectDictPath(),
              &config->GetSpecsInfoDictPath()}) {
            f.dictionaries.push_back(path->ToUtf8());
        }
        KGC::KGChartEnvironment env;
        for (auto mode : {KGC::KGChartColorMode::DayBright, KGC::KGChartColorMode::Dusk,
                          KGC::KGChartColorMode::Night}) {
            f.colourTables.push_back(env.GetColorTableAbsolutePath(mode, u"S52"));
            f.colourFiles.push_back(f.colourTables.back().ToUtf8());
        }
        return f;
    }();
    return files;
}

bool Parse(const std::vector<std::string>& paths) {
    bool ok = true;
    for (const auto& path : paths) {
        pugi::xml_document doc;
        ok = doc.load_file(path.c_str()) && ok;
        benchmark::DoNotOptimize(doc.first_child());
    }
    return ok;
}

// Runs load, then (untimed) tidy, then floor, in every iteration; the reported time is the
// load's.
template <typename Load, typename Tidy, typename Floor>
void SideBySide(benchmark::State& state, Load load, Tidy tidy, Floor floor) {
    if (!lookupbench::UseRealData(state)) return;
    double loading = 0.0;
    double flooring = 0.0;
    for (auto _ : state) {
        const double start = ThreadSeconds();
        load();
        loading += ThreadSeconds() - start;
        state.PauseTiming();
        tidy();
        const double floorStart = ThreadSeconds();
        if (!floor()) state.SkipWithError("a file of the environment did not parse");
        flooring += ThreadSeconds() - floorStart;
        state.ResumeTiming();
    }
    state.counters["x_floor"] = flooring > 0.0 ? loading / flooring : 0.0;
}

void BM_LoadDictsOverParse(benchmark::State& state) {
    const EnvironmentFiles& files = Files();
    KGC::KGS57Config* config = KGC::KGS57Config::GetInstance();
    SideBySide(
        state, [&] { benchmark::DoNotOptimize(config->LoadDicts()); }, [] {},
        [&] { return Parse(files.dictionaries); });
}
BENCHMARK(BM_LoadDictsOverParse)->Unit(benchmark::kMillisecond);

void BM_LoadWholeEnvironment(benchmark::State& state) {
    const EnvironmentFiles& files = Files();
    KGC::KGS57Config* config = KGC::KGS57Config::GetInstance();
    std::unique_ptr<KGC::KGChartLookupTable> a, b;
    SideBySide(
        state,
        [&] {
            benchmark::DoNotOptimize(config->LoadDicts());
            a = std::make_unique<KGC::KGChartLookupTable>();
            b = std::make_unique<KGC::KGChartLookupTable>();
            lookupbench::LoadFive(*a, *b);
            for (const auto& path : files.colourTables) {
                KGC::KGChartColorTable table;
                if (!table.LoadColorTable(path)) state.SkipWithError("colour table did not load");
                benchmark::DoNotOptimize(table.GetCount());
            }
        },
        [&] {
            a.reset();
            b.reset();
        },
        [&] {
            const bool ok = Parse(files.dictionaries) && Parse(files.colourFiles);
            benchmark::DoNotOptimize(lookupbench::ReadFiveRealTables());
            return ok;
        });
}
BENCHMARK(BM_LoadWholeEnvironment)->Unit(benchmark::kMillisecond);

}  // namespace
