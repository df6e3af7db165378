#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace quillmark {

/// Reads integers from a byte buffer front to back. Every read answers nullopt, and leaves the position
/// where it was, when the buffer holds too few bytes; the byte order is in each function's name.
/// The buffer must outlive the reader and the spans that it hands out.
class ByteReader {
 public:
  explicit ByteReader(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}

  [[nodiscard]] std::size_t Position() const { return position_; }
  [[nodiscard]] std::size_t Remaining() const { return bytes_.size() - position_; }

  /// The next n bytes; the only function that moves the position forward.
  [[nodiscard]] std::optional<std::span<const std::uint8_t>> Take(std::size_t n) {
    if (n > bytes_.size() - position_) {
      return std::nullopt;
    }
    const auto taken = bytes_.subspan(position_, n);
    position_ += n;
    return taken;
  }

  /// Moves to `position` bytes from the buffer's start; false, and no move, when that is past its end.
  [[nodiscard]] bool Seek(std::size_t position) {
    if (position > bytes_.size()) {
      return false;
    }
    position_ = position;
    return true;
  }

  [[nodiscard]] std::optional<std::uint8_t> U8() { return BigEndian<std::uint8_t>(1); }
  [[nodiscard]] std::optional<std::uint16_t> U16be() { return BigEndian<std::uint16_t>(2); }
  [[nodiscard]] std::optional<std::uint32_t> U24be() { return BigEndian<std::uint32_t>(3); }
  [[nodiscard]] std::optional<std::uint32_t> U32be() { return BigEndian<std::uint32_t>(4); }

  [[nodiscard]] std::optional<std::int64_t> I64le() {
    const auto taken = Take(8);
    if (!taken) {
      return std::nullopt;
    }
    std::uint64_t value = 0;
    for (std::size_t i = 8; i-- > 0;) {
      value = value << 8U | (*taken)[i];
    }
    return std::bit_cast<std::int64_t>(value);
  }

 private:
  template <typename Integer>
  std::optional<Integer> BigEndian(std::size_t n) {
    const auto taken = Take(n);
    if (!taken) {
      return std::nullopt;
    }
    std::uint32_t value = 0;
    for (const std::uint8_t byte : *taken) {
      value = value << 8U | byte;
    }
    return static_cast<Integer>(value);
  }

  std::span<const std::uint8_t> bytes_;
  std::size_t position_ = 0;  // invariant: position_ <= bytes_.size()
};

}  // namespace quillmark
