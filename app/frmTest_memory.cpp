#include <QAction>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMenu>
#include <QScreen>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/DroppedFiles.h"
#include "app/PathText.h"
#include "app/SubtitleList.h"
#include "app/WindowBody.h"
#include "app/frmTest.h"

namespace quillmark {
namespace {

// The parts of the window that the user arranges.
constexpr QLatin1String ColumnsPart("columns");
constexpr QLatin1String ProblemsPart("problems");
constexpr QLatin1String ListPart("list");
constexpr QLatin1String ListShownPart("list_shown");
constexpr QLatin1String ReviewShownPart("review_shown");

/// The key of the folder where files of that kind were chosen last.
QString FolderKind(const QString& path) {
  switch (KindOf(path)) {
    case FileKind::Sup:
    case FileKind::Container:
      return QStringLiteral("sup");
    case FileKind::Palette:
      return QStringLiteral("palette");
    case FileKind::Picture:
      return QStringLiteral("picture");
    case FileKind::Other:
      break;
  }
  return {};
}

/// A menu entry that shows the path as it is, cut in the middle where it is long; "&" marks a mnemonic only
/// before the number.
QString EntryText(qsizetype number, const QString& path) {
  QString shown = CutInTheMiddle(path);
  shown.replace(u'&', QStringLiteral("&&"));
  return (number < 10 ? u'&' + QString::number(number) : QStringLiteral("1&0")) + u' ' + shown;
}

}  // namespace

void frmTest::RememberUser() {
  memory_.Keep();
  if (const auto place = memory_.Place()) {
    QList<QRect> screens;
    for (const QScreen* screen : QGuiApplication::screens()) {
      screens.append(screen->availableGeometry());
    }
    const UsablePlace usable = FitToScreens(*place, screens);
    resize(usable.Size);
    if (usable.Corner) {
      move(*usable.Corner);
    }
    if (place->IsMaximised) {
      setWindowState(windowState() | Qt::WindowMaximized);
    }
  }
  RestoreArrangement();
  UpdateCommands();
}

void frmTest::RestoreArrangement() {
  list_->Restore(memory_.Arrangement(ColumnsPart).toByteArray(),
                 memory_.Arrangement(ProblemsPart).toByteArray());
  Body->RestoreSplitter(memory_.Arrangement(ListPart).toByteArray());
  RestoreView();
  const auto isShown = [this](const QString& part) {
    return memory_.Arrangement(part).toBool() || memory_.Arrangement(part).isNull();
  };
  Action_List->setChecked(isShown(ListShownPart));
  Action_MergeReview->setChecked(isShown(ReviewShownPart));
}

void frmTest::KeepArrangement() {
  memory_.SetArrangement(ColumnsPart, list_->ColumnState());
  memory_.SetArrangement(ProblemsPart, list_->SplitterState());
  memory_.SetArrangement(ListPart, Body->SplitterState());
  KeepView();
  memory_.SetArrangement(ListShownPart, Action_List->isChecked());
  memory_.SetArrangement(ReviewShownPart, Action_MergeReview->isChecked());
}

void frmTest::closeEvent(QCloseEvent* event) {
  const QRect inside = isMaximized() ? normalGeometry() : QRect(pos(), size());
  memory_.SetPlace({.Corner = inside.topLeft(), .Size = inside.size(), .IsMaximised = isMaximized()});
  KeepArrangement();
  QMainWindow::closeEvent(event);
}

QString frmTest::Remembered(const QString& path) {
  if (const QString kind = FolderKind(path); !kind.isEmpty()) {
    memory_.SetFolder(kind, QFileInfo(path).absolutePath());
  }
  return path;
}

QString frmTest::StartOf(const QString& proposed) const {
  const QString kind = FolderKind(proposed);
  const bool followsChosen = KindOf(proposed) == FileKind::Picture
                                 ? !Text_GraphFile->text().isEmpty()
                                 : document_->SupPath() != InProgramFolder(QStringLiteral("test.sup"));
  const QString folder = followsChosen || kind.isEmpty() ? QString() : memory_.Folder(kind);
  const QString start = folder + u'/' + QFileInfo(proposed).fileName();
  return folder.isEmpty() || IsTooLongForDialogs(start) ? proposed : start;
}

void frmTest::RememberStream(const QString& path) {
  memory_.AddRecentFile(Remembered(path));
  UpdateCommands();
}

void frmTest::FillRecent() {
  Menu_Recent->clear();
  qsizetype number = 0;
  for (const QString& path : memory_.RecentFiles()) {
    QAction* entry = Menu_Recent->addAction(EntryText(++number, path));
    entry->setObjectName(QStringLiteral("Action_Recent_") + QString::number(number - 1));
    connect(entry, &QAction::triggered, this, [this, path] { RunCommand([&] { OpenFile(path); }); });
  }
  Menu_Recent->addSeparator();
  Menu_Recent->addAction(Action_ForgetRecent);
}

void frmTest::Command_ForgetRecent_Click() {
  memory_.ForgetRecentFiles();
  UpdateCommands();
}

}  // namespace quillmark
