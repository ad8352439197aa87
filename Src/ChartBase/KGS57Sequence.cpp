// A named record-identifier sequence of a datasource.
#include "ChartBase/KGS57Sequence.h"

using PLIX::PlixUnicodeString;

namespace KGC {

KGS57Sequence::KGS57Sequence(const PlixUnicodeString& name, long long startValue,
                             long long maxValue, KGS57SequenceType type)
    : m_name(name), m_startValue(startValue), m_maxValue(maxValue), m_type(type) {}

PlixUnicodeString KGS57Sequence::TypeToWord(KGS57SequenceType type) {
    return PlixUnicodeString(type == SeqTypeFIDN ? u"FIDN" : u"None");
}

KGS57Sequence::KGS57SequenceType KGS57Sequence::WordToType(const PlixUnicodeString& word) {
    return word.CompareNoCase(PlixUnicodeString(u"FIDN")) == 0 ? SeqTypeFIDN : SeqTypeNone;
}

}  // namespace KGC
