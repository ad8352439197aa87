// Tests of the line reader: what Open accepts, line ends, byte-order marks, invalid bytes,
// end-of-file reporting, lines across and beyond read blocks, and the line length cap.
#include "Base/KGFileStdio.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "Base/PlixTypes.h"
#include "BaseTestHelpers.h"
#include "TestSupport.h"

using KGC::KGFileStdio;
using KGC::KGStreamRead;
using KGC::KGStreamWrite;
using PLIX::PlixUnicodeString;

namespace {

constexpr int kUtf8 = PLIX::PLIXCharset::UTF8;

// Reads lines until IsEOF, with a bound so that a reader that never ends fails instead of
// hanging.
std::vector<std::u16string> ReadAll(KGFileStdio& file, size_t bound = 100000) {
    std::vector<std::u16string> lines;
    while (!file.IsEOF() && lines.size() < bound) lines.push_back(file.ReadLine().Str());
    return lines;
}

std::vector<std::u16string> ReadFileLines(const std::string& content, int blockSize = 65536) {
    vltest::TempDir dir;
    const std::string path = dir.File("lines.txt");
    vltest::WriteFile(path, content);
    KGFileStdio file;
    if (!file.Open(path, KGStreamRead, blockSize, kUtf8)) {
        ADD_FAILURE() << "cannot open " << path;
        return {};
    }
    return ReadAll(file);
}

using Lines = std::vector<std::u16string>;

}  // namespace

TEST(KGFileStdio, OpenRefusesMissingFilesDirectoriesAndWriting) {
    vltest::TempDir dir;
    const std::string path = dir.File("table.dai");
    vltest::WriteFile(path, "content\n");

    KGFileStdio file;
    EXPECT_FALSE(file.IsOpen());
    EXPECT_FALSE(file.Open(dir.File("missing.dai"), KGStreamRead, 65536, kUtf8));
    EXPECT_FALSE(file.Open(dir.Path(), KGStreamRead, 65536, kUtf8));
    EXPECT_FALSE(file.Open(PlixUnicodeString(), KGStreamRead, 65536, kUtf8));
    EXPECT_FALSE(file.Open(path, KGStreamWrite, 65536, kUtf8));
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(vltest::ReadFile(path), "content\n");  // a refused write leaves the file alone

    EXPECT_TRUE(file.Open(path, KGStreamRead, 65536, kUtf8));
    EXPECT_TRUE(file.IsOpen());
    EXPECT_EQ(file.ReadLine().Str(), u"content");
    // A failed Open does not leave the earlier file readable.
    EXPECT_FALSE(file.Open(dir.File("missing.dai"), KGStreamRead, 65536, kUtf8));
    EXPECT_FALSE(file.IsOpen());

    // Charset 0 reads UTF-8 as well; a non-ASCII path is found.
    const std::string named = dir.File("\xE6\xB5\xB7\xE5\x9B\xBE.dai");
    vltest::WriteFile(named, "\xE6\xB5\xB7\n");
    EXPECT_TRUE(
        file.Open(PlixUnicodeString(named), KGStreamRead, 65536, PLIX::PLIXCharset::Default));
    EXPECT_EQ(file.ReadLine().Str(), u"\u6D77");
}

TEST(KGFileStdio, LinesLoseTheirLineFeedButKeepACarriageReturn) {
    EXPECT_EQ(ReadFileLines("a\nbb\nccc\n"), (Lines{u"a", u"bb", u"ccc"}));
    EXPECT_EQ(ReadFileLines("a\r\nb\r\n"), (Lines{u"a\r", u"b\r"}));
    // A carriage return alone does not end a line.
    EXPECT_EQ(ReadFileLines("a\rb\nc"), (Lines{u"a\rb", u"c"}));
    // The last line needs no line end.
    EXPECT_EQ(ReadFileLines("first\nlast"), (Lines{u"first", u"last"}));
    EXPECT_EQ(ReadFileLines("only"), (Lines{u"only"}));
    // Empty lines are lines.
    EXPECT_EQ(ReadFileLines("\n\nx\n\n"), (Lines{u"", u"", u"x", u""}));
    EXPECT_EQ(ReadFileLines("\n"), (Lines{u""}));
    EXPECT_EQ(ReadFileLines("\r\n"), (Lines{u"\r"}));
}

TEST(KGFileStdio, TextIsDecodedAsUtf8WithALeadingByteOrderMarkSkipped) {
    EXPECT_EQ(ReadFileLines(u8"\uFEFFfirst\nsecond\n"), (Lines{u"first", u"second"}));
    EXPECT_EQ(ReadFileLines("\xEF\xBB\xBF\n"), (Lines{u""}));
    EXPECT_EQ(ReadFileLines("\xEF\xBB\xBF"), Lines{});
    // Only a mark at the start of the file is a signature.
    EXPECT_EQ(ReadFileLines(u8"a\n\uFEFFb\n"), (Lines{u"a", u"\uFEFFb"}));

    EXPECT_EQ(ReadFileLines("\xE4\xB8\xAD\xE6\x96\x87\xE6\xB5\xB7\xE5\x9B\xBE\n"
                            "LIGHTS \xC3\xA9\n"),
              (Lines{u"\u4E2D\u6587\u6D77\u56FE", u"LIGHTS \u00E9"}));
    EXPECT_EQ(ReadFileLines("ok\xFF\n\xC3(\n\xE4\xB8"),
              (Lines{u"ok\uFFFD", u"\uFFFD(", u"\uFFFD"}));
}

