// Streams that other programs encoded, against what an independent decoder reads from them; see
// tests/data/streams/README.md.

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <span>
#include <string>
#include <vector>
#include <zlib.h>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "render/FieldDecoder.h"
#include "sup/SpuControl.h"
#include "sup/StreamLoader.h"
#include "sup/SupStream.h"
#include "tests/support/Abandon.h"
#include "tests/support/LoadedStream.h"

namespace quillmark {
namespace {

using nlohmann::json;

/// What a cell is before it is decoded; no pixel code has this value.
constexpr std::uint8_t Untouched = 9;

std::filesystem::path StreamFile(const std::string& name) {
  return std::filesystem::path(QUILLMARK_TEST_DATA) / "streams" / name;
}

json ReadFacts(const std::string& name) {
  std::ifstream file(StreamFile(name + ".json"));
  return json::parse(file).at("subtitles");
}

/// The code pictures of all subtitles, one byte a pixel.
std::vector<std::uint8_t> ReadCodes(const std::string& name) {
  const gzFile file = gzopen(StreamFile(name + ".codes.gz").string().c_str(), "rb");
  if (file == nullptr) {
    test::Abandon("no code pictures of " + name);
  }
  std::vector<std::uint8_t> codes;
  std::array<std::uint8_t, 65536> part = {};
  int length = 0;
  while ((length = gzread(file, part.data(), part.size())) > 0) {
    codes.insert(codes.end(), part.begin(), part.begin() + length);
  }
  gzclose(file);
  return codes;
}

struct DecodedUnit {
  std::size_t Width = 0;
  std::size_t Height = 0;
  std::vector<std::uint8_t> Codes;

  [[nodiscard]] std::span<const std::uint8_t> Line(std::size_t y) const {
    return std::span(Codes).subspan(y * Width, Width);
  }
};

/// Decodes a whole unit to bare pixel codes.
DecodedUnit Decode(std::span<const std::uint8_t> unit, const SpuControl& control) {
  DecodedUnit picture = {.Width = static_cast<std::size_t>(control.Width()),
                         .Height = static_cast<std::size_t>(control.Height()),
                         .Codes = {}};
  picture.Codes.assign(picture.Width * picture.Height, Untouched);
  const CodeTable<std::uint8_t> bareCodes = {0, 1, 2, 3};
  DecodeFields<std::uint8_t>(unit, picture.Codes, control.Width(), control.Height(), control.TopFieldOffset,
                             control.BottomFieldOffset, bareCodes);
  return picture;
}

struct NamedStream {
  std::string Name;
  std::int32_t Count;
};

void PrintTo(const NamedStream& stream, std::ostream* out) {
  *out << stream.Name;
}

class OtherEncoders : public testing::TestWithParam<NamedStream> {
 protected:
  void SetUp() override {
    facts_ = ReadFacts(GetParam().Name);
    stream_ = test::StreamOf(LoadPrimaryStream(StreamFile(GetParam().Name + ".sup")));
    ASSERT_EQ(stream_.Count, GetParam().Count);
    ASSERT_EQ(facts_.size(), static_cast<std::size_t>(GetParam().Count));
  }

  /// The unit of subtitle `index` and what its control sequences say.
  struct Unit {
    std::vector<std::uint8_t> Bytes;
    SpuControl Control;
  };
  [[nodiscard]] Unit UnitOf(std::size_t index) const {
    Unit unit;
    CopyUnit(stream_, index, unit.Bytes);
    unit.Control = DecodeControl(unit.Bytes, stream_.ControlOffset[index]);
    return unit;
  }

