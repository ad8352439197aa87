#include "ChartBase/KGS57Dictionary.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "TestSupport.h"

using KGC::KGS57Agency;
using KGC::KGS57Attribute;
using KGC::KGS57Config;
using KGC::KGS57DefineInfo;
using KGC::KGS57Object;
using KGC::KGS57SpecsObject;
using KGC::KGS57SpecsObjectDefine;
using KGC::KGS58Info;
using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace {

const char kSource[] = "../../../Src/ChartBase/KGS57Dictionary";

std::string Utf8(const PlixUnicodeString& s) {
    return s.ToUtf8();
}

struct Logged {
    std::string message;
    int line;
    bool operator==(const Logged& o) const { return message == o.message && line == o.line; }
};

std::ostream& operator<<(std::ostream& os, const Logged& l) {
    return os << l.message << "@" << l.line;
}

// The dictionary records of a capture (message and line), checking the fixed fields of each.
std::vector<Logged> DictionaryRecords(const vltest::LogCapture& log) {
    std::vector<Logged> out;
    for (const auto& r : log.Records()) {
        if (r.source != kSource) continue;
        EXPECT_EQ(r.level, 400);
        EXPECT_FALSE(r.hasCode);
        out.push_back({r.message.ToUtf8(), r.line});
    }
    return out;
}

std::string XmlFile(const std::string& body) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + body;
}

// A module directory holding a settings file that names the dictionaries in it, and the
// registry's module path pointed at it while the fixture lives.
class KGS57DictionaryFiles : public ::testing::Test {
protected:
    KGS57DictionaryFiles() : m_override(m_dir.Path()) {}

    void WriteSettings(const std::map<std::string, std::string>& entries) {
        std::string dict;
        for (const auto& e : entries) dict += "<" + e.first + ">" + e.second + "</" + e.first + ">";
        vltest::WriteFile(m_dir.File("ChartConfig.xml"),
                          XmlFile("<VeltrinChart><ElectronicChart><Display/><Dictionary>" + dict +
                                  "</Dictionary></ElectronicChart></VeltrinChart>"));
    }
    // The usual settings: every dictionary under its conventional name beside the settings.
    void WriteDefaultSettings() {
        WriteSettings({{"Agency", "./agencies.xml"},
                       {"S57Object", "./objects.xml"},
                       {"S57Attribute", "./attributes.xml"},
                       {"S57ObjectSpecs", "./specs-objects.xml"},
                       {"S57InfoSpecs", "./specs-infos.xml"},
                       {"S58CheckInfo", "./s58.xml"}});
    }
    void Write(const std::string& name, const std::string& body) {
        vltest::WriteFile(m_dir.File(name), XmlFile(body));
    }
    std::string Path(const std::string& name) const { return m_dir.File(name); }

    vltest::TempDir m_dir;
    vltest::ModulePathOverride m_override;
};

const char kObjects[] =
    "<ObjectClasses>"
    "<ObjectClass Code='75' Acronym='LIGHTS' Type='Geo'><Name>Light</Name>"
    "<Definition>A luminous signal</Definition><References>S-4</References>"
    "<Remarks>none</Remarks></ObjectClass>"
    "<ObjectClass Code='17' Acronym='BOYLAT' Type='Geo'><Name>Buoy, lateral</Name></ObjectClass>"
    "<Comment>skipped</Comment>"
    "<ObjectClass Code='42' Acronym='DEPARE' Type='Geo'><Name>Depth area</Name></ObjectClass>"
    "<ObjectClass Code='302' Acronym='M_COVR' Type='Meta'><Name>Coverage</Name></ObjectClass>"
    "</ObjectClasses>";

const char kAttributes[] =
    "<Attributes>"
    "<Attribute Code='116' Acronym='OBJNAM' Type='S'><Name>Object name</Name></Attribute>"
    "<Attribute Code='75' Acronym='COLOUR' Type='L'><Name>Colour</Name>"
    "<ExpectedInputs><ExpectedValue ID='1' Meaning='white'/><ExpectedValue ID='3' "
    "Meaning='red'/></ExpectedInputs></Attribute>"
    "<Attribute Code='17' Acronym='BOYLAT' Type='E'><Name>not really an attribute</Name>"
    "</Attribute>"
    "</Attributes>";

const char kAgencies[] =
    "<Agencies><Agency Token='AU' Code='10'><AgencyName>Australia</AgencyName></Agency>"
    "<Agency Token='GB' Code='140'><AgencyName>United Kingdom</AgencyName></Agency></Agencies>";

const char kSpecsObjects[] =
    "<ObjectClasses><ObjectClass Code='75' Acronym='LIGHTS'><Primitives value='Point;'/>"
    "<Name>Light</Name><Attributes><Attribute Code='75' Required='1'/></Attributes>"
    "</ObjectClass></ObjectClasses>";

const char kSpecsInfos[] =
    "<EncInfos><NationalAttributes><Attribute Acronym='NOBJNM' Code='301'/></NationalAttributes>"
    "</EncInfos>";

const char kS58[] =
    "<S58><Test id='508' level='Error'><Description>A light has no colour.</Description>"
    "<Reference>LIGHTS</Reference></Test></S58>";

const char kGroups[] =
    "<EncInfos>"
    "<EquipmentObjectClasses><ObjectClass Acronym='TOPMAR' Code='144'/>"
    "<ObjectClass Acronym='LIGHTS' Code='75'/></EquipmentObjectClasses>"
    "<SlaveObjectClasses><ObjectClass Acronym='SLAVE3' Code='300'/>"
    "<ObjectClass Acronym='SLAVE1' Code='12'/><ObjectClass Acronym='LIGHTS' Code='75'/>"
    "</SlaveObjectClasses>"
    "<MasterObjectClasses><ObjectClass Acronym='MASTR3' Code='300'/>"
    "<ObjectClass Acronym='BOYLAT' Code='12'/></MasterObjectClasses>"
    "<StructObjectClasses><ObjectClass Acronym='BOYLAT' Code='17'/>"
    "<ObjectClass Acronym='WIDE' Code='65537'/></StructObjectClasses>"
    "<Datums><DatumType value='horizontal'><Datum ID='2' Meaning='WGS 84'/></DatumType>"
    "<DatumType value='Nowhere'><Datum ID='9' Meaning='odd'/></DatumType></Datums>"
    "<Units><UnitType value='Depth'><Unit ID='1' Meaning='metres'/>"
    "<Unit ID='2' Meaning='fathoms'/></UnitType>"
    "<UnitType value='Height'><Unit ID='3' Meaning='feet'/></UnitType></Units>"
    "<SpatialMetaAttributes><Attribute Acronym='QUAPOS' Code='402'/></SpatialMetaAttributes>"
    "<NationalAttributes><Attribute Acronym='NOBJNM' Code='301'/>"
    "<Attribute Acronym='NINFOM' Code='300'/></NationalAttributes>"
    "<GroupOneObjectClasses><ObjectClass Acronym='LNDARE' Code='71'/>"
    "<ObjectClass Acronym='DEPARE' Code='42'/></GroupOneObjectClasses>"
    "</EncInfos>";

