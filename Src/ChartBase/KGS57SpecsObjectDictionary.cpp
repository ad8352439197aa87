// Parser of the product specification object file (root "ObjectClasses"): primitives and
// attribute rules per object class.
#include "Base/KGMarkup.h"
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryLog.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57SpecsObjects::KGS57SpecsObjects() = default;
KGS57SpecsObjects::~KGS57SpecsObjects() = default;

bool KGS57SpecsObjects::LoadXml(const PlixUnicodeString& path) {
    m_records.RemoveAll();
    m_count = 0;

    KGMarkup doc;
    if (!doc.Load(path)) {
        s57dict::LogFailure(u"EAg002", 531);
        return false;
    }
    if (!doc.FindElem(u"ObjectClasses")) return false;
    doc.IntoElem();

    const PlixUnicodeString objectClass(u"ObjectClass");
    while (doc.FindElem(objectClass)) ++m_count;
    m_records.SetSize(m_count);
    doc.ResetMainPos();

    const PlixUnicodeString acronymAttr(u"Acronym"), codeAttr(u"Code"), valueAttr(u"value"),
        requiredAttr(u"Required");
    const PlixUnicodeString primitivesElem(u"Primitives"), nameElem(u"Name"),
        localNameElem(u"LocalName"), attributesElem(u"Attributes"), attributeElem(u"Attribute");

    for (int i = 0; i < m_count && doc.FindElem(objectClass); ++i) {
        KGS57SpecsObject record;
        record.acronym = doc.GetAttrib(acronymAttr);
        // Deliberately kept: codes are 16-bit, wider values keep their low 16 bits.
        record.code = static_cast<uint16_t>(doc.GetAttrib(codeAttr).ToInt(10));
        // Each child is sought from the first child on, so their order is free.
        if (doc.FindChildElem(primitivesElem)) record.primitives = doc.GetChildAttrib(valueAttr);
        doc.ResetChildPos();
        if (doc.FindChildElem(nameElem)) record.name = doc.GetChildData();
        doc.ResetChildPos();
        if (doc.FindChildElem(localNameElem)) record.localName = doc.GetChildData();
        doc.ResetChildPos();
        if (doc.FindChildElem(attributesElem)) {
            doc.IntoElem();
            while (doc.FindChildElem(attributeElem)) {
                KGS57SpecsAttribute rule;
                rule.code = static_cast<uint16_t>(doc.GetChildAttrib(codeAttr).ToInt(10));
                rule.required = static_cast<uint16_t>(doc.GetChildAttrib(requiredAttr).ToInt(10));
                record.attributes.Add(rule);
            }
            doc.OutOfElem();
        }
        doc.ResetChildPos();
        m_records[i] = std::move(record);
    }
    return true;
}

}  // namespace KGC
