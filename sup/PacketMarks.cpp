#include "sup/PacketMarks.h"

#include <algorithm>

namespace quillmark {

std::vector<StreamProblemCode> PacketMarks::Problems() const {
  std::vector<StreamProblemCode> problems;
  for (int i = 0; i < StreamProblemCodes; ++i) {
    if (const auto code = static_cast<StreamProblemCode>(i); Has(code)) {
      problems.push_back(code);
    }
  }
  return problems;
}

std::optional<ProblemSeverity> PacketMarks::Severity() const {
  std::optional<ProblemSeverity> worst;
  for (int i = 0; i < StreamProblemCodes; ++i) {
    if (const auto code = static_cast<StreamProblemCode>(i); Has(code)) {
      worst = std::max(worst, std::optional(SeverityOf(code)));
    }
  }
  return worst;
}

}  // namespace quillmark
