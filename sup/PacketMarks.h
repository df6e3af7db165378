#pragma once

#include <bit>
#include <cstdint>
#include <optional>
#include <vector>

#include "sup/StreamProblem.h"

namespace quillmark {

/// What a list asks of a subtitle besides its problems.
enum class PacketTrait : std::uint8_t {
  Animated = 60,  ///< a player shows more than one picture of it
  Invalid = 61,   ///< this program cannot show it
  Forced = 62,    ///< it starts even where subtitles are off
  OtherCodes,     ///< other colours or opacities than the first valid subtitle
};

/// The problems and traits of one packet: each kind of problem once, however often the packet has it.
class PacketMarks {
 public:
  /// A problem with code c is bit c, a trait is the bit of its number.
  std::uint64_t Bits = 0;

  constexpr void Add(StreamProblemCode code) { Bits |= BitOf(code); }
  constexpr void Add(PacketTrait trait) { Bits |= BitOf(trait); }
  [[nodiscard]] constexpr bool Has(StreamProblemCode code) const { return (Bits & BitOf(code)) != 0; }
  [[nodiscard]] constexpr bool Has(PacketTrait trait) const { return (Bits & BitOf(trait)) != 0; }

  [[nodiscard]] constexpr bool HasProblems() const { return (Bits & AllProblems) != 0; }
  [[nodiscard]] constexpr int ProblemCount() const { return std::popcount(Bits & AllProblems); }
  /// In the order of the codes.
  [[nodiscard]] std::vector<StreamProblemCode> Problems() const;
  /// Of the worst one; nullopt where there is none.
  [[nodiscard]] std::optional<ProblemSeverity> Severity() const;

  [[nodiscard]] static constexpr std::uint64_t BitOf(StreamProblemCode code) {
    return std::uint64_t{1} << static_cast<unsigned>(code);
  }
  [[nodiscard]] static constexpr std::uint64_t BitOf(PacketTrait trait) {
    return std::uint64_t{1} << static_cast<unsigned>(trait);
  }
  static constexpr std::uint64_t AllProblems =
      (std::uint64_t{1} << static_cast<unsigned>(StreamProblemCodes)) - 1;

  bool operator==(const PacketMarks&) const = default;
};
static_assert(StreamProblemCodes <= static_cast<int>(PacketTrait::Animated));

}  // namespace quillmark
