#pragma once

#include <QAbstractButton>

#include "palette/Colour.h"

namespace quillmark {

/// A colour as a clickable square, with an edge that is seen on every ground. Space and Return press it.
class ColourSwatch : public QAbstractButton {
 public:
  ColourSwatch(Rgb colour, QWidget* parent);

  [[nodiscard]] Rgb Colour() const { return colour_; }
  /// `name` is what assistive tools say before the colour's name.
  void SetColour(Rgb colour, const QString& name);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  /// Written on the square.
  [[nodiscard]] virtual QString Digit() const { return {}; }

 private:
  Rgb colour_;
};

/// Black or white, whichever is read better on `colour`.
[[nodiscard]] Rgb DigitColourOn(Rgb colour);

}  // namespace quillmark
