// Colour tables: colour tokens to RGB, read from a "Colors" file.
#include "ChartBase/KGChartColorTable.h"

#include "Base/KGMarkup.h"
#include "Base/KGNumber.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

const char16_t kBlanks[] = u"\r\n\t ";

// Reads "red,green,blue"; false when the text has no usable comma. Deliberately lenient in
// the middle: "10,20" and "10,,20" both give green 0 and blue 20.
bool ParseRgb(PlixUnicodeString text, PLIX::PLIXCOLOR& colour) {
    text.Trim(kBlanks);
    if (text.IsEmpty()) return false;
    int comma = text.Find(u',');
    if (comma <= 0) return false;
    PlixUnicodeString red = text.Left(comma);
    text.Delete(0, comma + 1);
    text.TrimLeft(kBlanks);

    PlixUnicodeString green;
    comma = text.Find(u',');
    if (comma > 0) {
        green = text.Left(comma);
        text.Delete(0, comma + 1);
        text.TrimLeft(kBlanks);
    } else if (comma == 0) {
        // An empty green component: what follows its comma is blue.
        text.Delete(0, 1);
        text.TrimLeft(kBlanks);
    }
    if (text.IsEmpty()) return false;
    colour = PLIX::PLIXRGB(kgatoi(red), kgatoi(green), kgatoi(text));
    return true;
}

}  // namespace

bool KGChartColorTable::LoadColorTable(const PlixUnicodeString& path) {
    return LoadXml(path);
}

bool KGChartColorTable::LoadXml(const PlixUnicodeString& path) {
    KGMarkup doc;
    if (!doc.Load(path)) return false;
    if (!doc.FindElem(u"Colors")) return false;
    doc.IntoElem();
    while (doc.FindElem(u"Color")) {
        PlixUnicodeString token = doc.GetAttrib(u"token");
        if (token.IsEmpty() || !doc.FindChildElem(u"RGB")) continue;
        PLIX::PLIXCOLOR colour = 0;
        if (ParseRgb(doc.GetChildData(), colour)) m_colors[token] = colour;
    }
    return true;
}

PLIX::PLIXCOLOR KGChartColorTable::GetRGBColor(const PlixUnicodeString& token) const {
    const PLIX::PLIXCOLOR* colour = m_colors.Find(token);
    return colour ? *colour : PLIX::PLIXRGB(0, 0, 0);
}

}  // namespace KGC
