#pragma once

#include <cstdint>

#include "cli/Console.h"

namespace quillmark::cli {

/// "[##########          ]  50%" on standard error, redrawn in place; nothing where that is no terminal. Gone
/// when the work is done.
class ProgressBar {
 public:
  ProgressBar(const Console& console, std::int64_t total) : console_(console), total_(total) {}
  ~ProgressBar();
  ProgressBar(const ProgressBar&) = delete;
  ProgressBar& operator=(const ProgressBar&) = delete;

  void Show(std::int64_t done);
  /// Takes the bar away, before something else is said.
  void Clear();

 private:
  const Console& console_;
  std::int64_t total_;
  std::int64_t shownPercent_ = -1;
};

}  // namespace quillmark::cli
