// Reader of the S-52 presentation library in its exchange ("DAI") form, editions 3.x and 4.0:
// the colour tables (COLS/CCIE records), the look-up entries (LUPT/ATTC/INST/DISC/LUCM
// records) and the symbol, line style and pattern definitions (SYMB, LNST, PATT records).
// Other record types are counted, not read.
#pragma once

#include <map>
#include <string>
#include <vector>

namespace vlchart {

// A colour as the exchange file gives it: CIE 1931 chromaticity x, y and luminance L.
struct PreslibColour {
    std::string token;
    double x = 0;
    double y = 0;
    double luminance = 0;
};

struct PreslibColourTable {
    std::string name;  // DAY_BRIGHT, DUSK, NIGHT, ... (3.x); DAY, DUSK, NIGHT (4.0)
    std::vector<PreslibColour> colours;
};

// One look-up entry, its fields as a look-up table file holds them (UTF-8).
struct PreslibLookup {
    std::string acronym;
    std::string attributes;  // the attribute combination, its units concatenated
    std::string instructions;
    int priority = 0;
    char radar = 'O';
    std::string category;
    std::string viewingGroup;
};

// One definition of a symbol, line style or pattern: pivot and box as the definition field
// gives them (0.01 mm for a vector definition, pixels for a raster one).
struct PreslibDefinition {
    char type = 'V';  // V vector, R raster
    int pivotCol = 0;
    int pivotRow = 0;
    int boxWidth = 0;
    int boxHeight = 0;
    int boxCol = 0;
    int boxRow = 0;
    std::vector<std::pair<char, std::string>> colours;  // letter, colour token
    std::string vector;                                 // the command fields joined
    std::vector<std::string> rows;                      // raster rows
};

// The definitions of one name of one kind.
struct PreslibSymbol {
    std::string name;
    std::string description;
    // Patterns: fill STG or LIN, spacing CON or SCL, minimum and maximum distance.
    std::string fill;
    std::string spacing;
    int minDistance = 0;
    int maxDistance = 0;
    std::vector<PreslibDefinition> definitions;  // in file order
};

struct PreslibProblem {
    int line = 0;
    std::string message;
};

struct Preslib {
    std::vector<PreslibColourTable> colourTables;  // in file order
    // By the table name of the LUPT field (SIMPLIFIED, PAPER_CHART, LINES, PLAIN_BOUNDARIES,
    // SYMBOLIZED_BOUNDARIES), entries in file order.
    std::map<std::string, std::vector<PreslibLookup>> lookups;
    // By record type (SYMB, LNST, PATT), then by name.
    std::map<std::string, std::map<std::string, PreslibSymbol>> symbols;
    std::map<std::string, int> skipped;  // record type -> records skipped
    std::vector<PreslibProblem> malformed;
};

// Reads the exchange text. A malformed record is recorded with the line it fails on and left
// out; reading goes on with the next record.
Preslib ParsePreslib(const std::string& text);

}  // namespace vlchart
