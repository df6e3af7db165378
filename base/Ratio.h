#pragma once

#include <cstdint>
#include <limits>
#include <optional>

namespace quillmark {

/// A positive factor.
struct Ratio {
  std::int64_t Numerator = 1;
  std::int64_t Denominator = 1;

  [[nodiscard]] bool IsOne() const { return Numerator == Denominator; }
  bool operator==(const Ratio&) const = default;
};

/// With numerator and denominator as small as they can be; both are positive.
[[nodiscard]] Ratio Reduced(Ratio ratio);

/// a / b; nullopt where that needs more than 63 bits.
[[nodiscard]] std::optional<Ratio> Divide(const Ratio& a, const Ratio& b);

/// Multiplies by a ratio exactly, whatever the sizes of the numbers are.
class Scaler {
 public:
  explicit Scaler(const Ratio& ratio)
      : ratio_(Reduced(ratio)),
        withinWord_(std::numeric_limits<std::uint64_t>::max() /
                    static_cast<std::uint64_t>(ratio_.Numerator)) {}

  /// The product rounded down, and what was cut off in units of 1 / denominator.
  struct Product {
    std::int64_t Floor = 0;
    std::uint64_t Rest = 0;
  };
  /// nullopt where 64 bits do not hold it.
  [[nodiscard]] std::optional<Product> Multiply(std::int64_t value) const;
  /// The product rounded to nearest, halves away from zero.
  [[nodiscard]] std::optional<std::int64_t> Rounded(std::int64_t value) const { return RoundedSum(0, value); }
  /// The same of `offset` plus the product.
  [[nodiscard]] std::optional<std::int64_t> RoundedSum(std::int64_t offset, std::int64_t value) const {
    // Times of films, which are many: nothing that is added to in here comes near 2^63.
    constexpr std::int64_t Far = std::int64_t{1} << 62U;
    if (value >= 0 && static_cast<std::uint64_t>(value) <= withinWord_ && offset >= 0 && offset < Far) {
      const std::uint64_t product =
          static_cast<std::uint64_t>(value) * static_cast<std::uint64_t>(ratio_.Numerator);
      const auto divisor = static_cast<std::uint64_t>(ratio_.Denominator);
      const std::uint64_t rest = product % divisor;
      if (product < static_cast<std::uint64_t>(Far)) {
        return offset + static_cast<std::int64_t>(product / divisor + (rest >= divisor - rest ? 1 : 0));
      }
    }
    return RoundedSumOfAny(offset, value);
  }

 private:
  [[nodiscard]] std::optional<std::int64_t> RoundedSumOfAny(std::int64_t offset, std::int64_t value) const;

  Ratio ratio_;
  std::uint64_t withinWord_;  // magnitudes up to here times the numerator fit 64 bits
};

/// The sum; nullopt where 64 bits do not hold it.
[[nodiscard]] constexpr std::optional<std::int64_t> Sum(std::int64_t a, std::int64_t b) {
  using Limits = std::numeric_limits<std::int64_t>;
  return (b > 0 && a > Limits::max() - b) || (b < 0 && a < Limits::min() - b) ? std::nullopt
                                                                              : std::optional(a + b);
}

/// a - b.
[[nodiscard]] constexpr std::optional<std::int64_t> Difference(std::int64_t a, std::int64_t b) {
  using Limits = std::numeric_limits<std::int64_t>;
  return (b < 0 && a > Limits::max() + b) || (b > 0 && a < Limits::min() + b) ? std::nullopt
                                                                              : std::optional(a - b);
}

}  // namespace quillmark
