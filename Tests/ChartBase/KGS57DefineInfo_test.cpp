#include "ChartBase/KGS57DefineInfo.h"

#include <gtest/gtest.h>

using KGC::KGS57DefineInfo;
using PLIX::PlixUnicodeString;
using PLIX::PlixVariant;

namespace {

std::string Utf8(const PlixUnicodeString& s) {
    return s.ToUtf8();
}

}  // namespace

TEST(KGS57DefineInfo, EveryValueHasItsCatalogueNameAndReadsBackFromIt) {
    using D = KGS57DefineInfo;
    const char* datums[] = {"Horizontal", "Vertical", "Sounding"};
    const char* units[] = {"Depth", "Height", "PositionalAccuracy"};
    const char* letters[] = {"E", "L", "F", "I", "A", "S"};
    const char* features[] = {"Geo", "Meta", "Collection", "Cartographic"};
    for (int v = 1; v <= 3; ++v) {
        EXPECT_EQ(Utf8(D::DatumTypeToName(static_cast<D::DatumType>(v))), datums[v - 1]);
        EXPECT_EQ(D::ToDatumType(datums[v - 1]), v);
        EXPECT_EQ(Utf8(D::UnitTypeToName(static_cast<D::UnitType>(v))), units[v - 1]);
        EXPECT_EQ(D::ToUnitType(units[v - 1]), v);
    }
    for (int v = 1; v <= 6; ++v) {
        EXPECT_EQ(Utf8(D::AttributeTypeToName(static_cast<D::AttributeType>(v))), letters[v - 1]);
        EXPECT_EQ(D::ToAttributeType(letters[v - 1]), v);
    }
    for (int v = 1; v <= 4; ++v) {
        EXPECT_EQ(Utf8(D::FeatureTypeToName(static_cast<D::FeatureType>(v))), features[v - 1]);
        EXPECT_EQ(D::ToFeatureType(features[v - 1]), v);
    }
}

TEST(KGS57DefineInfo, UnknownAndOutOfRangeValuesHaveNoName) {
    EXPECT_TRUE(KGS57DefineInfo::DatumTypeToName(KGS57DefineInfo::DatumUnknown).IsEmpty());
    EXPECT_TRUE(
        KGS57DefineInfo::DatumTypeToName(static_cast<KGS57DefineInfo::DatumType>(4)).IsEmpty());
    EXPECT_TRUE(
        KGS57DefineInfo::UnitTypeToName(static_cast<KGS57DefineInfo::UnitType>(-1)).IsEmpty());
    EXPECT_TRUE(KGS57DefineInfo::AttributeTypeToName(static_cast<KGS57DefineInfo::AttributeType>(7))
                    .IsEmpty());
    EXPECT_TRUE(
        KGS57DefineInfo::FeatureTypeToName(static_cast<KGS57DefineInfo::FeatureType>(5)).IsEmpty());
    EXPECT_TRUE(
        KGS57DefineInfo::FeatureTypeToName(static_cast<KGS57DefineInfo::FeatureType>(INT32_MIN))
            .IsEmpty());
}

TEST(KGS57DefineInfo, NamesAreReadWithoutRegardToCaseButUntrimmed) {
    EXPECT_EQ(KGS57DefineInfo::ToDatumType("HORIZONTAL"), KGS57DefineInfo::DatumHorizontal);
    EXPECT_EQ(KGS57DefineInfo::ToDatumType("vErTiCaL"), KGS57DefineInfo::DatumVertical);
    EXPECT_EQ(KGS57DefineInfo::ToUnitType("positionalaccuracy"),
              KGS57DefineInfo::UnitPositionalAccuracy);
    EXPECT_EQ(KGS57DefineInfo::ToAttributeType("s"), KGS57DefineInfo::AttrFreeText);
    EXPECT_EQ(KGS57DefineInfo::ToAttributeType("e"), KGS57DefineInfo::AttrEnumerated);
    EXPECT_EQ(KGS57DefineInfo::ToFeatureType("meta"), KGS57DefineInfo::FeatureMeta);

    EXPECT_EQ(KGS57DefineInfo::ToAttributeType(" E"), KGS57DefineInfo::AttrUnknown);
    EXPECT_EQ(KGS57DefineInfo::ToFeatureType("Geo "), KGS57DefineInfo::FeatureUnknown);
    EXPECT_EQ(KGS57DefineInfo::ToUnitType(""), KGS57DefineInfo::UnitUnknown);
    EXPECT_EQ(KGS57DefineInfo::ToDatumType("Horizontally"), KGS57DefineInfo::DatumUnknown);
    EXPECT_EQ(KGS57DefineInfo::ToAttributeType("EL"), KGS57DefineInfo::AttrUnknown);
}

TEST(KGS57DefineInfo, NullValueIsNeverTheUnknownMarker) {
    for (int t = -1; t <= 7; ++t) {
        EXPECT_FALSE(KGS57DefineInfo::IsUnknowValue(PlixVariant(),
                                                    static_cast<KGS57DefineInfo::AttributeType>(t)))
            << "type " << t;
    }
}

TEST(KGS57DefineInfo, UnknownMarkerDependsOnTheAttributeType) {
    using D = KGS57DefineInfo;
    EXPECT_TRUE(D::IsUnknowValue(PlixVariant(999999999), D::AttrInteger));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant(999999998), D::AttrInteger));
    EXPECT_TRUE(D::IsUnknowValue(PlixVariant("999999999"), D::AttrInteger));

    EXPECT_TRUE(D::IsUnknowValue(PlixVariant(999999998.5), D::AttrFloat));
    EXPECT_TRUE(D::IsUnknowValue(PlixVariant(1000000000.0), D::AttrFloat));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant(999999997.5), D::AttrFloat));

    EXPECT_TRUE(D::IsUnknowValue(PlixVariant("0"), D::AttrList));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant("0,0"), D::AttrList));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant(" 0"), D::AttrList));
    EXPECT_TRUE(D::IsUnknowValue(PlixVariant(0), D::AttrList));

    EXPECT_TRUE(D::IsUnknowValue(PlixVariant(0), D::AttrEnumerated));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant(3), D::AttrEnumerated));

    EXPECT_FALSE(D::IsUnknowValue(PlixVariant(999999999), D::AttrFreeText));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant("0"), D::AttrCodedString));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant(0), D::AttrFreeText));
}

TEST(KGS57DefineInfo, UntypedAndOutOfRangeTypesAreJudgedLikeFloats) {
    using D = KGS57DefineInfo;
    // Deliberately kept: no type is not "no marker" but the float rule.
    EXPECT_TRUE(D::IsUnknowValue(PlixVariant(999999999.4), D::AttrUnknown));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant(0), D::AttrUnknown));
    EXPECT_TRUE(D::IsUnknowValue(PlixVariant(999999999), static_cast<D::AttributeType>(42)));
    EXPECT_FALSE(D::IsUnknowValue(PlixVariant("0"), static_cast<D::AttributeType>(42)));
}
