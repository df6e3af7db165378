#include "app/StepButton.h"

#include <utility>

#include <QKeyEvent>

namespace quillmark {
namespace {

bool IsTab(const QEvent& event) {
  if (event.type() != QEvent::KeyPress) {
    return false;
  }
  const int key = static_cast<const QKeyEvent&>(event).key();
  return key == Qt::Key_Tab || key == Qt::Key_Backtab;
}

}  // namespace

bool StepButton::event(QEvent* event) {
  const bool before = std::exchange(tabbing_, IsTab(*event));
  const bool handled = QPushButton::event(event);
  tabbing_ = before;
  return handled;
}

bool StepButton::focusNextPrevChild(bool next) {
  if (tabbing_) {
    return QPushButton::focusNextPrevChild(next);
  }
  // Qt moves the focus away before it disables the button. The partner may be enabled only later in the same
  // command.
  QMetaObject::invokeMethod(
      this, [this] { HandFocusOver(); }, Qt::QueuedConnection);
  return true;
}

void StepButton::HandFocusOver() {
  // While a message is shown, the window keeps the focus for later.
  if (window()->focusWidget() != this || (isEnabled() && isVisible())) {
    return;
  }
  if (partner_ != nullptr && partner_->isEnabled()) {
    partner_->setFocus(Qt::OtherFocusReason);
  } else {
    QPushButton::focusNextPrevChild(true);
  }
}

}  // namespace quillmark
