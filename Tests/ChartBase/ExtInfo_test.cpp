// Extension-info documents of datasources, dataset groups and datasets: documents written are
// compared whole with Tests/Data/extinfo/write/, the state documents read leave with read/.
#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <string>

#include "ChartBase/KGDatasourceExtInfo.h"
#include "ChartBase/KGS57DatasetGroupExtInfo.h"
#include "ChartBase/KGS57ExtInfo.h"
#include "TestSupport.h"

using namespace KGC;
using PLIX::PlixUnicodeString;
using Group = KGS57DatasetGroupExtInfo;
using Seq = KGS57Sequence;

namespace {

constexpr Seq::KGS57SequenceType kFIDN = Seq::SeqTypeFIDN, kNone = Seq::SeqTypeNone;

std::string U8(const PlixUnicodeString& s) {
    return s.ToUtf8();
}

std::string Expected(const std::string& name) {
    return vltest::ReadFile(vltest::TestDataDir() + "extinfo/" + name);
}

// One line per record; lines are labelled in order of first appearance, so two records share
// a label exactly when they come from the same statement.
std::string Logged(const vltest::LogCapture& log) {
    std::string out;
    std::map<int, int> labels;
    for (const KGLogRecord& r : log.Records()) {
        EXPECT_EQ(r.source, "../../../Src/ChartBase/KGS57DatasetGroupExtInfo");
        EXPECT_TRUE(r.hasCode && r.line > 0);
        const int label = labels.emplace(r.line, static_cast<int>(labels.size()) + 1).first->second;
        out += "log " + std::to_string(r.level) + " " + std::to_string(r.code) + " @" +
               std::to_string(label) + " " + U8(r.message) + "\n";
    }
    return out;
}

std::string Dump(const KGDatasourceExtInfo& ds) {
    std::string out;
    for (const Seq& s : ds.GetS57Seqs())
        out += "[" + U8(s.GetName()) + "] " + U8(Seq::TypeToWord(s.GetType())) + " " +
               std::to_string(s.GetStartValue()) + " " + std::to_string(s.GetMaxValue()) + "\n";
    return out;
}

// What a copy writes (its records kept out of the caller's capture), the full scale and the flag.
std::string Dump(Group g) {
    const std::string head = "scale " + std::to_string(g.GetScale()) + " has group ext info " +
                             (g.HasGroupExtInfo() ? "yes\n" : "no\n");
    vltest::LogCapture quiet;
    return head + U8(g.MakeExtInfoDoc());
}

std::string Dump(const KGS57ExtInfo& s) {
    return "type " + std::to_string(s.GetS57DatasetType()) + " objl " +
           std::to_string(s.GetS57FeatureOBJL()) + " acronym [" + U8(s.GetS57FeatureAcronym()) +
           "] related [" + U8(s.GetFeatureRelatedDatasetTableName()) + "] chart dataset " +
           (s.IsS57ChartDatasetInfo() ? "yes" : "no") + "\n";
}

KGDatasourceExtInfo FilledDatasource() {
    KGDatasourceExtInfo ds;
    ds.AddS57Seq(Seq("Earlier", 1, 2, kFIDN));
    return ds;
}

Group FilledGroup() {
    Group g;
    g.SetExtInfo(Expected("group-filled.xml"));
    return g;
}

KGS57ExtInfo FilledDataset(int type = KGS57ExtInfo::S57DatasetDSID) {
    KGS57ExtInfo s;
    s.SetFeatureRelatedDatasetTableName("R");
    s.SetS57DatasetType(static_cast<KGS57ExtInfo::KGS57DatasetType>(type));
    s.SetS57FeatureOBJL(75);
    s.SetS57FeatureAcronym("LIGHTS");
    return s;
}

// Writes the expected document and records, reads it silently and writes it again the same.
template <class T>
void ExpectWritten(T obj, const std::string& name) {
    SCOPED_TRACE(name);
    vltest::LogCapture log;
    const PlixUnicodeString text = obj.MakeExtInfoDoc();
    EXPECT_EQ(U8(text) + Logged(log), Expected("write/" + name + ".txt"));
    EXPECT_EQ(obj.GetExtInfoText(), text);
    log.Clear();
    T fresh;
    fresh.SetExtInfo(text);
    EXPECT_EQ(Logged(log), "");
    EXPECT_EQ(fresh.MakeExtInfoDoc(), text);
}

template <class T>
std::string ReadDump(T obj, const std::string& text) {
    vltest::LogCapture log;
    obj.SetExtInfo(text);
    const PlixUnicodeString kept = obj.GetExtInfoText();
    return Dump(obj) + "text " +
           (kept == PlixUnicodeString(text) ? "(as read)" : "[" + U8(kept) + "]") + "\n" +
           Logged(log);
}

}  // namespace

