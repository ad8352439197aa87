// vlchart lookup: the styles of an object class in a look-up table of the style, decoded, and
// with --attr the one a feature with those attributes gets, and why the others lost.
#include <iostream>
#include <sstream>

#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGChartStyleChoice.h"
#include "Output.h"
#include "Tool.h"

using KGC::KGChartLookupTable;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

struct LookupOptions {
    std::string acronym;
    std::string geometry;
    std::string symbols = "simplified";
    std::string boundaries = "symbolized";
    std::vector<std::string> attributes;
};

// One instruction as the style holds it: its code, and its arguments as text and as fields.
struct Instruction {
    std::string code;
    std::string text;
    Json fields;
};

std::string Number(double value) {
    std::string text = Utf8(PlixUnicodeString::Format("%g", value));
    return text;
}

void AddSymbol(std::vector<Instruction>& out, const KGC::KGChartSymbolMarkerStyle& symbol) {
    if (symbol.SymbolName.IsEmpty()) return;
    const std::string name = Utf8(symbol.SymbolName);
    std::string text = name;
    Json fields = {{"symbol", name}};
    if (symbol.RotateByOrient) {
        text += ",ORIENT";
        fields["rotation"] = "ORIENT";
    } else if (symbol.Rotation != 0.0) {
        text += "," + Number(symbol.Rotation);
        fields["rotation"] = symbol.Rotation;
    }
    out.push_back({"SY", text, fields});
}

void AddTexts(std::vector<Instruction>& out, const PLIX::PlixArray<KGC::KGChartTextFormat>& texts) {
    for (const auto& t : texts) {
        const bool formatted = !t.Format.IsEmpty();
        std::string text = formatted ? "'" + Utf8(t.Format) + "'," + Utf8(t.Text) : Utf8(t.Text);
        text += "," + std::to_string(t.HJust) + "," + std::to_string(t.VJust) + "," +
                std::to_string(t.Space) + "," + std::to_string(t.XOffset) + "," +
                std::to_string(t.YOffset);
        Json fields = {{"text", Utf8(t.Text)}, {"hjust", t.HJust},     {"vjust", t.VJust},
                       {"space", t.Space},     {"xoffset", t.XOffset}, {"yoffset", t.YOffset}};
        if (formatted) fields["format"] = Utf8(t.Format);
        out.push_back({formatted ? "TE" : "TX", text, fields});
    }
}

void AddLine(std::vector<Instruction>& out, const KGC::KGChartLineStyle& line,
             const PlixUnicodeString& complexLine) {
    if (!line.ColorToken.IsEmpty()) {
        static const char* const kPatterns[] = {"?", "SOLD", "DASH", "DOTT"};
        const char* pattern =
            line.Pattern >= 1 && line.Pattern <= 3 ? kPatterns[line.Pattern] : "?";
        out.push_back(
            {"LS",
             std::string(pattern) + "," + std::to_string(line.Width) + "," + Utf8(line.ColorToken),
             {{"pattern", pattern}, {"width", line.Width}, {"colour", Utf8(line.ColorToken)}}});
    }
    if (!complexLine.IsEmpty()) {
        out.push_back({"LC", Utf8(complexLine), {{"line", Utf8(complexLine)}}});
    }
}

void AddProcedure(std::vector<Instruction>& out, bool has, const PlixUnicodeString& procedure) {
    if (has) out.push_back({"CS", Utf8(procedure), {{"procedure", Utf8(procedure)}}});
}

std::vector<Instruction> Decode(const KGC::KGChartPointObjectStyle& s,
                                const PlixUnicodeString& cs) {
    std::vector<Instruction> out;
    for (const auto& symbol : s.Symbols) AddSymbol(out, symbol);
    AddTexts(out, s.Texts);
    AddProcedure(out, s.HasProcedure, cs);
    return out;
}

std::vector<Instruction> Decode(const KGC::KGChartLineObjectStyle& s, const PlixUnicodeString& cs) {
    std::vector<Instruction> out;
    AddLine(out, s.LineStyle, s.ComplexLineName);
    AddSymbol(out, s.Symbol);
    AddTexts(out, s.Texts);
    AddProcedure(out, s.HasProcedure, cs);
    return out;
}

