// Reading the chart settings file: which table and dictionary files serve a style, and the
// edits that write the file back.
#include "ChartBase/KGChartEnvironment.h"

#include "Base/KGFile.h"
#include "Base/KGLogFile.h"
#include "Base/KGMarkup.h"
#include "KGMarkupEdit.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

const char kSource[] = "../../../Src/ChartBase/KGChartEnvironment";
const char16_t kStyle[] = u"Style";
const char16_t kValue[] = u"value";
const char16_t kType[] = u"type";

// Every query and edit leaves the cursor at the top, so that no operation depends on where
// the previous one stopped.
class TopGuard {
public:
    explicit TopGuard(KGMarkup& doc) : m_doc(doc) { m_doc.ResetPos(); }
    ~TopGuard() { m_doc.ResetPos(); }
    TopGuard(const TopGuard&) = delete;
    TopGuard& operator=(const TopGuard&) = delete;

private:
    KGMarkup& m_doc;
};

bool Enter(KGMarkup& doc, const char16_t* name) {
    return doc.FindElem(name) && doc.IntoElem();
}

// Moves the main position to the first "Style" whose name matches; the cursor must be inside
// "Display".
bool FindStyle(KGMarkup& doc, const PlixUnicodeString& styleName) {
    while (doc.FindElem(kStyle)) {
        if (doc.GetAttrib(kValue).CompareNoCase(styleName) == 0) return true;
    }
    return false;
}

// Moves the main position to the first element of that name whose "value" (or other named
// attribute) matches without regard to case.
bool FindByAttrib(KGMarkup& doc, const char16_t* element, const char16_t* attrib,
                  const PlixUnicodeString& wanted) {
    while (doc.FindElem(element)) {
        if (doc.GetAttrib(attrib).CompareNoCase(wanted) == 0) return true;
    }
    return false;
}

PlixUnicodeString SymbolTypeValue(unsigned char symbolType) {
    return symbolType ? u"simplified" : u"paperchart";
}

PlixUnicodeString EdgeTypeValue(unsigned char edgeType) {
    return edgeType ? u"symbolized" : u"plain";
}

bool IsNetworkPath(const PlixUnicodeString& path) {
    return path.Find(u"\\\\") >= 0;
}

// The tail every path setter shares: the main element takes the stored form of the path and
// the whole file is written back. A lost write never looks like success.
bool StoreAndSave(KGMarkupEdit& edit, KGMarkup& doc, const PlixUnicodeString& stored,
                  const PlixUnicodeString& file) {
    const bool set = doc.SetData(stored);
    const bool saved = edit.Save(file);
    return set && saved;
}

PlixUnicodeString ModuleDirectory() {
    PlixUnicodeString dir = KGFile::GetModulePath(u"VlBase");
    dir.Replace(u'\\', u'/');
    return dir;
}

}  // namespace

KGChartEnvironment::KGChartEnvironment()
    : m_settingsPath(KGFile::GetModulePath(u"VlBase") + PlixUnicodeString(u"ChartConfig.xml")),
      m_document(std::make_unique<KGMarkup>()) {
    LoadXML();
}

KGChartEnvironment::~KGChartEnvironment() = default;

bool KGChartEnvironment::CreateSettingsFile(const PlixUnicodeString& path,
                                            const PlixUnicodeString& dictionaryDir) {
    if (path.IsEmpty() || KGFile::IsExist(path)) return false;
    PlixUnicodeString dir(dictionaryDir);
    dir.Replace(u'\\', u'/');
    if (!dir.IsEmpty() && dir[dir.GetLength() - 1] != u'/') dir += PlixUnicodeString(u"/");
    static const struct {
        const char16_t* element;
        const char16_t* file;
    } kDictionaries[] = {
        {u"S57Object", u"S57Objects.xml"},      {u"S57Attribute", u"S57Attributes.xml"},
        {u"Agency", u"Agencies.xml"},           {u"S57ObjectSpecs", u"S57ObjectSpecs.xml"},
        {u"S57InfoSpecs", u"S57InfoSpecs.xml"}, {u"S58CheckInfo", u"S58Checks.xml"}};
    KGMarkup doc;
    bool ok = doc.AddElem(u"VeltrinChart") && doc.IntoElem() && doc.AddElem(u"ElectronicChart") &&
              doc.IntoElem() && doc.AddElem(u"Display") && doc.AddElem(u"Dictionary");
    for (const auto& entry : kDictionaries) {
        ok = ok && doc.AddChildElem(entry.element, dir + PlixUnicodeString(entry.file));
    }
    return ok && doc.Save(path);
}

