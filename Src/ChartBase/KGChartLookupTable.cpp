// Loading the three look-up tables, grouping their entries by object acronym, answering
// queries and freeing the styles.
#include "ChartBase/KGChartLookupTable.h"

#include <ctime>
#include <memory>
#include <utility>

#include "Base/KGFile.h"
#include "Base/KGFileStdio.h"
#include "Base/KGLogFile.h"
#include "Base/PlixTypes.h"
#include "KGChartLookupFields.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

// How every table file is opened: for reading, 8 KiB blocks, UTF-8.
constexpr int kReadBlockSize = 8192;

// The entries most object classes have, at most.
constexpr size_t kGroupStyles = 8;

// The group of the table's entries whose acronym field is "######": what a query for an
// acronym the table does not hold gets.
const char16_t kFallbackAcronym[] = u"######";

// One file object serves every load: created by the first, closed and reopened by the next.
bool OpenTableFile(std::unique_ptr<KGFileStdio>& file, const PlixUnicodeString& path,
                   int& lineNumber) {
    lineNumber = 0;
    if (file) {
        file->Close();
    } else {
        file = std::make_unique<KGFileStdio>();
    }
    if (file->Open(path, KGStreamRead, kReadBlockSize, PLIX::PLIXCharset::UTF8)) return true;
    // A missing table stays silent as before; one that is there but refused (a FIFO, a device,
    // a file over the cap) says why.
    if (KGFile::IsExist(path)) {
        KGLogFile::GetInstance(false)->RecordLog(400, PlixUnicodeString(file->GetError()),
                                                 "../../../Src/ChartBase/KGChartLookupTable", 0);
    }
    return false;
}

// What parsing one entry learned beyond the style, for a load report.
struct EntryParse {
    bool instructionsRead = true;
    size_t instructionStop = 0;
    PlixUnicodeString instructions;
};

// One entry's fields in order, each cut as the public field parsers cut it; the instruction
// parser of the kind fills the drawing fields.
template <typename Style>
PlixUnicodeString ParseEntry(const PlixUnicodeString& line, Style& style,
                             PlixUnicodeString& procedure, EntryParse* parse = nullptr,
                             lookup::AttributeTypes* types = nullptr) {
    lookup::EntryCursor entry(line);
    PlixUnicodeString acronym = lookup::ToString(entry.CutAcronym());
    lookup::ParseConditions(entry.Cut(), style.AttributeConditions, types);
    const lookup::View instructions = entry.Cut();
    size_t stop = 0;
    const bool read = lookup::ParseInstructions(instructions, procedure, style, &stop);
    if (parse != nullptr) {
        parse->instructionsRead = read;
        parse->instructionStop = stop;
        parse->instructions = lookup::ToString(instructions);
    }
    style.DisplayPriority = lookup::ReadInt32(entry.Cut());
    entry.Cut();  // radar: not kept
    style.DisplayCategory = lookup::ParseCategory(entry.Cut());
    entry.CutLast();  // viewing group: not kept
    return acronym;
}

bool HasAsterisk(const std::u16string& line) {
    return lookup::FindChar(line, u'*') != lookup::View::npos;
}

int CountFields(const PlixUnicodeString& line) {
    int quotes = 0;
    for (char16_t c : line.Str()) quotes += c == u'"';
    return quotes / 2;
}

void AddName(PLIX::PlixArray<PlixUnicodeString>& names, const PlixUnicodeString& name) {
    if (!name.IsEmpty()) names.Add(name);
}

void AddLineNames(KGChartLookupLoadReport::Entry& entry, const KGChartLineStyle& line,
                  const PlixUnicodeString& complexLine) {
    AddName(entry.colours, line.ColorToken);
    AddName(entry.lineStyles, complexLine);
}

// The names an entry's style uses, by kind.
void AddNames(KGChartLookupLoadReport::Entry& entry, const KGChartPointObjectStyle& style) {
    for (const auto& symbol : style.Symbols) AddName(entry.symbols, symbol.SymbolName);
}
void AddNames(KGChartLookupLoadReport::Entry& entry, const KGChartLineObjectStyle& style) {
    AddName(entry.symbols, style.Symbol.SymbolName);
    AddLineNames(entry, style.LineStyle, style.ComplexLineName);
}
void AddNames(KGChartLookupLoadReport::Entry& entry, const KGChartAreaObjectStyle& style) {
    for (const auto& symbol : style.Symbols) AddName(entry.symbols, symbol.SymbolName);
    AddLineNames(entry, style.LineStyle, style.ComplexLineName);
    AddName(entry.colours, style.FillColorToken);
    AddName(entry.patterns, style.PatternName);
}

