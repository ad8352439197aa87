// vlchart import-s57: the S-57 object class, attribute (with expected values) and agency
// dictionaries, made from GDAL's S-57 catalogue tables (Debian package gdal-data).
#include <algorithm>
#include <filesystem>
#include <iostream>
#include <map>
#include <optional>

#include "Base/KGFile.h"
#include "ImportText.h"
#include "Output.h"
#include "Tool.h"

namespace vlchart {
namespace {

namespace fs = std::filesystem;
using Text = std::u32string;

struct S57Options {
    std::string from = "/usr/share/gdal";
    std::string out;
};

Text Decode(const std::string& utf8) {
    Text text;
    for (size_t i = 0; i < utf8.size();) {
        const unsigned char c = static_cast<unsigned char>(utf8[i]);
        const int extra = c < 0x80 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
        char32_t code = extra == 0 ? c : c & (0x3F >> extra);
        for (int k = 1; k <= extra && i + k < utf8.size(); ++k)
            code = (code << 6) | (utf8[i + k] & 0x3F);
        text += code;
        i += static_cast<size_t>(extra) + 1;
    }
    return text;
}

std::string Encode(const Text& text) {
    std::string utf8;
    for (char32_t c : text) {
        if (c < 0x80) {
            utf8 += static_cast<char>(c);
        } else if (c < 0x800) {
            utf8 += static_cast<char>(0xC0 | (c >> 6));
            utf8 += static_cast<char>(0x80 | (c & 0x3F));
        } else if (c < 0x10000) {
            utf8 += static_cast<char>(0xE0 | (c >> 12));
            utf8 += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            utf8 += static_cast<char>(0x80 | (c & 0x3F));
        } else {
            utf8 += static_cast<char>(0xF0 | (c >> 18));
            utf8 += static_cast<char>(0x80 | ((c >> 12) & 0x3F));
            utf8 += static_cast<char>(0x80 | ((c >> 6) & 0x3F));
            utf8 += static_cast<char>(0x80 | (c & 0x3F));
        }
    }
    return utf8;
}

// White space in the Unicode sense: what trimming and collapsing remove from names.
bool IsSpace(char32_t c) {
    return c == ' ' || (c >= 0x09 && c <= 0x0D) || (c >= 0x1C && c <= 0x1F) || c == 0x85 ||
           c == 0xA0 || c == 0x1680 || (c >= 0x2000 && c <= 0x200A) || c == 0x2028 || c == 0x2029 ||
           c == 0x202F || c == 0x205F || c == 0x3000;
}

Text Strip(const Text& text) {
    size_t begin = 0;
    size_t end = text.size();
    while (begin < end && IsSpace(text[begin])) ++begin;
    while (end > begin && IsSpace(text[end - 1])) --end;
    return text.substr(begin, end - begin);
}

// Runs of white space become one blank; none is left at either end.
Text Collapse(const Text& text) {
    Text out;
    bool gap = false;
    for (char32_t c : text) {
        if (IsSpace(c)) {
            gap = !out.empty();
            continue;
        }
        if (gap) out += U' ';
        gap = false;
        out += c;
    }
    return out;
}

// A code written with decimal digits only (blanks around it allowed).
std::optional<long long> CodeOf(const Text& text) {
    const Text code = Strip(text);
    if (code.empty() || code.size() > 18) return std::nullopt;
    long long value = 0;
    for (char32_t c : code) {
        if (c < U'0' || c > U'9') return std::nullopt;
        value = value * 10 + (c - U'0');
    }
    return value;
}

std::string Escape(const Text& text) {
    std::string out;
    for (char c : Encode(text)) {
        if (c == '&') {
            out += "&amp;";
        } else if (c == '<') {
            out += "&lt;";
        } else if (c == '>') {
            out += "&gt;";
        } else {
            out += c;
        }
    }
    return out;
}

// An attribute value with its quotes: double quotes, or single ones when the value holds a
// double quote but no single quote; line breaks and tabs as character references.
std::string Quote(const Text& text) {
    std::string value;
    for (char c : Escape(text)) {
        if (c == '\n') {
            value += "&#10;";
        } else if (c == '\r') {
            value += "&#13;";
        } else if (c == '\t') {
            value += "&#9;";
        } else {
            value += c;
        }
    }
    if (value.find('"') == std::string::npos) return '"' + value + '"';
    if (value.find('\'') == std::string::npos) return '\'' + value + '\'';
    std::string quoted = "\"";
    for (char c : value) quoted += c == '"' ? std::string("&quot;") : std::string(1, c);
    return quoted + '"';
}

std::string Number(long long value) {
    return '"' + std::to_string(value) + '"';
}

// A table file decoded: UTF-8, or Windows-1252 where it is not.
Text ReadTable(const std::string& path) {
    std::string bytes;
    std::string utf8;
    if (!ReadBytes(path, bytes)) throw ToolError(kExitUsage, path + ": cannot read");
    if (!AsUtf8(bytes, utf8)) {
        throw ToolError(kExitUsage, path + ": neither UTF-8 nor Windows-1252 text");
    }
    return Decode(utf8);
}

// The rows of a comma-separated table as records keyed by the header row's names; blank rows
// are left out, missing cells are empty. Quoted cells may hold commas, doubled quotes and
// line breaks.
std::vector<std::map<Text, Text>> ReadRecords(const std::string& path) {
    const Text text = ReadTable(path);
    std::vector<std::vector<Text>> rows;
    std::vector<Text> row;
    Text cell;
    bool quoted = false;
    bool inCell = false;  // the cell has begun: a quote now is text, not an opening quote
    auto endRow = [&]() {
        if (inCell || !row.empty()) {
            row.push_back(cell);
            rows.push_back(row);
        }
        row.clear();
        cell.clear();
        inCell = false;
    };
    for (size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text[i];
        if (quoted) {
            if (c != U'"') {
                cell += c;
            } else if (i + 1 < text.size() && text[i + 1] == U'"') {
                cell += c;
                ++i;
            } else {
                quoted = false;
            }
        } else if (c == U'"' && !inCell) {
            quoted = true;
            inCell = true;
        } else if (c == U',') {
            row.push_back(cell);
            cell.clear();
            inCell = false;
        } else if (c == U'\n' || c == U'\r') {
            endRow();
        } else {
            cell += c;
            inCell = true;
        }
    }
    endRow();
    std::vector<std::map<Text, Text>> records;
    for (size_t r = 1; r < rows.size(); ++r) {
        std::map<Text, Text> record;
        for (size_t k = 0; k < rows[0].size(); ++k) {
            record[rows[0][k]] = k < rows[r].size() ? rows[r][k] : Text();
        }
        records.push_back(std::move(record));
    }
    return records;
}

// Records with a non-zero code, by code; records of the same code keep their order.
std::vector<std::pair<long long, std::map<Text, Text>>> ByCode(const std::string& path) {
    std::vector<std::pair<long long, std::map<Text, Text>>> coded;
    for (auto& record : ReadRecords(path)) {
        const auto code = CodeOf(record[U"Code"]);
        if (code && *code != 0) coded.emplace_back(*code, std::move(record));
    }
    std::stable_sort(coded.begin(), coded.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    return coded;
}

struct Dictionary {
    const char* file;
    const char* root;
    int entries = 0;
    std::string body;
};

Dictionary Objects(const std::string& from) {
    static const std::map<Text, const char*> kTypes = {
        {U"G", "Geo"}, {U"M", "Meta"}, {U"C", "Collection"}, {U"$", "Cartographic"}};
    Dictionary d{"S57Objects.xml", "ObjectClasses", 0, std::string()};
    for (auto& [code, row] : ByCode(from + "s57objectclasses.csv")) {
        d.body +=
            "  <ObjectClass Code=" + Number(code) + " Acronym=" + Quote(Strip(row[U"Acronym"]));
        const auto type = kTypes.find(Strip(row[U"Class"]));
        if (type != kTypes.end()) d.body += std::string(" Type=\"") + type->second + '"';
        d.body += ">\n    <Name>" + Escape(Strip(row[U"ObjectClass"])) + "</Name>\n";
        d.body += "  </ObjectClass>\n";
        ++d.entries;
    }
    return d;
}

Dictionary Attributes(const std::string& from) {
    std::map<long long, std::vector<std::pair<long long, Text>>> expected;
    for (auto& row : ReadRecords(from + "s57expectedinput.csv")) {
        const auto code = CodeOf(row[U"Code"]);
        const auto id = CodeOf(row[U"ID"]);
        if (code && id) expected[*code].emplace_back(*id, Collapse(row[U"Meaning"]));
    }
    Dictionary d{"S57Attributes.xml", "Attributes", 0, std::string()};
    for (auto& [code, row] : ByCode(from + "s57attributes.csv")) {
        d.body += "  <Attribute Code=" + Number(code) + " Acronym=" + Quote(Strip(row[U"Acronym"]));
        const Text type = Strip(row[U"Attributetype"]);
        if (type.size() == 1 && Text(U"ELFIAS").find(type) != Text::npos) {
            d.body += " Type=" + Quote(type);
        }
        d.body += ">\n    <Name>" + Escape(Collapse(row[U"Attribute"])) + "</Name>\n";
        const auto values = expected.find(code);
        if (values != expected.end()) {
            d.body += "    <ExpectedInputs>\n";
            for (const auto& [id, meaning] : values->second) {
                d.body +=
                    "      <ExpectedValue ID=" + Number(id) + " Meaning=" + Quote(meaning) + "/>\n";
            }
            d.body += "    </ExpectedInputs>\n";
        }
        d.body += "  </Attribute>\n";
        ++d.entries;
    }
    return d;
}

bool IsLineBreak(char32_t c) {
    return c == U'\n' || c == U'\r' || c == 0x0B || c == 0x0C || (c >= 0x1C && c <= 0x1E) ||
           c == 0x85 || c == 0x2028 || c == 0x2029;
}

// Agencies are read line by line: the name is the unquoted rest of the line after the third
// comma and may itself hold commas.
Dictionary Agencies(const std::string& from) {
    const Text text = ReadTable(from + "s57agencies.csv");
    Dictionary d{"Agencies.xml", "Agencies", 0, std::string()};
    size_t start = 0;
    while (start < text.size()) {
        size_t end = start;
        while (end < text.size() && !IsLineBreak(text[end])) ++end;
        const Text line = text.substr(start, end - start);
        start = end + (text.compare(end, 2, U"\r\n") == 0 ? 2 : 1);
        if (Strip(line).empty() || line[0] == U'#') continue;
        std::vector<Text> parts;
        size_t at = 0;
        for (int i = 0; i < 3; ++i) {
            const size_t comma = line.find(U',', at);
            if (comma == Text::npos) break;
            parts.push_back(line.substr(at, comma - at));
            at = comma + 1;
        }
        if (parts.size() < 3 || !CodeOf(parts[2])) continue;
        d.body += "  <Agency Token=" + Quote(Strip(parts[1])) +
                  " Code=" + Number(*CodeOf(parts[2])) + ">\n    <AgencyName>" +
                  Escape(Strip(line.substr(at))) + "</AgencyName>\n  </Agency>\n";
        ++d.entries;
    }
    return d;
}

int Import(Session& session, const S57Options& options) {
    std::string from = options.from;
    if (from.empty() || from.back() != '/') from += '/';
    for (const char* name :
         {"s57objectclasses.csv", "s57attributes.csv", "s57expectedinput.csv", "s57agencies.csv"}) {
        if (!KGC::KGFile::IsExist(Utf16(from + name))) {
            throw ToolError(kExitUsage, "missing " + std::string(name) + " in " + from +
                                            " (install the gdal-data package)");
        }
    }
    std::string out = options.out.empty() ? session.Home() + "Dictionary" : options.out;
    std::error_code ec;
    fs::create_directories(out, ec);
    if (ec) throw ToolError(kExitUsage, out + ": cannot create: " + ec.message());
    out = fs::canonical(out, ec).string() + "/";

    const Dictionary dictionaries[] = {Objects(from), Attributes(from), Agencies(from)};
    Json files = Json::array();
    Table text(4);
    for (const auto& d : dictionaries) {
        const std::string document = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" +
                                     std::string(d.root) + ">\n" + d.body + "</" + d.root + ">\n";
        std::string error;
        if (!WriteBytes(out + d.file, document, error)) {
            throw ToolError(kExitUsage, "cannot write " + error);
        }
        files.push_back({{"file", d.file}, {"entries", d.entries}});
        text.Row({d.file, std::to_string(d.entries)});
    }

    std::string settings = "none (no settings file in " + session.Home() + ")";
    int status = kExitOk;
    if (KGC::KGFile::IsExist(Utf16(session.SettingsPath()))) {
        auto& env = session.Environment();
        const bool stored = env.ModifyS57ObjectDictFile(Utf16(out + dictionaries[0].file)) &&
                            env.ModifyS57AttributeDictFile(Utf16(out + dictionaries[1].file)) &&
                            env.ModifyAgencyDictFile(Utf16(out + dictionaries[2].file));
        settings = session.SettingsPath() + (stored ? "" : " (its Dictionary entries are missing)");
        if (!stored) status = kExitFound;
    }
    if (session.Json()) {
        WriteJson(std::cout,
                  {{"from", from}, {"out", out}, {"dictionaries", files}, {"settings", settings}});
        return status;
    }
    std::cout << "Imported the S-57 catalogue of " << from << " into " << out
              << "\n\nDictionaries (entries):\n";
    text.Write(std::cout);
    std::cout << "\nSettings file updated: " << settings << '\n';
    return status;
}

}  // namespace

void RegisterImportS57(CLI::App& app, Commands& commands) {
    auto options = std::make_shared<S57Options>();
    CLI::App* command = app.add_subcommand(
        "import-s57",
        "make the S-57 object class, attribute and agency dictionaries from GDAL's S-57 tables");
    command->add_option("--from", options->from,
                        "directory of s57objectclasses.csv, s57attributes.csv, "
                        "s57expectedinput.csv and s57agencies.csv (default: /usr/share/gdal)");
    command->add_option("--out", options->out,
                        "directory for the dictionaries (default: <home>/Dictionary/)");
    commands.Add(
        command, [options](Session& s) { return Import(s, *options); }, false);
}

}  // namespace vlchart
