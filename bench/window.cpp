// The window as its user feels it. Each figure stands beside one for plain Qt doing the least that the same
// task needs, taken in the same run.

#include <cstdlib>
#include <cstring>
#include <vector>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QFile>
#include <QGridLayout>
#include <QGroupBox>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QProcess>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QWindow>
#include <benchmark/benchmark.h>

#include "app/frmTest.h"
#include "bench/Film.h"
#include "bench/WindowWatchers.h"

namespace {

using quillmark::frmTest;
using quillmark::bench::DialogCloser;
using quillmark::bench::EndAfterFirstPaint;

int StartQuillmark() {
  frmTest window;
  const EndAfterFirstPaint end(&window);
  window.show();
  window.OpenCommandLine(QStringLiteral(QUILLMARK_SAMPLES "/demo.sup"));
  return QApplication::exec();
}

/// A window with 60 controls of the usual kinds, in six groups, each with a caption of its own.
int StartPlainWindow() {
  const QStringList captions = {QStringLiteral("Background"),   QStringLiteral("Duration (sec)"),
                                QStringLiteral("Jump, Query"),  QStringLiteral("Fix Palette"),
                                QStringLiteral("Size 720x480"), QStringLiteral("Merge with #1")};
  QWidget window;
  QGridLayout columns(&window);
  for (int i = 0; i < 6; ++i) {
    auto* group = new QGroupBox(captions[i], &window);
    auto* grid = new QGridLayout(group);
    for (int row = 0; row < 2; ++row) {
      auto* list = new QComboBox(group);
      for (int entry = 0; entry < 16; ++entry) {
        list->addItem(QString::number(entry));
      }
      grid->addWidget(new QLabel(captions[i] + QStringLiteral(" label"), group), row, 0);
      grid->addWidget(new QLineEdit(captions[i] + QStringLiteral(" text"), group), row, 1);
      grid->addWidget(new QPushButton(captions[i] + QStringLiteral(" button"), group), row, 2);
      grid->addWidget(list, row, 3);
    }
    grid->addWidget(new QRadioButton(captions[i] + QStringLiteral(" option"), group), 2, 0);
    grid->addWidget(new QCheckBox(captions[i] + QStringLiteral(" check"), group), 2, 1);
    columns.addWidget(group, i / 2, i % 2);
  }
  window.resize(1292, 594);
  const EndAfterFirstPaint end(&window);
  window.show();
  return QApplication::exec();
}

void RunSelf(benchmark::State& state, const QString& mode) {
  for (auto _ : state) {
    if (QProcess::execute(QApplication::applicationFilePath(), {mode}) != 0) {
      state.SkipWithError("the window did not start");
    }
  }
}

void StartToFirstPaint(benchmark::State& state) {
  RunSelf(state, QStringLiteral("--start-quillmark"));
}
void StartPlainWindowOf60Controls(benchmark::State& state) {
  RunSelf(state, QStringLiteral("--start-plain"));
}

/// Counts the paints of the display, so that the step below cannot be timed without them.
class PaintCounter : public QObject {
 public:
  explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }
  bool eventFilter(QObject* /*object*/, QEvent* event) override {
    Paints += event->type() == QEvent::Paint ? 1 : 0;
    return false;
  }
  std::int64_t Paints = 0;
};

void NextFromClickToPaintedFrame(benchmark::State& state) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("film.sup"));
  QFile file(path);
  const auto film = quillmark::MakeFilm({});
  if (!file.open(QIODevice::WriteOnly) ||
      file.write(reinterpret_cast<const char*>(film.data()), static_cast<qint64>(film.size())) < 0) {
    state.SkipWithError("cannot write the film");
    return;
  }
  file.close();
  frmTest window;
  window.show();
  window.OpenCommandLine(path);
  QApplication::processEvents();
  auto* next = window.findChild<QPushButton*>(QStringLiteral("Command_Next"));
  auto* display = window.findChild<QWidget*>(QStringLiteral("Picture1"));
  auto* reset = window.findChild<QPushButton*>(QStringLiteral("Command_Prev"));
  const PaintCounter counter(display);
  for (auto _ : state) {
    next->click();
    QApplication::processEvents();
    if (!next->isEnabled()) {
      state.PauseTiming();
      while (reset->isEnabled()) {
        reset->click();
      }
      state.ResumeTiming();
    }
  }
  if (counter.Paints < state.iterations()) {
    state.SkipWithError("a step did not paint the frame");
  }
}

