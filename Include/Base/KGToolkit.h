// Character class helpers of the platform toolkit.
//
// Threads: safe from any thread.
#pragma once

#include "Base/VlBaseExport.h"

namespace KGC {

class VLBASE_API KGToolkit {
public:
    // "A" to "Z" only.
    static bool IsBigLetter(char16_t ch) { return ch >= u'A' && ch <= u'Z'; }
    // "a" to "z" only.
    static bool IsLittleLetter(char16_t ch) { return ch >= u'a' && ch <= u'z'; }
};

}  // namespace KGC
