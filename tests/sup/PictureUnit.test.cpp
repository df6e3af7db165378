#include "sup/PictureUnit.h"

#include <gmock/gmock.h>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using testing::ElementsAreArray;

/// 4 x 2 pixels at (100, 400): a line of code 1 with a 2 in front of it, and one of code 3.
const Bytes TwoLines = {2, 1, 1, 1, 3, 3, 3, 3};

UnitPicture Picture(const Bytes& cells) {
  return {.Codes = cells,
          .Width = 4,
          .Height = static_cast<int>(cells.size()) / 4,
          .X = 100,
          .Y = 400,
          .Colour = {0, 1, 2, 3},
          .Contrast = {0, 15, 15, 8},
          .Delay = 90,
          .IsForced = false};
}

Bytes Encoded(const UnitPicture& picture, std::int64_t time = 0x0102) {
  PictureUnitEncoder encoder;
  const auto packet = encoder.Encode(picture, PackTime(time));
  return packet ? Bytes(packet->begin(), packet->end()) : Bytes();
}

TEST(PictureUnit, IsAWholePacket) {
  // The top field: a run of one 2, then 1 to the line's end; the bottom one: 3 to the line's end.
  const Bytes expected =
      Join({{'S', 'P', 0x02, 0x01, 0, 0, 0, 0, 0, 0, 0x00, 0x28, 0x00, 0x09},
            {0x60, 0x00, 0x10, 0x00, 0x03},
            test::Sequence(0, 33,
                           {test::StartDisplay, test::SetColour(3, 2, 1, 0), test::SetContrast(8, 15, 15, 0),
                            test::SetArea(100, 103, 400, 401), test::SetFields(4, 7), test::EndOfSequence}),
            test::Sequence(90, 33, {test::StopDisplay, test::EndOfSequence}),
            {0xFF}});
  EXPECT_THAT(Encoded(Picture(TwoLines)), ElementsAreArray(expected));
}

TEST(PictureUnit, WithoutADelayThereIsNoStop) {
  UnitPicture picture = Picture(TwoLines);
  picture.Delay.reset();
  picture.IsForced = true;
  const Bytes expected =
      Join({{'S', 'P', 0x02, 0x01, 0, 0, 0, 0, 0, 0, 0x00, 0x22, 0x00, 0x09},
            {0x60, 0x00, 0x10, 0x00, 0x03},
            test::Sequence(0, 9,
                           {test::ForcedStart, test::SetColour(3, 2, 1, 0), test::SetContrast(8, 15, 15, 0),
                            test::SetArea(100, 103, 400, 401), test::SetFields(4, 7), test::EndOfSequence}),
            {0xFF}});
  EXPECT_THAT(Encoded(picture), ElementsAreArray(expected));
}

TEST(PictureUnit, AnOddLastLineIsOfTheTopField) {
  const Bytes cells = {1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 3};
  const Bytes packet = Encoded(Picture(cells));
  ASSERT_GT(packet.size(), 20U);
  EXPECT_THAT(Bytes(packet.begin() + 14, packet.begin() + 20), ElementsAreArray(Bytes{0, 1, 0, 3, 0, 2}));
}

TEST(PictureUnit, TellsWhereTheArgumentsStand) {
  PictureUnitEncoder encoder;
  const auto packet = encoder.Encode(Picture(TwoLines), PackTime(0));
  ASSERT_TRUE(packet);
  EXPECT_EQ((*packet)[encoder.ColourAt()], 0x32);
  EXPECT_EQ((*packet)[encoder.ColourAt() + 1], 0x10);
  EXPECT_EQ((*packet)[encoder.ContrastAt()], 0x8F);
  EXPECT_EQ((*packet)[encoder.ContrastAt() + 1], 0xF0);
}

TEST(PictureUnit, TooLargeForItsSizeFieldThereIsNone) {
  // A nibble a pixel: 720 x 100 pixels are 36,000 bytes.
  Bytes cells(72000);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    cells[i] = i % 2;
  }
  UnitPicture picture = Picture(cells);
  picture.Width = 720;
  picture.Height = 100;
  EXPECT_TRUE(Encoded(picture).empty());
  picture.Height = 80;
  EXPECT_FALSE(Encoded(picture).empty());
}

}  // namespace
}  // namespace quillmark
