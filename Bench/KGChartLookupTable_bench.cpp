// Look-up tables: loading the five real "S52" tables against the cost of merely reading their
// lines, queries on the loaded tables, and load time against table size. The heap the tables
// hold is measured by KGChartLookupTableHeap_bench, whose counting allocator would slow these.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "Base/PlixTypes.h"
#include "ChartBase/KGChartLookupTable.h"
#include "KGChartLookupBenchData.h"

namespace {

using KGC::KGChartLookupTable;
using lookupbench::kRealEntries;
using lookupbench::LoadFive;
using lookupbench::ReadFiveRealTables;
using lookupbench::Real;
using lookupbench::UseRealData;
using PLIX::PlixUnicodeString;

using lookupbench::ThreadSeconds;

void BM_ReadFiveRealTablesFloor(benchmark::State& state) {
    if (!UseRealData(state)) return;
    for (auto _ : state) benchmark::DoNotOptimize(ReadFiveRealTables());
    state.counters["entries"] = kRealEntries;
}
BENCHMARK(BM_ReadFiveRealTablesFloor)->Unit(benchmark::kMicrosecond);

// The load, with the floor measured in turn in every iteration, so that both see the same
// machine; "x_floor" is the load's processor time over the floor's.
void BM_LoadFiveRealTables(benchmark::State& state) {
    if (!UseRealData(state)) return;
    double loading = 0.0;
    double floor = 0.0;
    for (auto _ : state) {
        const double start = ThreadSeconds();
        auto* a = new KGChartLookupTable();
        auto* b = new KGChartLookupTable();
        LoadFive(*a, *b);
        loading += ThreadSeconds() - start;
        state.PauseTiming();
        delete a;
        delete b;
        const double floorStart = ThreadSeconds();
        benchmark::DoNotOptimize(ReadFiveRealTables());
        floor += ThreadSeconds() - floorStart;
        state.ResumeTiming();
    }
    state.counters["entries"] = kRealEntries;
    state.counters["x_floor"] = floor > 0.0 ? loading / floor : 0.0;
}
BENCHMARK(BM_LoadFiveRealTables)->Unit(benchmark::kMicrosecond);

// Acronyms a chart shows, with a few that fall back to "######".
std::vector<PlixUnicodeString> QueryAcronyms(const KGChartLookupTable& table) {
    std::vector<PlixUnicodeString> names;
    for (const auto& entry : table.GetPointTable()) names.push_back(entry.first);
    for (const char* unknown : {"NOSUCH", "XXXXXX", "lights", "ZZZZZZ"}) names.push_back(unknown);
    return names;
}

void BM_GetLookupPointItems(benchmark::State& state) {
    if (!UseRealData(state)) return;
    KGChartLookupTable table;
    table.LoadPointLookupTable(Real().paper);
    const std::vector<PlixUnicodeString> names = QueryAcronyms(table);
    KGC::KGChartLookupPointItems items;
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.GetLookupPointItems(names[i], items));
        if (++i == names.size()) i = 0;
    }
}
BENCHMARK(BM_GetLookupPointItems);

void BM_GetConditionalSymbologyProcedure(benchmark::State& state) {
    if (!UseRealData(state)) return;
    KGChartLookupTable table;
    table.LoadPointLookupTable(Real().paper);
    const std::vector<PlixUnicodeString> names = QueryAcronyms(table);
    const PlixUnicodeString point(u"P");
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(table.GetConditionalSymbologyProcedure(names[i], point));
        if (++i == names.size()) i = 0;
    }
}
BENCHMARK(BM_GetConditionalSymbologyProcedure);

// ---- synthetic tables: load time against size ----

// Entries shaped like the real buoy entries, five per acronym.
std::string SyntheticTable(int entries) {
    static const char* const kTemplates[] = {
        "\",\"BOYSHP1COLOUR3,4,3\",\"SY(BOYLAT14);TE('%s','OBJNAM',2,1,2,'15110',-1,-1,CHBLK,21)"
        "\",\"8\",\"O\",\"STANDARD\",\"17010\"\n",
        "\",\"DRVAL1?DRVAL2?\",\"SY(SOUNDG01);TX(OBJNAM,3,2,2,'15110',1,0,CHBLK,26)\",\"1\","
        "\"S\",\"DISPLAYBASE\",\"13030\"\n",
        "\",\"CATLIT1,18COLOUR3\",\"SY(LIGHTS11,ORIENT)\",\"8\",\"O\",\"STANDARD\",\"27070\"\n",
        "\",\"\",\"SY(BCNDEF13);TX(OBJNAM,3,2,2,'15110',1,0,CHBLK,26)\",\"8\",\"O\",\"OTHER\","
        "\"17020\"\n",
        "\",\"\",\"CS(LIGHTS05)\",\"8\",\"O\",\"STANDARD\",\"27070\"\n",
    };
    std::string text;
    char acronym[8];
    for (int i = 0; i < entries; ++i) {
        snprintf(acronym, sizeof acronym, "A%05d", (i / 5) % 100000);
        text += "\"";
        text += acronym;
        text += kTemplates[i % 5];
    }
    return text;
}

// The generated files, removed when the program ends.
struct SyntheticFiles {
    std::vector<std::pair<int, std::string>> files;
    ~SyntheticFiles() {
        std::error_code ec;
        for (const auto& f : files) std::filesystem::remove(f.second, ec);
    }
};

const std::string& SyntheticFile(int entries) {
    static SyntheticFiles generated;
    for (const auto& f : generated.files) {
        if (f.first == entries) return f.second;
    }
    std::string path = (std::filesystem::temp_directory_path() /
                        ("vlbench-lookup-" + std::to_string(entries) + ".dic"))
                           .string();
    std::ofstream(path, std::ios::binary | std::ios::trunc) << SyntheticTable(entries);
    generated.files.emplace_back(entries, path);
    return generated.files.back().second;
}

void BM_LoadSyntheticPointTable(benchmark::State& state) {
    if (!UseRealData(state)) return;  // for the attribute dictionary
    const int entries = static_cast<int>(state.range(0));
    const PlixUnicodeString path(SyntheticFile(entries));
    for (auto _ : state) {
        auto* table = new KGChartLookupTable();
        table->LoadPointLookupTable(path);
        state.PauseTiming();
        delete table;
        state.ResumeTiming();
    }
    state.SetComplexityN(entries);
    state.counters["ns_per_entry"] = benchmark::Counter(
        static_cast<double>(entries),
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(BM_LoadSyntheticPointTable)
    ->Arg(10000)
    ->Arg(50000)
    ->Arg(100000)
    ->Unit(benchmark::kMillisecond)
    ->Complexity(benchmark::oN);

}  // namespace
