// The real "S52" look-up tables shared by the look-up table benchmarks.
#pragma once

#include <filesystem>
#include <string>

#include "Base/KGFile.h"
#include "Base/KGFileStdio.h"
#include "Base/PlixTypes.h"
#include "ChartBase/KGChartEnvironment.h"
#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGS57Dictionary.h"
#include "ThreadClock.h"

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

// The floor of the look-up loads: the same files read line by line with the platform's reader,
// and the seven quoted fields of each line found, building nothing.
inline long long ReadFiveRealTables() {
    const RealTables& t = Real();
    const PLIX::PlixUnicodeString* files[] = {&t.simplified, &t.paper, &t.lines, &t.plain,
                                              &t.symbolized};
    long long fields = 0;
    for (const PLIX::PlixUnicodeString* path : files) {
        KGC::KGFileStdio file;
        file.Open(*path, KGC::KGStreamRead, 8192, PLIX::PLIXCharset::UTF8);
        while (!file.IsEOF()) {
            PLIX::PlixUnicodeString line = file.ReadLine();
            int pos = 0;
            for (int field = 0; field < 7; ++field) {
                int open = line.Find(u'"', pos);
                if (open < 0) break;
                int close = line.Find(u'"', open + 1);
                if (close < 0) break;
                fields += close - open;
                pos = close + 1;
            }
        }
    }
    return fields;
}

using benchclock::ThreadSeconds;

}  // namespace lookupbench
