// What the controls are called, and in which order Tab goes through them.

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "app/ColourSwatch.h"
#include "app/DisplayFrame.h"
#include "app/ImageList.h"
#include "app/ListPanel.h"
#include "app/PaletteSwatch.h"
#include "app/frmTestControls.h"

namespace quillmark {

#define QUILLMARK_NAME(control) control->setObjectName(QStringLiteral(#control))
#define QUILLMARK_NAME_ARRAY(array)                                                        \
  for (std::size_t i = 0; i < (array).size(); ++i) {                                       \
    (array)[i]->setObjectName(QStringLiteral("%1_%2").arg(QStringLiteral(#array)).arg(i)); \
  }

void frmTestControls::NameControls() const {
  QUILLMARK_NAME(Command_LoadSup);
  QUILLMARK_NAME(Command_SaveSup);
  QUILLMARK_NAME(Command_LoadPalette);
  QUILLMARK_NAME(Command_SavePalette);
  QUILLMARK_NAME(Command_Reload);
  QUILLMARK_NAME(Command_Prev);
  QUILLMARK_NAME(Command_Next);
  QUILLMARK_NAME(Command_GoTo);
  QUILLMARK_NAME(Command_SetActual);
  QUILLMARK_NAME(Command_SetSelected);
  QUILLMARK_NAME(Command_SetAll);
  QUILLMARK_NAME(Command_LoadSecond);
  QUILLMARK_NAME(Command_SaveSecond);
  QUILLMARK_NAME(Command_GetGraphics);
  QUILLMARK_NAME(Check_SavePics);
  QUILLMARK_NAME(Text1);
  QUILLMARK_NAME(Text_SubNum);
  QUILLMARK_NAME(Text_StartTime);
  QUILLMARK_NAME(Text_Dur);
  QUILLMARK_NAME(Text_XPos);
  QUILLMARK_NAME(Text_YPos);
  QUILLMARK_NAME(Text_Width);
  QUILLMARK_NAME(Text_Height);
  QUILLMARK_NAME(Text_GraphFile);
  QUILLMARK_NAME(Text_Pixel);
  QUILLMARK_NAME(ImageCombo1);
  QUILLMARK_NAME(ImageCombo2);
  QUILLMARK_NAME(ImageCombo3);
  QUILLMARK_NAME(ImageCombo4);
  QUILLMARK_NAME(ImageList1);
  QUILLMARK_NAME(Picture1);
  QUILLMARK_NAME(Frame1);
  QUILLMARK_NAME(Frame2);
  QUILLMARK_NAME(Frame3);
  QUILLMARK_NAME(Option_File);
  QUILLMARK_NAME(Option_Checker);
  QUILLMARK_NAME(Option_Colour);
  QUILLMARK_NAME(Label_Ground);
  QUILLMARK_NAME(Option_720x480);
  QUILLMARK_NAME(Option_720x576);
  QUILLMARK_NAME_ARRAY(Combo1)
  QUILLMARK_NAME_ARRAY(Label1)
  QUILLMARK_NAME_ARRAY(Picture2)
}

#undef QUILLMARK_NAME
#undef QUILLMARK_NAME_ARRAY

void frmTestControls::SetTabOrder(const ListPanel& list) const {
  QWidget::setTabOrder(Command_Recover, Command_Forget);
  QWidget::setTabOrder(Command_Forget, Command_Reopen);
  QWidget::setTabOrder(Command_Reopen, Command_LoadSup);
  QWidget* previous = Command_LoadSup;
  const auto next = [&previous](QWidget* widget) {
    QWidget::setTabOrder(previous, widget);
    previous = widget;
  };
  for (QWidget* widget : std::initializer_list<QWidget*>{
           Command_SaveSup, Command_LoadPalette, Command_SavePalette, Text1, Command_Prev, Command_Next,
           Command_GoTo, Command_Reload, Text_SubNum, Text_StartTime, Text_Dur, Text_XPos, Text_YPos,
           Text_Width, Text_Height, Check_SavePics}) {
    next(widget);
  }
  for (QWidget* widget : list.TabOrder()) {
    next(widget);
  }
  for (PaletteSwatch* swatch : Label1) {
    next(swatch);
  }
  for (QComboBox* colours : ColourLists()) {
    next(colours);
  }
  for (QComboBox* opacities : Combo1) {
    next(opacities);
  }
  for (QWidget* widget : std::initializer_list<QWidget*>{
           Command_SetActual, Command_SetSelected, Command_SetAll, Option_Checker, Option_Colour,
           Label_Ground, Option_File, Command_GetGraphics, Text_GraphFile, Option_720x480, Option_720x576,
           Command_LoadSecond, Command_SaveSecond}) {
    next(widget);
  }
}

}  // namespace quillmark
