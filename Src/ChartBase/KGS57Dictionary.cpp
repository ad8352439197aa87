// KGS57Config: the process-wide dictionary registry, its paths, loads and look-ups.
#include "ChartBase/KGS57Dictionary.h"

#include <algorithm>

#include "ChartBase/KGChartEnvironment.h"
#include "KGS57DictionaryLog.h"

using PLIX::PlixArray;
using PLIX::PlixDict;
using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

// Bisection by the 16-bit code, widened to int.
template <typename Record>
const Record* FindByCode(const PlixArray<Record>& records, int code) {
    int low = 0;
    int high = records.GetSize() - 1;
    while (low <= high) {
        const int middle = (low + high) / 2;
        const int probe = static_cast<int>(records[middle].code);
        if (probe == code) return &records[middle];
        if (probe < code) {
            low = middle + 1;
        } else {
            high = middle - 1;
        }
    }
    return nullptr;
}

// Deliberately std::sort on the records themselves: sorting (code, position) pairs and moving
// each record once loaded a little faster, but the look-ups by code and by acronym measured
// 10-15% slower afterwards (S57Dictionary_bench), and loads are rare next to look-ups.
template <typename Record>
void SortByCode(PlixArray<Record>& records) {
    std::sort(records.begin(), records.end(),
              [](const Record& a, const Record& b) { return a.code < b.code; });
}

template <typename Record>
void RebuildIndex(const PlixArray<Record>& records,
                  std::unordered_map<std::u16string, int32_t>& index) {
    index.clear();
    index.reserve(static_cast<size_t>(records.GetSize()));
    // Later records win, so a repeated acronym maps to the code of its last record.
    for (const Record& record : records) index[record.acronym.Str()] = record.code;
}

// The first record in file order that matches.
template <typename Record, typename Match>
const Record* FindFirst(const PlixArray<Record>& records, Match match) {
    const auto found = std::find_if(records.begin(), records.end(), match);
    return found == records.end() ? nullptr : &*found;
}

template <typename Record>
bool CopyFound(const Record* found, Record& out) {
    if (found == nullptr) return false;
    out = *found;
    return true;
}

template <typename Define>
bool ContainsCode(const PlixArray<Define>& list, int code) {
    return FindFirst(list, [code](const Define& d) { return static_cast<int>(d.code) == code; });
}

template <typename Define>
bool ContainsAcronym(const PlixArray<Define>& list, const PlixUnicodeString& acronym) {
    return FindFirst(list, [&acronym](const Define& d) { return d.acronym == acronym; });
}

bool IndexedCode(const std::unordered_map<std::u16string, int32_t>& index,
                 const PlixUnicodeString& acronym, int& code) {
    const auto found = index.find(acronym.Str());
    if (found == index.end()) return false;
    code = found->second;
    return true;
}

}  // namespace

// Built while the library loads; a missing settings file or dictionary only logs.
KGS57Config KGS57Config::s_config;

KGS57Config* KGS57Config::GetInstance() {
    return &s_config;
}

KGS57Config::KGS57Config() {
    LoadDicts();
}

KGS57Config::~KGS57Config() = default;

// ---- paths ----

// A temporary environment per refresh, so every refresh sees the settings file as it is now.
void KGS57Config::GetS57ObjectDictFile() {
    m_objectDictFile = KGChartEnvironment().GetS57ObjectDictFileAbsolutePath();
}

void KGS57Config::GetS57AttributeDictFile() {
    m_attributeDictFile = KGChartEnvironment().GetS57AttributeDictFileAbsolutePath();
}

void KGS57Config::GetS57AgencyDictFile() {
    m_agencyDictFile = KGChartEnvironment().GetAgencyDictFileAbsolutePath();
}

void KGS57Config::GetS57SpecsObjectDictFile() {
    m_specsObjectDictFile = KGChartEnvironment().GetS57SpecsObjectDictFileAbsolutePath();
}

void KGS57Config::GetS57SpecsInfoDictFile() {
    m_specsInfoDictFile = KGChartEnvironment().GetS57SpecsInfoDictFileAbsolutePath();
}

void KGS57Config::GetS58CheckDictFile() {
    m_s58CheckDictFile = KGChartEnvironment().GetS58CheckInfoDictFileAbsolutePath();
}

