#include "render/MergedPicture.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include <QImage>
#include <gtest/gtest.h>

#include "imaging/cBitmap.h"
#include "imaging/cGraphics.h"
#include "render/Composition.h"
#include "render/FieldDecoder.h"
#include "sup/RunEncoder.h"
#include "sup/StreamLoader.h"
#include "tests/support/LoadedStream.h"

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Transparent black, opaque blue, half transparent red, opaque white.
constexpr CodeColours Colours = {0x00000000, 0xFF0000FF, 0x88FF0000, 0xFFFFFFFF};

struct Picture {
  Bytes Unit = Bytes(4);  ///< with an empty header, which is not read
  SpuControl Control;
};

SpuControl ControlFor(int x, int y, int width, int height) {
  SpuControl control;
  control.X1 = static_cast<std::int16_t>(x);
  control.Y1 = static_cast<std::int16_t>(y);
  control.X2 = static_cast<std::int16_t>(x + width - 1);
  control.Y2 = static_cast<std::int16_t>(y + height - 1);
  control.TopFieldOffset = 4;
  return control;
}

/// A picture of one code all over: every line is "this code to the end of the line".
Picture Flat(int x, int y, int width, int height, std::uint8_t code) {
  Picture picture;
  picture.Control = ControlFor(x, y, width, height);
  for (int line = 0; line < height; ++line) {
    picture.Unit.push_back(0);
    picture.Unit.push_back(code);
  }
  picture.Control.BottomFieldOffset = 4 + (height + 1) / 2 * 2;
  picture.Unit.resize(picture.Unit.size() + 2);  // the decoder leaves the last byte alone
  return picture;
}

/// Random codes in runs.
Picture Noise(std::mt19937& random, int x, int y, int width, int height) {
  std::uniform_int_distribution<int> code(0, 3);
  std::uniform_int_distribution<int> run(1, 40);
  Picture picture;
  picture.Control = ControlFor(x, y, width, height);
  FieldBuffer fields[2];
  for (int line = 0; line < height; ++line) {
    Bytes cells;
    while (cells.size() < static_cast<std::size_t>(width)) {
      cells.insert(cells.end(), static_cast<std::size_t>(run(random)),
                   static_cast<std::uint8_t>(code(random)));
    }
    cells.resize(static_cast<std::size_t>(width));
    EncodeLine(fields[line % 2], std::span<const std::uint8_t>(cells),
               [](std::uint8_t cell) -> std::uint32_t { return cell; });
  }
  for (const FieldBuffer& field : fields) {
    picture.Unit.insert(picture.Unit.end(), field.Bytes().begin(), field.Bytes().end());
  }
  picture.Unit.resize(picture.Unit.size() + 2);
  picture.Control.BottomFieldOffset = 4 + static_cast<std::int32_t>(fields[0].Bytes().size());
  return picture;
}

MergedInput Input(const Picture& primary, const Picture& secondary, int yOffset = 0,
                  const CodeColours& colours = Colours, int frameHeight = 576) {
  return {.PrimaryUnit = primary.Unit,
          .Primary = primary.Control,
          .SecondaryUnit = secondary.Unit,
          .Secondary = secondary.Control,
          .YOffset = yOffset,
          .Colours = colours,
          .FrameHeight = frameHeight};
}

QImage Composed(const MergedInput& input) {
  MergedPicture picture;
  picture.Compose(input);
  cBitmap bitmap;
  picture.CopyTo(bitmap);
  return bitmap.Image();
}

std::uint32_t PixelAt(const QImage& image, int x, int y) {
  return reinterpret_cast<const std::uint32_t*>(image.constScanLine(y))[x];
}

TEST(MergedPicture, HasTheFramesSize) {
  const QImage image = Composed(Input(Flat(0, 0, 2, 2, 1), Flat(0, 0, 2, 2, 1), 0, Colours, 480));
  EXPECT_EQ(image.size(), QSize(720, 480));
}

TEST(MergedPicture, PrimaryStandsAtItsPlace) {
  const QImage image = Composed(Input(Flat(10, 20, 4, 2, 1), Flat(0, 0, 2, 2, 0)));
  EXPECT_EQ(PixelAt(image, 10, 20), 0xFF0000FFU);
  EXPECT_EQ(PixelAt(image, 13, 21), 0xFF0000FFU);
  EXPECT_EQ(PixelAt(image, 9, 20), 0U);
  EXPECT_EQ(PixelAt(image, 14, 20), 0U);
  EXPECT_EQ(PixelAt(image, 10, 19), 0U);
  EXPECT_EQ(PixelAt(image, 10, 22), 0U);
}