bool KGChartEnvironment::LoadXML() {
    if (!KGFile::IsExist(m_settingsPath)) {
        KGLogFile::GetInstance(false)->RecordLog(400, -100, u"chart setting file does not found !",
                                                 kSource, 29);
        return false;
    }
    return m_document->Load(m_settingsPath);
}

bool KGChartEnvironment::ToDisplayNode() {
    KGMarkup& doc = *m_document;
    doc.ResetPos();
    return Enter(doc, u"VeltrinChart") && Enter(doc, u"ElectronicChart") && Enter(doc, u"Display");
}

bool KGChartEnvironment::ToDictionaryNode() {
    KGMarkup& doc = *m_document;
    doc.ResetPos();
    return Enter(doc, u"VeltrinChart") && Enter(doc, u"ElectronicChart") &&
           Enter(doc, u"Dictionary");
}

bool KGChartEnvironment::ToLookupTableNode(const PlixUnicodeString& styleName,
                                           KGChartDisplayStyleType& styleType) {
    if (!ToDisplayNode()) return false;
    KGMarkup& doc = *m_document;
    if (!FindStyle(doc, styleName)) return false;
    styleType = KGChartDisplayStyle::GetChartDisplayStyleType(doc.GetAttrib(kType));
    return doc.IntoElem() && Enter(doc, u"LookupTables");
}

PlixUnicodeString KGChartEnvironment::GetTableOfKind(const PlixUnicodeString& styleName,
                                                     const char16_t* table, const char16_t* kind,
                                                     const PlixUnicodeString& kindValue) {
    if (styleName.IsEmpty()) return PlixUnicodeString();
    TopGuard guard(*m_document);
    KGMarkup& doc = *m_document;
    KGChartDisplayStyleType type = KGChartDisplayStyle::NoStyle;
    if (!ToLookupTableNode(styleName, type) || !doc.FindElem(table)) return PlixUnicodeString();
    // An ENC style has one table per kind; a paper-chart style one table for every kind.
    if (type == KGChartDisplayStyle::ENC) {
        if (doc.IntoElem() && FindByAttrib(doc, kind, kValue, kindValue)) return doc.GetData();
        return PlixUnicodeString();
    }
    if (type == KGChartDisplayStyle::PaperChart) return doc.GetData();
    return PlixUnicodeString();
}

PlixUnicodeString KGChartEnvironment::GetPointLookupTable(const PlixUnicodeString& styleName,
                                                          unsigned char symbolType) {
    return GetTableOfKind(styleName, u"PointLookupTable", u"SymbolType",
                          SymbolTypeValue(symbolType));
}

PlixUnicodeString KGChartEnvironment::GetPointLookupTableAbsolutePath(
    const PlixUnicodeString& styleName, unsigned char symbolType) {
    return GetAbsolutPath(GetPointLookupTable(styleName, symbolType));
}

PlixUnicodeString KGChartEnvironment::GetLineLookupTable(const PlixUnicodeString& styleName) {
    TopGuard guard(*m_document);
    KGChartDisplayStyleType type = KGChartDisplayStyle::NoStyle;
    if (!ToLookupTableNode(styleName, type) || !m_document->FindElem(u"LineLookupTable")) {
        return PlixUnicodeString();
    }
    return m_document->GetData();
}

PlixUnicodeString KGChartEnvironment::GetLineLookupTableAbsolutePath(
    const PlixUnicodeString& styleName) {
    return GetAbsolutPath(GetLineLookupTable(styleName));
}

