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

}  // namespace

void KGChartLookupTable::ParseAttributeCombination(
    PlixUnicodeString& entry, PLIX::PlixArray<KGChartAttributeCondition>& conditions) {
    const PlixUnicodeString field = lookup::CutQuotedField(entry);
    if (field.IsEmpty()) {
        // An entry without conditions applies to every feature: one catch-all condition.
        conditions.Add(KGChartAttributeCondition());
        return;
    }
    const KGS57Config* registry = KGS57Config::GetInstance();
    // One record for every condition: the copies of the registry reuse its storage.
    KGS57Attribute attribute;
    const std::u16string& text = field.Str();
    size_t pos = 0;
    while (pos < text.size()) {
        KGChartAttributeCondition condition;
        const size_t acronymLength = std::min(kAcronymLength, text.size() - pos);
        condition.AttributeAcronym = PlixUnicodeString(text.substr(pos, acronymLength));
        pos += acronymLength;
        if (pos == text.size()) {
            conditions.Add(std::move(condition));
            break;
        }
        // There is no separator: the value runs up to the next letter, which starts the next
        // acronym. Blanks, commas and "?" belong to the value.
        size_t end = pos;
        while (end < text.size() && !IsLetter(text[end])) ++end;
        PlixUnicodeString value(text.substr(pos, end - pos));
        pos = end;
        // An attribute the dictionary does not know keeps neither value.
        if (registry->GetS57Attributes(condition.AttributeAcronym, attribute)) {
            if (IsNumeric(attribute.type)) {
                condition.IntegerValue = lookup::ToInt32(kgatol(value));
            } else {
                condition.TextValue = std::move(value);
            }
        }
        conditions.Add(std::move(condition));
    }
}

}  // namespace KGC
