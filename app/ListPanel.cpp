#include "app/ListPanel.h"

#include <QSignalBlocker>
#include <QTabBar>
#include <QVBoxLayout>

#include "app/ReviewPanel.h"
#include "app/SubtitleList.h"
#include "app/SubtitleTable.h"
#include "app/Ui.h"

namespace quillmark {

ListPanel::ListPanel(SubtitleList& list, ReviewPanel& review, QWidget* parent)
    : QWidget(parent), list_(list), review_(review), tabs_(new QTabBar(this)) {
  setObjectName(QStringLiteral("ListPanel"));
  tabs_->setObjectName(QStringLiteral("Tabs_List"));
  tabs_->setAccessibleName(Ui::Tr("List or merge review"));
  tabs_->addTab(Ui::Tr("Subtitles"));
  tabs_->addTab(Ui::Tr("Merge review"));
  tabs_->setExpanding(false);
  tabs_->hide();
  review_.hide();
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(fontMetrics().height() / 3);
  column->addWidget(tabs_);
  column->addWidget(&list_, 1);
  column->addWidget(&review_, 1);
  connect(tabs_, &QTabBar::currentChanged, this, [this](int tab) { emit ReviewChosen(tab == 1); });
}

void ListPanel::Arrange(bool hasList, bool hasReview, bool showsReview) {
  const QWidget* const focus = focusWidget();
  const bool shows = hasReview && showsReview;
  const bool takesFocus = shows != showsReview_ && focus != nullptr && focus->hasFocus() && focus != tabs_;
  showsReview_ = shows;
  {
    const QSignalBlocker blocked(tabs_);
    tabs_->setCurrentIndex(shows ? 1 : 0);
  }
  tabs_->setVisible(hasList && hasReview);
  list_.setVisible(!shows);
  review_.setVisible(shows);
  if (takesFocus) {
    (shows ? review_.Table() : list_.Table()).setFocus();
  }
}

QList<QWidget*> ListPanel::TabOrder() const {
  return QList<QWidget*>{tabs_} + list_.TabOrder() + review_.TabOrder();
}

}  // namespace quillmark
