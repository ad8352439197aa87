// KGChartLookupTable: the S-52 point, line and area look-up tables of one display style,
// parsed into style records and indexed by object class acronym.
//
// Threads: once loaded, the const queries (GetLookup...Items, GetConditionalSymbologyProcedure,
// Get...Table) may be called from several threads at once; loads, frees and ReadLineString need
// the table to themselves.
#pragma once

#include <memory>

#include "Base/PlixArray.h"
#include "Base/PlixDict.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartDisplayTypes.h"
#include "ChartBase/KGChartStyle.h"
#include "ChartBase/VlChartBaseExport.h"

namespace KGC {

class KGFileStdio;

// The styles of one object acronym, in file order. The style pointers are borrowed from the
// KGChartLookupTable that handed the record out and stay valid until that table reloads the
// same kind, frees it or is destroyed.
class VLCHARTBASE_API KGChartLookupPointItems {
public:
    // As written in the first entry of the group.
    PLIX::PlixUnicodeString ObjectAcronym;
    PLIX::PlixArray<KGChartPointObjectStyle*> Styles;
    // The first non-empty conditional symbology procedure of the group's entries.
    PLIX::PlixUnicodeString ProcedureName;
};

class VLCHARTBASE_API KGChartLookupLineItems {
public:
    PLIX::PlixUnicodeString ObjectAcronym;
    PLIX::PlixArray<KGChartLineObjectStyle*> Styles;
    PLIX::PlixUnicodeString ProcedureName;
};

class VLCHARTBASE_API KGChartLookupAreaItems {
public:
    PLIX::PlixUnicodeString ObjectAcronym;
    PLIX::PlixArray<KGChartAreaObjectStyle*> Styles;
    PLIX::PlixUnicodeString ProcedureName;
};

// What loading a table read only in part or passed over, and the names each loaded entry uses:
// the material of a table check (vlchart check). Filled only while attached to a table with
// SetLoadReport; a load appends to it.
class VLCHARTBASE_API KGChartLookupLoadReport {
public:
    enum class NoteKind : int32_t {
        DroppedEntry,         // not loaded: the acronym field does not hold six characters
        ShortEntry,           // fewer than seven fields: loaded, the missing ones at defaults
        RejectedInstruction,  // the instruction parse stopped here; what followed is lost
        SplitRun,             // an acronym's entries stand in several runs: only the last is kept
    };
    struct Note {
        NoteKind kind = NoteKind::DroppedEntry;
        // 1-based line of the table file.
        int line = 0;
        PLIX::PlixUnicodeString acronym;
        // The entry line (dropped, short), the refused instruction and what follows it, or
        // the line of the earlier run (split).
        PLIX::PlixUnicodeString text;
    };
    // One loaded entry, in file order.
    struct Entry {
        int line = 0;
        PLIX::PlixUnicodeString acronym;
        // The acronyms of its conditions; the catch-all adds none.
        PLIX::PlixArray<PLIX::PlixUnicodeString> attributes;
        // The colour tokens of LS and AC.
        PLIX::PlixArray<PLIX::PlixUnicodeString> colours;
        // The names of SY (symbols), LC (complex line styles) and AP (area patterns).
        PLIX::PlixArray<PLIX::PlixUnicodeString> symbols;
        PLIX::PlixArray<PLIX::PlixUnicodeString> lineStyles;
        PLIX::PlixArray<PLIX::PlixUnicodeString> patterns;
    };
    PLIX::PlixArray<Note> notes;
    PLIX::PlixArray<Entry> entries;
};

// Table files: one entry per line, seven fields in double quotes separated by commas:
// object acronym, attribute combination, symbolization instructions, display priority,
// radar, display category, viewing group. A line holding "*" anywhere is a comment.
// Not safe for concurrent use; the three kinds share one file object.
class VLCHARTBASE_API KGChartLookupTable {
public:
    using PointTableMap = PLIX::PlixDict<PLIX::PlixUnicodeString, KGChartLookupPointItems>;
    using LineTableMap = PLIX::PlixDict<PLIX::PlixUnicodeString, KGChartLookupLineItems>;
    using AreaTableMap = PLIX::PlixDict<PLIX::PlixUnicodeString, KGChartLookupAreaItems>;

    KGChartLookupTable();
    ~KGChartLookupTable();
    KGChartLookupTable(const KGChartLookupTable&) = delete;
    KGChartLookupTable& operator=(const KGChartLookupTable&) = delete;

    // ---- loading ----
    // Replace the table of that kind with the file's entries; false only when the file cannot
    // be opened, and then the previous table of that kind stays. Unusable lines are skipped.
    bool LoadPointLookupTable(const PLIX::PlixUnicodeString& path);
    bool LoadLineLookupTable(const PLIX::PlixUnicodeString& path);
    bool LoadAreaLookupTable(const PLIX::PlixUnicodeString& path);

