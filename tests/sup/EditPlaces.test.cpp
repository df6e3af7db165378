#include "sup/EditPlaces.h"

#include <array>
#include <gmock/gmock.h>

namespace quillmark {
namespace {

using testing::ElementsAre;

constexpr EditPlace Short = {.Offset = 7, .Removed = 255, .Inserted = 255};
constexpr EditPlace Long = {.Offset = 300, .Removed = 256, .Inserted = 256};
constexpr EditPlace Growing = {.Offset = 600, .Removed = 1, .Inserted = 2};

TEST(EditPlaces, OfFewBytesThatStayAsManyAreShort) {
  EXPECT_TRUE(EditPlaces({Short}).AreShort());
  EXPECT_FALSE(EditPlaces({Long}).AreShort());
  EXPECT_FALSE(EditPlaces({Growing}).AreShort());
}

TEST(EditPlaces, AreWhatWasAddedWhateverCameBeforeAndAfter) {
  const EditPlaces places = {Short, Growing, Short};
  EXPECT_THAT(places, ElementsAre(Short, Growing, Short));
  EXPECT_EQ(places.front(), Short);
  EXPECT_EQ(places.back(), Short);
  auto at = places.begin();
  EXPECT_EQ(*at++, Short);
  EXPECT_EQ(*at, Growing);
}

TEST(EditPlaces, ShortOnesAreAddedToLongOnesAsWell) {
  EditPlaces places = {Long};
  places.Add(std::array<std::uint32_t, 1>{600}, std::array<std::uint8_t, 1>{5});
  EXPECT_THAT(places, ElementsAre(Long, EditPlace{.Offset = 600, .Removed = 5, .Inserted = 5}));
}

TEST(EditPlaces, ShortOnesAddedToShortOnesStayShort) {
  EditPlaces places = {Short};
  places.Add(std::array<std::uint32_t, 1>{600}, std::array<std::uint8_t, 1>{5});
  EXPECT_THAT(places, ElementsAre(Short, EditPlace{.Offset = 600, .Removed = 5, .Inserted = 5}));
  EXPECT_TRUE(places.AreShort());
}

TEST(EditPlaces, OneOfAnyKindCanBeSet) {
  EditPlaces places = {Short, Short};
  places.Set(1, Growing);
  EXPECT_THAT(places, ElementsAre(Short, Growing));
  places.Set(1, Long);
  EXPECT_THAT(places, ElementsAre(Short, Long));
}

TEST(EditPlaces, AreEqualWhateverMemoryTheyTake) {
  EditPlaces places = {Short, Growing};
  places.Set(1, Short);
  EXPECT_FALSE(places.AreShort());
  EXPECT_EQ(places, EditPlaces({Short, Short}));
  EXPECT_FALSE(places == EditPlaces({Short}));
  EXPECT_FALSE(places == EditPlaces({Short, Growing}));
}

TEST(EditPlaces, ShortOnesTakeFiveBytesEachAndOthersTwelve) {
  EditPlaces places = {Short, Short};
  places.ShrinkToFit();
  EXPECT_EQ(places.Held(), 2U * 5);
  places.Add(Growing);
  places.ShrinkToFit();
  EXPECT_EQ(places.Held(), 3U * 12);
}

}  // namespace
}  // namespace quillmark
