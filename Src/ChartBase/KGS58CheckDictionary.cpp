// Parser of the S-58 check message file (root "S58").
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS58Infos::KGS58Infos() = default;

bool KGS58Infos::LoadXML(const PlixUnicodeString& path) {
    KGMarkup doc;
    // The registry logs a failure. Deliberately kept: a document without "S58" adds nothing
    // and is not a failure.
    const s57dict::Opened opened = s57dict::OpenDictionary(doc, path, u"S58", nullptr);
    if (opened != s57dict::Opened::AtRoot) return opened == s57dict::Opened::OtherRoot;

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
