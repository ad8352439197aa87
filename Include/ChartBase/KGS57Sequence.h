// KGS57Sequence: one named record-identifier sequence of a converted datasource, the counter
// from which the converter draws new identifiers such as the FIDN of new S-57 features.
//
// Threads: a value object; one object is changed by one thread at a time.
#pragma once

#include <cstdint>

#include "Base/PlixUnicodeString.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class VLCHARTBASE_API KGS57Sequence {
public:
    // Written into datasource documents as "None" and "FIDN"; the values must not change.
    enum KGS57SequenceType : int32_t {
        SeqTypeNone = 0,
        SeqTypeFIDN = 1,
    };

    // -1 for the two values means "not given".
    KGS57Sequence() = default;
    KGS57Sequence(const PLIX::PlixUnicodeString& name, long long startValue, long long maxValue,
                  KGS57SequenceType type);

    const PLIX::PlixUnicodeString& GetName() const { return m_name; }
    void SetName(const PLIX::PlixUnicodeString& name) { m_name = name; }
    long long GetStartValue() const { return m_startValue; }
    void SetStartValue(long long value) { m_startValue = value; }
    long long GetMaxValue() const { return m_maxValue; }
    void SetMaxValue(long long value) { m_maxValue = value; }
    KGS57SequenceType GetType() const { return m_type; }
    void SetType(KGS57SequenceType type) { m_type = type; }

    // The word of a type in the document: "FIDN" for SeqTypeFIDN, "None" for every other value.
    static PLIX::PlixUnicodeString TypeToWord(KGS57SequenceType type);
    // SeqTypeFIDN for "FIDN" in any case, SeqTypeNone for every other word.
    static KGS57SequenceType WordToType(const PLIX::PlixUnicodeString& word);

    friend bool operator==(const KGS57Sequence& a, const KGS57Sequence& b) {
        return a.m_name == b.m_name && a.m_startValue == b.m_startValue &&
               a.m_maxValue == b.m_maxValue && a.m_type == b.m_type;
    }
    friend bool operator!=(const KGS57Sequence& a, const KGS57Sequence& b) { return !(a == b); }

private:
    PLIX::PlixUnicodeString m_name;
    long long m_startValue = -1;
    long long m_maxValue = -1;
    KGS57SequenceType m_type = SeqTypeNone;
};

}  // namespace KGC
