#include <QLabel>
#include <QLineEdit>

#include "app/Dialogs.h"
#include "app/ImageList.h"
#include "app/PaletteSwatch.h"
#include "app/PathText.h"
#include "app/frmTest.h"
#include "files/ReplaceFile.h"
#include "palette/PaletteFile.h"

namespace quillmark {

void frmTest::Command_LoadPalette_Click() {
  const QString path = OpenFileName(this, ProposedIfoName(Text1->text()),
                                    QStringLiteral("IFO + Palette Files (*.IFO;*.PAL;*.RGB)"),
                                    QStringLiteral("*.IFO;*.PAL;*.RGB"));
  if (!path.isEmpty()) {
    LoadPalette(path);
  }
}

void frmTest::LoadPalette(const QString& path) {
  const auto packed = LoadPaletteFile(path.toStdString());
  if (!packed) {
    ShowMessage(this, QStringLiteral("Illegal file"));
  }
  ShowPalette(packed ? *packed : DefaultPackedPalette);
  Command_Reload_Click();
}

void frmTest::Command_SavePalette_Click() {
  const QString proposed = ReplaceExtension(SupPathOrDefault(Text1->text()), QStringLiteral(".pal"));
  const QString path =
      SaveFileName(this, FolderOf(proposed), proposed, QStringLiteral("Palette Files (*.PAL;*.RGB)"),
                   QStringLiteral("*.PAL;*.RGB"));
  if (path.isEmpty()) {
    return;
  }
  const std::string text = PaletteTextFor(path.toStdString(), Palette());
  const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  if (ReplaceFile(path, bytes, OldTail::Dropped)) {
    ShowMessage(this, QStringLiteral("Cannot open file"));
  }
}

void frmTest::ShowPalette(const PackedPalette& packed) {
  const DvdPalette colours = ToRgb(packed);
  for (std::size_t entry = 0; entry < colours.size(); ++entry) {
    Label1[entry]->SetColour(colours[entry]);
  }
  RebuildPaletteImages();
}

void frmTest::RebuildPaletteImages() {
  std::array<QPixmap, 16> pictures;
  for (std::size_t entry = 0; entry < pictures.size(); ++entry) {
    pictures[entry] = DrawEntryPicture(Label1[entry]->Colour());
    Picture2[entry]->setPixmap(pictures[entry]);
  }
  ImageList1->SetPictures(pictures);
}

void frmTest::Label1_Click(std::size_t entry) {
  const Rgb before = Label1[entry]->Colour();
  const Rgb chosen = ChooseColour(this, before);
  if (chosen == before) {
    return;
  }
  Label1[entry]->SetColour(chosen);
  RebuildPaletteImages();
  Command_Reload_Click();
}

DvdPalette frmTest::Palette() const {
  DvdPalette colours{};
  for (std::size_t entry = 0; entry < colours.size(); ++entry) {
    colours[entry] = Label1[entry]->Colour();
  }
  return colours;
}

}  // namespace quillmark
