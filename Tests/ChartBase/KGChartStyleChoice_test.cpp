// The style a feature gets among its object class's look-up entries: the features of
// Tests/Data/style-choice.txt over real entries of the S-52 tables (and a hand-made table where
// those have no example), chosen by the library, by the prepared chooser and by `vlchart lookup`,
// against the entry named by its attribute combination; and the prepared chooser against
// KGChooseStyle on features made from every entry of the real tables.
#include "ChartBase/KGChartStyleChoice.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGChartStyleChooser.h"
#include "ChartBase/KGS57Dictionary.h"
#include "TestSupport.h"

using namespace KGC;

namespace {

// The position of the entry among the acronym's entries of the file, read from the text.
int EntryIndex(const std::string& file, const std::string& acronym,
               const std::string& combination) {
    if (combination == "(none)") return -1;
    std::istringstream lines(vltest::ReadFile(file));
    const std::string prefix = "\"" + acronym + "\",\"";
    int index = 0;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(prefix, 0) != 0) continue;
        if (line.substr(prefix.size(), line.find('"', prefix.size()) - prefix.size()) ==
            (combination == "(any)" ? "" : combination))
            return index;
        ++index;
    }
    ADD_FAILURE() << acronym << " has no entry " << combination << " in " << file;
    return -2;
}

// The choice of KGChooseStyle, after checking that the prepared chooser picks the same style.
template <typename Items, typename Load, typename Get, typename Prepared>
int LibraryChoice(Load load, Get get, Prepared prepared, const std::string& file,
                  const std::string& acronym, const KGFeatureAttributes& feature) {
    KGChartLookupTable table;
    Items items;
    if (!(table.*load)(file) || !(table.*get)(acronym.c_str(), items)) return -2;
    const int i = KGChooseStyle(items.Styles, feature);
    EXPECT_EQ((KGChartStyleChooser(table).*prepared)(acronym.c_str(), feature),
              i < 0 ? nullptr : items.Styles[i]);
    return i;
}

int LibraryChoice(const std::string& file, bool area, const std::string& acronym,
                  const KGFeatureAttributes& feature) {
    if (area) {
        return LibraryChoice<KGChartLookupAreaItems>(
            &KGChartLookupTable::LoadAreaLookupTable, &KGChartLookupTable::GetLookupAreaItems,
            &KGChartStyleChooser::ChooseArea, file, acronym, feature);
    }
    return LibraryChoice<KGChartLookupPointItems>(
        &KGChartLookupTable::LoadPointLookupTable, &KGChartLookupTable::GetLookupPointItems,
        &KGChartStyleChooser::ChoosePoint, file, acronym, feature);
}

TEST(StyleChoice, TheEntryWithTheMostConditionsThatHoldWins) {
    VLTEST_REQUIRE_REAL_DATA();
    std::istringstream rows(vltest::ReadFile(vltest::TestDataDir() + "style-choice.txt"));
    std::string loaded;
    int count = 0;
    for (std::string line; std::getline(rows, line);) {
        std::istringstream fields(line);
        std::string table, acronym, attributes, combination;
        if (!(fields >> table >> acronym >> attributes >> combination) || table[0] == '#') continue;
        ++count;
        SCOPED_TRACE(line);
        const bool area = table.rfind("Area", 0) == 0;
        const std::string home =
            table == "Areas" ? vltest::TestDataDir() + "tool/home/" : vltest::RealDataDir();
        vltest::ModulePathOverride module(home);
        // Condition values are typed by the attribute dictionary of the same home.
        if (loaded != home) KGS57Config::GetInstance()->LoadDicts();
        loaded = home;

        KGFeatureAttributes feature;
        std::string arguments = "--home '" + home + "' lookup " + acronym + " --geometry " +
                                (area ? "area" : "point") +
                                (table == "PointPaperChart" ? " --symbols paperchart" : "");
        std::istringstream pairs(attributes);
        for (std::string pair; std::getline(pairs, pair, ';');) {
            const size_t equals = pair.find('=');
            feature.SetAt(PLIX::PlixUnicodeString(pair.substr(0, equals)),
                          PLIX::PlixUnicodeString(pair.substr(equals + 1)));
            arguments += " --attr '" + pair + "'";
        }
        const std::string file = home + "Lookup/" + table + ".dic";
        const int expected = EntryIndex(file, acronym, combination);
        EXPECT_EQ(LibraryChoice(file, area, acronym, feature), expected);

        const vltest::ToolRun run = vltest::RunVlchart(arguments + " --json");
        ASSERT_EQ(run.status, 0) << run.err;
        const auto chosen = nlohmann::json::parse(run.out).at("chosen");
        EXPECT_EQ(chosen.is_null() ? -1 : chosen.get<int>(), expected) << run.out;
    }
    EXPECT_EQ(count, 31) << "features read from style-choice.txt";
}

