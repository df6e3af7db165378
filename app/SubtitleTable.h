#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <QBasicTimer>
#include <QTableView>

namespace quillmark {

/// The table of subtitles: a list of whole rows, worked as the platform's lists are. Up, Down, PageUp,
/// PageDown, Home and End go from row to row, Left and Right move what is seen, a number that is typed is a
/// subtitle to go to, Tab leaves the table.
class SubtitleTable : public QTableView {
  Q_OBJECT

 public:
  explicit SubtitleTable(QWidget* parent);

  /// The rows in sight; the last one before the first where there are none.
  struct RowRange {
    int First = 0;
    int Last = -1;
  };
  [[nodiscard]] RowRange RowsInSight() const;
  /// The leftmost column that is not hidden.
  [[nodiscard]] int FirstColumn() const;
  /// Those that are not hidden, from left to right.
  [[nodiscard]] std::vector<int> ShownColumns() const;
  /// Ascending.
  [[nodiscard]] std::vector<int> SelectedRows() const;
  /// Goes to the next such row after the current one, or from the first one on, or before it; its number.
  std::optional<int> GoToNext(bool forward, const std::function<bool(int row)>& isWanted);
  /// Makes the row the current one, and the only one that is selected.
  void GoToRow(int row);

  void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;
  void keyboardSearch(const QString& search) override;

 signals:
  /// A subtitle's number was typed, or as many of its digits as there are yet.
  void NumberTyped(std::int64_t number);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void timerEvent(QTimerEvent* event) override;
  void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
  QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
  void dataChanged(const QModelIndex& first, const QModelIndex& last, const QList<int>& roles) override;

 private:
  void ScrollSideways(bool forward);

  std::int64_t typed_ = 0;
  QBasicTimer typing_;  // runs while a digit would go on with the number
};

}  // namespace quillmark
