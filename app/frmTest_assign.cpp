#include <QComboBox>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/ImageList.h"
#include "app/Ui.h"
#include "app/frmTest.h"

namespace quillmark {
namespace {

QString LossWarning(const QString& firstLine) {
  return firstLine + QStringLiteral("\r\n") + Ui::Tr("This information will be lost,") +
         QStringLiteral("\r\n") + Ui::Tr("if the Set All option is used!") + QStringLiteral("\r\n") +
         Ui::Tr("Continue?");
}

}  // namespace

void frmTest::CodeListChanged() {
  CodeChoice choice;
  const auto lists = ColourLists();
  for (std::size_t code = 0; code < 4; ++code) {
    choice.Colours[code] =
        static_cast<std::uint8_t>(EntryOfKey(lists[code]->currentData(ImageList::KeyRole).toString()));
    choice.Contrasts[code] = static_cast<std::uint8_t>(Combo1[code]->currentText().toUInt(nullptr, 16));
  }
  document_->Choose(choice);
  listChangeIsDrawn_ = true;
}

void frmTest::CodeListActivated() {
  // A list tells of a new choice twice, and only here of the entry that it shows already.
  if (!listChangeIsDrawn_) {
    CodeListChanged();
  }
  listChangeIsDrawn_ = false;
}

void frmTest::Command_SetActual_Click() {
  if (const auto set = document_->SetActual(); !set) {
    ShowMessage(this, QString::fromStdString(set.Reason()));
  }
}

void frmTest::Command_SetAll_Click() {
  const SupStreamStats& stats = document_->Primary().Stats;
  if (stats.MultipleColours &&
      !ConfirmWarning(this, LossWarning(Ui::Tr("The subtitles use different colors.")))) {
    return;
  }
  if (stats.MultipleOpacities &&
      !ConfirmWarning(this, LossWarning(Ui::Tr("The subtitles use different opacities.")))) {
    return;
  }
  if (const auto set = document_->SetAll(); !set) {
    ShowMessage(this, QString::fromStdString(set.Reason()));
  }
}

void frmTest::Command_Undo_Click() {
  document_->Undo();
  Command_Reload_Click();
}

void frmTest::Command_Redo_Click() {
  document_->Redo();
  Command_Reload_Click();
}

}  // namespace quillmark
