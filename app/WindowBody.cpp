#include "app/WindowBody.h"

#include <algorithm>

#include <QApplication>
#include <QEvent>
#include <QGridLayout>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStyle>
#include <QVBoxLayout>

#include "app/DisplayFrame.h"
#include "app/FrameView.h"

namespace quillmark {
namespace {

QVBoxLayout* MakeColumn(QWidget* parent, int gap) {
  auto* column = new QVBoxLayout(parent);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(gap);
  return column;
}

/// Moves a widget to another parent, by `place`; the focus inside it stays where it is.
template <class Place>
void KeepingFocus(const QWidget& moved, const Place& place) {
  QWidget* focus = QApplication::focusWidget();
  const bool hadFocus = focus != nullptr && (focus == &moved || moved.isAncestorOf(focus));
  place();
  if (hadFocus) {
    focus->setFocus();
  }
}

int BarWidth(const QWidget& area) {
  return area.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &area);
}

}  // namespace

CommandView::CommandView(QWidget* commands, QWidget* parent) : QScrollArea(parent) {
  setFrameShape(NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWidgetResizable(true);
  setWidget(commands);
  setFocusPolicy(Qt::NoFocus);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* /*before*/, QWidget* now) {
    if (now != nullptr && widget()->isAncestorOf(now)) {
      ensureWidgetVisible(now);
    }
  });
}

QSize CommandView::minimumSizeHint() const {
  return {widget()->minimumSizeHint().width() + BarWidth(*this), 10 * fontMetrics().height()};
}

WindowBody::WindowBody(DisplayFrame* picture, QWidget* parent)
    : QWidget(parent),
      left_(new QWidget(this)),
      frameColumn_(MakeColumn(left_, Gap())),
      frame_(new FrameView(picture, left_)),
      commands_(new QWidget),
      commandColumn_(MakeColumn(commands_, Gap())),
      right_(new QSplitter(Qt::Horizontal, this)),
      commandView_(new CommandView(commands_, right_)),
      groups_(new QWidget(commands_)) {
  right_->setObjectName(QStringLiteral("Splitter_List"));
  right_->setChildrenCollapsible(false);
  // At once, for a picture that is zoomed at a place of it is moved by what it is then seen in.
  connect(frame_, &FrameView::PictureResized, this, &WindowBody::Arrange);
  frameColumn_->addWidget(frame_, 1);
  frameColumn_->addStretch();
}

int WindowBody::Gap() const {
  return fontMetrics().height() / 3;
}

void WindowBody::SetGroups(QWidget* wide, QWidget* second, QWidget* third) {
  group_ = {wide, second, third};
  commandColumn_->addStretch();
  PlaceGroups(false);
}

void WindowBody::PlaceGroups(bool belowFrame) {
  belowFrame_ = belowFrame;
  delete groups_->layout();
  auto* grid = new QGridLayout(groups_);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(Gap());
  KeepingFocus(*groups_, [&] {
    if (belowFrame) {
      for (int i = 0; i < 3; ++i) {
        grid->addWidget(group_[i], 0, i);
      }
      grid->setColumnStretch(0, 1);
      frameColumn_->insertWidget(frameColumn_->indexOf(frame_) + 1, groups_);
    } else {
      grid->addWidget(group_[0], 0, 0, 1, 2);
      grid->addWidget(group_[1], 1, 0);
      grid->addWidget(group_[2], 1, 1);
      grid->setColumnStretch(1, 1);
      commandColumn_->insertWidget(commandColumn_->count() - 1, groups_);
    }
    groups_->show();
  });
}

void WindowBody::SetList(QWidget* list, QWidget* foldable) {
  list_ = list;
  foldable_ = foldable;
  PlaceList(false);
}

void WindowBody::PlaceList(bool apart) {
  const bool isShown = !list_->isHidden();
  splitterState_ = SplitterState();
  listIsApart_ = apart;
  KeepingFocus(*list_, [&] {
    if (apart) {
      right_->addWidget(list_);
      right_->setStretchFactor(1, 1);
      right_->restoreState(splitterState_);
    } else {
      commandColumn_->insertWidget(ListPlace, list_, 1);
    }
    list_->setVisible(isShown);
  });
}

void WindowBody::ShowList(bool shown) {
  list_->setVisible(shown);
  Arrange();
}

