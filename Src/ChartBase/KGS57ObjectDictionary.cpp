// Parser of the object class dictionary file (root "ObjectClasses").
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Objects::KGS57Objects() = default;

bool KGS57Objects::LoadXml(const PlixUnicodeString& path) {
    static const s57dict::RecordFile file{"ObjectClasses", "ObjectClass",
                                          s57dict::kObjectFileUnreadable, false};
    static constexpr std::array<const char*, 4> kChildren{"Name", "Definition", "References",
                                                          "Remarks"};
    return s57dict::LoadRecords(
        path, file, m_records, [&](KGMarkupReader::Element e, KGS57Object& record) {
            ToUnicode(e.Attribute("Acronym"), record.acronym);
            record.code = s57dict::ReadCode(e.Attribute("Code"));
            PlixUnicodeString type = ToUnicode(e.Attribute("Type"));
            type.Trim();
            record.type = type.IsEmpty() ? KGS57DefineInfo::FeatureUnknown
                                         : KGS57DefineInfo::ToFeatureType(type);
            const auto children = s57dict::FirstChildren(e, kChildren);
            s57dict::ReadData(children[0], record.name);
            s57dict::ReadData(children[1], record.definition);
            s57dict::ReadData(children[2], record.references);
            s57dict::ReadData(children[3], record.remarks);
        });
}

}  // namespace KGC
