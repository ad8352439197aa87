// Tests of the process log: the replaceable sink, the default sink's threshold and targets,
// and the trace output.
#include "Base/KGLogFile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "BaseTestHelpers.h"
#include "TestSupport.h"

using KGC::KGLogFile;
using KGC::KGLogRecord;
using KGC::kgtrace;
using PLIX::PlixUnicodeString;

namespace {

KGLogFile* Log() {
    return KGLogFile::GetInstance(false);
}

// Makes the default sink active and puts the previous sink and threshold back afterwards.
class DefaultSinkScope {
public:
    DefaultSinkScope() : m_previous(Log()->SetSink(nullptr)), m_threshold(Log()->GetThreshold()) {}
    ~DefaultSinkScope() {
        Log()->SetSink(m_previous);
        Log()->SetThreshold(m_threshold);
    }
    DefaultSinkScope(const DefaultSinkScope&) = delete;
    DefaultSinkScope& operator=(const DefaultSinkScope&) = delete;

private:
    KGLogFile::Sink m_previous;
    int m_threshold;
};

std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        lines.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    return lines;
}

bool Contains(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

}  // namespace

TEST(KGLogFile, GetInstanceIsNeverNullAndAlwaysTheSame) {
    KGLogFile* first = KGLogFile::GetInstance(false);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(KGLogFile::GetInstance(true), first);
    EXPECT_EQ(KGLogFile::GetInstance(), first);
}

TEST(KGLogFile, SinkReceivesEveryFieldOfBothRecordForms) {
    DefaultSinkScope restore;
    std::vector<KGLogRecord> records;
    Log()->SetSink([&records](const KGLogRecord& r) { records.push_back(r); });

    Log()->RecordLog(400, PlixUnicodeString("Can't open \xE6\xB5\xB7\xE5\x9B\xBE.xml"),
                     "../../../Src/ChartBase/KGChartEnvironment", 120);
    Log()->RecordLog(500, -100, PlixUnicodeString("EAg001"), "../../../Src/ChartBase/KGS57", 7);
    Log()->RecordLog(400, 0, PlixUnicodeString("zero code"), "src", 1);
    // The threshold belongs to the default sink; a sink of one's own sees everything.
    Log()->SetThreshold(500);
    Log()->RecordLog(100, PlixUnicodeString("debug"), nullptr, 0);

    ASSERT_EQ(records.size(), 4u);
    EXPECT_EQ(records[0].level, 400);
    EXPECT_FALSE(records[0].hasCode);
    EXPECT_EQ(records[0].message.Str(), u"Can't open \u6D77\u56FE.xml");
    EXPECT_EQ(records[0].source, "../../../Src/ChartBase/KGChartEnvironment");
    EXPECT_EQ(records[0].line, 120);

    EXPECT_EQ(records[1].level, 500);
    EXPECT_TRUE(records[1].hasCode);
    EXPECT_EQ(records[1].code, -100);
    EXPECT_EQ(records[1].message.Str(), u"EAg001");
    EXPECT_EQ(records[1].source, "../../../Src/ChartBase/KGS57");
    EXPECT_EQ(records[1].line, 7);

    EXPECT_TRUE(records[2].hasCode);  // a code of 0 is still a code
    EXPECT_EQ(records[2].code, 0);

    EXPECT_EQ(records[3].level, 100);
    EXPECT_FALSE(records[3].hasCode);
    EXPECT_EQ(records[3].message.Str(), u"debug");
    EXPECT_EQ(records[3].source, "");
}

TEST(KGLogFile, SetSinkReturnsThePreviousSinkAndAnEmptySinkRestoresTheDefault) {
    vltest::TempDir dir;
    basetest::ScopedEnv logFile("VLCHART_LOG", dir.File("log.txt"));
    DefaultSinkScope restore;
    Log()->SetThreshold(400);

    int first = 0;
    int second = 0;
    KGLogFile::Sink previous = Log()->SetSink([&first](const KGLogRecord&) { ++first; });
    EXPECT_FALSE(previous);  // the default sink is no function of the caller's
    previous = Log()->SetSink([&second](const KGLogRecord&) { ++second; });
    ASSERT_TRUE(previous);
    previous(KGLogRecord());
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 0);

    Log()->RecordLog(400, PlixUnicodeString("to the second sink"), "src", 1);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 1);

    previous = Log()->SetSink(nullptr);
    ASSERT_TRUE(previous);
    previous(KGLogRecord());
    EXPECT_EQ(second, 2);

    Log()->RecordLog(400, PlixUnicodeString("to the default sink"), "src", 2);
    EXPECT_EQ(first, 1);
    EXPECT_EQ(second, 2);
    std::string written = vltest::ReadFile(dir.File("log.txt"));
    EXPECT_TRUE(Contains(written, "to the default sink")) << written;
    EXPECT_FALSE(Contains(written, "to the second sink")) << written;
}

