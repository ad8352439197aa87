// Text and file helpers the importers share: telling UTF-8 from the Windows code page that
// older catalogue files use, and writing a generated file in one piece.
#pragma once

#include <string>

namespace vlchart {

// True when the bytes are well-formed UTF-8 (no overlong forms, surrogates or code points
// beyond U+10FFFF).
bool IsUtf8(const std::string& bytes);

// UTF-8 of text in Windows-1252; false when it holds one of the five bytes that code page
// leaves undefined.
bool Windows1252ToUtf8(const std::string& bytes, std::string& utf8);

// The text as UTF-8: kept when it is UTF-8 already, else read as Windows-1252. False when it
// is neither.
bool AsUtf8(const std::string& bytes, std::string& utf8);

// Reads a whole file; false when it cannot be read.
bool ReadBytes(const std::string& path, std::string& bytes);

// Writes the file through a temporary file in the same directory renamed over it, so that a
// failed write leaves the old file as it was. False, with the reason, when a step fails.
bool WriteBytes(const std::string& path, const std::string& bytes, std::string& error);

}  // namespace vlchart
