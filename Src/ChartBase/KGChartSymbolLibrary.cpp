// Loading the symbol library file: symbols, line styles and patterns with their definitions,
// the vector commands decoded once at load.
#include "ChartBase/KGChartSymbolLibrary.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include "Base/KGMarkup.h"
#include "Base/KGNumber.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {

struct KGChartSymbolLibrary::Private {
    struct Kind {
        std::vector<KGChartSymbolRecord> records;
        std::unordered_map<std::u16string, size_t> index;
    };
    Kind kinds[3];
    PlixUnicodeString error;
    int skipped = 0;

    void Clear() {
        for (auto& kind : kinds) {
            kind.records.clear();
            kind.index.clear();
        }
        error.Empty();
        skipped = 0;
    }
};

namespace {

using Command = KGChartSymbolCommand;
using Op = KGChartSymbolCommand::Op;

// A whole optionally signed decimal number of at most nine digits: the commands' numbers are
// small, and a longer one is a fault, not something to wrap around.
bool ReadInt(std::u16string_view text, int& value) {
    size_t at = !text.empty() && text[0] == u'-' ? 1 : 0;
    if (text.size() <= at || text.size() - at > 9) return false;
    int n = 0;
    for (size_t i = at; i < text.size(); ++i) {
        if (text[i] < u'0' || text[i] > u'9') return false;
        n = n * 10 + (text[i] - u'0');
    }
    value = at ? -n : n;
    return true;
}

bool ReadPoints(std::u16string_view text, PlixArray<Command::Point>& points) {
    if (text.empty()) return true;
    std::vector<int> numbers;
    size_t start = 0;
    while (start <= text.size()) {
        size_t end = text.find(u',', start);
        if (end == std::u16string_view::npos) end = text.size();
        int n = 0;
        if (!ReadInt(text.substr(start, end - start), n)) return false;
        numbers.push_back(n);
        start = end + 1;
    }
    if (numbers.size() % 2 != 0) return false;
    for (size_t i = 0; i < numbers.size(); i += 2) points.Add({numbers[i], numbers[i + 1]});
    return true;
}

bool ReadCommand(std::u16string_view text, Command& command) {
    if (text.size() < 2) return false;
    const std::u16string_view op = text.substr(0, 2);
    const std::u16string_view args = text.substr(2);
    if (op == u"SP") {
        command.op = Op::SelectPen;
        command.letter = args.size() == 1 ? args[0] : 0;
        return args.size() == 1;
    }
    if (op == u"PU" || op == u"PD") {
        command.op = op == u"PU" ? Op::PenUp : Op::PenDown;
        return ReadPoints(args, command.points);
    }
    if (op == u"FP") {
        command.op = Op::FillPolygon;
        return args.empty();
    }
    if (op == u"SC") {
        command.op = Op::DrawSymbol;
        const size_t comma = args.find(u',');
        command.name = PlixUnicodeString(std::u16string(args.substr(0, comma)));
        if (comma != std::u16string_view::npos && !ReadInt(args.substr(comma + 1), command.value)) {
            return false;
        }
        return !command.name.IsEmpty();
    }
    const struct {
        const char16_t* name;
        Op op;
        int low;
        int high;
    } kValued[] = {{u"SW", Op::PenWidth, 1, 99},
                   {u"ST", Op::Transparency, 0, 3},
                   {u"CI", Op::Circle, 0, 1000000},
                   {u"PM", Op::PolygonMode, 0, 2}};
    for (const auto& v : kValued) {
        if (op != v.name) continue;
        command.op = v.op;
        return ReadInt(args, command.value) && command.value >= v.low && command.value <= v.high &&
               !(v.op == Op::PolygonMode && command.value == 1);
    }
    return false;
}

KGChartSymbolKind KindOfTag(const PlixUnicodeString& tag, bool& known) {
    known = true;
    if (tag == PlixUnicodeString(u"Symbol")) return KGChartSymbolKind::Symbol;
    if (tag == PlixUnicodeString(u"LineStyle")) return KGChartSymbolKind::LineStyle;
    known = tag == PlixUnicodeString(u"Pattern");
    return KGChartSymbolKind::Pattern;
}

void ReadDefinition(KGMarkup& doc, KGChartSymbolDefinition& def) {
    def.raster = doc.GetAttrib(u"type") == PlixUnicodeString(u"raster");
    def.pivotCol = kgatoi(doc.GetAttrib(u"pivotCol"));
    def.pivotRow = kgatoi(doc.GetAttrib(u"pivotRow"));
    def.boxCol = kgatoi(doc.GetAttrib(u"boxCol"));
    def.boxRow = kgatoi(doc.GetAttrib(u"boxRow"));
    def.boxWidth = kgatoi(doc.GetAttrib(u"boxWidth"));
    def.boxHeight = kgatoi(doc.GetAttrib(u"boxHeight"));
    // One pass per element name: asking for each child's tag name would convert every one of
    // thousands of bitmap rows' names to compare it.
    doc.IntoElem();
    while (doc.FindElem(u"Colour")) {
        const PlixUnicodeString letter = doc.GetAttrib(u"letter");
        if (letter.GetLength() == 1) def.colours.Add({letter[0], doc.GetAttrib(u"token")});
    }
    doc.ResetMainPos();
    if (doc.FindElem(u"Vector")) {
        // Commands the importer reported as unknown are left out here too.
        KGChartSymbolLibrary::ParseCommands(doc.GetData(), def.commands);
    }
    doc.ResetMainPos();
    while (doc.FindElem(u"Row")) def.rows.Add(doc.GetData());
    doc.OutOfElem();
}

bool ReadRecord(KGMarkup& doc, KGChartSymbolRecord& record) {
    record.name = doc.GetAttrib(u"name");
    if (record.kind == KGChartSymbolKind::Pattern) {
        record.fill = doc.GetAttrib(u"fill");
        record.spacing = doc.GetAttrib(u"spacing");
        record.minDistance = kgatoi(doc.GetAttrib(u"minDistance"));
        record.maxDistance = kgatoi(doc.GetAttrib(u"maxDistance"));
    }
    doc.IntoElem();
    while (doc.FindElem()) {
        const PlixUnicodeString tag = doc.GetTagName();
        if (tag == PlixUnicodeString(u"Description")) {
            record.description = doc.GetData();
        } else if (tag == PlixUnicodeString(u"Definition")) {
            record.definitions.Add(KGChartSymbolDefinition());
            ReadDefinition(doc, record.definitions[record.definitions.GetSize() - 1]);
        }
    }
    doc.OutOfElem();
    std::stable_sort(record.definitions.begin(), record.definitions.end(),
                     [](const KGChartSymbolDefinition& a, const KGChartSymbolDefinition& b) {
                         return !a.raster && b.raster;
                     });
    return !record.name.IsEmpty() && !record.definitions.IsEmpty();
}

}  // namespace