TEST(KGFileStdio, IsEofBecomesTrueRightAfterTheLastLine) {
    vltest::TempDir dir;
    KGFileStdio file;
    EXPECT_TRUE(file.IsEOF());  // nothing open

    const std::string path = dir.File("three.txt");
    vltest::WriteFile(path, "1\n2\n3\n");
    ASSERT_TRUE(file.Open(path, KGStreamRead, 65536, kUtf8));
    EXPECT_FALSE(file.IsEOF());
    EXPECT_EQ(file.ReadLine().Str(), u"1");
    EXPECT_FALSE(file.IsEOF());
    EXPECT_EQ(file.ReadLine().Str(), u"2");
    EXPECT_FALSE(file.IsEOF());
    EXPECT_EQ(file.ReadLine().Str(), u"3");
    EXPECT_TRUE(file.IsEOF());
    EXPECT_TRUE(file.ReadLine().IsEmpty());
    EXPECT_TRUE(file.IsEOF());

    // The same when the file ends exactly at a block boundary.
    const std::string exact = dir.File("exact.txt");
    vltest::WriteFile(exact, std::string(65535, 'x') + "\n");
    ASSERT_TRUE(file.Open(exact, KGStreamRead, 65536, kUtf8));
    EXPECT_EQ(file.ReadLine().GetLength(), 65535);
    EXPECT_TRUE(file.IsEOF());

    // A file of 0 bytes is at its end at once.
    const std::string empty = dir.File("empty.txt");
    vltest::WriteFile(empty, "");
    ASSERT_TRUE(file.Open(empty, KGStreamRead, 65536, kUtf8));
    EXPECT_TRUE(file.IsEOF());
    EXPECT_TRUE(file.ReadLine().IsEmpty());
    EXPECT_TRUE(file.IsEOF());
}

TEST(KGFileStdio, ReadingAfterCloseGivesNothing) {
    vltest::TempDir dir;
    const std::string path = dir.File("lines.txt");
    vltest::WriteFile(path, "a\nb\n");
    KGFileStdio file;
    ASSERT_TRUE(file.Open(path, KGStreamRead, 65536, kUtf8));
    EXPECT_EQ(file.ReadLine().Str(), u"a");
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_TRUE(file.IsEOF());
    EXPECT_TRUE(file.ReadLine().IsEmpty());
    file.Close();  // twice is harmless

    // Reopening starts from the beginning.
    ASSERT_TRUE(file.Open(path, KGStreamRead, 65536, kUtf8));
    EXPECT_EQ(ReadAll(file), (Lines{u"a", u"b"}));
}

TEST(KGFileStdio, LinesAcrossAndBeyondReadBlocksComeBackWhole) {
    // A line of 1 MB, far longer than a block, between short ones.
    const std::string megabyte(1000000, 'm');
    Lines lines = ReadFileLines("short\n" + megabyte + "\nnext\n");
    ASSERT_EQ(lines.size(), 3u);
    EXPECT_EQ(lines[0], u"short");
    EXPECT_EQ(lines[1], std::u16string(1000000, u'm'));
    EXPECT_EQ(lines[2], u"next");

    // Many lines with multi-byte characters and CRLF ends, read with the smallest block, so
    // that characters, CR/LF pairs and the BOM meet block boundaries everywhere.
    std::string content = "\xEF\xBB\xBF";
    Lines expected;
    for (int i = 0; i < 5000; ++i) {
        std::string line = "line " + std::to_string(i) + " \xE6\xB5\xB7\xE5\x9B\xBE";
        if (i % 7 == 0) line += std::string(static_cast<size_t>(i % 300), 'p');
        content += line + (i % 2 ? "\r\n" : "\n");
        expected.push_back(PlixUnicodeString(line + (i % 2 ? "\r" : "")).Str());
    }
    EXPECT_EQ(ReadFileLines(content, 4096), expected);
    EXPECT_EQ(ReadFileLines(content, 1), expected);
    EXPECT_EQ(ReadFileLines(content, 65536), expected);
}

TEST(KGFileStdio, LinesLongerThanSixteenMebibytesAreCut) {
    const size_t cap = 16u * 1024 * 1024;
    const std::string huge(cap + 1024 * 1024, 'y');

    Lines lines = ReadFileLines(huge + "\nafter\n");
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0].size(), cap);
    EXPECT_EQ(lines[0].find_first_not_of(u'y'), std::u16string::npos);
    EXPECT_EQ(lines[1], u"after");

    // Also when the long line is the last one and has no line end.
    lines = ReadFileLines("before\n" + huge);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0], u"before");
    EXPECT_EQ(lines[1].size(), cap);
}