TEST(ExtInfo, DocumentsWrittenAreExpectedAndReadBackTheSame) {
    KGDatasourceExtInfo ds;
    ds.SetExtInfo(Expected("write/ds-as-read.xml"));  // Edges, EDGES and a nameless record
    EXPECT_FALSE(ds.AddS57Seq(Seq("edges", 5, 50, kNone)));
    EXPECT_TRUE(ds.AddS57Seq(Seq("FIDN", 1, 4294967296LL, kFIDN)));
    ds.AddS57Seq(Seq("R&D <\"1\">", LLONG_MIN, LLONG_MAX, kNone));
    ds.AddS57Seq(Seq(u8"\u6d77\u56fe \u00e9\t", -4294967296LL, -1, Seq::KGS57SequenceType(5)));
    Seq out("untouched", 3, 4, kNone);
    EXPECT_FALSE(ds.GetS57Seq(out, "") || ds.GetS57Seq(out, "Faces") || ds.DelS57Seq("") ||
                 ds.DelS57Seq("Faces"));
    EXPECT_EQ(out, Seq("untouched", 3, 4, kNone));
    EXPECT_TRUE(ds.GetS57Seq(out, "eDGEs") && ds.DelS57Seq("edges"));  // the first of the two
    EXPECT_EQ(out, Seq("Edges", 10, 20, kNone));
    for (const Seq& other : {Seq("EDGEs", 10, 20, kNone), Seq("Edges", 0, 20, kNone),
                             Seq("Edges", 10, 21, kNone), Seq("Edges", 10, 20, kFIDN)})
        EXPECT_NE(out, other);
    EXPECT_EQ(ds.GetS57Seqs(kFIDN).GetSize(), 3);
    EXPECT_EQ(U8(ds.GetExtInfoText()), Expected("write/ds-as-read.xml"));  // edits write nothing
    ExpectWritten(ds, "ds-sequences");
    ds.Init();
    EXPECT_TRUE(ds.GetExtInfoText().IsEmpty() && !ds.AddS57Seq(Seq()));
    ExpectWritten(ds, "ds-empty");

    ExpectWritten(Group(), "group-new");
    Group group = FilledGroup();
    group.SetScale(1);
    group.SetCellName(u8"\u6d77\u56fe & <\u00e9> \"'\t");
    PLIX::PlixRect2D bounds{-0.5, 1.23456789, 180.0000004, -89.9999996};
    group.SetBounds(bounds);
    group.GetPrjCoordsys().SetName(u8"Mercator \u00e9 <&>");
    Group::TableNames none, names = group.GetFeaTableNames(75);
    group.SetFeaTableNames(INT_MIN, names);
    group.AppendTableNames(INT_MIN, names);
    group.AppendTableNames(INT_MAX, names);
    group.AppendTableNames(9, none);  // an empty entry, not written
    group.AppendTableName(11, "");    // one empty name, not written
    group.AppendTableName(12, "");
    group.AppendTableName(12, "x&<y>");
    group.AppendTableName(12, "x&<y>");
    group.SetFeaTableNames(42, names);
    group.SetFeaTableNames(75, none);
    vltest::LogCapture log;
    EXPECT_EQ(group.GetFeaTableNames(9).GetSize() + group.GetFeaTableNames(75).GetSize(), 0);
    EXPECT_EQ(Logged(log), "log 400 -100 @1 Have No the dataset which it's OBJL value = 75\n");
    ExpectWritten(group, "group-full");
    group = FilledGroup();
    group.Init();  // deliberately keeps the feature table names
    EXPECT_TRUE(!group.HasGroupExtInfo() && group.GetExtInfoText().IsEmpty());
    ExpectWritten(group, "group-init");
    group = FilledGroup();
    group.SetScale(5000000000LL);  // deliberately written through "%d": only the low 32 bits
    ExpectWritten(group, "group-wide-scale");
    group.SetScale(-5);
    ExpectWritten(group, "group-negative-scale");

    KGS57ExtInfo feature = FilledDataset(KGS57ExtInfo::S57DatasetFeature);
    feature.SetS57FeatureOBJL(INT_MIN);
    feature.SetS57FeatureAcronym(u8"\u6d77\u56fe \"&<>'");
    ExpectWritten(feature, "s57-feature");
    ExpectWritten(FilledDataset(KGS57ExtInfo::S57DatasetAtti), "s57-attribute");
    ExpectWritten(FilledDataset(), "s57-dsid");
    feature = KGS57ExtInfo();
    feature.SetS57DatasetType(KGS57ExtInfo::S57DatasetDSID);
    feature.SetFeatureRelatedDatasetTableName("");  // makes it a feature dataset, deliberately
    ExpectWritten(feature, "s57-bare-feature");
}

