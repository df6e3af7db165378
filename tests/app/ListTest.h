#pragma once

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTest>

#include "app/ProblemFinder.h"
#include "app/SubtitleList.h"
#include "tests/app/MergeTest.h"

/// What the tests of the list share.
namespace quillmark::test {

/// Columns of the list, from the left as long as nobody moves them.
namespace column {
inline constexpr int Number = 0;
inline constexpr int Picture = 1;
inline constexpr int Start = 2;
inline constexpr int Codes = 7;
inline constexpr int Problems = 10;
}  // namespace column

class ListTest : public MergeTest {
 protected:
  [[nodiscard]] QTableView& List() const { return Control<QTableView>("List_Subtitles"); }
  [[nodiscard]] QAction& Action(const QString& name) const {
    return *Window.findChild<QAction*>("Action_" + name);
  }
  [[nodiscard]] QString Cell(int row, int column) const {
    return List().model()->index(row, column).data().toString();
  }
  /// Counted as subtitles are: from 1; 0 without a current row.
  [[nodiscard]] int CurrentRow() const { return List().currentIndex().row() + 1; }
  [[nodiscard]] std::vector<int> SelectedRows() const {
    std::vector<int> rows;
    for (int row = 0; row < List().model()->rowCount(); ++row) {
      if (List().selectionModel()->isRowSelected(row)) {
        rows.push_back(row + 1);
      }
    }
    return rows;
  }
  [[nodiscard]] QString Problems() const { return Control<QPlainTextEdit>("Text_Problems").toPlainText(); }
  [[nodiscard]] QString Count() const { return Control<QLabel>("Label_Count").text(); }
  [[nodiscard]] QString ProblemCount() const { return Control<QLabel>("Status_Problems").text(); }

  /// Merges, and goes from the review back to the list.
  void MergeInTheList(const Bytes& secondary) {
    Merge(secondary);
    Action("MergeReview").trigger();
    QCoreApplication::processEvents();
  }

  /// To the list, as the keyboard does.
  void Press(int key, Qt::KeyboardModifiers modifiers = {}) {
    Window.activateWindow();
    QCoreApplication::processEvents();
    List().setFocus();
    QTest::keyClick(&List(), static_cast<Qt::Key>(key), modifiers);
    QCoreApplication::processEvents();
  }
  void ClickRow(int number, Qt::KeyboardModifiers modifiers = {}) {
    const QRect cell = List().visualRect(List().model()->index(number - 1, column::Start));
    QTest::mouseClick(List().viewport(), Qt::LeftButton, modifiers, cell.center());
    QCoreApplication::processEvents();
  }
  void Type(const QString& filter) {
    auto& field = Control<QLineEdit>("Text_Filter");
    field.clear();
    QTest::keyClicks(&field, filter);
    QCoreApplication::processEvents();
  }
  /// Lets the search for problems come to its end; it goes on between events.
  void FindProblems() {
    const auto* finder = Window.findChild<ProblemFinder*>();
    while (!finder->IsFinished()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
  }
  /// What is drawn of a cell now.
  [[nodiscard]] QImage Drawn(int row, int column) const {
    List().viewport()->repaint();
    const QRect cell = List().visualRect(List().model()->index(row, column));
    return List().viewport()->grab(cell).toImage();
  }
  [[nodiscard]] bool Shows(int row, int column, const QColor& colour) const {
    const QImage cell = Drawn(row, column);
    for (int y = 0; y < cell.height(); ++y) {
      for (int x = 0; x < cell.width(); ++x) {
        if (cell.pixelColor(x, y) == colour) {
          return true;
        }
      }
    }
    return false;
  }
};

/// `count` subtitles of FourCodes() at whole seconds, from 0 on, each shown for about a second.
inline Bytes ManySubtitles(int count) {
  Bytes stream;
  for (int i = 0; i < count; ++i) {
    const Bytes packet = FourCodes(PacketBuilder().Time(i * Second).Delay(80));
    stream.insert(stream.end(), packet.begin(), packet.end());
  }
  return stream;
}

}  // namespace quillmark::test
