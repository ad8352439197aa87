// KGChartStyleChoice: which of an object class's look-up styles a feature gets, decided by the
// attribute conditions of each style and the feature's attribute values.
//
// The rule, as the S-52 presentation library applies it:
// - A style matches when each of its conditions holds. A condition with a value holds when the
//   feature has the attribute with an equal value: numbers compare as numbers ("10" equals
//   "10.0"), a list compares element by element in order ("1,3" is not "3,1"). A condition "?"
//   holds when the feature lacks the attribute or has it without a value (""). A condition
//   without a value (the acronym alone, as in "CANALS","CONDTN",...) holds when the feature has
//   the attribute with a value, whatever it is. Enumerated and integer conditions hold 0 for
//   "no value" (S-57 enumerations start at 1), so 0 reads as the acronym alone.
// - The catch-all condition of an empty attribute combination counts as no condition: a
//   catch-all style always matches.
// - Of the matching styles the one with the most conditions wins; of equals, the first in table
//   order. When none matches (the object class has no catch-all), there is no style.
//
// Examples, from the real tables. A lateral buoy (BOYLAT) of shape 2 and colour 3 (red) gets
// the entry "BOYSHP2COLOUR3" (two conditions) over "BOYSHP2" (one) and the catch-all; with
// colour "3,4,3" it gets "BOYSHP2COLOUR3,4,3" if the table has it, else "BOYSHP2", since "3"
// and "3,4,3" are different lists. A canal (CANALS) with CONDTN "1" gets the entry "CONDTN"
// (any value); without CONDTN, or with CONDTN "", it gets the catch-all.
//
// Safe to call from several threads at once on styles nobody is loading.
#pragma once

#include "Base/PlixArray.h"
#include "Base/PlixDict.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartStyle.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class KGChartLookupPointItems;
class KGChartLookupLineItems;
class KGChartLookupAreaItems;

// A feature's attributes as S-57 writes them: acronym to value text ("3", "1,3", and "" for an
// attribute present without a value). An absent attribute is not in the map.
using KGFeatureAttributes = PLIX::PlixDict<PLIX::PlixUnicodeString, PLIX::PlixUnicodeString>;

// How one style's conditions fare against a feature.
struct VLCHARTBASE_API KGChartStyleMatch {
    bool matches = false;
    // The conditions that count: the catch-all counts none.
    int conditions = 0;
    // The first condition that does not hold; -1 when the style matches.
    int failedCondition = -1;
};

// Whether one condition holds for the feature. The catch-all condition always holds.
VLCHARTBASE_API bool KGConditionHolds(const KGChartAttributeCondition& condition,
                                      const KGFeatureAttributes& feature);

VLCHARTBASE_API KGChartStyleMatch
KGMatchConditions(const PLIX::PlixArray<KGChartAttributeCondition>& conditions,
                  const KGFeatureAttributes& feature);

// The index into styles of the style the feature gets, or -1. Null styles never match.
VLCHARTBASE_API int KGChooseStyle(const PLIX::PlixArray<KGChartPointObjectStyle*>& styles,
                                  const KGFeatureAttributes& feature);
VLCHARTBASE_API int KGChooseStyle(const PLIX::PlixArray<KGChartLineObjectStyle*>& styles,
                                  const KGFeatureAttributes& feature);
VLCHARTBASE_API int KGChooseStyle(const PLIX::PlixArray<KGChartAreaObjectStyle*>& styles,
                                  const KGFeatureAttributes& feature);

// The style itself, or null: a pointer owned by the table the items came from.
VLCHARTBASE_API const KGChartPointObjectStyle* KGChooseStyle(const KGChartLookupPointItems& items,
                                                             const KGFeatureAttributes& feature);
VLCHARTBASE_API const KGChartLineObjectStyle* KGChooseStyle(const KGChartLookupLineItems& items,
                                                            const KGFeatureAttributes& feature);
VLCHARTBASE_API const KGChartAreaObjectStyle* KGChooseStyle(const KGChartLookupAreaItems& items,
                                                            const KGFeatureAttributes& feature);

}  // namespace KGC
