// Drawing the symbol library's records as SVG: one picture per record, and the gallery of all
// of them. The documents are built through KGMarkup, so names and descriptions need no
// escaping by hand.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "Base/KGMarkup.h"
#include "Base/PlixTypes.h"
#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartSymbolLibrary.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

using Op = KGChartSymbolCommand::Op;
using Point = KGChartSymbolCommand::Point;

// The pen width unit, 0.32 mm, in vector units of 0.01 mm; also the size a raster pixel is
// drawn at, in hundredths of a millimetre.
constexpr int kPenUnit = 32;
// SC may nest; a chain deeper than this is a fault of the library, not a drawing.
constexpr size_t kMaxNesting = 16;

PlixUnicodeString Text(const std::string& utf8) {
    return PlixUnicodeString(utf8);
}
std::string Num(int n) {
    return std::to_string(n);
}
// Hundredths as a decimal number of millimetres, "4.02mm".
PlixUnicodeString Millimetres(int hundredths) {
    char text[32];
    std::snprintf(text, sizeof text, "%s%d.%02dmm", hundredths < 0 ? "-" : "",
                  std::abs(hundredths) / 100, std::abs(hundredths) % 100);
    return Text(text);
}

class Painter {
public:
    Painter(const KGChartSymbolLibrary& library, const KGChartColorTable& colours, KGMarkup& doc)
        : m_library(library), m_colours(colours), m_doc(doc) {}

    // Draws the record's picture definition into the main element of the document.
    void Draw(const KGChartSymbolRecord& record) {
        if (record.definitions.IsEmpty()) return;
        m_drawing.push_back(&record);
        const KGChartSymbolDefinition& def = record.definitions[0];
        if (def.raster) {
            DrawRaster(def);
        } else {
            DrawVector(def);
        }
        m_drawing.pop_back();
    }

private:
    struct Pen {
        std::string colour = "#000000";
        int width = kPenUnit;
        int transparency = 0;
        Point at;
    };

    std::string Colour(const KGChartSymbolDefinition& def, char16_t letter) const {
        const PLIX::PLIXCOLOR c = m_colours.GetRGBColor(def.ColourToken(letter));
        char hex[8];
        std::snprintf(hex, sizeof hex, "#%02X%02X%02X", PLIX::PLIXGetR(c), PLIX::PLIXGetG(c),
                      PLIX::PLIXGetB(c));
        return hex;
    }

    void Add(const char16_t* element,
             std::initializer_list<std::pair<const char16_t*, std::string>> attributes) {
        m_doc.AddChildElem(element);
        for (const auto& a : attributes) m_doc.SetChildAttrib(a.first, Text(a.second));
    }

    void Opacity(const char16_t* attribute, const Pen& pen) {
        static const char* const kOpacity[] = {"1", "0.75", "0.5", "0.25"};
        if (pen.transparency > 0) m_doc.SetChildAttrib(attribute, Text(kOpacity[pen.transparency]));
    }

    void Stroke(const Pen& pen) {
        m_doc.SetChildAttrib(u"fill", u"none");
        m_doc.SetChildAttrib(u"stroke", Text(pen.colour));
        m_doc.SetChildAttrib(u"stroke-width", pen.width);
        m_doc.SetChildAttrib(u"stroke-linecap", u"round");
        m_doc.SetChildAttrib(u"stroke-linejoin", u"round");
        Opacity(u"stroke-opacity", pen);
    }

    void FlushLine(std::vector<Point>& line, const Pen& pen) {
        if (line.size() < 2) {
            line.clear();
            return;
        }
        std::string points;
        for (const Point& p : line)
            points += (points.empty() ? "" : " ") + Num(p.col) + "," + Num(p.row);
        Add(u"polyline", {{u"points", points}});
        Stroke(pen);
        line.clear();
    }

    static std::string CirclePath(const Point& c, int r) {
        return "M" + Num(c.col - r) + "," + Num(c.row) + "a" + Num(r) + "," + Num(r) + " 0 1,0 " +
               Num(2 * r) + ",0a" + Num(r) + "," + Num(r) + " 0 1,0 " + Num(-2 * r) + ",0";
    }

