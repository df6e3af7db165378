#include "app/CodeList.h"

#include <QWheelEvent>

namespace quillmark {

CodeList::CodeList(QWidget* parent) : QComboBox(parent) {
  setFocusPolicy(Qt::StrongFocus);
}

void CodeList::wheelEvent(QWheelEvent* event) {
  if (hasFocus()) {
    QComboBox::wheelEvent(event);
  } else {
    event->ignore();
  }
}

}  // namespace quillmark
