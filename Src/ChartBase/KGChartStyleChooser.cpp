// The style choice prepared per object class: conditions decoded once, styles in the order the
// rule tries them, the feature's values read once per attribute.
#include "ChartBase/KGChartStyleChooser.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "ChartBase/KGChartLookupTable.h"
#include "KGAcronymKey.h"
#include "KGChartConditionMatch.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

using condition::View;

// The attributes of an object class's conditions that the quick test covers, one bit each, and
// that a feature's values are kept for on the stack. Real object classes have up to 16; the
// pseudo-classes of the cartographic symbols read dozens ("$SCODE" values taken as acronyms).
constexpr size_t kMaskedSlots = 64;

// A list in the form the tables and S-57 usually write: every element without blanks around it
// and either a word or digits without leading zeros. Two such texts are the same value exactly
// when they are the same text, which spares the element-by-element comparison.
bool IsPlain(View text) {
    while (true) {
        const size_t comma = text.find(u',');
        const View element = text.substr(0, comma);
        if (condition::Trimmed(element).size() != element.size()) return false;
        if (condition::IsSmallInteger(element)) {
            if (condition::WithoutLeadingZeros(element).size() != element.size()) return false;
        } else {
            for (char16_t c : element) {
                // A number of another form ("2.0", "+2") equals texts other than itself.
                if ((c >= u'0' && c <= u'9') || c == u'.' || c == u'+' || c == u'-') return false;
            }
        }
        if (comma == View::npos) return true;
        text.remove_prefix(comma + 1);
    }
}

struct Condition {
    enum class Test : uint8_t { Absent, Any, Integer, Text };
    Test test = Test::Any;
    bool plain = false;
    uint32_t slot = 0;  // the attribute, an index into the class's acronyms
    int32_t integer = 0;
    View text;  // the table's own text
};

struct Candidate {
    const void* style = nullptr;
    // Attributes the feature must have with a value, and must not: a quick test before the
    // conditions themselves.
    uint64_t present = 0;
    uint64_t absent = 0;
    uint32_t first = 0;  // its conditions in ObjectClass::conditions
    uint32_t count = 0;
};

struct ObjectClass {
    std::vector<std::u16string> acronyms;  // sorted as the feature's map sorts them
    std::vector<uint64_t> packed;          // the same, packed; empty when one cannot be
    std::vector<Condition> conditions;
    // Most conditions first, table order among equals: the first that holds is the choice.
    std::vector<Candidate> candidates;
};

// The feature's value of one attribute of the class, read once. Left without initialisers: a
// feature fills only as many as its class has attributes.
struct Value {
    const char16_t* data;  // not a view: a view would be zeroed for every slot of the array
    size_t size;
    bool present;  // with a value: "" counts as absent
    bool integer;  // digits alone, in n
    bool plain;
    long long n;
};

template <typename Style>
ObjectClass Prepare(const PLIX::PlixArray<Style*>& styles) {
    ObjectClass c;
    for (const Style* style : styles) {
        if (style == nullptr) continue;
        for (const auto& condition : style->AttributeConditions) {
            if (!condition::IsCatchAll(condition))
                c.acronyms.push_back(condition.AttributeAcronym.Str());
        }
    }
    std::sort(c.acronyms.begin(), c.acronyms.end());
    c.acronyms.erase(std::unique(c.acronyms.begin(), c.acronyms.end()), c.acronyms.end());
    for (const auto& acronym : c.acronyms) {
        uint64_t key = 0;
        if (!acronymkey::Pack(acronym, key)) {
            c.packed.clear();
            break;
        }
        c.packed.push_back(key);
    }
    for (const Style* style : styles) {
        if (style == nullptr) continue;
        Candidate candidate;
        candidate.style = style;
        candidate.first = static_cast<uint32_t>(c.conditions.size());
        for (const auto& source : style->AttributeConditions) {
            if (condition::IsCatchAll(source)) continue;
            Condition cond;
            cond.slot = static_cast<uint32_t>(std::lower_bound(c.acronyms.begin(), c.acronyms.end(),
                                                               source.AttributeAcronym.Str()) -
                                              c.acronyms.begin());
            cond.text = source.TextValue.Str();
            cond.integer = source.IntegerValue;
            const uint64_t bit = cond.slot < kMaskedSlots ? uint64_t{1} << cond.slot : 0;
            // The order of these tests is the rule's: "?" before the value kinds.
            if (cond.text == u"?") {
                cond.test = Condition::Test::Absent;
                candidate.absent |= bit;
            } else {
                candidate.present |= bit;
                if (cond.integer != 0) {
                    cond.test = Condition::Test::Integer;
                } else if (!cond.text.empty()) {
                    cond.test = Condition::Test::Text;
                    cond.plain = IsPlain(cond.text);
                }
            }
            c.conditions.push_back(cond);
            ++candidate.count;
        }
        c.candidates.push_back(candidate);
    }
    std::stable_sort(c.candidates.begin(), c.candidates.end(),
                     [](const Candidate& a, const Candidate& b) { return a.count > b.count; });
    return c;
}

