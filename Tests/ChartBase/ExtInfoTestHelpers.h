// Helpers of the extension-info tests: readable strings in failure messages, random names
// with XML special characters and non-ASCII text, and an independent look at a document.
#pragma once

#include <gtest/gtest.h>

#include <ostream>
#include <pugixml.hpp>
#include <random>
#include <string>
#include <vector>

#include "Base/PlixUnicodeString.h"

namespace PLIX {
inline void PrintTo(const PlixUnicodeString& s, std::ostream* os) {
    *os << '"' << s.ToUtf8() << '"';
}
}  // namespace PLIX

namespace exttest {

inline std::string U8(const PLIX::PlixUnicodeString& s) {
    return s.ToUtf8();
}

// A name of 1..maxPieces pieces drawn from ASCII, the XML special characters, blanks, Chinese,
// accented Latin and a character outside the BMP. Without commas when noComma is set (the
// separator of feature table names).
inline PLIX::PlixUnicodeString RandomName(std::mt19937& rng, bool noComma = false,
                                          int maxPieces = 8) {
    static const char* const kPieces[] = {
        "A",      "z",      "0",    "9",  "_", "-",     ".",   " ",    "\t",
        "&",      "<",      ">",    "\"", "'", "&amp;", "]]>", "<!--", ",",
        "海图",   "测深",   "港口", "é",  "Ñ", "ø",     "Ł",   "ß",    "\xF0\x9F\x8C\x8A",
        "LIGHTS", "DEPARE", "Ω"};
    const int count = std::uniform_int_distribution<int>(1, maxPieces)(rng);
    const int last = static_cast<int>(sizeof(kPieces) / sizeof(kPieces[0])) - 1;
    std::string text;
    while (static_cast<int>(text.size()) < count) {
        const char* piece = kPieces[std::uniform_int_distribution<int>(0, last)(rng)];
        if (noComma && std::string(piece) == ",") continue;
        text += piece;
    }
    return PLIX::PlixUnicodeString(text);
}

// The document parsed by pugixml, independently of the cursor that wrote it.
inline pugi::xml_node ParseRoot(pugi::xml_document& doc, const PLIX::PlixUnicodeString& text) {
    const std::string utf8 = text.ToUtf8();
    EXPECT_TRUE(doc.load_buffer(utf8.data(), utf8.size())) << utf8;
    return doc.document_element();
}

// Names of the element children of a node, in document order.
inline std::vector<std::string> ChildNames(pugi::xml_node node) {
    std::vector<std::string> names;
    for (pugi::xml_node child : node.children()) {
        if (child.type() == pugi::node_element) names.push_back(child.name());
    }
    return names;
}

// Names of a node's attributes, in document order.
inline std::vector<std::string> AttributeNames(pugi::xml_node node) {
    std::vector<std::string> names;
    for (pugi::xml_attribute a : node.attributes()) names.push_back(a.name());
    return names;
}

// Texts that hold no readable document with the given root: empty, blank, plain text,
// truncated, broken nesting, a refused DOCTYPE, invalid bytes, the root nested in another.
inline std::vector<std::string> UnreadableDocuments(const std::string& root) {
    return {"",
            "   \n",
            "not xml at all",
            "<" + root,
            "<" + root + ">",
            "<" + root + "><A></" + root + ">",
            "<!DOCTYPE x [<!ENTITY e \"e\">]><" + root + "/>",
            std::string("\xFF\xFE\x00", 3),
            "<Other><" + root + "/></Other>"};
}

}  // namespace exttest
