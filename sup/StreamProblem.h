#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quillmark {

enum class StreamProblemCode : std::uint8_t {
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
  AreaOutsideFrame,  ///< an area that leaves the frame
  OddHeight,         ///< the last line is not shown
  NoEnd,             ///< no delay: the subtitle stays until the next one
  NegativeDelay,     ///< the subtitle ends before it starts
  NegativeTime,
  TimeBackwards,  ///< the subtitle starts before the one before it
  Overlap,        ///< the subtitle is still shown when the next one starts

  // For players.
  PlayerUnitSize,     ///< a unit longer than they take
  PlayerControlSize,  ///< control sequences longer than they take
  OddUnitSize,
  MissingStart,      ///< no command starts the display
  MissingStop,       ///< no command stops it, though the last sequence has a delay
  LateCommand,       ///< colours, contrasts, area or fields that only a later sequence has
  EarlierDelay,      ///< a sequence whose delay is less than that of the one before it
  OutsideSafeFrame,  ///< lines that not all of them show
  OddFirstLine,      ///< the top field on the lines of the other one
  LongLine,          ///< a line of more bits than they take
  RunPastLine,       ///< a run that passes the line's end
  OtherEntries,      ///< other palette entries than the subtitle before it
  TooLongForDelay,   ///< no end, and a next start farther away than any delay can say
  ShortGap,          ///< an end, on their clock, after the next start or less than a millisecond before it
};
inline constexpr int StreamProblemCodes = static_cast<int>(StreamProblemCode::ShortGap) + 1;

/// What a problem does to what is seen, from the least to the worst.
enum class ProblemSeverity : std::uint8_t {
  Untidy,         ///< players and this program show what was meant
  ShownWrongly,   ///< elsewhere, at another time, or otherwise than was meant, here or by a player
  CannotBeShown,  ///< not at all, here or by a player
};

struct StreamProblem {
  std::int64_t Offset = 0;             ///< of the bytes at fault, from the start of the file
  std::optional<std::int64_t> Packet;  ///< from 1; nullopt where no packet is
  StreamProblemCode Code{};
  /// What ProblemMessage() tells besides: sizes, offsets, times, each code its own.
  std::array<std::int64_t, 5> Numbers = {};

  bool operator==(const StreamProblem&) const = default;
};

/// Every unit that this program cannot show has at least one problem of CannotBeShown.
[[nodiscard]] ProblemSeverity SeverityOf(StreamProblemCode code);

/// "lost_signature", ...: for scripts, never changed.
[[nodiscard]] std::string_view ProblemName(StreamProblemCode code);
/// "untidy", "shown_wrongly", "cannot_be_shown": for scripts, never changed.
[[nodiscard]] std::string_view SeverityName(ProblemSeverity severity);

/// A few words for the code: "no end of its own".
[[nodiscard]] std::string ProblemPhrase(StreamProblemCode code);
/// All that is to say: "the control offset 40 leads out of the unit of 38 bytes".
[[nodiscard]] std::string ProblemMessage(const StreamProblem& problem);
/// The message behind the byte offset: "Offset 12: the control offset ...".
[[nodiscard]] std::string ProblemLine(const StreamProblem& problem);

/// The codes whose phrase, message or name has `words` in it, whatever the case of their letters, as bits
/// 1 << code; an underscore of a name counts as a space too.
[[nodiscard]] std::uint64_t CodesWithWords(std::string_view words);

}  // namespace quillmark
