#include <utility>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/HourglassPointer.h"
#include "app/ImportJob.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "base/FilePath.h"
#include "sup/StreamLoader.h"
#include "sup/StreamReport.h"

namespace quillmark {
void frmTest::OpenCommandLine(const QString& commandLine) {
  QString path = commandLine;
  path.remove(u'"');
  if (path.isEmpty() || !FileExists(path)) {
    return;
  }
  RunCommand([&] {
    const QString absolute = QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath());
    if (IsSupFile(absolute)) {
      document_->BeginLoading();
      document_->SetSupPath(absolute);
    }
    OpenFile(absolute);
  });
}

void frmTest::Command_LoadSup_Click() {
  const QString start = document_->SupPath();
  if (TellTooLong(start)) {
    return;
  }
  document_->BeginLoading();
  QString tooLong;
  const QString path =
      OpenFileName(this, StartOf(start), Ui::Tr("SUP Files (*.SUP)"), QStringLiteral("*.SUP"), &tooLong);
  if (TellTooLong(tooLong)) {
    document_->AbandonLoading();
    return;
  }
  if (path.isEmpty()) {
    document_->EndLoading();
    TellClosed();
    return;
  }
  document_->SetSupPath(path);
  (void)LoadSup(path);
}

bool frmTest::LoadSup(const QString& path) {
  HourglassPointer hourglass;
  Result<LoadedStream> loaded = LoadPrimaryStream(PathFromUtf8(path.toStdString()));
  if (!loaded) {
    hourglass.Release();
    TellUnreadable(path, loaded.Reason());
    document_->KeepStream();
    return false;
  }
  if (!loaded->LostSignature) {
    hourglass.Release();
    Open(path, std::move(*loaded));
    return true;
  }
  const bool hasFirst = loaded->Stream.Holds(0);
  ShowFirst(path, loaded->Stream, hourglass);
  hourglass.Release();
  ShowMessage(this, Ui::Tr("Error: No SUP signature found"));
  if (hasFirst) {
    document_->LoseIndex();
  } else {
    document_->KeepStream();
  }
  return false;
}

void frmTest::ShowFirst(const QString& path, const SupStream& stream, HourglassPointer& hourglass) {
  if (!stream.Holds(0)) {
    return;
  }
  document_->BeginLoading();
  document_->SetSupPath(path);
  std::vector<std::uint8_t> unit;
  const bool isShown = document_->ShowFirst(FirstUnit(stream, unit));
  if (!isShown) {
    hourglass.Release();
    ShowMessage(this, Ui::Tr("Error converting subtitle!"));
  }
  document_->SetNumber(isShown ? 1 : 0);
}

void frmTest::Open(const QString& path, LoadedStream loaded, const std::string& language,
                   const QString& remark) {
  HourglassPointer hourglass;
  ShowFirst(path, loaded.Stream, hourglass);
  hourglass.Release();
  document_->BeginLoading();
  document_->SetSupPath(path);
  document_->Open(std::move(loaded.Stream), language);
  RememberStream(path);
  // The report covers part of the window; what it reports on is painted first.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  ShowMessage(this, QString::fromStdString(PrimaryReport(document_->Primary())), remark);
}

void frmTest::TellUnreadable(const QString& path, const std::string& reason) {
  ShowMessage(this, Ui::Tr("Cannot read %1: %2").arg(path, QString::fromStdString(reason)));
}

}  // namespace quillmark