std::vector<int> Codes(const PlixArray<KGS57SpecsObjectDefine>& list) {
    std::vector<int> out;
    for (const auto& d : list) out.push_back(d.code);
    return out;
}

class KGS57Registry : public KGS57DictionaryFiles {
protected:
    void WriteAll() {
        WriteDefaultSettings();
        Write("agencies.xml", kAgencies);
        Write("objects.xml", kObjects);
        Write("attributes.xml", kAttributes);
        Write("specs-objects.xml", kSpecsObjects);
        Write("specs-infos.xml", kSpecsInfos);
        Write("s58.xml", kS58);
    }
};

}  // namespace

// ---------------------------------------------------------------- object classes

TEST_F(KGS57DictionaryFiles, ObjectClassFieldsAreReadFromAttributesAndChildrenInAnyOrder) {
    Write("o.xml",
          "<ObjectClasses>"
          "<ObjectClass Code='75' Acronym='LIGHTS' Type=' geo '>"
          "<Remarks>r</Remarks><References>ref</References><Definition>d &amp; e</Definition>"
          "<Name>Light</Name><Name>second name ignored</Name></ObjectClass>"
          "<ObjectClass Code='70000' Acronym=' X ' Type='Nonsense'/>"
          "<ObjectClass/>"
          "</ObjectClasses>");
    KGC::KGS57Objects objects;
    ASSERT_TRUE(objects.LoadXml(Path("o.xml")));
    ASSERT_EQ(objects.GetCount(), 3);
    const auto& r = objects.GetRecords();
    ASSERT_EQ(r.GetSize(), 3);
    EXPECT_EQ(Utf8(r[0].acronym), "LIGHTS");
    EXPECT_EQ(r[0].code, 75);
    EXPECT_EQ(r[0].type, KGS57DefineInfo::FeatureGeo);
    EXPECT_EQ(Utf8(r[0].name), "Light");
    EXPECT_EQ(Utf8(r[0].definition), "d & e");
    EXPECT_EQ(Utf8(r[0].references), "ref");
    EXPECT_EQ(Utf8(r[0].remarks), "r");
    // Deliberately kept: codes are 16 bits wide, 70000 keeps its low 16 bits.
    EXPECT_EQ(r[1].code, 4464);
    EXPECT_EQ(Utf8(r[1].acronym), " X ");
    EXPECT_EQ(r[1].type, KGS57DefineInfo::FeatureUnknown);
    EXPECT_TRUE(r[1].name.IsEmpty());
    EXPECT_EQ(r[2].code, 0);
    EXPECT_TRUE(r[2].acronym.IsEmpty());
    EXPECT_EQ(r[2].type, KGS57DefineInfo::FeatureUnknown);
}

TEST_F(KGS57DictionaryFiles, ObjectDictionaryNeedsItsRootAndAReadableFile) {
    vltest::LogCapture log;
    KGC::KGS57Objects objects;
    Write("good.xml", kObjects);
    ASSERT_TRUE(objects.LoadXml(Path("good.xml")));
    EXPECT_EQ(objects.GetCount(), 4);

    Write("root.xml", "<Attributes><ObjectClass Code='1' Acronym='A'/></Attributes>");
    EXPECT_FALSE(objects.LoadXml(Path("root.xml")));
    EXPECT_EQ(objects.GetCount(), 0);
    EXPECT_EQ(objects.GetRecords().GetSize(), 0);
    EXPECT_TRUE(DictionaryRecords(log).empty());

    ASSERT_TRUE(objects.LoadXml(Path("good.xml")));
    vltest::WriteFile(Path("broken.xml"), "<ObjectClasses><ObjectClass>");
    EXPECT_FALSE(objects.LoadXml(Path("broken.xml")));
    EXPECT_EQ(objects.GetCount(), 0);
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 84}}));

    Write("empty.xml", "<ObjectClasses/>");
    EXPECT_TRUE(objects.LoadXml(Path("empty.xml")));
    EXPECT_EQ(objects.GetCount(), 0);
}

TEST_F(KGS57Registry, ObjectClassesAreServedInCodeOrderByCodeAndByExactAcronym) {
    WriteAll();
    KGS57Config config;
    PlixArray<KGS57Object> all;
    all.Add(KGS57Object());  // replaced, not appended to
    config.GetArrayS57Object(all);
    ASSERT_EQ(all.GetSize(), 4);
    EXPECT_EQ(all[0].code, 17);
    EXPECT_EQ(all[1].code, 42);
    EXPECT_EQ(all[2].code, 75);
    EXPECT_EQ(all[3].code, 302);

    KGS57Object light;
    ASSERT_TRUE(config.GetS57Object(75, light));
    EXPECT_EQ(Utf8(light.acronym), "LIGHTS");
    EXPECT_EQ(Utf8(light.definition), "A luminous signal");
    EXPECT_EQ(Utf8(light.remarks), "none");
    KGS57Object meta;
    ASSERT_TRUE(config.GetS57Object("M_COVR", meta));
    EXPECT_EQ(meta.code, 302);
    EXPECT_EQ(meta.type, KGS57DefineInfo::FeatureMeta);

    KGS57Object untouched;
    untouched.name = "sentinel";
    EXPECT_FALSE(config.GetS57Object(-1, untouched));
    EXPECT_FALSE(config.GetS57Object(0, untouched));
    EXPECT_FALSE(config.GetS57Object(76, untouched));
    EXPECT_FALSE(config.GetS57Object(65536 + 75, untouched));
    EXPECT_FALSE(config.GetS57Object("lights", untouched));
    EXPECT_FALSE(config.GetS57Object("LIGHTS ", untouched));
    EXPECT_EQ(Utf8(untouched.name), "sentinel");
}

TEST_F(KGS57Registry, RepeatedAcronymResolvesToItsLastRecordInCodeOrder) {
    WriteAll();
    Write("objects.xml",
          "<ObjectClasses><ObjectClass Code='9' Acronym='TWICE'><Name>late</Name></ObjectClass>"
          "<ObjectClass Code='3' Acronym='TWICE'><Name>early</Name></ObjectClass>"
          "</ObjectClasses>");
    KGS57Config config;
    KGS57Object o;
    ASSERT_TRUE(config.GetS57Object("TWICE", o));
    EXPECT_EQ(o.code, 9);
    EXPECT_EQ(Utf8(o.name), "late");
}

