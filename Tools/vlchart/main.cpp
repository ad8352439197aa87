// vlchart: inspects a chart presentation environment from the command line.
#include <CLI/CLI.hpp>
#include <iostream>
#include <string>

#include "Base/KGFile.h"
#include "EnvReport.h"

int main(int argc, char** argv) {
    CLI::App app{
        "vlchart - inspect a chart presentation environment (settings file, look-up and colour "
        "tables, S-57 dictionaries)"};
    app.require_subcommand(1);
    std::string home;
    app.add_option("--home", home,
                   "directory holding ChartConfig.xml (default: $VLCHART_HOME, else the "
                   "library's directory)");

    CLI::App* env = app.add_subcommand(
        "env",
        "print the settings file, each style with its resolved table paths, and the "
        "dictionary files; missing files are marked");

    CLI11_PARSE(app, argc, argv);
    if (!home.empty()) KGC::KGFile::SetModulePath(home);

    if (*env) return vlchart::ReportEnvironment(std::cout);
    return 0;
}
