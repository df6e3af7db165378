#include <utility>

#include <QAction>
#include <QFileInfo>

#include "app/CompareWindow.h"
#include "app/Comparison.h"
#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/HourglassPointer.h"
#include "app/SubtitleList.h"
#include "app/SubtitleTable.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "base/FilePath.h"
#include "base/Words.h"
#include "sup/StreamLoader.h"

namespace quillmark {

void frmTest::ConnectCompare() {
  connect(comparison_, &Comparison::Changed, list_, [this] { list_->ShowComparison(*comparison_); });
  connect(comparison_, &Comparison::Failed, this,
          [this](const QString& reason) { Tell(Ui::Tr("The comparison is closed: %1", {reason})); });
}

void frmTest::UpdateCompare() {
  const EnabledCommands enabled = document_->Enabled();
  Action_Compare->setEnabled(enabled.Editing && enabled.List);
}

void frmTest::Command_Compare_Click() {
  const QString path = AskToOpen(document_->SupPath(), Ui::Tr("SUP Files (*.SUP)"), QStringLiteral("*.SUP"));
  if (!path.isEmpty()) {
    CompareWith(path);
  }
}

void frmTest::CompareWith(const QString& path) {
  HourglassPointer hourglass;
  // Read as the open stream was, so that a file is the same as itself.
  Result<LoadedStream> loaded = LoadPrimaryStream(
      PathFromUtf8(path.toStdString()),
      document_->Primary().EndsAtInvalidFirst ? InvalidFirst::EndsTheWalk : InvalidFirst::IsPassed);
  if (!loaded || loaded->LostSignature) {
    hourglass.Release();
    TellUnreadable(path, loaded ? Words::Tr("No SUP signature found") : loaded.Reason());
    return;
  }
  if (compareWindow_ == nullptr) {
    compareWindow_ = new CompareWindow(*document_, *comparison_, this);
    // To go to a subtitle may end in a message; the event that asks for it is over by then.
    connect(compareWindow_, &CompareWindow::Chosen, this, &frmTest::List_Subtitles_Chosen,
            Qt::QueuedConnection);
  }
  const Result<void> opened = comparison_->Open(std::move(loaded->Stream), QFileInfo(path).fileName());
  hourglass.Release();
  if (!opened) {
    ShowMessage(this,
                Ui::Tr("Cannot compare with %1: %2").arg(path, QString::fromStdString(opened.Reason())));
    return;
  }
  compareWindow_->show();
  compareWindow_->raise();
  compareWindow_->activateWindow();
}

}  // namespace quillmark
