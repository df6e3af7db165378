#pragma once

#include <cstdint>

namespace quillmark {

/// The quotient rounded towards minus infinity; `divisor` is positive.
[[nodiscard]] constexpr std::int64_t FloorDivide(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

/// The remainder that goes with FloorDivide, always 0 .. divisor - 1.
[[nodiscard]] constexpr std::int64_t FloorModulo(std::int64_t value, std::int64_t divisor) {
  const std::int64_t remainder = value % divisor;
  return remainder < 0 ? remainder + divisor : remainder;
}

}  // namespace quillmark
