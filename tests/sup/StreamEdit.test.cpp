#include "sup/StreamEdit.h"

#include <random>

#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;
using Place = StreamEdit::Place;
using Places = EditPlaces;

/// A stream as the window has it after loading.
SupStream Load(const Bytes& file) {
  Result<SupStream> index = IndexStream(file);
  EXPECT_TRUE(index) << index.Reason();
  SupStream stream = index ? std::move(*index) : SupStream();
  stream.Path = "film.sup";
  stream.RawBytes = file;
  stream.RawBytes.push_back(0);
  return stream;
}

Bytes WithZero(Bytes file) {
  file.push_back(0);
  return file;
}

void ExpectSameIndex(const SupStream& stream, const SupStream& expected) {
  EXPECT_EQ(stream.FileLength, expected.FileLength);
  EXPECT_EQ(stream.Count, expected.Count);
  EXPECT_EQ(stream.PacketOffset, expected.PacketOffset);
  EXPECT_EQ(stream.StartTime, expected.StartTime);
  EXPECT_EQ(stream.EndTime, expected.EndTime);
  EXPECT_EQ(stream.SpuSize, expected.SpuSize);
  EXPECT_EQ(stream.ControlOffset, expected.ControlOffset);
  EXPECT_EQ(stream.ColourBytesOffset, expected.ColourBytesOffset);
  EXPECT_EQ(stream.ContrastBytesOffset, expected.ContrastBytesOffset);
  EXPECT_EQ(stream.Stats.ParseErrors, expected.Stats.ParseErrors);
  EXPECT_EQ(stream.Stats.MaxSpuSize, expected.Stats.MaxSpuSize);
  EXPECT_EQ(stream.Stats.LastTimecode(), expected.Stats.LastTimecode());
  EXPECT_EQ(stream.Stats.MultipleColours, expected.Stats.MultipleColours);
}

TEST(Replace, NamesPlacesInTheOrderOfTheCalls) {
  StreamEdit edit;

  edit.Replace(3, 1, Bytes{7, 8});
  edit.Replace(6, 2, {});

  EXPECT_EQ(edit.Places, (Places{{.Offset = 3, .Removed = 1, .Inserted = 2}, {.Offset = 6, .Removed = 2}}));
  EXPECT_EQ(edit.Bytes, (Bytes{7, 8}));
}

TEST(Replace, PlaceThatStartsWhereTheLastOneEndedMakesItLonger) {
  StreamEdit edit;

  edit.Replace(3, 2, Bytes{7});
  edit.Replace(5, 0, Bytes{8});
  edit.Replace(5, 1, Bytes{9, 9});
  edit.Replace(7, 1, Bytes{1});

  EXPECT_EQ(edit.Places,
            (Places{{.Offset = 3, .Removed = 3, .Inserted = 4}, {.Offset = 7, .Removed = 1, .Inserted = 1}}));
  EXPECT_EQ(edit.Bytes, (Bytes{7, 8, 9, 9, 1}));
}

TEST(Replace, NumbersThatNoStreamHasFitNone) {
  constexpr std::size_t FourGigabytes = std::size_t{1} << 32U;
  StreamEdit after;
  after.Replace(FourGigabytes + 1, 1, Bytes{7});
  StreamEdit longer;
  longer.Replace(0, FourGigabytes + 1, Bytes{7});
  StreamEdit together;
  together.Replace(0, 2, Bytes{7, 7});
  together.Replace(2, FourGigabytes - 1, {});
  Bytes bytes = {1, 2, 3};

  EXPECT_FALSE(ApplyEdit(bytes, after));
  EXPECT_FALSE(ApplyEdit(bytes, longer));
  EXPECT_FALSE(ApplyEdit(bytes, together));

  EXPECT_EQ(bytes, (Bytes{1, 2, 3}));
}

TEST(Replace, OnePlaceTakesOutAsManyBytesAsThereAreNumbers) {
  constexpr std::size_t Most = (std::size_t{1} << 32U) - 1;
  StreamEdit edit;

  edit.Replace(0, 2, {});
  edit.Replace(2, Most - 2, {});

  EXPECT_EQ(edit.Places, (Places{{.Offset = 0, .Removed = 0xFFFFFFFF}}));
}

struct BytesCase {
  const char* What;
  Places Where;
  Bytes Inserted;
  Bytes After;
  Places InverseWhere;
  Bytes InverseInserted;
};

