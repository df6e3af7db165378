#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "sup/SupStream.h"

namespace quillmark {

/// Four nibbles, one per pixel code: [0] background, [1] pattern, [2] and [3] emphasis.
using CodeNibbles = std::array<std::uint8_t, 4>;

/// What to write; a missing one leaves its command's bytes as they are.
struct CodeAssignment {
  std::optional<CodeNibbles> Colours;
  std::optional<CodeNibbles> Contrasts;
};

/// Writes the argument bytes of the colour and contrast commands of subtitles `first` to `end` - 1 into the
/// stream's raw bytes: code 3 and 2 in the first byte, 1 and 0 in the second, high nibble first.
/// Kept oddity: a unit without the command has them written over its control offset's low byte and its first
/// data byte, where its index entry points. A byte outside the subtitle's own packet or outside the file is
/// never written, so damage in one unit cannot spread to the next. Does nothing when the stream does not hold
/// all of the subtitles.
void AssignCodes(SupStream& stream, std::int64_t first, std::int64_t end, const CodeAssignment& codes);

}  // namespace quillmark
