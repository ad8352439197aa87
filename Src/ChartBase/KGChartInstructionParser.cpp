// The symbolization instruction field of a look-up entry ("SY(BOYLAT13);TX(OBJNAM,...)")
// turned into the drawing fields of a point, line or area style.
#include <string>

#include "Base/KGNumber.h"
#include "ChartBase/KGChartLookupTable.h"
#include "KGChartLookupFields.h"

using PLIX::PlixUnicodeString;

namespace KGC {
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
Instruction NextInstruction(const std::u16string& text, size_t& pos, PlixUnicodeString& args) {
    if (text.size() - pos < 2) return Instruction::Invalid;
    const char16_t first = text[pos];
    const char16_t second = text[pos + 1];
    const Instruction code = ToInstruction(first, second);
    if (code == Instruction::Invalid) return code;
    // Every leading letter of the code goes ("TXX(" reads as "TX(").
    while (pos < text.size() && (text[pos] == first || text[pos] == second)) ++pos;
    if (pos >= text.size() || text[pos] != u'(') return Instruction::Invalid;
    const size_t close = text.find(u')', pos + 1);
    if (close == std::u16string::npos) return Instruction::Invalid;
    args = PlixUnicodeString(text.substr(pos + 1, close - pos - 1));
    pos = close + 1;
    while (pos < text.size() && text[pos] == u';') ++pos;
    return code;
}

// Runs the instruction loop over the entry's instruction field; apply returns false for a
// code the kind does not accept.
template <typename Apply>
bool ParseInstructions(PlixUnicodeString& entry, Apply apply) {
    const PlixUnicodeString field = lookup::CutQuotedField(entry);
    const std::u16string& text = field.Str();
    size_t pos = 0;
    PlixUnicodeString args;
    while (pos < text.size()) {
        const Instruction code = NextInstruction(text, pos, args);
        if (code == Instruction::Invalid || !apply(code, args)) return false;
    }
    return true;
}

void ApplyProcedure(const PlixUnicodeString& args, PlixUnicodeString& procedure,
                    bool& hasProcedure) {
    procedure = args;
    if (!args.IsEmpty()) hasProcedure = true;
}

void AddText(Instruction code, PlixUnicodeString& args, PLIX::PlixArray<KGChartTextFormat>& texts) {
    KGChartTextFormat text;
    if (code == Instruction::TX) {
        KGChartLookupTable::ParseTX(args, text);
    } else {
        KGChartLookupTable::ParseTE(args, text);
    }
    texts.Add(std::move(text));
}

void AddSymbol(PlixUnicodeString& args, PLIX::PlixArray<KGChartSymbolMarkerStyle>& symbols) {
    KGChartSymbolMarkerStyle symbol;
    KGChartLookupTable::ParseSY(args, symbol);
    symbols.Add(std::move(symbol));
}

// Cuts the next comma-separated argument off args when it is not empty (its comma stands
// after the first character); false, leaving args alone, otherwise.
bool NextTextArgument(PlixUnicodeString& args, PlixUnicodeString& value) {
    const int comma = args.Find(u',');
    if (comma <= 0) return false;
    value = args.Left(comma);
    args.Delete(0, comma + 1);
    return true;
}

// The arguments that TX and TE share after their text: HJUST, VJUST, SPACE, CHARS, XOFFS,
// YOFFS, COLOUR, DISPLAY. The first empty argument ends the reading and empties args; the
// arguments from there on keep their defaults.
void ParseTextPlacement(PlixUnicodeString& args, KGChartTextFormat& text) {
    PlixUnicodeString value;
    int32_t* const numbers[] = {
        &text.HJust,   &text.VJust,   &text.Space,
        nullptr,                                 // CHARS, the font specification: not kept
        &text.XOffset, &text.YOffset, nullptr};  // COLOUR: deliberately dropped
    for (int32_t* number : numbers) {
        if (!NextTextArgument(args, value)) {
            args.Empty();
            return;
        }
        if (number != nullptr) *number = lookup::ToInt32(kgatol(value));
    }
    // DISPLAY, not kept.
    if (!NextTextArgument(args, value)) args.Empty();
}

}  // namespace

bool KGChartLookupTable::ParseSymbolizationInstructionpPoint(PlixUnicodeString& entry,
                                                             PlixUnicodeString& procedure,
                                                             KGChartPointObjectStyle* style) {
    if (style == nullptr) return false;
    return ParseInstructions(entry, [&](Instruction code, PlixUnicodeString& args) {
        switch (code) {
            case Instruction::SY:
                AddSymbol(args, style->Symbols);
                break;
            case Instruction::TE:
            case Instruction::TX:
                AddText(code, args, style->Texts);
                break;
            case Instruction::CS:
                ApplyProcedure(args, procedure, style->HasProcedure);
                return true;
            default:
                // Deliberate: a line or area instruction fails the whole point entry.
                return false;
        }
        style->HasInstruction = true;
        return true;
    });
}

