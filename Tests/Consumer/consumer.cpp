// A host program built against the installed package: finds the installed default settings,
// asks for a style's colour table and loads it.
#include <cstdio>

#include "Base/KGFile.h"
#include "ChartBase/KGChartColorTable.h"
#include "ChartBase/KGChartEnvironment.h"

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    KGC::KGFile::SetModulePath(argv[1]);
    KGC::KGChartEnvironment env;
    PLIX::PlixUnicodeString path =
        env.GetColorTableAbsolutePath(KGC::KGChartColorMode::Night, u"S52");
    KGC::KGChartColorTable colours;
    if (!colours.LoadColorTable(path) || colours.GetCount() == 0) {
        std::fprintf(stderr, "cannot load colour table '%s'\n", path.ToUtf8().c_str());
        return 1;
    }
    std::printf("%d colours from %s\n", colours.GetCount(), path.ToUtf8().c_str());
    return 0;
}
