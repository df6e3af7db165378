#include "base/AsciiCase.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(LowerAscii, LettersFromAToZBecomeSmall) {
  EXPECT_EQ(LowerAscii('A'), 'a');
  EXPECT_EQ(LowerAscii('Z'), 'z');
  EXPECT_EQ(LowerAscii("PaZ"), "paz");
}

/// Those beside the capital letters, and the letters of another alphabet.
TEST(LowerAscii, AllElseStays) {
  EXPECT_EQ(LowerAscii("@[`{az09\xC4"), "@[`{az09\xC4");
}

TEST(IsSameWord, InWhateverCase) {
  EXPECT_TRUE(IsSameWord("Size", "size"));
  EXPECT_FALSE(IsSameWord("sizes", "size"));
}

}  // namespace
}  // namespace quillmark
