#include "render/Thumbnail.h"

#include <algorithm>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/LoadedStream.h"

namespace quillmark::test {
namespace {

constexpr QRgb White = 0xFFFFFFFF;
constexpr QRgb Black = 0xFF000000;
constexpr QRgb Red = 0xFFFF0000;
constexpr QRgb Green = 0xFF00FF00;
constexpr QRgb Blue = 0xFF0000FF;
constexpr QRgb Clear = 0x00FFFFFF;

constexpr ThumbnailRoom Wide = {.Pixels = {200, 22}, .Scale = 1};

/// A subtitle whose lines are each of one code.
Bytes OneCodeALine(const std::vector<std::uint8_t>& codes, unsigned x, unsigned y, unsigned width) {
  Bytes fields[2];
  for (std::size_t line = 0; line < codes.size(); ++line) {
    // "This code up to the end of the line."
    fields[line % 2].insert(fields[line % 2].end(), {0x00, codes[line]});
  }
  const auto bottom = static_cast<unsigned>(4 + fields[0].size());
  const auto control = static_cast<unsigned>(bottom + fields[1].size());
  const auto lines = static_cast<unsigned>(codes.size());
  return PacketBuilder()
      .ControlOffset(control)
      .Unit(Join(
          {fields[0], fields[1],
           Sequence(0, control,
                    {StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 15),
                     SetArea(x, x + width - 1, y, y + lines - 1), SetFields(4, bottom), EndOfSequence})}))
      .Build();
}

/// Lines of 8 pixels, two of each code.
Bytes TwoOfEach() {
  Bytes packet = PacketBuilder().Area(100, 107, 400, 401).Build();
  std::ranges::copy(Bytes{0x89, 0xAB, 0x89, 0xAB}, packet.begin() + 14);
  return packet;
}

QImage Thumbnail(const Bytes& packet, const CodeColours& colours, const ThumbnailRoom& room = Wide) {
  const SupStream stream = Index(packet);
  std::vector<std::uint8_t> buffer;
  const SubtitleUnit unit = UnitOf(stream, 0, buffer);
  return ThumbnailPainter().Paint(unit.Bytes, DecodeControl(unit.Bytes, unit.ControlOffset), colours, room);
}

std::vector<QRgb> FirstColumn(const QImage& picture) {
  std::vector<QRgb> pixels;
  for (int y = 0; y < picture.height(); ++y) {
    pixels.push_back(picture.pixel(0, y));
  }
  return pixels;
}

std::vector<QRgb> FirstLine(const QImage& picture) {
  std::vector<QRgb> pixels;
  for (int x = 0; x < picture.width(); ++x) {
    pixels.push_back(picture.pixel(x, 0));
  }
  return pixels;
}

using Pixels = std::vector<QRgb>;

TEST(Thumbnail, EmptyColumnsAroundAreCutAway) {
  const QImage picture = Thumbnail(TwoOfEach(), {Clear, Red, Green, Clear});
  EXPECT_EQ(picture.size(), QSize(4, 2));
  EXPECT_EQ(FirstLine(picture), (Pixels{Red, Red, Green, Green}));
}

TEST(Thumbnail, WhatIsClearInsideIsTheGround) {
  EXPECT_EQ(FirstLine(Thumbnail(TwoOfEach(), {White, Clear, Clear, White})),
            (Pixels{White, White, DarkGround, DarkGround, DarkGround, DarkGround, White, White}));
}

TEST(Thumbnail, GroundIsTheOneThatTheColoursDifferMoreFrom) {
  EXPECT_EQ(Thumbnail(TwoOfEach(), {White, Clear, Clear, White}).pixel(2, 0), DarkGround);
  EXPECT_EQ(Thumbnail(TwoOfEach(), {Black, Clear, Clear, Blue}).pixel(2, 0), LightGround);
}

TEST(Thumbnail, GroundsAreADarkAndALightGrey) {
  EXPECT_EQ(Thumbnail(TwoOfEach(), {White, Clear, Clear, White}).pixel(2, 0), qRgb(32, 32, 32));
  EXPECT_EQ(Thumbnail(TwoOfEach(), {Black, Clear, Clear, Blue}).pixel(2, 0), qRgb(236, 236, 236));
}

TEST(Thumbnail, DarkColoursOfEachHueStandOnTheLightGround) {
  for (const QRgb dark : {qRgb(160, 0, 0), qRgb(0, 150, 0), qRgb(0, 0, 255)}) {
    EXPECT_EQ(Thumbnail(TwoOfEach(), {dark, Clear, Clear, dark}).pixel(2, 0), LightGround) << dark;
  }
}

TEST(Thumbnail, TheOnlyColourCounts) {
  const Bytes packet = OneCodeALine({1, 0, 0, 1}, 100, 400, 4);
  EXPECT_EQ(FirstColumn(Thumbnail(packet, {Clear, Black, Clear, Clear})),
            (Pixels{Black, LightGround, LightGround, Black}));
  EXPECT_EQ(FirstColumn(Thumbnail(packet, {Clear, White, Clear, Clear})),
            (Pixels{White, DarkGround, DarkGround, White}));
}

TEST(Thumbnail, EachColourCountsAsOftenAsItIsSeen) {
  // Two of code 3, three of 1, one of 2, two of 3; below it seven of code 3 and a clear pixel.
  Bytes packet = PacketBuilder().Area(100, 107, 400, 401).Build();
  std::ranges::copy(Bytes{0xBD, 0x6B, 0x1F, 0x40}, packet.begin() + 14);
  EXPECT_EQ(Thumbnail(packet, {Clear, White, Black, Red}).pixel(7, 1), DarkGround);
  EXPECT_EQ(Thumbnail(packet, {Clear, Black, White, Red}).pixel(7, 1), LightGround);
}

TEST(Thumbnail, OutlineMayVanishInTheGround) {
  // Three of code 1, one of 2, one of 2, three of 1; below it seven of code 1 and a clear pixel.
  Bytes packet = PacketBuilder().Area(100, 107, 400, 401).Build();
  std::ranges::copy(Bytes{0xD6, 0x6D, 0x1D, 0x40}, packet.begin() + 14);
  EXPECT_EQ(Thumbnail(packet, {Clear, Black, White, Clear}).pixel(7, 1), DarkGround);
  EXPECT_EQ(Thumbnail(packet, {Clear, White, Black, Clear}).pixel(7, 1), LightGround);
}

TEST(Thumbnail, TextMayBeOfTheFirstCode) {
  // Three of code 1, one of 0, one of 0, three of 1; below it seven of code 1 and a clear pixel.
  Bytes packet = PacketBuilder().Area(100, 107, 400, 401).Build();
  std::ranges::copy(Bytes{0xD4, 0x4D, 0x1D, 0x60}, packet.begin() + 14);
  EXPECT_EQ(Thumbnail(packet, {White, Black, Clear, Clear}).pixel(7, 1), DarkGround);
  EXPECT_EQ(Thumbnail(packet, {Black, White, Clear, Clear}).pixel(7, 1), LightGround);
}

/// Two lines of the pixels that these four bytes have, one nibble each.
Bytes TwoLinesOf(const Bytes& line) {
  return PacketBuilder()
      .ControlOffset(12)
      .Unit(Join({line, line,
                  Sequence(0, 12,
                           {StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 15),
                            SetArea(100, 107, 400, 401), SetFields(4, 8), EndOfSequence})}))
      .Build();
}

