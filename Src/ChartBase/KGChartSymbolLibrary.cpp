// Loading the symbol library file: symbols, line styles and patterns with their definitions,
// the vector commands decoded and the bitmaps checked against their boxes once, at load, in
// one pass over the document.
#include "ChartBase/KGChartSymbolLibrary.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

#include "Base/KGMarkupReader.h"
#include "Base/KGNumber.h"
#include "KGChartSymbolText.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {

namespace {

// Where a vector definition's command text lies in the library's commandText.
struct Span {
    uint32_t offset = 0;
    uint32_t size = 0;
};

}  // namespace

struct KGChartSymbolLibrary::Private {
    struct Kind {
        std::vector<KGChartSymbolRecord> records;
        // The records by name, by open addressing: a slot holds a record's position + 1, or 0
        // when empty, in a power of two of at least twice the records so that probes stay
        // short. One allocation, where a map would make one a record.
        std::vector<uint32_t> slots;
        // The command texts of record i's vector definitions (which come first among its
        // definitions) are spans[firstSpan[i]...], one a definition; decoded[i] is set once
        // they have been decoded into the record.
        std::vector<uint32_t> firstSpan;
        std::vector<Span> spans;
        std::unique_ptr<std::atomic<bool>[]> decoded;

        // The position of the record of that name; -1 when there is none.
        ptrdiff_t Find(std::u16string_view name) const {
            if (slots.empty()) return -1;
            const size_t mask = slots.size() - 1;
            for (size_t i = Hash(name) & mask; slots[i] != 0; i = (i + 1) & mask) {
                if (records[slots[i] - 1].name.Str() == name) return slots[i] - 1;
            }
            return -1;
        }
        // Indexes the last record; false when one of its name is there already.
        bool IndexLast() {
            const std::u16string_view name = records.back().name.Str();
            const size_t mask = slots.size() - 1;
            size_t i = Hash(name) & mask;
            for (; slots[i] != 0; i = (i + 1) & mask) {
                if (records[slots[i] - 1].name.Str() == name) return false;
            }
            slots[i] = static_cast<uint32_t>(records.size());
            return true;
        }
        static size_t Hash(std::u16string_view name) {
            return std::hash<std::u16string_view>()(name);
        }
    };
    Kind kinds[3];
    // The vector definitions' command texts, one after the other, as the file has them.
    std::string commandText;
    std::mutex decoding;
    PlixUnicodeString error;
    int skipped = 0;

    void Clear() {
        for (auto& kind : kinds) kind = Kind();
        commandText.clear();
        error.Empty();
        skipped = 0;
    }

    // Record i of kind k with its commands decoded: at its first look-up, under the lock, so
    // that a load decodes nothing and a host pays only for the records it draws.
    const KGChartSymbolRecord& Decoded(int k, size_t i) {
        Kind& kind = kinds[k];
        if (!kind.decoded[i].load(std::memory_order_acquire)) {
            const std::lock_guard<std::mutex> lock(decoding);
            if (!kind.decoded[i].load(std::memory_order_relaxed)) {
                const Span* span = kind.spans.data() + kind.firstSpan[i];
                for (KGChartSymbolDefinition& def : kind.records[i].definitions.Items()) {
                    if (def.raster) break;
                    symboltext::ReadCommands(
                        std::string_view(commandText).substr(span->offset, span->size),
                        def.commands);
                    ++span;
                }
                kind.decoded[i].store(true, std::memory_order_release);
            }
        }
        return kind.records[i];
    }
};

