#pragma once

#include <string>

#include "base/Words.h"
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
  const std::string offset = std::to_string(problem.Offset);
  const std::string message = ProblemMessage(problem);
  const std::string_view name = ProblemName(problem.Code);
  return (problem.Packet ? Words::Tr("offset %1: packet %2: %3 [%4]",
                                     {offset, std::to_string(*problem.Packet), message, name})
                         : Words::Tr("offset %1: %2 [%3]", {offset, message, name})) +
         "\n";
}

}  // namespace quillmark::cli