TEST(MergedPicture, SecondaryIsMovedDownByTheOffset) {
  const QImage image = Composed(Input(Flat(0, 0, 2, 2, 1), Flat(10, 500, 4, 2, 3), -400));
  EXPECT_EQ(PixelAt(image, 10, 100), 0xFFFFFFFFU);
  EXPECT_EQ(PixelAt(image, 13, 101), 0xFFFFFFFFU);
  EXPECT_EQ(PixelAt(image, 10, 500), 0U);
}

TEST(MergedPicture, OpaqueSecondaryHidesThePrimary) {
  const QImage image = Composed(Input(Flat(10, 20, 8, 4, 1), Flat(12, 20, 2, 2, 3)));
  EXPECT_EQ(PixelAt(image, 11, 20), 0xFF0000FFU);
  EXPECT_EQ(PixelAt(image, 12, 20), 0xFFFFFFFFU);
  EXPECT_EQ(PixelAt(image, 14, 20), 0xFF0000FFU);
}

TEST(MergedPicture, TransparentSecondaryLeavesThePrimary) {
  const QImage image = Composed(Input(Flat(10, 20, 8, 4, 1), Flat(0, 0, 720, 576, 0)));
  EXPECT_EQ(PixelAt(image, 10, 20), 0xFF0000FFU);
}

TEST(MergedPicture, HalfTransparentSecondaryIsBlended) {
  // 136 parts of red and 119 of blue.
  const QImage image = Composed(Input(Flat(10, 20, 8, 4, 1), Flat(10, 20, 4, 2, 2)));
  EXPECT_EQ(PixelAt(image, 10, 20), 0xFF880077U);
  EXPECT_EQ(PixelAt(image, 14, 20), 0xFF0000FFU);
}

TEST(MergedPicture, HalfTransparentColourKeepsItsValueOverTheClearFrame) {
  const QImage image = Composed(Input(Flat(10, 20, 4, 2, 2), Flat(30, 20, 4, 2, 2)));
  EXPECT_EQ(PixelAt(image, 10, 20), 0x88FF0000U);
  EXPECT_EQ(PixelAt(image, 30, 20), 0x88FF0000U);
}

TEST(MergedPicture, LastLineOfAnOddHeightShowsWhatIsBelow) {
  const QImage image = Composed(Input(Flat(10, 20, 4, 4, 1), Flat(10, 20, 4, 3, 3)));
  EXPECT_EQ(PixelAt(image, 10, 21), 0xFFFFFFFFU);
  EXPECT_EQ(PixelAt(image, 10, 22), 0xFF0000FFU);
}

TEST(MergedPicture, PictureOfOneColumnIsShown) {
  const QImage image = Composed(Input(Flat(10, 20, 4, 2, 1), Flat(12, 20, 1, 2, 3)));
  EXPECT_EQ(PixelAt(image, 11, 20), 0xFF0000FFU);
  EXPECT_EQ(PixelAt(image, 12, 20), 0xFFFFFFFFU);
  EXPECT_EQ(PixelAt(image, 13, 20), 0xFF0000FFU);
}

TEST(MergedPicture, RowsAreShownAsFarAsTheFrameGoes) {
  for (int rows = 1; rows <= 5; ++rows) {
    const QImage image = Composed(Input(Flat(0, 0, 2, 2, 1), Flat(10, 576 - rows, 4, 8, 3)));
    EXPECT_EQ(PixelAt(image, 10, 575 - rows), 0U);
    EXPECT_EQ(PixelAt(image, 10, 576 - rows), 0xFFFFFFFFU) << rows;
    EXPECT_EQ(PixelAt(image, 10, 575), 0xFFFFFFFFU) << rows;
  }
}

TEST(MergedPicture, EqualColoursOfDifferentOriginAreOneCell) {
  // White over blue and white over nothing.
  const Picture primary = Flat(10, 20, 8, 4, 1);
  const Picture secondary = Flat(14, 20, 8, 4, 3);
  MergedPicture picture;
  picture.Compose(Input(primary, secondary));
  const auto row = picture.Cells().Cells.subspan(std::size_t{20} * 720, 720);
  EXPECT_EQ(row[14], row[21]);
  EXPECT_NE(row[13], row[14]);
}

TEST(MergedPicture, RowsOutsideBothPicturesAreNotInUse) {
  const Picture primary = Flat(10, 20, 8, 4, 1);
  const Picture secondary = Flat(10, 500, 8, 2, 1);
  MergedPicture picture;
  picture.Compose(Input(primary, secondary, -400));
  const auto inUse = picture.Cells().RowInUse;
  ASSERT_EQ(inUse.size(), 576U);
  EXPECT_EQ(std::ranges::count(inUse, 1), 6);
  EXPECT_EQ(inUse[23], 1);
  EXPECT_EQ(inUse[101], 1);
}

