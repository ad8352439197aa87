// Byte encodings of XML documents (internal to libVlBase, not installed): detection from the
// byte order mark and the XML declaration, decoding to UTF-8 and encoding back.
#pragma once

#include <cstddef>
#include <string>

namespace KGC {
namespace TextEncoding {

enum class Form { Utf8, Utf16LE, Utf16BE, Iconv };

struct Encoding {
    Form form = Form::Utf8;
    // A byte order mark was read (UTF-8) and is written back; UTF-16 always carries one.
    bool bom = false;
    // The name reported to callers; for Form::Iconv the name handed to iconv.
    std::string name = "UTF-8";
};

// The encoding pseudo-attribute of an XML declaration at the start of ASCII-compatible text;
// empty when there is no declaration or it names no encoding.
std::string DeclaredEncoding(const char* data, size_t size);

// Whether the text opens with an XML declaration.
bool StartsWithDeclaration(const char* data, size_t size);

// Whether a declaration naming that encoding (empty: none named) may stand in a document read
// as encoding: a byte order mark and the declaration must not contradict each other.
bool Agrees(const Encoding& encoding, const std::string& declared);

// The encoding of a document given as characters (already decoded), from its declaration.
// False, with a reason, when the declaration names an encoding that cannot be written.
bool EncodingOfText(const char* utf8, size_t size, Encoding& encoding, std::string& error);

// Detects the encoding of raw file bytes. bomLength is the number of leading bytes that form
// a byte order mark. False, with a reason, for an encoding that cannot be read.
bool Detect(const char* data, size_t size, Encoding& encoding, size_t& bomLength,
            std::string& error);

// Checks that the bytes are well-formed UTF-8 (no stray continuation byte, overlong form,
// surrogate or code point beyond U+10FFFF); false, with the byte offset (counted from
// offsetBase) in error, at the first fault. Documents are refused rather than repaired, so
// that what is saved is what was read.
bool CheckUtf8(const char* data, size_t size, size_t offsetBase, std::string& error);

// Converts bytes (after the byte order mark) of a non-UTF-8 encoding to UTF-8. Ill-formed
// UTF-16 (a lone surrogate) is refused like ill-formed text of any other encoding, with the
// byte offset counted from offsetBase.
bool Decode(const char* data, size_t size, const Encoding& encoding, std::string& utf8,
            std::string& error, size_t offsetBase = 0);

// Converts UTF-8 text to the encoding, byte order mark included. Characters the encoding
// cannot represent are written as character references.
bool Encode(const std::string& utf8, const Encoding& encoding, std::string& out,
            std::string& error);

// The name to put in a declaration written for the encoding.
std::string DeclarationName(const Encoding& encoding);

}  // namespace TextEncoding
}  // namespace KGC
