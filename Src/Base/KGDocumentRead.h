// Internal to libVlBase: reading a document the way every XML reader of the library accepts
// it, so that KGMarkup and KGMarkupReader refuse exactly the same files with the same words.
// The file must be regular (opened without blocking, so a FIFO is refused, not waited on) and
// within the size cap; its encoding is detected, checked and decoded to UTF-8; the text has no
// NUL and its declaration opens it and agrees with the encoding; the tree has one root, no
// DOCTYPE and no element nested deeper than KGMarkup::MaxDepth. Not installed.
#pragma once

#include <pugixml.hpp>
#include <string>

#include "KGTextEncoding.h"

namespace KGC {
namespace DocumentRead {

// The options both readers parse with, so that both see the same nodes.
extern const unsigned kParseOptions;

// False, with the document reset and error saying why, when the file is refused.
bool ReadFile(const std::string& file, pugi::xml_document& doc, TextEncoding::Encoding& encoding,
              std::string& error);

// The same checks for UTF-8 text already in memory, read as encoding (copied by the parser).
bool Parse(const char* utf8, size_t size, const TextEncoding::Encoding& encoding,
           pugi::xml_document& doc, std::string& error);

}  // namespace DocumentRead
}  // namespace KGC
