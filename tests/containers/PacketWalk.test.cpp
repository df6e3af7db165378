#include "containers/PacketWalk.h"

#include <gmock/gmock.h>

#include <gtest/gtest.h>

#include "tests/containers/PackBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PackHead;
using test::Pes;
using test::PesPacket;
using test::SubtitlePacket;
using testing::ElementsAre;

const Progress NoProgress;

/// What stands behind the substream bytes of the private packets.
std::vector<Bytes> PayloadsIn(const Bytes& stream) {
  MemorySource source(stream);
  ForwardReader reader(source, NoProgress);
  PacketWalk walk(reader);
  std::vector<Bytes> payloads;
  for (ProgramPacket packet; walk.Next(packet);) {
    if (packet.Stream == PrivateStream1 && !packet.Payload.empty()) {
      payloads.emplace_back(packet.Payload.begin() + 1, packet.Payload.end());
    }
  }
  return payloads;
}

ProgramPacket FirstIn(const Bytes& stream) {
  MemorySource source(stream);
  ForwardReader reader(source, NoProgress);
  ProgramPacket packet;
  EXPECT_TRUE(PacketWalk(reader).Next(packet));
  packet.Payload = {};
  return packet;
}

Bytes Filled(std::size_t count, unsigned filler) {
  return Bytes(count, static_cast<std::uint8_t>(filler));
}

const Bytes A = {0xA1, 0xA2, 0xA3};
const Bytes B = {0xB1, 0xB2};
const Bytes PackA = Join({PackHead(), SubtitlePacket(A)});
const Bytes PackB = Join({PackHead(), SubtitlePacket(B)});

TEST(PacketWalk, FieldsOfAPacket) {
  // A pack at 2 whose clock is 2^32 + 90000, its packet's time stamp 2^33 - 1.
  const ProgramPacket packet = FirstIn({0xFF, 0xFF, 0x00, 0x00, 0x01, 0xBA, 0x64, 0x00, 0x16, 0xFC, 0x84,
                                        0x01, 0x01, 0x89, 0xC3, 0xF8, 0x00, 0x00, 0x01, 0xBD, 0x00, 0x0A,
                                        0x81, 0x80, 0x05, 0x2F, 0xFF, 0xFF, 0xFF, 0xFF, 0x20, 0xAA});
  EXPECT_EQ(packet.Stream, 0xBD);
  EXPECT_EQ(packet.Pack, 2U);
  EXPECT_EQ(packet.Position, 16U);
  EXPECT_EQ(packet.Clock, 4295057296);
  EXPECT_EQ(packet.Time, 8589934591);
  EXPECT_FALSE(packet.IsEncrypted);
}

TEST(PacketWalk, ClockOfAllItsBits) {
  EXPECT_EQ(
      FirstIn(Join({{0x00, 0x00, 0x01, 0xBA, 0x7F, 0xFF, 0xFF, 0xFF, 0xFC, 0x01, 0x01, 0x89, 0xC3, 0xF8},
                    SubtitlePacket(A)}))
          .Clock,
      8589934591);
}

TEST(PacketWalk, FillingBelongsToThePackHeader) {
  // The clock of 1 s, and seven bytes of filling, as the low three bits of the header's last byte say.
  const ProgramPacket packet =
      FirstIn(Join({{0x00, 0x00, 0x01, 0xBA, 0x44, 0x00, 0x16, 0xFC, 0x84, 0x01, 0x01, 0x89, 0xC3, 0xFF},
                    Bytes(7, 0xFF),
                    SubtitlePacket(A)}));
  EXPECT_EQ(packet.Pack, 0U);
  EXPECT_EQ(packet.Position, 21U);
  EXPECT_EQ(packet.Clock, 90000);
}

