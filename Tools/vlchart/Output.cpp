// Aligned columns, JSON documents and colour swatches for the vlchart commands.
#include "Output.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace vlchart {
namespace {

// Display width of UTF-8 text: one column per code point (the tables hold no wide characters).
size_t Width(const std::string& text) {
    size_t width = 0;
    for (unsigned char c : text) width += (c & 0xC0) != 0x80;
    return width;
}

}  // namespace

void Table::Write(std::ostream& out) const {
    std::vector<size_t> widths;
    for (const auto& row : m_rows) {
        for (size_t i = 0; i + 1 < row.size(); ++i) {
            if (widths.size() <= i) widths.resize(i + 1, 0);
            widths[i] = std::max(widths[i], Width(row[i]));
        }
    }
    for (const auto& row : m_rows) {
        std::string line(static_cast<size_t>(m_indent), ' ');
        for (size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            if (i + 1 < row.size()) line += std::string(widths[i] - Width(row[i]) + 2, ' ');
        }
        while (!line.empty() && line.back() == ' ') line.pop_back();
        out << line << '\n';
    }
}

void WriteJson(std::ostream& out, const Json& document) {
    out << document.dump(2) << '\n';
}

std::string Count(size_t n, const std::string& noun) {
    return std::to_string(n) + " " + noun + (n == 1 ? "" : "s");
}

std::string Hex(int r, int g, int b) {
    char text[8];
    std::snprintf(text, sizeof text, "#%02X%02X%02X", r & 0xFF, g & 0xFF, b & 0xFF);
    return text;
}

std::string Swatch(int r, int g, int b) {
    static const bool colour = [] {
        const char* term = std::getenv("TERM");
        return isatty(STDOUT_FILENO) && term != nullptr && std::strcmp(term, "dumb") != 0 &&
               std::getenv("NO_COLOR") == nullptr;
    }();
    if (!colour) return std::string();
    return "\x1b[48;2;" + std::to_string(r & 0xFF) + ";" + std::to_string(g & 0xFF) + ";" +
           std::to_string(b & 0xFF) + "m  \x1b[0m";
}

}  // namespace vlchart
