// Choosing a feature's style among the look-up styles of its object class.
#include "ChartBase/KGChartStyleChoice.h"

#include "Base/KGNumber.h"
#include "ChartBase/KGChartLookupTable.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

bool IsCatchAll(const KGChartAttributeCondition& condition) {
    return condition.AttributeAcronym.IsEmpty();
}

// A decimal number as S-57 writes one: optional sign, digits, at most one point.
bool IsNumber(const PlixUnicodeString& text) {
    int digits = 0;
    int points = 0;
    for (int i = 0; i < text.GetLength(); ++i) {
        const char16_t c = text[i];
        if (c >= u'0' && c <= u'9') {
            ++digits;
        } else if (c == u'.') {
            if (++points > 1) return false;
        } else if (!(i == 0 && (c == u'-' || c == u'+'))) {
            return false;
        }
    }
    return digits > 0;
}

bool SameElement(PlixUnicodeString a, PlixUnicodeString b) {
    a.Trim();
    b.Trim();
    if (IsNumber(a) && IsNumber(b)) return kgatof(a) == kgatof(b);
    return a == b;
}

// Equal element by element, in order; a single value is a list of one.
bool SameValue(const PlixUnicodeString& wanted, const PlixUnicodeString& value) {
    if (wanted.Find(u',') < 0 && value.Find(u',') < 0) return SameElement(wanted, value);
    PlixArray<PlixUnicodeString> a;
    PlixArray<PlixUnicodeString> b;
    wanted.Split(a, u",", false);
    value.Split(b, u",", false);
    if (a.GetSize() != b.GetSize()) return false;
    for (int i = 0; i < a.GetSize(); ++i) {
        if (!SameElement(a[i], b[i])) return false;
    }
    return true;
}

template <typename Style>
int Choose(const PlixArray<Style*>& styles, const KGFeatureAttributes& feature) {
    int chosen = -1;
    int most = -1;
    for (int i = 0; i < styles.GetSize(); ++i) {
        if (styles[i] == nullptr) continue;
        const KGChartStyleMatch match = KGMatchConditions(styles[i]->AttributeConditions, feature);
        // Strictly more: of equals the first in table order stays.
        if (match.matches && match.conditions > most) {
            chosen = i;
            most = match.conditions;
        }
    }
    return chosen;
}

template <typename Style>
const Style* ChooseFrom(const PlixArray<Style*>& styles, const KGFeatureAttributes& feature) {
    const int i = Choose(styles, feature);
    return i < 0 ? nullptr : styles[i];
}

}  // namespace

bool KGConditionHolds(const KGChartAttributeCondition& condition,
                      const KGFeatureAttributes& feature) {
    if (IsCatchAll(condition)) return true;
    const PlixUnicodeString* value = feature.Find(condition.AttributeAcronym);
    const bool hasValue = value != nullptr && !value->IsEmpty();
    if (condition.TextValue == PlixUnicodeString(u"?")) return !hasValue;
    if (!hasValue) return false;
    if (condition.IntegerValue != 0) {
        PlixUnicodeString number(*value);
        number.Trim();
        return IsNumber(number) && kgatof(number) == condition.IntegerValue;
    }
    if (!condition.TextValue.IsEmpty()) return SameValue(condition.TextValue, *value);
    return true;  // the acronym alone: any value
}

KGChartStyleMatch KGMatchConditions(const PlixArray<KGChartAttributeCondition>& conditions,
                                    const KGFeatureAttributes& feature) {
    KGChartStyleMatch match;
    for (int i = 0; i < conditions.GetSize(); ++i) {
        if (IsCatchAll(conditions[i])) continue;
        ++match.conditions;
        if (match.failedCondition < 0 && !KGConditionHolds(conditions[i], feature)) {
            match.failedCondition = i;
        }
    }
    match.matches = match.failedCondition < 0;
    return match;
}

int KGChooseStyle(const PlixArray<KGChartPointObjectStyle*>& styles,
                  const KGFeatureAttributes& feature) {
    return Choose(styles, feature);
}

int KGChooseStyle(const PlixArray<KGChartLineObjectStyle*>& styles,
                  const KGFeatureAttributes& feature) {
    return Choose(styles, feature);
}

int KGChooseStyle(const PlixArray<KGChartAreaObjectStyle*>& styles,
                  const KGFeatureAttributes& feature) {
    return Choose(styles, feature);
}

const KGChartPointObjectStyle* KGChooseStyle(const KGChartLookupPointItems& items,
                                             const KGFeatureAttributes& feature) {
    return ChooseFrom(items.Styles, feature);
}

const KGChartLineObjectStyle* KGChooseStyle(const KGChartLookupLineItems& items,
                                            const KGFeatureAttributes& feature) {
    return ChooseFrom(items.Styles, feature);
}

const KGChartAreaObjectStyle* KGChooseStyle(const KGChartLookupAreaItems& items,
                                            const KGFeatureAttributes& feature) {
    return ChooseFrom(items.Styles, feature);
}

}  // namespace KGC
