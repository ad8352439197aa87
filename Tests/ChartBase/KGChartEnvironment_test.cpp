// The chart environment: reading the settings file, path rules, and edits written to disk.
#include "ChartBase/KGChartEnvironment.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <pugixml.hpp>
#include <string>
#include <vector>

#include "Base/PlixArray.h"
#include "ChartBase/KGChartColorTable.h"
#include "TestSupport.h"

using KGC::KGChartColorMode;
using KGC::KGChartDisplayStyle;
using KGC::KGChartEnvironment;
using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace {

const KGC::KGS52ColorMode kDayBright = KGChartColorMode::DayBright;
const KGC::KGS52ColorMode kDusk = KGChartColorMode::Dusk;
const KGC::KGS52ColorMode kNight = KGChartColorMode::Night;
const KGC::KGS52ColorMode kModeSeven = static_cast<KGC::KGS52ColorMode>(7);
const KGC::KGChartDisplayStyleType kNoStyle = KGChartDisplayStyle::NoStyle;
const KGC::KGChartDisplayStyleType kEnc = KGChartDisplayStyle::ENC;
const KGC::KGChartDisplayStyleType kPaperChart = KGChartDisplayStyle::PaperChart;

std::string U8(const PlixUnicodeString& s) {
    return s.ToUtf8();
}

std::vector<std::string> Names(const PlixArray<PlixUnicodeString>& names) {
    std::vector<std::string> out;
    for (int i = 0; i < names.GetSize(); ++i) out.push_back(U8(names.GetAt(i)));
    return out;
}

const std::string kDisplay = "/VeltrinChart/ElectronicChart/Display/";
const std::string kDictionary = "/VeltrinChart/ElectronicChart/Dictionary/";

std::string StyleAt(const std::string& name) {
    return kDisplay + "Style[@value='" + name + "']";
}

// Elements, attributes (in order) and text of an element and everything in it, on one line:
// Name(attr=value,...)'text'{Child Child}. Whitespace between elements does not show.
std::string Outline(const pugi::xml_node& element) {
    std::string out = element.name();
    std::string attributes;
    for (pugi::xml_attribute a : element.attributes()) {
        attributes += (attributes.empty() ? "" : ",") + std::string(a.name()) + "=" + a.value();
    }
    if (!attributes.empty()) out += "(" + attributes + ")";
    std::string children;
    for (pugi::xml_node c : element.children()) {
        if (c.type() == pugi::node_pcdata || c.type() == pugi::node_cdata) {
            out += "'" + std::string(c.value()) + "'";
        } else if (c.type() == pugi::node_element) {
            children += (children.empty() ? "" : " ") + Outline(c);
        }
    }
    if (!children.empty()) out += "{" + children + "}";
    return out;
}

// A settings file read with pugixml on its own, to see what the environment wrote and to
// build what it should have written.
class XmlFile {
public:
    explicit XmlFile(const std::string& path) {
        pugi::xml_parse_result result = m_doc.load_file(path.c_str());
        EXPECT_TRUE(result) << path << ": " << result.description();
    }
    pugi::xml_node Node(const std::string& xpath) const {
        pugi::xml_node node = m_doc.select_node(xpath.c_str()).node();
        EXPECT_TRUE(node) << "no element at " << xpath;
        return node;
    }
    std::string Text(const std::string& xpath) const { return Node(xpath).text().get(); }
    void SetText(const std::string& xpath, const std::string& text) {
        Node(xpath).text().set(text.c_str());
    }
    void Remove(const std::string& xpath) {
        pugi::xml_node node = Node(xpath);
        node.parent().remove_child(node);
    }
    std::string Outline() const { return ::Outline(m_doc.document_element()); }

private:
    pugi::xml_document m_doc;
};

class ChartEnvironmentTest : public ::testing::Test {
protected:
    std::string Settings() const { return m_dir.File("ChartConfig.xml"); }
    std::string Module() const { return m_dir.Path(); }
    static std::string FixturePath() { return vltest::TestDataDir() + "env/ChartConfig.xml"; }
    void UseSettings(const std::string& text) { vltest::WriteFile(Settings(), text); }
    void UseFixture() { UseSettings(vltest::ReadFile(FixturePath())); }
    std::string OnDisk() const { return vltest::ReadFile(Settings()); }
    // What the settings file holds now, in outline.
    std::string DiskOutline() const { return XmlFile(Settings()).Outline(); }
    // Replaces the settings file behind the environment's back, so that any later save shows.
    std::string ReplaceFileBehindTheEnvironment() {
        const std::string marker = "<VeltrinChart><Untouched/></VeltrinChart>\n";
        UseSettings(marker);
        return marker;
    }

    vltest::TempDir m_dir;
    vltest::ModulePathOverride m_module{m_dir.Path()};
};

TEST_F(ChartEnvironmentTest, MissingSettingsFileIsLoggedAndLeavesEveryQueryEmptyAndEveryEditFalse) {
    vltest::LogCapture log;
    KGChartEnvironment env;
    EXPECT_EQ(U8(env.GetSettingsPath()), Settings());
    ASSERT_EQ(log.Records().size(), 1u);
    const KGC::KGLogRecord& record = log.Records()[0];
    EXPECT_EQ(record.level, 400);
    EXPECT_TRUE(record.hasCode);
    EXPECT_EQ(record.code, -100);
    EXPECT_EQ(U8(record.message), "chart setting file does not found !");
    EXPECT_EQ(record.source, "../../../Src/ChartBase/KGChartEnvironment");
    EXPECT_EQ(record.line, 29);

    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 1)), "");
    EXPECT_EQ(U8(env.GetPointLookupTableAbsolutePath(u"Base", 0)), "");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Base")), "");
    EXPECT_EQ(U8(env.GetLineLookupTableAbsolutePath(u"Base")), "");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"Base", 1)), "");
    EXPECT_EQ(U8(env.GetAreaLookupTableAbsolutePath(u"Base", 0)), "");
    EXPECT_EQ(U8(env.GetColorTable(kDayBright, u"Base")), "");
    EXPECT_EQ(U8(env.GetColorTableAbsolutePath(kNight, u"Base")), "");
    EXPECT_EQ(U8(env.GetDictFile(u"S57Object")), "");
    EXPECT_EQ(U8(env.GetS57ObjectDictFile()), "");
    // Not the module directory: an empty stored path stays empty.
    EXPECT_EQ(U8(env.GetS57ObjectDictFileAbsolutePath()), "");
    EXPECT_EQ(U8(env.GetS58CheckEnumeListAttributesFileAbsolutePath()), "");
    EXPECT_EQ(env.GetStyleType(u"Base"), kNoStyle);
    PlixArray<PlixUnicodeString> names;
    names.Add(u"kept");
    EXPECT_EQ(env.GetStyleNames(names), 0);
    EXPECT_EQ(Names(names), std::vector<std::string>{"kept"});
    KGC::KGChartDisplayStyleType type = kEnc;
    EXPECT_FALSE(env.ToDisplayNode());
    EXPECT_FALSE(env.ToDictionaryNode());
    EXPECT_FALSE(env.ToLookupTableNode(u"Base", type));
    // Queries never log.
    EXPECT_EQ(log.Records().size(), 1u);

    EXPECT_FALSE(env.SetPointLookupTableFile(u"./p.dic", u"Base", 1));
    EXPECT_FALSE(env.SetLineLookupTableFile(u"./l.dic", u"Base"));
    EXPECT_FALSE(env.SetAreaLookupTableFile(u"./a.dic", u"Base", 0));
    EXPECT_FALSE(env.SetColorTable(u"./c.xml", u"Base", kDayBright));
    EXPECT_FALSE(env.ModifyDictFile(u"S57Object", u"./o.xml"));
    EXPECT_FALSE(env.ModifyS57ObjectDictFile(u"./o.xml"));
    EXPECT_FALSE(env.ModifyS57AttributeDictFile(u"./a.xml"));
    EXPECT_FALSE(env.ModifyAgencyDictFile(u"./g.xml"));
    EXPECT_FALSE(env.ModifyS57SpecsObjectDictFile(u"./s.xml"));
    EXPECT_FALSE(env.ModifyS57SpecsInfoDictFile(u"./i.xml"));
    EXPECT_FALSE(env.AddNewStyle(u"New", kEnc));
    EXPECT_FALSE(env.RemoveStyle(u"Base"));
    EXPECT_FALSE(vltest::FileExists(Settings())) << "an edit created the settings file";

    // Each load that misses the file logs again; one that finds it brings the queries back.
    log.Clear();
    EXPECT_FALSE(env.LoadXML());
    EXPECT_EQ(log.Records().size(), 1u);
    UseFixture();
    EXPECT_TRUE(env.LoadXML());
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Base")), "./lookup/line.dic");
    EXPECT_EQ(U8(env.GetS57ObjectDictFileAbsolutePath()), Module() + "dict/objects.xml");

    // A file that goes away later leaves the document read before.
    std::filesystem::remove(Settings());
    log.Clear();
    EXPECT_FALSE(env.LoadXML());
    EXPECT_EQ(log.Records().size(), 1u);
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Base")), "./lookup/line.dic");
}

