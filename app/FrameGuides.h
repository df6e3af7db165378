#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QPoint>
#include <QRect>
#include <QSize>

class QPainter;

namespace quillmark {

class FramePicture;

/// The screen of a 16:9 disc whose look is shown.
enum class DisplayMode : std::uint8_t {
  Off,
  Wide,        ///< 16:9: the frame fills it
  Letterbox,   ///< 4:3: all of the film, in the middle three quarters of the lines
  PanAndScan,  ///< 4:3: the middle three quarters of the film's columns, filling it
};

/// What is painted over the frame while it is shown. None of it is ever part of the picture.
struct FrameGuides {
  bool SafeAreas = false;
  bool Area = false;  ///< Subtitles' outlines and numbers
  bool Rulers = false;
  DisplayMode Mode = DisplayMode::Off;
  std::vector<QRect> Subtitles = {};  ///< areas of what is shown, in frame pixels
  std::optional<QPoint> Mark = {};    ///< a frame pixel that is looked at

  /// Whether anything is painted.
  [[nodiscard]] bool IsAny() const { return SafeAreas || Area || Rulers || Mode != DisplayMode::Off || Mark; }

  bool operator==(const FrameGuides&) const = default;
};

/// The frame on the screen, whose own coordinates are logical pixels from the frame's corner on.
struct ShownFrame {
  int Lines = 0;
  QSize OnScreen;    ///< in screen pixels
  double Ratio = 1;  ///< screen pixels in a logical one
  QRect InSight;     ///< what of it is seen, in logical pixels

  /// Frame pixels, to whole screen pixels, in logical ones.
  [[nodiscard]] QRectF Map(const QRectF& framePixels) const;
};

/// The central part of the frame that is so many percent of each side: 90 where action is safe, 80 for
/// titles.
[[nodiscard]] QRectF SafeArea(int percent, int lines);
/// Where the film stands on the screen of that mode, and which part of the film that is; in frame pixels.
struct FilmPlace {
  QRectF OnScreen;
  QRectF OfFilm;
};
[[nodiscard]] FilmPlace FilmOn(DisplayMode mode, int lines);

/// The frame as the screen of the mode shows it, over all of the frame: the film at its place, black beside
/// it, and the subtitle, which no player scales with the film.
void PaintScreen(QPainter& painter, const FramePicture& picture, DisplayMode mode, const ShownFrame& frame);
/// Everything else of the guides, the mode's caption included.
void PaintGuides(QPainter& painter, const FrameGuides& guides, const ShownFrame& frame);

}  // namespace quillmark
