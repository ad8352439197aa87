// Parser of the attribute dictionary file (root "Attributes") with the expected values.
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Attributes::KGS57Attributes() = default;

bool KGS57Attributes::LoadXml(const PlixUnicodeString& path) {
    // Deliberately kept: unlike the object class file, another root is an empty dictionary,
    // not a failure.
    static const s57dict::RecordFile file{u"Attributes", u"Attribute",
                                          s57dict::kAttributeFileUnreadable, true};
    const PlixUnicodeString acronymAttr(u"Acronym"), codeAttr(u"Code"), typeAttr(u"Type"),
        valueAttr(u"value"), idAttr(u"ID"), meaningAttr(u"Meaning");
    const PlixUnicodeString nameElem(u"Name"), subsetElem(u"Subset"), localNameElem(u"LocalName"),
        definitionElem(u"Definition"), referencesElem(u"References"), indicationElem(u"Indication"),
        remarksElem(u"Remarks"), conditionElem(u"Condition"), formatElem(u"Format"),
        inputsElem(u"ExpectedInputs"), valueElem(u"ExpectedValue");
    return s57dict::LoadRecords(path, file, m_records, [&](KGMarkup& doc, KGS57Attribute& record) {
        record.acronym = doc.GetAttrib(acronymAttr);
        record.code = s57dict::ReadCode(doc.GetAttrib(codeAttr));
        PlixUnicodeString type = doc.GetAttrib(typeAttr);
        type.Trim();
        if (!type.IsEmpty()) record.type = KGS57DefineInfo::ToAttributeType(type);

        s57dict::ReadChildData(doc, nameElem, record.name);
        if (doc.FindChildElem(subsetElem)) {
            PlixUnicodeString subset = doc.GetChildAttrib(valueAttr);
            subset.Trim();
            if (!subset.IsEmpty()) record.subset = std::move(subset);
        }
        doc.ResetChildPos();
        s57dict::ReadChildData(doc, localNameElem, record.localName);
        s57dict::ReadChildData(doc, definitionElem, record.definition);
        s57dict::ReadChildData(doc, referencesElem, record.references);
        s57dict::ReadChildData(doc, indicationElem, record.indication);
        s57dict::ReadChildData(doc, remarksElem, record.remarks);
        s57dict::ReadChildData(doc, conditionElem, record.condition);
        s57dict::ReadChildData(doc, formatElem, record.format);

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
    });
}

}  // namespace KGC
