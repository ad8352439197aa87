// Choosing a feature's style among the look-up styles of its object class.
#include "ChartBase/KGChartStyleChoice.h"

#include <string>

#include "Base/KGNumber.h"
#include "ChartBase/KGChartLookupTable.h"
#include "KGChartConditionMatch.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {
namespace condition {
namespace {

// The comparisons work on views of the condition and the feature's value: a host chooses once
// per feature over every style of the object class, so nothing here may allocate in the usual
// case.

bool IsBlank(char16_t c) {
    return c == u'\r' || c == u'\n' || c == u'\t' || c == u' ';
}

// A decimal number as S-57 writes one: optional sign, digits, at most one point.
bool IsNumber(View text) {
    int digits = 0;
    int points = 0;
    for (size_t i = 0; i < text.size(); ++i) {
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

double NumberOf(View text) {
    return kgatof(PlixUnicodeString(std::u16string(text)));
}

// Both trimmed; numbers compare as numbers.
bool SameElement(View a, View b) {
    a = Trimmed(a);
    b = Trimmed(b);
    if (a == b) return true;  // equal text is the same number or the same word
    if (IsSmallInteger(a) && IsSmallInteger(b)) {
        return WithoutLeadingZeros(a) == WithoutLeadingZeros(b);
    }
    if (IsNumber(a) && IsNumber(b)) return NumberOf(a) == NumberOf(b);
    return false;
}

}  // namespace

View Trimmed(View text) {
    size_t first = 0;
    while (first < text.size() && IsBlank(text[first])) ++first;
    size_t last = text.size();
    while (last > first && IsBlank(text[last - 1])) --last;
    return text.substr(first, last - first);
}

// Two such texts are the same number exactly when they are the same digits after their leading
// zeros.
bool IsSmallInteger(View text) {
    if (text.empty() || text.size() > 15) return false;
    for (char16_t c : text) {
        if (c < u'0' || c > u'9') return false;
    }
    return true;
}

View WithoutLeadingZeros(View digits) {
    size_t i = 0;
    while (i + 1 < digits.size() && digits[i] == u'0') ++i;
    return digits.substr(i);
}

bool SameValue(View wanted, View value) {
    while (true) {
        const size_t a = wanted.find(u',');
        const size_t b = value.find(u',');
        if ((a == View::npos) != (b == View::npos)) return false;  // lists of different lengths
        if (!SameElement(wanted.substr(0, a), value.substr(0, b))) return false;
        if (a == View::npos) return true;
        wanted.remove_prefix(a + 1);
        value.remove_prefix(b + 1);
    }
}

bool SameInteger(int32_t wanted, View value) {
    value = Trimmed(value);
    if (IsSmallInteger(value) && WithoutLeadingZeros(value).size() <= 10) {
        long long n = 0;
        for (char16_t c : value) n = n * 10 + (c - u'0');
        return n == wanted;
    }
    return IsNumber(value) && NumberOf(value) == wanted;
}

}  // namespace condition

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
