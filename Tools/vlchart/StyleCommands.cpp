// vlchart style list|add|remove|set-table|set-color|set-symbols: the styles of the settings file,
// edited through the chart environment so that the file is written as the library writes it.
#include <iostream>

#include "Base/PlixArray.h"
#include "Output.h"
#include "Tool.h"

using KGC::KGChartDisplayStyle;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

struct StyleOptions {
    std::string name;
    std::string type = "ENC";
    std::string kind;
    std::string symbols = "simplified";
    std::string boundaries = "symbolized";
    std::string mode = "DayBright";
    std::string path;
};

// The name as the settings file writes it; a ToolError (kExitFound) when there is none.
PlixUnicodeString Existing(Session& session, const std::string& name) {
    const PlixUnicodeString style = session.FindStyle(name);
    if (style.IsEmpty()) {
        throw ToolError(kExitFound, "style '" + name + "' not found in " + session.SettingsPath());
    }
    return style;
}

int Saved(Session& session, bool saved, const std::string& what) {
    if (!saved) {
        throw ToolError(kExitUsage, session.SettingsPath() + ": cannot " + what +
                                        " (the settings file was left as it was)");
    }
    if (session.Json()) {
        WriteJson(std::cout, {{"saved", session.SettingsPath()}, {"done", what}});
    } else {
        std::cout << what << "; saved " << session.SettingsPath() << '\n';
    }
    return kExitOk;
}

int List(Session& session) {
    auto& env = session.Environment();
    PLIX::PlixArray<PlixUnicodeString> names;
    env.GetStyleNames(names);
    Json styles = Json::array();
    Table out;
    for (const auto& name : names) {
        const std::string type =
            Utf8(KGChartDisplayStyle::GetChartDisplayStyleTypeName(env.GetStyleType(name)));
        out.Row({Utf8(name), type.empty() ? "unknown type" : type});
        styles.push_back(
            {{"name", Utf8(name)}, {"type", type.empty() ? Json(nullptr) : Json(type)}});
    }
    if (session.Json()) {
        WriteJson(std::cout, {{"styles", styles}});
    } else {
        out.Write(std::cout);
    }
    return kExitOk;
}

int Add(Session& session, const StyleOptions& o) {
    const PlixUnicodeString existing = session.FindStyle(o.name);
    if (!existing.IsEmpty())
        throw ToolError(kExitFound, "style '" + Utf8(existing) + "' already exists");
    const auto type = KGChartDisplayStyle::GetChartDisplayStyleType(Utf16(o.type));
    return Saved(session, session.Environment().AddNewStyle(Utf16(o.name), type),
                 "added style " + o.name + " (" + o.type + ")");
}

int Remove(Session& session, const StyleOptions& o) {
    const PlixUnicodeString name = Existing(session, o.name);
    return Saved(session, session.Environment().RemoveStyle(name), "removed style " + Utf8(name));
}

int SetTable(Session& session, const StyleOptions& o) {
    const PlixUnicodeString name = Existing(session, o.name);
    auto& env = session.Environment();
    const PlixUnicodeString path = Utf16(o.path);
    bool saved = false;
    std::string what;
    if (o.kind == "point") {
        saved = env.SetPointLookupTableFile(path, name, o.symbols == "simplified" ? 1 : 0);
        what = "point table (" + o.symbols + ")";
    } else if (o.kind == "line") {
        saved = env.SetLineLookupTableFile(path, name);
        what = "line table";
    } else {
        saved = env.SetAreaLookupTableFile(path, name, o.boundaries == "symbolized" ? 1 : 0);
        what = "area table (" + o.boundaries + ")";
    }
    return Saved(session, saved, "set the " + what + " of " + Utf8(name) + " to " + o.path);
}

int SetColour(Session& session, const StyleOptions& o) {
    const PlixUnicodeString name = Existing(session, o.name);
    const auto mode = KGC::KGChartColorMode::GetColorMode(Utf16(o.mode));
    return Saved(session, session.Environment().SetColorTable(Utf16(o.path), name, mode),
                 "set the " + o.mode + " colour table of " + Utf8(name) + " to " + o.path);
}

int SetSymbols(Session& session, const StyleOptions& o) {
    const PlixUnicodeString name = Existing(session, o.name);
    return Saved(session, session.Environment().SetSymbolLibrary(Utf16(o.path), name),
                 "set the symbol library of " + Utf8(name) + " to " + o.path);
}

}  // namespace

void RegisterStyles(CLI::App& app, Commands& commands) {
    auto o = std::make_shared<StyleOptions>();
    CLI::App* style = app.add_subcommand("style", "list and edit the styles of the settings file");
    style->require_subcommand(1);

    CLI::App* list = style->add_subcommand("list", "the styles with their types");
    commands.Add(list, List);

    CLI::App* add = style->add_subcommand("add", "add a style with empty tables");
    add->add_option("NAME", o->name, "style name")->required();
    add->add_option("--type", o->type, "ENC (default) or PaperChart")
        ->transform(CLI::IsMember({"ENC", "PaperChart"}, CLI::ignore_case));
    commands.Add(add, [o](Session& s) { return Add(s, *o); });

    CLI::App* remove = style->add_subcommand("remove", "remove a style");
    remove->add_option("NAME", o->name, "style name")->required();
    commands.Add(remove, [o](Session& s) { return Remove(s, *o); });

    CLI::App* table = style->add_subcommand("set-table", "set a look-up table file of a style");
    table->add_option("NAME", o->name, "style name")->required();
    table->add_option("PATH", o->path, "the table file")->required();
    table->add_option("--kind", o->kind, "point, line or area")
        ->required()
        ->check(CLI::IsMember({"point", "line", "area"}));
    table->add_option("--symbols", o->symbols, "simplified (default) or paperchart")
        ->check(CLI::IsMember({"simplified", "paperchart"}));
    table->add_option("--boundaries", o->boundaries, "plain or symbolized (default)")
        ->check(CLI::IsMember({"plain", "symbolized"}));
    commands.Add(table, [o](Session& s) { return SetTable(s, *o); });

    CLI::App* colour = style->add_subcommand("set-color", "set a colour table file of a style");
    colour->add_option("NAME", o->name, "style name")->required();
    colour->add_option("PATH", o->path, "the colour table file")->required();
    colour->add_option("--mode", o->mode, "DayBright (default), Dusk or Night")
        ->transform(CLI::IsMember({"DayBright", "Dusk", "Night"}, CLI::ignore_case));
    commands.Add(colour, [o](Session& s) { return SetColour(s, *o); });

    CLI::App* symbols =
        style->add_subcommand("set-symbols", "set the symbol library file of a style");
    symbols->add_option("NAME", o->name, "style name")->required();
    symbols->add_option("PATH", o->path, "the symbol library file")->required();
    commands.Add(symbols, [o](Session& s) { return SetSymbols(s, *o); });
}

}  // namespace vlchart
