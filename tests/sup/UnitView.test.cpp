#include "sup/UnitView.h"

#include <array>
#include <limits>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

/// A header, which says 7 bytes and a control offset of 4, and three bytes of data.
constexpr std::array<std::uint8_t, 7> ThreeBytes = {0x00, 0x07, 0x00, 0x04, 0x12, 0x34, 0x56};

TEST(UnitView, PositionsCountFromTheSizeField) {
  const UnitView unit(ThreeBytes);
  EXPECT_EQ(unit[4], 0x12);
  EXPECT_EQ(unit[6], 0x56);
  EXPECT_EQ(unit.Last(), 6);
}

TEST(UnitView, OutsideIsZeroOnBothSides) {
  const UnitView unit(ThreeBytes);
  EXPECT_EQ(unit[-1], 0);
  EXPECT_EQ(unit[7], 0);
  EXPECT_EQ(unit[32767], 0);
  EXPECT_EQ(unit[std::numeric_limits<std::int64_t>::min()], 0);
  EXPECT_EQ(unit[std::numeric_limits<std::int64_t>::max()], 0);
}

TEST(UnitView, TheUnitsOwnHeaderIsZero) {
  constexpr std::array<std::uint8_t, 5> Unit = {0xFF, 0xFF, 0xFF, 0xFF, 0x12};
  const UnitView unit(Unit);
  for (std::int64_t position = 0; position < 4; ++position) {
    EXPECT_EQ(unit[position], 0) << position;
  }
}

TEST(UnitView, NumbersMayHangOverEitherEnd) {
  const UnitView unit(ThreeBytes);
  EXPECT_EQ(unit.U16be(4), 0x1234);
  EXPECT_EQ(unit.U16be(3), 0x0012);
  EXPECT_EQ(unit.U16be(6), 0x5600);
  EXPECT_EQ(unit.U16be(2), 0);
  EXPECT_EQ(unit.U16be(7), 0);
}

TEST(UnitView, AHeaderOrLessIsAnEmptyUnit) {
  for (std::size_t size = 0; size <= 4; ++size) {
    constexpr std::array<std::uint8_t, 4> Four = {0xFF, 0xFF, 0xFF, 0xFF};
    const UnitView unit(std::span<const std::uint8_t>(Four).first(size));
    EXPECT_EQ(unit.Last(), 3);
    EXPECT_EQ(unit[0], 0);
    EXPECT_EQ(unit.U16be(3), 0);
  }
}

}  // namespace
}  // namespace quillmark