TEST(Thumbnail, OutlineIsWhatIsBesideClearPixelsOnEitherSide) {
  // 1, 0, 1, 0, 2, 1, 0, 2: five ends of code 1 and three of code 2, the line's among them.
  const Bytes packet = TwoLinesOf({0x54, 0x54, 0x65, 0x46});
  EXPECT_EQ(Thumbnail(packet, {Clear, Black, White, Clear}).pixel(1, 0), DarkGround);
  EXPECT_EQ(Thumbnail(packet, {Clear, White, Black, Clear}).pixel(1, 0), LightGround);
}

TEST(Thumbnail, OfTwoThatAreAsOftenBesideClearPixelsTheFirstIsTheOutline) {
  // Two of code 2, four of 0, two of 1: two ends of each, those at the line's own ends among them.
  const Bytes packet = TwoLinesOf({0x66, 0x44, 0x44, 0x55});
  EXPECT_EQ(Thumbnail(packet, {Clear, Black, White, Clear}).pixel(3, 0), DarkGround);
  EXPECT_EQ(Thumbnail(packet, {Clear, White, Black, Clear}).pixel(3, 0), LightGround);
}

TEST(Thumbnail, ColourThatIsNowhereBesideClearPixelsIsNoOutline) {
  // 1, four of 2, 1, 0, 1.
  const Bytes packet = TwoLinesOf({0x56, 0x66, 0x65, 0x45});
  EXPECT_EQ(Thumbnail(packet, {Clear, Black, White, Clear}).pixel(6, 0), DarkGround);
  EXPECT_EQ(Thumbnail(packet, {Clear, White, Black, Clear}).pixel(6, 0), LightGround);
}

