#include "sup/Salvage.h"

#include <gmock/gmock.h>
#include <ostream>
#include <vector>

#include "tests/support/PacketBuilder.h"

namespace quillmark {

void PrintTo(const LeftOutRange& range, std::ostream* out) {
  *out << range.Length << " bytes at " << range.Offset << ": " << FaultText(range.Fault);
}

namespace {

using test::Bytes;
using test::EndOfSequence;
using test::Join;
using test::PacketBuilder;
using test::Sequence;
using test::StopDisplay;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

/// 48 bytes.
Bytes Packet(std::int64_t start = 0) {
  return PacketBuilder().Time(start).Build();
}

Bytes Kept(const SalvagedStream& salvaged) {
  Bytes kept;
  for (const auto span : salvaged.Kept) {
    kept.insert(kept.end(), span.begin(), span.end());
  }
  return kept;
}

TEST(FaultText, SaysWhatIsWrongWithAPlace) {
  EXPECT_EQ(FaultText(PacketFault::None), "a whole packet");
  EXPECT_EQ(FaultText(PacketFault::TooShort), "too short for a packet");
  EXPECT_EQ(FaultText(PacketFault::NoSignature), "no \"SP\" where a packet should start");
  EXPECT_EQ(FaultText(PacketFault::UnitTooSmall), "the unit's size leaves no room for control sequences");
  EXPECT_EQ(FaultText(PacketFault::UnitTooLarge), "the unit's size is 0x8000 or more");
  EXPECT_EQ(FaultText(PacketFault::PastEnd), "the packet runs past the end of the file");
  EXPECT_EQ(FaultText(PacketFault::ControlOffsetOutside), "the control offset leads out of the unit");
  EXPECT_EQ(FaultText(PacketFault::ControlUnfinished),
            "the control sequences do not come to an end in the unit");
  EXPECT_EQ(FaultText(PacketFault::HoldsAnotherPacket),
            "another packet starts inside the packet, and none after it");
}

TEST(SalvageStream, SoundStreamIsKeptWhole) {
  const Bytes file = Join({Packet(1), Packet(2), Packet(3)});
  const SalvagedStream salvaged = SalvageStream(file);
  EXPECT_EQ(Kept(salvaged), file);
  EXPECT_EQ(salvaged.Packets, 3U);
  EXPECT_THAT(salvaged.Kept, SizeIs(1));
  EXPECT_THAT(salvaged.LeftOut, IsEmpty());
}

TEST(SalvageStream, EmptyFileHoldsNothing) {
  const SalvagedStream salvaged = SalvageStream({});
  EXPECT_EQ(salvaged.Packets, 0U);
  EXPECT_THAT(salvaged.LeftOut, IsEmpty());
}

TEST(SalvageStream, GarbageBetweenPacketsIsLeftOut) {
  const Bytes file = Join({Packet(1), Bytes(30, 0xAA), Packet(2)});
  const SalvagedStream salvaged = SalvageStream(file);
  EXPECT_EQ(Kept(salvaged), Join({Packet(1), Packet(2)}));
  EXPECT_THAT(salvaged.LeftOut, ElementsAre(LeftOutRange{48, 30, PacketFault::NoSignature}));
}

TEST(SalvageStream, GarbageBeforeTheFirstPacketIsLeftOut) {
  const Bytes file = Join({{0x00, 0x01, 'S'}, Packet(1)});
  const SalvagedStream salvaged = SalvageStream(file);
  EXPECT_EQ(Kept(salvaged), Packet(1));
  EXPECT_THAT(salvaged.LeftOut, ElementsAre(LeftOutRange{0, 3, PacketFault::NoSignature}));
}

TEST(SalvageStream, ScrapAtTheEndIsLeftOut) {
  const SalvagedStream salvaged = SalvageStream(Join({Packet(1), {'S', 'P', 0}}));
  EXPECT_EQ(salvaged.Packets, 1U);
  EXPECT_THAT(salvaged.LeftOut, ElementsAre(LeftOutRange{48, 3, PacketFault::TooShort}));
}

TEST(SalvageStream, CutLastPacketIsLeftOut) {
  Bytes file = Join({Packet(1), Packet(2)});
  file.pop_back();
  const SalvagedStream salvaged = SalvageStream(file);
  EXPECT_EQ(Kept(salvaged), Packet(1));
  EXPECT_THAT(salvaged.LeftOut, ElementsAre(LeftOutRange{48, 47, PacketFault::PastEnd}));
}

TEST(SalvageStream, SizeThatSwallowsTheNextPacketLosesOnlyItsOwn) {
  const Bytes file = Join({PacketBuilder().Size(58).Build(), Packet(2), Packet(3)});
  const SalvagedStream salvaged = SalvageStream(file);
  EXPECT_EQ(Kept(salvaged), Join({Packet(2), Packet(3)}));
  EXPECT_THAT(salvaged.LeftOut, ElementsAre(LeftOutRange{0, 48, PacketFault::HoldsAnotherPacket}));
}

TEST(SalvageStream, GoodPacketBeforeGarbageIsKept) {
  // What stands after the first packet is no packet, but none starts inside it either.
  const Bytes file = Join({Packet(1), Bytes(14, 0)});
  EXPECT_EQ(Kept(SalvageStream(file)), Packet(1));
}

TEST(SalvageStream, SignatureInsideThePictureIsNoPacket) {
  const Bytes unit =
      Join({{'S', 'P', 'S', 'P'}, Sequence(0, 8, {StopDisplay, EndOfSequence}), Bytes(20, 0xFF)});
  const Bytes file = Join({PacketBuilder().Unit(unit).Build(), Packet(2)});
  EXPECT_EQ(Kept(SalvageStream(file)), file);
}

/// A packet whose picture is a whole packet itself.
Bytes PacketInAPacket() {
  return PacketBuilder()
      .ControlOffset(52)
      .Unit(Join({Packet(1), Sequence(0, 52, {StopDisplay, EndOfSequence})}))
      .Build();
}

TEST(SalvageStream, PacketInsideThePictureIsPartOfItWhereTheStreamGoesOn) {
  for (const Bytes& next : {Packet(2), Bytes(), Bytes(13, 0xAA)}) {
    const auto kept = Kept(SalvageStream(Join({PacketInAPacket(), next})));
    EXPECT_EQ(kept, Join({PacketInAPacket(), next.size() > 13 ? next : Bytes()})) << next.size();
  }
}

TEST(SalvageStream, PacketInsideThePictureIsTakenWhereNoneFollows) {
  EXPECT_EQ(Kept(SalvageStream(Join({PacketInAPacket(), Bytes(14, 0xAA)}))), Packet(1));
}

TEST(SalvageStream, NeighbouringDamagedPacketsAreOneRange) {
  const Bytes damaged = PacketBuilder().ControlOffset(0).Build();
  const Bytes file = Join({damaged, damaged, Packet(3)});
  const SalvagedStream salvaged = SalvageStream(file);
  EXPECT_EQ(Kept(salvaged), Packet(3));
  EXPECT_THAT(salvaged.LeftOut, ElementsAre(LeftOutRange{0, 96, PacketFault::ControlOffsetOutside}));
}

TEST(SalvageStream, MissingCommandsDoNotMakeAPacketBad) {
  const Bytes file = PacketBuilder().WithoutColour().WithoutArea().Build();
  EXPECT_EQ(Kept(SalvageStream(file)), file);
}

TEST(SalvageStream, KeptAndLeftOutAreTheWholeFileAtEveryLength) {
  const Bytes whole = Join({Packet(1), Bytes(5, 'S'), Packet(2), Packet(3)});
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    const Bytes file(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
    const SalvagedStream salvaged = SalvageStream(file);
    std::size_t total = Kept(salvaged).size();
    for (const LeftOutRange& range : salvaged.LeftOut) {
      total += range.Length;
    }
    EXPECT_EQ(total, length);
    EXPECT_EQ(salvaged.Packets,
              (length >= 48 ? 1U : 0U) + (length >= 101 ? 1U : 0U) + (length >= 149 ? 1U : 0U));
  }
}

TEST(SalvageStream, FileFullOfSignaturesHoldsNothing) {
  Bytes file;
  for (int i = 0; i < 100000; ++i) {
    file.push_back('S');
    file.push_back('P');
  }
  const SalvagedStream salvaged = SalvageStream(file);
  EXPECT_EQ(salvaged.Packets, 0U);
  EXPECT_THAT(salvaged.LeftOut, SizeIs(1));
}

struct FaultCase {
  const char* Name;
  Bytes File;
  PacketFault Expected;
};

void PrintTo(const FaultCase& fault, std::ostream* out) {
  *out << fault.Name;
}

class PacketWithFault : public testing::TestWithParam<FaultCase> {};

TEST_P(PacketWithFault, IsNotPlausible) {
  EXPECT_EQ(InspectPacket(GetParam().File, 0), GetParam().Expected);
}

Bytes WithLastPointer(unsigned pointer) {
  return PacketBuilder()
      .Unit(Join({Bytes(4, 0), Sequence(0, pointer, {StopDisplay, EndOfSequence})}))
      .Build();
}

INSTANTIATE_TEST_SUITE_P(
    InspectPacket, PacketWithFault,
    testing::Values(FaultCase{"None", PacketBuilder().Build(), PacketFault::None},
                    FaultCase{"OneSequence", WithLastPointer(8), PacketFault::None},
                    FaultCase{"Short", Bytes{'S', 'P', 0, 0, 0, 0, 0, 0, 0, 0, 0, 4, 0},
                              PacketFault::TooShort},
                    FaultCase{"Signature", Bytes(14, 'S'), PacketFault::NoSignature},
                    FaultCase{"Small", PacketBuilder().Size(8).Build(), PacketFault::UnitTooSmall},
                    FaultCase{"Large", PacketBuilder().Size(0x8000).Build(), PacketFault::UnitTooLarge},
                    FaultCase{"PastEnd", PacketBuilder().Size(39).Build(), PacketFault::PastEnd},
                    FaultCase{"OffsetInHeader", PacketBuilder().ControlOffset(3).Build(),
                              PacketFault::ControlOffsetOutside},
                    FaultCase{"OffsetBehindUnit", PacketBuilder().ControlOffset(34).Build(),
                              PacketFault::ControlOffsetOutside},
                    FaultCase{"PointerZero", WithLastPointer(0), PacketFault::ControlUnfinished},
                    FaultCase{"PointerBackwards", WithLastPointer(4), PacketFault::ControlUnfinished},
                    FaultCase{"PointerOutside", WithLastPointer(900), PacketFault::ControlUnfinished}),
    [](const auto& test) { return test.param.Name; });

TEST(FindPacket, AnswersTheFilesSizeWhenThereIsNone) {
  EXPECT_EQ(FindPacket(Bytes(50, 'S'), 0), 50U);
  EXPECT_EQ(FindPacket(Bytes(50, 'S'), 51), 50U);
}

TEST(FindPacket, FindsAPacketAcrossTwoPiecesOfTheSearch) {
  for (std::size_t before = 65530; before < 65545; ++before) {
    EXPECT_EQ(FindPacket(Join({Bytes(before, 0), PacketBuilder().Build()}), 0), before);
    EXPECT_EQ(FindPacket(Join({Bytes(before, 'S'), PacketBuilder().Build()}), 0), before);
  }
}

TEST(PacketSearch, APieceEndsAfterManySignaturesWithoutAPacket) {
  Bytes file;
  for (int i = 0; i < 1000; ++i) {
    file.insert(file.end(), {'S', 'P'});
  }
  PacketSearch search(file, 0);
  EXPECT_TRUE(search.Step());
  EXPECT_LE(search.Offset(), 512U);
  while (search.Step()) {
  }
  EXPECT_EQ(search.Offset(), 2000U);
}

TEST(FindPacket, StartsAtTheGivenOffset) {
  const Bytes file = Join({Packet(1), Packet(2)});
  EXPECT_EQ(FindPacket(file, 0), 0U);
  EXPECT_EQ(FindPacket(file, 1), 48U);
  EXPECT_EQ(FindPacket(file, 49), 96U);
}

/// The first place is garbage up to a packet that turns out to be one of too large a size: what is left out
/// for two reasons in a row is one range, with the first of them.
TEST(SalvageStream, WhatIsLeftOutInARowIsOneRange) {
  const Bytes lying = PacketBuilder().Size(38 + 48).Build();
  const Bytes file = Join({Bytes(5, 0xAA), lying, Packet(2), Bytes(30, 0xAA)});
  const SalvagedStream salvaged = SalvageStream(file);
  EXPECT_EQ(Kept(salvaged), Packet(2));
  EXPECT_THAT(salvaged.LeftOut, ElementsAre(LeftOutRange{0, 5 + 48, PacketFault::NoSignature},
                                            LeftOutRange{5 + 96, 30, PacketFault::NoSignature}));
}

TEST(InspectPacket, NothingIsTooShort) {
  EXPECT_EQ(InspectPacket(Packet(), 48), PacketFault::TooShort);
  EXPECT_EQ(InspectPacket(Packet(), 49), PacketFault::TooShort);
}

TEST(PacketEnd, OfWhatIsNoPacketIsThatOfTheFile) {
  EXPECT_EQ(PacketEnd(Packet(), 0), 48U);
  EXPECT_EQ(PacketEnd(Packet(), 1), 48U);
  EXPECT_EQ(PacketEnd(Packet(), 100), 48U);
}

}  // namespace
}  // namespace quillmark
