#include <QFile>
#include <QFileInfo>
#include <QImage>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

const QColor Red(255, 0, 0);
const QColor Green(0, 255, 0);
const QColor Blue(0, 0, 255);
const QColor White(255, 255, 255);
const QColor CheckerDark(60, 60, 60);

class Background : public WindowTest {
 protected:
  void SetUp() override {
    LoadStream(FourCodes(PacketBuilder()));
    Click("Option_720x576");
    Click("Command_Reload");
  }

  /// One colour in each quarter.
  QString WriteQuarters(const QString& name) const {
    QImage picture(2, 2, QImage::Format_RGB32);
    picture.setPixelColor(0, 0, Red);
    picture.setPixelColor(1, 0, Green);
    picture.setPixelColor(0, 1, Blue);
    picture.setPixelColor(1, 1, White);
    EXPECT_TRUE(picture.save(Path(name)));
    return Path(name);
  }
  QString WriteFilled(const QString& name, const QColor& colour) const {
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(colour);
    EXPECT_TRUE(picture.save(Path(name), nullptr, 100));
    return Path(name);
  }
  void PickPicture(const QString& path) {
    Dialogs.ExpectOpen(path);
    Click("Command_GetGraphics");
    Dialogs.Verify();
  }
};

TEST_F(Background, PictureIsStretchedOverTheFrame) {
  ShowBackground(WriteQuarters("quarters.png"));
  const QImage frame = Frame();
  EXPECT_EQ(frame.pixelColor(0, 0), Red);
  EXPECT_EQ(frame.pixelColor(719, 0), Green);
  EXPECT_EQ(frame.pixelColor(0, 575), Blue);
  EXPECT_EQ(frame.pixelColor(719, 575), White);
}

TEST_F(Background, PictureIsStretchedOver480Lines) {
  Click("Option_720x480");
  ShowBackground(WriteQuarters("quarters.png"));
  const QImage frame = Frame();
  ASSERT_EQ(frame.size(), QSize(720, 480));
  EXPECT_EQ(frame.pixelColor(0, 479), Blue);
  EXPECT_EQ(frame.pixelColor(719, 479), White);
}

TEST_F(Background, SubtitleIsDrawnOverThePicture) {
  ShowBackground(WriteFilled("red.png", Red));
  EXPECT_EQ(FrameColour(100, 400), Red);  // code 0 is transparent
  EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
}

TEST_F(Background, TransparentPictureStandsOnBlack) {
  QImage picture(4, 4, QImage::Format_ARGB32);
  picture.fill(Qt::transparent);
  ASSERT_TRUE(picture.save(Path("clear.png")));
  ShowBackground(Path("clear.png"));
  EXPECT_EQ(FrameColour(0, 0), QColor(0, 0, 0));
}

TEST_F(Background, FourFormatsAreRead) {
  static constexpr unsigned char RedGif[] = {'G',  'I',  'F',  '8',  '9',  'a',  0x01, 0x00, 0x01,
                                             0x00, 0x80, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00, 0x00,
                                             0x00, 0x2C, 0x00, 0x00, 0x00, 0x00, 0x01, 0x00, 0x01,
                                             0x00, 0x00, 0x02, 0x02, 0x44, 0x01, 0x00, 0x3B};
  const QStringList pictures = {WriteFilled("red.png", Red), WriteFilled("red.bmp", Red),
                                WriteFilled("red.jpg", Red),
                                Write("red.gif", Bytes(std::begin(RedGif), std::end(RedGif)))};
  for (const QString& picture : pictures) {
    Click("Option_Checker");
    ShowBackground(picture);
    const QColor colour = FrameColour(300, 200);
    EXPECT_GE(colour.red(), 252) << picture.toStdString();
    EXPECT_LE(colour.green(), 3) << picture.toStdString();
    EXPECT_LE(colour.blue(), 3) << picture.toStdString();
  }
}

TEST_F(Background, OptionFileWithoutAFileIsToldAndTakenBack) {
  Dialogs.ExpectMessage("Select a valid graphics file first");
  Click("Option_File");
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  EXPECT_EQ(Dialogs.Last().Buttons, QMessageBox::Ok);
  EXPECT_TRUE(IsChecked("Option_Checker"));
  EXPECT_FALSE(IsChecked("Option_File"));
  EXPECT_EQ(FrameColour(0, 0), CheckerDark);
}

