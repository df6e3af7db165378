#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>

#include <QMainWindow>
#include <QString>

#include "app/FrameGuides.h"
#include "app/LongWork.h"
#include "app/UserMemory.h"
#include "app/ViewZoom.h"
#include "app/frmTestActions.h"
#include "app/frmTestControls.h"
#include "base/Result.h"
#include "imaging/cGDIP.h"
#include "palette/Colour.h"

namespace quillmark {

struct ConvertedSubtitle;
struct DroppedFiles;
struct ExportFailures;
struct ExportOrder;
struct ImportedFile;
struct ImportedTrack;
struct LoadedStream;
struct DisplayInterval;
struct MergeTimes;
struct MergedCodes;
struct SpuControl;
struct SubtitleDescription;
struct SupStream;
class cBitmap;
class CompareWindow;
class Comparison;
class Document;
class FrameInspector;
class HourglassPointer;
class ListPanel;
class PlayerBar;
class PlayerView;
class RecoveryJournal;
class ReviewPanel;
class StatusLine;
class SubtitleList;

/// The main window. It shows a Document and turns what the user does into calls of it. Its member functions
/// stand in one file per group of commands.
class frmTest : public QMainWindow, private frmTestControls, private frmTestActions {
  Q_OBJECT

 public:
  explicit frmTest(QWidget* parent = nullptr);

  /// Takes the program's command line: removes double quotes and loads the stream that it names, if there is
  /// such a file.
  void OpenCommandLine(const QString& commandLine);
  /// Shows the text in the status bar and has assistive tools say it.
  void Tell(const QString& text);
  /// From now on recent files, folders and the window's place last beyond this run; the window goes to its
  /// place. To be called before it is shown.
  void RememberUser();
  [[nodiscard]] Document& Content() { return *document_; }
  /// How long reading and writing go on before a dialog tells of it.
  void SetPatience(Patience patience) { patience_ = patience; }

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  using LoadSecondary = std::function<Result<LoadedStream>()>;

  // frmTest.cpp
  void ConnectActions();
  void ConnectControls();
  void ConnectDocument();
  /// Runs one command of the user; while it runs no other does.
  void RunCommand(const std::function<void()>& command);
  [[nodiscard]] bool IsBusy() const;
  void UpdateCommands();
  void ShowImagingError(const QString& source, int status, const QString& text);
  /// As the dialogs of those names; says so where a path is longer than they take.
  [[nodiscard]] QString AskToOpen(const QString& initialName, const QString& description,
                                  const QString& pattern);
  [[nodiscard]] QString AskToSave(const QString& initialName, const QString& description,
                                  const QString& pattern);
  [[nodiscard]] bool TellTooLong(const QString& path);

  // frmTest_load.cpp
  void Command_LoadSup_Click();
  /// Whether a stream was opened.
  bool LoadSup(const QString& path);
  /// Shows the first subtitle of a stream that is about to be opened. What it has to tell of a failure comes
  /// without the hourglass.
  void ShowFirst(const QString& path, const SupStream& stream, HourglassPointer& hourglass);
  /// The last steps of opening a stream, with the report at the end and `remark` below it.
  void Open(const QString& path, LoadedStream loaded, const std::string& language = {},
            const QString& remark = {});
  void TellUnreadable(const QString& path, const std::string& reason);

  // frmTest_import.cpp
  void Command_Import_Click();
  /// Loads a SUP file as Load SUP does, and imports any other.
  void OpenFile(const QString& path);
  void Import(const QString& path);
  void OpenTrack(const QString& path, const ImportedFile& file, ImportedTrack& track);

  // frmTest_drop.cpp
  [[nodiscard]] bool Takes(const DroppedFiles& files) const;
  void LoadDropped(const DroppedFiles& files);

  // frmTest_list.cpp
  void ConnectList();
  void UpdateList();
  void List_Subtitles_Chosen(std::int64_t number);
  void Command_SetSelected_Click();
  void Command_Copy_Click();
  void Command_NextProblem_Click();
  void Command_PrevProblem_Click();
  void TellProblem(const QString& sentence);
  void ShowProblemCount();

  // frmTest_review.cpp
  void ConnectReview();
  void UpdateReview();
  /// Whether the review stands in the list's place.
  [[nodiscard]] bool ShowsReview() const;
  void ShowOffset(std::int16_t lines);
  void ShowMergedCodes(const MergedCodes& codes);
  void ShowMergeTimes(const MergeTimes& times);
  void List_Pairs_Chosen(const DisplayInterval& unit, std::int64_t number);
  void Command_SuggestOffset_Click();

  // frmTest_tools.cpp
  void ConnectTools();
  void UpdateTools();
  [[nodiscard]] QList<std::pair<QAction*, std::string_view>> ToolActions() const;
  void AskForTool(std::string_view tool);
  void Command_SaveRecipe_Click();
  void Command_RunRecipe_Click();

  // frmTest_compare.cpp
  void ConnectCompare();
  void UpdateCompare();
  void Command_Compare_Click();
  void CompareWith(const QString& path);

  // frmTest_memory.cpp
  void RestoreArrangement();
  void KeepArrangement();
  /// Where a dialog starts: at the proposed file, or, before the user chose a stream or picture, in the
  /// folder where one of that kind was chosen last.
  [[nodiscard]] QString StartOf(const QString& proposed) const;
  /// The path, after its folder was remembered.
  [[nodiscard]] QString Remembered(const QString& path);
  void RememberStream(const QString& path);
  void FillRecent();
  void Command_ForgetRecent_Click();

