// Parser of the product specification object file (root "ObjectClasses"): primitives and
// attribute rules per object class.
#include <algorithm>
#include <vector>

#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57SpecsObjects::KGS57SpecsObjects() = default;

bool KGS57SpecsObjects::LoadXml(const PlixUnicodeString& path) {
    static const s57dict::RecordFile file{"ObjectClasses", "ObjectClass",
                                          s57dict::kSpecsObjectFileUnreadable, false};
    static constexpr std::array<const char*, 4> kChildren{"Primitives", "Name", "LocalName",
                                                          "Attributes"};
    // The rules of one object class are gathered here first, so that each record's array is
    // allocated once, at its size.
    std::vector<KGS57SpecsAttribute> scratch;
    return s57dict::LoadRecords(
        path, file, m_records, [&](KGMarkupReader::Element e, KGS57SpecsObject& record) {
            ToUnicode(e.Attribute("Acronym"), record.acronym);
            record.code = s57dict::ReadCode(e.Attribute("Code"));
            const auto children = s57dict::FirstChildren(e, kChildren);
            if (children[0]) {
                ToUnicode(children[0].Attribute("value"), record.primitives);
            } else {
                record.primitives.Empty();
            }
            s57dict::ReadData(children[1], record.name);
            s57dict::ReadData(children[2], record.localName);
            if (const auto rules = children[3]) {
                static const char* const kRule[] = {"Code", "Required"};
                const char* values[2];
                scratch.clear();
                for (auto a = rules.FirstChild("Attribute"); a; a = a.Next("Attribute")) {
                    a.Attributes(kRule, values, 2);
                    scratch.push_back({s57dict::ReadCode(values[0]), s57dict::ReadCode(values[1])});
                }
                record.attributes.SetSize(static_cast<int>(scratch.size()));
                std::copy(scratch.begin(), scratch.end(), record.attributes.begin());
            } else {
                record.attributes.RemoveAll();
            }
        });
}

}  // namespace KGC
