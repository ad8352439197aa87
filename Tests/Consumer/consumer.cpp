// A host program built against the installed package. It sets nothing: the library must find
// the installed default environment by itself, load the registry from it before main, and
// serve a style's colour table.
#include <cstdio>

#include "Base/PlixArray.h"
#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartEnvironment.h"
#include "ChartBase/KGS57Dictionary.h"
#include "ChartBase/VlChartBaseVersion.h"

int main() {
    KGC::KGChartEnvironment env;
    PLIX::PlixArray<PLIX::PlixUnicodeString> styles;
    if (env.GetStyleNames(styles) == 0) {
        std::fprintf(stderr, "no style in %s\n", env.GetSettingsPath().ToUtf8().c_str());
        return 1;
    }
    const PLIX::PlixUnicodeString path =
        env.GetColorTableAbsolutePath(KGC::KGChartColorMode::Night, styles[0]);
    KGC::KGChartColorTable colours;
    KGC::KGS57Object light;
    if (!colours.LoadColorTable(path) || colours.GetCount() == 0 ||
        !KGC::KGS57Config::GetInstance()->GetS57Object(u"LIGHTS", light)) {
        std::fprintf(stderr, "cannot load colour table '%s' or the registry\n",
                     path.ToUtf8().c_str());
        return 1;
    }
    std::printf("%s: %d colours from %s\n", KGC::GetVersionString(), colours.GetCount(),
                path.ToUtf8().c_str());
    return 0;
}
