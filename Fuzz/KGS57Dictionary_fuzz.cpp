// libFuzzer harness for the dictionary loaders: the input is handed to each of the registry's
// six loaders in turn (the first byte says which goes first, so each is reached with a fresh
// registry too), and the look-ups by acronym, code and token answer without fault.
#include "ChartBase/KGS57Dictionary.h"
#include "FuzzSupport.h"

namespace {

using Loader = bool (KGC::KGS57Config::*)(const PLIX::PlixUnicodeString&);
const Loader kLoaders[] = {
    &KGC::KGS57Config::LoadS57ObjectsFile,    &KGC::KGS57Config::LoadS57AttributesFile,
    &KGC::KGS57Config::LoadAgenciesFile,      &KGC::KGS57Config::LoadS57SpecsObjectsFile,
    &KGC::KGS57Config::LoadS57SpecsInfosFile, &KGC::KGS57Config::LoadS58CheckDictFile};

void LookUp(const KGC::KGS57Config& config) {
    KGC::KGS57Object object;
    KGC::KGS57Attribute attribute;
    KGC::KGS57Agency agency;
    KGC::KGS57SpecsObject specs;
    for (const char16_t* acronym : {u"LIGHTS", u"BOYLAT", u"", u"lights", u"$"}) {
        config.GetS57Object(acronym, object);
        config.GetS57Attributes(acronym, attribute);
        config.GetS57SpecsObject(acronym, specs);
    }
    for (const char16_t* token : {u"AA", u"550", u"", u"zz"}) config.GetS57Agency(token, agency);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const size_t first = size > 0 ? data[0] % 6 : 0;
    const std::string path = vlfuzz::WriteScratch("dictionary.xml", data, size);
    KGC::KGS57Config* config = KGC::KGS57Config::GetInstance();
    for (size_t i = 0; i < 6; ++i) {
        (config->*kLoaders[(first + i) % 6])(path);
        LookUp(*config);
    }
    return 0;
}