PlixUnicodeString KGChartEnvironment::GetAreaLookupTable(const PlixUnicodeString& styleName,
                                                         unsigned char edgeType) {
    return GetTableOfKind(styleName, u"AreaLookupTable", u"EdgeType", EdgeTypeValue(edgeType));
}

PlixUnicodeString KGChartEnvironment::GetAreaLookupTableAbsolutePath(
    const PlixUnicodeString& styleName, unsigned char edgeType) {
    return GetAbsolutPath(GetAreaLookupTable(styleName, edgeType));
}

bool KGChartEnvironment::ToColorTableNode(const PlixUnicodeString& styleName, KGS52ColorMode mode) {
    KGMarkup& doc = *m_document;
    if (!ToDisplayNode() || !FindStyle(doc, styleName)) return false;
    // Deliberate: a paper-chart style has one colour table, whatever mode is asked for.
    if (KGChartDisplayStyle::GetChartDisplayStyleType(doc.GetAttrib(kType)) ==
        KGChartDisplayStyle::PaperChart) {
        mode = KGChartColorMode::DayBright;
    }
    return doc.IntoElem() && Enter(doc, u"ColorTables") &&
           FindByAttrib(doc, u"ColorTable", kType, KGChartColorMode::GetColorModeName(mode));
}

PlixUnicodeString KGChartEnvironment::GetColorTable(KGS52ColorMode mode,
                                                    const PlixUnicodeString& styleName) {
    TopGuard guard(*m_document);
    if (!ToColorTableNode(styleName, mode)) return PlixUnicodeString();
    return m_document->GetData();
}

PlixUnicodeString KGChartEnvironment::GetColorTableAbsolutePath(
    KGS52ColorMode mode, const PlixUnicodeString& styleName) {
    return GetAbsolutPath(GetColorTable(mode, styleName));
}

PlixUnicodeString KGChartEnvironment::GetSymbolLibrary(const PlixUnicodeString& styleName) {
    TopGuard guard(*m_document);
    KGMarkup& doc = *m_document;
    if (!ToDisplayNode() || !FindStyle(doc, styleName) || !doc.IntoElem() ||
        !doc.FindElem(u"SymbolLibrary")) {
        return PlixUnicodeString();
    }
    return doc.GetData();
}

PlixUnicodeString KGChartEnvironment::GetSymbolLibraryAbsolutePath(
    const PlixUnicodeString& styleName) {
    return GetAbsolutPath(GetSymbolLibrary(styleName));
}

PlixUnicodeString KGChartEnvironment::GetDictFile(const PlixUnicodeString& elementName) {
    if (elementName.IsEmpty()) return PlixUnicodeString();
    TopGuard guard(*m_document);
    if (!ToDictionaryNode() || !m_document->FindElem(elementName)) return PlixUnicodeString();
    return m_document->GetData();
}

#define VL_DICT_GETTERS(Getter, Element)                           \
    PlixUnicodeString KGChartEnvironment::Getter() {               \
        return GetDictFile(Element);                               \
    }                                                              \
    PlixUnicodeString KGChartEnvironment::Getter##AbsolutePath() { \
        return GetAbsolutPath(Getter());                           \
    }

