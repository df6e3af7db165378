#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
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
  /// its control offset, and end well.
  [[nodiscard]] bool IsOf(const IndexedPacket& packet) const {
    if (packet.Unit.size() < packet.ControlOffset + length_ || length_ < sizeof(Word)) {
      return false;
    }
    const std::uint8_t* const control = packet.Unit.data() + packet.ControlOffset;
    Word differences = 0;
    for (const Part& part : parts_) {
      Word word = 0;
      std::memcpy(&word, control + part.Position, sizeof(word));
      differences |= (word & part.Mask) ^ part.Expected;
    }
    for (const Pointer& pointer : pointers_) {
      const auto next =
          static_cast<std::uint32_t>(control[pointer.Position] << 8U | control[pointer.Position + 1]);
      differences |= next ^ (packet.ControlOffset + pointer.Next);
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
    length_ = isWhole && isFixed_ ? last_ + 1 : 0;
    MakeParts();
  }

 private:
  using Word = std::uint64_t;
  struct Part {
    std::uint32_t Position = 0;
    Word Mask = 0;
    Word Expected = 0;
  };
  struct Pointer {
    std::uint32_t Position = 0;
    std::uint32_t Next = 0;  ///< from the control offset
  };

  void MakeParts() {
    parts_.clear();
    if (length_ < sizeof(Word)) {
      return;
    }
    for (std::uint32_t position = 0; position < length_; position += sizeof(Word)) {
      // The last one overlaps the one before it, so that none reaches past the sequences.
      const auto first = std::min(position, static_cast<std::uint32_t>(length_ - sizeof(Word)));
      std::array<std::uint8_t, sizeof(Word)> mask = {};
      std::array<std::uint8_t, sizeof(Word)> expected = {};
      for (const std::uint32_t fixed : fixed_) {
        if (fixed >= first && fixed < first + sizeof(Word)) {
          mask[fixed - first] = 0xFF;
          expected[fixed - first] = control_[fixed];
        }
      }
      parts_.push_back(
          {.Position = first, .Mask = std::bit_cast<Word>(mask), .Expected = std::bit_cast<Word>(expected)});
    }
  }

  std::vector<Part> parts_;
  std::vector<Pointer> pointers_;
  std::size_t length_ = 0;  // of all sequences; 0: no unit has this layout
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
  /// What damage there is; where there is none, the plan holds for this packet.
  PacketFault Read(const IndexedPacket& packet) {
    if (packet.Fault != PacketFault::None) {
      return packet.Fault;
    }
    if (layout_.IsOf(packet)) {
      return PacketFault::None;
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
