// Internal to the S-57 dictionary sources: the one log call they share. Every dictionary and
// registry record names the same source module, whichever file the code lives in.
#pragma once

#include "Base/KGLogFile.h"

namespace KGC {
namespace s57dict {

// Level 400, no code; line is the fixed line number hosts filter on, not __LINE__.
inline void LogFailure(const char16_t* message, int line) {
    KGLogFile::GetInstance(false)->RecordLog(KGLogFile::Warning, message,
                                             "../../../Src/ChartBase/KGS57Dictionary", line);
}

}  // namespace s57dict
}  // namespace KGC
