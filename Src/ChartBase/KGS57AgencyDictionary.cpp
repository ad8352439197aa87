// Parser of the agency dictionary file (root "Agencies").
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Agencies::KGS57Agencies() = default;

bool KGS57Agencies::LoadXml(const PlixUnicodeString& path) {
    static const s57dict::RecordFile file{u"Agencies", u"Agency", s57dict::kAgencyFileUnreadable,
                                          true};
    const PlixUnicodeString tokenAttr(u"Token"), codeAttr(u"Code"), nameElem(u"AgencyName");
    // Deliberately kept: the name is not cleared between agencies, so an agency without
    // "AgencyName" carries the name of the one before it.
    PlixUnicodeString name;
    return s57dict::LoadRecords(path, file, m_records, [&](KGMarkup& doc, KGS57Agency& record) {
        record.token = doc.GetAttrib(tokenAttr);
        record.code = doc.GetAttrib(codeAttr).ToInt(10);
        if (doc.FindChildElem(nameElem)) name = doc.GetChildData();
        record.agencyName = name;
    });
}

}  // namespace KGC
