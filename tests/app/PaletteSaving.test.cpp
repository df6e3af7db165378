#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

#include "tests/app/PaletteFiles.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class PaletteSaving : public WindowTest {
 protected:
  void SetUp() override { LoadStream(FourCodes(PacketBuilder())); }
  QByteArray SavePalette(const QString& name) {
    Dialogs.ExpectSave(Path(name));
    Click("Command_SavePalette");
    Dialogs.Verify();
    return ReadText(Path(name));
  }
};

/// Y, Cr, Cb of the start-up palette's entries.
const QByteArray StartUpPal =
    "108080\r\nA912A4\r\nEB8080\r\n902437\r\nD29112\r\n99BAAE\r\n9979A8\r\n9BB8AC\r\n"
    "ABAD71\r\nC55A62\r\n9A78AD\r\nB5A59E\r\n808080\r\n108080\r\n108080\r\n108080\r\n";

const QByteArray StartUpRgb =
    "        Color 0=0, 0, 0\r\n        Color 1=3, 253, 251\r\n        Color 2=255, 255, 255\r\n"
    "        Color 3=2, 252, 2\r\n        Color 4=253, 255, 4\r\n        Color 5=252, 94, 252\r\n"
    "        Color 6=148, 150, 240\r\n        Color 7=251, 99, 251\r\n        Color 8=252, 150, 150\r\n"
    "        Color 9=150, 253, 150\r\n        Color 10=148, 150, 251\r\n        Color 11=251, 150, 253\r\n"
    "        Color 12=130, 130, 130\r\n        Color 13=0, 0, 0\r\n        Color 14=0, 0, 0\r\n"
    "        Color 15=0, 0, 0\r\n\r\n";

TEST_F(PaletteSaving, PalFileHoldsYCrCbOfTheSwatches) {
  EXPECT_EQ(SavePalette("p.pal"), StartUpPal);
}

TEST_F(PaletteSaving, NameEndingInUpperCaseRgbIsWrittenAsDecimals) {
  EXPECT_EQ(SavePalette("p.RGB"), StartUpRgb);
}

TEST_F(PaletteSaving, NameEndingInLowerCaseRgbIsWrittenAsPal) {
  EXPECT_EQ(SavePalette("p.rgb"), StartUpPal);
}

TEST_F(PaletteSaving, LongerFileBeforeIsCut) {
  Write("p.pal", QByteArray(5000, 'x'));
  EXPECT_EQ(SavePalette("p.pal"), StartUpPal);
}

TEST_F(PaletteSaving, EditedSwatchIsSaved) {
  Dialogs.ExpectColour(QColor(255, 0, 128));
  Click("Label1_0");
  EXPECT_TRUE(SavePalette("p.RGB").startsWith("        Color 0=255, 0, 128\r\n"));
}

TEST_F(PaletteSaving, LoadedPaletteIsSaved) {
  LoadPalette(Write("red.pal", PalWithRed()));
  // (255, 1, 0) is Y 82, Cr 240, Cb 90 again: 257*255 + 504 + 16500 = 82539.
  EXPECT_TRUE(SavePalette("p.pal").startsWith("108080\r\n52F05A\r\nEB8080\r\n"));
}

TEST_F(PaletteSaving, SavedRgbFileReadsBackAsSixteenTimesTheSame) {
  SavePalette("p.RGB");
  LoadPalette(Path("p.RGB"));
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(SwatchColour(i), QColor(0, 154, 0)) << i;
  }
}

TEST_F(PaletteSaving, DialogProposesThePalOfTheStream) {
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SavePalette");
  const ShownDialog shown = Dialogs.Last();
  EXPECT_EQ(shown.Folder, Folder.path());
  EXPECT_EQ(QFileInfo(shown.Name).fileName(), "movie.pal");
  EXPECT_EQ(shown.Filters, QStringList("Palette Files (*.PAL;*.RGB)"));
  for (const char* name : {"a.PAL", "a.pal", "a.RGB", "a.rgb"}) {
    EXPECT_TRUE(shown.Offers(name)) << name;
  }
  EXPECT_FALSE(shown.Offers("a.ifo"));
}

TEST_F(PaletteSaving, ProposalForAPathBelowFourCharactersIsTestPalInTheProgramsFolder) {
  Control<QLineEdit>("Text1").setText("abc");
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SavePalette");
  EXPECT_EQ(Dialogs.Last().Folder, QFileInfo(InProgramsFolder("test.sup")).path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "test.pal");
}

TEST_F(PaletteSaving, NameWithoutAPointKeepsItAllInTheProposal) {
  QDir().mkdir(Path("films.new"));
  Control<QLineEdit>("Text1").setText(Path("films.new/movie"));
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SavePalette");
  EXPECT_EQ(Dialogs.Last().Folder, Path("films.new"));
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "movie.pal");
}

TEST_F(PaletteSaving, NameWithoutAPointIsWrittenAsItIs) {
  EXPECT_EQ(SavePalette("palette"), StartUpPal);
  EXPECT_EQ(SavePalette("paletteRGB"), StartUpRgb);
}

TEST_F(PaletteSaving, CancelWritesNothing) {
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SavePalette");
  EXPECT_FALSE(QFileInfo::exists(Path("movie.pal")));
}

TEST_F(PaletteSaving, FileThatCannotBeOpenedIsTold) {
  Dialogs.ExpectSave(Path("missing/p.pal"));
  Dialogs.ExpectMessage("Cannot open file");
  Click("Command_SavePalette");
  EXPECT_EQ(Dialogs.Last().Buttons, QMessageBox::Ok);
  EXPECT_FALSE(QFileInfo::exists(Path("missing")));
}

}  // namespace
}  // namespace quillmark::test