TEST(KGLogFile, DefaultSinkAppendsRecordsAtOrAboveTheThresholdToTheNamedFile) {
    if (getenv("VLCHART_LOG_LEVEL") == nullptr) {
        EXPECT_EQ(Log()->GetThreshold(), 400);
    }

    vltest::TempDir dir;
    const std::string path = dir.File("chart.log");
    vltest::WriteFile(path, "earlier line\n");
    basetest::ScopedEnv logFile("VLCHART_LOG", path);
    DefaultSinkScope restore;
    Log()->SetThreshold(400);

    Log()->RecordLog(300, PlixUnicodeString("notice not written"), "src", 1);
    Log()->RecordLog(399, PlixUnicodeString("just below not written"), "src", 2);
    Log()->RecordLog(400, PlixUnicodeString("warning \xE6\xB5\xB7"), "src/warn", 3);
    Log()->RecordLog(500, -100, PlixUnicodeString("error with code"), "src/err", 4);

    std::vector<std::string> lines = Lines(vltest::ReadFile(path));
    ASSERT_EQ(lines.size(), 3u) << vltest::ReadFile(path);
    EXPECT_EQ(lines[0], "earlier line");
    EXPECT_TRUE(Contains(lines[1], "warning \xE6\xB5\xB7")) << lines[1];
    EXPECT_TRUE(Contains(lines[2], "error with code")) << lines[2];
    EXPECT_TRUE(Contains(lines[2], "-100")) << lines[2];

    Log()->SetThreshold(200);
    EXPECT_EQ(Log()->GetThreshold(), 200);
    Log()->RecordLog(300, PlixUnicodeString("notice now written"), "src", 5);
    Log()->RecordLog(199, PlixUnicodeString("still below"), "src", 6);
    lines = Lines(vltest::ReadFile(path));
    ASSERT_EQ(lines.size(), 4u) << vltest::ReadFile(path);
    EXPECT_TRUE(Contains(lines[3], "notice now written")) << lines[3];
}

TEST(KGLogFile, DefaultSinkWritesToStandardErrorWithoutALogFile) {
    vltest::TempDir dir;
    basetest::ScopedEnv logFile("VLCHART_LOG");
    logFile.Unset();
    DefaultSinkScope restore;
    Log()->SetThreshold(400);
    {
        basetest::ScopedStderrToFile redirect(dir.File("stderr.txt"));
        Log()->RecordLog(500, PlixUnicodeString("on standard error"), "src", 1);
        Log()->RecordLog(300, PlixUnicodeString("below the threshold"), "src", 2);
    }
    std::string written = vltest::ReadFile(dir.File("stderr.txt"));
    EXPECT_TRUE(Contains(written, "on standard error")) << written;
    EXPECT_FALSE(Contains(written, "below the threshold")) << written;
    EXPECT_EQ(Lines(written).size(), 1u) << written;
}

TEST(KGLogFile, TraceIsWrittenOnlyWhenVlchartTraceIsSet) {
    vltest::TempDir dir;
    const std::string tracePath = dir.File("trace.txt");
    basetest::ScopedEnv trace("VLCHART_TRACE");

    trace.Unset();
    {
        basetest::ScopedStderrToFile redirect(dir.File("stderr.txt"));
        kgtrace("LoadPointLookupTable Cost: %d\n", 1);
    }
    EXPECT_EQ(vltest::ReadFile(dir.File("stderr.txt")), "");

    vltest::WriteFile(tracePath, "kept\n");
    trace.Set(tracePath);
    kgtrace("LoadPointLookupTable Cost: %d\n", 42);
    kgtrace("%s|%5.2f|%ld|%%\n", "\xE6\xB5\xB7", 2.5, 9000000000L);
    const std::string longText(1000, 'z');
    kgtrace("%s\n", longText.c_str());
    EXPECT_EQ(vltest::ReadFile(tracePath),
              "kept\nLoadPointLookupTable Cost: 42\n\xE6\xB5\xB7| 2.50|"
              "9000000000|%\n" +
                  longText + "\n");

    trace.Unset();
    kgtrace("after unset %d\n", 3);
    EXPECT_FALSE(Contains(vltest::ReadFile(tracePath), "after unset"));
}

TEST(KGLogFile, TraceGoesToStandardErrorWhenAskedFor) {
    vltest::TempDir dir;
    basetest::ScopedEnv trace("VLCHART_TRACE");
    for (const char* value : {"1", "stderr"}) {
        trace.Set(value);
        {
            basetest::ScopedStderrToFile redirect(dir.File("stderr.txt"));
            kgtrace("cost %d via %s\n", 7, value);
        }
        EXPECT_EQ(vltest::ReadFile(dir.File("stderr.txt")),
                  "cost 7 via " + std::string(value) + "\n");
        EXPECT_FALSE(vltest::FileExists(dir.File(value)));
    }
}
