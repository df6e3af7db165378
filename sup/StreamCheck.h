#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillmark {

enum class StreamProblemCode {
  LostSignature,         ///< no "SP" where a packet should start
  TrailingBytes,         ///< too few bytes for a packet at the end of the file
  PastEnd,               ///< the packet is longer than the rest of the file
  UnitTooLarge,          ///< a size of 0x8000 or more
  UnitTooSmall,          ///< a size that not even the unit's header fits
  ControlOffsetZero,     ///< no control sequence is read
  ControlOffsetOutside,  ///< the control offset leads into the unit's header or after its end
  ControlUnfinished,     ///< the sequences' pointers do not lead to a last sequence within the unit
  ControlGap,            ///< bytes between two sequences, which are read as the second one
  ManySequences,         ///< more than two control sequences
  UnknownCommand,
  MissingColour,
  MissingContrast,
  MissingArea,
  MissingFields,
  FieldOutside,      ///< a field's data would start outside the unit
  ReversedArea,      ///< an area that ends before it starts
  AreaOutsideFrame,  ///< an area that leaves 720 x 576 pixels
  OddHeight,         ///< the last line is not shown
  NoEnd,             ///< no delay: the subtitle stays until the next one
  NegativeDelay,     ///< the subtitle ends before it starts
  NegativeTime,
  TimeBackwards,  ///< the subtitle starts before the one before it
  Overlap,        ///< the subtitle is still shown when the next one starts
};

/// "lost_signature", ...: for scripts, never changed.
[[nodiscard]] std::string_view ProblemName(StreamProblemCode code);

struct StreamProblem {
  std::int64_t Offset = 0;             ///< of the bytes at fault, from the start of the file
  std::optional<std::int64_t> Packet;  ///< from 1; nullopt where no packet is
  StreamProblemCode Code{};
  std::string Message;
};

using ProblemReporter = std::function<void(const StreamProblem&)>;

/// Walks the file packet by packet and reports whatever is wrong, in file order but for a subtitle's overlap,
/// which is known when the next one was read. After a lost signature the walk goes on at the next plausible
/// packet, inside the packet before it if that one's own size cannot be believed. A unit that cannot be shown
/// has at least one problem. Takes time in proportion to the file's size.
void CheckStream(std::span<const std::uint8_t> file, const ProblemReporter& report);

}  // namespace quillmark
