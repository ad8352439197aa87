// vlchart env: the settings file, each style with its resolved table paths, the dictionary
// files; files that are named but missing are problems found.
#include <iostream>
#include <sstream>

#include "Base/KGFile.h"
#include "Base/PlixArray.h"
#include "Output.h"
#include "Tool.h"

using KGC::KGChartColorMode;
using KGC::KGChartDisplayStyle;
using KGC::KGChartEnvironment;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

struct Report {
    Table text{4};
    Json files = Json::array();
    int named = 0;
    int missing = 0;

    // One named file: label, the resolved path, whether it exists.
    void File(const std::string& label, const PlixUnicodeString& absolute) {
        Json file = {{"label", label}, {"path", nullptr}, {"exists", false}};
        if (absolute.IsEmpty()) {
            text.Row({label, "(not set)"});
            files.push_back(file);
            return;
        }
        ++named;
        const bool exists = KGC::KGFile::IsExist(absolute);
        if (!exists) ++missing;
        text.Row({label, Utf8(absolute) + (exists ? "" : "  [missing]")});
        file["path"] = Utf8(absolute);
        file["exists"] = exists;
        files.push_back(file);
    }
};

void StyleFiles(Report& report, KGChartEnvironment& env, const PlixUnicodeString& name,
                KGC::KGChartDisplayStyleType type) {
    const bool enc = type == KGChartDisplayStyle::ENC;
    if (enc) {
        report.File("point table, simplified", env.GetPointLookupTableAbsolutePath(name, 1));
        report.File("point table, paper chart", env.GetPointLookupTableAbsolutePath(name, 0));
    } else {
        report.File("point table", env.GetPointLookupTableAbsolutePath(name, 1));
    }
    report.File("line table", env.GetLineLookupTableAbsolutePath(name));
    if (enc) {
        report.File("area table, plain", env.GetAreaLookupTableAbsolutePath(name, 0));
        report.File("area table, symbolized", env.GetAreaLookupTableAbsolutePath(name, 1));
    } else {
        report.File("area table", env.GetAreaLookupTableAbsolutePath(name, 1));
    }
    for (auto mode :
         {KGChartColorMode::DayBright, KGChartColorMode::Dusk, KGChartColorMode::Night}) {
        // A paper-chart style has one colour table; list it once.
        if (type == KGChartDisplayStyle::PaperChart && mode != KGChartColorMode::DayBright) break;
        report.File("colours, " + Utf8(KGChartColorMode::GetColorModeName(mode)),
                    env.GetColorTableAbsolutePath(mode, name));
    }
    report.File("symbol library", env.GetSymbolLibraryAbsolutePath(name));
}

int Run(Session& session) {
    KGChartEnvironment& env = session.Environment();
    PLIX::PlixArray<PlixUnicodeString> names;
    env.GetStyleNames(names);

    Json styles = Json::array();
    Report report;
    std::ostringstream out;
    out << "Settings file: " << session.SettingsPath() << "\n\nStyles (" << names.GetSize()
        << "):\n";
    for (const auto& name : names) {
        const auto type = env.GetStyleType(name);
        const std::string typeName = Utf8(KGChartDisplayStyle::GetChartDisplayStyleTypeName(type));
        out << "  " << Utf8(name) << "  (" << (typeName.empty() ? "unknown type" : typeName)
            << ")\n";
        Report style;
        StyleFiles(style, env, name, type);
        style.text.Write(out);
        report.named += style.named;
        report.missing += style.missing;
        styles.push_back({{"name", Utf8(name)},
                          {"type", typeName.empty() ? Json(nullptr) : Json(typeName)},
                          {"files", style.files}});
    }

    Report dictionaries;
    const struct {
        const char* label;
        PlixUnicodeString (KGChartEnvironment::*getter)();
    } kDictionaries[] = {
        {"object classes", &KGChartEnvironment::GetS57ObjectDictFileAbsolutePath},
        {"attributes", &KGChartEnvironment::GetS57AttributeDictFileAbsolutePath},
        {"agencies", &KGChartEnvironment::GetAgencyDictFileAbsolutePath},
        {"product spec. objects", &KGChartEnvironment::GetS57SpecsObjectDictFileAbsolutePath},
        {"product spec. info", &KGChartEnvironment::GetS57SpecsInfoDictFileAbsolutePath},
        {"S-58 checks", &KGChartEnvironment::GetS58CheckInfoDictFileAbsolutePath},
    };
    for (const auto& d : kDictionaries) dictionaries.File(d.label, (env.*d.getter)());
    report.named += dictionaries.named;
    report.missing += dictionaries.missing;
    out << "\nDictionaries:\n";
    dictionaries.text.Write(out);
    out << '\n' << report.named << " files named, " << report.missing << " missing\n";

    if (session.Json()) {
        WriteJson(std::cout, {{"settings", session.SettingsPath()},
                              {"styles", styles},
                              {"dictionaries", dictionaries.files},
                              {"named", report.named},
                              {"missing", report.missing}});
    } else {
        std::cout << out.str();
    }
    return report.missing == 0 ? kExitOk : kExitFound;
}

}  // namespace

void RegisterEnvironment(CLI::App& app, Commands& commands) {
    CLI::App* env = app.add_subcommand(
        "env",
        "the settings file, each style with its resolved table paths, and the dictionary "
        "files; missing files are marked");
    commands.Add(env, Run);
}

}  // namespace vlchart
