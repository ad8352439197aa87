// Parser of the product specification object file (root "ObjectClasses"): primitives and
// attribute rules per object class.
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57SpecsObjects::KGS57SpecsObjects() = default;

bool KGS57SpecsObjects::LoadXml(const PlixUnicodeString& path) {
    static const s57dict::RecordFile file{"ObjectClasses", "ObjectClass",
                                          s57dict::kSpecsObjectFileUnreadable, false};
    static constexpr std::array<std::string_view, 4> kChildren{"Primitives", "Name", "LocalName",
                                                               "Attributes"};
    return s57dict::LoadRecords(
        path, file, m_records, [&](KGMarkupReader::Element e, KGS57SpecsObject& record) {
            record.acronym = ToUnicode(e.Attribute("Acronym"));
            record.code = s57dict::ReadCode(e.Attribute("Code"));
            const auto children = s57dict::FirstChildren(e, kChildren);
            if (children[0]) record.primitives = ToUnicode(children[0].Attribute("value"));
            s57dict::ReadData(children[1], record.name);
            s57dict::ReadData(children[2], record.localName);
            if (const auto rules = children[3]) {
                int count = 0;
                for (auto a = rules.FirstChild("Attribute"); a; a = a.Next("Attribute")) ++count;
                record.attributes.SetSize(count);
                int i = 0;
                for (auto a = rules.FirstChild("Attribute"); a; a = a.Next("Attribute")) {
                    KGS57SpecsAttribute& rule = record.attributes[i++];
                    rule.code = s57dict::ReadCode(a.Attribute("Code"));
                    rule.required = s57dict::ReadCode(a.Attribute("Required"));
                }
            }
        });
}

}  // namespace KGC
