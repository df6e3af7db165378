#pragma once

#include <optional>

#include <QWidget>

#include "app/FrameGuides.h"
#include "app/ViewZoom.h"
#include "render/Composition.h"

namespace quillmark {

/// The display: shows the upper lines of a frame image that drawing code paints on, so that what was drawn
/// survives repaints. At 100 % a frame pixel is a square of DevicePixels() screen pixels, so the widget's
/// size follows from the screen that it is on and from the zoom; what of it the frame does not fill shows the
/// window's background. Where every frame pixel is of the same whole number of screen pixels its edges are
/// sharp; otherwise the picture is smoothed.
class DisplayFrame : public QWidget {
  Q_OBJECT

 public:
  explicit DisplayFrame(QWidget* parent);

  /// The picture to draw on; call Refresh() afterwards.
  [[nodiscard]] FramePicture& Picture() { return picture_; }
  /// Shows at once what was drawn since the last call.
  void Refresh();

  /// 480 or 576 visible lines; the picture is left alone.
  void SetLines(int lines);
  [[nodiscard]] int Lines() const { return lines_; }

  /// Shown over the frame until it is set to nothing; never part of the picture.
  void SetHint(const QString& hint);
  /// What the picture shows, for assistive tools.
  void SetDescription(const QString& description);

  /// Painted over the frame; never part of the picture.
  void SetGuides(const FrameGuides& guides);
  [[nodiscard]] const FrameGuides& Guides() const { return guides_; }

  void SetZoom(const ViewZoom& zoom);
  [[nodiscard]] const ViewZoom& Zoom() const { return zoom_; }
  /// The room of a frame that fits, in logical pixels.
  void FitInto(QSize room);
  /// How high a line is shown, also of a frame that fits.
  [[nodiscard]] double Percent() const;
  /// The widget's size at 100 %, in square pixels.
  [[nodiscard]] QSize WholeSize() const;

  /// The side of a frame pixel on the screen at 100 %: the screen's scale rounded down, at least 1.
  [[nodiscard]] int DevicePixels() const { return devicePixels_; }

  // Places of the widget are logical pixels and stand for their middles.

  /// The frame pixel at a place of the widget, as if it lay outwards of its edges too. `corner` is the
  /// widget's in the window; by default where it is.
  [[nodiscard]] QPoint PixelAt(QPoint place) const;
  [[nodiscard]] QPoint PixelAt(QPoint place, QPoint corner) const;
  /// The same to parts of a frame pixel, and back to the place next to it.
  [[nodiscard]] QPointF FramePlace(QPoint place) const;
  [[nodiscard]] QPoint PlaceOf(QPointF inFrame) const;

 signals:
  /// The frame pixel under the pointer; none when it has left the frame.
  void PointedAt(std::optional<QPoint> pixel);
  /// What was drawn is shown.
  void Refreshed();

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void FitScreen();
  [[nodiscard]] double LinePixels() const;
  /// A frame pixel's sides, in screen pixels.
  [[nodiscard]] QSizeF Sides() const;
  void PaintPicture(QPainter& painter, const QRectF& part) const;
  void PaintHint(QPainter& painter) const;
  void Point(QPoint place);
  /// The logical pixels that frame pixels lie in, even if only with a part.
  [[nodiscard]] QRect Covering(const QRect& framePixels) const;

  FramePicture picture_;
  QString hint_;
  FrameGuides guides_;
  int lines_ = FrameHeight576;
  ViewZoom zoom_;
  QSize room_;
  qreal ratio_ = 1;  ///< screen pixels in a logical one
  int devicePixels_ = 1;
  QSize onScreen_;  ///< the frame's, in screen pixels
};

}  // namespace quillmark
