#pragma once

#include <QString>

class QMimeData;

namespace quillmark {

/// What the window knows to do with a file, by its name.
enum class FileKind {
  Sup,
  Container,  ///< another file that may hold subtitles
  Palette,
  Picture,
  Other,
};
[[nodiscard]] FileKind KindOf(const QString& path);

/// What a drag brings: one file, two SUP files, or the two files of a VobSub pair, of which Path is the
/// index; otherwise nothing.
struct DroppedFiles {
  FileKind Kind = FileKind::Other;
  QString Path;
  QString Second;  ///< the stream to lay over the first; empty without one
};
[[nodiscard]] DroppedFiles FilesOf(const QMimeData& data);

}  // namespace quillmark