VL_DICT_GETTERS(GetS57ObjectDictFile, u"S57Object")
VL_DICT_GETTERS(GetS57AttributeDictFile, u"S57Attribute")
VL_DICT_GETTERS(GetAgencyDictFile, u"Agency")
VL_DICT_GETTERS(GetS57SpecsObjectDictFile, u"S57ObjectSpecs")
VL_DICT_GETTERS(GetS57SpecsInfoDictFile, u"S57InfoSpecs")
VL_DICT_GETTERS(GetS58CheckInfoDictFile, u"S58CheckInfo")
// Deliberately the same element as the plural getter below.
VL_DICT_GETTERS(GetS58CheckAttributeFile, u"S58CheckAttributes")
VL_DICT_GETTERS(GetS58CheckAttributesFile, u"S58CheckAttributes")
VL_DICT_GETTERS(GetS58CheckFeatureFile, u"S58CheckFeatures")
VL_DICT_GETTERS(GetS58CheckAllFeatureFile, u"S58CheckAllFeatures")
VL_DICT_GETTERS(GetS58CheckSoundingFile, u"S58CheckSoundings")
VL_DICT_GETTERS(GetS58CheckFeatureRelationshipFile, u"S58CheckFeatureRelationships")
VL_DICT_GETTERS(GetS58CheckMandatoryAttributesFile, u"S58CheckMandatoryAttributes")
VL_DICT_GETTERS(GetS58CheckMasterSlavesFile, u"S58CheckMasterSlaves")
VL_DICT_GETTERS(GetS58CheckCollectionsFile, u"S58CheckCollections")
VL_DICT_GETTERS(GetS58CheckEnumeListAttributesFile, u"S58CheckEnumeListAttributes")

#undef VL_DICT_GETTERS

KGChartDisplayStyleType KGChartEnvironment::GetStyleType(const PlixUnicodeString& styleName) {
    TopGuard guard(*m_document);
    KGMarkup& doc = *m_document;
    if (!ToDisplayNode()) return KGChartDisplayStyle::NoStyle;
    while (doc.FindElem(kStyle)) {
        PlixUnicodeString value = doc.GetAttrib(kValue);
        if (!value.IsEmpty() && value.CompareNoCase(styleName) == 0)
            return KGChartDisplayStyle::GetChartDisplayStyleType(doc.GetAttrib(kType));
    }
    return KGChartDisplayStyle::NoStyle;
}

int KGChartEnvironment::GetStyleNames(PlixArray<PlixUnicodeString>& names) {
    TopGuard guard(*m_document);
    KGMarkup& doc = *m_document;
    if (!ToDisplayNode()) return 0;
    int appended = 0;
    while (doc.FindElem(kStyle)) {
        PlixUnicodeString value = doc.GetAttrib(kValue);
        if (value.IsEmpty()) continue;
        names.Add(value);
        ++appended;
    }
    return appended;
}

PlixUnicodeString KGChartEnvironment::GetAbsolutPath(const PlixUnicodeString& path) {
    if (IsNetworkPath(path)) {
        PlixUnicodeString network(path);
        network.Replace(u'/', u'\\');
        return network;
    }
    PlixUnicodeString prefix = path.Left(2);
    if (prefix == PlixUnicodeString(u"./") || prefix == PlixUnicodeString(u".\\"))
        return ModuleDirectory() + path.Mid(2);
    return path;
}

PlixUnicodeString KGChartEnvironment::ModifyFilePath(const PlixUnicodeString& path) {
    if (IsNetworkPath(path)) return path;
    PlixUnicodeString stored(path);
    stored.Replace(u'\\', u'/');
    PlixUnicodeString module = ModuleDirectory();
    int at = module.IsEmpty() ? -1 : stored.Find(module);
    if (at >= 0) {
        stored.Delete(0, at + module.GetLength());
        stored = PlixUnicodeString(u"./") + stored;
    }
    return stored;
}

bool KGChartEnvironment::SetPointLookupTableFile(const PlixUnicodeString& path,
                                                 const PlixUnicodeString& styleName,
                                                 unsigned char symbolType) {
    if (styleName.IsEmpty()) return false;
    TopGuard guard(*m_document);
    KGMarkupEdit edit(*m_document);
    KGMarkup& doc = *m_document;
    KGChartDisplayStyleType type = KGChartDisplayStyle::NoStyle;
    if (!ToLookupTableNode(styleName, type) || !doc.FindElem(u"PointLookupTable")) return false;
    if (type == KGChartDisplayStyle::ENC &&
        !(doc.IntoElem() &&
          FindByAttrib(doc, u"SymbolType", kValue, SymbolTypeValue(symbolType)))) {
        return false;
    }
    // Deliberate: a style of unknown type stores the path in the table element itself, like a
    // paper-chart style (the area setter refuses it).
    return StoreAndSave(edit, doc, ModifyFilePath(path), m_settingsPath);
}

