#pragma once

#include <QAbstractButton>

#include "palette/Colour.h"

namespace quillmark {

/// One palette entry as a clickable square of its colour, which bears the entry's digit as the colour lists
/// have it. The swatches of one parent are one stop of the Tab key: the arrow keys, Home and End move among
/// them, Space and Return press one.
class PaletteSwatch : public QAbstractButton {
 public:
  PaletteSwatch(int entry, Rgb colour, QWidget* parent);

  [[nodiscard]] Rgb Colour() const { return colour_; }
  void SetColour(Rgb colour);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  /// All swatches of the parent, this one included, in their order.
  [[nodiscard]] QList<PaletteSwatch*> Row() const;

  int entry_;
  Rgb colour_;
};

/// Black or white, whichever is read better on `colour`.
[[nodiscard]] Rgb DigitColourOn(Rgb colour);

}  // namespace quillmark
