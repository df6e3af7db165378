#include <cmath>
#include <limits>
#include <optional>
#include <utility>
#include <vector>

#include <QCheckBox>
#include <QCoreApplication>
#include <QFileInfo>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/HourglassPointer.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "base/FilePath.h"
#include "base/LeadingNumber.h"
#include "files/FileWriter.h"
#include "render/Composition.h"
#include "render/Exporter.h"
#include "render/MergeJob.h"
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

/// Why a merged file does not hold every subtitle; empty when it does.
QString WhyIncomplete(const MergeReport& merged, const Result<void>& ended) {
  QString reason = QString::fromStdString(merged.Reason);
  switch (merged.How) {
    case MergeReport::Ending::SubtitleFailed:
      return (merged.IsOfSecondary ? Ui::Tr("subtitle %1 of the second stream cannot be merged: %2")
                                   : Ui::Tr("subtitle %1 cannot be merged: %2"))
          .arg(QString::number(merged.Number), reason);
    case MergeReport::Ending::FileFailed:
      return reason;
    case MergeReport::Ending::Interrupted:
    case MergeReport::Ending::Complete:
      break;
  }
  return QString::fromStdString(ended.Reason());
}

}  // namespace

bool frmTest::BeginSecond() {
  switch (ObstacleToSecondary(document_->Primary())) {
    case MergeObstacle::NoPrimary:
      ShowMessage(this, Ui::Tr("Error: No primary sup file loaded"));
      return false;
    case MergeObstacle::VariedPrimary:
      ShowMessage(this,
                  Ui::Tr("Error: Primary sup file uses multiple colors or multiple transparancies\r\n"
                         "Loading secondary stream not possible.\r\n"
                         "Remove the multiple colors and/or multiple transparancies in the primary sup "
                         "file and retry"),
                  Ui::Tr("Colours that are set here count once the stream is saved and loaded again: use Set "
                         "for all, save the stream, and load the saved one."));
      return false;
    case MergeObstacle::NoSecondary:
    case MergeObstacle::None:
      break;
  }
  if (!document_->ReturnToFirst()) {
    TellConversionFailed();
  }
  document_->DropSecondary();
  return true;
}

void frmTest::Command_LoadSecond_Click() {
  if (!BeginSecond()) {
    return;
  }
  const QString path = AskToOpen(document_->SupPath(), Ui::Tr("SUP Files (*.SUP)"), QStringLiteral("*.SUP"));
  if (!path.isEmpty()) {
    MergeWith(path);
  }
}

void frmTest::MergeWith(const QString& path) {
  MergeWith(path, [&] {
    return quillmark::LoadSecondaryStream(PathFromUtf8(path.toStdString()), document_->Primary());
  });
}

void frmTest::MergeWith(const QString& path, const LoadSecondary& load, const QString& remark) {
  if (LoadSecondaryStream(path, load, remark) && AskForOffset()) {
    ShowFirstMergedSubtitle();
  }
}

bool frmTest::LoadSecondaryStream(const QString& path, const LoadSecondary& load, const QString& remark) {
  HourglassPointer hourglass;
  Result<LoadedStream> loaded = load();
  if (loaded && loaded->Stream.Holds(0)) {
    document_->SetNumber(loaded->FirstIsInvalid ? 0 : 1);
    if (loaded->FirstIsInvalid) {
      hourglass.Release();
      ShowMessage(this, Ui::Tr("Error converting subtitle!"));
    }
    repaint();
  }
  hourglass.Release();
  if (!loaded) {
    TellUnreadable(path, loaded.Reason());
    return false;
  }
  if (loaded->LostSignature) {
    ShowMessage(this, Ui::Tr("Error: No SUP signature found"));
    return false;
  }
  loaded->Stream.Path = path.toStdString();
  ShowMessage(this, QString::fromStdString(SecondaryReport(loaded->Stream)), remark);
  document_->BeginMerging(std::move(loaded->Stream));
  return true;
}

