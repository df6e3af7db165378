#include "cli/ProgressBar.h"

#include <string>

namespace quillmark::cli {
namespace {

constexpr std::int64_t BarWidth = 40;
/// Carriage return, and clear to the end of the line.
constexpr const char* StartOver = "\r\033[K";

}  // namespace

ProgressBar::~ProgressBar() {
  Clear();
}

void ProgressBar::Show(std::int64_t done) {
  const std::int64_t percent = total_ > 0 ? done * 100 / total_ : 100;
  if (!console_.ErrIsTerminal || percent == shownPercent_) {
    return;
  }
  shownPercent_ = percent;
  const auto filled = static_cast<std::size_t>(BarWidth * percent / 100);
  const std::string number = std::to_string(percent);
  console_.Err << StartOver << '[' << std::string(filled, '#') << std::string(BarWidth - filled, ' ') << "] "
               << std::string(3 - std::min<std::size_t>(number.size(), 3), ' ') << number << '%'
               << std::flush;
}

void ProgressBar::Clear() {
  if (shownPercent_ >= 0) {
    console_.Err << StartOver << std::flush;
    shownPercent_ = -1;
  }
}

}  // namespace quillmark::cli
