// vlchart import-preslib: the look-up and colour tables of the S-52 presentation library,
// read from its exchange file and written in our own formats, then named in the settings
// file as a display style.
#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <iostream>

#include "Base/KGFile.h"
#include "Base/KGMarkup.h"
#include "ChartBase/KGChartSymbolLibrary.h"
#include "ImportText.h"
#include "Output.h"
#include "PreslibReader.h"
#include "Tool.h"

using KGC::KGChartColorMode;
using KGC::KGChartDisplayStyle;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

namespace fs = std::filesystem;

struct PreslibOptions {
    std::string file;
    std::string style;
    std::string out;
    std::string paper;
};

// The look-up tables in the order the settings file and the summary list them.
struct LookupFile {
    const char* table;
    const char* file;
};
constexpr LookupFile kLookupFiles[] = {{"SIMPLIFIED", "Lookup/PointSimplified.dic"},
                                       {"PAPER_CHART", "Lookup/PointPaperChart.dic"},
                                       {"LINES", "Lookup/Lines.dic"},
                                       {"PLAIN_BOUNDARIES", "Lookup/AreaPlain.dic"},
                                       {"SYMBOLIZED_BOUNDARIES", "Lookup/AreaSymbolized.dic"}};

struct ColourFile {
    KGC::KGS52ColorMode mode;
    const char* file;
};

// The colour tables written, by their name in either edition; the others are only counted.
const std::map<std::string, ColourFile>& ColourFiles() {
    static const std::map<std::string, ColourFile> files = {
        {"DAY_BRIGHT", {KGChartColorMode::DayBright, "Colors/DayBright.xml"}},
        {"DAY", {KGChartColorMode::DayBright, "Colors/DayBright.xml"}},
        {"DUSK", {KGChartColorMode::Dusk, "Colors/Dusk.xml"}},
        {"NIGHT", {KGChartColorMode::Night, "Colors/Night.xml"}}};
    return files;
}

// sRGB (IEC 61966-2-1) of a CIE xyL colour: Y = L / 100, D65 white, each linear channel
// clipped to [0, 1] before the sRGB transfer curve.
std::array<int, 3> ToRgb(const PreslibColour& colour) {
    const double Y = std::min(1.0, std::max(0.0, colour.luminance / 100.0));
    double X = 0;
    double Z = 0;
    if (colour.y > 0) {
        X = colour.x * Y / colour.y;
        Z = (1.0 - colour.x - colour.y) * Y / colour.y;
    }
    const double linear[3] = {3.2406 * X - 1.5372 * Y - 0.4986 * Z,
                              -0.9689 * X + 1.8758 * Y + 0.0415 * Z,
                              0.0557 * X - 0.2040 * Y + 1.0570 * Z};
    std::array<int, 3> rgb{};
    for (int i = 0; i < 3; ++i) {
        const double c = std::min(1.0, std::max(0.0, linear[i]));
        const double encoded = c <= 0.0031308 ? 12.92 * c : 1.055 * std::pow(c, 1 / 2.4) - 0.055;
        rgb[i] = static_cast<int>(std::lround(encoded * 255.0));
    }
    return rgb;
}

void WriteLookup(const std::vector<PreslibLookup>& entries, const std::string& path) {
    std::string text;
    for (const auto& e : entries) {
        const std::string fields[] = {e.acronym,
                                      e.attributes,
                                      e.instructions,
                                      std::to_string(e.priority),
                                      std::string(1, e.radar),
                                      e.category,
                                      e.viewingGroup};
        for (size_t i = 0; i < 7; ++i) text += (i ? ",\"" : "\"") + fields[i] + "\"";
        // Line ends as the look-up tables of the presentation library have them.
        text += "\r\n";
    }
    std::string error;
    if (!WriteBytes(path, text, error)) throw ToolError(kExitUsage, "cannot write " + error);
}

void WriteColours(const PreslibColourTable& table, const std::string& path) {
    KGC::KGMarkup doc;
    bool ok = doc.AddElem(u"Colors") && doc.IntoElem();
    for (const auto& colour : table.colours) {
        const std::array<int, 3> rgb = ToRgb(colour);
        ok = ok && doc.AddElem(u"Color") && doc.SetAttrib(u"token", Utf16(colour.token)) &&
             doc.AddChildElem(u"RGB", Utf16(std::to_string(rgb[0]) + "," + std::to_string(rgb[1]) +
                                            "," + std::to_string(rgb[2])));
    }
    if (!ok || !doc.Save(Utf16(path))) {
        throw ToolError(kExitUsage, path + ": cannot write: " + Utf8(doc.GetError()));
    }
}

