#pragma once

#include <string>

#include "cli/Json.h"
#include "sup/StreamProblem.h"

namespace quillmark::cli {

inline Json ProblemObject(const StreamProblem& problem) {
  return {{"offset", problem.Offset},
          {"packet", problem.Packet ? Json(*problem.Packet) : Json()},
          {"code", ProblemName(problem.Code)},
          {"message", ProblemMessage(problem)},
          {"severity", SeverityName(SeverityOf(problem.Code))}};
}

/// A line, with its end.
inline std::string ProblemText(const StreamProblem& problem) {
  const std::string place = problem.Packet ? "packet " + std::to_string(*problem.Packet) + ": " : "";
  return "offset " + std::to_string(problem.Offset) + ": " + place + ProblemMessage(problem) + " [" +
         std::string(ProblemName(problem.Code)) + "]\n";
}

}  // namespace quillmark::cli
