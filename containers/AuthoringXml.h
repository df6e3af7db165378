#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "palette/Colour.h"

namespace quillmark {

/// What an authoring list says of one subtitle.
struct AuthoringSpu {
  std::int64_t Line = 0;   ///< of the list, from 1
  std::int64_t Start = 0;  ///< 90 kHz ticks
  std::int64_t End = 0;    ///< 0: none
  std::string Image;       ///< path as it stands there; empty: none
  int X = 0;
  int Y = 0;
  bool IsForced = false;
  std::optional<Rgb> Transparent;  ///< the colour that is, in pictures without alpha
  bool HasButtons = false;         ///< pictures and elements of a menu, which are not read
};

/// "[[h:]m:]s[.frac]" in ticks, with a point or a comma; of the fraction four digits count, and anything that
/// is neither digit nor separator is passed over. nullopt with a second point, or past 2^33 ticks.
[[nodiscard]] std::optional<std::int64_t> ParseAuthoringTime(std::string_view text);

/// Whether a file starts as an authoring list does: complete, or nothing but its lines.
[[nodiscard]] bool StartsLikeAuthoringList(std::string_view head);

/// All subtitles of a list: `<subpictures>` with one `<stream>`, or the lines of a stream alone. What the
/// authoring tool refuses is a Failure that names the line: unknown elements and attributes, numbers that are
/// none. Takes any bytes.
[[nodiscard]] Result<std::vector<AuthoringSpu>> ParseAuthoringXml(std::string_view text);

/// A subtitle's time on screen.
struct AuthoringTime {
  std::size_t Spu = 0;  ///< its index
  std::int64_t Start = 0;
  std::optional<std::int64_t> End;  ///< none for a last one without

  bool operator==(const AuthoringTime&) const = default;
};

/// Which subtitles are shown when, by the authoring tool's rules. None is shown up to its end or after it;
/// each is cut 90 ticks before the next one starts, and one that has no time left then is dropped, also
/// because the next one starts before it. `notes` gets what was dropped.
[[nodiscard]] std::vector<AuthoringTime> ResolveTimes(const std::vector<AuthoringSpu>& spus,
                                                      std::vector<std::string>& notes);

}  // namespace quillmark