TEST(PacketWalk, PackOfAnUnknownKindHasNoClock) {
  const Bytes stream = Join({PackA, {0x00, 0x00, 0x01, 0xBA, 0x80, 0x00}, SubtitlePacket(B)});
  MemorySource source(stream);
  ForwardReader reader(source, NoProgress);
  PacketWalk walk(reader);
  ProgramPacket packet;
  ASSERT_TRUE(walk.Next(packet));
  EXPECT_EQ(packet.Clock, 0);
  ASSERT_TRUE(walk.Next(packet));
  EXPECT_EQ(packet.Clock, std::nullopt);
}

TEST(PacketWalk, PacksOfAnyLength) {
  EXPECT_THAT(PayloadsIn(Join({PackA, PackB})), ElementsAre(A, B));
}

TEST(PacketWalk, StuffingInThePackHeader) {
  Bytes pack = PackHead();
  pack[13] = 0xF9;
  EXPECT_THAT(PayloadsIn(Join({pack, {0xFF}, SubtitlePacket(A), PackB})), ElementsAre(A, B));
}

TEST(PacketWalk, RestOfThePackWithoutAPaddingPacket) {
  for (const unsigned filler : {0xFFU, 0x00U}) {
    EXPECT_THAT(PayloadsIn(Join({PackA, Filled(70, filler), PackB, Filled(9, filler)})), ElementsAre(A, B));
  }
}

TEST(PacketWalk, PackStartInAPayloadBeforeFillerIsData) {
  const Bytes data = {0x00, 0x00, 0x01, 0xBA, 0x44, 0x55};
  EXPECT_THAT(PayloadsIn(Join({PackHead(), SubtitlePacket(data), Bytes(5, 0xFF), PackB})),
              ElementsAre(data, B));
}

TEST(PacketWalk, EndCodeInTheMiddle) {
  EXPECT_THAT(PayloadsIn(Join({PackA, {0x00, 0x00, 0x01, 0xB9}, PackB})), ElementsAre(A, B));
}

TEST(PacketWalk, GarbageBetweenPacks) {
  EXPECT_THAT(PayloadsIn(Join({{0x12, 0x00, 0x00, 0x01, 0x22}, PackA, {0x77, 0x00, 0x00}, PackB})),
              ElementsAre(A, B));
}

TEST(PacketWalk, StartCodeHasTwoZerosBeforeTheOne) {
  const Bytes packet = SubtitlePacket(B);
  for (const std::size_t zero : {0U, 1U}) {
    Bytes garbage = packet;
    garbage[zero] = 0x12;
    EXPECT_THAT(PayloadsIn(Join({PackA, garbage, PackB})), ElementsAre(A, B)) << zero;
  }
}

TEST(PacketWalk, SystemHeaderIsPassed) {
  EXPECT_THAT(PayloadsIn(Join({PackHead(), PesPacket(0xBB, Bytes(12, 0x80)), SubtitlePacket(A)})),
              ElementsAre(A));
}

TEST(PacketWalk, HeaderOfAnotherLength) {
  // With an extension, as spumux writes it, and with stuffing.
  const Bytes extended =
      PesPacket(0xBD, Join({{0x81, 0x81, 0x08, 0x21, 0x00, 0x05, 0xBF, 0x21, 0x1E, 0x60, 0x3A, 0x20}, A}));
  const Bytes stuffed = Pes{.Further = {0xFF, 0xFF}}.With(Join({{0x20}, B}));
  EXPECT_THAT(PayloadsIn(Join({PackHead(), extended, PackHead(), stuffed})), ElementsAre(A, B));
  EXPECT_EQ(FirstIn(extended).Time, 90000);
}

TEST(PacketWalk, LengthThatRunsOverTheNextPackIsCutThere) {
  Bytes pack = PackA;
  pack[PackHead().size() + 5] = 40;
  EXPECT_THAT(PayloadsIn(Join({pack, PackB, {0x12, 0x34, 0x56, 0x78, 0x9A}, Bytes(40, 0x12)})),
              ElementsAre(A, B));
}

