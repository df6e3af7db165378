#include <cmath>
#include <limits>
#include <optional>
#include <utility>

#include <QCoreApplication>
#include <QFile>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/HourglassPointer.h"
#include "app/frmTest.h"
#include "base/FilePath.h"
#include "base/LeadingNumber.h"
#include "render/MergedStreamEncoder.h"
#include "sup/StreamLoader.h"
#include "sup/StreamReport.h"

namespace quillmark {
namespace {

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
  const SupStream& primary = document_->Primary();
  if (primary.Count < 1) {
    ShowMessage(this, QStringLiteral("Error: No primary sup file loaded"));
    return;
  }
  if (primary.Stats.MultipleColours || primary.Stats.MultipleOpacities) {
    ShowMessage(this,
                QStringLiteral("Error: Primary sup file uses multiple colors or multiple transparancies\r\n"
                               "Loading secondary stream not possible.\r\n"
                               "Remove the multiple colors and/or multiple transparancies in the primary sup "
                               "file and retry"));
    return;
  }
  if (!document_->ReturnToFirst()) {
    TellConversionFailed();
  }
  document_->DropSecondary();
  const QString path =
      AskToOpen(document_->SupPath(), QStringLiteral("SUP Files (*.SUP)"), QStringLiteral("*.SUP"));
  if (!path.isEmpty() && LoadSecondaryStream(path) && AskForOffset()) {
    ShowFirstMergedSubtitle();
  }
}

bool frmTest::LoadSecondaryStream(const QString& path) {
  HourglassPointer hourglass;
  SupStream loaded;
  const LoadResult result = quillmark::LoadSecondaryStream(
      PathFromUtf8(path.toStdString()), document_->Primary(),
      [&](bool firstIsValid) {
        document_->SetNumber(firstIsValid ? 1 : 0);
        if (!firstIsValid) {
          hourglass.Release();
          ShowMessage(this, QStringLiteral("Error converting subtitle!"));
        }
        repaint();
      },
      loaded);
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
  loaded.Path = path.toStdString();
  ShowMessage(this, QString::fromStdString(SecondaryReport(loaded)));
  document_->BeginMerging(std::move(loaded));
  return true;
}

bool frmTest::AskForOffset() {
  const QString reply = AskText(this, QStringLiteral("Set Offset"),
                                QStringLiteral("Y-Offset for secondary stream"), QStringLiteral("-400"));
  const auto offset = RoundedOffset(LeadingNumber(reply.toStdString()));
  if (!offset) {
    ShowMessage(this, QStringLiteral("The offset %1 is not between -32768 and 32767; it stays %2")
                          .arg(reply, QString::number(document_->YOffset())));
    return false;
  }
  document_->SetYOffset(*offset);
  return true;
}

void frmTest::ShowFirstMergedSubtitle() {
  if (!document_->ShowFirstMerged()) {
    TellConversionFailed();
  }
  repaint();
  document_->SetNumber(1);
}

void frmTest::Command_SaveSecond_Click() {
  if (document_->Primary().Count < 1) {
    ShowMessage(this, QStringLiteral("Error: No primary sup file loaded"));
    return;
  }
  if (document_->Secondary().Count < 1) {
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
  MergedStreamEncoder encoder(document_->Primary(), document_->Secondary(),
                              {.Palette = document_->Palette(),
                               .YOffset = document_->YOffset(),
                               .FrameHeight = document_->FrameLines()});
  QString failure;
  const QString shownPicture = picturePath_;
  bool listed = true;
  int pictureStatus = 0;
  for (std::int32_t index = 0; index < document_->Primary().Count && failure.isEmpty(); ++index) {
    setWindowTitle(caption + QStringLiteral("  working on subtitle # %1").arg(index));
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    failure = SaveMergedSubtitle(encoder, index, file);
    if (encoder.Packet().empty()) {
      continue;
    }
    // What takes neither line nor picture now will take none of the others: one message each is enough, and
    // it can wait for the end.
    listed = ExportSubtitle(encoder.Description(), ListFailure::Ignored) && listed;
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
    TellListFailure();
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
