// The session a vlchart command runs in: home, registry, settings file and style.
#include <cstdlib>
#include <fstream>
#include <iterator>

#include "Base/KGFile.h"
#include "Base/KGMarkup.h"
#include "Base/PlixArray.h"
#include "ChartBase/KGS57Dictionary.h"
#include "Tool.h"

using PLIX::PlixUnicodeString;

namespace vlchart {
namespace {

// The directory, absolute when it exists, ending in "/".
std::string WithSlash(std::string dir) {
    if (char* real = ::realpath(dir.c_str(), nullptr)) {
        dir = real;
        std::free(real);
    }
    if (!dir.empty() && dir.back() != '/') dir += '/';
    return dir;
}

// "LINE:COLUMN" of a byte offset in the file, both 1-based; empty when the file cannot be read.
std::string Position(const std::string& path, size_t offset) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::string();
    std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    // A byte order mark is not part of what the parser counted.
    size_t at = text.compare(0, 3, "\xEF\xBB\xBF") == 0 ? 3 : 0;
    offset = std::min(text.size(), at + offset);
    int line = 1;
    int column = 1;
    for (; at < offset; ++at) {
        if (text[at] == '\n') {
            ++line;
            column = 1;
        } else if ((static_cast<unsigned char>(text[at]) & 0xC0) != 0x80) {
            ++column;
        }
    }
    return std::to_string(line) + ":" + std::to_string(column);
}

// The reason the settings file cannot be used, naming the file and, where the parser says,
// the line and column; empty when it can.
std::string SettingsProblem(const std::string& path) {
    if (!KGC::KGFile::IsExist(Utf16(path))) {
        return path +
               ": settings file not found (point --home or VLCHART_HOME at the directory "
               "that holds ChartConfig.xml)";
    }
    KGC::KGMarkup doc;
    if (!doc.Load(Utf16(path))) {
        std::string error = Utf8(doc.GetError());
        const std::string marker = " at offset ";
        const size_t at = error.rfind(marker);
        if (at != std::string::npos) {
            const std::string where = Position(path, std::stoul(error.substr(at + marker.size())));
            error.erase(at);
            if (!where.empty()) return path + ":" + where + ": cannot parse: " + error;
        }
        return path + ": cannot be read: " + error;
    }
    for (const char16_t* element : {u"VeltrinChart", u"ElectronicChart", u"Display"}) {
        if (!doc.FindElem(element)) {
            return path + ": not a settings file: no " + Utf8(element) +
                   " element where it belongs (VeltrinChart/ElectronicChart/Display)";
        }
        doc.IntoElem();
    }
    return std::string();
}

}  // namespace

std::string Utf8(const PlixUnicodeString& text) {
    return text.ToUtf8();
}

PlixUnicodeString Utf16(const std::string& text) {
    return PlixUnicodeString(text);
}

Session::Session(const GlobalOptions& options, bool requireSettings)
    : m_options(options), m_log(std::make_shared<std::vector<KGC::KGLogRecord>>()) {
    auto log = m_log;
    KGC::KGLogFile::GetInstance(false)->SetSink(
        [log](const KGC::KGLogRecord& record) { log->push_back(record); });
    if (!options.home.empty()) {
        KGC::KGFile::SetModulePath(WithSlash(options.home));
        // The registry loaded with the library, from the default home: load it from this one.
        KGC::KGS57Config::GetInstance()->LoadDicts();
    }
    m_home = WithSlash(Utf8(KGC::KGFile::GetModulePath(u"VlBase")));
    if (requireSettings) {
        const std::string problem = SettingsProblem(SettingsPath());
        if (!problem.empty()) throw ToolError(kExitUsage, problem);
    }
}

KGC::KGChartEnvironment& Session::Environment() {
    if (!m_environment) m_environment = std::make_unique<KGC::KGChartEnvironment>();
    return *m_environment;
}

PlixUnicodeString Session::FindStyle(const std::string& name) {
    PLIX::PlixArray<PlixUnicodeString> names;
    Environment().GetStyleNames(names);
    const PlixUnicodeString wanted = Utf16(name);
    for (const auto& written : names) {
        if (written.CompareNoCase(wanted) == 0) return written;
    }
    return PlixUnicodeString();
}

PlixUnicodeString Session::Style() {
    if (m_options.style.empty()) {
        PLIX::PlixArray<PlixUnicodeString> names;
        Environment().GetStyleNames(names);
        if (names.IsEmpty()) throw ToolError(kExitFound, SettingsPath() + ": no style");
        return names[0];
    }
    const PlixUnicodeString style = FindStyle(m_options.style);
    if (style.IsEmpty()) {
        throw ToolError(kExitFound,
                        "style '" + m_options.style + "' not found in " + SettingsPath());
    }
    return style;
}

}  // namespace vlchart
