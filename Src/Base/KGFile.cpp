// Where the module directory is (override, VLCHART_HOME, the loaded library) and file tests.
#include "Base/KGFile.h"

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>

#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

namespace KGC {
namespace {

std::string& OverrideDirectory() {
    static std::string* dir = new std::string();  // process-wide, usable during static init
    return *dir;
}

std::string WithSlash(std::string dir) {
    if (!dir.empty() && dir.back() != '/') dir.push_back('/');
    return dir;
}

std::string DirectoryOf(const std::string& file) {
    size_t slash = file.rfind('/');
    return slash == std::string::npos ? std::string("./") : file.substr(0, slash + 1);
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

PLIX::PlixUnicodeString KGFile::GetModulePath(const PLIX::PlixUnicodeString& moduleName) {
    if (!OverrideDirectory().empty()) return PLIX::PlixUnicodeString(OverrideDirectory());
    const char* home = getenv("VLCHART_HOME");
    if (home != nullptr && *home != '\0') return PLIX::PlixUnicodeString(WithSlash(home));

    SearchState state;
    state.wanted = "lib" + moduleName.ToUtf8() + ".so";
    dl_iterate_phdr(FindLoaded, &state);
    if (state.found.empty() && moduleName == PLIX::PlixUnicodeString("VlBase")) {
        // This library itself, also when loaded under another file name.
        Dl_info info;
        if (dladdr(reinterpret_cast<void*>(&KGFile::GetModulePath), &info) != 0 &&
            info.dli_fname != nullptr) {
            state.found = info.dli_fname;
        }
    }
    if (state.found.empty()) return PLIX::PlixUnicodeString();
    char resolved[PATH_MAX];
    std::string path = realpath(state.found.c_str(), resolved) ? resolved : state.found;
    return PLIX::PlixUnicodeString(DirectoryOf(path));
}

void KGFile::SetModulePath(const PLIX::PlixUnicodeString& directory) {
    OverrideDirectory() = WithSlash(directory.ToUtf8());
}

bool KGFile::IsExist(const PLIX::PlixUnicodeString& path) {
    if (path.IsEmpty()) return false;
    struct stat st;
    return stat(path.ToUtf8().c_str(), &st) == 0;
}

}  // namespace KGC
