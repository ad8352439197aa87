// libFuzzer harness for the three extension-info documents: each reads the input, writes its
// document, and reading that document back writes the same text again.
#include "ChartBase/KGDatasourceExtInfo.h"
#include "ChartBase/KGS57DatasetGroupExtInfo.h"
#include "ChartBase/KGS57ExtInfo.h"
#include "FuzzSupport.h"

namespace {

template <typename Info>
void RoundTrip(const PLIX::PlixUnicodeString& text) {
    Info first;
    first.SetExtInfo(text);
    const PLIX::PlixUnicodeString written = first.MakeExtInfoDoc();
    Info second;
    second.SetExtInfo(written);
    vlfuzz::Check(second.MakeExtInfoDoc() == written);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const PLIX::PlixUnicodeString text(reinterpret_cast<const char*>(data), size);
    RoundTrip<KGC::KGDatasourceExtInfo>(text);
    RoundTrip<KGC::KGS57ExtInfo>(text);
    RoundTrip<KGC::KGS57DatasetGroupExtInfo>(text);
    KGC::KGDatasourceExtInfo info;
    info.SetExtInfo(text);
    for (const auto& seq : info.GetS57Seqs()) {
        KGC::KGS57Sequence found;
        vlfuzz::Check(seq.GetName().IsEmpty() || info.GetS57Seq(found, seq.GetName()));
        vlfuzz::Check(!info.AddS57Seq(seq));
    }
    return 0;
}
