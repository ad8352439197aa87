// KGS57Dictionary: the S-57 catalogue dictionaries (object classes, attributes, agencies, the
// product specification lists and object rules, S-58 check messages) and KGS57Config, the one
// process-wide registry that loads them from the files the chart settings name and serves them.
#pragma once

#include <atomic>
#include <cstdint>
#include <mutex>
#include <string>
#include <unordered_map>

#include "Base/PlixArray.h"
#include "Base/PlixDict.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGS57DefineInfo.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class KGMarkup;

// ---- object classes ----

// One S-57 object class ("ObjectClass" of the object class dictionary file).
struct VLCHARTBASE_API KGS57Object {
    PLIX::PlixUnicodeString acronym;
    PLIX::PlixUnicodeString name;
    PLIX::PlixUnicodeString definition;
    PLIX::PlixUnicodeString references;
    PLIX::PlixUnicodeString remarks;
    KGS57DefineInfo::FeatureType type = KGS57DefineInfo::FeatureUnknown;
    uint16_t code = 0;
};

// The parsed object class dictionary file (root "ObjectClasses"), in file order.
class VLCHARTBASE_API KGS57Objects {
public:
    KGS57Objects();

    // Replaces the contents by those of the file. False (and empty) when the file cannot be
    // read or its root is not "ObjectClasses".
    bool LoadXml(const PLIX::PlixUnicodeString& path);

    const PLIX::PlixArray<KGS57Object>& GetRecords() const { return m_records; }
    int GetCount() const { return m_records.GetSize(); }

private:
    friend class KGS57Config;
    PLIX::PlixArray<KGS57Object> m_records;
};

// ---- attributes ----

// One allowed value of an enumerated or list attribute.
struct VLCHARTBASE_API KGS57ExpectedValue {
    int16_t id = 0;
    PLIX::PlixUnicodeString meaning;
    PLIX::PlixUnicodeString definition;
    PLIX::PlixUnicodeString references;
};

// One S-57 attribute ("Attribute" of the attribute dictionary file) with its allowed values.
struct VLCHARTBASE_API KGS57Attribute {
    PLIX::PlixUnicodeString acronym;
    uint16_t code = 0;
    PLIX::PlixUnicodeString name;
    PLIX::PlixUnicodeString localName;
    PLIX::PlixUnicodeString definition;
    PLIX::PlixUnicodeString references;
    PLIX::PlixUnicodeString indication;
    PLIX::PlixUnicodeString condition;
    PLIX::PlixUnicodeString remarks;
    KGS57DefineInfo::AttributeType type = KGS57DefineInfo::AttrUnknown;
    PLIX::PlixUnicodeString subset;
    PLIX::PlixArray<KGS57ExpectedValue> expectedValues;
    PLIX::PlixUnicodeString format;
};

// The parsed attribute dictionary file (root "Attributes"), in file order.
class VLCHARTBASE_API KGS57Attributes {
public:
    KGS57Attributes();

    // Replaces the contents by those of the file. False only when the file cannot be read; a
    // document with another root loads as an empty dictionary.
    bool LoadXml(const PLIX::PlixUnicodeString& path);

    const PLIX::PlixArray<KGS57Attribute>& GetRecords() const { return m_records; }
    int GetCount() const { return m_records.GetSize(); }

private:
    friend class KGS57Config;
    PLIX::PlixArray<KGS57Attribute> m_records;
};

// ---- agencies ----

// One producing agency: token, agency code and name.
struct VLCHARTBASE_API KGS57Agency {
    PLIX::PlixUnicodeString token;
    int32_t code = 0;
    PLIX::PlixUnicodeString agencyName;
};

// The parsed agency dictionary file (root "Agencies"), kept in file order.
class VLCHARTBASE_API KGS57Agencies {
public:
    KGS57Agencies();

    // Replaces the contents by those of the file. False only when the file cannot be read; a
    // document with another root loads as an empty dictionary.
    bool LoadXml(const PLIX::PlixUnicodeString& path);

