#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "base/Ratio.h"
#include "sup/CodeAssignment.h"
#include "sup/Retime.h"

/// Values of options as users write them; nullopt for anything that is not in the form that is given.
namespace quillmark {

/// Milliseconds with or without a sign and decimals, in ticks of 90 kHz rounded to nearest, halves away from
/// zero.
[[nodiscard]] std::optional<std::int64_t> ParseMilliseconds(std::string_view text);

/// A time in the stream: "[[h:]m:]s", of which the seconds may have decimals, and minutes and seconds behind
/// a colon are below 60. In ticks, rounded to nearest, halves up.
[[nodiscard]] std::optional<std::int64_t> ParseTime(std::string_view text);

/// "NUM/DEN", or "NUM" alone; both from 1 on.
[[nodiscard]] std::optional<Ratio> ParseRatio(std::string_view text);

/// A speed in pictures a second: 24000/1001 or 23.976, 24, 25, 30000/1001 or 29.97.
[[nodiscard]] std::optional<Ratio> ParseSpeed(std::string_view text);

/// "A=TIME,B=TIME", where A and B are numbers of subtitles.
[[nodiscard]] std::optional<RetimeOptions::Line> ParsePoints(std::string_view text);

/// Four hexadecimal digits, code 0 first; a code with a dot keeps what it has.
[[nodiscard]] std::optional<ChosenNibbles> ParseNibbles(std::string_view text);

}  // namespace quillmark
