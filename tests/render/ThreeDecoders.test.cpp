// Ten thousand generated streams, decoded by the program, by a slow decoder that was written from the rules
// alone, and by libavcodec. Of what the format allows, all three say the same; where the program keeps to a
// rule of its own, the two others stand beside it with what they say.

#include <algorithm>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "render/FieldDecoder.h"
#include "sup/SpuControl.h"
#include "sup/StreamLoader.h"
#include "tests/render/LibavcodecDecoder.h"
#include "tests/support/GeneratedUnit.h"
#include "tests/support/SlowDecoder.h"

namespace quillmark {
namespace {

using test::Below;
using test::Bytes;
using test::GeneratePicture;
using test::Join;
using test::SlowSubtitle;

/// Every rule that the program has for itself is tried with so many streams, and all together with the rest
/// of the ten thousand.
constexpr int OfOneRule = 300;
constexpr int OfNone = 7000;
/// Of a stored packet: "SP" and the time.
constexpr std::ptrdiff_t HeaderBytes = 10;

/// One packet of a stream, and what a test may want to say otherwise.
struct Packet {
  test::GeneratedPicture Picture;
  unsigned X = 0;
  unsigned Y = 0;
  std::int64_t Start = 0;
  unsigned Delay = 0;  ///< of the second sequence
  bool HasStop = true;
  Bytes BeforeArea = {};  ///< commands
  Bytes BetweenSequences = {};
  bool FieldsAreOne = false;     ///< both start where the top field does
  bool FieldsStandLast = false;  ///< behind the control sequences
  bool FieldsInSecond = false;   ///< the second sequence names them
  bool IsCutShort = false;       ///< the second sequence ends with its stop
};

Packet GeneratePacket(test::Random& random, unsigned height) {
  return {.Picture = GeneratePicture(random, 1 + Below(random, 40), height),
          .X = Below(random, 600),
          .Y = Below(random, 500),
          .Start = Below(random, 1U << 30U),
          .Delay = 1 + Below(random, 0x7FFF)};
}

Packet GeneratePacket(test::Random& random) {
  return GeneratePacket(random, 2 + 2 * Below(random, 5));
}

Bytes StoredUnit(const Packet& packet) {
  const test::GeneratedPicture& picture = packet.Picture;
  const Bytes top = picture.Fields[0].Stored();
  const Bytes bottom = packet.FieldsAreOne ? Bytes() : picture.Fields[1].Stored();
  const Bytes fields = Join({top, bottom});
  const auto control = static_cast<unsigned>(packet.FieldsStandLast ? 4 : 4 + fields.size());
  const auto commands = [&](unsigned first) {
    const unsigned second = packet.FieldsAreOne ? first : first + static_cast<unsigned>(top.size());
    const Bytes offsets = test::SetFields(first, second);
    const Bytes start =
        Join({test::SetColour(3, 2, 1, 0),
              test::SetContrast(15, 15, 15, 15),
              packet.BeforeArea,
              test::SetArea(packet.X, packet.X + picture.Width - 1, packet.Y, packet.Y + picture.Height - 1),
              packet.FieldsInSecond ? Bytes() : offsets,
              test::StartDisplay,
              {0xFF}});
    const unsigned next = control + 4 + static_cast<unsigned>(start.size() + packet.BetweenSequences.size());
    return Join({test::U16be(0), test::U16be(next), start, packet.BetweenSequences, test::U16be(packet.Delay),
                 test::U16be(next), packet.FieldsInSecond ? offsets : Bytes(),
                 packet.HasStop ? test::StopDisplay : test::StartDisplay,
                 packet.IsCutShort ? Bytes() : Bytes{0xFF}});
  };
  const unsigned firstField = packet.FieldsStandLast ? static_cast<unsigned>(4 + commands(0).size()) : 4;
  const Bytes sequences = commands(firstField);
  const Bytes body = packet.FieldsStandLast ? Join({sequences, fields}) : Join({fields, sequences});
  return Join({test::U16be(static_cast<unsigned>(body.size()) + 4), test::U16be(control), body});
}

Bytes StoredStream(const Packet& packet) {
  Bytes stream = {'S', 'P'};
  for (int i = 0; i < 8; ++i) {
    stream.push_back(static_cast<std::uint8_t>(packet.Start >> 8 * i));
  }
  return Join({stream, StoredUnit(packet)});
}

/// The program's answers in the slow decoder's words.
std::vector<SlowSubtitle> OursOf(const Bytes& file) {
  std::vector<SlowSubtitle> all;
  const auto loaded = IndexPrimaryStream(file, InvalidFirst::IsPassed);
  std::vector<std::uint8_t> buffer;
  for (std::size_t i = 0; loaded && loaded->Stream.Holds(i); ++i) {
    const SubtitleUnit unit = UnitOf(loaded->Stream, i, buffer);
    const SpuControl control = DecodeControl(unit.Bytes, unit.ControlOffset);
    SlowSubtitle& found = all.emplace_back();
    found.Start = loaded->Stream.StartTime[i];
    found.End = loaded->Stream.EndTime[i];
    found.IsValid = control.IsValid();
    found.X = control.X1;
    found.Y = control.Y1;
    found.Colours = control.Colour;
    found.Contrasts = control.Contrast;
    if (found.IsValid) {
      found.Width = control.Width();
      found.Height = control.Height();
    }
    if (found.Width >= 1 && found.Height >= 1) {
      found.Codes.assign(static_cast<std::size_t>(found.Width * found.Height), SlowSubtitle::NotReached);
      DecodeFields<std::uint8_t>(unit.Bytes, found.Codes, found.Width, found.Height, control.TopFieldOffset,
                                 control.BottomFieldOffset, {0, 1, 2, 3});
    }
  }
  return all;
}

/// "" where both say the same.
std::string DifferenceBetween(const std::vector<SlowSubtitle>& ours, const std::vector<SlowSubtitle>& slow) {
  if (ours.size() != slow.size()) {
    return "count";
  }
  for (std::size_t i = 0; i < ours.size(); ++i) {
    const SlowSubtitle& a = ours[i];
    const SlowSubtitle& b = slow[i];
    if (a.Start != b.Start || a.End != b.End) {
      return "times";
    }
    if (a.IsValid != b.IsValid || a.X != b.X || a.Y != b.Y || a.Width != b.Width || a.Height != b.Height) {
      return "area";
    }
    if (a.Colours != b.Colours || a.Contrasts != b.Contrasts) {
      return "colours";
    }
    if (a.Codes != b.Codes) {
      return "pixels";
    }
  }
  return {};
}

#ifdef QUILLMARK_HAS_LIBAVCODEC
std::optional<test::CodePicture> PeerOf(const Bytes& unit) {
  static test::LibavcodecDecoder decoder;
  const SpuControl control = DecodeControl(unit, static_cast<std::int16_t>(unit[2] * 256 + unit[3]));
  return decoder.Decode(unit, static_cast<std::size_t>(control.ContrastPos));
}

bool HasEnd(const test::CodePicture& picture) {
  return picture.EndMs != 0 && picture.EndMs != 0xFFFFFFFF;
}
#endif

class ThreeDecoders : public testing::Test {
 protected:
  /// A packet decoded by the program and by the slow decoder, which say the same, whatever it is.
  SlowSubtitle Decode(const Packet& packet) {
    const Bytes file = StoredStream(packet);
    Unit.assign(file.begin() + HeaderBytes, file.end());
    const auto ours = OursOf(file);
    EXPECT_EQ(DifferenceBetween(ours, test::SlowDecoder(file).All()), "") << "stream " << Number;
    EXPECT_EQ(ours.size(), 1U);
    return ours.empty() ? SlowSubtitle() : ours.front();
  }

