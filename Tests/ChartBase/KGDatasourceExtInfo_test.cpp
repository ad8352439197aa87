#include "ChartBase/KGDatasourceExtInfo.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "ExtInfoTestHelpers.h"

using exttest::U8;
using KGC::KGDatasourceExtInfo;
using KGC::KGS57Sequence;
using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace {

constexpr KGS57Sequence::KGS57SequenceType kFIDN = KGS57Sequence::SeqTypeFIDN;
constexpr KGS57Sequence::KGS57SequenceType kNone = KGS57Sequence::SeqTypeNone;

std::vector<std::string> Names(const PlixArray<KGS57Sequence>& seqs) {
    std::vector<std::string> names;
    for (const KGS57Sequence& s : seqs) names.push_back(U8(s.GetName()));
    return names;
}

KGDatasourceExtInfo Read(const std::string& text) {
    KGDatasourceExtInfo info;
    info.SetExtInfo(text);
    return info;
}

}  // namespace

TEST(KGDatasourceExtInfo, NamesAreUniqueWithoutRegardToCaseAndLookUpsIgnoreCase) {
    KGDatasourceExtInfo info;
    EXPECT_FALSE(info.AddS57Seq(KGS57Sequence()));
    EXPECT_TRUE(info.AddS57Seq(KGS57Sequence("fidn", 1, 10, kFIDN)));
    EXPECT_FALSE(info.AddS57Seq(KGS57Sequence("FIDN", 5, 50, kNone)));
    EXPECT_TRUE(info.AddS57Seq(KGS57Sequence("Edges", 7, 70, kNone)));
    EXPECT_TRUE(info.AddS57Seq(KGS57Sequence("Nodes", 8, 80, kFIDN)));
    EXPECT_EQ(Names(info.GetS57Seqs()), (std::vector<std::string>{"fidn", "Edges", "Nodes"}));

    KGS57Sequence out("untouched", 3, 4, kNone);
    const KGS57Sequence before = out;
    EXPECT_FALSE(info.GetS57Seq(out, ""));
    EXPECT_FALSE(info.GetS57Seq(out, "Faces"));
    EXPECT_EQ(out, before);
    ASSERT_TRUE(info.GetS57Seq(out, "FIDN"));
    EXPECT_EQ(out, KGS57Sequence("fidn", 1, 10, kFIDN));  // the first one, kept unchanged

    EXPECT_EQ(Names(info.GetS57Seqs(kFIDN)), (std::vector<std::string>{"fidn", "Nodes"}));
    EXPECT_EQ(Names(info.GetS57Seqs(kNone)), (std::vector<std::string>{"Edges"}));
    EXPECT_TRUE(info.GetS57Seqs(static_cast<KGS57Sequence::KGS57SequenceType>(2)).IsEmpty());

    EXPECT_FALSE(info.DelS57Seq(""));
    EXPECT_FALSE(info.DelS57Seq("Faces"));
    EXPECT_TRUE(info.DelS57Seq("EDGES"));
    EXPECT_FALSE(info.DelS57Seq("Edges"));
    EXPECT_EQ(Names(info.GetS57Seqs()), (std::vector<std::string>{"fidn", "Nodes"}));
    EXPECT_TRUE(info.DelS57Seq("fidn"));
    EXPECT_TRUE(info.DelS57Seq("nodes"));
    EXPECT_FALSE(info.DelS57Seq("nodes"));  // empty list

    // Copies are handed out: changing one does not reach the object.
    info.AddS57Seq(KGS57Sequence("A", 1, 2, kNone));
    PlixArray<KGS57Sequence> copy = info.GetS57Seqs();
    copy[0].SetStartValue(99);
    EXPECT_EQ(info.GetS57Seqs()[0].GetStartValue(), 1);
}

