// Geographic and projected coordinate systems, reduced to what the chart library keeps:
// type ids and names, exported to and imported from a small XML text of their own.
//
// Threads: value objects; distinct objects may be used on different threads, one object by one
// thread at a time (or const members only).
#pragma once

#include "Base/PlixUnicodeString.h"
#include "Base/VlBaseExport.h"

namespace KGC {

class VLBASE_API KGGeoCoordSys {
public:
    void SetTypeID(int typeId) { m_typeId = typeId; }
    int GetTypeID() const { return m_typeId; }
    void SetName(const PLIX::PlixUnicodeString& name) { m_name = name; }
    const PLIX::PlixUnicodeString& GetName() const { return m_name; }

    PLIX::PlixUnicodeString ToXML(int version = 1) const;
    // False (and nothing changed) when the text is not a GeoCoordSys document.
    bool FromXML(const PLIX::PlixUnicodeString& text, int version = 1);

    friend bool operator==(const KGGeoCoordSys& a, const KGGeoCoordSys& b) {
        return a.m_typeId == b.m_typeId && a.m_name == b.m_name;
    }

private:
    int m_typeId = 0;
    PLIX::PlixUnicodeString m_name;
};

class VLBASE_API KGPrjCoordSys {
public:
    void SetTypeID(int typeId) { m_typeId = typeId; }
    int GetTypeID() const { return m_typeId; }
    void SetName(const PLIX::PlixUnicodeString& name) { m_name = name; }
    const PLIX::PlixUnicodeString& GetName() const { return m_name; }
    void SetGeoCoordSys(const KGGeoCoordSys& geo) { m_geo = geo; }
    const KGGeoCoordSys& GetGeoCoordSys() const { return m_geo; }
    KGGeoCoordSys& GetGeoCoordSys() { return m_geo; }

    PLIX::PlixUnicodeString ToXML(int version = 1) const;
    // False (and nothing changed) when the text is not a PrjCoordSys document.
    bool FromXML(const PLIX::PlixUnicodeString& text, int version = 1);

    friend bool operator==(const KGPrjCoordSys& a, const KGPrjCoordSys& b) {
        return a.m_typeId == b.m_typeId && a.m_name == b.m_name && a.m_geo == b.m_geo;
    }

private:
    int m_typeId = 0;
    PLIX::PlixUnicodeString m_name;
    KGGeoCoordSys m_geo;
};

}  // namespace KGC