    void DrawVector(const KGChartSymbolDefinition& def) {
        Pen pen;
        pen.at = {def.pivotCol, def.pivotRow};
        if (!def.colours.IsEmpty()) pen.colour = Colour(def, def.colours[0].letter);
        std::vector<Point> line;  // the line being drawn, flushed when anything else comes
        std::string polygon;      // the polygon being collected
        std::string closed;       // the polygon last closed, for FP
        bool inPolygon = false;
        for (const KGChartSymbolCommand& c : def.commands) {
            if (c.op != Op::PenDown || inPolygon) FlushLine(line, pen);
            switch (c.op) {
                case Op::SelectPen:
                    pen.colour = Colour(def, c.letter);
                    break;
                case Op::PenWidth:
                    pen.width = c.value * kPenUnit;
                    break;
                case Op::Transparency:
                    pen.transparency = c.value;
                    break;
                case Op::PenUp:
                    for (const Point& p : c.points) {
                        if (inPolygon) polygon += "M" + Num(p.col) + "," + Num(p.row);
                        pen.at = p;
                    }
                    break;
                case Op::PenDown:
                    if (c.points.IsEmpty() && !inPolygon) {
                        Add(u"circle", {{u"cx", Num(pen.at.col)},
                                        {u"cy", Num(pen.at.row)},
                                        {u"r", Num(pen.width / 2)},
                                        {u"fill", pen.colour}});
                        Opacity(u"fill-opacity", pen);
                    }
                    for (const Point& p : c.points) {
                        if (inPolygon) {
                            polygon += "L" + Num(p.col) + "," + Num(p.row);
                        } else {
                            if (line.empty()) line.push_back(pen.at);
                            line.push_back(p);
                        }
                        pen.at = p;
                    }
                    break;
                case Op::Circle:
                    if (inPolygon) {
                        polygon += CirclePath(pen.at, c.value);
                    } else {
                        Add(u"circle", {{u"cx", Num(pen.at.col)},
                                        {u"cy", Num(pen.at.row)},
                                        {u"r", Num(c.value)}});
                        Stroke(pen);
                    }
                    break;
                case Op::PolygonMode:
                    if (c.value == 0) {
                        inPolygon = true;
                        polygon = "M" + Num(pen.at.col) + "," + Num(pen.at.row);
                    } else if (inPolygon) {
                        inPolygon = false;
                        closed = polygon + "Z";
                    }
                    break;
                case Op::FillPolygon:
                    if (!closed.empty()) {
                        Add(u"path", {{u"d", closed}, {u"fill", pen.colour}});
                        Opacity(u"fill-opacity", pen);
                    }
                    break;
                case Op::DrawSymbol:
                    DrawNested(c, pen.at);
                    break;
            }
        }
        FlushLine(line, pen);
    }

    void DrawNested(const KGChartSymbolCommand& c, const Point& at) {
        const KGChartSymbolRecord* nested = m_library.Find(KGChartSymbolKind::Symbol, c.name);
        if (nested == nullptr || nested->definitions.IsEmpty() || m_drawing.size() >= kMaxNesting ||
            std::find(m_drawing.begin(), m_drawing.end(), nested) != m_drawing.end()) {
            return;  // a symbol that names itself, at any depth, is drawn once
        }
        const KGChartSymbolDefinition& def = nested->definitions[0];
        std::string transform = "translate(" + Num(at.col) + "," + Num(at.row) + ")";
        if (c.value != 0) transform += " rotate(" + Num(c.value) + ")";
        // A raster definition is in pixels: scaled to vector units around its pivot.
        if (def.raster) transform += " scale(" + Num(kPenUnit) + ")";
        transform += " translate(" + Num(-def.pivotCol) + "," + Num(-def.pivotRow) + ")";
        Add(u"g", {{u"transform", transform}});
        m_doc.IntoElem();
        Draw(*nested);
        m_doc.OutOfElem();
    }

    // Runs of one letter in a row become one rectangle.
    void DrawRaster(const KGChartSymbolDefinition& def) {
        for (int y = 0; y < def.boxHeight; ++y) {
            for (int x = 0; x < def.boxWidth;) {
                const char16_t letter = def.Pixel(x, y);
                int end = x + 1;
                while (end < def.boxWidth && def.Pixel(end, y) == letter) ++end;
                if (letter != u'@') {
                    Add(u"rect", {{u"x", Num(def.boxCol + x)},
                                  {u"y", Num(def.boxRow + y)},
                                  {u"width", Num(end - x)},
                                  {u"height", "1"},
                                  {u"fill", Colour(def, letter)}});
                }
                x = end;
            }
        }
    }

    const KGChartSymbolLibrary& m_library;
    const KGChartColorTable& m_colours;
    KGMarkup& m_doc;
    std::vector<const KGChartSymbolRecord*> m_drawing;
};

std::string ViewBox(const KGChartSymbolDefinition& def) {
    return Num(def.boxCol) + " " + Num(def.boxRow) + " " + Num(def.boxWidth) + " " +
           Num(def.boxHeight);
}

// Hundredths of a millimetre a box unit stands for.
int UnitHundredths(const KGChartSymbolDefinition& def) {
    return def.raster ? kPenUnit : 1;
}

}  // namespace

