// Atomic file replacement: temporary file, flush, rename, directory sync.
#include "KGAtomicFile.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace KGC {

std::string SystemError(const char* what, const std::string& subject) {
    const int err = errno;
    return what + subject + ": " + std::strerror(err);
}

namespace {

mode_t CurrentUmask() {
    // umask() can only be read by changing it, which races with other threads; the kernel
    // reports it in /proc instead.
    mode_t mask = 022;
    if (FILE* f = std::fopen("/proc/self/status", "re")) {
        char line[256];
        while (std::fgets(line, sizeof line, f) != nullptr) {
            unsigned value = 0;
            if (std::sscanf(line, "Umask: %o", &value) == 1) {
                mask = static_cast<mode_t>(value);
                break;
            }
        }
        std::fclose(f);
    }
    return mask;
}

bool WriteAll(int fd, const std::string& bytes) {
    size_t done = 0;
    while (done < bytes.size()) {
        ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
        if (n < 0) {
            if (errno == EINTR) continue;
            return false;
        }
        done += static_cast<size_t>(n);
    }
    return true;
}

// Follows symbolic links one at a time, so that a link whose target does not exist yet still
// leads to that target (realpath would fail on it). False when the links loop.
bool ResolveLinks(const std::string& path, std::string& target, std::string& error) {
    target = path;
    for (int hops = 0; hops < 40; ++hops) {
        struct stat st {};
        if (::lstat(target.c_str(), &st) != 0 || !S_ISLNK(st.st_mode)) return true;
        std::vector<char> buf(static_cast<size_t>(st.st_size > 0 ? st.st_size : 255) + 1);
        ssize_t n = ::readlink(target.c_str(), buf.data(), buf.size());
        if (n < 0) {
            error = SystemError("cannot read the link ", target);
            return false;
        }
        std::string next(buf.data(), static_cast<size_t>(n));
        if (next.empty() || next[0] != '/') {
            const size_t slash = target.rfind('/');
            if (slash != std::string::npos) next = target.substr(0, slash + 1) + next;
        }
        target = std::move(next);
    }
    error = path + ": too many levels of symbolic links";
    return false;
}

// Removes the temporary files that earlier saves of base left in dir when their process died
// mid-save: those named for a process that no longer runs. A save still running in another
// process, or in another thread of this one, keeps its file.
void RemoveStaleTemporaries(const std::string& dir, const std::string& base) {
    DIR* d = ::opendir(dir.empty() ? "." : dir.c_str());
    if (d == nullptr) return;
    const std::string prefix = "." + base + ".";
    const pid_t self = ::getpid();
    while (const dirent* entry = ::readdir(d)) {
        const std::string name = entry->d_name;
        if (name.size() < prefix.size() + 8 || name.compare(0, prefix.size(), prefix) != 0) {
            continue;
        }
        const std::string rest = name.substr(prefix.size());
        const size_t dot = rest.find('.');
        if (dot == 0 || dot == std::string::npos || rest.size() - dot - 1 != 6 || dot > 10 ||
            rest.find_first_not_of("0123456789") != dot) {
            continue;
        }
        const long long pid = std::stoll(rest.substr(0, dot));
        if (pid <= 0 || pid > INT32_MAX || pid == self) continue;
        if (::kill(static_cast<pid_t>(pid), 0) == 0 || errno != ESRCH) continue;
        ::unlink((dir + name).c_str());
    }
    ::closedir(d);
}

}  // namespace

bool WriteAtomically(const std::string& path, const std::string& bytes, std::string& error) {
    // Saving through a symbolic link replaces the file it points to, not the link; a dangling
    // link stays a link and its target is created.
    std::string target;
    if (!ResolveLinks(path, target, error)) return false;
    struct stat st {};
    const bool exists = ::stat(target.c_str(), &st) == 0;
    if (exists && !S_ISREG(st.st_mode)) {
        error = target + " is not a regular file";
        return false;
    }
    const mode_t mode = exists ? (st.st_mode & 07777) : (0666 & ~CurrentUmask());

    const size_t slash = target.rfind('/');
    const std::string dir =
        slash == std::string::npos ? std::string() : target.substr(0, slash + 1);
    const std::string base = slash == std::string::npos ? target : target.substr(slash + 1);
    // The writer's process id in the name tells a later save whether the file is abandoned.
    std::string tmpl = dir + "." + base + "." + std::to_string(::getpid()) + ".XXXXXX";
    std::vector<char> name(tmpl.begin(), tmpl.end());
    name.push_back('\0');
    FileDescriptor fd(::mkostemp(name.data(), O_CLOEXEC));
    if (fd.Get() < 0) {
        error = SystemError("cannot create a temporary file beside ", target);
        return false;
    }
    const char* failed = nullptr;
    if (!WriteAll(fd.Get(), bytes)) {
        failed = "cannot write ";
    } else {
        // Keeping the owner only works with the privilege to do so; without it the new file
        // belongs to the writer, as any rewritten file would. Before fchmod, since a change
        // of owner clears set-id bits.
        if (exists && (st.st_uid != ::geteuid() || st.st_gid != ::getegid())) {
            if (::fchown(fd.Get(), st.st_uid, st.st_gid) != 0) {
            }
        }
        if (::fchmod(fd.Get(), mode) != 0) {
            failed = "cannot set the permissions of ";
        } else if (::fsync(fd.Get()) != 0) {
            failed = "cannot flush ";
        } else if (!fd.Close()) {
            failed = "cannot write ";
        } else if (::rename(name.data(), target.c_str()) != 0) {
            failed = "cannot replace ";
        }
    }
    const bool ok = failed == nullptr;
    if (!ok) error = SystemError(failed, target);
    if (!ok) {
        fd.Close();
        ::unlink(name.data());
        return false;
    }
    // The rename itself is made durable by syncing the directory; a failure here cannot undo
    // a save that has already happened, so it is not reported.
    FileDescriptor dirFd(
        ::open(dir.empty() ? "." : dir.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (dirFd.Get() >= 0) ::fsync(dirFd.Get());
    RemoveStaleTemporaries(dir, base);
    return true;
}

}  // namespace KGC
