#pragma once

#include <QWidget>

#include "render/Composition.h"

namespace quillmark {

/// The display: shows the upper lines of a frame image that drawing code paints on, so that what was drawn
/// survives repaints. One picture pixel is one widget pixel; a high-DPI screen scales the picture whole.
class DisplayFrame : public QWidget {
 public:
  explicit DisplayFrame(QWidget* parent);

  /// The picture to draw on; call Refresh() afterwards.
  [[nodiscard]] FramePicture& Picture() { return picture_; }
  /// Shows at once what was drawn since the last call.
  void Refresh();

  /// 480 or 576 visible lines; the picture is left alone.
  void SetLines(int lines);
  [[nodiscard]] int Lines() const { return height(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  FramePicture picture_;
};

}  // namespace quillmark
