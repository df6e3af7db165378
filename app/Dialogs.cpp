#include "app/Dialogs.h"

#include <algorithm>

#include <QColorDialog>
#include <QDir>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QInputDialog>
#include <QMimeDatabase>

#include "app/PathText.h"
#include "app/QtColour.h"

namespace quillmark {
namespace {

constexpr int ShortestResult = 3;
constexpr Rgb DarkestChoice = 2;

/// Tells a file's type by its name. Qt's own provider reads into every file of the folder whose ending it
/// does not know, which takes long for discs and for folders of other machines.
class FileKinds : public QFileIconProvider {
 public:
  [[nodiscard]] QString type(const QFileInfo& file) const override {
    return types_.mimeTypeForFile(file, QMimeDatabase::MatchExtension).comment();
  }

 private:
  QMimeDatabase types_;
};

/// The one filter that a dialog offers. Its patterns match names in either case, also where file systems tell
/// them apart; the details are hidden, because the description names them already.
QString NameFilter(const QString& description, const QString& pattern) {
  QStringList patterns = pattern.split(u';', Qt::SkipEmptyParts);
  for (qsizetype i = patterns.size(); i-- > 0;) {
    patterns.insert(i + 1, patterns[i].toLower());
  }
  return description + QStringLiteral(" (") + patterns.join(u' ') + QStringLiteral(")");
}

QString RunFileDialog(QFileDialog& dialog, const QString& initialFolder, const QString& initialName,
                      const QString& filter, QString* tooLong) {
  const auto refuse = [tooLong](const QString& path) {
    if (tooLong != nullptr) {
      *tooLong = path;
    }
    return QString();
  };
  if (IsTooLongForDialogs(initialName)) {
    return refuse(initialName);
  }
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setNameFilter(filter);
  if (!initialFolder.isEmpty()) {
    dialog.setDirectory(initialFolder);
  }
  dialog.selectFile(QFileInfo(initialName).fileName());
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
    return {};
  }
  const QString chosen = QDir::toNativeSeparators(dialog.selectedFiles().constFirst());
  return IsTooLongForDialogs(chosen) ? refuse(chosen) : chosen;
}

QString UpToNul(const QString& text) {
  return text.left(text.indexOf(QChar::Null));
}

/// The custom colours are Qt's own table, which starts white (or as another program left it) and is shared by
/// all of its colour dialogs; once, at the first use, it is made black.
void PrepareCustomColours() {
  static const bool prepared = [] {
    for (int i = 0; i < QColorDialog::customCount(); ++i) {
      QColorDialog::setCustomColor(i, Qt::black);
    }
    return true;
  }();
  Q_UNUSED(prepared)
}

}  // namespace

QString OpenResult(const QString& chosen, const QString& initialName) {
  const QString name = UpToNul(chosen.trimmed());
  return name.size() >= ShortestResult ? name : initialName;
}

QString SaveResult(const QString& chosen) {
  const QString name = UpToNul(chosen.trimmed());
  return name.size() >= ShortestResult ? name : QString();
}

QString OpenFileName(QWidget* owner, const QString& initialName, const QString& description,
                     const QString& pattern, QString* tooLong) {
  FileKinds kinds;
  QFileDialog dialog(owner, owner->windowTitle());
  dialog.setIconProvider(&kinds);
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  dialog.setFileMode(QFileDialog::ExistingFile);
  const QString chosen =
      RunFileDialog(dialog, FolderOf(initialName), initialName, NameFilter(description, pattern), tooLong);
  return chosen.isEmpty() ? QString() : OpenResult(chosen, initialName);
}

QString SaveFileName(QWidget* owner, const QString& initialFolder, const QString& initialName,
                     const QString& description, const QString& pattern, QString* tooLong) {
  FileKinds kinds;
  QFileDialog dialog(owner, owner->windowTitle());
  dialog.setIconProvider(&kinds);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setFileMode(QFileDialog::AnyFile);
  dialog.setOption(QFileDialog::DontConfirmOverwrite);
  const QString chosen =
      RunFileDialog(dialog, initialFolder, initialName, NameFilter(description, pattern), tooLong);
  return SaveResult(chosen);
}

Rgb ChooseColour(QWidget* owner, Rgb initial) {
  PrepareCustomColours();
  QColorDialog dialog(ToQColor(initial), owner);
  dialog.setWindowTitle(owner->windowTitle());
  // Some desktops' own dialogs show no custom colours, or forget them.
  dialog.setOption(QColorDialog::DontUseNativeDialog);
  if (dialog.exec() != QDialog::Accepted) {
    return initial;
  }
  return std::max(FromQColor(dialog.selectedColor()), DarkestChoice);
}

bool FileExists(const QString& path) {
  return QFileInfo(path).isFile();
}

void ShowMessage(QWidget* owner, const QString& text, const QString& remark) {
  QMessageBox box(QMessageBox::NoIcon, owner->windowTitle(), text, QMessageBox::Ok, owner);
  box.setTextFormat(Qt::PlainText);
  box.setInformativeText(remark);
  box.exec();
}

bool ConfirmWarning(QWidget* owner, const QString& text) {
  QMessageBox box(QMessageBox::Warning, owner->windowTitle(), text, QMessageBox::Ok | QMessageBox::Cancel,
                  owner);
  box.setTextFormat(Qt::PlainText);
  return box.exec() == QMessageBox::Ok;
}

QString AskText(QWidget* owner, const QString& title, const QString& prompt, const QString& defaultText) {
  QInputDialog dialog(owner);
  dialog.setWindowTitle(title);
  dialog.setLabelText(prompt);
  dialog.setTextValue(defaultText);
  return dialog.exec() == QDialog::Accepted ? dialog.textValue() : QString();
}

}  // namespace quillmark
