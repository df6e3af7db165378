#include <cstdlib>
#include <utility>

#include <QFile>
#include <QPainter>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

const QColor Dark(60, 60, 60);
const QColor Light(120, 120, 120);
const QColor Entry1(3, 253, 251);
const QColor Entry2(255, 255, 255);
const QColor Entry3(2, 252, 2);

/// Blending may round either way.
void ExpectNear(const QColor& colour, const QColor& expected) {
  EXPECT_LE(std::abs(colour.red() - expected.red()), 1) << Rgba(colour);
  EXPECT_LE(std::abs(colour.green() - expected.green()), 1) << Rgba(colour);
  EXPECT_LE(std::abs(colour.blue() - expected.blue()), 1) << Rgba(colour);
}

class Display : public WindowTest {
 protected:
  void LoadIn576Lines(const Bytes& stream) {
    LoadStream(stream);
    Click("Option_720x576");
    Click("Command_Reload");
  }
};

TEST_F(Display, CheckerStartsDarkAndChangesEverySixteenPixels) {
  LoadIn576Lines(FourCodes(PacketBuilder()));
  const QImage frame = Frame();
  ASSERT_EQ(frame.size(), QSize(720, 576));
  EXPECT_EQ(frame.pixelColor(0, 0), Dark);
  EXPECT_EQ(frame.pixelColor(15, 15), Dark);
  EXPECT_EQ(frame.pixelColor(16, 0), Light);
  EXPECT_EQ(frame.pixelColor(0, 16), Light);
  EXPECT_EQ(frame.pixelColor(16, 16), Dark);
  EXPECT_EQ(frame.pixelColor(31, 15), Light);
  EXPECT_EQ(frame.pixelColor(719, 0), Dark);     // column 44
  EXPECT_EQ(frame.pixelColor(719, 575), Light);  // column 44, row 35
}

TEST_F(Display, EveryCheckerSquareIsWhole) {
  LoadIn576Lines(PacketBuilder().Contrast(0, 0, 0, 0).Build());
  const QImage frame = Frame();
  int wrong = 0;
  for (int y = 0; y < 576; ++y) {
    for (int x = 0; x < 720; ++x) {
      const bool isDark = ((x / 16) % 2) == ((y / 16) % 2);
      wrong += frame.pixelColor(x, y) == (isDark ? Dark : Light) ? 0 : 1;
    }
  }
  EXPECT_EQ(wrong, 0);
}

TEST_F(Display, EachCodeShowsItsEntryAtItsPlace) {
  LoadIn576Lines(FourCodes(PacketBuilder().Contrast(15, 15, 15, 15), 100, 400));
  const QImage frame = Frame();
  for (const int y : {400, 401}) {
    EXPECT_EQ(frame.pixelColor(100, y), QColor(0, 0, 0));
    EXPECT_EQ(frame.pixelColor(101, y), QColor(0, 0, 0));
    EXPECT_EQ(frame.pixelColor(102, y), Entry1);
    EXPECT_EQ(frame.pixelColor(103, y), Entry1);
    EXPECT_EQ(frame.pixelColor(104, y), Entry2);
    EXPECT_EQ(frame.pixelColor(106, y), Entry3);
    EXPECT_EQ(frame.pixelColor(107, y), Entry3);
  }
}

TEST_F(Display, NothingIsDrawnOutsideTheArea) {
  LoadIn576Lines(FourCodes(PacketBuilder().Contrast(15, 15, 15, 15), 100, 404));
  const QImage frame = Frame();
  EXPECT_EQ(frame.pixelColor(99, 404), Light);  // column 6, row 25
  EXPECT_EQ(frame.pixelColor(108, 404), Light);
  EXPECT_EQ(frame.pixelColor(102, 403), Light);
  EXPECT_EQ(frame.pixelColor(102, 406), Light);
}

TEST_F(Display, LinesOfTheFieldsAlternate) {
  LoadIn576Lines(PacketBuilder().Build());
  EXPECT_EQ(FrameColour(100, 400), Entry1);
  EXPECT_EQ(FrameColour(103, 400), Entry1);
  EXPECT_EQ(FrameColour(100, 401), Entry2);
}

