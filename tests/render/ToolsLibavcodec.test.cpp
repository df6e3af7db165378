// What the tools make of streams of several makes, read by libavcodec's DVD subtitle decoder.

#include <gtest/gtest.h>

#ifdef QUILLMARK_HAS_LIBAVCODEC

#include <filesystem>

#include "sup/ControlSequences.h"
#include "sup/DisplayEnds.h"
#include "sup/ForceDisplay.h"
#include "sup/MoveArea.h"
#include "sup/Retime.h"
#include "tests/render/LibavcodecDecoder.h"
#include "tests/support/LoadedStream.h"

namespace quillmark {
namespace {

class ToolsLibavcodec : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    if (!decoder_.IsOpen()) {
      GTEST_SKIP() << "libavcodec was built without its DVD subtitle decoder";
    }
    const std::filesystem::path file = GetParam();
    before_ = test::StreamOf(LoadPrimaryStream(file));
    ASSERT_GT(before_.Count, 0);
  }

  std::optional<test::CodePicture> Picture(const SupStream& stream, std::size_t index) {
    return decoder_.Decode(
        std::span(stream.RawBytes)
            .subspan(static_cast<std::size_t>(stream.PacketOffset[index]) + 10,
                     static_cast<std::size_t>(stream.SpuSize[index])),
        static_cast<std::size_t>(stream.ContrastBytesOffset[index] - stream.PacketOffset[index] - 10));
  }

  /// Applies what the tool found; each subtitle is handed over as it was and as it is now.
  template <typename Compare>
  void Edit(ToolResult result, const Compare& compare) {
    SupStream after = before_;
    ASSERT_TRUE(ApplyEdit(after, result.Edit));
    ASSERT_EQ(after.Count, before_.Count);
    int compared = 0;
    for (std::size_t index = 0; index < before_.PacketOffset.size(); ++index) {
      const auto old = Picture(before_, index);
      const auto fresh = Picture(after, index);
      ASSERT_TRUE(old && fresh) << index;
      ASSERT_EQ(fresh->Width, old->Width);
      ASSERT_EQ(fresh->Height, old->Height);
      ASSERT_TRUE(fresh->Codes == old->Codes) << index;
      if (result.Changed.Contains(static_cast<std::int64_t>(index) + 1)) {
        compare(*old, *fresh, after, index);
        ++compared;
      }
    }
    EXPECT_GT(compared, 0);
  }

  test::LibavcodecDecoder decoder_;
  SupStream before_;
};

TEST_P(ToolsLibavcodec, MovedUnitIsTheSamePictureAtTheNewPlace) {
  Edit(MoveArea(before_, SubtitleSet::All(), {.X = 2, .Y = -30}),
       [](const auto& old, const auto& fresh, const SupStream& /*after*/, std::size_t index) {
         EXPECT_EQ(fresh.X, old.X + 2) << index;
         EXPECT_EQ(fresh.Y, old.Y - 30) << index;
       });
}

TEST_P(ToolsLibavcodec, ForcedUnitIsForced) {
  Edit(ForceDisplay(before_, SubtitleSet::All(), DisplayStart::Forced),
       [](const auto& old, const auto& fresh, const SupStream& /*after*/, std::size_t index) {
         EXPECT_FALSE(old.IsForced) << index;
         EXPECT_TRUE(fresh.IsForced) << index;
         EXPECT_EQ(fresh.EndMs, old.EndMs);
       });
}

/// The decoder counts 1024 ticks in a delay unit, 90 in a millisecond.
TEST_P(ToolsLibavcodec, EndIsThatOfTheNewDelay) {
  Edit(SetDisplayEnds(before_, SubtitleSet::All(), {.Fill = true, .Longest = 400000, .Shortest = 360000}),
       [](const auto& /*old*/, const auto& fresh, const SupStream& after, std::size_t index) {
         const auto delay =
             static_cast<std::uint32_t>((after.EndTime[index] - after.StartTime[index]) / 1000);
         EXPECT_GE(delay, 360U);
         EXPECT_EQ(fresh.EndMs, delay * 1024 / 90) << index;
       });
}

TEST_P(ToolsLibavcodec, ScaledDelayEndsThatMuchLater) {
  const Result<ToolResult> result = Retime(before_, SubtitleSet::All(), {.Scale = {2, 1}});
  ASSERT_TRUE(result);
  Edit(*result, [this](const auto& old, const auto& fresh, const SupStream& after, std::size_t index) {
    EXPECT_EQ(after.StartTime[index], 2 * before_.StartTime[index]);
    if (old.EndMs != 0xFFFFFFFF) {
      EXPECT_NEAR(fresh.EndMs, 2.0 * old.EndMs, 1) << index;
    }
  });
}

INSTANTIATE_TEST_SUITE_P(Streams, ToolsLibavcodec,
                         testing::Values(QUILLMARK_TEST_DATA "/streams/spumux-pal.sup",
                                         QUILLMARK_TEST_DATA "/streams/dvdauthor-ntsc.sup",
                                         QUILLMARK_TEST_DATA "/streams/lavc-pal.sup",
                                         QUILLMARK_TEST_DATA "/streams/merge-primary.sup",
                                         QUILLMARK_SAMPLES "/demo.sup"),
                         [](const auto& test) {
                           std::string name = std::filesystem::path(test.param).stem().string();
                           std::erase(name, '-');
                           return name;
                         });

/// A unit that had no stop command has an end for the decoder too.
TEST_P(ToolsLibavcodec, AddedStopIsRead) {
  SupStream stream = before_;
  // The stop becomes a start, and the one sequence that has it stays.
  std::size_t stops = 0;
  for (std::size_t index = 0; index < stream.PacketOffset.size(); ++index) {
    const auto unit = std::span(stream.RawBytes)
                          .subspan(static_cast<std::size_t>(stream.PacketOffset[index]) + 10,
                                   static_cast<std::size_t>(stream.SpuSize[index]));
    struct Stop {
      std::size_t Position = 0;
      void Begin(const ControlSequence& /*sequence*/) {}
      void Take(const ControlCommand& command) {
        Position =
            command.Code == SpuCommand::StopDisplay ? static_cast<std::size_t>(command.Position) : Position;
      }
    } stop;
    (void)WalkControl(unit, static_cast<std::uint16_t>(stream.ControlOffset[index]), stop);
    if (stop.Position != 0) {
      unit[stop.Position] = 0x01;
      unit[stop.Position - 4] = unit[stop.Position - 3] = 0;  // at the start
      ++stops;
    }
  }
  ASSERT_GT(stops, 0U);
  before_ = test::Index({stream.RawBytes.begin(), stream.RawBytes.end() - 1});
  Edit(SetDisplayEnds(before_, SubtitleSet::All(), {.Fill = true, .Longest = 300000}),
       [this](const auto& /*old*/, const auto& fresh, const SupStream& after, std::size_t index) {
         EXPECT_EQ(after.SpuSize[index] % 2, 0);
         EXPECT_GT(after.SpuSize[index], before_.SpuSize[index]);
         EXPECT_EQ(fresh.EndMs, (after.EndTime[index] - after.StartTime[index]) / 1000 * 1024 / 90) << index;
       });
}

}  // namespace
}  // namespace quillmark

#else

TEST(ToolsLibavcodec, MovedUnitIsTheSamePictureAtTheNewPlace) {
  GTEST_SKIP() << "libavcodec (libavcodec-dev) was not found when the tests were configured";
}

#endif
