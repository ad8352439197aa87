#include "ChartBase/KGS57ExtInfo.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <string>
#include <vector>

#include "ExtInfoTestHelpers.h"

using exttest::U8;
using KGC::KGS57ExtInfo;
using PLIX::PlixUnicodeString;
using Strings = std::vector<std::string>;

namespace {

KGS57ExtInfo::KGS57DatasetType Type(int value) {
    return static_cast<KGS57ExtInfo::KGS57DatasetType>(value);
}

// The answers of the nine type tests, in the order of the enumeration.
std::vector<bool> Tests(const KGS57ExtInfo& info) {
    return {
        info.IsS57FeatureDatasetInfo(), info.IsS57DSIDDatasetInfo(), info.IsS57VIDatasetInfo(),
        info.IsS57VCDatasetInfo(),      info.IsS57VEDatasetInfo(),   info.IsS57FVEDatasetInfo(),
        info.IsS57FVPDatasetInfo(),     info.IsS57RSDatasetInfo(),   info.IsS57AttiDatasetInfo()};
}

KGS57ExtInfo Dataset(int type, int objl, const PlixUnicodeString& acronym,
                     const PlixUnicodeString& related) {
    KGS57ExtInfo info;
    info.SetFeatureRelatedDatasetTableName(related);
    info.SetS57DatasetType(Type(type));
    info.SetS57FeatureOBJL(objl);
    info.SetS57FeatureAcronym(acronym);
    return info;
}

// Root attributes, then each child as name:attribute=value.
Strings Layout(const PlixUnicodeString& text) {
    pugi::xml_document doc;
    pugi::xml_node root = exttest::ParseRoot(doc, text);
    Strings out{std::string(root.name()) + ":" + exttest::AttributeNames(root).at(0) + "=" +
                root.first_attribute().value()};
    for (pugi::xml_node child : root.children()) {
        EXPECT_TRUE(child.first_child().empty());
        EXPECT_EQ(exttest::AttributeNames(child).size(), 1u);
        out.push_back(std::string(child.name()) + ":" + child.first_attribute().name() + "=" +
                      child.first_attribute().value());
    }
    return out;
}

void ExpectSameFields(const KGS57ExtInfo& got, const KGS57ExtInfo& want) {
    EXPECT_EQ(got.GetS57DatasetType(), want.GetS57DatasetType());
    EXPECT_EQ(got.GetS57FeatureOBJL(), want.GetS57FeatureOBJL());
    EXPECT_EQ(got.GetS57FeatureAcronym(), want.GetS57FeatureAcronym());
    EXPECT_EQ(got.GetFeatureRelatedDatasetTableName(), want.GetFeatureRelatedDatasetTableName());
}

}  // namespace

TEST(KGS57ExtInfo, EachDatasetTypeAnswersExactlyItsOwnTest) {
    KGS57ExtInfo info;
    EXPECT_EQ(info.GetS57DatasetType(), KGS57ExtInfo::S57DatasetNone);
    EXPECT_EQ(info.GetS57FeatureOBJL(), 0);
    EXPECT_TRUE(info.GetS57FeatureAcronym().IsEmpty());
    EXPECT_TRUE(info.GetFeatureRelatedDatasetTableName().IsEmpty());
    EXPECT_FALSE(info.IsS57ChartDatasetInfo());
    EXPECT_EQ(Tests(info), std::vector<bool>(9, false));
    for (int value : {10, -1, INT_MAX}) {
        info.SetS57DatasetType(Type(value));
        EXPECT_EQ(Tests(info), std::vector<bool>(9, false)) << value;
    }
    for (int value = 1; value <= 9; ++value) {
        info.SetS57DatasetType(Type(value));
        std::vector<bool> expected(9, false);
        expected[value - 1] = true;
        EXPECT_EQ(Tests(info), expected) << value;
        EXPECT_FALSE(info.IsS57ChartDatasetInfo());
    }
}

TEST(KGS57ExtInfo, ARelatedDatasetMakesAFeatureDataset) {
    KGS57ExtInfo info;
    info.SetS57DatasetType(KGS57ExtInfo::S57DatasetDSID);
    info.SetFeatureRelatedDatasetTableName("X");
    EXPECT_TRUE(info.IsS57FeatureDatasetInfo());
    EXPECT_FALSE(info.IsS57DSIDDatasetInfo());
    EXPECT_EQ(U8(info.GetFeatureRelatedDatasetTableName()), "X");
    info.SetS57DatasetType(KGS57ExtInfo::S57DatasetAtti);
    info.SetFeatureRelatedDatasetTableName("");
    EXPECT_TRUE(info.IsS57FeatureDatasetInfo());
}

TEST(KGS57ExtInfo, OnlyFeatureAndAttributeDatasetsWriteTheirObjectClass) {
    EXPECT_EQ(Layout(Dataset(1, 75, "LIGHTS", "LIGHTS_REL").MakeExtInfoDoc()),
              (Strings{"S57ExtInfo:s57DatasetType=1", "S57Feature:objl=75", "Acronym:name=LIGHTS",
                       "S57RelatedDataset:name=LIGHTS_REL"}));
    EXPECT_EQ(
        Layout(Dataset(9, -4, "LIGHTS", "LIGHTS_REL").MakeExtInfoDoc()),
        (Strings{"S57ExtInfo:s57DatasetType=9", "S57Feature:objl=-4", "Acronym:name=LIGHTS"}));
    EXPECT_EQ(Layout(Dataset(1, 0, "", "").MakeExtInfoDoc()),
              Strings{"S57ExtInfo:s57DatasetType=1"});
    EXPECT_EQ(Layout(Dataset(1, 0, "", "R").MakeExtInfoDoc()),
              (Strings{"S57ExtInfo:s57DatasetType=1", "S57RelatedDataset:name=R"}));
    for (int type : {0, 2, 3, 4, 5, 6, 7, 8, 10, -3}) {
        KGS57ExtInfo info = Dataset(type, 75, "LIGHTS", "R");
        const PlixUnicodeString text = info.MakeExtInfoDoc();
        EXPECT_EQ(Layout(text), Strings{"S57ExtInfo:s57DatasetType=" + std::to_string(type)});
        EXPECT_EQ(info.GetExtInfoText(), text);
    }
}

