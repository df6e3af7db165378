#include <QAction>
#include <QDragEnterEvent>
#include <QDropEvent>

#include "app/Document.h"
#include "app/DroppedFiles.h"
#include "app/frmTest.h"

namespace quillmark {

bool frmTest::Takes(const DroppedFiles& files) const {
  switch (files.Kind) {
    case FileKind::Sup:
    case FileKind::Container:
      return true;
    case FileKind::Palette:
      return Action_LoadPalette->isEnabled();
    case FileKind::Picture:
      return Action_PictureBehind->isEnabled();
    case FileKind::Other:
      break;
  }
  return false;
}

void frmTest::dragEnterEvent(QDragEnterEvent* event) {
  if (!IsBusy() && Takes(FilesOf(*event->mimeData()))) {
    event->acceptProposedAction();
  }
}

void frmTest::dropEvent(QDropEvent* event) {
  if (IsBusy()) {
    return;
  }
  const DroppedFiles files = FilesOf(*event->mimeData());
  if (!Takes(files)) {
    return;
  }
  event->acceptProposedAction();
  // The file manager waits until this returns: what the files have to be told comes after it.
  QMetaObject::invokeMethod(
      this, [this, files] { LoadDropped(files); }, Qt::QueuedConnection);
}

void frmTest::LoadDropped(const DroppedFiles& files) {
  if (IsBusy() || !Takes(files)) {
    return;
  }
  RunCommand([&] {
    switch (files.Kind) {
      case FileKind::Sup:
        if (LoadSup(files.Path) && !files.Second.isEmpty() && BeginSecond()) {
          MergeWith(files.Second);
        }
        break;
      case FileKind::Container:
        OpenFile(files.Path);
        break;
      case FileKind::Palette:
        LoadPalette(files.Path);
        break;
      case FileKind::Picture:
        ShowPictureBehind(files.Path);
        break;
      case FileKind::Other:
        break;
    }
  });
}

}  // namespace quillmark