void WindowBody::Fold(bool folds) {
  if (folds != folds_) {
    folds_ = folds;
    Arrange();
  }
}

QByteArray WindowBody::SplitterState() const {
  return listIsApart_ ? right_->saveState() : splitterState_;
}

void WindowBody::RestoreSplitter(const QByteArray& state) {
  splitterState_ = state;
  if (listIsApart_) {
    right_->restoreState(state);
  }
}

QSize WindowBody::RowOfGroups() const {
  QSize row(2 * Gap(), 0);
  for (const QWidget* group : group_) {
    const QSize size = group->sizeHint();
    row = {row.width() + size.width(), std::max(row.height(), size.height())};
  }
  return row;
}

int WindowBody::CommandWidth() const {
  int width = 0;
  for (int i = 0; i < commandColumn_->count(); ++i) {
    QLayoutItem* item = commandColumn_->itemAt(i);
    if (item->widget() != groups_) {
      width = std::max(width, item->minimumSize().width());
    }
  }
  return width + BarWidth(*this);
}

int WindowBody::HeightAboveFrame() const {
  int height = 0;
  for (int i = 0; i < frameColumn_->indexOf(frame_); ++i) {
    QLayoutItem* item = frameColumn_->itemAt(i);
    if (!item->isEmpty()) {
      const int width = frame_->WholeSize().width();
      height += (item->hasHeightForWidth() ? item->heightForWidth(width) : item->sizeHint().height()) + Gap();
    }
  }
  return height;
}

void WindowBody::Arrange() {
  if (arranges_) {
    return;
  }
  const QScopedValueRollback<bool> arranges(arranges_, true);
  if (list_ != nullptr) {
    if (const bool apart = width() >= ListColumnWidth; apart != listIsApart_) {
      PlaceList(apart);
    }
    foldable_->setVisible(!folds_ || listIsApart_ || list_->isHidden());
  }
  const QRect inside = rect().adjusted(Gap(), Gap(), -Gap(), -Gap());
  const QSize whole = frame_->WholeSize();
  const QSize row = RowOfGroups();
  int room = inside.height() - HeightAboveFrame();
  const bool belowFrame = room >= whole.height() + Gap() + row.height() &&
                          inside.width() >= std::max(whole.width(), row.width()) + Gap() + CommandWidth();
  if (belowFrame != belowFrame_) {
    PlaceGroups(belowFrame);
  }
  const int most = inside.width() - Gap() - right_->minimumSizeHint().width();
  room -= belowFrame ? Gap() + row.height() : 0;
  frame_->FitInto({most, room});
  // A scroll bar along one side takes its width from the other.
  const QSize frame = frame_->sizeHint();
  const int height = frame.height() + (most < frame.width() ? BarWidth(*frame_) : 0);
  const int width = frame.width() + (room < height ? BarWidth(*frame_) : 0);
  frame_->setMaximumHeight(height);
  const int leftWidth = std::min(std::max(width, belowFrame ? row.width() : 0), most);
  const QRect left(inside.topLeft(), QSize(leftWidth, inside.height()));
  const QRect right = inside.adjusted(leftWidth + Gap(), 0, 0, 0);
  left_->setGeometry(QStyle::visualRect(layoutDirection(), inside, left));
  right_->setGeometry(QStyle::visualRect(layoutDirection(), inside, right));
  frameColumn_->activate();
}

bool WindowBody::event(QEvent* event) {
  if (event->type() == QEvent::LayoutRequest) {
    Arrange();
    updateGeometry();
  }
  return QWidget::event(event);
}

void WindowBody::resizeEvent(QResizeEvent* /*event*/) {
  Arrange();
}

QSize WindowBody::sizeHint() const {
  const QSize frame = frame_->WholeSize();
  const QSize row = RowOfGroups();
  const QSize commands = commands_->sizeHint();
  return {
      std::max(frame.width(), row.width()) + std::max(commands.width(), CommandWidth()) + 3 * Gap(),
      std::max(HeightAboveFrame() + frame.height() + Gap() + row.height(), commands.height()) + 2 * Gap()};
}

QSize WindowBody::minimumSizeHint() const {
  const QSize frame = frame_->minimumSizeHint();
  const QSize commands = right_->minimumSizeHint();
  return {frame.width() + commands.width() + 3 * Gap(),
          std::max(frame.height(), commands.height()) + 2 * Gap()};
}

}  // namespace quillmark
