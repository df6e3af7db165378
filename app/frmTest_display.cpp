#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalBlocker>

#include "app/ColourSwatch.h"
#include "app/Dialogs.h"
#include "app/DisplayFrame.h"
#include "app/Document.h"
#include "app/FrameInspector.h"
#include "app/PathText.h"
#include "app/PlayerView.h"
#include "app/QtColour.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "base/Words.h"
#include "render/Composition.h"
#include "render/Exporter.h"
#include "render/MergedPicture.h"
#include "render/PictureFile.h"
#include "render/SubtitleExport.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

void SetIfChanged(QLineEdit* field, const std::string& text) {
  const QString shown = QString::fromStdString(text);
  if (field->text() != shown) {
    field->setText(shown);
  }
}

}  // namespace

void frmTest::ShowSubtitle(const ConvertedSubtitle& subtitle) {
  ShowDetails(subtitle.Description);
  if (subtitle.IsNew) {
    ExportSubtitle(subtitle.Description);
  }
  const bool hasDamage = subtitle.Over && !subtitle.Over->Control.IsValid();
  if ((subtitle.Over || subtitle.IsOfSplit) && !hasDamage) {
    RenderMergedSubtitle(subtitle);
  } else {
    RenderSubtitle(subtitle.Unit, subtitle.Description.Control, document_->Colours(), subtitle.IsNew);
  }
}

void frmTest::ShowDetails(const SubtitleDescription& description) {
  const SpuControl& control = description.Control;
  const auto select = [](QComboBox* list, int row) {
    const QSignalBlocker blocker(list);
    list->setCurrentIndex(row);
  };
  const auto colourLists = ColourLists();
  for (std::size_t code = 0; code < 4; ++code) {
    select(colourLists[code], control.Colour[code]);
    select(Combo1[code], control.Contrast[code]);
  }
  SetIfChanged(Text_XPos, std::to_string(control.X1));
  SetIfChanged(Text_YPos, std::to_string(control.Y1));
  SetIfChanged(Text_Width, std::to_string(control.Width()));
  SetIfChanged(Text_Height, std::to_string(control.Height()));
  SetIfChanged(Text_StartTime, FormatTimecode(description.StartTicks));
  SetIfChanged(Text_Dur, description.DurationMs ? FormatSeconds(*description.DurationMs) : "???");
}

void frmTest::ExportSubtitle(const SubtitleDescription& description) {
  picturePath_.clear();
  if (!Check_SavePics->isChecked()) {
    return;
  }
  const ExportPaths paths = ExportPathsFor(document_->SupPath());
  const SubtitleExport exported = DescribeExport(description, paths);
  if (!AppendSpuLine(paths.List, exported.ListLine)) {
    TellListFailure();
  }
  // Where the folder is missing all the same, the picture has a reason not to be written.
  static_cast<void>(MakeFolder(paths.Folder));
  picturePath_ = exported.PicturePath;
}

void frmTest::RenderSubtitle(std::span<const std::uint8_t> unit, const SpuControl& control,
                             const CodeColours& colours, bool saves) {
  DrawFrameBackground();
  cBitmap picture(&gdip_);
  DecodePicture(unit, control, colours, picture);
  if (saves) {
    SavePicture(picture);
  }
  inspector_->Show(unit, control, document_->Choice());
  if (playerView_->Show(unit)) {
    return;
  }
  if (picture.Width() > 0) {
    Picture1->Picture().Draw(picture, control.X1, control.Y1, &gdip_);
  }
  Picture1->Refresh();
}

