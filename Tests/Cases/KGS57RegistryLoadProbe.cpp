// A host process for the load-time registry: linking the library builds KGS57Config before
// main runs, whatever the environment holds. The probe then checks what the registry serves.
//
//   KGS57RegistryLoadProbe any                  only that loading and every look-up survive
//   KGS57RegistryLoadProbe empty                every dictionary is empty
//   KGS57RegistryLoadProbe loaded [objects]     LIGHTS is served (and the object class count)
// Options: --log-has=TEXT (repeatable) requires TEXT in the file named by VLCHART_LOG.
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "ChartBase/KGS57Dictionary.h"

using namespace KGC;

namespace {

int g_failures = 0;

void Check(bool ok, const char* what) {
    if (!ok) {
        std::fprintf(stderr, "probe: FAILED: %s\n", what);
        ++g_failures;
    }
}

}  // namespace

int main(int argc, char** argv) {
    const std::string mode = argc > 1 ? argv[1] : "any";
    int expectedObjects = -1;
    std::vector<std::string> logNeedles;
    for (int i = 2; i < argc; ++i) {
        if (std::strncmp(argv[i], "--log-has=", 10) == 0) {
            logNeedles.emplace_back(argv[i] + 10);
        } else {
            expectedObjects = std::atoi(argv[i]);
        }
    }

    KGS57Config* config = KGS57Config::GetInstance();
    Check(config != nullptr, "GetInstance() is never null");
    if (!config) return 1;

    PLIX::PlixArray<KGS57Object> objects;
    config->GetArrayS57Object(objects);
    PLIX::PlixArray<KGS57Attribute> attributes;
    config->GetArrayS57Attribute(attributes);
    PLIX::PlixArray<KGS57Agency> agencies;
    config->GetArrayAgency(agencies);
    PLIX::PlixArray<KGS57SpecsObject> specsObjects;
    config->GetArrayS57SpecsObject(specsObjects);
    PLIX::PlixArray<KGS57SpecsObjectDefine> slaves;
    config->GetArrS57SpecsSlaveObject(slaves);
    KGS57Object light;
    const bool hasLight = config->GetS57Object(75, light);
    KGS57Attribute colour;
    const bool hasColour = config->GetS57Attributes("COLOUR", colour);
    KGS58Info check;
    config->GetS58Info(508, check);
    std::printf("probe: %d object classes, %d attributes, %d agencies, %d specs objects\n",
                objects.GetSize(), attributes.GetSize(), agencies.GetSize(),
                specsObjects.GetSize());

    if (mode == "empty") {
        Check(objects.IsEmpty() && !hasLight, "no object classes");
        Check(attributes.IsEmpty() && !hasColour, "no attributes");
        Check(agencies.IsEmpty(), "no agencies");
        Check(specsObjects.IsEmpty() && slaves.IsEmpty(), "no product specification data");
        Check(!config->GetS58Info(508, check), "no S-58 checks");
    } else if (mode == "loaded") {
        Check(hasLight && light.acronym == PLIX::PlixUnicodeString("LIGHTS"), "LIGHTS is 75");
        Check(hasColour && colour.code == 75, "COLOUR is 75");
        Check(!agencies.IsEmpty(), "agencies loaded");
        if (expectedObjects >= 0) Check(objects.GetSize() == expectedObjects, "object count");
    } else if (mode != "any") {
        std::fprintf(stderr, "probe: unknown mode %s\n", mode.c_str());
        return 2;
    }

    if (!logNeedles.empty()) {
        const char* logPath = std::getenv("VLCHART_LOG");
        std::ifstream in(logPath ? logPath : "");
        std::stringstream text;
        text << in.rdbuf();
        for (const auto& needle : logNeedles) {
            Check(text.str().find(needle) != std::string::npos, ("log holds " + needle).c_str());
        }
    }
    return g_failures == 0 ? 0 : 1;
}
