#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;

class IndexStreamFileTest : public testing::Test {
 protected:
  void Write(const Bytes& bytes) {
    std::ofstream(path_, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  }
  void TearDown() override { std::filesystem::remove(path_); }

  Result<LoadedStream> Index() { return IndexStreamFile(path_, invalidFirst_); }

  /// The index that loading the whole file makes is the measure.
  void ExpectTheLoadersIndex() {
    const SupStream loaded = test::StreamOf(LoadPrimaryStream(path_, invalidFirst_));
    stream_ = test::StreamOf(Index());
    EXPECT_EQ(stream_.Count, loaded.Count);
    EXPECT_EQ(stream_.FileLength, loaded.FileLength);
    EXPECT_EQ(stream_.PacketOffset, loaded.PacketOffset);
    EXPECT_EQ(stream_.StartTime, loaded.StartTime);
    EXPECT_EQ(stream_.EndTime, loaded.EndTime);
    EXPECT_EQ(stream_.SpuSize, loaded.SpuSize);
    EXPECT_EQ(stream_.ColourBytesOffset, loaded.ColourBytesOffset);
    EXPECT_EQ(stream_.Stats.Usage, loaded.Stats.Usage);
    EXPECT_EQ(stream_.Stats.ParseErrors, loaded.Stats.ParseErrors);
    EXPECT_EQ(stream_.Stats.LastTimecode, loaded.Stats.LastTimecode);
    EXPECT_EQ(stream_.Stats.MultipleColours, loaded.Stats.MultipleColours);
  }

  std::filesystem::path path_ = std::filesystem::path(testing::TempDir()) /
                                ("quillmark-index-" + std::to_string(std::random_device{}()) + ".sup");
  InvalidFirst invalidFirst_ = InvalidFirst::IsPassed;
  SupStream stream_;
};

/// A packet of just over 30,000 bytes, so that a few hundred of them pass any buffer.
Bytes LongPacket(std::int64_t start) {
  PacketBuilder builder;
  Bytes unit = builder.Colour(static_cast<unsigned>(start % 16), 2, 1, 0).UnitBytes();
  unit.resize(30000);
  return builder.Time(start).Unit(unit).Build();
}

TEST_F(IndexStreamFileTest, IndexesAsTheLoaderDoes) {
  Bytes file;
  for (int i = 0; i < 100; ++i) {
    file = Join({file, LongPacket(i), PacketBuilder().Time(i).Delay(9).Build()});
  }
  Write(file);
  ExpectTheLoadersIndex();
  EXPECT_EQ(stream_.Count, 200);
}

TEST_F(IndexStreamFileTest, WalksPastUnitsWithoutBuffers) {
  Bytes file;
  for (int i = 0; i < 20; ++i) {
    Bytes skipped = PacketBuilder().Size(0xFFFF).Build();
    skipped.resize(0xFFFF + 10);
    file = Join({file, skipped, PacketBuilder().Size(0).Unit({}).Build()});
  }
  Write(file);
  ExpectTheLoadersIndex();
}

TEST_F(IndexStreamFileTest, CutLastPacketReadsAsZerosBehindTheEnd) {
  Bytes file = Join({LongPacket(1), LongPacket(2)});
  file.resize(file.size() - 29980);
  Write(file);
  ExpectTheLoadersIndex();
}

TEST_F(IndexStreamFileTest, FirstSubtitleThatCannotBeShownEndsTheWalk) {
  invalidFirst_ = InvalidFirst::EndsTheWalk;
  Write(Join({PacketBuilder().WithoutArea().Build(), LongPacket(2)}));
  ExpectTheLoadersIndex();
  EXPECT_EQ(stream_.Count, 1);
}

TEST_F(IndexStreamFileTest, HoldsNoSubtitle) {
  Write(PacketBuilder().Build());
  stream_ = test::StreamOf(Index());
  EXPECT_EQ(stream_.Count, 1);
  EXPECT_FALSE(stream_.Holds(0));
  EXPECT_TRUE(stream_.RawBytes.empty());
}

TEST_F(IndexStreamFileTest, MissingSignatureIsTold) {
  Write(Join({LongPacket(1), Bytes(14, 'x')}));
  const Result<LoadedStream> loaded = Index();
  ASSERT_TRUE(loaded);
  EXPECT_TRUE(loaded->LostSignature);
}

TEST_F(IndexStreamFileTest, EmptyFileHasNoPacket) {
  Write({});
  EXPECT_EQ(test::StreamOf(Index()).Count, 0);
}

TEST_F(IndexStreamFileTest, MissingFileIsUnreadable) {
  EXPECT_EQ(Index().Reason(), "No such file or directory");
}

}  // namespace
}  // namespace quillmark