class ApplyEditToBytes : public testing::TestWithParam<BytesCase> {};

TEST_P(ApplyEditToBytes, ChangesThemAndLeavesTheInverse) {
  const Bytes before = {10, 11, 12, 13, 14, 15, 16, 17};
  Bytes bytes = before;
  const StreamEdit first{.Places = GetParam().Where, .Bytes = GetParam().Inserted};
  StreamEdit edit = first;

  ASSERT_TRUE(ApplyEdit(bytes, edit));

  EXPECT_EQ(bytes, GetParam().After);
  EXPECT_EQ(edit.Places, GetParam().InverseWhere);
  EXPECT_EQ(edit.Bytes, GetParam().InverseInserted);

  ASSERT_TRUE(ApplyEdit(bytes, edit));
  EXPECT_EQ(bytes, before);
  EXPECT_EQ(edit, first);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, ApplyEditToBytes,
    testing::Values(
        BytesCase{"Nothing", {}, {}, {10, 11, 12, 13, 14, 15, 16, 17}, {}, {}},
        BytesCase{
            "ReplaceInPlace", {{2, 2, 2}}, {1, 2}, {10, 11, 1, 2, 14, 15, 16, 17}, {{2, 2, 2}}, {12, 13}},
        BytesCase{"SingleBytes",
                  {{0, 1, 1}, {3, 1, 1}, {7, 1, 1}},
                  {1, 2, 3},
                  {1, 11, 12, 2, 14, 15, 16, 3},
                  {{0, 1, 1}, {3, 1, 1}, {7, 1, 1}},
                  {10, 13, 17}},
        BytesCase{"Pairs",
                  {{0, 2, 2}, {3, 2, 2}, {6, 2, 2}},
                  {1, 2, 3, 4, 5, 6},
                  {1, 2, 12, 3, 4, 15, 5, 6},
                  {{0, 2, 2}, {3, 2, 2}, {6, 2, 2}},
                  {10, 11, 13, 14, 16, 17}},
        BytesCase{"FiveBytes",
                  {{3, 5, 5}},
                  {1, 2, 3, 4, 5},
                  {10, 11, 12, 1, 2, 3, 4, 5},
                  {{3, 5, 5}},
                  {13, 14, 15, 16, 17}},
        BytesCase{"UnevenLengths",
                  {{0, 3, 3}, {4, 1, 1}},
                  {1, 2, 3, 4},
                  {1, 2, 3, 13, 4, 15, 16, 17},
                  {{0, 3, 3}, {4, 1, 1}},
                  {10, 11, 12, 14}},
        BytesCase{
            "InsertAtStart", {{0, 0, 2}}, {1, 2}, {1, 2, 10, 11, 12, 13, 14, 15, 16, 17}, {{0, 2, 0}}, {}},
        BytesCase{"InsertInside", {{3, 0, 1}}, {1}, {10, 11, 12, 1, 13, 14, 15, 16, 17}, {{3, 1, 0}}, {}},
        BytesCase{"InsertAtEnd", {{8, 0, 1}}, {1}, {10, 11, 12, 13, 14, 15, 16, 17, 1}, {{8, 1, 0}}, {}},
        BytesCase{"RemoveAtStart", {{0, 3, 0}}, {}, {13, 14, 15, 16, 17}, {{0, 0, 3}}, {10, 11, 12}},
        BytesCase{"RemoveInside", {{2, 3, 0}}, {}, {10, 11, 15, 16, 17}, {{2, 0, 3}}, {12, 13, 14}},
        BytesCase{"RemoveAtEnd", {{6, 2, 0}}, {}, {10, 11, 12, 13, 14, 15}, {{6, 0, 2}}, {16, 17}},
        BytesCase{"RemoveAll", {{0, 8, 0}}, {}, {}, {{0, 0, 8}}, {10, 11, 12, 13, 14, 15, 16, 17}},
        BytesCase{"Shorter", {{1, 3, 1}}, {1}, {10, 1, 14, 15, 16, 17}, {{1, 1, 3}}, {11, 12, 13}},
        BytesCase{"Longer", {{1, 1, 3}}, {1, 2, 3}, {10, 1, 2, 3, 12, 13, 14, 15, 16, 17}, {{1, 3, 1}}, {11}},
        BytesCase{"GrowThenShrink",
                  {{1, 0, 2}, {3, 4, 0}},
                  {1, 2},
                  {10, 1, 2, 11, 12, 17},
                  {{1, 2, 0}, {5, 0, 4}},
                  {13, 14, 15, 16}},
        BytesCase{"ShrinkThenGrow",
                  {{0, 3, 1}, {5, 1, 4}},
                  {9, 1, 2, 3, 4},
                  {9, 13, 14, 1, 2, 3, 4, 16, 17},
                  {{0, 1, 3}, {3, 4, 1}},
                  {10, 11, 12, 15}},
        BytesCase{"SameLengthInTheEnd",
                  {{1, 2, 0}, {6, 0, 2}},
                  {1, 2},
                  {10, 13, 14, 15, 1, 2, 16, 17},
                  {{1, 0, 2}, {4, 2, 0}},
                  {11, 12}}),
    [](const auto& test) { return test.param.What; });

