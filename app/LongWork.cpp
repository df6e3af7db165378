#include "app/LongWork.h"

#include <atomic>
#include <memory>

#include <QDialog>
#include <QDialogButtonBox>
#include <QEventLoop>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QThread>
#include <QTimer>
#include <QVBoxLayout>

#include "app/HourglassPointer.h"

namespace quillmark {
namespace {

constexpr std::chrono::milliseconds BetweenLooks(100);
constexpr int Steps = 1000;  ///< of the bar

/// How far work is, shared by its thread and the one that shows it.
struct Place {
  std::atomic<std::uint64_t> Done = 0;
  std::atomic<std::uint64_t> Of = 0;
  std::atomic<bool> Cancelled = false;
};

class ProgressDialog : public QDialog {
 public:
  ProgressDialog(const QString& what, QWidget* owner) : QDialog(owner) {
    setObjectName(QStringLiteral("ProgressDialog"));
    setWindowTitle(owner->windowTitle());
    setModal(true);
    auto* rows = new QVBoxLayout(this);
    auto* label = new QLabel(what, this);
    label->setTextFormat(Qt::PlainText);
    bar_ = new QProgressBar(this);
    bar_->setObjectName(QStringLiteral("Progress_Done"));
    bar_->setAccessibleName(what);
    bar_->setRange(0, 0);
    bar_->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("Command_Cancel"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    rows->addWidget(label);
    rows->addWidget(bar_);
    rows->addWidget(buttons);
  }

  /// A bar without an end moves until it is known how much there is.
  void Show(const Place& place) {
    const std::uint64_t of = place.Of;
    if (of == 0) {
      return;
    }
    const double part = static_cast<double>(place.Done) / static_cast<double>(of);
    bar_->setRange(0, Steps);
    bar_->setValue(static_cast<int>(part * Steps));
  }

 private:
  QProgressBar* bar_;
};

/// Shows the dialog until the loop is left, by the end of the work or by whoever cancels it. Work that waits
/// for the dialog begins after whoever sees it come had their turn.
void ShowProgress(const QString& what, QWidget* owner, QThread* waiting, QEventLoop& loop, Place& place) {
  ProgressDialog dialog(what, owner);
  QTimer looks;
  QObject::connect(&looks, &QTimer::timeout, &dialog, [&] { dialog.Show(place); });
  QObject::connect(&dialog, &QDialog::rejected, &loop, [&] {
    place.Cancelled = true;
    loop.quit();
  });
  dialog.Show(place);
  dialog.show();
  looks.start(BetweenLooks);
  if (waiting != nullptr) {
    QMetaObject::invokeMethod(
        &loop, [waiting] { waiting->start(); }, Qt::QueuedConnection);
  }
  loop.exec();
}

}  // namespace

Completion RunLongWork(QWidget* owner, const QString& what, Patience patience,
                       const std::function<void(const Progress&)>& work) {
  Place place;
  const Progress progress = [&place](std::uint64_t done, std::uint64_t of) {
    place.Done = done;
    place.Of = of;
    return !place.Cancelled;
  };
  const std::unique_ptr<QThread> thread(QThread::create([&] { work(progress); }));
  QEventLoop loop;
  bool isOver = false;
  QObject::connect(thread.get(), &QThread::finished, &loop, [&] {
    isOver = true;
    loop.quit();
  });
  const auto waitSilently = [&] {
    const HourglassPointer hourglass;
    loop.exec(QEventLoop::ExcludeUserInputEvents);
  };
  const bool waitsForDialog = patience == std::chrono::milliseconds::zero();
  if (!waitsForDialog) {
    if (patience) {
      QTimer::singleShot(*patience, &loop, &QEventLoop::quit);
    }
    thread->start();
    waitSilently();
  }
  if (!isOver && patience) {
    ShowProgress(what, owner, waitsForDialog ? thread.get() : nullptr, loop, place);
  }
  if (!isOver) {
    // Cancelled, or the program ends.
    place.Cancelled = true;
    waitSilently();
  }
  thread->wait();
  return place.Cancelled ? Completion::Cancelled : Completion::Done;
}

}  // namespace quillmark
