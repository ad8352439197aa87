// Parser of the product specification object file (root "ObjectClasses"): primitives and
// attribute rules per object class.
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57SpecsObjects::KGS57SpecsObjects() = default;

bool KGS57SpecsObjects::LoadXml(const PlixUnicodeString& path) {
    static const s57dict::RecordFile file{u"ObjectClasses", u"ObjectClass",
                                          s57dict::kSpecsObjectFileUnreadable, false};
    const PlixUnicodeString acronymAttr(u"Acronym"), codeAttr(u"Code"), valueAttr(u"value"),
        requiredAttr(u"Required");
    const PlixUnicodeString primitivesElem(u"Primitives"), nameElem(u"Name"),
        localNameElem(u"LocalName"), attributesElem(u"Attributes"), attributeElem(u"Attribute");
    return s57dict::LoadRecords(
        path, file, m_records, [&](KGMarkup& doc, KGS57SpecsObject& record) {
            record.acronym = doc.GetAttrib(acronymAttr);
            record.code = s57dict::ReadCode(doc.GetAttrib(codeAttr));
            if (doc.FindChildElem(primitivesElem))
                record.primitives = doc.GetChildAttrib(valueAttr);
            doc.ResetChildPos();
            s57dict::ReadChildData(doc, nameElem, record.name);
            s57dict::ReadChildData(doc, localNameElem, record.localName);
            if (doc.FindChildElem(attributesElem)) {
                doc.IntoElem();
                while (doc.FindChildElem(attributeElem)) {
                    KGS57SpecsAttribute rule;
                    rule.code = s57dict::ReadCode(doc.GetChildAttrib(codeAttr));
                    rule.required = s57dict::ReadCode(doc.GetChildAttrib(requiredAttr));
                    record.attributes.Add(rule);
                }
                doc.OutOfElem();
            }
            doc.ResetChildPos();
        });
}

}  // namespace KGC