// Features that meet every condition of one entry, and variations of each that move the choice
// elsewhere or should not: an attribute left out, present without a value, written with a
// leading zero or blanks, with one more list element, or beside attributes of no condition.
template <typename Style>
std::vector<KGFeatureAttributes> FeaturesFor(const Style& style) {
    KGFeatureAttributes base;
    for (const auto& c : style.AttributeConditions) {
        if (c.AttributeAcronym.IsEmpty() || c.TextValue == PLIX::PlixUnicodeString(u"?")) continue;
        base.SetAt(c.AttributeAcronym, c.IntegerValue != 0     ? std::to_string(c.IntegerValue)
                                       : c.TextValue.IsEmpty() ? PLIX::PlixUnicodeString(u"1")
                                                               : c.TextValue);
    }
    std::vector<KGFeatureAttributes> features{base};
    for (const auto& entry : base) {
        for (const char16_t* change : {u"drop", u"", u" 0%s ", u" %s ", u"%s,1"}) {
            KGFeatureAttributes f = base;
            if (change == std::u16string(u"drop")) {
                f.RemoveKey(entry.first);
            } else {
                std::u16string value = change;
                const size_t at = value.find(u"%s");
                if (at != std::u16string::npos) value.replace(at, 2, entry.second.Str());
                f.SetAt(entry.first, PLIX::PlixUnicodeString(value));
            }
            features.push_back(f);
        }
    }
    // Attributes no condition of the class names, sorting before and after its own, and one
    // whose acronym is too long for the chooser's packed keys.
    for (const auto& extra : {std::vector<const char16_t*>{u"AAAAAA", u"ZZZZZZ"},
                              std::vector<const char16_t*>{u"LONGATTRIBUTE"}}) {
        KGFeatureAttributes f = base;
        for (const char16_t* acronym : extra) f.SetAt(acronym, u"1");
        features.push_back(f);
    }
    return features;
}

template <typename Map, typename Prepared>
void CompareOverTable(const Map& map, const KGChartStyleChooser& chooser, Prepared prepared,
                      int& features) {
    for (const auto& group : map) {
        for (const auto* style : group.second.Styles) {
            for (const KGFeatureAttributes& feature : FeaturesFor(*style)) {
                const int i = KGChooseStyle(group.second.Styles, feature);
                ++features;
                if ((chooser.*prepared)(group.first, feature) !=
                    (i < 0 ? nullptr : group.second.Styles[i]))
                    ADD_FAILURE() << group.first.ToUtf8() << " gets entry " << i;
            }
        }
    }
}

TEST(StyleChoice, ThePreparedChooserAgreesOnEveryEntryOfTheRealTables) {
    VLTEST_REQUIRE_REAL_DATA();
    vltest::ModulePathOverride module(vltest::RealDataDir());
    KGS57Config::GetInstance()->LoadDicts();
    const std::string lookup = vltest::RealDataDir() + "Lookup/";
    int features = 0;
    for (const char* points : {"PointPaperChart", "PointSimplified"}) {
        KGChartLookupTable table;
        ASSERT_TRUE(table.LoadPointLookupTable(lookup + points + ".dic"));
        const KGChartStyleChooser chooser(table);
        CompareOverTable(table.GetPointTable(), chooser, &KGChartStyleChooser::ChoosePoint,
                         features);
        // An acronym the table lacks gets the "######" entries, as the query hands them out.
        KGChartLookupPointItems unknown;
        ASSERT_TRUE(table.GetLookupPointItems(u"XXXXXX", unknown));
        EXPECT_EQ(chooser.ChoosePoint(u"XXXXXX", {}), KGChooseStyle(unknown, {}));
        EXPECT_NE(KGChooseStyle(unknown, {}), nullptr);
    }
    for (const char* areas : {"AreaPlain", "AreaSymbolized"}) {
        KGChartLookupTable table;
        ASSERT_TRUE(table.LoadAreaLookupTable(lookup + areas + ".dic"));
        CompareOverTable(table.GetAreaTable(), KGChartStyleChooser(table),
                         &KGChartStyleChooser::ChooseArea, features);
    }
    KGChartLookupTable lines;
    ASSERT_TRUE(lines.LoadLineLookupTable(lookup + "Lines.dic"));
    CompareOverTable(lines.GetLineTable(), KGChartStyleChooser(lines),
                     &KGChartStyleChooser::ChooseLine, features);
    EXPECT_GT(features, 10000);
}

}  // namespace
