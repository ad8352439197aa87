// vlchart color, colors: the colours of a style by token and colour mode, as numbers, hex and
// swatches, and the palette of all its colour tables as one SVG picture.
#include <algorithm>
#include <iostream>
#include <map>

#include "Base/KGMarkup.h"
#include "Base/PlixTypes.h"
#include "ChartBase/KGChartColorTable.h"
#include "Output.h"
#include "Tool.h"

using KGC::KGChartColorMode;
using KGC::KGChartColorTable;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

const KGC::KGS52ColorMode kModes[] = {KGChartColorMode::DayBright, KGChartColorMode::Dusk,
                                      KGChartColorMode::Night};

struct ColourOptions {
    std::string mode = "DayBright";
    std::string token;
    std::string svg;
};

KGC::KGS52ColorMode ModeOf(const std::string& name) {
    return KGChartColorMode::GetColorMode(Utf16(name));
}

std::string ModeName(KGC::KGS52ColorMode mode) {
    return Utf8(KGChartColorMode::GetColorModeName(mode));
}

}  // namespace

KGChartColorTable LoadTable(Session& session, const PlixUnicodeString& style,
                            KGC::KGS52ColorMode mode, std::string& file) {
    file = Utf8(session.Environment().GetColorTableAbsolutePath(mode, style));
    if (file.empty()) {
        throw ToolError(kExitFound, "style '" + Utf8(style) + "' names no " + ModeName(mode) +
                                        " colour table in " + session.SettingsPath());
    }
    KGChartColorTable table;
    if (!table.LoadColorTable(Utf16(file))) {
        throw ToolError(kExitFound, file + ": cannot be read as a colour table");
    }
    return table;
}

