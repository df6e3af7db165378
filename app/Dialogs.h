#pragma once

#include <QMessageBox>
#include <QString>

#include "palette/Colour.h"

class QWidget;

namespace quillmark {

// Every dialog is modal to its owner and carries the owner's caption as its title. A cancelled file dialog
// answers the empty text. Patterns are "*.A;*.B"; descriptions end in the patterns, in parentheses.

/// The longest path that the file dialogs take. With a longer one, proposed or chosen, they count as
/// cancelled, and `tooLong` is given that path.
inline constexpr int MaxDialogPath = 256;
[[nodiscard]] inline bool IsTooLongForDialogs(const QString& path) {
  return path.size() > MaxDialogPath;
}

/// Asks for an existing file, starting at `initialName` and its folder. A chosen name of fewer than three
/// characters gives `initialName` back.
[[nodiscard]] QString OpenFileName(QWidget* owner, const QString& initialName, const QString& description,
                                   const QString& pattern, QString* tooLong = nullptr);

/// Asks for a file to write, without asking before an existing one is replaced. A chosen name of fewer than
/// three characters counts as cancelled.
[[nodiscard]] QString SaveFileName(QWidget* owner, const QString& initialFolder, const QString& initialName,
                                   const QString& description, const QString& pattern,
                                   QString* tooLong = nullptr);

/// What the two dialogs make of a name that the user confirmed.
[[nodiscard]] QString OpenResult(const QString& chosen, const QString& initialName);
[[nodiscard]] QString SaveResult(const QString& chosen);

/// Asks for a colour; a cancelled dialog gives `initial` back. Kept oddity: a chosen colour below 2 (black,
/// and red 1 alone) comes back as 2. The 16 custom colours start black and are kept while the program runs.
[[nodiscard]] Rgb ChooseColour(QWidget* owner, Rgb initial);

/// Whether a file of that name exists.
[[nodiscard]] bool FileExists(const QString& path);

/// A message with an OK button; `remark` stands below it in smaller type.
void ShowMessage(QWidget* owner, const QString& text, const QString& remark = {});
/// A warning with OK and Cancel; true for OK.
[[nodiscard]] bool ConfirmWarning(QWidget* owner, const QString& text);
/// Asks for one line of text; the empty text when cancelled.
[[nodiscard]] QString AskText(QWidget* owner, const QString& title, const QString& prompt,
                              const QString& defaultText);

}  // namespace quillmark
