#include "app/StatusLine.h"

#include <QAccessible>
#include <QLabel>

#include "app/Ui.h"

namespace quillmark {
namespace {

void Announce(QWidget* widget) {
  QAccessibleEvent said(widget, QAccessible::Alert);
  QAccessible::updateAccessibility(&said);
}

}  // namespace

StatusLine::StatusLine(QWidget* parent)
    : QStatusBar(parent),
      preview_(new QLabel(Ui::Tr("Preview, not set"), this)),
      problems_(new QLabel(this)),
      place_(new QLabel(this)) {
  setObjectName(QStringLiteral("StatusBar"));
  preview_->setObjectName(QStringLiteral("Status_Preview"));
  preview_->setAutoFillBackground(true);
  preview_->setBackgroundRole(QPalette::Highlight);
  preview_->setForegroundRole(QPalette::HighlightedText);
  preview_->setMargin(fontMetrics().height() / 6);
  problems_->setObjectName(QStringLiteral("Status_Problems"));
  place_->setObjectName(QStringLiteral("Status_Place"));
  addPermanentWidget(preview_);
  addPermanentWidget(problems_);
  addPermanentWidget(place_);
  preview_->hide();
}

void StatusLine::Tell(const QString& text) {
  isShowingTip_ = false;
  showMessage(text);
  setAccessibleName(text);
  // What is too long for the line. Its text may hold a path, which is no markup.
  setToolTip(text.isEmpty() ? QString() : QStringLiteral("<qt>") + text.toHtmlEscaped());
  if (!text.isEmpty()) {
    Announce(this);
  }
}

void StatusLine::ShowTip(const QString& tip) {
  if (!tip.isEmpty()) {
    told_ = isShowingTip_ ? told_ : currentMessage();
    isShowingTip_ = true;
    showMessage(tip);
  } else if (isShowingTip_) {
    isShowingTip_ = false;
    showMessage(told_);
  }
}

void StatusLine::ShowPlace(const QString& text) {
  if (place_->text() == text) {
    return;
  }
  place_->setText(text);
  if (!announcing_) {
    // A command may pass several subtitles; only the one where it ends is said.
    announcing_ = true;
    QMetaObject::invokeMethod(this, &StatusLine::AnnouncePlace, Qt::QueuedConnection);
  }
}

void StatusLine::ShowProblems(const QString& text) {
  problems_->setText(text);
}

void StatusLine::AnnouncePlace() {
  announcing_ = false;
  if (!place_->text().isEmpty()) {
    Announce(place_);
  }
}

bool StatusLine::ShowPreviewMark(bool isPreview) {
  if (isPreview != preview_->isHidden()) {
    return false;
  }
  preview_->setVisible(isPreview);
  if (isPreview) {
    Announce(preview_);
  }
  return true;
}

}  // namespace quillmark
