#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include <QDialog>
#include <QRect>
#include <QTimer>

#include "palette/Colour.h"
#include "recipe/Step.h"
#include "sup/SupStream.h"

class QComboBox;
class QFormLayout;
class QGridLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;

namespace quillmark {

struct ToolForm;
struct ToolField;
struct ToolTrial;
struct FramedSubtitle;
class SubtitleFrame;

/// What a dialog on a tool is about. The stream must not change while it is open.
struct ToolSubject {
  const SupStream& Stream;
  const DvdPalette& Palette;
  int FrameLines = 576;
  std::size_t Index = 0;              ///< of the current subtitle, from 0; the stream holds it
  std::vector<std::size_t> Selected;  ///< in the list, ascending, from 0
};

/// Asks for a tool's options, and shows while they are chosen what the tool would do: to the current
/// subtitle, and to how many others.
class ToolDialog : public QDialog {
  Q_OBJECT

 public:
  ToolDialog(const ToolForm& form, ToolSubject subject, QWidget* parent);

  /// The tool with its options as they are chosen now.
  [[nodiscard]] StepText Chosen() const;

 private:
  static constexpr std::size_t Facts = 6;

  struct Input {
    const ToolField* Field = nullptr;
    QWidget* Row = nullptr;     ///< what is shown and hidden
    QWidget* Label = nullptr;   ///< beside it, where there is one
    QWidget* Editor = nullptr;  ///< a QLineEdit, QCheckBox or QComboBox
  };

  void BuildFields(QFormLayout* rows);
  [[nodiscard]] QWidget* MakeEditor(const ToolField& field);
  QLayout* BuildScope();
  QLayout* BuildTrial();
  void BrowseFor(QLineEdit* path);
  void ShowWay();
  [[nodiscard]] bool TakesOnly() const;
  [[nodiscard]] QString Only() const;
  void Try();
  void ShowTrial(const ToolTrial& trial);
  void ShowSubtitle(std::size_t column, const FramedSubtitle* subtitle);

  const ToolForm& form_;
  ToolSubject subject_;
  const Tool* tool_;
  std::vector<Input> inputs_;
  QTimer tryLater_;
  QRect areaBefore_;  // of the current subtitle, as it is

  QComboBox* Combo_Way = nullptr;
  QRadioButton* Option_All = nullptr;
  QRadioButton* Option_Selected = nullptr;
  QRadioButton* Option_These = nullptr;
  QLineEdit* Text_Only = nullptr;
  std::vector<QLabel*> shown_;  // Facts of them now, then as many after the tool
  SubtitleFrame* Picture_Trial = nullptr;
  QLabel* Label_Outcome = nullptr;
  QPlainTextEdit* Text_Left = nullptr;
  QPushButton* Command_Run = nullptr;
};

}  // namespace quillmark
