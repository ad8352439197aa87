// KGChartSymbolLibrary: the symbols, complex line styles and area patterns that the look-up
// instructions name (SY, LC, AP), loaded from the symbol library file that `vlchart
// import-preslib` writes, answered by kind and name, and drawn as SVG pictures in the colours
// of a colour table. A host draws a record itself from its definitions, or uses the picture.
//
// Threads: once loaded, the const members may be called from several threads at once; loading
// needs the library to itself.
#pragma once

#include <cstdint>
#include <memory>

#include "Base/PlixArray.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class KGChartColorTable;

enum class KGChartSymbolKind : int32_t { Symbol = 0, LineStyle = 1, Pattern = 2 };

// One command of a vector definition, decoded. Units are 0.01 mm, the origin top left, rows
// growing downwards.
struct KGChartSymbolCommand {
    enum class Op : int32_t {
        SelectPen,     // SP: letter, a colour letter of the definition
        PenWidth,      // SW: value, in units of 0.32 mm
        Transparency,  // ST: value 0-3, for 0, 25, 50 and 75 % transparent
        PenUp,         // PU: the pen moves through points, drawing nothing
        PenDown,       // PD: a line from the pen through points; none: a dot at the pen
        Circle,        // CI: value, the radius of a circle centred at the pen
        PolygonMode,   // PM: value 0 opens a polygon at the pen, 2 closes it
        FillPolygon,   // FP: fills the polygon last closed
        DrawSymbol,    // SC: the symbol name drawn with its pivot at the pen, turned by value
                       // degrees clockwise
    };
    struct Point {
        int col = 0;
        int row = 0;
    };
    Op op = Op::PenUp;
    char16_t letter = 0;
    int value = 0;
    PLIX::PlixArray<Point> points;
    PLIX::PlixUnicodeString name;
};

struct KGChartSymbolColour {
    char16_t letter = 0;
    PLIX::PlixUnicodeString token;  // a colour token of the colour tables, as CHBLK
};

// One definition of a record. A vector definition's pivot and box are in 0.01 mm; a raster
// definition's in pixels, its bitmap covering the box.
struct VLCHARTBASE_API KGChartSymbolDefinition {
    bool raster = false;
    int pivotCol = 0;
    int pivotRow = 0;
    int boxCol = 0;  // upper-left corner of the box
    int boxRow = 0;
    int boxWidth = 0;
    int boxHeight = 0;
    PLIX::PlixArray<KGChartSymbolColour> colours;
    PLIX::PlixArray<KGChartSymbolCommand> commands;  // vector
    // Raster: one row a line, one colour letter a pixel, "@" transparent.
    PLIX::PlixArray<PLIX::PlixUnicodeString> rows;

    // The token of a colour letter; empty when the definition has no such letter.
    PLIX::PlixUnicodeString ColourToken(char16_t letter) const;
};

struct KGChartSymbolRecord {
    KGChartSymbolKind kind = KGChartSymbolKind::Symbol;
    PLIX::PlixUnicodeString name;
    PLIX::PlixUnicodeString description;
    // Patterns only: fill "STG" (staggered) or "LIN" (linear), spacing "CON" (constant) or
    // "SCL" (scale-dependent), minimum and maximum distance between symbols in 0.01 mm.
    PLIX::PlixUnicodeString fill;
    PLIX::PlixUnicodeString spacing;
    int minDistance = 0;
    int maxDistance = 0;
    // A name may have a vector and a raster definition, each with its own pivot, box and
    // colours; the vector one comes first and is the one pictures use.
    PLIX::PlixArray<KGChartSymbolDefinition> definitions;
};

class VLCHARTBASE_API KGChartSymbolLibrary {
public:
    KGChartSymbolLibrary();
    ~KGChartSymbolLibrary();
    KGChartSymbolLibrary(KGChartSymbolLibrary&&) noexcept;
    KGChartSymbolLibrary& operator=(KGChartSymbolLibrary&&) noexcept;

    // Replaces the records with those of a "SymbolLibrary" file. False, with GetError saying
    // why, when the file cannot be read or is not a symbol library; the library is then
    // empty. A record without a name or definition is skipped and counted.
    bool Load(const PLIX::PlixUnicodeString& path);
    const PLIX::PlixUnicodeString& GetError() const;
    // Records left out by the last load.
    int GetSkippedCount() const;

    // The record of that kind and name (case as written); null when there is none.
    const KGChartSymbolRecord* Find(KGChartSymbolKind kind,
                                    const PLIX::PlixUnicodeString& name) const;
    // The names of a kind, in file order.
    PLIX::PlixArray<PLIX::PlixUnicodeString> GetNames(KGChartSymbolKind kind) const;
    int GetCount(KGChartSymbolKind kind) const;

    // The picture of a record as an SVG document: viewBox the box of its first definition,
    // width and height in mm (a raster pixel is drawn 0.32 mm wide), colours from the table,
    // transparency as opacity, SC drawn recursively (a symbol already being drawn is not
    // drawn again). Empty when there is no such record.
    PLIX::PlixUnicodeString GetSvg(KGChartSymbolKind kind, const PLIX::PlixUnicodeString& name,
                                   const KGChartColorTable& colours) const;
    // One labelled SVG gallery of every record of the kinds given, kind by kind, written to
    // path (atomically). False when it cannot be written.
    bool SaveGallery(const PLIX::PlixUnicodeString& path, const KGChartColorTable& colours,
                     const PLIX::PlixUnicodeString& title,
                     const PLIX::PlixArray<KGChartSymbolKind>& kinds) const;

    // Decodes vector command text ("SPA;SW1;PU10,20;PD30,40;") into commands, appended;
    // returns how many commands it did not know or could not read (they are left out).
    static int ParseCommands(const PLIX::PlixUnicodeString& text,
                             PLIX::PlixArray<KGChartSymbolCommand>& commands);
    // "symbol", "line", "pattern".
    static const char* GetKindName(KGChartSymbolKind kind);

private:
    struct Private;
    std::unique_ptr<Private> d;
};

}  // namespace KGC
