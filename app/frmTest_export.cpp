#include <QFileInfo>

#include "app/CountText.h"
#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/ExportDialog.h"
#include "app/NotesText.h"
#include "app/PathText.h"
#include "app/SubtitleList.h"
#include "app/Ui.h"
#include "app/frmTest.h"

namespace quillmark {

void frmTest::Command_Export_Click() {
  ExportDialog dialog({.Stream = document_->Primary(),
                       .Path = document_->SupPath(),
                       .Selected = list_->Selected(),
                       .Language = document_->Language()},
                      this);
  if (dialog.exec() == QDialog::Accepted) {
    ExportAs(dialog.Order());
  }
}

void frmTest::ExportAs(const ExportOrder& order) {
  const ExportSource source{
      .Stream = document_->Primary(), .Palette = document_->Palette(), .FrameLines = document_->FrameLines()};
  Result<ExportOutcome> outcome = ExportOutcome{.How = Completion::Cancelled};
  // Whether it was cancelled in time is for the outcome to say.
  (void)RunLongWork(this, Ui::Tr("Writing %1", {CutInTheMiddle(QFileInfo(order.Path).fileName())}), patience_,
                    [&](const Progress& progress) { outcome = Export(source, order, progress); });
  if (!outcome) {
    ShowMessage(this,
                Ui::Tr("Cannot export %1: %2").arg(order.Path, QString::fromStdString(outcome.Reason())));
    return;
  }
  if (outcome->How == Completion::Cancelled) {
    Tell(Ui::Tr("The export was cancelled; nothing was written"));
    return;
  }
  Tell(Ui::Tr("Exported %1, %n subtitle", "Exported %1, %n subtitles", outcome->Subtitles,
              {QFileInfo(Remembered(order.Path)).fileName()}));
  if (!outcome->Notes.empty()) {
    ShowMessage(this, Ui::Tr("%1 was written, with remarks:", {QFileInfo(order.Path).fileName()}),
                NotesText({&outcome->Notes}));
  }
}

}  // namespace quillmark
