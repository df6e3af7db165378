#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <limits>
#include <span>
#include <vector>

#include "sup/ControlSequences.h"
#include "sup/IndexedPacket.h"

namespace quillmark {

/// How control sequences are laid out: which commands stand where, counted from the control offset, and which
/// sequence points to which; not what their arguments and delays say.
/// The units of a stream mostly share one layout, and to see that they do takes a fraction of a walk.
class ControlLayout {
 public:
  /// Whether a walk through the unit would call its visitor for the same commands at the same places after
  /// its control offset, and end well. The unit is whole and within `file`, and what the index says of it
  /// without a fault, if so.
  [[nodiscard]] bool IsOf(std::span<const std::uint8_t> file, const IndexEntry& unit) const {
    const std::size_t first = unit.FileOffset(unit.ControlOffset);
    if (unit.ControlOffset < UnitHeaderSize || unit.ControlOffset + length_ > unit.Size ||
        unit.Size > MaxReadUnit || unit.FileOffset(unit.Size) > file.size() ||
        first + blocks_.size() * sizeof(Words) > file.size()) {
      return false;
    }
    const std::uint8_t* const control = file.data() + first;
    Word differences = 0;
    const std::uint8_t* at = control;
    for (const Block& block : blocks_) {
      for (std::size_t i = 0; i < block.Mask.size(); ++i, at += sizeof(Word)) {
        Word word = 0;
        std::memcpy(&word, at, sizeof(word));
        differences |= (word & block.Mask[i]) ^ block.Expected[i];
      }
    }
    for (const Pointer& pointer : pointers_) {
      const auto next =
          static_cast<std::uint32_t>(control[pointer.Position] << 8U | control[pointer.Position + 1]);
      differences |= next ^ (unit.ControlOffset + pointer.Next);
    }
    return differences == 0;
  }

  void Begin(const IndexedPacket& packet) {
    control_ = packet.Unit.subspan(packet.ControlOffset);
    offset_ = packet.ControlOffset;
    fixed_.clear();
    pointers_.clear();
    length_ = 0;
    isFixed_ = true;
  }
  void Add(const ControlSequence& sequence) {
    const std::uint32_t position = static_cast<std::uint32_t>(sequence.Position) - offset_;
    if (!pointers_.empty()) {
      fixed_.push_back(last_);  // where the sequence before it ends
    }
    pointers_.push_back({.Position = position + 2, .Next = sequence.Header.Next - offset_});
    last_ = position + SequenceHeaderSize;
  }
  void Add(const ControlCommand& command) {
    // What a change of colours holds says how long it is.
    isFixed_ = isFixed_ && command.Code != ChangeColours;
    const std::uint32_t position = static_cast<std::uint32_t>(command.Position) - offset_;
    fixed_.push_back(position);
    last_ = position + 1 + static_cast<std::uint32_t>(command.Arguments.size());
  }
  /// The walk came to its end; `isWhole`: without damage.
  void End(bool isWhole) {
    fixed_.push_back(last_);
    length_ = isWhole && isFixed_ ? last_ + 1 : NoLength;
    MakeBlocks();
  }

 private:
  using Word = std::uint64_t;
  using Words = std::array<Word, 4>;
  /// So many bytes at once; those that the mask leaves out may also be those of what follows the sequences.
  struct Block {
    Words Mask = {};
    Words Expected = {};
  };
  struct Pointer {
    std::uint32_t Position = 0;
    std::uint32_t Next = 0;  ///< from the control offset
  };
  static constexpr std::size_t NoLength = std::numeric_limits<std::uint32_t>::max();  // no unit has it

  void MakeBlocks() {
    blocks_.clear();
    if (length_ == NoLength) {
      return;
    }
    blocks_.resize((length_ + sizeof(Words) - 1) / sizeof(Words));
    for (const std::uint32_t fixed : fixed_) {
      Block& block = blocks_[fixed / sizeof(Words)];
      const std::size_t at = fixed % sizeof(Words);
      constexpr std::uint8_t AllBits = 0xFF;
      std::memcpy(reinterpret_cast<std::uint8_t*>(block.Mask.data()) + at, &AllBits, 1);
      std::memcpy(reinterpret_cast<std::uint8_t*>(block.Expected.data()) + at, &control_[fixed], 1);
    }
  }

  std::vector<Block> blocks_;
  std::vector<Pointer> pointers_;
  std::size_t length_ = NoLength;  // of all sequences
  // While one is learnt:
  std::span<const std::uint8_t> control_;
  std::vector<std::uint32_t> fixed_;  // positions of commands and end marks
  std::uint32_t offset_ = 0;
  std::uint32_t last_ = 0;  // after what was read last
  bool isFixed_ = true;
};

/// A walk through packet after packet, whose visitor `plan` learns where things stand, counted from the
/// control offset: it is called for the first packet and whenever the layout changes. A plan has to take
/// nothing from delays and arguments but from those of ChangeColours.
template <typename Plan>
class PlannedWalk {
 public:
  /// Whether what was learnt last holds for this unit.
  [[nodiscard]] bool Knows(std::span<const std::uint8_t> file, const IndexEntry& unit) const {
    return layout_.IsOf(file, unit);
  }

  /// What damage there is; where there is none, the plan holds for this packet.
  PacketFault Learn(const IndexedPacket& packet) {
    if (packet.Fault != PacketFault::None) {
      return packet.Fault;
    }
    plan_.Clear(packet.ControlOffset);
    layout_.Begin(packet);
    Learner learner{*this};
    walk_ = WalkControl(packet.Unit, packet.ControlOffset, learner);
    const bool isWhole = walk_.End == ControlEnding::PointsToItself;
    layout_.End(isWhole);
    after_ = static_cast<std::size_t>(walk_.After) - packet.ControlOffset;
    return isWhole ? PacketFault::None : PacketFault::ControlUnfinished;
  }

  [[nodiscard]] const Plan& What() const { return plan_; }
  /// Where the last sequence ends, from the control offset.
  [[nodiscard]] std::size_t After() const { return after_; }

 private:
  struct Learner {
    PlannedWalk& Walk;
    void Begin(const ControlSequence& sequence) {
      Walk.layout_.Add(sequence);
      Walk.plan_.Begin(sequence);
    }
    void Take(const ControlCommand& command) {
      Walk.layout_.Add(command);
      Walk.plan_.Take(command);
    }
  };

  Plan plan_;
  ControlLayout layout_;
  ControlWalk walk_;
  std::size_t after_ = 0;
};

}  // namespace quillmark
