#include <algorithm>
#include <span>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "sup/StreamEdit.h"

namespace quillmark::cli {
namespace {

bool NamesACode(const ChosenNibbles& nibbles) {
  return std::ranges::any_of(nibbles, [](const auto& nibble) { return nibble.has_value(); });
}

/// "no colour command", for a subtitle that lacks something that `codes` would write.
std::string WhatIsMissing(const SupStream& stream, std::size_t index, const CodeAssignment& codes) {
  const bool noColour = NamesACode(codes.Colours) && !HasColourCommand(stream, index);
  const bool noContrast = NamesACode(codes.Contrasts) && !HasContrastCommand(stream, index);
  return noColour && noContrast ? "neither a colour nor a contrast command"
         : noColour             ? "no colour command"
                                : "no contrast command";
}

/// Names the subtitles that stay as they are; their number.
std::int64_t TellWhatIsLeft(const AssignOptions& options, const SupStream& stream, std::size_t end,
                            const CodeAssignment& codes, const Console& console) {
  std::int64_t left = 0;
  for (auto index = static_cast<std::size_t>(options.Only.First - 1); index < end; ++index) {
    if (!HasCommandsFor(stream, index, codes)) {
      console.Warn(options.File, SubtitleText(static_cast<std::int64_t>(index) + 1) + " has " +
                                     WhatIsMissing(stream, index, codes) + "; it is left as it is");
      ++left;
    }
  }
  return left;
}

}  // namespace

CommandResult Assign(const AssignOptions& options, const Console& console) {
  if (!options.Colours && !options.Opacities) {
    return WrongUsage("", "assign needs --colours, --opacities or both");
  }
  SupStream stream;
  if (CommandResult loaded = LoadStream(options.File, stream); !loaded.IsDone()) {
    return loaded;
  }
  if (CommandResult range = CheckRange(options.Only, options.File, stream); !range.IsDone()) {
    return range;
  }
  const CodeAssignment codes{.Colours = options.Colours.value_or(ChosenNibbles{}),
                             .Contrasts = options.Opacities.value_or(ChosenNibbles{}),
                             .NeedsCommands = true};
  const auto first = static_cast<std::size_t>(options.Only.First - 1);
  const auto end = static_cast<std::size_t>(options.Only.Last.value_or(stream.Count));
  StreamEdit edit = AssignCodes(stream, first, end, codes);
  if (const Result<void> applied = ApplyEdit(stream, edit); !applied) {
    return Failed(options.File, applied.Reason());
  }
  if (console.Interrupted()) {
    return Interrupted();
  }
  const std::int64_t left = TellWhatIsLeft(options, stream, end, codes, console);
  CommandResult written =
      WriteFile(options.Out, std::span(stream.RawBytes).first(static_cast<std::size_t>(stream.FileLength)));
  if (!written.IsDone() || left == 0) {
    return written;
  }
  return Failed(options.File, std::to_string(left) + " of " + std::to_string(end - first) +
                                  " subtitles are left as they are");
}

}  // namespace quillmark::cli
