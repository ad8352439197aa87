// The quoted fields of a look-up entry other than the attribute combination and the
// symbolization instructions.
#include "KGChartLookupFields.h"

#include <climits>

#include "Base/KGNumber.h"
#include "ChartBase/KGChartLookupTable.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace lookup {

PlixUnicodeString CutQuotedField(PlixUnicodeString& entry) {
    PlixUnicodeString field;
    const int first = entry.Find(u'"');
    const int second = first < 0 ? -1 : entry.Find(u'"', first + 1);
    if (second >= 0) {
        field = entry.Mid(first + 1, second - first - 1);
        entry.Delete(first, second + 1);
    }
    entry.TrimLeft(u',');
    return field;
}

int32_t ToInt32(long long value) {
    if (value > INT_MAX) return INT_MAX;
    if (value < INT_MIN) return INT_MIN;
    return static_cast<int32_t>(value);
}

}  // namespace lookup

PlixUnicodeString KGChartLookupTable::ParseObjectAcronym(PlixUnicodeString& entry) {
    const int first = entry.Find(u'"');
    const int second = first < 0 ? -1 : entry.Find(u'"', first + 1);
    if (second < 0 || second - first != 7) return PlixUnicodeString();
    return lookup::CutQuotedField(entry);
}

int32_t KGChartLookupTable::ParseDisplayPriority(PlixUnicodeString& entry) {
    PlixUnicodeString field = lookup::CutQuotedField(entry);
    return field.IsEmpty() ? 0 : lookup::ToInt32(kgatol(field));
}

PlixUnicodeString KGChartLookupTable::ParseRadar(PlixUnicodeString& entry) {
    return lookup::CutQuotedField(entry);
}

KGS52DisplayCategory KGChartLookupTable::ParerDisplayCategory(PlixUnicodeString& entry) {
    PlixUnicodeString field = lookup::CutQuotedField(entry);
    if (field.IsEmpty()) return KGChartDisplayCategory::Standard;
    return KGChartDisplayCategory::GetDisplayCategory(field);
}

int32_t KGChartLookupTable::ParseGroup(PlixUnicodeString& entry) {
    const int first = entry.Find(u'"');
    const int second = first < 0 ? -1 : entry.Find(u'"', first + 1);
    PlixUnicodeString field;
    if (second >= 0) field = entry.Mid(first + 1, second - first - 1);
    // The viewing group is the last field: whatever follows it is ignored.
    entry.Empty();
    return field.IsEmpty() ? 0 : lookup::ToInt32(kgatol(field));
}

}  // namespace KGC
