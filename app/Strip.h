#pragma once

#include <QFrame>
#include <QString>

class QLabel;
class QPushButton;

namespace quillmark {

/// A line above the frame that says something and offers what can be done about it. It covers nothing, takes
/// the focus from nothing and waits for nothing.
class Strip : public QFrame {
  Q_OBJECT

 public:
  /// Hidden until it has something to say.
  Strip(const QString& name, QWidget* parent);

  QPushButton* AddCommand(const QString& name, const QString& caption);
  /// Shows the text and has assistive tools say it; an empty one hides the strip.
  void Say(const QString& text);

 private:
  QLabel* text_;
};

}  // namespace quillmark