TEST(Thumbnail, OutlineCountsNothingWhereThereIsAnotherColour) {
  // Of the same pixels; the grey is as far from the dark ground as from the light one.
  constexpr QRgb Grey = 0xFF868686;
  const Bytes packet = TwoLinesOf({0x54, 0x54, 0x65, 0x46});
  EXPECT_EQ(Thumbnail(packet, {Clear, Black, Grey, Clear}).pixel(1, 0), DarkGround);
}

TEST(Thumbnail, GroundIsChosenByLinesFromAllOver) {
  // Of 48 lines every third one is looked at: one of code 1, ten of code 2, which are the outline, and five
  // of code 3. The last but one is clear.
  std::vector<std::uint8_t> codes(48, 2);
  codes[0] = 1;
  std::fill(codes.begin() + 33, codes.end(), 3);
  codes[46] = 0;
  const QImage picture = Thumbnail(OneCodeALine(codes, 100, 400, 4), {Clear, White, Red, Black},
                                   {.Pixels = {200, 48}, .Scale = 1});
  ASSERT_EQ(picture.size(), QSize(4, 48));
  EXPECT_EQ(picture.pixel(0, 46), LightGround);
}

TEST(Thumbnail, TranslucentColoursAreSeenOverTheGround) {
  // 128/255 of white over 32: (255 * 128 + 32 * 127) / 255 = 143.9
  EXPECT_EQ(FirstLine(Thumbnail(TwoOfEach(), {White, 0x80FFFFFF, White, White}))[2], qRgb(144, 144, 144));
}

TEST(Thumbnail, ShrunkPixelsAreTheMeanOfTheirArea) {
  EXPECT_EQ(FirstLine(Thumbnail(TwoOfEach(), {Clear, Red, Green, Blue}, {.Pixels = {3, 22}, .Scale = 1})),
            (Pixels{Red, Green, Blue}));
  const QImage mixed = Thumbnail(OneCodeALine({1, 2}, 100, 400, 4), {Clear, White, Black, Clear},
                                 {.Pixels = {200, 1}, .Scale = 1});
  ASSERT_EQ(mixed.size(), QSize(2, 1));
  EXPECT_NEAR(qRed(mixed.pixel(0, 0)), 127.5, 1);
}

TEST(Thumbnail, ProportionsStay) {
  const Bytes packet = OneCodeALine(std::vector<std::uint8_t>(80, 1), 60, 400, 600);
  EXPECT_EQ(Thumbnail(packet, {Clear, White, White, White}, {.Pixels = {120, 22}, .Scale = 1}).size(),
            QSize(120, 16));
  EXPECT_EQ(Thumbnail(packet, {Clear, White, White, White}, {.Pixels = {300, 22}, .Scale = 1}).size(),
            QSize(165, 22));
}

TEST(Thumbnail, SmallPicturesHaveWholePixelsOfTheScreen) {
  const QImage picture =
      Thumbnail(TwoOfEach(), {Clear, Red, Green, Clear}, {.Pixels = {400, 44}, .Scale = 2});
  EXPECT_EQ(picture.size(), QSize(8, 4));
  EXPECT_EQ(picture.devicePixelRatio(), 2);
  EXPECT_EQ(FirstLine(picture), (Pixels{Red, Red, Red, Red, Green, Green, Green, Green}));
  EXPECT_EQ(Thumbnail(TwoOfEach(), {Clear, Red, Green, Clear}, {.Pixels = {250, 27}, .Scale = 1.25}).size(),
            QSize(4, 2));
}

TEST(Thumbnail, FewOfTheEmptyLinesBetweenStay) {
  std::vector<std::uint8_t> codes(40, 0);
  codes[3] = 1;
  codes[6] = 1;
  codes[30] = 2;
  EXPECT_EQ(
      FirstColumn(Thumbnail(OneCodeALine(codes, 100, 400, 4), {Clear, White, White, Clear})),
      (Pixels{White, DarkGround, DarkGround, White, DarkGround, DarkGround, DarkGround, DarkGround, White}));
}

