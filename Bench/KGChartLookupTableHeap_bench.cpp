// The heap held by the five real "S52" look-up tables once loaded, counted by a global
// operator new and delete that every allocation of the program and its libraries goes through.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <atomic>
#include <cstdlib>
#include <new>

#include "ChartBase/KGChartLookupTable.h"
#include "KGChartLookupBenchData.h"

// ---- heap accounting: every allocation of the program and its libraries goes through here ----

namespace {
std::atomic<long long> g_heapBytes{0};
std::atomic<long long> g_allocations{0};

void* CountedAlloc(size_t size) {
    void* p = malloc(size == 0 ? 1 : size);
    if (p == nullptr) throw std::bad_alloc();
    g_heapBytes += static_cast<long long>(malloc_usable_size(p));
    ++g_allocations;
    return p;
}

void CountedFree(void* p) noexcept {
    if (p == nullptr) return;
    g_heapBytes -= static_cast<long long>(malloc_usable_size(p));
    free(p);
}
}  // namespace

void* operator new(size_t size) {
    return CountedAlloc(size);
}
void* operator new[](size_t size) {
    return CountedAlloc(size);
}
void* operator new(size_t size, const std::nothrow_t&) noexcept {
    void* p = malloc(size == 0 ? 1 : size);
    if (p != nullptr) g_heapBytes += static_cast<long long>(malloc_usable_size(p));
    return p;
}
void* operator new[](size_t size, const std::nothrow_t& tag) noexcept {
    return operator new(size, tag);
}
void operator delete(void* p) noexcept {
    CountedFree(p);
}
void operator delete[](void* p) noexcept {
    CountedFree(p);
}
void operator delete(void* p, size_t) noexcept {
    CountedFree(p);
}
void operator delete[](void* p, size_t) noexcept {
    CountedFree(p);
}
void operator delete(void* p, const std::nothrow_t&) noexcept {
    CountedFree(p);
}
void operator delete[](void* p, const std::nothrow_t&) noexcept {
    CountedFree(p);
}

namespace {

using KGC::KGChartLookupTable;
using lookupbench::kRealEntries;
using lookupbench::LoadFive;
using lookupbench::UseRealData;

// Held with the two table files still open (as a host has them after loading), and with
// those files closed: a load of a missing file closes the reader and keeps the table.
void BM_HeapOfFiveRealTables(benchmark::State& state) {
    if (!UseRealData(state)) return;
    long long held = 0;
    long long withoutFiles = 0;
    long long allocations = 0;
    for (auto _ : state) {
        const long long before = g_heapBytes.load();
        const long long allocationsBefore = g_allocations.load();
        {
            KGChartLookupTable a;
            KGChartLookupTable b;
            LoadFive(a, b);
            held = g_heapBytes.load() - before;
            allocations = g_allocations.load() - allocationsBefore;
            a.LoadLineLookupTable(u"/nonexistent/none.dic");
            b.LoadLineLookupTable(u"/nonexistent/none.dic");
            withoutFiles = g_heapBytes.load() - before;
        }
        benchmark::DoNotOptimize(held);
    }
    state.counters["heap_bytes"] = static_cast<double>(held);
    state.counters["bytes_per_entry"] = static_cast<double>(held) / kRealEntries;
    state.counters["allocations_per_entry"] = static_cast<double>(allocations) / kRealEntries;
    state.counters["closed_bytes_per_entry"] = static_cast<double>(withoutFiles) / kRealEntries;
}
BENCHMARK(BM_HeapOfFiveRealTables)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace
