#pragma once

class QAction;
class QMainWindow;

namespace quillmark {

/// One action for each command, the same behind its menu entry, its keys and its button. Each one's
/// objectName is its name here.
struct frmTestActions {
  QAction* Action_LoadSup = nullptr;
  QAction* Action_Import = nullptr;
  QAction* Action_SaveSup = nullptr;
  QAction* Action_Export = nullptr;
  QAction* Action_LoadPalette = nullptr;
  QAction* Action_SavePalette = nullptr;
  QAction* Action_ProgramChains = nullptr;
  QAction* Action_Reload = nullptr;
  QAction* Action_Prev = nullptr;
  QAction* Action_Next = nullptr;
  QAction* Action_GoTo = nullptr;
  QAction* Action_SetActual = nullptr;
  QAction* Action_SetSelected = nullptr;
  QAction* Action_SetAll = nullptr;
  QAction* Action_LoadSecond = nullptr;
  QAction* Action_SaveSecond = nullptr;
  QAction* Action_GetGraphics = nullptr;
  QAction* Action_Reopen = nullptr;
  QAction* Action_ForgetRecent = nullptr;
  QAction* Action_NextProblem = nullptr;
  QAction* Action_PrevProblem = nullptr;
  QAction* Action_Copy = nullptr;
  QAction* Action_List = nullptr;
  QAction* Action_Undo = nullptr;
  QAction* Action_Redo = nullptr;
  QAction* Action_RevertPreview = nullptr;
  QAction* Action_Recover = nullptr;
  QAction* Action_Forget = nullptr;
  QAction* Action_720x480 = nullptr;
  QAction* Action_720x576 = nullptr;
  QAction* Action_Checker = nullptr;
  QAction* Action_File = nullptr;
  QAction* Action_Player = nullptr;
  QAction* Action_Play = nullptr;
  QAction* Action_PictureBehind = nullptr;
  QAction* Action_Colour = nullptr;
  QAction* Action_GroundBlack = nullptr;
  QAction* Action_GroundWhite = nullptr;
  QAction* Action_GroundGrey = nullptr;
  QAction* Action_GroundPick = nullptr;
  QAction* Action_SafeAreas = nullptr;
  QAction* Action_SubtitleArea = nullptr;
  QAction* Action_Rulers = nullptr;
  QAction* Action_Loupe = nullptr;
  QAction* Action_ModeOff = nullptr;
  QAction* Action_Wide = nullptr;
  QAction* Action_Letterbox = nullptr;
  QAction* Action_PanAndScan = nullptr;
  QAction* Action_ZoomIn = nullptr;
  QAction* Action_ZoomOut = nullptr;
  QAction* Action_Zoom100 = nullptr;
  QAction* Action_ZoomFit = nullptr;
  QAction* Action_Square = nullptr;
  QAction* Action_4x3 = nullptr;
  QAction* Action_16x9 = nullptr;
  QAction* Action_Offset = nullptr;
  QAction* Action_MergeReview = nullptr;
  QAction* Action_SuggestOffset = nullptr;
  QAction* Action_LeaveMerge = nullptr;
  QAction* Action_Retime = nullptr;
  QAction* Action_Move = nullptr;
  QAction* Action_Force = nullptr;
  QAction* Action_Ends = nullptr;
  QAction* Action_Cut = nullptr;
  QAction* Action_Keep = nullptr;
  QAction* Action_Sort = nullptr;
  QAction* Action_Join = nullptr;
  QAction* Action_Fix = nullptr;
  QAction* Action_Salvage = nullptr;
  QAction* Action_SaveRecipe = nullptr;
  QAction* Action_RunRecipe = nullptr;
  QAction* Action_Compare = nullptr;
  QAction* Action_Report = nullptr;
  QAction* Action_Keys = nullptr;
  QAction* Action_About = nullptr;
  QAction* Action_AboutQt = nullptr;
  QAction* Action_Quit = nullptr;

  /// Creates all actions with their texts and keys, as children of `window`; connects nothing.
  void BuildActions(QMainWindow* window);
};

}  // namespace quillmark