namespace {

using Element = KGMarkupReader::Element;
using symboltext::Assign;
using symboltext::ReadLetter;
using symboltext::ReadNumbers;

// An attribute value: short, its length found here rather than by a call.
std::string_view View(const char* value) {
    size_t n = 0;
    while (value[n] != '\0') ++n;
    return std::string_view(value, n);
}

bool IsSpace(char c) {
    return c == ' ' || c == '\n' || c == '\t' || c == '\r';
}

// The letters a bitmap may hold: "@" and the definition's colour letters. The presentation
// library's are "@" and a run from "A", one range of bytes, which is tested sixteen pixels at a
// time; any other set, a byte at a time against a table.
class Letters {
public:
    explicit Letters(const KGChartSymbolDefinition& def) {
        std::memset(m_other, 1, sizeof m_other);
        m_other['@'] = 0;
        unsigned low = '@';
        unsigned high = '@';
        for (const auto& colour : def.colours) {
            if (colour.letter >= 128) continue;
            m_other[colour.letter] = 0;
            low = std::min<unsigned>(low, colour.letter);
            high = std::max<unsigned>(high, colour.letter);
        }
        m_low = static_cast<unsigned char>(low);
        m_span = static_cast<unsigned char>(high - low);
        for (unsigned c = low; c <= high; ++c) m_range = m_range && m_other[c] == 0;
    }

    // Copies the width bytes at row to out when they are all letters; end bounds what may be
    // read beyond them, and out has room for sixteen bytes more than the row.
    bool CopyRow(const char* row, size_t width, const char* end, char* out) const {
#if defined(__SSE2__)
        if (m_range && static_cast<size_t>(end - row) >= 16) {
            const __m128i low = _mm_set1_epi8(static_cast<char>(m_low));
            const __m128i span = _mm_set1_epi8(static_cast<char>(m_span));
            // Copies sixteen bytes; the lanes whose byte lies outside low..low+span.
            const auto copy = [&](size_t at) {
                const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(row + at));
                _mm_storeu_si128(reinterpret_cast<__m128i*>(out + at), bytes);
                const __m128i offset = _mm_sub_epi8(bytes, low);
                return ~_mm_movemask_epi8(_mm_cmpeq_epi8(_mm_max_epu8(offset, span), span)) &
                       0xFFFF;
            };
            if (width < 16) return (copy(0) & ((1 << width) - 1)) == 0;
            int bad = copy(width - 16);
            for (size_t k = 0; k + 16 <= width && bad == 0; k += 16) bad = copy(k);
            return bad == 0;
        }
#endif
        (void)end;
        unsigned char wrong = 0;
        for (size_t k = 0; k < width; ++k) wrong |= m_other[static_cast<unsigned char>(row[k])];
        std::memcpy(out, row, width);
        return wrong == 0;
    }

private:
    unsigned char m_other[256];  // non-zero for the bytes that are not letters
    unsigned char m_low = 0;
    unsigned char m_span = 0;
    bool m_range = true;  // the letters are exactly the bytes m_low..m_low+m_span
};

// The rows are the words of the text: as many as the box is high, each a box wide, every
// letter "@" or one of the definition's colours, in ASCII as the presentation library's are. A
// box larger than the text could fill is refused before anything is allocated for it.
bool ReadBitmap(std::string_view text, KGChartSymbolDefinition& def) {
    if (def.boxWidth < 1 || def.boxHeight < 1) return false;
    const size_t width = static_cast<size_t>(def.boxWidth);
    const size_t height = static_cast<size_t>(def.boxHeight);
    if (width > text.size() || height > text.size() / width) return false;
    const size_t size = width * height;
    const Letters letters(def);
    std::string& bitmap = def.bitmap;
    // Room for whole sixteen-byte stores past the last row, given back at the end.
    bitmap.resize(size + 16);
    char* const out = &bitmap[0];
    const char* at = text.data();
    const char* const end = at + text.size();
    size_t filled = 0;
    for (;;) {
        while (at != end && IsSpace(*at)) {
            ++at;
            // The indentation of the next row, eight spaces at a time.
            uint64_t eight;
            while (end - at >= 8 && (std::memcpy(&eight, at, 8), eight == 0x2020202020202020u))
                at += 8;
        }
        if (at == end) break;
        if (filled == size || static_cast<size_t>(end - at) < width) return false;
        if (!letters.CopyRow(at, width, end, out + filled)) return false;
        filled += width;
        at += width;
        // A row ends the text or a line.
        if (at != end && !IsSpace(*at)) return false;
    }
    bitmap.resize(size);
    return filled == size;
}

