#pragma once

#include <QAbstractButton>
#include <QString>

#include "palette/Colour.h"

namespace quillmark {

/// One palette entry as a clickable square of its colour. The 16 swatches hold the program's palette.
class PaletteSwatch : public QAbstractButton {
 public:
  PaletteSwatch(int entry, Rgb colour, QWidget* parent);

  [[nodiscard]] Rgb Colour() const { return colour_; }
  void SetColour(Rgb colour);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  int entry_;
  Rgb colour_;
};

}  // namespace quillmark
