#include "sup/ComposedEdit.h"

#include <random>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes Applied(Bytes bytes, StreamEdit edit) {
  EXPECT_TRUE(ApplyEdit(bytes, edit));
  return bytes;
}

TEST(ComposedEdit, OfNothingIsNothing) {
  EXPECT_TRUE(ComposedEdit({}, {}).IsEmpty());
}

TEST(ComposedEdit, WithNothingIsTheEdit) {
  StreamEdit edit;
  edit.Replace(2, 1, Bytes{7, 8});
  edit.Replace(9, 3, {});

  EXPECT_EQ(ComposedEdit(edit, {}), edit);
  EXPECT_EQ(ComposedEdit({}, edit), edit);
}

TEST(ComposedEdit, SecondEditIsForWhatTheFirstOneLeaves) {
  StreamEdit first;  // 0 1 2 3 4 5 becomes 0 9 9 9 4 5
  first.Replace(1, 3, Bytes{9, 9, 9});
  StreamEdit second;  // 0 9 7 4 5
  second.Replace(2, 2, Bytes{7});

  StreamEdit expected;
  expected.Replace(1, 3, Bytes{9, 7});
  EXPECT_EQ(ComposedEdit(first, second), expected);
}

TEST(ComposedEdit, AsksForANewIndexWhereOneOfThemDoes) {
  StreamEdit edit;
  edit.Reindexes = true;

  EXPECT_TRUE(ComposedEdit(edit, {}).Reindexes);
  EXPECT_TRUE(ComposedEdit({}, edit).Reindexes);
  EXPECT_FALSE(ComposedEdit({}, {}).Reindexes);
}

StreamEdit RandomEdit(std::mt19937& random, std::size_t length) {
  StreamEdit edit;
  std::size_t at = 0;
  while (true) {
    at += random() % 6;
    if (at > length) {
      return edit;
    }
    const std::size_t removed = std::min<std::size_t>(random() % 4, length - at);
    Bytes inserted(random() % 4);
    for (std::uint8_t& byte : inserted) {
      byte = static_cast<std::uint8_t>(100 + random() % 100);
    }
    if (removed > 0 || !inserted.empty()) {
      // Neighbours that the edit keeps apart are fine too.
      edit.Places.Add({.Offset = static_cast<std::uint32_t>(at),
                       .Removed = static_cast<std::uint32_t>(removed),
                       .Inserted = static_cast<std::uint32_t>(inserted.size())});
      edit.Bytes.insert(edit.Bytes.end(), inserted.begin(), inserted.end());
    }
    at += removed;
  }
}

TEST(ComposedEdit, DoesWhatBothDo) {
  std::mt19937 random(61);
  for (int round = 0; round < 5000; ++round) {
    Bytes bytes(random() % 40);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bytes[i] = static_cast<std::uint8_t>(i);
    }
    const StreamEdit first = RandomEdit(random, bytes.size());
    const Bytes between = Applied(bytes, first);
    const StreamEdit second = RandomEdit(random, between.size());

    ASSERT_EQ(Applied(bytes, ComposedEdit(first, second)), Applied(between, second)) << round;
  }
}

}  // namespace
}  // namespace quillmark
