// Adding named sequences to a datasource's extension info: the time per add as the list grows
// (every add checks the name against those held), against the floor of appending the same
// sequences to a plain array with no check.
#include <benchmark/benchmark.h>

#include <vector>

#include "Base/PlixArray.h"
#include "ChartBase/KGDatasourceExtInfo.h"

namespace {

std::vector<KGC::KGS57Sequence> Sequences(int count) {
    std::vector<KGC::KGS57Sequence> seqs(static_cast<size_t>(count));
    for (int i = 0; i < count; ++i) {
        seqs[static_cast<size_t>(i)].SetName(PLIX::PlixUnicodeString::Format("FeatureRecord%d", i));
    }
    return seqs;
}

void Report(benchmark::State& state) {
    state.counters["per_add"] =
        benchmark::Counter(static_cast<double>(state.iterations() * state.range(0)),
                           benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}

void BM_AddS57Seq(benchmark::State& state) {
    const std::vector<KGC::KGS57Sequence> seqs = Sequences(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        KGC::KGDatasourceExtInfo info;
        for (const KGC::KGS57Sequence& seq : seqs) benchmark::DoNotOptimize(info.AddS57Seq(seq));
    }
    Report(state);
}

void BM_ArrayAddFloor(benchmark::State& state) {
    const std::vector<KGC::KGS57Sequence> seqs = Sequences(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        PLIX::PlixArray<KGC::KGS57Sequence> list;
        for (const KGC::KGS57Sequence& seq : seqs) benchmark::DoNotOptimize(list.Add(seq));
    }
    Report(state);
}

}  // namespace

BENCHMARK(BM_AddS57Seq)->Arg(5000)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_ArrayAddFloor)->Arg(5000)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);
