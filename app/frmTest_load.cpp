#include <utility>

#include <QAction>
#include <QCoreApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/HourglassPointer.h"
#include "app/frmTest.h"
#include "base/FilePath.h"
#include "palette/PaletteFile.h"
#include "sup/StreamLoader.h"
#include "sup/StreamReport.h"

namespace quillmark {
namespace {

/// The one local file that a drag carries; empty otherwise.
QString DraggedFile(const QMimeData* data) {
  const QList<QUrl> urls = data->urls();
  return urls.size() == 1 ? urls.constFirst().toLocalFile() : QString();
}

bool IsPaletteFile(const QString& path) {
  return PaletteFormatOf(path.toStdString()).has_value();
}

bool IsSupFile(const QString& path) {
  return path.endsWith(QLatin1String(".sup"), Qt::CaseInsensitive);
}

}  // namespace

void frmTest::OpenCommandLine(const QString& commandLine) {
  QString path = commandLine;
  path.remove(u'"');
  if (path.isEmpty() || !FileExists(path)) {
    return;
  }
  RunCommand([&] {
    document_->BeginLoading();
    document_->SetSupPath(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()));
    LoadSup(document_->SupPath());
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
      OpenFileName(this, start, QStringLiteral("SUP Files (*.SUP)"), QStringLiteral("*.SUP"), &tooLong);
  if (TellTooLong(tooLong)) {
    document_->AbandonLoading();
    return;
  }
  if (path.isEmpty()) {
    document_->EndLoading();
    return;
  }
  document_->SetSupPath(path);
  LoadSup(path);
}

void frmTest::LoadSup(const QString& path) {
  HourglassPointer hourglass;
  Result<LoadedStream> loaded = LoadPrimaryStream(PathFromUtf8(path.toStdString()));
  if (!loaded) {
    hourglass.Release();
    TellUnreadable(path, loaded.Reason());
    document_->KeepStream();
    return;
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
    return;
  }
  document_->BeginLoading();
  document_->SetSupPath(path);
  document_->Open(std::move(loaded->Stream));
  // The report covers part of the window; what it reports on is painted first.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  ShowMessage(this, QString::fromStdString(PrimaryReport(document_->Primary())));
}

void frmTest::TellUnreadable(const QString& path, const std::string& reason) {
  ShowMessage(this, QStringLiteral("Cannot read %1: %2").arg(path, QString::fromStdString(reason)));
}

void frmTest::dragEnterEvent(QDragEnterEvent* event) {
  if (IsBusy()) {
    return;
  }
  const QString file = DraggedFile(event->mimeData());
  if (IsSupFile(file) || (IsPaletteFile(file) && Action_LoadPalette->isEnabled())) {
    event->acceptProposedAction();
  }
}

void frmTest::dropEvent(QDropEvent* event) {
  if (IsBusy()) {
    return;
  }
  const QString file = DraggedFile(event->mimeData());
  if (!IsSupFile(file) && !(IsPaletteFile(file) && Action_LoadPalette->isEnabled())) {
    return;
  }
  event->acceptProposedAction();
  // The file manager waits until this returns: what the file has to be told comes after it.
  QMetaObject::invokeMethod(
      this, [this, file] { LoadDropped(file); }, Qt::QueuedConnection);
}

void frmTest::LoadDropped(const QString& path) {
  if (IsBusy()) {
    return;
  }
  if (IsSupFile(path)) {
    RunCommand([&] { LoadSup(path); });
  } else if (Action_LoadPalette->isEnabled()) {
    RunCommand([&] { LoadPalette(path); });
  }
}

}  // namespace quillmark
