// KGLogFile: the process log. Records go to a replaceable sink; the default sink writes
// records at or above the threshold to stderr, or to the file named by VLCHART_LOG.
//
// Threads: every member may be called from any thread at any time. A sink may be called from
// several threads at once (make it thread-safe), and may still be called once by a thread that
// fetched it just before SetSink replaced it.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "Base/PlixUnicodeString.h"
#include "Base/VlBaseExport.h"

namespace KGC {

struct KGLogRecord {
    int level = 0;
    bool hasCode = false;
    int code = 0;
    PLIX::PlixUnicodeString message;
    std::string source;
    int line = 0;
};

class VLBASE_API KGLogFile {
public:
    enum Level : int { Debug = 100, Info = 200, Notice = 300, Warning = 400, Error = 500 };
    using Sink = std::function<void(const KGLogRecord&)>;

    // Never null; the argument is accepted for compatibility and ignored.
    static KGLogFile* GetInstance(bool create = false);

    void RecordLog(int level, const PLIX::PlixUnicodeString& message, const char* source, int line);
    void RecordLog(int level, int code, const PLIX::PlixUnicodeString& message, const char* source,
                   int line);

    // Replaces the sink and returns the previous one; an empty sink restores the default.
    Sink SetSink(Sink sink);
    // Threshold of the default sink (VLCHART_LOG_LEVEL, else 400).
    int GetThreshold() const { return m_threshold.load(std::memory_order_relaxed); }
    void SetThreshold(int level) { m_threshold.store(level, std::memory_order_relaxed); }

    // One line of text for a record, as the default sink writes it.
    static std::string FormatRecord(const KGLogRecord& record);

private:
    KGLogFile();
    void Write(const KGLogRecord& record);

    // Guards m_sink; a record takes a reference to the sink and calls it unlocked, so a sink may
    // log in turn.
    std::mutex m_mutex;
    std::shared_ptr<const Sink> m_sink;
    std::atomic<int> m_threshold{Warning};
};

// printf-style trace, written only when VLCHART_TRACE is set (to stderr when it is "1" or
// "stderr", otherwise appended to the file it names).
VLBASE_API void kgtrace(const char* format, ...) __attribute__((format(printf, 1, 2)));

}  // namespace KGC
