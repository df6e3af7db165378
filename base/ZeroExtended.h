#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace quillmark {

/// A byte buffer that reads as 0 before its start and past its end. Subpicture units name positions inside
/// themselves, and damaged ones name positions outside; this is the one rule for what stands there.
class ZeroExtended {
 public:
  explicit ZeroExtended(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  /// The buffer's highest index, -1 when it is empty.
  [[nodiscard]] std::int64_t LastIndex() const { return static_cast<std::int64_t>(bytes_.size()) - 1; }

  [[nodiscard]] std::uint8_t operator[](std::int64_t index) const {
    return index >= 0 && index <= LastIndex() ? bytes_[static_cast<std::size_t>(index)] : std::uint8_t{0};
  }

  /// Bytes index and index + 1 as one big-endian number.
  [[nodiscard]] std::uint16_t U16be(std::int64_t index) const {
    return static_cast<std::uint16_t>((*this)[index] << 8U | (*this)[index + 1]);
  }

 private:
  std::span<const std::uint8_t> bytes_;
};

}  // namespace quillmark