TEST_F(ChartEnvironmentTest, MalformedSettingsFileLoadsNothingUntilItIsRepaired) {
    std::string fixture = vltest::ReadFile(FixturePath());
    UseSettings(fixture.substr(0, fixture.find("<Style value=\"Paper\"")));
    KGChartEnvironment env;
    EXPECT_FALSE(env.LoadXML());
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 1)), "");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Base")), "");
    EXPECT_EQ(U8(env.GetColorTable(kNight, u"Base")), "");
    EXPECT_EQ(U8(env.GetS57ObjectDictFile()), "");
    EXPECT_EQ(U8(env.GetS57ObjectDictFileAbsolutePath()), "");
    EXPECT_EQ(env.GetStyleType(u"Base"), kNoStyle);
    PlixArray<PlixUnicodeString> names;
    EXPECT_EQ(env.GetStyleNames(names), 0);
    EXPECT_TRUE(names.IsEmpty());

    // No edit writes the empty document over the broken file: it stays for the user to repair.
    std::string broken = OnDisk();
    EXPECT_FALSE(env.ModifyS57ObjectDictFile(u"/x/objects.xml"));
    EXPECT_FALSE(env.AddNewStyle(u"New", KGC::KGChartDisplayStyle::ENC));
    EXPECT_FALSE(env.SetLineLookupTableFile(u"/x/line.dic", u"Base"));
    EXPECT_EQ(OnDisk(), broken);

    UseFixture();
    EXPECT_TRUE(env.LoadXML());
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 1)), "./lookup/point-simple.dic");

    // Reloading a file broken since leaves nothing of the document read before.
    UseSettings("<VeltrinChart><ElectronicChart>");
    EXPECT_FALSE(env.LoadXML());
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 1)), "");
    EXPECT_EQ(env.GetStyleType(u"Base"), kNoStyle);
}

TEST_F(ChartEnvironmentTest, EncStyleTablesAreChosenBySymbolAndEdgeTypeFlags) {
    UseFixture();
    KGChartEnvironment env;
    // Any non-zero flag selects "simplified" symbols and "symbolized" edges.
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 1)), "./lookup/point-simple.dic");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 255)), "./lookup/point-simple.dic");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 0)), "./lookup/point-paper.dic");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"Base", 1)), ".\\lookup\\area-symbol.dic");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"Base", 9)), ".\\lookup\\area-symbol.dic");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"Base", 0)), "/opt/charts/area-plain.dic");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Base")), "./lookup/line.dic");

    // Names match without regard to case; of "Base" (ENC) and "BASE" (PaperChart) the first wins.
    EXPECT_EQ(U8(env.GetPointLookupTable(u"bASE", 0)), "./lookup/point-paper.dic");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"BASE")), "./lookup/line.dic");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"base", 0)), "/opt/charts/area-plain.dic");

    // A table missing from the first "Sparse" is not looked for in the later "sparse".
    EXPECT_EQ(U8(env.GetPointLookupTable(u"sparse", 1)), "");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"sparse", 0)), "./lookup/sparse-point-paper.dic");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"SPARSE", 1)), "");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"SPARSE", 0)), "./lookup/sparse-area-plain.dic");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"sparse")), "");

    // No "LookupTables", no such style, or a name with blanks around it.
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Hollow", 1)), "");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Hollow")), "");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"Hollow", 1)), "");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Nope", 1)), "");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Nope")), "");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base ", 1)), "");
    EXPECT_EQ(U8(env.GetLineLookupTable(u" Base")), "");
}

TEST_F(ChartEnvironmentTest, PaperChartStyleHasOneTableOfEachKindWhateverTheFlag) {
    UseFixture();
    KGChartEnvironment env;
    for (unsigned char flag : {0, 1, 200}) {
        EXPECT_EQ(U8(env.GetPointLookupTable(u"Paper", flag)), "./lookup/paper-point.dic");
        EXPECT_EQ(U8(env.GetAreaLookupTable(u"PAPER", flag)), "./lookup/paper-area.dic");
    }
    EXPECT_EQ(U8(env.GetLineLookupTable(u"paper")), "./lookup/paper-line.dic");
}

TEST_F(ChartEnvironmentTest, StylesOfUnknownTypeGiveOnlyTheirLineTable) {
    UseFixture();
    KGChartEnvironment env;
    for (const char16_t* style : {u"Custom", u"Untyped"}) {
        EXPECT_EQ(U8(env.GetPointLookupTable(style, 0)), "");
        EXPECT_EQ(U8(env.GetPointLookupTable(style, 1)), "");
        EXPECT_EQ(U8(env.GetAreaLookupTable(style, 0)), "");
        EXPECT_EQ(U8(env.GetAreaLookupTable(style, 1)), "");
    }
    EXPECT_EQ(U8(env.GetLineLookupTable(u"custom")), "./lookup/custom-line.dic");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Untyped")), "./lookup/untyped-line.dic");
}

TEST_F(ChartEnvironmentTest, ColourTableIsChosenByModeAndAPaperChartStyleAlwaysGetsDayBright) {
    UseFixture();
    KGChartEnvironment env;
    EXPECT_EQ(U8(env.GetColorTable(kNight, u"Base")), "./colors/night.xml");
    EXPECT_EQ(U8(env.GetColorTable(kDusk, u"base")), "colors/dusk.xml");
    EXPECT_EQ(U8(env.GetColorTable(kDayBright, u"BASE")), "./colors/day.xml");
    // An out-of-range mode is named "DayBright".
    EXPECT_EQ(U8(env.GetColorTable(kModeSeven, u"Base")), "./colors/day.xml");

    // The paper-chart style lists a "Night" table, but every mode gives its "DayBright" one.
    for (KGC::KGS52ColorMode mode : {kDayBright, kDusk, kNight, kModeSeven}) {
        EXPECT_EQ(U8(env.GetColorTable(mode, u"Paper")), "./colors/paper-day.xml");
    }
    // A style of unknown type is not a paper chart: the mode asked for counts.
    EXPECT_EQ(U8(env.GetColorTable(kNight, u"Custom")), "./colors/custom-night.xml");
    EXPECT_EQ(U8(env.GetColorTable(kDayBright, u"Custom")), "");

    // A mode missing from the first "Sparse" is not looked for in the later "sparse".
    EXPECT_EQ(U8(env.GetColorTable(kNight, u"Sparse")), "");
    EXPECT_EQ(U8(env.GetColorTable(kDayBright, u"sparse")), "./colors/sparse-day.xml");
    // No "ColorTables", no such style.
    EXPECT_EQ(U8(env.GetColorTable(kDayBright, u"Hollow")), "");
    EXPECT_EQ(U8(env.GetColorTable(kDayBright, u"Untyped")), "");
    EXPECT_EQ(U8(env.GetColorTable(kDayBright, u"Nope")), "");
}

