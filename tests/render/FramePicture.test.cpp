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
}

}  // namespace
}  // namespace quillmark
