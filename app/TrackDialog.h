#pragma once

#include <cstddef>
#include <optional>

#include <QDialog>
#include <QIcon>

#include "palette/Colour.h"

class QComboBox;
class QPlainTextEdit;
class QTableWidget;

namespace quillmark {

struct ImportedFile;
struct ImportedTrack;

/// Which streams of a file are opened, by their indexes from 0.
struct TrackChoice {
  std::size_t Track = 0;
  std::optional<std::size_t> Second = {};  ///< another one, to be laid over it
};

/// Asks which of the streams of a file is opened. Each one is shown with its first picture, in the colours of
/// its own palette or, where it has none, of the present one.
class TrackDialog : public QDialog {
  Q_OBJECT

 public:
  /// `name` is the file's; what it holds must stay as it is while the dialog lives.
  TrackDialog(const QString& name, const ImportedFile& file, const DvdPalette& present, QWidget* parent);

  [[nodiscard]] TrackChoice Choice() const;

 private:
  void BuildList(const QString& name);
  void FillRow(int row);
  void SetPicture(int row, int column, const QIcon& picture, const QString& said);
  void ShowTrack();
  void FillSecond();
  void FitList();

  const ImportedFile& file_;
  const DvdPalette& present_;
  QTableWidget* List_Tracks = nullptr;
  QPlainTextEdit* Text_Notes = nullptr;
  QComboBox* Combo_Second = nullptr;
};

}  // namespace quillmark
