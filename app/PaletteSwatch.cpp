#include "app/PaletteSwatch.h"

#include <algorithm>

#include <QKeyEvent>

#include "app/Ui.h"

namespace quillmark {

PaletteSwatch::PaletteSwatch(int entry, Rgb colour, QWidget* parent)
    : ColourSwatch(colour, parent), entry_(entry) {
  setFocusPolicy(Row().constFirst() == this ? Qt::StrongFocus : Qt::ClickFocus);
  SetColour(colour);
}

void PaletteSwatch::SetColour(Rgb colour) {
  ColourSwatch::SetColour(colour, Ui::Tr("Palette entry %1", {Digit()}));
}

QString PaletteSwatch::Digit() const {
  return QString::number(entry_, 16).toUpper();
}

QList<PaletteSwatch*> PaletteSwatch::Row() const {
  QList<PaletteSwatch*> row;
  for (QObject* child : parentWidget()->children()) {
    if (auto* swatch = dynamic_cast<PaletteSwatch*>(child)) {
      row.append(swatch);
    }
  }
  return row;
}

void PaletteSwatch::keyPressEvent(QKeyEvent* event) {
  const QList<PaletteSwatch*> row = Row();
  const auto at = row.indexOf(this);
  const auto last = row.size() - 1;
  const auto move = [&](qsizetype to) { row[std::clamp<qsizetype>(to, 0, last)]->setFocus(); };
  const bool mirrored = isRightToLeft();
  switch (event->key()) {
    case Qt::Key_Left:
      return move(at + (mirrored ? 1 : -1));
    case Qt::Key_Right:
      return move(at + (mirrored ? -1 : 1));
    case Qt::Key_Up:
      return move(at - 1);
    case Qt::Key_Down:
      return move(at + 1);
    case Qt::Key_Home:
      return move(0);
    case Qt::Key_End:
      return move(last);
    default:
      ColourSwatch::keyPressEvent(event);
  }
}

void PaletteSwatch::focusInEvent(QFocusEvent* event) {
  for (PaletteSwatch* swatch : Row()) {
    swatch->setFocusPolicy(swatch == this ? Qt::StrongFocus : Qt::ClickFocus);
  }
  ColourSwatch::focusInEvent(event);
}

}  // namespace quillmark
