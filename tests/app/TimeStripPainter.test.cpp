#include "app/TimeStripPainter.h"

#include <cstdint>
#include <gmock/gmock.h>
#include <optional>
#include <string>
#include <vector>

#include <QImage>
#include <QPainter>
#include <QPalette>
#include <gtest/gtest.h>

namespace quillmark::test {
namespace {

using testing::ElementsAreArray;

constexpr std::uint8_t Start = TimeColumn::Bar | TimeColumn::BarStart;

/// A strip that is painted without a window, in black on white, and its current subtitle in blue.
class PaintedStrip {
 public:
  PaintedStrip(int width, int height, double ratio = 1, int lanes = 1, const QColor& ground = Qt::white,
               const QColor& text = Qt::black)
      : picture_(width, height, QImage::Format_RGB32), painter_(&picture_) {
    picture_.fill(ground);
    QPalette palette;
    palette.setColor(QPalette::Base, ground);
    palette.setColor(QPalette::Text, text);
    palette.setColor(QPalette::Highlight, Qt::blue);
    QFont labels;
    labels.setPixelSize(200);  // which there is no room for
    Strip.emplace(painter_, palette, labels, ratio, picture_.size(), lanes);
  }

  /// A row of letters for each row of pixels.
  [[nodiscard]] std::vector<std::string> Rows() const {
    std::vector<std::string> rows;
    for (int y = 0; y < picture_.height(); ++y) {
      std::string row;
      for (int x = 0; x < picture_.width(); ++x) {
        row += LetterOf(picture_.pixel(x, y));
      }
      rows.push_back(row);
    }
    return rows;
  }
  [[nodiscard]] QRgb At(int x, int y) const { return picture_.pixel(x, y); }

 private:
  static char LetterOf(QRgb pixel) {
    switch (pixel) {
      case 0xFFFFFFFF:
        return '.';
      case 0xFF666666:  // six tenths of black
        return 'b';
      case 0xFF999999:  // four tenths
        return 'f';
      case 0xFFC40A2A:
        return 'p';
      case 0xFFA85600:
        return 'o';
      case 0xFF0000FF:
        return 'c';
      case 0xFF000000:
        return 't';
      default:
        return '?';
    }
  }

  QImage picture_;
  QPainter painter_;

