// vlchart: inspects, checks and edits a chart presentation environment from the command line.
#include <iostream>
#include <string>

#include "ChartBase/VlChartBaseVersion.h"
#include "Tool.h"

namespace {

// The first word that is neither an option nor a known command: what the user meant as one.
std::string UnknownCommand(const CLI::App& app, int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (word.empty() || word[0] == '-') {
            // The global options take a value.
            if (word == "--home" || word == "--style") ++i;
            continue;
        }
        for (const CLI::App* command : app.get_subcommands({})) {
            if (command->get_name() == word) return std::string();
        }
        return word;
    }
    return std::string();
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{
        "vlchart - inspect, check and edit a chart presentation environment (settings file, "
        "look-up and colour tables, symbol library, S-57 dictionaries)"};
    app.require_subcommand(1);
    // Options of the tool stay valid after the command name.
    app.fallthrough();
    vlchart::GlobalOptions options;
    app.add_option("--home", options.home,
                   "directory holding ChartConfig.xml (default: $VLCHART_HOME, else where the "
                   "library finds it)");
    app.add_option("--style", options.style, "display style (default: the first one)");
    app.add_flag("--json", options.json, "print one JSON document instead of text");
    app.set_version_flag("--version", std::string("vlchart ") + KGC::GetVersionString(),
                         "print the version and exit");

    vlchart::Commands commands;
    vlchart::RegisterEnvironment(app, commands);
    vlchart::RegisterCheck(app, commands);
    vlchart::RegisterLookup(app, commands);
    vlchart::RegisterColours(app, commands);
    vlchart::RegisterCatalogue(app, commands);
    vlchart::RegisterStyles(app, commands);
    vlchart::RegisterSymbols(app, commands);
    vlchart::RegisterImportPreslib(app, commands);
    vlchart::RegisterImportS57(app, commands);

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return vlchart::kExitOk;
    } catch (const CLI::CallForVersion& e) {
        std::cout << e.what() << '\n';
        return vlchart::kExitOk;
    } catch (const CLI::ParseError& e) {
        const std::string unknown = UnknownCommand(app, argc, argv);
        if (!unknown.empty()) {
            std::cerr << "vlchart: unknown command '" << unknown << "' (see vlchart --help)\n";
        } else {
            std::cerr << "vlchart: " << e.what() << " (see vlchart --help)\n";
        }
        return vlchart::kExitUsage;
    }

    for (const auto& entry : commands.Entries()) {
        if (!entry.command->parsed()) continue;
        try {
            vlchart::Session session(options, entry.requireSettings);
            return entry.handler(session);
        } catch (const vlchart::ToolError& e) {
            std::cerr << "vlchart: " << e.what() << '\n';
            return e.Status();
        } catch (const std::exception& e) {
            std::cerr << "vlchart: " << e.what() << '\n';
            return vlchart::kExitUsage;
        }
    }
    std::cerr << "vlchart: no command given (see vlchart --help)\n";
    return vlchart::kExitUsage;
}
