// KGMarkup: the markup cursor over a pugixml document, with encoding detection on the way in,
// the document's own encoding on the way out, and atomic saves.
#include "Base/KGMarkup.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <pugixml.hpp>
#include <string>
#include <utility>

#include "KGAtomicFile.h"
#include "KGDocumentRead.h"
#include "KGTextEncoding.h"

namespace KGC {

using PLIX::PlixUnicodeString;

namespace {

// pugixml and the string conversions report running out of memory by throwing. No exception
// leaves the cursor: the call gives what failed() gives.
template <typename Body, typename Failed>
auto Guarded(Body body, Failed failed) -> decltype(body()) {
    try {
        return body();
    } catch (...) {
        return failed();
    }
}
constexpr auto kNoText = [] { return PlixUnicodeString(); };
constexpr auto kFalse = [] { return false; };

constexpr unsigned kFormat = pugi::format_indent | pugi::format_no_declaration;
constexpr char kIndent[] = "  ";

bool IsElement(const pugi::xml_node& n) {
    return n.type() == pugi::node_element;
}
bool IsText(const pugi::xml_node& n) {
    return n.type() == pugi::node_pcdata || n.type() == pugi::node_cdata;
}

// The first element at or after n with that name (any name when empty).
pugi::xml_node NextElement(pugi::xml_node n, const std::string& name) {
    for (; n; n = n.next_sibling()) {
        if (IsElement(n) && (name.empty() || name == n.name())) return n;
    }
    return n;
}

// A UTF-16 name compared with pugixml's UTF-8 names without converting it for every node:
// the dictionaries walk tens of thousands of elements by name.
class Name {
public:
    Name(const char16_t* text, size_t length) : m_text(text), m_length(length) {
        for (size_t i = 0; i < length; ++i) {
            if (text[i] >= 0x80 || text[i] == 0) {
                m_utf8 = PLIX::Utf16ToUtf8(text, length);
                m_ascii = false;
                break;
            }
        }
    }
    bool IsEmpty() const { return m_length == 0; }
    bool Matches(const char* utf8) const {
        if (!m_ascii) return m_utf8 == utf8;
        size_t i = 0;
        for (; i < m_length; ++i) {
            if (static_cast<unsigned char>(utf8[i]) != m_text[i]) return false;
        }
        return utf8[i] == '\0';
    }

private:
    const char16_t* m_text;
    size_t m_length;
    bool m_ascii = true;
    std::string m_utf8;
};

Name NameOf(const char16_t* text) {
    if (text == nullptr) return Name(u"", 0);
    return Name(text, std::char_traits<char16_t>::length(text));
}

pugi::xml_node NextElement(pugi::xml_node n, const Name& name) {
    for (; n; n = n.next_sibling()) {
        if (IsElement(n) && (name.IsEmpty() || name.Matches(n.name()))) return n;
    }
    return n;
}

PlixUnicodeString AttributeOf(const pugi::xml_node& n, const Name& name) {
    for (pugi::xml_attribute a = n.first_attribute(); a; a = a.next_attribute()) {
        if (name.Matches(a.name())) return PlixUnicodeString(a.value());
    }
    return PlixUnicodeString();
}

pugi::xml_node PreviousElement(pugi::xml_node n) {
    for (n = n.previous_sibling(); n && !IsElement(n); n = n.previous_sibling()) {
    }
    return n;
}

bool HasChildElement(const pugi::xml_node& n) {
    return static_cast<bool>(NextElement(n.first_child(), std::string()));
}

// Elements from the root down to n, n included.
int Depth(pugi::xml_node n) {
    int depth = 0;
    for (; n && IsElement(n); n = n.parent()) ++depth;
    return depth;
}

// XML names: letters, '_' and ':' first, then also digits, '-' and '.'; every non-ASCII
// character is accepted rather than carrying the full Unicode name tables.
bool IsValidName(const std::string& name) {
    if (name.empty()) return false;
    for (size_t i = 0; i < name.size(); ++i) {
        const auto c = static_cast<unsigned char>(name[i]);
        const unsigned lower = c | 0x20u;
        if ((lower >= 'a' && lower <= 'z') || c == '_' || c == ':' || c >= 0x80) continue;
        if (i > 0 && ((c >= '0' && c <= '9') || c == '-' || c == '.')) continue;
        return false;
    }
    return true;
}

PlixUnicodeString TextOf(const pugi::xml_node& n) {
    pugi::xml_node first = n.first_child();
    // The usual element holds one piece of text: convert it without gathering.
    if (first && !first.next_sibling()) {
        return IsText(first) ? PlixUnicodeString(first.value()) : PlixUnicodeString();
    }
    std::string text;
    for (pugi::xml_node c = first; c; c = c.next_sibling()) {
        if (IsText(c)) text += c.value();
    }
    return PlixUnicodeString(text);
}

// Replaces the text of an element that holds no elements; comments inside it stay.
bool SetTextOf(pugi::xml_node n, const std::string& text) {
    if (!n || HasChildElement(n)) return false;
    pugi::xml_node first;
    for (pugi::xml_node c = n.first_child(); c && !first; c = c.next_sibling()) {
        if (IsText(c)) first = c;
    }
    pugi::xml_node added;
    if (!text.empty()) {
        added = first ? n.insert_child_before(pugi::node_pcdata, first)
                      : n.append_child(pugi::node_pcdata);
        if (!added || !added.set_value(text.c_str())) return false;
    }
    for (pugi::xml_node c = n.first_child(); c;) {
        pugi::xml_node next = c.next_sibling();
        if (c != added && IsText(c)) n.remove_child(c);
        c = next;
    }
    return true;
}

bool SetAttribOn(pugi::xml_node n, const PlixUnicodeString& name, const std::string& value) {
    if (!n) return false;
    const std::string key = name.ToUtf8();
    if (!IsValidName(key)) return false;
    pugi::xml_attribute a = n.attribute(key.c_str());
    if (!a) a = n.append_attribute(key.c_str());
    return a && a.set_value(value.c_str());
}

bool HasDeclaration(const pugi::xml_document& doc) {
    for (pugi::xml_node n = doc.first_child(); n; n = n.next_sibling()) {
        if (n.type() == pugi::node_declaration) return true;
    }
    return false;
}

// pugixml writes a carriage return in text as it is, and every reader (pugixml included)
// turns it into a line feed; as a reference it survives. Text is the only place one can be:
// parsing normalises them everywhere else, and the cursor only creates text.
class StringWriter : public pugi::xml_writer {
public:
    explicit StringWriter(std::string& out) : m_out(out) {}
    void write(const void* data, size_t size) override {
        const char* p = static_cast<const char*>(data);
        const char* end = p + size;
        while (const void* cr = std::memchr(p, '\r', static_cast<size_t>(end - p))) {
            const char* at = static_cast<const char*>(cr);
            m_out.append(p, at);
            m_out.append("&#13;");
            p = at + 1;
        }
        m_out.append(p, end);
    }

private:
    std::string& m_out;
};

}  // namespace

struct KGMarkup::Private {
    pugi::xml_document doc;
    pugi::xml_node parent;
    pugi::xml_node main;
    pugi::xml_node child;
    bool wellFormed = true;
    std::string error;
    TextEncoding::Encoding encoding;

