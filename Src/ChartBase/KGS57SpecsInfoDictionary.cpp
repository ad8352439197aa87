// Parser of the product specification info file (root "EncInfos"): units, datums and the
// special object class and attribute groups.
#include <algorithm>

#include "ChartBase/KGS57Dictionary.h"
#include "KGS57DictionaryFile.h"

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
        define.code = s57dict::ReadCode(doc.GetAttrib(codeAttr));
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
                ItemsOf itemsOf, PlixArray<Group>& list) {
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
    }
    doc.OutOfElem();
}

}  // namespace

KGS57SpecsInfos::KGS57SpecsInfos() = default;

void KGS57SpecsInfos::Init() {
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
    // Deliberately kept: a document without "EncInfos" is an empty dictionary, not a failure.
    const s57dict::Opened opened =
        s57dict::OpenDictionary(doc, path, u"EncInfos", &s57dict::kSpecsInfoFileUnreadable);
    if (opened != s57dict::Opened::AtRoot) return opened == s57dict::Opened::OtherRoot;

    // Every section is sought from the first child of "EncInfos", so their order is free.
    auto section = [&doc](const char16_t* name) {
        doc.ResetMainPos();
        return doc.FindElem(name);
    };
    // Each list is read once, into the empty array Init() left.
    auto objects = [this, &doc](PlixArray<KGS57SpecsObjectDefine>& list) {
        int count = 0;
        ReadObjectDefine(doc, count, list);
    };
    auto attributes = [this, &doc](PlixArray<KGS57SpecsAttributeDefine>& list) {
        int count = 0;
        ReadAttributeDefine(doc, count, list);
    };
    if (section(u"GroupOneObjectClasses")) objects(m_groupOneObjects);
    if (section(u"NationalAttributes")) attributes(m_nationalAttrs);
    if (section(u"SpatialMetaAttributes")) attributes(m_spatialMetaAttrs);
    if (section(u"Units")) {
        ReadGroups<KGS57SpecsUnits, KGS57SpecsUnit>(
            doc, u"UnitType", u"Unit", KGS57DefineInfo::ToUnitType,
            [](KGS57SpecsUnits& g) -> PlixArray<KGS57SpecsUnit>& { return g.units; }, m_units);
    }
    if (section(u"Datums")) {
        ReadGroups<KGS57SpecsDatums, KGS57SpecsDatumData>(
            doc, u"DatumType", u"Datum", KGS57DefineInfo::ToDatumType,
            [](KGS57SpecsDatums& g) -> PlixArray<KGS57SpecsDatumData>& { return g.datums; },
            m_datums);
    }
    // Deliberately kept: the master list is not sorted although it is searched by bisection;
    // the file must list master object classes by ascending code.
    if (section(u"MasterObjectClasses")) objects(m_masterObjects);
    if (section(u"SlaveObjectClasses")) {
        objects(m_slaveObjects);
        SortByCode(m_slaveObjects);
    }
    if (section(u"StructObjectClasses")) {
        objects(m_structObjects);
        SortByCode(m_structObjects);
    }
    if (section(u"EquipmentObjectClasses")) {
        objects(m_equipmentObjects);
        SortByCode(m_equipmentObjects);
    }
    return true;
}

}  // namespace KGC
