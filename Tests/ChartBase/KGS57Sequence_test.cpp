#include "ChartBase/KGS57Sequence.h"

#include <gtest/gtest.h>

#include "ExtInfoTestHelpers.h"

using KGC::KGS57Sequence;
using PLIX::PlixUnicodeString;

TEST(KGS57Sequence, ANewRecordHasNoNameAndValuesMarkedNotGiven) {
    KGS57Sequence seq;
    EXPECT_TRUE(seq.GetName().IsEmpty());
    EXPECT_EQ(seq.GetStartValue(), -1);
    EXPECT_EQ(seq.GetMaxValue(), -1);
    EXPECT_EQ(seq.GetType(), KGS57Sequence::SeqTypeNone);
}

TEST(KGS57Sequence, TypesAndTheirDocumentWords) {
    EXPECT_EQ(exttest::U8(KGS57Sequence::TypeToWord(KGS57Sequence::SeqTypeFIDN)), "FIDN");
    EXPECT_EQ(exttest::U8(KGS57Sequence::TypeToWord(KGS57Sequence::SeqTypeNone)), "None");
    EXPECT_EQ(
        exttest::U8(KGS57Sequence::TypeToWord(static_cast<KGS57Sequence::KGS57SequenceType>(7))),
        "None");

    for (const char* word : {"FIDN", "fidn", "FiDn"}) {
        EXPECT_EQ(KGS57Sequence::WordToType(word), KGS57Sequence::SeqTypeFIDN) << word;
    }
    for (const char* word : {"", "None", "Other", " FIDN", "FIDN ", "1"}) {
        EXPECT_EQ(KGS57Sequence::WordToType(word), KGS57Sequence::SeqTypeNone) << word;
    }
}

TEST(KGS57Sequence, EqualityComparesEveryField) {
    const KGS57Sequence base("FIDN", 1, 4294967296LL, KGS57Sequence::SeqTypeFIDN);
    EXPECT_EQ(base, KGS57Sequence("FIDN", 1, 4294967296LL, KGS57Sequence::SeqTypeFIDN));
    EXPECT_NE(base, KGS57Sequence("fidn", 1, 4294967296LL, KGS57Sequence::SeqTypeFIDN));
    EXPECT_NE(base, KGS57Sequence("FIDN", 2, 4294967296LL, KGS57Sequence::SeqTypeFIDN));
    EXPECT_NE(base, KGS57Sequence("FIDN", 1, 4294967297LL, KGS57Sequence::SeqTypeFIDN));
    EXPECT_NE(base, KGS57Sequence("FIDN", 1, 4294967296LL, KGS57Sequence::SeqTypeNone));
}
