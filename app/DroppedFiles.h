#pragma once

#include <QString>

class QMimeData;

namespace quillmark {

/// What the window knows to do with a file, by its name.
enum class FileKind { Sup, Palette, Picture, Other };
[[nodiscard]] FileKind KindOf(const QString& path);

/// What a drag brings: one file, or two SUP files; otherwise nothing.
struct DroppedFiles {
  FileKind Kind = FileKind::Other;
  QString Path;
  QString Second;  ///< the stream to lay over the first; empty without one
};
[[nodiscard]] DroppedFiles FilesOf(const QMimeData& data);

}  // namespace quillmark
