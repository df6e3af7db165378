#include "app/DroppedFiles.h"

#include <algorithm>

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include "palette/PaletteFile.h"

namespace quillmark {

FileKind KindOf(const QString& path) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == QLatin1String("sup")) {
    return FileKind::Sup;
  }
  if (PaletteFormatOf(path.toStdString())) {
    return FileKind::Palette;
  }
  for (const char* picture : {"bmp", "gif", "jpg", "jpeg", "png"}) {
    if (suffix == QLatin1String(picture)) {
      return FileKind::Picture;
    }
  }
  return FileKind::Other;
}

DroppedFiles FilesOf(const QMimeData& data) {
  QStringList paths;
  for (const QUrl& url : data.urls()) {
    paths.append(url.toLocalFile());
  }
  if (paths.size() == 1) {
    return {.Kind = KindOf(paths[0]), .Path = paths[0], .Second = {}};
  }
  if (paths.size() == 2 && KindOf(paths[0]) == FileKind::Sup && KindOf(paths[1]) == FileKind::Sup) {
    return {.Kind = FileKind::Sup, .Path = paths[0], .Second = paths[1]};
  }
  return {};
}

}  // namespace quillmark
