#include "app/ViewZoom.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "render/Composition.h"

namespace quillmark {
namespace {

constexpr std::array ZoomSteps = {50, 75, 100, 150, 200, 300, 400, 600, 800};
/// A fitting frame may be this near to a step, in percent, and count as being at it.
constexpr double SameStep = 0.5;

/// The frame's width in lines.
double WidthInLines(int lines, DisplayAspect aspect) {
  switch (aspect) {
    case DisplayAspect::FourToThree:
      return lines * 4 / 3.0;
    case DisplayAspect::SixteenToNine:
      return lines * 16 / 9.0;
    case DisplayAspect::Square:
      break;
  }
  return FrameWidth;
}

/// Rounded down, but for what arithmetic leaves below a whole number.
int WholePixels(double pixels) {
  return std::max(1, static_cast<int>(pixels + 1e-6));
}

}  // namespace

int ZoomStepAbove(double percent) {
  const auto* above = std::ranges::find_if(ZoomSteps, [=](int step) { return step > percent + SameStep; });
  return above == ZoomSteps.end() ? ZoomSteps.back() : *above;
}

int ZoomStepBelow(double percent) {
  const auto below =
      std::find_if(ZoomSteps.rbegin(), ZoomSteps.rend(), [=](int step) { return step < percent - SameStep; });
  return below == ZoomSteps.rend() ? ZoomSteps.front() : *below;
}

QSize SizeOnScreen(int lines, double linePixels, DisplayAspect aspect) {
  return {WholePixels(WidthInLines(lines, aspect) * linePixels), WholePixels(lines * linePixels)};
}

int WholeSide(QSize onScreen, int lines) {
  const int side = onScreen.height() / lines;
  return onScreen == QSize(FrameWidth, lines) * side ? side : 0;
}

double LinePixelsInto(QSizeF room, int lines, DisplayAspect aspect) {
  return std::min(room.height() / lines, room.width() / WidthInLines(lines, aspect));
}

}  // namespace quillmark
