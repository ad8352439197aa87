// An object or attribute acronym as one number, for the tables that hot paths keep on acronyms:
// the prepared style choice and the attribute types remembered during a look-up load.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace KGC {
namespace acronymkey {

// Up to eight characters from U+0001 to U+00FF (every real acronym), from the top byte down:
// a key is never 0, and two keys order as their texts do. False for any other text, the empty
// one included.
inline bool Pack(std::u16string_view acronym, uint64_t& key) {
    if (acronym.empty() || acronym.size() > 8) return false;
    key = 0;
    int shift = 56;
    for (char16_t c : acronym) {
        if (c == 0 || c > 0xFF) return false;
        key |= uint64_t{c} << shift;
        shift -= 8;
    }
    return true;
}

// The place of a key in a table of 2^bits places (bits from 1 to 63): its top bits after a
// multiplication that spreads every bit of the key over them.
inline size_t Place(uint64_t key, int bits) {
    return static_cast<size_t>((key * 0x9E3779B97F4A7C15ull) >> (64 - bits));
}

}  // namespace acronymkey
}  // namespace KGC