 public:
  std::optional<TimeStripPainter> Strip;
};

std::vector<std::string> Times(std::size_t count, const std::string& row) {
  return std::vector<std::string>(count, row);
}

std::vector<std::string> Joined(std::initializer_list<std::vector<std::string>> parts) {
  std::vector<std::string> all;
  for (const auto& part : parts) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}

TEST(TimeStripRows, HeightHasRoomForLanesTheirGapLabelsAndTheFrame) {
  EXPECT_EQ(TimeStripRows::HeightFor(1, 0), 1 + 14 + 1);
  EXPECT_EQ(TimeStripRows::HeightFor(1, 10), 1 + 14 + 10 + 1);
  EXPECT_EQ(TimeStripRows::HeightFor(2, 10), 1 + 14 + 2 + 14 + 10 + 1);
}

TEST(TimeStripPainter, BarsAreAPixelApartAndProblemsAreRed) {
  std::vector<std::uint8_t> columns(14, 0);
  columns[2] = Start;
  columns[3] = columns[4] = columns[5] = TimeColumn::Bar;
  columns[6] = Start;  // the next one, with nothing between
  columns[7] = columns[8] = TimeColumn::Bar;
  columns[10] = Start | TimeColumn::Problem;
  columns[11] = columns[12] = TimeColumn::Bar | TimeColumn::Problem;
  PaintedStrip painted(14, 16);
  painted.Strip->DrawLane(0, columns, {.First = 0, .Last = 13});
  EXPECT_THAT(painted.Rows(), ElementsAreArray(Joined({Times(6, ".............."), Times(9, "...bbb.bb..pp."),
                                                       Times(1, "..............")})));
}

TEST(TimeStripPainter, ColumnsOutOfSightAreNotDrawn) {
  const std::vector<std::uint8_t> columns(8, TimeColumn::Bar);
  PaintedStrip painted(8, 16);
  painted.Strip->DrawLane(0, columns, {.First = 0, .Last = 4});
  EXPECT_EQ(painted.Rows()[10], "bbbbb...");
}

TEST(TimeStripPainter, OverlapsAreRaisedPartedAndThreePixelsWideAtLeast) {
  std::vector<std::uint8_t> columns(10, 0);
  columns[1] = Start;
  columns[2] = TimeColumn::Bar | TimeColumn::Overlap;
  columns[6] = columns[7] = columns[8] = columns[9] = TimeColumn::Overlap;
  PaintedStrip painted(10, 16);
  painted.Strip->DrawLane(0, columns, {.First = 0, .Last = 9});
  EXPECT_THAT(painted.Rows(),
              ElementsAreArray(Joined({Times(3, ".........."), Times(5, "..ooo.oooo"), Times(2, ".........."),
                                       Times(5, "..ooo.oooo"), Times(1, "..........")})));
}

TEST(TimeStripPainter, OnFinerScreensAllIsAsManyPixelsMore) {
  std::vector<std::uint8_t> columns(14, 0);
  columns[2] = Start;
  columns[3] = columns[4] = columns[5] = TimeColumn::Bar;
  columns[8] = TimeColumn::Overlap;
  PaintedStrip painted(16, 32, 2);
  painted.Strip->DrawLane(0, columns, {.First = 0, .Last = 13});
  EXPECT_THAT(painted.Rows(),
              ElementsAreArray(Joined({Times(7, "................"), Times(5, "........oooooo.."),
                                       Times(4, "....bb..oooooo.."), Times(5, "....bb.........."),
                                       Times(9, "....bb..oooooo.."), Times(2, "................")})));
}

TEST(TimeStripPainter, InDarkThemesProblemsAndOverlapsAreLight) {
  PaintedStrip painted(3, 16, 1, 1, QColor(50, 50, 50), Qt::white);
  painted.Strip->DrawLane(0, std::vector<std::uint8_t>{TimeColumn::Bar, TimeColumn::Problem, 0},
                          {.First = 0, .Last = 2});
  EXPECT_EQ(painted.At(0, 10), qRgb(173, 173, 173)) << "six tenths of white";
  EXPECT_EQ(painted.At(1, 10), 0xFFFF7A7A);
  EXPECT_EQ(painted.At(2, 10), qRgb(50, 50, 50));
  PaintedStrip overlap(3, 16, 1, 1, QColor(50, 50, 50), Qt::white);
  overlap.Strip->DrawLane(0, std::vector<std::uint8_t>{TimeColumn::Overlap, 0, 0}, {.First = 0, .Last = 2});
  EXPECT_EQ(overlap.At(0, 4), 0xFFFFB44A);
}

TEST(TimeStripPainter, EachLaneHasItsHalf) {
  const std::vector<std::uint8_t> columns(2, TimeColumn::Bar);
  PaintedStrip painted(2, 32, 1, 2);
  painted.Strip->DrawLane(0, columns, {.First = 0, .Last = 1});
  EXPECT_THAT(painted.Rows(), ElementsAreArray(Joined({Times(6, ".."), Times(8, "bb"), Times(18, "..")})));
  painted.Strip->DrawLane(1, columns, {.First = 0, .Last = 1});
  EXPECT_THAT(painted.Rows(), ElementsAreArray(Joined({Times(6, ".."), Times(8, "bb"), Times(7, ".."),
                                                       Times(10, "bb"), Times(1, "..")})));
}

TEST(TimeStripPainter, WedgePointsDownAtWhereAProblemStarts) {
  std::vector<std::uint8_t> columns(20, 0);
  columns[10] = TimeColumn::ProblemStart;
  columns[12] = TimeColumn::ProblemStart;  // too near to be told apart
  PaintedStrip painted(20, 16);
  painted.Strip->DrawLane(0, columns, {.First = 0, .Last = 19});
  EXPECT_EQ(painted.At(10, 4), 0xFFC40A2A);
  EXPECT_EQ(painted.At(8, 1), 0xFFC40A2A);
  EXPECT_EQ(painted.At(12, 1), 0xFFC40A2A);
  EXPECT_EQ(painted.At(10, 0), 0xFFFFFFFF);
  EXPECT_EQ(painted.At(10, 6), 0xFFFFFFFF);
  EXPECT_EQ(painted.At(5, 1), 0xFFFFFFFF);
  EXPECT_EQ(painted.At(15, 1), 0xFFFFFFFF);
  EXPECT_EQ(painted.At(13, 5), 0xFFFFFFFF);
}

TEST(TimeStripPainter, CurrentSubtitleIsABlueBarBehindABlackMark) {
  PaintedStrip painted(24, 26);
  painted.Strip->DrawCurrent(0, {.First = 10, .Last = 17});
  const std::vector<std::string> rows = painted.Rows();
  EXPECT_EQ(rows[0], "........................");
  EXPECT_EQ(rows[15], ".........ttccccccc......");
  EXPECT_EQ(rows[25], "........................");
  EXPECT_EQ(rows[5].substr(0, 20), ".........tt.........") << "above the bars";
  EXPECT_EQ(rows[6].substr(12, 8), "cccccc..");
  // The mark ends in wedges that point to each other.
  EXPECT_EQ(rows[1].substr(8, 4), "tttt");
  EXPECT_EQ(rows[24].substr(8, 4), "tttt");
  EXPECT_EQ(rows[1].front(), '.');
  EXPECT_EQ(rows[1][15], '.');
}

TEST(TimeStripPainter, CurrentSubtitleIsThreePixelsWideAtLeastAndMayBeginOutOfSight) {
  PaintedStrip narrow(12, 26);
  narrow.Strip->DrawCurrent(0, {.First = 5, .Last = 5});
  EXPECT_EQ(narrow.Rows()[15], "....ttcc....");
  PaintedStrip before(12, 26);
  before.Strip->DrawCurrent(0, {.First = -1'000'000'000'000, .Last = 3});
  EXPECT_EQ(before.Rows()[15], "cccc........");
  PaintedStrip behind(12, 26);
  behind.Strip->DrawCurrent(0, {.First = 9, .Last = 1'000'000'000'000});
  EXPECT_EQ(behind.Rows()[15], "........ttcc");
}

TEST(TimeStripPainter, ScaleIsOfFaintLinesFromTheTopToTheBottom) {
  // From half a second on, a millisecond a pixel; labels of such a font need marks two seconds apart.
  PaintedStrip painted(4500, 16);
  painted.Strip->DrawScale({.Start = 500, .Span = 4500});
  for (const int y : {0, 15}) {
    for (int x = 0; x < 4500; ++x) {
      const bool isMark = x == 1500 || x == 3500;
      ASSERT_EQ(painted.At(x, y), isMark ? qRgb(217, 217, 217) : qRgb(255, 255, 255)) << x << ' ' << y;
    }
  }
}

TEST(TimeStripPainter, FrameIsAPixelWideAllAround) {
  PaintedStrip painted(6, 5);
  painted.Strip->DrawFrame();
  EXPECT_THAT(painted.Rows(),
              ElementsAreArray(Joined({Times(1, "ffffff"), Times(3, "f....f"), Times(1, "ffffff")})));
  PaintedStrip fine(7, 6, 2);
  fine.Strip->DrawFrame();
  EXPECT_THAT(fine.Rows(),
              ElementsAreArray(Joined({Times(2, "fffffff"), Times(2, "ff...ff"), Times(2, "fffffff")})));
}

}  // namespace
}  // namespace quillmark::test
