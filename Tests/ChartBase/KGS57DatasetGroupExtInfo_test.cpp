#include "ChartBase/KGS57DatasetGroupExtInfo.h"

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "ExtInfoTestHelpers.h"
#include "TestSupport.h"

using exttest::U8;
using KGC::KGGeoCoordSys;
using KGC::KGPrjCoordSys;
using KGC::KGS57DatasetGroupExtInfo;
using PLIX::PlixRect2D;
using PLIX::PlixUnicodeString;
using Names = KGS57DatasetGroupExtInfo::TableNames;
using Strings = std::vector<std::string>;
using NameMap = std::map<int, Strings>;

namespace {

const char kSource[] = "../../../Src/ChartBase/KGS57DatasetGroupExtInfo";

Strings ToStrings(const Names& names) {
    Strings out;
    for (const PlixUnicodeString& n : names) out.push_back(U8(n));
    return out;
}

Names ToNames(const Strings& strings) {
    Names out;
    for (const std::string& s : strings) out.Add(PlixUnicodeString(s));
    return out;
}

NameMap ToMap(const KGS57DatasetGroupExtInfo& info) {
    NameMap out;
    for (const auto& entry : info.GetDicFeaTableName()) out[entry.first] = ToStrings(entry.second);
    return out;
}

// Every record is a level 400 warning with code -100 from this unit, in the order given.
void ExpectWarnings(const vltest::LogCapture& log, const Strings& messages) {
    EXPECT_EQ(log.Messages(), messages);
    for (const KGC::KGLogRecord& record : log.Records()) {
        EXPECT_EQ(record.level, 400);
        EXPECT_TRUE(record.hasCode);
        EXPECT_EQ(record.code, -100);
        EXPECT_EQ(record.source, kSource);
        EXPECT_GT(record.line, 0);
    }
}

KGPrjCoordSys Projection(int type, int geoType, const char* name = "") {
    KGGeoCoordSys geo;
    geo.SetTypeID(geoType);
    KGPrjCoordSys prj;
    prj.SetTypeID(type);
    prj.SetName(name);
    prj.SetGeoCoordSys(geo);
    return prj;
}

void SetTables(KGS57DatasetGroupExtInfo& info, const Strings& t) {
    info.SetDSIDTableName(t[0]);
    info.SetVITableName(t[1]);
    info.SetVCTableName(t[2]);
    info.SetVETableName(t[3]);
    info.SetFVETableName(t[4]);
    info.SetFVPTableName(t[5]);
    info.SetRSTableName(t[6]);
}

Strings Tables(const KGS57DatasetGroupExtInfo& info) {
    return {U8(info.GetDSIDTableName()), U8(info.GetVITableName()),  U8(info.GetVCTableName()),
            U8(info.GetVETableName()),   U8(info.GetFVETableName()), U8(info.GetFVPTableName()),
            U8(info.GetRSTableName())};
}

// A group with every field set, as a converter leaves it.
KGS57DatasetGroupExtInfo Filled() {
    KGS57DatasetGroupExtInfo info;
    info.SetCellName("CN300001");
    info.SetScale(50000);
    PlixRect2D bounds{118.5, 32.25, 119.75, 31.125};
    info.SetBounds(bounds);
    info.SetPrjCoordSys(Projection(32650, 4490, "CGCS2000 / UTM 50N"));
    SetTables(info, {"DSID", "VI", "VC", "VE", "FVE", "FVP", "RS"});
    info.AppendTableName(75, "LIGHTS_P");
    info.AppendTableName(42, "DEPARE_A");
    info.AppendTableName(42, "DEPARE_A2");
    return info;
}

void ExpectSameFields(const KGS57DatasetGroupExtInfo& got, const KGS57DatasetGroupExtInfo& want) {
    EXPECT_EQ(got.GetCellName(), want.GetCellName());
    EXPECT_EQ(got.GetScale(), want.GetScale());
    EXPECT_EQ(got.GetBounds().left, want.GetBounds().left);
    EXPECT_EQ(got.GetBounds().top, want.GetBounds().top);
    EXPECT_EQ(got.GetBounds().right, want.GetBounds().right);
    EXPECT_EQ(got.GetBounds().bottom, want.GetBounds().bottom);
    EXPECT_EQ(got.GetPrjCoordsys().GetTypeID(), want.GetPrjCoordsys().GetTypeID());
    EXPECT_EQ(got.GetPrjCoordsys().GetGeoCoordSys().GetTypeID(),
              want.GetPrjCoordsys().GetGeoCoordSys().GetTypeID());
    EXPECT_TRUE(got.GetPrjCoordsys() == want.GetPrjCoordsys());
    EXPECT_EQ(Tables(got), Tables(want));
    EXPECT_EQ(ToMap(got), ToMap(want));
}

const Strings kEveryElementMissing = {
    "Have no DSNM Info",       "Have no CSCL Info", "Have no Bounds Info",
    "Have no Projection Info", "Have no DSID Info", "Have no VI Info",
    "Have no VC Info",         "Have no VE Info",   "Have no FVE Info",
    "Have no FVP Info",        "Have no RS Info",   "Have no Feature Dataset Info"};

}  // namespace