// The full comparisons, for values in other forms, kept out of line: inlined, they made the loop
// over the candidates larger and slower for the usual values that never need them.
__attribute__((noinline)) bool SameValue(View wanted, View value) {
    return condition::SameValue(wanted, value);
}
__attribute__((noinline)) bool SameInteger(int32_t wanted, View value) {
    return condition::SameInteger(wanted, value);
}

bool Holds(const Condition& cond, const Value& value) {
    if (cond.test == Condition::Test::Absent) return !value.present;
    if (!value.present) return false;
    const View text(value.data, value.size);
    switch (cond.test) {
        case Condition::Test::Absent:
        case Condition::Test::Any:
            return true;
        case Condition::Test::Integer:
            if (value.integer) return value.n == cond.integer;
            return SameInteger(cond.integer, text);
        case Condition::Test::Text:
            if (cond.plain && value.plain) return text == cond.text;
            return SameValue(cond.text, text);
    }
    return false;
}

void ReadValue(const PlixUnicodeString& text16, Value& value) {
    const View text = text16.Str();
    value.present = !text.empty();
    if (!value.present) return;
    value.data = text.data();
    value.size = text.size();
    value.plain = IsPlain(text);
    value.n = 0;
    value.integer = condition::ReadSmallInteger(text, value.n);
}

// Pairs the feature's attributes with the class's in one pass (both lists are sorted alike),
// comparing packed acronyms; false, having read nothing reliable, when one of the feature's
// acronyms cannot be packed.
bool ReadPacked(const ObjectClass& c, const KGFeatureAttributes& feature, Value* values) {
    const size_t count = c.packed.size();
    size_t slot = 0;
    for (const auto& entry : feature) {
        if (slot == count) break;
        uint64_t key = 0;
        if (!acronymkey::Pack(entry.first.Str(), key)) return false;
        while (slot < count && c.packed[slot] < key) values[slot++].present = false;
        if (slot < count && c.packed[slot] == key) ReadValue(entry.second, values[slot++]);
    }
    while (slot < count) values[slot++].present = false;
    return true;
}

void ReadByText(const ObjectClass& c, const KGFeatureAttributes& feature, Value* values) {
    auto entry = feature.begin();
    for (size_t slot = 0; slot < c.acronyms.size(); ++slot) {
        values[slot].present = false;
        while (entry != feature.end() && entry->first.Str() < c.acronyms[slot]) ++entry;
        if (entry != feature.end() && entry->first.Str() == c.acronyms[slot])
            ReadValue(entry->second, values[slot]);
    }
}

// Reads the feature's value of every attribute of the class into values; returns the mask of
// those present with a value.
uint64_t ReadValues(const ObjectClass& c, const KGFeatureAttributes& feature, Value* values) {
    if (c.packed.empty() || !ReadPacked(c, feature, values)) ReadByText(c, feature, values);
    uint64_t present = 0;
    const size_t masked = std::min(c.acronyms.size(), kMaskedSlots);
    for (size_t slot = 0; slot < masked; ++slot) {
        if (values[slot].present) present |= uint64_t{1} << slot;
    }
    return present;
}

const void* Choose(const ObjectClass& c, const KGFeatureAttributes& feature) {
    Value onStack[kMaskedSlots];
    std::vector<Value> onHeap;
    Value* values = onStack;
    if (c.acronyms.size() > kMaskedSlots) {
        onHeap.resize(c.acronyms.size());
        values = onHeap.data();
    }
    const uint64_t present = ReadValues(c, feature, values);
    for (const Candidate& candidate : c.candidates) {
        if ((candidate.present & ~present) != 0 || (candidate.absent & present) != 0) continue;
        const Condition* cond = c.conditions.data() + candidate.first;
        const Condition* end = cond + candidate.count;
        while (cond != end && Holds(*cond, values[cond->slot])) ++cond;
        if (cond == end) return candidate.style;
    }
    return nullptr;
}

