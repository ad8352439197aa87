// The chart environment: the rows of Tests/Data/env/queries.txt and edits.txt over ChartConfig.xml.
#include "ChartBase/KGChartEnvironment.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

#include "TestSupport.h"

using KGC::KGChartEnvironment;
using PLIX::PlixUnicodeString;

namespace {

// The dictionary getter pairs, named without "Get" in queries.txt.
#define VL_GETTER(G) \
    if (r[2] == #G) return U8(q == "Getter" ? env.Get##G() : env.Get##G##AbsolutePath())

using Row = std::vector<std::string>;

class ChartEnvironmentTest : public ::testing::Test {
protected:
    static std::string U8(const PlixUnicodeString& s) { return s.ToUtf8(); }
    // Each row: the whole line, then its "|"-separated fields; ";" starts a comment line.
    std::vector<Row> Rows(const std::string& name) const {
        std::vector<Row> rows;
        std::istringstream in(vltest::ReadFile(m_data + name));
        for (std::string line; std::getline(in, line);) {
            if (line.empty() || line[0] == ';') continue;
            rows.push_back({line});
            std::istringstream fields(line + "|");
            for (std::string f; std::getline(fields, f, '|');) rows.back().push_back(f);
        }
        EXPECT_FALSE(rows.empty()) << name;
        return rows;
    }
    // The module directory's name holds a backslash, as on Windows: the environment makes it "/".
    ChartEnvironmentTest() { std::filesystem::create_directory(m_module); }
    std::string Settings() const { return m_module + "ChartConfig.xml"; }
    std::string Expand(const std::string& text) const {
        std::string out, slashed = m_dir.Path() + "mod/ule/", backslashed = slashed;
        for (char& c : backslashed) c = c == '/' ? '\\' : c;
        for (char c : text) out += c == '@' ? slashed : c == '#' ? backslashed : std::string(1, c);
        return out;
    }
    std::string Ask(KGChartEnvironment& env, const Row& r) const {
        const std::string& q = r[1];
        PlixUnicodeString arg(Expand(r[2]));
        const int flag = std::stoi(r[3]);
        const auto mode = KGC::KGS52ColorMode(flag);
        KGC::KGChartDisplayStyleType type = KGC::KGChartDisplayStyle::ENC;
        if (q == "Point") return U8(env.GetPointLookupTable(arg, flag));
        if (q == "PointAbs") return U8(env.GetPointLookupTableAbsolutePath(arg, flag));
        if (q == "Line") return U8(env.GetLineLookupTable(arg));
        if (q == "LineAbs") return U8(env.GetLineLookupTableAbsolutePath(arg));
        if (q == "Area") return U8(env.GetAreaLookupTable(arg, flag));
        if (q == "AreaAbs") return U8(env.GetAreaLookupTableAbsolutePath(arg, flag));
        if (q == "Color") return U8(env.GetColorTable(mode, arg));
        if (q == "ColorAbs") return U8(env.GetColorTableAbsolutePath(mode, arg));
        if (q == "Dict") return U8(env.GetDictFile(arg));
        if (q == "Symbols") return U8(env.GetSymbolLibraryAbsolutePath(arg));
        if (q == "Type") return std::to_string(env.GetStyleType(arg));
        if (q == "Node")  // each step starts from the top, wherever the one before stopped
            return env.ToLookupTableNode(arg, type) && env.ToDictionaryNode() && env.ToDisplayNode()
                       ? std::to_string(type)
                       : "";
        if (q == "Abs") return U8(env.GetAbsolutPath(arg));
        if (q == "Store") return U8(env.ModifyFilePath(arg));
        if (q == "Names") {  // appended twice to an array that holds the argument
            PLIX::PlixArray<PlixUnicodeString> names;
            names.Add(arg);
            std::string out = std::to_string(env.GetStyleNames(names) + env.GetStyleNames(names));
            for (int i = 0; i < names.GetSize(); ++i) out += "," + U8(names.GetAt(i));
            return out;
        }
        VL_GETTER(S57ObjectDictFile);
        VL_GETTER(S57AttributeDictFile);
        VL_GETTER(AgencyDictFile);
        VL_GETTER(S57SpecsObjectDictFile);
        VL_GETTER(S57SpecsInfoDictFile);
        VL_GETTER(S58CheckInfoDictFile);
        VL_GETTER(S58CheckAttributeFile);
        VL_GETTER(S58CheckAttributesFile);
        VL_GETTER(S58CheckFeatureFile);
        VL_GETTER(S58CheckAllFeatureFile);
        VL_GETTER(S58CheckSoundingFile);
        VL_GETTER(S58CheckFeatureRelationshipFile);
        VL_GETTER(S58CheckMandatoryAttributesFile);
        VL_GETTER(S58CheckMasterSlavesFile);
        VL_GETTER(S58CheckCollectionsFile);
        VL_GETTER(S58CheckEnumeListAttributesFile);
        return "unknown query " + q;
    }
    // What a query answers while there is no document.
    std::string NoDocument(const Row& r) const {
        if (r[1] == "Names") return "0," + r[2];
        return r[1] == "Abs" || r[1] == "Store" ? Expand(r[4]) : r[1] == "Type" ? "0" : "";
    }
    bool Apply(KGChartEnvironment& env, const Row& r) const {
        const std::string& e = r[1];
        PlixUnicodeString arg(r[2]), path(Expand(r[3]));
        const int flag = std::stoi(r[4]);
        if (e == "SetPoint") return env.SetPointLookupTableFile(path, arg, flag);
        if (e == "SetLine") return env.SetLineLookupTableFile(path, arg);
        if (e == "SetArea") return env.SetAreaLookupTableFile(path, arg, flag);
        if (e == "SetColor") return env.SetColorTable(path, arg, KGC::KGS52ColorMode(flag));
        if (e == "ModDict") return env.ModifyDictFile(arg, path);
        if (e == "SetSymbols") return env.SetSymbolLibrary(path, arg);
        if (e == "ModObject") return env.ModifyS57ObjectDictFile(path);
        if (e == "ModAttribute") return env.ModifyS57AttributeDictFile(path);
        if (e == "ModAgency") return env.ModifyAgencyDictFile(path);
        if (e == "ModSpecsObject") return env.ModifyS57SpecsObjectDictFile(path);
        if (e == "ModSpecsInfo") return env.ModifyS57SpecsInfoDictFile(path);
        if (e == "Add") return env.AddNewStyle(arg, KGC::KGChartDisplayStyleType(flag));
        EXPECT_EQ(e, "Remove") << "unknown edit";
        return env.RemoveStyle(arg);
    }

    const std::string m_data = vltest::TestDataDir() + "env/";
    vltest::TempDir m_dir;
    std::string m_module = m_dir.Path() + "mod\\ule/";
    vltest::ModulePathOverride m_override{m_module};
};

TEST_F(ChartEnvironmentTest, QueriesWithoutWithABrokenAndWithTheSettingsFile) {
    vltest::LogCapture log;
    KGChartEnvironment env;
    const KGC::KGLogRecord& rec = log.Records().at(0);
    EXPECT_EQ(std::to_string(rec.hasCode) + " " + std::to_string(rec.level) + " " +
                  std::to_string(rec.code) + " " + U8(rec.message) + " " + rec.source + ":" +
                  std::to_string(rec.line),
              "1 400 -100 chart setting file does not found ! "
              "../../../Src/ChartBase/KGChartEnvironment:29");
    for (const Row& r : Rows("queries.txt")) EXPECT_EQ(Ask(env, r), NoDocument(r)) << r[0];
    for (const Row& r : Rows("edits.txt")) EXPECT_FALSE(Apply(env, r)) << r[0];
    EXPECT_FALSE(vltest::FileExists(Settings()));

    // An unparsable file loads nothing and is never written over.
    const std::string broken = vltest::ReadFile(m_data + "ChartConfig-unparsable.xml");
    vltest::WriteFile(Settings(), broken);
    EXPECT_FALSE(env.LoadXML());
    for (const Row& r : Rows("queries.txt")) EXPECT_EQ(Ask(env, r), NoDocument(r)) << r[0];
    for (const Row& r : Rows("edits.txt")) EXPECT_FALSE(Apply(env, r)) << r[0];
    EXPECT_EQ(vltest::ReadFile(Settings()), broken);

    vltest::WriteFile(Settings(), vltest::ReadFile(m_data + "ChartConfig.xml"));
    ASSERT_TRUE(env.LoadXML());
    for (const Row& r : Rows("queries.txt")) EXPECT_EQ(Ask(env, r), Expand(r[4])) << r[0];
    EXPECT_EQ(log.Records().size(), 1u) << "queries never log";

    std::filesystem::remove(Settings());  // a file gone later leaves the document read before
    EXPECT_FALSE(env.LoadXML());
    EXPECT_EQ(U8(env.GetLineLookupTable(u"Base")), "./lookup/line.dic");
}

TEST_F(ChartEnvironmentTest, EditsSaveTheWholeFileOrFail) {
    vltest::WriteFile(Settings(), vltest::ReadFile(m_data + "ChartConfig.xml"));
    KGChartEnvironment env;
    const std::string marker = "<Untouched/>\n";  // written before each edit, to see any save
    for (const Row& r : Rows("edits.txt")) {
        SCOPED_TRACE(r[0]);
        vltest::WriteFile(Settings(), marker);
        EXPECT_EQ(Apply(env, r), r[5] == "T");
        const std::string saved = vltest::ReadFile(Settings());
        EXPECT_EQ(saved == marker, r[5] == "F");
        EXPECT_EQ(saved, r.size() > 6 ? vltest::ReadFile(m_data + r[6]) : saved);
    }
    std::filesystem::remove(Settings());
    std::filesystem::create_directory(Settings());  // a save that fails fails the edit
    for (const Row& r : Rows("edits.txt")) EXPECT_FALSE(Apply(env, r)) << r[0];
}

}  // namespace