  json facts_;
  SupStream stream_;
};

TEST_P(OtherEncoders, LoadWithoutParseErrors) {
  EXPECT_EQ(stream_.Stats.ParseErrors, 0);
}

TEST_P(OtherEncoders, PacketsStandWhereTheyShould) {
  for (std::size_t i = 0; i < facts_.size(); ++i) {
    SCOPED_TRACE("subtitle " + std::to_string(i + 1));
    EXPECT_EQ(json(stream_.PacketOffset[i]), facts_[i]["packet_offset"]);
    EXPECT_EQ(json(stream_.StartTime[i]), facts_[i]["time_ticks"]);
    EXPECT_EQ(json(stream_.SpuSize[i]), facts_[i]["spu_size"]);
    EXPECT_EQ(json(stream_.ControlOffset[i]), facts_[i]["control_offset"]);
  }
}

TEST_P(OtherEncoders, ControlSequencesSayTheSame) {
  for (std::size_t i = 0; i < facts_.size(); ++i) {
    SCOPED_TRACE("subtitle " + std::to_string(i + 1));
    const SpuControl control = UnitOf(i).Control;
    const json& stopDelay = facts_[i]["stop_delay"];

    EXPECT_TRUE(control.IsValid());
    EXPECT_EQ(json({control.X1, control.X2, control.Y1, control.Y2}), facts_[i]["area_x1_x2_y1_y2"]);
    EXPECT_EQ(json(control.Colour), facts_[i]["colour_of_code_0_to_3"]);
    EXPECT_EQ(json(control.Contrast), facts_[i]["contrast_of_code_0_to_3"]);
    EXPECT_EQ(json({control.TopFieldOffset, control.BottomFieldOffset}),
              facts_[i]["field_offsets_top_bottom"]);
    EXPECT_EQ(json(control.Delay), stopDelay.is_null() ? json(0) : stopDelay);
  }
}

TEST_P(OtherEncoders, SubtitlesEndAtTheirDelayOrWhereTheNextOneStarts) {
  for (std::size_t i = 0; i < facts_.size(); ++i) {
    SCOPED_TRACE("subtitle " + std::to_string(i + 1));
    const json& stopDelay = facts_[i]["stop_delay"];
    std::int64_t end = 0;
    if (!stopDelay.is_null()) {
      end = facts_[i]["time_ticks"].get<std::int64_t>() + 1000 * stopDelay.get<std::int64_t>();
    } else if (i + 1 < facts_.size()) {
      end = facts_[i + 1]["time_ticks"];
    }
    EXPECT_EQ(stream_.EndTime[i], end);
  }
}

TEST_P(OtherEncoders, AssignedBytesAreThoseOfTheCommands) {
  for (std::size_t i = 0; i < facts_.size(); ++i) {
    SCOPED_TRACE("subtitle " + std::to_string(i + 1));
    const auto nibblesAt = [&](std::int32_t position) {
      const std::uint8_t first = stream_.RawBytes[static_cast<std::size_t>(position)];
      const std::uint8_t second = stream_.RawBytes[static_cast<std::size_t>(position) + 1];
      return json({second & 0x0F, second >> 4, first & 0x0F, first >> 4});
    };
    EXPECT_EQ(nibblesAt(stream_.ColourBytesOffset[i]), facts_[i]["colour_of_code_0_to_3"]);
    EXPECT_EQ(nibblesAt(stream_.ContrastBytesOffset[i]), facts_[i]["contrast_of_code_0_to_3"]);
  }
}

TEST_P(OtherEncoders, PicturesAreTheSameButForTheLastLineOfAnOddHeight) {
  const std::vector<std::uint8_t> codes = ReadCodes(GetParam().Name);
  for (std::size_t i = 0; i < facts_.size(); ++i) {
    SCOPED_TRACE("subtitle " + std::to_string(i + 1));
    const Unit unit = UnitOf(i);
    const DecodedUnit picture = Decode(unit.Bytes, unit.Control);
    ASSERT_EQ(json(picture.Width), facts_[i]["width"]);
    ASSERT_EQ(json(picture.Height), facts_[i]["height"]);
    const std::size_t codesAt = facts_[i]["codes_at"];
    ASSERT_LE(codesAt + picture.Codes.size(), codes.size());
    DecodedUnit expected = picture;
    expected.Codes.assign(codes.data() + codesAt, codes.data() + codesAt + picture.Codes.size());

    const std::size_t decodedLines = picture.Height - picture.Height % 2;
    for (std::size_t y = 0; y < decodedLines; ++y) {
      ASSERT_TRUE(std::ranges::equal(picture.Line(y), expected.Line(y))) << "line " << y;
    }
    for (std::size_t y = decodedLines; y < picture.Height; ++y) {
      EXPECT_TRUE(std::ranges::all_of(picture.Line(y), [](std::uint8_t code) { return code == Untouched; }));
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Streams, OtherEncoders,
                         testing::Values(NamedStream{"spumux-pal", 34}, NamedStream{"dvdauthor-ntsc", 34},
                                         NamedStream{"lavc-pal", 17}, NamedStream{"merge-primary", 40},
                                         NamedStream{"merge-secondary", 36}),
                         [](const auto& instance) {
                           std::string name = instance.param.Name;
                           std::ranges::replace(name, '-', '_');
                           return name;
                         });

}  // namespace
}  // namespace quillmark
