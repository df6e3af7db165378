#pragma once

#include "app/ColourSwatch.h"

namespace quillmark {

/// One palette entry as a clickable square of its colour, which bears the entry's digit as the colour lists
/// have it. The swatches of one parent are one stop of the Tab key: the arrow keys, Home and End move among
/// them, Space and Return press one.
class PaletteSwatch : public ColourSwatch {
 public:
  PaletteSwatch(int entry, Rgb colour, QWidget* parent);

  void SetColour(Rgb colour);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  [[nodiscard]] QString Digit() const override;

 private:
  /// All swatches of the parent, this one included, in their order.
  [[nodiscard]] QList<PaletteSwatch*> Row() const;

  int entry_;
};

}  // namespace quillmark
