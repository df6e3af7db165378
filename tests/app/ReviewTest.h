#pragma once

#include <QCoreApplication>
#include <QHeaderView>
#include <QLabel>
#include <QSpinBox>
#include <QStatusBar>
#include <QTest>

#include "app/Document.h"
#include "app/MergeFinder.h"
#include "tests/app/ListTest.h"

/// What the tests of the merge's review share.
namespace quillmark::test {

/// Columns of the review.
namespace pair {
inline constexpr int Primary = 0;
inline constexpr int Secondary = 1;
inline constexpr int Picture = 2;
inline constexpr int Together = 3;
inline constexpr int Problems = 4;
inline constexpr int Bytes = 5;
inline constexpr int Covered = 6;
inline constexpr int Clipped = 7;
inline constexpr int Start = 9;
inline constexpr int Duration = 10;
}  // namespace pair

class ReviewTest : public ListTest {
 protected:
  [[nodiscard]] QTableView& Pairs() const { return Control<QTableView>("List_Pairs"); }
  [[nodiscard]] QString Told(int row, int column) const {
    return Pairs().model()->index(row, column).data().toString();
  }
  /// The first stream's subtitles of all rows, in the order of the rows.
  [[nodiscard]] std::vector<int> Rows() const {
    std::vector<int> numbers;
    for (int row = 0; row < Pairs().model()->rowCount(); ++row) {
      numbers.push_back(Told(row, pair::Primary).toInt());
    }
    return numbers;
  }
  [[nodiscard]] int CurrentPair() const { return Pairs().currentIndex().row() + 1; }
  [[nodiscard]] QString Label(const QString& name) const { return Control<QLabel>(name).text(); }
  [[nodiscard]] std::int16_t Offset() { return Window.Content().YOffset(); }
  [[nodiscard]] QString TextOfStatus() const { return Window.statusBar()->currentMessage(); }

  /// Lets the review come to its end; it goes on between events.
  void Review() {
    const auto* finder = Window.findChild<MergeFinder*>();
    QCoreApplication::processEvents();
    while (!finder->IsFinished()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    QCoreApplication::processEvents();
  }
  void ReviewMerge(const Bytes& primary, const Bytes& secondary, const QString& offset = "0") {
    LoadStream(primary);
    Merge(secondary, offset);
    Review();
  }
  void ClickPair(int row) {
    QTest::mouseClick(Pairs().viewport(), Qt::LeftButton, {},
                      Pairs().visualRect(Pairs().model()->index(row - 1, pair::Together)).center());
    QCoreApplication::processEvents();
  }
  void ClickHeading(int column) {
    Pairs().scrollTo(Pairs().model()->index(0, column));
    QHeaderView* header = Pairs().horizontalHeader();
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                      {header->sectionViewportPosition(column) + 4, header->height() / 2});
    QCoreApplication::processEvents();
  }
  void TypeOffset(const QString& lines) {
    auto& box = Control<QSpinBox>("Spin_YOffset");
    box.setFocus();
    box.selectAll();
    QTest::keyClicks(&box, lines);
  }
};

}  // namespace quillmark::test
