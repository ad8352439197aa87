// Internal pieces shared by the look-up table parsers; not installed.
//
// The public parsers consume their text the way the table format defines: each cuts its field
// off the front of the entry. Loading a table does the same work on views of one line through
// EntryCursor, which gives exactly the fields the chain of public parsers would, without
// copying the rest of the entry at every cut.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Base/PlixArray.h"
#include "Base/PlixUnicodeString.h"
#include "ChartBase/KGChartDisplayTypes.h"
#include "ChartBase/KGS57DefineInfo.h"

namespace KGC {

class KGChartAttributeCondition;
class KGChartPointObjectStyle;
class KGChartLineObjectStyle;
class KGChartAreaObjectStyle;
class KGChartSymbolMarkerStyle;
class KGChartLineStyle;
class KGChartTextFormat;

namespace lookup {

using View = std::u16string_view;

inline PLIX::PlixUnicodeString ToString(View text) {
    return PLIX::PlixUnicodeString(std::u16string(text));
}

// Copies text into a field of a record being filled, in the field's own storage: the loads fill
// a dozen fields an entry, and a temporary string for each was a tenth of the load.
inline void Assign(PLIX::PlixUnicodeString& target, View text) {
    target.Str().assign(text);
}

// A number read from a field with kgatol, saturated into 32 bits; 0 for an empty field.
int32_t ToInt32(long long value);
int32_t ReadInt32(View text);

// The fields of one entry line, cut in order. Each cut takes the first double-quoted field:
// as many characters go from the opening quote as the closing quote's index + 1, which is
// exactly the field when the rest begins with it (deliberately kept: characters before the
// opening quote make the cut reach that much further); then every leading comma goes. With
// fewer than two quotes the field is empty and only the commas go. A returned view stays valid
// until the next cut.
class EntryCursor {
public:
    // The line must outlive the cursor.
    explicit EntryCursor(const PLIX::PlixUnicodeString& line) : m_rest(line.Str()) {}

    View Cut();
    // The object acronym field when it holds exactly six characters, else empty and nothing
    // is cut.
    View CutAcronym();
    // The viewing group field; everything after it is dropped.
    View CutLast();
    // What is left of the line.
    View Rest() const { return m_rest; }

private:
    bool FindQuotes(size_t& first, size_t& second) const;
    View CutAt(size_t first, size_t second);
    void SkipCommas();

    View m_rest;
    // Storage for the rare entry with text before a field's opening quote, where a cut is not
    // a prefix of the rest.
    std::u16string m_edited;
    std::u16string m_field;
};

// Runs one cut over the entry and leaves the entry as the rest, the way every public field
// parser consumes its text; returns the field.
PLIX::PlixUnicodeString CutFront(PLIX::PlixUnicodeString& entry, View (EntryCursor::*cut)());

// The first c in text at or after from, or npos; eight characters at a time where the processor
// can, as every entry line is searched for quotes and asterisks.
size_t FindChar(View text, char16_t c, size_t from = 0);

// The attribute types the registry gives, remembered for one load: a table's entries ask for the
// same few dozen attributes thousands of times. Direct-mapped on the acronym; an acronym that
// does not pack into one number is always asked for.
class AttributeTypes {
public:
    bool Find(const PLIX::PlixUnicodeString& acronym, KGS57DefineInfo::AttributeType& type);

private:
    struct Slot {
        uint64_t key = 0;  // 0: empty (a packed key is never 0)
        bool known = false;
        KGS57DefineInfo::AttributeType type = KGS57DefineInfo::AttrUnknown;
    };
    Slot m_slots[256];
};

// The operations of the public parsers, on a field already cut. types, when given, remembers
// the attribute types across calls.
void ParseConditions(View field, PLIX::PlixArray<KGChartAttributeCondition>& conditions,
                     AttributeTypes* types = nullptr);
// The instruction field applied to a style of each kind; false where an instruction is refused,
// and then stop (when given) receives the index at which that instruction begins.
bool ParseInstructions(View field, PLIX::PlixUnicodeString& procedure,
                       KGChartPointObjectStyle& style, size_t* stop = nullptr);
bool ParseInstructions(View field, PLIX::PlixUnicodeString& procedure,
                       KGChartLineObjectStyle& style, size_t* stop = nullptr);
bool ParseInstructions(View field, PLIX::PlixUnicodeString& procedure,
                       KGChartAreaObjectStyle& style, size_t* stop = nullptr);
KGS52DisplayCategory ParseCategory(View field);

// The argument parsers; args is left as the public parser would leave its text.
void ParseSymbol(View& args, KGChartSymbolMarkerStyle& symbol);
void ParseLine(View& args, KGChartLineStyle& line);
void ParseText(View& args, KGChartTextFormat& text);
void ParseFormattedText(View& args, KGChartTextFormat& text);

}  // namespace lookup
}  // namespace KGC
