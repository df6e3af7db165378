#pragma once

#include <QLineEdit>

class QPlainTextEdit;

namespace quillmark {

/// A field that the program fills: readable and copyable, not editable, and without the looks of a field that
/// is. Tab passes it by, a click enters it.
class ShownField : public QLineEdit {
 public:
  /// As wide as `widest` needs; as wide as there is room when that is empty.
  ShownField(const QString& widest, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 private:
  QString widest_;
};

/// What stands in a field while it has no text, and on the screen at once: Qt leaves another such text there
/// until the field is painted for some other reason.
void SetPlaceholder(QPlainTextEdit& field, const QString& text);

}  // namespace quillmark
