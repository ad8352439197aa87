// KGChartSymbolLibrary: the symbols, complex line styles and area patterns that the look-up
// instructions name (SY, LC, AP), loaded from the symbol library file that `vlchart
// import-preslib` writes, answered by kind and name, and drawn as SVG pictures in the colours
// of a colour table. A host draws a record itself from its definitions, or uses the picture.
//
// Threads: once loaded, the const members may be called from several threads at once; loading
// needs the library to itself. A record's vector commands are decoded when it is first looked
// up (Find, and so GetSvg and SaveGallery), once, under the library's lock: a load decodes
// none, and a host pays only for the records it draws.
#pragma once

#include <cassert>
#include <cstdint>
#include <memory>
#include <string>

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
    // The points of a PU or PD, read like a PlixArray. Nearly every command has one point: it
    // is held in place, so that a command stays small and decoding allocates nothing for it.
    class VLCHARTBASE_API Points {
    public:
        Points() = default;
        Points(const Points& other);
        Points(Points&& other) noexcept;
        Points& operator=(Points other) noexcept;
        ~Points();

        int GetSize() const { return m_size; }
        bool IsEmpty() const { return m_size == 0; }
        const Point& operator[](int i) const {
            assert(i >= 0 && i < m_size);
            return begin()[i];
        }
        const Point* begin() const { return m_size > 1 ? m_more : &m_one; }
        const Point* end() const { return begin() + m_size; }
        void Add(Point point) {
            if (m_size == 0) {
                m_one = point;
                m_size = 1;
            } else {
                AddMore(point);
            }
        }

    private:
        void AddMore(Point point);

        union {
            Point m_one{};
            Point* m_more;  // two or more, in room for the next power of two
        };
        int m_size = 0;
    };
    Op op = Op::PenUp;
    char16_t letter = 0;
    int value = 0;
    Points points;
    PLIX::PlixUnicodeString name;
};

struct KGChartSymbolColour {
    char16_t letter = 0;
    PLIX::PlixUnicodeString token;  // a colour token of the colour tables, as CHBLK
};

// One definition of a record. A vector definition's pivot and box are in 0.01 mm; a raster
// definition's in pixels, its bitmap covering the box.
//
// In the file a definition is <Definition type="vector|raster" pivot="col,row"
// box="col,row,width,height"> holding <Colour letter token> elements, then a <Vector> command
// text or a <Bitmap>: the box's rows, each on a line of its own, indented under the element,
// so that the file shows the picture; a row is boxWidth ASCII colour letters, "@" transparent,
// and the white space around the rows is not part of them. A definition whose pivot or box
// cannot be read, or whose bitmap does not fill its box exactly with its own colour letters,
// makes its record skipped.
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
    // Raster: boxHeight rows of boxWidth colour letters, one after the other, "@" transparent.
    // The letters are ASCII, as the presentation library's are: a byte a pixel.
    std::string bitmap;

    // The token of a colour letter; empty when the definition has no such letter.
    PLIX::PlixUnicodeString ColourToken(char16_t letter) const;
    // The letter of a raster pixel, col and row counted from the box's upper-left corner; "@"
    // outside the box and for a vector definition.
    char16_t Pixel(int col, int row) const;
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
    // empty. A record without a name or definition, with a definition that cannot be read (see
    // KGChartSymbolDefinition), or with the name of an earlier record of its kind is skipped
    // and counted.
    bool Load(const PLIX::PlixUnicodeString& path);
    const PLIX::PlixUnicodeString& GetError() const;
    // Records left out by the last load.
    int GetSkippedCount() const;

    // The record of that kind and name (case as written), its commands decoded; null when
    // there is none. The record stays where it is until the next load.
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
