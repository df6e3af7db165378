#include "app/frmTestControls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QStyle>
#include <QVBoxLayout>

#include "app/Accessible.h"
#include "app/CodeList.h"
#include "app/CodeName.h"
#include "app/ColourSwatch.h"
#include "app/DisplayFrame.h"
#include "app/ImageList.h"
#include "app/ListPanel.h"
#include "app/PaletteSwatch.h"
#include "app/ShownField.h"
#include "app/StepButton.h"
#include "app/Strip.h"
#include "app/Ui.h"
#include "app/WindowBody.h"

namespace quillmark {
namespace {

template <class Button = QPushButton>
Button* MakeButton(QWidget* parent, const QString& caption, const QString& toolTip) {
  auto* button = new Button(caption, parent);
  button->setToolTip(toolTip);
  button->setAutoDefault(true);  // Return presses it, as Space does
  return button;
}

QLineEdit* MakeShownField(QWidget* parent, const QString& accessibleName, const QString& toolTip,
                          const QString& widest) {
  auto* field = new ShownField(widest, parent);
  field->setAccessibleName(accessibleName);
  field->setToolTip(toolTip);
  return field;
}

QRadioButton* MakeOption(QWidget* parent, const QString& caption, const QString& toolTip) {
  auto* option = new QRadioButton(caption, parent);
  option->setToolTip(toolTip);
  // Tab enters a group at the option that is chosen.
  option->setFocusPolicy(Qt::ClickFocus);
  QObject::connect(option, &QRadioButton::toggled, option, [option](bool chosen) {
    option->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
  });
  return option;
}

QGroupBox* MakeGroup(QWidget* parent, const QString& title) {
  auto* group = new QGroupBox(title, parent);
  group->setAccessibleName(title);
  return group;
}

/// A group's grid, close enough for the whole window to fit a small screen.
QGridLayout* MakeGrid(QWidget* group) {
  auto* grid = new QGridLayout(group);
  const int gap = group->fontMetrics().height() / 3;
  grid->setContentsMargins(gap, gap, gap, gap);
  grid->setSpacing(gap);
  return grid;
}

/// The label of a field, which also carries the keyboard focus to it for assistive tools.
QLabel* MakeLabel(QWidget* parent, const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text, parent);
  label->setBuddy(buddy);
  return label;
}

QHBoxLayout* Pair(QWidget* first, QWidget* second) {
  auto* row = new QHBoxLayout;
  row->addWidget(first);
  row->addWidget(second);
  row->addStretch();
  return row;
}

}  // namespace

frmTestControls::frmTestControls() {
  InstallAccessibility();
}

void frmTestControls::Build(QMainWindow* window, ListPanel* list) {
  Picture1 = new DisplayFrame(window);
  Picture1->setAccessibleName(Ui::Tr("Subtitle picture"));
  Picture1->SetHint(Ui::Tr("Open a SUP file with Ctrl+O, import others with Ctrl+I, or drop one here"));
  Body = new WindowBody(Picture1, window);
  Strip_Recover = new Strip(QStringLiteral("Strip_Recover"), Body);
  Command_Recover = Strip_Recover->AddCommand(QStringLiteral("Command_Recover"), Ui::Tr("Restore"));
  Command_Recover->setToolTip(Ui::Tr("Make the edits of this stream again that were not saved"));
  Command_Forget = Strip_Recover->AddCommand(QStringLiteral("Command_Forget"), Ui::Tr("Discard"));
  Command_Forget->setToolTip(Ui::Tr("Forget the edits that were not saved"));
  Strip_Closed = new Strip(QStringLiteral("Strip_Closed"), Body);
  Command_Reopen = Strip_Closed->AddCommand(QStringLiteral("Command_Reopen"), Ui::Tr("Open it again"));
  Command_Reopen->setToolTip(Ui::Tr("Go on with the stream that was open, as it was left"));
  Body->FrameColumn()->insertWidget(0, Strip_Recover);
  Body->FrameColumn()->insertWidget(1, Strip_Closed);
  QWidget* commands = Body->Commands();
  Body->CommandColumn()->addWidget(BuildFileGroup(commands));
  Body->CommandColumn()->addWidget(BuildSubtitleGroup(commands));
  QWidget* paletteGroup = BuildPaletteGroup(commands);
  Body->CommandColumn()->addWidget(paletteGroup);
  QWidget* backgroundFrame = BuildBackgroundFrame(commands);
  QWidget* sizeFrame = BuildSizeFrame(commands);
  Body->SetGroups(backgroundFrame, sizeFrame, BuildSecondFrame(commands));
  Body->SetList(list, paletteGroup);
  window->setCentralWidget(Body);
  // Everything in sight, with some lines for the menu and the bars, as far as the screen has room.
  const QSize wanted = Body->sizeHint() + QSize(0, 4 * window->fontMetrics().lineSpacing());
  const int titleBar = window->style()->pixelMetric(QStyle::PM_TitleBarHeight);
  window->resize(wanted.boundedTo(window->screen()->availableSize() - QSize(0, titleBar)));

  Text_Pixel = MakeShownField(
      window, Ui::Tr("Pixel"), Ui::Tr("Place, pixel code, palette entry and opacity under the pointer"),
      QStringLiteral("000, 000: %1, ").arg(Ui::Tr("2nd")) +
          Ui::Tr("code %1 (%2), entry %3, opacity %4",
                 {QStringLiteral("0"), CodeName(0), QStringLiteral("0"), QStringLiteral("0")}));
  NameControls();
  SetTabOrder(*list);
  DescribePicture();
  for (QLineEdit* field : {Text_StartTime, Text_Dur, Text_SubNum}) {
    QObject::connect(field, &QLineEdit::textChanged, Picture1, [this] { DescribePicture(); });
  }
}