  // frmTest_export.cpp
  void Command_Export_Click();
  void ExportAs(const ExportOrder& order);

  // frmTest_navigation.cpp
  void Command_Next_Click();
  void Command_Prev_Click();
  void Command_GoTo_Click();
  void Command_Reload_Click();
  void TellConversionFailed();

  // frmTest_display.cpp
  void ShowSubtitle(const ConvertedSubtitle& subtitle);
  void ShowDetails(const SubtitleDescription& description);
  /// These two do nothing unless pictures are to be saved.
  void ExportSubtitle(const SubtitleDescription& description);
  void SavePicture(cBitmap& picture);
  void TellListFailure();
  void TellPictureFailures(const ExportFailures& failures);
  void RenderSubtitle(std::span<const std::uint8_t> unit, const SpuControl& control,
                      const CodeColours& colours, bool saves);
  void RenderMergedSubtitle(const ConvertedSubtitle& subtitle);
  void DrawFrameBackground();
  void Option_File_Click();
  [[nodiscard]] QString AskForBackground();
  void Command_GetGraphics_Click();

  // frmTest_view.cpp
  void ConnectView();
  void ConnectZoom();
  void SetAspect(DisplayAspect aspect);
  void ShowZoom();

  // frmTest_guides.cpp
  void ConnectGuides();
  void SetMode(DisplayMode mode);
  void ConnectLoupe();
  void RestoreView();
  void KeepView();

  // frmTest_ground.cpp
  void ConnectGround();
  void Label_Ground_Click();
  /// Shows subtitles over that colour.
  void ShowGround(Rgb colour);
  void ShowGroundColour(Rgb colour);
  void RestoreGround();
  void KeepGround();

  // frmTest_player.cpp
  void BuildPlayer();
  void UpdatePlayer();
  /// Whether a key that no control takes plays.
  [[nodiscard]] bool PlaysBy(const QKeyEvent& event) const;
  /// The subtitle that is shown, without anything being saved of it.
  void DrawAgain();

  // frmTest_palette.cpp
  void Command_LoadPalette_Click();
  void Command_SavePalette_Click();
  void LoadPalette(const QString& path);
  void ShowPalette();
  void Label1_Click(std::size_t entry);

  // frmTest_chains.cpp
  void Command_ProgramChains_Click();

  // frmTest_assign.cpp
  void Command_SetActual_Click();
  void Command_SetAll_Click();
  void Command_Undo_Click();
  void Command_Redo_Click();
  void CodeListChanged();
  void CodeListActivated();

  // frmTest_menus.cpp
  void BuildMenus();
  /// Load SUP was cancelled.
  void TellClosed();
  void Command_Reopen_Click();
  void Command_PictureBehind_Click();
  void ShowPictureBehind(const QString& path);
  void Command_Offset_Click();
  void Command_LeaveMerge_Click();

  // frmTest_help.cpp
  void Command_Report_Click();
  void Command_Keys_Click();
  void Command_About_Click();
  void Command_AboutQt_Click();

  // frmTest_status.cpp
  void ConnectStatus();
  /// What empty fields say: some desktops' dark themes leave it black.
  void KeepHintsReadable();
  void ShowPlace();
  void ShowPreviewMark();
  void TellSaved(const QString& path, std::int64_t subtitles, std::int64_t bytes);

  // frmTest_save.cpp
  void Command_SaveSup_Click();
  [[nodiscard]] QString AskForNewSup();

  // frmTest_recovery.cpp
  void ConnectRecovery();
  void Command_Recover_Click();
  void Command_Forget_Click();

  // frmTest_merge.cpp
  void Command_LoadSecond_Click();
  /// What comes before a second stream is chosen; false when there can be none.
  [[nodiscard]] bool BeginSecond();
  void MergeWith(const QString& path);
  /// The same with what is read out of the file by other means; `remark` stands below the report.
  void MergeWith(const QString& path, const LoadSecondary& load, const QString& remark = {});
  void Command_SaveSecond_Click();
  [[nodiscard]] bool LoadSecondaryStream(const QString& path, const LoadSecondary& load,
                                         const QString& remark);
  [[nodiscard]] bool AskForOffset();
  void ShowFirstMergedSubtitle();
  void SaveMerged(const QString& path);
  /// The primary subtitle without the invalid one that is chosen for it, on the display and, where pictures
  /// are exported, in `picture`.
  void ShowPrimaryAlone(const SpuControl& control, std::size_t index, cBitmap& picture);

  cGDIP gdip_;
  Patience patience_ = UsualPatience;
  StatusLine* status_ = nullptr;
  QMenu* Menu_Recent = nullptr;
  UserMemory memory_;
  Document* document_;
  RecoveryJournal* recovery_;
  SubtitleList* list_;
  ReviewPanel* review_;
  ListPanel* listPanel_;
  PlayerBar* playerBar_ = nullptr;
  PlayerView* playerView_ = nullptr;
  Comparison* comparison_;
  FrameInspector* inspector_ = nullptr;
  CompareWindow* compareWindow_ = nullptr;  // made when it is first asked for
  bool running_ = false;                    // a command runs
  bool listChangeIsDrawn_ = false;          // of the choice that a list is about to tell
  QString picturePath_;                     // where the shown picture is saved; empty unless pictures are
};

}  // namespace quillmark