TEST(MergedPicture, CellsHaveTheCodesOfTheirColours) {
  const Picture primary = Flat(10, 20, 4, 2, 1);
  const Picture secondary = Flat(12, 20, 4, 2, 2);
  MergedPicture picture;
  picture.Compose(Input(primary, secondary));
  const FrameCells cells = picture.Cells();
  const auto codeAt = [&](std::size_t x) { return cells.Codes[cells.Cells[std::size_t{20} * 720 + x]]; };
  EXPECT_EQ(codeAt(9), 0);
  EXPECT_EQ(codeAt(11), 1);
  EXPECT_EQ(codeAt(12), 0);  // red over blue, which no code is near
  EXPECT_EQ(codeAt(14), 2);
}

TEST(MergedPicture, ReversedAreasShowNothing) {
  Picture primary = Flat(10, 20, 4, 2, 1);
  primary.Control.X2 = 4;
  Picture secondary = Flat(10, 20, 4, 2, 1);
  secondary.Control.Y2 = 10;
  MergedPicture picture;
  picture.Compose(Input(primary, secondary));
  EXPECT_EQ(std::ranges::count(picture.Cells().RowInUse, 1), 0);
}

TEST(MergedPicture, MissingAreasShowNothing) {
  MergedPicture picture;
  picture.Compose(MergedInput{});
  EXPECT_EQ(std::ranges::count(picture.Cells().RowInUse, 1), 0);
}

TEST(MergedPicture, FrameOfNoHeightIsEmpty) {
  MergedPicture picture;
  picture.Compose(Input(Flat(0, 0, 4, 4, 1), Flat(0, 0, 4, 4, 1), 0, Colours, -1));
  EXPECT_EQ(picture.Cells().Height, 0);
  EXPECT_TRUE(picture.Cells().Cells.empty());
}

struct PlaceCase {
  int X;
  int Y;
  int Width;
  int Height;
  int YOffset;
};

void DrawPicture(std::span<const std::uint8_t> unit, const SpuControl& control, const CodeColours& colours,
                 cGraphics& graphics) {
  cBitmap bitmap;
  DecodePicture(unit, control, colours, bitmap);
  graphics.DrawImage(bitmap, control.X1, control.Y1);
}

/// Both pictures drawn as pictures onto a clear frame.
QImage Drawn(const MergedInput& input) {
  QImage frame(720, input.FrameHeight, QImage::Format_ARGB32);
  frame.fill(0U);
  cGraphics graphics(frame);
  DrawPicture(input.PrimaryUnit, input.Primary, input.Colours, graphics);
  graphics.TranslateTransform(0, input.YOffset);
  DrawPicture(input.SecondaryUnit, input.Secondary, input.Colours, graphics);
  return frame;
}

TEST(MergedPicture, IsWhatDrawingTheTwoPicturesMakes) {
  std::mt19937 random(31);
  const std::vector<PlaceCase> places = {
      {0, 0, 720, 576, 0},     {100, 400, 333, 101, -400}, {100, 400, 333, 101, -450},
      {700, 560, 100, 100, 0}, {10, 10, 50, 50, 32767},    {10, 10, 50, 50, -32768},
      {719, 575, 1, 2, 0},     {720, 0, 10, 10, 0},        {0, 576, 10, 10, -10},
      {300, 480, 40, 3, -400}, {300, 480, 1, 1, -400},     {0, 4090, 4096, 6, -3800},
      {4000, 0, 96, 4096, 0},  {0, 0, 4096, 2, 5},         {0, 0, 3, 4096, -3900},
      {50, 400, 600, 80, 10},  {0, 100, 720, 100, -101},   {0, 100, 720, 100, -199},
      {0, 100, 720, 100, -200}};
  const CodeColours opacities = {0x11102030, 0x88FFFFFF, 0xFF00FF00, 0x00123456};
  for (const int frameHeight : {480, 576}) {
    for (const PlaceCase& place : places) {
      const Picture primary = Noise(random, 60, 390, 600, 91);
      const Picture secondary = Noise(random, place.X, place.Y, place.Width, place.Height);
      const MergedInput over = Input(primary, secondary, place.YOffset, opacities, frameHeight);
      EXPECT_TRUE(Composed(over) == Drawn(over)) << place.X << "," << place.Y << " " << place.YOffset;
      const MergedInput below = Input(secondary, primary, place.YOffset, opacities, frameHeight);
      EXPECT_TRUE(Composed(below) == Drawn(below)) << place.X << "," << place.Y << " " << place.YOffset;
    }
  }
}

