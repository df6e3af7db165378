#include "app/frmTestActions.h"

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <QMainWindow>
#include <QString>

#include "app/Ui.h"

namespace quillmark {

void frmTestActions::BuildActions(QMainWindow* window) {
  const auto make = [window](QAction*& action, const char* name, const QString& text,
                             const QList<QKeySequence>& keys = {}) {
    action = new QAction(text, window);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    window->addAction(action);
  };
  make(Action_LoadSup, "Action_LoadSup", Ui::Tr("&Load SUP..."), {QKeySequence(Qt::CTRL | Qt::Key_O)});
  make(Action_Import, "Action_Import", Ui::Tr("&Import subtitles..."), {QKeySequence(Qt::CTRL | Qt::Key_I)});
  make(Action_SaveSup, "Action_SaveSup", Ui::Tr("&Save SUP..."), {QKeySequence(Qt::CTRL | Qt::Key_S)});
  make(Action_Export, "Action_Export", Ui::Tr("&Export..."), {QKeySequence(Qt::CTRL | Qt::Key_E)});
  make(Action_LoadPalette, "Action_LoadPalette", Ui::Tr("Load &Palette..."));
  make(Action_SavePalette, "Action_SavePalette", Ui::Tr("Save P&alette..."));
  make(Action_ProgramChains, "Action_ProgramChains", Ui::Tr("Palettes of a &title..."));
  make(Action_Reload, "Action_Reload", Ui::Tr("&Reset"), {QKeySequence(Qt::Key_F5)});
  make(Action_Prev, "Action_Prev", Ui::Tr("&Prev"),
       {QKeySequence(Qt::Key_PageUp), QKeySequence(Qt::ALT | Qt::Key_Left)});
  make(Action_Next, "Action_Next", Ui::Tr("&Next"),
       {QKeySequence(Qt::Key_PageDown), QKeySequence(Qt::ALT | Qt::Key_Right)});
  make(Action_GoTo, "Action_GoTo", Ui::Tr("&GoTo..."), {QKeySequence(Qt::CTRL | Qt::Key_G)});
  make(Action_SetActual, "Action_SetActual", Ui::Tr("Set for a&ctual"));
  make(Action_SetSelected, "Action_SetSelected", Ui::Tr("Set for &selected"));
  make(Action_SetAll, "Action_SetAll", Ui::Tr("Set for &all"));
  make(Action_LoadSecond, "Action_LoadSecond", Ui::Tr("&Load/Merge secondary SUP..."));
  make(Action_SaveSecond, "Action_SaveSecond", Ui::Tr("&Save merged (prim. + sec.) SUP..."));
  make(Action_GetGraphics, "Action_GetGraphics", Ui::Tr("&Load Background graphic form file..."));
  make(Action_NextProblem, "Action_NextProblem", Ui::Tr("Next pro&blem"), {QKeySequence(Qt::Key_F8)});
  make(Action_PrevProblem, "Action_PrevProblem", Ui::Tr("Prev proble&m"),
       {QKeySequence(Qt::SHIFT | Qt::Key_F8)});
  make(Action_Copy, "Action_Copy", Ui::Tr("&Copy"), {QKeySequence(Qt::CTRL | Qt::Key_C)});
  make(Action_List, "Action_List", Ui::Tr("&Subtitle list"), {QKeySequence(Qt::CTRL | Qt::Key_L)});
  make(Action_Undo, "Action_Undo", Ui::Tr("&Undo"), {QKeySequence(Qt::CTRL | Qt::Key_Z)});
  make(Action_Redo, "Action_Redo", Ui::Tr("&Redo"), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
  make(Action_Reopen, "Action_Reopen", Ui::Tr("Open last stream a&gain"));
  make(Action_ForgetRecent, "Action_ForgetRecent", Ui::Tr("&Forget these files"));
  make(Action_RevertPreview, "Action_RevertPreview", Ui::Tr("Revert &preview"));
  make(Action_Recover, "Action_Recover", Ui::Tr("Re&store unsaved edits"));
  make(Action_Forget, "Action_Forget", Ui::Tr("&Discard unsaved edits"));
  make(Action_720x480, "Action_720x480", QStringLiteral("720x&480"));
  make(Action_720x576, "Action_720x576", QStringLiteral("720x&576"));
  make(Action_Checker, "Action_Checker", Ui::Tr("&Checker"));
  make(Action_File, "Action_File", Ui::Tr("&Graph. File"));
  make(Action_Player, "Action_Player", Ui::Tr("As a player s&hows it"));
  make(Action_Play, "Action_Play", Ui::Tr("Pla&y or pause"), {QKeySequence(Qt::CTRL | Qt::Key_P)});
  make(Action_PictureBehind, "Action_PictureBehind", Ui::Tr("&Picture behind..."));
  make(Action_Colour, "Action_Colour", Ui::Tr("Colou&r"));
  make(Action_GroundBlack, "Action_GroundBlack", Ui::Tr("&Black"));
  make(Action_GroundWhite, "Action_GroundWhite", Ui::Tr("&White"));
  make(Action_GroundGrey, "Action_GroundGrey", Ui::Tr("&Grey"));
  make(Action_GroundPick, "Action_GroundPick", Ui::Tr("&Pick..."));
  make(Action_SafeAreas, "Action_SafeAreas", Ui::Tr("&Safe areas"));
  make(Action_SubtitleArea, "Action_SubtitleArea", Ui::Tr("Subtitle's &area"));
  make(Action_Rulers, "Action_Rulers", Ui::Tr("&Rulers"));
  make(Action_Loupe, "Action_Loupe", Ui::Tr("Loup&e"), {QKeySequence(Qt::Key_Z)});
  make(Action_ModeOff, "Action_ModeOff", Ui::Tr("&Off"));
  make(Action_Wide, "Action_Wide", Ui::Tr("&Wide"));
  make(Action_Letterbox, "Action_Letterbox", Ui::Tr("&Letterbox"));
  make(Action_PanAndScan, "Action_PanAndScan", Ui::Tr("&Pan and scan"));
  make(Action_ZoomIn, "Action_ZoomIn", Ui::Tr("Zoom &in"),
       {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
  make(Action_ZoomOut, "Action_ZoomOut", Ui::Tr("Zoom &out"), {QKeySequence(Qt::CTRL | Qt::Key_Minus)});
  make(Action_Zoom100, "Action_Zoom100", Ui::Tr("Zoom &100 %"), {QKeySequence(Qt::CTRL | Qt::Key_0)});
  make(Action_ZoomFit, "Action_ZoomFit", Ui::Tr("Zoom to fi&t"), {QKeySequence(Qt::CTRL | Qt::Key_9)});
  make(Action_Square, "Action_Square", Ui::Tr("S&quare pixels"));
  make(Action_4x3, "Action_4x3", QStringLiteral("&4:3"));
  make(Action_16x9, "Action_16x9", QStringLiteral("1&6:9"));
  make(Action_Offset, "Action_Offset", Ui::Tr("&Offset..."));
  make(Action_MergeReview, "Action_MergeReview", Ui::Tr("Merge &review"),
       {QKeySequence(Qt::CTRL | Qt::Key_R)});
  make(Action_SuggestOffset, "Action_SuggestOffset", Ui::Tr("Su&ggest offset"));
  make(Action_LeaveMerge, "Action_LeaveMerge", Ui::Tr("Leave &merge mode"));
  make(Action_Retime, "Action_Retime", Ui::Tr("&Retime..."), {QKeySequence(Qt::CTRL | Qt::Key_T)});
  make(Action_Move, "Action_Move", Ui::Tr("&Move..."), {QKeySequence(Qt::CTRL | Qt::Key_M)});
  make(Action_Force, "Action_Force", Ui::Tr("&Force..."));
  make(Action_Ends, "Action_Ends", Ui::Tr("&Ends..."));
  make(Action_Cut, "Action_Cut", Ui::Tr("&Cut..."));
  make(Action_Keep, "Action_Keep", Ui::Tr("&Keep..."));
  make(Action_Sort, "Action_Sort", Ui::Tr("&Sort..."));
  make(Action_Join, "Action_Join", Ui::Tr("&Join..."));
  make(Action_Fix, "Action_Fix", Ui::Tr("F&ix..."));
  make(Action_Salvage, "Action_Salvage", Ui::Tr("Sal&vage..."));
  make(Action_SaveRecipe, "Action_SaveRecipe", Ui::Tr("Save steps as reci&pe..."));
  make(Action_RunRecipe, "Action_RunRecipe", Ui::Tr("R&un recipe..."));
  make(Action_Compare, "Action_Compare", Ui::Tr("Compare &with file..."),
       {QKeySequence(Qt::CTRL | Qt::Key_D)});
  make(Action_Report, "Action_Report", Ui::Tr("&Report again"));
  make(Action_Keys, "Action_Keys", Ui::Tr("&Keys"), {QKeySequence(Qt::Key_F1)});
  make(Action_About, "Action_About", Ui::Tr("&About Quillmark"));
  make(Action_AboutQt, "Action_AboutQt", Ui::Tr("About &Qt"));
  make(Action_Quit, "Action_Quit", Ui::Tr("&Quit"), {QKeySequence(Qt::CTRL | Qt::Key_Q)});
}

}  // namespace quillmark
