#include "app/LongWork.h"

#include <atomic>

#include <QAbstractButton>
#include <QCoreApplication>
#include <QProgressBar>
#include <QThread>
#include <QWidget>
#include <gtest/gtest.h>

#include "tests/app/Placing.h"
#include "tests/support/DialogScript.h"

namespace quillmark::test {
namespace {

/// What ends only when it is cancelled.
void GoOn(const Progress& progress) {
  while (progress(1, 4)) {
  }
}

class LongWork : public testing::Test {
 protected:
  Completion Run(Patience patience, const std::function<void(const Progress&)>& work) {
    return RunLongWork(&Owner, "Reading movie.vob", patience, work);
  }

  QWidget Owner;
  DialogScript Dialogs;
};

TEST_F(LongWork, RunsBesideTheWindowAndIsWaitedFor) {
  QThread* ran = nullptr;
  EXPECT_EQ(Run(std::nullopt, [&](const Progress&) { ran = QThread::currentThread(); }), Completion::Done);
  EXPECT_NE(ran, nullptr);
  EXPECT_NE(ran, QThread::currentThread());
}

TEST_F(LongWork, WindowGoesOnMeanwhile) {
  std::atomic<bool> cameBy = false;
  QMetaObject::invokeMethod(
      &Owner, [&] { cameBy = true; }, Qt::QueuedConnection);
  EXPECT_EQ(Run(std::nullopt,
                [&](const Progress&) {
                  while (!cameBy) {
                  }
                }),
            Completion::Done);
}

TEST_F(LongWork, DialogComesWhenPatienceIsOverAndCancels) {
  Dialogs.ExpectCancelled(DialogKind::Other);
  EXPECT_EQ(Run(std::chrono::milliseconds(1), GoOn), Completion::Cancelled);
  EXPECT_TRUE(Dialogs.Last().IsModal);
  EXPECT_TRUE(Dialogs.Last().PointerIsNormal);
}

TEST_F(LongWork, DialogSaysWhatIsDoneAboveItsBar) {
  Owner.setWindowTitle("Quillmark");
  Dialogs.Expect(DialogKind::Other, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Quillmark");
    ExpectApart(dialog);
    const auto* what = dialog.findChild<QLabel*>();
    EXPECT_EQ(what->text(), "Reading movie.vob");
    EXPECT_EQ(what->textFormat(), Qt::PlainText) << "a name may look like markup";
    EXPECT_LT(what->geometry().bottom(), PlaceIn(dialog, "Progress_Done").top());
    ExpectDownwards(dialog, {"Progress_Done", "Command_Cancel"});
    EXPECT_EQ(dialog.objectName(), "ProgressDialog");
    const auto* bar = dialog.findChild<QProgressBar*>("Progress_Done");
    EXPECT_EQ(bar->accessibleName(), "Reading movie.vob");
    EXPECT_GE(bar->width(), bar->fontMetrics().horizontalAdvance(QString(40, 'n')));
    dialog.reject();
  });
  EXPECT_EQ(Run(std::chrono::milliseconds(0), GoOn), Completion::Cancelled);
}

TEST_F(LongWork, ButtonCancels) {
  Dialogs.Expect(DialogKind::Other,
                 [](QDialog& dialog) { dialog.findChild<QAbstractButton*>("Command_Cancel")->click(); });
  EXPECT_EQ(Run(std::chrono::milliseconds(0), GoOn), Completion::Cancelled);
}

TEST_F(LongWork, DialogShowsHowFarItIs) {
  int shown = 0;
  Dialogs.Expect(DialogKind::Other, [&shown](QDialog& dialog) {
    const auto* bar = dialog.findChild<QProgressBar*>("Progress_Done");
    while (bar->maximum() == 0) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    EXPECT_EQ(bar->minimum(), 0);
    shown = bar->value() * 4 / bar->maximum();
    dialog.reject();
  });
  EXPECT_EQ(Run(std::chrono::milliseconds(0), GoOn), Completion::Cancelled);
  EXPECT_EQ(shown, 1);
}

TEST_F(LongWork, CancelCountsAlsoWhereTheWorkWasDone) {
  Dialogs.ExpectCancelled(DialogKind::Other);
  EXPECT_EQ(Run(std::chrono::milliseconds(0), [](const Progress&) {}), Completion::Cancelled);
}

}  // namespace
}  // namespace quillmark::test
