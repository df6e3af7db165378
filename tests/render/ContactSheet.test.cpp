#include "render/ContactSheet.h"

#include <cerrno>
#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QGuiApplication>
#include <QImage>
#include <gtest/gtest.h>

#include "files/SystemCalls.h"
#include "tests/support/FolderTest.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark {
namespace {

using test::Bytes;
using test::Join;
using test::PacketBuilder;
using test::Second;
using test::Sound;
using testing::ElementsAre;
using testing::HasSubstr;

class ContactSheet : public test::FolderTest {
 protected:
  void SetUp() override {
    FolderTest::SetUp();
    // Text needs one; it stays for all tests of the program.
    if (QCoreApplication::instance() == nullptr) {
      static int count = 1;
      static char name[] = "test_render";
      static char* arguments[] = {name, nullptr};
      new QGuiApplication(count, arguments);
    }
  }

  Result<ContactSheetResult> Write(const SupStream& stream, const ContactSheetOptions& options = {},
                                   const Progress& progress = {}) {
    return WriteContactSheet(stream, Path("film.png"), options, progress);
  }
};

SupStream StreamOf(int subtitles) {
  Bytes file;
  for (int i = 0; i < subtitles; ++i) {
    const Bytes packet = Sound(i * 2 * Second).Build();
    file.insert(file.end(), packet.begin(), packet.end());
  }
  return test::Index(file);
}

/// A full frame of code 1, whose colour is opaque.
Bytes FullFrame(unsigned lines) {
  Bytes fields;
  for (unsigned line = 0; line < lines; ++line) {
    fields.push_back(0x00);
    fields.push_back(0x01);
  }
  const unsigned control = 4 + static_cast<unsigned>(fields.size());
  return Join({fields, test::Sequence(0, control,
                                      {test::StartDisplay, test::SetColour(3, 2, 2, 0),
                                       test::SetContrast(15, 15, 15, 0), test::SetArea(0, 719, 0, lines - 1),
                                       test::SetFields(4, 4 + lines), test::EndOfSequence})});
}

/// Where a page's frames stand, by row and column.
QRect Cell(int row, int column, int height) {
  return {24 + column * (360 + 16), 24 + row * (26 + height + 16) + 26, 360, height};
}

/// How many of the area's pixels are dark.
int DarkPixels(const QImage& page, const QRect& area) {
  int dark = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x) {
      dark += qGray(page.pixel(x, y)) < 100 ? 1 : 0;
    }
  }
  return dark;
}

TEST_F(ContactSheet, PagesOfTwentyFour) {
  const auto written = Write(StreamOf(25));
  ASSERT_TRUE(written) << written.Reason();
  EXPECT_EQ(written->Subtitles, 25);
  EXPECT_EQ(written->Pages, 2);
  EXPECT_THAT(Names(), ElementsAre("film_001.png", "film_002.png"));
  const QImage page(Path("film_001.png"));
  EXPECT_EQ(page.size(), QSize(1536, 2 * 24 + 6 * (26 + 288) + 5 * 16 + 32));
  EXPECT_EQ(QImage(Path("film_002.png")).size(), page.size());
}

TEST_F(ContactSheet, AFullPageIsTheOnlyOne) {
  EXPECT_THAT(ContactSheetPaths("film", StreamOf(24), SubtitleSet::All()), ElementsAre("./film_001.png"));
  const auto written = Write(StreamOf(24));
  ASSERT_TRUE(written);
  EXPECT_EQ(written->Pages, 1);
}

TEST_F(ContactSheet, AFrameIsDrawnWithThePaletteAtHalfItsSize) {
  const auto stream = test::Index(
      Join({Sound().Build(), PacketBuilder().Time(Second).Unit(FullFrame(480)).ControlOffset(964).Build()}));
  DvdPalette palette = StartUpPalette;
  palette[2] = MakeRgb(10, 20, 30);
  ASSERT_TRUE(Write(stream, {.Palette = palette, .FrameHeight = 480}));
  const QImage page(Path("film_001.png"));
  const QRect cell = Cell(0, 1, 240);
  for (const QPoint& at : {cell.topLeft(), cell.center(), cell.bottomRight()}) {
    EXPECT_EQ(page.pixel(at), qRgb(10, 20, 30));
  }
  EXPECT_EQ(page.pixel(cell.right() + 1, cell.top()), 0xFFFFFFFFU);
  // What the one before it shows is the checker and nothing else, up to four pixels.
  EXPECT_EQ(page.pixel(Cell(0, 0, 240).center()), 0xFF3C3C3CU);
}

TEST_F(ContactSheet, RowsStandBelowEachOther) {
  ASSERT_TRUE(Write(StreamOf(9)));
  const QImage page(Path("film_001.png"));
  for (int row = 0; row < 3; ++row) {
    const QRect frame = Cell(row, 0, 288);
    for (const QPoint& corner : {frame.topLeft(), frame.bottomRight()}) {
      EXPECT_NE(page.pixel(corner), 0xFFFFFFFFU) << row;
    }
    EXPECT_EQ(page.pixel(frame.bottomRight() + QPoint(0, 1)), 0xFFFFFFFFU) << row;
  }
}

