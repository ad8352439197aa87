// Internal to the S-57 dictionary sources: opening a dictionary file at its root, and reading
// the files that are one flat list of records.
#pragma once

#include "Base/KGMarkup.h"
#include "Base/PlixArray.h"
#include "KGS57DictionaryLog.h"

namespace KGC {
namespace s57dict {

enum class Opened { Unreadable, OtherRoot, AtRoot };

// Loads the file and enters its root element when it is named root. An unreadable file is
// logged at unreadable, when given.
inline Opened OpenDictionary(KGMarkup& doc, const PLIX::PlixUnicodeString& path,
                             const char16_t* root, const LogPoint* unreadable) {
    if (!doc.Load(path)) {
        if (unreadable != nullptr) LogFailure(*unreadable);
        return Opened::Unreadable;
    }
    if (!doc.FindElem(root)) return Opened::OtherRoot;
    doc.IntoElem();
    return Opened::AtRoot;
}

// The layout of a flat record file: root, record element, the record logged when the file
// cannot be read, and what a document with another root gives.
struct RecordFile {
    const char16_t* root;
    const char16_t* element;
    LogPoint unreadable;
    bool otherRootLoads;
};

// Replaces records with one record per element, in file order; read fills a record from the
// markup's main element. Counts first, so the array is sized once.
template <typename Record, typename Read>
bool LoadRecords(const PLIX::PlixUnicodeString& path, const RecordFile& file,
                 PLIX::PlixArray<Record>& records, Read read) {
    records.RemoveAll();
    KGMarkup doc;
    const Opened opened = OpenDictionary(doc, path, file.root, &file.unreadable);
    if (opened != Opened::AtRoot) return opened == Opened::OtherRoot && file.otherRootLoads;
    const PLIX::PlixUnicodeString element(file.element);
    int count = 0;
    while (doc.FindElem(element)) ++count;
    records.SetSize(count);
    doc.ResetMainPos();
    for (int i = 0; i < count && doc.FindElem(element); ++i) read(doc, records[i]);
    return true;
}

// An optional child sought from the first child on, so the order of children is free.
inline void ReadChildData(KGMarkup& doc, const PLIX::PlixUnicodeString& name,
                          PLIX::PlixUnicodeString& field) {
    if (doc.FindChildElem(name)) field = doc.GetChildData();
    doc.ResetChildPos();
}

// Deliberately kept: codes are 16-bit, wider values keep their low 16 bits.
inline uint16_t ReadCode(const PLIX::PlixUnicodeString& text) {
    return static_cast<uint16_t>(text.ToInt(10));
}

}  // namespace s57dict
}  // namespace KGC