// Room reused from one record to the next: for a text in pieces, and for the colours and
// definitions as they are read, so that each record's arrays are allocated once, at their size;
// and where the record's command texts are kept, for decoding at its first look-up.
struct Scratch {
    std::string text;
    std::vector<KGChartSymbolColour> colours;
    std::vector<KGChartSymbolDefinition> definitions;
    std::string& commandText;
    std::vector<Span> spans;  // the record's, in reading order
};

bool ReadDefinition(const Element& e, KGChartSymbolDefinition& def, Scratch& scratch) {
    static const char* const kNames[] = {"type", "pivot", "box"};
    const char* values[3];
    e.Attributes(kNames, values, 3);
    def.raster = View(values[0]) == "raster";
    int pivot[2];
    int box[4];
    if (!ReadNumbers(View(values[1]), pivot, 2) || !ReadNumbers(View(values[2]), box, 4) ||
        box[2] < 0 || box[3] < 0) {
        return false;
    }
    def.pivotCol = pivot[0];
    def.pivotRow = pivot[1];
    def.boxCol = box[0];
    def.boxRow = box[1];
    def.boxWidth = box[2];
    def.boxHeight = box[3];
    // The children in one pass: the colours, and the first command text or bitmap.
    scratch.colours.clear();
    Element vector;
    Element bitmap;
    static const char* const kChildren[] = {"Colour", "Vector", "Bitmap"};
    for (Element c = e.FirstChild(); c; c = c.Next()) {
        const int child = c.NameIndex(kChildren, 3);
        if (child == 0) {
            static const char* const kColour[] = {"letter", "token"};
            const char* colour[2];
            c.Attributes(kColour, colour, 2);
            KGChartSymbolColour& read = scratch.colours.emplace_back();
            if (ReadLetter(View(colour[0]), read.letter)) {
                Assign(View(colour[1]), read.token);
            } else {
                scratch.colours.pop_back();
            }
        } else if (child == 1 && !vector) {
            vector = c;
        } else if (child == 2 && !bitmap) {
            bitmap = c;
        }
    }
    def.colours.Items().assign(std::make_move_iterator(scratch.colours.begin()),
                               std::make_move_iterator(scratch.colours.end()));
    if (!def.raster) {
        // Kept as the file has it; decoding never refuses a record (commands the importer
        // reported as unknown are left out then), so it waits for the record's first look-up.
        const std::string_view text = vector ? vector.TextView(scratch.text) : "";
        if (scratch.commandText.size() + text.size() > UINT32_MAX) return false;
        scratch.spans.push_back({static_cast<uint32_t>(scratch.commandText.size()),
                                 static_cast<uint32_t>(text.size())});
        scratch.commandText.append(text);
        return true;
    }
    return bitmap && ReadBitmap(bitmap.TextView(scratch.text), def);
}

bool ReadRecord(const Element& e, KGChartSymbolRecord& record, Scratch& scratch) {
    Assign(e.Attribute("name"), record.name);
    if (record.kind == KGChartSymbolKind::Pattern) {
        record.fill = ToUnicode(e.Attribute("fill"));
        record.spacing = ToUnicode(e.Attribute("spacing"));
        record.minDistance = kgatoi(ToUnicode(e.Attribute("minDistance")));
        record.maxDistance = kgatoi(ToUnicode(e.Attribute("maxDistance")));
    }
    std::vector<KGChartSymbolDefinition>& definitions = scratch.definitions;
    definitions.clear();
    scratch.spans.clear();
    static const char* const kChildren[] = {"Definition", "Description"};
    for (Element c = e.FirstChild(); c; c = c.Next()) {
        const int child = c.NameIndex(kChildren, 2);
        if (child == 0) {
            if (!ReadDefinition(c, definitions.emplace_back(), scratch)) return false;
        } else if (child == 1) {
            Assign(c.TextView(scratch.text), record.description);
        }
    }
    // The vector definition first; the importer writes it so, and then nothing moves.
    const auto vector = [](const KGChartSymbolDefinition& d) { return !d.raster; };
    if (!std::is_partitioned(definitions.begin(), definitions.end(), vector))
        std::stable_partition(definitions.begin(), definitions.end(), vector);
    record.definitions.Items().assign(std::make_move_iterator(definitions.begin()),
                                      std::make_move_iterator(definitions.end()));
    return !record.name.IsEmpty() && !record.definitions.IsEmpty();
}