PlixUnicodeString KGChartSymbolDefinition::ColourToken(char16_t letter) const {
    for (const auto& colour : colours) {
        if (colour.letter == letter) return colour.token;
    }
    return PlixUnicodeString();
}

KGChartSymbolLibrary::KGChartSymbolLibrary() : d(std::make_unique<Private>()) {}
KGChartSymbolLibrary::~KGChartSymbolLibrary() = default;
KGChartSymbolLibrary::KGChartSymbolLibrary(KGChartSymbolLibrary&&) noexcept = default;
KGChartSymbolLibrary& KGChartSymbolLibrary::operator=(KGChartSymbolLibrary&&) noexcept = default;

bool KGChartSymbolLibrary::Load(const PlixUnicodeString& path) {
    d->Clear();
    KGMarkup doc;
    if (!doc.Load(path)) {
        d->error = PlixUnicodeString("cannot be read: ") + doc.GetError();
        return false;
    }
    if (!doc.FindElem(u"SymbolLibrary")) {
        d->error = u"the root element is not <SymbolLibrary>";
        return false;
    }
    doc.IntoElem();
    while (doc.FindElem()) {
        bool known = false;
        KGChartSymbolRecord record;
        record.kind = KindOfTag(doc.GetTagName(), known);
        if (!known) continue;
        Private::Kind& kind = d->kinds[static_cast<int>(record.kind)];
        // The first record of a name is kept, as a look-up finds it.
        if (!ReadRecord(doc, record) || kind.index.count(record.name.Str()) != 0) {
            ++d->skipped;
            continue;
        }
        kind.index.emplace(record.name.Str(), kind.records.size());
        kind.records.push_back(std::move(record));
    }
    return true;
}

const PlixUnicodeString& KGChartSymbolLibrary::GetError() const {
    return d->error;
}

int KGChartSymbolLibrary::GetSkippedCount() const {
    return d->skipped;
}

const KGChartSymbolRecord* KGChartSymbolLibrary::Find(KGChartSymbolKind kind,
                                                      const PlixUnicodeString& name) const {
    const int k = static_cast<int>(kind);
    if (k < 0 || k > 2) return nullptr;
    const auto found = d->kinds[k].index.find(name.Str());
    return found == d->kinds[k].index.end() ? nullptr : &d->kinds[k].records[found->second];
}

PlixArray<PlixUnicodeString> KGChartSymbolLibrary::GetNames(KGChartSymbolKind kind) const {
    PlixArray<PlixUnicodeString> names;
    const int k = static_cast<int>(kind);
    if (k < 0 || k > 2) return names;
    for (const auto& record : d->kinds[k].records) names.Add(record.name);
    return names;
}

int KGChartSymbolLibrary::GetCount(KGChartSymbolKind kind) const {
    const int k = static_cast<int>(kind);
    return k < 0 || k > 2 ? 0 : static_cast<int>(d->kinds[k].records.size());
}

int KGChartSymbolLibrary::ParseCommands(const PlixUnicodeString& text,
                                        PlixArray<KGChartSymbolCommand>& commands) {
    const std::u16string_view all(text.Str());
    int unknown = 0;
    size_t start = 0;
    while (start < all.size()) {
        size_t end = all.find(u';', start);
        if (end == std::u16string_view::npos) end = all.size();
        const std::u16string_view one = all.substr(start, end - start);
        start = end + 1;
        if (one.empty()) continue;
        Command command;
        if (ReadCommand(one, command)) {
            commands.Add(std::move(command));
        } else {
            ++unknown;
        }
    }
    return unknown;
}

const char* KGChartSymbolLibrary::GetKindName(KGChartSymbolKind kind) {
    switch (kind) {
        case KGChartSymbolKind::Symbol:
            return "symbol";
        case KGChartSymbolKind::LineStyle:
            return "line";
        case KGChartSymbolKind::Pattern:
            return "pattern";
    }
    return "";
}

}  // namespace KGC
