#pragma once

#include <ostream>

#include "sup/StreamProblem.h"

namespace quillmark {

/// For the messages of tests that fail.
inline void PrintTo(const StreamProblem& problem, std::ostream* out) {
  *out << problem.Offset << " packet " << problem.Packet.value_or(0) << " " << ProblemName(problem.Code)
       << ": " << ProblemMessage(problem);
}

}  // namespace quillmark
