#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include <QString>

#include "sup/PacketMarks.h"

namespace quillmark {

/// What is said of one subtitle.
struct SpokenSubtitle {
  std::size_t Number = 0;                     ///< from 1
  std::int64_t StartTicks = 0;                ///< 90 kHz ticks
  std::optional<std::int64_t> DurationTicks;  ///< none where no end is known
  std::optional<std::size_t> OverNumber;      ///< of the second stream's subtitle that lies over it
  PacketMarks Marks;
};

/// "Subtitle 12, 0:01:02.34, 2.5 seconds, forced, animated, one problem: no end of its own". One that is
/// invalid "cannot be shown" for no time.
[[nodiscard]] QString SubtitleSentence(const SpokenSubtitle& subtitle);

/// Of damage that stands before the packet with `index`, from 0: "Between subtitles 12 and 13, one problem:
/// lost signature", "Before subtitle 1, ...", or "After subtitle 20, ..." where `index` is the count of
/// packets.
[[nodiscard]] QString DamageSentence(std::size_t index, std::size_t packets, StreamProblemCode code);

/// "2.5 seconds", "1 second", "1 minute 2.34 seconds", "2 hours 1 second": hundredths are rounded.
[[nodiscard]] QString DurationInWords(std::int64_t ticks);
/// "0:01:02.34": the time as it is shown everywhere, hours with as many digits as they have.
[[nodiscard]] QString TimeInWords(std::int64_t ticks);
/// "one problem", "two problems", from ten on in figures.
[[nodiscard]] QString ProblemCountInWords(int count);

}  // namespace quillmark