// Object classes by acronym. An acronym that packs into one number (all real ones) is found in
// an open-addressed table: a host asks once per feature, and
// a general hash map's division and node hops were a third of the choice.
class Classes {
public:
    template <typename Map>
    explicit Classes(const Map& table) {
        m_bits = 4;
        while ((size_t{1} << m_bits) < 2 * static_cast<size_t>(table.GetCount())) ++m_bits;
        m_slots.assign(size_t{1} << m_bits, Slot{});
        for (const auto& entry : table) {
            const uint32_t index = static_cast<uint32_t>(m_classes.size());
            m_classes.push_back(Prepare(entry.second.Styles));
            uint64_t key = 0;
            if (!acronymkey::Pack(entry.first.Str(), key)) {
                m_other.emplace(entry.first.Str(), index);
                continue;
            }
            size_t at = acronymkey::Place(key, m_bits);
            while (m_slots[at].key != 0) at = (at + 1) & (m_slots.size() - 1);
            m_slots[at] = Slot{key, index};
        }
    }
    const ObjectClass* Find(const std::u16string& acronym) const {
        uint64_t key = 0;
        if (!acronymkey::Pack(acronym, key)) {
            const auto found = m_other.find(acronym);
            return found == m_other.end() ? nullptr : &m_classes[found->second];
        }
        for (size_t at = acronymkey::Place(key, m_bits);; at = (at + 1) & (m_slots.size() - 1)) {
            if (m_slots[at].key == key) return &m_classes[m_slots[at].index];
            if (m_slots[at].key == 0) return nullptr;
        }
    }

private:
    struct Slot {
        uint64_t key = 0;  // 0: empty (a packed key is never 0)
        uint32_t index = 0;
    };
    std::vector<ObjectClass> m_classes;
    std::vector<Slot> m_slots;  // a power of two, at most half full
    int m_bits = 4;
    std::unordered_map<std::u16string, uint32_t> m_other;
};

template <typename Style>
const Style* ChooseIn(const Classes& classes, const PlixUnicodeString& acronym,
                      const KGFeatureAttributes& feature) {
    const ObjectClass* c = classes.Find(acronym.Str());
    // As the table's queries do, an acronym it does not hold gets the "######" entries.
    if (c == nullptr) c = classes.Find(u"######");
    return c == nullptr ? nullptr : static_cast<const Style*>(Choose(*c, feature));
}

}  // namespace

struct KGChartStyleChooser::Private {
    explicit Private(const KGChartLookupTable& table)
        : point(table.GetPointTable()), line(table.GetLineTable()), area(table.GetAreaTable()) {}
    Classes point;
    Classes line;
    Classes area;
};

KGChartStyleChooser::KGChartStyleChooser(const KGChartLookupTable& table)
    : d(std::make_unique<Private>(table)) {}

KGChartStyleChooser::~KGChartStyleChooser() = default;
KGChartStyleChooser::KGChartStyleChooser(KGChartStyleChooser&&) noexcept = default;
KGChartStyleChooser& KGChartStyleChooser::operator=(KGChartStyleChooser&&) noexcept = default;

const KGChartPointObjectStyle* KGChartStyleChooser::ChoosePoint(
    const PlixUnicodeString& acronym, const KGFeatureAttributes& feature) const {
    return ChooseIn<KGChartPointObjectStyle>(d->point, acronym, feature);
}

const KGChartLineObjectStyle* KGChartStyleChooser::ChooseLine(
    const PlixUnicodeString& acronym, const KGFeatureAttributes& feature) const {
    return ChooseIn<KGChartLineObjectStyle>(d->line, acronym, feature);
}

const KGChartAreaObjectStyle* KGChartStyleChooser::ChooseArea(
    const PlixUnicodeString& acronym, const KGFeatureAttributes& feature) const {
    return ChooseIn<KGChartAreaObjectStyle>(d->area, acronym, feature);
}

}  // namespace KGC