TEST_F(KGS57Registry, FailedObjectLoadLogsTwiceEmptiesTheDictionaryAndKeepsTheOldIndex) {
    WriteAll();
    Write("specs-infos.xml",
          "<EncInfos><StructObjectClasses><ObjectClass Acronym='LIGHTS' Code='75'/>"
          "</StructObjectClasses></EncInfos>");
    KGS57Config config;
    ASSERT_TRUE(config.IsS57SpecsStructObject("LIGHTS"));

    vltest::LogCapture log;
    EXPECT_FALSE(config.LoadS57ObjectsFile(Path("missing.xml")));
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 84}, {"EAg001", 773}}));
    KGS57Object o;
    EXPECT_FALSE(config.GetS57Object(75, o));
    EXPECT_FALSE(config.GetS57Object("LIGHTS", o));
    PlixArray<KGS57Object> all;
    config.GetArrayS57Object(all);
    EXPECT_EQ(all.GetSize(), 0);
    // Deliberately kept: the acronym index survives a failed load, and the structure test
    // goes through it.
    EXPECT_TRUE(config.IsS57SpecsStructObject("LIGHTS"));

    log.Clear();
    Write("wrong-root.xml", "<Objects/>");
    EXPECT_FALSE(config.LoadS57ObjectsFile(Path("wrong-root.xml")));
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 773}}));

    EXPECT_TRUE(config.LoadS57ObjectsFile(Path("objects.xml")));
    EXPECT_TRUE(config.GetS57Object("LIGHTS", o));
}

// ---------------------------------------------------------------- attributes

TEST_F(KGS57DictionaryFiles, AttributeFieldsSubsetAndExpectedValuesAreRead) {
    Write("a.xml",
          "<Attributes>"
          "<Attribute Code='75' Acronym='COLOUR' Type=' l\t'>"
          "<ExpectedInputs>"
          "<ExpectedValue ID='1' Meaning='white'><Definition>def1</Definition>"
          "<References>ref1</References></ExpectedValue>"
          "<Note/>"
          "<ExpectedValue ID='2' Meaning='black'><References>ref2</References>"
          "<Definition>def2</Definition></ExpectedValue>"
          "<ExpectedValue Meaning='no id'><References>ref3</References></ExpectedValue>"
          "<ExpectedValue ID='65538'/>"
          "</ExpectedInputs>"
          "<Format>f</Format><Condition>c</Condition><Remarks>rm</Remarks>"
          "<Indication>i</Indication><References>r</References><Definition>d</Definition>"
          "<LocalName>ln</LocalName><Subset value='  sub set \n'/><Name>Colour</Name>"
          "</Attribute>"
          "<Attribute Code='1' Acronym='AGENCY' Type='Q'><Subset value='   '/></Attribute>"
          "<Attribute Acronym='NOCODE'/>"
          "</Attributes>");
    KGC::KGS57Attributes attributes;
    ASSERT_TRUE(attributes.LoadXml(Path("a.xml")));
    ASSERT_EQ(attributes.GetCount(), 3);
    const KGS57Attribute& c = attributes.GetRecords()[0];
    EXPECT_EQ(Utf8(c.acronym), "COLOUR");
    EXPECT_EQ(c.code, 75);
    EXPECT_EQ(c.type, KGS57DefineInfo::AttrList);
    EXPECT_EQ(Utf8(c.name), "Colour");
    EXPECT_EQ(Utf8(c.localName), "ln");
    EXPECT_EQ(Utf8(c.definition), "d");
    EXPECT_EQ(Utf8(c.references), "r");
    EXPECT_EQ(Utf8(c.indication), "i");
    EXPECT_EQ(Utf8(c.condition), "c");
    EXPECT_EQ(Utf8(c.remarks), "rm");
    EXPECT_EQ(Utf8(c.format), "f");
    EXPECT_EQ(Utf8(c.subset), "sub set");
    ASSERT_EQ(c.expectedValues.GetSize(), 4);
    EXPECT_EQ(c.expectedValues[0].id, 1);
    EXPECT_EQ(Utf8(c.expectedValues[0].meaning), "white");
    EXPECT_EQ(Utf8(c.expectedValues[0].definition), "def1");
    EXPECT_EQ(Utf8(c.expectedValues[0].references), "ref1");
    // "References" counts only after "Definition".
    EXPECT_EQ(Utf8(c.expectedValues[1].definition), "def2");
    EXPECT_TRUE(c.expectedValues[1].references.IsEmpty());
    EXPECT_EQ(c.expectedValues[2].id, 0);
    EXPECT_TRUE(c.expectedValues[2].definition.IsEmpty());
    EXPECT_EQ(Utf8(c.expectedValues[2].references), "ref3");
    EXPECT_EQ(c.expectedValues[3].id, 2);

    const KGS57Attribute& a = attributes.GetRecords()[1];
    EXPECT_EQ(a.type, KGS57DefineInfo::AttrUnknown);
    EXPECT_TRUE(a.subset.IsEmpty());
    EXPECT_EQ(a.expectedValues.GetSize(), 0);
    EXPECT_EQ(attributes.GetRecords()[2].code, 0);
}

TEST_F(KGS57Registry, AttributesAreServedInCodeOrderWithTheirExpectedValues) {
    WriteAll();
    KGS57Config config;
    PlixArray<KGS57Attribute> all;
    config.GetArrayS57Attribute(all);
    ASSERT_EQ(all.GetSize(), 3);
    EXPECT_EQ(all[0].code, 17);
    EXPECT_EQ(all[1].code, 75);
    EXPECT_EQ(all[2].code, 116);

    KGS57Attribute colour;
    ASSERT_TRUE(config.GetS57Attributes("COLOUR", colour));
    EXPECT_EQ(colour.code, 75);
    EXPECT_EQ(colour.type, KGS57DefineInfo::AttrList);
    ASSERT_EQ(colour.expectedValues.GetSize(), 2);
    EXPECT_EQ(Utf8(colour.expectedValues[1].meaning), "red");
    KGS57Attribute byCode;
    ASSERT_TRUE(config.GetS57Attributes(116, byCode));
    EXPECT_EQ(Utf8(byCode.acronym), "OBJNAM");

    KGS57Attribute untouched;
    untouched.name = "sentinel";
    EXPECT_FALSE(config.GetS57Attributes("colour", untouched));
    EXPECT_FALSE(config.GetS57Attributes(-75, untouched));
    EXPECT_FALSE(config.GetS57Attributes(76, untouched));
    EXPECT_EQ(Utf8(untouched.name), "sentinel");

    // The type-only query answers exactly when the full one does, with the same type.
    for (const char* acronym : {"COLOUR", "OBJNAM", "colour", "NOSUCH", ""}) {
        KGS57Attribute full;
        KGS57DefineInfo::AttributeType type = KGS57DefineInfo::AttrUnknown;
        bool found = config.GetS57Attributes(acronym, full);
        EXPECT_EQ(config.GetS57AttributeType(acronym, type), found) << acronym;
        if (found) {
            EXPECT_EQ(type, full.type) << acronym;
        }
    }
}

