// The library's version: the numbers at compile time, and the string of the library loaded.
// The build reads the numbers from this header, so they are written here only.
//
// Threads: safe from any thread.
#pragma once

#include "ChartBase/VlChartBaseExport.h"

#define VLCHART_VERSION_MAJOR 0
#define VLCHART_VERSION_MINOR 2
#define VLCHART_VERSION_PATCH 0

namespace KGC {

// "MAJOR.MINOR.PATCH" of the library actually loaded (which may be newer than the header a
// host was compiled with).
VLCHARTBASE_API const char* GetVersionString();

}  // namespace KGC