bool KGChartEnvironment::SetLineLookupTableFile(const PlixUnicodeString& path,
                                                const PlixUnicodeString& styleName) {
    if (styleName.IsEmpty()) return false;
    TopGuard guard(*m_document);
    KGMarkupEdit edit(*m_document);
    KGMarkup& doc = *m_document;
    KGChartDisplayStyleType type = KGChartDisplayStyle::NoStyle;
    if (!ToLookupTableNode(styleName, type) || !doc.FindElem(u"LineLookupTable")) return false;
    return StoreAndSave(edit, doc, ModifyFilePath(path), m_settingsPath);
}

bool KGChartEnvironment::SetAreaLookupTableFile(const PlixUnicodeString& path,
                                                const PlixUnicodeString& styleName,
                                                unsigned char edgeType) {
    if (styleName.IsEmpty()) return false;
    TopGuard guard(*m_document);
    KGMarkupEdit edit(*m_document);
    KGMarkup& doc = *m_document;
    KGChartDisplayStyleType type = KGChartDisplayStyle::NoStyle;
    if (!ToLookupTableNode(styleName, type) || !doc.FindElem(u"AreaLookupTable")) return false;
    // Deliberate: unlike the point table, a style of unknown type takes no area table.
    if (type != KGChartDisplayStyle::ENC && type != KGChartDisplayStyle::PaperChart) return false;
    if (type == KGChartDisplayStyle::ENC &&
        !(doc.IntoElem() && FindByAttrib(doc, u"EdgeType", kValue, EdgeTypeValue(edgeType)))) {
        return false;
    }
    return StoreAndSave(edit, doc, ModifyFilePath(path), m_settingsPath);
}

bool KGChartEnvironment::SetColorTable(const PlixUnicodeString& path,
                                       const PlixUnicodeString& styleName, KGS52ColorMode mode) {
    TopGuard guard(*m_document);
    KGMarkupEdit edit(*m_document);
    if (!ToColorTableNode(styleName, mode)) return false;
    return StoreAndSave(edit, *m_document, ModifyFilePath(path), m_settingsPath);
}

bool KGChartEnvironment::SetSymbolLibrary(const PlixUnicodeString& path,
                                          const PlixUnicodeString& styleName) {
    if (styleName.IsEmpty() || !m_document->IsWellFormed()) return false;
    TopGuard guard(*m_document);
    KGMarkupEdit edit(*m_document);
    KGMarkup& doc = *m_document;
    if (!ToDisplayNode() || !FindStyle(doc, styleName) || !doc.IntoElem()) return false;
    if (!doc.FindElem(u"SymbolLibrary")) {
        doc.ResetMainPos();
        if (!doc.FindElem(u"ColorTables")) {
            while (doc.FindElem()) {
            }
        }
        if (!doc.AddElem(u"SymbolLibrary")) return false;
    }
    return StoreAndSave(edit, doc, ModifyFilePath(path), m_settingsPath);
}

bool KGChartEnvironment::ModifyDictFile(const PlixUnicodeString& elementName,
                                        const PlixUnicodeString& path) {
    // A settings file that failed to parse is never written over with the empty document.
    if (elementName.IsEmpty() || !m_document->IsWellFormed()) return false;
    TopGuard guard(*m_document);
    KGMarkupEdit edit(*m_document);
    KGMarkup& doc = *m_document;
    bool stored = false;
    if (ToDictionaryNode() && doc.FindElem(elementName)) stored = doc.SetData(ModifyFilePath(path));
    // Deliberate: the file is written back whether or not the element was there.
    bool saved = edit.Save(m_settingsPath);
    return stored && saved;
}

