#include "cli/Commands.h"
#include "cli/Inputs.h"

namespace quillmark::cli {

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
  const std::int64_t last = options.Only.Last.value_or(stream.Count);
  const auto chosen = [](const std::optional<CodeNibbles>& nibbles) {
    return nibbles ? AllFour(*nibbles) : ChosenNibbles{};
  };
  StreamEdit edit =
      AssignCodes(stream, static_cast<std::size_t>(options.Only.First - 1), static_cast<std::size_t>(last),
                  {.Colours = chosen(options.Colours), .Contrasts = chosen(options.Opacities)});
  if (const Result<void> applied = ApplyEdit(stream, edit); !applied) {
    return Failed(options.File, applied.Reason());
  }
  if (console.Interrupted()) {
    return Interrupted();
  }
  return WriteFile(options.Out,
                   std::span(stream.RawBytes).first(static_cast<std::size_t>(stream.FileLength)));
}

}  // namespace quillmark::cli
