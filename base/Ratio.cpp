#include "base/Ratio.h"

#include <numeric>

namespace quillmark {
namespace {

/// 128 bits without a sign.
struct Wide {
  std::uint64_t High = 0;
  std::uint64_t Low = 0;
};

Wide Times(std::uint64_t a, std::uint64_t b) {
  constexpr std::uint64_t LowHalf = 0xFFFFFFFFU;
  const std::uint64_t low = (a & LowHalf) * (b & LowHalf);
  const std::uint64_t middle = (a >> 32U) * (b & LowHalf) + (low >> 32U);
  const std::uint64_t other = (a & LowHalf) * (b >> 32U) + (middle & LowHalf);
  return {.High = (a >> 32U) * (b >> 32U) + (middle >> 32U) + (other >> 32U),
          .Low = other << 32U | (low & LowHalf)};
}

struct Quotient {
  std::uint64_t Value = 0;
  std::uint64_t Rest = 0;
};

/// Bit by bit; `divisor` is greater than the high word and below 2^63.
Quotient Over(const Wide& dividend, std::uint64_t divisor) {
  Quotient quotient{.Value = 0, .Rest = dividend.High};
  for (unsigned bit = 64; bit-- > 0;) {
    quotient.Rest = quotient.Rest << 1U | (dividend.Low >> bit & 1U);
    quotient.Value <<= 1U;
    if (quotient.Rest >= divisor) {
      quotient.Rest -= divisor;
      quotient.Value |= 1U;
    }
  }
  return quotient;
}

std::uint64_t Magnitude(std::int64_t value) {
  return value < 0 ? std::uint64_t{0} - static_cast<std::uint64_t>(value) : static_cast<std::uint64_t>(value);
}

}  // namespace

Ratio Reduced(Ratio ratio) {
  const std::int64_t common = std::gcd(ratio.Numerator, ratio.Denominator);
  return {.Numerator = ratio.Numerator / common, .Denominator = ratio.Denominator / common};
}

std::optional<Ratio> Divide(const Ratio& a, const Ratio& b) {
  // What can be cancelled before the multiplications is.
  const Ratio top = Reduced({.Numerator = a.Numerator, .Denominator = b.Numerator});
  const Ratio bottom = Reduced({.Numerator = b.Denominator, .Denominator = a.Denominator});
  const Wide numerator =
      Times(static_cast<std::uint64_t>(top.Numerator), static_cast<std::uint64_t>(bottom.Numerator));
  const Wide denominator =
      Times(static_cast<std::uint64_t>(top.Denominator), static_cast<std::uint64_t>(bottom.Denominator));
  constexpr auto Max = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (numerator.High != 0 || denominator.High != 0 || numerator.Low > Max || denominator.Low > Max) {
    return std::nullopt;
  }
  return Reduced({.Numerator = static_cast<std::int64_t>(numerator.Low),
                  .Denominator = static_cast<std::int64_t>(denominator.Low)});
}

std::optional<Scaler::Product> Scaler::Multiply(std::int64_t value) const {
  const auto divisor = static_cast<std::uint64_t>(ratio_.Denominator);
  const auto factor = static_cast<std::uint64_t>(ratio_.Numerator);
  const std::uint64_t magnitude = Magnitude(value);
  Quotient quotient;
  if (magnitude <= withinWord_) {
    quotient = {.Value = magnitude * factor / divisor, .Rest = magnitude * factor % divisor};
  } else {
    const Wide product = Times(magnitude, factor);
    if (product.High >= divisor) {
      return std::nullopt;
    }
    quotient = Over(product, divisor);
  }
  constexpr auto Max = static_cast<std::uint64_t>(std::numeric_limits<std::int64_t>::max());
  if (quotient.Value > Max) {
    return std::nullopt;
  }
  const auto whole = static_cast<std::int64_t>(quotient.Value);
  if (value >= 0) {
    return Product{.Floor = whole, .Rest = quotient.Rest};
  }
  return quotient.Rest == 0 ? Product{.Floor = -whole, .Rest = 0}
                            : Product{.Floor = -whole - 1, .Rest = divisor - quotient.Rest};
}

std::optional<std::int64_t> Scaler::RoundedSumOfAny(std::int64_t offset, std::int64_t value) const {
  const auto product = Multiply(value);
  const auto floor = product ? Sum(offset, product->Floor) : std::nullopt;
  if (!floor) {
    return std::nullopt;
  }
  // How far it is up to the next whole number; below zero a half goes down, which is away from zero.
  const std::uint64_t up = static_cast<std::uint64_t>(ratio_.Denominator) - product->Rest;
  const bool roundsUp = *floor >= 0 ? product->Rest >= up : product->Rest > up;
  return Sum(*floor, roundsUp ? 1 : 0);
}

}  // namespace quillmark
