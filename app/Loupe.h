#pragma once

#include <QPoint>
#include <QWidget>

namespace quillmark {

class DisplayFrame;

/// The pixels around one of the frame's, magnified, with what that one is. It stands in a corner over the
/// frame's view, away from what it looks at. While it has the focus the arrow keys go from pixel to pixel
/// (with Shift ten at once); Esc closes it.
class Loupe : public QWidget {
  Q_OBJECT

 public:
  /// `view` is what the frame is seen in, and the loupe's parent.
  Loupe(DisplayFrame* frame, QWidget* view);

  [[nodiscard]] QPoint Pixel() const { return pixel_; }
  /// `facts` stands below the pixels.
  void LookAt(QPoint pixel, const QString& facts);

 signals:
  /// A key asks for another pixel, which the frame has.
  void Asked(QPoint pixel);
  void Closed();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Place();

  DisplayFrame* frame_;
  QPoint pixel_;
  QString facts_;
};

}  // namespace quillmark
