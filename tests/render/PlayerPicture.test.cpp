#include "render/PlayerPicture.h"

#include <vector>

#include <gtest/gtest.h>

#include "tests/support/PlayedUnit.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::ColourChange;
using test::ColourGroup;
using test::Join;
using test::NoMoreGroups;
using test::SetArea;
using test::SetColour;
using test::SetContrast;
using test::SetFields;
using test::StartDisplay;
using test::StopDisplay;

constexpr QSize Frame(720, 576);
constexpr QSize NoPicture(0, 0);

/// Entry n has n as its red.
constexpr DvdPalette Reds = [] {
  DvdPalette palette = {};
  for (unsigned entry = 0; entry < palette.size(); ++entry) {
    palette[entry] = MakeRgb(entry, 0, 0);
  }
  return palette;
}();

constexpr Argb Opaque(unsigned entry) {
  return 0xFF000000U | entry << 16U;
}

/// Lines of 8 pixels, two of each code from 0 to 3: top field at unit byte 4, bottom field at 8.
const Bytes TwoOfEach = {0x89, 0xAB, 0x89, 0xAB, 0x89, 0xAB, 0x89, 0xAB};

/// Four such lines at (100, 400) with entries 0-3, all opaque.
Bytes FourLines() {
  return Join({StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 15), SetArea(100, 107, 400, 403),
               SetFields(4, 8)});
}

/// A unit, and the picture that a player shows of it last.
class LastPicture {
 public:
  explicit LastPicture(const test::PacketBuilder& packet, QSize within = Frame)
      : unit_(packet.WholeUnit()), timeline_(ReadDisplay(unit_, ControlOffset())) {
    Draw(timeline_.States.back(), within);
  }

  void Draw(const DisplayState& state, QSize within = Frame) {
    player_.Draw(state, timeline_.ChangesOf(state), Reds, within, picture_);
  }

  /// What the last state shows of a pixel of the frame.
  [[nodiscard]] std::optional<PlayedPixel> At(int x, int y) {
    const DisplayState& state = timeline_.States.back();
    return player_.At(state, timeline_.ChangesOf(state), {x, y});
  }

  [[nodiscard]] const DisplayTimeline& Timeline() const { return timeline_; }
  [[nodiscard]] QSize Size() const { return picture_.Image().size(); }
  [[nodiscard]] std::vector<Argb> Line(int y) const {
    std::vector<Argb> line;
    for (int x = 0; x < picture_.Width(); ++x) {
      line.push_back(picture_.Image().pixel(x, y));
    }
    return line;
  }

 private:
  [[nodiscard]] std::uint16_t ControlOffset() const {
    return static_cast<std::uint16_t>(unit_[2] << 8U | unit_[3]);
  }

  Bytes unit_;
  DisplayTimeline timeline_;
  PlayerPicture player_{unit_};
  cBitmap picture_;
};

std::vector<Argb> Pixels(std::initializer_list<Argb> pixels) {
  return pixels;
}

const std::vector<Argb> Plain =
    Pixels({Opaque(0), Opaque(0), Opaque(1), Opaque(1), Opaque(2), Opaque(2), Opaque(3), Opaque(3)});

TEST(PlayerPicture, CodesHaveTheStatesColoursAndContrasts) {
  const LastPicture picture(test::Played(
      TwoOfEach, {{.Delay = 0, .Commands = FourLines()},
                  {.Delay = 5, .Commands = Join({SetColour(15, 9, 8, 7), SetContrast(0, 1, 8, 15)})}}));
  ASSERT_EQ(picture.Size(), QSize(8, 4));
  for (int line = 0; line < 4; ++line) {
    EXPECT_EQ(picture.Line(line), Pixels({0xFF070000, 0xFF070000, 0x88080000, 0x88080000, 0x11090000,
                                          0x11090000, 0x000F0000, 0x000F0000}));
  }
}

TEST(PlayerPicture, NothingIsDrawnOfWhatIsNotShown) {
  EXPECT_EQ(LastPicture(test::Played(TwoOfEach, {{.Delay = 0, .Commands = FourLines()},
                                                 {.Delay = 5, .Commands = StopDisplay}}))
                .Size(),
            NoPicture);
}

