#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

#include "sup/SpuCommand.h"

namespace quillmark {

/// Delays, pointers, sizes and columns: 16 bits, big-endian. `bytes` has both.
[[nodiscard]] constexpr std::uint16_t NumberAt(std::span<const std::uint8_t> bytes, std::size_t at) {
  return static_cast<std::uint16_t>(bytes[at] << 8U | bytes[at + 1]);
}
[[nodiscard]] constexpr std::array<std::uint8_t, 2> NumberBytes(std::size_t value) {
  return {static_cast<std::uint8_t>(value >> 8U), static_cast<std::uint8_t>(value)};
}

/// How a walk from one control sequence to the next by their pointers ended.
enum class ControlEnding : std::uint8_t {
  PointsToItself,   ///< the last sequence was found: the walk ended in the unit
  NoEndMark,        ///< a sequence runs up to the unit's end without its 0xFF
  PointsNowhere,    ///< a pointer is 0
  PointsBackwards,  ///< a pointer leads into or before its own sequence
  PointsOutside,    ///< a pointer, or the control offset, leads out of the unit
  TooLong,          ///< given up after as many commands as were allowed
};

/// More commands than any real unit has; the bound keeps a search that tries every byte of a file linear.
inline constexpr std::int32_t MaxControlCommands = 256;

/// One control sequence. Positions count from the unit's byte 0, its size field.
struct ControlSequence {
  std::int32_t Position = 0;  ///< of its delay; its pointer follows 2 bytes on
  SequenceHeader Header;
  std::int32_t Gap = 0;  ///< bytes between it and the sequence before it
};

/// One of its commands; never the end mark.
struct ControlCommand {
  std::uint8_t Code = 0;
  std::int32_t Position = 0;  ///< of the command byte
  /// What follows it: of ChangeColours with the two bytes of their length, of an unknown command none. Of a
  /// command that the unit cuts short, what the unit has; the walk then ends with NoEndMark.
  std::span<const std::uint8_t> Arguments;

  /// Of argument byte `i`.
  [[nodiscard]] std::size_t ArgumentAt(std::size_t i) const {
    return static_cast<std::size_t>(Position) + 1 + i;
  }
};

struct ControlWalk {
  ControlEnding End = ControlEnding::PointsOutside;
  std::int32_t EndPosition = 0;  ///< of the sequence where the walk ended
  std::int32_t After = 0;        ///< after the end mark of the last sequence that has one
};

/// Bytes of the arguments of `command` when `rest` follows it; more than `rest` has where it is cut short.
[[nodiscard]] inline std::size_t ArgumentBytes(std::uint8_t command, std::span<const std::uint8_t> rest) {
  if (command != ChangeColours) {
    return static_cast<std::size_t>(ArgumentSize(command));
  }
  // They start with their own length, which counts its two bytes.
  const std::size_t length = rest.size() < 2 ? 0 : NumberAt(rest, 0);
  return length < 2 ? rest.size() + 1 : length;
}

/// Walks a unit's control sequences as a player does: from one to the next by their pointers, forwards.
/// `unit` is a whole unit, from its size field on; `controlOffset` is that of its first sequence. Calls
/// `visitor.Begin(ControlSequence)` for each sequence and `visitor.Take(ControlCommand)` for each of its
/// commands, in the order of their positions; what damage ends is told by the answer, after the calls. End
/// marks count as commands. DecodeControl reads the same sequences where they stand one right after another
/// and hold no ChangeColours.
template <typename Visitor>
ControlWalk WalkControl(std::span<const std::uint8_t> unit, std::uint16_t controlOffset, Visitor& visitor,
                        std::int32_t commandsLeft = MaxControlCommands) {
  const std::size_t size = unit.size();
  ControlWalk walk;
  std::size_t next = controlOffset;
  while (next <= size) {
    const std::size_t sequence = next;
    walk.EndPosition = static_cast<std::int32_t>(sequence);
    if (size - sequence < SequenceHeaderSize) {
      walk.End = ControlEnding::PointsOutside;
      return walk;
    }
    const SequenceHeader header{.Delay = NumberAt(unit, sequence), .Next = NumberAt(unit, sequence + 2)};
    visitor.Begin(ControlSequence{.Position = walk.EndPosition,
                                  .Header = header,
                                  .Gap = walk.After == 0 ? 0 : walk.EndPosition - walk.After});
    std::size_t at = sequence + SequenceHeaderSize;
    while (true) {
      if (commandsLeft-- <= 0) {
        walk.End = ControlEnding::TooLong;
        return walk;
      }
      if (at >= size) {
        walk.End = ControlEnding::NoEndMark;
        return walk;
      }
      const std::uint8_t code = unit[at];
      if (code == EndOfSequence) {
        break;
      }
      const auto rest = unit.subspan(at + 1);
      const std::size_t arguments = ArgumentBytes(code, rest);
      visitor.Take(ControlCommand{.Code = code,
                                  .Position = static_cast<std::int32_t>(at),
                                  .Arguments = rest.first(std::min(arguments, rest.size()))});
      if (arguments > rest.size()) {
        walk.End = ControlEnding::NoEndMark;
        return walk;
      }
      at += 1 + arguments;
    }
    ++at;
    walk.After = static_cast<std::int32_t>(at);
    next = header.Next;
    if (next == sequence || next < at) {
      walk.End = next == sequence ? ControlEnding::PointsToItself
                 : next == 0      ? ControlEnding::PointsNowhere
                                  : ControlEnding::PointsBackwards;
      return walk;
    }
  }
  walk.End = ControlEnding::PointsOutside;
  return walk;
}

}  // namespace quillmark
