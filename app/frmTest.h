#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QMainWindow>
#include <QString>

#include "app/frmTestControls.h"
#include "imaging/cBitmap.h"
#include "imaging/cGDIP.h"
#include "palette/Colour.h"
#include "render/Composition.h"
#include "render/MergedStreamEncoder.h"
#include "render/SubtitleDescription.h"
#include "sup/CodeAssignment.h"
#include "sup/StreamLoader.h"
#include "sup/SupStream.h"

class QFile;

namespace quillmark {

/// The main window. It owns all of the program's state: the two streams, the palette (the colours of its
/// swatches), what the pixel codes stand for, and the number of the subtitle shown (the text of Text_SubNum:
/// "0" none, "?" the last conversion failed). Its member functions stand in one file per group of commands.
class frmTest : public QMainWindow, private frmTestControls {
  Q_OBJECT

 public:
  explicit frmTest(QWidget* parent = nullptr);

  /// Takes the program's command line: removes double quotes and loads the stream that it names, if there is
  /// such a file.
  void OpenCommandLine(const QString& commandLine);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  // frmTest.cpp
  void ConnectCommands();
  void AddShortcuts();
  void ShowImagingError(const QString& source, int status, const QString& text);
  void EnableEditing(bool enabled);
  /// The commands that step through a stream, and those that change the subtitle shown, as a load leaves
  /// them.
  void EnableSteps();
  void EnableChanges();
  [[nodiscard]] std::int64_t SubtitleNumber() const;
  [[nodiscard]] bool ShowsSubtitle() const;

  // frmTest_load.cpp
  void Command_LoadSup_Click();
  void PrepareForLoading();
  void LoadSup(const QString& path);
  /// false when there was nothing to read and the stream loaded before stays.
  [[nodiscard]] bool LoadPrimaryStream();
  void KeepStream();
  void TellUnreadable(const QString& path, const LoadResult& result);

  // frmTest_navigation.cpp
  void Command_Next_Click();
  void Command_Prev_Click();
  void Command_GoTo_Click();
  void Command_Reload_Click();
  [[nodiscard]] bool ShowSubtitle(std::int64_t number);
  void TellConversionFailed();

  // frmTest_display.cpp
  [[nodiscard]] bool ConvertSubtitle(const SubtitleUnit& unit, const QString& supPath);
  [[nodiscard]] bool ConvertMergedSubtitle(const SubtitleUnit& primary, const SubtitleUnit& secondary);
  void ShowDetails(const SubtitleDescription& description);
  enum class ListFailure { Told, Ignored };
  /// These two do nothing unless pictures are to be saved; false when the list could not be written.
  bool ExportSubtitle(const SubtitleDescription& description, const QString& supPath,
                      ListFailure failure = ListFailure::Told);
  void SavePicture(cBitmap& picture);
  void TellListFailure(const QString& supPath);
  void RenderSubtitle(std::span<const std::uint8_t> unit);
  void RenderMergedSubtitle(const MergedInput& input);
  void DrawFrameBackground();
  void SetFrameLines(int lines);
  void Option_File_Click();
  void Command_GetGraphics_Click();

  // frmTest_palette.cpp
  void Command_LoadPalette_Click();
  void Command_SavePalette_Click();
  void LoadPalette(const QString& path);
  void ShowPalette(const PackedPalette& packed);
  void RebuildPaletteImages();
  void Label1_Click(std::size_t entry);
  [[nodiscard]] DvdPalette Palette() const;

  // frmTest_assign.cpp
  void RefreshCodeColours();
  void Command_SetActual_Click();
  void Command_SetAll_Click();
  [[nodiscard]] CodeAssignment ChosenCodes() const;
  [[nodiscard]] CodeNibbles ChosenColours() const;
  [[nodiscard]] CodeNibbles ChosenContrasts() const;
  void CodeListChanged();

  // frmTest_save.cpp
  void Command_SaveSup_Click();
  [[nodiscard]] QString AskForNewSup();

  // frmTest_merge.cpp
  void Command_LoadSecond_Click();
  void Command_SaveSecond_Click();
  [[nodiscard]] bool LoadSecondaryStream(const QString& path);
  [[nodiscard]] bool AskForOffset();
  void ShowFirstMergedSubtitle();
  void SaveMerged(const QString& path);
  [[nodiscard]] QString SaveMergedSubtitle(MergedStreamEncoder& encoder, std::int32_t index, QFile& file);
  /// The imaging status of a picture that could not be written; 0 when it was, or was not asked for.
  [[nodiscard]] int SaveMergedPicture(const MergedStreamEncoder& encoder);

  cGDIP gdip_;
  SupStream primary_;
  SupStream secondary_;
  bool mergeMode_ = false;
  std::int16_t yOffset_ = 0;  ///< picture lines added to every secondary picture's vertical position

  CodeColours codeColours_{};
  SpuControl shown_;     ///< control data of the subtitle shown: its area and field offsets
  QString picturePath_;  ///< where the shown picture is saved; empty unless pictures are
  /// Set while a conversion fills the lists, whose change handlers then do nothing. Kept oddity: it stays set
  /// after an invalid unit, and the lists inert, until a valid subtitle was shown.
  bool filling_ = false;

  std::vector<std::uint8_t> unit_;           ///< unit bytes of the subtitle at hand, memory reused
  std::vector<std::uint8_t> secondaryUnit_;  ///< the same of the second stream
};

}  // namespace quillmark