TEST(PlayerPicture, WhatIsNoLongerShownIsTakenAway) {
  LastPicture picture(test::Played(
      TwoOfEach, {{.Delay = 0, .Commands = FourLines()}, {.Delay = 5, .Commands = StopDisplay}}));
  picture.Draw(picture.Timeline().States[0]);
  ASSERT_EQ(picture.Size(), QSize(8, 4));
  picture.Draw(picture.Timeline().States.back());
  EXPECT_EQ(picture.Size(), NoPicture);
}

TEST(PlayerPicture, ForcedSubtitleIsDrawn) {
  EXPECT_EQ(LastPicture(test::Played(TwoOfEach, {{.Delay = 0, .Commands = FourLines()},
                                                 {.Delay = 5, .Commands = test::ForcedStart}}))
                .Size(),
            QSize(8, 4));
}

TEST(PlayerPicture, WithoutAreaOrFieldsThereIsNoPicture) {
  EXPECT_EQ(
      LastPicture(test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({StartDisplay, SetFields(4, 8)})}}))
          .Size(),
      NoPicture);
  EXPECT_EQ(LastPicture(test::Played(TwoOfEach,
                                     {{.Delay = 0, .Commands = Join({StartDisplay, SetArea(0, 7, 0, 3)})}}))
                .Size(),
            NoPicture);
}

TEST(PlayerPicture, ReversedAreaHasNoPicture) {
  for (const Bytes& area : {SetArea(107, 100, 400, 403), SetArea(100, 107, 403, 400)}) {
    EXPECT_EQ(
        LastPicture(test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({FourLines(), area})}})).Size(),
        NoPicture);
  }
}

TEST(PlayerPicture, LaterAreaAndFieldsAreDecodedAnew) {
  // The second picture is a line of 4 pixels of code 1 at byte 12 and one of code 2 at 13.
  LastPicture picture(
      test::Played(Join({TwoOfEach, {0x11, 0x12}}),
                   {{.Delay = 0, .Commands = FourLines()},
                    {.Delay = 5, .Commands = Join({SetArea(0, 3, 0, 1), SetFields(12, 13)})}}));
  ASSERT_EQ(picture.Size(), QSize(4, 2));
  EXPECT_EQ(picture.Line(0), std::vector<Argb>(4, Opaque(1)));
  EXPECT_EQ(picture.Line(1), std::vector<Argb>(4, Opaque(2)));
  picture.Draw(picture.Timeline().States[0]);
  ASSERT_EQ(picture.Size(), QSize(8, 4));
  EXPECT_EQ(picture.Line(3), Plain);
}

TEST(PlayerPicture, FieldsAloneAreDecodedAnew) {
  // 8 pixels of code 1 at byte 12, of code 2 at 13, twice.
  LastPicture picture(
      test::Played(Join({TwoOfEach, {0x21, 0x21, 0x22, 0x22, 0, 0}}),
                   {{.Delay = 0, .Commands = FourLines()}, {.Delay = 5, .Commands = SetFields(12, 14)}}));
  EXPECT_EQ(picture.Line(0), std::vector<Argb>(8, Opaque(1)));
  EXPECT_EQ(picture.Line(3), std::vector<Argb>(8, Opaque(2)));
}

TEST(PlayerPicture, CellsThatNoRunReachesStayClear) {
  // The fifth line of an odd height is not decoded.
  const LastPicture picture(
      test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({FourLines(), SetArea(100, 107, 400, 404)})}}));
  ASSERT_EQ(picture.Size(), QSize(8, 5));
  EXPECT_EQ(picture.Line(4), std::vector<Argb>(8, 0U));
}

TEST(PlayerPicture, IsCutAtTheFrame) {
  const LastPicture picture(
      test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({FourLines(), SetArea(715, 722, 477, 480)})}}),
      QSize(720, 480));
  ASSERT_EQ(picture.Size(), QSize(5, 3));
  EXPECT_EQ(picture.Line(2), Pixels({Opaque(0), Opaque(0), Opaque(1), Opaque(1), Opaque(2)}));
}

TEST(PlayerPicture, OnePixelOfItInTheFrameIsDrawn) {
  const LastPicture picture(
      test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({FourLines(), SetArea(719, 726, 479, 482)})}}),
      QSize(720, 480));
  ASSERT_EQ(picture.Size(), QSize(1, 1));
  EXPECT_EQ(picture.Line(0), Pixels({Opaque(0)}));
}

TEST(PlayerPicture, OutsideTheFrameThereIsNoPicture) {
  for (const Bytes& area : {SetArea(720, 727, 0, 3), SetArea(0, 7, 480, 483)}) {
    EXPECT_EQ(LastPicture(test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({FourLines(), area})}}),
                          QSize(720, 480))
                  .Size(),
              NoPicture);
  }
}

