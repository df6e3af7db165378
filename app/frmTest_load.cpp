#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>

#include "app/Dialogs.h"
#include "app/HourglassPointer.h"
#include "app/frmTest.h"
#include "base/FilePath.h"
#include "palette/PaletteFile.h"
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

/// A file dropped in the middle of a command would change the streams below it.
bool IsBusy() {
  return QApplication::activeModalWidget() != nullptr || QGuiApplication::overrideCursor() != nullptr;
}

}  // namespace

void frmTest::OpenCommandLine(const QString& commandLine) {
  QString path = commandLine;
  path.remove(u'"');
  if (path.isEmpty() || !FileExists(path)) {
    return;
  }
  PrepareForLoading();
  LoadSup(QDir::toNativeSeparators(QFileInfo(path).absoluteFilePath()));
}

void frmTest::Command_LoadSup_Click() {
  PrepareForLoading();
  const QString path =
      OpenFileName(this, Text1->text(), QStringLiteral("SUP Files (*.SUP)"), QStringLiteral("*.SUP"));
  if (path.isEmpty()) {
    EnableChanges();
  } else {
    LoadSup(path);
  }
}

void frmTest::PrepareForLoading() {
  EnableEditing(true);
  primary_.Count = 0;
  secondary_.Count = 0;
  mergeMode_ = false;
}

void frmTest::LoadSup(const QString& path) {
  Text1->setText(path);
  if (LoadPrimaryStream()) {
    EnableSteps();
    EnableChanges();
  }
}

bool frmTest::LoadPrimaryStream() {
  HourglassPointer hourglass;
  const QString path = Text1->text();
  bool hasFirst = false;
  const LoadResult result = quillmark::LoadPrimaryStream(
      PathFromUtf8(path.toStdString()),
      [&](const SubtitleUnit& unit) {
        hasFirst = true;
        const bool shown = ConvertSubtitle(unit, path);
        if (!shown) {
          hourglass.Release();
          ShowMessage(this, QStringLiteral("Error converting subtitle!"));
        }
        Text_SubNum->setText(shown ? QStringLiteral("1") : QStringLiteral("0"));
        return shown;
      },
      primary_);
  hourglass.Release();
  if (result.Result == LoadResult::Outcome::Unreadable) {
    TellUnreadable(path, result);
    KeepStream();
    return false;
  }
  if (result.Result == LoadResult::Outcome::NoSignature) {
    ShowMessage(this, QStringLiteral("Error: No SUP signature found"));
    return true;
  }
  primary_.Path = path.toStdString();
  if (!hasFirst) {
    Text_SubNum->setText(QStringLiteral("0"));
  }
  // The report covers part of the window; what it reports on is painted first.
  QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  ShowMessage(this, QString::fromStdString(PrimaryReport(primary_)));
  return true;
}

void frmTest::TellUnreadable(const QString& path, const LoadResult& result) {
  ShowMessage(this, QStringLiteral("Cannot read %1: %2").arg(path, QString::fromStdString(result.Reason)));
}

void frmTest::KeepStream() {
  if (!primary_.Holds(0)) {
    return;
  }
  primary_.Count = static_cast<std::int32_t>(primary_.PacketOffset.size());
  Text1->setText(QString::fromStdString(primary_.Path));
  for (QPushButton* command : {Command_Reload, Command_SetActual, Command_SetAll}) {
    command->setEnabled(Text_SubNum->text() != QLatin1String("0"));
  }
}

void frmTest::dragEnterEvent(QDragEnterEvent* event) {
  if (IsBusy()) {
    return;
  }
  const QString file = DraggedFile(event->mimeData());
  if (IsSupFile(file) || (IsPaletteFile(file) && Command_LoadPalette->isEnabled())) {
    event->acceptProposedAction();
  }
}

void frmTest::dropEvent(QDropEvent* event) {
  if (IsBusy()) {
    return;
  }
  const QString file = DraggedFile(event->mimeData());
  if (IsSupFile(file)) {
    event->acceptProposedAction();
    PrepareForLoading();
    LoadSup(file);
  } else if (IsPaletteFile(file) && Command_LoadPalette->isEnabled()) {
    event->acceptProposedAction();
    LoadPalette(file);
  }
}

}  // namespace quillmark