TEST(KGS57DatasetGroupExtInfo, ANewGroupHoldsTheDefaults) {
    const KGS57DatasetGroupExtInfo info;
    EXPECT_TRUE(info.GetCellName().IsEmpty());
    EXPECT_EQ(info.GetScale(), 0);
    EXPECT_EQ(Tables(info), Strings(7, ""));
    EXPECT_EQ(info.GetBounds().left, 0.0);
    EXPECT_EQ(info.GetBounds().top, 0.0);
    EXPECT_EQ(info.GetBounds().right, 0.0);
    EXPECT_EQ(info.GetBounds().bottom, 0.0);
    EXPECT_EQ(info.GetPrjCoordsys().GetTypeID(), 1);
    EXPECT_EQ(info.GetPrjCoordsys().GetGeoCoordSys().GetTypeID(), 4326);
    EXPECT_TRUE(info.GetDicFeaTableName().IsEmpty());
    EXPECT_FALSE(info.HasGroupExtInfo());
    EXPECT_TRUE(info.GetExtInfoText().IsEmpty());
}

TEST(KGS57DatasetGroupExtInfo, FeatureTableNamesPerObjectClassCode) {
    KGS57DatasetGroupExtInfo info;
    info.AppendTableName(5, "A");
    info.AppendTableName(5, "A");
    EXPECT_EQ(ToMap(info), (NameMap{{5, {"A", "A"}}}));

    Names empty;
    info.AppendTableNames(7, empty);  // creates an empty entry
    Names more = ToNames({"B", "C"});
    info.AppendTableNames(5, more);
    info.AppendTableNames(8, more);
    EXPECT_EQ(ToMap(info), (NameMap{{5, {"A", "A", "B", "C"}}, {7, {}}, {8, {"B", "C"}}}));

    Names replacement = ToNames({"D"});
    info.SetFeaTableNames(5, replacement);
    info.SetFeaTableNames(7, empty);
    info.SetFeaTableNames(99, empty);  // nothing to remove
    EXPECT_EQ(ToMap(info), (NameMap{{5, {"D"}}, {8, {"B", "C"}}}));

    // The object keeps its own copies.
    replacement.Add("E");
    KGS57DatasetGroupExtInfo::FeatureTableDict dict = info.GetDicFeaTableName();
    dict.RemoveAll();
    EXPECT_EQ(ToMap(info), (NameMap{{5, {"D"}}, {8, {"B", "C"}}}));

    KGS57DatasetGroupExtInfo::FeatureTableDict other;
    other[-3] = ToNames({"N"});
    info.SetDictFeaTableName(other);
    EXPECT_EQ(ToMap(info), (NameMap{{-3, {"N"}}}));

    vltest::LogCapture log;
    EXPECT_EQ(ToStrings(info.GetFeaTableNames(-3)), Strings{"N"});
    ExpectWarnings(log, {});
    EXPECT_TRUE(info.GetFeaTableNames(42).IsEmpty());
    ExpectWarnings(log, {"Have No the dataset which it's OBJL value = 42"});
}

