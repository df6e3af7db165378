#pragma once

#include <QString>

namespace quillmark {

// Default names and folders of the file dialogs, as plain text work on a path.

/// The path up to, not including, its last separator; empty without one.
[[nodiscard]] QString FolderOf(const QString& path);
/// "test.sup" (or another name) in the program's folder: the default while no file was chosen.
[[nodiscard]] QString InProgramFolder(const QString& name);
/// The path itself, or the program's folder with "test.sup" when it is too short to be one.
[[nodiscard]] QString SupPathOrDefault(const QString& path);
/// The path before its last "." with `suffix` after it; nothing is cut where the file name has no ".".
[[nodiscard]] QString ReplaceExtension(const QString& path, const QString& suffix);
/// A path or a name as it is shown where there is room for `most` characters: of a longer one the middle is
/// left out.
[[nodiscard]] QString CutInTheMiddle(const QString& path, qsizetype most = 60);
/// What Load Palette proposes: the SUP path with ".ifo" for its last four characters, in lower case. Where
/// lower case names another folder that does not exist, the folder keeps its case.
[[nodiscard]] QString ProposedIfoName(const QString& supPath);

}  // namespace quillmark