TEST(PacketWalk, LengthThatRunsOverAPackRightBehindItIsCutThere) {
  // Of the packet there is its start code and its length alone.
  const Bytes head = {0x00, 0x00, 0x01, 0xBD, 0x00, 0x64};
  EXPECT_THAT(PayloadsIn(Join({PackA, PackHead(), head, PackB, Bytes(100, 0x12)})), testing::Contains(B));
}

TEST(PacketWalk, PacketsWithoutPacks) {
  const Bytes packet = SubtitlePacket(A);
  EXPECT_THAT(PayloadsIn(Join({packet, SubtitlePacket(B)})), ElementsAre(A, B));
  EXPECT_EQ(FirstIn(packet).Pack, 0U);
  EXPECT_EQ(FirstIn(packet).Clock, std::nullopt);
}

TEST(PacketWalk, ScramblingBits) {
  EXPECT_TRUE(FirstIn(Pes{.First = 0x91, .Further = {}}.With({0x20})).IsEncrypted);
  EXPECT_TRUE(FirstIn(Pes{.First = 0xA1, .Further = {}}.With({0x20})).IsEncrypted);
}

TEST(PacketWalk, HeaderMayEndThePacketWithItsTimeStamp) {
  EXPECT_EQ(FirstIn(PesPacket(0xBD, {0x81, 0x80, 0x05, 0x21, 0x00, 0x05, 0xBF, 0x21})).Time, 90000);
}

TEST(PacketWalk, ScramblingIsThatOfOnePacket) {
  const Bytes stream = Join({Pes{.First = 0xB1, .Further = {}}.With({0x20}), PesPacket(0xBE, {0xFF, 0xFF})});
  MemorySource source(stream);
  ForwardReader reader(source, NoProgress);
  PacketWalk walk(reader);
  ProgramPacket packet;
  ASSERT_TRUE(walk.Next(packet));
  EXPECT_TRUE(packet.IsEncrypted);
  ASSERT_TRUE(walk.Next(packet));
  EXPECT_FALSE(packet.IsEncrypted);
}

TEST(PacketWalk, StreamsOfControlHaveNoHeader) {
  for (const unsigned id : {0xBCU, 0xBEU, 0xBFU, 0xF0U, 0xFFU}) {
    const Bytes stream = PesPacket(static_cast<std::uint8_t>(id), {0x81, 0x00, 0x00, 0x11});
    MemorySource source(stream);
    ForwardReader reader(source, NoProgress);
    ProgramPacket packet;
    ASSERT_TRUE(PacketWalk(reader).Next(packet)) << id;
    EXPECT_THAT(packet.Payload, ElementsAre(0x81, 0x00, 0x00, 0x11)) << id;
  }
}

const Bytes Mpeg1Pack = {0x00, 0x00, 0x01, 0xBA, 0x21, 0x00, 0x05, 0xBF, 0x21, 0x80, 0x00, 0x01};

TEST(PacketWalk, FieldsOfAPacketOfMpeg1) {
  // The clock and the time stamp are 90000 and 180000.
  const Bytes stream =
      Join({Mpeg1Pack, PesPacket(0xBD, {0x21, 0x00, 0x0B, 0x7E, 0x41, 0x20, 0xA1, 0xA2, 0xA3}), PackB});
  EXPECT_THAT(PayloadsIn(stream), ElementsAre(A, B));
  const ProgramPacket packet = FirstIn(stream);
  EXPECT_EQ(packet.Pack, 0U);
  EXPECT_EQ(packet.Position, 12U);
  EXPECT_EQ(packet.Clock, 90000);
  EXPECT_EQ(packet.Time, 180000);
  EXPECT_FALSE(packet.IsEncrypted);
}

