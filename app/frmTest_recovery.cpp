#include <QPushButton>

#include "app/RecoveryJournal.h"
#include "app/Strip.h"
#include "app/frmTest.h"

namespace quillmark {

void frmTest::ConnectRecovery() {
  connect(recovery_, &RecoveryJournal::OfferChanged, this, [this] {
    Strip_Recover->Say(recovery_->OfferText());
    Command_Recover->setEnabled(recovery_->CanRestore());
  });
  connect(recovery_, &RecoveryJournal::Told, this, &frmTest::Tell);
  connect(Command_Recover, &QAbstractButton::clicked, this,
          [this] { RunCommand([this] { Command_Recover_Click(); }); });
  connect(Command_Forget, &QAbstractButton::clicked, this,
          [this] { RunCommand([this] { recovery_->Discard(); }); });
}

void frmTest::Command_Recover_Click() {
  recovery_->Restore();
  Command_Reload_Click();
}

}  // namespace quillmark
