#pragma once

#include <QPushButton>

namespace quillmark {

/// One of two buttons that go opposite ways. When it is disabled while it has the focus, as at the last
/// subtitle, its partner gets the focus if that is enabled once the command is done; otherwise the next
/// control does.
class StepButton : public QPushButton {
 public:
  using QPushButton::QPushButton;

  void SetPartner(QWidget* partner) { partner_ = partner; }

 protected:
  bool event(QEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  void HandFocusOver();

  QWidget* partner_ = nullptr;
  bool tabbing_ = false;
};

}  // namespace quillmark