    const PLIX::PlixArray<KGS57Agency>& GetRecords() const { return m_records; }
    int GetCount() const { return m_records.GetSize(); }

private:
    friend class KGS57Config;
    PLIX::PlixArray<KGS57Agency> m_records;
};

// ---- product specification lists ----

struct VLCHARTBASE_API KGS57SpecsUnit {
    int32_t ID = 0;
    PLIX::PlixUnicodeString meaning;
};

// The units of one unit type (and, as read from the file, of the unit types before it).
struct VLCHARTBASE_API KGS57SpecsUnits {
    KGS57DefineInfo::UnitType type = KGS57DefineInfo::UnitUnknown;
    PLIX::PlixArray<KGS57SpecsUnit> units;
};

struct VLCHARTBASE_API KGS57SpecsDatumData {
    int32_t ID = 0;
    PLIX::PlixUnicodeString meaning;
};

// The datums of one datum type (and, as read from the file, of the datum types before it).
struct VLCHARTBASE_API KGS57SpecsDatums {
    KGS57DefineInfo::DatumType type = KGS57DefineInfo::DatumUnknown;
    PLIX::PlixArray<KGS57SpecsDatumData> datums;
};

// An attribute named by a product specification list.
struct VLCHARTBASE_API KGS57SpecsAttributeDefine {
    uint16_t code = 0;
    PLIX::PlixUnicodeString acronym;
};

// An object class named by a product specification list.
struct VLCHARTBASE_API KGS57SpecsObjectDefine {
    uint16_t code = 0;
    PLIX::PlixUnicodeString acronym;
};

// The product specification info file (root "EncInfos"): allowed units and datums, national
// and spatial-meta attributes, and the group-one, master, slave, structure and equipment
// object classes.
class VLCHARTBASE_API KGS57SpecsInfos {
public:
    KGS57SpecsInfos();

    // Empties the nine lists.
    void Init();
    // Starts from Init(). False when the file cannot be read; a document without "EncInfos"
    // loads as an empty dictionary.
    bool LoadXml(const PLIX::PlixUnicodeString& path);
    // Read the "Attribute" (or "ObjectClass") children of the markup's main element into the
    // list, adding their number to count.
    void ReadAttributeDefine(KGMarkup& markup, int& count,
                             PLIX::PlixArray<KGS57SpecsAttributeDefine>& list);
    void ReadObjectDefine(KGMarkup& markup, int& count,
                          PLIX::PlixArray<KGS57SpecsObjectDefine>& list);

    const PLIX::PlixArray<KGS57SpecsUnits>& GetUnits() const { return m_units; }
    const PLIX::PlixArray<KGS57SpecsDatums>& GetDatums() const { return m_datums; }
    const PLIX::PlixArray<KGS57SpecsObjectDefine>& GetGroupOneObjects() const {
        return m_groupOneObjects;
    }
    const PLIX::PlixArray<KGS57SpecsAttributeDefine>& GetNationalAttrs() const {
        return m_nationalAttrs;
    }
    const PLIX::PlixArray<KGS57SpecsAttributeDefine>& GetSpatialMetaAttrs() const {
        return m_spatialMetaAttrs;
    }
    const PLIX::PlixArray<KGS57SpecsObjectDefine>& GetMasterObjects() const {
        return m_masterObjects;
    }
    const PLIX::PlixArray<KGS57SpecsObjectDefine>& GetSlaveObjects() const {
        return m_slaveObjects;
    }
    const PLIX::PlixArray<KGS57SpecsObjectDefine>& GetStructObjects() const {
        return m_structObjects;
    }
    const PLIX::PlixArray<KGS57SpecsObjectDefine>& GetEquipmentObjects() const {
        return m_equipmentObjects;
    }

private:
    friend class KGS57Config;
    PLIX::PlixArray<KGS57SpecsUnits> m_units;
    PLIX::PlixArray<KGS57SpecsDatums> m_datums;
    PLIX::PlixArray<KGS57SpecsObjectDefine> m_groupOneObjects;
    PLIX::PlixArray<KGS57SpecsAttributeDefine> m_nationalAttrs;
    PLIX::PlixArray<KGS57SpecsAttributeDefine> m_spatialMetaAttrs;
    PLIX::PlixArray<KGS57SpecsObjectDefine> m_masterObjects;
    PLIX::PlixArray<KGS57SpecsObjectDefine> m_slaveObjects;
    PLIX::PlixArray<KGS57SpecsObjectDefine> m_structObjects;
    PLIX::PlixArray<KGS57SpecsObjectDefine> m_equipmentObjects;
};