void frmTestControls::DescribePicture() const {
  const QString number = Text_SubNum->text();
  if (number.isEmpty() || number == QLatin1String("0")) {
    Picture1->SetDescription(Ui::Tr("No subtitle is shown"));
    return;
  }
  Picture1->SetHint({});
  Picture1->SetDescription(number == QLatin1String("?")
                               ? Ui::Tr("The subtitle cannot be shown")
                               : Ui::Tr("Subtitle %1, start %2, duration %3 seconds")
                                     .arg(number, Text_StartTime->text(), Text_Dur->text()));
}

QWidget* frmTestControls::BuildFileGroup(QWidget* parent) {
  auto* group = new QWidget(parent);
  Text1 = MakeShownField(group, Ui::Tr("SUP file"), Ui::Tr("Path of the loaded subtitle stream"), {});
  Command_LoadSup = MakeButton(group, Ui::Tr("Load SUP"),
                               Ui::Tr("Load a subtitle stream, or drop one on the window (Ctrl+O)"));
  Command_SaveSup = MakeButton(group, Ui::Tr("Save SUP"),
                               Ui::Tr("Save the stream with the colours and opacities set (Ctrl+S)"));
  Command_LoadPalette =
      MakeButton(group, Ui::Tr("Load Palette"), Ui::Tr("Read the palette from an IFO, PAL or RGB file"));
  Command_SavePalette =
      MakeButton(group, Ui::Tr("Save Palette"), Ui::Tr("Write the palette as a PAL or RGB file"));
  QGridLayout* grid = MakeGrid(group);
  grid->addWidget(MakeLabel(group, Ui::Tr("Sup File:"), Text1), 0, 0);
  auto* buttons = new QHBoxLayout;
  for (QPushButton* button : {Command_LoadSup, Command_SaveSup, Command_LoadPalette, Command_SavePalette}) {
    buttons->addWidget(button, 1);
  }
  grid->addWidget(Text1, 0, 1);
  grid->addLayout(buttons, 1, 0, 1, 2);
  return group;
}