TEST_F(ChartEnvironmentTest, EmptyStyleNameFindsNoPointOrAreaTableButMatchesANamelessStyle) {
    UseFixture();
    KGChartEnvironment env;
    EXPECT_EQ(U8(env.GetPointLookupTable(u"", 1)), "");
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"", 1)), "");
    EXPECT_EQ(env.GetStyleType(u""), kNoStyle);
    // The line and colour queries compare the empty name like any other.
    EXPECT_EQ(U8(env.GetLineLookupTable(u"")), "./lookup/nameless-line.dic");
    EXPECT_EQ(U8(env.GetColorTable(kNight, u"")), "./colors/nameless-day.xml");
}

TEST_F(ChartEnvironmentTest, StyleTypesAndNamesFollowDocumentOrderAndSkipNamelessStyles) {
    UseFixture();
    KGChartEnvironment env;
    EXPECT_EQ(env.GetStyleType(u"base"), kEnc);
    EXPECT_EQ(env.GetStyleType(u"BASE"), kEnc);
    EXPECT_EQ(env.GetStyleType(u"pAPER"), kPaperChart);
    EXPECT_EQ(env.GetStyleType(u"Hollow"), kEnc);
    EXPECT_EQ(env.GetStyleType(u"Custom"), kNoStyle);
    EXPECT_EQ(env.GetStyleType(u"Untyped"), kNoStyle);
    EXPECT_EQ(env.GetStyleType(u"Nope"), kNoStyle);
    EXPECT_EQ(env.GetStyleType(u"Legend"), kNoStyle);

    const std::vector<std::string> styles = {"Base",   "Paper",  "BASE",    "Sparse",
                                             "sparse", "Custom", "Untyped", "Hollow"};
    PlixArray<PlixUnicodeString> names;
    names.Add(u"kept");
    EXPECT_EQ(env.GetStyleNames(names), 8);
    std::vector<std::string> expected = {"kept"};
    expected.insert(expected.end(), styles.begin(), styles.end());
    EXPECT_EQ(Names(names), expected);
    // The array is appended to, not cleared.
    EXPECT_EQ(env.GetStyleNames(names), 8);
    expected.insert(expected.end(), styles.begin(), styles.end());
    EXPECT_EQ(Names(names), expected);

    UseSettings(
        "<VeltrinChart><ElectronicChart><Dictionary><S57Object>./o.xml</S57Object>"
        "</Dictionary></ElectronicChart></VeltrinChart>");
    ASSERT_TRUE(env.LoadXML());
    PlixArray<PlixUnicodeString> none;
    EXPECT_EQ(env.GetStyleNames(none), 0);
    EXPECT_TRUE(none.IsEmpty());
    EXPECT_FALSE(env.ToDisplayNode());
    EXPECT_EQ(U8(env.GetS57ObjectDictFile()), "./o.xml");
}

TEST_F(ChartEnvironmentTest, DictionaryPathsAreReadAsStoredAndResolved) {
    UseFixture();
    KGChartEnvironment env;
    using Getter = PlixUnicodeString (KGChartEnvironment::*)();
    struct Row {
        const char* element;
        Getter stored;
        Getter resolved;
        std::string storedText;
        std::string resolvedText;
    };
    const std::string m = Module();
    const Row rows[] = {
        {"S57Object", &KGChartEnvironment::GetS57ObjectDictFile,
         &KGChartEnvironment::GetS57ObjectDictFileAbsolutePath, "./dict/objects.xml",
         m + "dict/objects.xml"},
        {"S57Attribute", &KGChartEnvironment::GetS57AttributeDictFile,
         &KGChartEnvironment::GetS57AttributeDictFileAbsolutePath, ".\\dict\\attributes.xml",
         m + "dict\\attributes.xml"},
        {"Agency", &KGChartEnvironment::GetAgencyDictFile,
         &KGChartEnvironment::GetAgencyDictFileAbsolutePath, "/usr/share/charts/agencies.xml",
         "/usr/share/charts/agencies.xml"},
        {"S57ObjectSpecs", &KGChartEnvironment::GetS57SpecsObjectDictFile,
         &KGChartEnvironment::GetS57SpecsObjectDictFileAbsolutePath, "dict/specs-objects.xml",
         "dict/specs-objects.xml"},
        {"S57InfoSpecs", &KGChartEnvironment::GetS57SpecsInfoDictFile,
         &KGChartEnvironment::GetS57SpecsInfoDictFileAbsolutePath,
         "\\\\server/share/specs-info.xml", "\\\\server\\share\\specs-info.xml"},
        {"S58CheckInfo", &KGChartEnvironment::GetS58CheckInfoDictFile,
         &KGChartEnvironment::GetS58CheckInfoDictFileAbsolutePath, "./checks/info.xml",
         m + "checks/info.xml"},
        // Deliberately two getters for one element.
        {"S58CheckAttributes", &KGChartEnvironment::GetS58CheckAttributeFile,
         &KGChartEnvironment::GetS58CheckAttributeFileAbsolutePath, "./checks/attributes.xml",
         m + "checks/attributes.xml"},
        {"S58CheckAttributes", &KGChartEnvironment::GetS58CheckAttributesFile,
         &KGChartEnvironment::GetS58CheckAttributesFileAbsolutePath, "./checks/attributes.xml",
         m + "checks/attributes.xml"},
        {"S58CheckFeatures", &KGChartEnvironment::GetS58CheckFeatureFile,
         &KGChartEnvironment::GetS58CheckFeatureFileAbsolutePath, "./checks/features.xml",
         m + "checks/features.xml"},
        {"S58CheckAllFeatures", &KGChartEnvironment::GetS58CheckAllFeatureFile,
         &KGChartEnvironment::GetS58CheckAllFeatureFileAbsolutePath, "./checks/all-features.xml",
         m + "checks/all-features.xml"},
        {"S58CheckSoundings", &KGChartEnvironment::GetS58CheckSoundingFile,
         &KGChartEnvironment::GetS58CheckSoundingFileAbsolutePath, "./checks/soundings.xml",
         m + "checks/soundings.xml"},
        {"S58CheckFeatureRelationships", &KGChartEnvironment::GetS58CheckFeatureRelationshipFile,
         &KGChartEnvironment::GetS58CheckFeatureRelationshipFileAbsolutePath,
         "./checks/relationships.xml", m + "checks/relationships.xml"},
        {"S58CheckMandatoryAttributes", &KGChartEnvironment::GetS58CheckMandatoryAttributesFile,
         &KGChartEnvironment::GetS58CheckMandatoryAttributesFileAbsolutePath,
         "./checks/mandatory.xml", m + "checks/mandatory.xml"},
        {"S58CheckMasterSlaves", &KGChartEnvironment::GetS58CheckMasterSlavesFile,
         &KGChartEnvironment::GetS58CheckMasterSlavesFileAbsolutePath, "./checks/master-slaves.xml",
         m + "checks/master-slaves.xml"},
        {"S58CheckCollections", &KGChartEnvironment::GetS58CheckCollectionsFile,
         &KGChartEnvironment::GetS58CheckCollectionsFileAbsolutePath, "./checks/collections.xml",
         m + "checks/collections.xml"},
        {"S58CheckEnumeListAttributes", &KGChartEnvironment::GetS58CheckEnumeListAttributesFile,
         &KGChartEnvironment::GetS58CheckEnumeListAttributesFileAbsolutePath,
         "./checks/enum-list.xml", m + "checks/enum-list.xml"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.element);
        EXPECT_EQ(U8((env.*row.stored)()), row.storedText);
        EXPECT_EQ(U8((env.*row.resolved)()), row.resolvedText);
        EXPECT_EQ(U8(env.GetDictFile(PlixUnicodeString(row.element))), row.storedText);
    }
    EXPECT_EQ(U8(env.GetDictFile(u"S57Objects")), "");
    EXPECT_EQ(U8(env.GetDictFile(u"Display")), "");
    EXPECT_EQ(U8(env.GetDictFile(u"s57object")), "");

    // Without the element the resolved path is empty too.
    UseSettings("<VeltrinChart><ElectronicChart><Display/></ElectronicChart></VeltrinChart>");
    ASSERT_TRUE(env.LoadXML());
    EXPECT_EQ(U8(env.GetS57ObjectDictFileAbsolutePath()), "");
    EXPECT_EQ(U8(env.GetS58CheckInfoDictFileAbsolutePath()), "");
}

