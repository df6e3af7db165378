#pragma once

#include <QCoreApplication>
#include <QCursor>
#include <QWidget>

namespace quillmark::test {

/// The system's pointer; beside all windows again when the test ends, for it stays where it was left.
class Pointer {
 public:
  Pointer() = default;
  ~Pointer() {
    QCursor::setPos(1919, 1079);  // the first screen's corner, which no window is as large as
    QCoreApplication::processEvents();
  }
  Pointer(const Pointer&) = delete;
  Pointer& operator=(const Pointer&) = delete;

  void GoTo(const QWidget& widget, QPoint place) const {
    QCursor::setPos(widget.mapToGlobal(place));
    QCoreApplication::processEvents();
  }
};

}  // namespace quillmark::test