// The kind of a record element; -1 for any other element.
int KindOf(const Element& e) {
    // In the order of KGChartSymbolKind.
    static const char* const kKinds[] = {"Symbol", "LineStyle", "Pattern"};
    return e.NameIndex(kKinds, 3);
}

}  // namespace

PlixUnicodeString KGChartSymbolDefinition::ColourToken(char16_t letter) const {
    for (const auto& colour : colours) {
        if (colour.letter == letter) return colour.token;
    }
    return PlixUnicodeString();
}

char16_t KGChartSymbolDefinition::Pixel(int col, int row) const {
    if (!raster || col < 0 || row < 0 || col >= boxWidth || row >= boxHeight) return u'@';
    const size_t at = static_cast<size_t>(row) * static_cast<size_t>(boxWidth) + col;
    return at < bitmap.size() ? static_cast<unsigned char>(bitmap[at]) : u'@';
}

KGChartSymbolLibrary::KGChartSymbolLibrary() : d(std::make_unique<Private>()) {}
KGChartSymbolLibrary::~KGChartSymbolLibrary() = default;
KGChartSymbolLibrary::KGChartSymbolLibrary(KGChartSymbolLibrary&&) noexcept = default;
KGChartSymbolLibrary& KGChartSymbolLibrary::operator=(KGChartSymbolLibrary&&) noexcept = default;

bool KGChartSymbolLibrary::Load(const PlixUnicodeString& path) {
    d->Clear();
    KGMarkupReader doc;
    if (!doc.Load(path)) {
        d->error = PlixUnicodeString("cannot be read: ") + doc.GetError();
        return false;
    }
    const Element root = doc.Root();
    if (!root.NameIs("SymbolLibrary")) {
        d->error = u"the root element is not <SymbolLibrary>";
        return false;
    }
    // The records counted first: each kind's array and index are made once, at their size.
    size_t counts[3] = {};
    for (Element e = root.FirstChild(); e; e = e.Next()) {
        const int k = KindOf(e);
        if (k >= 0) ++counts[k];
    }
    for (int k = 0; k < 3; ++k) {
        d->kinds[k].records.reserve(counts[k]);
        d->kinds[k].firstSpan.reserve(counts[k]);
        d->kinds[k].spans.reserve(counts[k]);
        size_t slots = 2;
        while (slots < 2 * counts[k]) slots *= 2;
        d->kinds[k].slots.assign(slots, 0);
    }
    Scratch scratch{{}, {}, {}, d->commandText, {}};
    for (Element e = root.FirstChild(); e; e = e.Next()) {
        const int k = KindOf(e);
        if (k < 0) continue;
        Private::Kind& kind = d->kinds[k];
        KGChartSymbolRecord& record = kind.records.emplace_back();
        record.kind = static_cast<KGChartSymbolKind>(k);
        const size_t textBefore = d->commandText.size();
        // The first record of a name is kept, as a look-up finds it.
        if (!ReadRecord(e, record, scratch) || !kind.IndexLast()) {
            kind.records.pop_back();
            d->commandText.resize(textBefore);
            ++d->skipped;
            continue;
        }
        kind.firstSpan.push_back(static_cast<uint32_t>(kind.spans.size()));
        kind.spans.insert(kind.spans.end(), scratch.spans.begin(), scratch.spans.end());
    }
    for (Private::Kind& kind : d->kinds) {
        kind.decoded = std::make_unique<std::atomic<bool>[]>(kind.records.size());
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
    const ptrdiff_t i = d->kinds[k].Find(name.Str());
    return i < 0 ? nullptr : &d->Decoded(k, static_cast<size_t>(i));
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
    return symboltext::ReadCommands(std::u16string_view(text.Str()), commands);
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
