#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <variant>
#include <vector>

#include <QObject>
#include <QString>
#include <QUndoStack>

#include "base/Result.h"
#include "palette/Colour.h"
#include "recipe/Recipe.h"
#include "render/MergedInputReader.h"
#include "render/SubtitleDescription.h"
#include "sup/CodeAssignment.h"
#include "sup/StreamEdit.h"
#include "sup/SupStream.h"

namespace quillmark {

/// One step of the history: what it is called after "Undo ", and the bytes or the whole palette that it puts
/// in place of what is there.
struct DocumentEdit {
  QString Name;
  std::variant<StreamEdit, DvdPalette> What;
  std::optional<StepText> Tool = {};  ///< what does the same to another stream; none of a palette
};

/// What the colour and the opacity lists show for the four pixel codes.
struct CodeChoice {
  CodeNibbles Colours{};
  CodeNibbles Contrasts{};

  bool operator==(const CodeChoice&) const = default;
};

/// What a unit says itself.
[[nodiscard]] CodeChoice ChoiceOf(const SpuControl& control);

/// What becomes of the pixel codes in the merged stream; by default the primary's codes, with the palette
/// entries and opacities that it has.
struct MergedCodes {
  CodeMap OfSecondary = SameCodes;  ///< which code each of the secondary's becomes
  ChosenNibbles Colours = {};
  ChosenNibbles Contrasts = {};

  bool operator==(const MergedCodes&) const = default;
};

/// Which packets the merged stream has.
struct MergeTimes {
  MergeMode Mode = MergeMode::Pairs;
  int JoinMs = 0;  ///< split: gaps of less are closed

  bool operator==(const MergeTimes&) const = default;
};

/// A subtitle, or what a packet of a split merge shows, that was just converted, for whoever shows, draws or
/// exports it.
struct ConvertedSubtitle {
  struct Overlay {
    std::span<const std::uint8_t> Unit;  ///< whole, from its size field on
    SpuControl Control;                  ///< may be invalid: then the primary is shown alone
  };
  SubtitleDescription Description;
  std::span<const std::uint8_t> Unit;  ///< whole; valid while the signal is handled
  std::optional<Overlay> Over;         ///< the secondary subtitle that is laid over it
  /// Of a packet of a split merge, which need not show a primary subtitle: then `Unit` is empty, and the
  /// description that of the secondary one.
  bool IsOfSplit = false;
  SpuControl Codes = {};  ///< the palette entries and opacities of what is merged
  bool IsNew = true;      ///< false when it is only shown once more as it stood before
};

/// What is no longer as it was.
enum class StreamChange : std::uint8_t {
  Stream,   ///< another stream is open, or none is
  Packets,  ///< the subtitles are others, or stand elsewhere
  Bytes,    ///< what some of them say; they stand where they stood
};

/// Which groups of commands can be used now.
struct EnabledCommands {
  bool Load = false;     ///< LoadSup, Import, LoadSecond, SaveSecond
  bool Save = false;     ///< SaveSup, SavePalette
  bool Editing = false;  ///< LoadPalette, swatches, lists, background and size
  bool Change = false;   ///< Reload, SetActual, SetAll
  bool Prev = false;
  bool Next = false;
  bool GoTo = false;
  bool Undo = false;
  bool Redo = false;
  bool Revert = false;  ///< RevertPreview
  bool Reopen = false;
  bool Merging = false;  ///< Offset, LeaveMerge
  bool Report = false;
  bool Tools = false;  ///< those that change the stream, recipes, and Export
  bool List = false;   ///< going to a row of the list, to a problem, copying rows
  bool Help = false;   ///< Keys, About, AboutQt
};

/// What is open: the two streams, the palette, the frame, which subtitle is current, and the history of
/// edits. It knows of no widget; whoever shows it follows its signals.
class Document : public QObject {
  Q_OBJECT

 public:
  explicit Document(QObject* parent = nullptr);
  ~Document() override;