namespace {

Json ColourJson(const std::string& token, PLIX::PLIXCOLOR c) {
    const int r = PLIX::PLIXGetR(c), g = PLIX::PLIXGetG(c), b = PLIX::PLIXGetB(c);
    return {{"token", token}, {"rgb", {r, g, b}}, {"hex", Hex(r, g, b)}};
}

std::vector<std::string> ColourRow(const std::string& token, PLIX::PLIXCOLOR c) {
    const int r = PLIX::PLIXGetR(c), g = PLIX::PLIXGetG(c), b = PLIX::PLIXGetB(c);
    std::vector<std::string> row = {token, std::to_string(r), std::to_string(g), std::to_string(b),
                                    Hex(r, g, b)};
    const std::string swatch = Swatch(r, g, b);
    if (!swatch.empty()) row.push_back(swatch);
    return row;
}

int Colour(Session& session, const ColourOptions& options) {
    const PlixUnicodeString style = session.Style();
    std::string file;
    const KGChartColorTable table = LoadTable(session, style, ModeOf(options.mode), file);
    const PLIX::PLIXCOLOR* colour = table.GetColors().Find(Utf16(options.token));
    if (colour == nullptr) {
        throw ToolError(kExitFound, "colour token '" + options.token + "' not found in " + file);
    }
    if (session.Json()) {
        Json doc = ColourJson(options.token, *colour);
        doc["style"] = Utf8(style);
        doc["mode"] = ModeName(ModeOf(options.mode));
        doc["file"] = file;
        WriteJson(std::cout, doc);
        return kExitOk;
    }
    Table out;
    out.Row(ColourRow(options.token, *colour));
    out.Write(std::cout);
    return kExitOk;
}

// The palette: one column per colour table of the style, one row per token, each token a
// labelled swatch. Built as a document, so names and text need no escaping by hand.
int WritePalette(Session& session, const PlixUnicodeString& style, const std::string& path) {
    std::vector<std::pair<std::string, KGChartColorTable>> tables;
    std::map<std::string, int> rows;  // token -> row, in token order
    std::vector<PlixUnicodeString> files;
    for (auto mode : kModes) {
        const PlixUnicodeString file = session.Environment().GetColorTableAbsolutePath(mode, style);
        // A paper-chart style answers every mode with its one table: show it once.
        if (file.IsEmpty() || std::find(files.begin(), files.end(), file) != files.end()) continue;
        files.push_back(file);
        std::string name;
        tables.emplace_back(ModeName(mode), LoadTable(session, style, mode, name));
        for (const auto& entry : tables.back().second.GetColors()) rows[Utf8(entry.first)] = 0;
    }
    int row = 0;
    for (auto& entry : rows) entry.second = row++;

    constexpr int kColumn = 220, kRow = 28, kTop = 56, kSwatch = 40;
    const int width = 20 + kColumn * static_cast<int>(tables.size());
    const int height = kTop + kRow * static_cast<int>(rows.size()) + 10;
    KGC::KGMarkup svg;
    svg.AddElem(u"svg");
    svg.SetAttrib(u"xmlns", u"http://www.w3.org/2000/svg");
    svg.SetAttrib(u"width", width);
    svg.SetAttrib(u"height", height);
    svg.SetAttrib(u"viewBox", Utf16("0 0 " + std::to_string(width) + " " + std::to_string(height)));
    svg.SetAttrib(u"font-family", u"sans-serif");
    svg.SetAttrib(u"font-size", 12);
    auto add = [&svg](const char16_t* element,
                      const std::vector<std::pair<const char16_t*, std::string>>& attributes,
                      const std::string& text = std::string()) {
        svg.AddChildElem(element, Utf16(text));
        for (const auto& a : attributes) svg.SetChildAttrib(a.first, Utf16(a.second));
    };
    add(u"rect", {{u"width", "100%"}, {u"height", "100%"}, {u"fill", "#FFFFFF"}});
    add(u"text", {{u"x", "10"}, {u"y", "20"}, {u"font-size", "16"}},
        "Colour tables of style " + Utf8(style));
    for (size_t t = 0; t < tables.size(); ++t) {
        const int x = 10 + kColumn * static_cast<int>(t);
        add(u"text", {{u"x", std::to_string(x)}, {u"y", "44"}, {u"font-weight", "bold"}},
            tables[t].first);
        for (const auto& entry : tables[t].second.GetColors()) {
            const int y = kTop + kRow * rows[Utf8(entry.first)];
            const PLIX::PLIXCOLOR c = entry.second;
            const std::string hex = Hex(PLIX::PLIXGetR(c), PLIX::PLIXGetG(c), PLIX::PLIXGetB(c));
            add(u"rect", {{u"x", std::to_string(x)},
                          {u"y", std::to_string(y)},
                          {u"width", std::to_string(kSwatch)},
                          {u"height", std::to_string(kRow - 6)},
                          {u"fill", hex},
                          {u"stroke", "#808080"}});
            add(u"text", {{u"x", std::to_string(x + kSwatch + 8)}, {u"y", std::to_string(y + 16)}},
                Utf8(entry.first) + "  " + hex);
        }
    }
    if (!svg.Save(Utf16(path))) {
        throw ToolError(kExitUsage, path + ": cannot write the picture: " + Utf8(svg.GetError()));
    }
    return kExitOk;
}

int Colours(Session& session, const ColourOptions& options) {
    const PlixUnicodeString style = session.Style();
    if (!options.svg.empty()) {
        WritePalette(session, style, options.svg);
        if (session.Json()) {
            WriteJson(std::cout, {{"style", Utf8(style)}, {"svg", options.svg}});
        } else {
            std::cout << "palette of style " << Utf8(style) << " written to " << options.svg
                      << '\n';
        }
        return kExitOk;
    }
    std::string file;
    const KGChartColorTable table = LoadTable(session, style, ModeOf(options.mode), file);
    if (session.Json()) {
        Json colours = Json::array();
        for (const auto& entry : table.GetColors())
            colours.push_back(ColourJson(Utf8(entry.first), entry.second));
        WriteJson(std::cout, {{"style", Utf8(style)},
                              {"mode", ModeName(ModeOf(options.mode))},
                              {"file", file},
                              {"colors", colours}});
        return kExitOk;
    }
    std::cout << Utf8(style) << ", " << ModeName(ModeOf(options.mode)) << ": " << file << " ("
              << table.GetCount() << " colours)\n";
    Table out(2);
    out.Row({"token", "R", "G", "B", "hex"});
    for (const auto& entry : table.GetColors()) out.Row(ColourRow(Utf8(entry.first), entry.second));
    out.Write(std::cout);
    return kExitOk;
}

CLI::Option* AddMode(CLI::App* command, ColourOptions& options) {
    return command->add_option("--mode", options.mode, "colour mode (default: DayBright)")
        ->transform(CLI::IsMember({"DayBright", "Dusk", "Night"}, CLI::ignore_case));
}

}  // namespace

void RegisterColours(CLI::App& app, Commands& commands) {
    auto options = std::make_shared<ColourOptions>();
    CLI::App* colour = app.add_subcommand("color", "one colour token of the style: RGB and hex");
    colour->add_option("TOKEN", options->token, "colour token, as CHBLK")->required();
    AddMode(colour, *options);
    commands.Add(colour, [options](Session& session) { return Colour(session, *options); });

    CLI::App* colours = app.add_subcommand(
        "colors", "every colour of the style's table for a mode, or with --svg the palette");
    AddMode(colours, *options);
    colours->add_option("--svg", options->svg,
                        "write one SVG picture of all the style's colour tables side by side");
    commands.Add(colours, [options](Session& session) { return Colours(session, *options); });
}

}  // namespace vlchart
