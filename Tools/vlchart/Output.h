// Output of the vlchart commands: aligned text columns, or one JSON document with the fields
// the text shows.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>
#include <vector>

namespace vlchart {

using Json = nlohmann::ordered_json;

// Rows of cells written as columns padded to the widest cell of each column; the last cell of
// a row is not padded. Every line starts with indent spaces.
class Table {
public:
    explicit Table(int indent = 0) : m_indent(indent) {}
    void Row(std::vector<std::string> cells) { m_rows.push_back(std::move(cells)); }
    bool Empty() const { return m_rows.empty(); }
    void Write(std::ostream& out) const;

private:
    int m_indent;
    std::vector<std::vector<std::string>> m_rows;
};

// The document, indented by two, with a final newline.
void WriteJson(std::ostream& out, const Json& document);

// "1 finding", "2 findings": a count with its noun, plural by adding "s".
std::string Count(size_t n, const std::string& noun);

// "#RRGGBB" of a colour given as its three components.
std::string Hex(int r, int g, int b);
// A two-cell swatch of the colour when standard output is a colour terminal; empty otherwise.
std::string Swatch(int r, int g, int b);

}  // namespace vlchart
