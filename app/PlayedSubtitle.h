#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "render/PlayerPicture.h"
#include "sup/DisplayTimeline.h"

namespace quillmark {

/// One subtitle in the course of its time, for a window that shows it.
class PlayedSubtitle {
 public:
  /// `unit` is a whole unit, from its size field on, or as much of it as there is. `replacedAt`: ticks after
  /// its start at which the next subtitle takes its place.
  PlayedSubtitle(std::vector<std::uint8_t> unit, std::optional<std::int64_t> replacedAt);
  PlayedSubtitle(const PlayedSubtitle&) = delete;
  PlayedSubtitle& operator=(const PlayedSubtitle&) = delete;

  /// In milliseconds, up to when it is gone. One that has no end lasts until the next one starts, but not
  /// more than RestMs after its last control sequence.
  [[nodiscard]] int LengthMs() const;
  static constexpr int RestMs = 10'000;

  [[nodiscard]] const std::vector<DisplayDamage>& Damage() const { return timeline_.Damage; }

  /// Null where nothing is shown.
  [[nodiscard]] const DisplayState* ShownAt(int ms) const;
  /// As PlayerPicture does.
  void Draw(const DisplayState& state, const DvdPalette& palette, QSize within, cBitmap& picture) {
    player_.Draw(state, timeline_.ChangesOf(state), palette, within, picture);
  }
  /// Likewise.
  [[nodiscard]] std::optional<PlayedPixel> PixelAt(const DisplayState& state, QPoint pixel) {
    return player_.At(state, timeline_.ChangesOf(state), pixel);
  }

 private:
  std::vector<std::uint8_t> unit_;
  std::optional<std::int64_t> replacedAt_;
  DisplayTimeline timeline_;
  PlayerPicture player_{unit_};
};

}  // namespace quillmark