struct Refusal {
  const char* What;
  Places Where;
  Bytes Inserted;
};

class RefusedEdit : public testing::TestWithParam<Refusal> {};

TEST_P(RefusedEdit, ChangesNothing) {
  const Bytes file = PacketBuilder().Build();
  Bytes bytes = file;
  SupStream stream = Load(file);
  StreamEdit edit{.Places = GetParam().Where, .Bytes = GetParam().Inserted};
  const StreamEdit before = edit;

  const Result<void> applied = ApplyEdit(bytes, edit);

  EXPECT_EQ(applied.Reason(), "the change does not fit the stream");
  EXPECT_EQ(ApplyEdit(stream, edit).Reason(), "the change does not fit the stream");
  EXPECT_EQ(bytes, file);
  EXPECT_EQ(stream.RawBytes, WithZero(file));
  EXPECT_EQ(edit, before);
}

// The file has 48 bytes; the zero byte that follows them in a stream belongs to no edit.
INSTANTIATE_TEST_SUITE_P(
    Kinds, RefusedEdit,
    testing::Values(Refusal{"OutOfOrder", {{4, 1, 1}, {2, 1, 1}}, {1, 2}},
                    Refusal{"IntoTheNext", {{2, 3, 3}, {4, 1, 1}}, {1, 2, 3, 4}},
                    Refusal{"InsertPastTheEnd", {{49, 0, 1}}, {1}},
                    Refusal{"RunsPastTheEnd", {{47, 2, 2}}, {1, 2}},
                    Refusal{"StartsAtTheEndOfNumbers", {{0xFFFFFFFF, 0xFFFFFFFF, 1}}, {1}},
                    Refusal{"TooFewBytes", {{2, 2, 2}}, {1}}, Refusal{"TooManyBytes", {{2, 2, 2}}, {1, 2, 3}},
                    Refusal{"BytesWithoutPlaces", {}, {1}}),
    [](const auto& test) { return test.param.What; });

TEST(ApplyEdit, SwapsPlacesOfAnyLengthThatStaysTheSame) {
  Bytes bytes(600, 1);
  StreamEdit edit;
  edit.Replace(100, 300, Bytes(300, 2));
  edit.Replace(500, 1, Bytes{3});

  ASSERT_TRUE(ApplyEdit(bytes, edit));

  EXPECT_EQ(bytes, Join({Bytes(100, 1), Bytes(300, 2), Bytes(100, 1), {3}, Bytes(99, 1)}));
  EXPECT_EQ(edit.Places, (Places{{100, 300, 300}, {500, 1, 1}}));
  EXPECT_EQ(edit.Bytes, Bytes(301, 1));
}

TEST(ApplyEditToStream, BytesThatKeepTheirPlaceLeaveTheIndexAlone) {
  SupStream stream = Load(PacketBuilder().Time(90000).Build());
  StreamEdit edit;
  edit.Replace(2, 1, Bytes{0x77});  // the time's low byte

  ASSERT_TRUE(ApplyEdit(stream, edit));

  EXPECT_EQ(stream.RawBytes[2], 0x77);
  EXPECT_EQ(stream.StartTime, std::vector<std::int64_t>{90000});
}

