#include "app/frmTestActions.h"

#include <QAction>
#include <QKeySequence>
#include <QList>
#include <QMainWindow>
#include <QString>

namespace quillmark {

void frmTestActions::BuildActions(QMainWindow* window) {
  const auto make = [window](QAction*& action, const char* name, const QString& text,
                             const QList<QKeySequence>& keys = {}) {
    action = new QAction(text, window);
    action->setObjectName(QLatin1String(name));
    action->setShortcuts(keys);
    window->addAction(action);
  };
  make(Action_LoadSup, "Action_LoadSup", QStringLiteral("&Load SUP..."),
       {QKeySequence(Qt::CTRL | Qt::Key_O)});
  make(Action_Import, "Action_Import", QStringLiteral("&Import subtitles..."),
       {QKeySequence(Qt::CTRL | Qt::Key_I)});
  make(Action_SaveSup, "Action_SaveSup", QStringLiteral("&Save SUP..."),
       {QKeySequence(Qt::CTRL | Qt::Key_S)});
  make(Action_Export, "Action_Export", QStringLiteral("&Export..."), {QKeySequence(Qt::CTRL | Qt::Key_E)});
  make(Action_LoadPalette, "Action_LoadPalette", QStringLiteral("Load &Palette..."));
  make(Action_SavePalette, "Action_SavePalette", QStringLiteral("Save P&alette..."));
  make(Action_ProgramChains, "Action_ProgramChains", QStringLiteral("Palettes of a &title..."));
  make(Action_Reload, "Action_Reload", QStringLiteral("&Reset"), {QKeySequence(Qt::Key_F5)});
  make(Action_Prev, "Action_Prev", QStringLiteral("&Prev"),
       {QKeySequence(Qt::Key_PageUp), QKeySequence(Qt::ALT | Qt::Key_Left)});
  make(Action_Next, "Action_Next", QStringLiteral("&Next"),
       {QKeySequence(Qt::Key_PageDown), QKeySequence(Qt::ALT | Qt::Key_Right)});
  make(Action_GoTo, "Action_GoTo", QStringLiteral("&GoTo..."), {QKeySequence(Qt::CTRL | Qt::Key_G)});
  make(Action_SetActual, "Action_SetActual", QStringLiteral("Set for a&ctual"));
  make(Action_SetSelected, "Action_SetSelected", QStringLiteral("Set for &selected"));
  make(Action_SetAll, "Action_SetAll", QStringLiteral("Set for &all"));
  make(Action_LoadSecond, "Action_LoadSecond", QStringLiteral("&Load/Merge secondary SUP..."));
  make(Action_SaveSecond, "Action_SaveSecond", QStringLiteral("&Save merged (prim. + sec.) SUP..."));
  make(Action_GetGraphics, "Action_GetGraphics", QStringLiteral("&Load Background graphic form file..."));
  make(Action_NextProblem, "Action_NextProblem", QStringLiteral("Next pro&blem"), {QKeySequence(Qt::Key_F8)});
  make(Action_PrevProblem, "Action_PrevProblem", QStringLiteral("Prev proble&m"),
       {QKeySequence(Qt::SHIFT | Qt::Key_F8)});
  make(Action_Copy, "Action_Copy", QStringLiteral("&Copy"), {QKeySequence(Qt::CTRL | Qt::Key_C)});
  make(Action_List, "Action_List", QStringLiteral("&Subtitle list"), {QKeySequence(Qt::CTRL | Qt::Key_L)});
  make(Action_Undo, "Action_Undo", QStringLiteral("&Undo"), {QKeySequence(Qt::CTRL | Qt::Key_Z)});
  make(Action_Redo, "Action_Redo", QStringLiteral("&Redo"), {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z)});
  make(Action_Reopen, "Action_Reopen", QStringLiteral("Open last stream a&gain"));
  make(Action_ForgetRecent, "Action_ForgetRecent", QStringLiteral("&Forget these files"));
  make(Action_RevertPreview, "Action_RevertPreview", QStringLiteral("Revert &preview"));
  make(Action_Recover, "Action_Recover", QStringLiteral("Re&store unsaved edits"));
  make(Action_Forget, "Action_Forget", QStringLiteral("&Discard unsaved edits"));
  make(Action_720x480, "Action_720x480", QStringLiteral("720x&480"));
  make(Action_720x576, "Action_720x576", QStringLiteral("720x&576"));
  make(Action_Checker, "Action_Checker", QStringLiteral("&Checker"));
  make(Action_File, "Action_File", QStringLiteral("&Graph. File"));
  make(Action_Player, "Action_Player", QStringLiteral("As a player s&hows it"));
  make(Action_Play, "Action_Play", QStringLiteral("Pla&y or pause"), {QKeySequence(Qt::CTRL | Qt::Key_P)});
  make(Action_PictureBehind, "Action_PictureBehind", QStringLiteral("&Picture behind..."));
  make(Action_Colour, "Action_Colour", QStringLiteral("Colou&r"));
  make(Action_GroundBlack, "Action_GroundBlack", QStringLiteral("&Black"));
  make(Action_GroundWhite, "Action_GroundWhite", QStringLiteral("&White"));
  make(Action_GroundGrey, "Action_GroundGrey", QStringLiteral("&Grey"));
  make(Action_GroundPick, "Action_GroundPick", QStringLiteral("&Pick..."));
  make(Action_SafeAreas, "Action_SafeAreas", QStringLiteral("&Safe areas"));
  make(Action_SubtitleArea, "Action_SubtitleArea", QStringLiteral("Subtitle's &area"));
  make(Action_Rulers, "Action_Rulers", QStringLiteral("&Rulers"));
  make(Action_Loupe, "Action_Loupe", QStringLiteral("Loup&e"), {QKeySequence(Qt::Key_Z)});
  make(Action_ModeOff, "Action_ModeOff", QStringLiteral("&Off"));
  make(Action_Wide, "Action_Wide", QStringLiteral("&Wide"));
  make(Action_Letterbox, "Action_Letterbox", QStringLiteral("&Letterbox"));
  make(Action_PanAndScan, "Action_PanAndScan", QStringLiteral("&Pan and scan"));
  make(Action_ZoomIn, "Action_ZoomIn", QStringLiteral("Zoom &in"),
       {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)});
  make(Action_ZoomOut, "Action_ZoomOut", QStringLiteral("Zoom &out"),
       {QKeySequence(Qt::CTRL | Qt::Key_Minus)});
  make(Action_Zoom100, "Action_Zoom100", QStringLiteral("Zoom &100 %"), {QKeySequence(Qt::CTRL | Qt::Key_0)});
  make(Action_ZoomFit, "Action_ZoomFit", QStringLiteral("Zoom to fi&t"),
       {QKeySequence(Qt::CTRL | Qt::Key_9)});
  make(Action_Square, "Action_Square", QStringLiteral("S&quare pixels"));
  make(Action_4x3, "Action_4x3", QStringLiteral("&4:3"));
  make(Action_16x9, "Action_16x9", QStringLiteral("1&6:9"));
  make(Action_Offset, "Action_Offset", QStringLiteral("&Offset..."));
  make(Action_MergeReview, "Action_MergeReview", QStringLiteral("Merge &review"),
       {QKeySequence(Qt::CTRL | Qt::Key_R)});
  make(Action_SuggestOffset, "Action_SuggestOffset", QStringLiteral("Su&ggest offset"));
  make(Action_LeaveMerge, "Action_LeaveMerge", QStringLiteral("Leave &merge mode"));
  make(Action_Retime, "Action_Retime", QStringLiteral("&Retime..."), {QKeySequence(Qt::CTRL | Qt::Key_T)});
  make(Action_Move, "Action_Move", QStringLiteral("&Move..."), {QKeySequence(Qt::CTRL | Qt::Key_M)});
  make(Action_Force, "Action_Force", QStringLiteral("&Force..."));
  make(Action_Ends, "Action_Ends", QStringLiteral("&Ends..."));
  make(Action_Cut, "Action_Cut", QStringLiteral("&Cut..."));
  make(Action_Keep, "Action_Keep", QStringLiteral("&Keep..."));
  make(Action_Sort, "Action_Sort", QStringLiteral("&Sort..."));
  make(Action_Join, "Action_Join", QStringLiteral("&Join..."));
  make(Action_Fix, "Action_Fix", QStringLiteral("F&ix..."));
  make(Action_Salvage, "Action_Salvage", QStringLiteral("Sal&vage..."));
  make(Action_SaveRecipe, "Action_SaveRecipe", QStringLiteral("Save steps as reci&pe..."));
  make(Action_RunRecipe, "Action_RunRecipe", QStringLiteral("R&un recipe..."));
  make(Action_Compare, "Action_Compare", QStringLiteral("Compare &with file..."),
       {QKeySequence(Qt::CTRL | Qt::Key_D)});
  make(Action_Report, "Action_Report", QStringLiteral("&Report again"));
  make(Action_Keys, "Action_Keys", QStringLiteral("&Keys"), {QKeySequence(Qt::Key_F1)});
  make(Action_About, "Action_About", QStringLiteral("&About Quillmark"));
  make(Action_AboutQt, "Action_AboutQt", QStringLiteral("About &Qt"));
  make(Action_Quit, "Action_Quit", QStringLiteral("&Quit"), {QKeySequence(Qt::CTRL | Qt::Key_Q)});
}

}  // namespace quillmark
