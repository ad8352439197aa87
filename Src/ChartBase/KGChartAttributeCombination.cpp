// The attribute combination field of a look-up entry ("BOYSHP2COLOUR3") turned into the
// conditions under which the entry applies.
#include <algorithm>
#include <string>

#include "Base/KGNumber.h"
#include "Base/KGToolkit.h"
#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGS57Dictionary.h"
#include "KGAcronymKey.h"
#include "KGChartLookupFields.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

constexpr size_t kAcronymLength = 6;

bool IsLetter(char16_t ch) {
    return KGToolkit::IsBigLetter(ch) || KGToolkit::IsLittleLetter(ch);
}

bool IsNumeric(KGS57DefineInfo::AttributeType type) {
    return type == KGS57DefineInfo::AttrEnumerated || type == KGS57DefineInfo::AttrInteger;
}

// How many conditions the loop below appends: one per acronym, each acronym followed by a value
// that runs up to the next letter.
size_t CountConditions(std::u16string_view text) {
    size_t count = 0;
    size_t pos = 0;
    while (pos < text.size()) {
        ++count;
        pos = std::min(text.size(), pos + kAcronymLength);
        while (pos < text.size() && !IsLetter(text[pos])) ++pos;
    }
    return count;
}

}  // namespace

namespace lookup {

bool AttributeTypes::Find(const PlixUnicodeString& acronym, KGS57DefineInfo::AttributeType& type) {
    uint64_t key = 0;
    if (!acronymkey::Pack(acronym.Str(), key))
        return KGS57Config::GetInstance()->GetS57AttributeType(acronym, type);
    Slot& slot = m_slots[acronymkey::Place(key, 8)];
    if (slot.key != key) {
        slot.key = key;
        slot.type = KGS57DefineInfo::AttrUnknown;
        slot.known = KGS57Config::GetInstance()->GetS57AttributeType(acronym, slot.type);
    }
    type = slot.type;
    return slot.known;
}

void ParseConditions(View text, PLIX::PlixArray<KGChartAttributeCondition>& conditions,
                     AttributeTypes* types) {
    if (text.empty()) {
        // An entry without conditions applies to every feature: one catch-all condition.
        conditions.Add(KGChartAttributeCondition());
        return;
    }
    const KGS57Config* registry = KGS57Config::GetInstance();
    if (conditions.IsEmpty()) conditions.Items().reserve(CountConditions(text));
    size_t pos = 0;
    while (pos < text.size()) {
        // Filled where it stands in the array, sparing a move of its two strings.
        KGChartAttributeCondition& condition = conditions.Items().emplace_back();
        const size_t acronymLength = std::min(kAcronymLength, text.size() - pos);
        Assign(condition.AttributeAcronym, text.substr(pos, acronymLength));
        pos += acronymLength;
        if (pos == text.size()) break;
        // There is no separator: the value runs up to the next letter, which starts the next
        // acronym. Blanks, commas and "?" belong to the value.
        size_t end = pos;
        while (end < text.size() && !IsLetter(text[end])) ++end;
        const View value = text.substr(pos, end - pos);
        pos = end;
        // An attribute the dictionary does not know keeps neither value.
        // Only the type decides, so the registry is asked for it alone rather than for a copy
        // of the whole record with its allowed values.
        KGS57DefineInfo::AttributeType type = KGS57DefineInfo::AttrUnknown;
        const bool known = types != nullptr
                               ? types->Find(condition.AttributeAcronym, type)
                               : registry->GetS57AttributeType(condition.AttributeAcronym, type);
        if (known) {
            if (IsNumeric(type)) {
                condition.IntegerValue = ReadInt32(value);
            } else {
                Assign(condition.TextValue, value);
            }
        }
    }
}

}  // namespace lookup

void KGChartLookupTable::ParseAttributeCombination(
    PlixUnicodeString& entry, PLIX::PlixArray<KGChartAttributeCondition>& conditions) {
    const PlixUnicodeString field = lookup::CutFront(entry, &lookup::EntryCursor::Cut);
    lookup::ParseConditions(field.Str(), conditions);
}

}  // namespace KGC
