// libFuzzer harness for the symbol library: whatever the file, the load answers; every record
// loaded is found by its name, its raster bitmaps fill their boxes, a copy holds the same
// points, and its picture is drawn; a failed load leaves nothing. The input is decoded as
// command text too.
#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartSymbolLibrary.h"
#include "FuzzSupport.h"

namespace {

using KGC::KGChartSymbolKind;

bool SamePoints(const KGC::KGChartSymbolDefinition& a, const KGC::KGChartSymbolDefinition& b) {
    if (a.commands.GetSize() != b.commands.GetSize()) return false;
    for (int i = 0; i < a.commands.GetSize(); ++i) {
        const auto& p = a.commands[i].points;
        const auto& q = b.commands[i].points;
        if (p.GetSize() != q.GetSize()) return false;
        for (int k = 0; k < p.GetSize(); ++k) {
            if (p[k].col != q[k].col || p[k].row != q[k].row) return false;
        }
    }
    return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string path = vlfuzz::WriteScratch("symbols.xml", data, size);
    KGC::KGChartSymbolLibrary library;
    const bool loaded = library.Load(path);
    const KGC::KGChartColorTable colours;
    for (auto kind :
         {KGChartSymbolKind::Symbol, KGChartSymbolKind::LineStyle, KGChartSymbolKind::Pattern}) {
        if (!loaded) vlfuzz::Check(library.GetCount(kind) == 0);
        for (const auto& name : library.GetNames(kind)) {
            const KGC::KGChartSymbolRecord* record = library.Find(kind, name);
            vlfuzz::Check(record != nullptr && !record->definitions.IsEmpty());
            const KGC::KGChartSymbolRecord copy = *record;
            for (int i = 0; i < record->definitions.GetSize(); ++i) {
                const auto& def = record->definitions[i];
                if (def.raster) {
                    vlfuzz::Check(def.bitmap.size() ==
                                  static_cast<size_t>(def.boxWidth) * def.boxHeight);
                }
                vlfuzz::Check(SamePoints(def, copy.definitions[i]));
            }
            vlfuzz::Check(!library.GetSvg(kind, name, colours).IsEmpty());
        }
    }
    PLIX::PlixArray<KGC::KGChartSymbolCommand> commands;
    KGC::KGChartSymbolLibrary::ParseCommands(
        PLIX::PlixUnicodeString(reinterpret_cast<const char*>(data), size), commands);
    return 0;
}
