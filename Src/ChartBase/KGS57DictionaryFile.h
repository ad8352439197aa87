// Internal to the S-57 dictionary sources: opening a dictionary file at its root, and reading
// the files that are one flat list of records. The record files are read through
// KGMarkupReader, in one pass over each record's children; the small product specification
// info file keeps the markup cursor its public readers take.
#pragma once

#include <array>
#include <climits>
#include <string_view>

#include "Base/KGMarkup.h"
#include "Base/KGMarkupReader.h"
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

// Loads the file and gives its root element when it is named root (none otherwise). An
// unreadable file is logged at unreadable.
inline Opened OpenDictionary(KGMarkupReader& doc, const PLIX::PlixUnicodeString& path,
                             const char* root, const LogPoint& unreadable,
                             KGMarkupReader::Element& at) {
    if (!doc.Load(path)) {
        LogFailure(unreadable);
        return Opened::Unreadable;
    }
    at = doc.Root();
    return at.NameIs(root) ? Opened::AtRoot : Opened::OtherRoot;
}

// The layout of a flat record file: root, record element, the record logged when the file
// cannot be read, and what a document with another root gives.
struct RecordFile {
    const char* root;
    const char* element;
    LogPoint unreadable;
    bool otherRootLoads;
};

// Replaces records with one record per element, in file order; read fills a record from its
// element. Counts first, so the array is sized once. The records already held are read into
// again, so read must set every field (the Reset helpers below clear a field it may skip);
// their strings keep their storage, and reading a file again allocates little.
template <typename Record, typename Read>
bool LoadRecords(const PLIX::PlixUnicodeString& path, const RecordFile& file,
                 PLIX::PlixArray<Record>& records, Read read) {
    KGMarkupReader doc;
    KGMarkupReader::Element root;
    const Opened opened = OpenDictionary(doc, path, file.root, file.unreadable, root);
    if (opened != Opened::AtRoot) {
        records.RemoveAll();
        return opened == Opened::OtherRoot && file.otherRootLoads;
    }
    int count = 0;
    for (auto e = root.FirstChild(file.element); e; e = e.Next(file.element)) ++count;
    records.SetSize(count);
    int i = 0;
    for (auto e = root.FirstChild(file.element); e; e = e.Next(file.element)) read(e, records[i++]);
    return true;
}

// The first child element of each name (none where there is none), found in one pass over
// the children: what seeking each name from the first child finds, so their order is free.
template <size_t N>
std::array<KGMarkupReader::Element, N> FirstChildren(KGMarkupReader::Element parent,
                                                     const std::array<const char*, N>& names) {
    std::array<KGMarkupReader::Element, N> found{};
    size_t missing = N;
    for (auto c = parent.FirstChild(); c && missing > 0; c = c.Next()) {
        for (size_t i = 0; i < N; ++i) {
            if (!found[i] && c.NameIs(names[i])) {
                found[i] = c;
                --missing;
                break;
            }
        }
    }
    return found;
}

// The element's text into field when there is an element; the field is emptied otherwise.
inline void ReadData(KGMarkupReader::Element e, PLIX::PlixUnicodeString& field) {
    if (e) {
        e.Text(field);
    } else {
        field.Empty();
    }
}

// Deliberately kept: codes are 16-bit, wider values keep their low 16 bits.
inline uint16_t ReadCode(const PLIX::PlixUnicodeString& text) {
    return static_cast<uint16_t>(text.ToInt(10));
}

// PlixUnicodeString::ToInt(10) on UTF-8 text, without building the string: leading blanks,
// a sign, the digits up to the first other character, clamped to int. The records' numbers
// are read this way so that they come out exactly as through the string. The text ends at
// its NUL.
inline int ToInt(const char* text) {
    while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
    bool negative = false;
    if (*text == '+' || *text == '-') negative = *text++ == '-';
    long long value = 0;
    const long long limit = static_cast<long long>(INT_MAX) + 1;
    for (; *text >= '0' && *text <= '9'; ++text) {
        if (value <= limit) value = value * 10 + (*text - '0');
    }
    if (negative) value = -value;
    if (value > INT_MAX) return INT_MAX;
    if (value < INT_MIN) return INT_MIN;
    return static_cast<int>(value);
}
// An attribute value from KGMarkupReader is NUL-terminated.
inline int ToInt(std::string_view value) {
    return ToInt(value.data());
}
inline uint16_t ReadCode(const char* text) {
    return static_cast<uint16_t>(ToInt(text));
}
inline uint16_t ReadCode(std::string_view text) {
    return ReadCode(text.data());
}

}  // namespace s57dict
}  // namespace KGC
