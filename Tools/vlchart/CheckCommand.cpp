// vlchart check: loads everything a style and the settings name and reports what the loaders
// pass over silently, one finding per fault.
#include <algorithm>
#include <iostream>
#include <map>
#include <set>

#include "Base/KGMarkup.h"
#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartLookupTable.h"
#include "ChartBase/KGChartSymbolLibrary.h"
#include "ChartBase/KGS57Dictionary.h"
#include "Output.h"
#include "Tool.h"

using KGC::KGChartLookupLoadReport;
using KGC::KGChartLookupTable;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

// The kinds, in the order the summary lists them.
const char* const kKinds[] = {
    "unreadable-file", "dropped-entry",        "short-entry", "rejected-instruction",
    "unknown-colour",  "unknown-attribute",    "split-run",   "unknown-object",
    "unknown-symbol",  "bad-dictionary-record"};

struct Finding {
    std::string kind;
    std::string file;
    int line = 0;  // 0: not about one line
    std::string name;
    std::string message;
};

class Findings {
public:
    void Add(Finding f) { m_all.push_back(std::move(f)); }
    // A finding about a named thing: once per kind, file and name, at the first line using it.
    void AddNamed(const std::string& kind, const std::string& file, int line,
                  const std::string& name, const std::string& message) {
        if (m_named.insert(kind + '\n' + file + '\n' + name).second)
            m_all.push_back({kind, file, line, name, message});
    }
    std::vector<Finding>& All() { return m_all; }

private:
    std::vector<Finding> m_all;
    std::set<std::string> m_named;
};

// Why the file cannot serve as a document with that root; empty when it can.
std::string DocumentProblem(const std::string& file, const char16_t* root) {
    KGC::KGMarkup doc;
    if (!doc.Load(Utf16(file))) return "cannot be read: " + Utf8(doc.GetError());
    if (!doc.FindElem(root)) {
        doc.ResetPos();
        doc.FindElem();
        return "root element is <" + Utf8(doc.GetTagName()) + ">, not <" + Utf8(root) + ">";
    }
    return std::string();
}

struct ColourTable {
    std::string mode;
    KGC::KGChartColorTable table;
};

std::vector<ColourTable> CheckColourTables(Session& session, const PlixUnicodeString& style,
                                           Findings& findings) {
    std::vector<ColourTable> tables;
    std::set<std::string> seen;
    for (auto mode : {KGC::KGChartColorMode::DayBright, KGC::KGChartColorMode::Dusk,
                      KGC::KGChartColorMode::Night}) {
        const std::string file = Utf8(session.Environment().GetColorTableAbsolutePath(mode, style));
        // A paper-chart style answers every mode with its one table.
        if (file.empty() || !seen.insert(file).second) continue;
        const std::string problem = DocumentProblem(file, u"Colors");
        ColourTable t{Utf8(KGC::KGChartColorMode::GetColorModeName(mode)), {}};
        if (!problem.empty() || !t.table.LoadColorTable(Utf16(file))) {
            findings.Add({"unreadable-file", file, 0, "", "colour table: " + problem});
            continue;
        }
        tables.push_back(std::move(t));
    }
    return tables;
}

struct Dictionaries {
    bool objects = false;
    bool attributes = false;
};

Dictionaries CheckDictionaryFiles(Session& session, Findings& findings) {
    auto& env = session.Environment();
    const struct {
        const char* label;
        PlixUnicodeString (KGC::KGChartEnvironment::*path)();
        const char16_t* root;
        bool* usable;
    } files[] = {
        {"agency dictionary", &KGC::KGChartEnvironment::GetAgencyDictFileAbsolutePath, u"Agencies",
         nullptr},
        {"object class dictionary", &KGC::KGChartEnvironment::GetS57ObjectDictFileAbsolutePath,
         u"ObjectClasses", nullptr},
        {"attribute dictionary", &KGC::KGChartEnvironment::GetS57AttributeDictFileAbsolutePath,
         u"Attributes", nullptr},
        {"product specification objects",
         &KGC::KGChartEnvironment::GetS57SpecsObjectDictFileAbsolutePath, u"ObjectClasses",
         nullptr},
        {"product specification info",
         &KGC::KGChartEnvironment::GetS57SpecsInfoDictFileAbsolutePath, u"EncInfos", nullptr},
        {"S-58 checks", &KGC::KGChartEnvironment::GetS58CheckInfoDictFileAbsolutePath, u"S58",
         nullptr},
    };
    Dictionaries usable;
    for (size_t i = 0; i < std::size(files); ++i) {
        // The member is read from a named element: GCC's bounds check of "files[i]" inside a
        // call through a member pointer checks a garbage index (-fsanitize=undefined).
        const auto getter = files[i].path;
        const std::string file = Utf8((env.*getter)());
        if (file.empty()) continue;
        const std::string problem = DocumentProblem(file, files[i].root);
        if (!problem.empty()) {
            findings.Add(
                {"unreadable-file", file, 0, "", std::string(files[i].label) + ": " + problem});
        } else if (i == 1) {
            usable.objects = true;
        } else if (i == 2) {
            usable.attributes = true;
        }
    }
    return usable;
}

