#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QString>

namespace quillmark {

/// Palette entry and contrast (0-15) of each pixel code.
struct Assignment {
  std::array<std::uint8_t, 4> Colours;
  std::array<std::uint8_t, 4> Contrasts;
};

enum class Placement { Bottom, Top, Left };

/// One subtitle before it is drawn. Times are in seconds.
struct Caption {
  double Start;
  double End;
  QString Text;  ///< lines joined by '\n'
  Assignment Look;
  Placement Place = Placement::Bottom;
  bool Italic = false;
};

/// Several assignments, 720x576.
[[nodiscard]] std::vector<Caption> DemoCaptions();
/// 720x480.
[[nodiscard]] std::vector<Caption> NtscCaptions();
/// Two languages of one dialogue in one assignment; their times overlap but are not the same.
[[nodiscard]] std::vector<Caption> FirstCaptions();
[[nodiscard]] std::vector<Caption> SecondCaptions();

}  // namespace quillmark