TEST(PlayerPicture, LargestAreaHasWhatTheFrameShows) {
  const LastPicture picture(
      test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({FourLines(), SetArea(0, 4095, 0, 4095)})}}));
  EXPECT_EQ(picture.Size(), QSize(720, 576));
}

// Changes of colours within the picture.

LastPicture WithChanges(std::initializer_list<Bytes> groups) {
  return LastPicture(
      test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({FourLines(), test::ChangeColours(groups)})}}));
}

TEST(PlayerPictureChanges, ReachFromTheirColumnToTheNextOneAndTheLinesEnd) {
  const LastPicture picture = WithChanges(
      {ColourGroup(401, 402, 2, {ColourChange(101, 0x7654, 0xFFFF), ColourChange(105, 0xBA98, 0x0F8F)})});
  EXPECT_EQ(picture.Line(0), Plain);
  const auto changed =
      Pixels({Opaque(0), Opaque(4), Opaque(5), Opaque(5), Opaque(6), 0xFF0A0000, 0x000B0000, 0x000B0000});
  EXPECT_EQ(picture.Line(1), changed);
  EXPECT_EQ(picture.Line(2), changed);
  EXPECT_EQ(picture.Line(3), Plain);
}

TEST(PlayerPictureChanges, PixelHasTheCodesOfItsPlace) {
  LastPicture picture = WithChanges(
      {ColourGroup(401, 402, 2, {ColourChange(101, 0x7654, 0xFFFF), ColourChange(105, 0xBA98, 0x0F8F)})});
  EXPECT_EQ(picture.At(102, 400), (PlayedPixel{.Code = 1, .Colour = 1, .Contrast = 15}));
  EXPECT_EQ(picture.At(100, 401), (PlayedPixel{.Code = 0, .Colour = 0, .Contrast = 15}));
  EXPECT_EQ(picture.At(102, 401), (PlayedPixel{.Code = 1, .Colour = 5, .Contrast = 15}));
  EXPECT_EQ(picture.At(105, 402), (PlayedPixel{.Code = 2, .Colour = 10, .Contrast = 15}));
  EXPECT_EQ(picture.At(106, 402), (PlayedPixel{.Code = 3, .Colour = 11, .Contrast = 0}));
  EXPECT_EQ(picture.At(106, 403), (PlayedPixel{.Code = 3, .Colour = 3, .Contrast = 15}));
  EXPECT_EQ(picture.At(99, 401), std::nullopt);
  EXPECT_EQ(picture.At(108, 401), std::nullopt);
  EXPECT_EQ(picture.At(100, 399), std::nullopt);
  EXPECT_EQ(picture.At(100, 404), std::nullopt);
}

TEST(PlayerPicture, PixelThatNoRunReachesIsNone) {
  // The last line of an odd height is not decoded.
  LastPicture picture(
      test::Played(TwoOfEach, {{.Delay = 0, .Commands = Join({FourLines(), SetArea(100, 107, 400, 402)})}}));
  EXPECT_TRUE(picture.At(100, 401));
  EXPECT_EQ(picture.At(100, 402), std::nullopt);
}

TEST(PlayerPicture, NoPixelIsThereOfWhatIsNotShown) {
  LastPicture stopped(test::Played(
      TwoOfEach, {{.Delay = 0, .Commands = FourLines()}, {.Delay = 5, .Commands = StopDisplay}}));
  EXPECT_EQ(stopped.At(100, 400), std::nullopt);
}

TEST(PlayerPictureChanges, LeftOfTheAreaTheLastOneCounts) {
  const LastPicture picture =
      WithChanges({ColourGroup(400, 403, 3,
                               {ColourChange(0, 0x7777, 0xFFFF), ColourChange(50, 0x8888, 0xFFFF),
                                ColourChange(106, 0x9999, 0xFFFF)})});
  EXPECT_EQ(picture.Line(0),
            Pixels({Opaque(8), Opaque(8), Opaque(8), Opaque(8), Opaque(8), Opaque(8), Opaque(9), Opaque(9)}));
}

TEST(PlayerPictureChanges, OutsideTheAreaChangeNothing) {
  const LastPicture picture = WithChanges({ColourGroup(0, 399, 1, {ColourChange(0, 0x7777, 0xFFFF)}),
                                           ColourGroup(400, 401, 1, {ColourChange(108, 0x7777, 0xFFFF)}),
                                           ColourGroup(404, 0xFFF, 1, {ColourChange(0, 0x7777, 0xFFFF)})});
  for (int line = 0; line < 4; ++line) {
    EXPECT_EQ(picture.Line(line), Plain) << line;
  }
}