TEST(KGS57DatasetGroupExtInfo, WritingANewGroupWarnsOfEveryGapInOrderButWritesEveryElement) {
    KGS57DatasetGroupExtInfo info;
    vltest::LogCapture log;
    const PlixUnicodeString text = info.MakeExtInfoDoc();
    ExpectWarnings(
        log,
        {"S57GroupExtInfo's DSNM value is empty!", "S57GroupExtInfo's CSCL value is invalid",
         "S57GroupExtInfo's DSID Table Name is empty!", "S57GroupExtInfo's VI Table Name is empty!",
         "S57GroupExtInfo's VC Table Name is empty!", "S57GroupExtInfo's VE Table Name is empty!",
         "S57GroupExtInfo's FVE Table Name is empty!", "S57GroupExtInfo's FVP Table Name is empty!",
         "S57GroupExtInfo's RS Table Name is empty!"});
    // Each warning comes from its own statement except the seven of the table loop.
    EXPECT_NE(log.Records()[0].line, log.Records()[1].line);
    EXPECT_EQ(info.GetExtInfoText(), text);
    EXPECT_FALSE(info.HasGroupExtInfo());

    pugi::xml_document doc;
    pugi::xml_node root = exttest::ParseRoot(doc, text);
    EXPECT_STREQ(root.name(), "S57GroupExtInfo");
    EXPECT_EQ(exttest::ChildNames(root),
              (Strings{"DSNM", "CSCL", "Bounds", "PrjCoordSys", "DSIDTableName", "VITableName",
                       "VCTableName", "VETableName", "FVETableName", "FVPTableName", "RSTableName",
                       "FeatureTableNames"}));
    EXPECT_STREQ(root.child_value("CSCL"), "0");
    EXPECT_EQ(exttest::ChildNames(root.child("Bounds")),
              (Strings{"Top", "Left", "Bottom", "Right"}));
    EXPECT_STREQ(root.child("Bounds").child("Top").attribute("value").value(), "0.000000");
    EXPECT_TRUE(exttest::ChildNames(root.child("FeatureTableNames")).empty());

    // A complete group writes without a word.
    log.Clear();
    KGS57DatasetGroupExtInfo filled = Filled();
    filled.MakeExtInfoDoc();
    ExpectWarnings(log, {});
}

TEST(KGS57DatasetGroupExtInfo, ScaleBelowOneIsWarnedOfAndWrittenAsAPlainInteger) {
    for (long long scale : {0LL, -5LL, 1LL, 2147483647LL, 5000000000LL}) {
        KGS57DatasetGroupExtInfo info = Filled();
        info.SetScale(scale);
        vltest::LogCapture log;
        const PlixUnicodeString text = info.MakeExtInfoDoc();
        ExpectWarnings(log,
                       scale < 1 ? Strings{"S57GroupExtInfo's CSCL value is invalid"} : Strings{});
        pugi::xml_document doc;
        const std::string written = exttest::ParseRoot(doc, text).child_value("CSCL");
        // Deliberately 32-bit: a scale beyond the int range keeps only its low 32 bits.
        EXPECT_EQ(written, scale == 5000000000LL ? "705032704" : std::to_string(scale));
    }
    // The reader takes the full 64-bit value, without a range check.
    KGS57DatasetGroupExtInfo info;
    info.SetExtInfo("<S57GroupExtInfo><CSCL> 5000000000</CSCL></S57GroupExtInfo>");
    EXPECT_EQ(info.GetScale(), 5000000000LL);
    info.SetExtInfo("<S57GroupExtInfo><CSCL>-7</CSCL></S57GroupExtInfo>");
    EXPECT_EQ(info.GetScale(), -7);
}