  test::Random Random{20260101};
  int Number = 0;
  Bytes Unit;  ///< of the packet that was decoded last
};

/// A delay counts as 1000 ticks here and as 1024 there: the one difference that every stream with an end has.
TEST_F(ThreeDecoders, AgreeOnPicturesAndDifferInTheDelayUnit) {
  for (Number = 0; Number < OfNone && !HasFailure(); ++Number) {
    const Packet packet = GeneratePacket(Random);
    const SlowSubtitle ours = Decode(packet);
    ASSERT_TRUE(ours.IsValid);
    ASSERT_EQ(ours.Codes, packet.Picture.Codes) << "stream " << Number;
    ASSERT_EQ(ours.End - ours.Start, std::int64_t{packet.Delay} * 1000);
#ifdef QUILLMARK_HAS_LIBAVCODEC
    const auto peer = PeerOf(Unit);
    ASSERT_TRUE(peer.has_value()) << "stream " << Number;
    ASSERT_EQ(peer->Codes, ours.Codes) << "stream " << Number;
    ASSERT_EQ(peer->X, ours.X);
    ASSERT_EQ(peer->Y, ours.Y);
    ASSERT_EQ(peer->Width, ours.Width);
    ASSERT_EQ(peer->Height, ours.Height);
    ASSERT_EQ(peer->EndMs, packet.Delay * 1024 / 90);
#endif
  }
}

TEST_F(ThreeDecoders, ThisOneLeavesTheLastLineOfAnOddHeightOut) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    const Packet packet = GeneratePacket(Random, 3 + 2 * Below(Random, 4));
    const SlowSubtitle ours = Decode(packet);
    Bytes expected = packet.Picture.Codes;
    std::fill_n(expected.rbegin(), packet.Picture.Width, SlowSubtitle::NotReached);
    ASSERT_EQ(ours.Codes, expected) << "stream " << Number;
#ifdef QUILLMARK_HAS_LIBAVCODEC
    const auto peer = PeerOf(Unit);
    ASSERT_TRUE(peer.has_value());
    ASSERT_EQ(peer->Codes, packet.Picture.Codes) << "stream " << Number;
#endif
  }
}

