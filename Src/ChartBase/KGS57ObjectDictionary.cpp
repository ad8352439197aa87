// Parser of the object class dictionary file (root "ObjectClasses").
#include "Base/KGMarkup.h"
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryLog.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Objects::KGS57Objects() = default;
KGS57Objects::~KGS57Objects() = default;

bool KGS57Objects::LoadXml(const PlixUnicodeString& path) {
    m_count = 0;
    m_records.RemoveAll();

    KGMarkup doc;
    if (!doc.Load(path)) {
        s57dict::LogFailure(u"EAg001", 84);
        return false;
    }
    if (!doc.FindElem(u"ObjectClasses")) return false;
    doc.IntoElem();

    const PlixUnicodeString objectClass(u"ObjectClass");
    while (doc.FindElem(objectClass)) ++m_count;
    m_records.SetSize(m_count);
    doc.ResetMainPos();

    const PlixUnicodeString acronymAttr(u"Acronym"), codeAttr(u"Code"), typeAttr(u"Type");
    const PlixUnicodeString nameElem(u"Name"), definitionElem(u"Definition"),
        referencesElem(u"References"), remarksElem(u"Remarks");
    // Each optional child is sought from the first child on, so their order is free.
    auto readChild = [&doc](const PlixUnicodeString& name, PlixUnicodeString& field) {
        if (doc.FindChildElem(name)) field = doc.GetChildData();
        doc.ResetChildPos();
    };

    for (int i = 0; i < m_count && doc.FindElem(objectClass); ++i) {
        KGS57Object record;
        record.acronym = doc.GetAttrib(acronymAttr);
        // Deliberately kept: codes are 16-bit, wider values keep their low 16 bits.
        record.code = static_cast<uint16_t>(doc.GetAttrib(codeAttr).ToInt(10));
        PlixUnicodeString type = doc.GetAttrib(typeAttr);
        type.Trim();
        if (!type.IsEmpty()) record.type = KGS57DefineInfo::ToFeatureType(type);
        readChild(nameElem, record.name);
        readChild(definitionElem, record.definition);
        readChild(referencesElem, record.references);
        readChild(remarksElem, record.remarks);
        m_records[i] = std::move(record);
    }
    return true;
}

}  // namespace KGC
