// The attribute combination field of a look-up entry ("BOYSHP2COLOUR3") turned into the
// conditions under which the entry applies.
#include <algorithm>
#include <string>

#include "Base/KGNumber.h"
#include "Base/KGToolkit.h"
#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGS57Dictionary.h"
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

void ParseConditions(View text, PLIX::PlixArray<KGChartAttributeCondition>& conditions) {
    if (text.empty()) {
        // An entry without conditions applies to every feature: one catch-all condition.
        conditions.Add(KGChartAttributeCondition());
        return;
    }
    const KGS57Config* registry = KGS57Config::GetInstance();
    if (conditions.IsEmpty()) conditions.Items().reserve(CountConditions(text));
    size_t pos = 0;
    while (pos < text.size()) {
        KGChartAttributeCondition condition;
        const size_t acronymLength = std::min(kAcronymLength, text.size() - pos);
        condition.AttributeAcronym = ToString(text.substr(pos, acronymLength));
        pos += acronymLength;
        if (pos == text.size()) {
            conditions.Add(std::move(condition));
            break;
        }
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
        if (registry->GetS57AttributeType(condition.AttributeAcronym, type)) {
            if (IsNumeric(type)) {
                condition.IntegerValue = ReadInt32(value);
            } else {
                condition.TextValue = ToString(value);
            }
        }
        conditions.Add(std::move(condition));
    }
}

}  // namespace lookup

void KGChartLookupTable::ParseAttributeCombination(
    PlixUnicodeString& entry, PLIX::PlixArray<KGChartAttributeCondition>& conditions) {
    const PlixUnicodeString field = lookup::CutFront(entry, &lookup::EntryCursor::Cut);
    lookup::ParseConditions(field.Str(), conditions);
}

}  // namespace KGC