/// A widget that has Qt scale a frame's picture over itself.
class ScaledPicture : public QWidget {
 public:
  ScaledPicture(QWidget* parent, bool isSmooth) : QWidget(parent), isSmooth_(isSmooth) {
    setAttribute(Qt::WA_OpaquePaintEvent);
  }

 protected:
  void paintEvent(QPaintEvent* /*event*/) override {
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, isSmooth_);
    painter.drawImage(rect(), picture_);
  }

 private:
  QImage picture_ = QImage(720, 576, QImage::Format_RGB32);
  bool isSmooth_;
};

/// The program's window as a full screen of 1920x1080, zoomed.
class ZoomedWindow {
 public:
  explicit ZoomedWindow(const std::vector<const char*>& actions) {
    window_.resize(1910, 1000);
    window_.show();
    for (const char* action : actions) {
      window_.findChild<QAction*>(QLatin1String(action))->trigger();
      QApplication::processEvents();
    }
  }
  [[nodiscard]] QWidget* Display() const { return window_.findChild<QWidget*>(QStringLiteral("Picture1")); }

 private:
  frmTest window_;
};

const std::vector<const char*> Zooms[] = {
    {"Action_ZoomIn"}, {"Action_ZoomIn", "Action_ZoomIn"}, {"Action_ZoomFit"}, {"Action_16x9"}};

void RedrawOfAZoomedFrame(benchmark::State& state) {
  const ZoomedWindow window(Zooms[state.range(0)]);
  QWidget* display = window.Display();
  for (auto _ : state) {
    display->repaint();
  }
}

/// The same part of a picture of the same size.
void QtDrawsThatPictureScaled(benchmark::State& state) {
  const ZoomedWindow window(Zooms[state.range(0)]);
  QWidget host;
  host.resize(1910, 1000);
  QWidget view(&host);
  view.setGeometry(window.Display()->parentWidget()->rect());
  ScaledPicture picture(&view, state.range(0) != 1);
  picture.setGeometry(window.Display()->geometry());
  host.show();
  QApplication::processEvents();
  for (auto _ : state) {
    picture.repaint();
  }
}

/// One column and one row more than the frame needs, as the checker is laid out.
void QPainterFillsCheckerSquares(benchmark::State& state) {
  QImage frame(720, 576, QImage::Format_RGB32);
  for (auto _ : state) {
    QPainter painter(&frame);
    for (int column = 0; column <= 45; ++column) {
      for (int row = 0; row <= 36; ++row) {
        painter.fillRect(column * 16, row * 16, 16, 16,
                         (column & 1) == (row & 1) ? QColor(60, 60, 60) : QColor(120, 120, 120));
      }
    }
    painter.end();
    benchmark::DoNotOptimize(frame.bits());
  }
}

BENCHMARK(QPainterFillsCheckerSquares)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(NextFromClickToPaintedFrame)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(QtDrawsThatPictureScaled)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(RedrawOfAZoomedFrame)->DenseRange(0, 3)->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(StartPlainWindowOf60Controls)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(30);
BENCHMARK(StartToFirstPaint)->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(30);

}  // namespace

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc == 2 && std::strcmp(argv[1], "--start-quillmark") == 0) {
    return StartQuillmark();
  }
  if (argc == 2 && std::strcmp(argv[1], "--start-plain") == 0) {
    return StartPlainWindow();
  }
  DialogCloser closer;
  application.installEventFilter(&closer);
  benchmark::Initialize(&argc, argv);
  benchmark::RunSpecifiedBenchmarks();
  return 0;
}
