// libFuzzer harness for the settings file: the input is the home's ChartConfig.xml; every
// getter answers for every style, and after each edit that reports success the file, read
// again, answers exactly as the edited environment does.
#include "Base/KGFile.h"
#include "ChartBase/KGChartEnvironment.h"
#include "FuzzSupport.h"

namespace {

using KGC::KGChartEnvironment;
using PLIX::PlixUnicodeString;

std::u16string Trimmed(PlixUnicodeString text) {
    text.Trim();
    return text.Str();
}

// Everything the getters say, in one text.
std::u16string Answers(KGChartEnvironment& env) {
    PLIX::PlixArray<PlixUnicodeString> names;
    env.GetStyleNames(names);
    std::u16string out;
    for (const PlixUnicodeString& style : names) {
        out += style.Str() + u'|' + std::u16string(1, char16_t(u'0' + env.GetStyleType(style)));
        for (unsigned char kind = 0; kind < 2; ++kind) {
            out += u'|' + Trimmed(env.GetPointLookupTable(style, kind));
            out += u'|' + Trimmed(env.GetAreaLookupTable(style, kind));
        }
        out += u'|' + Trimmed(env.GetLineLookupTable(style));
        for (int mode = 0; mode < 3; ++mode) {
            out += u'|' + Trimmed(env.GetColorTable(static_cast<KGC::KGS52ColorMode>(mode), style));
        }
        out += u'\n';
    }
    out += Trimmed(env.GetS57ObjectDictFile()) + u'|' + Trimmed(env.GetAgencyDictFile());
    out +=
        u'|' + Trimmed(env.GetS58CheckFeatureFile()) + u'|' + Trimmed(env.GetAbsolutPath(u"./x"));
    return out;
}

void CheckSavedMatches(bool edited, KGChartEnvironment& env) {
    if (!edited) return;
    KGChartEnvironment reread;
    vlfuzz::Check(Answers(reread) == Answers(env));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    vlfuzz::WriteScratch("ChartConfig.xml", data, size);
    KGC::KGFile::SetModulePath(vlfuzz::ScratchDir());
    KGChartEnvironment env;
    Answers(env);
    PLIX::PlixArray<PlixUnicodeString> names;
    env.GetStyleNames(names);
    const PlixUnicodeString style = names.IsEmpty() ? PlixUnicodeString(u"S52") : names[0];
    CheckSavedMatches(env.SetColorTable(u"./Colors/Dusk.xml", style, KGC::KGChartColorMode::Dusk),
                      env);
    CheckSavedMatches(env.SetPointLookupTableFile(u"a\\b.dic", style, 1), env);
    CheckSavedMatches(env.SetLineLookupTableFile(u"&<line>", style), env);
    CheckSavedMatches(env.SetAreaLookupTableFile(u"area.dic", style, 0), env);
    CheckSavedMatches(env.ModifyAgencyDictFile(u"./Agencies.xml"), env);
    CheckSavedMatches(env.AddNewStyle(u"Fuzz", KGC::KGChartDisplayStyle::ENC), env);
    CheckSavedMatches(env.RemoveStyle(style), env);
    return 0;
}
