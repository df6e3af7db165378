// Two files through pairing and comparing. The input is the length of the first one (two bytes, big-endian),
// and both files one after the other.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

#include "fuzz/StreamMutation.h"
#include "render/StreamDiff.h"
#include "sup/StreamLoader.h"

namespace {

using namespace quillmark;

void Require(bool rule) {
  if (!rule) {
    std::abort();
  }
}

/// Areas of this many pixels, so that pictures are small enough to be many.
constexpr int MaxSide = 64;

bool IsSmall(const SupStream& stream) {
  return stream.Stats.MaxWidth <= MaxSide && stream.Stats.MaxHeight <= MaxSide;
}

void RequireSame(const SupStream& stream) {
  CompareStreams(stream, stream, [](const ComparedPair& pair) {
    Require(pair.Pair.First == pair.Pair.Second && pair.Differences.empty());
  });
  Require(HaveSameTrailingBytes(stream, stream));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) {
    return 0;
  }
  const std::span input(data + 2, size - 2);
  const std::size_t cut = std::min(data[0] * std::size_t{256} + data[1], input.size());
  const auto load = [](std::span<const std::uint8_t> file) {
    return IndexPrimaryStream({file.begin(), file.end()}, InvalidFirst::IsPassed);
  };
  const auto first = load(input.first(cut));
  const auto second = load(input.subspan(cut));
  if (!first || !second || !IsSmall(first->Stream) || !IsSmall(second->Stream)) {
    return 0;
  }
  std::size_t nextFirst = 0;
  std::size_t nextSecond = 0;
  CompareStreams(first->Stream, second->Stream, [&](const ComparedPair& pair) {
    Require(pair.Pair.First || pair.Pair.Second);
    Require(!pair.Pair.First || *pair.Pair.First == nextFirst++);
    Require(!pair.Pair.Second || *pair.Pair.Second == nextSecond++);
    Require(pair.OtherPixels >= 0);
  });
  Require(nextFirst == first->Stream.PacketOffset.size() && nextSecond == second->Stream.PacketOffset.size());
  RequireSame(first->Stream);
  return 0;
}

QUILLMARK_MUTATOR(500, [](Bytes& input, Dice& dice) { MutateTwoStreams(2, input, dice); })
