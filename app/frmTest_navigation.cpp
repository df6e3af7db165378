#include <cmath>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "base/LeadingNumber.h"

namespace quillmark {

void frmTest::Command_Next_Click() {
  if (!document_->Next()) {
    TellConversionFailed();
  }
}

void frmTest::Command_Prev_Click() {
  if (!document_->Prev()) {
    TellConversionFailed();
  }
}

void frmTest::Command_GoTo_Click() {
  const std::int32_t count = document_->Primary().Count;
  const QString reply =
      AskText(this, Ui::Tr("Jump to subtitle"),
              Ui::Tr("Jump to subtitle Nr. (1..%1):", {QString::number(count)}), QStringLiteral("1"));
  if (reply.isEmpty()) {
    return;
  }
  const double number = std::trunc(LeadingNumber(reply.toStdString()));
  if (!(number >= 1 && number <= count)) {
    ShowMessage(this, Ui::Tr("Illegal number!"));
    return;
  }
  if (!document_->GoTo(static_cast<std::int64_t>(number))) {
    TellConversionFailed();
  }
}

void frmTest::Command_Reload_Click() {
  if (!document_->Reset()) {
    TellConversionFailed();
  }
}

void frmTest::TellConversionFailed() {
  ShowMessage(this, Ui::Tr("Error converting subtitle!"));
  document_->SetFailed();
}

}  // namespace quillmark