TEST(KGDatasourceExtInfo, WritesEverySequenceAsAnEmptyElementWithFourAttributes) {
    KGDatasourceExtInfo empty;
    pugi::xml_document doc;
    pugi::xml_node root = exttest::ParseRoot(doc, empty.MakeExtInfoDoc());
    EXPECT_STREQ(root.name(), "ChartDatasourceInfo");
    EXPECT_EQ(exttest::ChildNames(root), (std::vector<std::string>{"Sequences"}));
    EXPECT_TRUE(root.child("Sequences").first_child().empty());
    EXPECT_EQ(U8(empty.MakeExtInfoDoc()).find("<?xml"), std::string::npos);

    KGDatasourceExtInfo info;
    info.AddS57Seq(KGS57Sequence("FIDN", 1, 4294967296LL, kFIDN));
    info.AddS57Seq(KGS57Sequence("R&D <\"1\">", LLONG_MIN, LLONG_MAX, kNone));
    info.AddS57Seq(
        KGS57Sequence("Unset", -1, -1, static_cast<KGS57Sequence::KGS57SequenceType>(5)));
    const PlixUnicodeString text = info.MakeExtInfoDoc();
    EXPECT_EQ(info.GetExtInfoText(), text);

    pugi::xml_document parsed;
    pugi::xml_node seqs = exttest::ParseRoot(parsed, text).child("Sequences");
    EXPECT_EQ(exttest::ChildNames(seqs),
              (std::vector<std::string>{"Sequence", "Sequence", "Sequence"}));
    pugi::xml_node first = seqs.first_child();
    EXPECT_EQ(exttest::AttributeNames(first),
              (std::vector<std::string>{"name", "type", "startValue", "maxValue"}));
    EXPECT_TRUE(first.first_child().empty());
    EXPECT_STREQ(first.attribute("type").value(), "FIDN");
    EXPECT_STREQ(first.attribute("startValue").value(), "1");
    EXPECT_STREQ(first.attribute("maxValue").value(), "4294967296");
    pugi::xml_node second = first.next_sibling();
    EXPECT_STREQ(second.attribute("name").value(), "R&D <\"1\">");
    EXPECT_STREQ(second.attribute("type").value(), "None");
    EXPECT_STREQ(second.attribute("startValue").value(), "-9223372036854775808");
    EXPECT_STREQ(second.attribute("maxValue").value(), "9223372036854775807");
    pugi::xml_node third = second.next_sibling();
    EXPECT_STREQ(third.attribute("type").value(), "None");
    EXPECT_STREQ(third.attribute("startValue").value(), "-1");

    // Adding and deleting leave the stored document alone.
    info.DelS57Seq("FIDN");
    info.AddS57Seq(KGS57Sequence("New", 1, 2, kNone));
    EXPECT_EQ(info.GetExtInfoText(), text);
}

TEST(KGDatasourceExtInfo, ReadingMirrorsTheDocumentAndFillsGapsWithDefaults) {
    const std::string text =
        "<ChartDatasourceInfo><Sequences>"
        "<Sequence name='FIDN' type='fidn' startValue='1' maxValue='4294967296'/>"
        "<Sequence name='fidn' type='Other' maxValue='9'/>"
        "<Sequence type='FIDN' startValue='' maxValue='abc'/>"
        "<Sequence name='Blank' type='' startValue=' -12x' maxValue='99999999999999999999'/>"
        "<Other name='Ignored'/>"
        "</Sequences></ChartDatasourceInfo>";
    KGDatasourceExtInfo info;
    info.AddS57Seq(KGS57Sequence("Earlier", 1, 2, kFIDN));
    info.SetExtInfo(text);
    EXPECT_EQ(U8(info.GetExtInfoText()), text);

    const PlixArray<KGS57Sequence> seqs = info.GetS57Seqs();
    ASSERT_EQ(seqs.GetSize(), 4);  // nothing merged with "Earlier", duplicates and no-name kept
    EXPECT_EQ(seqs[0], KGS57Sequence("FIDN", 1, 4294967296LL, kFIDN));
    EXPECT_EQ(seqs[1], KGS57Sequence("fidn", -1, 9, kNone));
    EXPECT_EQ(seqs[2], KGS57Sequence("", -1, 0, kFIDN));
    EXPECT_EQ(seqs[3], KGS57Sequence("Blank", -12, LLONG_MAX, kNone));

    KGS57Sequence out;
    ASSERT_TRUE(info.GetS57Seq(out, "FIDN"));
    EXPECT_EQ(out.GetStartValue(), 1);  // the first of the two

    // The nameless record is not written back; the others are, duplicates included.
    KGDatasourceExtInfo again = Read(U8(info.MakeExtInfoDoc()));
    EXPECT_EQ(Names(again.GetS57Seqs()), (std::vector<std::string>{"FIDN", "fidn", "Blank"}));
}

