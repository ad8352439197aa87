// The S-57 dictionaries and their registry. The registry fixture (Tests/Data/dict/registry/) is
// loaded through its settings file and dumped whole: every record, then the answer of every
// look-up for a set of codes and acronyms, compared with an expected file.
#include "ChartBase/KGS57Dictionary.h"

#include <gtest/gtest.h>

#include <cctype>
#include <climits>
#include <filesystem>
#include <sstream>

#include "Base/KGFile.h"
#include "TestSupport.h"

using namespace KGC;
using D = KGC::KGS57DefineInfo;
using PLIX::PlixArray;
using PLIX::PlixUnicodeString;
using PLIX::PlixVariant;
namespace fs = std::filesystem;

namespace {

const auto U = [](const PlixUnicodeString& s) { return s.ToUtf8(); };
const auto Fixture = [](const char* f) { return vltest::TestDataDir() + "dict/registry/" + f; };
// The fields, each followed by "|".
template <typename... Field>
std::string Join(const Field&... field) {
    return ((U(field) + "|") + ...);
}

// Calls a list getter twice on one array, so replacing and appending getters differ.
template <typename T>
PlixArray<T> Twice(const KGS57Config& c, void (KGS57Config::*get)(PlixArray<T>&) const) {
    PlixArray<T> list;
    (c.*get)(list);
    (c.*get)(list);
    return list;
}

// What show() gives of the found record, "-" when none is found and the output is untouched.
template <typename T, typename Get, typename Show>
std::string Ask(Get get, Show show) {
    T out;
    const std::string blank = show(out);
    return get(out) ? show(out) : show(out) == blank ? "-" : "clobbered";
}

const auto kId = [](const auto& r) { return U(r.acronym) + "/" + std::to_string(r.code); };
const auto kAgency = [](const KGS57Agency& r) { return U(r.token) + "/" + std::to_string(r.code); };
const auto kCheck = [](const KGS58Info& r) {
    return std::to_string(r.id) + " " + Join(r.level, r.description, r.reference);
};

// The product specification memberships of a code or an acronym, one letter each.
template <typename Key>
std::string Flags(const KGS57Config& c, const Key& k) {
    const bool on[] = {c.IsS57SpecsNationalAttr(k),   c.IsS57SpecsSpatialMetaAttr(k),
                       c.IsS57SpecsGroupOneObject(k), c.IsS57SpecsMasterObject(k),
                       c.IsS57SpecsSlaveObject(k),    c.IsS57SpecsStructObject(k),
                       c.IsS57SpecsEquipmentObject(k)};
    std::string out;
    for (int i = 0; i < 7; ++i) out += on[i] ? "NSGMVTE"[i] : '.';
    return out;
}

template <typename Key>
void Probe(std::ostream& o, KGS57Config& c, const Key& k) {
    o << Ask<KGS57Object>([&](auto& r) { return c.GetS57Object(k, r); }, kId) << " "
      << Ask<KGS57Attribute>([&](auto& r) { return c.GetS57Attributes(k, r); }, kId) << " "
      << Ask<KGS57Agency>([&](auto& r) { return c.GetS57Agency(k, r); }, kAgency) << " "
      << Ask<KGS57SpecsObject>([&](auto& r) { return c.GetS57SpecsObject(k, r); }, kId) << " "
      << Flags(c, k);
    if constexpr (!std::is_same_v<Key, int>) {
        D::AttributeType t = D::AttrUnknown;
        o << (c.GetS57AttributeType(k, t) ? " type '" + U(D::AttributeTypeToName(t)) + "'" : " -");
    }
    o << "\n";
}

template <typename Define>
void List(std::ostream& o, const char* name, const PlixArray<Define>& list) {
    o << name << ":";
    for (const auto& d : list) o << " " << kId(d);
    o << "\n";
}

// The six stored paths, less the module directory they start with.
std::string Paths(const KGS57Config& c) {
    const size_t dir = U(KGFile::GetModulePath(u"VlBase")).size();
    std::string out;
    for (const auto* p :
         {&c.GetAgencyDictPath(), &c.GetObjectDictPath(), &c.GetAttributeDictPath(),
          &c.GetSpecsObjectDictPath(), &c.GetSpecsInfoDictPath(), &c.GetS58CheckDictPath()})
        out += (p->IsEmpty() ? "" : U(*p).substr(dir)) + " ";
    return out;
}

std::string Dump(KGS57Config& c) {
    std::ostringstream o;
    o << "paths: " << Paths(c) << "\n";
    for (const auto& r : Twice(c, &KGS57Config::GetArrayS57Object))
        o << "object " << kId(r) << " '" << U(D::FeatureTypeToName(r.type)) << "' "
          << Join(r.name, r.definition, r.references, r.remarks) << "\n";
    for (const auto& r : Twice(c, &KGS57Config::GetArrayS57Attribute)) {
        o << "attribute " << kId(r) << " '" << U(D::AttributeTypeToName(r.type)) << "' "
          << Join(r.name, r.localName, r.definition, r.references, r.indication, r.condition,
                  r.remarks, r.subset, r.format);
        for (const auto& v : r.expectedValues)
            o << " [" << v.id << " " << Join(v.meaning, v.definition, v.references) << "]";
        o << "\n";
    }
    for (const auto& r : Twice(c, &KGS57Config::GetArrayAgency))
        o << "agency " << kAgency(r) << " " << U(r.agencyName) << "\n";
    for (const auto& r : Twice(c, &KGS57Config::GetArrayS57SpecsObject)) {
        o << "specs " << kId(r) << " " << Join(r.primitives, r.name, r.localName);
        for (const auto& a : r.attributes) o << " " << a.code << ":" << a.required;
        o << "\n";
    }
    for (const auto& g : Twice(c, &KGS57Config::GetArrayS57SpecsUnits)) {
        o << "units '" << U(D::UnitTypeToName(g.type)) << "':";
        for (const auto& u : g.units) o << " " << u.ID << " " << Join(u.meaning);
        o << "\n";
    }
    for (const auto& g : Twice(c, &KGS57Config::GetArrayS57SpecsDatums)) {
        o << "datums '" << U(D::DatumTypeToName(g.type)) << "':";
        for (const auto& d : g.datums) o << " " << d.ID << " " << Join(d.meaning);
        o << "\n";
    }
    List(o, "national", Twice(c, &KGS57Config::GetArrayS57SpecsNationalAttr));
    List(o, "spatial meta", Twice(c, &KGS57Config::GetArrS57SpecsSpatialMetaAttrs));
    List(o, "group one", Twice(c, &KGS57Config::GetArrayS57SpecsGroupOneObj));
    List(o, "master", Twice(c, &KGS57Config::GetArrS57SpecsMasterObject));
    List(o, "slave", Twice(c, &KGS57Config::GetArrS57SpecsSlaveObject));
    List(o, "struct", Twice(c, &KGS57Config::GetArrS57SpecsStructObject));
    List(o, "equipment", Twice(c, &KGS57Config::GetArrS57SpecsEquipmentObject));
    for (int code : {-1, 0, 1, 3, 7, 9, 12, 17, 42, 75, 76, 140, 144, 300, 301, 402, 4464, 65611}) {
        o << "code " << code << ": ";
        Probe(o, c, code);
    }
    for (const char* name :
         {"",       "LIGHTS", "lights", "LIGHTS ", "COLOUR", "colour", "BOYLAT",
          "TWICE",  "AA",     "GB",     "gb",      "G2",     "SECOND", "NOBJNM",
          "QUAPOS", "LNDARE", "TOPMAR", "MASTR3",  "SLAVE1", "NEWOBJ", "NEWNAT"}) {
        o << "name '" << name << "': ";
        Probe(o, c, PlixUnicodeString(name));
    }
    for (int id : {0, 7, 8, 9, 508, 1500})
        o << "check " << id << ": "
          << Ask<KGS58Info>([&](auto& r) { return c.GetS58Info(id, r); }, kCheck) << "\n";
    return o.str();
}

// The dictionary records, "message@line" each.
std::string Logged(const vltest::LogCapture& log) {
    std::string out;
    for (const auto& r : log.Records())
        if (r.source == "../../../Src/ChartBase/KGS57Dictionary")
            out += (r.level == 400 && !r.hasCode ? "" : "?") + U(r.message) + "@" +
                   std::to_string(r.line) + " ";
    return out;
}

}  // namespace

