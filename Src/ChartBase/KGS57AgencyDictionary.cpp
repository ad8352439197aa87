// Parser of the agency dictionary file (root "Agencies").
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Agencies::KGS57Agencies() = default;

bool KGS57Agencies::LoadXml(const PlixUnicodeString& path) {
    static const s57dict::RecordFile file{"Agencies", "Agency", s57dict::kAgencyFileUnreadable,
                                          true};
    // Deliberately kept: the name is not cleared between agencies, so an agency without
    // "AgencyName" carries the name of the one before it.
    PlixUnicodeString name;
    return s57dict::LoadRecords(path, file, m_records,
                                [&](KGMarkupReader::Element e, KGS57Agency& record) {
                                    ToUnicode(e.Attribute("Token"), record.token);
                                    record.code = s57dict::ToInt(e.Attribute("Code"));
                                    if (const auto child = e.FirstChild("AgencyName"))
                                        child.Text(name);
                                    record.agencyName = name;
                                });
}

}  // namespace KGC