TEST_F(KGS57Registry, AttributeFileWithAnotherRootLoadsEmptyWhileAnUnreadableOneFails) {
    WriteAll();
    Write("specs-infos.xml", kGroups);
    KGS57Config config;
    // Slave acronyms resolve through the attribute index: COLOUR (75) stands for slave 75.
    ASSERT_TRUE(config.IsS57SpecsSlaveObject("COLOUR"));
    vltest::LogCapture log;
    // Deliberately kept: unlike object classes, another root is an empty, successful load.
    Write("other-root.xml",
          "<ObjectClasses><Attribute Code='75' Acronym='COLOUR'/>"
          "</ObjectClasses>");
    EXPECT_TRUE(config.LoadS57AttributesFile(Path("other-root.xml")));
    EXPECT_TRUE(DictionaryRecords(log).empty());
    KGS57Attribute a;
    EXPECT_FALSE(config.GetS57Attributes(75, a));
    EXPECT_FALSE(config.GetS57Attributes("COLOUR", a));
    // A successful load rebuilds (here: empties) the index.
    EXPECT_FALSE(config.IsS57SpecsSlaveObject("COLOUR"));

    ASSERT_TRUE(config.LoadS57AttributesFile(Path("attributes.xml")));
    EXPECT_FALSE(config.LoadS57AttributesFile(Path("missing.xml")));
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 171}, {"EAg001", 790}}));
    EXPECT_FALSE(config.GetS57Attributes(75, a));
    EXPECT_FALSE(config.GetS57Attributes("COLOUR", a));
    // Deliberately kept: a failed load leaves the old index in place.
    EXPECT_TRUE(config.IsS57SpecsSlaveObject("COLOUR"));
}

// ---------------------------------------------------------------- agencies

TEST_F(KGS57Registry, AgenciesStayInFileOrderAndTheFirstMatchWins) {
    WriteAll();
    Write("agencies.xml",
          "<Agencies>"
          "<Agency Token='AA' Code='7'/>"
          "<Agency Token='GB' Code='140'><AgencyName>United Kingdom</AgencyName></Agency>"
          "<Agency Token='G2' Code='140'/>"
          "<Agency Token='ZZ' Code=''><AgencyName>No code</AgencyName></Agency>"
          "<Other Token='XX' Code='1'/>"
          "</Agencies>");
    KGS57Config config;
    PlixArray<KGS57Agency> all;
    config.GetArrayAgency(all);
    ASSERT_EQ(all.GetSize(), 4);
    EXPECT_EQ(Utf8(all[0].token), "AA");
    EXPECT_TRUE(all[0].agencyName.IsEmpty());
    // Deliberately kept: an agency without a name carries the name of the one before it.
    EXPECT_EQ(Utf8(all[2].agencyName), "United Kingdom");

    KGS57Agency a;
    ASSERT_TRUE(config.GetS57Agency(140, a));
    EXPECT_EQ(Utf8(a.token), "GB");
    ASSERT_TRUE(config.GetS57Agency("G2", a));
    EXPECT_EQ(a.code, 140);
    ASSERT_TRUE(config.GetS57Agency(0, a));
    EXPECT_EQ(Utf8(a.token), "ZZ");

    KGS57Agency untouched;
    untouched.code = -5;
    EXPECT_FALSE(config.GetS57Agency("gb", untouched));
    EXPECT_FALSE(config.GetS57Agency("XX", untouched));
    EXPECT_FALSE(config.GetS57Agency(1, untouched));
    EXPECT_EQ(untouched.code, -5);
}

TEST_F(KGS57Registry, AgencyFileFailuresLogWhileAnotherRootLoadsEmpty) {
    WriteAll();
    KGS57Config config;
    vltest::LogCapture log;
    Write("other.xml", "<Agency Token='GB' Code='140'/>");
    EXPECT_TRUE(config.LoadAgenciesFile(Path("other.xml")));
    KGS57Agency a;
    EXPECT_FALSE(config.GetS57Agency(140, a));
    EXPECT_TRUE(DictionaryRecords(log).empty());

    ASSERT_TRUE(config.LoadAgenciesFile(Path("agencies.xml")));
    EXPECT_TRUE(config.GetS57Agency("AU", a));
    vltest::WriteFile(Path("binary.xml"), std::string("\x00\xff\xfe<", 4));
    EXPECT_FALSE(config.LoadAgenciesFile(Path("binary.xml")));
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 26}, {"EAg001", 758}}));
    EXPECT_FALSE(config.GetS57Agency("AU", a));
}

// ---------------------------------------------------------------- product specification info

TEST_F(KGS57DictionaryFiles, SpecsSectionsAreReadInAnyOrderUnitsAccumulateAndSomeListsAreSorted) {
    Write("i.xml", kGroups);
    KGC::KGS57SpecsInfos infos;
    ASSERT_TRUE(infos.LoadXml(Path("i.xml")));
    // Deliberately kept: each unit type also holds the units of the types before it.
    ASSERT_EQ(infos.GetUnits().GetSize(), 2);
    EXPECT_EQ(infos.GetUnits()[0].type, KGS57DefineInfo::UnitDepth);
    EXPECT_EQ(infos.GetUnits()[0].units.GetSize(), 2);
    EXPECT_EQ(infos.GetUnits()[1].type, KGS57DefineInfo::UnitHeight);
    ASSERT_EQ(infos.GetUnits()[1].units.GetSize(), 3);
    EXPECT_EQ(infos.GetUnits()[1].units[0].ID, 1);
    EXPECT_EQ(infos.GetUnits()[1].units[2].ID, 3);
    EXPECT_EQ(Utf8(infos.GetUnits()[1].units[2].meaning), "feet");
    ASSERT_EQ(infos.GetDatums().GetSize(), 2);
    EXPECT_EQ(infos.GetDatums()[0].type, KGS57DefineInfo::DatumHorizontal);
    EXPECT_EQ(infos.GetDatums()[1].type, KGS57DefineInfo::DatumUnknown);
    EXPECT_EQ(infos.GetDatums()[1].datums.GetSize(), 2);

    EXPECT_EQ(Codes(infos.GetSlaveObjects()), (std::vector<int>{12, 75, 300}));
    EXPECT_EQ(Codes(infos.GetEquipmentObjects()), (std::vector<int>{75, 144}));
    EXPECT_EQ(Codes(infos.GetStructObjects()), (std::vector<int>{1, 17}));  // 65537 keeps 1
    // Deliberately kept: the master list stays in file order.
    EXPECT_EQ(Codes(infos.GetMasterObjects()), (std::vector<int>{300, 12}));
    EXPECT_EQ(Codes(infos.GetGroupOneObjects()), (std::vector<int>{71, 42}));
    ASSERT_EQ(infos.GetNationalAttrs().GetSize(), 2);
    EXPECT_EQ(Utf8(infos.GetNationalAttrs()[1].acronym), "NINFOM");

    Write("bare.xml", "<Specs><Units><UnitType value='Depth'/></Units></Specs>");
    EXPECT_TRUE(infos.LoadXml(Path("bare.xml")));
    EXPECT_EQ(infos.GetUnits().GetSize(), 0);
    EXPECT_EQ(infos.GetSlaveObjects().GetSize(), 0);
}

