#pragma once

#include <optional>

#include <QImage>
#include <QRect>
#include <QWidget>

namespace quillmark {

/// A small frame with a subtitle at its place in it, and an outline where it stood before.
class TrialFrame : public QWidget {
 public:
  TrialFrame(int frameLines, QWidget* parent);

  /// Nothing is drawn where there is no picture. In frame pixels.
  void Show(const QRect& before, const QRect& after, const QImage& picture);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int lines_;
  QRect before_;
  QRect after_;
  QImage picture_;
};

}  // namespace quillmark