TEST_F(ChartEnvironmentTest, RelativePathsResolveAgainstTheModuleDirectory) {
    UseFixture();
    KGChartEnvironment env;
    const std::string m = Module();
    EXPECT_EQ(U8(env.GetAbsolutPath(u"./tables/pt.dic")), m + "tables/pt.dic");
    // Only the prefix is dropped; the rest keeps its separators.
    EXPECT_EQ(U8(env.GetAbsolutPath(u".\\tables\\pt.dic")), m + "tables\\pt.dic");
    EXPECT_EQ(U8(env.GetAbsolutPath(u"/srv/tables/pt.dic")), "/srv/tables/pt.dic");
    EXPECT_EQ(U8(env.GetAbsolutPath(u"tables/pt.dic")), "tables/pt.dic");
    EXPECT_EQ(U8(env.GetAbsolutPath(u"../tables/pt.dic")), "../tables/pt.dic");
    EXPECT_EQ(U8(env.GetAbsolutPath(u".tables")), ".tables");
    EXPECT_EQ(U8(env.GetAbsolutPath(u"")), "");
    // A network path ("\\" anywhere) comes back with backslashes only, never module-relative.
    EXPECT_EQ(U8(env.GetAbsolutPath(u"\\\\server/share/x")), "\\\\server\\share\\x");
    EXPECT_EQ(U8(env.GetAbsolutPath(u"./share\\\\x/y")), ".\\share\\\\x\\y");
    EXPECT_EQ(U8(env.GetAbsolutPath(u"//server/share/x")), "//server/share/x");

    EXPECT_EQ(U8(env.GetPointLookupTableAbsolutePath(u"Base", 1)), m + "lookup/point-simple.dic");
    EXPECT_EQ(U8(env.GetPointLookupTableAbsolutePath(u"Paper", 0)), m + "lookup/paper-point.dic");
    EXPECT_EQ(U8(env.GetLineLookupTableAbsolutePath(u"Base")), m + "lookup/line.dic");
    EXPECT_EQ(U8(env.GetAreaLookupTableAbsolutePath(u"Base", 1)), m + "lookup\\area-symbol.dic");
    EXPECT_EQ(U8(env.GetAreaLookupTableAbsolutePath(u"Base", 0)), "/opt/charts/area-plain.dic");
    EXPECT_EQ(U8(env.GetColorTableAbsolutePath(kDusk, u"Base")), "colors/dusk.xml");
    EXPECT_EQ(U8(env.GetColorTableAbsolutePath(kNight, u"Paper")), m + "colors/paper-day.xml");
    EXPECT_EQ(U8(env.GetPointLookupTableAbsolutePath(u"Custom", 1)), "");
    EXPECT_EQ(U8(env.GetLineLookupTableAbsolutePath(u"Nope")), "");
    EXPECT_EQ(U8(env.GetColorTableAbsolutePath(kNight, u"Sparse")), "");
}

TEST_F(ChartEnvironmentTest, PathsInsideTheModuleDirectoryAreStoredRelativeWithForwardSlashes) {
    UseFixture();
    KGChartEnvironment env;
    const std::string m = Module();
    std::string backslashed = m;
    for (char& c : backslashed) {
        if (c == '/') c = '\\';
    }
    EXPECT_EQ(U8(env.ModifyFilePath(PlixUnicodeString(m + "tables/pt.dic"))), "./tables/pt.dic");
    EXPECT_EQ(U8(env.ModifyFilePath(PlixUnicodeString(m + "tables\\pt.dic"))), "./tables/pt.dic");
    EXPECT_EQ(U8(env.ModifyFilePath(PlixUnicodeString(backslashed + "tables\\pt.dic"))),
              "./tables/pt.dic");
    EXPECT_EQ(U8(env.ModifyFilePath(PlixUnicodeString(m))), "./");
    // Outside the module directory: absolute (or as given), forward slashes.
    EXPECT_EQ(U8(env.ModifyFilePath(u"/srv/charts\\tables\\pt.dic")), "/srv/charts/tables/pt.dic");
    EXPECT_EQ(U8(env.ModifyFilePath(u"tables\\pt.dic")), "tables/pt.dic");
    EXPECT_EQ(U8(env.ModifyFilePath(u"./tables/pt.dic")), "./tables/pt.dic");
    // A network path is stored exactly as given.
    EXPECT_EQ(U8(env.ModifyFilePath(u"\\\\server/share\\pt.dic")), "\\\\server/share\\pt.dic");

    // What is stored resolves back to the file it came from.
    PlixUnicodeString inside(m + "colors/day.xml");
    EXPECT_EQ(U8(env.GetAbsolutPath(env.ModifyFilePath(inside))), m + "colors/day.xml");
}

