// The symbol library: the exchange file's definitions as imported, pictures against expected
// SVG files, every record of the default environment drawn, and check's unknown symbols.
#include "ChartBase/KGChartSymbolLibrary.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <pugixml.hpp>
#include <thread>
#include <utility>
#include <vector>

#include "ChartBase/KGChartColorTable.h"
#include "TestSupport.h"

using KGC::KGChartSymbolKind;
using KGC::KGChartSymbolLibrary;

namespace {

const KGChartSymbolKind kKinds[] = {KGChartSymbolKind::Symbol, KGChartSymbolKind::LineStyle,
                                    KGChartSymbolKind::Pattern};

std::string U8(const PLIX::PlixUnicodeString& s) {
    return s.ToUtf8();
}

std::string Box(const KGC::KGChartSymbolDefinition& d) {
    return std::to_string(d.boxCol) + " " + std::to_string(d.boxRow) + " " +
           std::to_string(d.boxWidth) + " " + std::to_string(d.boxHeight);
}

KGChartSymbolLibrary Load(const std::string& path) {
    KGChartSymbolLibrary library;
    EXPECT_TRUE(library.Load(path)) << path << ": " << U8(library.GetError());
    return library;
}

void ExpectSameAsFile(const std::string& actual, const std::string& name) {
    const std::string path = vltest::TestDataDir() + "symbols/" + name;
    if (std::getenv("VLTEST_UPDATE") != nullptr) vltest::WriteFile(path, actual);
    EXPECT_EQ(actual, vltest::ReadFile(path)) << "differs from " << path;
}

TEST(SymbolLibrary, TheImportedExchangeFileHoldsEveryDefinitionAsItsRecordGivesIt) {
    const std::string exchange = std::string(VLTEST_SHARED_DATA_DIR) + "/preslib/S52RAZDS.RLE";
    if (!vltest::FileExists(exchange)) GTEST_SKIP() << exchange << " is not beside this checkout";
    vltest::TempDir home;
    const vltest::ToolRun run = vltest::RunVlchart("--home " + home.Path() + " import-preslib " +
                                                   exchange + " --style S52 --out " + home.Path());
    ASSERT_EQ(run.status, 0) << run.out << run.err;
    const KGChartSymbolLibrary library = Load(home.File("Symbols/SymbolLibrary.xml"));
    // Names, vector and raster definitions, names with both.
    const std::vector<int> expected[] = {{1012, 459, 712, 159}, {56, 56, 0, 0}, {28, 25, 4, 1}};
    for (int k = 0; k < 3; ++k) {
        std::vector<int> counts = {library.GetCount(kKinds[k]), 0, 0, 0};
        for (const auto& name : library.GetNames(kKinds[k])) {
            const auto& defs = library.Find(kKinds[k], name)->definitions;
            for (const auto& def : defs) ++counts[def.raster ? 2 : 1];
            counts[3] += defs.GetSize() == 2;
        }
        EXPECT_EQ(counts, expected[k]) << KGChartSymbolLibrary::GetKindName(kKinds[k]);
    }
    // Each definition field read here on its own: name, type, then the six numbers.
    std::ifstream in(exchange, std::ios::binary);
    int checked = 0;
    for (std::string line; std::getline(in, line);) {
        const std::string tag = line.substr(0, 4);
        const int k = tag == "SYMD" ? 0 : tag == "LIND" ? 1 : tag == "PATD" ? 2 : -1;
        if (k < 0) continue;
        SCOPED_TRACE(line);
        const auto* record = library.Find(kKinds[k], line.substr(9, 8));
        ASSERT_NE(record, nullptr);
        const bool raster = k != 1 && line[17] == 'R';
        const size_t at = k == 0 ? 18 : k == 1 ? 17 : 34;
        int n[6];
        for (int i = 0; i < 6; ++i) n[i] = std::stoi(line.substr(at + 5 * i, 5));
        for (const auto& d : record->definitions) {
            if (d.raster != raster) continue;
            ++checked;
            EXPECT_EQ(std::vector<int>(
                          {d.pivotCol, d.pivotRow, d.boxWidth, d.boxHeight, d.boxCol, d.boxRow}),
                      std::vector<int>(n, n + 6));
        }
    }
    EXPECT_EQ(checked, 1171 + 56 + 29);
}

TEST(SymbolLibrary, PicturesAreDrawnWhole) {
    const std::string data = vltest::DefaultDataDir();
    const std::string fixture = vltest::TestDataDir() + "import/expected/";
    const struct {
        std::string home;
        KGChartSymbolKind kind;
        const char* name;
    } rows[] = {
        {data, KGChartSymbolKind::Symbol, "BOYLAT13"},     // PM, CI and FP
        {fixture, KGChartSymbolKind::Symbol, "BOYLAT24"},  // SC, in a cycle; ST; a dot
        {data, KGChartSymbolKind::Symbol, "OBSTRN11"},     // raster only
        {data, KGChartSymbolKind::LineStyle, "ACHARE51"},
        {data, KGChartSymbolKind::Pattern, "DIAMOND1"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        const KGChartSymbolLibrary library = Load(row.home + "Symbols/SymbolLibrary.xml");
        KGC::KGChartColorTable colours;
        ASSERT_TRUE(colours.LoadColorTable(row.home + "Colors/DayBright.xml"));
        ExpectSameAsFile(
            U8(library.GetSvg(row.kind, row.name, colours)),
            std::string(KGChartSymbolLibrary::GetKindName(row.kind)) + "-" + row.name + ".svg");
    }
}

TEST(SymbolLibrary, EveryRecordOfTheDefaultDrawsWithTheViewBoxOfItsBox) {
    const std::string data = vltest::DefaultDataDir();
    const KGChartSymbolLibrary library = Load(data + "Symbols/SymbolLibrary.xml");
    KGC::KGChartColorTable colours;
    ASSERT_TRUE(colours.LoadColorTable(data + "Colors/Night.xml"));
    int drawn = 0;
    for (auto kind : kKinds) {
        for (const auto& name : library.GetNames(kind)) {
            SCOPED_TRACE(U8(name));
            pugi::xml_document svg;
            ASSERT_TRUE(svg.load_string(U8(library.GetSvg(kind, name, colours)).c_str()));
            EXPECT_EQ(svg.child("svg").attribute("viewBox").value(),
                      Box(library.Find(kind, name)->definitions[0]));
            ++drawn;
        }
    }
    EXPECT_EQ(drawn, 1096);
    EXPECT_EQ(U8(library.GetSvg(KGChartSymbolKind::Symbol, u"boylat13", colours)), "");
}

TEST(SymbolLibrary, UnreadableFilesBadDefinitionsAndUnknownCommands) {
    KGChartSymbolLibrary library;
    EXPECT_FALSE(library.Load(vltest::TestDataDir() + "symbols/none.xml"));
    EXPECT_EQ(U8(library.GetError()).rfind("cannot be read: ", 0), 0u);
    EXPECT_FALSE(library.Load(vltest::TestDataDir() + "import/expected/Colors/Dusk.xml"));
    EXPECT_EQ(U8(library.GetError()), "the root element is not <SymbolLibrary>");
    // Each definition in a record of its own: the bitmap it gives, or "-" when the record is
    // skipped and counted.
    const std::string raster =
        R"(<Definition type="raster" pivot="1,0" box="0,0,3,2"><Colour letter="A" token="X"/>)";
    // Wider rows, and texts of sixteen bytes and more, are checked sixteen pixels at a time.
    const std::string wide =
        R"(<Definition type="raster" pivot="1,0" box="0,0,20,2"><Colour letter="A" token="X"/>)"
        R"(<Colour letter="B" token="Y"/><Bitmap>)";
    const std::string gap =
        R"(<Definition type="raster" pivot="1,0" box="0,0,3,2"><Colour letter="A" token="X"/>)"
        R"(<Colour letter="C" token="Y"/><Bitmap>)";
    const std::string pad(16, ' ');
    const struct {
        std::string definition;
        const char* bitmap;
    } rows[] = {
        {raster + "<Bitmap>\n    @A@\n    AAA\n  </Bitmap>", "@A@AAA"},
        {raster + "<Bitmap>@A@ AAA" + pad + "</Bitmap>", "@A@AAA"},
        {wide + "AAAAAAAAAAAAAAAAAAAB @@@@@@@@@@@@@@@@@@@@</Bitmap>",
         "AAAAAAAAAAAAAAAAAAAB@@@@@@@@@@@@@@@@@@@@"},
        {wide + "AAAAAAAAAAAAAAAAAAAC @@@@@@@@@@@@@@@@@@@@</Bitmap>", "-"},
        {wide + "AAAAAAACAAAAAAAAAAAA @@@@@@@@@@@@@@@@@@@@</Bitmap>", "-"},
        {gap + "ACA @@@" + pad + "</Bitmap>", "ACA@@@"},
        {gap + "ABA @@@" + pad + "</Bitmap>", "-"},  // between two letters, not one
        {raster + "<Bitmap>@A@ AAA</Bitmap>", "@A@AAA"},
        {R"(<Definition type="vector" pivot="-5,5" box="0,0,10,0"><Vector>PD;</Vector>)", ""},
        {raster + "<Bitmap>@A@AAA</Bitmap>", "-"},        // one run of letters
        {raster + "<Bitmap>@A@ AA</Bitmap>", "-"},        // a short row
        {raster + "<Bitmap>@A@ AAA @@@</Bitmap>", "-"},   // a row too many
        {raster + "<Bitmap>@A@ ABA</Bitmap>", "-"},       // a letter without colour
        {raster + "<Bitmap>@A@ A\u00C4A</Bitmap>", "-"},  // a letter outside ASCII
        {raster, "-"},
        {R"(<Definition type="raster" pivot="0,0" box="0,0,99999999,99999999"><Bitmap>@</Bitmap>)",
         "-"},
        {R"(<Definition type="raster" pivot="0,0" box="0,0,0,2"><Bitmap> </Bitmap>)", "-"},
        {R"(<Definition type="vector" box="0,0,10,10">)", "-"},
        {R"(<Definition type="vector" pivot="5" box="0,0,10,10">)", "-"},
        {R"(<Definition type="vector" pivot="5,5" box="0,0,10,x">)", "-"},
        {R"(<Definition type="vector" pivot="5,5" box="0,0,10,10,">)", "-"},
        {R"(<Definition type="vector" pivot="5,5" box="0,0,-10,10">)", "-"},
        {R"(<Definition type="vector" pivot="5, 5" box="0,0,10,10">)", "-"},
        {R"(<Definition type="vector" pivot="5,1234567890" box="0,0,10,10">)", "-"},
    };
    vltest::TempDir dir;
    for (const auto& row : rows) {
        SCOPED_TRACE(row.definition);
        vltest::WriteFile(dir.File("s.xml"), R"(<SymbolLibrary><Symbol name="X">)" +
                                                 row.definition +
                                                 "</Definition></Symbol></SymbolLibrary>");
        ASSERT_TRUE(library.Load(dir.File("s.xml")));
        const auto* record = library.Find(KGChartSymbolKind::Symbol, u"X");
        EXPECT_EQ(record ? record->definitions[0].bitmap : "-", row.bitmap);
        EXPECT_EQ(library.GetSkippedCount(), record ? 0 : 1);
    }
    ASSERT_TRUE(library.Load(vltest::TestDataDir() + "import/expected/Symbols/SymbolLibrary.xml"));
    const auto& top = library.Find(KGChartSymbolKind::Symbol, u"TOPMAR01")->definitions[1];
    EXPECT_EQ(std::u16string({top.Pixel(2, 0), top.Pixel(0, 3), top.Pixel(5, 0), top.Pixel(0, -1)}),
              u"AB@@");
    PLIX::PlixArray<KGC::KGChartSymbolCommand> commands;
    EXPECT_EQ(KGChartSymbolLibrary::ParseCommands(
                  u"SPA;SW1;PU1,2;PD;XX5;PD1;SPAB;ST4;PM1;CI;SC;PU1,2,3;SCBOY,x;PD99999999999,1;",
                  commands),
              10);
    EXPECT_EQ(commands.GetSize(), 4);
}

// The commands of a record, as text, for comparing whole libraries.
std::string Commands(const KGC::KGChartSymbolRecord& record) {
    std::string text;
    for (const auto& def : record.definitions) {
        for (const auto& c : def.commands) {
            text += std::to_string(static_cast<int>(c.op)) + ":" + std::to_string(c.letter) + ":" +
                    std::to_string(c.value) + ":" + U8(c.name);
            for (const auto& p : c.points)
                text += ":" + std::to_string(p.col) + "," + std::to_string(p.row);
            text += ";";
        }
    }
    return text;
}

TEST(SymbolLibraryThreads, RecordsDecodedAtTheirFirstLookUpAgreeAcrossThreads) {
    const std::string path = vltest::DefaultDataDir() + "Symbols/SymbolLibrary.xml";
    const KGChartSymbolLibrary reference = Load(path);
    std::vector<std::pair<KGChartSymbolKind, PLIX::PlixUnicodeString>> records;
    std::vector<std::string> expected;
    for (const auto kind : kKinds) {
        for (const auto& name : reference.GetNames(kind)) {
            records.emplace_back(kind, name);
            expected.push_back(Commands(*reference.Find(kind, name)));
        }
    }
    for (int round = 0; round < 3; ++round) {
        const KGChartSymbolLibrary library = Load(path);
        std::atomic<int> wrong{0};
        std::vector<std::thread> threads;
        for (size_t t = 0; t < 4; ++t) {
            // Each thread from its own place, so that first look-ups meet.
            threads.emplace_back([&, t] {
                for (size_t k = 0; k < records.size(); ++k) {
                    const size_t i = (k + t * records.size() / 4) % records.size();
                    const auto* record = library.Find(records[i].first, records[i].second);
                    if (record == nullptr || Commands(*record) != expected[i]) ++wrong;
                }
            });
        }
        for (auto& thread : threads) thread.join();
        EXPECT_EQ(wrong.load(), 0) << "round " << round;
    }
}

TEST(SymbolLibrary, SkippedRecordsDoNotShiftTheCommandsOfTheOthers) {
    vltest::TempDir dir;
    const auto symbol = [](const char* name, const char* pen, const char* more) {
        return std::string(R"(<Symbol name=")") + name +
               R"("><Definition type="vector" pivot="0,0" box="0,0,1,1"><Other/><Vector>SP)" + pen +
               ";</Vector></Definition>" + more + "</Symbol>";
    };
    // Elements the library does not know are passed over, wherever they stand.
    vltest::WriteFile(dir.File("s.xml"), "<SymbolLibrary><Note/>" + symbol("A", "A", "") +
                                             symbol("B", "B", R"(<Definition type="raster"/>)") +
                                             symbol("A", "D", "") + symbol("C", "C", "<Extra/>") +
                                             "</SymbolLibrary>");
    KGChartSymbolLibrary library = Load(dir.File("s.xml"));
    EXPECT_EQ(library.GetSkippedCount(), 2);
    std::string pens;
    for (const char16_t* name : {u"A", u"B", u"C"}) {
        const auto* record = library.Find(KGChartSymbolKind::Symbol, name);
        pens += record ? char(record->definitions[0].commands[0].letter) : '-';
    }
    EXPECT_EQ(pens, "A-C");
}

TEST(SymbolLibrary, CheckNamesTheSymbolsTheDefaultLacks) {
    const vltest::ToolRun run =
        vltest::RunVlchart("--home " + vltest::DefaultDataDir() + " check --json");
    const nlohmann::json document = nlohmann::json::parse(run.out);
    std::string names;
    for (const auto& f : document.at("findings")) {
        if (f.at("kind").get<std::string>() != "unknown-symbol") continue;
        const std::string file = f.at("file");
        names += file.substr(file.rfind('/') + 1) + ":" + std::to_string(f.at("line").get<int>()) +
                 " " + f.at("name").get<std::string>() + "\n";
    }
    ExpectSameAsFile(names, "unknown-symbols.txt");
}

}  // namespace
