#include "base/FilePath.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

// The same letters in UTF-8 bytes: a Cyrillic word, an umlaut, and a letter beyond the first 65,536.
const std::string Name = "\xD0\xBA\xD0\xB8\xD0\xBD\xD0\xBE \xC3\xBC \xF0\x9F\x8E\xAC.sup";

TEST(FilePath, Utf8TextComesBackUnchanged) {
  EXPECT_EQ(Utf8FromPath(PathFromUtf8(Name)), Name);
  EXPECT_EQ(Utf8FromPath(PathFromUtf8("folder/" + Name).filename()), Name);
}

TEST(FilePath, EmptyTextIsTheEmptyPath) {
  EXPECT_TRUE(PathFromUtf8("").empty());
  EXPECT_EQ(Utf8FromPath({}), "");
}

TEST(FilePath, TextIsReadAsUtf8) {
  EXPECT_EQ(PathFromUtf8("\xC3\xBC").u32string(), U"\u00FC");
}

}  // namespace
}  // namespace quillmark
