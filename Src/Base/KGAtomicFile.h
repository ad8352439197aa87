// Internal to libVlBase: files written whole or not at all, and the small file helpers the
// markup cursor shares with that code. Not installed.
#pragma once

#include <unistd.h>

#include <string>

namespace KGC {

// Owns a file descriptor and closes it once.
class FileDescriptor {
public:
    explicit FileDescriptor(int fd) : m_fd(fd) {}
    ~FileDescriptor() { Close(); }
    FileDescriptor(const FileDescriptor&) = delete;
    FileDescriptor& operator=(const FileDescriptor&) = delete;
    int Get() const { return m_fd; }
    bool Close() {
        if (m_fd < 0) return true;
        int rc = ::close(m_fd);
        m_fd = -1;
        return rc == 0;
    }

private:
    int m_fd;
};

// "what subject: reason" from errno; call it right after the failing call, before anything
// can change errno.
std::string SystemError(const char* what, const std::string& subject);

// Writes a temporary file beside path and renames it over path, so that readers see either the
// old file or the new one, never a part of either. Through a symbolic link the file it points
// to is replaced, not the link; a dangling link is kept and its target created. The temporary
// file is named ".<name>.<pid>.XXXXXX"; a successful save removes the ones whose process no
// longer runs (left by a writer killed mid-save). False, with the reason in error and the old
// file untouched, when any step fails.
bool WriteAtomically(const std::string& path, const std::string& bytes, std::string& error);

}  // namespace KGC
