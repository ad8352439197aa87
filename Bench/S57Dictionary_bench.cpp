// The dictionary registry on the real S-57 catalogue: LoadDicts against pugixml alone parsing
// the same five files, and the cost of a look-up by code, by acronym and by agency code.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "Base/KGFile.h"
#include "Base/KGMarkup.h"
#include "ChartBase/KGS57Dictionary.h"

namespace {

std::string RealData() {
    std::filesystem::path p = std::filesystem::path(VLBENCH_SHARED_DATA_DIR) / "s52-real";
    std::error_code ec;
    return std::filesystem::is_directory(p, ec) ? p.string() + "/" : std::string();
}

// One registry on the real data, shared by the look-up benchmarks.
KGC::KGS57Config* RealRegistry(benchmark::State& state) {
    static std::unique_ptr<KGC::KGS57Config> config;
    const std::string dir = RealData();
    if (dir.empty()) {
        state.SkipWithError("../shared/data/s52-real is not beside this checkout");
        return nullptr;
    }
    if (!config) {
        KGC::KGFile::SetModulePath(dir);
        config = std::make_unique<KGC::KGS57Config>();
    }
    return config.get();
}

void BM_LoadDicts(benchmark::State& state) {
    KGC::KGS57Config* config = RealRegistry(state);
    if (!config) return;
    for (auto _ : state) benchmark::DoNotOptimize(config->LoadDicts());
}
BENCHMARK(BM_LoadDicts)->Unit(benchmark::kMillisecond);

// The floor LoadDicts is measured against: the same five files parsed into a DOM, nothing more.
void BM_PugixmlParseFiveDictionaries(benchmark::State& state) {
    KGC::KGS57Config* config = RealRegistry(state);
    if (!config) return;
    const std::vector<std::string> files = {
        config->GetAgencyDictPath().ToUtf8(), config->GetObjectDictPath().ToUtf8(),
        config->GetAttributeDictPath().ToUtf8(), config->GetSpecsObjectDictPath().ToUtf8(),
        config->GetSpecsInfoDictPath().ToUtf8()};
    for (auto _ : state) {
        for (const auto& file : files) {
            pugi::xml_document doc;
            if (!doc.load_file(file.c_str())) state.SkipWithError("a dictionary did not parse");
            benchmark::DoNotOptimize(doc.first_child());
        }
    }
}
BENCHMARK(BM_PugixmlParseFiveDictionaries)->Unit(benchmark::kMillisecond);

// Where LoadDicts spends its time: the markup documents alone, and the six path refreshes.
void BM_MarkupLoadFiveDictionaries(benchmark::State& state) {
    KGC::KGS57Config* config = RealRegistry(state);
    if (!config) return;
    const PLIX::PlixUnicodeString files[] = {
        config->GetAgencyDictPath(), config->GetObjectDictPath(), config->GetAttributeDictPath(),
        config->GetSpecsObjectDictPath(), config->GetSpecsInfoDictPath()};
    for (auto _ : state) {
        for (const auto& file : files) {
            KGC::KGMarkup doc;
            if (!doc.Load(file)) state.SkipWithError("a dictionary did not load");
            benchmark::DoNotOptimize(doc.FindElem());
        }
    }
}
BENCHMARK(BM_MarkupLoadFiveDictionaries)->Unit(benchmark::kMillisecond);

void BM_RefreshSixPaths(benchmark::State& state) {
    KGC::KGS57Config* config = RealRegistry(state);
    if (!config) return;
    for (auto _ : state) config->initialize();
}
BENCHMARK(BM_RefreshSixPaths)->Unit(benchmark::kMillisecond);

// Look-ups cycle through every key of the dictionary so that no single record stays hot.
template <typename Record, typename Fill, typename Key, typename Find>
void CycleLookups(benchmark::State& state, Fill fill, Key key, Find find) {
    KGC::KGS57Config* config = RealRegistry(state);
    if (!config) return;
    PLIX::PlixArray<Record> records;
    fill(*config, records);
    std::vector<decltype(key(records[0]))> keys;
    for (const auto& r : records) keys.push_back(key(r));
    size_t i = 0;
    Record out;
    for (auto _ : state) {
        benchmark::DoNotOptimize(find(*config, keys[i], out));
        if (++i == keys.size()) i = 0;
    }
}

void BM_ObjectByCode(benchmark::State& state) {
    CycleLookups<KGC::KGS57Object>(
        state, [](auto& c, auto& a) { c.GetArrayS57Object(a); },
        [](const KGC::KGS57Object& r) { return static_cast<int>(r.code); },
        [](auto& c, int k, auto& out) { return c.GetS57Object(k, out); });
}
BENCHMARK(BM_ObjectByCode);

void BM_ObjectByAcronym(benchmark::State& state) {
    CycleLookups<KGC::KGS57Object>(
        state, [](auto& c, auto& a) { c.GetArrayS57Object(a); },
        [](const KGC::KGS57Object& r) { return r.acronym; },
        [](auto& c, const PLIX::PlixUnicodeString& k, auto& out) {
            return c.GetS57Object(k, out);
        });
}
BENCHMARK(BM_ObjectByAcronym);

void BM_AttributeByCode(benchmark::State& state) {
    CycleLookups<KGC::KGS57Attribute>(
        state, [](auto& c, auto& a) { c.GetArrayS57Attribute(a); },
        [](const KGC::KGS57Attribute& r) { return static_cast<int>(r.code); },
        [](auto& c, int k, auto& out) { return c.GetS57Attributes(k, out); });
}
BENCHMARK(BM_AttributeByCode);

void BM_AttributeByAcronym(benchmark::State& state) {
    CycleLookups<KGC::KGS57Attribute>(
        state, [](auto& c, auto& a) { c.GetArrayS57Attribute(a); },
        [](const KGC::KGS57Attribute& r) { return r.acronym; },
        [](auto& c, const PLIX::PlixUnicodeString& k, auto& out) {
            return c.GetS57Attributes(k, out);
        });
}
BENCHMARK(BM_AttributeByAcronym);

void BM_AgencyByCode(benchmark::State& state) {
    CycleLookups<KGC::KGS57Agency>(
        state, [](auto& c, auto& a) { c.GetArrayAgency(a); },
        [](const KGC::KGS57Agency& r) { return static_cast<int>(r.code); },
        [](auto& c, int k, auto& out) { return c.GetS57Agency(k, out); });
}
BENCHMARK(BM_AgencyByCode);

}  // namespace
