#pragma once

#include <QWidget>

#include "render/Composition.h"

namespace quillmark {

/// The display: shows the upper lines of a frame image that drawing code paints on, so that what was drawn
/// survives repaints. A frame pixel is a square of DevicePixels() screen pixels, so the widget's size follows
/// from the screen that it is on; what of it the frame does not fill shows the window's background.
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

  /// The side of a frame pixel on the screen: the screen's scale rounded down, at least 1.
  [[nodiscard]] int DevicePixels() const { return devicePixels_; }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void FitScreen();
  void PaintHint(QPainter& painter) const;
  /// The logical pixels that frame pixels lie in, even if only with a part.
  [[nodiscard]] QRect Covering(const QRect& framePixels) const;

  FramePicture picture_;
  QString hint_;
  int lines_ = FrameHeight576;
  int devicePixels_ = 1;
  qreal pixelSide_ = 1;  ///< of a frame pixel, in logical pixels
};

}  // namespace quillmark
