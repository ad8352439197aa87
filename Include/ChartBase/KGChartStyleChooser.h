// KGChartStyleChooser: the style choice of KGChooseStyle, prepared once for a whole look-up table,
// for a host that chooses a style for every feature of a chart. It answers as KGChooseStyle does
// on the acronym's items, without copying them and in a fraction of the time: each object
// class's conditions are read once, its styles kept in the order the rule tries them, and a
// feature's values are looked up once per attribute, not once per condition.
//
// Threads: once built, the Choose members may be called from several threads at once. The
// chooser points into the table's styles: the table must outlive it and must not be loaded again
// or have its styles deleted while the chooser is in use (build a new chooser after a load).
#pragma once

#include <memory>

#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartStyle.h"
#include "ChartBase/KGChartStyleChoice.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class KGChartLookupTable;

class VLCHARTBASE_API KGChartStyleChooser {
public:
    explicit KGChartStyleChooser(const KGChartLookupTable& table);
    ~KGChartStyleChooser();
    KGChartStyleChooser(KGChartStyleChooser&&) noexcept;
    KGChartStyleChooser& operator=(KGChartStyleChooser&&) noexcept;

    // The style a feature of the object class gets, or null when the table has no entry for the
    // acronym or none of its entries matches. The pointer is owned by the table.
    const KGChartPointObjectStyle* ChoosePoint(const PLIX::PlixUnicodeString& acronym,
                                               const KGFeatureAttributes& feature) const;
    const KGChartLineObjectStyle* ChooseLine(const PLIX::PlixUnicodeString& acronym,
                                             const KGFeatureAttributes& feature) const;
    const KGChartAreaObjectStyle* ChooseArea(const PLIX::PlixUnicodeString& acronym,
                                             const KGFeatureAttributes& feature) const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

}  // namespace KGC