TEST(KGS57DatasetGroupExtInfo, BoundsProjectionAndFeatureTablesInTheDocument) {
    KGS57DatasetGroupExtInfo info = Filled();
    PlixRect2D bounds{-0.5, 1.23456789, 180.0000004, -89.9999996};
    info.SetBounds(bounds);
    Names none;
    info.SetFeaTableNames(42, none);
    Names t12 = ToNames({"T1", "T2"});
    info.SetFeaTableNames(5, t12);
    info.AppendTableName(2, "T3");
    info.AppendTableNames(9, none);
    info.AppendTableName(11, "");
    info.AppendTableName(12, "");
    info.AppendTableName(12, "x");
    const PlixUnicodeString text = info.MakeExtInfoDoc();

    pugi::xml_document doc;
    pugi::xml_node root = exttest::ParseRoot(doc, text);
    pugi::xml_node b = root.child("Bounds");
    EXPECT_STREQ(b.child("Top").attribute("value").value(), "1.234568");
    EXPECT_STREQ(b.child("Left").attribute("value").value(), "-0.500000");
    EXPECT_STREQ(b.child("Bottom").attribute("value").value(), "-90.000000");
    EXPECT_STREQ(b.child("Right").attribute("value").value(), "180.000000");

    // The projection is escaped text of the element, not markup inside it.
    pugi::xml_node prj = root.child("PrjCoordSys");
    EXPECT_TRUE(exttest::ChildNames(prj).empty());
    KGPrjCoordSys read;
    ASSERT_TRUE(read.FromXML(PlixUnicodeString(prj.child_value()), 0));
    EXPECT_EQ(read.GetTypeID(), 32650);
    EXPECT_EQ(read.GetGeoCoordSys().GetTypeID(), 4490);

    // Ascending codes; entries without names (or with one empty name) are left out.
    Strings features;
    for (pugi::xml_node f : root.child("FeatureTableNames").children("Feature")) {
        EXPECT_EQ(exttest::AttributeNames(f), (Strings{"Code", "Names"}));
        features.push_back(std::string(f.attribute("Code").value()) + "=" +
                           f.attribute("Names").value());
    }
    EXPECT_EQ(features, (Strings{"2=T3", "5=T1,T2", "12=,x", "75=LIGHTS_P"}));

    KGS57DatasetGroupExtInfo back;
    back.SetExtInfo(text);
    EXPECT_EQ(back.GetBounds().top, 1.234568);
    EXPECT_EQ(back.GetBounds().left, -0.5);
    EXPECT_EQ(back.GetBounds().bottom, -90.0);
    EXPECT_EQ(back.GetBounds().right, 180.0);
    EXPECT_EQ(ToMap(back),
              (NameMap{{2, {"T3"}}, {5, {"T1", "T2"}}, {12, {"", "x"}}, {75, {"LIGHTS_P"}}}));
}

TEST(KGS57DatasetGroupExtInfo, ReadingOverlaysWhatTheDocumentHoldsAndWarnsOfWhatItLacks) {
    KGS57DatasetGroupExtInfo info = Filled();
    const KGS57DatasetGroupExtInfo before = Filled();
    vltest::LogCapture log;
    info.SetExtInfo("<S57GroupExtInfo/>");
    ExpectWarnings(log, kEveryElementMissing);
    ExpectSameFields(info, before);
    EXPECT_TRUE(info.HasGroupExtInfo());
    EXPECT_EQ(U8(info.GetExtInfoText()), "<S57GroupExtInfo/>");

    // Everything but the scale: the scale is kept, all the rest is taken.
    KGS57DatasetGroupExtInfo source;
    source.SetCellName("GB5X01");
    source.SetScale(1);
    PlixRect2D bounds{1, 2, 3, 4};
    source.SetBounds(bounds);
    source.SetPrjCoordSys(Projection(3857, 4326));
    SetTables(source, {"a", "b", "c", "d", "e", "f", "g"});
    source.AppendTableName(1, "one");
    std::string text = U8(source.MakeExtInfoDoc());
    const size_t from = text.find("<CSCL>");
    text.erase(from, text.find("</CSCL>") + 7 - from);
    log.Clear();
    info.SetExtInfo(text);
    ExpectWarnings(log, {"Have no CSCL Info"});
    source.SetScale(50000);
    ExpectSameFields(info, source);

    // A missing bound, an unreadable projection and a hand-edited order: no warning, the
    // missing bound and the projection stay as they were, the rest is found.
    log.Clear();
    info.SetExtInfo(
        "<S57GroupExtInfo><RSTableName>rs</RSTableName><PrjCoordSys>garbage</PrjCoordSys>"
        "<Bounds><Right value='9.5'/><Top value=''/></Bounds><DSNM> </DSNM><CSCL>x</CSCL>"
        "<FeatureTableNames/><VITableName/><DSIDTableName>d</DSIDTableName>"
        "<FVPTableName>p</FVPTableName><VETableName>e</VETableName><VCTableName>c"
        "</VCTableName><FVETableName>v</FVETableName></S57GroupExtInfo>");
    ExpectWarnings(log, {});
    EXPECT_EQ(U8(info.GetCellName()), " ");
    EXPECT_EQ(info.GetScale(), 0);
    EXPECT_EQ(info.GetBounds().left, 1.0);
    EXPECT_EQ(info.GetBounds().top, 0.0);
    EXPECT_EQ(info.GetBounds().right, 9.5);
    EXPECT_EQ(info.GetBounds().bottom, 4.0);
    EXPECT_EQ(info.GetPrjCoordsys().GetTypeID(), 3857);
    EXPECT_EQ(Tables(info), (Strings{"d", "", "c", "e", "v", "p", "rs"}));
    EXPECT_TRUE(info.GetDicFeaTableName().IsEmpty());
}

