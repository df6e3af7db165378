#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "sup/ControlSequences.h"

namespace quillmark {

/// The arguments of ChangeColours: their length in two bytes, themselves included, and groups of changes up
/// to an end mark or to the end of the arguments.

/// A group starts with its first and last line, 12 bits each, below the nibbles 0 and number of changes.
inline constexpr std::size_t ColourGroupSize = 4;
/// A change: a column in 16 bits, four palette nibbles and four contrasts, packed as in SetColour.
inline constexpr std::size_t ColourChangeSize = 6;
/// As many changes as a line can have.
inline constexpr std::size_t MaxColourChanges = 8;

struct ColourGroup {
  std::size_t Position = 0;  ///< among the arguments
  std::uint16_t FirstLine = 0;
  std::uint16_t LastLine = 0;
  std::size_t Changes = 0;  ///< 1-15, of which all are there

  /// Of change `i`, among the arguments.
  [[nodiscard]] std::size_t ChangeAt(std::size_t i) const {
    return Position + ColourGroupSize + i * ColourChangeSize;
  }
};

/// Hands the groups of `arguments` to `take` in their order, which answers whether to go on. nullopt where
/// the end was reached; else where the group stands that does not fit the arguments or was refused.
template <typename Take>
std::optional<std::size_t> ForEachColourGroup(std::span<const std::uint8_t> arguments, Take&& take) {
  std::size_t at = 2;
  while (at + ColourGroupSize <= arguments.size()) {
    const std::uint16_t first = NumberAt(arguments, at);
    const std::uint16_t last = NumberAt(arguments, at + 2);
    if (first == 0x0FFF && last == 0xFFFF) {
      return std::nullopt;
    }
    const ColourGroup group{.Position = at,
                            .FirstLine = static_cast<std::uint16_t>(first & 0x0FFFU),
                            .LastLine = static_cast<std::uint16_t>(last & 0x0FFFU),
                            .Changes = std::size_t{last} >> 12U};
    const bool fits =
        first <= 0x0FFF && group.Changes > 0 && group.ChangeAt(group.Changes) <= arguments.size();
    if (!fits || !take(group)) {
      return at;
    }
    at = group.ChangeAt(group.Changes);
  }
  return at == arguments.size() ? std::nullopt : std::optional(at);
}

}  // namespace quillmark
