#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <span>

#include "sup/SpuControl.h"
#include "sup/StreamProblem.h"

namespace quillmark {

/// Whose rules a stream is held against.
enum class CheckProfile : std::uint8_t {
  Spec,    ///< those that everybody goes by
  Player,  ///< and besides what players refuse or show wrongly
};

/// What is asked of a stream.
struct CheckOptions {
  CheckProfile Profile = CheckProfile::Spec;
  /// 480 or 576: the height of the frame that areas are held against. The larger one, unless it is known
  /// which of them a stream is made for: the stream does not say.
  int FrameLines = 576;
};

using ProblemReporter = std::function<void(const StreamProblem&)>;

/// A packet as the file holds it.
struct StreamPacket {
  std::int64_t Number = 0;  ///< from 1
  std::size_t Offset = 0;   ///< of "SP", from the start of the file
  std::int64_t Time = 0;    ///< 90 kHz ticks
  std::uint16_t Size = 0;
  std::uint16_t ControlOffset = 0;
  std::span<const std::uint8_t> Unit;  ///< from its size field on, as far as the file has it

  [[nodiscard]] bool IsCut() const { return Unit.size() < Size; }
  /// Where the next one should start. The walk from packet to packet never goes on inside the header.
  [[nodiscard]] std::size_t End() const;
};

/// nullopt when no "SP" stands at `offset`, or fewer than 14 bytes are left there.
[[nodiscard]] std::optional<StreamPacket> ReadPacket(std::span<const std::uint8_t> file, std::size_t offset,
                                                     std::int64_t number);

/// What the check of a packet learned of it.
struct CheckedPacket {
  std::int64_t Number = 0;  ///< from 1; 0 for no packet
  std::size_t Offset = 0;
  std::int64_t Time = 0;  ///< 90 kHz ticks
  /// Whether the unit has control sequences that a player finds; only then it has a delay that counts.
  bool HasSequences = false;
  bool IsForced = false;    ///< a command starts the display even where subtitles are off
  bool IsAnimated = false;  ///< a player shows more than one picture of it
  SpuControl Control;       ///< as it is read when the subtitle is shown; invalid when it cannot be
};

/// A problem of the packet at `offset`, `place` bytes after its "SP". What its message tells is given in the
/// order in which ProblemMessage() has it.
[[nodiscard]] StreamProblem MakeProblem(std::size_t offset, std::int64_t number, std::int64_t place,
                                        StreamProblemCode code, std::initializer_list<std::int64_t> numbers);

/// Looks at one packet by itself.
CheckedPacket CheckPacket(const StreamPacket& packet, const CheckOptions& options,
                          const ProblemReporter& report);

/// Reports what is wrong with the times of two packets that follow one another: of the later one that it
/// starts too early, of the earlier one that it is still shown; for players also that their colours are not
/// the same entries of the palette.
void CheckTimes(const CheckedPacket& earlier, const CheckedPacket& later, const CheckOptions& options,
                const ProblemReporter& report);

}  // namespace quillmark