// Records in the report what one line gave.
template <typename Style>
void ReportEntry(KGChartLookupLoadReport& report, int line, const PlixUnicodeString& text,
                 const PlixUnicodeString& acronym, const Style& style, const EntryParse& parse) {
    using Kind = KGChartLookupLoadReport::NoteKind;
    auto note = [&](Kind kind, const PlixUnicodeString& what) {
        KGChartLookupLoadReport::Note n;
        n.kind = kind;
        n.line = line;
        n.acronym = acronym;
        n.text = what;
        report.notes.Add(std::move(n));
    };
    if (acronym.IsEmpty()) {
        note(Kind::DroppedEntry, text);
        return;
    }
    if (CountFields(text) < 7) note(Kind::ShortEntry, text);
    if (!parse.instructionsRead) {
        note(Kind::RejectedInstruction,
             parse.instructions.Mid(static_cast<int>(parse.instructionStop)));
    }
    KGChartLookupLoadReport::Entry entry;
    entry.line = line;
    entry.acronym = acronym;
    for (const auto& condition : style.AttributeConditions)
        AddName(entry.attributes, condition.AttributeAcronym);
    AddNames(entry, style);
    report.entries.Add(std::move(entry));
}

template <typename Items>
void FreeStyles(Items& items) {
    for (auto* style : items.Styles) delete style;
    items.Styles.RemoveAll();
}

template <typename Map>
void FreeTable(Map& table) {
    for (auto& entry : table) FreeStyles(entry.second);
    table.RemoveAll();
}

// Stores the group under its acronym. When an earlier run of entries with the same acronym is
// already there, the later run replaces it and the earlier run's styles are freed now: they
// can no longer be reached from the table.
template <typename Map, typename Items>
void StoreGroup(Map& table, Items& group, KGChartLookupLoadReport* report, int firstLine) {
    Items& stored = table[group.ObjectAcronym];
    if (report != nullptr && !stored.Styles.IsEmpty()) {
        KGChartLookupLoadReport::Note note;
        note.kind = KGChartLookupLoadReport::NoteKind::SplitRun;
        note.line = firstLine;
        note.acronym = group.ObjectAcronym;
        report->notes.Add(std::move(note));
    }
    FreeStyles(stored);
    stored.ObjectAcronym = std::move(group.ObjectAcronym);
    stored.Styles = std::move(group.Styles);
    stored.ProcedureName = std::move(group.ProcedureName);
    group.ObjectAcronym.Empty();
    group.Styles.RemoveAll();
    group.ProcedureName.Empty();
}

// Reads every usable line of the open file into styles and groups consecutive entries of one
// acronym (compared without regard to case; the group keeps the acronym as first written).
template <typename Style, typename Items, typename Map>
void ReadEntries(KGChartLookupTable& reader, KGFileStdio& file, Map& table, const int& lineNumber,
                 KGChartLookupLoadReport* report) {
    Items group;
    int groupLine = 0;
    PlixUnicodeString procedure;
    EntryParse parse;
    PlixUnicodeString line;
    lookup::AttributeTypes types;
    while (!file.IsEOF()) {
        reader.ReadLineString(line);
        if (line.IsEmpty()) continue;
        auto style = std::make_unique<Style>();
        procedure.Empty();
        PlixUnicodeString acronym =
            ParseEntry(line, *style, procedure, report != nullptr ? &parse : nullptr, &types);
        if (report != nullptr) ReportEntry(*report, lineNumber, line, acronym, *style, parse);
        if (acronym.IsEmpty()) continue;
        if (!group.ObjectAcronym.IsEmpty() && acronym != group.ObjectAcronym &&
            acronym.CompareNoCase(group.ObjectAcronym) != 0) {
            StoreGroup(table, group, report, groupLine);
        }
        if (group.ObjectAcronym.IsEmpty()) {
            // Most object classes have a few entries: room for them at once, not by doubling.
            group.Styles.Items().reserve(kGroupStyles);
            group.ObjectAcronym = std::move(acronym);
            group.ProcedureName = procedure;
            groupLine = lineNumber;
        } else if (group.ProcedureName.IsEmpty()) {
            group.ProcedureName = procedure;
        }
        group.Styles.Add(style.release());
    }
    if (!group.ObjectAcronym.IsEmpty()) StoreGroup(table, group, report, groupLine);
}

template <typename Map, typename Items>
bool FindItems(const Map& table, const PlixUnicodeString& acronym, Items& items) {
    const Items* found = table.Find(acronym);
    if (found == nullptr) found = table.Find(PlixUnicodeString(kFallbackAcronym));
    if (found == nullptr) return false;
    items = *found;
    return true;
}

template <typename Map>
PlixUnicodeString FindProcedure(const Map& table, const PlixUnicodeString& acronym) {
    const auto* found = table.Find(acronym);
    return found == nullptr ? PlixUnicodeString() : found->ProcedureName;
}

}  // namespace

