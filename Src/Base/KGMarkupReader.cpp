// KGMarkupReader: KGMarkup's reading of a file (encoding detection, the refusals, the error
// text) over a pugixml document that is only walked, never edited.
//
// Kept in step with KGMarkup::Load by hand: a file one refuses the other must refuse, with
// the same words (the markup reader tests load every refused document both ways).
#include "Base/KGMarkupReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <pugixml.hpp>
#include <utility>

#include "Base/KGMarkup.h"
#include "KGAtomicFile.h"
#include "KGTextEncoding.h"

namespace KGC {

using PLIX::PlixUnicodeString;

namespace {

// The options KGMarkup parses with, so that both see the same nodes (text beside comments is
// several pieces, a DOCTYPE is seen and refused).
constexpr unsigned kParseOptions = pugi::parse_default | pugi::parse_declaration |
                                   pugi::parse_comments | pugi::parse_pi | pugi::parse_doctype |
                                   pugi::parse_ws_pcdata_single;

bool IsElement(const pugi::xml_node& n) {
    return n.type() == pugi::node_element;
}
bool IsText(const pugi::xml_node& n) {
    return n.type() == pugi::node_pcdata || n.type() == pugi::node_cdata;
}

pugi::xml_node NextElement(pugi::xml_node n) {
    while (n && !IsElement(n)) n = n.next_sibling();
    return n;
}

// Names compared byte by byte, in line: the names are short, and strcmp's set-up costs more
// than the comparison.
bool SameName(const char* a, const char* b) {
    while (*a != '\0' && *a == *b) {
        ++a;
        ++b;
    }
    return *a == *b;
}

pugi::xml_node ElementFrom(pugi::xml_node n, const char* name) {
    while (n && !(IsElement(n) && SameName(n.name(), name))) n = n.next_sibling();
    return n;
}

class DepthLimit : public pugi::xml_tree_walker {
public:
    bool for_each(pugi::xml_node& node) override {
        return depth() < KGMarkup::MaxDepth || node.type() != pugi::node_element;
    }
};

struct Prolog {
    bool declaration = false;
    std::string declared;
};

std::string StructureProblem(pugi::xml_document& doc, const Prolog& prolog) {
    int roots = 0;
    int declarations = 0;
    for (pugi::xml_node n = doc.first_child(); n; n = n.next_sibling()) {
        if (n.type() == pugi::node_doctype) return "DOCTYPE declarations are not accepted";
        if (n.type() == pugi::node_declaration) ++declarations;
        if (IsElement(n)) ++roots;
    }
    if (roots == 0) return "no root element";
    if (roots > 1) return "more than one root element";
    if (declarations > 1 || (declarations == 1 && !prolog.declaration)) {
        return "the XML declaration must open the document, once";
    }
    if (declarations == 1 && prolog.declared != doc.first_child().attribute("encoding").value()) {
        return "malformed XML declaration";
    }
    DepthLimit walker;
    if (!doc.traverse(walker)) {
        return "elements nested deeper than " + std::to_string(KGMarkup::MaxDepth);
    }
    return std::string();
}

struct PugiFree {
    void operator()(char* p) const { pugi::get_memory_deallocation_function()(p); }
};
using PugiBuffer = std::unique_ptr<char, PugiFree>;

}  // namespace

struct KGMarkupReader::Private {
    pugi::xml_document doc;
    bool wellFormed = true;
    std::string error;
    TextEncoding::Encoding encoding;

    bool Fail(std::string reason) {
        doc.reset();
        encoding = TextEncoding::Encoding();
        wellFormed = false;
        error = std::move(reason);
        return false;
    }

    bool Parse(const char* data, size_t size, const TextEncoding::Encoding& enc, PugiBuffer owned) {
        if (const void* nul = std::memchr(data, 0, size)) {
            return Fail("NUL character at offset " +
                        std::to_string(static_cast<const char*>(nul) - data));
        }
        Prolog prolog;
        prolog.declaration = TextEncoding::StartsWithDeclaration(data, size);
        prolog.declared = TextEncoding::DeclaredEncoding(data, size);
        if (!TextEncoding::Agrees(enc, prolog.declared)) {
            return Fail("declared " + prolog.declared + " but read as " + enc.name);
        }
        const pugi::xml_parse_result result =
            owned ? doc.load_buffer_inplace_own(owned.release(), size, kParseOptions,
                                                pugi::encoding_utf8)
                  : doc.load_buffer(data, size, kParseOptions, pugi::encoding_utf8);
        if (!result) {
            return Fail(std::string(result.description()) + " at offset " +
                        std::to_string(result.offset));
        }
        std::string problem = StructureProblem(doc, prolog);
        if (!problem.empty()) return Fail(std::move(problem));
        encoding = enc;
        return true;
    }