TEST_F(ThreeDecoders, NoneShowsAPictureOfOneLine) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    const Packet packet = GeneratePacket(Random, 1);
    ASSERT_EQ(Decode(packet).Codes, Bytes(packet.Picture.Width, SlowSubtitle::NotReached));
#ifdef QUILLMARK_HAS_LIBAVCODEC
    ASSERT_FALSE(PeerOf(Unit).has_value());
#endif
  }
}

TEST_F(ThreeDecoders, ThisOneClipsARunThatLibavcodecRefuses) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    Packet packet = GeneratePacket(Random);
    packet.Picture = GeneratePicture(Random, 1 + Below(Random, 40), 2 + 2 * Below(Random, 5), true);
    ASSERT_EQ(Decode(packet).Codes, packet.Picture.Codes) << "stream " << Number;
#ifdef QUILLMARK_HAS_LIBAVCODEC
    ASSERT_FALSE(PeerOf(Unit).has_value()) << "stream " << Number;
#endif
  }
}

/// The arguments are no commands, so that all that follows is found again.
TEST_F(ThreeDecoders, ThisOneStepsOverACommandThatEndsLibavcodecsSequence) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    Packet packet = GeneratePacket(Random);
    packet.BeforeArea = {static_cast<std::uint8_t>(7 + Below(Random, 0x7E)), 8, 0x7F, 0xFE};
    ASSERT_EQ(Decode(packet).Codes, packet.Picture.Codes) << "stream " << Number;
#ifdef QUILLMARK_HAS_LIBAVCODEC
    ASSERT_FALSE(PeerOf(Unit).has_value()) << "stream " << Number;
#endif
  }
}

/// What stands between is a sequence of its own here: its delay counts, and as it names the next one the walk
/// takes it for the last.
TEST_F(ThreeDecoders, ThisOneDoesNotSeekToTheNextSequence) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    Packet packet = GeneratePacket(Random);
    packet.BetweenSequences = {0x01, 0x23, 0, 0, 0xFF};
    const Bytes unit = StoredUnit(packet);
    // The same pointer as in the first sequence.
    const auto first = static_cast<std::size_t>(unit[2] * 256 + unit[3]);
    packet.BetweenSequences = {0x01, 0x23, unit[first + 2], unit[first + 3], 0xFF};
    const SlowSubtitle ours = Decode(packet);
    ASSERT_EQ(ours.End - ours.Start, 0x123 * 1000) << "stream " << Number;
#ifdef QUILLMARK_HAS_LIBAVCODEC
    const auto peer = PeerOf(Unit);
    ASSERT_TRUE(peer.has_value());
    ASSERT_EQ(peer->EndMs, packet.Delay * 1024 / 90) << "stream " << Number;
#endif
  }
}

/// The top field has run into the bottom one after the first pair of lines.
TEST_F(ThreeDecoders, ThisOneStopsWhereTheTopFieldRunsIntoTheBottomOne) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    Packet packet = GeneratePacket(Random, 4 + 2 * Below(Random, 4));
    packet.FieldsAreOne = true;
    const auto width = static_cast<std::ptrdiff_t>(packet.Picture.Width);
    Bytes both = packet.Picture.Codes;
    for (auto line = both.begin(); line != both.end(); line += 2 * width) {
      std::copy_n(line, width, line + width);
    }
    Bytes expected = both;
    std::fill(expected.begin() + 2 * width, expected.end(), SlowSubtitle::NotReached);
    ASSERT_EQ(Decode(packet).Codes, expected) << "stream " << Number;
#ifdef QUILLMARK_HAS_LIBAVCODEC
    const auto peer = PeerOf(Unit);
    ASSERT_TRUE(peer.has_value());
    ASSERT_EQ(peer->Codes, both) << "stream " << Number;
#endif
  }
}

