#include <cmath>
#include <limits>

#include <QCoreApplication>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>

#include "app/Dialogs.h"
#include "app/DisplayFrame.h"
#include "app/HourglassPointer.h"
#include "app/frmTest.h"
#include "base/FilePath.h"
#include "base/LeadingNumber.h"
#include "render/MergedStreamEncoder.h"
#include "sup/ChooseSecondary.h"
#include "sup/StreamReport.h"

namespace quillmark {
namespace {

/// What Text_SubNum shows while the first merged subtitle is drawn, and the length of the primary stream that
/// leaves Next disabled behind it. Kept oddity: it is the count of the swatches and one, left over from
/// disabling them.
constexpr int NumberAfterSwatches = 17;

/// The nearest whole number, halves to even, if it fits the offset.
std::optional<std::int16_t> RoundedOffset(double value) {
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<std::int16_t>::min() &&
        rounded <= std::numeric_limits<std::int16_t>::max())) {
    return std::nullopt;
  }
  return static_cast<std::int16_t>(rounded);
}

}  // namespace

void frmTest::Command_LoadSecond_Click() {
  if (primary_.Count < 1) {
    ShowMessage(this, QStringLiteral("Error: No primary sup file loaded"));
    return;
  }
  if (primary_.Stats.MultipleColours || primary_.Stats.MultipleOpacities) {
    ShowMessage(this,
                QStringLiteral("Error: Primary sup file uses multiple colors or multiple transparancies\r\n"
                               "Loading secondary stream not possible.\r\n"
                               "Remove the multiple colors and/or multiple transparancies in the primary sup "
                               "file and retry"));
    return;
  }
  Text_SubNum->setText(QStringLiteral("2"));
  Command_Prev_Click();
  secondary_.Count = 0;
  const QString path =
      OpenFileName(this, Text1->text(), QStringLiteral("SUP Files (*.SUP)"), QStringLiteral("*.SUP"));
  if (path.isEmpty() || !LoadSecondaryStream(path)) {
    return;
  }
  mergeMode_ = true;
  EnableEditing(false);
  for (QPushButton* command : {Command_Reload, Command_SetActual, Command_SetAll}) {
    command->setEnabled(false);
  }
  if (AskForOffset()) {
    ShowFirstMergedSubtitle();
  }
}

bool frmTest::LoadSecondaryStream(const QString& path) {
  HourglassPointer hourglass;
  const LoadResult result = quillmark::LoadSecondaryStream(
      PathFromUtf8(path.toStdString()), primary_,
      [&](bool firstIsValid) {
        Text_SubNum->setText(firstIsValid ? QStringLiteral("1") : QStringLiteral("0"));
        if (!firstIsValid) {
          hourglass.Release();
          ShowMessage(this, QStringLiteral("Error converting subtitle!"));
        }
        repaint();
      },
      secondary_);
  hourglass.Release();
  switch (result.Result) {
    case LoadResult::Outcome::Unreadable:
      TellUnreadable(path, result);
      return false;
    case LoadResult::Outcome::NoSignature:
      ShowMessage(this, QStringLiteral("Error: No SUP signature found"));
      return false;
    case LoadResult::Outcome::Loaded:
      break;
  }
  secondary_.Path = path.toStdString();
  ShowMessage(this, QString::fromStdString(SecondaryReport(secondary_)));
  return true;
}

bool frmTest::AskForOffset() {
  const QString reply = AskText(this, QStringLiteral("Set Offset"),
                                QStringLiteral("Y-Offset for secondary stream"), QStringLiteral("-400"));
  const auto offset = RoundedOffset(LeadingNumber(reply.toStdString()));
  if (!offset) {
    ShowMessage(this, QStringLiteral("The offset %1 is not between -32768 and 32767; it stays %2")
                          .arg(reply)
                          .arg(yOffset_));
    return false;
  }
  yOffset_ = *offset;
  return true;
}

void frmTest::ShowFirstMergedSubtitle() {
  const bool shown = secondary_.Holds(0) &&
                     ConvertMergedSubtitle(UnitOf(primary_, 0, unit_), UnitOf(secondary_, 0, secondaryUnit_));
  if (shown) {
    Text_SubNum->setText(QString::number(NumberAfterSwatches));
    if (primary_.Count == NumberAfterSwatches) {
      Command_Next->setEnabled(false);
    }
    Command_Prev->setEnabled(true);
  } else {
    TellConversionFailed();
  }
  repaint();
  Text_SubNum->setText(QStringLiteral("1"));
}

