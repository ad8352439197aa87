// Choosing a feature's style among the look-up styles of its object class.
#include "ChartBase/KGChartStyleChoice.h"

#include <string>

#include "Base/KGNumber.h"
#include "ChartBase/KGChartLookupTable.h"
#include "KGChartConditionMatch.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {

namespace {

using condition::IsCatchAll;
using condition::View;

int CountConditions(const PlixArray<KGChartAttributeCondition>& conditions) {
    int count = 0;
    for (const auto& condition : conditions) count += IsCatchAll(condition) ? 0 : 1;
    return count;
}

// Whether the condition holds, given the feature's value for its acronym (null when absent).
bool HoldsFor(const KGChartAttributeCondition& condition, const PlixUnicodeString* value) {
    const bool hasValue = value != nullptr && !value->IsEmpty();
    if (condition.TextValue.Str() == u"?") return !hasValue;
    if (!hasValue) return false;
    if (condition.IntegerValue != 0)
        return condition::SameInteger(condition.IntegerValue, value->Str());
    if (!condition.TextValue.IsEmpty())
        return condition::SameValue(condition.TextValue.Str(), value->Str());
    return true;  // the acronym alone: any value
}

// A feature's attributes as a short list: a feature has a handful, and every style of the
// object class asks for them, so a scan of this list beats a search of the map each time.
class FeatureList {
public:
    explicit FeatureList(const KGFeatureAttributes& feature) : m_feature(feature) {
        if (feature.GetCount() > kMaxListed) return;
        for (const auto& entry : feature)
            m_entries[m_count++] = {&entry.first.Str(), &entry.second};
        m_listed = true;
    }
    const PlixUnicodeString* Find(const PlixUnicodeString& acronym) const {
        if (!m_listed) return m_feature.Find(acronym);
        const std::u16string& key = acronym.Str();
        for (int i = 0; i < m_count; ++i) {
            if (*m_entries[i].acronym == key) return m_entries[i].value;
        }
        return nullptr;
    }

private:
    static constexpr int kMaxListed = 16;
    struct Entry {
        const std::u16string* acronym;
        const PlixUnicodeString* value;
    };
    const KGFeatureAttributes& m_feature;
    Entry m_entries[kMaxListed] = {};
    int m_count = 0;
    bool m_listed = false;
};

bool AllHold(const PlixArray<KGChartAttributeCondition>& conditions, const FeatureList& feature) {
    for (const auto& condition : conditions) {
        if (IsCatchAll(condition)) continue;
        if (!HoldsFor(condition, feature.Find(condition.AttributeAcronym))) return false;
    }
    return true;
}

template <typename Style>
int Choose(const PlixArray<Style*>& styles, const KGFeatureAttributes& attributes) {
    const FeatureList feature(attributes);
    int chosen = -1;
    int most = -1;
    for (int i = 0; i < styles.GetSize(); ++i) {
        if (styles[i] == nullptr) continue;
        // Strictly more: of equals the first in table order stays, so a style with no more
        // conditions than the best so far cannot win and is not tested.
        const int conditions = CountConditions(styles[i]->AttributeConditions);
        if (conditions <= most) continue;
        if (AllHold(styles[i]->AttributeConditions, feature)) {
            chosen = i;
            most = conditions;
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
    return HoldsFor(condition, feature.Find(condition.AttributeAcronym));
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
