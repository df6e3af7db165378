#pragma once

#include <cstddef>
#include <vector>

#include <QDialog>
#include <QString>

#include "app/ExportJob.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace quillmark {

/// What an export starts from. The stream must not change while the dialog is open.
struct ExportSubject {
  const SupStream& Stream;
  QString Path;                       ///< of the stream, which the proposed names follow
  std::vector<std::size_t> Selected;  ///< in the list, ascending, from 0
  std::string Language = {};          ///< as a file had it; empty: unknown
};

/// Asks what is written, of which subtitles and where. It names the files as they are chosen, and asks once
/// more before one of them is replaced.
class ExportDialog : public QDialog {
  Q_OBJECT

 public:
  ExportDialog(ExportSubject subject, QWidget* parent);

  /// What is chosen. Overwriting is allowed once the user said so.
  [[nodiscard]] ExportOrder Order() const;

  void accept() override;

 private:
  void BuildScope(QLayout* line);
  void BuildLanguages();
  void BuildPath(QLayout* line);
  void KindChosen();
  void Browse();
  /// The path of a new file of that kind.
  [[nodiscard]] QString ProposedPath(ExportKind kind) const;
  [[nodiscard]] ExportKind Kind() const;
  void ShowFiles();

  ExportSubject subject_;
  QString proposed_;  // the path, as long as the user leaves it
  bool mayReplace_ = false;

  QComboBox* Combo_What = nullptr;
  QRadioButton* Option_All = nullptr;
  QRadioButton* Option_Selected = nullptr;
  QLineEdit* Text_Path = nullptr;
  QComboBox* Combo_Language = nullptr;
  QLabel* Label_Files = nullptr;
  QPushButton* Command_Export = nullptr;
};

}  // namespace quillmark
