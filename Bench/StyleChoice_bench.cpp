// The style choice on features drawn from the five real "S52" look-up tables: one feature per
// entry, so each object class comes up in proportion to its entries, with the attribute values
// that entry's conditions ask for (a "?" condition leaves the attribute out). The features are
// shuffled once, so no object class stays hot. Each benchmark iteration is one feature.
//
// - BM_AcronymLookup: the acronym's items alone, as GetLookup...Items hands them out.
// - BM_ChooseStyle: the choice alone, on items already found.
// - BM_LookupAndChooseStyle: both together, as a host pays per feature with KGChooseStyle;
//   "per_100k_features" is a chart of 100 000 such features (processor time).
// - BM_PreparedChooser: what a host pays per feature with a KGChartStyleChooser built once per
//   table: the acronym and the choice in one call. Its answers are checked against
//   KGChooseStyle's before the timing starts.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGChartStyleChoice.h"
#include "ChartBase/KGChartStyleChooser.h"
#include "KGChartLookupBenchData.h"

namespace {

using KGC::KGChartLookupTable;
using KGC::KGFeatureAttributes;
using PLIX::PlixUnicodeString;

enum class Kind { Point, Line, Area };

struct Feature {
    Kind kind;
    const KGChartLookupTable* table;
    PlixUnicodeString acronym;
    KGFeatureAttributes attributes;
    // The items the acronym finds, for the choice alone.
    const void* items;
    const KGC::KGChartStyleChooser* chooser = nullptr;
};

// Values that make every condition of the style hold.
template <typename Style>
KGFeatureAttributes AttributesFor(const Style& style) {
    KGFeatureAttributes attributes;
    for (const auto& condition : style.AttributeConditions) {
        if (condition.AttributeAcronym.IsEmpty()) continue;
        if (condition.TextValue == PlixUnicodeString(u"?")) continue;
        PlixUnicodeString value;
        if (condition.IntegerValue != 0) {
            value = std::to_string(condition.IntegerValue);
        } else if (!condition.TextValue.IsEmpty()) {
            value = condition.TextValue;
        } else {
            value = u"1";  // the acronym alone: any value
        }
        attributes.SetAt(condition.AttributeAcronym, value);
    }
    return attributes;
}

template <typename Map>
void AddFeatures(Kind kind, const KGChartLookupTable& table, const Map& map,
                 std::vector<Feature>& features) {
    for (const auto& group : map) {
        for (const auto* style : group.second.Styles) {
            features.push_back(
                Feature{kind, &table, group.first, AttributesFor(*style), &group.second});
        }
    }
}

struct Charts {
    std::unique_ptr<KGChartLookupTable> a = std::make_unique<KGChartLookupTable>();
    std::unique_ptr<KGChartLookupTable> b = std::make_unique<KGChartLookupTable>();
    std::vector<Feature> features;
    std::unique_ptr<KGC::KGChartStyleChooser> chooseA;
    std::unique_ptr<KGC::KGChartStyleChooser> chooseB;
};

const Charts& Features() {
    static const Charts charts = [] {
        Charts c;
        if (!lookupbench::Real().ok) return c;
        lookupbench::LoadFive(*c.a, *c.b);
        for (const KGChartLookupTable* t : {c.a.get(), c.b.get()}) {
            AddFeatures(Kind::Point, *t, t->GetPointTable(), c.features);
            AddFeatures(Kind::Line, *t, t->GetLineTable(), c.features);
            AddFeatures(Kind::Area, *t, t->GetAreaTable(), c.features);
        }
        std::shuffle(c.features.begin(), c.features.end(), std::mt19937(52));
        c.chooseA = std::make_unique<KGC::KGChartStyleChooser>(*c.a);
        c.chooseB = std::make_unique<KGC::KGChartStyleChooser>(*c.b);
        for (Feature& f : c.features)
            f.chooser = f.table == c.a.get() ? c.chooseA.get() : c.chooseB.get();
        return c;
    }();
    return charts;
}

bool LookUp(const Feature& f, KGC::KGChartLookupPointItems& point,
            KGC::KGChartLookupLineItems& line, KGC::KGChartLookupAreaItems& area) {
    switch (f.kind) {
        case Kind::Point:
            return f.table->GetLookupPointItems(f.acronym, point);
        case Kind::Line:
            return f.table->GetLookupLineItems(f.acronym, line);
        case Kind::Area:
            return f.table->GetLookupAreaItems(f.acronym, area);
    }
    return false;
}

const void* Choose(const Feature& f, const void* items) {
    switch (f.kind) {
        case Kind::Point:
            return KGC::KGChooseStyle(*static_cast<const KGC::KGChartLookupPointItems*>(items),
                                      f.attributes);
        case Kind::Line:
            return KGC::KGChooseStyle(*static_cast<const KGC::KGChartLookupLineItems*>(items),
                                      f.attributes);
        case Kind::Area:
            return KGC::KGChooseStyle(*static_cast<const KGC::KGChartLookupAreaItems*>(items),
                                      f.attributes);
    }
    return nullptr;
}

void PerFeature(benchmark::State& state) {
    state.counters["features"] = static_cast<double>(Features().features.size());
    state.counters["per_100k_features"] = benchmark::Counter(
        1e-5, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void BM_AcronymLookup(benchmark::State& state) {
    if (!lookupbench::UseRealData(state)) return;
    const std::vector<Feature>& features = Features().features;
    KGC::KGChartLookupPointItems point;
    KGC::KGChartLookupLineItems line;
    KGC::KGChartLookupAreaItems area;
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(LookUp(features[i], point, line, area));
        if (++i == features.size()) i = 0;
    }
    PerFeature(state);
}
BENCHMARK(BM_AcronymLookup);

void BM_ChooseStyle(benchmark::State& state) {
    if (!lookupbench::UseRealData(state)) return;
    const std::vector<Feature>& features = Features().features;
    size_t i = 0;
    for (auto _ : state) {
        const Feature& f = features[i];
        if (Choose(f, f.items) == nullptr) state.SkipWithError("a feature got no style");
        if (++i == features.size()) i = 0;
    }
    PerFeature(state);
}
BENCHMARK(BM_ChooseStyle);

void BM_LookupAndChooseStyle(benchmark::State& state) {
    if (!lookupbench::UseRealData(state)) return;
    const std::vector<Feature>& features = Features().features;
    KGC::KGChartLookupPointItems point;
    KGC::KGChartLookupLineItems line;
    KGC::KGChartLookupAreaItems area;
    const void* items[] = {&point, &line, &area};
    size_t i = 0;
    for (auto _ : state) {
        const Feature& f = features[i];
        LookUp(f, point, line, area);
        benchmark::DoNotOptimize(Choose(f, items[static_cast<int>(f.kind)]));
        if (++i == features.size()) i = 0;
    }
    PerFeature(state);
}
BENCHMARK(BM_LookupAndChooseStyle);

const void* ChoosePrepared(const Feature& f) {
    switch (f.kind) {
        case Kind::Point:
            return f.chooser->ChoosePoint(f.acronym, f.attributes);
        case Kind::Line:
            return f.chooser->ChooseLine(f.acronym, f.attributes);
        case Kind::Area:
            return f.chooser->ChooseArea(f.acronym, f.attributes);
    }
    return nullptr;
}

void BM_PreparedChooser(benchmark::State& state) {
    if (!lookupbench::UseRealData(state)) return;
    const std::vector<Feature>& features = Features().features;
    for (const Feature& f : features) {
        if (ChoosePrepared(f) != Choose(f, f.items)) {
            state.SkipWithError("the prepared chooser and KGChooseStyle disagree");
            return;
        }
    }
    size_t i = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(ChoosePrepared(features[i]));
        if (++i == features.size()) i = 0;
    }
    PerFeature(state);
}
BENCHMARK(BM_PreparedChooser);

}  // namespace