TEST(KGS57Registry, ServesTheSettingsDictionariesAndReloadsReplaceThem) {
    vltest::TempDir dir;
    fs::copy(Fixture(""), dir.Path(), fs::copy_options::recursive);
    vltest::ModulePathOverride home(dir.Path());
    vltest::LogCapture log;
    KGS57Config c;
    EXPECT_EQ(Dump(c), vltest::ReadFile(Fixture("registry.txt")));

    fs::copy_file(dir.File("ChartConfig-b.xml"), dir.File("ChartConfig.xml"),
                  fs::copy_options::overwrite_existing);
    c.GetS58CheckDictFile();  // now s58-b.xml, which holds check 8
    KGS58Info check;
    EXPECT_FALSE(c.GetS58Info(8, check));  // the checks are loaded once, until initialize()
    EXPECT_TRUE(c.ReloadAgenciesFile());
    EXPECT_TRUE(c.ReloadS57ObjectsFile());
    EXPECT_TRUE(c.ReloadS57AttributesFile());  // another root: loads empty
    EXPECT_TRUE(c.ReloadS57SpecsObjectsFile());
    EXPECT_TRUE(c.ReloadS57SpecsInfosFile());
    c.initialize();  // the next request merges s58-b.xml into the checks held
    // Only the second files' records remain (the S-58 checks merge).
    EXPECT_EQ(Dump(c), vltest::ReadFile(Fixture("reloaded.txt")));
    EXPECT_EQ(Logged(log), "");

    // Every path is read afresh; only the last load decides the result, the others just log.
    vltest::WriteFile(dir.File("ChartConfig.xml"),
                      "<VeltrinChart><ElectronicChart><Dictionary><S57InfoSpecs>./specs-infos.xml"
                      "</S57InfoSpecs></Dictionary></ElectronicChart></VeltrinChart>");
    EXPECT_TRUE(c.LoadDicts());
    EXPECT_EQ(Paths(c), "    specs-infos.xml  ");
    fs::remove(dir.File("specs-infos.xml"));
    EXPECT_FALSE(c.LoadDicts());
}

