// KGMarkup: an XML document with a markup cursor (parent, main and child positions) through
// which every XML file and document of the chart library is read and written.
//
// Threads: the cursor moves on every query, so one document belongs to one thread at a time;
// distinct documents are independent.
#pragma once

#include <memory>
#include <string>

#include "Base/PlixUnicodeString.h"
#include "Base/VlBaseExport.h"

namespace KGC {

class VLBASE_API KGMarkup {
public:
    KGMarkup();
    // Parses the text as SetDoc does; check IsWellFormed for the outcome.
    explicit KGMarkup(const PLIX::PlixUnicodeString& text);
    ~KGMarkup();
    KGMarkup(const KGMarkup&) = delete;
    KGMarkup& operator=(const KGMarkup&) = delete;
    KGMarkup(KGMarkup&&) noexcept;
    KGMarkup& operator=(KGMarkup&&) noexcept;
    // A copy of the document (its nodes, encoding, well-formedness and last error) with the
    // cursor at the top: what an editor keeps to return to when a save fails. Out of memory
    // gives a document that is not well formed.
    KGMarkup Clone() const;

    // Reads a file: UTF-8 (with or without BOM), UTF-16 LE/BE with BOM, or any encoding named
    // in the XML declaration that iconv knows. DOCTYPE declarations, nesting deeper than
    // MaxDepth, files over MaxFileSize, anything but a regular file (a FIFO is refused without
    // waiting for a writer) and ill-formed text in any encoding (UTF-8 and UTF-16 included;
    // the error names the byte offset) are refused. On failure the document is empty.
    bool Load(const PLIX::PlixUnicodeString& path);
    // Writes atomically (temporary file in the same directory, flush, rename) in the encoding
    // the document was read in; a new document is written as UTF-8 with a declaration.
    // On any failure returns false and leaves an existing file untouched. Through a symbolic
    // link the file it points to is written (a dangling link stays a link, its target is
    // created); temporary files of earlier saves killed midway are removed.
    bool Save(const PLIX::PlixUnicodeString& path);
    // Replaces the document by the parsed text; an empty text gives an empty document (true).
    // A lone surrogate in the text is refused.
    bool SetDoc(const PLIX::PlixUnicodeString& text);
    // The document text (no declaration is added; one read in is kept).
    PLIX::PlixUnicodeString GetDoc() const;
    // False after a failed Load or SetDoc.
    bool IsWellFormed() const;
    // Why the last Load, SetDoc or Save failed; empty after a success.
    PLIX::PlixUnicodeString GetError() const;
    // Encoding name the document was read in ("UTF-8" for new documents).
    std::string GetEncoding() const;

    // Next sibling element after the main position (the first when there is none), with that
    // name (any when empty). On success it becomes the main position and the child position
    // is cleared; on failure nothing moves.
    bool FindElem(const PLIX::PlixUnicodeString& name = PLIX::PlixUnicodeString());
    // The same for a literal name, without building a string for it.
    bool FindElem(const char16_t* name);
    // The same among the children of the main element, after the child position.
    bool FindChildElem(const PLIX::PlixUnicodeString& name = PLIX::PlixUnicodeString());
    bool FindChildElem(const char16_t* name);
    // The main element becomes the parent; the child position becomes the main position.
    bool IntoElem();
    // Back up: the parent becomes the main position, the old main position the child position.
    bool OutOfElem();
    void ResetPos();
    void ResetMainPos();
    void ResetChildPos();

    PLIX::PlixUnicodeString GetTagName() const;
    PLIX::PlixUnicodeString GetChildTagName() const;
    // Element text, entities decoded, untrimmed.
    PLIX::PlixUnicodeString GetData() const;
    PLIX::PlixUnicodeString GetChildData() const;
    // Empty when absent.
    PLIX::PlixUnicodeString GetAttrib(const PLIX::PlixUnicodeString& name) const;
    PLIX::PlixUnicodeString GetAttrib(const char16_t* name) const;
    PLIX::PlixUnicodeString GetChildAttrib(const PLIX::PlixUnicodeString& name) const;
    PLIX::PlixUnicodeString GetChildAttrib(const char16_t* name) const;

    // Adds after the main position (at the end of the parent's children when there is none);
    // the new element becomes the main position.
    bool AddElem(const PLIX::PlixUnicodeString& name,
                 const PLIX::PlixUnicodeString& data = PLIX::PlixUnicodeString());
    // Adds after the child position (at the end of the main element's children when there is
    // none); the new element becomes the child position.
    bool AddChildElem(const PLIX::PlixUnicodeString& name,
                      const PLIX::PlixUnicodeString& data = PLIX::PlixUnicodeString());
    bool SetAttrib(const PLIX::PlixUnicodeString& name, const PLIX::PlixUnicodeString& value);
    bool SetAttrib(const PLIX::PlixUnicodeString& name, int value);
    bool SetChildAttrib(const PLIX::PlixUnicodeString& name, const PLIX::PlixUnicodeString& value);
    bool SetChildAttrib(const PLIX::PlixUnicodeString& name, int value);
    bool SetData(const PLIX::PlixUnicodeString& text);
    bool SetChildData(const PLIX::PlixUnicodeString& text);
    // Removes the main element; the main position moves to the previous sibling element.
    bool RemoveElem();
    // Removes the child element; the child position moves to the previous sibling element.
    bool RemoveChildElem();

    static constexpr int MaxDepth = 1024;
    static constexpr long long MaxFileSize = 256LL * 1024 * 1024;

private:
    bool FindElemNamed(const char16_t* name, size_t length);
    bool FindChildElemNamed(const char16_t* name, size_t length);

    struct Private;
    std::unique_ptr<Private> d;
};

}  // namespace KGC
