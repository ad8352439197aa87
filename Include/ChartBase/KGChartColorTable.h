// KGChartColorTable: one S-52 colour table, the map from colour token to 24-bit RGB colour
// for one colour mode of one display style.
//
// Threads: once loaded, the const members may be called from several threads at once; loading
// needs the table to itself.
#pragma once

#include "Base/PlixDict.h"
#include "Base/PlixTypes.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class VLCHARTBASE_API KGChartColorTable {
public:
    using ColorMap = PLIX::PlixDict<PLIX::PlixUnicodeString, PLIX::PLIXCOLOR>;

    KGChartColorTable() = default;

    // Same as LoadXml.
    bool LoadColorTable(const PLIX::PlixUnicodeString& path);
    // Adds the colours of a "Colors" file to the table (a token already held takes the new
    // colour); false when the file cannot be read or has no "Colors" root.
    bool LoadXml(const PLIX::PlixUnicodeString& path);
    // The token's colour; black for a token the table does not hold (exact, case-sensitive).
    PLIX::PLIXCOLOR GetRGBColor(const PLIX::PlixUnicodeString& token) const;

    int GetCount() const { return m_colors.GetCount(); }
    // Every token with its colour, in token order.
    const ColorMap& GetColors() const { return m_colors; }

private:
    ColorMap m_colors;
};

}  // namespace KGC
