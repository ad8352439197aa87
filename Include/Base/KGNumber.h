// Locale-independent decimal text to number conversions with C atoi/atol/atof semantics.
//
// Threads: safe from any thread (no locale is changed).
#pragma once

#include "Base/PlixUnicodeString.h"
#include "Base/VlBaseExport.h"

namespace KGC {

// Leading blanks skipped, optional sign, the longest numeric prefix; 0 when there is none.
// Integers saturate at their type's range.
VLBASE_API int kgatoi(const PLIX::PlixUnicodeString& text);
VLBASE_API long long kgatol(const PLIX::PlixUnicodeString& text);
VLBASE_API double kgatof(const PLIX::PlixUnicodeString& text);

}  // namespace KGC

using KGC::kgatof;
using KGC::kgatoi;
using KGC::kgatol;