void KGS57Config::initialize() {
    m_agencyDictFile.Empty();
    m_objectDictFile.Empty();
    m_attributeDictFile.Empty();
    m_specsObjectDictFile.Empty();
    m_specsInfoDictFile.Empty();
    GetS57ObjectDictFile();
    GetS57AttributeDictFile();
    GetS57AgencyDictFile();
    GetS57SpecsObjectDictFile();
    GetS57SpecsInfoDictFile();
    m_s58Loaded.store(false, std::memory_order_release);
    m_s58CheckDictFile.Empty();
    GetS58CheckDictFile();
}

bool KGS57Config::LoadDicts() {
    initialize();
    // Deliberately kept: only the last load decides the result; the others just log.
    LoadAgenciesFile(m_agencyDictFile);
    LoadS57ObjectsFile(m_objectDictFile);
    LoadS57AttributesFile(m_attributeDictFile);
    LoadS57SpecsObjectsFile(m_specsObjectDictFile);
    return LoadS57SpecsInfosFile(m_specsInfoDictFile);
}

// ---- loads ----

bool KGS57Config::LoadAgenciesFile(const PlixUnicodeString& path) {
    if (!m_agencies.LoadXml(path)) {
        s57dict::LogFailure(s57dict::kAgencyLoadFailed);
        return false;
    }
    return true;
}

bool KGS57Config::ReloadAgenciesFile() {
    GetS57AgencyDictFile();
    return LoadAgenciesFile(m_agencyDictFile);
}

bool KGS57Config::LoadS57ObjectsFile(const PlixUnicodeString& path) {
    if (!m_objects.LoadXml(path)) {
        // The acronym index is deliberately left as it was.
        s57dict::LogFailure(s57dict::kObjectLoadFailed);
        return false;
    }
    SortByCode(m_objects.m_records);
    objNameToCodeDict();
    return true;
}

bool KGS57Config::ReloadS57ObjectsFile() {
    GetS57ObjectDictFile();
    return LoadS57ObjectsFile(m_objectDictFile);
}

bool KGS57Config::LoadS57AttributesFile(const PlixUnicodeString& path) {
    if (!m_attributes.LoadXml(path)) {
        // The acronym index is deliberately left as it was.
        s57dict::LogFailure(s57dict::kAttributeLoadFailed);
        return false;
    }
    SortByCode(m_attributes.m_records);
    attiNameToCodeDict();
    return true;
}

bool KGS57Config::ReloadS57AttributesFile() {
    GetS57AttributeDictFile();
    return LoadS57AttributesFile(m_attributeDictFile);
}

bool KGS57Config::LoadS57SpecsObjectsFile(const PlixUnicodeString& path) {
    if (!m_specsObjects.LoadXml(path)) {
        s57dict::LogFailure(s57dict::kSpecsObjectLoadFailed);
        return false;
    }
    return true;
}

bool KGS57Config::ReloadS57SpecsObjectsFile() {
    GetS57SpecsObjectDictFile();
    return LoadS57SpecsObjectsFile(m_specsObjectDictFile);
}

bool KGS57Config::LoadS57SpecsInfosFile(const PlixUnicodeString& path) {
    if (!m_specsInfos.LoadXml(path)) {
        s57dict::LogFailure(s57dict::kSpecsInfoLoadFailed);
        return false;
    }
    return true;
}

bool KGS57Config::ReloadS57SpecsInfosFile() {
    GetS57SpecsInfoDictFile();
    return LoadS57SpecsInfosFile(m_specsInfoDictFile);
}

bool KGS57Config::LoadS58CheckDictFile(const PlixUnicodeString& path) {
    if (!m_s58Infos.LoadXML(path)) {
        s57dict::LogFailure(s57dict::kS58LoadFailed);
        return false;
    }
    return true;
}

// ---- object classes ----

void KGS57Config::objNameToCodeDict() {
    RebuildIndex(m_objects.m_records, m_objectAcronymIndex);
}

bool KGS57Config::GetS57Object(int code, KGS57Object& out) const {
    return CopyFound(FindByCode(m_objects.m_records, code), out);
}

