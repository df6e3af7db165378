#include <filesystem>
#include <fstream>
#include <random>
#include <string>
#include <system_error>
#include <vector>

#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;
using test::Second;

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
    std::int64_t End;
    std::int64_t Size;     ///< of the unit
    std::int64_t Colours;  ///< where its colour arguments stand in the file
    bool operator==(const Packet&) const = default;
  };

  void ExpectIndex(const std::vector<Packet>& packets) {
    stream_ = test::StreamOf(Index());
    EXPECT_EQ(stream_.Count, static_cast<std::int64_t>(packets.size()));
    ASSERT_EQ(stream_.PacketOffset.size(), packets.size());
    for (std::size_t i = 0; i < packets.size(); ++i) {
      const Packet found = {.Offset = stream_.PacketOffset[i],
                            .Start = stream_.StartTime[i],
                            .End = stream_.EndTime[i],
                            .Size = stream_.SpuSize[i],
                            .Colours = stream_.ColourBytesOffset[i]};
      EXPECT_TRUE(found == packets[i]) << i << ": " << found.Offset << ' ' << found.Start << ' ' << found.End
                                       << ' ' << found.Size << ' ' << found.Colours;
    }
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

TEST_F(IndexStreamFileTest, IndexesPacketsOfManyBuffers) {
  Bytes file;
  std::vector<Packet> packets;
  for (int i = 0; i < 100; ++i) {
    const std::int64_t start = i * Second;
    file = Join({file, LongPacket(start), PacketBuilder().Time(start).Delay(9).Build()});
    // 30,014 bytes and 48 bytes; the first of the two ends where the other starts.
    packets.push_back(
        {.Offset = i * 30062, .Start = start, .End = start, .Size = 30004, .Colours = i * 30062 + 24});
    packets.push_back({.Offset = i * 30062 + 30014,
                       .Start = start,
                       .End = start + 9000,
                       .Size = 38,
                       .Colours = i * 30062 + 30014 + 24});
  }
  Write(file);
  ExpectIndex(packets);
  EXPECT_EQ(stream_.FileLength, 3006200);
}

TEST_F(IndexStreamFileTest, StatisticsAreOfAllPackets) {
  Write(Join({LongPacket(7), LongPacket(3 * Second), PacketBuilder().WithoutArea().Build(),
              PacketBuilder().Time(61 * Second).Delay(9).Build()}));
  stream_ = test::StreamOf(Index());
  EXPECT_EQ(stream_.Stats.MaxSpuSize, 30004);
  EXPECT_EQ(stream_.Stats.MaxDurationMs, 105);  // of 9,000 ticks, and 5 more before rounding down
  EXPECT_EQ(stream_.Stats.FirstTimecode(), "00:00:00.00");
  EXPECT_EQ(stream_.Stats.LastTimecode(), "00:01:01.00");
  EXPECT_EQ(stream_.Stats.ParseErrors, 1);
  EXPECT_TRUE(stream_.Stats.HasUntimed);
  EXPECT_TRUE(stream_.Stats.MultipleColours);
  EXPECT_FALSE(stream_.Stats.MultipleOpacities);
  // Code 3 is in entries 7, 0 and 3, the others in one each.
  for (std::size_t entry = 0; entry < 16; ++entry) {
    const bool isUsed = entry == 0 || entry == 3 || entry == 7;
    EXPECT_EQ(stream_.Stats.Usage[entry][3], isUsed ? 1 : 100) << entry;
    EXPECT_EQ(stream_.Stats.Usage[entry][2], entry == 2 ? 1 : 100) << entry;
  }
}

TEST_F(IndexStreamFileTest, WalksPastUnitsWithoutBuffers) {
  Bytes file;
  std::vector<Packet> packets;
  for (int i = 0; i < 20; ++i) {
    Bytes skipped = PacketBuilder().Time(i).Size(0xFFFF).Build();
    skipped.resize(0xFFFF + 10);
    file = Join({file, skipped, PacketBuilder().Size(0).Unit({}).Build()});
    // 65,545 bytes, their size read as a signed one, and 14 bytes. Neither has commands: their colours point
    // into the header; neither has a delay: they end where the next one starts, and the last one nowhere.
    packets.push_back({.Offset = i * 65559, .Start = i, .End = 0, .Size = -1, .Colours = i * 65559 + 13});
    packets.push_back({.Offset = i * 65559 + 65545,
                       .Start = 0,
                       .End = i < 19 ? i + 1 : 0,
                       .Size = 0,
                       .Colours = i * 65559 + 65545 + 13});
  }
  Write(file);
  ExpectIndex(packets);
  EXPECT_EQ(stream_.Stats.ParseErrors, 40);
}

TEST_F(IndexStreamFileTest, CutLastPacketReadsAsZerosBehindTheEnd) {
  Bytes file = Join({LongPacket(1), LongPacket(2)});
  file.resize(file.size() - 29980);
  Write(file);
  // Of its unit 24 bytes are left, without the area and the fields.
  ExpectIndex({{.Offset = 0, .Start = 1, .End = 2, .Size = 30004, .Colours = 24},
               {.Offset = 30014, .Start = 2, .End = 0, .Size = 30004, .Colours = 30014 + 24}});
  EXPECT_EQ(stream_.FileLength, 30048);
  EXPECT_EQ(stream_.Stats.ParseErrors, 1);
}

TEST_F(IndexStreamFileTest, FirstSubtitleThatCannotBeShownEndsTheWalk) {
  invalidFirst_ = InvalidFirst::EndsTheWalk;
  Write(Join({PacketBuilder().WithoutArea().Build(), LongPacket(2)}));
  // It counts as one packet, which begins where the file of 48 and 30,014 bytes ends.
  ExpectIndex({{.Offset = 30062, .Start = 0, .End = 0, .Size = 38, .Colours = 30062 + 24}});
}

/// A file that takes no room, of this length, with one packet at its start.
class LargestStreamFile : public IndexStreamFileTest {
 protected:
  void WriteOf(std::uintmax_t length) {
    Write(PacketBuilder().Build());
    std::error_code failure;
    std::filesystem::resize_file(path_, length, failure);
    ASSERT_FALSE(failure) << failure.message();
  }
};

TEST_F(LargestStreamFile, IsRead) {
  WriteOf(2147352576);
  const Result<LoadedStream> loaded = Index();
  ASSERT_TRUE(loaded) << loaded.Reason();
  EXPECT_TRUE(loaded->LostSignature);  // of zeros
  EXPECT_EQ(loaded->Stream.Count, 1);
}

TEST_F(LargestStreamFile, OfOneByteMoreIsRefused) {
  WriteOf(2147352577);
  EXPECT_EQ(Index().Reason(), "it is too large: a stream may have 2147352576 bytes");
  EXPECT_EQ(LoadPrimaryStream(path_).Reason(), "it is too large: a stream may have 2147352576 bytes");
  EXPECT_EQ(LoadSecondaryStream(path_, SupStream()).Reason(),
            "it is too large: a stream may have 2147352576 bytes");
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
