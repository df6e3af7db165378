#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include "app/Dialogs.h"
#include "app/DisplayFrame.h"
#include "app/PathText.h"
#include "app/frmTest.h"
#include "render/SubtitleExport.h"

namespace quillmark {
namespace {

void SetIfChanged(QLineEdit* field, const std::string& text) {
  const QString shown = QString::fromStdString(text);
  if (field->text() != shown) {
    field->setText(shown);
  }
}

}  // namespace

bool frmTest::ConvertSubtitle(const SubtitleUnit& unit, const QString& supPath) {
  filling_ = true;
  const auto description = DescribeSubtitle(unit);
  if (!description) {
    return false;
  }
  ShowDetails(*description);
  ExportSubtitle(*description, supPath);
  filling_ = false;
  RenderSubtitle(unit.Bytes);
  return true;
}

void frmTest::ShowDetails(const SubtitleDescription& description) {
  const SpuControl& control = description.Control;
  const auto colourLists = ColourLists();
  for (std::size_t code = 0; code < 4; ++code) {
    colourLists[code]->setCurrentIndex(control.Colour[code]);
    Combo1[code]->setCurrentIndex(control.Contrast[code]);
  }
  codeColours_ = MakeCodeColours(Palette(), control);
  shown_ = control;
  SetIfChanged(Text_XPos, description.XPos);
  SetIfChanged(Text_YPos, description.YPos);
  SetIfChanged(Text_Width, description.Width);
  SetIfChanged(Text_Height, description.Height);
  SetIfChanged(Text_StartTime, description.StartTime);
  SetIfChanged(Text_Dur, description.Duration);
}

bool frmTest::ExportSubtitle(const SubtitleDescription& description, const QString& supPath,
                             ListFailure failure) {
  picturePath_.clear();
  if (!Check_SavePics->isChecked()) {
    return true;
  }
  const ExportPaths paths = ExportPathsFor(supPath);
  const SubtitleExport exported = DescribeExport(description, paths);
  const bool listed = AppendSpuLine(paths.List, exported.ListLine);
  if (!listed && failure == ListFailure::Told) {
    TellListFailure(supPath);
  }
  EnsurePictureFolder(paths.Folder);
  picturePath_ = exported.PicturePath;
  return listed;
}

void frmTest::RenderSubtitle(std::span<const std::uint8_t> unit) {
  DrawFrameBackground();
  cBitmap picture(&gdip_);
  DecodePicture(unit, shown_, codeColours_, picture);
  if (picture.Width() > 0) {
    SavePicture(picture);
    Picture1->Picture().Draw(picture, shown_.X1, shown_.Y1, &gdip_);
  }
  Picture1->Refresh();
}

void frmTest::DrawFrameBackground() {
  Picture1->SetLines(Option_720x576->isChecked() ? FrameHeight576 : FrameHeight480);
  const Background background{
      .Source = Option_File->isChecked() ? Background::Kind::PictureFile : Background::Kind::Checker,
      .File = Text_GraphFile->text()};
  Picture1->Picture().DrawBackground(Picture1->Lines(), background, &gdip_);
}

void frmTest::SavePicture(cBitmap& picture) {
  if (Check_SavePics->isChecked() && !picturePath_.isEmpty()) {
    picture.SaveToFile(picturePath_, cBitmap::EncoderIndex(QStringLiteral("*.png")));
  }
}

void frmTest::TellListFailure(const QString& supPath) {
  ShowMessage(this, QStringLiteral("Error: Cannot open Spufile %1 !").arg(ExportPathsFor(supPath).List));
}

void frmTest::SetFrameLines(int lines) {
  Picture1->SetLines(lines);
}

void frmTest::Option_File_Click() {
  if (!FileExists(Text_GraphFile->text())) {
    ShowMessage(this, QStringLiteral("Select a valid graphics file first"));
    Option_Checker->setChecked(true);
  }
  RefreshCodeColours();
}

void frmTest::Command_GetGraphics_Click() {
  const QString start =
      Text_GraphFile->text().isEmpty() ? InProgramFolder(QStringLiteral("test.bmp")) : Text_GraphFile->text();
  const QString path = OpenFileName(this, start, QStringLiteral("Graphic Files (*.BMP;*.GIF;*.JPG;*.PNG)"),
                                    QStringLiteral("*.BMP;*.GIF;*.JPG;*.PNG"));
  if (path.isEmpty()) {
    return;
  }
  Text_GraphFile->setText(path);
  if (Option_File->isChecked()) {
    RefreshCodeColours();
  }
}

}  // namespace quillmark
