#include <utility>

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/HourglassPointer.h"
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
    document_->BeginLoading();
    document_->SetSupPath(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()));
    (void)LoadSup(document_->SupPath());
  });
}

void frmTest::Command_LoadSup_Click() {
  const QString start = document_->SupPath();
  if (TellTooLong(start)) {
    return;
  }
  document_->BeginLoading();
  QString tooLong;
  const QString path = OpenFileName(this, StartOf(start), QStringLiteral("SUP Files (*.SUP)"),
                                    QStringLiteral("*.SUP"), &tooLong);
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
  const bool hasFirst = loaded->Stream.Holds(0);
  if (hasFirst) {
    document_->BeginLoading();
    document_->SetSupPath(path);
    std::vector<std::uint8_t> unit;
    const bool isShown = document_->ShowFirst(FirstUnit(loaded->Stream, unit));
    if (!isShown) {
      hourglass.Release();
      ShowMessage(this, QStringLiteral("Error converting subtitle!"));
    }
    document_->SetNumber(isShown ? 1 : 0);
  }
  hourglass.Release();
  if (loaded->LostSignature) {
    ShowMessage(this, QStringLiteral("Error: No SUP signature found"));
    if (hasFirst) {
      document_->LoseIndex();
    } else {
      document_->KeepStream();
    }
    return false;
  }
  document_->BeginLoading();
  document_->SetSupPath(path);
  document_->Open(std::move(loaded->Stream));
  RememberStream(path);
  // The report covers part of the window; what it reports on is painted first.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  ShowMessage(this, QString::fromStdString(PrimaryReport(document_->Primary())));
  return true;
}

void frmTest::TellUnreadable(const QString& path, const std::string& reason) {
  ShowMessage(this, QStringLiteral("Cannot read %1: %2").arg(path, QString::fromStdString(reason)));
}

}  // namespace quillmark
