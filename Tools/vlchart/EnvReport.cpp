// The report of `vlchart env`: styles, resolved table paths and dictionaries.
#include "EnvReport.h"

#include <string>

#include "Base/KGFile.h"
#include "Base/PlixArray.h"
#include "ChartBase/KGChartEnvironment.h"

using KGC::KGChartColorMode;
using KGC::KGChartDisplayStyle;
using KGC::KGChartEnvironment;
using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

struct Counts {
    int named = 0;
    int missing = 0;
};

// One line: label, then the resolved path with a mark when the file is absent.
void PathLine(std::ostream& out, Counts& counts, const std::string& label,
              const PlixUnicodeString& absolute) {
    out << "    " << label;
    for (size_t i = label.size(); i < 26; ++i) out << ' ';
    if (absolute.IsEmpty()) {
        out << "(not set)\n";
        return;
    }
    ++counts.named;
    out << absolute.ToUtf8();
    if (!KGC::KGFile::IsExist(absolute)) {
        ++counts.missing;
        out << "  [missing]";
    }
    out << '\n';
}

void ReportStyle(std::ostream& out, Counts& counts, KGChartEnvironment& env,
                 const PlixUnicodeString& name) {
    auto type = env.GetStyleType(name);
    PlixUnicodeString typeName = KGChartDisplayStyle::GetChartDisplayStyleTypeName(type);
    out << "  " << name.ToUtf8() << "  ("
        << (typeName.IsEmpty() ? std::string("unknown type") : typeName.ToUtf8()) << ")\n";
    if (type == KGChartDisplayStyle::ENC) {
        PathLine(out, counts, "point table, simplified",
                 env.GetPointLookupTableAbsolutePath(name, 1));
        PathLine(out, counts, "point table, paper chart",
                 env.GetPointLookupTableAbsolutePath(name, 0));
    } else {
        PathLine(out, counts, "point table", env.GetPointLookupTableAbsolutePath(name, 1));
    }
    PathLine(out, counts, "line table", env.GetLineLookupTableAbsolutePath(name));
    if (type == KGChartDisplayStyle::ENC) {
        PathLine(out, counts, "area table, plain", env.GetAreaLookupTableAbsolutePath(name, 0));
        PathLine(out, counts, "area table, symbolized",
                 env.GetAreaLookupTableAbsolutePath(name, 1));
    } else {
        PathLine(out, counts, "area table", env.GetAreaLookupTableAbsolutePath(name, 1));
    }
    const KGC::KGS52ColorMode modes[] = {KGChartColorMode::DayBright, KGChartColorMode::Dusk,
                                         KGChartColorMode::Night};
    for (auto mode : modes) {
        // A paper-chart style has one colour table; list it once.
        if (type == KGChartDisplayStyle::PaperChart && mode != KGChartColorMode::DayBright) break;
        PathLine(out, counts, "colours, " + KGChartColorMode::GetColorModeName(mode).ToUtf8(),
                 env.GetColorTableAbsolutePath(mode, name));
    }
}

}  // namespace

int ReportEnvironment(std::ostream& out) {
    KGChartEnvironment env;
    out << "Settings file: " << env.GetSettingsPath().ToUtf8() << '\n';
    if (!KGC::KGFile::IsExist(env.GetSettingsPath())) {
        out << "  not found: point VLCHART_HOME or --home at the directory that holds "
               "ChartConfig.xml\n";
        return 1;
    }
    // The constructor keeps no result; reading again tells whether the file parses.
    if (!env.LoadXML()) {
        out << "  cannot be read as a settings file\n";
        return 1;
    }
    PLIX::PlixArray<PlixUnicodeString> names;
    int styles = env.GetStyleNames(names);
    Counts counts;
    out << "\nStyles (" << styles << "):\n";
    for (const auto& name : names) ReportStyle(out, counts, env, name);

    out << "\nDictionaries:\n";
    struct {
        const char* label;
        PlixUnicodeString (KGChartEnvironment::*getter)();
    } const dictionaries[] = {
        {"object classes", &KGChartEnvironment::GetS57ObjectDictFileAbsolutePath},
        {"attributes", &KGChartEnvironment::GetS57AttributeDictFileAbsolutePath},
        {"agencies", &KGChartEnvironment::GetAgencyDictFileAbsolutePath},
        {"product spec. objects", &KGChartEnvironment::GetS57SpecsObjectDictFileAbsolutePath},
        {"product spec. info", &KGChartEnvironment::GetS57SpecsInfoDictFileAbsolutePath},
        {"S-58 checks", &KGChartEnvironment::GetS58CheckInfoDictFileAbsolutePath},
    };
    for (const auto& d : dictionaries) PathLine(out, counts, d.label, (env.*d.getter)());

    out << '\n' << counts.named << " files named, " << counts.missing << " missing\n";
    return counts.missing == 0 ? 0 : 2;
}

}  // namespace vlchart
