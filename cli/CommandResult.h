#pragma once

#include <string>
#include <utility>

#include "base/Words.h"

namespace quillmark::cli {

enum class ExitCode : int {
  Done = 0,
  Failed = 1,  ///< the data could not be processed
  WrongUsage = 2,
  Interrupted = 130,  ///< as shells report an end by SIGINT
};

/// How a command ended. What it has to say of it goes to standard error as "FILE: REASON".
struct [[nodiscard]] CommandResult {
  ExitCode Code = ExitCode::Done;
  std::string File = {};     ///< empty when it is about no file
  std::string Reason = {};   ///< empty when there is nothing to say
  bool JsonWritten = false;  ///< the reason is in the document that was written already

  [[nodiscard]] bool IsDone() const { return Code == ExitCode::Done; }
  [[nodiscard]] std::string Text() const { return File.empty() ? Reason : File + ": " + Reason; }
};

inline CommandResult Failed(std::string file, std::string reason) {
  return {.Code = ExitCode::Failed, .File = std::move(file), .Reason = std::move(reason)};
}

inline CommandResult WrongUsage(std::string file, std::string reason) {
  return {.Code = ExitCode::WrongUsage, .File = std::move(file), .Reason = std::move(reason)};
}

inline CommandResult Interrupted() {
  return {.Code = ExitCode::Interrupted, .Reason = Words::Tr("interrupted")};
}

}  // namespace quillmark::cli
