#include "app/FrameGuides.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <QPainter>

#include "app/Ui.h"
#include "app/ViewZoom.h"
#include "render/Composition.h"

namespace quillmark {
namespace {

constexpr int ActionSafe = 90;
constexpr int TitleSafe = 80;

const QColor GuideInk(Qt::white);
const QColor Shade(0, 0, 0, 176);

/// Black or white beside each other are seen on every picture.
class GuidePainter {
 public:
  GuidePainter(QPainter& painter, const ShownFrame& frame)
      : painter_(painter), frame_(frame), line_(std::max(1.0, std::floor(frame.Ratio)) / frame.Ratio) {}

  /// Just outside of the area.
  void Outline(const QRectF& framePixels) {
    const QRectF area = frame_.Map(framePixels);
    Edge(area.adjusted(-2 * line_, -2 * line_, 2 * line_, 2 * line_), Qt::black);
    Edge(area.adjusted(-line_, -line_, line_, line_), GuideInk);
  }

  /// A text on a dark plate, its upper left corner at `corner`; within what is in sight as far as it has
  /// room.
  QRectF Label(QPointF corner, const QString& text) {
    const QFontMetricsF metrics(painter_.font());
    QRectF plate(corner, QSizeF(metrics.horizontalAdvance(text) + metrics.height() / 2, metrics.height()));
    const QRectF inSight = frame_.InSight;
    plate.moveLeft(
        std::clamp(plate.left(), inSight.left(), std::max(inSight.left(), inSight.right() - plate.width())));
    plate.moveTop(
        std::clamp(plate.top(), inSight.top(), std::max(inSight.top(), inSight.bottom() - plate.height())));
    painter_.fillRect(plate, Shade);
    painter_.setPen(GuideInk);
    painter_.drawText(plate, Qt::AlignCenter, text);
    return plate;
  }

  [[nodiscard]] double Line() const { return line_; }
  [[nodiscard]] double TextHeight() const { return QFontMetricsF(painter_.font()).height(); }

 private:
  /// Inside of the area.
  void Edge(const QRectF& area, const QColor& colour) {
    painter_.fillRect(QRectF(area.left(), area.top(), area.width(), line_), colour);
    painter_.fillRect(QRectF(area.left(), area.bottom() - line_, area.width(), line_), colour);
    painter_.fillRect(QRectF(area.left(), area.top(), line_, area.height()), colour);
    painter_.fillRect(QRectF(area.right() - line_, area.top(), line_, area.height()), colour);
  }

