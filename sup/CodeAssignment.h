#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "sup/SpuCommand.h"
#include "sup/StreamEdit.h"
#include "sup/SupStream.h"
#include "sup/ToolResult.h"

namespace quillmark {

/// A nibble for some of the codes; one without a nibble keeps what it has.
using ChosenNibbles = std::array<std::optional<std::uint8_t>, 4>;

[[nodiscard]] constexpr ChosenNibbles AllFour(const CodeNibbles& nibbles) {
  return {nibbles[0], nibbles[1], nibbles[2], nibbles[3]};
}

/// What to write. Where no code has a nibble, the command's bytes stay as they are.
struct CodeAssignment {
  ChosenNibbles Colours;
  ChosenNibbles Contrasts;
  /// A subtitle that lacks a command that would be written is left as it is.
  bool NeedsCommands = false;
};

/// Whether the unit of subtitle `index`, from 0, has a colour command, or a contrast command, whose arguments
/// can be written. False for a subtitle that the stream does not hold.
[[nodiscard]] bool HasColourCommand(const SupStream& stream, std::size_t index);
[[nodiscard]] bool HasContrastCommand(const SupStream& stream, std::size_t index);
/// Whether it has every command that `codes` write.
[[nodiscard]] bool HasCommandsFor(const SupStream& stream, std::size_t index, const CodeAssignment& codes);

/// The edit that writes the argument bytes of the colour and contrast commands of the subtitles from index
/// `first` to before `end`: code 3 and 2 in the first byte, 1 and 0 in the second, high nibble first.
/// Kept oddity: a unit without the command has them written over its control offset's low byte and its first
/// data byte, where its index entry points, unless `NeedsCommands` says otherwise. A byte outside the
/// subtitle's own packet or outside the file is never written, so damage in one unit cannot spread to the
/// next. Empty when the stream does not hold all of the subtitles.
[[nodiscard]] StreamEdit AssignCodes(const SupStream& stream, std::size_t first, std::size_t end,
                                     const CodeAssignment& codes);
/// The same of the subtitles with these indexes, which ascend and stand there once each; otherwise the edit
/// is empty too.
[[nodiscard]] StreamEdit AssignCodes(const SupStream& stream, std::span<const std::size_t> indexes,
                                     const CodeAssignment& codes);

/// The same for the subtitles of `only`, as a tool: those without a command that would be written are left,
/// whatever `NeedsCommands` says.
[[nodiscard]] ToolResult AssignChosen(const SupStream& stream, const SubtitleSet& only,
                                      const CodeAssignment& codes);

}  // namespace quillmark
