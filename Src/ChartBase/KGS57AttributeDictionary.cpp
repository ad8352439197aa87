// Parser of the attribute dictionary file (root "Attributes") with the expected values.
#include "Base/KGMarkup.h"
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryLog.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Attributes::KGS57Attributes() = default;
KGS57Attributes::~KGS57Attributes() = default;

bool KGS57Attributes::LoadXml(const PlixUnicodeString& path) {
    m_records.RemoveAll();
    m_count = 0;

    KGMarkup doc;
    if (!doc.Load(path)) {
        s57dict::LogFailure(u"EAg001", 171);
        return false;
    }
    // Deliberately kept: unlike the object class file, another root is an empty dictionary,
    // not a failure.
    if (!doc.FindElem(u"Attributes")) return true;
    doc.IntoElem();

    const PlixUnicodeString attribute(u"Attribute");
    while (doc.FindElem(attribute)) ++m_count;
    m_records.SetSize(m_count);
    doc.ResetMainPos();

    const PlixUnicodeString acronymAttr(u"Acronym"), codeAttr(u"Code"), typeAttr(u"Type"),
        valueAttr(u"value"), idAttr(u"ID"), meaningAttr(u"Meaning");
    const PlixUnicodeString nameElem(u"Name"), subsetElem(u"Subset"), localNameElem(u"LocalName"),
        definitionElem(u"Definition"), referencesElem(u"References"), indicationElem(u"Indication"),
        remarksElem(u"Remarks"), conditionElem(u"Condition"), formatElem(u"Format"),
        inputsElem(u"ExpectedInputs"), valueElem(u"ExpectedValue");
    auto readChild = [&doc](const PlixUnicodeString& name, PlixUnicodeString& field) {
        if (doc.FindChildElem(name)) field = doc.GetChildData();
        doc.ResetChildPos();
    };

    for (int i = 0; i < m_count && doc.FindElem(attribute); ++i) {
        KGS57Attribute record;
        record.acronym = doc.GetAttrib(acronymAttr);
        // Deliberately kept: codes are 16-bit, wider values keep their low 16 bits.
        record.code = static_cast<uint16_t>(doc.GetAttrib(codeAttr).ToInt(10));
        PlixUnicodeString type = doc.GetAttrib(typeAttr);
        type.Trim();
        if (!type.IsEmpty()) record.type = KGS57DefineInfo::ToAttributeType(type);

        readChild(nameElem, record.name);
        if (doc.FindChildElem(subsetElem)) {
            PlixUnicodeString subset = doc.GetChildAttrib(valueAttr);
            subset.Trim();
            if (!subset.IsEmpty()) record.subset = std::move(subset);
        }
        doc.ResetChildPos();
        readChild(localNameElem, record.localName);
        readChild(definitionElem, record.definition);
        readChild(referencesElem, record.references);
        readChild(indicationElem, record.indication);
        readChild(remarksElem, record.remarks);
        readChild(conditionElem, record.condition);
        readChild(formatElem, record.format);

        if (doc.FindChildElem(inputsElem)) {
            doc.IntoElem();
            while (doc.FindChildElem(valueElem)) {
                KGS57ExpectedValue value;
                value.meaning = doc.GetChildAttrib(meaningAttr);
                value.id = static_cast<int16_t>(doc.GetChildAttrib(idAttr).ToInt(10));
                doc.IntoElem();
                // No reset between the two: "References" counts only after "Definition".
                if (doc.FindChildElem(definitionElem)) value.definition = doc.GetChildData();
                if (doc.FindChildElem(referencesElem)) value.references = doc.GetChildData();
                doc.OutOfElem();
                record.expectedValues.Add(std::move(value));
            }
            doc.OutOfElem();
        }
        doc.ResetChildPos();
        m_records[i] = std::move(record);
    }
    return true;
}

}  // namespace KGC