    // ---- queries ----
    // The acronym's items (case-sensitive), else those of "######", the table's fallback
    // entries; false, and the record untouched, when neither is present.
    bool GetLookupPointItems(const PLIX::PlixUnicodeString& acronym,
                             KGChartLookupPointItems& items) const;
    bool GetLookupLineItems(const PLIX::PlixUnicodeString& acronym,
                            KGChartLookupLineItems& items) const;
    bool GetLookupAreaItems(const PLIX::PlixUnicodeString& acronym,
                            KGChartLookupAreaItems& items) const;
    // The group's procedure for geometry "P", "L" or "A" (any case); empty when there is none.
    // No "######" fallback.
    PLIX::PlixUnicodeString GetConditionalSymbologyProcedure(
        const PLIX::PlixUnicodeString& acronym, const PLIX::PlixUnicodeString& geometry) const;

    // Every group of a kind, keyed by acronym.
    const PointTableMap& GetPointTable() const { return PointTable; }
    const LineTableMap& GetLineTable() const { return LineTable; }
    const AreaTableMap& GetAreaTable() const { return AreaTable; }

    // Attaches a report that the next loads fill (not owned; null detaches it).
    void SetLoadReport(KGChartLookupLoadReport* report) { Report = report; }

    // ---- freeing ----
    void DeletePointStyle();
    void DeleteLineStyle();
    void DeleteAreaStyle();

    // ---- reading entries ----
    // The next usable line of the file last opened, trimmed of "\r\n\t "; empty at the end,
    // for a blank line and for a comment line.
    PLIX::PlixUnicodeString ReadLineString();
    // The same into line, reusing its storage, as the loads read.
    void ReadLineString(PLIX::PlixUnicodeString& line);
    // Parse one entry into the style; the result is the entry's object acronym, empty when
    // the entry is unusable. The line and area forms require a style.
    static PLIX::PlixUnicodeString ParseOneLineStringPoint(const PLIX::PlixUnicodeString& line,
                                                           KGChartPointObjectStyle* style,
                                                           PLIX::PlixUnicodeString& procedure);
    static PLIX::PlixUnicodeString ParseOneLineStringLine(const PLIX::PlixUnicodeString& line,
                                                          KGChartLineObjectStyle* style,
                                                          PLIX::PlixUnicodeString& procedure);
    static PLIX::PlixUnicodeString ParseOneLineStringArea(const PLIX::PlixUnicodeString& line,
                                                          KGChartAreaObjectStyle* style,
                                                          PLIX::PlixUnicodeString& procedure);

    // ---- field parsers ----
    // Each takes the rest of an entry beginning with its field, and cuts the field and the
    // commas after it off the front.
    // The first field when it holds exactly six characters; otherwise empty, text untouched.
    static PLIX::PlixUnicodeString ParseObjectAcronym(PLIX::PlixUnicodeString& entry);
    static int32_t ParseDisplayPriority(PLIX::PlixUnicodeString& entry);
    static PLIX::PlixUnicodeString ParseRadar(PLIX::PlixUnicodeString& entry);
    static KGS52DisplayCategory ParerDisplayCategory(PLIX::PlixUnicodeString& entry);
    // The last field: empties the whole remaining entry.
    static int32_t ParseGroup(PLIX::PlixUnicodeString& entry);

    // Appends the conditions of the attribute combination field ("BOYSHP2COLOUR3") in the
    // order written; an empty field gives one catch-all condition. Each attribute's type in
    // the S-57 attribute dictionary decides whether its value is kept as a number or as text.
    static void ParseAttributeCombination(PLIX::PlixUnicodeString& entry,
                                          PLIX::PlixArray<KGChartAttributeCondition>& conditions);

    // ---- symbolization instructions ----
    // Cut the instruction field off the entry and apply its instructions ("SY(...);LS(...)")
    // to the style. False for a null style (nothing touched) and when an instruction is not
    // accepted for the kind, is not upper-case or lacks its parentheses: the instructions read
    // before it stay and the rest is ignored. The procedure receives the argument of CS.
    static bool ParseSymbolizationInstructionpPoint(PLIX::PlixUnicodeString& entry,
                                                    PLIX::PlixUnicodeString& procedure,
                                                    KGChartPointObjectStyle* style);
    static bool ParseSymbolizationInstructionpLine(PLIX::PlixUnicodeString& entry,
                                                   PLIX::PlixUnicodeString& procedure,
                                                   KGChartLineObjectStyle* style);
    static bool ParseSymbolizationInstructionpArea(PLIX::PlixUnicodeString& entry,
                                                   PLIX::PlixUnicodeString& procedure,
                                                   KGChartAreaObjectStyle* style);
    // The argument parsers; each consumes the text between the instruction's parentheses.
    static void ParseSY(PLIX::PlixUnicodeString& args, KGChartSymbolMarkerStyle& symbol);
    static void ParseLS(PLIX::PlixUnicodeString& args, KGChartLineStyle& line);
    static void ParseTX(PLIX::PlixUnicodeString& args, KGChartTextFormat& text);
    static void ParseTE(PLIX::PlixUnicodeString& args, KGChartTextFormat& text);

private:
    PointTableMap PointTable;
    LineTableMap LineTable;
    AreaTableMap AreaTable;
    // The file last opened, left open until the next load or destruction.
    std::unique_ptr<KGFileStdio> TableFile;
    // Lines read from it so far.
    int LineNumber = 0;
    KGChartLookupLoadReport* Report = nullptr;
};

}  // namespace KGC
