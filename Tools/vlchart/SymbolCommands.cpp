// vlchart symbol, symbols: the records of the style's symbol library, a record's commands
// decoded, its SVG picture, and the gallery of every record in the colours of a mode.
#include <cstdio>
#include <iostream>

#include "Base/KGMarkup.h"
#include "ChartBase/KGChartSymbolLibrary.h"
#include "Output.h"
#include "Tool.h"

using KGC::KGChartSymbolKind;
using KGC::KGChartSymbolLibrary;
using KGC::KGChartSymbolRecord;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

const KGChartSymbolKind kKinds[] = {KGChartSymbolKind::Symbol, KGChartSymbolKind::LineStyle,
                                    KGChartSymbolKind::Pattern};

struct SymbolOptions {
    std::string name;
    std::string kind;  // empty: every kind
    std::string mode = "DayBright";
    std::string svg;
    std::string sheet;
};

KGChartSymbolLibrary LoadLibrary(Session& session, const PlixUnicodeString& style,
                                 std::string& file) {
    file = Utf8(session.Environment().GetSymbolLibraryAbsolutePath(style));
    if (file.empty()) {
        throw ToolError(kExitFound, "style '" + Utf8(style) + "' names no symbol library in " +
                                        session.SettingsPath());
    }
    KGChartSymbolLibrary library;
    if (!library.Load(Utf16(file)))
        throw ToolError(kExitFound, file + ": " + Utf8(library.GetError()));
    return library;
}

std::vector<KGChartSymbolKind> KindsOf(const std::string& kind) {
    std::vector<KGChartSymbolKind> kinds;
    for (auto k : kKinds) {
        if (kind.empty() || kind == KGChartSymbolLibrary::GetKindName(k)) kinds.push_back(k);
    }
    return kinds;
}

Json RecordJson(const KGChartSymbolRecord& record) {
    Json definitions = Json::array();
    for (const auto& def : record.definitions) {
        Json colours = Json::object();
        for (const auto& c : def.colours)
            colours[Utf8(std::u16string(1, c.letter))] = Utf8(c.token);
        definitions.push_back({{"type", def.raster ? "raster" : "vector"},
                               {"pivot", {def.pivotCol, def.pivotRow}},
                               {"box", {def.boxCol, def.boxRow, def.boxWidth, def.boxHeight}},
                               {"colours", colours}});
    }
    return {{"name", Utf8(record.name)},
            {"kind", KGChartSymbolLibrary::GetKindName(record.kind)},
            {"description", Utf8(record.description)},
            {"definitions", definitions}};
}

std::string Points(const KGC::KGChartSymbolCommand& c) {
    std::string text;
    for (const auto& p : c.points) {
        text += (text.empty() ? "" : " ") + std::to_string(p.col) + "," + std::to_string(p.row);
    }
    return text;
}

// One command as the exchange file writes it, spelled out.
std::vector<std::string> CommandRow(const KGC::KGChartSymbolCommand& c,
                                    const KGC::KGChartSymbolDefinition& def) {
    using Op = KGC::KGChartSymbolCommand::Op;
    const std::string value = std::to_string(c.value);
    switch (c.op) {
        case Op::SelectPen: {
            const std::string token = Utf8(def.ColourToken(c.letter));
            return {"SP", Utf8(std::u16string(1, c.letter)),
                    "pen of colour " + (token.empty() ? "(not defined)" : token)};
        }
        case Op::PenWidth: {
            char mm[32];
            std::snprintf(mm, sizeof mm, "pen width %.2f mm", c.value * 0.32);
            return {"SW", value, mm};
        }
        case Op::Transparency:
            return {"ST", value, std::to_string(c.value * 25) + " % transparent"};
        case Op::PenUp:
            return {"PU", Points(c), "move"};
        case Op::PenDown:
            return {"PD", Points(c), c.points.IsEmpty() ? "dot at the pen" : "draw"};
        case Op::Circle:
            return {"CI", value, "circle of this radius at the pen"};
        case Op::PolygonMode:
            return {"PM", value, c.value == 0 ? "polygon opens at the pen" : "polygon closes"};
        case Op::FillPolygon:
            return {"FP", "", "fill the polygon"};
        case Op::DrawSymbol:
            return {"SC", Utf8(c.name) + "," + value, "draw the symbol at the pen"};
    }
    return {};
}

void WriteRecord(const KGChartSymbolRecord& record) {
    std::cout << Utf8(record.name) << "  (" << KGChartSymbolLibrary::GetKindName(record.kind)
              << ")  " << Utf8(record.description) << '\n';
    if (record.kind == KGChartSymbolKind::Pattern) {
        std::cout << "  fill " << Utf8(record.fill) << ", spacing " << Utf8(record.spacing)
                  << ", distance " << record.minDistance << " to " << record.maxDistance << '\n';
    }
    for (const auto& def : record.definitions) {
        std::cout << "  " << (def.raster ? "raster" : "vector") << " definition: pivot "
                  << def.pivotCol << "," << def.pivotRow << "; box " << def.boxCol << ","
                  << def.boxRow << " " << def.boxWidth << "x" << def.boxHeight
                  << (def.raster ? " pixels" : " (0.01 mm)") << '\n';
        Table lines(4);
        for (const auto& c : def.colours)
            lines.Row({"colour", Utf8(std::u16string(1, c.letter)), Utf8(c.token)});
        for (const auto& c : def.commands) lines.Row(CommandRow(c, def));
        for (int y = 0; def.raster && y < def.boxHeight; ++y) {
            std::string row;  // the letters are ASCII
            for (int x = 0; x < def.boxWidth; ++x) row += static_cast<char>(def.Pixel(x, y));
            lines.Row({row});
        }
        lines.Write(std::cout);
    }
}