bool KGS57Config::GetS57Object(const PlixUnicodeString& acronym, KGS57Object& out) const {
    int code = 0;
    // The record is the one the search by code finds, which for a repeated code need not be
    // the record the acronym came from.
    return IndexedCode(m_objectAcronymIndex, acronym, code) && GetS57Object(code, out);
}

void KGS57Config::GetArrayS57Object(PlixArray<KGS57Object>& out) const {
    out.Copy(m_objects.m_records);
}

// ---- attributes ----

void KGS57Config::attiNameToCodeDict() {
    RebuildIndex(m_attributes.m_records, m_attributeAcronymIndex);
}

bool KGS57Config::GetS57Attributes(int code, KGS57Attribute& out) const {
    return CopyFound(FindByCode(m_attributes.m_records, code), out);
}

bool KGS57Config::GetS57Attributes(const PlixUnicodeString& acronym, KGS57Attribute& out) const {
    int code = 0;
    return IndexedCode(m_attributeAcronymIndex, acronym, code) && GetS57Attributes(code, out);
}

bool KGS57Config::GetS57AttributeType(const PlixUnicodeString& acronym,
                                      KGS57DefineInfo::AttributeType& type) const {
    int code = 0;
    if (!IndexedCode(m_attributeAcronymIndex, acronym, code)) return false;
    const KGS57Attribute* found = FindByCode(m_attributes.m_records, code);
    if (!found) return false;
    type = found->type;
    return true;
}

void KGS57Config::GetArrayS57Attribute(PlixArray<KGS57Attribute>& out) const {
    out.Copy(m_attributes.m_records);
}

// ---- agencies ----

bool KGS57Config::GetS57Agency(const PlixUnicodeString& token, KGS57Agency& out) const {
    return CopyFound(FindFirst(m_agencies.m_records,
                               [&token](const KGS57Agency& a) { return a.token == token; }),
                     out);
}

bool KGS57Config::GetS57Agency(int code, KGS57Agency& out) const {
    return CopyFound(
        FindFirst(m_agencies.m_records, [code](const KGS57Agency& a) { return a.code == code; }),
        out);
}

void KGS57Config::GetArrayAgency(PlixArray<KGS57Agency>& out) const {
    out.Copy(m_agencies.m_records);
}

// ---- product specification lists ----

void KGS57Config::GetArrayS57SpecsUnits(PlixArray<KGS57SpecsUnits>& out) const {
    out.Copy(m_specsInfos.m_units);
}

void KGS57Config::GetArrayS57SpecsDatums(PlixArray<KGS57SpecsDatums>& out) const {
    out.Copy(m_specsInfos.m_datums);
}

bool KGS57Config::IsS57SpecsNationalAttr(int code) const {
    return ContainsCode(m_specsInfos.m_nationalAttrs, code);
}

bool KGS57Config::IsS57SpecsNationalAttr(const PlixUnicodeString& acronym) const {
    return ContainsAcronym(m_specsInfos.m_nationalAttrs, acronym);
}

bool KGS57Config::IsS57SpecsSpatialMetaAttr(int code) const {
    return ContainsCode(m_specsInfos.m_spatialMetaAttrs, code);
}

bool KGS57Config::IsS57SpecsSpatialMetaAttr(const PlixUnicodeString& acronym) const {
    return ContainsAcronym(m_specsInfos.m_spatialMetaAttrs, acronym);
}

bool KGS57Config::IsS57SpecsGroupOneObject(int code) const {
    return ContainsCode(m_specsInfos.m_groupOneObjects, code);
}

bool KGS57Config::IsS57SpecsGroupOneObject(const PlixUnicodeString& acronym) const {
    return ContainsAcronym(m_specsInfos.m_groupOneObjects, acronym);
}

bool KGS57Config::IsS57SpecsMasterObject(int code) const {
    return FindByCode(m_specsInfos.m_masterObjects, code) != nullptr;
}

bool KGS57Config::IsS57SpecsMasterObject(const PlixUnicodeString& acronym) const {
    int code = 0;
    // Deliberately kept: master (and slave) acronyms go through the attribute acronym index.
    return IndexedCode(m_attributeAcronymIndex, acronym, code) && IsS57SpecsMasterObject(code);
}

