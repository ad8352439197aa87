// How a feature's attribute value compares with a look-up condition: the comparisons shared by
// the one-off style choice and the prepared chooser, so both decide alike.
#pragma once

#include <cstdint>
#include <string_view>

#include "ChartBase/KGChartStyle.h"

namespace KGC {
namespace condition {

using View = std::u16string_view;

// What PlixUnicodeString::Trim() leaves.
View Trimmed(View text);
// Digits alone, few enough that a double holds the value exactly.
bool IsSmallInteger(View text);
View WithoutLeadingZeros(View digits);
// Equal element by element, in order, numbers as numbers; a single value is a list of one.
bool SameValue(View wanted, View value);
// The value, trimmed, is a number equal to wanted.
bool SameInteger(int32_t wanted, View value);

inline bool IsCatchAll(const KGChartAttributeCondition& c) {
    return c.AttributeAcronym.IsEmpty();
}

}  // namespace condition
}  // namespace KGC
