// Parser of the product specification info file (root "EncInfos"): units, datums and the
// special object class and attribute groups.
#include <algorithm>

#include "Base/KGMarkup.h"
#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryLog.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

// Reads the "<entry>" children of the main element into list (code and acronym), adding their
// number to count.
template <typename Define>
void ReadDefines(KGMarkup& doc, const char16_t* entryName, int& count, PlixArray<Define>& list) {
    const PlixUnicodeString entry(entryName), acronymAttr(u"Acronym"), codeAttr(u"Code");
    doc.IntoElem();
    const int first = count;
    while (doc.FindElem(entry)) ++count;
    doc.ResetMainPos();
    list.SetSize(count);
    for (int i = first; i < count && doc.FindElem(entry); ++i) {
        Define& define = list[i];
        define.acronym = doc.GetAttrib(acronymAttr);
        // Deliberately kept: codes are 16-bit, wider values keep their low 16 bits.
        define.code = static_cast<uint16_t>(doc.GetAttrib(codeAttr).ToInt(10));
    }
    doc.OutOfElem();
}

template <typename Define>
void SortByCode(PlixArray<Define>& list) {
    std::sort(list.begin(), list.end(),
              [](const Define& a, const Define& b) { return a.code < b.code; });
}

// Units and datums share one layout: "<typeElem value=...>" holding "<itemElem ID Meaning>".
// Deliberately kept: the items are collected over all type elements, so each record holds its
// own items and those of every type element before it.
template <typename Group, typename Item, typename TypeOf, typename ItemsOf>
void ReadGroups(KGMarkup& doc, const char16_t* typeElem, const char16_t* itemElem, TypeOf typeOf,
                ItemsOf itemsOf, int& count, PlixArray<Group>& list) {
    const PlixUnicodeString typeName(typeElem), itemName(itemElem), valueAttr(u"value"),
        idAttr(u"ID"), meaningAttr(u"Meaning");
    PlixArray<Item> collected;
    doc.IntoElem();
    while (doc.FindElem(typeName)) {
        Group group;
        group.type = typeOf(doc.GetAttrib(valueAttr));
        doc.IntoElem();
        while (doc.FindElem(itemName)) {
            Item item;
            item.ID = doc.GetAttrib(idAttr).ToInt(10);
            item.meaning = doc.GetAttrib(meaningAttr);
            collected.Add(std::move(item));
        }
        doc.OutOfElem();
        itemsOf(group) = collected;
        list.Add(std::move(group));
        ++count;
    }
    doc.OutOfElem();
}

}  // namespace

KGS57SpecsInfos::KGS57SpecsInfos() = default;
KGS57SpecsInfos::~KGS57SpecsInfos() = default;

void KGS57SpecsInfos::Init() {
    m_unitsCount = m_datumsCount = m_groupOneObjectsCount = m_nationalAttrsCount = 0;
    m_spatialMetaAttrsCount = m_masterObjectsCount = m_slaveObjectsCount = 0;
    m_structObjectsCount = m_equipmentObjectsCount = 0;
    m_units.RemoveAll();
    m_datums.RemoveAll();
    m_groupOneObjects.RemoveAll();
    m_nationalAttrs.RemoveAll();
    m_spatialMetaAttrs.RemoveAll();
    m_masterObjects.RemoveAll();
    m_slaveObjects.RemoveAll();
    m_structObjects.RemoveAll();
    m_equipmentObjects.RemoveAll();
}

void KGS57SpecsInfos::ReadAttributeDefine(KGMarkup& markup, int& count,
                                          PlixArray<KGS57SpecsAttributeDefine>& list) {
    ReadDefines(markup, u"Attribute", count, list);
}

void KGS57SpecsInfos::ReadObjectDefine(KGMarkup& markup, int& count,
                                       PlixArray<KGS57SpecsObjectDefine>& list) {
    ReadDefines(markup, u"ObjectClass", count, list);
}

bool KGS57SpecsInfos::LoadXml(const PlixUnicodeString& path) {
    Init();

    KGMarkup doc;
    if (!doc.Load(path)) {
        s57dict::LogFailure(u"EAg002", 262);
        return false;
    }
    // Deliberately kept: a document without "EncInfos" is an empty dictionary, not a failure.
    if (!doc.FindElem(u"EncInfos")) return true;
    doc.IntoElem();

    // Every section is sought from the first child of "EncInfos", so their order is free.
    auto section = [&doc](const char16_t* name) {
        doc.ResetMainPos();
        return doc.FindElem(name);
    };
    if (section(u"GroupOneObjectClasses"))
        ReadObjectDefine(doc, m_groupOneObjectsCount, m_groupOneObjects);
    if (section(u"NationalAttributes"))
        ReadAttributeDefine(doc, m_nationalAttrsCount, m_nationalAttrs);
    if (section(u"SpatialMetaAttributes"))
        ReadAttributeDefine(doc, m_spatialMetaAttrsCount, m_spatialMetaAttrs);
    if (section(u"Units")) {
        ReadGroups<KGS57SpecsUnits, KGS57SpecsUnit>(
            doc, u"UnitType", u"Unit", KGS57DefineInfo::ToUnitType,
            [](KGS57SpecsUnits& g) -> PlixArray<KGS57SpecsUnit>& { return g.units; }, m_unitsCount,
            m_units);
    }
    if (section(u"Datums")) {
        ReadGroups<KGS57SpecsDatums, KGS57SpecsDatumData>(
            doc, u"DatumType", u"Datum", KGS57DefineInfo::ToDatumType,
            [](KGS57SpecsDatums& g) -> PlixArray<KGS57SpecsDatumData>& { return g.datums; },
            m_datumsCount, m_datums);
    }
    // Deliberately kept: the master list is not sorted although it is searched by bisection;
    // the file must list master object classes by ascending code.
    if (section(u"MasterObjectClasses"))
        ReadObjectDefine(doc, m_masterObjectsCount, m_masterObjects);
    if (section(u"SlaveObjectClasses")) {
        ReadObjectDefine(doc, m_slaveObjectsCount, m_slaveObjects);
        SortByCode(m_slaveObjects);
    }
    if (section(u"StructObjectClasses")) {
        ReadObjectDefine(doc, m_structObjectsCount, m_structObjects);
        SortByCode(m_structObjects);
    }
    if (section(u"EquipmentObjectClasses")) {
        ReadObjectDefine(doc, m_equipmentObjectsCount, m_equipmentObjects);
        SortByCode(m_equipmentObjects);
    }
    return true;
}

}  // namespace KGC
