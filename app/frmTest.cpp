#include "app/frmTest.h"

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>

#include "app/ColourSwatch.h"
#include "app/Comparison.h"
#include "app/Dialogs.h"
#include "app/DisplayFrame.h"
#include "app/Document.h"
#include "app/FrameInspector.h"
#include "app/ListPanel.h"
#include "app/PaletteSwatch.h"
#include "app/PathText.h"
#include "app/RecoveryJournal.h"
#include "app/ReviewPanel.h"
#include "app/StatusLine.h"
#include "app/Strip.h"
#include "app/SubtitleList.h"
#include "app/Ui.h"
#include "app/WindowBody.h"

namespace quillmark {

frmTest::frmTest(QWidget* parent)
    : QMainWindow(parent),
      gdip_([this](const QString& source, int status, const QString& text) {
        ShowImagingError(source, status, text);
      }),
      document_(new Document(this)),
      // Before anything that shows the document, so that an edit is written down before it is shown.
      recovery_(new RecoveryJournal(*document_, this)),
      list_(new SubtitleList(*document_, this)),
      review_(new ReviewPanel(*document_, this)),
      listPanel_(new ListPanel(*list_, *review_, this)),
      comparison_(new Comparison(*document_, this)) {
  setObjectName(QStringLiteral("frmTest"));
  setWindowTitle(QStringLiteral("Quillmark"));
  setAcceptDrops(true);
  Build(this, listPanel_);
  BuildActions(this);
  status_ = new StatusLine(this);
  setStatusBar(status_);
  status_->insertPermanentWidget(0, Text_Pixel);
  inspector_ = new FrameInspector(Picture1, &Body->Frame(), Text_Pixel, this);
  ConnectGround();
  BuildMenus();
  ConnectDocument();
  document_->SetSupPath(InProgramFolder(QStringLiteral("test.sup")));
  document_->SetNumber(0);
  ShowPalette();
  KeepHintsReadable();
  DrawFrameBackground();
  ConnectActions();
  ConnectControls();
  ConnectRecovery();
  ConnectList();
  ConnectReview();
  ConnectCompare();
  ConnectTools();
  ConnectView();
  BuildPlayer();
  UpdateCommands();
  Command_LoadSup->setFocus();
}

void frmTest::ConnectActions() {
  const auto connectTo = [this](QAction* action, QPushButton* button, void (frmTest::*handler)()) {
    connect(action, &QAction::triggered, this,
            [this, handler] { RunCommand([this, handler] { (this->*handler)(); }); });
    if (button != nullptr) {
      connect(button, &QAbstractButton::clicked, action, &QAction::trigger);
      connect(action, &QAction::enabledChanged, button, &QWidget::setEnabled);
      button->setEnabled(action->isEnabled());
    }
  };
  connectTo(Action_LoadSup, Command_LoadSup, &frmTest::Command_LoadSup_Click);
  connectTo(Action_Import, nullptr, &frmTest::Command_Import_Click);
  connectTo(Action_SaveSup, Command_SaveSup, &frmTest::Command_SaveSup_Click);
  connectTo(Action_Export, nullptr, &frmTest::Command_Export_Click);
  connectTo(Action_LoadPalette, Command_LoadPalette, &frmTest::Command_LoadPalette_Click);
  connectTo(Action_SavePalette, Command_SavePalette, &frmTest::Command_SavePalette_Click);
  connectTo(Action_ProgramChains, nullptr, &frmTest::Command_ProgramChains_Click);
  connectTo(Action_Reload, Command_Reload, &frmTest::Command_Reload_Click);
  connectTo(Action_Prev, Command_Prev, &frmTest::Command_Prev_Click);
  connectTo(Action_Next, Command_Next, &frmTest::Command_Next_Click);
  connectTo(Action_GoTo, Command_GoTo, &frmTest::Command_GoTo_Click);
  connectTo(Action_SetActual, Command_SetActual, &frmTest::Command_SetActual_Click);
  connectTo(Action_SetSelected, Command_SetSelected, &frmTest::Command_SetSelected_Click);
  connectTo(Action_SetAll, Command_SetAll, &frmTest::Command_SetAll_Click);
  connectTo(Action_LoadSecond, Command_LoadSecond, &frmTest::Command_LoadSecond_Click);
  connectTo(Action_SaveSecond, Command_SaveSecond, &frmTest::Command_SaveSecond_Click);
  connectTo(Action_GetGraphics, Command_GetGraphics, &frmTest::Command_GetGraphics_Click);
  connectTo(Action_ForgetRecent, nullptr, &frmTest::Command_ForgetRecent_Click);
  connectTo(Action_Recover, Command_Recover, &frmTest::Command_Recover_Click);
  connectTo(Action_Forget, Command_Forget, &frmTest::Command_Forget_Click);
  connectTo(Action_Reopen, Command_Reopen, &frmTest::Command_Reopen_Click);
  connectTo(Action_NextProblem, nullptr, &frmTest::Command_NextProblem_Click);
  connectTo(Action_PrevProblem, nullptr, &frmTest::Command_PrevProblem_Click);
  connectTo(Action_Copy, nullptr, &frmTest::Command_Copy_Click);
  connectTo(Action_SaveRecipe, nullptr, &frmTest::Command_SaveRecipe_Click);
  connectTo(Action_RunRecipe, nullptr, &frmTest::Command_RunRecipe_Click);
  connectTo(Action_Compare, nullptr, &frmTest::Command_Compare_Click);
  connectTo(Action_Undo, nullptr, &frmTest::Command_Undo_Click);
  connectTo(Action_Redo, nullptr, &frmTest::Command_Redo_Click);
  connectTo(Action_RevertPreview, nullptr, &frmTest::Command_Reload_Click);
  connectTo(Action_PictureBehind, nullptr, &frmTest::Command_PictureBehind_Click);
  connectTo(Action_Offset, nullptr, &frmTest::Command_Offset_Click);
  connectTo(Action_SuggestOffset, review_->SuggestButton(), &frmTest::Command_SuggestOffset_Click);
  connectTo(Action_LeaveMerge, nullptr, &frmTest::Command_LeaveMerge_Click);
  connectTo(Action_Report, nullptr, &frmTest::Command_Report_Click);
  connectTo(Action_Keys, nullptr, &frmTest::Command_Keys_Click);
  connectTo(Action_About, nullptr, &frmTest::Command_About_Click);
  connectTo(Action_AboutQt, nullptr, &frmTest::Command_AboutQt_Click);
  connect(Action_Quit, &QAction::triggered, this, &QWidget::close);
}

void frmTest::ConnectControls() {
  const auto onClick = [this](QAbstractButton* button, const std::function<void()>& handler) {
    connect(button, &QAbstractButton::clicked, this, [this, handler] { RunCommand(handler); });
  };
  onClick(Option_Checker, [this] { document_->Preview(); });
  onClick(Option_Colour, [this] { document_->Preview(); });
  onClick(Label_Ground, [this] { Label_Ground_Click(); });
  onClick(Option_File, [this] { Option_File_Click(); });
  onClick(Option_720x480, [this] { document_->SetFrameLines(FrameHeight480); });
  onClick(Option_720x576, [this] { document_->SetFrameLines(FrameHeight576); });
  for (std::size_t entry = 0; entry < Label1.size(); ++entry) {
    onClick(Label1[entry], [this, entry] { Label1_Click(entry); });
  }
  for (const auto& lists : {ColourLists(), Combo1}) {
    for (QComboBox* list : lists) {
      connect(list, &QComboBox::currentIndexChanged, this, &frmTest::CodeListChanged);
      connect(list, &QComboBox::activated, this, &frmTest::CodeListActivated);
    }
  }
  connect(Text1, &QLineEdit::textChanged, document_, &Document::SetSupPath);
}

void frmTest::ConnectDocument() {
  connect(document_, &Document::SupPathChanged, this, [this] {
    if (Text1->text() != document_->SupPath()) {
      Text1->setText(document_->SupPath());
    }
  });
  connect(document_, &Document::NumberChanged, this,
          [this] { Text_SubNum->setText(document_->NumberText()); });
  connect(document_, &Document::FrameLinesChanged, this,
          [this] { Picture1->SetLines(document_->FrameLines()); });
  connect(document_, &Document::SubtitleShown, this, &frmTest::ShowSubtitle);
  connect(document_, &Document::PreviewShown, this, [this](std::span<const std::uint8_t> unit) {
    RenderSubtitle(unit, document_->Control(), document_->Colours(), true);
  });
  connect(document_, &Document::PaletteChanged, this, &frmTest::ShowPalette);
  connect(document_, &Document::CommandsChanged, this, &frmTest::UpdateCommands);
  connect(document_, &Document::ChoiceChanged, this, &frmTest::UpdateCommands);
  ConnectStatus();
}

void frmTest::RunCommand(const std::function<void()>& command) {
  if (running_) {
    return;
  }
  const QScopedValueRollback<bool> running(running_, true);
  command();
}

bool frmTest::IsBusy() const {
  return running_ || QApplication::activeModalWidget() != nullptr ||
         QGuiApplication::overrideCursor() != nullptr;
}

void frmTest::UpdateCommands() {
  const EnabledCommands enabled = document_->Enabled();
  for (QAction* action : {Action_LoadSup, Action_Import, Action_LoadSecond, Action_SaveSecond}) {
    action->setEnabled(enabled.Load);
  }
  for (QAction* action : {Action_SaveSup, Action_SavePalette}) {
    action->setEnabled(enabled.Save);
  }
  for (QAction* action : {Action_LoadPalette, Action_ProgramChains, Action_GetGraphics}) {
    action->setEnabled(enabled.Editing);
  }
  for (QWidget* control : std::initializer_list<QWidget*>{Frame1, Frame2}) {
    control->setEnabled(enabled.Editing);
  }
  for (const auto& lists : {ColourLists(), Combo1}) {
    for (QComboBox* list : lists) {
      list->setEnabled(enabled.Editing);
    }
  }
  for (PaletteSwatch* swatch : Label1) {
    swatch->setEnabled(enabled.Editing);
  }
  for (QAction* action : {Action_Reload, Action_SetActual, Action_SetAll}) {
    action->setEnabled(enabled.Change);
  }
  Action_Prev->setEnabled(enabled.Prev);
  Action_Next->setEnabled(enabled.Next);
  Action_GoTo->setEnabled(enabled.GoTo);
  const QUndoStack& history = document_->History();
  Action_Undo->setText(enabled.Undo ? Ui::Tr("&Undo %1", {history.undoText()}) : Ui::Tr("&Undo"));
  Action_Undo->setEnabled(enabled.Undo);
  Action_Redo->setText(enabled.Redo ? Ui::Tr("&Redo %1", {history.redoText()}) : Ui::Tr("&Redo"));
  Action_Redo->setEnabled(enabled.Redo);
  for (QAction* action :
       {Action_720x480, Action_720x576, Action_Checker, Action_File, Action_Colour, Action_PictureBehind}) {
    action->setEnabled(enabled.Editing);
  }
  for (QAction* action : Label_Ground->actions()) {
    action->setEnabled(enabled.Editing);
  }
  for (QAction* action : {Action_Offset, Action_LeaveMerge}) {
    action->setEnabled(enabled.Merging);
  }
  UpdateReview();
  Menu_Recent->setEnabled(enabled.Load && !memory_.RecentFiles().isEmpty());
  Action_ForgetRecent->setEnabled(Menu_Recent->isEnabled());
  Action_Export->setEnabled(enabled.Tools);
  Action_Reopen->setEnabled(enabled.Reopen);
  if (!enabled.Reopen) {
    Strip_Closed->Say({});
  }
  Action_Recover->setEnabled(enabled.Load && recovery_->CanRestore());
  Action_Forget->setEnabled(enabled.Load && !recovery_->OfferText().isEmpty());
  Action_RevertPreview->setEnabled(enabled.Revert);
  ShowPreviewMark();
  UpdateList();
  UpdateCompare();
  UpdateTools();
  Action_Report->setEnabled(enabled.Report);
  for (QAction* action : {Action_Keys, Action_About, Action_AboutQt}) {
    action->setEnabled(enabled.Help);
  }
}

void frmTest::ShowImagingError(const QString& source, int status, const QString& text) {
  ShowMessage(this, Ui::Tr("GDIP Error in: %1\r\nError Number: %2\r\nError Description: %3")
                        .arg(source, QString::number(status), text));
}

QString frmTest::AskToOpen(const QString& initialName, const QString& description, const QString& pattern) {
  QString tooLong;
  const QString path = OpenFileName(this, StartOf(initialName), description, pattern, &tooLong);
  return TellTooLong(tooLong) ? QString() : Remembered(path);
}

QString frmTest::AskToSave(const QString& initialName, const QString& description, const QString& pattern) {
  QString tooLong;
  const QString path = SaveFileName(this, FolderOf(initialName), initialName, description, pattern, &tooLong);
  return TellTooLong(tooLong) ? QString() : Remembered(path);
}

bool frmTest::TellTooLong(const QString& path) {
  if (!IsTooLongForDialogs(path)) {
    return false;
  }
  Tell(Ui::Tr("Nothing was done: the file dialogs take no path of more than %1 characters: %2",
              {QString::number(MaxDialogPath), path}));
  return true;
}

}  // namespace quillmark
