// KGS57DefineInfo: the small closed vocabularies of the S-57 catalogue (datum, unit, attribute
// value and object class kinds), their names, and the "unknown" marker test of attribute values.
//
// Threads: pure functions, safe from any thread.
#pragma once

#include <cstdint>

#include "Base/PlixUnicodeString.h"
#include "Base/PlixVariant.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class VLCHARTBASE_API KGS57DefineInfo {
public:
    // Fixed 32-bit types: values read from files outside the named range are kept as they are
    // and converted to the empty name, without undefined behaviour.
    enum DatumType : int32_t {
        DatumUnknown = 0,
        DatumHorizontal = 1,
        DatumVertical = 2,
        DatumSounding = 3,
    };

    enum UnitType : int32_t {
        UnitUnknown = 0,
        UnitDepth = 1,
        UnitHeight = 2,
        UnitPositionalAccuracy = 3,
    };

    // The S-57 attribute domain letters "E", "L", "F", "I", "A", "S".
    enum AttributeType : int32_t {
        AttrUnknown = 0,
        AttrEnumerated = 1,
        AttrList = 2,
        AttrFloat = 3,
        AttrInteger = 4,
        AttrCodedString = 5,
        AttrFreeText = 6,
    };

    enum FeatureType : int32_t {
        FeatureUnknown = 0,
        FeatureGeo = 1,
        FeatureMeta = 2,
        FeatureCollection = 3,
        FeatureCartographic = 4,
    };

    // The name of a value; the empty string for 0 and for every value outside the enumeration.
    static PLIX::PlixUnicodeString DatumTypeToName(DatumType type);
    static PLIX::PlixUnicodeString UnitTypeToName(UnitType type);
    static PLIX::PlixUnicodeString AttributeTypeToName(AttributeType type);
    static PLIX::PlixUnicodeString FeatureTypeToName(FeatureType type);

    // Case-insensitive, untrimmed match of a name; 0 when no name matches.
    static DatumType ToDatumType(const PLIX::PlixUnicodeString& name);
    static UnitType ToUnitType(const PLIX::PlixUnicodeString& name);
    static AttributeType ToAttributeType(const PLIX::PlixUnicodeString& name);
    static FeatureType ToFeatureType(const PLIX::PlixUnicodeString& name);

    // True when the value is the "unknown" marker of its attribute type: 999999999 for
    // integers, floats and untyped values (within 1.0 for the latter two), "0" for lists, 0 for
    // enumerations. A null value and text attributes never are.
    static bool IsUnknowValue(const PLIX::PlixVariant& value, AttributeType type);
};

}  // namespace KGC
