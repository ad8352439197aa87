// Parser of the object class dictionary file (root "ObjectClasses").
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Objects::KGS57Objects() = default;

bool KGS57Objects::LoadXml(const PlixUnicodeString& path) {
    static const s57dict::RecordFile file{u"ObjectClasses", u"ObjectClass",
                                          s57dict::kObjectFileUnreadable, false};
    const PlixUnicodeString acronymAttr(u"Acronym"), codeAttr(u"Code"), typeAttr(u"Type");
    const PlixUnicodeString nameElem(u"Name"), definitionElem(u"Definition"),
        referencesElem(u"References"), remarksElem(u"Remarks");
    return s57dict::LoadRecords(path, file, m_records, [&](KGMarkup& doc, KGS57Object& record) {
        record.acronym = doc.GetAttrib(acronymAttr);
        record.code = s57dict::ReadCode(doc.GetAttrib(codeAttr));
        PlixUnicodeString type = doc.GetAttrib(typeAttr);
        type.Trim();
        if (!type.IsEmpty()) record.type = KGS57DefineInfo::ToFeatureType(type);
        s57dict::ReadChildData(doc, nameElem, record.name);
        s57dict::ReadChildData(doc, definitionElem, record.definition);
        s57dict::ReadChildData(doc, referencesElem, record.references);
        s57dict::ReadChildData(doc, remarksElem, record.remarks);
    });
}

}  // namespace KGC