bool frmTest::AskForOffset() {
  const QString reply =
      AskText(this, Ui::Tr("Set Offset"), Ui::Tr("Y-Offset for secondary stream"), QStringLiteral("-400"));
  const auto offset = RoundedOffset(LeadingNumber(reply.toStdString()));
  if (!offset) {
    ShowMessage(this, Ui::Tr("The offset %1 is not between -32768 and 32767; it stays %2")
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
  switch (ObstacleToMerge(document_->Primary(), document_->Secondary())) {
    case MergeObstacle::NoPrimary:
      ShowMessage(this, Ui::Tr("Error: No primary sup file loaded"));
      return;
    case MergeObstacle::NoSecondary:
      ShowMessage(this, Ui::Tr("Error: No secondary sup file loaded"));
      return;
    case MergeObstacle::VariedPrimary:
    case MergeObstacle::None:
      break;
  }
  const QString path = AskForNewSup();
  if (!path.isEmpty()) {
    SaveMerged(path);
  }
}

void frmTest::SaveMerged(const QString& path) {
  auto file = FileWriter::DeletingFirst(path);
  if (!file) {
    ShowMessage(this, Ui::Tr("Cannot save %1: %2").arg(path, QString::fromStdString(file.Reason())));
    return;
  }
  const QString caption = windowTitle();
  QWidget* const focused = focusWidget();
  HourglassPointer hourglass;
  document_->SetBusy(true);
  Exporter exporter(ExportPathsFor(document_->SupPath()), Exporter::List::Appended);
  const auto next = [&](std::size_t index) {
    setWindowTitle(caption + Ui::Tr("  working on subtitle # %1", {QString::number(index)}));
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    return true;
  };
  std::int64_t encoded = 0;
  const auto done = [&](std::size_t /*index*/, MergedStreamEncoder::Outcome outcome,
                        const MergedStreamEncoder& encoder) {
    encoded += outcome == MergedStreamEncoder::Outcome::Encoded ? 1 : 0;
    if (!encoder.Reader().IsDescribed()) {
      return;
    }
    ShowDetails(encoder.Description());
    cBitmap picture(&gdip_);
    if (outcome == MergedStreamEncoder::Outcome::InvalidSecondary) {
      ShowPrimaryAlone(encoder.Description().Control, encoder.Reader().Primary(), picture);
    } else if (Check_SavePics->isChecked()) {
      encoder.CopyPictureTo(picture);
    }
    if (Check_SavePics->isChecked()) {
      exporter.Add(encoder.Description(), std::move(picture));
    }
  };
  const MergeReport merged = MergeStreams(document_->Primary(), document_->Secondary(),
                                          document_->SettingsOfMerge(), *file, {.Next = next, .Done = done});
  exporter.Flush();
  const auto ended = file->Commit();
  setWindowTitle(caption);
  document_->ShowAgain();
  // Keys and clicks of the meantime find nothing enabled, and are not kept for what comes next.
  QCoreApplication::processEvents();
  document_->SetBusy(false);
  if (focused != nullptr) {
    focused->setFocus();
  }
  hourglass.Release();
  if (exporter.ListFailures().Count > 0) {
    TellListFailure();
  }
  TellPictureFailures(exporter.PictureFailures());
  if (const QString failure = WhyIncomplete(merged, ended); !failure.isEmpty()) {
    ShowMessage(this, Ui::Tr("%1 is not complete: %2").arg(path, failure));
  } else {
    TellSaved(path, encoded, QFileInfo(path).size());
  }
  if (!merged.TooLong.empty()) {
    ShowMessage(this, path + QStringLiteral(": ") + QString::fromStdString(TooLongText(merged.TooLong)));
  }
}

void frmTest::ShowPrimaryAlone(const SpuControl& control, std::size_t index, cBitmap& picture) {
  std::vector<std::uint8_t> buffer;
  const SubtitleUnit unit = UnitOf(document_->Primary(), index, buffer);
  const CodeColours colours = MakeCodeColours(document_->Palette(), control);
  RenderSubtitle(unit.Bytes, control, colours, false);
  if (Check_SavePics->isChecked()) {
    DecodePicture(unit.Bytes, control, colours, picture);
  }
}

}  // namespace quillmark
