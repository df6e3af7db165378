#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quillmark {

/// Appends to the bytes of a packet; the byte order is in each function's name.
class PacketWriter {
 public:
  explicit PacketWriter(std::vector<std::uint8_t>& packet) : packet_(packet) {}

  void Bytes(std::span<const std::uint8_t> bytes) {
    packet_.insert(packet_.end(), bytes.begin(), bytes.end());
  }
  void U8(unsigned value) { packet_.push_back(static_cast<std::uint8_t>(value)); }
  void U16be(std::size_t value) {
    U8(static_cast<std::uint8_t>(value >> 8U));
    U8(static_cast<std::uint8_t>(value));
  }

 private:
  std::vector<std::uint8_t>& packet_;
};

}  // namespace quillmark
