#include "app/ImageList.h"

#include <gmock/gmock.h>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace quillmark::test {
namespace {

/// A row of letters for each row of the picture: black, the entry's colour, and nothing.
std::vector<std::string> Letters(const QImage& picture, QRgb colour) {
  std::vector<std::string> rows;
  for (int y = 0; y < picture.height(); ++y) {
    std::string row;
    for (int x = 0; x < picture.width(); ++x) {
      const QRgb pixel = picture.pixel(x, y);
      row += qAlpha(pixel) == 0 ? '.' : pixel == 0xFF000000 ? '#' : pixel == colour ? 'c' : '?';
    }
    rows.push_back(row);
  }
  return rows;
}

TEST(DrawEntryPicture, HasABlackEdgeAroundTheColourAndRoomAroundThat) {
  const QImage picture = DrawEntryPicture(MakeRgb(10, 200, 30)).toImage();
  std::vector<std::string> expected(16, ".#cccccccccccc#.");
  expected.front() = expected.back() = "................";
  expected[1] = expected[14] = ".##############.";
  EXPECT_THAT(Letters(picture, qRgb(10, 200, 30)), testing::ElementsAreArray(expected));
}

}  // namespace
}  // namespace quillmark::test
