#include <QFileInfo>

#include "app/Document.h"
#include "app/PathText.h"
#include "app/ProgramChainsDialog.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "base/FilePath.h"

namespace quillmark {

void frmTest::Command_ProgramChains_Click() {
  const QString path = AskToOpen(ProposedIfoName(document_->SupPath()), Ui::Tr("IFO Files (*.IFO;*.BUP)"),
                                 QStringLiteral("*.IFO;*.BUP"));
  if (path.isEmpty()) {
    return;
  }
  const auto info = ReadIfoFile(PathFromUtf8(path.toStdString()));
  if (!info) {
    TellUnreadable(path, info.Reason());
    return;
  }
  std::optional<std::size_t> shown;
  if (const std::int64_t number = document_->Number();
      number > 0 && document_->Primary().Holds(static_cast<std::size_t>(number) - 1)) {
    shown = static_cast<std::size_t>(number) - 1;
  }
  ProgramChainsDialog dialog(QFileInfo(path).fileName(), *info,
                             {.Stream = document_->Primary(),
                              .Index = shown,
                              .Present = document_->Palette(),
                              .FrameLines = document_->FrameLines()},
                             this);
  if (dialog.exec() != QDialog::Accepted) {
    return;
  }
  const QString name = Ui::Tr("Palette of %1", {QString::fromStdString(ChainText(dialog.Chosen()))});
  (void)document_->SetPalette(dialog.Chosen().Palette, name);
  Command_Reload_Click();
  Tell(name + QStringLiteral(", ") + QFileInfo(path).fileName());
}

}  // namespace quillmark