TEST_F(Background, OptionFileWithAVanishedFileIsToldAndTakenBack) {
  PickPicture(WriteFilled("red.png", Red));
  QFile::remove(Path("red.png"));
  Dialogs.ExpectMessage("Select a valid graphics file first");
  Click("Option_File");
  EXPECT_TRUE(IsChecked("Option_Checker"));
}

TEST_F(Background, CheckerComesBackAtOnce) {
  ShowBackground(WriteFilled("red.png", Red));
  Click("Option_Checker");
  EXPECT_EQ(FrameColour(0, 0), CheckerDark);
  EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
}

TEST_F(Background, RedrawKeepsTheChosenColours) {
  Choose("ImageCombo2", "3");
  ShowBackground(WriteFilled("red.png", Red));
  EXPECT_EQ(FrameColour(102, 400), QColor(2, 252, 2));
  Click("Option_Checker");
  EXPECT_EQ(FrameColour(102, 400), QColor(2, 252, 2));
  EXPECT_EQ(Chosen("ImageCombo2"), "3");
}

TEST_F(Background, PickingAPictureUnderTheCheckerDoesNotRedraw) {
  const QImage before = Frame();
  PickPicture(WriteFilled("red.png", Red));
  EXPECT_EQ(TextOf("Text_GraphFile"), Path("red.png"));
  EXPECT_EQ(Frame(), before);
}

TEST_F(Background, PickingAnotherPictureRedraws) {
  ShowBackground(WriteFilled("red.png", Red));
  PickPicture(WriteFilled("blue.png", Blue));
  EXPECT_EQ(FrameColour(0, 0), Blue);
}

TEST_F(Background, CancelledPickChangesNothing) {
  ShowBackground(WriteFilled("red.png", Red));
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_GetGraphics");
  EXPECT_EQ(TextOf("Text_GraphFile"), Path("red.png"));
  EXPECT_EQ(FrameColour(0, 0), Red);
}

TEST_F(Background, PictureIsReadAgainOnEveryRedraw) {
  ShowBackground(WriteFilled("red.png", Red));
  WriteFilled("red.png", Green);
  Click("Command_Reload");
  EXPECT_EQ(FrameColour(0, 0), Green);
}

TEST_F(Background, PickDialogOffersPicturesFromTheProgramsFolderOn) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_GetGraphics");
  const ShownDialog shown = Dialogs.Last();
  EXPECT_EQ(shown.Folder, QFileInfo(InProgramsFolder("test.bmp")).path());
  EXPECT_EQ(QFileInfo(shown.Name).fileName(), "test.bmp");
  EXPECT_EQ(shown.Filters, QStringList("Graphic Files (*.BMP;*.GIF;*.JPG;*.PNG)"));
  for (const char* name : {"a.BMP", "a.bmp", "a.GIF", "a.gif", "a.JPG", "a.jpg", "a.PNG", "a.png"}) {
    EXPECT_TRUE(shown.Offers(name)) << name;
  }
  EXPECT_FALSE(shown.Offers("a.txt"));
}

TEST_F(Background, PickDialogStartsAtThePictureBefore) {
  PickPicture(WriteFilled("red.png", Red));
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_GetGraphics");
  EXPECT_EQ(Dialogs.Last().Folder, Folder.path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "red.png");
}

TEST_F(Background, UnreadablePictureIsToldOnceWithSourceNumberAndText) {
  PickPicture(Write("broken.png", QByteArray("no picture at all")));
  Dialogs.ExpectMessageWith({"cBitmap", "13", "Unknown Image Format"});
  Click("Option_File");
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
}

TEST_F(Background, ProgramGoesOnAfterAnUnreadablePicture) {
  PickPicture(Write("broken.png", QByteArray("no picture at all")));
  Dialogs.ExpectMessageWith({"cBitmap"});
  Click("Option_File");
  PickPicture(WriteFilled("red.png", Red));
  EXPECT_EQ(FrameColour(0, 0), Red);
  Click("Option_Checker");
  EXPECT_EQ(FrameColour(0, 0), CheckerDark);
  EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
}

TEST_F(Background, PictureThatVanishesLaterIsReportedByTheImagingLayer) {
  ShowBackground(WriteFilled("red.png", Red));
  QFile::remove(Path("red.png"));
  Dialogs.ExpectMessageWith({"cBitmap"});
  Click("Command_Reload");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

}  // namespace
}  // namespace quillmark::test
