// Units as a player shows them, beside libavcodec's DVD subtitle decoder, which makes one picture of a unit.

#include <gtest/gtest.h>

#ifdef QUILLMARK_HAS_LIBAVCODEC

#include <algorithm>
#include <filesystem>
#include <string>

#include "render/PlayerPicture.h"
#include "tests/render/LibavcodecDecoder.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PlayedUnit.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;

/// The decoder's end, which it has no one way to lack.
std::optional<std::uint32_t> EndMs(const test::CodePicture& picture) {
  return picture.EndMs == 0 || picture.EndMs == 0xFFFFFFFF ? std::nullopt : std::optional(picture.EndMs);
}

std::optional<std::uint32_t> EndMs(const DisplayTimeline& timeline) {
  return timeline.End ? std::optional(static_cast<std::uint32_t>(*timeline.End / 90)) : std::nullopt;
}

/// The pixel codes that a state shows: its colours made entries 0-3, all opaque, of a palette of these reds.
std::vector<std::uint8_t> CodesShown(std::span<const std::uint8_t> unit, DisplayState state) {
  state.Colours = {0, 1, 2, 3};
  state.Contrasts = {15, 15, 15, 15};
  const DvdPalette reds = {0, 1, 2, 3};
  cBitmap picture;
  PlayerPicture(unit).Draw(state, {}, reds, QSize(4096, 4096), picture);
  std::vector<std::uint8_t> codes;
  for (const std::uint32_t pixel : picture.LockPixels()) {
    codes.push_back(static_cast<std::uint8_t>(pixel >> 16U));
  }
  return codes;
}

class PlayerLibavcodec : public testing::Test {
 protected:
  void SetUp() override {
    if (!Decoder.IsOpen()) {
      GTEST_SKIP() << "libavcodec was built without its DVD subtitle decoder";
    }
  }

  std::optional<test::CodePicture> Decode(const Bytes& unit, std::size_t contrastAt) {
    return Decoder.Decode(unit, contrastAt);
  }

  test::LibavcodecDecoder Decoder;
};

TEST_F(PlayerLibavcodec, StreamsOfOtherEncodersAreTheSamePictures) {
  for (const char* name : {"spumux-pal", "dvdauthor-ntsc", "lavc-pal"}) {
    const SupStream stream = test::StreamOf(LoadPrimaryStream(
        std::filesystem::path(QUILLMARK_TEST_DATA "/streams/" + std::string(name) + ".sup")));
    ASSERT_GT(stream.Count, 0);
    for (std::size_t index = 0; index < stream.PacketOffset.size(); ++index) {
      SCOPED_TRACE(name + std::to_string(index));
      const PlayedUnit unit = PlayedUnitOf(stream, index);
      const auto theirs = Decoder.Decode(
          unit.Bytes,
          static_cast<std::size_t>(stream.ContrastBytesOffset[index] - stream.PacketOffset[index] - 10));
      const DisplayTimeline timeline = ReadDisplay(unit.Bytes, unit.ControlOffset);
      ASSERT_TRUE(theirs && !timeline.States.empty() && timeline.States[0].Area);
      const DisplayState& start = timeline.States[0];
      EXPECT_EQ(start.Time, 0);
      EXPECT_EQ(start.Area->X.First, theirs->X);
      EXPECT_EQ(start.Area->Y.First, theirs->Y);
      ASSERT_EQ(start.Area->Width(), theirs->Width);
      ASSERT_EQ(start.Area->Height(), theirs->Height);
      EXPECT_EQ(start.Shown == DisplayedAs::Forced, theirs->IsForced);
      EXPECT_EQ(EndMs(timeline), EndMs(*theirs));
      // The last line of an odd height is the decoder's alone.
      const auto whole = static_cast<std::size_t>(theirs->Width * (theirs->Height & ~1));
      const auto codes = CodesShown(unit.Bytes, start);
      ASSERT_TRUE(std::equal(codes.begin(), codes.begin() + static_cast<std::ptrdiff_t>(whole),
                             theirs->Codes.begin()));
      EXPECT_TRUE(timeline.Damage.empty());
      EXPECT_FALSE(IsAnimated(unit.Bytes, unit.ControlOffset));
    }
  }
}

/// Two lines of 4 pixels whose control sequences start at unit byte 8; the contrasts stand at 17.
Bytes TwoLines(const Bytes& more, const std::vector<test::TimedCommands>& later) {
  std::vector<test::TimedCommands> sequences = {
      {.Delay = 0,
       .Commands = Join({test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(15, 15, 15, 15),
                         test::SetArea(100, 103, 400, 401), test::SetFields(4, 6), more})}};
  sequences.insert(sequences.end(), later.begin(), later.end());
  return test::Played({0x11, 0x00, 0x12, 0x00}, sequences).WholeUnit();
}
constexpr std::size_t ContrastOfTwoLines = 17;

TEST_F(PlayerLibavcodec, DelayIsUnsigned) {
  const Bytes unit = TwoLines({}, {{.Delay = 0xFFFF, .Commands = test::StopDisplay}});
  const auto theirs = Decode(unit, ContrastOfTwoLines);
  ASSERT_TRUE(theirs);
  EXPECT_EQ(theirs->EndMs, 745642U);
  EXPECT_EQ(ReadDisplay(unit, 8).End, 67107840);
}

/// The decoder knows no change of colours within the picture and ends the sequence there. The format has the
/// stop behind it carried out.
TEST_F(PlayerLibavcodec, LosesTheStopBehindAChangeOfColours) {
  const Bytes change = test::ChangeColours({test::NoMoreGroups});
  const Bytes unit = TwoLines({}, {{.Delay = 90, .Commands = Join({change, test::StopDisplay})}});
  const auto theirs = Decode(unit, ContrastOfTwoLines);
  ASSERT_TRUE(theirs);
  EXPECT_EQ(EndMs(*theirs), std::nullopt);
  EXPECT_EQ(ReadDisplay(unit, 8).End, 90 * 1024);
}

}  // namespace
}  // namespace quillmark

#else

TEST(PlayerLibavcodec, StreamsOfOtherEncodersAreTheSamePictures) {
  GTEST_SKIP() << "libavcodec (libavcodec-dev) was not found when the tests were configured";
}

#endif
