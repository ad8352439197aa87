// Internal to the symbol library: reading the texts of its file. The loader reads the file's
// UTF-8, KGChartSymbolLibrary::ParseCommands its caller's UTF-16; both decode through these.
#pragma once

#include <string_view>

#include "Base/PlixArray.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartSymbolLibrary.h"

namespace KGC {
namespace symboltext {

// A whole decimal number, optionally negative, of at most nine digits, read from text at `at`,
// which moves past it: the numbers are small, and a longer one is a fault, not something to
// wrap around.
template <typename Char>
bool ReadNumber(std::basic_string_view<Char> text, size_t& at, int& value) {
    const bool negative = at < text.size() && text[at] == '-';
    const size_t first = at + negative;
    size_t i = first;
    int n = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        if (i - first == 9) return false;
        n = n * 10 + (text[i] - '0');
    }
    if (i == first) return false;
    value = negative ? -n : n;
    at = i;
    return true;
}

// Exactly count numbers separated by commas, the whole of text ("1267,1052").
template <typename Char>
bool ReadNumbers(std::basic_string_view<Char> text, int* values, size_t count) {
    size_t at = 0;
    for (size_t i = 0; i < count; ++i) {
        if (i > 0 && (at == text.size() || text[at++] != ',')) return false;
        if (!ReadNumber(text, at, values[i])) return false;
    }
    return at == text.size();
}

// UTF-8 into out. Names, tokens and descriptions are ASCII nearly always: they are widened
// directly, anything else goes through the decoder.
void Assign(std::string_view text, PLIX::PlixUnicodeString& out);

// One letter (a colour's, or the one SP names): false when text is not one UTF-16 unit.
bool ReadLetter(std::string_view text, char16_t& letter);

// Decodes command text ("SPA;SW1;PU10,20;PD30,40;"), appending to commands; returns how many
// commands it did not know or could not read (they are left out).
int ReadCommands(std::string_view text, PLIX::PlixArray<KGChartSymbolCommand>& commands);
int ReadCommands(std::u16string_view text, PLIX::PlixArray<KGChartSymbolCommand>& commands);

}  // namespace symboltext
}  // namespace KGC