int Symbol(Session& session, const SymbolOptions& options) {
    const PlixUnicodeString style = session.Style();
    std::string file;
    const KGChartSymbolLibrary library = LoadLibrary(session, style, file);
    const KGChartSymbolRecord* record = nullptr;
    for (auto kind : KindsOf(options.kind)) {
        record = library.Find(kind, Utf16(options.name));
        if (record != nullptr) break;
    }
    if (record == nullptr) {
        throw ToolError(kExitFound, (options.kind.empty() ? "symbol" : options.kind) + " '" +
                                        options.name + "' not found in " + file);
    }
    if (!options.svg.empty()) {
        std::string colours;
        const auto table = LoadTable(
            session, style, KGC::KGChartColorMode::GetColorMode(Utf16(options.mode)), colours);
        KGC::KGMarkup picture(library.GetSvg(record->kind, record->name, table));
        if (!picture.Save(Utf16(options.svg)))
            throw ToolError(kExitUsage, options.svg + ": cannot write the picture");
    }
    if (session.Json()) {
        WriteJson(std::cout, RecordJson(*record));
    } else {
        WriteRecord(*record);
        if (!options.svg.empty()) std::cout << "picture written to " << options.svg << '\n';
    }
    return kExitOk;
}

int Symbols(Session& session, const SymbolOptions& options) {
    const PlixUnicodeString style = session.Style();
    std::string file;
    const KGChartSymbolLibrary library = LoadLibrary(session, style, file);
    const std::vector<KGChartSymbolKind> kinds = KindsOf(options.kind);
    if (!options.sheet.empty()) {
        std::string colours;
        const auto mode = KGC::KGChartColorMode::GetColorMode(Utf16(options.mode));
        const auto table = LoadTable(session, style, mode, colours);
        PLIX::PlixArray<KGChartSymbolKind> chosen;
        for (auto k : kinds) chosen.Add(k);
        const std::string title = "Symbol library of style " + Utf8(style) + ", " +
                                  Utf8(KGC::KGChartColorMode::GetColorModeName(mode));
        if (!library.SaveGallery(Utf16(options.sheet), table, Utf16(title), chosen))
            throw ToolError(kExitUsage, options.sheet + ": cannot write the gallery");
    }
    Json list = Json::array();
    Table text(0);
    for (auto kind : kinds) {
        for (const auto& name : library.GetNames(kind)) {
            const KGChartSymbolRecord& record = *library.Find(kind, name);
            list.push_back(RecordJson(record));
            std::string types;
            for (const auto& def : record.definitions)
                types += (types.empty() ? "" : "+") + std::string(def.raster ? "raster" : "vector");
            text.Row({Utf8(name), KGChartSymbolLibrary::GetKindName(kind), types,
                      Utf8(record.description)});
        }
    }
    if (session.Json()) {
        Json doc = {{"symbols", list}};
        if (!options.sheet.empty()) doc["sheet"] = options.sheet;
        WriteJson(std::cout, doc);
        return kExitOk;
    }
    text.Write(std::cout);
    std::cout << '\n' << Count(list.size(), "record") << " in " << file << '\n';
    if (!options.sheet.empty()) std::cout << "gallery written to " << options.sheet << '\n';
    return kExitOk;
}

void AddCommon(CLI::App* command, SymbolOptions& options) {
    command->add_option("--kind", options.kind, "symbol, line or pattern (default: every kind)")
        ->check(CLI::IsMember({"symbol", "line", "pattern"}));
    command->add_option("--mode", options.mode, "colour mode of the pictures (default: DayBright)")
        ->transform(CLI::IsMember({"DayBright", "Dusk", "Night"}, CLI::ignore_case));
}

}  // namespace

void RegisterSymbols(CLI::App& app, Commands& commands) {
    auto options = std::make_shared<SymbolOptions>();
    CLI::App* symbol = app.add_subcommand(
        "symbol", "one record of the style's symbol library: definitions and commands decoded");
    symbol->add_option("NAME", options->name, "symbol, line style or pattern name, as BOYLAT13")
        ->required();
    AddCommon(symbol, *options);
    symbol->add_option("--svg", options->svg, "write the record's picture as SVG");
    commands.Add(symbol, [options](Session& s) { return Symbol(s, *options); });

    CLI::App* symbols = app.add_subcommand(
        "symbols", "every record of the style's symbol library, or with --sheet their gallery");
    AddCommon(symbols, *options);
    symbols->add_option("--sheet", options->sheet,
                        "write one labelled SVG gallery of every record listed");
    commands.Add(symbols, [options](Session& s) { return Symbols(s, *options); });
}

}  // namespace vlchart
