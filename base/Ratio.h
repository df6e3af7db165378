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

  /// The product rounded down, and what was cut off in units of 1 / `Denominator()`.
  struct Product {
    std::int64_t Floor = 0;
    std::uint64_t Rest = 0;
  };
  /// nullopt where 64 bits do not hold it.
  [[nodiscard]] std::optional<Product> Multiply(std::int64_t value) const;
  /// The product rounded to nearest, halves away from zero.
  [[nodiscard]] std::optional<std::int64_t> Rounded(std::int64_t value) const;
  /// The same of `offset` plus the product.
  [[nodiscard]] std::optional<std::int64_t> RoundedSum(std::int64_t offset, std::int64_t value) const;

  [[nodiscard]] std::int64_t Denominator() const { return ratio_.Denominator; }

 private:
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
