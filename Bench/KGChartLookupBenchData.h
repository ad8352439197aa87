// The real "S52" look-up tables shared by the look-up table benchmarks.
#pragma once

#include <filesystem>
#include <string>

#include "Base/KGFile.h"
#include "ChartBase/KGChartEnvironment.h"
#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGS57Dictionary.h"

namespace lookupbench {

// The five tables of the style, found through the chart environment.
struct RealTables {
    PLIX::PlixUnicodeString simplified, paper, lines, plain, symbolized;
    bool ok = false;
};

constexpr int kRealEntries = 751 + 1273 + 273 + 340 + 347;

inline const RealTables& Real() {
    static RealTables tables = [] {
        RealTables t;
        std::filesystem::path dir = std::filesystem::path(VLBENCH_SHARED_DATA_DIR) / "s52-real";
        std::error_code ec;
        if (!std::filesystem::is_directory(dir, ec)) return t;
        KGC::KGFile::SetModulePath(dir.string() + "/");
        KGC::KGChartEnvironment env;
        // Attribute types come from the real dictionary, as in a host.
        KGC::KGS57Config::GetInstance()->LoadS57AttributesFile(
            env.GetS57AttributeDictFileAbsolutePath());
        t.simplified = env.GetPointLookupTableAbsolutePath(u"S52", 1);
        t.paper = env.GetPointLookupTableAbsolutePath(u"S52", 0);
        t.lines = env.GetLineLookupTableAbsolutePath(u"S52");
        t.plain = env.GetAreaLookupTableAbsolutePath(u"S52", 0);
        t.symbolized = env.GetAreaLookupTableAbsolutePath(u"S52", 1);
        t.ok = KGC::KGFile::IsExist(t.simplified) && KGC::KGFile::IsExist(t.symbolized);
        return t;
    }();
    return tables;
}

template <typename State>
bool UseRealData(State& state) {
    if (Real().ok) return true;
    state.SkipWithError("../shared/data/s52-real is not beside this checkout");
    return false;
}

// Two tables hold the five files: the first a point, line and area table, the second the
// other point and area tables.
inline void LoadFive(KGC::KGChartLookupTable& a, KGC::KGChartLookupTable& b) {
    const RealTables& t = Real();
    a.LoadPointLookupTable(t.simplified);
    a.LoadLineLookupTable(t.lines);
    a.LoadAreaLookupTable(t.plain);
    b.LoadPointLookupTable(t.paper);
    b.LoadAreaLookupTable(t.symbolized);
}

}  // namespace lookupbench
