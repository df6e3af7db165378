#include "sup/ControlPlan.h"

#include <algorithm>
#include <bit>
#include <cstring>

#include "base/Prefetch.h"

namespace quillmark {
namespace {

/// As NumberAt(), which compilers do not see through here.
std::uint64_t NumberFrom(const std::uint8_t* at) {
  std::uint16_t number = 0;
  std::memcpy(&number, at, sizeof(number));
  return std::endian::native == std::endian::little ? static_cast<std::uint16_t>(number << 8U | number >> 8U)
                                                    : number;
}

/// The packets of a long film lie pages apart, so each costs a wait for the memory unless it is asked for
/// this many packets ahead.
constexpr std::size_t UnitsAhead = 32;

/// Asks for all of a unit's usual control sequences, which may lie in two cache lines.
[[gnu::always_inline]] inline void FetchControl(std::span<const std::uint8_t> file, const IndexEntry& unit) {
  constexpr std::size_t UsualControl = 30;
  const std::size_t control = std::min(unit.FileOffset(unit.ControlOffset), file.size());
  PrefetchForReading(file.data() + control);
  PrefetchForReading(file.data() + std::min(control + UsualControl, file.size()));
}

}  // namespace

ControlLayout::Word ControlLayout::Block::Differences(const std::uint8_t* at) const {
  Word differences = 0;
  for (std::size_t i = 0; i < Mask.size(); ++i) {
    Word word = 0;
    std::memcpy(&word, at + i * sizeof(word), sizeof(word));
    differences |= (word & Mask[i]) ^ Expected[i];
  }
  return differences;
}

std::size_t ControlLayout::FirstOther(std::span<const std::uint8_t> file, const IndexView& units,
                                      std::size_t first, std::size_t end, std::size_t after) const {
  const std::size_t read = (1 + blocks_.size()) * sizeof(Words);
  if (length_ == 0 || file.size() < UnitStart + read) {
    return first;
  }
  const std::uint8_t* const bytes = file.data() + UnitStart;
  const std::size_t size = file.size() - UnitStart;
  const Block start = start_;
  const std::array<Pointer, 2> pointers = firstPointers_;
  const std::size_t length = length_;
  const bool hasMore = !blocks_.empty() || pointers_.size() > pointers.size();
  for (std::size_t index = first; index < end; ++index) {
    FetchControl(file, units[std::min(index + UnitsAhead, after - 1)]);
    const IndexEntry unit = units[index];
    const std::size_t position = unit.Offset + unit.ControlOffset;
    if (unit.ControlOffset < UnitHeaderSize || unit.ControlOffset + length > unit.Size ||
        unit.Size > MaxReadUnit || unit.Offset + unit.Size > size || position > size - read) {
      return index;
    }
    const std::uint8_t* const control = bytes + position;
    Word differences = start.Differences(control);
    for (const Pointer& pointer : pointers) {
      differences |= NumberFrom(control + pointer.Position) ^ (unit.ControlOffset + pointer.Next);
    }
    if (differences != 0 || (hasMore && !RestIsOf(control, unit.ControlOffset))) {
      return index;
    }
  }
  return end;
}

bool ControlLayout::RestIsOf(const std::uint8_t* control, std::size_t controlOffset) const {
  Word differences = 0;
  for (std::size_t i = 0; i < blocks_.size(); ++i) {
    differences |= blocks_[i].Differences(control + (i + 1) * sizeof(Words));
  }
  for (const Pointer& pointer : pointers_) {
    differences |= NumberFrom(control + pointer.Position) ^ (controlOffset + pointer.Next);
  }
  return differences == 0;
}

void ControlLayout::Begin(const IndexedPacket& packet) {
  control_ = packet.Unit.subspan(packet.ControlOffset);
  offset_ = packet.ControlOffset;
  fixed_.clear();
  pointers_.clear();
  length_ = 0;
  isFixed_ = true;
}

void ControlLayout::Add(const ControlSequence& sequence) {
  const std::uint32_t position = static_cast<std::uint32_t>(sequence.Position) - offset_;
  if (!pointers_.empty()) {
    fixed_.push_back(last_);  // where the sequence before it ends
  }
  pointers_.push_back({.Position = position + 2, .Next = sequence.Header.Next - offset_});
  last_ = position + SequenceHeaderSize;
}

void ControlLayout::Add(const ControlCommand& command) {
  // What a change of colours holds says how long it is.
  isFixed_ = isFixed_ && command.Code != ChangeColours;
  const std::uint32_t position = static_cast<std::uint32_t>(command.Position) - offset_;
  fixed_.push_back(position);
  last_ = position + 1 + static_cast<std::uint32_t>(command.Arguments.size());
}

void ControlLayout::End(bool isWhole) {
  fixed_.push_back(last_);
  length_ = isWhole && isFixed_ ? last_ + 1 : 0;
  if (length_ > 0) {
    MakeBlocks();
    firstPointers_ = {pointers_.front(), pointers_[pointers_.size() > 1 ? 1 : 0]};
  }
}

void ControlLayout::MakeBlocks() {
  start_ = {};
  blocks_.assign((length_ - 1) / sizeof(Words), {});
  for (const std::uint32_t fixed : fixed_) {
    const std::size_t index = fixed / sizeof(Words);
    Block& block = index == 0 ? start_ : blocks_[index - 1];
    const std::size_t at = fixed % sizeof(Words);
    constexpr std::uint8_t AllBits = 0xFF;
    std::memcpy(reinterpret_cast<std::uint8_t*>(block.Mask.data()) + at, &AllBits, 1);
    std::memcpy(reinterpret_cast<std::uint8_t*>(block.Expected.data()) + at, &control_[fixed], 1);
  }
}

}  // namespace quillmark
