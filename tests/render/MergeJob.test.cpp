#include "render/MergeJob.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>

#include "sup/StreamLoader.h"
#include "tests/render/TwoStreams.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/OwnDevice.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Index;
using test::Join;
using test::NoisePacket;
using test::PacketBuilder;
using test::Second;
using testing::ElementsAre;
using Ending = MergeReport::Ending;
using Outcome = MergedStreamEncoder::Outcome;

TEST(ObstacleToSecondary, StreamWithoutASubtitle) {
  EXPECT_EQ(ObstacleToSecondary(SupStream()), MergeObstacle::NoPrimary);
}

TEST(ObstacleToSecondary, StreamOfSeveralColoursOrOpacities) {
  const Bytes first = PacketBuilder().Build();
  EXPECT_EQ(ObstacleToSecondary(Index(first)), MergeObstacle::None);
  EXPECT_EQ(ObstacleToSecondary(Index(Join({first, PacketBuilder().Colour(4, 2, 1, 0).Build()}))),
            MergeObstacle::VariedPrimary);
  EXPECT_EQ(ObstacleToSecondary(Index(Join({first, PacketBuilder().Contrast(8, 8, 8, 0).Build()}))),
            MergeObstacle::VariedPrimary);
}

TEST(ObstacleToMerge, PrimaryIsAskedForFirst) {
  const SupStream stream = Index(PacketBuilder().Build());
  EXPECT_EQ(ObstacleToMerge(SupStream(), SupStream()), MergeObstacle::NoPrimary);
  EXPECT_EQ(ObstacleToMerge(stream, SupStream()), MergeObstacle::NoSecondary);
  SupStream unindexed;
  unindexed.Count = -1;
  EXPECT_EQ(ObstacleToMerge(stream, unindexed), MergeObstacle::NoSecondary);
  EXPECT_EQ(ObstacleToMerge(stream, stream), MergeObstacle::None);
}

class MergeStreamsTest : public testing::Test {
 protected:
  MergeReport Merge(const Bytes& primary, const Bytes& secondary, const MergeSteps& steps = {},
                    const QString& name = {}) {
    const SupStream first = Index(primary);
    QFile file(folder_.filePath("second.sup"));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(reinterpret_cast<const char*>(secondary.data()), static_cast<qint64>(secondary.size()));
    file.close();
    const SupStream second = test::StreamOf(LoadSecondaryStream(file.filesystemFileName(), first));
    auto out = FileWriter::DeletingFirst(name.isEmpty() ? folder_.filePath("merged.sup") : name);
    EXPECT_TRUE(out);
    return MergeStreams(first, second, {.Palette = StartUpPalette, .YOffset = 0, .FrameHeight = 576}, *out,
                        steps);
  }
  [[nodiscard]] Bytes WrittenBytes() const {
    QFile file(folder_.filePath("merged.sup"));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    return {bytes.begin(), bytes.end()};
  }
  [[nodiscard]] int WrittenPackets() const { return Index(WrittenBytes()).Count; }

  static PacketBuilder Shown(std::int64_t start) { return PacketBuilder().Time(start).Delay(90); }

  QTemporaryDir folder_;
};

TEST_F(MergeStreamsTest, EverySubtitleIsAskedForAndDone) {
  std::vector<std::size_t> asked;
  std::vector<std::size_t> done;
  const MergeReport report = Merge(Join({Shown(Second).Build(), Shown(5 * Second).Build()}), Shown(0).Build(),
                                   {.Next =
                                        [&](std::size_t index) {
                                          asked.push_back(index);
                                          return true;
                                        },
                                    .Done =
                                        [&](std::size_t index, Outcome outcome, const MergedStreamEncoder&) {
                                          EXPECT_EQ(outcome, Outcome::Encoded);
                                          done.push_back(index);
                                        }});
  EXPECT_EQ(report.How, Ending::Complete);
  EXPECT_THAT(asked, ElementsAre(0, 1));
  EXPECT_THAT(done, ElementsAre(0, 1));
  EXPECT_EQ(WrittenPackets(), 2);
}

TEST_F(MergeStreamsTest, NextCanEndIt) {
  const MergeReport report = Merge(Join({Shown(Second).Build(), Shown(5 * Second).Build()}), Shown(0).Build(),
                                   {.Next = [](std::size_t index) { return index < 1; }, .Done = {}});
  EXPECT_EQ(report.How, Ending::Interrupted);
  EXPECT_EQ(WrittenPackets(), 1);
}

