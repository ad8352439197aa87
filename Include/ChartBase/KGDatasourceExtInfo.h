// KGDatasourceExtInfo: the extension info kept with a converted datasource, its list of named
// record-identifier sequences, and the "ChartDatasourceInfo" document it is stored as.
//
// Threads: value objects; one object is changed by one thread at a time.
#pragma once

#include <unordered_map>

#include "Base/PlixArray.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGS57Sequence.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class VLCHARTBASE_API KGDatasourceExtInfo {
public:
    KGDatasourceExtInfo();

    // Removes every sequence and empties the ext info text.
    void Init();

    // False for an empty name or a name already held (in any case; the held one is kept).
    bool AddS57Seq(const KGS57Sequence& seq);
    // Removes the first sequence of that name (in any case); false when there is none.
    bool DelS57Seq(const PLIX::PlixUnicodeString& name);
    // Copies the first sequence of that name (in any case) into out; out is untouched on false.
    bool GetS57Seq(KGS57Sequence& out, const PLIX::PlixUnicodeString& name) const;
    PLIX::PlixArray<KGS57Sequence> GetS57Seqs() const;
    PLIX::PlixArray<KGS57Sequence> GetS57Seqs(KGS57Sequence::KGS57SequenceType type) const;

    // Writes the "ChartDatasourceInfo" document, keeps it as the ext info text and returns it.
    PLIX::PlixUnicodeString MakeExtInfoDoc();
    // Replaces the whole content by the document's sequences, as they stand in it (no
    // duplicate check); the text is kept even when it holds no sequences or is not XML.
    void SetExtInfo(const PLIX::PlixUnicodeString& text);
    // The document last made or read.
    PLIX::PlixUnicodeString GetExtInfoText() const { return m_extInfoText; }

private:
    int IndexOf(const PLIX::PlixUnicodeString& name) const;
    void RebuildIndex();

    PLIX::PlixUnicodeString m_extInfoText;
    PLIX::PlixArray<KGS57Sequence> m_sequences;
    // Folded name to the position of its first sequence, so that an add is not a scan.
    std::unordered_map<PLIX::PlixUnicodeString, int> m_index;
};

}  // namespace KGC
