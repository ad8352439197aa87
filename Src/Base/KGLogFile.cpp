// The process log: records to a replaceable sink, the default one on stderr or VLCHART_LOG.
#include "Base/KGLogFile.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>

namespace KGC {
namespace {

const char* LevelName(int level) {
    if (level >= KGLogFile::Error) return "ERROR";
    if (level >= KGLogFile::Warning) return "WARNING";
    if (level >= KGLogFile::Notice) return "NOTICE";
    if (level >= KGLogFile::Info) return "INFO";
    return "DEBUG";
}

// Appends one line to the named file, or to stderr when the name is empty.
void AppendLine(const char* fileName, const std::string& line) {
    FILE* out = stderr;
    if (fileName != nullptr && *fileName != '\0') {
        out = fopen(fileName, "a");
        if (out == nullptr) out = stderr;
    }
    fwrite(line.data(), 1, line.size(), out);
    fflush(out);
    if (out != stderr) fclose(out);
}

}  // namespace

KGLogFile::KGLogFile() {
    if (const char* level = getenv("VLCHART_LOG_LEVEL")) {
        char* end = nullptr;
        long v = strtol(level, &end, 10);
        if (end != level) SetThreshold(static_cast<int>(v));
    }
}

KGLogFile* KGLogFile::GetInstance(bool) {
    // Built on first use so that other libraries' static initialisers can log safely.
    static KGLogFile* instance = new KGLogFile();  // never destroyed: logging works during exit
    return instance;
}

void KGLogFile::RecordLog(int level, const PLIX::PlixUnicodeString& message, const char* source,
                          int line) {
    KGLogRecord r;
    r.level = level;
    r.message = message;
    r.source = source ? source : "";
    r.line = line;
    Write(r);
}

void KGLogFile::RecordLog(int level, int code, const PLIX::PlixUnicodeString& message,
                          const char* source, int line) {
    KGLogRecord r;
    r.level = level;
    r.hasCode = true;
    r.code = code;
    r.message = message;
    r.source = source ? source : "";
    r.line = line;
    Write(r);
}

KGLogFile::Sink KGLogFile::SetSink(Sink sink) {
    auto replacement = sink ? std::make_shared<const Sink>(std::move(sink)) : nullptr;
    std::shared_ptr<const Sink> old;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        old = std::exchange(m_sink, std::move(replacement));
    }
    return old ? *old : Sink();
}

std::string KGLogFile::FormatRecord(const KGLogRecord& r) {
    std::string text = LevelName(r.level);
    if (r.hasCode) text += " " + std::to_string(r.code);
    text += ": " + r.message.ToUtf8();
    if (!r.source.empty()) text += " (" + r.source + ":" + std::to_string(r.line) + ")";
    return text;
}

void KGLogFile::Write(const KGLogRecord& record) {
    std::shared_ptr<const Sink> sink;
    {
        std::lock_guard<std::mutex> lock(m_mutex);
        sink = m_sink;
    }
    if (sink) {
        (*sink)(record);
        return;
    }
    if (record.level < GetThreshold()) return;
    AppendLine(getenv("VLCHART_LOG"), FormatRecord(record) + "\n");
}

void kgtrace(const char* format, ...) {
    const char* target = getenv("VLCHART_TRACE");
    if (target == nullptr || *target == '\0' || format == nullptr) return;
    va_list args;
    va_start(args, format);
    std::string text = PLIX::PlixUnicodeString::FormatV(format, args).ToUtf8();
    va_end(args);
    bool toStderr = strcmp(target, "1") == 0 || strcmp(target, "stderr") == 0;
    AppendLine(toStderr ? nullptr : target, text);
}

}  // namespace KGC