    bool LoadFile(const PlixUnicodeString& path) {
        doc.reset();
        encoding = TextEncoding::Encoding();
        wellFormed = true;
        error.clear();
        const std::string file = path.ToUtf8();
        FileDescriptor fd(::open(file.c_str(), O_RDONLY | O_CLOEXEC));
        if (fd.Get() < 0) return Fail(SystemError("cannot open ", file));
        struct stat st {};
        if (::fstat(fd.Get(), &st) != 0) return Fail(SystemError("cannot read ", file));
        if (!S_ISREG(st.st_mode)) return Fail(file + " is not a regular file");
        if (st.st_size > KGMarkup::MaxFileSize) {
            return Fail(file + " is larger than " + std::to_string(KGMarkup::MaxFileSize) +
                        " bytes");
        }
        const size_t size = static_cast<size_t>(st.st_size);
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

        TextEncoding::Encoding enc;
        size_t bomLength = 0;
        std::string reason;
        if (!TextEncoding::Detect(buffer.get(), got, enc, bomLength, reason)) {
            return Fail(std::move(reason));
        }
        if (enc.form == TextEncoding::Form::Utf8) {
            if (bomLength > 0)
                std::memmove(buffer.get(), buffer.get() + bomLength, got - bomLength);
            char* data = buffer.get();
            return Parse(data, got - bomLength, enc, std::move(buffer));
        }
        std::string utf8;
        if (!TextEncoding::Decode(buffer.get() + bomLength, got - bomLength, enc, utf8, reason)) {
            return Fail(std::move(reason));
        }
        buffer.reset();
        return Parse(utf8.data(), utf8.size(), enc, PugiBuffer());
    }
};

KGMarkupReader::KGMarkupReader() : d(std::make_unique<Private>()) {}

KGMarkupReader::~KGMarkupReader() = default;

bool KGMarkupReader::Load(const PlixUnicodeString& path) {
    try {
        return d->LoadFile(path);
    } catch (...) {
        return d->Fail("out of memory");
    }
}

bool KGMarkupReader::IsWellFormed() const {
    return d->wellFormed;
}

PlixUnicodeString KGMarkupReader::GetError() const {
    return PlixUnicodeString(d->error);
}

std::string KGMarkupReader::GetEncoding() const {
    return d->encoding.name;
}

KGMarkupReader::Element KGMarkupReader::Root() const {
    return Element(NextElement(d->doc.first_child()).internal_object());
}

std::string_view KGMarkupReader::Element::Name() const {
    return pugi::xml_node(m_node).name();
}

bool KGMarkupReader::Element::NameIs(const char* name) const {
    return SameName(pugi::xml_node(m_node).name(), name);
}

std::string_view KGMarkupReader::Element::Attribute(const char* name) const {
    for (pugi::xml_attribute a = pugi::xml_node(m_node).first_attribute(); a;
         a = a.next_attribute()) {
        if (SameName(a.name(), name)) return a.value();
    }
    return std::string_view("", 0);
}

void KGMarkupReader::Element::Attributes(const char* const* names, const char** values,
                                         size_t count) const {
    size_t missing = count;
    for (size_t i = 0; i < count; ++i) values[i] = "";
    // Only the first attribute of a name counts; found[] marks those already seen.
    bool found[16] = {};
    if (count > sizeof found) {
        for (size_t i = 0; i < count; ++i) values[i] = Attribute(names[i]).data();
        return;
    }
    for (pugi::xml_attribute a = pugi::xml_node(m_node).first_attribute(); a && missing > 0;
         a = a.next_attribute()) {
        const char* name = a.name();
        for (size_t i = 0; i < count; ++i) {
            if (!found[i] && SameName(name, names[i])) {
                values[i] = a.value();
                found[i] = true;
                --missing;
            }
        }
    }
}

PlixUnicodeString KGMarkupReader::Element::Text() const {
    PlixUnicodeString text;
    Text(text);
    return text;
}

void KGMarkupReader::Element::Text(PlixUnicodeString& out) const {
    const pugi::xml_node first = pugi::xml_node(m_node).first_child();
    // The usual element holds one piece of text: convert it without gathering.
    if (first && !first.next_sibling()) {
        if (!IsText(first)) {
            out.Empty();
            return;
        }
        const char* text = first.value();
        PLIX::Utf8ToUtf16(text, std::strlen(text), out.Str());
        return;
    }
    std::string text;
    for (pugi::xml_node c = first; c; c = c.next_sibling()) {
        if (IsText(c)) text += c.value();
    }
    PLIX::Utf8ToUtf16(text.data(), text.size(), out.Str());
}

KGMarkupReader::Element KGMarkupReader::Element::FirstChild() const {
    return Element(NextElement(pugi::xml_node(m_node).first_child()).internal_object());
}

KGMarkupReader::Element KGMarkupReader::Element::FirstChild(const char* name) const {
    return Element(ElementFrom(pugi::xml_node(m_node).first_child(), name).internal_object());
}

KGMarkupReader::Element KGMarkupReader::Element::Next() const {
    return Element(NextElement(pugi::xml_node(m_node).next_sibling()).internal_object());
}

KGMarkupReader::Element KGMarkupReader::Element::Next(const char* name) const {
    return Element(ElementFrom(pugi::xml_node(m_node).next_sibling(), name).internal_object());
}

}  // namespace KGC
