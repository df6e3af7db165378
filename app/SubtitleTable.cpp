#include "app/SubtitleTable.h"

#include <algorithm>
#include <chrono>
#include <limits>

#include <QHeaderView>
#include <QKeyEvent>
#include <QScrollBar>
#include <QTimerEvent>

#include "app/SubtitleDelegate.h"

namespace quillmark {
namespace {

/// How long after a digit the next one belongs to the same number.
constexpr std::chrono::milliseconds BetweenDigits(1500);

/// What keys of the whole window do elsewhere, and what a list does with them.
bool IsKeyOfTheList(const QKeyEvent& event) {
  return event.modifiers() == Qt::NoModifier &&
         (event.key() == Qt::Key_PageUp || event.key() == Qt::Key_PageDown);
}

}  // namespace

SubtitleTable::SubtitleTable(QWidget* parent) : QTableView(parent) {
  setSelectionBehavior(SelectRows);
  setSelectionMode(ExtendedSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setShowGrid(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  setCornerButtonEnabled(false);
  setHorizontalScrollMode(ScrollPerPixel);
  // All rows are of one height, so that none is asked for its own.
  QHeaderView* rows = verticalHeader();
  rows->setMinimumSectionSize(SubtitleDelegate::RowHeight);
  rows->setDefaultSectionSize(SubtitleDelegate::RowHeight);
  rows->setSectionResizeMode(QHeaderView::Fixed);
  rows->hide();
  QHeaderView* columns = horizontalHeader();
  columns->setSectionsMovable(true);
  columns->setStretchLastSection(true);
  columns->setHighlightSections(false);
  // A column that is to fit its contents fits those in sight.
  columns->setResizeContentsPrecision(0);
}

SubtitleTable::RowRange SubtitleTable::RowsInSight() const {
  const int rows = model() == nullptr ? 0 : model()->rowCount();
  const int first = rowAt(0);
  if (rows == 0 || first < 0) {
    return {};
  }
  const int last = rowAt(viewport()->height() - 1);
  return {.First = first, .Last = last < 0 ? rows - 1 : last};
}

int SubtitleTable::FirstColumn() const {
  const std::vector<int> shown = ShownColumns();
  return shown.empty() ? 0 : shown.front();
}

std::vector<int> SubtitleTable::ShownColumns() const {
  std::vector<int> shown;
  const QHeaderView* columns = horizontalHeader();
  for (int place = 0; place < columns->count(); ++place) {
    if (const int column = columns->logicalIndex(place); !columns->isSectionHidden(column)) {
      shown.push_back(column);
    }
  }
  return shown;
}

std::vector<int> SubtitleTable::SelectedRows() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      rows.push_back(row);
    }
  }
  std::ranges::sort(rows);
  return rows;
}

std::optional<int> SubtitleTable::GoToNext(bool forward, const std::function<bool(int row)>& isWanted) {
  const int rows = model()->rowCount();
  const QModelIndex current = currentIndex();
  const int step = forward ? 1 : -1;
  for (int row = current.isValid() ? current.row() + step : 0; row >= 0 && row < rows; row += step) {
    if (isWanted(row)) {
      GoToRow(row);
      return row;
    }
  }
  return std::nullopt;
}

void SubtitleTable::GoToRow(int row) {
  setCurrentIndex(model()->index(row, FirstColumn()));
}

void SubtitleTable::scrollTo(const QModelIndex& index, ScrollHint hint) {
  // Rows are what one goes to; the columns in sight stay.
  const int sideways = horizontalScrollBar()->value();
  QTableView::scrollTo(index, hint);
  horizontalScrollBar()->setValue(sideways);
}

bool SubtitleTable::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && IsKeyOfTheList(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QTableView::event(event);
}

void SubtitleTable::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Copy)) {
    event->ignore();  // it is a command of the window, not one cell's text
    return;
  }
  QTableView::keyPressEvent(event);
}

void SubtitleTable::keyboardSearch(const QString& search) {
  for (const QChar digit : search) {
    if (!digit.isDigit()) {
      typing_.stop();
      continue;
    }
    const std::int64_t before = typing_.isActive() ? typed_ : 0;
    typed_ =
        std::min<std::int64_t>(before * 10 + digit.digitValue(), std::numeric_limits<std::int32_t>::max());
    typing_.start(static_cast<int>(BetweenDigits.count()), this);
    emit NumberTyped(typed_);
  }
}

void SubtitleTable::timerEvent(QTimerEvent* event) {
  if (event->timerId() == typing_.timerId()) {
    typing_.stop();
    return;
  }
  QTableView::timerEvent(event);
}

void SubtitleTable::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QTableView::currentChanged(current, previous);
  // Rows are what one goes to; assistive tools hear them told in the first column.
  if (current.isValid() && current.column() != FirstColumn()) {
    selectionModel()->setCurrentIndex(current.siblingAtColumn(FirstColumn()), QItemSelectionModel::NoUpdate);
  }
}

QModelIndex SubtitleTable::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
  const int rows = model() == nullptr ? 0 : model()->rowCount();
  if (rows == 0) {
    return {};
  }
  switch (action) {
    case MoveHome:
      return model()->index(0, FirstColumn());
    case MoveEnd:
      return model()->index(rows - 1, FirstColumn());
    case MoveLeft:
    case MoveRight:
      ScrollSideways((action == MoveRight) != isRightToLeft());
      return currentIndex();
    default:
      break;
  }
  return QTableView::moveCursor(action, modifiers);
}

void SubtitleTable::ScrollSideways(bool forward) {
  horizontalScrollBar()->triggerAction(forward ? QAbstractSlider::SliderSingleStepAdd
                                               : QAbstractSlider::SliderSingleStepSub);
}

void SubtitleTable::dataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) {
  const RowRange seen = RowsInSight();
  if (first.row() <= seen.Last && last.row() >= seen.First) {
    QTableView::dataChanged(first, last, roles);
  }
}

}  // namespace quillmark
