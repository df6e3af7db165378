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
  AssignCodes(stream, options.Only.First - 1, last,
              {.Colours = options.Colours, .Contrasts = options.Opacities});
  if (console.Interrupted()) {
    return Interrupted();
  }
  return WriteFile(options.Out,
                   std::span(stream.RawBytes).first(static_cast<std::size_t>(stream.FileLength)));
}

}  // namespace quillmark::cli
