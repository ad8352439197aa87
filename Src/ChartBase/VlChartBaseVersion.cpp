// The version string of the loaded library.
#include "ChartBase/VlChartBaseVersion.h"

#define VLCHART_STRINGIFY2(x) #x
#define VLCHART_STRINGIFY(x) VLCHART_STRINGIFY2(x)

namespace KGC {

const char* GetVersionString() {
    return VLCHART_STRINGIFY(VLCHART_VERSION_MAJOR) "." VLCHART_STRINGIFY(
        VLCHART_VERSION_MINOR) "." VLCHART_STRINGIFY(VLCHART_VERSION_PATCH);
}

}  // namespace KGC