TEST(PacketWalk, HeadersOfMpeg1) {
  const Bytes time = {0x21, 0x00, 0x05, 0xBF, 0x21};
  const Bytes bothTimes = {0x31, 0x00, 0x05, 0xBF, 0x21, 0x11, 0x00, 0x01, 0x00, 0x01};
  const Bytes none = {0x0F};
  const Bytes buffer = {0x60, 0x3A};
  for (const Bytes& start :
       {Bytes(), Bytes(1, 0xFF), Bytes(16, 0xFF), buffer, Join({Bytes(3, 0xFF), buffer})}) {
    for (const Bytes& end : {time, bothTimes, none}) {
      const Bytes packet = PesPacket(0xBD, Join({start, end, {0x20}, A}));
      EXPECT_THAT(PayloadsIn(Join({Mpeg1Pack, packet})), ElementsAre(A)) << start.size() << ' ' << end.size();
      EXPECT_EQ(FirstIn(packet).Time, end == none ? std::nullopt : std::optional<std::int64_t>(90000));
    }
  }
}

TEST(PacketWalk, HeaderOfMpeg1MayEndThePacketWithItsTimeStamp) {
  EXPECT_EQ(FirstIn(PesPacket(0xBD, {0x21, 0x00, 0x05, 0xBF, 0x21})).Time, 90000);
}

TEST(PacketWalk, OtherHeadersHaveNoPayload) {
  // More stuffing than there may be, bits of no header, and headers that end before their time stamp.
  for (const Bytes& data :
       {Join({Bytes(17, 0xFF), {0x0F, 0x20, 0xA1}}), Bytes{0x1F, 0x20, 0xA1}, Bytes{0x00, 0x20, 0xA1},
        Bytes{0x21, 0x00, 0x05, 0xBF}, Bytes{0xFF, 0x21, 0x00, 0x05, 0xBF},
        Bytes{0x31, 0x00, 0x05, 0xBF, 0x21, 0x20, 0xA1}, Bytes{0x60}, Bytes{0xFF}, Bytes{0x81, 0x00},
        Bytes()}) {
    const Bytes packet = PesPacket(0xBD, data);
    EXPECT_THAT(PayloadsIn(Join({Mpeg1Pack, packet, PackB})), ElementsAre(B)) << data.size();
    EXPECT_EQ(FirstIn(packet).Time, std::nullopt);
  }
}

TEST(PacketWalk, PacketThatTheEndCutsHasWhatThereIs) {
  Bytes stream = PackA;
  stream.pop_back();
  EXPECT_THAT(PayloadsIn(stream), ElementsAre(Bytes{0xA1, 0xA2}));
}

TEST(PacketWalk, LastPacketMayHoldWhatLooksLikeAPack) {
  const Bytes payload = {1, 0, 0, 1, 0xBA, 2};
  EXPECT_THAT(PayloadsIn(Join({PackHead(), SubtitlePacket(payload)})), ElementsAre(payload));
}

TEST(PacketWalk, PacketsAcrossPiecesOfTheFile) {
  Bytes stream;
  std::vector<Bytes> expected;
  const Bytes gap(4093, 0xFF);
  while (stream.size() < 3 * ForwardReader::PieceSize) {
    expected.push_back(Bytes(1000, static_cast<std::uint8_t>(2 + expected.size() % 200)));
    stream = Join({std::move(stream), PackHead(), SubtitlePacket(expected.back()), gap});
  }
  EXPECT_EQ(PayloadsIn(stream), expected);
}

TEST(PacketWalk, PacketThatEndsNearTheEndOfAPieceIsWhole) {
  const Bytes payload(1000, 0x22);
  const Bytes pack = Join({PackHead(), SubtitlePacket(payload)});
  for (std::size_t shift = 0; shift <= 10; ++shift) {
    const Bytes filling(ForwardReader::PieceSize + 5 - shift - pack.size(), 0xFF);
    EXPECT_THAT(PayloadsIn(Join({filling, pack, pack})), ElementsAre(payload, payload)) << shift;
  }
}