TEST_F(Display, ContrastZeroIsInvisible) {
  LoadIn576Lines(FourCodes(PacketBuilder().Contrast(15, 0, 15, 0)));
  EXPECT_EQ(FrameColour(100, 400), Light);
  EXPECT_EQ(FrameColour(104, 400), Light);
  EXPECT_EQ(FrameColour(102, 400), Entry1);
}

TEST_F(Display, ContrastEightBlendsWithAlpha136) {
  LoadIn576Lines(FourCodes(PacketBuilder().Contrast(15, 8, 8, 0)));
  // 120 + (255 - 120) * 136 / 255
  ExpectNear(FrameColour(104, 400), QColor(192, 192, 192));
  // 120 + (3 - 120) * 136 / 255, 120 + (253 - 120) * 136 / 255, 120 + (251 - 120) * 136 / 255
  ExpectNear(FrameColour(102, 400), QColor(58, 191, 190));
}

TEST_F(Display, EveryRedrawStartsFromTheBackground) {
  LoadIn576Lines(FourCodes(PacketBuilder().Contrast(15, 8, 15, 0)));
  const QImage once = Frame();
  Click("Command_Reload");
  Click("Command_Reload");
  EXPECT_EQ(Frame(), once);
}

TEST_F(Display, StepTakesTheOldPictureAway) {
  LoadIn576Lines(ThreeSubtitles());
  Click("Command_Next");
  EXPECT_EQ(FrameColour(102, 400), Light);
  EXPECT_EQ(FrameColour(102, 420), Entry1);
}

TEST_F(Display, PictureBelowLine479IsNotSeenIn480Lines) {
  LoadStream(FourCodes(PacketBuilder().Contrast(15, 15, 15, 15), 100, 500));
  Click("Option_720x480");
  Click("Command_Reload");
  const QImage frame = Frame();
  ASSERT_EQ(frame.size(), QSize(720, 480));
  EXPECT_EQ(frame.pixelColor(102, 479), Light);  // column 6, row 29
  EXPECT_EQ(TextOf("Text_YPos"), "500");
}

TEST_F(Display, PictureAcrossLine479IsCut) {
  LoadStream(FourCodes(PacketBuilder(), 100, 479));
  Click("Option_720x480");
  Click("Command_Reload");
  EXPECT_EQ(FrameColour(102, 479), Entry1);
}

TEST_F(Display, PictureAcrossTheRightEdgeIsCut) {
  LoadIn576Lines(FourCodes(PacketBuilder(), 717, 400));
  EXPECT_EQ(FrameColour(719, 400), Entry1);
}

TEST_F(Display, PictureOfOneColumnIsDrawn) {
  LoadIn576Lines(WithFields(PacketBuilder().Area(100, 100, 400, 401).Build(), {0x50, 0x00, 0x50, 0x00}));
  EXPECT_EQ(FrameColour(100, 400), Entry1);
  EXPECT_EQ(FrameColour(100, 401), Entry1);
}

TEST_F(Display, PictureOfAnAreaWithoutColumnsIsNotDrawn) {
  LoadIn576Lines(WithFields(PacketBuilder().Area(100, 99, 400, 401).Build(), {0x50, 0x00, 0x50, 0x00}));
  EXPECT_EQ(FrameColour(99, 400), Light);   // column 6, row 25
  EXPECT_EQ(FrameColour(100, 400), Light);  // the same square
}

TEST_F(Display, CheckerIsNotLaidOutAnewFor480Lines) {
  LoadStream(PacketBuilder().Contrast(0, 0, 0, 0).Build());
  Click("Option_720x480");
  Click("Command_Reload");
  EXPECT_EQ(FrameColour(0, 0), Dark);
  EXPECT_EQ(FrameColour(719, 479), Light);  // column 44, row 29
}

TEST_F(Display, SizeOptionsSetTheFramesHeight) {
  LoadStream(ThreeSubtitles());
  Click("Option_720x480");
  EXPECT_EQ(Frame().size(), QSize(720, 480));
  Click("Option_720x576");
  EXPECT_EQ(Frame().size(), QSize(720, 576));
}

TEST_F(Display, SwitchingTheSizeAndBackKeepsTheDrawing) {
  LoadIn576Lines(FourCodes(PacketBuilder(), 100, 500));
  const QImage before = Frame();
  Click("Option_720x480");
  Click("Option_720x576");
  EXPECT_EQ(Frame(), before);
}

