// Tests of the toolkit's character classes: only the ASCII letters count.
#include "Base/KGToolkit.h"

#include <gtest/gtest.h>

using KGC::KGToolkit;

TEST(KGToolkit, BigAndLittleLettersAreTheAsciiLettersOnly) {
    for (char16_t c = u'A'; c <= u'Z'; ++c) {
        EXPECT_TRUE(KGToolkit::IsBigLetter(c)) << static_cast<int>(c);
        EXPECT_FALSE(KGToolkit::IsLittleLetter(c)) << static_cast<int>(c);
    }
    for (char16_t c = u'a'; c <= u'z'; ++c) {
        EXPECT_TRUE(KGToolkit::IsLittleLetter(c)) << static_cast<int>(c);
        EXPECT_FALSE(KGToolkit::IsBigLetter(c)) << static_cast<int>(c);
    }
    // Neighbours of the ranges, digits, Latin-1 and full-width letters are not letters here.
    for (char16_t c : {u'@', u'[', u'`', u'{', u'0', u'9', u' ', u'\0', u'\u00C9', u'\u00E9',
                       u'\uFF21', u'\uFF41', u'\u0391'}) {
        EXPECT_FALSE(KGToolkit::IsBigLetter(c)) << static_cast<int>(c);
        EXPECT_FALSE(KGToolkit::IsLittleLetter(c)) << static_cast<int>(c);
    }
}
