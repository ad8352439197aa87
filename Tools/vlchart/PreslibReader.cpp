// Reading the presentation library's exchange text: records of fixed-width field lines.
#include "PreslibReader.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "ImportText.h"

namespace vlchart {
namespace {

constexpr char kUnit = '\x1F';

struct Field {
    int line = 0;
    std::string tag;
    std::string data;

    // The units of the data; a closing separator ends the last unit, it does not start one.
    std::vector<std::string> Units() const {
        std::vector<std::string> units;
        size_t start = 0;
        while (start < data.size()) {
            size_t end = data.find(kUnit, start);
            if (end == std::string::npos) end = data.size();
            units.push_back(data.substr(start, end - start));
            start = end + 1;
        }
        if (units.empty()) units.emplace_back();
        return units;
    }
};

struct Record {
    int line = 0;
    std::vector<Field> fields;
    PreslibProblem problem;  // line 0: none

    const Field* Find(const char* tag) const {
        for (const auto& field : fields) {
            if (field.tag == tag) return &field;
        }
        return nullptr;
    }
};

class Fault {
public:
    Fault(int line, std::string message) : m_problem{line, std::move(message)} {}
    const PreslibProblem& Problem() const { return m_problem; }

private:
    PreslibProblem m_problem;
};

bool AllOf(const std::string& text, bool (*accept)(char)) {
    for (char c : text) {
        if (!accept(c)) return false;
    }
    return true;
}
bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}
bool IsBlankOrDigit(char c) {
    return c == ' ' || IsDigit(c);
}
bool IsTagLetter(char c) {
    return (c >= 'A' && c <= 'Z') || IsDigit(c);
}

// "0001" alone (3.x) or followed by blanks and the record's id (4.0).
bool IsRecordStart(const std::string& line) {
    return line.compare(0, 4, "0001") == 0 && AllOf(line.substr(4), IsBlankOrDigit);
}

bool IsRecordEnd(const std::string& line) {
    return line.compare(0, 4, "****") == 0;
}

double Number(const Field& field, const std::string& text, const char* what) {
    double value = 0;
    const char* begin = text.data();
    const char* end = begin + text.size();
    const auto result = std::from_chars(begin, end, value);
    if (text.empty() || result.ec != std::errc() || result.ptr != end) {
        throw Fault(field.line, field.tag + ": " + what + " '" + text + "' is not a number");
    }
    return value;
}

std::string Text(const std::string& bytes, bool utf8) {
    std::string text;
    if (utf8 || !Windows1252ToUtf8(bytes, text)) return bytes;
    return text;
}

void ReadColours(const Record& record, Preslib& library) {
    const Field& head = record.fields.front();
    const std::string cols = head.Units().front();
    if (cols.size() < 11 || cols.compare(0, 2, "CS") != 0) {
        throw Fault(head.line, "COLS: '" + cols + "' is not CS, an id, a status and a name");
    }
    PreslibColourTable table;
    table.name = cols.substr(10);
    for (const auto& field : record.fields) {
        if (field.tag != "CCIE") continue;
        const std::vector<std::string> units = field.Units();
        if (units.size() < 3 || units[0].size() < 6) {
            throw Fault(field.line, "CCIE: not a token with x, y and L");
        }
        PreslibColour colour;
        colour.token = units[0].substr(0, 5);
        colour.x = Number(field, units[0].substr(5), "x");
        colour.y = Number(field, units[1], "y");
        colour.luminance = Number(field, units[2], "L");
        table.colours.push_back(colour);
    }
    library.colourTables.push_back(std::move(table));
}

void ReadLookup(const Record& record, bool utf8, Preslib& library) {
    static const std::map<std::string, char> kGeometry = {{"SIMPLIFIED", 'P'},
                                                          {"PAPER_CHART", 'P'},
                                                          {"LINES", 'L'},
                                                          {"PLAIN_BOUNDARIES", 'A'},
                                                          {"SYMBOLIZED_BOUNDARIES", 'A'}};
    const Field& head = record.fields.front();
    const std::string lupt = head.Units().front();
    // "LU", id (5), status (3), object class (6), geometry, priority (5), radar, table name.
    const std::string priority = lupt.size() > 22 ? lupt.substr(17, 5) : std::string();
    if (lupt.size() < 24 || lupt.compare(0, 2, "LU") != 0 || !AllOf(priority, IsDigit)) {
        throw Fault(head.line, "LUPT: '" + lupt + "' is not an entry head");
    }
    const std::string table = lupt.substr(23);
    const auto geometry = kGeometry.find(table);
    if (geometry == kGeometry.end()) throw Fault(head.line, "LUPT: unknown table '" + table + "'");
    if (lupt[16] != geometry->second) {
        throw Fault(head.line, std::string("LUPT: geometry '") + lupt[16] + "' in table " + table);
    }
    if (lupt[22] != 'O' && lupt[22] != 'S') {
        throw Fault(head.line, std::string("LUPT: radar '") + lupt[22] + "' is neither O nor S");
    }
    PreslibLookup entry;
    entry.acronym = Text(lupt.substr(10, 6), utf8);
    entry.priority = std::stoi(priority);
    entry.radar = lupt[22];
    for (const auto& field : record.fields) {
        if (field.tag != "ATTC") continue;
        for (const auto& unit : field.Units()) entry.attributes += Text(unit, utf8);
    }
    std::string* targets[] = {&entry.instructions, &entry.category, &entry.viewingGroup};
    const char* tags[] = {"INST", "DISC", "LUCM"};
    for (int i = 0; i < 3; ++i) {
        const Field* field = record.Find(tags[i]);
        if (field == nullptr)
            throw Fault(record.line, std::string("LUPT entry without ") + tags[i]);
        *targets[i] = Text(field->Units().front(), utf8);
    }
    library.lookups[table].push_back(std::move(entry));
}

int FixedNumber(const Field& field, const std::string& text, size_t at) {
    const std::string digits = text.substr(at, 5);
    // A negative number keeps the width: "-0002".
    const size_t sign = !digits.empty() && digits[0] == '-' ? 1 : 0;
    if (digits.size() != 5 || !AllOf(digits.substr(sign), IsDigit)) {
        throw Fault(field.line, field.tag + ": '" + digits + "' at column " +
                                    std::to_string(at + 1) + " is not a 5-digit number");
    }
    return std::stoi(digits);
}

// SYMD: name, type, six numbers; LIND: name, six numbers; PATD: name, type, fill, spacing,
// minimum and maximum distance, six numbers. The six: pivot column and row, box width and
// height, box column and row.
PreslibDefinition ReadHead(const Field& field, PreslibSymbol& symbol) {
    const std::string head = field.Units().front();
    const bool line = field.tag == "LIND";
    const bool pattern = field.tag == "PATD";
    const size_t numbers = line ? 8 : pattern ? 25 : 9;
    if (head.size() != numbers + 30) {
        throw Fault(field.line, field.tag + ": '" + head + "' is not a definition head");
    }
    symbol.name = head.substr(0, 8);
    PreslibDefinition def;
    def.type = line ? 'V' : head[8];
    if (def.type != 'V' && def.type != 'R') {
        throw Fault(field.line,
                    field.tag + ": type '" + head.substr(8, 1) + "' is neither V nor R");
    }
    if (pattern) {
        symbol.fill = head.substr(9, 3);
        symbol.spacing = head.substr(12, 3);
        symbol.minDistance = FixedNumber(field, head, 15);
        symbol.maxDistance = FixedNumber(field, head, 20);
    }
    int* targets[] = {&def.pivotCol,  &def.pivotRow, &def.boxWidth,
                      &def.boxHeight, &def.boxCol,   &def.boxRow};
    for (size_t i = 0; i < 6; ++i) *targets[i] = FixedNumber(field, head, numbers + 5 * i);
    return def;
}

// A raster's rows must fill its box with its colour letters or "@": the symbol library's
// loader skips a record whose bitmap does not.
void CheckBitmap(int line, const std::string& record, const PreslibDefinition& def) {
    std::string letters = "@";
    for (const auto& colour : def.colours) letters += colour.first;
    std::string problem;
    if (def.boxWidth < 1 || def.rows.size() != static_cast<size_t>(std::max(0, def.boxHeight))) {
        problem = std::to_string(def.rows.size()) + " rows for a box of " +
                  std::to_string(def.boxWidth) + "x" + std::to_string(def.boxHeight);
    }
    for (size_t i = 0; problem.empty() && i < def.rows.size(); ++i) {
        const std::string row = "row " + std::to_string(i + 1);
        if (def.rows[i].size() != static_cast<size_t>(def.boxWidth)) {
            problem = row + " is not " + std::to_string(def.boxWidth) + " wide";
        } else if (def.rows[i].find_first_not_of(letters) != std::string::npos) {
            problem = row + " has a letter that is not one of its colours";
        }
    }
    if (!problem.empty()) throw Fault(line, record + ": " + problem);
}

void ReadSymbol(const Record& record, bool utf8, Preslib& library) {
    // Per record type: the definition, description, colour, vector and bitmap fields.
    static const std::map<std::string, std::array<const char*, 5>> kTags = {
        {"SYMB", {"SYMD", "SXPO", "SCRF", "SVCT", "SBTM"}},
        {"LNST", {"LIND", "LXPO", "LCRF", "LVCT", ""}},
        {"PATT", {"PATD", "PXPO", "PCRF", "PVCT", "PBTM"}}};
    const std::string& type = record.fields.front().tag;
    const auto& tags = kTags.at(type);
    const Field* head = record.Find(tags[0]);
    if (head == nullptr) throw Fault(record.line, type + " record without " + tags[0]);
    PreslibSymbol read;
    PreslibDefinition def = ReadHead(*head, read);
    for (const auto& field : record.fields) {
        const std::string data = field.Units().front();
        if (field.tag == tags[1]) {
            read.description = Text(data, utf8);
        } else if (field.tag == tags[2]) {
            if (data.size() % 6 != 0) {
                throw Fault(field.line, field.tag + ": '" + data + "' is not letters and tokens");
            }
            for (size_t i = 0; i < data.size(); i += 6)
                def.colours.emplace_back(data[i], data.substr(i + 1, 5));
        } else if (field.tag == tags[3]) {
            def.vector += data;
        } else if (field.tag == tags[4]) {
            def.rows.push_back(data);
        }
    }
    if (def.type == 'R') CheckBitmap(head->line, type + " " + read.name, def);
    PreslibSymbol& symbol = library.symbols[type][read.name];
    for (const auto& other : symbol.definitions) {
        if (other.type == def.type) {
            throw Fault(head->line, type + " " + read.name + ": a second " +
                                        (def.type == 'V' ? "vector" : "raster") + " definition");
        }
    }
    // The first definition of a name gives the record its description (and pattern fill).
    if (symbol.definitions.empty()) symbol = std::move(read);
    symbol.definitions.push_back(std::move(def));
}

void Interpret(const Record& record, bool utf8, Preslib& library) {
    if (record.problem.line != 0) throw Fault(record.problem.line, record.problem.message);
    if (record.fields.empty()) throw Fault(record.line, "empty record");
    const std::string& type = record.fields.front().tag;
    if (type == "LUPT") {
        ReadLookup(record, utf8, library);
    } else if (type == "COLS") {
        ReadColours(record, library);
    } else if (type == "SYMB" || type == "LNST" || type == "PATT") {
        ReadSymbol(record, utf8, library);
    } else {
        ++library.skipped[type];
    }
}

// A field line: the tag (4), the data length (5, blank-padded) and the data.
void AddField(Record& record, int number, const std::string& line) {
    if (record.problem.line != 0) return;
    const std::string tag = line.substr(0, 4);
    const std::string length = line.size() >= 9 ? line.substr(4, 5) : std::string();
    const size_t digits = length.find_first_not_of(' ');
    if (tag.size() < 4 || !AllOf(tag, IsTagLetter) || digits == std::string::npos ||
        !AllOf(length.substr(digits), IsDigit)) {
        record.problem = {number, "not a field line: '" + line.substr(0, 20) + "'"};
        return;
    }
    Field field{number, tag, line.substr(9)};
    const size_t declared = std::stoul(length.substr(digits));
    if (field.data.size() != declared) {
        record.problem = {number, tag + ": " + std::to_string(declared) + " bytes declared, " +
                                      std::to_string(field.data.size()) + " found"};
        return;
    }
    record.fields.push_back(std::move(field));
}

}  // namespace

Preslib ParsePreslib(const std::string& text) {
    Preslib library;
    const bool utf8 = IsUtf8(text);
    bool open = false;
    Record record;
    auto close = [&]() {
        try {
            Interpret(record, utf8, library);
        } catch (const Fault& fault) {
            library.malformed.push_back(fault.Problem());
        }
        open = false;
    };
    int number = 0;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\n', start);
        if (end == std::string::npos) end = text.size();
        std::string line = text.substr(start, end - start);
        start = end + 1;
        ++number;
        if (!line.empty() && line.back() == '\r') line.pop_back();
        if (IsRecordStart(line)) {
            if (open) library.malformed.push_back({record.line, "record not closed with ****"});
            record = Record();
            record.line = number;
            open = true;
        } else if (!open) {
            // Comments (";") and blank lines between records.
            if (!line.empty() && line[0] != ';' &&
                line.find_first_not_of(" \t") != std::string::npos) {
                library.malformed.push_back({number, "text outside a record"});
            }
        } else if (IsRecordEnd(line)) {
            close();
        } else {
            AddField(record, number, line);
        }
    }
    if (open) library.malformed.push_back({record.line, "record not closed with ****"});
    return library;
}

}  // namespace vlchart