TEST(KGDatasourceExtInfo, UnreadableOrIncompleteDocumentsGiveNoSequencesButAreKept) {
    std::vector<std::string> texts = exttest::UnreadableDocuments("ChartDatasourceInfo");
    texts.push_back("<ChartDatasourceInfo/>");
    texts.push_back("<ChartDatasourceInfo><Sequence name='A'/></ChartDatasourceInfo>");
    texts.push_back("<Sequences><Sequence name='A'/></Sequences>");
    texts.push_back("<ChartDatasourceInfo><Sequences><Sequence name='A'/></Sequences>");
    texts.push_back(
        "<chartdatasourceinfo><Sequences><Sequence name='A'/></Sequences>"
        "</chartdatasourceinfo>");
    for (const std::string& text : texts) {
        KGDatasourceExtInfo info;
        info.AddS57Seq(KGS57Sequence("Earlier", 1, 2, kFIDN));
        info.SetExtInfo(text);
        EXPECT_TRUE(info.GetS57Seqs().IsEmpty()) << text;
        EXPECT_EQ(info.GetExtInfoText(), PlixUnicodeString(text)) << text;
    }
}

TEST(KGDatasourceExtInfo, HandWrittenSequencesReadBackEqual) {
    KGDatasourceExtInfo info;
    info.AddS57Seq(KGS57Sequence("FIDN", 1, 4294967296LL, kFIDN));
    info.AddS57Seq(KGS57Sequence("Edges", 4294967297LL, 9007199254740993LL, kNone));
    info.AddS57Seq(KGS57Sequence(u8"海图 \u00e9 & <'\">", -4294967296LL, 0, kFIDN));
    info.AddS57Seq(KGS57Sequence(" padded\t", LLONG_MIN, LLONG_MAX, kNone));
    const KGDatasourceExtInfo back = Read(U8(info.MakeExtInfoDoc()));
    const PlixArray<KGS57Sequence> want = info.GetS57Seqs();
    const PlixArray<KGS57Sequence> got = back.GetS57Seqs();
    ASSERT_EQ(got.GetSize(), want.GetSize());
    for (int i = 0; i < want.GetSize(); ++i) EXPECT_EQ(got[i], want[i]) << i;
}

TEST(KGDatasourceExtInfo, GeneratedSequencesReadBackEqual) {
    std::mt19937 rng(20240517);
    std::uniform_int_distribution<long long> anyValue(LLONG_MIN, LLONG_MAX);
    std::uniform_int_distribution<long long> wideValue(-1, 1LL << 40);
    for (int round = 0; round < 300; ++round) {
        KGDatasourceExtInfo info;
        const int count = std::uniform_int_distribution<int>(0, 6)(rng);
        for (int i = 0; i < count; ++i) {
            auto value = [&] { return rng() % 2 ? anyValue(rng) : wideValue(rng); };
            const PlixUnicodeString name = exttest::RandomName(rng);
            const long long start = value();
            const long long max = value();
            info.AddS57Seq(KGS57Sequence(name, start, max, rng() % 2 ? kFIDN : kNone));
        }
        const PlixUnicodeString text = info.MakeExtInfoDoc();
        KGDatasourceExtInfo back;
        back.SetExtInfo(text);
        const PlixArray<KGS57Sequence> want = info.GetS57Seqs();
        const PlixArray<KGS57Sequence> got = back.GetS57Seqs();
        ASSERT_EQ(got.GetSize(), want.GetSize()) << U8(text);
        for (int i = 0; i < want.GetSize(); ++i) EXPECT_EQ(got[i], want[i]) << U8(text);
        EXPECT_EQ(back.MakeExtInfoDoc(), text);
    }
}
