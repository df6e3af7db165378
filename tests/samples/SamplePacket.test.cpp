#include "samples/SamplePacket.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark {
namespace {

TEST(SamplePacket, IsWrittenByteForByte) {
  const Caption caption = {1.0, 1.5, "", {{0, 2, 13, 12}, {0, 15, 14, 8}}};
  TextPicture picture;
  picture.X = 0x123;
  picture.Y = 0x1F0;
  picture.Width = 4;
  picture.Height = 2;
  picture.Codes = {1, 1, 1, 0,   // D0 00 00
                   2, 2, 2, 2};  // 00 02
  std::vector<std::uint8_t> stream;
  AppendSamplePacket(caption, picture, stream);
  const std::vector<std::uint8_t> expected = {
      'S',  'P',                                       // signature
      0x90, 0x5F, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00,  // 90000 ticks
      0x00, 0x28, 0x00, 0x09,                          // 40 bytes, control data at 9
      0xD0, 0x00, 0x00,                                // top field
      0x00, 0x02,                                      // bottom field
      0x00, 0x00, 0x00, 0x21,                          // at once; the next sequence at 33
      0x01,                                            // start display
      0x03, 0xCD, 0x20,                                // colours of codes 3 to 0
      0x04, 0x8E, 0xF0,                                // contrasts
      0x05, 0x12, 0x31, 0x26, 0x1F, 0x01, 0xF1,        // x 0x123-0x126, y 0x1F0-0x1F1
      0x06, 0x00, 0x04, 0x00, 0x07,                    // fields at 4 and 7
      0xFF,                                            // end
      0x00, 0x2D, 0x00, 0x21,                          // after 45 x 1000 ticks; points to itself
      0x02,                                            // stop display
      0xFF, 0xFF};                                     // end, padding to an even size
  EXPECT_EQ(stream, expected);
}

TEST(SamplePacket, PacketsFollowOneAnother) {
  const Caption caption = {1.0, 1.5, "", {}};
  TextPicture picture;
  picture.Width = 2;
  picture.Height = 2;
  picture.Codes = {0, 0, 0, 0};
  std::vector<std::uint8_t> stream;
  AppendSamplePacket(caption, picture, stream);
  const std::size_t length = stream.size();
  AppendSamplePacket(caption, picture, stream);
  ASSERT_EQ(stream.size(), 2 * length);
  EXPECT_TRUE(std::equal(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(length),
                         stream.begin() + static_cast<std::ptrdiff_t>(length)));
}

}  // namespace
}  // namespace quillmark
