// What the harnesses share: a finding is a trap, and inputs that must be read from a file go
// through one scratch file per process.
#pragma once

#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace vlfuzz {

inline void Check(bool condition) {
    if (!condition) __builtin_trap();
}

// A private directory for the process, removed with what is in it when the process exits.
inline const std::string& ScratchDir() {
    static const struct Dir {
        std::string path;
        Dir() {
            char name[] = "/tmp/vlfuzz-XXXXXX";
            if (mkdtemp(name) != nullptr) path = std::string(name) + "/";
        }
        ~Dir() {
            if (!path.empty()) std::system(("rm -rf '" + path + "'").c_str());
        }
    } dir;
    return dir.path;
}

// Writes the input to a file of that name in the scratch directory and returns its path.
inline std::string WriteScratch(const char* name, const uint8_t* data, size_t size) {
    const std::string path = ScratchDir() + name;
    if (FILE* f = std::fopen(path.c_str(), "wb")) {
        if (size > 0) std::fwrite(data, 1, size, f);
        std::fclose(f);
    }
    return path;
}

}  // namespace vlfuzz
