#include <initializer_list>

#include <QAction>
#include <QActionGroup>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QRadioButton>

#include "app/ColourSwatch.h"
#include "app/Document.h"
#include "app/PathText.h"
#include "app/Strip.h"
#include "app/SubtitleList.h"
#include "app/Ui.h"
#include "app/frmTest.h"

namespace quillmark {
namespace {

/// nullptr stands for a separating line.
void Fill(QMenu* menu, std::initializer_list<QAction*> actions) {
  for (QAction* action : actions) {
    if (action == nullptr) {
      menu->addSeparator();
    } else {
      menu->addAction(action);
    }
  }
}

/// The entries are chosen with their option buttons, and press them.
void Pair(QObject* parent, std::initializer_list<std::pair<QAction*, QRadioButton*>> options) {
  auto* group = new QActionGroup(parent);
  for (const auto& [action, option] : options) {
    action->setCheckable(true);
    action->setChecked(option->isChecked());
    group->addAction(action);
    QObject::connect(action, &QAction::triggered, option, &QAbstractButton::click);
    QObject::connect(option, &QAbstractButton::toggled, action, &QAction::setChecked);
  }
}

}  // namespace

void frmTest::BuildMenus() {
  const auto add = [this](const char* name, const QString& title, std::initializer_list<QAction*> actions) {
    QMenu* menu = menuBar()->addMenu(title);
    menu->setObjectName(QLatin1String(name));
    Fill(menu, actions);
    return menu;
  };
  menuBar()->setObjectName(QStringLiteral("MenuBar"));
  QMenu* file =
      add("Menu_File", Ui::Tr("&File"),
          {Action_LoadSup, Action_Import, Action_Reopen, nullptr, Action_SaveSup, Action_Export, nullptr,
           Action_LoadPalette, Action_SavePalette, Action_ProgramChains, nullptr, Action_Quit});
  Menu_Recent = new QMenu(Ui::Tr("Open &recent"), file);
  Menu_Recent->setObjectName(QStringLiteral("Menu_Recent"));
  file->insertMenu(Action_Reopen, Menu_Recent);
  connect(Menu_Recent, &QMenu::aboutToShow, this, &frmTest::FillRecent);
  add("Menu_Edit", Ui::Tr("&Edit"),
      {Action_Undo, Action_Redo, nullptr, Action_Copy, nullptr, Action_RevertPreview, nullptr, Action_Recover,
       Action_Forget});
  add("Menu_Subtitle", Ui::Tr("&Subtitle"),
      {Action_Prev, Action_Next, Action_GoTo, nullptr, Action_NextProblem, Action_PrevProblem, nullptr,
       Action_Reload});
  add("Menu_Colours", Ui::Tr("&Colours"), {Action_SetActual, Action_SetSelected, Action_SetAll});
  QMenu* view = add("Menu_View", Ui::Tr("&View"),
                    {Action_List,
                     nullptr,
                     Action_Player,
                     Action_Play,
                     nullptr,
                     Action_720x480,
                     Action_720x576,
                     nullptr,
                     Action_Checker,
                     Action_File,
                     Action_Colour,
                     nullptr,
                     Action_PictureBehind,
                     Action_GetGraphics,
                     nullptr,
                     Action_ZoomIn,
                     Action_ZoomOut,
                     Action_Zoom100,
                     Action_ZoomFit,
                     Action_Loupe,
                     nullptr});
  const auto addTo = [](QMenu* parent, const char* name, const QString& title,
                        std::initializer_list<QAction*> actions) {
    QMenu* menu = parent->addMenu(title);
    menu->setObjectName(QLatin1String(name));
    Fill(menu, actions);
  };
  addTo(view, "Menu_Aspect", Ui::Tr("Display &aspect"), {Action_Square, Action_4x3, Action_16x9});
  addTo(view, "Menu_DisplayMode", Ui::Tr("&Display mode"),
        {Action_ModeOff, Action_Wide, Action_Letterbox, Action_PanAndScan});
  addTo(view, "Menu_Guides", Ui::Tr("G&uides"), {Action_SafeAreas, Action_SubtitleArea, Action_Rulers});
  auto* grounds = new QMenu(Ui::Tr("&Background colour"), view);
  grounds->setObjectName(QStringLiteral("Menu_Ground"));
  grounds->addActions(Label_Ground->actions());
  view->insertMenu(Action_PictureBehind, grounds);
  auto* columns = new QMenu(Ui::Tr("List colu&mns"), view);
  columns->setObjectName(QStringLiteral("Menu_Columns"));
  columns->addActions(list_->ColumnActions());
  view->insertMenu(view->actions().at(1), columns);
  add("Menu_Tools", Ui::Tr("&Tools"),
      {Action_Retime, Action_Ends, Action_Move, Action_Force, nullptr, Action_Cut, Action_Keep, Action_Join,
       Action_Sort, nullptr, Action_Fix, Action_Salvage, nullptr, Action_SaveRecipe, Action_RunRecipe,
       nullptr, Action_Compare});
  add("Menu_Merge", Ui::Tr("&Merge"),
      {Action_LoadSecond, Action_Offset, Action_SuggestOffset, Action_MergeReview, Action_SaveSecond, nullptr,
       Action_LeaveMerge});
  add("Menu_Help", Ui::Tr("&Help"), {Action_Report, Action_Keys, nullptr, Action_About, Action_AboutQt});
  Pair(this, {{Action_720x480, Option_720x480}, {Action_720x576, Option_720x576}});
  Pair(this, {{Action_Checker, Option_Checker}, {Action_File, Option_File}, {Action_Colour, Option_Colour}});
}

void frmTest::TellClosed() {
  if (Action_Reopen->isEnabled()) {
    Strip_Closed->Say(Ui::Tr("No stream is open. %1 can be opened again, with all that was set in it.")
                          .arg(QFileInfo(QString::fromStdString(document_->Primary().Path)).fileName()));
  }
}

void frmTest::Command_Reopen_Click() {
  if (!document_->Reopen()) {
    TellConversionFailed();
  }
}

void frmTest::Command_PictureBehind_Click() {
  const QString path = AskForBackground();
  if (!path.isEmpty()) {
    ShowPictureBehind(path);
  }
}

void frmTest::ShowPictureBehind(const QString& path) {
  Text_GraphFile->setText(path);
  Option_File->setChecked(true);
  Option_File_Click();
}

void frmTest::Command_Offset_Click() {
  if (AskForOffset()) {
    Command_Reload_Click();
  }
}

void frmTest::Command_LeaveMerge_Click() {
  if (!document_->LeaveMerging()) {
    TellConversionFailed();
  }
}

}  // namespace quillmark
