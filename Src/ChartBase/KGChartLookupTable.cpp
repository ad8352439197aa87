// Loading the three look-up tables, grouping their entries by object acronym, answering
// queries and freeing the styles.
#include "ChartBase/KGChartLookupTable.h"

#include <ctime>
#include <memory>
#include <utility>

#include "Base/KGFileStdio.h"
#include "Base/KGLogFile.h"
#include "Base/PlixTypes.h"
#include "KGChartLookupFields.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace {

// How every table file is opened: for reading, 8 KiB blocks, UTF-8.
constexpr int kReadBlockSize = 8192;

// The group of the table's entries whose acronym field is "######": what a query for an
// acronym the table does not hold gets.
const char16_t kFallbackAcronym[] = u"######";

// One file object serves every load: created by the first, closed and reopened by the next.
bool OpenTableFile(std::unique_ptr<KGFileStdio>& file, const PlixUnicodeString& path) {
    if (file) {
        file->Close();
    } else {
        file = std::make_unique<KGFileStdio>();
    }
    return file->Open(path, KGStreamRead, kReadBlockSize, PLIX::PLIXCharset::UTF8);
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
void StoreGroup(Map& table, Items& group) {
    Items& stored = table[group.ObjectAcronym];
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
template <typename Style, typename Items, typename Map, typename ParseEntry>
void ReadEntries(KGChartLookupTable& reader, KGFileStdio& file, Map& table, ParseEntry parseEntry) {
    Items group;
    PlixUnicodeString procedure;
    while (!file.IsEOF()) {
        const PlixUnicodeString line = reader.ReadLineString();
        if (line.IsEmpty()) continue;
        auto style = std::make_unique<Style>();
        procedure.Empty();
        PlixUnicodeString acronym = parseEntry(line, style.get(), procedure);
        if (acronym.IsEmpty()) continue;
        if (!group.ObjectAcronym.IsEmpty() && acronym != group.ObjectAcronym &&
            acronym.CompareNoCase(group.ObjectAcronym) != 0) {
            StoreGroup(table, group);
        }
        if (group.ObjectAcronym.IsEmpty()) {
            group.ObjectAcronym = std::move(acronym);
            group.ProcedureName = procedure;
        } else if (group.ProcedureName.IsEmpty()) {
            group.ProcedureName = procedure;
        }
        group.Styles.Add(style.release());
    }
    if (!group.ObjectAcronym.IsEmpty()) StoreGroup(table, group);
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
    if (!OpenTableFile(TableFile, path)) return false;
    DeletePointStyle();
    const clock_t start = clock();
    ReadEntries<KGChartPointObjectStyle, KGChartLookupPointItems>(*this, *TableFile, PointTable,
                                                                  ParseOneLineStringPoint);
    kgtrace("LoadPointLookupTable Cost: %d\n", static_cast<int>(clock() - start));
    // The file stays open on purpose; the next load or the destructor closes it.
    return true;
}

bool KGChartLookupTable::LoadLineLookupTable(const PlixUnicodeString& path) {
    if (!OpenTableFile(TableFile, path)) return false;
    DeleteLineStyle();
    ReadEntries<KGChartLineObjectStyle, KGChartLookupLineItems>(*this, *TableFile, LineTable,
                                                                ParseOneLineStringLine);
    return true;
}

bool KGChartLookupTable::LoadAreaLookupTable(const PlixUnicodeString& path) {
    if (!OpenTableFile(TableFile, path)) return false;
    DeleteAreaStyle();
    ReadEntries<KGChartAreaObjectStyle, KGChartLookupAreaItems>(*this, *TableFile, AreaTable,
                                                                ParseOneLineStringArea);
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
    if (!TableFile || TableFile->IsEOF()) return PlixUnicodeString();
    PlixUnicodeString line = TableFile->ReadLine();
    if (line.IsEmpty()) return line;
    line.Trim();
    // Deliberately an asterisk anywhere, also inside a quoted field, makes a comment line.
    if (line.Find(u'*') >= 0) return PlixUnicodeString();
    return line;
}

namespace {

// One entry's fields in order, each cut as the public field parsers cut it; the instruction
// parser of the kind fills the drawing fields.
template <typename Style, typename ParseInstructions>
PlixUnicodeString ParseEntry(const PlixUnicodeString& line, Style& style,
                             PlixUnicodeString& procedure, ParseInstructions parseInstructions) {
    lookup::EntryCursor entry(line);
    PlixUnicodeString acronym = lookup::ToString(entry.CutAcronym());
    lookup::ParseConditions(entry.Cut(), style.AttributeConditions);
    parseInstructions(entry.Cut(), procedure, style);
    style.DisplayPriority = lookup::ReadInt32(entry.Cut());
    entry.Cut();  // radar: not kept
    style.DisplayCategory = lookup::ParseCategory(entry.Cut());
    entry.CutLast();  // viewing group: not kept
    return acronym;
}

}  // namespace

PlixUnicodeString KGChartLookupTable::ParseOneLineStringPoint(const PlixUnicodeString& line,
                                                              KGChartPointObjectStyle* style,
                                                              PlixUnicodeString& procedure) {
    if (line.IsEmpty() || style == nullptr) return PlixUnicodeString();
    return ParseEntry(line, *style, procedure, lookup::ParsePointInstructions);
}

// The line and area forms require a style, as documented; only the point form tests it.
PlixUnicodeString KGChartLookupTable::ParseOneLineStringLine(const PlixUnicodeString& line,
                                                             KGChartLineObjectStyle* style,
                                                             PlixUnicodeString& procedure) {
    if (line.IsEmpty()) return PlixUnicodeString();
    return ParseEntry(line, *style, procedure, lookup::ParseLineInstructions);
}

PlixUnicodeString KGChartLookupTable::ParseOneLineStringArea(const PlixUnicodeString& line,
                                                             KGChartAreaObjectStyle* style,
                                                             PlixUnicodeString& procedure) {
    if (line.IsEmpty()) return PlixUnicodeString();
    return ParseEntry(line, *style, procedure, lookup::ParseAreaInstructions);
}

}  // namespace KGC