TEST_F(KGS57Registry, SpecsMembershipTestsByCodeAndAcronym) {
    WriteAll();
    Write("specs-infos.xml", kGroups);
    KGS57Config config;
    EXPECT_TRUE(config.IsS57SpecsNationalAttr(300));
    EXPECT_TRUE(config.IsS57SpecsNationalAttr("NOBJNM"));
    EXPECT_FALSE(config.IsS57SpecsNationalAttr("nobjnm"));
    EXPECT_FALSE(config.IsS57SpecsNationalAttr(402));
    EXPECT_TRUE(config.IsS57SpecsSpatialMetaAttr(402));
    EXPECT_TRUE(config.IsS57SpecsSpatialMetaAttr("QUAPOS"));
    EXPECT_FALSE(config.IsS57SpecsSpatialMetaAttr("NOBJNM"));
    EXPECT_TRUE(config.IsS57SpecsGroupOneObject(42));
    EXPECT_TRUE(config.IsS57SpecsGroupOneObject("LNDARE"));
    EXPECT_FALSE(config.IsS57SpecsGroupOneObject(75));

    EXPECT_TRUE(config.IsS57SpecsSlaveObject(75));
    EXPECT_TRUE(config.IsS57SpecsSlaveObject(12));
    EXPECT_TRUE(config.IsS57SpecsSlaveObject(300));
    EXPECT_FALSE(config.IsS57SpecsSlaveObject(13));
    EXPECT_TRUE(config.IsS57SpecsEquipmentObject(144));
    EXPECT_TRUE(config.IsS57SpecsStructObject(1));
    EXPECT_FALSE(config.IsS57SpecsStructObject(65537));

    // Deliberately kept: the unsorted master list is bisected, so 12 (behind 300) is missed.
    EXPECT_TRUE(config.IsS57SpecsMasterObject(300));
    EXPECT_FALSE(config.IsS57SpecsMasterObject(12));

    // Structure and equipment acronyms resolve through the object class index.
    EXPECT_TRUE(config.IsS57SpecsEquipmentObject("LIGHTS"));
    EXPECT_TRUE(config.IsS57SpecsStructObject("BOYLAT"));
    EXPECT_FALSE(config.IsS57SpecsStructObject("boylat"));
    // Deliberately kept: master and slave acronyms resolve through the attribute index, so
    // the object class LIGHTS (75) is no slave by name, while the attribute COLOUR (75) is.
    EXPECT_FALSE(config.IsS57SpecsSlaveObject("LIGHTS"));
    EXPECT_TRUE(config.IsS57SpecsSlaveObject("COLOUR"));
    // BOYLAT is an attribute acronym of code 17 in this fixture; 17 is no master.
    EXPECT_FALSE(config.IsS57SpecsMasterObject("BOYLAT"));
    EXPECT_FALSE(config.IsS57SpecsMasterObject("NOSUCH"));
}

TEST_F(KGS57Registry, ReplacingAndAppendingListGetters) {
    WriteAll();
    Write("specs-infos.xml", kGroups);
    KGS57Config config;

    PlixArray<KGS57SpecsObjectDefine> list;
    config.GetArrayS57SpecsGroupOneObj(list);
    config.GetArrayS57SpecsGroupOneObj(list);
    EXPECT_EQ(Codes(list), (std::vector<int>{71, 42}));

    // Deliberately kept: the master, slave, structure and equipment getters append.
    list.RemoveAll();
    config.GetArrS57SpecsMasterObject(list);
    config.GetArrS57SpecsMasterObject(list);
    EXPECT_EQ(Codes(list), (std::vector<int>{300, 12, 300, 12}));
    config.GetArrS57SpecsSlaveObject(list);
    config.GetArrS57SpecsStructObject(list);
    config.GetArrS57SpecsEquipmentObject(list);
    EXPECT_EQ(Codes(list), (std::vector<int>{300, 12, 300, 12, 12, 75, 300, 1, 17, 75, 144}));

    PlixArray<KGC::KGS57SpecsAttributeDefine> attrs;
    config.GetArrayS57SpecsNationalAttr(attrs);
    config.GetArrayS57SpecsNationalAttr(attrs);
    EXPECT_EQ(attrs.GetSize(), 2);
    config.GetArrS57SpecsSpatialMetaAttrs(attrs);
    ASSERT_EQ(attrs.GetSize(), 1);
    EXPECT_EQ(attrs[0].code, 402);

    PlixArray<KGC::KGS57SpecsUnits> units;
    config.GetArrayS57SpecsUnits(units);
    config.GetArrayS57SpecsUnits(units);
    EXPECT_EQ(units.GetSize(), 2);
    PlixArray<KGC::KGS57SpecsDatums> datums;
    config.GetArrayS57SpecsDatums(datums);
    EXPECT_EQ(datums.GetSize(), 2);
}

TEST_F(KGS57Registry, SpecsInfoLoadFailureLogsBothIdentifiersAndLeavesListsEmpty) {
    WriteAll();
    Write("specs-infos.xml", kGroups);
    KGS57Config config;
    ASSERT_TRUE(config.IsS57SpecsSlaveObject(75));
    vltest::LogCapture log;
    EXPECT_FALSE(config.LoadS57SpecsInfosFile(Path("missing.xml")));
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg002", 262}, {"EAg001", 818}}));
    EXPECT_FALSE(config.IsS57SpecsSlaveObject(75));
    EXPECT_FALSE(config.IsS57SpecsNationalAttr(300));
}

// ---------------------------------------------------------------- product specification objects

