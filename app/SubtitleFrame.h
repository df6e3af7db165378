#pragma once

#include <QImage>
#include <QRect>
#include <QWidget>

namespace quillmark {

/// A frame, as large as there is room for, with a subtitle at its place in it.
class SubtitleFrame : public QWidget {
 public:
  SubtitleFrame(int frameLines, QWidget* parent);

  void SetLines(int frameLines);
  /// Nothing is drawn where there is no picture. `other` is where the subtitle stands elsewhere, or stood
  /// before: where it is another area both are outlined, that one dotted. Areas are in frame pixels.
  void Show(const QRect& area, const QImage& picture, const QRect& other = {});
  [[nodiscard]] const QImage& Picture() const { return picture_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int lines_;
  QRect area_;
  QRect other_;
  QImage picture_;
};

}  // namespace quillmark
