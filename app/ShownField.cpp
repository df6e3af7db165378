#include "app/ShownField.h"

#include <QPlainTextEdit>

namespace quillmark {

ShownField::ShownField(const QString& widest, QWidget* parent) : QLineEdit(parent), widest_(widest) {
  setReadOnly(true);
  setFrame(false);
  setFocusPolicy(Qt::ClickFocus);
  QPalette ground;
  ground.setColor(QPalette::Base, Qt::transparent);
  setPalette(ground);
  if (!widest.isEmpty()) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  }
}

QSize ShownField::sizeHint() const {
  const QSize usual = QLineEdit::sizeHint();
  if (widest_.isEmpty()) {
    return usual;
  }
  // One character more: the field keeps some pixels at each side for itself.
  return {fontMetrics().horizontalAdvance(widest_ + u'0'), usual.height()};
}

QSize ShownField::minimumSizeHint() const {
  return widest_.isEmpty() ? QLineEdit::minimumSizeHint() : sizeHint();
}

void SetPlaceholder(QPlainTextEdit& field, const QString& text) {
  if (text != field.placeholderText()) {
    field.setPlaceholderText(text);
    field.viewport()->update();
  }
}

}  // namespace quillmark
