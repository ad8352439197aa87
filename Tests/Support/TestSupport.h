// Shared helpers of the unit tests: temporary directories, files, log capture, data folders.
#pragma once

#include <string>
#include <vector>

#include "Base/KGLogFile.h"

namespace vltest {

// A fresh directory under the system temp dir, removed with everything in it on destruction.
class TempDir {
public:
    TempDir();
    ~TempDir();
    TempDir(const TempDir&) = delete;
    TempDir& operator=(const TempDir&) = delete;
    // The directory, ending in "/".
    const std::string& Path() const { return m_path; }
    std::string File(const std::string& name) const { return m_path + name; }

private:
    std::string m_path;
};

void WriteFile(const std::string& path, const std::string& content);
std::string ReadFile(const std::string& path);
bool FileExists(const std::string& path);

// Captures every log record while alive; restores the previous sink afterwards.
class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
    const std::vector<KGC::KGLogRecord>& Records() const { return *m_records; }
    // The messages in UTF-8, in order.
    std::vector<std::string> Messages() const;
    void Clear() { m_records->clear(); }

private:
    std::vector<KGC::KGLogRecord>* m_records;
    KGC::KGLogFile::Sink m_previous;
};

// Points KGFile::GetModulePath at a directory while alive (an empty string clears it).
class ModulePathOverride {
public:
    explicit ModulePathOverride(const std::string& directory);
    ~ModulePathOverride();
    ModulePathOverride(const ModulePathOverride&) = delete;
    ModulePathOverride& operator=(const ModulePathOverride&) = delete;
};

// Tests/Data/ of the source tree, ending in "/".
std::string TestDataDir();
// The real presentation data beside the checkout ("<source>/../shared/data/s52-real/"),
// or empty when that folder is absent.
std::string RealDataDir();
// The repository's default environment, Data/, ending in "/".
std::string DefaultDataDir();

// What a run of the vlchart tool printed, and its exit status (-1 when it did not exit).
struct ToolRun {
    int status = -1;
    std::string out;
    std::string err;
};
// Runs the vlchart tool of this build; the arguments are words for the shell.
ToolRun RunVlchart(const std::string& arguments);

}  // namespace vltest

#define VLTEST_REQUIRE_REAL_DATA()                                                         \
    do {                                                                                   \
        if (vltest::RealDataDir().empty())                                                 \
            GTEST_SKIP() << "the real presentation data (../shared/data/s52-real) is not " \
                            "beside this checkout";                                        \
    } while (0)
