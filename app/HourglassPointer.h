#pragma once

#include <QCursor>
#include <QGuiApplication>

namespace quillmark {

/// Shows the hourglass pointer while it lives, or until Release().
class HourglassPointer {
 public:
  HourglassPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
  ~HourglassPointer() { Release(); }
  HourglassPointer(const HourglassPointer&) = delete;
  HourglassPointer& operator=(const HourglassPointer&) = delete;

  void Release() {
    if (shown_) {
      QGuiApplication::restoreOverrideCursor();
      shown_ = false;
    }
  }

 private:
  bool shown_ = true;
};

}  // namespace quillmark
