// libFuzzer harness for the text decoders: the input as the bytes of an XML file in whatever
// encoding it claims (a document accepted is saved in its encoding and reads back the same),
// as a look-up table read line by line, and as UTF-8 given to the string class and the number
// parsers.
#include "Base/KGFileStdio.h"
#include "Base/KGMarkup.h"
#include "Base/KGNumber.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const std::string path = vlfuzz::WriteScratch("input.xml", data, size);
    KGC::KGMarkup doc;
    if (doc.Load(path)) {
        // The first save may add a declaration; from then on a save reads back unchanged.
        const std::string saved = vlfuzz::ScratchDir() + "saved.xml";
        KGC::KGMarkup once, twice;
        if (doc.Save(saved)) {
            vlfuzz::Check(once.Load(saved) && once.Save(saved) && twice.Load(saved));
            vlfuzz::Check(twice.GetDoc() == once.GetDoc());
            vlfuzz::Check(twice.GetEncoding() == doc.GetEncoding());
        }
    } else {
        vlfuzz::Check(!doc.GetError().IsEmpty());
    }

    KGC::KGFileStdio lines;
    vlfuzz::Check(lines.Open(path, KGC::KGStreamRead, 0, 1));
    size_t count = 0;
    while (!lines.IsEOF()) {
        lines.ReadLine();
        vlfuzz::Check(++count <= size + 1);
    }

    const PLIX::PlixUnicodeString text(reinterpret_cast<const char*>(data), size);
    const std::string utf8 = text.ToUtf8();
    vlfuzz::Check(PLIX::PlixUnicodeString(utf8).ToUtf8() == utf8);
    KGC::kgatoi(text);
    KGC::kgatol(text);
    KGC::kgatof(text);
    return 0;
}