TEST(KGS57DatasetGroupExtInfo, APresentFeatureTableElementReplacesEveryEntry) {
    KGS57DatasetGroupExtInfo info = Filled();
    info.SetExtInfo(
        "<S57GroupExtInfo><FeatureTableNames>"
        "<Feature Code='5' Names='a,,b'/><Feature Code='5' Names='c'/>"
        "<Feature Code='x' Names='d'/><Feature Code='7'/><Other Code='8' Names='e'/>"
        "<Feature Code=' -2' Names='f,'/>"
        "</FeatureTableNames></S57GroupExtInfo>");
    EXPECT_EQ(ToMap(info), (NameMap{{-2, {"f", ""}}, {0, {"d"}}, {5, {"c"}}, {7, {}}}));
    EXPECT_EQ(U8(info.GetCellName()), "CN300001");

    // Without the element the names stay.
    info.SetExtInfo("<S57GroupExtInfo><DSNM>X</DSNM></S57GroupExtInfo>");
    EXPECT_EQ(ToMap(info).size(), 4u);
}

TEST(KGS57DatasetGroupExtInfo, UnreadableDocumentsChangeNothingButTheText) {
    for (bool alreadyRead : {false, true}) {
        for (const std::string& text : exttest::UnreadableDocuments("S57GroupExtInfo")) {
            KGS57DatasetGroupExtInfo info = Filled();
            if (alreadyRead) info.SetExtInfo(info.MakeExtInfoDoc());
            vltest::LogCapture log;
            info.SetExtInfo(text);
            ExpectWarnings(log, text.empty() ? Strings{} : Strings{"Have no S57 Info"});
            ExpectSameFields(info, Filled());
            EXPECT_EQ(info.HasGroupExtInfo(), alreadyRead) << text;
            EXPECT_EQ(info.GetExtInfoText(), PlixUnicodeString(text));
        }
    }
}

TEST(KGS57DatasetGroupExtInfo, InitKeepsTheFeatureTablesAndCopiesTakeEverything) {
    KGS57DatasetGroupExtInfo info = Filled();
    info.SetExtInfo(info.MakeExtInfoDoc());
    ASSERT_TRUE(info.HasGroupExtInfo());

    KGS57DatasetGroupExtInfo copy;
    copy.AppendTableName(1, "old");
    copy = info;
    ExpectSameFields(copy, info);
    EXPECT_TRUE(copy.HasGroupExtInfo());
    EXPECT_EQ(copy.GetExtInfoText(), info.GetExtInfoText());
    const KGS57DatasetGroupExtInfo constructed(info);
    ExpectSameFields(constructed, info);
    EXPECT_TRUE(constructed.HasGroupExtInfo());

    info.Init();
    KGS57DatasetGroupExtInfo expected;
    KGS57DatasetGroupExtInfo::FeatureTableDict names = Filled().GetDicFeaTableName();
    expected.SetDictFeaTableName(names);
    ExpectSameFields(info, expected);
    EXPECT_FALSE(info.HasGroupExtInfo());
    EXPECT_TRUE(info.GetExtInfoText().IsEmpty());
    EXPECT_EQ(ToMap(copy), ToMap(info));  // the copy is independent and the names were kept
}

