// Tests of the geographic and projected coordinate systems: type ids and names survive their
// XML text, and text that is not theirs is refused without changing anything.
#include "Base/KGCoordSys.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "BaseTestHelpers.h"

using KGC::KGGeoCoordSys;
using KGC::KGPrjCoordSys;
using PLIX::PlixUnicodeString;

namespace {

KGGeoCoordSys Geo(int type, const PlixUnicodeString& name = PlixUnicodeString()) {
    KGGeoCoordSys geo;
    geo.SetTypeID(type);
    geo.SetName(name);
    return geo;
}

KGPrjCoordSys Prj(int type, const PlixUnicodeString& name, const KGGeoCoordSys& geo) {
    KGPrjCoordSys prj;
    prj.SetTypeID(type);
    prj.SetName(name);
    prj.SetGeoCoordSys(geo);
    return prj;
}

}  // namespace

TEST(KGCoordSys, GeographicSystemRoundTripsThroughItsXml) {
    const std::vector<KGGeoCoordSys> systems = {
        Geo(4326, "WGS 84"),
        Geo(4490, "China Geodetic Coordinate System 2000 \xE5\x9B\xBD\xE5\xAE\xB6"),
        Geo(1, "quotes \" ' and <markup> & entities"),
        Geo(0),
        Geo(-7, " padded name "),
        Geo(2147483647),
    };
    for (int version : {1, 2}) {
        for (const auto& original : systems) {
            PlixUnicodeString text = original.ToXML(version);
            EXPECT_FALSE(text.IsEmpty());
            // Read into an object that held something else, which is replaced whole.
            KGGeoCoordSys read = Geo(999, "stale");
            ASSERT_TRUE(read.FromXML(text, version)) << text.ToUtf8();
            EXPECT_EQ(read.GetTypeID(), original.GetTypeID()) << text.ToUtf8();
            EXPECT_EQ(read.GetName(), original.GetName()) << text.ToUtf8();
            EXPECT_TRUE(read == original);
        }
    }
}

TEST(KGCoordSys, ProjectedSystemRoundTripsWithItsGeographicSystem) {
    const std::vector<KGPrjCoordSys> systems = {
        Prj(32650, "WGS 84 / UTM zone 50N", Geo(4326, "WGS 84")),
        Prj(3395, "World Mercator", Geo(4326)),
        Prj(1, "", Geo(4490, "\xE5\x9B\xBD\xE5\xAE\xB6 2000")),
        Prj(0, "", Geo(0)),
        Prj(-1, "<&>", Geo(-2, "\"'")),
    };
    for (const auto& original : systems) {
        PlixUnicodeString text = original.ToXML();
        KGPrjCoordSys read = Prj(999, "stale", Geo(998, "stale geo"));
        ASSERT_TRUE(read.FromXML(text)) << text.ToUtf8();
        EXPECT_EQ(read.GetTypeID(), original.GetTypeID()) << text.ToUtf8();
        EXPECT_EQ(read.GetName(), original.GetName()) << text.ToUtf8();
        EXPECT_EQ(read.GetGeoCoordSys().GetTypeID(), original.GetGeoCoordSys().GetTypeID())
            << text.ToUtf8();
        EXPECT_EQ(read.GetGeoCoordSys().GetName(), original.GetGeoCoordSys().GetName())
            << text.ToUtf8();
        EXPECT_TRUE(read == original);
    }

    // The geographic system is held by value and can be edited in place.
    KGPrjCoordSys prj = Prj(3395, "World Mercator", Geo(4326));
    prj.GetGeoCoordSys().SetName("WGS 84");
    EXPECT_EQ(prj.GetGeoCoordSys().GetName().Str(), u"WGS 84");
    KGPrjCoordSys read;
    ASSERT_TRUE(read.FromXML(prj.ToXML(2), 2));
    EXPECT_TRUE(read == prj);
}

TEST(KGCoordSys, ForeignOrBrokenTextIsRefusedAndChangesNothing) {
    const KGGeoCoordSys geoBefore = Geo(4326, "WGS 84");
    const KGPrjCoordSys prjBefore = Prj(32650, "UTM 50N", Geo(4326, "WGS 84"));
    const std::vector<PlixUnicodeString> broken = {
        "",
        "not xml at all",
        "<GeoCoordSys type=\"5\"",
        "<PrjCoordSys type=\"5\"><GeoCoordSys type=\"6\"/>",
        "<GeoCoordSys type=\"5\"></PrjCoordSys>",
        "<Other type=\"5\"/>",
        "<Wrapper><GeoCoordSys type=\"5\"/><PrjCoordSys type=\"6\"/></Wrapper>",
        "<geocoordsys type=\"5\"/>",
        "<prjcoordsys type=\"5\"/>",
    };
    for (const auto& text : broken) {
        KGGeoCoordSys geo = geoBefore;
        EXPECT_FALSE(geo.FromXML(text)) << text.ToUtf8();
        EXPECT_TRUE(geo == geoBefore) << text.ToUtf8();
        KGPrjCoordSys prj = prjBefore;
        EXPECT_FALSE(prj.FromXML(text)) << text.ToUtf8();
        EXPECT_TRUE(prj == prjBefore) << text.ToUtf8();
    }

    // Each refuses the other's text.
    KGGeoCoordSys geo = geoBefore;
    EXPECT_FALSE(geo.FromXML(Prj(3395, "World Mercator", Geo(4490)).ToXML()));
    EXPECT_TRUE(geo == geoBefore);
    KGPrjCoordSys prj = prjBefore;
    EXPECT_FALSE(prj.FromXML(Geo(4490, "CGCS2000").ToXML()));
    EXPECT_TRUE(prj == prjBefore);
}
