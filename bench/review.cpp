// The review of a long merge in its panel: how long the window's events wait at most while it is looked
// through, when it is sorted, and when a split merge is chosen, by the processor's time.

#include <algorithm>
#include <ctime>
#include <utility>

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QTableView>
#include <benchmark/benchmark.h>

#include "app/Document.h"
#include "app/MergeFinder.h"
#include "app/PairModel.h"
#include "app/ReviewPanel.h"
#include "bench/TwoFilms.h"

namespace {

using namespace quillmark;

double Milliseconds() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// Keeps the longest time that one event took, those that it sends included.
class TimedApplication : public QApplication {
 public:
  using QApplication::QApplication;

  bool notify(QObject* receiver, QEvent* event) override {
    if (isTimed_) {
      return QApplication::notify(receiver, event);
    }
    isTimed_ = true;
    const double start = Milliseconds();
    const bool done = QApplication::notify(receiver, event);
    Longest = std::max(Longest, Milliseconds() - start);
    isTimed_ = false;
    return done;
  }

  double Longest = 0;

 private:
  bool isTimed_ = false;
};

TimedApplication& App() {
  return *static_cast<TimedApplication*>(QCoreApplication::instance());
}

/// The panel beside a document that merges two films.
class Reviewed {
 public:
  explicit Reviewed(int subtitles) : Panel(Opened, nullptr) {
    TwoFilms films(subtitles);
    Opened.BeginLoading();
    Opened.SetNumber(1);
    Opened.Open(std::move(films.Primary));
    Opened.BeginMerging(std::move(films.Secondary));
    QObject::connect(&Panel, &ReviewPanel::TimesChosen, &Opened, &Document::SetTimesOfMerge);
    Panel.resize(500, 400);
    Panel.show();
  }

  void LookThrough() {
    QCoreApplication::processEvents();
    while (!Panel.findChild<MergeFinder*>()->IsFinished()) {
      QCoreApplication::processEvents();
    }
    QCoreApplication::processEvents();
  }

  Document Opened;
  ReviewPanel Panel;
};

/// The longest event while pairs are looked through, and while a split merge is planned and looked through.
void LookThroughInTheWindow(benchmark::State& state) {
  Reviewed reviewed(static_cast<int>(state.range(0)));
  const bool splits = state.range(1) != 0;
  for ([[maybe_unused]] auto _ : state) {
    App().Longest = 0;
    if (splits) {
      reviewed.Panel.findChild<QAbstractButton*>(QStringLiteral("Option_Split"))->click();
    }
    reviewed.LookThrough();
  }
  state.counters["longest_event_ms"] = App().Longest;
  state.counters["rows"] = reviewed.Panel.findChild<PairModel*>()->rowCount();
}
BENCHMARK(LookThroughInTheWindow)
    ->ArgsProduct({{100000}, {0, 1}})
    ->ArgNames({"subtitles", "split"})
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);

/// A click on a heading: the rows sorted and shown.
void SortTheReview(benchmark::State& state) {
  Reviewed reviewed(static_cast<int>(state.range(0)));
  reviewed.LookThrough();
  QHeaderView* header = reviewed.Panel.findChild<QTableView*>()->horizontalHeader();
  auto order = Qt::AscendingOrder;
  for ([[maybe_unused]] auto _ : state) {
    order = order == Qt::AscendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder;
    header->setSortIndicator(PairModel::Bytes, order);
    QCoreApplication::processEvents();
  }
}
BENCHMARK(SortTheReview)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  TimedApplication application(argc, argv);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return EXIT_SUCCESS;
}
