// Names of the datum, unit, attribute and feature types, both ways.
#include "ChartBase/KGS57DefineInfo.h"

#include "Base/PlixTypes.h"

using PLIX::PlixUnicodeString;
using PLIX::PlixVariant;

namespace KGC {
namespace {

// Names indexed by value; index 0 is the unknown value and has no name.
const char16_t* const kDatumNames[] = {u"", u"Horizontal", u"Vertical", u"Sounding"};
const char16_t* const kUnitNames[] = {u"", u"Depth", u"Height", u"PositionalAccuracy"};
const char16_t* const kAttributeNames[] = {u"", u"E", u"L", u"F", u"I", u"A", u"S"};
const char16_t* const kFeatureNames[] = {u"", u"Geo", u"Meta", u"Collection", u"Cartographic"};

template <size_t N>
PlixUnicodeString NameOf(const char16_t* const (&names)[N], int32_t value) {
    if (value < 1 || static_cast<size_t>(value) >= N) return PlixUnicodeString();
    return PlixUnicodeString(names[value]);
}

template <size_t N>
int32_t ValueOf(const char16_t* const (&names)[N], const PlixUnicodeString& name) {
    for (size_t i = 1; i < N; ++i) {
        if (name.CompareNoCase(PlixUnicodeString(names[i])) == 0) return static_cast<int32_t>(i);
    }
    return 0;
}

}  // namespace

PlixUnicodeString KGS57DefineInfo::DatumTypeToName(DatumType type) {
    return NameOf(kDatumNames, type);
}

PlixUnicodeString KGS57DefineInfo::UnitTypeToName(UnitType type) {
    return NameOf(kUnitNames, type);
}

PlixUnicodeString KGS57DefineInfo::AttributeTypeToName(AttributeType type) {
    return NameOf(kAttributeNames, type);
}

PlixUnicodeString KGS57DefineInfo::FeatureTypeToName(FeatureType type) {
    return NameOf(kFeatureNames, type);
}

KGS57DefineInfo::DatumType KGS57DefineInfo::ToDatumType(const PlixUnicodeString& name) {
    return static_cast<DatumType>(ValueOf(kDatumNames, name));
}

KGS57DefineInfo::UnitType KGS57DefineInfo::ToUnitType(const PlixUnicodeString& name) {
    return static_cast<UnitType>(ValueOf(kUnitNames, name));
}

KGS57DefineInfo::AttributeType KGS57DefineInfo::ToAttributeType(const PlixUnicodeString& name) {
    return static_cast<AttributeType>(ValueOf(kAttributeNames, name));
}

KGS57DefineInfo::FeatureType KGS57DefineInfo::ToFeatureType(const PlixUnicodeString& name) {
    return static_cast<FeatureType>(ValueOf(kFeatureNames, name));
}

bool KGS57DefineInfo::IsUnknowValue(const PlixVariant& value, AttributeType type) {
    if (value.IsNull()) return false;
    switch (type) {
        case AttrCodedString:
        case AttrFreeText:
            return false;
        case AttrInteger:
            return value.ToInt() == 999999999;
        case AttrList:
            return value.ToString() == PlixUnicodeString(u"0");
        case AttrEnumerated:
            return value.ToInt() == 0;
        default:
            // Deliberately kept: an untyped value is judged like a float.
            return PLIX::plixequal(value.ToDouble(), 999999999.0, 1.0);
    }
}

}  // namespace KGC
