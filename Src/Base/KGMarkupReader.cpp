// KGMarkupReader: a pugixml document that is only walked, never edited, read through the same
// unit as KGMarkup::Load, so that both accept and refuse the same files with the same words.
#include "Base/KGMarkupReader.h"

#include <cstring>
#include <pugixml.hpp>
#include <type_traits>
#include <utility>

#include "Base/KGMarkup.h"
#include "KGDocumentRead.h"
#include "KGTextEncoding.h"

namespace KGC {

using PLIX::PlixUnicodeString;

namespace {

// Every accessor of pugixml is a library call, and the loaders make several per node: the
// handles are made here by copying the node pointer, which pugi::xml_node is (it is trivially
// copyable and holds nothing else), instead of by calling its constructor and internal_object().
static_assert(std::is_trivially_copyable_v<pugi::xml_node> &&
                  sizeof(pugi::xml_node) == sizeof(pugi::xml_node_struct*),
              "a pugixml node handle is its node pointer");

pugi::xml_node Node(pugi::xml_node_struct* p) {
    static const pugi::xml_node kNone;
    pugi::xml_node n = kNone;
    std::memcpy(static_cast<void*>(&n), &p, sizeof p);
    return n;
}

pugi::xml_node_struct* Struct(const pugi::xml_node& n) {
    pugi::xml_node_struct* p;
    std::memcpy(&p, static_cast<const void*>(&n), sizeof p);
    return p;
}

bool IsText(pugi::xml_node_type type) {
    return type == pugi::node_pcdata || type == pugi::node_cdata;
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

// The first element from n on, along its siblings, whose name is name (any name when null);
// the type of a missing node is node_null, which ends the walk with one call a step.
pugi::xml_node_struct* ElementFrom(pugi::xml_node n, const char* name) {
    for (;; n = n.next_sibling()) {
        const pugi::xml_node_type type = n.type();
        if (type == pugi::node_null) return nullptr;
        if (type == pugi::node_element && (name == nullptr || SameName(n.name(), name)))
            return Struct(n);
    }
}

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

    bool LoadFile(const PlixUnicodeString& path) {
        wellFormed = true;
        error.clear();
        std::string reason;
        if (!DocumentRead::ReadFile(path.ToUtf8(), doc, encoding, reason)) return Fail(reason);
        return true;
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
    return Element(ElementFrom(d->doc.first_child(), nullptr));
}

std::string_view KGMarkupReader::Element::Name() const {
    return Node(m_node).name();
}

bool KGMarkupReader::Element::NameIs(const char* name) const {
    return SameName(Node(m_node).name(), name);
}

int KGMarkupReader::Element::NameIndex(const char* const* names, int count) const {
    const char* const name = Node(m_node).name();
    for (int i = 0; i < count; ++i) {
        if (name[0] == names[i][0] && SameName(name, names[i])) return i;
    }
    return -1;
}

std::string_view KGMarkupReader::Element::Attribute(const char* name) const {
    // A parsed attribute always has a name; a missing one's is "", which ends the walk.
    for (pugi::xml_attribute a = Node(m_node).first_attribute();; a = a.next_attribute()) {
        const char* const own = a.name();
        if (*own == '\0') break;
        if (SameName(own, name)) return a.value();
    }
    return std::string_view("", 0);
}

void KGMarkupReader::Element::Attributes(const char* const* names, const char** values,
                                         size_t count) const {
    for (size_t i = 0; i < count; ++i) values[i] = nullptr;
    size_t missing = count;
    for (pugi::xml_attribute a = Node(m_node).first_attribute(); missing > 0;
         a = a.next_attribute()) {
        const char* const name = a.name();
        // A parsed attribute always has a name; a missing one's is "", which ends the walk.
        if (*name == '\0') break;
        // Only the first attribute of a name counts: a name already given is not looked at.
        for (size_t i = 0; i < count; ++i) {
            if (values[i] == nullptr && SameName(name, names[i])) {
                values[i] = a.value();
                --missing;
            }
        }
    }
    for (size_t i = 0; i < count; ++i) {
        if (values[i] == nullptr) values[i] = "";
    }
}

PlixUnicodeString KGMarkupReader::Element::Text() const {
    PlixUnicodeString text;
    Text(text);
    return text;
}

void KGMarkupReader::Element::Text(PlixUnicodeString& out) const {
    std::string room;
    const std::string_view text = TextView(room);
    PLIX::Utf8ToUtf16(text.data(), text.size(), out.Str());
}

std::string_view KGMarkupReader::Element::TextView(std::string& room) const {
    const pugi::xml_node first = Node(m_node).first_child();
    // The usual element holds one piece of text, or nothing: a view of it, without gathering.
    if (Struct(first.next_sibling()) == nullptr) return IsText(first.type()) ? first.value() : "";
    room.clear();
    for (pugi::xml_node c = first; Struct(c) != nullptr; c = c.next_sibling()) {
        if (IsText(c.type())) room += c.value();
    }
    return room;
}

KGMarkupReader::Element KGMarkupReader::Element::FirstChild() const {
    return Element(ElementFrom(Node(m_node).first_child(), nullptr));
}

KGMarkupReader::Element KGMarkupReader::Element::FirstChild(const char* name) const {
    return Element(ElementFrom(Node(m_node).first_child(), name));
}

KGMarkupReader::Element KGMarkupReader::Element::Next() const {
    return Element(ElementFrom(Node(m_node).next_sibling(), nullptr));
}

KGMarkupReader::Element KGMarkupReader::Element::Next(const char* name) const {
    return Element(ElementFrom(Node(m_node).next_sibling(), name));
}

}  // namespace KGC
