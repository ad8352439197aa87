// KGMarkupReader: a pugixml document that is only walked, never edited, read through the same
// unit as KGMarkup::Load, so that both accept and refuse the same files with the same words.
#include "Base/KGMarkupReader.h"

#include <cstring>
#include <pugixml.hpp>
#include <utility>

#include "Base/KGMarkup.h"
#include "KGDocumentRead.h"
#include "KGTextEncoding.h"

namespace KGC {

using PLIX::PlixUnicodeString;

namespace {

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

std::string_view KGMarkupReader::Element::TextView(std::string& room) const {
    const pugi::xml_node first = pugi::xml_node(m_node).first_child();
    if (first && !first.next_sibling()) return IsText(first) ? first.value() : "";
    room.clear();
    for (pugi::xml_node c = first; c; c = c.next_sibling()) {
        if (IsText(c)) room += c.value();
    }
    return room;
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