TEST_F(MergeStreamsTest, SubtitleThatCannotBeMergedEndsItAndIsNamed) {
  const MergeReport report =
      Merge(Join({Shown(Second).Build(), Shown(5 * Second).WithoutArea().Build(), Shown(9 * Second).Build()}),
            Shown(0).Build());
  EXPECT_EQ(report.How, Ending::SubtitleFailed);
  EXPECT_EQ(report.Number, 2);
  EXPECT_EQ(report.Reason, "its control data is not complete");
  EXPECT_EQ(WrittenPackets(), 1);
}

TEST_F(MergeStreamsTest, InvalidSecondaryIsToldWithThePrimarysDescription) {
  std::int64_t start = 0;
  const MergeReport report =
      Merge(Shown(5 * Second).Build(), Shown(0).WithoutArea().Build(),
            {.Next = {}, .Done = [&](std::size_t, Outcome outcome, const MergedStreamEncoder& encoder) {
               EXPECT_EQ(outcome, Outcome::InvalidSecondary);
               start = encoder.Description().StartTicks;
             }});
  EXPECT_EQ(report.How, Ending::SubtitleFailed);
  EXPECT_EQ(report.Number, 1);
  EXPECT_EQ(start, 5 * Second);
}

TEST_F(MergeStreamsTest, FullDiskEndsItWithItsReason) {
  const std::string full = test::OwnDevice(folder_.path().toStdString(), test::Device::Full);
  if (full.empty()) {
    GTEST_SKIP() << test::NeedsDevices;
  }
  const MergeReport report = Merge(Join({Shown(Second).Build(), Shown(5 * Second).Build()}), Shown(0).Build(),
                                   {}, QString::fromStdString(full));
  EXPECT_EQ(report.How, Ending::FileFailed);
  EXPECT_EQ(report.Number, 1);
  EXPECT_EQ(report.Reason, "No space left on device");
}

TEST_F(MergeStreamsTest, UnitsThatProgramsCannotReadAreWrittenAndNamed) {
  // A clear second picture, so that the merged units hold the first ones alone.
  const Bytes clear = PacketBuilder().Contrast(0, 0, 0, 0).Area(0, 1, 0, 1).Build();
  const MergeReport report = Merge(Join({NoisePacket(Second, 250), NoisePacket(3 * Second, 280),
                                         NoisePacket(5 * Second, 250), NoisePacket(7 * Second, 280)}),
                                   clear);
  EXPECT_EQ(report.How, Ending::Complete);
  EXPECT_THAT(report.TooLong, ElementsAre(2, 4));
}

TEST_F(MergeStreamsTest, LongestUnitThatCanBeReadIsNotNamed) {
  const Bytes clear = PacketBuilder().Contrast(0, 0, 0, 0).Area(0, 1, 0, 1).Build();
  // 573 lines, those of one colour in 2 bytes each: 37 + 274 * 117 + (4 + 72) + 298 * 2 = 32,767.
  EXPECT_THAT(Merge(NoisePacket(Second, 274, 72), clear).TooLong, ElementsAre());
  const Bytes written = WrittenBytes();
  EXPECT_EQ(Bytes(written.begin() + 10, written.begin() + 12), (Bytes{0x7F, 0xFF}));
  const SupStream read = Index(written);
  EXPECT_EQ(read.Count, 1);
  EXPECT_EQ(read.Stats.ParseErrors, 0);
}

TEST_F(MergeStreamsTest, UnitOfOneByteMoreIsNamed) {
  const Bytes clear = PacketBuilder().Contrast(0, 0, 0, 0).Area(0, 1, 0, 1).Build();
  EXPECT_THAT(Merge(NoisePacket(Second, 274, 73), clear).TooLong, ElementsAre(1));
  const Bytes written = WrittenBytes();
  EXPECT_EQ(Bytes(written.begin() + 10, written.begin() + 12), (Bytes{0x80, 0x00}));
  EXPECT_EQ(Index(written).Stats.ParseErrors, 1);
}

TEST(TooLongText, NamesTheSubtitles) {
  EXPECT_EQ(TooLongText({}), "");
  EXPECT_EQ(TooLongText({3}),
            "subtitle 3 is longer than 32767 bytes; programs, this one included, cannot read it");
  EXPECT_EQ(TooLongText({3, 12}),
            "subtitles 3, 12 are longer than 32767 bytes; programs, this one included, cannot read them");
}

TEST(TooLongText, OfManyTheFirstTwentyAreNamed) {
  std::vector<std::int64_t> numbers;
  for (std::int64_t number = 1; number <= 25; ++number) {
    numbers.push_back(number);
  }
  EXPECT_THAT(TooLongText(numbers), testing::HasSubstr(" 19, 20 and 5 more are longer"));
}

}  // namespace
}  // namespace quillmark