KGChartLookupTable::KGChartLookupTable() = default;

KGChartLookupTable::~KGChartLookupTable() {
    DeletePointStyle();
    DeleteLineStyle();
    DeleteAreaStyle();
    TableFile.reset();
}

bool KGChartLookupTable::LoadPointLookupTable(const PlixUnicodeString& path) {
    if (!OpenTableFile(TableFile, path, LineNumber)) return false;
    DeletePointStyle();
    const clock_t start = clock();
    ReadEntries<KGChartPointObjectStyle, KGChartLookupPointItems>(*this, *TableFile, PointTable,
                                                                  LineNumber, Report);
    kgtrace("LoadPointLookupTable Cost: %d\n", static_cast<int>(clock() - start));
    // The file stays open on purpose; the next load or the destructor closes it.
    return true;
}

bool KGChartLookupTable::LoadLineLookupTable(const PlixUnicodeString& path) {
    if (!OpenTableFile(TableFile, path, LineNumber)) return false;
    DeleteLineStyle();
    ReadEntries<KGChartLineObjectStyle, KGChartLookupLineItems>(*this, *TableFile, LineTable,
                                                                LineNumber, Report);
    return true;
}

bool KGChartLookupTable::LoadAreaLookupTable(const PlixUnicodeString& path) {
    if (!OpenTableFile(TableFile, path, LineNumber)) return false;
    DeleteAreaStyle();
    ReadEntries<KGChartAreaObjectStyle, KGChartLookupAreaItems>(*this, *TableFile, AreaTable,
                                                                LineNumber, Report);
    return true;
}

bool KGChartLookupTable::GetLookupPointItems(const PlixUnicodeString& acronym,
                                             KGChartLookupPointItems& items) const {
    return FindItems(PointTable, acronym, items);
}

bool KGChartLookupTable::GetLookupLineItems(const PlixUnicodeString& acronym,
                                            KGChartLookupLineItems& items) const {
    return FindItems(LineTable, acronym, items);
}

bool KGChartLookupTable::GetLookupAreaItems(const PlixUnicodeString& acronym,
                                            KGChartLookupAreaItems& items) const {
    return FindItems(AreaTable, acronym, items);
}

PlixUnicodeString KGChartLookupTable::GetConditionalSymbologyProcedure(
    const PlixUnicodeString& acronym, const PlixUnicodeString& geometry) const {
    if (acronym.IsEmpty()) return PlixUnicodeString();
    if (geometry.CompareNoCase(u"P") == 0) return FindProcedure(PointTable, acronym);
    if (geometry.CompareNoCase(u"L") == 0) return FindProcedure(LineTable, acronym);
    if (geometry.CompareNoCase(u"A") == 0) return FindProcedure(AreaTable, acronym);
    return PlixUnicodeString();
}

void KGChartLookupTable::DeletePointStyle() {
    FreeTable(PointTable);
}

void KGChartLookupTable::DeleteLineStyle() {
    FreeTable(LineTable);
}

void KGChartLookupTable::DeleteAreaStyle() {
    FreeTable(AreaTable);
}

PlixUnicodeString KGChartLookupTable::ReadLineString() {
    PlixUnicodeString line;
    ReadLineString(line);
    return line;
}

void KGChartLookupTable::ReadLineString(PlixUnicodeString& line) {
    if (!TableFile || TableFile->IsEOF()) {
        line.Empty();
        return;
    }
    TableFile->ReadLine(line);
    ++LineNumber;
    if (line.IsEmpty()) return;
    line.Trim();
    // Deliberately an asterisk anywhere, also inside a quoted field, makes a comment line.
    if (HasAsterisk(line.Str())) line.Empty();
}

PlixUnicodeString KGChartLookupTable::ParseOneLineStringPoint(const PlixUnicodeString& line,
                                                              KGChartPointObjectStyle* style,
                                                              PlixUnicodeString& procedure) {
    if (line.IsEmpty() || style == nullptr) return PlixUnicodeString();
    return ParseEntry(line, *style, procedure);
}

// The line and area forms require a style, as documented; only the point form tests it.
PlixUnicodeString KGChartLookupTable::ParseOneLineStringLine(const PlixUnicodeString& line,
                                                             KGChartLineObjectStyle* style,
                                                             PlixUnicodeString& procedure) {
    if (line.IsEmpty()) return PlixUnicodeString();
    return ParseEntry(line, *style, procedure);
}

PlixUnicodeString KGChartLookupTable::ParseOneLineStringArea(const PlixUnicodeString& line,
                                                             KGChartAreaObjectStyle* style,
                                                             PlixUnicodeString& procedure) {
    if (line.IsEmpty()) return PlixUnicodeString();
    return ParseEntry(line, *style, procedure);
}

}  // namespace KGC
