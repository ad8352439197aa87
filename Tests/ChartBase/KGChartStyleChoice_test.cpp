// The style a feature gets among its object class's look-up entries: the features of
// Tests/Data/style-choice.txt over real entries of the S-52 tables (and a hand-made table where
// those have no example), chosen by the library and by `vlchart lookup`, against the entry named
// by its attribute combination.
#include "ChartBase/KGChartStyleChoice.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

#include "ChartBase/KGChartLookupTable.h"
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

int LibraryChoice(const std::string& file, bool area, const std::string& acronym,
                  const KGFeatureAttributes& feature) {
    KGChartLookupTable table;
    if (area) {
        KGChartLookupAreaItems items;
        if (!table.LoadAreaLookupTable(file) || !table.GetLookupAreaItems(acronym.c_str(), items))
            return -2;
        return KGChooseStyle(items.Styles, feature);
    }
    KGChartLookupPointItems items;
    if (!table.LoadPointLookupTable(file) || !table.GetLookupPointItems(acronym.c_str(), items))
        return -2;
    return KGChooseStyle(items.Styles, feature);
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

}  // namespace
