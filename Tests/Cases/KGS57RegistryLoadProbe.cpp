// A host process for the load-time registry: linking the library builds KGS57Config before main
// runs, whatever the environment holds. The probe prints what the registry serves, then the
// dictionary records of the log named by VLCHART_LOG (and removes that log, which the library
// appends to), and compares the text with the expected file given as the argument, if any.
// It skips (exit code 77) when VLCHART_HOME names a directory that is absent.
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>

#include "ChartBase/KGS57Dictionary.h"

using namespace KGC;

template <typename T>
int Count(void (KGS57Config::*get)(PLIX::PlixArray<T>&) const) {
    PLIX::PlixArray<T> list;
    (KGS57Config::GetInstance()->*get)(list);
    return list.GetSize();
}

int main(int argc, char** argv) {
    const char* home = std::getenv("VLCHART_HOME");
    if (home && !std::filesystem::is_directory(home)) {
        std::cout << "probe: skipped, " << home << " is absent\n";
        return 77;
    }
    KGS57Config* config = KGS57Config::GetInstance();
    KGS57Object light;
    KGS57Attribute colour;
    KGS58Info check;
    config->GetS58Info(508, check);  // a failed load of the checks is logged once, not retried
    std::ostringstream out;
    out << Count(&KGS57Config::GetArrayS57Object) << " object classes, "
        << Count(&KGS57Config::GetArrayS57Attribute) << " attributes, "
        << Count(&KGS57Config::GetArrayAgency) << " agencies, "
        << Count(&KGS57Config::GetArrayS57SpecsObject) << " specification objects, "
        << Count(&KGS57Config::GetArrS57SpecsSlaveObject) << " slaves\nLIGHTS "
        << (config->GetS57Object("LIGHTS", light) ? light.code : -1) << ", COLOUR "
        << (config->GetS57Attributes("COLOUR", colour) ? colour.code : -1) << ", check 508 "
        << (config->GetS58Info(508, check) ? check.level.ToUtf8() : "absent") << "\n";
    int complaints = 0;
    if (const char* log = std::getenv("VLCHART_LOG")) {
        std::ifstream in(log);
        for (std::string line; std::getline(in, line);) {
            if (line.find("KGS57Dictionary") != std::string::npos) out << line << "\n";
            complaints += line.find("chart setting file does not found") != std::string::npos;
        }
        std::filesystem::remove(log);
    }
    out << complaints << " missing-settings records\n";
    std::cout << out.str();
    std::stringstream expected;
    if (argc > 1) expected << std::ifstream(argv[1]).rdbuf();
    if (argc < 2 || expected.str() == out.str()) return 0;
    std::cout << "probe: FAILED, expected (" << argv[1] << "):\n" << expected.str();
    return 1;
}