  [[nodiscard]] const SupStream& Primary() const { return primary_; }
  [[nodiscard]] const SupStream& Secondary() const { return secondary_; }
  /// Of the primary stream, or of what was tried last while none is open.
  [[nodiscard]] const QString& SupPath() const { return supPath_; }
  [[nodiscard]] const DvdPalette& Palette() const { return palette_; }
  /// Of the primary stream, as the file that it was imported from has it; empty: unknown.
  [[nodiscard]] const std::string& Language() const { return language_; }
  /// 480 or 576: the height of the frame that subtitles are merged for and drawn on.
  [[nodiscard]] int FrameLines() const { return frameLines_; }
  /// Picture lines added to every secondary picture's vertical position.
  [[nodiscard]] std::int16_t YOffset() const { return yOffset_; }
  [[nodiscard]] bool IsMerging() const { return merging_; }
  /// Whether there are subtitles of both streams to merge.
  [[nodiscard]] bool HasBothStreams() const { return merging_ && primary_.Count > 0 && secondary_.Count > 0; }
  [[nodiscard]] const MergedCodes& CodesOfMerge() const { return mergedCodes_; }
  [[nodiscard]] const MergeTimes& TimesOfMerge() const { return mergeTimes_; }
  /// How the two streams are laid over each other, wherever that is shown, looked through or written.
  [[nodiscard]] MergeSettings SettingsOfMerge() const;
  [[nodiscard]] bool IsBusy() const { return busy_; }
  /// Between BeginLoading() and what ends it: how many subtitles there are is not settled yet.
  [[nodiscard]] bool IsLoading() const { return loading_; }
  [[nodiscard]] EnabledCommands Enabled() const;

  // The current subtitle

  /// Counted from 1; 0 while no subtitle is shown and after a conversion that failed.
  [[nodiscard]] std::int64_t Number() const { return failed_ ? 0 : number_; }
  /// The number; "0" while none is shown, "?" after a conversion that failed.
  [[nodiscard]] QString NumberText() const;
  [[nodiscard]] bool HasSubtitle() const { return Number() != 0; }
  /// The subtitle gone to last, whether it could be shown or not; 0 while there is none.
  [[nodiscard]] std::int64_t LastTried() const { return lastTried_; }
  /// Kept oddity: after an invalid unit choices in the lists are not drawn, until a valid one was shown.
  [[nodiscard]] bool ListsAreInert() const { return inert_; }
  [[nodiscard]] const CodeChoice& Choice() const { return choice_; }
  /// The packet of a split merge that is shown; none while subtitles are shown by their numbers.
  [[nodiscard]] const std::optional<DisplayInterval>& ShownUnit() const { return shownUnit_; }
  /// Whether the choice differs from what the subtitle's bytes say.
  [[nodiscard]] bool IsPreview() const { return HasSubtitle() && choice_ != written_; }
  /// What the pixel codes of the subtitle shown stand for, and its control data.
  [[nodiscard]] const CodeColours& Colours() const { return colours_; }
  [[nodiscard]] const SpuControl& Control() const { return control_; }

  void SetNumber(std::int64_t number);
  /// The conversion of a subtitle failed.
  void SetFailed();
  /// These convert a subtitle and make it the current one; false when it cannot be converted, and then the
  /// current one stays until SetFailed().
  [[nodiscard]] bool Next();
  [[nodiscard]] bool Prev();
  [[nodiscard]] bool GoTo(std::int64_t number);
  /// A packet of the split merge: one stream's subtitle or both. `number`, of the first stream, is where the
  /// commands go on from.
  [[nodiscard]] bool ShowUnit(const DisplayInterval& unit, std::int64_t number);
  /// Converts the current subtitle again. Kept oddity: after a failed conversion it only sets the number
  /// to 1.
  [[nodiscard]] bool Reset();
  /// The choice of the lists; drawn at once unless they are inert.
  void Choose(const CodeChoice& choice);
  /// Draws the current subtitle as the lists have it, for instance on another background.
  void Preview();

  // Opening

