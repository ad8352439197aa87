// The symbol library of the default environment: loading it against a pugixml parse of the same
// file (the floor, measured in the same run), and the whole gallery written.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdio>
#include <pugixml.hpp>
#include <string>

#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartSymbolLibrary.h"
#include "ThreadClock.h"

namespace {

const std::string kData = std::string(VLBENCH_SOURCE_DIR) + "/Data/";
const std::string kLibrary = kData + "Symbols/SymbolLibrary.xml";

using benchclock::ThreadSeconds;

// The floor: the file parsed into a DOM, nothing more.
size_t ParseFloor() {
    pugi::xml_document doc;
    doc.load_file(kLibrary.c_str());
    return static_cast<size_t>(doc.first_child().first_child().type());
}

void BM_ParseSymbolLibraryFloor(benchmark::State& state) {
    for (auto _ : state) benchmark::DoNotOptimize(ParseFloor());
}
BENCHMARK(BM_ParseSymbolLibraryFloor)->Unit(benchmark::kMillisecond);

// A library loaded and used, with the floor measured in turn in every iteration; "x_floor" is
// the load's processor time over the floor's. The library is freed after both, untimed.
template <typename Use>
void AgainstFloor(benchmark::State& state, Use use) {
    double loading = 0.0;
    double floor = 0.0;
    for (auto _ : state) {
        const double start = ThreadSeconds();
        KGC::KGChartSymbolLibrary library;
        if (!library.Load(kLibrary)) state.SkipWithError("the symbol library did not load");
        use(library);
        loading += ThreadSeconds() - start;
        state.PauseTiming();
        const double floorStart = ThreadSeconds();
        benchmark::DoNotOptimize(ParseFloor());
        floor += ThreadSeconds() - floorStart;
        state.ResumeTiming();
    }
    state.counters["x_floor"] = floor > 0.0 ? loading / floor : 0.0;
}

void BM_LoadSymbolLibrary(benchmark::State& state) {
    int records = 0;
    AgainstFloor(state, [&records](const KGC::KGChartSymbolLibrary& library) {
        records = library.GetCount(KGC::KGChartSymbolKind::Symbol);
    });
    state.counters["symbols"] = records;
}
BENCHMARK(BM_LoadSymbolLibrary)->Unit(benchmark::kMillisecond);

// The load, then every record looked up once, which decodes its vector commands: what a host
// that draws every record pays in all, against the same floor.
void BM_LoadAndDecodeSymbolLibrary(benchmark::State& state) {
    AgainstFloor(state, [](const KGC::KGChartSymbolLibrary& library) {
        size_t commands = 0;
        for (auto kind : {KGC::KGChartSymbolKind::Symbol, KGC::KGChartSymbolKind::LineStyle,
                          KGC::KGChartSymbolKind::Pattern}) {
            for (const auto& name : library.GetNames(kind)) {
                commands += library.Find(kind, name)->definitions[0].commands.GetSize();
            }
        }
        benchmark::DoNotOptimize(commands);
    });
}
BENCHMARK(BM_LoadAndDecodeSymbolLibrary)->Unit(benchmark::kMillisecond);

// Every symbol, line style and pattern drawn into one gallery file.
void BM_WriteGallery(benchmark::State& state) {
    KGC::KGChartSymbolLibrary library;
    KGC::KGChartColorTable colours;
    if (!library.Load(kLibrary) || !colours.LoadColorTable(kData + "Colors/DayBright.xml")) {
        state.SkipWithError("the default environment did not load");
        return;
    }
    PLIX::PlixArray<KGC::KGChartSymbolKind> kinds;
    for (auto kind : {KGC::KGChartSymbolKind::Symbol, KGC::KGChartSymbolKind::LineStyle,
                      KGC::KGChartSymbolKind::Pattern}) {
        kinds.Add(kind);
    }
    char path[] = "/tmp/vlbench-gallery-XXXXXX";
    const int fd = mkstemp(path);
    if (fd >= 0) close(fd);
    for (auto _ : state) {
        if (!library.SaveGallery(path, colours, u"bench", kinds))
            state.SkipWithError("the gallery was not written");
    }
    std::remove(path);
}
BENCHMARK(BM_WriteGallery)->Unit(benchmark::kMillisecond);

}  // namespace