bool KGS57Config::IsS57SpecsSlaveObject(int code) const {
    return FindByCode(m_specsInfos.m_slaveObjects, code) != nullptr;
}

bool KGS57Config::IsS57SpecsSlaveObject(const PlixUnicodeString& acronym) const {
    int code = 0;
    // Deliberately kept: resolved through the attribute acronym index, like the master list.
    return IndexedCode(m_attributeAcronymIndex, acronym, code) && IsS57SpecsSlaveObject(code);
}

bool KGS57Config::IsS57SpecsStructObject(int code) const {
    return FindByCode(m_specsInfos.m_structObjects, code) != nullptr;
}

bool KGS57Config::IsS57SpecsStructObject(const PlixUnicodeString& acronym) const {
    int code = 0;
    return IndexedCode(m_objectAcronymIndex, acronym, code) && IsS57SpecsStructObject(code);
}

bool KGS57Config::IsS57SpecsEquipmentObject(int code) const {
    return FindByCode(m_specsInfos.m_equipmentObjects, code) != nullptr;
}

bool KGS57Config::IsS57SpecsEquipmentObject(const PlixUnicodeString& acronym) const {
    int code = 0;
    return IndexedCode(m_objectAcronymIndex, acronym, code) && IsS57SpecsEquipmentObject(code);
}

void KGS57Config::GetArrayS57SpecsNationalAttr(PlixArray<KGS57SpecsAttributeDefine>& out) const {
    out.Copy(m_specsInfos.m_nationalAttrs);
}

void KGS57Config::GetArrS57SpecsSpatialMetaAttrs(PlixArray<KGS57SpecsAttributeDefine>& out) const {
    out.Copy(m_specsInfos.m_spatialMetaAttrs);
}

void KGS57Config::GetArrayS57SpecsGroupOneObj(PlixArray<KGS57SpecsObjectDefine>& out) const {
    out.Copy(m_specsInfos.m_groupOneObjects);
}

// Deliberately kept: these four append to the caller's array, unlike the getters above.
void KGS57Config::GetArrS57SpecsMasterObject(PlixArray<KGS57SpecsObjectDefine>& out) const {
    out.Append(m_specsInfos.m_masterObjects);
}

void KGS57Config::GetArrS57SpecsSlaveObject(PlixArray<KGS57SpecsObjectDefine>& out) const {
    out.Append(m_specsInfos.m_slaveObjects);
}

void KGS57Config::GetArrS57SpecsStructObject(PlixArray<KGS57SpecsObjectDefine>& out) const {
    out.Append(m_specsInfos.m_structObjects);
}

void KGS57Config::GetArrS57SpecsEquipmentObject(PlixArray<KGS57SpecsObjectDefine>& out) const {
    out.Append(m_specsInfos.m_equipmentObjects);
}

// ---- product specification object rules ----

bool KGS57Config::GetS57SpecsObject(int code, KGS57SpecsObject& out) const {
    return CopyFound(
        FindFirst(m_specsObjects.m_records,
                  [code](const KGS57SpecsObject& o) { return static_cast<int>(o.code) == code; }),
        out);
}

bool KGS57Config::GetS57SpecsObject(const PlixUnicodeString& acronym, KGS57SpecsObject& out) const {
    return CopyFound(
        FindFirst(m_specsObjects.m_records,
                  [&acronym](const KGS57SpecsObject& o) { return o.acronym == acronym; }),
        out);
}

void KGS57Config::GetArrayS57SpecsObject(PlixArray<KGS57SpecsObject>& out) const {
    out.Copy(m_specsObjects.m_records);
}

// ---- S-58 check messages ----

bool KGS57Config::GetS58Info(int id, KGS58Info& out) {
    if (!m_s58Loaded.load(std::memory_order_acquire)) {
        std::lock_guard<std::mutex> lock(m_s58Mutex);
        if (!m_s58Loaded.load(std::memory_order_relaxed)) {
            LoadS58CheckDictFile(m_s58CheckDictFile);
            // Deliberately kept: set whatever the load gave, so a failed load is tried (and
            // logged) only once until the next initialize().
            m_s58Loaded.store(true, std::memory_order_release);
        }
    }
    return m_s58Infos.GetS58Info(id, out);
}

}  // namespace KGC