std::vector<Instruction> Decode(const KGC::KGChartAreaObjectStyle& s, const PlixUnicodeString& cs) {
    std::vector<Instruction> out;
    if (!s.FillColorToken.IsEmpty()) {
        out.push_back(
            {"AC",
             Utf8(s.FillColorToken) +
                 (s.FillTransparency != 0 ? "," + std::to_string(s.FillTransparency) : ""),
             {{"colour", Utf8(s.FillColorToken)}, {"transparency", s.FillTransparency}}});
    }
    if (!s.PatternName.IsEmpty()) {
        out.push_back({"AP", Utf8(s.PatternName), {{"pattern", Utf8(s.PatternName)}}});
    }
    AddLine(out, s.LineStyle, s.ComplexLineName);
    for (const auto& symbol : s.Symbols) AddSymbol(out, symbol);
    AddTexts(out, s.Texts);
    AddProcedure(out, s.HasProcedure, cs);
    return out;
}

// A condition as the table writes it: "COLOUR3", "CONDTN" (any value), "DRVAL1?".
std::string ConditionText(const KGC::KGChartAttributeCondition& c) {
    if (c.IntegerValue != 0) return Utf8(c.AttributeAcronym) + std::to_string(c.IntegerValue);
    return Utf8(c.AttributeAcronym) + Utf8(c.TextValue);
}

Json ConditionJson(const KGC::KGChartAttributeCondition& c) {
    Json value = nullptr;
    if (c.IntegerValue != 0) {
        value = std::to_string(c.IntegerValue);
    } else if (!c.TextValue.IsEmpty()) {
        value = Utf8(c.TextValue);
    }
    return {{"attribute", Utf8(c.AttributeAcronym)}, {"value", value}};
}

template <typename Items>
int Report(Session& session, const LookupOptions& o, const Items& items, const std::string& file) {
    const bool fallback =
        items.ObjectAcronym == PlixUnicodeString(u"######") && o.acronym != "######";
    KGC::KGFeatureAttributes feature;
    for (const std::string& attribute : o.attributes) {
        const size_t equals = attribute.find('=');
        feature.SetAt(Utf16(attribute.substr(0, equals)), Utf16(attribute.substr(equals + 1)));
    }
    const bool choosing = !o.attributes.empty();
    const int chosen = choosing ? KGC::KGChooseStyle(items.Styles, feature) : -1;
    const int chosenConditions =
        chosen < 0
            ? 0
            : KGC::KGMatchConditions(items.Styles[chosen]->AttributeConditions, feature).conditions;

    Json styles = Json::array();
    std::ostringstream text;
    text << o.acronym << " (" << o.geometry << ") in " << file << '\n';
    if (fallback) text << "not in the table: the \"######\" entries answer\n";
    if (!items.ProcedureName.IsEmpty()) text << "procedure " << Utf8(items.ProcedureName) << '\n';
    text << Count(static_cast<size_t>(items.Styles.GetSize()), "style") << ", in table order:\n";
    for (int i = 0; i < items.Styles.GetSize(); ++i) {
        const auto& style = *items.Styles[i];
        std::string conditions;
        Json conditionList = Json::array();
        for (const auto& c : style.AttributeConditions) {
            if (c.AttributeAcronym.IsEmpty()) continue;
            conditions += (conditions.empty() ? "" : " ") + ConditionText(c);
            conditionList.push_back(ConditionJson(c));
        }
        const std::string category =
            Utf8(KGC::KGChartDisplayCategory::GetDisplayCategoryName(style.DisplayCategory));
        Json instructions = Json::array();
        std::string decoded;
        for (const Instruction& in : Decode(style, items.ProcedureName)) {
            decoded += (decoded.empty() ? "" : ";") + in.code + "(" + in.text + ")";
            Json entry = {{"code", in.code}};
            entry.update(in.fields);
            instructions.push_back(entry);
        }
        Json record = {{"index", i},
                       {"conditions", conditionList},
                       {"category", category},
                       {"priority", style.DisplayPriority},
                       {"instructions", instructions}};
        std::string mark = "  ";
        std::string why;
        if (choosing) {
            const KGC::KGChartStyleMatch match =
                KGC::KGMatchConditions(style.AttributeConditions, feature);
            if (i == chosen) {
                mark = "=>";
                why = match.conditions == 0
                          ? std::string("chosen: the catch-all, no other style matches")
                          : "chosen: " + Count(static_cast<size_t>(match.conditions), "condition") +
                                " hold" + (match.conditions == 1 ? "s" : "");
            } else if (!match.matches) {
                why = "condition " +
                      ConditionText(style.AttributeConditions[match.failedCondition]) +
                      " does not hold";
            } else if (match.conditions < chosenConditions) {
                why = "fewer conditions (" + std::to_string(match.conditions) + ")";
            } else {
                why = "as many conditions, later in table order";
            }
            record["matches"] = match.matches;
            record["why"] = why;
        }
        styles.push_back(record);
        text << mark << " [" << i << "] " << (conditions.empty() ? "(any)" : conditions) << "  "
             << category << ", priority " << style.DisplayPriority << "  "
             << (decoded.empty() ? "(no instructions)" : decoded) << '\n';
        if (!why.empty()) text << "       " << why << '\n';
    }
    if (choosing && chosen < 0) text << "no style matches\n";
    if (session.Json()) {
        WriteJson(std::cout, {{"acronym", o.acronym},
                              {"geometry", o.geometry},
                              {"file", file},
                              {"fallback", fallback},
                              {"procedure", Utf8(items.ProcedureName)},
                              {"styles", styles},
                              {"chosen", chosen < 0 ? Json(nullptr) : Json(chosen)}});
    } else {
        std::cout << text.str();
    }
    return kExitOk;
}