TEST_F(KGS57Registry, SpecsObjectsAreFoundByCodeOrExactAcronymFirstInFileOrder) {
    WriteAll();
    Write("specs-objects.xml",
          "<ObjectClasses>"
          "<ObjectClass Code='75' Acronym='LIGHTS'>"
          "<Attributes><Attribute Code='75' Required='1'/><Attribute Code='37'/></Attributes>"
          "<LocalName>Feu</LocalName><Name>Light</Name><Primitives value='Point;'/>"
          "</ObjectClass>"
          "<ObjectClass Code='75' Acronym='SECOND'><Name>second</Name></ObjectClass>"
          "<ObjectClass Code='65578' Acronym='WIDE'/>"
          "</ObjectClasses>");
    KGS57Config config;
    KGS57SpecsObject o;
    ASSERT_TRUE(config.GetS57SpecsObject(75, o));
    EXPECT_EQ(Utf8(o.acronym), "LIGHTS");
    EXPECT_EQ(Utf8(o.name), "Light");
    EXPECT_EQ(Utf8(o.localName), "Feu");
    EXPECT_EQ(Utf8(o.primitives), "Point;");
    ASSERT_EQ(o.attributes.GetSize(), 2);
    EXPECT_EQ(o.attributes[0].code, 75);
    EXPECT_EQ(o.attributes[0].required, 1);
    EXPECT_EQ(o.attributes[1].code, 37);
    EXPECT_EQ(o.attributes[1].required, 0);

    ASSERT_TRUE(config.GetS57SpecsObject("SECOND", o));
    EXPECT_EQ(Utf8(o.name), "second");
    EXPECT_TRUE(o.attributes.IsEmpty());
    ASSERT_TRUE(config.GetS57SpecsObject(42, o));  // 65578 keeps its low 16 bits
    EXPECT_EQ(Utf8(o.acronym), "WIDE");

    KGS57SpecsObject untouched;
    untouched.name = "sentinel";
    EXPECT_FALSE(config.GetS57SpecsObject("lights", untouched));
    EXPECT_FALSE(config.GetS57SpecsObject(76, untouched));
    EXPECT_EQ(Utf8(untouched.name), "sentinel");

    PlixArray<KGS57SpecsObject> all;
    config.GetArrayS57SpecsObject(all);
    config.GetArrayS57SpecsObject(all);
    EXPECT_EQ(all.GetSize(), 3);
}

TEST_F(KGS57Registry, SpecsObjectFileFailures) {
    WriteAll();
    KGS57Config config;
    KGS57SpecsObject o;
    ASSERT_TRUE(config.GetS57SpecsObject("LIGHTS", o));
    vltest::LogCapture log;
    Write("list.xml",
          "<ObjectClassList><ObjectClass Code='75' Acronym='LIGHTS'/>"
          "</ObjectClassList>");
    EXPECT_FALSE(config.LoadS57SpecsObjectsFile(Path("list.xml")));
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 804}}));
    EXPECT_FALSE(config.GetS57SpecsObject("LIGHTS", o));

    log.Clear();
    EXPECT_FALSE(config.LoadS57SpecsObjectsFile(Path("missing.xml")));
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg002", 531}, {"EAg001", 804}}));
}

// ---------------------------------------------------------------- S-58 check messages

TEST_F(KGS57DictionaryFiles, S58ChecksSkipEmptyIdsAndLaterDuplicatesReplace) {
    Write("a.xml",
          "<S58>"
          "<Test id='1500' level='Warning'><Description>old</Description>"
          "<Reference>old ref</Reference></Test>"
          "<Test id='' level='Error'><Description>no id</Description></Test>"
          "<Test level='Error'><Description>no id either</Description></Test>"
          "<Test id='abc' level='Odd'><Description>letters</Description></Test>"
          "<Test id='1500' level='Error'><Reference>new ref</Reference>"
          "<Description>new</Description></Test>"
          "<Test id='7'><Description>no reference</Description></Test>"
          "</S58>");
    KGC::KGS58Infos infos;
    ASSERT_TRUE(infos.LoadXML(Path("a.xml")));
    EXPECT_EQ(infos.GetCount(), 3);
    KGS58Info i;
    ASSERT_TRUE(infos.GetS58Info(1500, i));
    EXPECT_EQ(i.id, 1500);
    EXPECT_EQ(Utf8(i.level), "Error");
    EXPECT_EQ(Utf8(i.description), "new");
    EXPECT_EQ(Utf8(i.reference), "new ref");
    ASSERT_TRUE(infos.GetS58Info(0, i));  // "abc" reads as 0
    EXPECT_EQ(Utf8(i.description), "letters");
    ASSERT_TRUE(infos.GetS58Info(7, i));
    EXPECT_TRUE(i.reference.IsEmpty());
    EXPECT_TRUE(i.level.IsEmpty());

    // A second file merges in; a file without the root adds nothing and succeeds.
    Write("b.xml", "<S58><Test id='7' level='Info'/><Test id='8'/></S58>");
    ASSERT_TRUE(infos.LoadXML(Path("b.xml")));
    EXPECT_EQ(infos.GetCount(), 4);
    ASSERT_TRUE(infos.GetS58Info(7, i));
    EXPECT_EQ(Utf8(i.level), "Info");
    Write("c.xml", "<Checks><Test id='9'/></Checks>");
    EXPECT_TRUE(infos.LoadXML(Path("c.xml")));
    EXPECT_FALSE(infos.LoadXML(Path("missing.xml")));
    EXPECT_EQ(infos.GetCount(), 4);
    KGS58Info untouched;
    untouched.id = -3;
    EXPECT_FALSE(infos.GetS58Info(9, untouched));
    EXPECT_EQ(untouched.id, -3);
}

TEST_F(KGS57Registry, S58ChecksLoadOnFirstRequestOnlyOnce) {
    WriteAll();
    KGS57Config config;
    // Not loaded at construction: the file written now is the one the first request reads.
    Write("s58.xml", "<S58><Test id='11' level='Critical'/></S58>");
    KGS58Info i;
    ASSERT_TRUE(config.GetS58Info(11, i));
    EXPECT_EQ(Utf8(i.level), "Critical");
    EXPECT_FALSE(config.GetS58Info(508, i));
    // Later changes to the file are not seen: the load is done once.
    Write("s58.xml", kS58);
    EXPECT_FALSE(config.GetS58Info(508, i));
    // LoadDicts rearms the lazy load; the old checks are kept and the new ones merged in.
    config.LoadDicts();
    EXPECT_TRUE(config.GetS58Info(508, i));
    EXPECT_TRUE(config.GetS58Info(11, i));
}