TEST(MergedPicture, KeepsNothingOfTheLastSubtitle) {
  std::mt19937 random(47);
  std::uniform_int_distribution<int> place(0, 900);
  std::uniform_int_distribution<int> extent(1, 300);
  std::uniform_int_distribution<std::uint32_t> colour;
  MergedPicture reused;
  for (int round = 0; round < 60; ++round) {
    const Picture primary = Noise(random, place(random), place(random), extent(random), extent(random));
    const Picture secondary = Noise(random, place(random), place(random), extent(random), extent(random));
    const CodeColours colours =
        round % 3 == 0 ? Colours
                       : CodeColours{colour(random), colour(random), colour(random), colour(random)};
    const MergedInput input =
        Input(primary, secondary, place(random) - 450, colours, round % 4 == 0 ? 480 : 576);
    reused.Compose(input);
    cBitmap bitmap;
    reused.CopyTo(bitmap);
    ASSERT_TRUE(bitmap.Image() == Composed(input)) << "round " << round;
  }
}

TEST(MergedPicture, EncodedFramesLoadAndDecodeToTheirCodes) {
  std::mt19937 random(5);
  MergedPicture picture;
  MergedPacketEncoder encoder;
  const MergedControl control = {.Delay = 90, .ColourBytes = {0x32, 0x10}, .ContrastBytes = {0xFF, 0xF0}};
  for (const int frameHeight : {480, 576}) {
    const Picture primary = Noise(random, 30, 370, 660, 110);
    const Picture secondary = Noise(random, 70, 420, 500, 90);
    for (const int offset : {-400, 0, 60}) {
      picture.Compose(Input(primary, secondary, offset, Colours, frameHeight));
      const FrameCells frame = picture.Cells();
      const auto packet = encoder.Encode(frame, control, TimeField{90});
      ASSERT_TRUE(packet);

      const SupStream stream = test::StreamOf(IndexPrimaryStream({packet->begin(), packet->end()}));
      ASSERT_EQ(stream.Count, 1);
      EXPECT_EQ(stream.Stats.ParseErrors, 0);
      EXPECT_EQ(stream.StartTime[0], 90);
      EXPECT_EQ(stream.EndTime[0], 90090);

      Bytes unit;
      CopyUnit(stream, 0, unit);
      const SpuControl read = DecodeControl(unit, stream.ControlOffset[0]);
      ASSERT_EQ(read.Width(), 720);
      ASSERT_EQ(read.Y1, 2);
      ASSERT_EQ(read.Height(), frameHeight - 3);
      Bytes codes(720 * static_cast<std::size_t>(read.Height()), 9);
      DecodeFields<std::uint8_t>(unit, codes, 720, read.Height(), read.TopFieldOffset, read.BottomFieldOffset,
                                 {0, 1, 2, 3});
      // The height is odd, so the decoder leaves the last line alone.
      for (std::size_t i = 0; i < codes.size() - 720; ++i) {
        ASSERT_EQ(codes[i], frame.Codes[frame.Cells[i + 1440]]) << i;
      }
    }
  }
}

TEST(CodeOfColour, FirstEqualEntryWins) {
  EXPECT_EQ(CodeOfColour(5, {4, 5, 5, 6}), 1);
}

TEST(CodeOfColour, EqualEntryWinsOverAnEarlierNearOne) {
  EXPECT_EQ(CodeOfColour(0xFF808080, {0xFF808081, 0xFF000000, 0xFF808080, 0}), 2);
}

TEST(CodeOfColour, WithoutAnEqualOneTheFirstNearOneIsTaken) {
  EXPECT_EQ(CodeOfColour(0xFF808080, {0, 0xFF000000, 0xFE817F80, 0xFF808081}), 2);
}

TEST(CodeOfColour, EveryCodeMayBeNear) {
  const CodeColours colours = {0xFF202020, 0xFF404040, 0xFF606060, 0xFF808080};
  EXPECT_EQ(CodeOfColour(0xFF202021, colours), 0);
  EXPECT_EQ(CodeOfColour(0xFF404041, colours), 1);
  EXPECT_EQ(CodeOfColour(0xFF606061, colours), 2);
  EXPECT_EQ(CodeOfColour(0xFF808081, colours), 3);
}

TEST(CodeOfColour, FarFromAllIsCode0) {
  EXPECT_EQ(CodeOfColour(0xFF808082, {0xFFFFFFFF, 0xFF808080, 0xFF000000, 0}), 0);
}

}  // namespace
}  // namespace quillmark
