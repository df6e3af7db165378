#pragma once

#include <cstdint>

#include <QSize>

namespace quillmark {

/// The shape that the frame is shown in: its lines keep their height, its columns give way.
enum class DisplayAspect : std::uint8_t { Square, FourToThree, SixteenToNine };

/// How large the frame is shown. It is of the view alone: what is drawn, merged, exported or saved knows
/// nothing of it.
struct ViewZoom {
  int Percent = 100;
  bool Fits = false;  ///< as large as there is room for, whatever Percent says
  DisplayAspect Aspect = DisplayAspect::Square;

  bool operator==(const ViewZoom&) const = default;
};

/// The step of the zoom next above or below `percent`; the last one beyond it.
[[nodiscard]] int ZoomStepAbove(double percent);
[[nodiscard]] int ZoomStepBelow(double percent);

/// The frame's size in screen pixels where a line is `linePixels` of them high.
[[nodiscard]] QSize SizeOnScreen(int lines, double linePixels, DisplayAspect aspect);

/// The side of every frame pixel of that size, where it is one whole number of screen pixels; otherwise 0.
[[nodiscard]] int WholeSide(QSize onScreen, int lines);

/// The height of a line with which the frame just fits into `room` (screen pixels, not empty).
[[nodiscard]] double LinePixelsInto(QSizeF room, int lines, DisplayAspect aspect);

}  // namespace quillmark