// The symbol library's sections: record type, element, the kind's name in the summary.
struct SymbolKind {
    const char* type;
    const char16_t* element;
    const char* label;
    KGC::KGChartSymbolKind kind;
};
constexpr SymbolKind kSymbolKinds[] = {
    {"SYMB", u"Symbol", "symbols", KGC::KGChartSymbolKind::Symbol},
    {"LNST", u"LineStyle", "line styles", KGC::KGChartSymbolKind::LineStyle},
    {"PATT", u"Pattern", "patterns", KGC::KGChartSymbolKind::Pattern}};
constexpr char kSymbolFile[] = "Symbols/SymbolLibrary.xml";

struct SymbolCount {
    int names = 0;
    int vector = 0;
    int raster = 0;
};

struct UnknownCommands {
    std::string name;
    std::string kind;
    int count;
};

std::string Numbers(std::initializer_list<int> numbers) {
    std::string text;
    for (int n : numbers) text += (text.empty() ? "" : ",") + std::to_string(n);
    return text;
}

// A raster's rows one a line, indented one step below <Bitmap> (the two spaces a level that
// KGMarkup writes at), so that the file shows the picture; the loader ignores the white space.
PlixUnicodeString Bitmap(const std::vector<std::string>& rows) {
    std::string text;
    for (const auto& row : rows) text += "\n        " + row;
    return Utf16(text + "\n      ");
}

// Writes the symbols, line styles and patterns, each name once with its definitions (the
// vector one first); counts them, and the vector commands the library would not know.
std::vector<SymbolCount> WriteSymbols(const Preslib& library, const std::string& path,
                                      std::vector<UnknownCommands>& unknown) {
    KGC::KGMarkup doc;
    bool ok = doc.AddElem(u"SymbolLibrary") && doc.IntoElem();
    std::vector<SymbolCount> counts;
    for (const SymbolKind& kind : kSymbolKinds) {
        counts.emplace_back();
        const auto found = library.symbols.find(kind.type);
        if (found == library.symbols.end()) continue;
        for (const auto& entry : found->second) {
            const PreslibSymbol& symbol = entry.second;
            ++counts.back().names;
            ok = ok && doc.AddElem(kind.element) && doc.SetAttrib(u"name", Utf16(symbol.name));
            if (!symbol.fill.empty()) {
                ok = ok && doc.SetAttrib(u"fill", Utf16(symbol.fill)) &&
                     doc.SetAttrib(u"spacing", Utf16(symbol.spacing)) &&
                     doc.SetAttrib(u"minDistance", symbol.minDistance) &&
                     doc.SetAttrib(u"maxDistance", symbol.maxDistance);
            }
            ok = ok && doc.AddChildElem(u"Description", Utf16(symbol.description));
            std::vector<const PreslibDefinition*> definitions;
            for (const auto& def : symbol.definitions) definitions.push_back(&def);
            std::stable_sort(definitions.begin(), definitions.end(),
                             [](auto* a, auto* b) { return a->type == 'V' && b->type != 'V'; });
            int bad = 0;
            for (const PreslibDefinition* def : definitions) {
                ++(def->type == 'V' ? counts.back().vector : counts.back().raster);
                ok = ok && doc.AddChildElem(u"Definition") &&
                     doc.SetChildAttrib(u"type", def->type == 'V' ? u"vector" : u"raster") &&
                     doc.SetChildAttrib(u"pivot", Utf16(Numbers({def->pivotCol, def->pivotRow}))) &&
                     doc.SetChildAttrib(u"box", Utf16(Numbers({def->boxCol, def->boxRow,
                                                               def->boxWidth, def->boxHeight}))) &&
                     doc.IntoElem();
                for (const auto& colour : def->colours) {
                    ok = ok && doc.AddChildElem(u"Colour") &&
                         doc.SetChildAttrib(u"letter", Utf16(std::string(1, colour.first))) &&
                         doc.SetChildAttrib(u"token", Utf16(colour.second));
                }
                if (def->type == 'V') {
                    ok = ok && doc.AddChildElem(u"Vector", Utf16(def->vector));
                    PLIX::PlixArray<KGC::KGChartSymbolCommand> commands;
                    bad += KGC::KGChartSymbolLibrary::ParseCommands(Utf16(def->vector), commands);
                }
                if (def->type == 'R') ok = ok && doc.AddChildElem(u"Bitmap", Bitmap(def->rows));
                ok = ok && doc.OutOfElem();
            }
            if (bad > 0) {
                unknown.push_back(
                    {symbol.name, KGC::KGChartSymbolLibrary::GetKindName(kind.kind), bad});
            }
        }
    }
    if (!ok || !doc.Save(Utf16(path))) {
        throw ToolError(kExitUsage, path + ": cannot write: " + Utf8(doc.GetError()));
    }
    return counts;
}