// Every loader on a missing, an unreadable and an other-root file: its result, its log records,
// the records of its dictionary that still answer, and the memberships of LIGHTS and COLOUR.
TEST(KGS57Registry, FailedLoadsLogTheirRecordsAndLeaveTheDictionaryEmpty) {
    using Load = bool (KGS57Config::*)(const PlixUnicodeString&);
    const std::pair<const char*, Load> kinds[] = {
        {"agency", &KGS57Config::LoadAgenciesFile},
        {"object", &KGS57Config::LoadS57ObjectsFile},
        {"attribute", &KGS57Config::LoadS57AttributesFile},
        {"specs", &KGS57Config::LoadS57SpecsObjectsFile},
        {"units", &KGS57Config::LoadS57SpecsInfosFile},
        {"check", &KGS57Config::LoadS58CheckDictFile}};
    const std::string failures = vltest::TestDataDir() + "dict/failures/";
    vltest::ModulePathOverride home(Fixture(""));
    std::string report;
    for (const auto& [kind, load] : kinds) {
        for (const char* file : {"missing.xml", "unreadable.xml", "other-root.xml"}) {
            KGS57Config c;
            KGS58Info check;
            KGS57DefineInfo::AttributeType type;
            c.GetS58Info(0, check);  // the lazy load, before the one under test
            vltest::LogCapture log;
            const bool ok = (c.*load)(failures + file);
            std::istringstream dump(Dump(c));
            int left = 0;
            for (std::string line; std::getline(dump, line);)
                left += line.rfind(std::string(kind) + " ", 0) == 0 && line.back() != '-';
            report += std::string(kind) + " " + file + (ok ? ": true " : ": false ") + Logged(log) +
                      "| " + std::to_string(left) + " left | LIGHTS " +
                      Flags(c, PlixUnicodeString("LIGHTS")) + " COLOUR " +
                      Flags(c, PlixUnicodeString("COLOUR")) + " type " +
                      (c.GetS57AttributeType(u"COLOUR", type) ? "known" : "unknown") + "\n";
        }
    }
    EXPECT_EQ(report, vltest::ReadFile(failures + "report.txt"));
}