TEST_F(KGS57Registry, MissingS58FileIsTriedAndLoggedOnce) {
    WriteAll();
    WriteSettings({{"S58CheckInfo", "./nothing-here.xml"}});
    KGS57Config config;
    vltest::LogCapture log;
    KGS58Info i;
    EXPECT_FALSE(config.GetS58Info(508, i));
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 831}}));
    // Deliberately kept: a failed lazy load is not retried, even once the file appears.
    Write("nothing-here.xml", kS58);
    EXPECT_FALSE(config.GetS58Info(508, i));
    EXPECT_EQ(DictionaryRecords(log).size(), 1u);
}

// ---------------------------------------------------------------- registry life cycle

TEST(KGS57ConfigInstance, IsOneProcessWideObject) {
    KGS57Config* a = KGS57Config::GetInstance();
    ASSERT_NE(a, nullptr);
    EXPECT_EQ(a, KGS57Config::GetInstance());
}

TEST_F(KGS57Registry, PathsAreAbsoluteAndReadFromTheSettingsFile) {
    WriteAll();
    KGS57Config config;
    EXPECT_EQ(Utf8(config.GetAgencyDictPath()), Path("agencies.xml"));
    EXPECT_EQ(Utf8(config.GetObjectDictPath()), Path("objects.xml"));
    EXPECT_EQ(Utf8(config.GetAttributeDictPath()), Path("attributes.xml"));
    EXPECT_EQ(Utf8(config.GetSpecsObjectDictPath()), Path("specs-objects.xml"));
    EXPECT_EQ(Utf8(config.GetSpecsInfoDictPath()), Path("specs-infos.xml"));
    EXPECT_EQ(Utf8(config.GetS58CheckDictPath()), Path("s58.xml"));

    WriteSettings({{"S57Object", "/elsewhere/o.xml"}});
    config.GetS57ObjectDictFile();
    EXPECT_EQ(Utf8(config.GetObjectDictPath()), "/elsewhere/o.xml");
    // Only the refreshed path changes until initialize().
    EXPECT_EQ(Utf8(config.GetAgencyDictPath()), Path("agencies.xml"));
    config.initialize();
    EXPECT_TRUE(config.GetAgencyDictPath().IsEmpty());
}

TEST_F(KGS57DictionaryFiles, WithoutSettingsEveryDictionaryIsTriedInOrderAndLeftEmpty) {
    vltest::LogCapture log;
    KGS57Config config;
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 26},
                                                           {"EAg001", 758},
                                                           {"EAg001", 84},
                                                           {"EAg001", 773},
                                                           {"EAg001", 171},
                                                           {"EAg001", 790},
                                                           {"EAg002", 531},
                                                           {"EAg001", 804},
                                                           {"EAg002", 262},
                                                           {"EAg001", 818}}));
    // Six path refreshes, one temporary environment (and one complaint) each.
    int settingsComplaints = 0;
    for (const auto& r : log.Records()) {
        if (r.message.ToUtf8() == "chart setting file does not found !") ++settingsComplaints;
    }
    EXPECT_EQ(settingsComplaints, 6);
    EXPECT_TRUE(config.GetObjectDictPath().IsEmpty());
    KGS57Object o;
    EXPECT_FALSE(config.GetS57Object(75, o));
    KGS57Attribute a;
    EXPECT_FALSE(config.GetS57Attributes("COLOUR", a));
    EXPECT_FALSE(config.LoadDicts());
}

TEST_F(KGS57Registry, MissingObjectFileLeavesTheOtherDictionariesServing) {
    WriteAll();
    WriteSettings({{"Agency", "./agencies.xml"},
                   {"S57Object", "./no-objects.xml"},
                   {"S57Attribute", "./attributes.xml"},
                   {"S57ObjectSpecs", "./specs-objects.xml"},
                   {"S57InfoSpecs", "./specs-infos.xml"}});
    vltest::LogCapture log;
    KGS57Config config;
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 84}, {"EAg001", 773}}));
    KGS57Object o;
    for (int code : {0, 17, 42, 75, 302}) EXPECT_FALSE(config.GetS57Object(code, o));
    KGS57Attribute a;
    EXPECT_TRUE(config.GetS57Attributes("COLOUR", a));
    KGS57Agency ag;
    EXPECT_TRUE(config.GetS57Agency(10, ag));
}

TEST_F(KGS57Registry, LoadDictsReportsTheSpecsInfoFileAlone) {
    WriteAll();
    KGS57Config config;
    EXPECT_TRUE(config.LoadDicts());
    vltest::WriteFile(Path("agencies.xml"), "not xml <");
    // Deliberately kept: the other loads only log.
    EXPECT_TRUE(config.LoadDicts());
    KGS57Agency ag;
    EXPECT_FALSE(config.GetS57Agency(10, ag));
    Write("agencies.xml", kAgencies);
    vltest::WriteFile(Path("specs-infos.xml"), "not xml <");
    EXPECT_FALSE(config.LoadDicts());
    EXPECT_TRUE(config.GetS57Agency(10, ag));
}

TEST_F(KGS57Registry, ReloadsFollowTheSettingsFileWithoutARestart) {
    WriteAll();
    KGS57Config config;
    Write("attributes-2.xml",
          "<Attributes><Attribute Code='900' Acronym='NEWATT' Type='I'/>"
          "</Attributes>");
    Write("objects-2.xml",
          "<ObjectClasses><ObjectClass Code='901' Acronym='NEWOBJ'/>"
          "</ObjectClasses>");
    Write("agencies-2.xml", "<Agencies><Agency Token='NW' Code='902'/></Agencies>");
    Write("specs-objects-2.xml",
          "<ObjectClasses><ObjectClass Code='903' Acronym='NEWSPC'/>"
          "</ObjectClasses>");
    Write("specs-infos-2.xml",
          "<EncInfos><NationalAttributes><Attribute Acronym='NEWNAT' "
          "Code='904'/></NationalAttributes></EncInfos>");
    WriteSettings({{"Agency", "./agencies-2.xml"},
                   {"S57Object", "./objects-2.xml"},
                   {"S57Attribute", "./attributes-2.xml"},
                   {"S57ObjectSpecs", "./specs-objects-2.xml"},
                   {"S57InfoSpecs", "./specs-infos-2.xml"}});

    KGS57Attribute a;
    ASSERT_TRUE(config.ReloadS57AttributesFile());
    EXPECT_EQ(Utf8(config.GetAttributeDictPath()), Path("attributes-2.xml"));
    ASSERT_TRUE(config.GetS57Attributes("NEWATT", a));
    EXPECT_EQ(a.type, KGS57DefineInfo::AttrInteger);
    EXPECT_FALSE(config.GetS57Attributes("COLOUR", a));
    // One reload replaces one dictionary only.
    KGS57Object o;
    EXPECT_TRUE(config.GetS57Object("LIGHTS", o));

    ASSERT_TRUE(config.ReloadS57ObjectsFile());
    EXPECT_TRUE(config.GetS57Object("NEWOBJ", o));
    EXPECT_FALSE(config.GetS57Object("LIGHTS", o));
    ASSERT_TRUE(config.ReloadAgenciesFile());
    KGS57Agency ag;
    EXPECT_TRUE(config.GetS57Agency("NW", ag));
    ASSERT_TRUE(config.ReloadS57SpecsObjectsFile());
    KGS57SpecsObject so;
    EXPECT_TRUE(config.GetS57SpecsObject(903, so));
    ASSERT_TRUE(config.ReloadS57SpecsInfosFile());
    EXPECT_TRUE(config.IsS57SpecsNationalAttr("NEWNAT"));
    EXPECT_FALSE(config.IsS57SpecsNationalAttr("NOBJNM"));

    WriteSettings({});
    vltest::LogCapture log;
    EXPECT_FALSE(config.ReloadS57AttributesFile());
    EXPECT_EQ(DictionaryRecords(log), (std::vector<Logged>{{"EAg001", 171}, {"EAg001", 790}}));
}

