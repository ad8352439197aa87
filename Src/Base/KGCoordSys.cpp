// Geographic and projected coordinate systems: type ids and their small XML form.
#include "Base/KGCoordSys.h"

#include "Base/KGMarkup.h"
#include "Base/KGNumber.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

const char16_t kGeoElement[] = u"GeoCoordSys";
const char16_t kPrjElement[] = u"PrjCoordSys";

}  // namespace

PlixUnicodeString KGGeoCoordSys::ToXML(int version) const {
    KGMarkup doc;
    doc.AddElem(kGeoElement);
    doc.SetAttrib(u"version", version);
    doc.SetAttrib(u"type", m_typeId);
    if (!m_name.IsEmpty()) doc.SetAttrib(u"name", m_name);
    return doc.GetDoc();
}

bool KGGeoCoordSys::FromXML(const PlixUnicodeString& text, int) {
    KGMarkup doc;
    if (!doc.SetDoc(text) || !doc.FindElem(kGeoElement)) return false;
    m_typeId = kgatoi(doc.GetAttrib(u"type"));
    m_name = doc.GetAttrib(u"name");
    return true;
}

PlixUnicodeString KGPrjCoordSys::ToXML(int version) const {
    KGMarkup doc;
    doc.AddElem(kPrjElement);
    doc.SetAttrib(u"version", version);
    doc.SetAttrib(u"type", m_typeId);
    if (!m_name.IsEmpty()) doc.SetAttrib(u"name", m_name);
    doc.AddChildElem(kGeoElement);
    doc.SetChildAttrib(u"type", m_geo.GetTypeID());
    if (!m_geo.GetName().IsEmpty()) doc.SetChildAttrib(u"name", m_geo.GetName());
    return doc.GetDoc();
}

bool KGPrjCoordSys::FromXML(const PlixUnicodeString& text, int) {
    KGMarkup doc;
    if (!doc.SetDoc(text) || !doc.FindElem(kPrjElement)) return false;
    KGGeoCoordSys geo;
    if (doc.FindChildElem(kGeoElement)) {
        geo.SetTypeID(kgatoi(doc.GetChildAttrib(u"type")));
        geo.SetName(doc.GetChildAttrib(u"name"));
    }
    m_typeId = kgatoi(doc.GetAttrib(u"type"));
    m_name = doc.GetAttrib(u"name");
    m_geo = geo;
    return true;
}

}  // namespace KGC