int Run(Session& session, const LookupOptions& o) {
    for (const std::string& attribute : o.attributes) {
        if (attribute.find('=') == std::string::npos || attribute.find('=') == 0)
            throw ToolError(kExitUsage, "--attr takes ACRONYM=VALUE, not '" + attribute + "'");
    }
    const PlixUnicodeString style = session.Style();
    auto& env = session.Environment();
    PlixUnicodeString path;
    if (o.geometry == "point") {
        path = env.GetPointLookupTableAbsolutePath(style, o.symbols == "simplified" ? 1 : 0);
    } else if (o.geometry == "line") {
        path = env.GetLineLookupTableAbsolutePath(style);
    } else {
        path = env.GetAreaLookupTableAbsolutePath(style, o.boundaries == "symbolized" ? 1 : 0);
    }
    const std::string file = Utf8(path);
    if (file.empty())
        throw ToolError(kExitFound,
                        "style '" + Utf8(style) + "' names no " + o.geometry + " table");
    KGChartLookupTable table;
    bool loaded = false;
    if (o.geometry == "point") loaded = table.LoadPointLookupTable(path);
    if (o.geometry == "line") loaded = table.LoadLineLookupTable(path);
    if (o.geometry == "area") loaded = table.LoadAreaLookupTable(path);
    if (!loaded) throw ToolError(kExitFound, file + ": cannot be read");
    const PlixUnicodeString acronym = Utf16(o.acronym);
    const std::string missing = o.acronym + ": no entry, and no \"######\" entry, in " + file;
    if (o.geometry == "point") {
        KGC::KGChartLookupPointItems items;
        if (!table.GetLookupPointItems(acronym, items)) throw ToolError(kExitFound, missing);
        return Report(session, o, items, file);
    }
    if (o.geometry == "line") {
        KGC::KGChartLookupLineItems items;
        if (!table.GetLookupLineItems(acronym, items)) throw ToolError(kExitFound, missing);
        return Report(session, o, items, file);
    }
    KGC::KGChartLookupAreaItems items;
    if (!table.GetLookupAreaItems(acronym, items)) throw ToolError(kExitFound, missing);
    return Report(session, o, items, file);
}

}  // namespace

void RegisterLookup(CLI::App& app, Commands& commands) {
    auto o = std::make_shared<LookupOptions>();
    CLI::App* lookup = app.add_subcommand(
        "lookup", "the styles of an object class in a look-up table, and the one a feature gets");
    lookup->add_option("ACRONYM", o->acronym, "object class acronym, as BOYLAT")->required();
    lookup->add_option("--geometry", o->geometry, "point, line or area")
        ->required()
        ->check(CLI::IsMember({"point", "line", "area"}));
    lookup->add_option("--symbols", o->symbols, "point symbols: simplified (default) or paperchart")
        ->check(CLI::IsMember({"simplified", "paperchart"}));
    lookup
        ->add_option("--boundaries", o->boundaries,
                     "area boundaries: plain or symbolized (default)")
        ->check(CLI::IsMember({"plain", "symbolized"}));
    lookup->add_option("--attr", o->attributes,
                       "a feature attribute, ACRONYM=VALUE (ACRONYM= for one without a value); "
                       "marks the style the feature gets");
    commands.Add(lookup, [o](Session& s) { return Run(s, *o); });
}

}  // namespace vlchart