  void SetSupPath(const QString& path);
  /// What loading a primary stream begins with: merging ends, the commands are those for a stream, and no
  /// subtitle is counted until one of the next three.
  void BeginLoading();
  /// Shows the first unit of a stream that is being loaded; false when it cannot be converted.
  [[nodiscard]] bool ShowFirst(const SubtitleUnit& unit);
  /// The palette that comes with a stream that is being loaded; no step of any history.
  void TakePalette(const DvdPalette& palette);
  /// Takes a loaded stream over. A new history begins.
  void Open(SupStream stream, const std::string& language = {});
  /// The load failed before anything of it was shown, perhaps before it began: the stream before it stays.
  void KeepStream();
  /// The load failed after packets that were shown: the bytes before it stay and can be saved, but there is
  /// no subtitle of theirs to step through or to edit.
  void LoseIndex();
  /// Load SUP was cancelled: nothing more happens than what it began with, and no stream is open.
  void EndLoading();
  /// Load SUP could not even ask: everything is as it was before it began.
  void AbandonLoading();

  /// After a cancelled Load SUP: the stream before it, which is still held with its edits, is open again, at
  /// the subtitle shown.
  [[nodiscard]] bool Reopen();

  void SetFrameLines(int lines);

  // Merging

  /// Shows subtitle 1 and forgets the secondary stream, as before another one is chosen.
  [[nodiscard]] bool ReturnToFirst();
  void DropSecondary();
  void BeginMerging(SupStream secondary);
  /// The primary stream stays open, at the subtitle shown, and can be edited again.
  [[nodiscard]] bool LeaveMerging();
  void SetYOffset(std::int16_t lines);
  /// Until merging ends or another stream is loaded.
  void SetCodesOfMerge(const MergedCodes& codes);
  /// Likewise. Another choice than before leaves a packet that is shown: the subtitle of the number is shown
  /// from then on.
  void SetTimesOfMerge(const MergeTimes& times);
  /// Both streams' first subtitles, whatever their times. Kept oddity: where that succeeds the number is 17
  /// until SetNumber(), and a stream of 17 subtitles leaves Next disabled.
  [[nodiscard]] bool ShowFirstMerged();
  /// While a command runs no other can be used.
  void SetBusy(bool busy);
  /// Shows the subtitle shown last once more: what is laid over it, or where, has changed, or a merged save
  /// went through all of them.
  void ShowAgain();

  // Editing

  [[nodiscard]] const QUndoStack& History() const { return history_; }
  /// Does it and notes it in the history; an edit that does not fit, or changes nothing, is no step.
  Result<void> Make(DocumentEdit edit);
  Result<void> SetActual();
  Result<void> SetAll();
  /// Of these subtitles, by their indexes from 0, ascending. Those that lack a command that would be written
  /// stay as they are.
  Result<void> SetSelected(std::span<const std::size_t> indexes);
  Result<void> SetPalette(const DvdPalette& palette, const QString& name);
  /// Runs a tool as one step of the history of that name; what it did, without the edit. An edit that would
  /// leave no subtitle is not made.
  Result<ToolResult> RunTool(const StepText& tool, const QString& name);
  /// Runs all steps of the recipe, each one of the history, or none where one of them cannot be run; how many
  /// subtitles were left as they were, in all.
  Result<std::int64_t> RunRecipe(const Recipe& recipe,
                                 const std::function<QString(std::string_view tool)>& nameOf);
  /// The steps of the history that are done, as far as they are tools.
  [[nodiscard]] Recipe StepsDone() const;
  /// How many steps that are done are none.
  [[nodiscard]] std::int64_t StepsWithoutTool() const;
  void Undo();
  void Redo();
  /// Makes the edits once more that a record says were made of this stream, the first `done` of them in force
  /// and the others undone. Only for a stream that was just opened; one of them that does not fit undoes all.
  Result<void> Restore(std::vector<DocumentEdit> edits, std::size_t done);
  /// The stream was written as it is.
  void MarkSaved();