TEST_F(ContactSheet, EveryFrameStartsFromTheBackground) {
  const auto stream = test::Index(
      Join({PacketBuilder().Unit(FullFrame(480)).ControlOffset(964).Build(), Sound(Second).Build()}));
  ASSERT_TRUE(Write(stream));
  const QImage page(Path("film_001.png"));
  const QRgb dark = page.pixel(Cell(0, 1, 288).topLeft() + QPoint(3, 3));
  EXPECT_EQ(dark, 0xFF3C3C3CU);
  EXPECT_EQ(page.pixel(Cell(0, 1, 288).topLeft() + QPoint(11, 3)), 0xFF787878U);
}

TEST_F(ContactSheet, NumberAndTimesStandAboveTheFrame) {
  ASSERT_TRUE(Write(StreamOf(2)));
  const QImage page(Path("film_001.png"));
  for (int column = 0; column < 2; ++column) {
    const QRect frame = Cell(0, column, 288);
    const QRect caption(frame.left(), frame.top() - 26, 360, 26);
    EXPECT_GT(DarkPixels(page, caption.adjusted(0, 0, -320, 0)), 5) << "number";
    EXPECT_GT(DarkPixels(page, caption.adjusted(100, 0, 0, 0)), 100) << "times";
  }
  const QRect none = Cell(0, 2, 288);
  EXPECT_EQ(DarkPixels(page, none.adjusted(0, -26, 0, 0)), 0);
}

TEST_F(ContactSheet, OneWithAnEndHasTwoTimes) {
  ASSERT_TRUE(Write(test::Index(Join({Sound(0).Delay(90).Build(), Sound(2 * Second).Delay(0).Build()}))));
  const QImage page(Path("film_001.png"));
  const auto times = [&page](int column) {
    const QRect frame = Cell(0, column, 288);
    return DarkPixels(page, QRect(frame.left() + 100, frame.top() - 26, 260, 26));
  };
  EXPECT_GT(2 * times(0), 3 * times(1));
}

/// In how many of the area's lines anything dark stands.
int DarkLines(const QImage& page, const QRect& area) {
  int lines = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    lines += DarkPixels(page, QRect(area.left(), y, area.width(), 1)) > 0 ? 1 : 0;
  }
  return lines;
}

// Digits alone, and all are of one height.
TEST_F(ContactSheet, NumberIsAsHighAsTheTimes) {
  ASSERT_TRUE(Write(StreamOf(1)));
  const QImage page(Path("film_001.png"));
  const QRect frame = Cell(0, 0, 288);
  const QRect caption(frame.left(), frame.top() - 26, 360, 26);
  EXPECT_GT(DarkLines(page, caption), 10) << "of the 17 that letters have";
  EXPECT_NEAR(DarkLines(page, caption.adjusted(0, 0, -320, 0)),
              DarkLines(page, caption.adjusted(100, 0, 0, 0)), 1);
  const auto firstDarkLine = [&page](QRect area) {
    while (!area.isEmpty() && DarkPixels(page, QRect(area.topLeft(), QSize(area.width(), 1))) == 0) {
      area.setTop(area.top() + 1);
    }
    return area.top();
  };
  EXPECT_NEAR(firstDarkLine(caption.adjusted(0, 0, -320, 0)), firstDarkLine(caption.adjusted(100, 0, 0, 0)),
              1);
}

/// How many letters stand side by side in the area, with light columns between them.
int DarkLetters(const QImage& page, const QRect& area) {
  int letters = 0;
  bool before = false;
  for (int x = area.left(); x <= area.right(); ++x) {
    const bool isDark = DarkPixels(page, QRect(x, area.top(), 1, area.height())) > 0;
    letters += isDark && !before ? 1 : 0;
    before = isDark;
  }
  return letters;
}

TEST_F(ContactSheet, NumbersCountFromOne) {
  ASSERT_TRUE(Write(StreamOf(10)));
  const QImage page(Path("film_001.png"));
  // The first one, the ninth, and the tenth, which is the first with two digits.
  for (const auto& [number, letters] : {std::pair(1, 1), {9, 1}, {10, 2}}) {
    const QRect frame = Cell((number - 1) / 4, (number - 1) % 4, 288);
    EXPECT_EQ(DarkLetters(page, {frame.left(), frame.top() - 26, 40, 26}), letters) << number;
  }
}

/// In the middle of what lies below the last row of frames.
TEST_F(ContactSheet, PageNumberStandsInTheMiddleOfTheFoot) {
  ASSERT_TRUE(Write(StreamOf(1)));
  const QImage page(Path("film_001.png"));
  const QRect foot(0, page.height() - 56, page.width(), 56);
  int first = foot.bottom();
  int last = foot.top();
  for (int y = foot.top(); y <= foot.bottom(); ++y) {
    for (int x = 0; x < page.width(); ++x) {
      if (page.pixel(x, y) != page.pixel(0, foot.top())) {
        first = std::min(first, y);
        last = std::max(last, y);
      }
    }
  }
  EXPECT_NEAR((first + last) / 2, foot.center().y(), 4);
}

