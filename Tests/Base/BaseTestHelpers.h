// Helpers of the platform layer tests: readable strings in failure messages, and scoped
// changes of process-wide state (environment variables, the C locale, the standard error
// stream), each restored when the scope ends.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <string>

#include "Base/PlixUnicodeString.h"

namespace PLIX {
// Lets GoogleTest show a string as its UTF-8 text.
inline void PrintTo(const PlixUnicodeString& s, std::ostream* os) {
    *os << '"' << s.ToUtf8() << '"';
}
}  // namespace PLIX

namespace basetest {

// Sets or unsets one environment variable and puts the previous value back afterwards.
class ScopedEnv {
public:
    explicit ScopedEnv(const char* name) : m_name(name) {
        const char* value = getenv(name);
        m_hadValue = value != nullptr;
        if (m_hadValue) m_value = value;
    }
    ScopedEnv(const char* name, const std::string& value) : ScopedEnv(name) { Set(value); }
    ~ScopedEnv() {
        if (m_hadValue) {
            setenv(m_name.c_str(), m_value.c_str(), 1);
        } else {
            unsetenv(m_name.c_str());
        }
    }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

    void Set(const std::string& value) { setenv(m_name.c_str(), value.c_str(), 1); }
    void Unset() { unsetenv(m_name.c_str()); }

private:
    std::string m_name;
    bool m_hadValue = false;
    std::string m_value;
};

// Switches the whole process to a German-style locale, whose decimal separator is a comma,
// and back to the previous locale afterwards. Active() is false when no such locale is
// installed (Debian: the "locales" package with de_DE.UTF-8 enabled in /etc/locale.gen and
// locale-gen run, or "locales-all").
class ScopedGermanLocale {
public:
    ScopedGermanLocale() {
        const char* current = setlocale(LC_ALL, nullptr);
        m_previous = current != nullptr ? current : "C";
        for (const char* name : {"de_DE.UTF-8", "de_DE.utf8", "de_DE", "de_DE@euro"}) {
            if (setlocale(LC_ALL, name) != nullptr) {
                m_name = name;
                break;
            }
        }
    }
    ~ScopedGermanLocale() { setlocale(LC_ALL, m_previous.c_str()); }
    ScopedGermanLocale(const ScopedGermanLocale&) = delete;
    ScopedGermanLocale& operator=(const ScopedGermanLocale&) = delete;

    bool Active() const { return !m_name.empty(); }
    const std::string& Name() const { return m_name; }

private:
    std::string m_previous;
    std::string m_name;
};

#define BASETEST_SKIP_WITHOUT_GERMAN_LOCALE(scope)                                         \
    do {                                                                                   \
        if (!(scope).Active())                                                             \
            GTEST_SKIP() << "no German locale (de_DE.UTF-8, de_DE, de_DE@euro) is "        \
                            "installed, so the decimal-comma case cannot be checked here"; \
    } while (0)

// Sends the process's standard error to a file while alive.
class ScopedStderrToFile {
public:
    explicit ScopedStderrToFile(const std::string& path) {
        fflush(stderr);
        m_saved = dup(STDERR_FILENO);
        int fd = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
        if (fd >= 0) {
            dup2(fd, STDERR_FILENO);
            close(fd);
        }
    }
    ~ScopedStderrToFile() {
        fflush(stderr);
        if (m_saved >= 0) {
            dup2(m_saved, STDERR_FILENO);
            close(m_saved);
        }
    }
    ScopedStderrToFile(const ScopedStderrToFile&) = delete;
    ScopedStderrToFile& operator=(const ScopedStderrToFile&) = delete;

private:
    int m_saved = -1;
};

}  // namespace basetest
