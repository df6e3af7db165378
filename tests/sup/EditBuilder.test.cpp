#include "sup/EditBuilder.h"

#include <gmock/gmock.h>

namespace quillmark {
namespace {

using testing::ElementsAre;

constexpr std::array<std::uint8_t, 5> Five = {1, 2, 3, 4, 5};

TEST(EditBuilder, PlacesThatFollowOneAnotherBecomeOneOfAnyLength) {
  EditBuilder builder;
  for (std::size_t i = 0; i < 52; ++i) {
    builder.Write(100 + 5 * i, Five);
  }
  builder.Write(400, Five);
  const StreamEdit edit = builder.Finish();
  EXPECT_THAT(edit.Places, ElementsAre(EditPlace{.Offset = 100, .Removed = 260, .Inserted = 260},
                                       EditPlace{.Offset = 400, .Removed = 5, .Inserted = 5}));
  EXPECT_EQ(edit.Bytes.size(), 265U);
}

TEST(EditBuilder, PlaceThatFollowsAReplacedOneGoesOnWhereThatEnds) {
  EditBuilder builder;
  builder.Replace(100, 5, Five);
  builder.Write(105, std::array<std::uint8_t, 2>{6, 7});
  const StreamEdit edit = builder.Finish();
  EXPECT_THAT(edit.Bytes, ElementsAre(1, 2, 3, 4, 5, 6, 7));
  std::uint32_t end = 100;
  for (const EditPlace& place : edit.Places) {
    EXPECT_EQ(place.Offset, end);
    EXPECT_EQ(place.Removed, place.Inserted);
    end += static_cast<std::uint32_t>(place.Removed);
  }
  EXPECT_EQ(end, 107U);
}

TEST(EditBuilder, KeepsAnyNumberOfPlacesInTheirOrder) {
  EditBuilder builder;
  for (std::uint32_t i = 0; i < 1200; ++i) {
    builder.Write(10 * i, std::array{static_cast<std::uint8_t>(i % 251)});
  }
  const StreamEdit edit = builder.Finish();
  ASSERT_EQ(edit.Places.size(), 1200U);
  for (std::uint32_t i = 0; i < 1200; ++i) {
    ASSERT_EQ(edit.Places[i], (EditPlace{.Offset = 10 * i, .Removed = 1, .Inserted = 1}));
    ASSERT_EQ(edit.Bytes[i], i % 251);
  }
}

TEST(EditBuilder, LastOfManyShortPlacesBecomesOneOfAnyLength) {
  constexpr std::array<std::uint8_t, 2> two = {1, 2};
  for (const std::size_t places : {1U, 2U, 100U}) {
    EditBuilder builder;
    for (std::size_t i = 0; i < places; ++i) {
      builder.Write(100 * i, std::array<std::uint8_t, 2>{1, 2});
    }
    const std::size_t last = 100 * (places - 1);
    for (std::size_t i = 1; i <= 200; ++i) {
      builder.Write(last + 2 * i, two);
    }
    const StreamEdit edit = builder.Finish();
    ASSERT_EQ(edit.Bytes.size(), 2 * (places + 200));
    for (std::size_t i = 0; i < edit.Bytes.size(); ++i) {
      ASSERT_EQ(edit.Bytes[i], 1 + i % 2);
    }
    ASSERT_EQ(edit.Places.size(), places);
    std::size_t end = 0;
    for (const EditPlace& place : edit.Places) {
      end = place.Offset + place.Inserted;
    }
    EXPECT_EQ(end, last + 402);
  }
}

TEST(EditBuilder, LastOfManyLongPlacesBecomesLonger) {
  constexpr std::array<std::uint8_t, 8> eight = {1, 2, 3, 4, 5, 6, 7, 8};
  EditBuilder builder;
  for (std::size_t i = 0; i < 512; ++i) {
    builder.Write(100 * i, eight);
  }
  builder.Write(51108, eight);
  builder.Write(51116, eight);
  const StreamEdit edit = builder.Finish();
  ASSERT_EQ(edit.Bytes.size(), 514U * 8);
  for (std::size_t i = 0; i < edit.Bytes.size(); ++i) {
    ASSERT_EQ(edit.Bytes[i], 1 + i % 8);
  }
  std::size_t end = 0;
  for (const EditPlace& place : edit.Places) {
    end = place.Offset + place.Inserted;
  }
  EXPECT_EQ(end, 51124U);
}

TEST(EditBuilder, OfBytesThatAreTheSameNamesNone) {
  EditBuilder builder;
  EXPECT_FALSE(builder.WriteDifferences(10, Five, Five));
  EXPECT_TRUE(builder.WriteDifferences(20, Five, std::array<std::uint8_t, 5>{1, 9, 3, 8, 5}));
  const StreamEdit edit = builder.Finish();
  EXPECT_THAT(edit.Places, ElementsAre(EditPlace{.Offset = 21, .Removed = 3, .Inserted = 3}));
  EXPECT_THAT(edit.Bytes, ElementsAre(9, 3, 8));
}

}  // namespace
}  // namespace quillmark