// ---------------------------------------------------------------- the default environment

TEST(KGS57DefaultEnvironment, RepositoryDictionariesLoadCompletely) {
    vltest::ModulePathOverride home(vltest::DefaultDataDir());
    vltest::LogCapture log;
    KGS57Config config;
    EXPECT_TRUE(DictionaryRecords(log).empty());
    KGS57Object o;
    ASSERT_TRUE(config.GetS57Object("LIGHTS", o));
    EXPECT_EQ(o.code, 75);
    KGS57Attribute a;
    ASSERT_TRUE(config.GetS57Attributes(75, a));
    EXPECT_EQ(Utf8(a.acronym), "COLOUR");
    EXPECT_EQ(a.type, KGS57DefineInfo::AttrList);
    EXPECT_GE(a.expectedValues.GetSize(), 13);
    KGS57Agency ag;
    EXPECT_TRUE(config.GetS57Agency("AU", ag));
    EXPECT_TRUE(config.IsS57SpecsSlaveObject(75));
    EXPECT_TRUE(config.IsS57SpecsEquipmentObject("LIGHTS"));
    KGS57SpecsObject so;
    EXPECT_TRUE(config.GetS57SpecsObject("LIGHTS", so));
    KGS58Info i;
    EXPECT_TRUE(config.GetS58Info(508, i));
    EXPECT_TRUE(DictionaryRecords(log).empty());
}

// ---------------------------------------------------------------- the real catalogue

TEST(KGS57RealData, FullCatalogueIsServed) {
    VLTEST_REQUIRE_REAL_DATA();
    vltest::ModulePathOverride home(vltest::RealDataDir());
    vltest::LogCapture log;
    KGS57Config config;
    EXPECT_TRUE(DictionaryRecords(log).empty());

    PlixArray<KGS57Object> objects;
    config.GetArrayS57Object(objects);
    ASSERT_EQ(objects.GetSize(), 286);
    for (int i = 1; i < objects.GetSize(); ++i)
        EXPECT_LE(objects[i - 1].code, objects[i].code) << "at " << i;
    KGS57Object o;
    ASSERT_TRUE(config.GetS57Object(75, o));
    EXPECT_EQ(Utf8(o.acronym), "LIGHTS");
    ASSERT_TRUE(config.GetS57Object("LIGHTS", o));
    EXPECT_EQ(o.code, 75);
    // A few acronyms occur twice in the catalogue; each resolves to its last class by code.
    std::map<std::string, int> lastCode;
    for (const auto& each : objects) lastCode[Utf8(each.acronym)] = each.code;
    EXPECT_LT(lastCode.size(), 286u);
    for (const auto& each : objects) {
        KGS57Object found;
        ASSERT_TRUE(config.GetS57Object(each.acronym, found)) << Utf8(each.acronym);
        EXPECT_EQ(found.code, lastCode[Utf8(each.acronym)]) << Utf8(each.acronym);
    }

    PlixArray<KGS57Attribute> attributes;
    config.GetArrayS57Attribute(attributes);
    EXPECT_EQ(attributes.GetSize(), 483);
    KGS57Attribute colour;
    ASSERT_TRUE(config.GetS57Attributes(75, colour));
    EXPECT_EQ(Utf8(colour.acronym), "COLOUR");
    EXPECT_EQ(colour.type, KGS57DefineInfo::AttrList);
    EXPECT_EQ(colour.expectedValues.GetSize(), 13);
    ASSERT_TRUE(config.GetS57Attributes("COLOUR", colour));
    EXPECT_EQ(colour.code, 75);

    PlixArray<KGS57Agency> agencies;
    config.GetArrayAgency(agencies);
    ASSERT_GT(agencies.GetSize(), 0);
    const KGS57Agency& first = agencies[0];
    KGS57Agency ag;
    ASSERT_TRUE(config.GetS57Agency(first.token, ag));
    EXPECT_EQ(ag.code, first.code);
    ASSERT_TRUE(config.GetS57Agency(first.code, ag));
    EXPECT_EQ(Utf8(ag.token), Utf8(first.token));
    EXPECT_FALSE(ag.agencyName.IsEmpty());

    EXPECT_TRUE(config.IsS57SpecsGroupOneObject("DEPARE"));
    EXPECT_TRUE(config.IsS57SpecsGroupOneObject(42));
    EXPECT_TRUE(config.IsS57SpecsNationalAttr("NOBJNM"));
    EXPECT_TRUE(config.IsS57SpecsSpatialMetaAttr(402));
    PlixArray<KGC::KGS57SpecsUnits> units;
    config.GetArrayS57SpecsUnits(units);
    EXPECT_FALSE(units.IsEmpty());
    PlixArray<KGS57SpecsObjectDefine> slaves;
    config.GetArrS57SpecsSlaveObject(slaves);
    ASSERT_FALSE(slaves.IsEmpty());
    for (const auto& s : slaves) EXPECT_TRUE(config.IsS57SpecsSlaveObject(s.code));
    PlixArray<KGS57SpecsObjectDefine> masters;
    config.GetArrS57SpecsMasterObject(masters);
    for (const auto& m : masters) EXPECT_TRUE(config.IsS57SpecsMasterObject(m.code));

    KGS57SpecsObject specs;
    ASSERT_TRUE(config.GetS57SpecsObject("LIGHTS", specs));
    EXPECT_EQ(specs.code, 75);
    EXPECT_FALSE(specs.attributes.IsEmpty());

    KGS58Info check;
    ASSERT_TRUE(config.GetS58Info(508, check));
    EXPECT_FALSE(check.description.IsEmpty());
    EXPECT_FALSE(config.GetS58Info(999999, check));
    EXPECT_TRUE(DictionaryRecords(log).empty());
}