QWidget* frmTestControls::BuildSubtitleGroup(QWidget* parent) {
  auto* group = new QWidget(parent);
  Text_SubNum = MakeShownField(group, Ui::Tr("Subtitle number"),
                               Ui::Tr("Number of the subtitle shown; 0: none, ?: it cannot be shown"),
                               QStringLiteral("00000"));
  auto* prev = MakeButton<StepButton>(group, Ui::Tr("Prev"), Ui::Tr("Previous subtitle (PageUp, Alt+Left)"));
  auto* next = MakeButton<StepButton>(group, Ui::Tr("Next"), Ui::Tr("Next subtitle (PageDown, Alt+Right)"));
  prev->SetPartner(next);
  next->SetPartner(prev);
  Command_Prev = prev;
  Command_Next = next;
  Command_GoTo = MakeButton(group, Ui::Tr("GoTo"), Ui::Tr("Jump to a subtitle by its number (Ctrl+G)"));
  Command_Reload =
      MakeButton(group, Ui::Tr("Reset"), Ui::Tr("Show the subtitle as the stream has it again (F5)"));
  Check_SavePics = new QCheckBox(Ui::Tr("SavePics"), group);
  Check_SavePics->setToolTip(
      Ui::Tr("Write every subtitle shown as a PNG picture, with a line in the list for authoring"));
  Text_StartTime =
      MakeShownField(group, Ui::Tr("Start time"), Ui::Tr("Start as hours:minutes:seconds.hundredths"),
                     QStringLiteral("000:00:00.00"));
  Text_Dur = MakeShownField(group, Ui::Tr("Duration in seconds"),
                            Ui::Tr("Duration in seconds; ??? when the subtitle has no end"),
                            QStringLiteral("000.00"));
  Text_XPos =
      MakeShownField(group, Ui::Tr("X position"), Ui::Tr("Left edge in pixels"), QStringLiteral("0000"));
  Text_YPos =
      MakeShownField(group, Ui::Tr("Y position"), Ui::Tr("Top edge in pixels"), QStringLiteral("0000"));
  Text_Width = MakeShownField(group, Ui::Tr("Width"), Ui::Tr("Width in pixels"), QStringLiteral("0000"));
  Text_Height = MakeShownField(group, Ui::Tr("Height"), Ui::Tr("Height in pixels"), QStringLiteral("0000"));

  QGridLayout* grid = MakeGrid(group);
  auto* steps = new QHBoxLayout;
  steps->addWidget(Text_SubNum);
  for (QPushButton* button : {Command_Prev, Command_Next, Command_GoTo, Command_Reload}) {
    steps->addWidget(button, 1);
  }
  grid->addWidget(MakeLabel(group, Ui::Tr("SubTitle #"), Text_SubNum), 0, 0);
  grid->addLayout(steps, 0, 1, 1, 4);
  grid->addWidget(MakeLabel(group, Ui::Tr("StartTime"), Text_StartTime), 1, 0);
  grid->addWidget(Text_StartTime, 1, 1);
  grid->addWidget(MakeLabel(group, Ui::Tr("Duration (sec)"), Text_Dur), 2, 0);
  grid->addWidget(Text_Dur, 2, 1);
  grid->setColumnMinimumWidth(2, group->fontMetrics().height());
  grid->addWidget(MakeLabel(group, Ui::Tr("Position (X,Y)"), Text_XPos), 1, 3);
  grid->addLayout(Pair(Text_XPos, Text_YPos), 1, 4);
  grid->addWidget(MakeLabel(group, Ui::Tr("Size (W,H)"), Text_Width), 2, 3);
  QHBoxLayout* size = Pair(Text_Width, Text_Height);
  size->addWidget(Check_SavePics);
  grid->addLayout(size, 2, 4);
  grid->setColumnStretch(4, 1);
  return group;
}

void frmTestControls::BuildColourLists(QWidget* parent) {
  ImageList1 = new ImageList(parent);
  const std::array<QComboBox**, 4> colourLists = {&ImageCombo1, &ImageCombo2, &ImageCombo3, &ImageCombo4};
  for (std::size_t code = 0; code < 4; ++code) {
    auto* colours = new CodeList(parent);
    colours->setModel(ImageList1);
    colours->setAccessibleName(Ui::Tr("Colour of the %1").arg(CodeName(code)));
    colours->setToolTip(
        Ui::Tr("Palette entry of the %1 (pixel code %2)", {CodeName(code), QString::number(code)}));
    *colourLists[code] = colours;
    auto* opacities = new CodeList(parent);
    for (int contrast = 0; contrast < 16; ++contrast) {
      opacities->addItem(QString::number(contrast, 16).toUpper());
    }
    opacities->setAccessibleName(Ui::Tr("Opacity of the %1").arg(CodeName(code)));
    opacities->setToolTip(Ui::Tr("Opacity of the %1 (pixel code %2): 0 invisible, F opaque",
                                 {CodeName(code), QString::number(code)}));
    Combo1[code] = opacities;
  }
}