TEST(Thumbnail, LinesOfOneLastPixelStay) {
  // Eight lines of four pixels: the first and the last are of code 1, the others of three clear pixels and
  // one of code 1.
  const Bytes last = {0xC5};
  const Bytes whole = {0x00, 0x01};
  const Bytes packet =
      PacketBuilder()
          .ControlOffset(14)
          .Unit(Join({whole, last, last, last, last, last, last, whole,
                      Sequence(0, 14,
                               {StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 15),
                                SetArea(100, 103, 400, 407), SetFields(4, 9), EndOfSequence})}))
          .Build();
  EXPECT_EQ(Thumbnail(packet, {Clear, White, Clear, Clear}).size(), QSize(4, 8));
}

TEST(Thumbnail, WhatLiesOutsideTheFrameIsNotSeen) {
  const CodeColours colours = {Clear, White, White, White};
  EXPECT_EQ(Thumbnail(OneCodeALine({1, 1}, 700, 400, 40), colours).size(), QSize(20, 2));
  EXPECT_EQ(Thumbnail(OneCodeALine({1, 1, 1, 1, 1, 1}, 100, 573, 4), colours).size(), QSize(4, 3));
  EXPECT_TRUE(Thumbnail(OneCodeALine({1, 1}, 100, 576, 4), colours).isNull());
  EXPECT_TRUE(Thumbnail(OneCodeALine({1, 1}, 720, 400, 4), colours).isNull());
}

/// Kept oddity: it is not decoded.
TEST(Thumbnail, LastLineOfAnOddHeightIsEmpty) {
  const QImage picture = Thumbnail(OneCodeALine({1, 2, 1}, 100, 400, 4), {Red, Green, Blue, Clear});
  EXPECT_EQ(FirstColumn(picture), (Pixels{Green, Blue}));
}

TEST(Thumbnail, OneColumnIsEnough) {
  EXPECT_EQ(FirstLine(Thumbnail(OneCodeALine({1, 1}, 100, 400, 1), {Clear, Red, Clear, Clear})),
            (Pixels{Red}));
}

TEST(Thumbnail, NothingToSeeIsNoPicture) {
  EXPECT_TRUE(Thumbnail(TwoOfEach(), {Clear, Clear, Clear, Clear}).isNull());
  EXPECT_TRUE(
      Thumbnail(PacketBuilder().Area(103, 100, 400, 401).Build(), {White, White, White, White}).isNull());
  EXPECT_TRUE(Thumbnail(TwoOfEach(), {White, White, White, White}, {}).isNull());
}

TEST(Thumbnail, PicturesDrawnBeforeStayAsTheyAre) {
  const SupStream stream =
      Index(Join({OneCodeALine({1, 1}, 100, 400, 4), OneCodeALine({2, 2}, 100, 400, 4)}));
  std::vector<std::uint8_t> buffer;
  ThumbnailPainter painter;
  const auto paint = [&](std::size_t index) {
    const SubtitleUnit unit = UnitOf(stream, index, buffer);
    return painter.Paint(unit.Bytes, DecodeControl(unit.Bytes, unit.ControlOffset),
                         {Clear, Red, Green, Clear}, Wide);
  };
  const QImage first = paint(0);
  EXPECT_EQ(paint(1).pixel(0, 0), Green);
  EXPECT_EQ(first.pixel(0, 0), Red);
}

TEST(Thumbnail, MergedPicturesAreDrawnTogether) {
  const SupStream primary = Index(OneCodeALine({1, 1}, 100, 500, 4));
  const SupStream secondary = Index(OneCodeALine({0, 2, 0, 0}, 102, 450, 4));
  std::vector<std::uint8_t> buffers[2];
  const SubtitleUnit below = UnitOf(primary, 0, buffers[0]);
  const SubtitleUnit above = UnitOf(secondary, 0, buffers[1]);
  const QImage picture =
      ThumbnailPainter().PaintMerged({.PrimaryUnit = below.Bytes,
                                      .Primary = DecodeControl(below.Bytes, below.ControlOffset),
                                      .SecondaryUnit = above.Bytes,
                                      .Secondary = DecodeControl(above.Bytes, above.ControlOffset),
                                      .YOffset = -400,
                                      .Colours = {Clear, White, White, White},
                                      .FrameHeight = 576},
                                     Wide);
  // The secondary's visible line, some of the empty ones, the primary's two lines.
  EXPECT_EQ(picture.size(), QSize(6, 7));
  EXPECT_EQ(FirstColumn(picture),
            (Pixels{DarkGround, DarkGround, DarkGround, DarkGround, DarkGround, White, White}));
  EXPECT_EQ(picture.pixel(5, 0), White);
  EXPECT_EQ(picture.pixel(5, 5), DarkGround);
}

}  // namespace
}  // namespace quillmark::test