    Private() : parent(doc) {}

    void ResetPos() {
        parent = doc;
        main = pugi::xml_node();
        child = pugi::xml_node();
    }

    void Clear() {
        doc.reset();
        ResetPos();
        encoding = TextEncoding::Encoding();
        wellFormed = true;
        error.clear();
    }

    bool Fail(std::string reason) {
        Clear();
        wellFormed = false;
        error = std::move(reason);
        return false;
    }

    bool LoadFile(const PlixUnicodeString& path);
    bool SaveFile(const PlixUnicodeString& path);
    bool ParseText(const PlixUnicodeString& text);
};

KGMarkup::KGMarkup() : d(std::make_unique<Private>()) {}

KGMarkup::KGMarkup(const PlixUnicodeString& text) : KGMarkup() {
    SetDoc(text);
}

KGMarkup::~KGMarkup() = default;

KGMarkup KGMarkup::Clone() const {
    KGMarkup copy;
    Private& c = *copy.d;
    const bool copied = Guarded(
        [&] {
            c.doc.reset(d->doc);
            return true;
        },
        [] { return false; });
    if (!copied) {
        c.Fail("out of memory");
        return copy;
    }
    c.ResetPos();
    c.wellFormed = d->wellFormed;
    c.error = d->error;
    c.encoding = d->encoding;
    return copy;
}

// The moved-from cursor is left an empty document, so that it stays usable.
KGMarkup::KGMarkup(KGMarkup&& other) noexcept
    : d(std::exchange(other.d, std::make_unique<Private>())) {}

KGMarkup& KGMarkup::operator=(KGMarkup&& other) noexcept {
    if (this != &other) d = std::exchange(other.d, std::make_unique<Private>());
    return *this;
}

bool KGMarkup::Load(const PlixUnicodeString& path) {
    Private& p = *d;
    return Guarded([&] { return p.LoadFile(path); }, [&] { return p.Fail("out of memory"); });
}

bool KGMarkup::Private::LoadFile(const PlixUnicodeString& path) {
    Clear();
    std::string reason;
    if (!DocumentRead::ReadFile(path.ToUtf8(), doc, encoding, reason)) return Fail(reason);
    return true;
}

bool KGMarkup::Save(const PlixUnicodeString& path) {
    Private& p = *d;
    return Guarded([&] { return p.SaveFile(path); },
                   [&] {
                       p.error = "out of memory";
                       return false;
                   });
}

bool KGMarkup::Private::SaveFile(const PlixUnicodeString& path) {
    {
        Private& p = *this;
        p.error.clear();
        // Refused so that a settings file that failed to load is never overwritten by nothing.
        if (!NextElement(p.doc.first_child(), std::string())) {
            p.error = "the document has no root element";
            return false;
        }
        std::string text;
        if (!HasDeclaration(p.doc)) {
            text = "<?xml version=\"1.0\" encoding=\"" + TextEncoding::DeclarationName(p.encoding) +
                   "\"?>\n";
        }
        StringWriter writer(text);
        p.doc.save(writer, kIndent, kFormat, pugi::encoding_utf8);
        std::string bytes;
        std::string error;
        if (!TextEncoding::Encode(text, p.encoding, bytes, error) ||
            !WriteAtomically(path.ToUtf8(), bytes, error)) {
            p.error = std::move(error);
            return false;
        }
        return true;
    }
}

bool KGMarkup::SetDoc(const PlixUnicodeString& text) {
    Private& p = *d;
    return Guarded([&] { return p.ParseText(text); }, [&] { return p.Fail("out of memory"); });
}

bool KGMarkup::Private::ParseText(const PlixUnicodeString& text) {
    {
        Private& p = *this;
        p.Clear();
        if (text.IsEmpty()) return true;
        const std::u16string& units = text.Str();
        for (size_t i = 0; i < units.size(); ++i) {
            const char16_t u = units[i];
            if (u >= 0xD800 && u <= 0xDBFF && i + 1 < units.size() && units[i + 1] >= 0xDC00 &&
                units[i + 1] <= 0xDFFF) {
                ++i;
            } else if (u >= 0xD800 && u <= 0xDFFF) {
                return p.Fail("invalid UTF-16 text at code unit " + std::to_string(i));
            }
        }
        std::string utf8 = text.ToUtf8();
        if (static_cast<long long>(utf8.size()) > MaxFileSize) {
            return p.Fail("the document is larger than " + std::to_string(MaxFileSize) + " bytes");
        }
        const bool bom = utf8.compare(0, 3, "\xEF\xBB\xBF") == 0;
        if (bom) utf8.erase(0, 3);
        TextEncoding::Encoding enc;
        std::string error;
        if (!TextEncoding::EncodingOfText(utf8.data(), utf8.size(), enc, error)) {
            return p.Fail(std::move(error));
        }
        if (enc.form == TextEncoding::Form::Utf8) enc.bom = bom;
        if (!DocumentRead::Parse(utf8.data(), utf8.size(), enc, doc, error)) return p.Fail(error);
        p.encoding = enc;
        return true;
    }
}

PlixUnicodeString KGMarkup::GetDoc() const {
    return Guarded(
        [&] {
            std::string text;
            StringWriter writer(text);
            d->doc.save(writer, kIndent, kFormat, pugi::encoding_utf8);
            return PlixUnicodeString(text);
        },
        kNoText);
}

bool KGMarkup::IsWellFormed() const {
    return d->wellFormed;
}

PlixUnicodeString KGMarkup::GetError() const {
    return Guarded([&] { return PlixUnicodeString(d->error); }, kNoText);
}

std::string KGMarkup::GetEncoding() const {
    return Guarded([&] { return d->encoding.name; }, [] { return std::string(); });
}

bool KGMarkup::FindElem(const PlixUnicodeString& name) {
    return FindElemNamed(name.c_str(), static_cast<size_t>(name.GetLength()));
}

bool KGMarkup::FindElem(const char16_t* name) {
    return FindElemNamed(name, name ? std::char_traits<char16_t>::length(name) : 0);
}

bool KGMarkup::FindElemNamed(const char16_t* name, size_t length) {
    Private& p = *d;
    return Guarded(
        [&] {
            pugi::xml_node from = p.main ? p.main.next_sibling() : p.parent.first_child();
            pugi::xml_node found = NextElement(from, Name(name ? name : u"", name ? length : 0));
            if (!found) return false;
            p.main = found;
            p.child = pugi::xml_node();
            return true;
        },
        kFalse);
}

bool KGMarkup::FindChildElem(const PlixUnicodeString& name) {
    return FindChildElemNamed(name.c_str(), static_cast<size_t>(name.GetLength()));
}

bool KGMarkup::FindChildElem(const char16_t* name) {
    return FindChildElemNamed(name, name ? std::char_traits<char16_t>::length(name) : 0);
}

bool KGMarkup::FindChildElemNamed(const char16_t* name, size_t length) {
    Private& p = *d;
    if (!p.main) return false;
    return Guarded(
        [&] {
            pugi::xml_node from = p.child ? p.child.next_sibling() : p.main.first_child();
            pugi::xml_node found = NextElement(from, Name(name ? name : u"", name ? length : 0));
            if (!found) return false;
            p.child = found;
            return true;
        },
        kFalse);
}

bool KGMarkup::IntoElem() {
    if (!d->main) return false;
    d->parent = d->main;
    d->main = d->child;
    d->child = pugi::xml_node();
    return true;
}

bool KGMarkup::OutOfElem() {
    if (!IsElement(d->parent)) return false;
    d->child = d->main;
    d->main = d->parent;
    d->parent = d->parent.parent();
    return true;
}

void KGMarkup::ResetPos() {
    d->ResetPos();
}

void KGMarkup::ResetMainPos() {
    d->main = pugi::xml_node();
    d->child = pugi::xml_node();
}

void KGMarkup::ResetChildPos() {
    d->child = pugi::xml_node();
}

PlixUnicodeString KGMarkup::GetTagName() const {
    return Guarded([&] { return PlixUnicodeString(d->main.name()); }, kNoText);
}

PlixUnicodeString KGMarkup::GetChildTagName() const {
    return Guarded([&] { return PlixUnicodeString(d->child.name()); }, kNoText);
}

PlixUnicodeString KGMarkup::GetData() const {
    return Guarded([&] { return TextOf(d->main); }, kNoText);
}

PlixUnicodeString KGMarkup::GetChildData() const {
    return Guarded([&] { return TextOf(d->child); }, kNoText);
}

PlixUnicodeString KGMarkup::GetAttrib(const PlixUnicodeString& name) const {
    return GetAttrib(name.c_str());
}

PlixUnicodeString KGMarkup::GetAttrib(const char16_t* name) const {
    if (!d->main) return PlixUnicodeString();
    return Guarded([&] { return AttributeOf(d->main, NameOf(name)); }, kNoText);
}

PlixUnicodeString KGMarkup::GetChildAttrib(const PlixUnicodeString& name) const {
    return GetChildAttrib(name.c_str());
}

PlixUnicodeString KGMarkup::GetChildAttrib(const char16_t* name) const {
    if (!d->child) return PlixUnicodeString();
    return Guarded([&] { return AttributeOf(d->child, NameOf(name)); }, kNoText);
}

namespace {

// Adds an element named name, holding data, under parent: after previous, or last when there
// is none. Null when the name is not an XML name or the element cannot be made.
pugi::xml_node AddElementAfter(pugi::xml_node parent, pugi::xml_node previous,
                               const PlixUnicodeString& name, const PlixUnicodeString& data) {
    const std::string tag = name.ToUtf8();
    if (!IsValidName(tag)) return pugi::xml_node();
    pugi::xml_node n = previous ? parent.insert_child_after(pugi::node_element, previous)
                                : parent.append_child(pugi::node_element);
    if (n && (!n.set_name(tag.c_str()) || !SetTextOf(n, data.ToUtf8()))) {
        parent.remove_child(n);
        return pugi::xml_node();
    }
    return n;
}

}  // namespace

bool KGMarkup::AddElem(const PlixUnicodeString& name, const PlixUnicodeString& data) {
    Private& p = *d;
    return Guarded(
        [&] {
            if (p.parent.type() == pugi::node_document) {
                if (NextElement(p.parent.first_child(), std::string())) return false;
            } else if (Depth(p.parent) >= MaxDepth) {
                // Kept within the depth Load accepts, so that whatever is saved can be read back.
                return false;
            }
            pugi::xml_node n = AddElementAfter(p.parent, p.main, name, data);
            if (!n) return false;
            p.main = n;
            p.child = pugi::xml_node();
            return true;
        },
        kFalse);
}

bool KGMarkup::AddChildElem(const PlixUnicodeString& name, const PlixUnicodeString& data) {
    Private& p = *d;
    if (!p.main) return false;
    return Guarded(
        [&] {
            if (Depth(p.main) >= MaxDepth) return false;
            pugi::xml_node n = AddElementAfter(p.main, p.child, name, data);
            if (!n) return false;
            p.child = n;
            return true;
        },
        kFalse);
}

bool KGMarkup::SetAttrib(const PlixUnicodeString& name, const PlixUnicodeString& value) {
    return Guarded([&] { return SetAttribOn(d->main, name, value.ToUtf8()); }, kFalse);
}

bool KGMarkup::SetAttrib(const PlixUnicodeString& name, int value) {
    return Guarded([&] { return SetAttribOn(d->main, name, std::to_string(value)); }, kFalse);
}

bool KGMarkup::SetChildAttrib(const PlixUnicodeString& name, const PlixUnicodeString& value) {
    return Guarded([&] { return SetAttribOn(d->child, name, value.ToUtf8()); }, kFalse);
}

bool KGMarkup::SetChildAttrib(const PlixUnicodeString& name, int value) {
    return Guarded([&] { return SetAttribOn(d->child, name, std::to_string(value)); }, kFalse);
}

bool KGMarkup::SetData(const PlixUnicodeString& text) {
    return Guarded([&] { return SetTextOf(d->main, text.ToUtf8()); }, kFalse);
}

bool KGMarkup::SetChildData(const PlixUnicodeString& text) {
    return Guarded([&] { return SetTextOf(d->child, text.ToUtf8()); }, kFalse);
}

bool KGMarkup::RemoveElem() {
    if (!d->main) return false;
    pugi::xml_node previous = PreviousElement(d->main);
    if (!d->parent.remove_child(d->main)) return false;
    d->main = previous;
    d->child = pugi::xml_node();
    return true;
}

bool KGMarkup::RemoveChildElem() {
    if (!d->main || !d->child) return false;
    pugi::xml_node previous = PreviousElement(d->child);
    if (!d->main.remove_child(d->child)) return false;
    d->child = previous;
    return true;
}

}  // namespace KGC
