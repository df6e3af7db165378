#include "app/Strip.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

namespace quillmark {

Strip::Strip(const QString& name, QWidget* parent) : QFrame(parent), text_(new QLabel(this)) {
  setObjectName(name);
  setFrameShape(QFrame::StyledPanel);
  // The colours that every desktop has for remarks.
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::ToolTipBase);
  text_->setForegroundRole(QPalette::ToolTipText);
  // What is said may hold a path, which is no markup.
  text_->setTextFormat(Qt::PlainText);
  text_->setWordWrap(true);
  auto* row = new QHBoxLayout(this);
  row->addWidget(text_, 1);
  hide();
}

QPushButton* Strip::AddCommand(const QString& name, const QString& caption) {
  auto* command = new QPushButton(caption, this);
  command->setObjectName(name);
  command->setAutoDefault(true);
  layout()->addWidget(command);
  return command;
}

void Strip::Say(const QString& text) {
  if (text == text_->text() && text.isEmpty() == isHidden()) {
    return;
  }
  text_->setText(text);
  setAccessibleName(text);
  setVisible(!text.isEmpty());
  if (!text.isEmpty()) {
    QAccessibleEvent said(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&said);
  }
}

}  // namespace quillmark
