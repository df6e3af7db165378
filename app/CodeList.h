#pragma once

#include <QComboBox>

namespace quillmark {

/// A list of colours or opacities. The wheel changes it only when it has the focus; otherwise it scrolls what
/// the list stands in.
class CodeList : public QComboBox {
  Q_OBJECT

 public:
  explicit CodeList(QWidget* parent);

 protected:
  void wheelEvent(QWheelEvent* event) override;
};

}  // namespace quillmark
