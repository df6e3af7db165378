#include "base/ContentHash.h"

#include <algorithm>
#include <bit>
#include <cstring>

namespace quillmark {
namespace {

constexpr std::uint64_t Multiplier = 0x9E3779B97F4A7C15;  // odd, so that multiplying loses nothing
constexpr int Turn = 29;

/// Different for different words, and for different hashes before.
constexpr std::uint64_t Mixed(std::uint64_t hash, std::uint64_t word) {
  return std::rotl((hash ^ word) * Multiplier, Turn);
}

std::uint64_t LittleEndian(const std::uint8_t* bytes) {
  std::uint64_t word = 0;
  std::memcpy(&word, bytes, sizeof word);
  if constexpr (std::endian::native == std::endian::big) {
    std::uint64_t reversed = 0;
    for (int i = 0; i < 8; ++i, word >>= 8U) {
      reversed = reversed << 8U | (word & 0xFFU);
    }
    return reversed;
  }
  return word;
}

using Lanes = std::array<std::uint64_t, 4>;

/// Four hashes that do not wait for each other, of every fourth word each.
void AddBlock(Lanes& lanes, const std::uint8_t* block) {
  lanes[0] = Mixed(lanes[0], LittleEndian(block));
  lanes[1] = Mixed(lanes[1], LittleEndian(block + 8));
  lanes[2] = Mixed(lanes[2], LittleEndian(block + 16));
  lanes[3] = Mixed(lanes[3], LittleEndian(block + 24));
}

}  // namespace

void ContentHasher::Add(std::span<const std::uint8_t> part) {
  Lanes lanes = lanes_;
  std::size_t done = 0;
  for (; part.size() - done >= BlockSize; done += BlockSize) {
    AddBlock(lanes, part.data() + done);
  }
  if (done < part.size()) {
    std::array<std::uint8_t, BlockSize> rest{};
    std::ranges::copy(part.subspan(done), rest.begin());
    AddBlock(lanes, rest.data());
  }
  lanes_ = lanes;
  length_ += part.size();
}

std::uint64_t ContentHasher::Hash() const {
  std::uint64_t hash = length_;
  for (const std::uint64_t lane : lanes_) {
    hash = Mixed(hash, lane);
  }
  return Mixed(hash ^ hash >> 32U, 0);
}

std::uint64_t ContentHash(std::span<const std::uint8_t> bytes) {
  ContentHasher hasher;
  hasher.Add(bytes);
  return hasher.Hash();
}

}  // namespace quillmark