// The default environment of the library, whatever --home and VLCHART_HOME say: the
// dictionaries a new home starts with.
std::string DefaultHome() {
    return Utf8(KGC::KGFile::GetDefaultDataPath());
}

// Names the tables in the style, creating it (or recreating it with the right type) where
// needed. files: point simplified, point paper chart, line, area plain, area symbolized.
void SetStyle(Session& session, const std::string& name, KGC::KGChartDisplayStyleType type,
              const std::vector<std::string>& lookups,
              const std::map<KGC::KGS52ColorMode, std::string>& colours,
              const std::string& symbols) {
    auto& env = session.Environment();
    const PlixUnicodeString style = Utf16(name);
    auto set = [&]() {
        // A paper-chart style takes the paper-chart points, the lines and the symbolized areas.
        bool ok = env.SetPointLookupTableFile(Utf16(lookups[1]), style, 0) &&
                  env.SetLineLookupTableFile(Utf16(lookups[2]), style) &&
                  env.SetAreaLookupTableFile(Utf16(lookups[4]), style, 1);
        if (type == KGChartDisplayStyle::ENC) {
            ok = ok && env.SetPointLookupTableFile(Utf16(lookups[0]), style, 1) &&
                 env.SetAreaLookupTableFile(Utf16(lookups[3]), style, 0);
        }
        for (const auto& colour : colours) {
            if (type == KGChartDisplayStyle::PaperChart &&
                colour.first != KGChartColorMode::DayBright) {
                continue;
            }
            ok = ok && env.SetColorTable(Utf16(colour.second), style, colour.first);
        }
        return ok && env.SetSymbolLibrary(Utf16(symbols), style);
    };
    // An existing style of this type keeps its place; one of another type or with missing
    // elements is built afresh.
    if (env.GetStyleType(style) == type && set()) return;
    env.RemoveStyle(style);
    if (!env.AddNewStyle(style, type) || !set()) {
        throw ToolError(kExitUsage, session.SettingsPath() + ": cannot store the style " + name);
    }
}

