#include "app/frmTest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QShortcut>

#include "app/Dialogs.h"
#include "app/PaletteSwatch.h"
#include "app/PathText.h"
#include "base/LeadingNumber.h"

namespace quillmark {

frmTest::frmTest(QWidget* parent)
    : QMainWindow(parent), gdip_([this](const QString& source, int status, const QString& text) {
        ShowImagingError(source, status, text);
      }) {
  setObjectName(QStringLiteral("frmTest"));
  setWindowTitle(QStringLiteral("Quillmark"));
  setAcceptDrops(true);
  Build(this);
  Text1->setText(InProgramFolder(QStringLiteral("test.sup")));
  Text_SubNum->setText(QStringLiteral("0"));
  RebuildPaletteImages();
  DrawFrameBackground();
  for (QWidget* command :
       std::initializer_list<QWidget*>{Command_SaveSup, Command_SavePalette, Command_Prev, Command_Next,
                                       Command_GoTo, Command_Reload, Command_SetActual, Command_SetAll}) {
    command->setEnabled(false);
  }
  ConnectCommands();
  AddShortcuts();
  Command_LoadSup->setFocus();
}

void frmTest::ConnectCommands() {
  const auto onClick = [this](QAbstractButton* button, void (frmTest::*handler)()) {
    connect(button, &QAbstractButton::clicked, this, [this, handler] { (this->*handler)(); });
  };
  onClick(Command_LoadSup, &frmTest::Command_LoadSup_Click);
  onClick(Command_SaveSup, &frmTest::Command_SaveSup_Click);
  onClick(Command_LoadPalette, &frmTest::Command_LoadPalette_Click);
  onClick(Command_SavePalette, &frmTest::Command_SavePalette_Click);
  onClick(Command_Reload, &frmTest::Command_Reload_Click);
  onClick(Command_Prev, &frmTest::Command_Prev_Click);
  onClick(Command_Next, &frmTest::Command_Next_Click);
  onClick(Command_GoTo, &frmTest::Command_GoTo_Click);
  onClick(Command_SetActual, &frmTest::Command_SetActual_Click);
  onClick(Command_SetAll, &frmTest::Command_SetAll_Click);
  onClick(Command_LoadSecond, &frmTest::Command_LoadSecond_Click);
  onClick(Command_SaveSecond, &frmTest::Command_SaveSecond_Click);
  onClick(Command_GetGraphics, &frmTest::Command_GetGraphics_Click);
  onClick(Option_Checker, &frmTest::RefreshCodeColours);
  onClick(Option_File, &frmTest::Option_File_Click);
  connect(Option_720x480, &QAbstractButton::clicked, this, [this] { SetFrameLines(FrameHeight480); });
  connect(Option_720x576, &QAbstractButton::clicked, this, [this] { SetFrameLines(FrameHeight576); });
  for (std::size_t entry = 0; entry < Label1.size(); ++entry) {
    connect(Label1[entry], &QAbstractButton::clicked, this, [this, entry] { Label1_Click(entry); });
  }
  for (const auto& lists : {ColourLists(), Combo1}) {
    for (QComboBox* list : lists) {
      connect(list, &QComboBox::currentIndexChanged, this, &frmTest::CodeListChanged);
    }
  }
}

void frmTest::AddShortcuts() {
  const auto add = [this](const QKeySequence& keys, QPushButton* command) {
    connect(new QShortcut(keys, this), &QShortcut::activated, command, [command] { command->click(); });
  };
  add(QKeySequence(Qt::CTRL | Qt::Key_O), Command_LoadSup);
  add(QKeySequence(Qt::CTRL | Qt::Key_S), Command_SaveSup);
  add(QKeySequence(Qt::Key_PageUp), Command_Prev);
  add(QKeySequence(Qt::ALT | Qt::Key_Left), Command_Prev);
  add(QKeySequence(Qt::Key_PageDown), Command_Next);
  add(QKeySequence(Qt::ALT | Qt::Key_Right), Command_Next);
  add(QKeySequence(Qt::CTRL | Qt::Key_G), Command_GoTo);
  add(QKeySequence(Qt::Key_F5), Command_Reload);
  connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), this), &QShortcut::activated, this,
          &QWidget::close);
}

void frmTest::ShowImagingError(const QString& source, int status, const QString& text) {
  ShowMessage(this, QStringLiteral("GDIP Error in: %1\r\nError Number: %2\r\nError Description: %3")
                        .arg(source)
                        .arg(status)
                        .arg(text));
}

void frmTest::EnableEditing(bool enabled) {
  for (QWidget* command : std::initializer_list<QWidget*>{Command_LoadPalette, Command_SavePalette,
                                                          Command_SaveSup, Frame1, Frame2}) {
    command->setEnabled(enabled);
  }
  for (const auto& lists : {ColourLists(), Combo1}) {
    for (QComboBox* list : lists) {
      list->setEnabled(enabled);
    }
  }
  for (PaletteSwatch* swatch : Label1) {
    swatch->setEnabled(enabled);
  }
}

void frmTest::EnableSteps() {
  const bool severalToShow = Text_SubNum->text() == QLatin1String("1") && primary_.Count >= 2;
  Command_Next->setEnabled(severalToShow);
  Command_GoTo->setEnabled(severalToShow);
  Command_Prev->setEnabled(false);
}

void frmTest::EnableChanges() {
  const bool showsFirst = Text_SubNum->text() == QLatin1String("1");
  Command_Reload->setEnabled(showsFirst);
  Command_SetActual->setEnabled(showsFirst);
  Command_SetAll->setEnabled(showsFirst);
}

std::int64_t frmTest::SubtitleNumber() const {
  return static_cast<std::int64_t>(LeadingNumber(Text_SubNum->text().toStdString()));
}

bool frmTest::ShowsSubtitle() const {
  return Text_SubNum->text() != QLatin1String("?") && Text_SubNum->text() != QLatin1String("0");
}

}  // namespace quillmark