// ---- product specification object rules ----

// One attribute rule of an object class: the attribute code and the file's "Required" value.
struct VLCHARTBASE_API KGS57SpecsAttribute {
    uint16_t code = 0;
    uint16_t required = 0;
};

// The product specification rules of one object class: primitives and attribute rules.
struct VLCHARTBASE_API KGS57SpecsObject {
    PLIX::PlixUnicodeString acronym;
    PLIX::PlixUnicodeString name;
    PLIX::PlixUnicodeString localName;
    uint16_t code = 0;
    PLIX::PlixUnicodeString primitives;
    PLIX::PlixArray<KGS57SpecsAttribute> attributes;
};

// The parsed product specification object file (root "ObjectClasses"), in file order.
class VLCHARTBASE_API KGS57SpecsObjects {
public:
    KGS57SpecsObjects();

    // Replaces the contents by those of the file. False (and empty) when the file cannot be
    // read or its root is not "ObjectClasses".
    bool LoadXml(const PLIX::PlixUnicodeString& path);

    const PLIX::PlixArray<KGS57SpecsObject>& GetRecords() const { return m_records; }
    int GetCount() const { return m_records.GetSize(); }

private:
    friend class KGS57Config;
    PLIX::PlixArray<KGS57SpecsObject> m_records;
};

// ---- S-58 check messages ----

// One S-58 check: number, level, description and reference.
struct VLCHARTBASE_API KGS58Info {
    int32_t id = 0;
    PLIX::PlixUnicodeString level;
    PLIX::PlixUnicodeString description;
    PLIX::PlixUnicodeString reference;
};

// The S-58 check messages (root "S58") by check number.
class VLCHARTBASE_API KGS58Infos {
public:
    KGS58Infos();

    // Merges the file's checks into those held (an equal number replaces the old one). False
    // when the file cannot be read; a document without "S58" adds nothing and succeeds.
    bool LoadXML(const PLIX::PlixUnicodeString& path);
    bool GetS58Info(int id, KGS58Info& out) const;
    int GetCount() const { return m_infos.GetCount(); }

private:
    PLIX::PlixDict<int32_t, KGS58Info> m_infos;
};

// ---- the registry ----

// The process-wide registry of the S-57 catalogue dictionaries. Built while the library loads
// (it reads the chart settings file and loads five dictionaries; the S-58 messages load on the
// first GetS58Info) and reached through GetInstance(). Failures are logged ("EAg001",
// "EAg002", level 400) and leave the dictionary empty. Results are copies.
// Threads: the look-ups (const members, and GetS58Info with its one-time load of the S-58
// file) may be called from several threads at once. Loads, reloads, path refreshes and
// initialize() need the registry to themselves: no look-up may run meanwhile.
class VLCHARTBASE_API KGS57Config {
public:
    // Never null.
    static KGS57Config* GetInstance();

    // Builds empty dictionaries, then LoadDicts(). Hosts use GetInstance(); a separate
    // registry is useful to tools and tests.
    KGS57Config();
    ~KGS57Config();
    KGS57Config(const KGS57Config&) = delete;
    KGS57Config& operator=(const KGS57Config&) = delete;