TEST_F(ContactSheet, PageNumberIsGreyThatTheCaptionsComeFirst) {
  ASSERT_TRUE(Write(StreamOf(1)));
  const QImage page(Path("film_001.png"));
  int darkest = 255;
  for (int y = page.height() - 56; y < page.height(); ++y) {
    for (int x = 0; x < page.width(); ++x) {
      darkest = std::min(darkest, qGray(page.pixel(x, y)));
    }
  }
  EXPECT_GE(darkest, 0x70);
  EXPECT_LT(darkest, 0xB0);
}

TEST_F(ContactSheet, WhatCannotBeConvertedHasItsPlace) {
  const auto written = Write(test::Index(Join(
      {Sound().Build(), Sound(Second).WithoutArea().Build(), Sound(2 * Second).Area(5, 4, 0, 1).Build()})));
  ASSERT_TRUE(written);
  EXPECT_EQ(written->Subtitles, 3);
  EXPECT_GT(DarkPixels(QImage(Path("film_001.png")), Cell(0, 2, 288)), 0);
}

TEST_F(ContactSheet, OnlyTheChosenOnes) {
  const auto written = Write(StreamOf(30), {.Only = *SubtitleSet::Parse("3,29-")});
  ASSERT_TRUE(written);
  EXPECT_EQ(written->Subtitles, 3);
  EXPECT_EQ(written->Pages, 1);
}

TEST_F(ContactSheet, PathsAreThoseThatAreWritten) {
  const auto paths = ContactSheetPaths(Path("film.png"), StreamOf(25), SubtitleSet::All());
  EXPECT_THAT(paths, ElementsAre(Path("film_001.png"), Path("film_002.png")));
  EXPECT_THAT(ContactSheetPaths("film", StreamOf(1), SubtitleSet::All()), ElementsAre("./film_001.png"));
  EXPECT_THAT(ContactSheetPaths(".png", StreamOf(1), SubtitleSet::All()), ElementsAre("./.png_001.png"));
  EXPECT_THAT(ContactSheetPaths("film.v2", StreamOf(1), SubtitleSet::All()),
              ElementsAre("./film.v2_001.png"));
}

TEST_F(ContactSheet, WhatIsThereIsRefusedByName) {
  Put("film_002.png", "mine");
  const auto written = Write(StreamOf(25));
  EXPECT_EQ(written.Reason(), "already there: " + Path("film_002.png").toStdString());
  EXPECT_THAT(Names(), ElementsAre("film_002.png"));
  ASSERT_TRUE(Write(StreamOf(25), {.Existing = Overwriting::Allowed}));
  EXPECT_FALSE(QImage(Path("film_002.png")).isNull());
}

TEST_F(ContactSheet, CancelledNothingIsThere) {
  const auto cancelled =
      Write(StreamOf(60), {}, [](std::uint64_t done, std::uint64_t /*of*/) { return done < 50; });
  ASSERT_TRUE(cancelled);
  EXPECT_EQ(cancelled->How, Completion::Cancelled);
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ContactSheet, AFolderThatIsMissingIsNamed) {
  EXPECT_THAT(WriteContactSheet(StreamOf(1), Path("none/film")).Reason(), HasSubstr("none: No such file"));
}

TEST_F(ContactSheet, CancelledAtTheEndNothingIsThere) {
  const auto cancelled =
      Write(StreamOf(2), {}, [](std::uint64_t done, std::uint64_t of) { return done < of; });
  ASSERT_TRUE(cancelled);
  EXPECT_EQ(cancelled->How, Completion::Cancelled);
  EXPECT_THAT(Names(), ElementsAre());
}

TEST_F(ContactSheet, AFolderInAPagesPlaceIsNamed) {
  ASSERT_TRUE(QDir(Folder()).mkdir("film_001.png"));
  const auto goOn = [](std::uint64_t, std::uint64_t) { return true; };
  EXPECT_THAT(Write(StreamOf(1), {.Existing = Overwriting::Allowed}, goOn).Reason(),
              HasSubstr("film_001.png: It is a folder"));
  EXPECT_THAT(Names(), ElementsAre("film_001.png"));
}

TEST_F(ContactSheet, APageThatDoesNotFitTheDiskIsNamed) {
  const SystemCalls calls = System();
  System().Write = [](int, const void*, std::size_t) -> std::ptrdiff_t {
    errno = ENOSPC;
    return -1;
  };
  const auto written = Write(StreamOf(1));
  System() = calls;
  EXPECT_EQ(written.Reason(), "film_001.png: No space left on device");
  EXPECT_THAT(Names(), ElementsAre());
}

/// Suites of this ending are run before all others, which make what draws text.
TEST(ContactSheetDeathTest, WithoutADisplayThereIsNoText) {
  if (QCoreApplication::instance() != nullptr) {
    GTEST_SKIP() << "needs to be the first test of its program";
  }
  EXPECT_EQ(WriteContactSheet(StreamOf(1), "film").Reason(), "text cannot be drawn without a display");
}

}  // namespace
}  // namespace quillmark
