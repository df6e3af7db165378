#include <algorithm>

#include <gtest/gtest.h>

#include "render/Composition.h"
#include "tests/support/FolderTest.h"

namespace quillmark {
namespace {

constexpr QRect WholeFrame(0, 0, 720, 576);
const Background BlueGround = {.Source = Background::Kind::Colour, .File = {}, .Colour = 0xFF102030};

class FramePictureTest : public test::FolderTest {
 protected:
  /// Two by two opaque red pixels at (10, 20).
  void DrawRed() {
    cBitmap red;
    red.Create(2, 2);
    std::ranges::fill(red.LockPixels(), 0xFFFF0000U);
    Frame.Draw(red, 10, 20, nullptr);
  }
  void ExpectTakenBack() {
    const QImage before = Frame.Image().copy();
    static_cast<void>(Frame.TakeChanged());
    DrawRed();
    EXPECT_EQ(Frame.Image().pixel(11, 21), 0xFFFF0000U);
    EXPECT_EQ(Frame.Laid().size(), 1U);
    EXPECT_EQ(Frame.TakeChanged(), QRect(10, 20, 2, 2));
    EXPECT_EQ(Frame.Ground(), before);
    Frame.TakeBack();
    EXPECT_EQ(Frame.Image(), before);
    EXPECT_TRUE(Frame.Laid().empty());
    EXPECT_EQ(Frame.TakeChanged(), QRect(10, 20, 2, 2));
  }

  FramePicture Frame;
};

TEST_F(FramePictureTest, TakesBackWhatWasLaidOverAColour) {
  Frame.DrawBackground(576, BlueGround, nullptr);
  EXPECT_EQ(Frame.TakeChanged(), WholeFrame);
  EXPECT_EQ(Frame.Image().pixel(0, 575), 0xFF102030U);
  ExpectTakenBack();
}

TEST_F(FramePictureTest, TakesBackWhatWasLaidOverTheChecker) {
  Frame.DrawBackground(576, {}, nullptr);
  EXPECT_EQ(Frame.Image().pixel(3, 3), 0xFF3C3C3CU);
  ExpectTakenBack();
}

TEST_F(FramePictureTest, TakesBackWhatWasLaidOverAFile) {
  QImage green(1, 1, QImage::Format_RGB32);
  green.fill(0xFF00FF00U);
  ASSERT_TRUE(green.save(Path("green.png")));
  const Background file = {.Source = Background::Kind::PictureFile, .File = Path("green.png")};
  Frame.DrawBackground(480, file, nullptr);
  EXPECT_EQ(Frame.TakeChanged(), WholeFrame);
  EXPECT_EQ(Frame.Image().pixel(719, 479), 0xFF00FF00U);
  ExpectTakenBack();
}

TEST_F(FramePictureTest, FileIsDrawnOverBlackWhereItIsTransparent) {
  QImage picture(2, 1, QImage::Format_ARGB32);
  picture.setPixel(0, 0, 0x00000000U);
  picture.setPixel(1, 0, 0xFF00FF00U);
  ASSERT_TRUE(picture.save(Path("half.png")));
  Frame.DrawBackground(576, BlueGround, nullptr);
  Frame.DrawBackground(576, {.Source = Background::Kind::PictureFile, .File = Path("half.png")}, nullptr);
  EXPECT_EQ(Frame.Image().pixel(0, 300), 0xFF000000U);
  EXPECT_EQ(Frame.Image().pixel(719, 300), 0xFF00FF00U);
}

TEST_F(FramePictureTest, TakesBackWhatWasLaidOverAColourAfterAFile) {
  QImage green(1, 1, QImage::Format_RGB32);
  green.fill(0xFF00FF00U);
  ASSERT_TRUE(green.save(Path("green.png")));
  Frame.DrawBackground(576, {.Source = Background::Kind::PictureFile, .File = Path("green.png")}, nullptr);
  Frame.DrawBackground(576, BlueGround, nullptr);
  EXPECT_EQ(Frame.Image().pixel(300, 300), 0xFF102030U);
  ExpectTakenBack();
}

TEST_F(FramePictureTest, FileThatCannotBeReadLeavesTheFrame) {
  Frame.DrawBackground(576, BlueGround, nullptr);
  static_cast<void>(Frame.TakeChanged());
  const Background missing = {.Source = Background::Kind::PictureFile, .File = Path("missing.png")};
  Frame.DrawBackground(576, missing, nullptr);
  EXPECT_TRUE(Frame.TakeChanged().isEmpty());
  EXPECT_EQ(Frame.Image().pixel(300, 300), 0xFF102030U);
  ExpectTakenBack();
}

TEST_F(FramePictureTest, BackgroundThatIsThereIsDrawnWhereItWasDrawnOnAlone) {
  Frame.DrawBackground(576, BlueGround, nullptr);
  DrawRed();
  static_cast<void>(Frame.TakeChanged());
  Frame.DrawBackground(576, BlueGround, nullptr);
  EXPECT_EQ(Frame.TakeChanged(), QRect(10, 20, 2, 2));
  EXPECT_EQ(Frame.Image().pixel(11, 21), 0xFF102030U);
}

TEST_F(FramePictureTest, AnotherColourIsDrawnOverAll) {
  Frame.DrawBackground(576, BlueGround, nullptr);
  static_cast<void>(Frame.TakeChanged());
  Background other = BlueGround;
  other.Colour = 0xFF302010;
  Frame.DrawBackground(576, other, nullptr);
  EXPECT_EQ(Frame.TakeChanged(), WholeFrame);
  EXPECT_EQ(Frame.Image().pixel(300, 300), 0xFF302010U);
}

TEST(DecodePicture, OfAReversedAreaIsNone) {
  SpuControl control;
  control.X1 = 10;
  control.X2 = 5;
  control.Y1 = 0;
  control.Y2 = 1;
  cBitmap bitmap;
  DecodePicture({}, control, {}, bitmap);
  EXPECT_TRUE(bitmap.Image().isNull());
  EXPECT_EQ(bitmap.LastStatus(), 0) << "a failure to draw it";
}

TEST(DecodePicture, MayBeOfOneColumn) {
  SpuControl control;
  control.X1 = control.X2 = 10;
  control.Y1 = 0;
  control.Y2 = 1;
  control.TopFieldOffset = 4;
  control.BottomFieldOffset = 5;
  cBitmap bitmap;
  // A pixel of code 1, and one of code 2.
  DecodePicture(std::vector<std::uint8_t>{0, 0, 0, 0, 0x50, 0x60, 0, 0}, control,
                {0, 0xFFFF0000, 0xFF00FF00, 0}, bitmap);
  ASSERT_EQ(bitmap.Image().size(), QSize(1, 2));
  EXPECT_EQ(bitmap.Image().pixel(0, 0), 0xFFFF0000U);
  EXPECT_EQ(bitmap.Image().pixel(0, 1), 0xFF00FF00U);
}

TEST(DecodePicture, OneLineIsOfPixelsThatNoRunReached) {
  SpuControl control;
  control.X1 = 10;
  control.X2 = 13;
  control.Y1 = control.Y2 = 0;
  control.TopFieldOffset = control.BottomFieldOffset = 4;
  cBitmap bitmap;
  DecodePicture(std::vector<std::uint8_t>{0, 0, 0, 0, 0x55, 0x55, 0, 0}, control,
                {0, 0xFFFF0000, 0xFF00FF00, 0}, bitmap);
  ASSERT_EQ(bitmap.Image().size(), QSize(4, 1));
  EXPECT_EQ(bitmap.Image().pixel(0, 0), 0U);
}

}  // namespace
}  // namespace quillmark
