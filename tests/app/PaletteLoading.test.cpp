#include <QComboBox>
#include <QFileInfo>
#include <QStatusBar>

#include "tests/app/PaletteFiles.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

const QColor Red(ShownRed[0], ShownRed[1], ShownRed[2]);
const QColor Black(0, 0, 0);
const QColor White(255, 255, 255);

class PaletteLoading : public WindowTest {
 protected:
  void SetUp() override {
    LoadStream(FourCodes(PacketBuilder()));
    Click("Option_720x576");
  }
  void RefusePalette(const QString& path) {
    Dialogs.ExpectOpen(path);
    Dialogs.ExpectMessage("Illegal file");
    Click("Command_LoadPalette");
    Dialogs.Verify();
  }
  [[nodiscard]] QColor ListPicture(const QString& list, int row, int x, int y) const {
    return Control<QComboBox>(list).itemIcon(row).pixmap(16, 16).toImage().pixelColor(x, y);
  }
};

TEST_F(PaletteLoading, PalFileSetsTheSwatches) {
  LoadPalette(Write("p.pal", PalWithRed()));
  EXPECT_EQ(SwatchColour(0), Black);
  EXPECT_EQ(SwatchColour(1), Red);
  EXPECT_EQ(SwatchColour(2), White);
  for (int i = 3; i < 16; ++i) {
    EXPECT_EQ(SwatchColour(i), Black) << i;
  }
}

TEST_F(PaletteLoading, PalFileWithAnyLineEndIsRead) {
  for (const char* lineEnd : {"\r\n", "\r", "\n"}) {
    LoadPalette(Write("p.pal", PalWithRed(lineEnd)));
    EXPECT_EQ(SwatchColour(1), Red);
    EXPECT_EQ(SwatchColour(2), White);
  }
}

TEST_F(PaletteLoading, IfoFileSetsTheSwatches) {
  LoadPalette(Write("vts_01_0.ifo", IfoWithRed()));
  EXPECT_EQ(SwatchColour(0), Black);
  EXPECT_EQ(SwatchColour(1), Red);
  EXPECT_EQ(SwatchColour(2), White);
}

TEST_F(PaletteLoading, RgbFileComesOutMasked) {
  QByteArray text = "FFFFFF\r\n";
  for (int i = 1; i < 16; ++i) {
    text += "000000\r\n";
  }
  LoadPalette(Write("p.rgb", text));
  EXPECT_EQ(SwatchColour(0), QColor(0, 211, 0));  // Y 65, Cr 0, Cb 0
  EXPECT_EQ(SwatchColour(1), QColor(0, 154, 0));  // Y 16, Cr 0, Cb 0
}

TEST_F(PaletteLoading, ExtensionCountsInEitherCase) {
  LoadPalette(Write("P.PAL", PalWithRed()));
  EXPECT_EQ(SwatchColour(1), Red);
}

TEST_F(PaletteLoading, SubtitleIsShownAgainInTheNewColours) {
  Click("Command_Reload");
  LoadPalette(Write("p.pal", PalWithRed()));
  EXPECT_EQ(FrameColour(102, 400), Red);
  EXPECT_EQ(FrameColour(104, 400), White);
}

TEST_F(PaletteLoading, ListPicturesFollow) {
  LoadPalette(Write("p.pal", PalWithRed()));
  for (const char* list : {"ImageCombo1", "ImageCombo2", "ImageCombo3", "ImageCombo4"}) {
    EXPECT_EQ(ListPicture(list, 1, 7, 7), Red) << list;
    EXPECT_EQ(ListPicture(list, 2, 7, 7), White) << list;
  }
}

TEST_F(PaletteLoading, FifteenOrSeventeenLinesAreRefused) {
  const QByteArray whole = PalWithRed();
  RefusePalette(Write("short.pal", whole.chopped(8)));
  RefusePalette(Write("long.pal", whole + "108080\r\n"));
}

TEST_F(PaletteLoading, UnknownExtensionIsRefused) {
  RefusePalette(Write("p.txt", PalWithRed()));
}

TEST_F(PaletteLoading, WhyAFileIsRefusedIsTold) {
  const QString path = Write("p.txt", PalWithRed());
  RefusePalette(path);
  EXPECT_EQ(Window.statusBar()->currentMessage(),
            path + ": not the name of a palette file: it must end in .ifo, .pal or .rgb");
}

TEST_F(PaletteLoading, IfoWithoutSignatureIsRefused) {
  Bytes file = IfoWithRed();
  file[11] = 'X';
  RefusePalette(Write("v.ifo", file));
}

TEST_F(PaletteLoading, IfoTooShortForItsOffsetsIsRefused) {
  Bytes file = IfoWithRed();
  file.pop_back();
  RefusePalette(Write("v.ifo", file));
  file[205] = 0xFF;
  RefusePalette(Write("v.ifo", file));
}

TEST_F(PaletteLoading, IfoMayBeOneMebibyteLongAndNoLonger) {
  Bytes file = IfoWithRed();
  file.resize(1048576);
  LoadPalette(Write("v.ifo", file));
  EXPECT_EQ(SwatchColour(1), Red);
  file.push_back(0);
  RefusePalette(Write("v.ifo", file));
}

TEST_F(PaletteLoading, RefusedFileShowsTheDefaultPalette) {
  RefusePalette(Write("empty.pal", QByteArray()));
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  EXPECT_EQ(Dialogs.Last().Buttons, QMessageBox::Ok);
  EXPECT_EQ(SwatchColour(0), Black);
  EXPECT_EQ(SwatchColour(1), QColor(1, 1, 1));
  EXPECT_EQ(SwatchColour(2), White);
  for (int i = 3; i < 16; ++i) {
    EXPECT_EQ(SwatchColour(i), Black) << i;
  }
}

TEST_F(PaletteLoading, RefusedFileRedrawsToo) {
  Click("Command_Reload");
  RefusePalette(Write("empty.pal", QByteArray()));
  EXPECT_EQ(FrameColour(102, 400), QColor(1, 1, 1));
  EXPECT_EQ(ListPicture("ImageCombo1", 1, 7, 7), QColor(1, 1, 1));
}

TEST_F(PaletteLoading, CancelChangesNothing) {
  const QImage before = Frame();
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadPalette");
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
  EXPECT_EQ(Frame(), before);
}

TEST_F(PaletteLoading, DialogProposesTheLowerCaseIfoOfTheStream) {
  Load(Write("MOVIE.SUP", ThreeSubtitles()));
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadPalette");
  const ShownDialog shown = Dialogs.Last();
  EXPECT_EQ(QFileInfo(shown.Name).fileName(), "movie.ifo");
  EXPECT_EQ(shown.Folder.toLower(), Folder.path().toLower());
  EXPECT_EQ(shown.Filters, QStringList("IFO + Palette Files (*.IFO;*.PAL;*.RGB)"));
  for (const char* name : {"a.IFO", "a.ifo", "a.PAL", "a.pal", "a.RGB", "a.rgb"}) {
    EXPECT_TRUE(shown.Offers(name)) << name;
  }
  EXPECT_FALSE(shown.Offers("a.sup"));
}

TEST_F(PaletteLoading, StreamIsNotTouched) {
  LoadPalette(Write("p.pal", PalWithRed()));
  EXPECT_EQ(SavedBytes(), FourCodes(PacketBuilder()));
}

}  // namespace
}  // namespace quillmark::test