// Code 0, and codes or acronyms that stand twice.
template <typename Record>
void CheckRecords(const PLIX::PlixArray<Record>& records, const std::string& file,
                  const std::string& what, Findings& findings) {
    std::set<int> codes;
    std::set<std::string> acronyms;
    for (const Record& r : records) {
        const std::string acronym = Utf8(r.acronym);
        const std::string named = acronym.empty() ? "without acronym" : acronym;
        if (r.code == 0) {
            findings.AddNamed("bad-dictionary-record", file, 0, acronym,
                              what + " " + named + " has code 0");
        } else if (!codes.insert(r.code).second) {
            findings.AddNamed("bad-dictionary-record", file, 0, std::to_string(r.code),
                              what + " code " + std::to_string(r.code) + " stands twice");
        }
        if (!acronyms.insert(acronym).second) {
            findings.AddNamed("bad-dictionary-record", file, 0, acronym,
                              what + " " + named + " stands twice");
        }
    }
}

struct LookupFile {
    const char* label;
    std::string file;
    int kind;  // 0 point, 1 line, 2 area
};

// The style's symbol library; null when the style names none or it cannot be read (a finding).
std::unique_ptr<KGC::KGChartSymbolLibrary> CheckSymbolLibrary(Session& session,
                                                              const PlixUnicodeString& style,
                                                              Findings& findings) {
    const std::string file = Utf8(session.Environment().GetSymbolLibraryAbsolutePath(style));
    if (file.empty()) return nullptr;
    auto library = std::make_unique<KGC::KGChartSymbolLibrary>();
    if (!library->Load(Utf16(file))) {
        findings.Add(
            {"unreadable-file", file, 0, "", "symbol library: " + Utf8(library->GetError())});
        return nullptr;
    }
    return library;
}

void CheckLookupTable(const LookupFile& lookup, const std::vector<ColourTable>& colours,
                      const Dictionaries& dictionaries, const KGC::KGChartSymbolLibrary* symbols,
                      Findings& findings) {
    KGChartLookupTable table;
    KGChartLookupLoadReport report;
    table.SetLoadReport(&report);
    const PlixUnicodeString path = Utf16(lookup.file);
    const bool loaded = lookup.kind == 0   ? table.LoadPointLookupTable(path)
                        : lookup.kind == 1 ? table.LoadLineLookupTable(path)
                                           : table.LoadAreaLookupTable(path);
    if (!loaded) {
        findings.Add({"unreadable-file", lookup.file, 0, "",
                      std::string(lookup.label) + ": cannot be read"});
        return;
    }
    Findings local;
    using Kind = KGChartLookupLoadReport::NoteKind;
    for (const auto& note : report.notes) {
        const std::string acronym = Utf8(note.acronym);
        switch (note.kind) {
            case Kind::DroppedEntry:
                local.Add({"dropped-entry", lookup.file, note.line, "",
                           "not loaded: the object acronym field is not six characters"});
                break;
            case Kind::ShortEntry:
                local.Add({"short-entry", lookup.file, note.line, acronym,
                           "fewer than seven fields; the missing ones take their defaults"});
                break;
            case Kind::RejectedInstruction:
                local.Add({"rejected-instruction", lookup.file, note.line, acronym,
                           "instruction refused at '" + Utf8(note.text) +
                               "'; it and what follows are lost"});
                break;
            case Kind::SplitRun:
                local.AddNamed("split-run", lookup.file, note.line, acronym,
                               acronym + " has entries in several runs; only the last is kept");
                break;
        }
    }
    const KGC::KGS57Config* registry = KGC::KGS57Config::GetInstance();
    for (const auto& entry : report.entries) {
        const std::string acronym = Utf8(entry.acronym);
        KGC::KGS57Object object;
        if (dictionaries.objects && acronym != "######" &&
            !registry->GetS57Object(entry.acronym, object)) {
            local.AddNamed("unknown-object", lookup.file, entry.line, acronym,
                           "object class " + acronym + " is not in the object class dictionary");
        }
        KGC::KGS57DefineInfo::AttributeType type;
        for (const auto& attribute : entry.attributes) {
            if (dictionaries.attributes && !registry->GetS57AttributeType(attribute, type)) {
                local.AddNamed(
                    "unknown-attribute", lookup.file, entry.line, Utf8(attribute),
                    "attribute " + Utf8(attribute) + " is not in the attribute dictionary");
            }
        }
        // Each name is looked for among the definitions of the kind its instruction draws.
        const struct {
            KGC::KGChartSymbolKind kind;
            const char* what;
            const PLIX::PlixArray<PlixUnicodeString>& names;
        } used[] = {{KGC::KGChartSymbolKind::Symbol, "a symbol", entry.symbols},
                    {KGC::KGChartSymbolKind::LineStyle, "a line style", entry.lineStyles},
                    {KGC::KGChartSymbolKind::Pattern, "a pattern", entry.patterns}};
        for (const auto& u : used) {
            for (const auto& name : u.names) {
                if (symbols != nullptr && symbols->Find(u.kind, name) == nullptr) {
                    local.AddNamed(
                        "unknown-symbol", lookup.file, entry.line, Utf8(name),
                        Utf8(name) + " is not " + u.what + " of the style's symbol library");
                }
            }
        }
        for (const auto& token : entry.colours) {
            std::string lacking;
            for (const auto& c : colours) {
                if (c.table.GetColors().Find(token) == nullptr)
                    lacking += (lacking.empty() ? "" : ", ") + c.mode;
            }
            if (!lacking.empty()) {
                local.AddNamed(
                    "unknown-colour", lookup.file, entry.line, Utf8(token),
                    "colour " + Utf8(token) + " is not in the " + lacking + " colour table");
            }
        }
    }
    std::stable_sort(local.All().begin(), local.All().end(),
                     [](const Finding& a, const Finding& b) { return a.line < b.line; });
    for (auto& f : local.All()) findings.Add(std::move(f));
}

