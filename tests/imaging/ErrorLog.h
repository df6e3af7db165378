#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "imaging/cGDIP.h"

namespace quillmark {

struct ReportedError {
  std::string Source;
  int Status = 0;
  std::string Text;

  bool operator==(const ReportedError&) const = default;
};

inline std::ostream& operator<<(std::ostream& out, const ReportedError& error) {
  return out << error.Source << ' ' << error.Status << ' ' << error.Text;
}

/// An instance that keeps what is reported to it.
struct ErrorLog {
  std::vector<ReportedError> Errors;
  cGDIP Instance{[this](const QString& source, int status, const QString& text) {
    Errors.push_back({source.toStdString(), status, text.toStdString()});
  }};

  ErrorLog() = default;
  ErrorLog(const ErrorLog&) = delete;
  ErrorLog& operator=(const ErrorLog&) = delete;
};

}  // namespace quillmark
