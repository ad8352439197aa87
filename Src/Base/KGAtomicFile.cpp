// Atomic file replacement: temporary file, flush, rename, directory sync.
#include "KGAtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
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

}  // namespace

bool WriteAtomically(const std::string& path, const std::string& bytes, std::string& error) {
    std::string target = path;
    struct stat st {};
    // Saving through a symbolic link replaces the file it points to, not the link.
    if (::lstat(path.c_str(), &st) == 0 && S_ISLNK(st.st_mode)) {
        if (char* real = ::realpath(path.c_str(), nullptr)) {
            target = real;
            std::free(real);
        }
    }
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
    std::string tmpl = dir + "." + base + ".XXXXXX";
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
    return true;
}

}  // namespace KGC