TEST(PlayerPictureChanges, EachGroupHasItsOwnLines) {
  const LastPicture picture =
      WithChanges({ColourGroup(300, 400, 1, {ColourChange(0, 0x5555, 0xFFFF)}),
                   ColourGroup(401, 401, 1, {ColourChange(0, 0x6666, 0xFFFF)}),
                   ColourGroup(403, 500, 1, {ColourChange(0, 0x7777, 0xFFFF)}), NoMoreGroups});
  EXPECT_EQ(picture.Line(0), std::vector<Argb>(8, Opaque(5)));
  EXPECT_EQ(picture.Line(1), std::vector<Argb>(8, Opaque(6)));
  EXPECT_EQ(picture.Line(2), Plain);
  EXPECT_EQ(picture.Line(3), std::vector<Argb>(8, Opaque(7)));
}

TEST(PlayerPictureChanges, FollowTheFrameAndNotTheArea) {
  LastPicture picture(test::Played(
      TwoOfEach, {{.Delay = 0,
                   .Commands = Join({FourLines(), test::ChangeColours({ColourGroup(
                                                      402, 403, 1, {ColourChange(104, 0x7777, 0xFFFF)})})})},
                  {.Delay = 5, .Commands = SetArea(102, 109, 402, 405)}}));
  EXPECT_EQ(picture.Line(0),
            Pixels({Opaque(0), Opaque(0), Opaque(7), Opaque(7), Opaque(7), Opaque(7), Opaque(7), Opaque(7)}));
  EXPECT_EQ(picture.Line(2), Plain);
}

TEST(PlayerPicture, DrawnTwiceItIsTheSame) {
  LastPicture picture(test::Played(TwoOfEach, {{.Delay = 0, .Commands = FourLines()}}));
  picture.Draw(picture.Timeline().States.back());
  ASSERT_EQ(picture.Size(), QSize(8, 4));
  EXPECT_EQ(picture.Line(3), Plain);
}

TEST(PlayerPicture, PixelBelowWhatWasDrawnIsFoundToo) {
  LastPicture picture(test::Played(TwoOfEach, {{.Delay = 0, .Commands = FourLines()}}), QSize(720, 401));
  ASSERT_EQ(picture.Size(), QSize(8, 1));
  const auto pixel = picture.At(102, 403);
  ASSERT_TRUE(pixel.has_value());
  EXPECT_EQ(pixel->Code, 1U);
}

TEST(PlayerPicture, PixelOfANarrowerAreaIsNotThatOfTheOneDrawnBefore) {
  LastPicture picture(test::Played(TwoOfEach, {{.Delay = 0, .Commands = FourLines()},
                                               {.Delay = 5, .Commands = SetArea(100, 103, 400, 403)}}));
  picture.Draw(picture.Timeline().States[0]);
  ASSERT_EQ(picture.Size(), QSize(8, 4));
  // Two of code 0 and two of code 1 in both lines; the third line begins with code 2.
  const auto second = picture.At(100, 401);
  ASSERT_TRUE(second.has_value());
  EXPECT_EQ(second->Code, 0U);
  const auto third = picture.At(100, 402);
  ASSERT_TRUE(third.has_value());
  EXPECT_EQ(third->Code, 2U);
}

TEST(PlayerPicture, PixelIsFoundWhereNothingWasDrawn) {
  const Bytes unit = test::Played(TwoOfEach, {{.Delay = 0, .Commands = FourLines()}}).WholeUnit();
  const DisplayTimeline timeline = ReadDisplay(unit, static_cast<std::uint16_t>(unit[2] << 8U | unit[3]));
  DisplayState state = timeline.States.back();
  PlayerPicture player(unit);
  const auto pixel = player.At(state, {}, {106, 400});
  ASSERT_TRUE(pixel.has_value());
  EXPECT_EQ(pixel->Code, 3U);
  DisplayState without = state;
  without.Fields.reset();
  EXPECT_FALSE(player.At(without, {}, {106, 400}).has_value());
  without = state;
  without.Area.reset();
  EXPECT_FALSE(player.At(without, {}, {106, 400}).has_value());
}

}  // namespace
}  // namespace quillmark