TEST(ApplyEditToStream, EditThatAsksForItIsIndexedAnew) {
  SupStream stream = Load(PacketBuilder().Time(0x15F90).Build());
  StreamEdit edit{.Places = {}, .Bytes = {}, .Reindexes = true};
  edit.Replace(2, 1, Bytes{0x77});

  ASSERT_TRUE(ApplyEdit(stream, edit));
  EXPECT_EQ(stream.StartTime, std::vector<std::int64_t>{0x15F77});
  EXPECT_TRUE(edit.Reindexes);

  ASSERT_TRUE(ApplyEdit(stream, edit));
  EXPECT_EQ(stream.StartTime, std::vector<std::int64_t>{0x15F90});
}

TEST(ApplyEditToStream, InsertedPacketIsIndexed) {
  const Bytes first = PacketBuilder().Time(1).Build();
  const Bytes second = PacketBuilder().Time(2).Colour(9, 9, 9, 9).Delay(5).Build();
  const Bytes third = PacketBuilder().Time(3).Build();
  SupStream stream = Load(Join({first, third}));
  StreamEdit edit;
  edit.Replace(48, 0, second);

  ASSERT_TRUE(ApplyEdit(stream, edit));

  EXPECT_EQ(stream.RawBytes, WithZero(Join({first, second, third})));
  EXPECT_EQ(stream.Path, "film.sup");
  ExpectSameIndex(stream, Load(Join({first, second, third})));
  EXPECT_EQ(stream.EndTime, (std::vector<std::int64_t>{2, 5002, 0}));
}

TEST(ApplyEditToStream, RemovedPacketLeavesTheIndex) {
  const Bytes first = PacketBuilder().Time(1).Build();
  const Bytes second = PacketBuilder().Time(2).WithoutColour().Build();
  SupStream stream = Load(Join({first, second}));
  StreamEdit edit;
  edit.Replace(48, 48, {});

  ASSERT_TRUE(ApplyEdit(stream, edit));

  EXPECT_EQ(stream.RawBytes, WithZero(first));
  ExpectSameIndex(stream, Load(first));
}

TEST(ApplyEditToStream, FirstSubtitleThatBecomesInvalidEndsTheIndexAsWhenLoading) {
  const Bytes valid = PacketBuilder().Build();
  const Bytes invalid = PacketBuilder().WithoutColour().Build();
  SupStream stream = Load(Join({valid, valid}));
  StreamEdit edit;
  edit.Replace(0, 0, invalid);

  ASSERT_TRUE(ApplyEdit(stream, edit));
  EXPECT_EQ(stream.PacketOffset, std::vector<std::int32_t>{144});

  ASSERT_TRUE(ApplyEdit(stream, edit));
  ExpectSameIndex(stream, Load(Join({valid, valid})));
}

TEST(ApplyEditToStream, EditThatLeavesNoStreamChangesNothing) {
  const Bytes file = Join({PacketBuilder().Time(1).Build(), PacketBuilder().Time(2).Build()});
  SupStream stream = Load(file);
  StreamEdit cut;
  cut.Replace(40, 1, {});
  StreamEdit grown;
  grown.Replace(40, 0, Bytes{1});
  StreamEdit swapped{.Places = {}, .Bytes = {}, .Reindexes = true};
  swapped.Replace(0, 1, Bytes{'T'});

  for (StreamEdit* edit : {&cut, &grown, &swapped}) {
    const StreamEdit before = *edit;

    EXPECT_EQ(ApplyEdit(stream, *edit).Reason(), "no \"SP\" stands where a packet should start");

    EXPECT_EQ(stream.RawBytes, WithZero(file));
    EXPECT_EQ(stream.Path, "film.sup");
    ExpectSameIndex(stream, Load(file));
    EXPECT_EQ(*edit, before);
  }
}

TEST(ApplyEditToStream, StreamWithoutBytesTakesNoEdit) {
  SupStream stream;
  StreamEdit nothing;
  StreamEdit edit;
  edit.Replace(0, 0, Bytes{1});

  EXPECT_TRUE(ApplyEdit(stream, nothing));
  EXPECT_FALSE(ApplyEdit(stream, edit));

  EXPECT_TRUE(stream.RawBytes.empty());
}

/// Random edits, of which it is known byte by byte what they give.
class RandomEdits {
 public:
  explicit RandomEdits(std::uint32_t seed) : random_(seed) {}

