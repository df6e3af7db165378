#include "sup/StreamLoader.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <limits>
#include <random>
#include <string>

#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"
#include "tests/support/UnreadableFile.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Index;
using test::Join;
using test::PacketBuilder;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t Earliest = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t Latest = std::numeric_limits<std::int64_t>::max();
constexpr auto PacketLength = static_cast<std::int32_t>(PacketBuilder::Length);

Bytes FirstBytes(const Bytes& bytes, std::size_t count) {
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

/// A path for one file, which is gone when the test is over.
class TemporaryFile {
 public:
  TemporaryFile()
      : path_(std::filesystem::path(testing::TempDir()) /
              ("quillmark-" + std::to_string(std::random_device{}()) + ".sup")) {}
  explicit TemporaryFile(const Bytes& content) : TemporaryFile() {
    std::ofstream file(path_, std::ios::binary);
    file.write(reinterpret_cast<const char*>(content.data()), static_cast<std::streamsize>(content.size()));
  }
  ~TemporaryFile() { std::filesystem::remove_all(path_); }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  [[nodiscard]] const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

// The walk over sound packets.

TEST(IndexPrimaryStream, EmptyFileHasNoSubtitles) {
  const SupStream stream = Index({});

  EXPECT_EQ(stream.Count, 0);
  EXPECT_EQ(stream.FileLength, 0);
  EXPECT_EQ(stream.RawBytes, Bytes{0});
  EXPECT_THAT(stream.PacketOffset, IsEmpty());
}

TEST(IndexPrimaryStream, FileShorterThanAPacketHeaderHasNoSubtitles) {
  for (std::size_t length = 1; length < 14; ++length) {
    SCOPED_TRACE(length);
    const SupStream stream = Index(Bytes(length, 'x'));

    EXPECT_EQ(stream.Count, 0);
    EXPECT_EQ(stream.FileLength, static_cast<std::int32_t>(length));
  }
}

TEST(IndexPrimaryStream, ReadsAPacketWrittenByHand) {
  const Bytes file = {
      'S',  'P',                                       // signature
      0x90, 0x5F, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00,  // 90000 ticks, little-endian
      0x00, 0x22,                                      // unit size 34, big-endian
      0x00, 0x04,                                      // control offset 4
      0x00, 0x00, 0x00, 0x1C,                          // unit byte 4: at once, next sequence at 28
      0x01,                                            // 8: start
      0x03, 0x32, 0x10,                                // 9: colours
      0x04, 0xFF, 0xF0,                                // 12: contrasts
      0x05, 0x00, 0x00, 0x03, 0x00, 0x00, 0x01,        // 15: area
      0x06, 0x00, 0x04, 0x00, 0x05,                    // 22: fields
      0xFF,                                            // 27
      0x00, 0x0A, 0x00, 0x1C, 0x02, 0xFF               // 28: after 10 units, stop
  };

  const SupStream stream = Index(file);

  EXPECT_EQ(stream.Count, 1);
  EXPECT_EQ(stream.FileLength, 44);
  EXPECT_THAT(stream.PacketOffset, ElementsAre(0));
  EXPECT_THAT(stream.StartTime, ElementsAre(90000));
  EXPECT_THAT(stream.EndTime, ElementsAre(100000));
  EXPECT_THAT(stream.SpuSize, ElementsAre(34));
  EXPECT_THAT(stream.ControlOffset, ElementsAre(4));
  EXPECT_THAT(stream.ColourBytesOffset, ElementsAre(20));
  EXPECT_THAT(stream.ContrastBytesOffset, ElementsAre(23));
  EXPECT_EQ(stream.Stats.ParseErrors, 0);
  EXPECT_EQ(stream.RawBytes, Join({file, {0}}));
}

TEST(IndexPrimaryStream, PacketsFollowEachOtherImmediately) {
  const SupStream stream =
      Index(Join({PacketBuilder().Time(1).Build(), PacketBuilder().Unit(Bytes(7)).Build(),
                  PacketBuilder().Time(3).Build()}));

  EXPECT_EQ(stream.Count, 3);
  EXPECT_THAT(stream.PacketOffset, ElementsAre(0, 48, 69));
  EXPECT_THAT(stream.SpuSize, ElementsAre(38, 11, 38));
  EXPECT_THAT(stream.ColourBytesOffset, ElementsAre(24, 48 + 13, 69 + 24));
  EXPECT_THAT(stream.ContrastBytesOffset, ElementsAre(27, 48 + 13, 69 + 27));
}

TEST(IndexPrimaryStream, UnitWithoutTheCommandsPointsIntoItsHeader) {
  const SupStream stream = Index(PacketBuilder().WithoutColour().WithoutContrast().Build());

  EXPECT_THAT(stream.ColourBytesOffset, ElementsAre(13));
  EXPECT_THAT(stream.ContrastBytesOffset, ElementsAre(13));
  EXPECT_EQ(stream.Stats.ParseErrors, 1);
}

TEST(IndexPrimaryStream, AllEightTimeBytesCount) {
  const SupStream stream =
      Index(Join({PacketBuilder().Time(0x0102030405060708).Build(), PacketBuilder().Time(-1).Build()}));

  EXPECT_THAT(stream.StartTime, ElementsAre(0x0102030405060708, -1));
}

TEST(IndexPrimaryStream, TimesMayGoBack) {
  const SupStream stream = Index(Join({PacketBuilder().Time(500).Build(), PacketBuilder().Time(20).Build()}));

  EXPECT_THAT(stream.StartTime, ElementsAre(500, 20));
  EXPECT_THAT(stream.EndTime, ElementsAre(20, 0));
}

TEST(IndexPrimaryStream, TimesAtTheEndsOfTimeWrap) {
  const SupStream stream = Index(Join(
      {PacketBuilder().Time(Latest).Delay(1).Build(), PacketBuilder().Time(Earliest).Delay(0xFFFF).Build()}));

  EXPECT_THAT(stream.StartTime, ElementsAre(Latest, Earliest));
  EXPECT_THAT(stream.EndTime, ElementsAre(Earliest + 999, Latest - 999));
}

TEST(IndexPrimaryStream, SeveralAssignmentsSetTheFlags) {
  const SupStream stream = Index(
      Join({PacketBuilder().Build(), PacketBuilder().Colour(4, 2, 1, 0).Contrast(15, 15, 7, 0).Build()}));

  EXPECT_TRUE(stream.Stats.MultipleColours);
  EXPECT_TRUE(stream.Stats.MultipleOpacities);
}

TEST(IndexPrimaryStream, InvalidUnitIsIndexedAndCounted) {
  const SupStream stream = Index(Join({PacketBuilder().Build(), PacketBuilder().WithoutArea().Build(),
                                       PacketBuilder().ControlOffset(0).Build(), PacketBuilder().Build()}));

  EXPECT_EQ(stream.Count, 4);
  EXPECT_EQ(stream.Stats.ParseErrors, 2);
}

// The end times.

TEST(IndexPrimaryStream, SubtitleWithoutDelayEndsWhereTheNextStarts) {
  const SupStream stream =
      Index(Join({PacketBuilder().Time(1000).Build(), PacketBuilder().Time(5000).Build()}));

  EXPECT_THAT(stream.EndTime, ElementsAre(5000, 0));
}

TEST(IndexPrimaryStream, SingleSubtitleWithoutDelayHasNoEnd) {
  EXPECT_THAT(Index(PacketBuilder().Time(1000).Build()).EndTime, ElementsAre(0));
}

TEST(IndexPrimaryStream, DelayWinsOverTheNextStart) {
  const SupStream stream =
      Index(Join({PacketBuilder().Time(1000).Delay(100).Build(), PacketBuilder().Time(5000).Build(),
                  PacketBuilder().Time(9000).Build()}));

  EXPECT_THAT(stream.EndTime, ElementsAre(101000, 9000, 0));
}

TEST(IndexPrimaryStream, LastSubtitleKeepsItsOwnEnd) {
  EXPECT_THAT(Index(PacketBuilder().Time(1000).Delay(2).Build()).EndTime, ElementsAre(3000));
}

TEST(IndexPrimaryStream, NegativeDelayEndsBeforeTheStart) {
  EXPECT_THAT(Index(PacketBuilder().Time(9000).Delay(0xFFFE).Build()).EndTime, ElementsAre(7000));
}

TEST(IndexPrimaryStream, EndThatComesOutAsZeroIsNoEnd) {
  const SupStream stream =
      Index(Join({PacketBuilder().Time(1000).Delay(0xFFFF).Build(), PacketBuilder().Time(5000).Build()}));

  EXPECT_THAT(stream.EndTime, ElementsAre(5000, 0));
}

TEST(IndexPrimaryStream, UnitWithoutSequencesEndsWhereTheNextStarts) {
  const SupStream stream =
      Index(Join({PacketBuilder().Time(1000).ControlOffset(0).Build(), PacketBuilder().Time(5000).Build()}));

  EXPECT_THAT(stream.EndTime, ElementsAre(5000, 0));
}

// The first subtitle.

TEST(IndexPrimaryStream, FirstUnitThatIsValidIsTold) {
  const Result<LoadedStream> loaded =
      IndexPrimaryStream(Join({PacketBuilder().Build(), PacketBuilder().WithoutArea().Build()}));

  ASSERT_TRUE(loaded);
  EXPECT_FALSE(loaded->FirstIsInvalid);
  EXPECT_EQ(loaded->Stream.Count, 2);
}

TEST(IndexPrimaryStream, InvalidFirstUnitEndsTheWalkAfterItsPacket) {
  const Bytes file =
      Join({PacketBuilder().Time(5).Delay(1).WithoutArea().Build(), PacketBuilder().Build(), Bytes(20, 'x')});

  const Result<LoadedStream> loaded = IndexPrimaryStream(file);

  ASSERT_TRUE(loaded);
  EXPECT_TRUE(loaded->FirstIsInvalid);
  EXPECT_FALSE(loaded->LostSignature);
  const SupStream& stream = loaded->Stream;
  EXPECT_EQ(stream.Count, 1);
  EXPECT_EQ(stream.FileLength, 116);
  EXPECT_EQ(stream.RawBytes, Join({file, {0}}));
  EXPECT_THAT(stream.PacketOffset, ElementsAre(116));
  EXPECT_THAT(stream.StartTime, ElementsAre(5));
  EXPECT_THAT(stream.EndTime, ElementsAre(1005));
  EXPECT_THAT(stream.SpuSize, ElementsAre(38));
  EXPECT_THAT(stream.ControlOffset, ElementsAre(8));
  EXPECT_THAT(stream.ColourBytesOffset, ElementsAre(116 + 24));
  EXPECT_THAT(stream.ContrastBytesOffset, ElementsAre(116 + 27));
  EXPECT_EQ(stream.Stats.MaxSpuSize, 38);
}

TEST(IndexPrimaryStream, InvalidFirstUnitIsIndexedAsAnyOtherWhereItIsPassed) {
  const Result<LoadedStream> loaded = IndexPrimaryStream(
      Join({PacketBuilder().WithoutColour().Build(), PacketBuilder().Build()}), InvalidFirst::IsPassed);

  ASSERT_TRUE(loaded);
  EXPECT_TRUE(loaded->FirstIsInvalid);
  EXPECT_THAT(loaded->Stream.PacketOffset, ElementsAre(0, 48));
}

// Missing signatures.

TEST(IndexPrimaryStream, FileThatDoesNotStartWithASignatureIsNoStream) {
  for (const std::string start : {"PS", "Sp", "sP", "SS", "xP"}) {
    SCOPED_TRACE(start);
    Bytes file = PacketBuilder().Build();
    file[0] = static_cast<std::uint8_t>(start[0]);
    file[1] = static_cast<std::uint8_t>(start[1]);

    const Result<LoadedStream> loaded = IndexPrimaryStream(file);

    ASSERT_TRUE(loaded);
    EXPECT_TRUE(loaded->LostSignature);
    EXPECT_EQ(loaded->Stream.Count, 0);
    EXPECT_FALSE(loaded->Stream.Holds(0));
  }
}

TEST(IndexPrimaryStream, PacketsBeforeAMissingSignatureAreTold) {
  const Bytes packet = PacketBuilder().Time(9).Delay(3).Build();

  const Result<LoadedStream> loaded = IndexPrimaryStream(Join({packet, Bytes(14, 'x')}));

  ASSERT_TRUE(loaded);
  EXPECT_TRUE(loaded->LostSignature);
  EXPECT_FALSE(loaded->FirstIsInvalid);
  EXPECT_THAT(loaded->Stream.StartTime, ElementsAre(9));
  EXPECT_THAT(loaded->Stream.EndTime, ElementsAre(3009));
  Bytes buffer;
  EXPECT_EQ(FirstUnit(loaded->Stream, buffer).Bytes.size(), 38U);
}

TEST(IndexStream, FileWithoutASignatureHasNoIndex) {
  EXPECT_EQ(IndexStream(Bytes(14, 'x')).Reason(), "no \"SP\" stands where a packet should start");
}

TEST(IndexPrimaryStream, TrailingBytesTooFewForAHeaderAreIgnored) {
  for (std::size_t length = 1; length < 14; ++length) {
    SCOPED_TRACE(length);
    const Bytes file = Join({PacketBuilder().Build(), Bytes(length, 'x')});
    const SupStream stream = Index(file);

    EXPECT_EQ(stream.Count, 1);
    EXPECT_EQ(stream.RawBytes, Join({file, {0}}));
  }
}

TEST(IndexPrimaryStream, LongerTrailingBytesNeedASignature) {
  const Result<LoadedStream> loaded = IndexPrimaryStream(Join({PacketBuilder().Build(), Bytes(14, 'x')}));

  ASSERT_TRUE(loaded);
  EXPECT_TRUE(loaded->LostSignature);
}

// Damaged sizes and cut-off files.

TEST(IndexPrimaryStream, TinyUnitIsInvalidAndTheNextPacketFollowsIt) {
  for (unsigned size = 0; size <= 13; ++size) {
    SCOPED_TRACE(size);
    const std::size_t unitBytes = size < 4 ? 0 : size - 4;

    const Bytes file = Join({PacketBuilder().Unit(Bytes(unitBytes, 0x03)).Size(size).ControlOffset(4).Build(),
                             PacketBuilder().Build()});
    const SupStream stream = Index(file);
    Bytes buffer;
    const std::size_t unitLength = UnitOf(stream, 0, buffer).Bytes.size();

    EXPECT_EQ(unitLength, 4 + unitBytes);
    EXPECT_EQ(stream.Count, 2);
    EXPECT_THAT(stream.PacketOffset, ElementsAre(0, static_cast<std::int32_t>(14 + unitBytes)));
    EXPECT_THAT(stream.SpuSize, ElementsAre(static_cast<std::int16_t>(size), 38));
    EXPECT_EQ(stream.Stats.ParseErrors, 1);
  }
}

TEST(IndexPrimaryStream, SizeFrom0x8000IsAnInvalidUnitAndTheWalkGoesOnAfterIt) {
  for (const unsigned size : {0x8000U, 0x8001U, 0xFFFFU}) {
    SCOPED_TRACE(size);
    const Bytes file = Join(
        {PacketBuilder().Unit(Bytes(size - 4)).Size(size).ControlOffset(4).Build(), PacketBuilder().Build()});

    const SupStream stream = Index(file);
    Bytes buffer;
    const std::size_t unitLength = UnitOf(stream, 0, buffer).Bytes.size();

    EXPECT_EQ(unitLength, 4U);
    EXPECT_THAT(stream.PacketOffset, ElementsAre(0, static_cast<std::int32_t>(size + 10)));
    EXPECT_THAT(stream.SpuSize, ElementsAre(static_cast<std::int16_t>(size), 38));
    EXPECT_EQ(stream.Stats.ParseErrors, 1);
    EXPECT_EQ(stream.Stats.MaxSpuSize, 38);
  }
}

TEST(IndexPrimaryStream, LargestUnitIsRead) {
  Bytes unit(32763, 0x01);
  const Bytes sound = PacketBuilder().UnitBytes();
  std::copy(sound.begin(), sound.end(), unit.begin());

  const SupStream stream = Index(Join({PacketBuilder().Unit(unit).Build(), PacketBuilder().Build()}));

  EXPECT_THAT(stream.PacketOffset, ElementsAre(0, 32777));
  EXPECT_EQ(stream.Stats.MaxSpuSize, 32767);
  EXPECT_EQ(stream.Stats.ParseErrors, 0);
}

TEST(IndexPrimaryStream, ControlOffsetIsHeldSigned) {
  const SupStream stream = Index(PacketBuilder().ControlOffset(0xFFFE).Build());

  EXPECT_THAT(stream.ControlOffset, ElementsAre(-2));
}

TEST(IndexPrimaryStream, ControlOffsetPastTheUnitIsAParseError) {
  EXPECT_EQ(Index(PacketBuilder().ControlOffset(38).Build()).Stats.ParseErrors, 1);
  EXPECT_EQ(Index(PacketBuilder().ControlOffset(0x7FFF).Build()).Stats.ParseErrors, 1);
}

TEST(IndexPrimaryStream, PacketLongerThanTheFileHasZerosForWhatIsMissing) {
  const PacketBuilder packet = PacketBuilder().Size(100);
  const Bytes unit = Join({packet.WholeUnit(), Bytes(100 - 38)});

  const SupStream stream = Index(packet.Build());
  Bytes first;
  CopyUnit(stream, 0, first);

  EXPECT_EQ(first, unit);
  EXPECT_EQ(stream.Count, 1);
  EXPECT_EQ(stream.FileLength, PacketLength);
  EXPECT_THAT(stream.SpuSize, ElementsAre(100));
}

/// Whether the packet of PacketBuilder is valid when only its first `length` bytes are left and the rest
/// reads as zeros.
bool ValidWhenCut(std::size_t length) {
  // Byte 36 is the last display command. The header of the last sequence stands at bytes 42 to 45; without
  // byte 45 its pointer is 0, but without the end command at byte 41 no further sequence is looked for.
  return (length >= 37 && length <= 41) || length >= 46;
}

TEST(IndexPrimaryStream, TwoPacketsCutAtEveryLength) {
  const Bytes whole = Join({PacketBuilder().Time(90000).Build(), PacketBuilder().Time(180000).Build()});
  for (std::size_t length = 0; length <= whole.size(); ++length) {
    SCOPED_TRACE(length);
    const Bytes file = FirstBytes(whole, length);
    const std::int32_t count = length < 14 ? 0 : length < 48 + 14 ? 1 : 2;
    const int firstError = count >= 1 && !ValidWhenCut(length) ? 1 : 0;
    const int secondError = count == 2 && !ValidWhenCut(length - 48) ? 1 : 0;

    const SupStream stream = Index(file);

    EXPECT_EQ(stream.Count, count);
    EXPECT_EQ(stream.PacketOffset.size(), static_cast<std::size_t>(count));
    EXPECT_EQ(stream.FileLength, static_cast<std::int32_t>(length));
    EXPECT_EQ(stream.RawBytes, Join({file, {0}}));
    EXPECT_EQ(stream.Stats.ParseErrors, firstError + secondError);
  }
}

// Files.

TEST(LoadPrimaryStream, ReadsAFile) {
  const Bytes content = Join({PacketBuilder().Time(9).Build(), PacketBuilder().Time(18).Build()});
  const TemporaryFile file(content);

  const SupStream stream = test::StreamOf(LoadPrimaryStream(file.Path()));

  EXPECT_EQ(stream.Path, file.Path().string());
  EXPECT_EQ(stream.Count, 2);
  EXPECT_EQ(stream.RawBytes, Join({content, {0}}));
  EXPECT_THAT(stream.EndTime, ElementsAre(18, 0));
}

TEST(LoadPrimaryStream, ReadsAnEmptyFile) {
  const TemporaryFile file{Bytes()};

  EXPECT_EQ(test::StreamOf(LoadPrimaryStream(file.Path())).Count, 0);
}

TEST(LoadPrimaryStream, FileWithoutSignatureIsNoStream) {
  const TemporaryFile file(Bytes(100, 'x'));

  const Result<LoadedStream> loaded = LoadPrimaryStream(file.Path());

  ASSERT_TRUE(loaded);
  EXPECT_TRUE(loaded->LostSignature);
}

std::string ReasonOfRefusal(const std::filesystem::path& path) {
  const Result<LoadedStream> loaded = LoadPrimaryStream(path);
  EXPECT_FALSE(loaded);
  return loaded.Reason();
}

TEST(LoadPrimaryStream, MissingFileIsRefused) {
  EXPECT_EQ(ReasonOfRefusal(TemporaryFile().Path()), "No such file or directory");
}

TEST(LoadPrimaryStream, FolderIsRefused) {
  const TemporaryFile folder;
  std::filesystem::create_directory(folder.Path());

  EXPECT_EQ(ReasonOfRefusal(folder.Path()), "it is a folder");
}

TEST(LoadPrimaryStream, FileOfMoreThanTwoGibibytesIsRefused) {
  const TemporaryFile file(PacketBuilder().Build());
  std::filesystem::resize_file(file.Path(), (std::uintmax_t{2} << 30U) + 1);  // sparse

  EXPECT_EQ(ReasonOfRefusal(file.Path()), "it is too large: a stream may have 2147352576 bytes");
}

TEST(LoadPrimaryStream, FileWhoseLengthFitsNoSigned32BitNumberIsRefused) {
  const TemporaryFile file(PacketBuilder().Build());
  for (const std::uintmax_t length : {std::uintmax_t{0x7FFE0001}, std::uintmax_t{0x7FFFFFFF},
                                      std::uintmax_t{1} << 32U, std::uintmax_t{5} << 32U}) {
    SCOPED_TRACE(length);
    std::filesystem::resize_file(file.Path(), length);

    EXPECT_EQ(ReasonOfRefusal(file.Path()), "it is too large: a stream may have 2147352576 bytes");
  }
}

// The stream laid over another.

Result<LoadedStream> TryOver(const SupStream& primary, const Bytes& content) {
  const TemporaryFile file(content);
  return LoadSecondaryStream(file.Path(), primary);
}

SupStream LoadOver(const SupStream& primary, const Bytes& content) {
  return test::StreamOf(TryOver(primary, content));
}

TEST(LoadSecondaryStream, EverySubtitleEndsWhereTheNextStartsWhateverItsDelay) {
  const SupStream primary = Index(PacketBuilder().Time(50000).Build());

  const SupStream secondary = LoadOver(
      primary, Join({PacketBuilder().Time(1000).Delay(500).Build(), PacketBuilder().Time(2000).Build(),
                     PacketBuilder().Time(3000).Delay(7).Build()}));

  EXPECT_EQ(secondary.Count, 3);
  EXPECT_THAT(secondary.EndTime, ElementsAre(2000, 3000, 60000));
}

TEST(LoadSecondaryStream, LastEndIsBehindThePrimarysLastStart) {
  const SupStream primary =
      Index(Join({PacketBuilder().Time(900000).Build(), PacketBuilder().Time(50000).Build()}));

  EXPECT_THAT(LoadOver(primary, PacketBuilder().Time(3000).Build()).EndTime, ElementsAre(60000));
}

TEST(LoadSecondaryStream, LastEndIsBehindItsOwnLastStartWhenThatIsLater) {
  const SupStream primary = Index(PacketBuilder().Time(2000).Build());

  EXPECT_THAT(LoadOver(primary, PacketBuilder().Time(3000).Build()).EndTime, ElementsAre(13000));
}

TEST(LoadSecondaryStream, EqualLastStartsGiveTheSameEnd) {
  const SupStream primary = Index(PacketBuilder().Time(3000).Build());

  EXPECT_THAT(LoadOver(primary, PacketBuilder().Time(3000).Build()).EndTime, ElementsAre(13000));
}

TEST(LoadSecondaryStream, LastEndAtTheEndOfTimeWraps) {
  const SupStream primary = Index(PacketBuilder().Time(Latest).Build());

  EXPECT_THAT(LoadOver(primary, PacketBuilder().Time(0).Build()).EndTime, ElementsAre(Earliest + 9999));
}

TEST(LoadSecondaryStream, LatestEndNeverGoesBack) {
  const SupStream primary = Index(PacketBuilder().Time(0).Build());

  const SupStream secondary =
      LoadOver(primary, Join({PacketBuilder().Time(1000).Build(), PacketBuilder().Time(60000).Build(),
                              PacketBuilder().Time(2000).Build(), PacketBuilder().Time(3000).Build()}));

  EXPECT_THAT(secondary.EndTime, ElementsAre(60000, 2000, 3000, 13000));
  EXPECT_THAT(secondary.LatestEnd, ElementsAre(60000, 60000, 60000, 60000));
}

TEST(LoadSecondaryStream, InvalidFirstUnitEndsTheWalkAfterItsPacket) {
  const SupStream primary = Index(PacketBuilder().Time(500).Build());

  const Result<LoadedStream> loaded =
      TryOver(primary, Join({PacketBuilder().Time(3000).WithoutFields().Build(), PacketBuilder().Build()}));

  ASSERT_TRUE(loaded);
  EXPECT_TRUE(loaded->FirstIsInvalid);
  const SupStream& secondary = loaded->Stream;
  EXPECT_EQ(secondary.Count, 1);
  EXPECT_EQ(secondary.Stats.ParseErrors, 1);
  EXPECT_THAT(secondary.PacketOffset, ElementsAre(96));
  EXPECT_THAT(secondary.EndTime, ElementsAre(13000));
}

TEST(LoadSecondaryStream, LaterInvalidUnitIsCountedAndTheWalkGoesOn) {
  const SupStream primary = Index(PacketBuilder().Build());

  const SupStream secondary = LoadOver(
      primary,
      Join({PacketBuilder().Build(), PacketBuilder().WithoutArea().Build(), PacketBuilder().Build()}));

  EXPECT_EQ(secondary.Count, 3);
  EXPECT_EQ(secondary.Stats.ParseErrors, 1);
}

TEST(LoadSecondaryStream, EmptyFileHasNoSubtitles) {
  const SupStream secondary = LoadOver(Index(PacketBuilder().Build()), {});

  EXPECT_EQ(secondary.Count, 0);
  EXPECT_THAT(secondary.LatestEnd, IsEmpty());
}

TEST(LoadSecondaryStream, StreamHasThePathThatItWasLoadedFrom) {
  const TemporaryFile file(PacketBuilder().Build());
  const auto loaded = LoadSecondaryStream(file.Path(), Index(PacketBuilder().Build()));
  ASSERT_TRUE(loaded);
  EXPECT_EQ(loaded->Stream.Path, file.Path());
}

TEST(LoadSecondaryStream, SeveralAssignmentsSetTheFlags) {
  const SupStream secondary =
      LoadOver(Index(PacketBuilder().Build()),
               Join({PacketBuilder().Build(), PacketBuilder().Colour(4, 2, 1, 0).Build()}));

  EXPECT_TRUE(secondary.Stats.MultipleColours);
  EXPECT_FALSE(secondary.Stats.MultipleOpacities);
}

TEST(LoadSecondaryStream, MissingSignatureIsTold) {
  const SupStream primary = Index(PacketBuilder().Build());

  for (const Bytes& content : {Bytes(14, 'x'), Join({PacketBuilder().Build(), Bytes(14, 'x')})}) {
    const Result<LoadedStream> loaded = TryOver(primary, content);

    ASSERT_TRUE(loaded);
    EXPECT_TRUE(loaded->LostSignature);
  }
}

TEST(LoadSecondaryStream, MissingFileIsRefused) {
  EXPECT_EQ(LoadSecondaryStream(TemporaryFile().Path(), SupStream()).Reason(), "No such file or directory");
}

TEST(LoadSecondaryStream, PrimaryIsUntouched) {
  SupStream primary = Index(Join({PacketBuilder().Time(10).Build(), PacketBuilder().Time(20).Build()}));
  const Bytes bytes = primary.RawBytes;

  LoadOver(primary, PacketBuilder().Time(3000).Build());

  EXPECT_EQ(primary.Count, 2);
  EXPECT_EQ(primary.RawBytes, bytes);
  EXPECT_THAT(primary.EndTime, ElementsAre(20, 0));
  EXPECT_THAT(primary.LatestEnd, IsEmpty());
}

TEST(LoadPrimaryStream, FileThatCannotBeReadIsToldSo) {
  const TemporaryFile file;
  if (!test::LinkUnreadableFile(file.Path())) {
    GTEST_SKIP() << test::NeedsUnreadableFile;
  }
  EXPECT_EQ(LoadPrimaryStream(file.Path(), InvalidFirst::IsPassed).Reason(), "it cannot be read");
  EXPECT_EQ(IndexStreamFile(file.Path(), InvalidFirst::IsPassed).Reason(), "it cannot be read");
}

TEST(IndexSecondaryStream, BesideNothingTheLastEndsTenUnitsAfterItsStart) {
  const SupStream secondary = test::StreamOf(IndexSecondaryStream(
      Join({PacketBuilder().Time(500).Build(), PacketBuilder().Time(900).Build()}), SupStream()));
  EXPECT_THAT(secondary.EndTime, ElementsAre(900, 10900));
}

}  // namespace
}  // namespace quillmark
