// Internal helpers shared by the look-up table parsers; not installed.
#pragma once

#include <cstdint>

#include "Base/PlixUnicodeString.h"

namespace KGC {
namespace lookup {

// Cuts the first double-quoted field off the entry and returns its text. Deletes as many
// characters from the opening quote as the closing quote's index + 1, which is exactly the
// field when the entry begins with it (deliberately kept: characters before the opening quote
// make the cut reach that much further). Then every leading comma goes. With fewer than two
// quotes the field is empty and only the commas go.
PLIX::PlixUnicodeString CutQuotedField(PLIX::PlixUnicodeString& entry);

// A number read from a field, saturated into 32 bits.
int32_t ToInt32(long long value);

}  // namespace lookup
}  // namespace KGC
