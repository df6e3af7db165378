#include "sup/Salvage.h"

#include <vector>

#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"

namespace quillmark::cli {
namespace {

void TellWhatWasKept(const SalvagedStream& salvaged, const Console& console) {
  std::size_t kept = 0;
  for (const auto span : salvaged.Kept) {
    kept += span.size();
  }
  console.Out << Words::Tr("kept %1 packets, %2 bytes",
                           {std::to_string(salvaged.Packets), std::to_string(kept)})
              << '\n';
  for (const LeftOutRange& range : salvaged.LeftOut) {
    console.Out << Words::Tr(
                       "left out %1 bytes at offset %2: %3",
                       {std::to_string(range.Length), std::to_string(range.Offset), FaultText(range.Fault)})
                << '\n';
  }
}

std::vector<std::uint8_t> Joined(const SalvagedStream& salvaged) {
  std::vector<std::uint8_t> joined;
  for (const auto span : salvaged.Kept) {
    joined.insert(joined.end(), span.begin(), span.end());
  }
  return joined;
}

}  // namespace

CommandResult Salvage(const SalvageOptions& options, const Console& console) {
  Track track;
  if (CommandResult read = ReadStream({options.File, options.Track}, track, console); !read.IsDone()) {
    return read;
  }
  const SalvagedStream salvaged = SalvageStream(track.Packets);
  if (salvaged.Packets == 0) {
    return Failed(options.File, Words::Tr("no good packet was found; nothing is written"));
  }
  if (console.Interrupted()) {
    return Interrupted();
  }
  // A stream without damage is one span already.
  CommandResult written = salvaged.Kept.size() == 1 ? WriteFile(options.Out, salvaged.Kept.front())
                                                    : WriteFile(options.Out, Joined(salvaged));
  if (written.IsDone()) {
    TellWhatWasKept(salvaged, console);
  }
  return written;
}

}  // namespace quillmark::cli
