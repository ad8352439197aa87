#include "TestSupport.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "Base/KGFile.h"

namespace fs = std::filesystem;

namespace vltest {

TempDir::TempDir() {
    std::string pattern = (fs::temp_directory_path() / "vltest-XXXXXX").string();
    char* made = mkdtemp(pattern.data());
    if (made == nullptr) ADD_FAILURE() << "cannot create a temporary directory";
    m_path = pattern + "/";
}

TempDir::~TempDir() {
    std::error_code ec;
    // Restore write permission that a test may have removed, so that everything goes.
    for (auto it = fs::recursive_directory_iterator(m_path, ec); !ec && it != fs::end(it);
         it.increment(ec)) {
        fs::permissions(it->path(), fs::perms::owner_all, fs::perm_options::add, ec);
    }
    fs::permissions(m_path, fs::perms::owner_all, fs::perm_options::add, ec);
    fs::remove_all(m_path, ec);
}

void WriteFile(const std::string& path, const std::string& content) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out << content;
    if (!out) ADD_FAILURE() << "cannot write " << path;
}

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    return ss.str();
}

bool FileExists(const std::string& path) {
    std::error_code ec;
    return fs::exists(path, ec);
}

LogCapture::LogCapture() : m_records(new std::vector<KGC::KGLogRecord>()) {
    auto* records = m_records;
    m_previous = KGC::KGLogFile::GetInstance(false)->SetSink(
        [records](const KGC::KGLogRecord& r) { records->push_back(r); });
}

LogCapture::~LogCapture() {
    KGC::KGLogFile::GetInstance(false)->SetSink(m_previous);
    delete m_records;
}

std::vector<std::string> LogCapture::Messages() const {
    std::vector<std::string> out;
    for (const auto& r : *m_records) out.push_back(r.message.ToUtf8());
    return out;
}

ModulePathOverride::ModulePathOverride(const std::string& directory) {
    KGC::KGFile::SetModulePath(directory);
}

ModulePathOverride::~ModulePathOverride() {
    KGC::KGFile::SetModulePath("");
}

std::string TestDataDir() {
    return std::string(VLTEST_DATA_DIR) + "/";
}

std::string RealDataDir() {
    std::error_code ec;
    fs::path p = fs::path(VLTEST_SHARED_DATA_DIR) / "s52-real";
    if (!fs::is_directory(p, ec)) return std::string();
    return fs::weakly_canonical(p, ec).string() + "/";
}

std::string DefaultDataDir() {
    return std::string(VLTEST_SOURCE_DIR) + "/Data/";
}

ToolRun RunVlchart(const std::string& arguments) {
    ToolRun run;
#ifdef VLTEST_VLCHART
    TempDir dir;
    // The library's own log goes to a file, so standard error holds what the tool says.
    const std::string command = "VLCHART_LOG='" + dir.File("log") + "' '" + VLTEST_VLCHART + "' " +
                                arguments + " 2>'" + dir.File("stderr") + "'";
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return run;
    char buffer[4096];
    size_t n;
    while ((n = fread(buffer, 1, sizeof buffer, pipe)) > 0) run.out.append(buffer, n);
    const int raw = pclose(pipe);
    run.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    run.err = ReadFile(dir.File("stderr"));
#else
    ADD_FAILURE() << "the vlchart tool is not part of this build: " << arguments;
#endif
    return run;
}

}  // namespace vltest