TEST(KGS57DatasetGroupExtInfo, HandWrittenGroupsReadBackEqual) {
    KGS57DatasetGroupExtInfo info = Filled();
    info.SetCellName(u8"\u6d77\u56fe & <\u00e9\u00f1> \"'");
    info.SetScale(2147483647);
    PlixRect2D bounds{-179.999999, 89.999999, 179.999999, -89.999999};
    info.SetBounds(bounds);
    info.SetPrjCoordSys(Projection(-7, 0, u8"Mercator \u00e9 <&>"));
    SetTables(info, {"D S I D", u8"\u6d4b\u6df1", "<VC>", "&VE;", "'FVE'", "\"FVP\"", "\tRS\r\n"});
    Names many = ToNames({"A", u8"B \u00e9", "C&D", "<E>"});
    info.SetFeaTableNames(INT_MIN, many);
    info.SetFeaTableNames(INT_MAX, many);
    info.SetFeaTableNames(0, many);

    KGS57DatasetGroupExtInfo back;
    vltest::LogCapture log;
    back.SetExtInfo(info.MakeExtInfoDoc());
    ExpectWarnings(log, {});
    ExpectSameFields(back, info);
    EXPECT_TRUE(back.HasGroupExtInfo());
    EXPECT_EQ(back.GetExtInfoText(), info.GetExtInfoText());
}

TEST(KGS57DatasetGroupExtInfo, GeneratedGroupsReadBackEqual) {
    std::mt19937 rng(5742);
    std::uniform_int_distribution<long long> micro(-200000000000LL, 200000000000LL);
    std::uniform_int_distribution<int> anyInt(INT_MIN, INT_MAX);
    std::uniform_int_distribution<int> small(0, 4);
    for (int round = 0; round < 300; ++round) {
        KGS57DatasetGroupExtInfo info;
        info.SetCellName(exttest::RandomName(rng));
        info.SetScale(std::uniform_int_distribution<long long>(1, INT_MAX)(rng));
        // Millionths survive "%f" exactly.
        PlixRect2D bounds;
        bounds.left = static_cast<double>(micro(rng)) / 1e6;
        bounds.top = static_cast<double>(micro(rng)) / 1e6;
        bounds.right = static_cast<double>(micro(rng)) / 1e6;
        bounds.bottom = static_cast<double>(micro(rng)) / 1e6;
        info.SetBounds(bounds);
        const int prjType = anyInt(rng);
        const int geoType = anyInt(rng);
        info.SetPrjCoordSys(Projection(prjType, geoType));
        Strings tables;
        for (int i = 0; i < 7; ++i) tables.push_back(U8(exttest::RandomName(rng)));
        SetTables(info, tables);
        const int codes = small(rng);
        for (int c = 0; c < codes; ++c) {
            const int code = rng() % 2 ? anyInt(rng) : small(rng);
            const int count = 1 + small(rng);
            for (int n = 0; n < count; ++n)
                info.AppendTableName(code, exttest::RandomName(rng, true));
        }

        const PlixUnicodeString text = info.MakeExtInfoDoc();
        KGS57DatasetGroupExtInfo back;
        vltest::LogCapture log;
        back.SetExtInfo(text);
        EXPECT_TRUE(log.Records().empty()) << U8(text);
        ExpectSameFields(back, info);
        EXPECT_EQ(back.MakeExtInfoDoc(), text);
        if (HasFailure()) {
            ADD_FAILURE() << "round " << round << ":\n" << U8(text);
            break;
        }
    }
}
