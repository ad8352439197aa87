// libFuzzer harness for KGMarkup: parse the input, walk the whole tree with the cursor, and
// check that the written document reads back to the same text.
#include <cstddef>
#include <cstdint>

#include "Base/KGMarkup.h"

namespace {

std::u16string WithoutBlanks(const std::u16string& text) {
    std::u16string out;
    for (char16_t c : text) {
        if (c != u' ' && c != u'\t' && c != u'\n' && c != u'\r') out += c;
    }
    return out;
}

// Depth-first with the cursor alone, as the chart classes walk documents: no recursion, every
// element visited once. Returns the tags and texts in document order. Blank text beside child
// elements is left out: written with indentation it cannot be told from the indentation,
// and reading drops it.
std::u16string Walk(KGC::KGMarkup& doc) {
    std::u16string seen;
    int depth = 0;
    long steps = 0;
    doc.ResetPos();
    for (;;) {
        if (++steps > 1000000) __builtin_trap();  // the cursor must always make progress
        if (doc.FindElem()) {
            seen += doc.GetTagName().Str() + u'|';
            const bool hasChildren = doc.FindChildElem();
            if (hasChildren) {
                doc.GetChildData();
                doc.GetChildAttrib("value");
                doc.ResetChildPos();
            }
            const PLIX::PlixUnicodeString data = doc.GetData();
            seen += hasChildren ? WithoutBlanks(data.Str()) : data.Str();
            seen += u'|' + doc.GetAttrib("a").Str() + u'\n';
            if (!doc.IntoElem()) __builtin_trap();
            ++depth;
            continue;
        }
        if (depth == 0) break;
        if (!doc.OutOfElem()) __builtin_trap();
        --depth;
        seen += u"/\n";
    }
    if (depth > KGC::KGMarkup::MaxDepth) __builtin_trap();
    return seen;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    KGC::KGMarkup doc;
    if (!doc.SetDoc(PLIX::PlixUnicodeString(reinterpret_cast<const char*>(data), size))) {
        if (doc.IsWellFormed() || doc.GetError().IsEmpty()) __builtin_trap();
        return 0;
    }
    const std::u16string content = Walk(doc);
    // Whatever was accepted is written so that it reads back with the same content, and the
    // text written the second time is the text written the first.
    const PLIX::PlixUnicodeString text = doc.GetDoc();
    KGC::KGMarkup again;
    if (!again.SetDoc(text) || Walk(again) != content) __builtin_trap();
    const PLIX::PlixUnicodeString text2 = again.GetDoc();
    KGC::KGMarkup third;
    if (!third.SetDoc(text2) || third.GetDoc() != text2) __builtin_trap();

    doc.ResetPos();
    if (doc.FindElem() && doc.AddChildElem("fuzz", "&<>\"'\r") && doc.SetChildAttrib("n", 1)) {
        if (!doc.RemoveChildElem()) __builtin_trap();
    }
    return 0;
}
