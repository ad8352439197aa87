// Parser of the S-58 check message file (root "S58").
#include "Base/KGMarkup.h"
#include "ChartBase/KGS57Dictionary.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS58Infos::KGS58Infos() = default;
KGS58Infos::~KGS58Infos() = default;

bool KGS58Infos::LoadXML(const PlixUnicodeString& path) {
    KGMarkup doc;
    if (!doc.Load(path)) return false;  // the registry logs the failure
    // Deliberately kept: a document without "S58" adds nothing and is not a failure.
    if (!doc.FindElem(u"S58")) return true;
    doc.IntoElem();

    const PlixUnicodeString test(u"Test"), idAttr(u"id"), levelAttr(u"level"),
        descriptionElem(u"Description"), referenceElem(u"Reference");
    while (doc.FindElem(test)) {
        const PlixUnicodeString idText = doc.GetAttrib(idAttr);
        if (idText.IsEmpty()) continue;
        KGS58Info info;
        info.id = idText.ToInt(10);
        info.level = doc.GetAttrib(levelAttr);
        doc.IntoElem();
        if (doc.FindElem(descriptionElem)) info.description = doc.GetData();
        doc.ResetMainPos();
        if (doc.FindElem(referenceElem)) info.reference = doc.GetData();
        doc.OutOfElem();
        // The map is never cleared: a second file merges in, an equal number replaces.
        m_infos.SetAt(info.id, info);
    }
    return true;
}

bool KGS58Infos::GetS58Info(int id, KGS58Info& out) const {
    const KGS58Info* info = m_infos.Find(id);
    if (!info) return false;
    out = *info;
    return true;
}

}  // namespace KGC