std::vector<LookupFile> LookupFiles(Session& session, const PlixUnicodeString& style) {
    auto& env = session.Environment();
    std::vector<LookupFile> files = {
        {"point table, simplified", Utf8(env.GetPointLookupTableAbsolutePath(style, 1)), 0},
        {"point table, paper chart", Utf8(env.GetPointLookupTableAbsolutePath(style, 0)), 0},
        {"line table", Utf8(env.GetLineLookupTableAbsolutePath(style)), 1},
        {"area table, plain", Utf8(env.GetAreaLookupTableAbsolutePath(style, 0)), 2},
        {"area table, symbolized", Utf8(env.GetAreaLookupTableAbsolutePath(style, 1)), 2},
    };
    // A paper-chart style names one table of each kind; check each file and kind once.
    std::vector<LookupFile> unique;
    for (const auto& f : files) {
        const bool seen = std::any_of(unique.begin(), unique.end(), [&f](const LookupFile& u) {
            return u.file == f.file && u.kind == f.kind;
        });
        if (!f.file.empty() && !seen) unique.push_back(f);
    }
    return unique;
}

int Run(Session& session) {
    const PlixUnicodeString style = session.Style();
    Findings findings;
    const std::vector<ColourTable> colours = CheckColourTables(session, style, findings);
    const Dictionaries dictionaries = CheckDictionaryFiles(session, findings);
    const KGC::KGS57Config* registry = KGC::KGS57Config::GetInstance();
    if (dictionaries.objects) {
        PLIX::PlixArray<KGC::KGS57Object> objects;
        registry->GetArrayS57Object(objects);
        CheckRecords(objects, Utf8(registry->GetObjectDictPath()), "object class", findings);
    }
    if (dictionaries.attributes) {
        PLIX::PlixArray<KGC::KGS57Attribute> attributes;
        registry->GetArrayS57Attribute(attributes);
        CheckRecords(attributes, Utf8(registry->GetAttributeDictPath()), "attribute", findings);
    }
    const auto symbols = CheckSymbolLibrary(session, style, findings);
    for (const LookupFile& f : LookupFiles(session, style))
        CheckLookupTable(f, colours, dictionaries, symbols.get(), findings);

    std::map<std::string, int> counts;
    for (const auto& f : findings.All()) ++counts[f.kind];
    if (session.Json()) {
        Json list = Json::array();
        for (const auto& f : findings.All()) {
            list.push_back({{"kind", f.kind},
                            {"file", f.file},
                            {"line", f.line > 0 ? Json(f.line) : Json(nullptr)},
                            {"name", f.name.empty() ? Json(nullptr) : Json(f.name)},
                            {"message", f.message}});
        }
        Json countJson = Json::object();
        for (const char* kind : kKinds) {
            if (counts.count(kind) != 0) countJson[kind] = counts[kind];
        }
        WriteJson(std::cout, {{"findings", list}, {"counts", countJson}});
    } else {
        for (const auto& f : findings.All()) {
            std::cout << f.file << (f.line > 0 ? ":" + std::to_string(f.line) : std::string())
                      << ": " << f.kind << ": " << f.message << '\n';
        }
        std::cout << (findings.All().empty() ? "" : "\n") << "style " << Utf8(style) << ": "
                  << Count(findings.All().size(), "finding") << '\n';
        Table summary(2);
        for (const char* kind : kKinds) {
            if (counts.count(kind) != 0) summary.Row({kind, std::to_string(counts[kind])});
        }
        summary.Write(std::cout);
    }
    return findings.All().empty() ? kExitOk : kExitFound;
}

}  // namespace

void RegisterCheck(CLI::App& app, Commands& commands) {
    CLI::App* check = app.add_subcommand(
        "check",
        "load everything the style and the settings name and report what the loaders skip");
    commands.Add(check, Run);
}

}  // namespace vlchart
