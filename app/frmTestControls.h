#pragma once

#include <array>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLayout;
class QLineEdit;
class QMainWindow;
class QPushButton;
class QRadioButton;
class QWidget;

namespace quillmark {

class ColourSwatch;
class DisplayFrame;
class ImageList;
class ListPanel;
class PaletteSwatch;
class Strip;
class WindowBody;

/// The main window's controls. Each one's objectName is its name here; element i of an array is "Name_i".
struct frmTestControls {
  /// Before the window makes any control: Qt keeps what it told of a control first.
  frmTestControls();

  QPushButton* Command_LoadSup = nullptr;
  QPushButton* Command_SaveSup = nullptr;
  QPushButton* Command_LoadPalette = nullptr;
  QPushButton* Command_SavePalette = nullptr;
  QPushButton* Command_Reload = nullptr;
  QPushButton* Command_Prev = nullptr;
  QPushButton* Command_Next = nullptr;
  QPushButton* Command_GoTo = nullptr;
  QPushButton* Command_SetActual = nullptr;
  QPushButton* Command_SetSelected = nullptr;
  QPushButton* Command_SetAll = nullptr;
  QPushButton* Command_LoadSecond = nullptr;
  QPushButton* Command_SaveSecond = nullptr;
  QPushButton* Command_GetGraphics = nullptr;
  QCheckBox* Check_SavePics = nullptr;
  QLineEdit* Text1 = nullptr;
  QLineEdit* Text_SubNum = nullptr;
  QLineEdit* Text_StartTime = nullptr;
  QLineEdit* Text_Dur = nullptr;
  QLineEdit* Text_XPos = nullptr;
  QLineEdit* Text_YPos = nullptr;
  QLineEdit* Text_Width = nullptr;
  QLineEdit* Text_Height = nullptr;
  QLineEdit* Text_GraphFile = nullptr;
  QLineEdit* Text_Pixel = nullptr;
  QComboBox* ImageCombo1 = nullptr;
  QComboBox* ImageCombo2 = nullptr;
  QComboBox* ImageCombo3 = nullptr;
  QComboBox* ImageCombo4 = nullptr;
  std::array<QComboBox*, 4> Combo1{};
  ImageList* ImageList1 = nullptr;
  std::array<PaletteSwatch*, 16> Label1{};
  std::array<QLabel*, 16> Picture2{};  ///< not shown: where the list pictures are kept
  DisplayFrame* Picture1 = nullptr;
  Strip* Strip_Recover = nullptr;
  QPushButton* Command_Recover = nullptr;
  QPushButton* Command_Forget = nullptr;
  Strip* Strip_Closed = nullptr;
  QPushButton* Command_Reopen = nullptr;
  QGroupBox* Frame1 = nullptr;
  QGroupBox* Frame2 = nullptr;
  QGroupBox* Frame3 = nullptr;
  QRadioButton* Option_File = nullptr;
  QRadioButton* Option_Checker = nullptr;
  QRadioButton* Option_Colour = nullptr;
  ColourSwatch* Label_Ground = nullptr;
  QRadioButton* Option_720x480 = nullptr;
  QRadioButton* Option_720x576 = nullptr;
  WindowBody* Body = nullptr;

  /// Creates all controls inside `window` and lays them out, `list` among them; connects no commands.
  void Build(QMainWindow* window, ListPanel* list);

  /// The four colour lists by pixel code.
  [[nodiscard]] std::array<QComboBox*, 4> ColourLists() const {
    return {ImageCombo1, ImageCombo2, ImageCombo3, ImageCombo4};
  }

 private:
  QWidget* BuildFileGroup(QWidget* parent);
  QWidget* BuildSubtitleGroup(QWidget* parent);
  QWidget* BuildPaletteGroup(QWidget* parent);
  QWidget* BuildBackgroundFrame(QWidget* parent);
  QWidget* BuildSizeFrame(QWidget* parent);
  QWidget* BuildSecondFrame(QWidget* parent);
  void BuildColourLists(QWidget* parent);
  /// What an assistive tool hears of the picture, after the fields of the subtitle shown.
  void DescribePicture() const;
  void NameControls() const;
  void SetTabOrder(const ListPanel& list) const;
};

}  // namespace quillmark