TEST_F(ChartEnvironmentTest, LookupTableSettersWriteTheSettingsFileAndNothingElse) {
    UseFixture();
    KGChartEnvironment env;
    XmlFile expected(FixturePath());
    const std::string m = Module();
    const std::string basePoint = StyleAt("Base") + "/LookupTables/PointLookupTable/";
    const std::string baseArea = StyleAt("Base") + "/LookupTables/AreaLookupTable/";
    const std::string paper = StyleAt("Paper") + "/LookupTables/";

    // The name matches "Base" without regard to case, and only the first such style changes.
    EXPECT_TRUE(env.SetPointLookupTableFile(PlixUnicodeString(m + "new\\simple.dic"), u"BASE", 1));
    expected.SetText(basePoint + "SymbolType[@value='Simplified']", "./new/simple.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    EXPECT_TRUE(env.SetPointLookupTableFile(u"/srv/paper.dic", u"Base", 0));
    expected.SetText(basePoint + "SymbolType[@value='paperchart']", "/srv/paper.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    EXPECT_TRUE(env.SetAreaLookupTableFile(u"\\\\nas/area.dic", u"base", 9));
    expected.SetText(baseArea + "EdgeType[@value='SYMBOLIZED']", "\\\\nas/area.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    EXPECT_TRUE(env.SetAreaLookupTableFile(PlixUnicodeString(m + "plain.dic"), u"Base", 0));
    expected.SetText(baseArea + "EdgeType[@value='plain']", "./plain.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    EXPECT_TRUE(env.SetLineLookupTableFile(u"lines\\base.dic", u"Base"));
    expected.SetText(StyleAt("Base") + "/LookupTables/LineLookupTable", "lines/base.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    // A paper-chart style keeps its paths in the table elements themselves.
    EXPECT_TRUE(env.SetPointLookupTableFile(PlixUnicodeString(m + "p/point.dic"), u"Paper", 1));
    expected.SetText(paper + "PointLookupTable", "./p/point.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());
    EXPECT_TRUE(env.SetAreaLookupTableFile(PlixUnicodeString(m + "p/area.dic"), u"paper", 0));
    expected.SetText(paper + "AreaLookupTable", "./p/area.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());
    EXPECT_TRUE(env.SetLineLookupTableFile(PlixUnicodeString(m + "p/line.dic"), u"PAPER"));
    expected.SetText(paper + "LineLookupTable", "./p/line.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    // The same environment and a fresh one both see the new paths.
    KGChartEnvironment fresh;
    for (KGChartEnvironment* e : {&env, &fresh}) {
        EXPECT_EQ(U8(e->GetPointLookupTable(u"Base", 1)), "./new/simple.dic");
        EXPECT_EQ(U8(e->GetPointLookupTableAbsolutePath(u"Base", 1)), m + "new/simple.dic");
        EXPECT_EQ(U8(e->GetPointLookupTable(u"Base", 0)), "/srv/paper.dic");
        EXPECT_EQ(U8(e->GetAreaLookupTableAbsolutePath(u"Base", 1)), "\\\\nas\\area.dic");
        EXPECT_EQ(U8(e->GetAreaLookupTable(u"Base", 0)), "./plain.dic");
        EXPECT_EQ(U8(e->GetLineLookupTable(u"Base")), "lines/base.dic");
        EXPECT_EQ(U8(e->GetPointLookupTable(u"Paper", 0)), "./p/point.dic");
        EXPECT_EQ(U8(e->GetAreaLookupTable(u"Paper", 1)), "./p/area.dic");
        EXPECT_EQ(U8(e->GetLineLookupTableAbsolutePath(u"Paper")), m + "p/line.dic");
        EXPECT_EQ(U8(e->GetPointLookupTable(u"Sparse", 0)), "./lookup/sparse-point-paper.dic");
    }
}

TEST_F(ChartEnvironmentTest, LookupTableSettersNeverCreateMissingElements) {
    UseFixture();
    KGChartEnvironment env;
    const std::string untouched = ReplaceFileBehindTheEnvironment();
    // "Sparse" lacks these; the later "sparse" has them, but only the first match is edited.
    EXPECT_FALSE(env.SetPointLookupTableFile(u"./x.dic", u"Sparse", 1));
    EXPECT_FALSE(env.SetAreaLookupTableFile(u"./x.dic", u"sparse", 1));
    EXPECT_FALSE(env.SetLineLookupTableFile(u"./x.dic", u"SPARSE"));
    // No "LookupTables" at all.
    EXPECT_FALSE(env.SetPointLookupTableFile(u"./x.dic", u"Hollow", 0));
    EXPECT_FALSE(env.SetAreaLookupTableFile(u"./x.dic", u"Hollow", 0));
    EXPECT_FALSE(env.SetLineLookupTableFile(u"./x.dic", u"Hollow"));
    // No such style; and an empty name even though a nameless style exists.
    EXPECT_FALSE(env.SetPointLookupTableFile(u"./x.dic", u"Nope", 1));
    EXPECT_FALSE(env.SetLineLookupTableFile(u"./x.dic", u"Nope"));
    EXPECT_FALSE(env.SetAreaLookupTableFile(u"./x.dic", u"Nope", 1));
    EXPECT_FALSE(env.SetPointLookupTableFile(u"./x.dic", u"", 1));
    EXPECT_FALSE(env.SetLineLookupTableFile(u"./x.dic", u""));
    EXPECT_FALSE(env.SetAreaLookupTableFile(u"./x.dic", u"", 1));
    EXPECT_EQ(OnDisk(), untouched);

    EXPECT_EQ(U8(env.GetPointLookupTable(u"Sparse", 1)), "");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Sparse")), "");
    EXPECT_EQ(U8(env.GetLineLookupTable(u"")), "./lookup/nameless-line.dic");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Sparse", 0)), "./lookup/sparse-point-paper.dic");
}

TEST_F(ChartEnvironmentTest, PointTableOfAStyleOfUnknownTypeIsWrittenButNotReadBack) {
    UseFixture();
    KGChartEnvironment env;
    XmlFile expected(FixturePath());
    const std::string m = Module();

    // Deliberate asymmetry: the point setter takes a style of unknown type, the area one does not.
    EXPECT_TRUE(env.SetPointLookupTableFile(PlixUnicodeString(m + "c/point.dic"), u"custom", 1));
    expected.SetText(StyleAt("Custom") + "/LookupTables/PointLookupTable", "./c/point.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());
    EXPECT_TRUE(env.SetPointLookupTableFile(u"/srv/u.dic", u"Untyped", 0));
    expected.SetText(StyleAt("Untyped") + "/LookupTables/PointLookupTable", "/srv/u.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Custom", 1)), "");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Custom", 0)), "");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Untyped", 0)), "");

    const std::string untouched = ReplaceFileBehindTheEnvironment();
    EXPECT_FALSE(env.SetAreaLookupTableFile(u"./a.dic", u"Custom", 0));
    EXPECT_FALSE(env.SetAreaLookupTableFile(u"./a.dic", u"Untyped", 1));
    EXPECT_EQ(OnDisk(), untouched);

    // The line table belongs to every kind of style.
    EXPECT_TRUE(env.SetLineLookupTableFile(PlixUnicodeString(m + "c/line.dic"), u"Custom"));
    expected.SetText(StyleAt("Custom") + "/LookupTables/LineLookupTable", "./c/line.dic");
    EXPECT_EQ(DiskOutline(), expected.Outline());
    KGChartEnvironment fresh;
    EXPECT_EQ(U8(fresh.GetLineLookupTableAbsolutePath(u"Custom")), m + "c/line.dic");
    EXPECT_EQ(U8(fresh.GetPointLookupTable(u"Custom", 1)), "");
}

TEST_F(ChartEnvironmentTest, ColourTableSetterFollowsTheRulesOfTheQuery) {
    UseFixture();
    KGChartEnvironment env;
    XmlFile expected(FixturePath());
    const std::string m = Module();
    const std::string baseColors = StyleAt("Base") + "/ColorTables/";

    EXPECT_TRUE(env.SetColorTable(PlixUnicodeString(m + "colors\\dusk2.xml"), u"BASE", kDusk));
    expected.SetText(baseColors + "ColorTable[@type='Dusk']", "./colors/dusk2.xml");
    EXPECT_EQ(DiskOutline(), expected.Outline());
    EXPECT_TRUE(env.SetColorTable(u"/srv/night.xml", u"base", kNight));
    expected.SetText(baseColors + "ColorTable[@type='night']", "/srv/night.xml");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    // A paper-chart style: "Night" writes the "DayBright" table; its "Night" table stays as is.
    EXPECT_TRUE(env.SetColorTable(PlixUnicodeString(m + "paper.xml"), u"Paper", kNight));
    expected.SetText(StyleAt("Paper") + "/ColorTables/ColorTable[@type='DayBright']",
                     "./paper.xml");
    EXPECT_EQ(DiskOutline(), expected.Outline());
    EXPECT_EQ(XmlFile(Settings()).Text(StyleAt("Paper") + "/ColorTables/ColorTable[@type='Night']"),
              "./colors/paper-night.xml");

    EXPECT_TRUE(env.SetColorTable(u"./custom.xml", u"Custom", kNight));
    expected.SetText(StyleAt("Custom") + "/ColorTables/ColorTable[@type='Night']", "./custom.xml");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    const std::string untouched = ReplaceFileBehindTheEnvironment();
    EXPECT_FALSE(env.SetColorTable(u"./x.xml", u"Sparse", kNight));
    EXPECT_FALSE(env.SetColorTable(u"./x.xml", u"Custom", kDayBright));
    EXPECT_FALSE(env.SetColorTable(u"./x.xml", u"Hollow", kDayBright));
    EXPECT_FALSE(env.SetColorTable(u"./x.xml", u"Untyped", kDayBright));
    EXPECT_FALSE(env.SetColorTable(u"./x.xml", u"Nope", kDayBright));
    EXPECT_EQ(OnDisk(), untouched);
    // The next successful edit writes the whole document back.
    EXPECT_TRUE(env.SetColorTable(u"./x.xml", u"Custom", kNight));
    expected.SetText(StyleAt("Custom") + "/ColorTables/ColorTable[@type='Night']", "./x.xml");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    KGChartEnvironment fresh;
    EXPECT_EQ(U8(fresh.GetColorTableAbsolutePath(kDusk, u"Base")), m + "colors/dusk2.xml");
    EXPECT_EQ(U8(fresh.GetColorTable(kNight, u"Base")), "/srv/night.xml");
    EXPECT_EQ(U8(fresh.GetColorTable(kDusk, u"Paper")), "./paper.xml");
    EXPECT_EQ(U8(fresh.GetColorTable(kNight, u"Custom")), "./x.xml");
    EXPECT_EQ(U8(fresh.GetColorTable(kNight, u"sparse")), "");
}

TEST_F(ChartEnvironmentTest, DictionarySettersWriteTheirOwnElementOnly) {
    UseFixture();
    KGChartEnvironment env;
    XmlFile expected(FixturePath());
    const std::string m = Module();

    EXPECT_TRUE(env.ModifyS57ObjectDictFile(PlixUnicodeString(m + "d\\objects.xml")));
    expected.SetText(kDictionary + "S57Object", "./d/objects.xml");
    EXPECT_TRUE(env.ModifyS57AttributeDictFile(u"/srv/attributes.xml"));
    expected.SetText(kDictionary + "S57Attribute", "/srv/attributes.xml");
    EXPECT_TRUE(env.ModifyAgencyDictFile(u"agencies.xml"));
    expected.SetText(kDictionary + "Agency", "agencies.xml");
    EXPECT_TRUE(env.ModifyS57SpecsObjectDictFile(PlixUnicodeString(m + "specs-objects.xml")));
    expected.SetText(kDictionary + "S57ObjectSpecs", "./specs-objects.xml");
    EXPECT_TRUE(env.ModifyS57SpecsInfoDictFile(u"\\\\nas/specs\\info.xml"));
    expected.SetText(kDictionary + "S57InfoSpecs", "\\\\nas/specs\\info.xml");
    EXPECT_TRUE(env.ModifyDictFile(u"S58CheckSoundings", PlixUnicodeString(m + "s.xml")));
    expected.SetText(kDictionary + "S58CheckSoundings", "./s.xml");
    EXPECT_EQ(DiskOutline(), expected.Outline());

    // A missing element is not created, but the document is written back all the same
    // (deliberately kept: the dictionary setter always saves).
    ReplaceFileBehindTheEnvironment();
    EXPECT_FALSE(env.ModifyDictFile(u"S57Objects", u"./x.xml"));
    EXPECT_EQ(DiskOutline(), expected.Outline());
    EXPECT_FALSE(env.ModifyDictFile(u"Display", u"./x.xml"));
    EXPECT_EQ(DiskOutline(), expected.Outline());

    KGChartEnvironment fresh;
    EXPECT_EQ(U8(fresh.GetS57ObjectDictFileAbsolutePath()), m + "d/objects.xml");
    EXPECT_EQ(U8(fresh.GetS57AttributeDictFile()), "/srv/attributes.xml");
    EXPECT_EQ(U8(fresh.GetAgencyDictFile()), "agencies.xml");
    EXPECT_EQ(U8(fresh.GetS57SpecsObjectDictFile()), "./specs-objects.xml");
    EXPECT_EQ(U8(fresh.GetS57SpecsInfoDictFileAbsolutePath()), "\\\\nas\\specs\\info.xml");
    EXPECT_EQ(U8(fresh.GetS58CheckSoundingFile()), "./s.xml");

    // Without a "Dictionary" element none of them writes anything.
    UseSettings("<VeltrinChart><ElectronicChart><Display/></ElectronicChart></VeltrinChart>");
    ASSERT_TRUE(env.LoadXML());
    EXPECT_FALSE(env.ModifyS57ObjectDictFile(u"./o.xml"));
    EXPECT_FALSE(env.ModifyS57AttributeDictFile(u"./o.xml"));
    EXPECT_FALSE(env.ModifyAgencyDictFile(u"./o.xml"));
    EXPECT_FALSE(env.ModifyS57SpecsObjectDictFile(u"./o.xml"));
    EXPECT_FALSE(env.ModifyS57SpecsInfoDictFile(u"./o.xml"));
    EXPECT_EQ(DiskOutline(), "VeltrinChart{ElectronicChart{Display}}");
}

TEST_F(ChartEnvironmentTest, AddNewStyleAppendsAnEncStyleWithEmptyTablesAfterTheLastStyle) {
    UseFixture();
    KGChartEnvironment env;
    ASSERT_TRUE(env.AddNewStyle(u"Harbour", kEnc));

    XmlFile disk(Settings());
    EXPECT_EQ(Outline(disk.Node(StyleAt("Harbour"))),
              "Style(type=ENC,value=Harbour){LookupTables{"
              "PointLookupTable{SymbolType(value=simplified) SymbolType(value=paperchart)} "
              "LineLookupTable "
              "AreaLookupTable{EdgeType(value=plain) EdgeType(value=symbolized)}} "
              "ColorTables{ColorTable(type=DayBright) ColorTable(type=Dusk) "
              "ColorTable(type=Night)}}");
    // After the last style, before the element that is no style.
    EXPECT_EQ(
        std::string(disk.Node(StyleAt("Harbour")).previous_sibling().attribute("value").value()),
        "Hollow");
    EXPECT_EQ(std::string(disk.Node(StyleAt("Harbour")).next_sibling().name()), "Legend");
    // Everything else is as it was.
    disk.Remove(StyleAt("Harbour"));
    EXPECT_EQ(disk.Outline(), XmlFile(FixturePath()).Outline());

    EXPECT_EQ(env.GetStyleType(u"HARBOUR"), kEnc);
    PlixArray<PlixUnicodeString> names;
    EXPECT_EQ(env.GetStyleNames(names), 9);
    EXPECT_EQ(U8(names.GetAt(8)), "Harbour");
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Harbour", 1)), "");
    EXPECT_EQ(U8(env.GetColorTable(kNight, u"Harbour")), "");

    // The empty entries take paths through the setters.
    const std::string m = Module();
    EXPECT_TRUE(env.SetPointLookupTableFile(PlixUnicodeString(m + "h/simple.dic"), u"Harbour", 1));
    EXPECT_TRUE(env.SetPointLookupTableFile(PlixUnicodeString(m + "h/paper.dic"), u"Harbour", 0));
    EXPECT_TRUE(env.SetLineLookupTableFile(PlixUnicodeString(m + "h/line.dic"), u"Harbour"));
    EXPECT_TRUE(env.SetAreaLookupTableFile(PlixUnicodeString(m + "h/plain.dic"), u"Harbour", 0));
    EXPECT_TRUE(env.SetAreaLookupTableFile(PlixUnicodeString(m + "h/symbol.dic"), u"Harbour", 1));
    EXPECT_TRUE(env.SetColorTable(PlixUnicodeString(m + "h/dusk.xml"), u"Harbour", kDusk));
    KGChartEnvironment fresh;
    EXPECT_EQ(U8(fresh.GetPointLookupTableAbsolutePath(u"Harbour", 1)), m + "h/simple.dic");
    EXPECT_EQ(U8(fresh.GetPointLookupTable(u"Harbour", 0)), "./h/paper.dic");
    EXPECT_EQ(U8(fresh.GetLineLookupTable(u"Harbour")), "./h/line.dic");
    EXPECT_EQ(U8(fresh.GetAreaLookupTable(u"Harbour", 0)), "./h/plain.dic");
    EXPECT_EQ(U8(fresh.GetAreaLookupTable(u"Harbour", 1)), "./h/symbol.dic");
    EXPECT_EQ(U8(fresh.GetColorTable(kDusk, u"Harbour")), "./h/dusk.xml");
    EXPECT_EQ(U8(fresh.GetColorTable(kNight, u"Harbour")), "");
}

TEST_F(ChartEnvironmentTest, AddNewStyleGivesAPaperChartStyleOneDayBrightColourTable) {
    UseFixture();
    KGChartEnvironment env;
    ASSERT_TRUE(env.AddNewStyle(u"Hafen Süd", kPaperChart));
    EXPECT_EQ(Outline(XmlFile(Settings()).Node(StyleAt("Hafen Süd"))),
              "Style(type=PaperChart,value=Hafen Süd){LookupTables{"
              "PointLookupTable LineLookupTable AreaLookupTable} "
              "ColorTables{ColorTable(type=DayBright)}}");

    const std::string m = Module();
    EXPECT_TRUE(env.SetColorTable(PlixUnicodeString(m + "paper.xml"), u"hafen süd", kNight));
    EXPECT_TRUE(env.SetPointLookupTableFile(u"./point.dic", u"Hafen Süd", 0));
    EXPECT_TRUE(env.SetAreaLookupTableFile(u"./area.dic", u"Hafen Süd", 1));
    KGChartEnvironment fresh;
    EXPECT_EQ(fresh.GetStyleType(u"Hafen Süd"), kPaperChart);
    EXPECT_EQ(U8(fresh.GetColorTable(kDusk, u"Hafen Süd")), "./paper.xml");
    EXPECT_EQ(U8(fresh.GetPointLookupTable(u"Hafen Süd", 1)), "./point.dic");
    EXPECT_EQ(U8(fresh.GetAreaLookupTable(u"Hafen Süd", 0)), "./area.dic");
}

TEST_F(ChartEnvironmentTest, AddNewStyleRefusesTakenNamesUnknownTypesAndEmptyNames) {
    UseFixture();
    KGChartEnvironment env;
    const std::string untouched = ReplaceFileBehindTheEnvironment();
    // Names are unique without regard to case, whatever the type of the style holding them.
    EXPECT_FALSE(env.AddNewStyle(u"PAPER", kEnc));
    EXPECT_FALSE(env.AddNewStyle(u"hollow", kPaperChart));
    EXPECT_FALSE(env.AddNewStyle(u"custom", kEnc));
    EXPECT_FALSE(env.AddNewStyle(u"New", kNoStyle));
    EXPECT_FALSE(env.AddNewStyle(u"New", static_cast<KGC::KGChartDisplayStyleType>(7)));
    EXPECT_FALSE(env.AddNewStyle(u"", kEnc));
    EXPECT_EQ(OnDisk(), untouched);
    EXPECT_EQ(env.GetStyleType(u"New"), kNoStyle);
    PlixArray<PlixUnicodeString> names;
    EXPECT_EQ(env.GetStyleNames(names), 8);

    ASSERT_TRUE(env.AddNewStyle(u"Ärmelkanal", kEnc));
    EXPECT_FALSE(env.AddNewStyle(u"ÄRMELKANAL", kPaperChart));
    EXPECT_EQ(env.GetStyleType(u"ärmelkanal"), kEnc);

    // Without a "Display" element there is nowhere to add a style.
    const std::string noDisplay =
        "<VeltrinChart><ElectronicChart><Dictionary/></ElectronicChart></VeltrinChart>";
    UseSettings(noDisplay);
    ASSERT_TRUE(env.LoadXML());
    EXPECT_FALSE(env.AddNewStyle(u"New", kEnc));
    EXPECT_EQ(DiskOutline(), "VeltrinChart{ElectronicChart{Dictionary}}");
}

TEST_F(ChartEnvironmentTest, RemoveStyleRemovesTheFirstMatchingStyleWithEverythingInIt) {
    UseFixture();
    KGChartEnvironment env;
    XmlFile expected(FixturePath());

    EXPECT_TRUE(env.RemoveStyle(u"BASE"));
    expected.Remove(StyleAt("Base"));
    EXPECT_EQ(DiskOutline(), expected.Outline());
    // The later "BASE" (a paper chart) now answers to the name.
    EXPECT_EQ(env.GetStyleType(u"base"), kPaperChart);
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 1)), "./lookup/shadowed-point.dic");

    const std::string untouched = ReplaceFileBehindTheEnvironment();
    EXPECT_FALSE(env.RemoveStyle(u"Nope"));
    EXPECT_FALSE(env.RemoveStyle(u""));
    EXPECT_FALSE(env.RemoveStyle(u"Legend"));
    EXPECT_EQ(OnDisk(), untouched);

    // A removed name is free again.
    EXPECT_TRUE(env.RemoveStyle(u"paper"));
    EXPECT_TRUE(env.AddNewStyle(u"Paper", kEnc));
    KGChartEnvironment fresh;
    EXPECT_EQ(fresh.GetStyleType(u"Paper"), kEnc);
    EXPECT_EQ(U8(fresh.GetPointLookupTable(u"Base", 0)), "./lookup/shadowed-point.dic");
    PlixArray<PlixUnicodeString> names;
    EXPECT_EQ(fresh.GetStyleNames(names), 7);
    EXPECT_EQ(Names(names), (std::vector<std::string>{"BASE", "Sparse", "sparse", "Custom",
                                                      "Untyped", "Hollow", "Paper"}));
}

TEST_F(ChartEnvironmentTest, EveryOperationStartsFromTheTopWhereverTheCursorWasLeft) {
    UseFixture();
    KGChartEnvironment env;
    const std::string m = Module();
    KGC::KGChartDisplayStyleType type = kNoStyle;

    // The navigation steps leave the cursor deep inside the document.
    ASSERT_TRUE(env.ToLookupTableNode(u"paper", type));
    EXPECT_EQ(type, kPaperChart);
    EXPECT_EQ(U8(env.GetPointLookupTable(u"Base", 1)), "./lookup/point-simple.dic");
    ASSERT_TRUE(env.ToDictionaryNode());
    PlixArray<PlixUnicodeString> names;
    EXPECT_EQ(env.GetStyleNames(names), 8);
    ASSERT_TRUE(env.ToLookupTableNode(u"Custom", type));
    EXPECT_EQ(type, kNoStyle);
    EXPECT_EQ(U8(env.GetS57ObjectDictFile()), "./dict/objects.xml");
    ASSERT_TRUE(env.ToDisplayNode());
    EXPECT_EQ(U8(env.GetColorTable(kNight, u"Base")), "./colors/night.xml");
    EXPECT_FALSE(env.ToLookupTableNode(u"Hollow", type));
    EXPECT_FALSE(env.ToLookupTableNode(u"Nope", type));
    EXPECT_EQ(env.GetStyleType(u"Sparse"), kEnc);

    // Queries and edits mixed, each answer the same as on a fresh environment.
    EXPECT_EQ(U8(env.GetColorTable(kDusk, u"Base")), "colors/dusk.xml");
    EXPECT_TRUE(env.SetLineLookupTableFile(PlixUnicodeString(m + "line.dic"), u"Paper"));
    EXPECT_EQ(U8(env.GetColorTable(kDusk, u"Base")), "colors/dusk.xml");
    EXPECT_EQ(env.GetStyleType(u"Paper"), kPaperChart);
    EXPECT_TRUE(env.AddNewStyle(u"Extra", kEnc));
    EXPECT_EQ(U8(env.GetAreaLookupTable(u"Base", 0)), "/opt/charts/area-plain.dic");
    EXPECT_FALSE(env.SetPointLookupTableFile(u"./x.dic", u"Hollow", 1));
    EXPECT_EQ(U8(env.GetDictFile(u"Agency")), "/usr/share/charts/agencies.xml");
    EXPECT_TRUE(env.ModifyAgencyDictFile(u"./agency.xml"));
    EXPECT_TRUE(env.RemoveStyle(u"Custom"));
    EXPECT_EQ(U8(env.GetLineLookupTable(u"PAPER")), "./line.dic");
    EXPECT_TRUE(env.SetColorTable(u"./extra-night.xml", u"Extra", kNight));
    EXPECT_EQ(U8(env.GetAgencyDictFile()), "./agency.xml");
    EXPECT_TRUE(env.RemoveStyle(u"Untyped"));
    names.RemoveAll();
    EXPECT_EQ(env.GetStyleNames(names), 7);
    EXPECT_EQ(U8(env.GetColorTable(kNight, u"Extra")), "./extra-night.xml");

    KGChartEnvironment fresh;
    PlixArray<PlixUnicodeString> freshNames;
    EXPECT_EQ(fresh.GetStyleNames(freshNames), 7);
    EXPECT_EQ(Names(freshNames), Names(names));
    EXPECT_EQ(U8(fresh.GetLineLookupTable(u"paper")), "./line.dic");
    EXPECT_EQ(U8(fresh.GetColorTable(kNight, u"Extra")), "./extra-night.xml");
    EXPECT_EQ(U8(fresh.GetAgencyDictFile()), "./agency.xml");
    EXPECT_EQ(fresh.GetStyleType(u"Custom"), kNoStyle);
}

TEST_F(ChartEnvironmentTest, AnEditWhoseSaveFailsReportsFailure) {
    UseFixture();
    KGChartEnvironment env;
    // A directory where the settings file was: nothing can be written over it.
    std::filesystem::remove(Settings());
    std::filesystem::create_directory(Settings());
    EXPECT_FALSE(env.SetLineLookupTableFile(u"./line.dic", u"Base"));
    EXPECT_FALSE(env.SetPointLookupTableFile(u"./point.dic", u"Paper", 1));
    EXPECT_FALSE(env.SetAreaLookupTableFile(u"./area.dic", u"Base", 1));
    EXPECT_FALSE(env.SetColorTable(u"./night.xml", u"Base", kNight));
    EXPECT_FALSE(env.ModifyS57ObjectDictFile(u"./objects.xml"));
    EXPECT_FALSE(env.AddNewStyle(u"New", kEnc));
    EXPECT_FALSE(env.RemoveStyle(u"Hollow"));
    EXPECT_TRUE(std::filesystem::is_directory(Settings()));
}

// The real presentation data is read-only: nothing here may edit it.
TEST(ChartEnvironmentRealData, EveryNamedFileExistsAndTheColourTablesLoad) {
    VLTEST_REQUIRE_REAL_DATA();
    const std::string real = vltest::RealDataDir();
    vltest::ModulePathOverride module(real);
    KGChartEnvironment env;
    ASSERT_TRUE(env.LoadXML());

    PlixArray<PlixUnicodeString> names;
    EXPECT_EQ(env.GetStyleNames(names), 2);
    EXPECT_EQ(Names(names), (std::vector<std::string>{"S52", "Paper"}));
    EXPECT_EQ(env.GetStyleType(u"S52"), kEnc);
    EXPECT_EQ(env.GetStyleType(u"Paper"), kPaperChart);

    auto expectFile = [&](const PlixUnicodeString& path, const std::string& what) {
        std::string p = U8(path);
        EXPECT_EQ(p.rfind(real, 0), 0u) << what << " is not inside the data directory: " << p;
        EXPECT_TRUE(vltest::FileExists(p)) << what << ": " << p;
    };
    for (const char16_t* style : {u"S52", u"Paper"}) {
        std::string s = U8(style);
        for (unsigned char flag : {0, 1}) {
            std::string f = std::to_string(flag);
            expectFile(env.GetPointLookupTableAbsolutePath(style, flag), s + " point " + f);
            expectFile(env.GetAreaLookupTableAbsolutePath(style, flag), s + " area " + f);
        }
        expectFile(env.GetLineLookupTableAbsolutePath(style), s + " line");
        for (KGC::KGS52ColorMode mode : {kDayBright, kDusk, kNight}) {
            expectFile(env.GetColorTableAbsolutePath(mode, style),
                       s + " colours " + U8(KGChartColorMode::GetColorModeName(mode)));
        }
    }
    expectFile(env.GetS57ObjectDictFileAbsolutePath(), "object classes");
    expectFile(env.GetS57AttributeDictFileAbsolutePath(), "attributes");
    expectFile(env.GetAgencyDictFileAbsolutePath(), "agencies");
    expectFile(env.GetS57SpecsObjectDictFileAbsolutePath(), "specification objects");
    expectFile(env.GetS57SpecsInfoDictFileAbsolutePath(), "specification info");
    expectFile(env.GetS58CheckInfoDictFileAbsolutePath(), "check messages");

    std::vector<std::string> colourFiles;
    for (KGC::KGS52ColorMode mode : {kDayBright, kDusk, kNight}) {
        PlixUnicodeString path = env.GetColorTableAbsolutePath(mode, u"S52");
        colourFiles.push_back(U8(path));
        KGC::KGChartColorTable table;
        EXPECT_TRUE(table.LoadColorTable(path)) << U8(path);
        EXPECT_EQ(table.GetCount(), 63) << U8(path);
    }
    EXPECT_NE(colourFiles[0], colourFiles[1]);
    EXPECT_NE(colourFiles[1], colourFiles[2]);
    EXPECT_NE(colourFiles[0], colourFiles[2]);
    // The paper chart's single table is the ENC style's day table.
    EXPECT_EQ(U8(env.GetColorTableAbsolutePath(kNight, u"Paper")), colourFiles[0]);
}

}  // namespace
