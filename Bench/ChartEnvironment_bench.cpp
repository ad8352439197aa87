// Loading the real presentation environment: the settings file and its three colour tables.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <string>

#include "Base/KGFile.h"
#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartEnvironment.h"

namespace {

std::string RealData() {
    std::filesystem::path p = std::filesystem::path(VLBENCH_SHARED_DATA_DIR) / "s52-real";
    std::error_code ec;
    return std::filesystem::is_directory(p, ec) ? p.string() + "/" : std::string();
}

bool UseRealData(benchmark::State& state) {
    std::string dir = RealData();
    if (dir.empty()) {
        state.SkipWithError("../shared/data/s52-real is not beside this checkout");
        return false;
    }
    KGC::KGFile::SetModulePath(dir);
    return true;
}

void BM_LoadSettingsFile(benchmark::State& state) {
    if (!UseRealData(state)) return;
    for (auto _ : state) {
        KGC::KGChartEnvironment env;
        benchmark::DoNotOptimize(env.GetStyleType(u"S52"));
    }
}
BENCHMARK(BM_LoadSettingsFile)->Unit(benchmark::kMicrosecond);

void BM_LoadThreeColourTables(benchmark::State& state) {
    if (!UseRealData(state)) return;
    KGC::KGChartEnvironment env;
    const KGC::KGS52ColorMode modes[] = {KGC::KGChartColorMode::DayBright,
                                         KGC::KGChartColorMode::Dusk, KGC::KGChartColorMode::Night};
    PLIX::PlixUnicodeString paths[3];
    for (int i = 0; i < 3; ++i) paths[i] = env.GetColorTableAbsolutePath(modes[i], u"S52");
    for (auto _ : state) {
        for (const auto& path : paths) {
            KGC::KGChartColorTable table;
            if (!table.LoadColorTable(path)) state.SkipWithError("colour table did not load");
            benchmark::DoNotOptimize(table.GetCount());
        }
    }
}
BENCHMARK(BM_LoadThreeColourTables)->Unit(benchmark::kMicrosecond);

void BM_SettingsAndColoursTogether(benchmark::State& state) {
    if (!UseRealData(state)) return;
    for (auto _ : state) {
        KGC::KGChartEnvironment env;
        for (auto mode : {KGC::KGChartColorMode::DayBright, KGC::KGChartColorMode::Dusk,
                          KGC::KGChartColorMode::Night}) {
            KGC::KGChartColorTable table;
            table.LoadColorTable(env.GetColorTableAbsolutePath(mode, u"S52"));
            benchmark::DoNotOptimize(table.GetRGBColor(u"CHBLK"));
        }
    }
}
BENCHMARK(BM_SettingsAndColoursTogether)->Unit(benchmark::kMicrosecond);

}  // namespace
