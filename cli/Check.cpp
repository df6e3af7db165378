#include "base/FilePath.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "cli/ProblemText.h"
#include "sup/StreamCheck.h"
#include "sup/StreamLoader.h"

namespace quillmark::cli {
CommandResult Check(const CheckOptions& options, const Console& console) {
  const Result<std::vector<std::uint8_t>> file = ReadStreamFile(PathFromUtf8(options.File));
  if (!file) {
    return Failed(options.File, file.Reason());
  }
  const quillmark::CheckOptions rules{.Profile = ProfileOf(options.Profile), .FrameLines = options.Frame};
  CommandResult result;
  if (options.Json) {
    JsonArrayWriter array(console.Out);
    CheckStream(
        *file,
        [&](const StreamProblem& problem) {
          array.Add(ProblemObject(problem));
          result.Code = ExitCode::Failed;
        },
        rules);
  } else {
    CheckStream(
        *file,
        [&](const StreamProblem& problem) {
          console.Out << ProblemText(problem);
          result.Code = ExitCode::Failed;
        },
        rules);
    console.Out << (result.IsDone() ? "no problem found\n" : "");
  }
  return result;
}

}  // namespace quillmark::cli
