#include <array>

#include <QLabel>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/ImageList.h"
#include "app/PaletteSwatch.h"
#include "app/PathText.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "files/ReplaceFile.h"
#include "palette/PaletteFile.h"

namespace quillmark {

void frmTest::Command_LoadPalette_Click() {
  const QString path =
      AskToOpen(ProposedIfoName(document_->SupPath()), Ui::Tr("IFO + Palette Files (*.IFO;*.PAL;*.RGB)"),
                QStringLiteral("*.IFO;*.PAL;*.RGB"));
  if (!path.isEmpty()) {
    LoadPalette(path);
  }
}

void frmTest::LoadPalette(const QString& path) {
  const auto packed = LoadPaletteFile(path.toStdString());
  if (!packed) {
    ShowMessage(this, Ui::Tr("Illegal file"));
  }
  (void)document_->SetPalette(ToRgb(packed ? *packed : DefaultPackedPalette), Ui::Tr("Load Palette"));
  if (!packed) {
    Tell(path + QStringLiteral(": ") + QString::fromStdString(packed.Reason()));
  }
  Command_Reload_Click();
}

void frmTest::Command_SavePalette_Click() {
  const QString path =
      AskToSave(ReplaceExtension(SupPathOrDefault(document_->SupPath()), QStringLiteral(".pal")),
                Ui::Tr("Palette Files (*.PAL;*.RGB)"), QStringLiteral("*.PAL;*.RGB"));
  if (path.isEmpty()) {
    return;
  }
  const std::string text = PaletteTextFor(path.toStdString(), document_->Palette());
  const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  if (!ReplaceFile(path, bytes)) {
    ShowMessage(this, Ui::Tr("Cannot open file"));
  }
}

void frmTest::ShowPalette() {
  std::array<QPixmap, 16> pictures;
  for (std::size_t entry = 0; entry < pictures.size(); ++entry) {
    const Rgb colour = document_->Palette()[entry];
    Label1[entry]->SetColour(colour);
    pictures[entry] = DrawEntryPicture(colour);
    Picture2[entry]->setPixmap(pictures[entry]);
  }
  ImageList1->SetPictures(pictures);
  ImageList1->SetColours(document_->Palette());
}

void frmTest::Label1_Click(std::size_t entry) {
  DvdPalette palette = document_->Palette();
  const Rgb chosen = ChooseColour(this, palette[entry]);
  if (chosen == palette[entry]) {
    return;
  }
  palette[entry] = chosen;
  (void)document_->SetPalette(palette, Ui::Tr("Palette colour %1", {QString::number(entry, 16).toUpper()}));
  Command_Reload_Click();
}

}  // namespace quillmark
