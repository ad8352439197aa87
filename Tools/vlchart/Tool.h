// The pieces every vlchart command shares: the options common to all commands, the errors that
// end a command with its exit status, the session a command runs in, and the registration of
// each command family.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "Base/KGLogFile.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartEnvironment.h"

namespace vlchart {

// Exit statuses: done and nothing found wrong; something found (or a name asked for does not
// exist); bad usage or an unusable settings file.
constexpr int kExitOk = 0;
constexpr int kExitFound = 1;
constexpr int kExitUsage = 2;

// Ends a command: one line for standard error and the exit status.
class ToolError : public std::runtime_error {
public:
    ToolError(int status, const std::string& message)
        : std::runtime_error(message), m_status(status) {}
    int Status() const { return m_status; }

private:
    int m_status;
};

// Options accepted by every command, before or after the command name.
struct GlobalOptions {
    std::string home;
    std::string style;
    bool json = false;
};

// What a command runs on: the home chosen (--home, else VLCHART_HOME, else where the library
// finds it), the registry reloaded from there, the settings file.
class Session {
public:
    // Checks the settings file when requireSettings: missing, unparsable (with line and
    // column) or without its Display element is a ToolError with kExitUsage.
    Session(const GlobalOptions& options, bool requireSettings);

    const GlobalOptions& Options() const { return m_options; }
    bool Json() const { return m_options.json; }
    // The directory of the settings file, ending in "/".
    const std::string& Home() const { return m_home; }
    std::string SettingsPath() const { return m_home + "ChartConfig.xml"; }
    KGC::KGChartEnvironment& Environment();
    // --style, else the first style of the settings file; a ToolError (kExitFound) when the
    // style does not exist.
    PLIX::PlixUnicodeString Style();
    // The style of that name (any case) as the settings file writes it; empty when none.
    PLIX::PlixUnicodeString FindStyle(const std::string& name);
    // Log records the library wrote while this session ran (the registry's reload included).
    const std::vector<KGC::KGLogRecord>& Log() const { return *m_log; }

private:
    GlobalOptions m_options;
    std::string m_home;
    std::shared_ptr<std::vector<KGC::KGLogRecord>> m_log;
    std::unique_ptr<KGC::KGChartEnvironment> m_environment;
};

using Handler = std::function<int(Session&)>;

// The commands, as their families register them.
class Commands {
public:
    // requireSettings: the command fails with kExitUsage when the settings file is unusable.
    void Add(CLI::App* command, Handler handler, bool requireSettings = true) {
        m_entries.push_back({command, std::move(handler), requireSettings});
    }
    struct Entry {
        CLI::App* command;
        Handler handler;
        bool requireSettings;
    };
    const std::vector<Entry>& Entries() const { return m_entries; }

private:
    std::vector<Entry> m_entries;
};

void RegisterEnvironment(CLI::App& app, Commands& commands);
void RegisterCheck(CLI::App& app, Commands& commands);
void RegisterLookup(CLI::App& app, Commands& commands);
void RegisterColours(CLI::App& app, Commands& commands);
void RegisterCatalogue(CLI::App& app, Commands& commands);
void RegisterStyles(CLI::App& app, Commands& commands);
void RegisterSymbols(CLI::App& app, Commands& commands);
void RegisterImportPreslib(CLI::App& app, Commands& commands);
void RegisterImportS57(CLI::App& app, Commands& commands);

// The style's colour table of that mode, loaded, its path in file; a ToolError (kExitFound)
// when it is not set or cannot be read.
KGC::KGChartColorTable LoadTable(Session& session, const PLIX::PlixUnicodeString& style,
                                 KGC::KGS52ColorMode mode, std::string& file);

// Text helpers.
std::string Utf8(const PLIX::PlixUnicodeString& text);
PLIX::PlixUnicodeString Utf16(const std::string& text);

}  // namespace vlchart