PlixUnicodeString KGChartSymbolLibrary::GetSvg(KGChartSymbolKind kind,
                                               const PlixUnicodeString& name,
                                               const KGChartColorTable& colours) const {
    const KGChartSymbolRecord* record = Find(kind, name);
    if (record == nullptr) return PlixUnicodeString();
    const KGChartSymbolDefinition& def = record->definitions[0];
    KGMarkup doc;
    doc.AddElem(u"svg");
    doc.SetAttrib(u"xmlns", u"http://www.w3.org/2000/svg");
    doc.SetAttrib(u"width", Millimetres(def.boxWidth * UnitHundredths(def)));
    doc.SetAttrib(u"height", Millimetres(def.boxHeight * UnitHundredths(def)));
    doc.SetAttrib(u"viewBox", Text(ViewBox(def)));
    if (def.raster) doc.SetAttrib(u"shape-rendering", u"crispEdges");
    doc.AddChildElem(u"title", record->name + PlixUnicodeString(": ") + record->description);
    Painter(*this, colours, doc).Draw(*record);
    return doc.GetDoc();
}

bool KGChartSymbolLibrary::SaveGallery(const PlixUnicodeString& path,
                                       const KGChartColorTable& colours,
                                       const PlixUnicodeString& title,
                                       const PlixArray<KGChartSymbolKind>& kinds) const {
    // Cells of a fixed size; a picture is drawn at 4 px to the millimetre, smaller when it
    // would not fit.
    constexpr int kColumns = 10, kCellWidth = 120, kCellHeight = 120, kPicture = 96, kMargin = 10;
    static const char* const kHeadings[] = {"Symbols", "Line styles", "Patterns"};
    KGMarkup doc;
    doc.AddElem(u"svg");
    doc.SetAttrib(u"xmlns", u"http://www.w3.org/2000/svg");
    doc.SetAttrib(u"font-family", u"sans-serif");
    doc.SetAttrib(u"font-size", 10);
    Painter painter(*this, colours, doc);
    auto text = [&doc](int x, int y, const PlixUnicodeString& content, const char* extra) {
        doc.AddChildElem(u"text", content);
        doc.SetChildAttrib(u"x", x);
        doc.SetChildAttrib(u"y", y);
        if (*extra) doc.SetChildAttrib(u"font-weight", Text(extra));
    };
    doc.AddChildElem(u"rect");
    doc.SetChildAttrib(u"width", u"100%");
    doc.SetChildAttrib(u"height", u"100%");
    doc.SetChildAttrib(u"fill", u"#FFFFFF");
    text(kMargin, 24, title, "bold");
    int y = 40;
    for (KGChartSymbolKind kind : kinds) {
        const int k = static_cast<int>(kind);
        if (k < 0 || k > 2) continue;
        y += 20;
        text(kMargin, y, Text(std::string(kHeadings[k]) + " (" + Num(GetCount(kind)) + ")"),
             "bold");
        y += 10;
        int column = 0;
        for (const PlixUnicodeString& name : GetNames(kind)) {
            const KGChartSymbolRecord& record = *Find(kind, name);
            const KGChartSymbolDefinition& def = record.definitions[0];
            const int x = kMargin + column * kCellWidth;
            // Box units to pixels: hundredths of a millimetre over 25.
            const double natural = UnitHundredths(def) / 25.0;
            const double fit = std::min({natural, kPicture / std::max(1.0, 1.0 * def.boxWidth),
                                         kPicture / std::max(1.0, 1.0 * def.boxHeight)});
            const int w = std::max(1, static_cast<int>(def.boxWidth * fit + 0.5));
            const int h = std::max(1, static_cast<int>(def.boxHeight * fit + 0.5));
            doc.AddChildElem(u"rect");
            doc.SetChildAttrib(u"x", x);
            doc.SetChildAttrib(u"y", y);
            doc.SetChildAttrib(u"width", kCellWidth - 4);
            doc.SetChildAttrib(u"height", kCellHeight - 4);
            doc.SetChildAttrib(u"fill", u"none");
            doc.SetChildAttrib(u"stroke", u"#D0D0D0");
            doc.AddChildElem(u"svg");
            doc.SetChildAttrib(u"x", x + (kCellWidth - 4 - w) / 2);
            doc.SetChildAttrib(u"y", y + 4 + (kPicture - h) / 2);
            doc.SetChildAttrib(u"width", w);
            doc.SetChildAttrib(u"height", h);
            doc.SetChildAttrib(u"viewBox", Text(ViewBox(def)));
            doc.IntoElem();
            painter.Draw(record);
            doc.OutOfElem();
            text(x + 4, y + kCellHeight - 10, record.name, "");
            if (++column == kColumns) {
                column = 0;
                y += kCellHeight;
            }
        }
        if (column != 0) y += kCellHeight;
    }
    const int width = 2 * kMargin + kColumns * kCellWidth;
    doc.SetAttrib(u"width", width);
    doc.SetAttrib(u"height", y + kMargin);
    doc.SetAttrib(u"viewBox", Text("0 0 " + Num(width) + " " + Num(y + kMargin)));
    return doc.Save(path);
}

}  // namespace KGC
