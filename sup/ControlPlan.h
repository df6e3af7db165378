#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
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
  /// The first of the units from `first` to before `end` that is laid out otherwise; `end` where none is. Of
  /// those before it a walk would call its visitor for the same commands at the same places after their
  /// control offset, and end well; they are whole and within `file`, and what the index says of them is
  /// without a fault. What comes after them, up to before `after`, is asked for early.
  [[nodiscard]] std::size_t FirstOther(std::span<const std::uint8_t> file, const IndexView& units,
                                       std::size_t first, std::size_t end, std::size_t after) const;

  void Begin(const IndexedPacket& packet);
  void Add(const ControlSequence& sequence);
  void Add(const ControlCommand& command);
  /// The walk came to its end; `isWhole`: without damage.
  void End(bool isWhole);

 private:
  using Word = std::uint64_t;
  using Words = std::array<Word, 4>;
  /// So many bytes at once; those that the mask leaves out may also be those of what follows the sequences.
  struct Block {
    Words Mask = {};
    Words Expected = {};

    /// 0 where the bytes are the expected ones.
    [[nodiscard]] Word Differences(const std::uint8_t* at) const;
  };
  struct Pointer {
    std::uint32_t Position = 0;
    std::uint32_t Next = 0;  ///< from the control offset
  };

  [[nodiscard]] bool RestIsOf(const std::uint8_t* control, std::size_t controlOffset) const;
  void MakeBlocks();

  // Most units have no more of either, so that these are looked at without a loop.
  Block start_;
  std::array<Pointer, 2> firstPointers_ = {};
  std::vector<Block> blocks_;      // after the start
  std::vector<Pointer> pointers_;  // all
  std::size_t length_ = 0;         // of all sequences; 0: no unit is laid out so
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
  /// The first of the units from `first` to before `end` for which what was learnt last does not hold; `end`
  /// where there is none. What comes after them, up to before `after`, is asked for early.
  [[nodiscard]] std::size_t FirstUnknown(std::span<const std::uint8_t> file, const IndexView& units,
                                         std::size_t first, std::size_t end, std::size_t after) const {
    return layout_.FirstOther(file, units, first, end, after);
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
