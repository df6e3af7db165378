#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "sup/PacketMarks.h"
#include "sup/StreamCheck.h"

namespace quillmark {

/// Damage between two packets, at the start of the file or at its end.
struct StreamDamage {
  std::size_t Before = 0;  ///< index, from 0, of the packet that it stands before; their count at the end
  StreamProblem Problem;   ///< with no packet of its own

  bool operator==(const StreamDamage&) const = default;
};

/// What the check has found in a stream so far, packet by packet, and what a list of the subtitles asks
/// besides. Packets count in the order of the file; as far as a stream could be loaded they are its
/// subtitles, and more of them may follow that the loader did not get to.
///
/// Memory: 12 bytes a packet, whatever is wrong with it, and 16 bytes for each place between packets. Of the
/// problems only the kinds are kept; what there is to say of them is read from the packet once more when it
/// is asked for, so the file, of 4 GiB at most, must stay where it is.
class StreamSurvey {
 public:
  StreamSurvey() = default;
  explicit StreamSurvey(std::span<const std::uint8_t> file, const CheckOptions& options = {});

  /// Room for this many packets, so that no step has to move what was found.
  void Reserve(std::size_t packets);
  /// One step of a StreamChecker; false once the end of the file was reached.
  bool Step();
  [[nodiscard]] bool IsComplete() const { return isComplete_; }

  /// The packets looked at, by their index from 0. Of the last one it is not known yet whether it overlaps
  /// the next one, unless the survey is complete.
  [[nodiscard]] std::span<const PacketMarks> Marks() const { return marks_; }
  /// None for a packet that was not looked at yet.
  [[nodiscard]] PacketMarks MarksOf(std::size_t index) const {
    return index < marks_.size() ? marks_[index] : PacketMarks();
  }
  /// All problems of a packet, in the order of CheckStream; none for one that was not looked at yet.
  [[nodiscard]] std::vector<StreamProblem> ProblemsOf(std::size_t index) const;

  /// In the order of the file; no two of them stand before the same packet.
  [[nodiscard]] std::size_t DamageCount() const { return damage_.size(); }
  [[nodiscard]] StreamDamage Damage(std::size_t i) const;
  [[nodiscard]] std::optional<StreamProblem> DamageBefore(std::size_t index) const;

  /// How many packets have problems.
  [[nodiscard]] std::size_t PacketsWithProblems() const { return withProblems_; }
  /// The first packet from `index` on that has problems, and the last one before `index`.
  [[nodiscard]] std::optional<std::size_t> NextWithProblems(std::size_t index) const;
  [[nodiscard]] std::optional<std::size_t> PrevWithProblems(std::size_t index) const;

 private:
  struct CompactDamage {
    std::uint32_t Before = 0;
    std::uint32_t Offset = 0;
    std::uint32_t Number = 0;
    StreamProblemCode Code{};
  };
  static_assert(sizeof(CompactDamage) == 16 && sizeof(PacketMarks) + sizeof(std::uint32_t) == 12);

  struct Codes {
    std::array<int, 4> Colours{};
    std::array<int, 4> Contrasts{};

    bool operator==(const Codes&) const = default;
  };

  void Note(const StreamProblem& problem);
  void NoteTraits(const CheckedPacket& packet);
  [[nodiscard]] std::optional<CheckedPacket> PacketAt(std::size_t index, const ProblemReporter& report) const;

  std::span<const std::uint8_t> file_;
  CheckOptions options_;
  StreamChecker checker_{std::span<const std::uint8_t>()};
  std::vector<PacketMarks> marks_;
  std::vector<std::uint32_t> offsets_;  // of the packets in the file
  std::vector<CompactDamage> damage_;
  std::size_t withProblems_ = 0;
  bool isComplete_ = false;
  std::optional<Codes> firstCodes_;  // of the first valid subtitle
};

}  // namespace quillmark
