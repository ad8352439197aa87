// Internal to the S-57 dictionary sources: the records they log and the one log call they
// share. Every dictionary and registry record names the same source module, whichever file
// the code lives in, and a fixed line number that hosts filter on (not __LINE__).
#pragma once

#include "Base/KGLogFile.h"

namespace KGC {
namespace s57dict {

struct LogPoint {
    const char16_t* message;
    int line;
};

// "EAg001": the catalogue dictionaries and every registry load; "EAg002": the product
// specification files.
constexpr LogPoint kAgencyFileUnreadable{u"EAg001", 26};
constexpr LogPoint kObjectFileUnreadable{u"EAg001", 84};
constexpr LogPoint kAttributeFileUnreadable{u"EAg001", 171};
constexpr LogPoint kSpecsInfoFileUnreadable{u"EAg002", 262};
constexpr LogPoint kSpecsObjectFileUnreadable{u"EAg002", 531};
constexpr LogPoint kAgencyLoadFailed{u"EAg001", 758};
constexpr LogPoint kObjectLoadFailed{u"EAg001", 773};
constexpr LogPoint kAttributeLoadFailed{u"EAg001", 790};
constexpr LogPoint kSpecsObjectLoadFailed{u"EAg001", 804};
constexpr LogPoint kSpecsInfoLoadFailed{u"EAg001", 818};
constexpr LogPoint kS58LoadFailed{u"EAg001", 831};

// Level 400, no code.
inline void LogFailure(const LogPoint& point) {
    KGLogFile::GetInstance(false)->RecordLog(KGLogFile::Warning, point.message,
                                             "../../../Src/ChartBase/KGS57Dictionary", point.line);
}

}  // namespace s57dict
}  // namespace KGC