  std::size_t Below(std::size_t bound) {
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random_);
  }

  Bytes SomeBytes(std::size_t count) {
    Bytes bytes(count);
    for (std::uint8_t& byte : bytes) {
      byte = static_cast<std::uint8_t>(Below(256));
    }
    return bytes;
  }

  /// An edit of `bytes`, with what they become put together by hand in `after`.
  StreamEdit Edit(const Bytes& bytes, Bytes& after) {
    StreamEdit edit;
    std::size_t at = 0;
    while (true) {
      const std::size_t kept = Below(12);
      if (at + kept > bytes.size()) {
        break;
      }
      after.insert(after.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at),
                   bytes.begin() + static_cast<std::ptrdiff_t>(at + kept));
      at += kept;
      const std::size_t removed = Below(std::min<std::size_t>(bytes.size() - at + 1, 5));
      const Bytes inserted = SomeBytes(Below(5));
      edit.Replace(at, removed, inserted);
      after.insert(after.end(), inserted.begin(), inserted.end());
      at += removed;
    }
    after.insert(after.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at), bytes.end());
    return edit;
  }

 private:
  std::mt19937 random_;
};

TEST(ApplyEdit, BytesThatAnEditDoesNotNameAreUntouchedAndTheInverseGivesTheOldOnes) {
  for (std::uint32_t seed = 0; seed < 300; ++seed) {
    SCOPED_TRACE(seed);
    RandomEdits random(seed);
    const Bytes before = random.SomeBytes(random.Below(200));
    Bytes after;
    const StreamEdit first = random.Edit(before, after);
    StreamEdit edit = first;
    Bytes bytes = before;

    ASSERT_TRUE(ApplyEdit(bytes, edit));
    ASSERT_EQ(bytes, after);
    ASSERT_TRUE(ApplyEdit(bytes, edit));
    ASSERT_EQ(bytes, before);
    ASSERT_EQ(edit, first);
  }
}

TEST(ApplyEdit, IndexIsThatOfTheSameBytesLoadedFromScratch) {
  for (std::uint32_t seed = 0; seed < 100; ++seed) {
    SCOPED_TRACE(seed);
    RandomEdits random(seed);
    Bytes before = PacketBuilder().Build();
    Bytes after = before;
    StreamEdit first;
    for (int packet = 0; packet < 12; ++packet) {
      const auto time = static_cast<std::int64_t>(random.Below(1000000));
      const Bytes some = PacketBuilder().Time(time).Delay(static_cast<unsigned>(random.Below(3))).Build();
      const Bytes other = PacketBuilder().Time(time / 2).Colour(4, 5, 6, 7).Build();
      switch (random.Below(4)) {
        case 0:
          first.Replace(before.size(), 0, other);
          after = Join({after, other, some});
          break;
        case 1:
          first.Replace(before.size(), some.size(), {});
          break;
        case 2:
          first.Replace(before.size(), some.size(), other);
          after = Join({after, other});
          break;
        default:
          after = Join({after, some});
      }
      before = Join({before, some});
    }
    first.Reindexes = true;
    SupStream stream = Load(before);
    StreamEdit edit = first;

    ASSERT_TRUE(ApplyEdit(stream, edit));
    ASSERT_EQ(stream.RawBytes, WithZero(after));
    ExpectSameIndex(stream, Load(after));
    ASSERT_TRUE(ApplyEdit(stream, edit));
    ASSERT_EQ(stream.RawBytes, WithZero(before));
    ExpectSameIndex(stream, Load(before));
    ASSERT_EQ(edit, first);
  }
}

TEST(ApplyEdit, PlacesThatDoNotAscendFitNone) {
  Bytes bytes = {1, 2, 3, 4};
  StreamEdit edit{.Places = {{.Offset = 2, .Removed = 1, .Inserted = 2}, {.Offset = 1, .Removed = 1}},
                  .Bytes = {7, 8}};
  EXPECT_EQ(ApplyEdit(bytes, edit).Reason(), "the change does not fit the stream");
  EXPECT_EQ(bytes, (Bytes{1, 2, 3, 4}));
}

TEST(ApplyEdit, BytesThatNoPlaceTakesFitNone) {
  Bytes bytes = {1, 2, 3, 4};
  StreamEdit edit{.Places = {{.Offset = 1, .Removed = 1, .Inserted = 1}}, .Bytes = {7, 8}};
  EXPECT_EQ(ApplyEdit(bytes, edit).Reason(), "the change does not fit the stream");
  EXPECT_EQ(bytes, (Bytes{1, 2, 3, 4}));
}

}  // namespace
}  // namespace quillmark
