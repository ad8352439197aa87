// Reading and checking a document file or text, for both XML readers of the library.
#include "KGDocumentRead.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <memory>

#include "Base/KGMarkup.h"
#include "KGAtomicFile.h"

namespace KGC {
namespace DocumentRead {

// Declarations, comments and processing instructions are kept so that a settings file edited
// by hand keeps them through a save; DOCTYPE is parsed only so that it can be refused.
const unsigned kParseOptions = pugi::parse_default | pugi::parse_declaration |
                               pugi::parse_comments | pugi::parse_pi | pugi::parse_doctype |
                               pugi::parse_ws_pcdata_single;

namespace {

// A buffer from pugixml's allocator, so that the document can parse it in place and own it.
struct PugiFree {
    void operator()(char* p) const { pugi::get_memory_deallocation_function()(p); }
};
using PugiBuffer = std::unique_ptr<char, PugiFree>;

// Stops the walk at the first element nested deeper than the limit. pugixml's traverse is
// iterative, so a deep document cannot exhaust the stack here; it is also several times
// cheaper than walking the tree through the node API, one library call per step.
class DepthLimit : public pugi::xml_tree_walker {
public:
    explicit DepthLimit(int limit) : m_limit(limit) {}
    bool for_each(pugi::xml_node& node) override {
        // depth() counts from 0 for the children of the document.
        return depth() < m_limit || node.type() != pugi::node_element;
    }

private:
    int m_limit;
};

// The declaration XML allows: version first, then encoding and standalone, values without
// markup. pugixml reads any attributes there, and one holding "<" or "&" is written back
// escaped, as text the scanner of the declaration then reads differently.
bool WellFormedDeclaration(const pugi::xml_node& declaration) {
    int i = 0;
    for (pugi::xml_attribute a = declaration.first_attribute(); a; a = a.next_attribute(), ++i) {
        const std::string name = a.name();
        if (i == 0 ? name != "version" : name != "encoding" && name != "standalone") return false;
        if (std::strpbrk(a.value(), "<&") != nullptr) return false;
    }
    return i > 0;
}

// What the text said about itself before it was parsed.
struct Prolog {
    bool declaration = false;  // it opens with an XML declaration
    std::string declared;      // the encoding that declaration names
};

// Why a parsed document is refused; empty when it is acceptable.
std::string StructureProblem(pugi::xml_document& doc, const Prolog& prolog) {
    int roots = 0;
    int declarations = 0;
    for (pugi::xml_node n = doc.first_child(); n; n = n.next_sibling()) {
        if (n.type() == pugi::node_doctype) return "DOCTYPE declarations are not accepted";
        if (n.type() == pugi::node_declaration) ++declarations;
        if (n.type() == pugi::node_element) ++roots;
    }
    if (roots == 0) return "no root element";
    if (roots > 1) return "more than one root element";
    // The encoding was chosen from the declaration at the start of the text; one elsewhere, or
    // one the parser reads differently, would be written back naming another encoding.
    if (declarations > 1 || (declarations == 1 && !prolog.declaration)) {
        return "the XML declaration must open the document, once";
    }
    if (declarations == 1 && (prolog.declared != doc.first_child().attribute("encoding").value() ||
                              !WellFormedDeclaration(doc.first_child()))) {
        return "malformed XML declaration";
    }
    DepthLimit walker(KGMarkup::MaxDepth);
    if (!doc.traverse(walker)) {
        return "elements nested deeper than " + std::to_string(KGMarkup::MaxDepth);
    }
    return std::string();
}

bool Fail(pugi::xml_document& doc, std::string& error, std::string reason) {
    doc.reset();
    error = std::move(reason);
    return false;
}

// Checks made on the UTF-8 text before it is parsed.
bool Acceptable(const char* data, size_t size, const TextEncoding::Encoding& enc, Prolog& prolog,
                std::string& error) {
    // XML has no NUL character, and pugixml would silently stop reading at one.
    if (const void* nul = std::memchr(data, 0, size)) {
        error = "NUL character at offset " + std::to_string(static_cast<const char*>(nul) - data);
        return false;
    }
    prolog.declaration = TextEncoding::StartsWithDeclaration(data, size);
    prolog.declared = TextEncoding::DeclaredEncoding(data, size);
    if (!TextEncoding::Agrees(enc, prolog.declared)) {
        error = "declared " + prolog.declared + " but read as " + enc.name;
        return false;
    }
    return true;
}

bool Finish(const pugi::xml_parse_result& result, const Prolog& prolog, pugi::xml_document& doc,
            std::string& error) {
    if (!result) {
        return Fail(
            doc, error,
            std::string(result.description()) + " at offset " + std::to_string(result.offset));
    }
    std::string problem = StructureProblem(doc, prolog);
    if (!problem.empty()) return Fail(doc, error, std::move(problem));
    return true;
}

// data comes from pugixml's allocator; the document takes it over in any case.
bool ParseOwned(char* data, size_t size, const TextEncoding::Encoding& enc, pugi::xml_document& doc,
                std::string& error) {
    PugiBuffer owned(data);
    Prolog prolog;
    if (!Acceptable(data, size, enc, prolog, error)) return Fail(doc, error, error);
    return Finish(
        doc.load_buffer_inplace_own(owned.release(), size, kParseOptions, pugi::encoding_utf8),
        prolog, doc, error);
}

}  // namespace

bool Parse(const char* utf8, size_t size, const TextEncoding::Encoding& enc,
           pugi::xml_document& doc, std::string& error) {
    Prolog prolog;
    if (!Acceptable(utf8, size, enc, prolog, error)) return Fail(doc, error, error);
    return Finish(doc.load_buffer(utf8, size, kParseOptions, pugi::encoding_utf8), prolog, doc,
                  error);
}

bool ReadFile(const std::string& file, pugi::xml_document& doc, TextEncoding::Encoding& encoding,
              std::string& error) {
    doc.reset();
    encoding = TextEncoding::Encoding();
    auto Fail = [&](std::string reason) {
        return DocumentRead::Fail(doc, error, std::move(reason));
    };
    TextEncoding::Encoding enc;
    const bool ok = [&] {
        // Non-blocking, so that a FIFO in place of the file is refused below instead of
        // waiting for a writer; on a regular file the flag changes nothing.
        FileDescriptor fd(::open(file.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
        if (fd.Get() < 0) return Fail(SystemError("cannot open ", file));
        struct stat st {};
        if (::fstat(fd.Get(), &st) != 0) return Fail(SystemError("cannot read ", file));
        if (!S_ISREG(st.st_mode)) return Fail(file + " is not a regular file");
        if (st.st_size > KGMarkup::MaxFileSize) {
            return Fail(file + " is larger than " + std::to_string(KGMarkup::MaxFileSize) +
                        " bytes");
        }
        size_t size = static_cast<size_t>(st.st_size);
        PugiBuffer buffer(static_cast<char*>(pugi::get_memory_allocation_function()(size + 1)));
        if (!buffer) return Fail("out of memory");
        size_t got = 0;
        while (got < size) {
            ssize_t n = ::read(fd.Get(), buffer.get() + got, size - got);
            if (n < 0 && errno == EINTR) continue;
            if (n < 0) return Fail(SystemError("cannot read ", file));
            if (n == 0) break;  // the file shrank meanwhile; parse what is there
            got += static_cast<size_t>(n);
        }
        fd.Close();

        size_t bomLength = 0;
        if (!TextEncoding::Detect(buffer.get(), got, enc, bomLength, error)) {
            return Fail(std::move(error));
        }
        if (enc.form == TextEncoding::Form::Utf8) {
            if (!TextEncoding::CheckUtf8(buffer.get() + bomLength, got - bomLength, bomLength,
                                         error)) {
                return Fail(std::move(error));
            }
            if (bomLength > 0)
                std::memmove(buffer.get(), buffer.get() + bomLength, got - bomLength);
            char* data = buffer.release();
            // The document owns the buffer from here on, whatever the parse gives.
            return ParseOwned(data, got - bomLength, enc, doc, error);
        }
        std::string utf8;
        if (!TextEncoding::Decode(buffer.get() + bomLength, got - bomLength, enc, utf8, error,
                                  bomLength)) {
            return Fail(std::move(error));
        }
        buffer.reset();
        return Parse(utf8.data(), utf8.size(), enc, doc, error);
    }();
    if (ok) encoding = enc;
    return ok;
}

}  // namespace DocumentRead
}  // namespace KGC