    // Refreshes all six paths from the settings file and rearms the lazy S-58 load.
    void initialize();
    // initialize(), then loads agencies, object classes, attributes, product specification
    // objects and product specification info; the result is that of the last load alone.
    bool LoadDicts();

    // Path refreshes: each reads the settings file afresh through a temporary chart
    // environment and stores the absolute path (empty when the settings name none).
    void GetS57ObjectDictFile();
    void GetS57AttributeDictFile();
    void GetS57AgencyDictFile();
    void GetS57SpecsObjectDictFile();
    void GetS57SpecsInfoDictFile();
    void GetS58CheckDictFile();

    // The stored paths, as the last refresh left them.
    const PLIX::PlixUnicodeString& GetAgencyDictPath() const { return m_agencyDictFile; }
    const PLIX::PlixUnicodeString& GetObjectDictPath() const { return m_objectDictFile; }
    const PLIX::PlixUnicodeString& GetAttributeDictPath() const { return m_attributeDictFile; }
    const PLIX::PlixUnicodeString& GetSpecsObjectDictPath() const { return m_specsObjectDictFile; }
    const PLIX::PlixUnicodeString& GetSpecsInfoDictPath() const { return m_specsInfoDictFile; }
    const PLIX::PlixUnicodeString& GetS58CheckDictPath() const { return m_s58CheckDictFile; }

    // Loads replace one dictionary from the given file; reloads first refresh that
    // dictionary's path from the settings file. Failures log "EAg001" and return false.
    bool LoadAgenciesFile(const PLIX::PlixUnicodeString& path);
    bool ReloadAgenciesFile();
    bool LoadS57ObjectsFile(const PLIX::PlixUnicodeString& path);
    bool ReloadS57ObjectsFile();
    bool LoadS57AttributesFile(const PLIX::PlixUnicodeString& path);
    bool ReloadS57AttributesFile();
    bool LoadS57SpecsObjectsFile(const PLIX::PlixUnicodeString& path);
    bool ReloadS57SpecsObjectsFile();
    bool LoadS57SpecsInfosFile(const PLIX::PlixUnicodeString& path);
    bool ReloadS57SpecsInfosFile();
    bool LoadS58CheckDictFile(const PLIX::PlixUnicodeString& path);

    // Object classes, sorted by code; acronyms match exactly (case-sensitive).
    void objNameToCodeDict();
    bool GetS57Object(int code, KGS57Object& out) const;
    bool GetS57Object(const PLIX::PlixUnicodeString& acronym, KGS57Object& out) const;
    void GetArrayS57Object(PLIX::PlixArray<KGS57Object>& out) const;

    // Attributes, sorted by code; acronyms match exactly (case-sensitive).
    void attiNameToCodeDict();
    bool GetS57Attributes(int code, KGS57Attribute& out) const;
    bool GetS57Attributes(const PLIX::PlixUnicodeString& acronym, KGS57Attribute& out) const;
    // The type of the attribute GetS57Attributes(acronym, ...) would give, without copying
    // the record; false when that call would be false.
    bool GetS57AttributeType(const PLIX::PlixUnicodeString& acronym,
                             KGS57DefineInfo::AttributeType& type) const;
    void GetArrayS57Attribute(PLIX::PlixArray<KGS57Attribute>& out) const;

    // Agencies, in file order; the first match wins.
    bool GetS57Agency(const PLIX::PlixUnicodeString& token, KGS57Agency& out) const;
    bool GetS57Agency(int code, KGS57Agency& out) const;
    void GetArrayAgency(PLIX::PlixArray<KGS57Agency>& out) const;

