#include "base/Ratio.h"

#include <gtest/gtest.h>

namespace quillmark {
namespace {

constexpr std::int64_t Max = 9223372036854775807;
constexpr std::int64_t Min = -Max - 1;

TEST(Scaler, RoundsToNearestAndHalvesAwayFromZero) {
  const Scaler half({.Numerator = 1, .Denominator = 2});
  EXPECT_EQ(half.Rounded(4), 2);
  EXPECT_EQ(half.Rounded(5), 3);
  EXPECT_EQ(half.Rounded(-5), -3);
  EXPECT_EQ(half.Rounded(-4), -2);
  const Scaler third({.Numerator = 1, .Denominator = 3});
  EXPECT_EQ(third.Rounded(4), 1);
  EXPECT_EQ(third.Rounded(5), 2);
  EXPECT_EQ(third.Rounded(-4), -1);
  EXPECT_EQ(third.Rounded(-5), -2);
  const Scaler film({.Numerator = 960, .Denominator = 1001});
  // 90000 x 960 / 1001 = 86313.686...
  EXPECT_EQ(film.Rounded(90000), 86314);
}

TEST(Scaler, RoundsASumAsAWhole) {
  const Scaler half({.Numerator = 1, .Denominator = 2});
  // 10 - 2.5 and 1 - 2.5
  EXPECT_EQ(half.RoundedSum(10, -5), 8);
  EXPECT_EQ(half.RoundedSum(1, -5), -2);
}

TEST(Scaler, HalfAboveZeroGoesUpThoughAPartOfTheSumIsBelow) {
  EXPECT_EQ(Scaler({.Numerator = 1, .Denominator = 2}).RoundedSum(-3, 7), 1);  // 0.5
}

TEST(Scaler, IsExactWhereTheProductNeedsMoreThan64Bits) {
  const Scaler scaler({.Numerator = 9000000000000000001, .Denominator = 9000000000000000000});
  EXPECT_EQ(scaler.Rounded(9000000000000000000), 9000000000000000001);
  EXPECT_EQ(scaler.Rounded(4500000000000000000), 4500000000000000001);
  EXPECT_EQ(scaler.Rounded(4499999999999999999), 4499999999999999999);
  EXPECT_EQ(scaler.Rounded(-9000000000000000000), -9000000000000000001);
  const Scaler almost({.Numerator = Max - 1, .Denominator = Max});
  EXPECT_EQ(almost.Rounded(Max), Max - 1);
  EXPECT_EQ(almost.Rounded(Min), Min + 1);
}

/// 3 x 10^18 x 7 takes 65 bits.
TEST(Scaler, ProductsAreRoundedDownAndWhatIsCutOffIsKept) {
  const Scaler scaler({.Numerator = 7, .Denominator = 3});
  const auto expect = [&](std::int64_t value, std::int64_t floor, std::uint64_t rest) {
    const auto product = scaler.Multiply(value);
    ASSERT_TRUE(product) << value;
    EXPECT_EQ(product->Floor, floor) << value;
    EXPECT_EQ(product->Rest, rest) << value;
  };
  expect(3, 7, 0);
  expect(4, 9, 1);
  expect(-3, -7, 0);
  expect(-4, -10, 2);
  expect(3000000000000000000, 7000000000000000000, 0);
  expect(3000000000000000001, 7000000000000000002, 1);
  expect(3000000000000000002, 7000000000000000004, 2);
  expect(-3000000000000000001, -7000000000000000003, 2);
}

TEST(Scaler, AnswersNothingWhere64BitsDoNotHoldIt) {
  const Scaler twice({.Numerator = 2, .Denominator = 1});
  EXPECT_EQ(twice.Rounded(Max / 2), Max - 1);
  EXPECT_EQ(twice.Rounded(Max / 2 + 1), std::nullopt);
  EXPECT_EQ(twice.Rounded(Min / 2), std::nullopt);
  EXPECT_EQ(Scaler({.Numerator = Max, .Denominator = 1}).Rounded(Max), std::nullopt);
  EXPECT_EQ(Scaler({}).RoundedSum(Max, 1), std::nullopt);
  EXPECT_EQ(Scaler({.Numerator = 1, .Denominator = 2}).RoundedSum(Max, 1), std::nullopt);
}

/// (2^62 + 1) x 2^62 / 2^60 = 2^64 + 4
TEST(Scaler, AnswersNothingWhereTheQuotientHasJustABitTooMany) {
  const Scaler scaler({.Numerator = (std::int64_t{1} << 62U) + 1, .Denominator = std::int64_t{1} << 60U});
  EXPECT_EQ(scaler.Rounded(std::int64_t{1} << 62U), std::nullopt);
}

/// 6148914691236517205 x 3 / 2 = 9223372036854775807.5
TEST(Scaler, HalfBelowTheLeastThatItsSizeHoldsIsTheLeast) {
  const Scaler scaler({.Numerator = 3, .Denominator = 2});
  EXPECT_EQ(scaler.Rounded(-6148914691236517205), Min);
  EXPECT_EQ(scaler.Rounded(6148914691236517205), std::nullopt);
}

TEST(Divide, AnswersNothingWhere64BitsDoNotHoldEitherPart) {
  constexpr Ratio Large = {.Numerator = Max, .Denominator = 1};
  constexpr Ratio Small = {.Numerator = 1, .Denominator = Max};
  EXPECT_EQ(Divide(Large, Small), std::nullopt);
  EXPECT_EQ(Divide(Small, Large), std::nullopt);
  // 2^32 x 2^31 = 2^63, one more than there is room for
  EXPECT_EQ(Divide({.Numerator = 4294967296, .Denominator = 1}, {.Numerator = 1, .Denominator = 2147483648}),
            std::nullopt);
  EXPECT_EQ(Divide({.Numerator = 1, .Denominator = 4294967296}, {.Numerator = 2147483648, .Denominator = 1}),
            std::nullopt);
}

TEST(Divide, CancelsWhatItCan) {
  EXPECT_EQ(Divide({.Numerator = 24000, .Denominator = 1001}, {.Numerator = 25, .Denominator = 1}),
            (Ratio{.Numerator = 960, .Denominator = 1001}));
  EXPECT_EQ(Divide({.Numerator = Max, .Denominator = 2}, {.Numerator = Max, .Denominator = 6}),
            (Ratio{.Numerator = 3, .Denominator = 1}));
  EXPECT_EQ(Divide({.Numerator = Max, .Denominator = 2}, {.Numerator = 2, .Denominator = Max}), std::nullopt);
}

TEST(Divide, AnswersTheLargestPartsThatFit) {
  EXPECT_EQ(Divide({.Numerator = Max, .Denominator = 1}, {}), (Ratio{.Numerator = Max, .Denominator = 1}));
  EXPECT_EQ(Divide({}, {.Numerator = Max, .Denominator = 1}), (Ratio{.Numerator = 1, .Denominator = Max}));
}

TEST(Sum, AnswersNothingPastTheEnds) {
  EXPECT_EQ(Sum(Max, 0), Max);
  EXPECT_EQ(Sum(Max - 1, 1), Max);
  EXPECT_EQ(Sum(Max, 1), std::nullopt);
  EXPECT_EQ(Sum(Min + 1, -1), Min);
  EXPECT_EQ(Sum(Min, -1), std::nullopt);
}

TEST(Difference, AnswersNothingPastTheEnds) {
  EXPECT_EQ(Difference(5, -1), 6);
  EXPECT_EQ(Difference(5, 7), -2);
  EXPECT_EQ(Difference(0, Min), std::nullopt);
  EXPECT_EQ(Difference(-1, Min), Max);
  EXPECT_EQ(Difference(Max - 1, -1), Max);
  EXPECT_EQ(Difference(Max, -1), std::nullopt);
  EXPECT_EQ(Difference(Min + 1, 1), Min);
  EXPECT_EQ(Difference(Min, 1), std::nullopt);
}

}  // namespace
}  // namespace quillmark
