#include "base/ContentHash.h"

#include <algorithm>
#include <bit>

namespace quillmark {
namespace {

constexpr std::uint64_t Multiplier = 0x9E3779B97F4A7C15;  // odd, so that multiplying loses nothing
constexpr int Turn = 29;

/// Different for different words, and for different hashes before.
constexpr std::uint64_t Mixed(std::uint64_t hash, std::uint64_t word) {
  return std::rotl((hash ^ word) * Multiplier, Turn);
}

/// Compilers make one load of it.
std::uint64_t LittleEndian(const std::uint8_t* bytes) {
  return std::uint64_t{bytes[0]} | std::uint64_t{bytes[1]} << 8U | std::uint64_t{bytes[2]} << 16U |
         std::uint64_t{bytes[3]} << 24U | std::uint64_t{bytes[4]} << 32U | std::uint64_t{bytes[5]} << 40U |
         std::uint64_t{bytes[6]} << 48U | std::uint64_t{bytes[7]} << 56U;
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
