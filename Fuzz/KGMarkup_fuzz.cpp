// libFuzzer harness for KGMarkup: parse the input, walk the whole tree with the cursor, and
// check that the written document reads back to the same text.
#include <cstddef>
#include <cstdint>

#include "Base/KGMarkup.h"

namespace {

// Depth-first with the cursor alone: no recursion, as the cursor itself has none.
void Walk(KGC::KGMarkup& doc) {
    int depth = 0;
    long steps = 0;
    doc.ResetPos();
    for (;;) {
        if (++steps > 1000000) __builtin_trap();  // the cursor must always make progress
        if (doc.FindElem()) {
            doc.GetTagName();
            doc.GetData();
            doc.GetAttrib("value");
            if (doc.FindChildElem()) {
                doc.GetChildData();
                doc.GetChildAttrib("value");
                doc.ResetChildPos();
            }
            if (!doc.IntoElem()) __builtin_trap();
            ++depth;
            continue;
        }
        if (depth == 0) break;
        if (!doc.OutOfElem()) __builtin_trap();
        --depth;
    }
    if (depth > KGC::KGMarkup::MaxDepth) __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    KGC::KGMarkup doc;
    if (!doc.SetDoc(PLIX::PlixUnicodeString(reinterpret_cast<const char*>(data), size))) {
        if (doc.IsWellFormed() || doc.GetError().IsEmpty()) __builtin_trap();
        return 0;
    }
    Walk(doc);
    const PLIX::PlixUnicodeString text = doc.GetDoc();
    KGC::KGMarkup again;
    // Whatever was accepted is written so that it reads back to the same document.
    if (!again.SetDoc(text) || again.GetDoc() != text) __builtin_trap();
    doc.ResetPos();
    if (doc.FindElem() && doc.AddChildElem("fuzz", "&<>\"'") && doc.SetChildAttrib("n", 1)) {
        doc.RemoveChildElem();
    }
    return 0;
}
