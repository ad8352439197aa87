// The datasource extension info: named sequences and their "ChartDatasourceInfo" document.
#include "ChartBase/KGDatasourceExtInfo.h"

#include "Base/KGMarkup.h"
#include "Base/KGNumber.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

const char16_t kRoot[] = u"ChartDatasourceInfo";
const char16_t kSequences[] = u"Sequences";
const char16_t kSequence[] = u"Sequence";
const char16_t kName[] = u"name";
const char16_t kType[] = u"type";
const char16_t kStartValue[] = u"startValue";
const char16_t kMaxValue[] = u"maxValue";

static_assert(sizeof(long) == sizeof(long long), "\"%ld\" must carry the full 64-bit value");

PlixUnicodeString FormatValue(long long value) {
    return PlixUnicodeString::Format("%ld", static_cast<long>(value));
}

}  // namespace

KGDatasourceExtInfo::KGDatasourceExtInfo() {
    Init();
}

void KGDatasourceExtInfo::Init() {
    m_sequences.RemoveAll();
    m_index.clear();
    m_extInfoText.Empty();
}

// The index holds, for each name folded as CompareNoCase folds it, the position of the first
// sequence of that name; a list read from a document may hold the same name twice.
void KGDatasourceExtInfo::RebuildIndex() {
    m_index.clear();
    m_index.reserve(static_cast<size_t>(m_sequences.GetSize()));
    for (int i = 0; i < m_sequences.GetSize(); ++i) {
        m_index.emplace(m_sequences[i].GetName().MakeLower(), i);
    }
}

int KGDatasourceExtInfo::IndexOf(const PlixUnicodeString& name) const {
    const auto it = m_index.find(name.MakeLower());
    return it == m_index.end() ? -1 : it->second;
}

bool KGDatasourceExtInfo::AddS57Seq(const KGS57Sequence& seq) {
    if (seq.GetName().IsEmpty()) return false;
    const auto added = m_index.emplace(seq.GetName().MakeLower(), m_sequences.GetSize());
    if (!added.second) return false;
    m_sequences.Add(seq);
    return true;
}

bool KGDatasourceExtInfo::DelS57Seq(const PlixUnicodeString& name) {
    if (name.IsEmpty()) return false;
    const int index = IndexOf(name);
    if (index < 0) return false;
    m_sequences.RemoveAt(index);
    // The removal shifts every later position, so rebuilding costs no more than it already
    // does; a later duplicate of the name becomes the first.
    RebuildIndex();
    return true;
}

bool KGDatasourceExtInfo::GetS57Seq(KGS57Sequence& out, const PlixUnicodeString& name) const {
    if (name.IsEmpty()) return false;
    const int index = IndexOf(name);
    if (index < 0) return false;
    out = m_sequences[index];
    return true;
}

PlixArray<KGS57Sequence> KGDatasourceExtInfo::GetS57Seqs() const {
    return m_sequences;
}

PlixArray<KGS57Sequence> KGDatasourceExtInfo::GetS57Seqs(
    KGS57Sequence::KGS57SequenceType type) const {
    PlixArray<KGS57Sequence> result;
    for (const KGS57Sequence& seq : m_sequences) {
        if (seq.GetType() == type) result.Add(seq);
    }
    return result;
}

PlixUnicodeString KGDatasourceExtInfo::MakeExtInfoDoc() {
    KGMarkup doc;
    doc.AddElem(kRoot);
    doc.IntoElem();
    doc.AddElem(kSequences);
    for (const KGS57Sequence& seq : m_sequences) {
        // Deliberately skipped: a nameless record (read from a document) is never written.
        if (seq.GetName().IsEmpty()) continue;
        doc.AddChildElem(kSequence);
        doc.SetChildAttrib(kName, seq.GetName());
        doc.SetChildAttrib(kType, KGS57Sequence::TypeToWord(seq.GetType()));
        doc.SetChildAttrib(kStartValue, FormatValue(seq.GetStartValue()));
        doc.SetChildAttrib(kMaxValue, FormatValue(seq.GetMaxValue()));
    }
    doc.OutOfElem();
    m_extInfoText = doc.GetDoc();
    return m_extInfoText;
}

void KGDatasourceExtInfo::SetExtInfo(const PlixUnicodeString& text) {
    Init();
    m_extInfoText = text;
    if (text.IsEmpty()) return;

    KGMarkup doc;
    if (!doc.SetDoc(text) || !doc.FindElem(kRoot)) return;
    doc.IntoElem();
    if (!doc.FindElem(kSequences)) return;
    while (doc.FindChildElem(kSequence)) {
        KGS57Sequence seq;
        seq.SetName(doc.GetChildAttrib(kName));
        const PlixUnicodeString type = doc.GetChildAttrib(kType);
        if (!type.IsEmpty()) seq.SetType(KGS57Sequence::WordToType(type));
        const PlixUnicodeString start = doc.GetChildAttrib(kStartValue);
        if (!start.IsEmpty()) seq.SetStartValue(kgatol(start));
        const PlixUnicodeString max = doc.GetChildAttrib(kMaxValue);
        if (!max.IsEmpty()) seq.SetMaxValue(kgatol(max));
        // The list mirrors the document: no duplicate check, nameless records kept.
        m_sequences.Add(seq);
    }
    RebuildIndex();
}

}  // namespace KGC