TEST(ExtInfo, DocumentsReadReplaceTheSequencesAndOverlayTheOtherFields) {
    for (const std::string name :
         {"ds-mirror", "ds-root-only", "ds-no-sequences", "group-empty-root", "group-no-scale",
          "group-hand-edited", "group-features", "group-wide-scale", "s57-empty-root",
          "s57-overlay", "s57-numbers", "s57-saturated"}) {
        SCOPED_TRACE(name);
        const std::string text = Expected("read/" + name + ".xml");
        const std::string got = name.rfind("ds", 0) == 0      ? ReadDump(FilledDatasource(), text)
                                : name.rfind("group", 0) == 0 ? ReadDump(FilledGroup(), text)
                                                              : ReadDump(FilledDataset(), text);
        EXPECT_EQ(got, Expected("read/" + name + ".txt"));
    }
}

TEST(ExtInfo, DocumentsWithoutTheirRootChangeNothingButTheKeptText) {
    const std::string kept = "text (as read)\n";
    for (const std::string root : {"ChartDatasourceInfo", "S57GroupExtInfo", "S57ExtInfo"}) {
        for (const std::string& text :
             {std::string(), "<" + root + "><A></" + root + ">", std::string("\xFF\xFE\x00", 3),
              "<Other><" + root + "/></Other>",
              "<" + U8(PlixUnicodeString(root).MakeLower()) + "/>"}) {
            SCOPED_TRACE(root + ": " + text);
            const std::string logged = text.empty() ? "" : "log 400 -100 @1 Have no S57 Info\n";
            std::string got = ReadDump(FilledDataset(), text);
            std::string want = Dump(FilledDataset()) + (text.empty() ? kept : "text []\n");
            if (root == "ChartDatasourceInfo")
                got = ReadDump(FilledDatasource(), text), want = kept;
            if (root == "S57GroupExtInfo") {
                got = ReadDump(FilledGroup(), text) + ReadDump(Group(), text);
                want = Dump(FilledGroup()) + kept + logged + Dump(Group()) + kept + logged;
            }
            EXPECT_EQ(got, want);
        }
    }
}

TEST(ExtInfo, DatasetTypeTestsAndInit) {
    KGS57ExtInfo s = FilledDataset();
    s.SetExtInfo("<S57ExtInfo/>");
    s.Init();
    EXPECT_EQ(Dump(s), "type 0 objl 0 acronym [] related [] chart dataset no\n");
    for (int type = -1; type <= 10; ++type) {
        s.SetS57DatasetType(static_cast<KGS57ExtInfo::KGS57DatasetType>(type));
        const bool answers[] = {
            s.IsS57FeatureDatasetInfo(), s.IsS57DSIDDatasetInfo(), s.IsS57VIDatasetInfo(),
            s.IsS57VCDatasetInfo(),      s.IsS57VEDatasetInfo(),   s.IsS57FVEDatasetInfo(),
            s.IsS57FVPDatasetInfo(),     s.IsS57RSDatasetInfo(),   s.IsS57AttiDatasetInfo()};
        for (int i = 0; i < 9; ++i) EXPECT_EQ(answers[i], type == i + 1) << type << " " << i;
    }
}
