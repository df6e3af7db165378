#include "app/DroppedFiles.h"

#include <algorithm>

#include <QFileInfo>
#include <QMimeData>
#include <QUrl>

#include "containers/Container.h"
#include "palette/PaletteFile.h"

namespace quillmark {
namespace {

bool IsEndingOfContainers(const QString& suffix) {
  const std::string ending = '.' + suffix.toStdString();
  return std::ranges::any_of(ContainerFormats(), [&ending](const ContainerFormat& format) {
    return std::ranges::find(format.Endings, ending) != format.Endings.end();
  });
}

bool EndsIn(const QFileInfo& file, QLatin1String suffix) {
  return file.suffix().compare(suffix, Qt::CaseInsensitive) == 0;
}

/// The index of the VobSub pair that two files are; empty where they are none.
QString IndexOfPair(const QStringList& paths) {
  for (qsizetype i = 0; i < 2; ++i) {
    const QFileInfo index(paths[i]);
    const QFileInfo data(paths[1 - i]);
    if (EndsIn(index, QLatin1String("idx")) && EndsIn(data, QLatin1String("sub")) &&
        index.absolutePath() == data.absolutePath() && index.completeBaseName() == data.completeBaseName()) {
      return paths[i];
    }
  }
  return {};
}

}  // namespace

FileKind KindOf(const QString& path) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == QLatin1String("sup")) {
    return FileKind::Sup;
  }
  if (PaletteFormatOf(path.toStdString())) {
    return FileKind::Palette;
  }
  if (IsEndingOfContainers(suffix)) {
    return FileKind::Container;
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
  if (paths.size() == 2 && KindOf(paths[0]) == FileKind::Container) {
    const QString index = IndexOfPair(paths);
    return {.Kind = index.isEmpty() ? FileKind::Other : FileKind::Container, .Path = index, .Second = {}};
  }
  return {};
}

}  // namespace quillmark
