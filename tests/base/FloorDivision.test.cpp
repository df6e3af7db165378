#include "base/FloorDivision.h"

#include <limits>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

constexpr std::int64_t Smallest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t Largest = std::numeric_limits<std::int64_t>::max();

TEST(FloorDivide, RoundsTowardsMinusInfinity) {
  EXPECT_EQ(FloorDivide(7, 3), 2);
  EXPECT_EQ(FloorDivide(6, 3), 2);
  EXPECT_EQ(FloorDivide(0, 3), 0);
  EXPECT_EQ(FloorDivide(-1, 3), -1);
  EXPECT_EQ(FloorDivide(-3, 3), -1);
  EXPECT_EQ(FloorDivide(-4, 3), -2);
  EXPECT_EQ(FloorDivide(-999, 1000), -1);
}

TEST(FloorDivide, EndsOfTheRange) {
  EXPECT_EQ(FloorDivide(Smallest, 1), Smallest);
  EXPECT_EQ(FloorDivide(Smallest, 3), -3074457345618258603);
  EXPECT_EQ(FloorDivide(Largest, Largest), 1);
  EXPECT_EQ(FloorDivide(Smallest, Largest), -2);
}

TEST(FloorModulo, IsNeverNegative) {
  EXPECT_EQ(FloorModulo(7, 3), 1);
  EXPECT_EQ(FloorModulo(0, 3), 0);
  EXPECT_EQ(FloorModulo(-1, 3), 2);
  EXPECT_EQ(FloorModulo(-3, 3), 0);
  EXPECT_EQ(FloorModulo(-4, 3), 2);
}

TEST(FloorModulo, EndsOfTheRange) {
  EXPECT_EQ(FloorModulo(Smallest, 3), 1);
  EXPECT_EQ(FloorModulo(Smallest, Largest), Largest - 1);
}

}  // namespace
}  // namespace quillmark