 signals:
  // For a record of what is done; emitted before anything of it is shown.
  void Opened();
  /// Before the edit is applied: it says what is put in.
  void AboutToEdit(const quillmark::DocumentEdit& edit);
  /// The edit does not fit: nothing of it was done.
  void Refused();
  /// As AboutToEdit(), each.
  void AboutToUndo(const quillmark::DocumentEdit& edit);
  void AboutToRedo(const quillmark::DocumentEdit& edit);
  void Saved();

  // For whoever shows the document.
  void SupPathChanged();
  void NumberChanged();
  void SubtitleShown(const quillmark::ConvertedSubtitle& subtitle);
  /// The same subtitle in the colours of the choice; `unit` is whole.
  void PreviewShown(std::span<const std::uint8_t> unit);
  void ChoiceChanged();
  void PaletteChanged();
  void StreamChanged(quillmark::StreamChange what);
  /// What is laid over the subtitles, when, where, or in which codes.
  void MergeChanged();
  void FrameLinesChanged();
  /// What Enabled() says, or the name of a step of the history.
  void CommandsChanged();

 private:
  class EditCommand;

  /// How the commands that move through a stream were left; they are not told by the number alone.
  struct StepRules {
    bool Prev = false;
    bool Next = false;
    bool GoTo = false;
    bool Change = false;
  };

  /// What BeginLoading() changes.
  struct BeforeLoading {
    bool EverLoading = false;
    std::int32_t PrimaryCount = 0;
    std::int32_t SecondaryCount = 0;
    bool Merging = false;
    MergedCodes Codes;
    MergeTimes Times;
    std::optional<DisplayInterval> Unit;
  };

  /// Loading is over: what can be done follows from what was shown.
  void FinishLoading();
  /// The commands of a stream that is open at whatever subtitle.
  void AllowSteps();
  [[nodiscard]] bool Show(std::int64_t number);
  [[nodiscard]] bool Convert(const SubtitleUnit& unit, const SubtitleUnit* over, bool isNew);
  [[nodiscard]] bool ConvertUnit(const DisplayInterval& unit, bool isNew);
  void TakeCodes(const SpuControl& control);
  [[nodiscard]] bool ShowPair(std::size_t index, std::optional<std::size_t> over, bool isNew);
  Result<void> Apply(std::variant<StreamEdit, DvdPalette>& what);
  Result<void> Push(DocumentEdit edit);
  [[nodiscard]] const DocumentEdit& EditAt(int step) const;
  [[nodiscard]] CodeAssignment Assignment() const;
  Result<void> Assign(std::int64_t first, std::int64_t end, const QString& name);
  Result<void> MakeAssignment(StreamEdit edit, const QString& name, const SubtitleSet& only,
                              bool isOfCurrent);
  /// After an edit: there may be fewer subtitles, or more.
  void FollowCount();

  SupStream primary_;
  SupStream secondary_;
  QString supPath_;
  DvdPalette palette_ = StartUpPalette;
  std::string language_;
  int frameLines_ = 576;
  std::int16_t yOffset_ = 0;
  MergedCodes mergedCodes_;
  MergeTimes mergeTimes_;
  bool merging_ = false;
  bool busy_ = false;
  bool everLoading_ = false;  // Load SUP was used
  bool loading_ = false;      // between BeginLoading() and what ends it
  bool lostIndex_ = false;    // what the history is of can no longer be shown
  StepRules steps_;
  BeforeLoading beforeLoading_;

  std::int64_t number_ = 0;
  std::int64_t lastTried_ = 0;
  bool failed_ = false;
  bool inert_ = false;
  CodeChoice choice_;
  CodeChoice written_;
  CodeColours colours_{};
  SpuControl control_;
  std::optional<std::size_t> shownIndex_;     // of the primary subtitle shown, where it is one of primary_
  std::optional<std::size_t> shownOver_;      // of the secondary subtitle over it
  std::optional<DisplayInterval> shownUnit_;  // that is shown in place of these two

  QUndoStack history_;
  std::vector<std::uint8_t> unit_;           // memory reused
  std::vector<std::uint8_t> secondaryUnit_;  // the same of the second stream
};

}  // namespace quillmark
