#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/PathText.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "files/ReplaceFile.h"

namespace quillmark {

QString frmTest::AskForNewSup() {
  return AskToSave(ReplaceExtension(SupPathOrDefault(document_->SupPath()), QStringLiteral("_new.sup")),
                   Ui::Tr("SUP Files (*.SUP)"), QStringLiteral("*.SUP"));
}

void frmTest::Command_SaveSup_Click() {
  const SupStream& stream = document_->Primary();
  const QString path = AskForNewSup();
  if (path.isEmpty() || stream.RawBytes.empty()) {
    return;
  }
  const auto bytes = std::span(stream.RawBytes).first(static_cast<std::size_t>(stream.FileLength));
  if (const auto saved = ReplaceFile(path, bytes, {.Tail = OldTail::Kept}); !saved) {
    ShowMessage(this, Ui::Tr("Cannot save %1: %2").arg(path, QString::fromStdString(saved.Reason())));
    return;
  }
  document_->MarkSaved();
  TellSaved(path, stream.Count, stream.FileLength);
}

}  // namespace quillmark
