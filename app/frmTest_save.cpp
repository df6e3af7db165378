#include <QLineEdit>

#include "app/Dialogs.h"
#include "app/PathText.h"
#include "app/frmTest.h"
#include "files/ReplaceFile.h"

namespace quillmark {

QString frmTest::AskForNewSup() {
  const QString proposed = ReplaceExtension(SupPathOrDefault(Text1->text()), QStringLiteral("_new.sup"));
  return SaveFileName(this, FolderOf(proposed), proposed, QStringLiteral("SUP Files (*.SUP)"),
                      QStringLiteral("*.SUP"));
}

void frmTest::Command_SaveSup_Click() {
  const QString path = AskForNewSup();
  if (path.isEmpty() || primary_.RawBytes.empty()) {
    return;
  }
  const auto stream = std::span(primary_.RawBytes).first(static_cast<std::size_t>(primary_.FileLength));
  if (const auto reason = ReplaceFile(path, stream, OldTail::Kept)) {
    ShowMessage(this, QStringLiteral("Cannot save %1: %2").arg(path, *reason));
  }
}

}  // namespace quillmark