bool KGChartEnvironment::ModifyS57ObjectDictFile(const PlixUnicodeString& path) {
    return ModifyDictFile(u"S57Object", path);
}
bool KGChartEnvironment::ModifyS57AttributeDictFile(const PlixUnicodeString& path) {
    return ModifyDictFile(u"S57Attribute", path);
}
bool KGChartEnvironment::ModifyAgencyDictFile(const PlixUnicodeString& path) {
    return ModifyDictFile(u"Agency", path);
}
bool KGChartEnvironment::ModifyS57SpecsObjectDictFile(const PlixUnicodeString& path) {
    return ModifyDictFile(u"S57ObjectSpecs", path);
}
bool KGChartEnvironment::ModifyS57SpecsInfoDictFile(const PlixUnicodeString& path) {
    return ModifyDictFile(u"S57InfoSpecs", path);
}

bool KGChartEnvironment::AddNewStyle(const PlixUnicodeString& styleName,
                                     KGChartDisplayStyleType type) {
    if (styleName.IsEmpty()) return false;
    if (type != KGChartDisplayStyle::ENC && type != KGChartDisplayStyle::PaperChart) return false;
    TopGuard guard(*m_document);
    KGMarkupEdit edit(*m_document);
    KGMarkup& doc = *m_document;
    if (!ToDisplayNode()) return false;
    if (FindStyle(doc, styleName)) return false;  // names are unique without regard to case

    // The new style goes after the last existing one.
    doc.ResetMainPos();
    while (doc.FindElem(kStyle)) {
    }
    if (!doc.AddElem(kStyle)) return false;
    doc.SetAttrib(kType, KGChartDisplayStyle::GetChartDisplayStyleTypeName(type));
    doc.SetAttrib(kValue, styleName);
    if (!doc.IntoElem()) return false;

    bool ok = doc.AddElem(u"LookupTables") && doc.IntoElem();
    if (ok) {
        if (type == KGChartDisplayStyle::ENC) {
            ok = doc.AddElem(u"PointLookupTable") && doc.AddChildElem(u"SymbolType") &&
                 doc.SetChildAttrib(kValue, u"simplified") && doc.AddChildElem(u"SymbolType") &&
                 doc.SetChildAttrib(kValue, u"paperchart") && doc.AddElem(u"LineLookupTable") &&
                 doc.AddElem(u"AreaLookupTable") && doc.AddChildElem(u"EdgeType") &&
                 doc.SetChildAttrib(kValue, u"plain") && doc.AddChildElem(u"EdgeType") &&
                 doc.SetChildAttrib(kValue, u"symbolized");
        } else {
            ok = doc.AddElem(u"PointLookupTable") && doc.AddElem(u"LineLookupTable") &&
                 doc.AddElem(u"AreaLookupTable");
        }
        doc.OutOfElem();
    }
    if (!ok) {
        // A half-built table list is worse than none; the colour tables still follow.
        doc.ResetMainPos();
        if (doc.FindElem(u"LookupTables")) doc.RemoveElem();
    }

    // A paper-chart style has only the "DayBright" table, matching the colour rule.
    doc.ResetMainPos();
    while (doc.FindElem()) {
    }
    bool colours = doc.AddElem(u"ColorTables");
    const KGS52ColorMode modes[] = {KGChartColorMode::DayBright, KGChartColorMode::Dusk,
                                    KGChartColorMode::Night};
    int count = type == KGChartDisplayStyle::ENC ? 3 : 1;
    for (int i = 0; colours && i < count; ++i) {
        colours = doc.AddChildElem(u"ColorTable") &&
                  doc.SetChildAttrib(kType, KGChartColorMode::GetColorModeName(modes[i]));
    }
    bool saved = edit.Save(m_settingsPath);
    return ok && colours && saved;
}

bool KGChartEnvironment::RemoveStyle(const PlixUnicodeString& styleName) {
    if (styleName.IsEmpty()) return false;
    TopGuard guard(*m_document);
    KGMarkupEdit edit(*m_document);
    KGMarkup& doc = *m_document;
    if (!ToDisplayNode() || !FindStyle(doc, styleName)) return false;
    doc.RemoveElem();
    return edit.Save(m_settingsPath);
}

}  // namespace KGC
