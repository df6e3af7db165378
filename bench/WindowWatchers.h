#pragma once

#include <cstdlib>

#include <QEvent>
#include <QObject>
#include <QWidget>
#include <QWindow>

/// What a benchmark of the window watches it with.
namespace quillmark::bench {

/// Closes each dialog as soon as it is shown.
class DialogCloser : public QObject {
 public:
  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::Show && object->inherits("QDialog")) {
      QMetaObject::invokeMethod(object, "accept", Qt::QueuedConnection);
    }
    return false;
  }
};

/// Ends the process when a window was painted for the first time, all of its controls included.
class EndAfterFirstPaint : public QObject {
 public:
  explicit EndAfterFirstPaint(QWidget* window) {
    window->winId();  // makes the system's window, to which the expose event goes
    window->windowHandle()->installEventFilter(this);
  }

  bool eventFilter(QObject* object, QEvent* event) override {
    if (event->type() == QEvent::Expose) {
      object->event(event);
      std::_Exit(EXIT_SUCCESS);
    }
    return false;
  }
};

}  // namespace quillmark::bench
