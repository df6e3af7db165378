#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "sup/SupFormat.h"

namespace quillmark {

/// A unit that is looked into at the positions that it names itself, which count from its size field, byte 0.
/// Damaged units name positions outside themselves; this is the one rule for what stands there: 0.
/// Kept oddity: the unit's own header reads as 0 too, so a control or a field offset below 4 leads to zeros.
/// The bytes must outlive the view.
class UnitView {
 public:
  /// `unit` is a whole unit; with no more than a header's bytes it is an empty one.
  explicit UnitView(std::span<const std::uint8_t> unit)
      : unit_(unit), last_(std::max<std::int64_t>(std::ssize(unit), UnitHeaderSize) - 1) {}

  /// Position of the unit's last byte, at least that of its header's.
  [[nodiscard]] std::int64_t Last() const { return last_; }

  [[nodiscard]] std::uint8_t operator[](std::int64_t position) const {
    return position >= UnitHeaderSize && position <= last_ ? unit_[static_cast<std::size_t>(position)]
                                                           : std::uint8_t{0};
  }

  /// Bytes position and position + 1 as one big-endian number.
  [[nodiscard]] std::uint16_t U16be(std::int64_t position) const {
    return static_cast<std::uint16_t>((*this)[position] << 8U | (*this)[position + 1]);
  }

 private:
  std::span<const std::uint8_t> unit_;
  std::int64_t last_;  // invariant: below unit_.size(), or that of a header alone
};

}  // namespace quillmark