/// A last line of four pixels in two bytes: the second of them is the unit's last, in whose place the first
/// is read again.
TEST_F(ThreeDecoders, ThisOneReadsTheLastByteButOneForTheLast) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    Packet packet = GeneratePacket(Random);
    packet.FieldsStandLast = true;
    packet.Picture = GeneratePicture(Random, 4, 2);
    packet.Picture.Fields[1] = {};
    for (std::size_t pixel = 4; pixel < 8; ++pixel) {
      const std::uint8_t code = static_cast<std::uint8_t>(Below(Random, 4));
      packet.Picture.Codes[pixel] = code;
      packet.Picture.Fields[1].Run(1, code, false);
    }
    Bytes expected = packet.Picture.Codes;
    std::copy_n(expected.begin() + 4, 2, expected.begin() + 6);
    ASSERT_EQ(Decode(packet).Codes, expected) << "stream " << Number;
#ifdef QUILLMARK_HAS_LIBAVCODEC
    const auto peer = PeerOf(Unit);
    ASSERT_TRUE(peer.has_value());
    ASSERT_EQ(peer->Codes, packet.Picture.Codes) << "stream " << Number;
#endif
  }
}

TEST_F(ThreeDecoders, ThisOneReadsNoSequenceInTheLastFiveBytes) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    Packet packet = GeneratePacket(Random);
    packet.IsCutShort = true;
    const SlowSubtitle ours = Decode(packet);
    ASSERT_EQ(ours.End, 0) << "stream " << Number;
    ASSERT_EQ(ours.Codes, packet.Picture.Codes);
#ifdef QUILLMARK_HAS_LIBAVCODEC
    const auto peer = PeerOf(Unit);
    ASSERT_TRUE(peer.has_value());
    ASSERT_EQ(peer->EndMs, packet.Delay * 1024 / 90) << "stream " << Number;
#endif
  }
}

TEST_F(ThreeDecoders, ThisOneTakesTheLastDelayForTheEndWithoutAStop) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    Packet packet = GeneratePacket(Random);
    packet.HasStop = false;
    const SlowSubtitle ours = Decode(packet);
    ASSERT_EQ(ours.End - ours.Start, std::int64_t{packet.Delay} * 1000) << "stream " << Number;
#ifdef QUILLMARK_HAS_LIBAVCODEC
    const auto peer = PeerOf(Unit);
    ASSERT_TRUE(peer.has_value());
    ASSERT_FALSE(HasEnd(*peer)) << "stream " << Number;
#endif
  }
}

TEST_F(ThreeDecoders, ThisOneGathersWhatSequencesSay) {
  for (Number = 0; Number < OfOneRule && !HasFailure(); ++Number) {
    Packet packet = GeneratePacket(Random);
    packet.FieldsInSecond = true;
    ASSERT_EQ(Decode(packet).Codes, packet.Picture.Codes) << "stream " << Number;
#ifdef QUILLMARK_HAS_LIBAVCODEC
    ASSERT_FALSE(PeerOf(Unit).has_value()) << "stream " << Number;
#endif
  }
}

/// Whatever a unit's bytes are, the two decoders of this program's rules agree. libavcodec has no rules for
/// damage that could be named.
TEST_F(ThreeDecoders, TwoAgreeOnDamagedStreams) {
  constexpr int Streams = 3000;
  constexpr std::int64_t Small = 1 << 14;  // cells
  for (Number = 0; Number < Streams && !HasFailure(); ++Number) {
    Bytes file = Join({StoredStream(GeneratePacket(Random)), StoredStream(GeneratePacket(Random, 3))});
    for (unsigned left = 1 + Below(Random, 6); left > 0; --left) {
      const unsigned at = 12 + Below(Random, static_cast<unsigned>(file.size()) - 12);
      file[at] = static_cast<std::uint8_t>(Below(Random, 2) == 0 ? Below(Random, 8) : Below(Random, 256));
    }
    const auto size = [&](std::size_t packet) {
      return file[packet + 10] * std::size_t{256} + file[packet + 11];
    };
    // Damage of the framing is a matter of its own, and large areas take the slow decoder too long.
    const std::size_t second = size(0) + 10;
    if (second + 14 > file.size() || file[second] != 'S' || file[second + 1] != 'P' ||
        second + size(second) + 10 != file.size()) {
      continue;
    }
    const auto ours = OursOf(file);
    if (std::ranges::all_of(ours, [](const SlowSubtitle& subtitle) {
          return std::int64_t{subtitle.Width} * subtitle.Height <= Small;
        })) {
      ASSERT_EQ(DifferenceBetween(ours, test::SlowDecoder(file).All()), "") << "stream " << Number;
    }
  }
}

}  // namespace
}  // namespace quillmark
