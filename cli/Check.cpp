#include "base/FilePath.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "sup/StreamCheck.h"
#include "sup/StreamLoader.h"

namespace quillmark::cli {
namespace {

Json ProblemObject(const StreamProblem& problem) {
  return {{"offset", problem.Offset},
          {"packet", problem.Packet ? Json(*problem.Packet) : Json()},
          {"code", ProblemName(problem.Code)},
          {"message", ProblemMessage(problem)},
          {"severity", SeverityName(SeverityOf(problem.Code))}};
}

std::string ProblemText(const StreamProblem& problem) {
  const std::string place = problem.Packet ? "packet " + std::to_string(*problem.Packet) + ": " : "";
  return "offset " + std::to_string(problem.Offset) + ": " + place + ProblemMessage(problem) + " [" +
         std::string(ProblemName(problem.Code)) + "]\n";
}

}  // namespace

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
