#pragma once

#include <functional>
#include <ostream>
#include <string>

namespace quillmark::cli {

/// What a command talks to.
struct Console {
  std::ostream& Out;
  std::ostream& Err;
  bool ErrIsTerminal = false;  ///< progress is shown
  /// Asked between the steps of long work.
  std::function<bool()> Interrupted = [] { return false; };

  /// A line on standard error that is not the command's last word.
  void Warn(const std::string& file, const std::string& text) const {
    Err << "quillmark-cli: " << file << ": " << text << '\n';
  }
};

}  // namespace quillmark::cli
