// The symbolization instruction field of a look-up entry ("SY(BOYLAT13);TX(OBJNAM,...)")
// turned into the drawing fields of a point, line or area style.
#include <string>
#include <type_traits>

#include "Base/KGNumber.h"
#include "ChartBase/KGChartLookupTable.h"
#include "KGChartLookupFields.h"

using PLIX::PlixUnicodeString;

namespace KGC {
namespace lookup {
namespace {

enum class Instruction { SY, LC, LS, AC, AP, TX, TE, CS, Invalid };

Instruction ToInstruction(char16_t first, char16_t second) {
    // Case-sensitive on purpose: "sy(...)" is not an instruction.
    switch (first) {
        case u'S':
            return second == u'Y' ? Instruction::SY : Instruction::Invalid;
        case u'L':
            if (second == u'C') return Instruction::LC;
            return second == u'S' ? Instruction::LS : Instruction::Invalid;
        case u'A':
            if (second == u'C') return Instruction::AC;
            return second == u'P' ? Instruction::AP : Instruction::Invalid;
        case u'T':
            if (second == u'X') return Instruction::TX;
            return second == u'E' ? Instruction::TE : Instruction::Invalid;
        case u'C':
            return second == u'S' ? Instruction::CS : Instruction::Invalid;
        default:
            return Instruction::Invalid;
    }
}

// Reads the next instruction of the field from pos: its code and the text between its
// parentheses, then skips the ";" after it. Works on an index, so a field of any length is
// read in one pass. Invalid for an unknown code, and for an instruction whose "(" does not
// follow the code or whose ")" is missing: nothing sensible follows those, so the parse ends
// there rather than searching on for a parenthesis.
Instruction NextInstruction(View text, size_t& pos, View& args) {
    if (text.size() - pos < 2) return Instruction::Invalid;
    const char16_t first = text[pos];
    const char16_t second = text[pos + 1];
    const Instruction code = ToInstruction(first, second);
    if (code == Instruction::Invalid) return code;
    // Every leading letter of the code goes ("TXX(" reads as "TX(").
    while (pos < text.size() && (text[pos] == first || text[pos] == second)) ++pos;
    if (pos >= text.size() || text[pos] != u'(') return Instruction::Invalid;
    const size_t close = text.find(u')', pos + 1);
    if (close == View::npos) return Instruction::Invalid;
    args = text.substr(pos + 1, close - pos - 1);
    pos = close + 1;
    while (pos < text.size() && text[pos] == u';') ++pos;
    return code;
}

// Runs the instruction loop over the field; apply returns false for a code the kind does not
// accept. stop, when given, receives where a refused instruction begins.
template <typename Apply>
bool RunInstructions(View text, Apply apply, size_t* stop) {
    size_t pos = 0;
    View args;
    while (pos < text.size()) {
        const size_t start = pos;
        const Instruction code = NextInstruction(text, pos, args);
        if (code == Instruction::Invalid || !apply(code, args)) {
            if (stop != nullptr) *stop = start;
            return false;
        }
    }
    return true;
}

void ApplyProcedure(View args, PlixUnicodeString& procedure, bool& hasProcedure) {
    Assign(procedure, args);
    if (!args.empty()) hasProcedure = true;
}

// Both fill the new record where it stands in the array.
void AddText(Instruction code, View args, PLIX::PlixArray<KGChartTextFormat>& texts) {
    KGChartTextFormat& text = texts.Items().emplace_back();
    if (code == Instruction::TX) {
        ParseText(args, text);
    } else {
        ParseFormattedText(args, text);
    }
}

void AddSymbol(View args, PLIX::PlixArray<KGChartSymbolMarkerStyle>& symbols) {
    ParseSymbol(args, symbols.Items().emplace_back());
}

// Cuts the next comma-separated argument off args when it is not empty (its comma stands
// after the first character); false, leaving args alone, otherwise.
bool NextTextArgument(View& args, View& value) {
    const size_t comma = args.find(u',');
    if (comma == View::npos || comma == 0) return false;
    value = args.substr(0, comma);
    args.remove_prefix(comma + 1);
    return true;
}

View TrimQuotes(View text) {
    while (!text.empty() && text.front() == u'\'') text.remove_prefix(1);
    while (!text.empty() && text.back() == u'\'') text.remove_suffix(1);
    return text;
}

bool IsBlank(char16_t ch) {
    return ch == u'\r' || ch == u'\n' || ch == u'\t' || ch == u' ';
}

// The arguments that TX and TE share after their text: HJUST, VJUST, SPACE, CHARS, XOFFS,
// YOFFS, COLOUR, DISPLAY. The first empty argument ends the reading and empties args; the
// arguments from there on keep their defaults.
void ParseTextPlacement(View& args, KGChartTextFormat& text) {
    View value;
    int32_t* const numbers[] = {
        &text.HJust,   &text.VJust,   &text.Space,
        nullptr,                                 // CHARS, the font specification: not kept
        &text.XOffset, &text.YOffset, nullptr};  // COLOUR: deliberately dropped
    for (int32_t* number : numbers) {
        if (!NextTextArgument(args, value)) {
            args = View();
            return;
        }
        if (number != nullptr) *number = ReadInt32(value);
    }
    // DISPLAY, not kept.
    if (!NextTextArgument(args, value)) args = View();
}

// The public form of an argument parser: the view-based one on the text, which is then left
// as the view was.
template <typename Target>
void ConsumeArguments(void (*parse)(View&, Target&), PlixUnicodeString& args, Target& target) {
    View rest = args.Str();
    parse(rest, target);
    args = ToString(rest);
}

}  // namespace

void ParseSymbol(View& args, KGChartSymbolMarkerStyle& symbol) {
    const size_t comma = args.find(u',');
    if (comma == View::npos) {
        Assign(symbol.SymbolName, args);
        args = View();
        return;
    }
    Assign(symbol.SymbolName, args.substr(0, comma));
    args.remove_prefix(comma);
    // Only the exact upper-case word turns the symbol by the feature's attribute; "orient"
    // reads as the number 0.
    if (args.substr(1, 6) == u"ORIENT") {
        symbol.RotateByOrient = true;
        symbol.Rotation = 0.0;
        return;
    }
    args.remove_prefix(1);
    if (args.empty()) return;
    while (!args.empty() && IsBlank(args.front())) args.remove_prefix(1);
    while (!args.empty() && IsBlank(args.back())) args.remove_suffix(1);
    symbol.RotateByOrient = false;
    symbol.Rotation = kgatof(ToString(args));
}

void ParseLine(View& args, KGChartLineStyle& line) {
    size_t comma = args.find(u',');
    if (comma != View::npos) {
        const PlixUnicodeString word = ToString(args.substr(0, comma));
        if (word.CompareNoCase(u"SOLD") == 0) {
            line.Pattern = KGChartLineStyle::Solid;
        } else if (word.CompareNoCase(u"DASH") == 0) {
            line.Pattern = KGChartLineStyle::Dash;
        } else if (word.CompareNoCase(u"DOTT") == 0) {
            line.Pattern = KGChartLineStyle::Dotted;
        }
        args.remove_prefix(comma + 1);
    }
    comma = args.find(u',');
    if (comma != View::npos) {
        line.Width = ReadInt32(args.substr(0, comma));
        args.remove_prefix(comma + 1);
    }
    Assign(line.ColorToken, args);
    args = View();
}

void ParseText(View& args, KGChartTextFormat& text) {
    View value;
    if (!NextTextArgument(args, value)) {
        args = View();
        return;
    }
    Assign(text.Text, TrimQuotes(value));
    ParseTextPlacement(args, text);
}

void ParseFormattedText(View& args, KGChartTextFormat& text) {
    View value;
    if (!NextTextArgument(args, value)) {
        args = View();
        return;
    }
    Assign(text.Format, TrimQuotes(value));
    if (!NextTextArgument(args, value)) {
        args = View();
        return;
    }
    Assign(text.Text, TrimQuotes(value));
    ParseTextPlacement(args, text);
}

namespace {

constexpr unsigned Bit(Instruction code) {
    return 1u << static_cast<unsigned>(code);
}

// Which instructions each kind of style takes. Deliberately, any other code fails the whole
// entry: a line or area instruction in a point table, an area fill in a line table.
template <typename Style>
constexpr unsigned kAccepted = 0;
template <>
constexpr unsigned kAccepted<KGChartPointObjectStyle> = Bit(Instruction::SY) |
                                                        Bit(Instruction::TX) |
                                                        Bit(Instruction::TE) | Bit(Instruction::CS);
template <>
constexpr unsigned kAccepted<KGChartLineObjectStyle> = kAccepted<KGChartPointObjectStyle> |
                                                       Bit(Instruction::LC) | Bit(Instruction::LS);
template <>
constexpr unsigned kAccepted<KGChartAreaObjectStyle> = kAccepted<KGChartLineObjectStyle> |
                                                       Bit(Instruction::AP) | Bit(Instruction::AC);

// A point or area style collects its symbols; a line style keeps one.
template <typename Style>
void ApplySymbol(View args, Style& style) {
    AddSymbol(args, style.Symbols);
}
void ApplySymbol(View args, KGChartLineObjectStyle& style) {
    ParseSymbol(args, style.Symbol);
}

void ApplyFill(View args, KGChartAreaObjectStyle& style) {
    const size_t comma = args.find(u',');
    Assign(style.FillColorToken, args.substr(0, comma));
    // Deliberately a single digit: "AC(CHBRN,35)" is transparency 3.
    if (comma != View::npos) style.FillTransparency = kgatoi(ToString(args.substr(comma + 1, 1)));
}

// Room for the field's symbols and texts up front: an entry with two or three of them would
// otherwise grow its arrays one step at a time.
template <typename Style>
void Reserve(View field, Style& style) {
    size_t symbols = 0;
    size_t texts = 0;
    for (size_t i = FindChar(field, u'('); i != View::npos; i = FindChar(field, u'(', i + 1)) {
        if (i < 2) continue;
        symbols += field[i - 2] == u'S' && field[i - 1] == u'Y';
        texts += field[i - 2] == u'T' && (field[i - 1] == u'X' || field[i - 1] == u'E');
    }
    if (texts > 1 && style.Texts.IsEmpty()) style.Texts.Items().reserve(texts);
    if constexpr (!std::is_same_v<Style, KGChartLineObjectStyle>) {
        if (symbols > 1 && style.Symbols.IsEmpty()) style.Symbols.Items().reserve(symbols);
    }
}

template <typename Style>
bool ApplyInstructions(View field, PlixUnicodeString& procedure, Style& style,
                       size_t* stop = nullptr) {
    constexpr unsigned accepted = kAccepted<Style>;
    Reserve(field, style);
    return RunInstructions(
        field,
        [&](Instruction code, View args) {
            if ((accepted & Bit(code)) == 0) return false;
            if (code == Instruction::CS) {
                // A procedure alone does not make the entry one with instructions.
                ApplyProcedure(args, procedure, style.HasProcedure);
                return true;
            }
            if (code == Instruction::SY) ApplySymbol(args, style);
            if (code == Instruction::TX || code == Instruction::TE)
                AddText(code, args, style.Texts);
            if constexpr ((accepted & Bit(Instruction::LS)) != 0) {
                if (code == Instruction::LC) Assign(style.ComplexLineName, args);
                if (code == Instruction::LS) ParseLine(args, style.LineStyle);
            }
            if constexpr ((accepted & Bit(Instruction::AP)) != 0) {
                if (code == Instruction::AP) Assign(style.PatternName, args);
                if (code == Instruction::AC) ApplyFill(args, style);
            }
            style.HasInstruction = true;
            return true;
        },
        stop);
}

}  // namespace

bool ParseInstructions(View field, PlixUnicodeString& procedure, KGChartPointObjectStyle& style,
                       size_t* stop) {
    return ApplyInstructions(field, procedure, style, stop);
}

bool ParseInstructions(View field, PlixUnicodeString& procedure, KGChartLineObjectStyle& style,
                       size_t* stop) {
    return ApplyInstructions(field, procedure, style, stop);
}

bool ParseInstructions(View field, PlixUnicodeString& procedure, KGChartAreaObjectStyle& style,
                       size_t* stop) {
    return ApplyInstructions(field, procedure, style, stop);
}

}  // namespace lookup

namespace {

template <typename Style>
bool CutAndApply(PlixUnicodeString& entry, PlixUnicodeString& procedure, Style* style) {
    if (style == nullptr) return false;
    const PlixUnicodeString field = lookup::CutFront(entry, &lookup::EntryCursor::Cut);
    return lookup::ApplyInstructions(field.Str(), procedure, *style);
}

}  // namespace

bool KGChartLookupTable::ParseSymbolizationInstructionpPoint(PlixUnicodeString& entry,
                                                             PlixUnicodeString& procedure,
                                                             KGChartPointObjectStyle* style) {
    return CutAndApply(entry, procedure, style);
}

bool KGChartLookupTable::ParseSymbolizationInstructionpLine(PlixUnicodeString& entry,
                                                            PlixUnicodeString& procedure,
                                                            KGChartLineObjectStyle* style) {
    return CutAndApply(entry, procedure, style);
}

bool KGChartLookupTable::ParseSymbolizationInstructionpArea(PlixUnicodeString& entry,
                                                            PlixUnicodeString& procedure,
                                                            KGChartAreaObjectStyle* style) {
    return CutAndApply(entry, procedure, style);
}

void KGChartLookupTable::ParseSY(PlixUnicodeString& args, KGChartSymbolMarkerStyle& symbol) {
    lookup::ConsumeArguments(lookup::ParseSymbol, args, symbol);
}

void KGChartLookupTable::ParseLS(PlixUnicodeString& args, KGChartLineStyle& line) {
    lookup::ConsumeArguments(lookup::ParseLine, args, line);
}

void KGChartLookupTable::ParseTX(PlixUnicodeString& args, KGChartTextFormat& text) {
    lookup::ConsumeArguments(lookup::ParseText, args, text);
}

void KGChartLookupTable::ParseTE(PlixUnicodeString& args, KGChartTextFormat& text) {
    lookup::ConsumeArguments(lookup::ParseFormattedText, args, text);
}

}  // namespace KGC
