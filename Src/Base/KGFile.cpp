// Where the module directory is (override, VLCHART_HOME, the loaded library, the default
// environment) and file tests.
#include "Base/KGFile.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <string>

namespace KGC {
namespace {

std::string WithSlash(std::string dir) {
    if (!dir.empty() && dir.back() != '/') dir.push_back('/');
    return dir;
}

std::string DirectoryOf(const std::string& file) {
    size_t slash = file.rfind('/');
    return slash == std::string::npos ? std::string("./") : file.substr(0, slash + 1);
}

// The directory set with SetModulePath: process-wide, usable during static initialisation and
// from any thread.
struct Override {
    std::mutex mutex;
    std::string directory;
};

Override& TheOverride() {
    static Override* o = new Override();  // never destroyed: usable while the process exits
    return *o;
}

std::string OverrideDirectory() {
    Override& o = TheOverride();
    std::lock_guard<std::mutex> lock(o.mutex);
    return o.directory;
}

bool IsFile(const std::string& path) {
    struct stat st;
    return stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// Where the default environment is when the settings file is not beside the library: the
// source tree's Data/ for a library in the build tree, else the installed data directory
// relative to the library (as the install lays them out; lib/x86_64-linux-gnu works too).
std::string DataDirectoryFor(const std::string& libraryDir) {
#ifdef VLBASE_BUILD_LIBRARY_DIR
    char built[PATH_MAX];
    if (realpath(VLBASE_BUILD_LIBRARY_DIR, built) != nullptr && WithSlash(built) == libraryDir) {
        return WithSlash(VLBASE_SOURCE_DATA_DIR);
    }
#endif
    std::string installed = libraryDir + VLBASE_INSTALL_DATA_RELATIVE;
    char resolved[PATH_MAX];
    if (realpath(installed.c_str(), resolved) != nullptr) installed = resolved;
    return WithSlash(installed);
}

struct SearchState {
    std::string wanted;  // "lib<name>.so"
    std::string found;
};

int FindLoaded(struct dl_phdr_info* info, size_t, void* data) {
    auto* state = static_cast<SearchState*>(data);
    if (info->dlpi_name == nullptr || *info->dlpi_name == '\0') return 0;
    std::string path = info->dlpi_name;
    size_t slash = path.rfind('/');
    std::string base = slash == std::string::npos ? path : path.substr(slash + 1);
    // Accept lib<name>.so and its versioned forms lib<name>.so.N...
    if (base.compare(0, state->wanted.size(), state->wanted) == 0 &&
        (base.size() == state->wanted.size() || base[state->wanted.size()] == '.')) {
        state->found = path;
        return 1;
    }
    return 0;
}

}  // namespace

namespace {

// The directory of the loaded lib<name>.so, ending in "/"; empty when none is loaded.
std::string LoadedLibraryDirectory(const std::string& name) {
    SearchState state;
    state.wanted = "lib" + name + ".so";
    dl_iterate_phdr(FindLoaded, &state);
    if (state.found.empty() && name == "VlBase") {
        // This library itself, also when loaded under another file name.
        Dl_info info;
        if (dladdr(reinterpret_cast<void*>(&KGFile::GetModulePath), &info) != 0 &&
            info.dli_fname != nullptr) {
            state.found = info.dli_fname;
        }
    }
    if (state.found.empty()) return std::string();
    char resolved[PATH_MAX];
    const std::string path = realpath(state.found.c_str(), resolved) ? resolved : state.found;
    return DirectoryOf(path);
}

std::string DefaultDirectory(const std::string& libraryDir) {
    if (libraryDir.empty()) return std::string();
    if (IsFile(libraryDir + "ChartConfig.xml")) return libraryDir;
    return DataDirectoryFor(libraryDir);
}

}  // namespace

PLIX::PlixUnicodeString KGFile::GetModulePath(const PLIX::PlixUnicodeString& moduleName) {
    const std::string overridden = OverrideDirectory();
    if (!overridden.empty()) return PLIX::PlixUnicodeString(overridden);
    const char* home = getenv("VLCHART_HOME");
    if (home != nullptr && *home != '\0') return PLIX::PlixUnicodeString(WithSlash(home));
    const std::string name = moduleName.ToUtf8();
    const std::string dir = LoadedLibraryDirectory(name);
    // The settings file's module falls back to the default environment; any other module is
    // just where its library is.
    return PLIX::PlixUnicodeString(name == "VlBase" ? DefaultDirectory(dir) : dir);
}

PLIX::PlixUnicodeString KGFile::GetDefaultDataPath() {
    return PLIX::PlixUnicodeString(DefaultDirectory(LoadedLibraryDirectory("VlBase")));
}

void KGFile::SetModulePath(const PLIX::PlixUnicodeString& directory) {
    Override& o = TheOverride();
    std::string dir = WithSlash(directory.ToUtf8());
    std::lock_guard<std::mutex> lock(o.mutex);
    o.directory = std::move(dir);
}

bool KGFile::IsExist(const PLIX::PlixUnicodeString& path) {
    if (path.IsEmpty()) return false;
    struct stat st;
    return stat(path.ToUtf8().c_str(), &st) == 0;
}

}  // namespace KGC
