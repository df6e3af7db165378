#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace quillmark {

/// A number that tells contents apart and finds damage, the same on every machine, taken about as fast as
/// memory is read. Contents of one length that differ within one aligned 8-byte word never share it; others
/// do by chance, once in 2^64. It does not withstand somebody who looks for contents that share it.
[[nodiscard]] std::uint64_t ContentHash(std::span<const std::uint8_t> bytes);

/// The same, for contents that are looked at part by part.
class ContentHasher {
 public:
  static constexpr std::size_t BlockSize = 32;

  /// The next part; the length of every part but the last is a multiple of BlockSize.
  void Add(std::span<const std::uint8_t> part);
  /// Of all parts so far.
  [[nodiscard]] std::uint64_t Hash() const;

 private:
  std::array<std::uint64_t, 4> lanes_ = {1, 2, 3, 4};
  std::uint64_t length_ = 0;
};

}  // namespace quillmark
