// Parser of the attribute dictionary file (root "Attributes") with the expected values.
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

enum Child {
    kName,
    kSubset,
    kLocalName,
    kDefinition,
    kReferences,
    kIndication,
    kRemarks,
    kCondition,
    kFormat,
    kInputs,
    kChildCount
};
constexpr std::array<const char*, kChildCount> kChildren{
    "Name",       "Subset",  "LocalName", "Definition", "References",
    "Indication", "Remarks", "Condition", "Format",     "ExpectedInputs"};

void ReadExpectedValues(KGMarkupReader::Element inputs, KGS57Attribute& record) {
    int count = 0;
    for (auto v = inputs.FirstChild("ExpectedValue"); v; v = v.Next("ExpectedValue")) ++count;
    record.expectedValues.SetSize(count);
    int i = 0;
    for (auto v = inputs.FirstChild("ExpectedValue"); v; v = v.Next("ExpectedValue")) {
        KGS57ExpectedValue& value = record.expectedValues[i++];
        ToUnicode(v.Attribute("Meaning"), value.meaning);
        value.id = static_cast<int16_t>(s57dict::ToInt(v.Attribute("ID")));
        // Deliberately kept: "References" counts only after "Definition" when there is one.
        const auto definition = v.FirstChild("Definition");
        s57dict::ReadData(definition, value.definition);
        s57dict::ReadData(definition ? definition.Next("References") : v.FirstChild("References"),
                          value.references);
    }
}

}  // namespace

KGS57Attributes::KGS57Attributes() = default;

bool KGS57Attributes::LoadXml(const PlixUnicodeString& path) {
    // Deliberately kept: unlike the object class file, another root is an empty dictionary,
    // not a failure.
    static const s57dict::RecordFile file{"Attributes", "Attribute",
                                          s57dict::kAttributeFileUnreadable, true};
    return s57dict::LoadRecords(
        path, file, m_records, [&](KGMarkupReader::Element e, KGS57Attribute& record) {
            ToUnicode(e.Attribute("Acronym"), record.acronym);
            record.code = s57dict::ReadCode(e.Attribute("Code"));
            PlixUnicodeString type = ToUnicode(e.Attribute("Type"));
            type.Trim();
            record.type = type.IsEmpty() ? KGS57DefineInfo::AttrUnknown
                                         : KGS57DefineInfo::ToAttributeType(type);

            const auto children = s57dict::FirstChildren(e, kChildren);
            s57dict::ReadData(children[kName], record.name);
            record.subset.Empty();
            if (children[kSubset]) {
                PlixUnicodeString subset = ToUnicode(children[kSubset].Attribute("value"));
                subset.Trim();
                if (!subset.IsEmpty()) record.subset = std::move(subset);
            }
            s57dict::ReadData(children[kLocalName], record.localName);
            s57dict::ReadData(children[kDefinition], record.definition);
            s57dict::ReadData(children[kReferences], record.references);
            s57dict::ReadData(children[kIndication], record.indication);
            s57dict::ReadData(children[kRemarks], record.remarks);
            s57dict::ReadData(children[kCondition], record.condition);
            s57dict::ReadData(children[kFormat], record.format);
            if (children[kInputs]) {
                ReadExpectedValues(children[kInputs], record);
            } else {
                record.expectedValues.RemoveAll();
            }
        });
}

}  // namespace KGC