TEST_F(Display, SwitchingTheSizeDoesNotDrawTheSubtitle) {
  LoadIn576Lines(FourCodes(PacketBuilder()));
  Dialogs.ExpectOpen(Write("red.ppm", QByteArray("P3 1 1 255 255 0 0\n")));
  Click("Command_GetGraphics");
  Click("Option_File");
  const QImage before = Frame();
  QFile::remove(Path("red.ppm"));  // a redraw would now report the missing background
  Click("Option_720x480");
  Click("Option_720x576");
  EXPECT_EQ(Frame(), before);
}

TEST_F(Display, ContentsSurviveHidingAndShowing) {
  LoadIn576Lines(ThreeSubtitles());
  const QImage before = Frame();
  Window.hide();
  Window.show();
  Window.resize(Window.size() + QSize(40, 40));
  Control<QWidget>("Picture1").repaint();
  EXPECT_EQ(Frame(), before);
}

TEST_F(Display, ScaledScreenShowsEachPixelAsABlock) {
  LoadIn576Lines(FourCodes(PacketBuilder().Contrast(15, 15, 15, 15)));
  QImage scaled(1440, 1152, QImage::Format_RGB32);
  scaled.setDevicePixelRatio(2);
  scaled.fill(Qt::magenta);
  QPainter painter(&scaled);
  Control<QWidget>("Picture1").render(&painter);
  painter.end();
  EXPECT_EQ(scaled.pixelColor(1439, 1151), Light);
  for (const QPoint corner : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)}) {
    EXPECT_EQ(scaled.pixelColor(QPoint(204, 800) + corner), Entry1);
    EXPECT_EQ(scaled.pixelColor(QPoint(206, 800) + corner), Entry1);
    EXPECT_EQ(scaled.pixelColor(QPoint(208, 800) + corner), Entry2);
  }
}

TEST_F(Display, EmptyFrameSaysHowToBegin) {
  const auto differs = [this] {
    const QImage frame = Frame();
    int count = 0;
    for (int y = 250; y < 326; ++y) {
      for (int x = 160; x < 560; ++x) {
        count += frame.pixelColor(x, y) == (((x / 16) % 2) == ((y / 16) % 2) ? Dark : Light) ? 0 : 1;
      }
    }
    return count;
  };
  Click("Option_720x576");
  EXPECT_GT(differs(), 2000);
  LoadIn576Lines(ThreeSubtitles());
  EXPECT_EQ(differs(), 0);
  // Gone for good: it is not the picture's own.
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  EXPECT_EQ(differs(), 0);
}

/// What shades the frame begins with its full darkness, whichever side one comes from.
TEST_F(Display, PlateBelowTheHintHasNoOutline) {
  Click("Option_720x576");
  const QImage frame = Frame();
  const auto ground = [](const QPoint& at) { return (at.x() / 16) % 2 == (at.y() / 16) % 2 ? Dark : Light; };
  for (const auto& [from, step] :
       {std::pair(QPoint(360, 0), QPoint(0, 1)), std::pair(QPoint(360, 575), QPoint(0, -1)),
        std::pair(QPoint(0, 288), QPoint(1, 0)), std::pair(QPoint(719, 288), QPoint(-1, 0))}) {
    QPoint at = from;
    while (frame.rect().contains(at) && frame.pixelColor(at) == ground(at)) {
      at += step;
    }
    ASSERT_TRUE(frame.rect().contains(at)) << step.x() << ' ' << step.y();
    // 47 parts in 255 of what is below it.
    ExpectNear(frame.pixelColor(at), ground(at) == Dark ? QColor(11, 11, 11) : QColor(22, 22, 22));
  }
}

TEST_F(Display, LastLineOfAnOddHeightStaysTransparent) {
  LoadIn576Lines(WithFields(PacketBuilder().Area(100, 107, 400, 402).Build(), {0x89, 0xAB, 0x89, 0xAB}));
  EXPECT_EQ(FrameColour(102, 401), Entry1);
  EXPECT_EQ(FrameColour(102, 402), Light);
  EXPECT_EQ(TextOf("Text_Height"), "3");
}

}  // namespace
}  // namespace quillmark::test
