// Parser of the agency dictionary file (root "Agencies").
#include "Base/KGMarkup.h"
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryLog.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Agencies::KGS57Agencies() = default;
KGS57Agencies::~KGS57Agencies() = default;

bool KGS57Agencies::LoadXml(const PlixUnicodeString& path) {
    m_count = 0;
    m_records.RemoveAll();

    KGMarkup doc;
    if (!doc.Load(path)) {
        s57dict::LogFailure(u"EAg001", 26);
        return false;
    }
    if (!doc.FindElem(u"Agencies")) return true;
    doc.IntoElem();

    const PlixUnicodeString agency(u"Agency");
    while (doc.FindElem(agency)) ++m_count;
    m_records.SetSize(m_count);
    doc.ResetMainPos();

    const PlixUnicodeString tokenAttr(u"Token"), codeAttr(u"Code"), nameElem(u"AgencyName");
    // Deliberately kept: the name is not cleared between agencies, so an agency without
    // "AgencyName" carries the name of the one before it.
    PlixUnicodeString token, code, name;
    for (int i = 0; i < m_count && doc.FindElem(agency); ++i) {
        token = doc.GetAttrib(tokenAttr);
        code = doc.GetAttrib(codeAttr);
        if (doc.FindChildElem(nameElem)) name = doc.GetChildData();
        KGS57Agency& record = m_records[i];
        record.token = token;
        record.code = code.ToInt(10);
        record.agencyName = name;
    }
    return true;
}

}  // namespace KGC