TEST(PacketWalk, PackBehindGarbageNearTheEndOfAPieceIsFound) {
  const Bytes payload(1000, 0x22);
  for (std::size_t before = 0; before <= 6; ++before) {
    const Bytes garbage(ForwardReader::PieceSize - before, 0x11);
    EXPECT_THAT(PayloadsIn(Join({PackHead(), garbage, PackHead(), SubtitlePacket(payload)})),
                ElementsAre(payload))
        << before;
    EXPECT_THAT(PayloadsIn(Join({garbage, PackHead(), SubtitlePacket(payload)})), ElementsAre(payload))
        << before;
  }
}

/// A long stream of one pack over and over, which remembers what was asked of it.
class LongSource : public ByteSource {
 public:
  LongSource(Bytes pack, std::uint64_t packs) : pack_(std::move(pack)), length_(packs * pack_.size()) {}

  [[nodiscard]] std::uint64_t Length() const override { return length_; }
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    Largest = std::max(Largest, bytes.size());
    GoesForward = GoesForward && start >= last_;
    last_ = start;
    const auto found = static_cast<std::size_t>(std::min<std::uint64_t>(bytes.size(), length_ - start));
    for (std::size_t i = 0; i < found;) {
      const auto at = static_cast<std::size_t>((start + i) % pack_.size());
      const std::size_t part = std::min(pack_.size() - at, found - i);
      std::copy_n(pack_.begin() + static_cast<std::ptrdiff_t>(at), part,
                  bytes.begin() + static_cast<std::ptrdiff_t>(i));
      i += part;
    }
    return found;
  }

  std::size_t Largest = 0;
  bool GoesForward = true;

 private:
  Bytes pack_;
  std::uint64_t length_;
  std::uint64_t last_ = 0;
};

TEST(PacketWalk, LongStreamIsReadForwardsInPieces) {
  // 60,000-byte packets of video: 3 GiB would take no more memory than these 30 MiB.
  LongSource source(Join({PackHead(), Pes{.Stream = 0xE0, .Further = {}}.With(Bytes(60000, 0x33))}), 500);
  ForwardReader reader(source, NoProgress);
  PacketWalk walk(reader);
  std::size_t packets = 0;
  for (ProgramPacket packet; walk.Next(packet);) {
    ++packets;
  }
  EXPECT_EQ(packets, 500U);
  EXPECT_TRUE(source.GoesForward);
  EXPECT_LE(source.Largest, ForwardReader::PieceSize);
}

TEST(PacketWalk, ProgressEndsIt) {
  LongSource source(PackA, 100000);
  std::vector<std::uint64_t> told;
  const Progress progress = [&told](std::uint64_t done, std::uint64_t) {
    told.push_back(done);
    return told.size() < 2;
  };
  ForwardReader reader(source, progress);
  PacketWalk walk(reader);
  for (ProgramPacket packet; walk.Next(packet);) {
  }
  EXPECT_TRUE(reader.IsCancelled());
  EXPECT_EQ(told.size(), 2U);
}

/// A source whose second read fails.
class UnreadableSource : public LongSource {
 public:
  using LongSource::LongSource;
  [[nodiscard]] Result<std::size_t> ReadAt(std::uint64_t start, std::span<std::uint8_t> bytes) override {
    return start == 0 ? LongSource::ReadAt(start, bytes) : Result<std::size_t>(Failure{"it is gone"});
  }
};

TEST(PacketWalk, FailureOfTheSourceIsKept) {
  UnreadableSource source(PackA, 100000);
  ForwardReader reader(source, NoProgress);
  PacketWalk walk(reader);
  for (ProgramPacket packet; walk.Next(packet);) {
  }
  EXPECT_EQ(reader.Status().Reason(), "it is gone");
}

TEST(ForwardReader, NothingIsLeftOnceTheSourceFailed) {
  UnreadableSource source(PackA, 100000);
  ForwardReader reader(source, NoProgress);
  ASSERT_GE(reader.Peek(4).size(), 4U);
  reader.Skip(reader.Peek(4).size() - 3);
  EXPECT_EQ(reader.Peek(4).size(), 0U);
}

}  // namespace
}  // namespace quillmark
