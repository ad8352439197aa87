// KGFile: where the platform's modules live, and file existence.
//
// Threads: every member may be called from any thread; SetModulePath is seen by the calls that
// follow it.
#pragma once

#include "Base/PlixUnicodeString.h"
#include "Base/VlBaseExport.h"

namespace KGC {

class VLBASE_API KGFile {
public:
    // A directory ending in "/": the directory set with SetModulePath, else $VLCHART_HOME,
    // else the directory of the loaded lib<moduleName>.so. For "VlBase", the module of the
    // settings file, that directory only when it holds ChartConfig.xml, else the default
    // environment: the source tree's Data/ for a library in the build tree, the installed data
    // directory (<prefix>/share/VlChartBase/, found relative to the library) for an installed
    // one. Empty when no such library is loaded.
    static PLIX::PlixUnicodeString GetModulePath(const PLIX::PlixUnicodeString& moduleName);
    // The default environment alone, whatever SetModulePath and VLCHART_HOME say: the last
    // two steps of GetModulePath("VlBase"). Tools use it to point a new settings file at the
    // default dictionaries.
    static PLIX::PlixUnicodeString GetDefaultDataPath();
    // Process-wide override for hosts and tests; an empty directory removes it.
    static void SetModulePath(const PLIX::PlixUnicodeString& directory);
    // True when the path names an existing file or directory.
    static bool IsExist(const PLIX::PlixUnicodeString& path);
};

}  // namespace KGC