    // Product specification lists. The five GetArray... getters replace the caller's array;
    // the four GetArrS57Specs...Object getters append to it.
    void GetArrayS57SpecsUnits(PLIX::PlixArray<KGS57SpecsUnits>& out) const;
    void GetArrayS57SpecsDatums(PLIX::PlixArray<KGS57SpecsDatums>& out) const;
    bool IsS57SpecsNationalAttr(int code) const;
    bool IsS57SpecsNationalAttr(const PLIX::PlixUnicodeString& acronym) const;
    bool IsS57SpecsSpatialMetaAttr(int code) const;
    bool IsS57SpecsSpatialMetaAttr(const PLIX::PlixUnicodeString& acronym) const;
    bool IsS57SpecsGroupOneObject(int code) const;
    bool IsS57SpecsGroupOneObject(const PLIX::PlixUnicodeString& acronym) const;
    // Binary searches. The master list is searched in file order (the file must list it by
    // ascending code); master and slave acronyms are resolved through the attribute index.
    bool IsS57SpecsMasterObject(int code) const;
    bool IsS57SpecsMasterObject(const PLIX::PlixUnicodeString& acronym) const;
    bool IsS57SpecsSlaveObject(int code) const;
    bool IsS57SpecsSlaveObject(const PLIX::PlixUnicodeString& acronym) const;
    bool IsS57SpecsStructObject(int code) const;
    bool IsS57SpecsStructObject(const PLIX::PlixUnicodeString& acronym) const;
    bool IsS57SpecsEquipmentObject(int code) const;
    bool IsS57SpecsEquipmentObject(const PLIX::PlixUnicodeString& acronym) const;
    void GetArrayS57SpecsNationalAttr(PLIX::PlixArray<KGS57SpecsAttributeDefine>& out) const;
    void GetArrS57SpecsSpatialMetaAttrs(PLIX::PlixArray<KGS57SpecsAttributeDefine>& out) const;
    void GetArrayS57SpecsGroupOneObj(PLIX::PlixArray<KGS57SpecsObjectDefine>& out) const;
    void GetArrS57SpecsMasterObject(PLIX::PlixArray<KGS57SpecsObjectDefine>& out) const;
    void GetArrS57SpecsSlaveObject(PLIX::PlixArray<KGS57SpecsObjectDefine>& out) const;
    void GetArrS57SpecsStructObject(PLIX::PlixArray<KGS57SpecsObjectDefine>& out) const;
    void GetArrS57SpecsEquipmentObject(PLIX::PlixArray<KGS57SpecsObjectDefine>& out) const;

    // Product specification object rules, in file order; the first match wins.
    bool GetS57SpecsObject(int code, KGS57SpecsObject& out) const;
    bool GetS57SpecsObject(const PLIX::PlixUnicodeString& acronym, KGS57SpecsObject& out) const;
    void GetArrayS57SpecsObject(PLIX::PlixArray<KGS57SpecsObject>& out) const;

    // S-58 check messages. The first call loads the check file (once: a failed load is not
    // retried until the next initialize()).
    bool GetS58Info(int id, KGS58Info& out);

private:
    KGS57Agencies m_agencies;
    KGS57Objects m_objects;
    KGS57Attributes m_attributes;
    KGS57SpecsObjects m_specsObjects;
    KGS57SpecsInfos m_specsInfos;
    PLIX::PlixUnicodeString m_agencyDictFile;
    PLIX::PlixUnicodeString m_objectDictFile;
    PLIX::PlixUnicodeString m_attributeDictFile;
    PLIX::PlixUnicodeString m_specsObjectDictFile;
    PLIX::PlixUnicodeString m_specsInfoDictFile;
    // Hashed: the look-up tables' loads ask for an attribute's type once per condition.
    std::unordered_map<std::u16string, int32_t> m_attributeAcronymIndex;
    std::unordered_map<std::u16string, int32_t> m_objectAcronymIndex;
    // The S-58 file is tried once, on the first GetS58Info, across all threads: the first
    // caller loads under the mutex while the others wait.
    std::atomic<bool> m_s58Loaded{false};
    std::mutex m_s58Mutex;
    PLIX::PlixUnicodeString m_s58CheckDictFile;
    KGS58Infos m_s58Infos;

    static KGS57Config s_config;
};

}  // namespace KGC
