#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "cli/ProblemText.h"
#include "sup/StreamCheck.h"

namespace quillmark::cli {
CommandResult Check(const CheckOptions& options, const Console& console) {
  Track track;
  if (CommandResult read = ReadStream({options.File, options.Track}, track, console); !read.IsDone()) {
    return read;
  }
  const quillmark::CheckOptions rules{.Profile = ProfileOf(options.Profile), .FrameLines = options.Frame};
  CommandResult result;
  if (options.Json) {
    JsonArrayWriter array(console.Out);
    CheckStream(
        track.Packets,
        [&](const StreamProblem& problem) {
          array.Add(ProblemObject(problem));
          result.Code = ExitCode::Failed;
        },
        rules);
  } else {
    CheckStream(
        track.Packets,
        [&](const StreamProblem& problem) {
          console.Out << ProblemText(problem);
          result.Code = ExitCode::Failed;
        },
        rules);
    console.Out << (result.IsDone() ? Words::Tr("no problem found") + "\n" : std::string());
  }
  return result;
}

}  // namespace quillmark::cli
