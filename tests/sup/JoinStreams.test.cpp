#include "sup/JoinStreams.h"

#include <gmock/gmock.h>

#include "tests/support/AppliedEdit.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Applied;
using test::Bytes;
using test::Index;
using test::Join;
using test::PacketBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

Bytes ShownAt(std::int64_t time) {
  return test::Sound(time).Build();  // shown for 90000 ticks
}

Bytes Joined(const SupStream& first, const SupStream& second, const JoinOptions& options) {
  const Result<ToolResult> result = JoinStreams(first, second, options);
  EXPECT_TRUE(result) << result.Reason();
  return result ? Applied(first, result->Edit) : Bytes();
}

TEST(JoinStreams, SecondOneFollowsTheLastEnd) {
  const SupStream first = Index(Join({ShownAt(1000), ShownAt(200000)}));
  const SupStream second = Index(Join({ShownAt(500), ShownAt(700)}));
  EXPECT_EQ(Joined(first, second, {}),
            Join({ShownAt(1000), ShownAt(200000), ShownAt(290000), ShownAt(290200)}));
  EXPECT_EQ(Joined(first, second, {.Gap = 45}),
            Join({ShownAt(1000), ShownAt(200000), ShownAt(290045), ShownAt(290245)}));
  EXPECT_EQ(Joined(first, second, {.At = 7}),
            Join({ShownAt(1000), ShownAt(200000), ShownAt(7), ShownAt(207)}));
}

TEST(JoinStreams, NumbersAreThoseOfTheJoinedStream) {
  const Bytes damaged = PacketBuilder().Time(4).ControlOffset(0).Build();
  const auto result =
      JoinStreams(Index(Join({ShownAt(1), ShownAt(2)})), Index(Join({ShownAt(3), damaged, ShownAt(5)})), {});
  ASSERT_TRUE(result);
  EXPECT_EQ(result->Changed.Text(), "3,5");
  EXPECT_THAT(result->Left,
              ElementsAre(LeftSubtitle{.Number = 4, .Fault = PacketFault::ControlOffsetOutside}));
  EXPECT_EQ(result->Chosen, 3);
}

TEST(JoinStreams, DamagedPacketsStayByteForByteAndCountForNothing) {
  const Bytes damaged = PacketBuilder().Time(-99).ControlOffset(0).Build();
  const Bytes late = PacketBuilder().Time(1'000'000).ControlOffset(0).Build();
  EXPECT_EQ(Joined(Index(Join({ShownAt(10), late})), Index(Join({damaged, ShownAt(50)})), {}),
            Join({ShownAt(10), late, damaged, ShownAt(90010)}));
}

TEST(JoinStreams, LatestEndAndEarliestStartCount) {
  EXPECT_EQ(Joined(Index(Join({ShownAt(500), ShownAt(10)})), Index(Join({ShownAt(80), ShownAt(30)})), {}),
            Join({ShownAt(500), ShownAt(10), ShownAt(90550), ShownAt(90500)}));
}

TEST(JoinStreams, SubtitleWithoutAnEndCountsByItsStart) {
  EXPECT_EQ(Joined(Index(PacketBuilder().Time(70).Build()), Index(ShownAt(5)), {}),
            Join({PacketBuilder().Time(70).Build(), ShownAt(70)}));
}

TEST(JoinStreams, EmptyStreamAddsNothing) {
  EXPECT_EQ(Joined(Index(ShownAt(3)), Index({}), {}), ShownAt(3));
  EXPECT_EQ(Joined(Index({}), Index(ShownAt(3)), {}), ShownAt(0));
}

TEST(JoinStreams, BytesThatNothingCanFollowStayAtTheEnd) {
  const Bytes cut = {'S', 'P', 0, 0, 0, 0, 0, 0, 0, 0, 0, 38, 0, 8, 1};
  const Bytes scrap = {1, 2, 3};
  EXPECT_EQ(Joined(Index(Join({ShownAt(0), cut})), Index(ShownAt(9)), {}),
            Join({ShownAt(0), ShownAt(90000), cut}));
  EXPECT_EQ(Joined(Index(cut), Index(ShownAt(9)), {}), Join({ShownAt(0), cut}));
  EXPECT_EQ(Joined(Index(Join({ShownAt(0), scrap})), Index(ShownAt(9)), {}),
            Join({ShownAt(0), ShownAt(90000), scrap}));
  EXPECT_EQ(Joined(Index(ShownAt(0)), Index(Join({ShownAt(9), scrap})), {}),
            Join({ShownAt(0), ShownAt(90000), scrap}));
  EXPECT_EQ(
      JoinStreams(Index(Join({ShownAt(0), cut})), Index(Join({ShownAt(9), scrap})), {}).Reason(),
      "both streams end with bytes that are no whole packet, which nothing can follow; salvage drops them");
}

TEST(JoinStreams, StartThatCannotBeIsNamed) {
  constexpr std::int64_t Max = 9223372036854775807;
  EXPECT_EQ(JoinStreams(Index(ShownAt(0)), Index(Join({ShownAt(0), ShownAt(2)})), {.At = Max - 1}).Reason(),
            "subtitle 2 of what is added would start after the last time that there is; nothing is written");
}

TEST(JoinStreams, NothingGetsWhatIsAdded) {
  const SupStream second = Index(Join({ShownAt(500), ShownAt(700)}));
  EXPECT_EQ(JoinStreams(SupStream(), second, {.At = 500})->Edit.Bytes, Join({ShownAt(500), ShownAt(700)}));
}

TEST(JoinStreams, GapBehindTheLastTimeIsRefused) {
  constexpr std::int64_t Max = 9223372036854775807;
  const SupStream first = Index(ShownAt(1000));
  const SupStream second = Index(ShownAt(500));
  EXPECT_EQ(JoinStreams(first, second, {.Gap = Max}).Reason(),
            "subtitle 1 of what is added would start after the last time that there is; nothing is written");
}

TEST(JoinStreams, StartFarBehindTheFirstIsRefused) {
  constexpr std::int64_t Max = 9223372036854775807;
  const SupStream first = Index(ShownAt(1000));
  const SupStream second = Index(Join({ShownAt(0), ShownAt(10)}));
  EXPECT_EQ(JoinStreams(first, second, {.At = Max - 5}).Reason(),
            "subtitle 2 of what is added would start after the last time that there is; nothing is written");
}

TEST(JoinStreams, StartBefore0IsRefused) {
  const SupStream first = Index(ShownAt(1000));
  const SupStream second = Index(Join({ShownAt(500), ShownAt(400)}));
  EXPECT_EQ(JoinStreams(first, second, {.At = -1}).Reason(),
            "subtitle 2 of what is added would start before 0; nothing is written");
}

}  // namespace
}  // namespace quillmark
