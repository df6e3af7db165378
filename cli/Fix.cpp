#include <utility>
#include <vector>

#include "base/FilePath.h"
#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "cli/ProblemText.h"
#include "sup/StreamFix.h"
#include "sup/StreamLoader.h"

namespace quillmark::cli {
namespace {

Json MendObject(const Mend& mend) {
  return {{"packet", mend.Packet > 0 ? Json(mend.Packet) : Json()},
          {"kind", MendName(mend.Kind)},
          {"message", MendText(mend)}};
}

Json FixObject(const FixOptions& options, const StreamFix& fix) {
  Json mended = Json::array();
  for (const Mend& mend : fix.Mends) {
    mended.push_back(MendObject(mend));
  }
  Json left = Json::array();
  for (const StreamProblem& problem : fix.Left) {
    left.push_back(ProblemObject(problem));
  }
  return {{"file", options.File},
          {"out", options.DryRun ? Json() : Json(options.Out)},
          {"tool", "fix"},
          {"mended", std::move(mended)},
          {"left", std::move(left)}};
}

void TellWhatWasMended(const StreamFix& fix, const Console& console) {
  for (const Mend& mend : fix.Mends) {
    console.Out << (mend.Packet > 0
                        ? Words::Tr("mended: packet %1: %2", {std::to_string(mend.Packet), MendText(mend)})
                        : Words::Tr("mended: %1", {MendText(mend)}))
                << '\n';
  }
  for (const StreamProblem& problem : fix.Left) {
    console.Out << Words::Tr("left: %1", {ProblemText(problem)});
  }
  if (fix.Mends.empty() && fix.Left.empty()) {
    console.Out << Words::Tr("nothing to mend") << '\n';
  }
}

}  // namespace

CommandResult Fix(const FixOptions& options, const Console& console) {
  Track track;
  if (CommandResult read = ReadStream({options.File, options.Track}, track, console); !read.IsDone()) {
    return read;
  }
  std::vector<std::uint8_t>& bytes = track.Packets;
  Result<StreamFix> fix =
      FixStream(bytes, {.Profile = ProfileOf(options.Profile), .FrameLines = options.Frame});
  if (!fix) {
    return Failed(options.File, fix.Reason());
  }
  const bool wasEmpty = bytes.empty();
  if (const Result<void> applied = ApplyEdit(bytes, fix->Edit); !applied) {
    return Failed(options.File, applied.Reason());
  }
  if (bytes.empty() && !wasEmpty) {
    return Failed(options.File, Words::Tr("no packet was found; nothing is written"));
  }
  if (console.Interrupted()) {
    return Interrupted();
  }
  if (!options.DryRun) {
    if (CommandResult written = WriteFile(options.Out, bytes); !written.IsDone()) {
      return written;
    }
  }
  CommandResult result;
  if (!fix->Left.empty()) {
    result = Failed(options.File, Words::Tr("%n problem is left", "%n problems are left",
                                            static_cast<std::int64_t>(fix->Left.size())));
  }
  if (options.Json) {
    WriteJson(console.Out, FixObject(options, *fix));
    console.Out << '\n';
    result.JsonWritten = true;
  } else {
    TellWhatWasMended(*fix, console);
  }
  return result;
}

}  // namespace quillmark::cli
