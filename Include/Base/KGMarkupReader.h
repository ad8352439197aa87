// KGMarkupReader: a read-only XML document for loaders that read a whole file once, front to
// back. It accepts and refuses exactly the files KGMarkup::Load does (same encodings, same
// checks, same error text), but hands out elements as light handles instead of moving a
// cursor: names and attribute values are UTF-8 views into the document, children are iterated
// without a name search from the first child each time, and text is converted to UTF-16 once,
// when asked for. Use KGMarkup to edit or save a document.
//
// Threads: Load needs the document to itself; once loaded, the const members and the elements
// may be used from several threads at once. Elements and the views they hand out stay valid
// until the next Load or the reader's destruction.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Base/PlixUnicodeString.h"
#include "Base/VlBaseExport.h"

namespace pugi {
struct xml_node_struct;
}

namespace KGC {

class VLBASE_API KGMarkupReader {
public:
    // An element of the document, or none (false). Names are UTF-8, compared as bytes.
    class VLBASE_API Element {
    public:
        Element() = default;
        explicit operator bool() const { return m_node != nullptr; }

        std::string_view Name() const;
        bool NameIs(const char* name) const;
        // The position of the element's name among count names; -1 when it is none of them.
        // One look at the name, for a reader that tells several kinds of element apart.
        int NameIndex(const char* const* names, int count) const;
        // The value of the first attribute of that name, entities decoded; empty when absent.
        // The view's text is followed by a NUL, so data() may be read as a C string.
        std::string_view Attribute(const char* name) const;
        // Several attributes in one pass: values[i] is what Attribute(names[i]) gives, as
        // NUL-terminated text ("" when absent), for readers that need no length.
        void Attributes(const char* const* names, const char** values, size_t count) const;
        // The element's text as KGMarkup::GetData gives it: entities decoded, untrimmed, the
        // pieces of text around comments joined.
        PLIX::PlixUnicodeString Text() const;
        // The same into out, reusing its storage: a loader that reads a file again into the
        // records it already holds allocates nothing for text that still fits.
        void Text(PLIX::PlixUnicodeString& out) const;
        // The same in UTF-8, as the document holds it, for a reader that looks at the bytes
        // itself: a view into the document when the text is one piece, as it nearly always
        // is, else of the pieces joined in room.
        std::string_view TextView(std::string& room) const;

        // The first child element, with that name when one is given; none when there is none.
        Element FirstChild() const;
        Element FirstChild(const char* name) const;
        // The next sibling element, with that name when one is given.
        Element Next() const;
        Element Next(const char* name) const;

    private:
        friend class KGMarkupReader;
        explicit Element(pugi::xml_node_struct* node) : m_node(node) {}
        pugi::xml_node_struct* m_node = nullptr;
    };

    KGMarkupReader();
    ~KGMarkupReader();
    KGMarkupReader(const KGMarkupReader&) = delete;
    KGMarkupReader& operator=(const KGMarkupReader&) = delete;

    // Reads a file as KGMarkup::Load does; on failure the document is empty and GetError says
    // why, in KGMarkup's words.
    bool Load(const PLIX::PlixUnicodeString& path);
    bool IsWellFormed() const;
    PLIX::PlixUnicodeString GetError() const;
    // Encoding name the document was read in.
    std::string GetEncoding() const;

    // The root element; none when nothing is loaded.
    Element Root() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

// A UTF-8 view (a name or an attribute value) as a UTF-16 string.
inline PLIX::PlixUnicodeString ToUnicode(std::string_view utf8) {
    return PLIX::PlixUnicodeString(utf8.data(), utf8.size());
}
// The same into out, reusing its storage.
inline void ToUnicode(std::string_view utf8, PLIX::PlixUnicodeString& out) {
    PLIX::Utf8ToUtf16(utf8.data(), utf8.size(), out.Str());
}

}  // namespace KGC