int Import(Session& session, const PreslibOptions& options) {
    std::string bytes;
    if (!ReadBytes(options.file, bytes))
        throw ToolError(kExitUsage, options.file + ": cannot read");
    const Preslib library = ParsePreslib(bytes);

    std::string out = options.out.empty() ? session.Home() + options.style : options.out;
    std::error_code ec;
    for (const char* sub : {"Lookup", "Colors", "Symbols"})
        fs::create_directories(fs::path(out) / sub, ec);
    if (ec) throw ToolError(kExitUsage, out + ": cannot create: " + ec.message());
    out = fs::canonical(out, ec).string() + "/";

    Json lookupJson = Json::array();
    Table lookupText(4);
    std::vector<std::string> lookups;
    for (const auto& table : kLookupFiles) {
        static const std::vector<PreslibLookup> kNone;
        const auto found = library.lookups.find(table.table);
        const auto& entries = found == library.lookups.end() ? kNone : found->second;
        WriteLookup(entries, out + table.file);
        lookups.push_back(out + table.file);
        lookupText.Row({table.file, std::to_string(entries.size())});
        lookupJson.push_back({{"file", table.file}, {"entries", entries.size()}});
    }

    Json colourJson = Json::array();
    Table colourText(4);
    std::map<KGC::KGS52ColorMode, std::string> colours;
    for (const auto& table : library.colourTables) {
        const auto file = ColourFiles().find(table.name);
        const bool written = file != ColourFiles().end() && !colours.count(file->second.mode);
        if (written) {
            WriteColours(table, out + file->second.file);
            colours[file->second.mode] = out + file->second.file;
        }
        colourText.Row({table.name, std::to_string(table.colours.size()),
                        written ? file->second.file : "(not imported)"});
        colourJson.push_back({{"table", table.name},
                              {"colours", table.colours.size()},
                              {"file", written ? Json(file->second.file) : Json(nullptr)}});
    }

    std::vector<UnknownCommands> unknown;
    const std::vector<SymbolCount> symbolCounts = WriteSymbols(library, out + kSymbolFile, unknown);
    Json symbolJson = {{"file", kSymbolFile}};
    Table symbolText(4);
    for (size_t i = 0; i < symbolCounts.size(); ++i) {
        const SymbolCount& c = symbolCounts[i];
        symbolText.Row(
            {kSymbolKinds[i].label, Count(c.names, "name"),
             std::to_string(c.vector) + " vector, " + std::to_string(c.raster) + " raster"});
        symbolJson[kSymbolKinds[i].type] = {
            {"names", c.names}, {"vector", c.vector}, {"raster", c.raster}};
    }
    Json unknownJson = Json::array();
    Table unknownText(4);
    for (const auto& u : unknown) {
        unknownJson.push_back({{"name", u.name}, {"kind", u.kind}, {"commands", u.count}});
        unknownText.Row({u.name, u.kind, Count(u.count, "command")});
    }
    symbolJson["unknownCommands"] = unknownJson;

    if (!KGC::KGFile::IsExist(Utf16(session.SettingsPath())) &&
        !KGC::KGChartEnvironment::CreateSettingsFile(Utf16(session.SettingsPath()),
                                                     Utf16(DefaultHome() + "Dictionary/"))) {
        throw ToolError(kExitUsage, session.SettingsPath() + ": cannot create");
    }
    if (!session.Environment().LoadXML()) {
        throw ToolError(kExitUsage, session.SettingsPath() + ": cannot be read");
    }
    Json styles = Json::array();
    styles.push_back({{"name", options.style}, {"type", "ENC"}});
    SetStyle(session, options.style, KGChartDisplayStyle::ENC, lookups, colours, out + kSymbolFile);
    if (!options.paper.empty()) {
        SetStyle(session, options.paper, KGChartDisplayStyle::PaperChart, lookups, colours,
                 out + kSymbolFile);
        styles.push_back({{"name", options.paper}, {"type", "PaperChart"}});
    }

    Json skipped = Json::object();
    Table skippedText(4);
    for (const auto& type : library.skipped) {
        skipped[type.first] = type.second;
        skippedText.Row({type.first, std::to_string(type.second)});
    }
    Json malformed = Json::array();
    Table malformedText(4);
    for (const auto& problem : library.malformed) {
        malformed.push_back({{"line", problem.line}, {"problem", problem.message}});
        malformedText.Row({"line " + std::to_string(problem.line) + ": " + problem.message});
    }
    const int status = library.malformed.empty() ? kExitOk : kExitFound;
    if (session.Json()) {
        WriteJson(std::cout, {{"input", options.file},
                              {"out", out},
                              {"settings", session.SettingsPath()},
                              {"styles", styles},
                              {"lookupTables", lookupJson},
                              {"colourTables", colourJson},
                              {"symbolLibrary", symbolJson},
                              {"skippedRecords", skipped},
                              {"malformedRecords", malformed}});
        return status;
    }
    std::cout << "Imported " << options.file << " into " << out << "\n";
    std::cout << "Style " << options.style << " (ENC)";
    if (!options.paper.empty()) std::cout << " and " << options.paper << " (PaperChart)";
    std::cout << " stored in " << session.SettingsPath() << "\n\nLook-up tables (entries):\n";
    lookupText.Write(std::cout);
    std::cout << "\nColour tables (colours):\n";
    colourText.Write(std::cout);
    std::cout << "\nSymbol library (" << kSymbolFile << "):\n";
    symbolText.Write(std::cout);
    std::cout << "\nUnknown vector commands, left out (" << Count(unknown.size(), "record")
              << "):\n";
    unknownText.Write(std::cout);
    std::cout << "\nSkipped record types (records):\n";
    if (skippedText.Empty()) std::cout << "    none\n";
    skippedText.Write(std::cout);
    std::cout << "\nMalformed records (" << library.malformed.size() << "):\n";
    malformedText.Write(std::cout);
    return status;
}

}  // namespace

void RegisterImportPreslib(CLI::App& app, Commands& commands) {
    auto options = std::make_shared<PreslibOptions>();
    CLI::App* command = app.add_subcommand(
        "import-preslib",
        "import the look-up and colour tables and the symbol library of the S-52 presentation "
        "library from its exchange file (editions 3.x and 4.0) as a display style");
    command->add_option("FILE", options->file, "the exchange file (e.g. S52RAZDS.RLE)")->required();
    command->add_option("--style", options->style, "name of the ENC style to store")->required();
    command->add_option("--out", options->out,
                        "directory for the tables (default: <home>/<style name>/)");
    command->add_option("--paper", options->paper,
                        "also store a paper-chart style of this name (paper-chart points, lines, "
                        "symbolized areas)");
    commands.Add(
        command, [options](Session& s) { return Import(s, *options); }, false);
}

}  // namespace vlchart
