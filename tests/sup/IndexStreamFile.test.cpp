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

  struct Packet {
    std::int64_t Offset;
    std::int64_t Start;
    std::int64_t Size;  ///< of the unit
    bool operator==(const Packet&) const = default;
  };

  /// These packets, and in all else the index that loading the whole file makes.
  void ExpectIndex(const std::vector<Packet>& packets) {
    const SupStream loaded = test::StreamOf(LoadPrimaryStream(path_, invalidFirst_));
    stream_ = test::StreamOf(Index());
    std::vector<Packet> found;
    for (std::size_t i = 0; i < stream_.PacketOffset.size(); ++i) {
      found.push_back(
          {.Offset = stream_.PacketOffset[i], .Start = stream_.StartTime[i], .Size = stream_.SpuSize[i]});
    }
    EXPECT_TRUE(found == packets);
    EXPECT_EQ(stream_.Count, static_cast<std::int64_t>(packets.size()));
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
  std::vector<Packet> packets;
  for (int i = 0; i < 100; ++i) {
    file = Join({file, LongPacket(i), PacketBuilder().Time(i).Delay(9).Build()});
    // 30,014 bytes and 48 bytes
    packets.push_back({.Offset = i * 30062, .Start = i, .Size = 30004});
    packets.push_back({.Offset = i * 30062 + 30014, .Start = i, .Size = 38});
  }
  Write(file);
  ExpectIndex(packets);
  EXPECT_EQ(stream_.FileLength, 3006200);
}

TEST_F(IndexStreamFileTest, WalksPastUnitsWithoutBuffers) {
  Bytes file;
  std::vector<Packet> packets;
  for (int i = 0; i < 20; ++i) {
    Bytes skipped = PacketBuilder().Time(i).Size(0xFFFF).Build();
    skipped.resize(0xFFFF + 10);
    file = Join({file, skipped, PacketBuilder().Size(0).Unit({}).Build()});
    // 65,545 bytes, their size read as a signed one, and 14 bytes
    packets.push_back({.Offset = i * 65559, .Start = i, .Size = -1});
    packets.push_back({.Offset = i * 65559 + 65545, .Start = 0, .Size = 0});
  }
  Write(file);
  ExpectIndex(packets);
}

TEST_F(IndexStreamFileTest, CutLastPacketReadsAsZerosBehindTheEnd) {
  Bytes file = Join({LongPacket(1), LongPacket(2)});
  file.resize(file.size() - 29980);
  Write(file);
  ExpectIndex({{.Offset = 0, .Start = 1, .Size = 30004}, {.Offset = 30014, .Start = 2, .Size = 30004}});
}

TEST_F(IndexStreamFileTest, FirstSubtitleThatCannotBeShownEndsTheWalk) {
  invalidFirst_ = InvalidFirst::EndsTheWalk;
  Write(Join({PacketBuilder().WithoutArea().Build(), LongPacket(2)}));
  // It counts as one packet, which begins where the file of 48 and 30,014 bytes ends.
  ExpectIndex({{.Offset = 30062, .Start = 0, .Size = 38}});
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