void frmTest::RenderMergedSubtitle(const ConvertedSubtitle& subtitle) {
  const ConvertedSubtitle::Overlay over = subtitle.Over.value_or(ConvertedSubtitle::Overlay());
  const SpuControl primary = subtitle.Unit.empty() ? SpuControl() : subtitle.Description.Control;
  const MergeSettings settings = document_->SettingsOfMerge();
  const bool isSaved = subtitle.IsNew && !picturePath_.isEmpty();
  const bool isUsual = !subtitle.IsOfSplit && document_->CodesOfMerge() == MergedCodes();
  DrawFrameBackground();
  if (isSaved || !isUsual) {
    MergedPicture composed;
    composed.Compose(MakeMergedInput({.Bytes = subtitle.Unit, .Control = primary},
                                     {.Bytes = over.Unit, .Control = over.Control}, subtitle.Codes,
                                     settings));
    cBitmap picture(&gdip_);
    composed.CopyTo(picture);
    if (isSaved) {
      SavePicture(picture);
    }
    if (!isUsual) {
      Picture1->Picture().Draw(picture, 0, 0, &gdip_);
    }
  }
  const auto draw = [&](std::span<const std::uint8_t> unit, const SpuControl& control, int moved) {
    cBitmap picture(&gdip_);
    DecodePicture(unit, control, document_->Colours(), picture);
    if (picture.Width() > 0) {
      Picture1->Picture().Draw(picture, control.X1, control.Y1 + moved, &gdip_);
    }
  };
  if (isUsual) {
    draw(subtitle.Unit, primary, 0);
    draw(over.Unit, over.Control, document_->YOffset());
  }
  inspector_->Show(subtitle.Unit, primary, ChoiceOf(subtitle.Codes));
  if (subtitle.Over) {
    inspector_->ShowOver(over.Unit, over.Control, document_->YOffset(), settings.SecondaryCodes);
  }
  Picture1->Refresh();
}

void frmTest::DrawFrameBackground() {
  Background background{.Source = Background::Kind::Checker,
                        .File = Text_GraphFile->text(),
                        .Colour = ToQColor(Label_Ground->Colour()).rgb()};
  if (Option_File->isChecked()) {
    background.Source = Background::Kind::PictureFile;
  } else if (Option_Colour->isChecked()) {
    background.Source = Background::Kind::Colour;
  }
  Picture1->Picture().DrawBackground(document_->FrameLines(), background, &gdip_);
}

void frmTest::SavePicture(cBitmap& picture) {
  if (!Check_SavePics->isChecked() || picturePath_.isEmpty()) {
    return;
  }
  ExportFailures failures;
  if (picture.Width() < 1) {
    failures.Add(picturePath_, Words::Tr(NoPixelsText));
  } else if (const auto saved = WritePicture(picturePath_, picture, Durability::Unsynced); !saved) {
    failures.Add(picturePath_, saved.Reason());
  }
  TellPictureFailures(failures);
}

void frmTest::TellPictureFailures(const ExportFailures& failures) {
  if (failures.Count > 0) {
    ShowImagingError(QStringLiteral("cBitmap"), static_cast<int>(ImagingStatus::FileSystemError),
                     failures.Text());
  }
}

void frmTest::TellListFailure() {
  ShowMessage(this, Ui::Tr("Error: Cannot open Spufile %1 !").arg(ExportPathsFor(document_->SupPath()).List));
}

void frmTest::Option_File_Click() {
  if (!FileExists(Text_GraphFile->text())) {
    ShowMessage(this, Ui::Tr("Select a valid graphics file first"));
    Option_Checker->setChecked(true);
  }
  document_->Preview();
}

QString frmTest::AskForBackground() {
  const QString start =
      Text_GraphFile->text().isEmpty() ? InProgramFolder(QStringLiteral("test.bmp")) : Text_GraphFile->text();
  return AskToOpen(start, Ui::Tr("Graphic Files (*.BMP;*.GIF;*.JPG;*.PNG)"),
                   QStringLiteral("*.BMP;*.GIF;*.JPG;*.PNG"));
}

void frmTest::Command_GetGraphics_Click() {
  const QString path = AskForBackground();
  if (path.isEmpty()) {
    return;
  }
  Text_GraphFile->setText(path);
  if (Option_File->isChecked()) {
    document_->Preview();
  }
}

}  // namespace quillmark