TEST(KGS57ExtInfo, ReadingOverlaysTheFieldsTheDocumentGives) {
    KGS57ExtInfo info = Dataset(2, 75, "LIGHTS", "R");
    const KGS57ExtInfo before = info;
    info.SetExtInfo("<S57ExtInfo/>");
    EXPECT_TRUE(info.IsS57ChartDatasetInfo());
    ExpectSameFields(info, before);
    EXPECT_TRUE(info.GetExtInfoText().IsEmpty());  // the text read is not kept

    // Children are read whatever the type, in any order; a related dataset does not change
    // the type; empty attributes are ignored.
    info.SetExtInfo(
        "<S57ExtInfo s57DatasetType=''><S57RelatedDataset name='REL'/><Acronym name=''/>"
        "<S57Feature objl='42'/></S57ExtInfo>");
    EXPECT_EQ(info.GetS57DatasetType(), KGS57ExtInfo::S57DatasetDSID);
    EXPECT_EQ(info.GetS57FeatureOBJL(), 42);
    EXPECT_EQ(U8(info.GetS57FeatureAcronym()), "LIGHTS");
    EXPECT_EQ(U8(info.GetFeatureRelatedDatasetTableName()), "REL");

    info.SetExtInfo(
        "<S57ExtInfo s57DatasetType='42'><S57Feature objl='x'/>"
        "<Acronym name='&lt;A&amp;B&gt;'/></S57ExtInfo>");
    EXPECT_EQ(info.GetS57DatasetType(), 42);  // taken as it stands
    EXPECT_EQ(Tests(info), std::vector<bool>(9, false));
    EXPECT_EQ(info.GetS57FeatureOBJL(), 0);
    EXPECT_EQ(U8(info.GetS57FeatureAcronym()), "<A&B>");

    info.SetExtInfo(
        "<S57ExtInfo s57DatasetType=' 9abc'><S57Feature objl='99999999999'/>"
        "</S57ExtInfo>");
    EXPECT_TRUE(info.IsS57AttiDatasetInfo());
    EXPECT_EQ(info.GetS57FeatureOBJL(), INT_MAX);

    info.Init();
    ExpectSameFields(info, KGS57ExtInfo());
    EXPECT_FALSE(info.IsS57ChartDatasetInfo());
}

TEST(KGS57ExtInfo, DocumentsWithoutTheRootChangeNothing) {
    std::vector<std::string> texts = exttest::UnreadableDocuments("S57ExtInfo");
    texts.push_back("<s57extinfo s57DatasetType='1'/>");
    texts.push_back("<S57Feature objl='5'/>");
    for (const std::string& text : texts) {
        KGS57ExtInfo info = Dataset(3, 7, "ACRONY", "R");
        info.MakeExtInfoDoc();
        const KGS57ExtInfo before = info;
        info.SetExtInfo(text);
        EXPECT_FALSE(info.IsS57ChartDatasetInfo()) << text;
        ExpectSameFields(info, before);
        EXPECT_EQ(info.GetExtInfoText(), before.GetExtInfoText());
    }
}

TEST(KGS57ExtInfo, FeatureAndAttributeDatasetsReadBackEqual) {
    const KGS57ExtInfo cases[] = {
        Dataset(1, 75, "LIGHTS", "LIGHTS_P_REL"),
        Dataset(1, INT_MIN, u8"\u6d77\u56fe&<>\"'", u8"R\u00e9l \u6d4b\u6df1"),
        Dataset(9, INT_MAX, " BOYLAT\t", ""),
    };
    for (const KGS57ExtInfo& info : cases) {
        KGS57ExtInfo copy = info;
        KGS57ExtInfo back;
        back.SetExtInfo(copy.MakeExtInfoDoc());
        ExpectSameFields(back, info);
        EXPECT_TRUE(back.IsS57ChartDatasetInfo());
    }

    std::mt19937 rng(911);
    std::uniform_int_distribution<int> anyInt(INT_MIN, INT_MAX);
    for (int round = 0; round < 300; ++round) {
        const int type = rng() % 2 ? 1 : 9;
        const int objl = rng() % 4 ? anyInt(rng) : 0;
        const PlixUnicodeString acronym = rng() % 4 ? exttest::RandomName(rng) : "";
        const PlixUnicodeString related =
            type == 1 && rng() % 4 ? exttest::RandomName(rng) : PlixUnicodeString();
        KGS57ExtInfo info = Dataset(type, objl, acronym, related);
        const PlixUnicodeString text = info.MakeExtInfoDoc();
        KGS57ExtInfo back;
        back.SetExtInfo(text);
        ExpectSameFields(back, info);
        EXPECT_EQ(back.MakeExtInfoDoc(), text);
        if (HasFailure()) {
            ADD_FAILURE() << "round " << round << ":\n" << U8(text);
            break;
        }
    }
}
