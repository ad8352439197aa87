// libFuzzer harness for the colour table loader: every colour loaded answers by its token,
// and a failed load leaves no colours.
#include "ChartBase/KGChartColorTable.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string path = vlfuzz::WriteScratch("colors.xml", data, size);
    KGC::KGChartColorTable table;
    const bool loaded = table.LoadXml(path);
    for (const auto& entry : table.GetColors()) {
        vlfuzz::Check(table.GetRGBColor(entry.first) == entry.second);
    }
    if (!loaded) vlfuzz::Check(table.GetColors().IsEmpty());
    table.GetRGBColor(u"NODTA");
    return 0;
}
