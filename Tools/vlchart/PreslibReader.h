// Reader of the S-52 presentation library in its exchange ("DAI") form, editions 3.x and 4.0:
// the colour tables (COLS/CCIE records) and the look-up entries (LUPT/ATTC/INST/DISC/LUCM
// records). Other record types are counted, not read.
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

struct PreslibProblem {
    int line = 0;
    std::string message;
};

struct Preslib {
    std::vector<PreslibColourTable> colourTables;  // in file order
    // By the table name of the LUPT field (SIMPLIFIED, PAPER_CHART, LINES, PLAIN_BOUNDARIES,
    // SYMBOLIZED_BOUNDARIES), entries in file order.
    std::map<std::string, std::vector<PreslibLookup>> lookups;
    std::map<std::string, int> skipped;  // record type -> records skipped
    std::vector<PreslibProblem> malformed;
};

// Reads the exchange text. A malformed record is recorded with the line it fails on and left
// out; reading goes on with the next record.
Preslib ParsePreslib(const std::string& text);

}  // namespace vlchart
