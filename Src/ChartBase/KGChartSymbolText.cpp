// Decoding the symbol library's texts: letters, names and vector commands (see
// KGChartSymbolText.h), and the points the commands hold.
#include "KGChartSymbolText.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "Base/KGMarkupReader.h"

using PLIX::PlixArray;
using PLIX::PlixUnicodeString;

namespace KGC {
namespace symboltext {
namespace {

using Command = KGChartSymbolCommand;
using Op = KGChartSymbolCommand::Op;
// The UTF-8 forms, beside the UTF-16 ones below.
using symboltext::Assign;
using symboltext::ReadLetter;

// Pairs of numbers, "10,20,30,40", added as they are read.
template <typename Char>
bool ReadPoints(std::basic_string_view<Char> text, Command::Points& points) {
    for (size_t at = 0; at < text.size();) {
        // Read into locals, not a Point in memory: its two halves stored apart and then loaded
        // whole would stall the load.
        int col;
        int row;
        if ((at > 0 && text[at++] != ',') || !ReadNumber(text, at, col) || at == text.size() ||
            text[at++] != ',' || !ReadNumber(text, at, row)) {
            return false;
        }
        points.Add(Command::Point{col, row});
    }
    return true;
}

void Assign(std::u16string_view text, PlixUnicodeString& out) {
    out.Str().assign(text.data(), text.size());
}

bool ReadLetter(std::u16string_view text, char16_t& letter) {
    letter = text.size() == 1 ? text[0] : 0;
    return text.size() == 1;
}

constexpr uint32_t Code(char16_t a, char16_t b) {
    return static_cast<uint32_t>(a) << 16 | b;
}

// A number command's value within its bounds.
template <typename Char>
bool ReadValue(std::basic_string_view<Char> args, Command& command, Op op, int low, int high) {
    command.op = op;
    return ReadNumbers(args, &command.value, 1) && command.value >= low && command.value <= high;
}

template <typename Char>
bool ReadCommand(std::basic_string_view<Char> text, Command& command) {
    if (text.size() < 2) return false;
    const std::basic_string_view<Char> args = text.substr(2);
    switch (Code(text[0], text[1])) {
        case Code(u'S', u'P'):
            command.op = Op::SelectPen;
            return ReadLetter(args, command.letter);
        case Code(u'P', u'U'):
            command.op = Op::PenUp;
            return ReadPoints(args, command.points);
        case Code(u'P', u'D'):
            command.op = Op::PenDown;
            return ReadPoints(args, command.points);
        case Code(u'F', u'P'):
            command.op = Op::FillPolygon;
            return args.empty();
        case Code(u'S', u'C'): {
            command.op = Op::DrawSymbol;
            const size_t comma = std::min(args.find(','), args.size());
            Assign(args.substr(0, comma), command.name);
            return comma > 0 &&
                   (comma == args.size() || ReadNumbers(args.substr(comma + 1), &command.value, 1));
        }
        case Code(u'S', u'W'):
            return ReadValue(args, command, Op::PenWidth, 1, 99);
        case Code(u'S', u'T'):
            return ReadValue(args, command, Op::Transparency, 0, 3);
        case Code(u'C', u'I'):
            return ReadValue(args, command, Op::Circle, 0, 1000000);
        case Code(u'P', u'M'):
            return ReadValue(args, command, Op::PolygonMode, 0, 2) && command.value != 1;
    }
    return false;
}

template <typename Char>
int Read(std::basic_string_view<Char> all, PlixArray<Command>& commands) {
    std::vector<Command>& items = commands.Items();
    items.reserve(items.size() + std::count(all.begin(), all.end(), Char(';')) + 1);
    int unknown = 0;
    for (size_t start = 0; start < all.size();) {
        // Commands are a few characters: scanned here rather than with a call each.
        size_t end = start;
        while (end < all.size() && all[end] != ';') ++end;
        const std::basic_string_view<Char> one = all.substr(start, end - start);
        start = end + 1;
        if (one.empty()) continue;
        // Decoded in place: a command is a cache line, and the array is most of the library.
        if (!ReadCommand(one, items.emplace_back())) {
            items.pop_back();
            ++unknown;
        }
    }
    return unknown;
}

}  // namespace

void Assign(std::string_view text, PlixUnicodeString& out) {
    std::u16string& units = out.Str();
    units.resize(text.size());
    for (size_t i = 0; i < text.size(); ++i) {
        const auto c = static_cast<unsigned char>(text[i]);
        if (c >= 0x80) return ToUnicode(text, out);
        units[i] = c;
    }
}

bool ReadLetter(std::string_view text, char16_t& letter) {
    if (text.size() == 1 && static_cast<unsigned char>(text[0]) < 0x80) {
        letter = static_cast<char16_t>(text[0]);
        return true;
    }
    PlixUnicodeString one;
    Assign(text, one);
    return ReadLetter(std::u16string_view(one.Str()), letter);
}

int ReadCommands(std::string_view text, PlixArray<KGChartSymbolCommand>& commands) {
    return Read(text, commands);
}

int ReadCommands(std::u16string_view text, PlixArray<KGChartSymbolCommand>& commands) {
    return Read(text, commands);
}

}  // namespace symboltext

KGChartSymbolCommand::Points::Points(const Points& other) {
    for (const Point& point : other) Add(point);
}

KGChartSymbolCommand::Points::Points(Points&& other) noexcept : m_size(other.m_size) {
    if (m_size > 1) {
        m_more = other.m_more;
    } else {
        m_one = other.m_one;
    }
    other.m_size = 0;
}

// other is a copy, or the points moved: they become these, and the old ones are freed.
KGChartSymbolCommand::Points& KGChartSymbolCommand::Points::operator=(Points other) noexcept {
    if (m_size > 1) delete[] m_more;
    m_size = other.m_size;
    if (m_size > 1) {
        m_more = other.m_more;
    } else {
        m_one = other.m_one;
    }
    other.m_size = 0;
    return *this;
}

KGChartSymbolCommand::Points::~Points() {
    if (m_size > 1) delete[] m_more;
}

void KGChartSymbolCommand::Points::AddMore(Point point) {
    if ((m_size & (m_size - 1)) == 0) {
        Point* grown = new Point[2 * static_cast<size_t>(m_size)];
        std::copy(begin(), end(), grown);
        if (m_size > 1) delete[] m_more;
        m_more = grown;
    }
    m_more[m_size++] = point;
}

}  // namespace KGC