// The record classes keep file order; their count is the number of records.
TEST(KGS57Registry, RecordClassesKeepFileOrder) {
    auto codes = [](auto&& dictionary, const char* file) {
        EXPECT_TRUE(dictionary.LoadXml(Fixture(file))) << file;
        std::string out = std::to_string(dictionary.GetCount()) + ":";
        for (const auto& r : dictionary.GetRecords()) out += " " + std::to_string(r.code);
        return out + "; ";
    };
    EXPECT_EQ(codes(KGS57Objects(), "objects.xml") + codes(KGS57Attributes(), "attributes.xml") +
                  codes(KGS57Agencies(), "agencies.xml") +
                  codes(KGS57SpecsObjects(), "specs-objects.xml"),
              "8: 75 17 42 302 4464 9 3 0; 5: 116 75 17 1 0; 5: 7 140 140 0 141; 4: 75 75 42 76; ");
}

// Each name reads back to its value, also in the other case; a padded, longer or empty name is
// unknown (0); 0 and values outside the enumeration have no name.
template <typename Enum>
void RoundTrip(const std::vector<std::string>& names, PlixUnicodeString (*toName)(Enum),
               Enum (*toValue)(const PlixUnicodeString&)) {
    const int count = static_cast<int>(names.size());
    for (int value = 1; value <= count; ++value) {
        const std::string& name = names[value - 1];
        std::string otherCase = name;
        for (char& ch : otherCase) ch = std::islower(ch) ? std::toupper(ch) : std::tolower(ch);
        EXPECT_EQ(toName(Enum(value)).ToUtf8(), name);
        EXPECT_EQ(toValue(name.c_str()), value);
        EXPECT_EQ(toValue(otherCase.c_str()), value) << otherCase;
        for (const std::string& unknown : {" " + name, name + "x", std::string()})
            EXPECT_EQ(toValue(unknown.c_str()), 0) << "'" << unknown << "'";
    }
    for (int value : {0, count + 1, -1, INT_MIN})
        EXPECT_TRUE(toName(Enum(value)).IsEmpty()) << value;
}

TEST(KGS57DefineInfo, NamesRoundTripIgnoringCase) {
    RoundTrip({"Horizontal", "Vertical", "Sounding"}, D::DatumTypeToName, D::ToDatumType);
    RoundTrip({"Depth", "Height", "PositionalAccuracy"}, D::UnitTypeToName, D::ToUnitType);
    RoundTrip({"E", "L", "F", "I", "A", "S"}, D::AttributeTypeToName, D::ToAttributeType);
    RoundTrip({"Geo", "Meta", "Collection", "Cartographic"}, D::FeatureTypeToName,
              D::ToFeatureType);
}

TEST(KGS57DefineInfo, UnknownMarkerDependsOnTheAttributeType) {
    struct Row {
        int type;
        std::vector<PlixVariant> markers, others;
    } const rows[] = {{D::AttrInteger, {999999999, "999999999"}, {999999998}},
                      {D::AttrFloat, {999999998.5, 1000000000.0}, {999999997.5}},
                      {D::AttrList, {"0", 0}, {"0,0", " 0"}},
                      {D::AttrEnumerated, {0}, {3}},
                      {D::AttrFreeText, {}, {999999999, 0}},
                      {D::AttrCodedString, {}, {"0"}},
                      // Deliberately kept: untyped and out-of-range types are judged like floats.
                      {D::AttrUnknown, {999999999.4}, {0}},
                      {42, {999999999}, {"0"}}};
    for (const Row& row : rows)
        for (const auto& [values, marker] : {std::pair(&row.markers, true), {&row.others, false}})
            for (const PlixVariant& value : *values)
                EXPECT_EQ(D::IsUnknowValue(value, D::AttributeType(row.type)), marker)
                    << value.ToString().ToUtf8() << " as type " << row.type;
    for (int type = -1; type <= 7; ++type)  // a null value never is
        EXPECT_FALSE(D::IsUnknowValue(PlixVariant(), D::AttributeType(type))) << type;
}
