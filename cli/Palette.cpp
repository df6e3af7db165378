#include <cstdint>
#include <span>

#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "palette/PaletteFile.h"

namespace quillmark::cli {

CommandResult ConvertPalette(const PaletteOptions& options, const Console& console) {
  DvdPalette palette;
  CommandResult loaded = options.Chain > 0 ? LoadChainPalette(options.In, options.Chain, palette)
                                           : LoadPalette(options.In, {}, palette);
  if (!loaded.IsDone()) {
    return loaded;
  }
  if (console.Interrupted()) {
    return Interrupted();
  }
  const std::string text = PaletteTextFor(options.Out, palette);
  return WriteFile(options.Out, std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size()));
}

}  // namespace quillmark::cli