  QPainter& painter_;
  const ShownFrame& frame_;
  double line_;
};

QString FromTo(int first, int count) {
  return Ui::Tr("%1 to %2", {QString::number(first), QString::number(first + count - 1)});
}

void PaintSafeAreas(GuidePainter& guides, const ShownFrame& frame) {
  const std::array<std::pair<int, QString>, 2> areas = {std::pair(ActionSafe, Ui::Tr("action safe 90 %")),
                                                        std::pair(TitleSafe, Ui::Tr("title safe 80 %"))};
  for (const auto& [percent, name] : areas) {
    const QRectF area = SafeArea(percent, frame.Lines);
    guides.Outline(area);
    guides.Label(frame.Map(area).topLeft() + QPointF(guides.Line(), guides.Line()), name);
  }
}

void PaintAreas(GuidePainter& guides, const std::vector<QRect>& areas, const ShownFrame& frame) {
  for (const QRect& area : areas) {
    guides.Outline(area);
    const QRectF shown = frame.Map(area);
    guides.Label(shown.topLeft() - QPointF(0, guides.TextHeight() + 3 * guides.Line()),
                 QStringLiteral("X %1, Y %2, %3x%4")
                     .arg(FromTo(area.x(), area.width()), FromTo(area.y(), area.height()),
                          QString::number(area.width()), QString::number(area.height())));
  }
}

/// The least of some round numbers of frame pixels that take so much room.
int TickStep(double side, double room) {
  for (const int step : {2, 5, 10, 20, 50, 100, 200}) {
    if (step * side >= room) {
      return step;
    }
  }
  return 500;
}

/// A ruler along the top or the left of what is in sight.
void PaintRuler(QPainter& painter, const ShownFrame& frame, bool isAcross, double line) {
  const QFontMetricsF metrics(painter.font());
  const double depth = metrics.height();
  const QRectF inSight = frame.InSight;
  painter.fillRect(
      QRectF(inSight.topLeft(), isAcross ? QSizeF(inSight.width(), depth) : QSizeF(depth, inSight.height())),
      Shade);
  const int count = isAcross ? FrameWidth : frame.Lines;
  const double side = (isAcross ? frame.OnScreen.width() : frame.OnScreen.height()) / frame.Ratio / count;
  const int labelled = TickStep(side, 3.5 * depth);
  const int between = TickStep(side, depth / 3);
  painter.setPen(GuideInk);
  for (int at = 0; at <= count; at += between) {
    const QRectF place = frame.Map(QRectF(at, at, 1, 1));
    const double from = isAcross ? place.left() : place.top();
    const bool isLabelled = at % labelled == 0;
    const double length = isLabelled ? depth : depth / 3;
    painter.fillRect(
        isAcross ? QRectF(from, inSight.top(), line, length) : QRectF(inSight.left(), from, length, line),
        GuideInk);
    if (isLabelled && isAcross) {
      painter.drawText(QPointF(from + 3 * line, inSight.top() + metrics.ascent()), QString::number(at));
    } else if (isLabelled) {
      painter.save();
      painter.translate(inSight.left() + metrics.ascent(), from - 3 * line);
      painter.rotate(-90);
      painter.drawText(QPointF(), QString::number(at));
      painter.restore();
    }
  }
}

QString Caption(DisplayMode mode, int lines) {
  const FilmPlace film = FilmOn(mode, lines);
  const QRect onScreen = film.OnScreen.toRect();
  const QRect ofFilm = film.OfFilm.toRect();
  switch (mode) {
    case DisplayMode::Wide:
      return Ui::Tr("Wide screen (16:9): all of the frame");
    case DisplayMode::Letterbox:
      return Ui::Tr("Letterbox (4:3): the film in lines %1, the subtitle as stored")
          .arg(FromTo(onScreen.y(), onScreen.height()));
    case DisplayMode::PanAndScan:
      return Ui::Tr("Pan and scan (4:3): the film's columns %1, the subtitle as stored")
          .arg(FromTo(ofFilm.x(), ofFilm.width()));
    case DisplayMode::Off:
      break;
  }
  return {};
}

}  // namespace

QRectF ShownFrame::Map(const QRectF& framePixels) const {
  const auto x = [this](double at) { return std::round(at * OnScreen.width() / FrameWidth) / Ratio; };
  const auto y = [this](double at) { return std::round(at * OnScreen.height() / Lines) / Ratio; };
  return {QPointF(x(framePixels.left()), y(framePixels.top())),
          QPointF(x(framePixels.right()), y(framePixels.bottom()))};
}

QRectF SafeArea(int percent, int lines) {
  const double beside = (100 - percent) / 200.0;
  return {std::round(FrameWidth * beside), std::round(lines * beside),
          std::round(FrameWidth * percent / 100.0), std::round(lines * percent / 100.0)};
}

FilmPlace FilmOn(DisplayMode mode, int lines) {
  const QRectF whole(0, 0, FrameWidth, lines);
  switch (mode) {
    case DisplayMode::Letterbox:
      return {.OnScreen = QRectF(0, lines / 8.0, FrameWidth, lines * 3 / 4.0), .OfFilm = whole};
    case DisplayMode::PanAndScan:
      return {.OnScreen = whole, .OfFilm = QRectF(FrameWidth / 8.0, 0, FrameWidth * 3 / 4.0, lines)};
    case DisplayMode::Wide:
    case DisplayMode::Off:
      break;
  }
  return {.OnScreen = whole, .OfFilm = whole};
}

void PaintScreen(QPainter& painter, const FramePicture& picture, DisplayMode mode, const ShownFrame& frame) {
  const QRectF whole(0, 0, FrameWidth, frame.Lines);
  const FilmPlace film = FilmOn(mode, frame.Lines);
  painter.save();
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.setClipRect(frame.Map(whole), Qt::IntersectClip);
  painter.fillRect(frame.Map(whole), Qt::black);
  painter.drawImage(frame.Map(film.OnScreen), picture.Ground(), film.OfFilm);
  painter.setRenderHint(QPainter::SmoothPixmapTransform, WholeSide(frame.OnScreen, frame.Lines) == 0);
  for (const LaidPicture& laid : picture.Laid()) {
    painter.drawImage(frame.Map(QRectF(laid.Place, laid.Picture.size())), laid.Picture);
  }
  painter.restore();
}

void PaintGuides(QPainter& painter, const FrameGuides& guides, const ShownFrame& frame) {
  GuidePainter guidePainter(painter, frame);
  if (guides.SafeAreas) {
    PaintSafeAreas(guidePainter, frame);
  }
  if (guides.Area) {
    PaintAreas(guidePainter, guides.Subtitles, frame);
  }
  if (guides.Rulers) {
    PaintRuler(painter, frame, true, guidePainter.Line());
    PaintRuler(painter, frame, false, guidePainter.Line());
  }
  if (guides.Mode != DisplayMode::Off) {
    const QString caption = Caption(guides.Mode, frame.Lines);
    const double width = QFontMetricsF(painter.font()).horizontalAdvance(caption);
    guidePainter.Label({frame.InSight.center().x() - width / 2,
                        frame.InSight.top() + (guides.Rulers ? 1.5 : 0.5) * guidePainter.TextHeight()},
                       caption);
  }
  if (guides.Mark) {
    guidePainter.Outline(QRectF(*guides.Mark, QSizeF(1, 1)));
  }
}

}  // namespace quillmark
