#include "app/RecoveryJournal.h"
#include "app/Strip.h"
#include "app/frmTest.h"

namespace quillmark {

void frmTest::ConnectRecovery() {
  connect(recovery_, &RecoveryJournal::OfferChanged, this, [this] {
    Strip_Recover->Say(recovery_->OfferText());
    UpdateCommands();
  });
  // After what the command that it comes from tells of itself, which it would be lost under.
  connect(recovery_, &RecoveryJournal::Told, this, &frmTest::Tell, Qt::QueuedConnection);
}

void frmTest::Command_Recover_Click() {
  recovery_->Restore();
  Command_Reload_Click();
}

void frmTest::Command_Forget_Click() {
  recovery_->Discard();
}

}  // namespace quillmark