QWidget* frmTestControls::BuildPaletteGroup(QWidget* parent) {
  QGroupBox* group = MakeGroup(parent, Ui::Tr("Palette"));
  auto* swatches = new QHBoxLayout;
  swatches->setSpacing(group->fontMetrics().height() * 2 / 5);
  for (int entry = 0; entry < 16; ++entry) {
    const auto i = static_cast<std::size_t>(entry);
    Label1[i] = new PaletteSwatch(entry, StartUpPalette[i], group);
    Label1[i]->setToolTip(Ui::Tr("Click color to edit"));
    swatches->addWidget(Label1[i]);
    Picture2[i] = new QLabel(group);
    Picture2[i]->hide();
  }
  swatches->addStretch();
  BuildColourLists(group);
  Command_SetActual = MakeButton(group, Ui::Tr("Set for actual"),
                                 Ui::Tr("Write the chosen colours and opacities into this subtitle"));
  Command_SetSelected =
      MakeButton(group, Ui::Tr("Set for selected"),
                 Ui::Tr("Write the chosen colours and opacities into the subtitles selected in the list"));
  Command_SetAll = MakeButton(group, Ui::Tr("Set for all"),
                              Ui::Tr("Write the chosen colours and opacities into every subtitle"));

  QGridLayout* grid = MakeGrid(group);
  grid->addLayout(swatches, 0, 0, 1, 6);
  grid->addWidget(MakeLabel(group, Ui::Tr("Colors"), ImageCombo1), 2, 0);
  grid->addWidget(MakeLabel(group, Ui::Tr("Opacities"), Combo1[0]), 3, 0);
  const auto colourLists = ColourLists();
  for (std::size_t code = 0; code < 4; ++code) {
    const int column = static_cast<int>(code) + 1;
    auto* heading = new QLabel(QStringLiteral("%1 %2").arg(code).arg(CodeName(code)), group);
    grid->addWidget(heading, 1, column);
    grid->addWidget(colourLists[code], 2, column);
    grid->addWidget(Combo1[code], 3, column);
    grid->setColumnStretch(column, 1);
  }
  grid->addWidget(Command_SetActual, 1, 5);
  grid->addWidget(Command_SetSelected, 2, 5);
  grid->addWidget(Command_SetAll, 3, 5);
  return group;
}

QWidget* frmTestControls::BuildBackgroundFrame(QWidget* parent) {
  Frame1 = MakeGroup(parent, Ui::Tr("Background"));
  Option_Checker = MakeOption(Frame1, Ui::Tr("Checker"), Ui::Tr("Show subtitles over grey squares"));
  Option_File =
      MakeOption(Frame1, Ui::Tr("Graph. File"), Ui::Tr("Show subtitles over the picture file named here"));
  Option_Colour =
      MakeOption(Frame1, Ui::Tr("Colour"), Ui::Tr("Show subtitles over one colour, that of the square"));
  Label_Ground = new ColourSwatch(0, Frame1);
  Label_Ground->setToolTip(Ui::Tr("Click to pick the background colour"));
  Label_Ground->setFocusPolicy(Qt::ClickFocus);
  // Tab stops at the colour while it is shown.
  QObject::connect(Option_Colour, &QRadioButton::toggled, Label_Ground, [this](bool chosen) {
    Label_Ground->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
  });
  Option_Checker->setChecked(true);
  Text_GraphFile = new QLineEdit(Frame1);
  Text_GraphFile->setAccessibleName(Ui::Tr("Background picture file"));
  Text_GraphFile->setToolTip(Ui::Tr("Path of the background picture (BMP, GIF, JPEG or PNG)"));
  Command_GetGraphics = MakeButton(Frame1, Ui::Tr("Load Background graphic form file"),
                                   Ui::Tr("Choose the background picture file"));
  QGridLayout* grid = MakeGrid(Frame1);
  grid->addWidget(Option_Checker, 0, 0);
  grid->addWidget(Command_GetGraphics, 0, 1, 1, 3);
  grid->addWidget(Option_File, 1, 0);
  grid->addWidget(Text_GraphFile, 1, 1);
  grid->addWidget(Option_Colour, 1, 2);
  grid->addWidget(Label_Ground, 1, 3);
  grid->setColumnStretch(1, 1);
  return Frame1;
}

QWidget* frmTestControls::BuildSizeFrame(QWidget* parent) {
  Frame2 = MakeGroup(parent, Ui::Tr("Size"));
  Option_720x480 = MakeOption(Frame2, QStringLiteral("720x480"), Ui::Tr("Frame of 525-line (NTSC) discs"));
  Option_720x576 = MakeOption(Frame2, QStringLiteral("720x576"), Ui::Tr("Frame of 625-line (PAL) discs"));
  Option_720x576->setChecked(true);
  QGridLayout* column = MakeGrid(Frame2);
  column->addWidget(Option_720x480, 0, 0);
  column->addWidget(Option_720x576, 1, 0);
  return Frame2;
}

QWidget* frmTestControls::BuildSecondFrame(QWidget* parent) {
  Frame3 = MakeGroup(parent, Ui::Tr("2nd"));
  Command_LoadSecond = MakeButton(Frame3, Ui::Tr("Load/Merge secondary SUP"),
                                  Ui::Tr("Load a second stream and lay it over the first"));
  Command_SaveSecond = MakeButton(Frame3, Ui::Tr("Save merged (prim. + sec.) SUP"),
                                  Ui::Tr("Write both streams as one, encoded anew"));
  QGridLayout* column = MakeGrid(Frame3);
  column->addWidget(Command_LoadSecond, 0, 0);
  column->addWidget(Command_SaveSecond, 1, 0);
  return Frame3;
}

}  // namespace quillmark