bool KGChartLookupTable::ParseSymbolizationInstructionpLine(PlixUnicodeString& entry,
                                                            PlixUnicodeString& procedure,
                                                            KGChartLineObjectStyle* style) {
    if (style == nullptr) return false;
    return ParseInstructions(entry, [&](Instruction code, PlixUnicodeString& args) {
        switch (code) {
            case Instruction::SY:
                ParseSY(args, style->Symbol);
                break;
            case Instruction::LC:
                style->ComplexLineName = args;
                break;
            case Instruction::LS:
                ParseLS(args, style->LineStyle);
                break;
            case Instruction::TE:
            case Instruction::TX:
                AddText(code, args, style->Texts);
                break;
            case Instruction::CS:
                ApplyProcedure(args, procedure, style->HasProcedure);
                return true;
            default:
                // Deliberate: an area fill fails the whole line entry.
                return false;
        }
        style->HasInstruction = true;
        return true;
    });
}

bool KGChartLookupTable::ParseSymbolizationInstructionpArea(PlixUnicodeString& entry,
                                                            PlixUnicodeString& procedure,
                                                            KGChartAreaObjectStyle* style) {
    if (style == nullptr) return false;
    return ParseInstructions(entry, [&](Instruction code, PlixUnicodeString& args) {
        switch (code) {
            case Instruction::SY:
                AddSymbol(args, style->Symbols);
                break;
            case Instruction::LC:
                style->ComplexLineName = args;
                break;
            case Instruction::LS:
                ParseLS(args, style->LineStyle);
                break;
            case Instruction::TE:
            case Instruction::TX:
                AddText(code, args, style->Texts);
                break;
            case Instruction::CS:
                ApplyProcedure(args, procedure, style->HasProcedure);
                return true;
            case Instruction::AP:
                style->PatternName = args;
                break;
            case Instruction::AC: {
                const int comma = args.Find(u',');
                if (comma < 0) {
                    style->FillColorToken = args;
                    break;
                }
                style->FillColorToken = args.Left(comma);
                // Deliberately a single digit: "AC(CHBRN,35)" is transparency 3.
                style->FillTransparency = kgatoi(args.Mid(comma + 1, 1));
                break;
            }
            default:
                return false;
        }
        style->HasInstruction = true;
        return true;
    });
}

void KGChartLookupTable::ParseSY(PlixUnicodeString& args, KGChartSymbolMarkerStyle& symbol) {
    const int comma = args.Find(u',');
    if (comma < 0) {
        symbol.SymbolName = args;
        args.Empty();
        return;
    }
    symbol.SymbolName = args.Left(comma);
    args.Delete(0, comma);
    // Only the exact upper-case word turns the symbol by the feature's attribute; "orient"
    // reads as the number 0.
    if (args.Mid(1, 6) == PlixUnicodeString(u"ORIENT")) {
        symbol.RotateByOrient = true;
        symbol.Rotation = 0.0;
        return;
    }
    args.Delete(0, 1);
    if (args.IsEmpty()) return;
    args.Trim();
    symbol.RotateByOrient = false;
    symbol.Rotation = kgatof(args);
}

void KGChartLookupTable::ParseLS(PlixUnicodeString& args, KGChartLineStyle& line) {
    int comma = args.Find(u',');
    if (comma >= 0) {
        const PlixUnicodeString word = args.Left(comma);
        if (word.CompareNoCase(u"SOLD") == 0) {
            line.Pattern = KGChartLineStyle::Solid;
        } else if (word.CompareNoCase(u"DASH") == 0) {
            line.Pattern = KGChartLineStyle::Dash;
        } else if (word.CompareNoCase(u"DOTT") == 0) {
            line.Pattern = KGChartLineStyle::Dotted;
        }
        args.Delete(0, comma + 1);
    }
    comma = args.Find(u',');
    if (comma >= 0) {
        line.Width = lookup::ToInt32(kgatol(args.Left(comma)));
        args.Delete(0, comma + 1);
    }
    line.ColorToken = args;
    args.Empty();
}

void KGChartLookupTable::ParseTX(PlixUnicodeString& args, KGChartTextFormat& text) {
    PlixUnicodeString value;
    if (!NextTextArgument(args, value)) {
        args.Empty();
        return;
    }
    text.Text = value.Trim(u'\'');
    ParseTextPlacement(args, text);
}

void KGChartLookupTable::ParseTE(PlixUnicodeString& args, KGChartTextFormat& text) {
    PlixUnicodeString value;
    if (!NextTextArgument(args, value)) {
        args.Empty();
        return;
    }
    text.Format = value.Trim(u'\'');
    if (!NextTextArgument(args, value)) {
        args.Empty();
        return;
    }
    text.Text = value.Trim(u'\'');
    ParseTextPlacement(args, text);
}

}  // namespace KGC