bool frmTest::ConvertMergedSubtitle(const SubtitleUnit& primary, const SubtitleUnit& secondary) {
  filling_ = true;
  const auto description = DescribeSubtitle(primary);
  if (!description) {
    return false;
  }
  ShowDetails(*description);
  ExportSubtitle(*description, Text1->text());
  filling_ = false;
  const SpuControl over = DecodeControl(secondary.Bytes, secondary.ControlOffset);
  if (!over.IsValid()) {
    RenderSubtitle(primary.Bytes);
    return false;
  }
  RenderMergedSubtitle({.PrimaryUnit = primary.Bytes,
                        .Primary = description->Control,
                        .SecondaryUnit = secondary.Bytes,
                        .Secondary = over,
                        .YOffset = yOffset_,
                        .Colours = codeColours_,
                        .FrameHeight = Picture1->Lines()});
  return true;
}

void frmTest::RenderMergedSubtitle(const MergedInput& input) {
  DrawFrameBackground();
  if (!picturePath_.isEmpty()) {
    MergedPicture composed;
    composed.Compose(input);
    cBitmap picture(&gdip_);
    composed.CopyTo(picture);
    SavePicture(picture);
  }
  const auto draw = [&](std::span<const std::uint8_t> unit, const SpuControl& control, int moved) {
    cBitmap picture(&gdip_);
    DecodePicture(unit, control, input.Colours, picture);
    if (picture.Width() > 0) {
      Picture1->Picture().Draw(picture, control.X1, control.Y1 + moved, &gdip_);
    }
  };
  draw(input.PrimaryUnit, input.Primary, 0);
  draw(input.SecondaryUnit, input.Secondary, input.YOffset);
  Picture1->Refresh();
}

void frmTest::Command_SaveSecond_Click() {
  if (primary_.Count < 1) {
    ShowMessage(this, QStringLiteral("Error: No primary sup file loaded"));
    return;
  }
  if (secondary_.Count < 1) {
    ShowMessage(this, QStringLiteral("Error: No secondary sup file loaded"));
    return;
  }
  const QString path = AskForNewSup();
  if (!path.isEmpty()) {
    SaveMerged(path);
  }
}

void frmTest::SaveMerged(const QString& path) {
  QFile::remove(path);
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly)) {
    ShowMessage(this, QStringLiteral("Cannot save %1: %2").arg(path, file.errorString()));
    return;
  }
  const QString caption = windowTitle();
  HourglassPointer hourglass;
  MergedStreamEncoder encoder(primary_, secondary_,
                              {.Palette = Palette(), .YOffset = yOffset_, .FrameHeight = Picture1->Lines()});
  QString failure;
  const QString shownPicture = picturePath_;
  bool listed = true;
  int pictureStatus = 0;
  for (std::int32_t index = 0; index < primary_.Count && failure.isEmpty(); ++index) {
    setWindowTitle(caption + QStringLiteral("  working on subtitle # %1").arg(index));
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    failure = SaveMergedSubtitle(encoder, index, file);
    if (encoder.Packet().empty()) {
      continue;
    }
    // What takes neither line nor picture now will take none of the others: one message each is enough, and
    // it can wait for the end.
    listed = ExportSubtitle(encoder.Description(), Text1->text(), ListFailure::Ignored) && listed;
    if (pictureStatus == 0) {
      pictureStatus = SaveMergedPicture(encoder);
    }
  }
  picturePath_ = shownPicture;
  if (failure.isEmpty() && !file.flush()) {
    failure = file.errorString();
  }
  file.close();
  setWindowTitle(caption);
  hourglass.Release();
  if (!listed) {
    TellListFailure(Text1->text());
  }
  if (pictureStatus != 0) {
    gdip_.ReportError(pictureStatus, QStringLiteral("cBitmap"));
  }
  if (!failure.isEmpty()) {
    ShowMessage(this, QStringLiteral("%1 is not complete: %2").arg(path, failure));
  }
}

QString frmTest::SaveMergedSubtitle(MergedStreamEncoder& encoder, std::int32_t index, QFile& file) {
  const MergedStreamEncoder::Outcome outcome = encoder.Encode(index);
  if (outcome == MergedStreamEncoder::Outcome::Skipped) {
    return {};
  }
  if (outcome != MergedStreamEncoder::Outcome::Encoded) {
    return QStringLiteral("subtitle %1 cannot be merged: %2")
        .arg(index + 1)
        .arg(QLatin1String(ReasonOf(outcome)));
  }
  const auto packet = encoder.Packet();
  const auto length = static_cast<qint64>(packet.size());
  return file.write(reinterpret_cast<const char*>(packet.data()), length) == length ? QString()
                                                                                    : file.errorString();
}

int frmTest::SaveMergedPicture(const MergedStreamEncoder& encoder) {
  cBitmap picture;
  if (!picturePath_.isEmpty()) {
    encoder.CopyPictureTo(picture);
    SavePicture(picture);
  }
  return picture.LastStatus();
}

}  // namespace quillmark
