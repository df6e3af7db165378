#include "app/TimeStrip.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <vector>

#include <QApplication>
#include <QGuiApplication>
#include <QHelpEvent>
#include <QImage>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPointingDevice>
#include <QScreen>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "app/TimeStripPainter.h"
#include "tests/app/Contrast.h"
#include "tests/app/Screens.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// One subtitle every ten seconds, shown for five.
std::vector<TimeBar> Film(int subtitles) {
  std::vector<TimeBar> bars;
  for (int i = 0; i < subtitles; ++i) {
    bars.push_back(BarOf(i * 10 * Second, (i * 10 + 5) * Second));
  }
  return bars;
}

PacketMarks With(StreamProblemCode code) {
  PacketMarks marks;
  marks.Add(code);
  return marks;
}

class TimeStripTest : public testing::Test {
 protected:
  TimeStripTest() {
    Strip.resize(1000, Strip.sizeHint().height());
    QObject::connect(&Strip, &TimeStrip::Chosen, &Strip,
                     [this](std::size_t index) { Chosen.push_back(index); });
    Strip.show();
    QCoreApplication::processEvents();
  }

  /// The logical coordinate of a time.
  [[nodiscard]] int At(double seconds) const {
    return qRound((seconds * 1000 - Strip.View().Start) / Strip.View().Span * Strip.width());
  }
  [[nodiscard]] double TimeAt(int x) const {
    return (Strip.View().Start + x * Strip.View().Span / Strip.width()) / 1000;
  }
  void Turn(int x, int notches, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const QPointF place(x, Strip.height() / 2.0);
    QWheelEvent wheel(place, Strip.mapToGlobal(place), {}, {0, notches * 120}, Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Strip, &wheel);
  }
  [[nodiscard]] QString TipAt(const QPoint& place) {
    QHelpEvent help(QEvent::ToolTip, place, Strip.mapToGlobal(place));
    EXPECT_TRUE(QApplication::sendEvent(&Strip, &help));
    const QString tip = QToolTip::text();
    QToolTip::hideText();
    return tip;
  }
  [[nodiscard]] QImage Shown() { return Strip.grab().toImage().convertToFormat(QImage::Format_RGB32); }
  /// The colours in a column of the picture.
  [[nodiscard]] std::vector<QRgb> Column(int x) {
    const QImage shown = Shown();
    std::vector<QRgb> colours;
    for (int y = 0; y < shown.height(); ++y) {
      colours.push_back(shown.pixel(x, y));
    }
    return colours;
  }

  TimeStrip Strip;
  std::vector<std::size_t> Chosen;
};

TEST_F(TimeStripTest, AClickGoesToTheSubtitleThere) {
  Strip.SetLane(0, Film(10));
  QTest::mouseClick(&Strip, Qt::LeftButton, {}, {At(42), 5});
  QTest::mouseClick(&Strip, Qt::LeftButton, {}, {At(72), 5});
  EXPECT_THAT(Chosen, ElementsAre(4U, 7U));
}

TEST_F(TimeStripTest, AClickBetweenSubtitlesGoesToTheNearest) {
  Strip.SetLane(0, Film(10));
  QTest::mouseClick(&Strip, Qt::LeftButton, {}, {At(46), 5});
  QTest::mouseClick(&Strip, Qt::LeftButton, {}, {At(49), 5});
  EXPECT_THAT(Chosen, ElementsAre(4U, 5U));
}

TEST_F(TimeStripTest, OfTwoThatAreShownTheLaterOneIsMeant) {
  Strip.SetLane(0, {BarOf(0, 50 * Second), BarOf(30 * Second, 60 * Second), BarOf(90 * Second, 99 * Second)});
  EXPECT_EQ(Strip.SubtitleAt(At(20)), 0U);
  EXPECT_EQ(Strip.SubtitleAt(At(40)), 1U);
  Strip.SetLane(0, {BarOf(30 * Second, 60 * Second), BarOf(0, 50 * Second), BarOf(90 * Second, 99 * Second)});
  EXPECT_EQ(Strip.SubtitleAt(At(40)), 0U);
}

TEST_F(TimeStripTest, OfTwoThatBeginTogetherTheFirstIsMeant) {
  Strip.SetLane(0, {BarOf(30 * Second, 60 * Second), BarOf(30 * Second, 60 * Second)});
  EXPECT_EQ(Strip.SubtitleAt(At(40)), 0U);
}

TEST_F(TimeStripTest, ClicksWithOtherButtonsOrWithoutAStreamAreNothing) {
  QTest::mouseClick(&Strip, Qt::LeftButton, {}, {100, 5});
  Strip.SetLane(0, Film(10));
  QTest::mouseClick(&Strip, Qt::RightButton, {}, {100, 5});
  EXPECT_THAT(Chosen, IsEmpty());
}

TEST_F(TimeStripTest, TheWholeFilmIsSeenAtFirst) {
  Strip.SetLane(0, Film(10));
  EXPECT_LE(Strip.View().Start, 0);
  EXPECT_GE(Strip.View().Start + Strip.View().Span, 95'000);
  EXPECT_LE(Strip.View().Span, 100'000);
}

/// With a hundredth of its length before and behind it.
TEST_F(TimeStripTest, AnotherFilmIsSeenFromItsOwnStart) {
  Strip.SetLane(0, Film(10));
  Strip.SetLane(0, {BarOf(1000 * Second, 1005 * Second), BarOf(1090 * Second, 1100 * Second)});
  EXPECT_DOUBLE_EQ(Strip.View().Start, 999'000);
  EXPECT_DOUBLE_EQ(Strip.View().Span, 102'000);
  EXPECT_EQ(Strip.accessibleDescription(), "2 subtitles from 0:16:40.00 to 0:18:20.00");
}

TEST_F(TimeStripTest, TheWheelZoomsAtThePointer) {
  Strip.SetLane(0, Film(1000));
  const TimeView whole = Strip.View();
  const double time = TimeAt(300);
  Turn(300, 3);
  EXPECT_NEAR(Strip.View().Span, whole.Span / 1.25 / 1.25 / 1.25, 1);
  EXPECT_NEAR(TimeAt(300), time, 0.01);
  Turn(300, -3);
  EXPECT_NEAR(Strip.View().Span, whole.Span, 1);
  Turn(300, -1);
  EXPECT_EQ(Strip.View(), whole);  // no further than the film
  Turn(300, 1);
  EXPECT_NEAR(Strip.View().Span, whole.Span / 1.25, 1);
}

TEST_F(TimeStripTest, FingersZoomWhereTheyAre) {
  Strip.SetLane(0, Film(1000));
  const TimeView whole = Strip.View();
  const auto spread = [this](Qt::NativeGestureType type, double value) {
    const QPointF place(300, 5);
    QNativeGestureEvent gesture(type, QPointingDevice::primaryPointingDevice(), 2, place, place,
                                Strip.mapToGlobal(place), value, {});
    return QApplication::sendEvent(&Strip, &gesture);
  };
  const double time = TimeAt(300);
  EXPECT_TRUE(spread(Qt::ZoomNativeGesture, 3));
  EXPECT_NEAR(Strip.View().Span, whole.Span / 4, 1);
  EXPECT_NEAR(TimeAt(300), time, 0.01);
  EXPECT_TRUE(spread(Qt::ZoomNativeGesture, -0.5));
  EXPECT_NEAR(Strip.View().Span, whole.Span / 2, 1);
  EXPECT_FALSE(spread(Qt::RotateNativeGesture, 3));
  EXPECT_NEAR(Strip.View().Span, whole.Span / 2, 1);
  spread(Qt::ZoomNativeGesture, 9);
  EXPECT_TRUE(spread(Qt::ZoomNativeGesture, -2)) << "as far as they can be closed";
  EXPECT_NEAR(Strip.View().Span, whole.Span / 2, 1);
}

/// What the strip stands in does not scroll as well.
TEST_F(TimeStripTest, TheWheelIsTheStripsAlone) {
  class Around : public QWidget {
   public:
    int Turned = 0;

   protected:
    void wheelEvent(QWheelEvent* /*event*/) override { ++Turned; }
  };
  Around around;
  TimeStrip strip(&around);
  strip.resize(300, 40);
  const QPointF place(10, 10);
  QWheelEvent wheel(place, strip.mapToGlobal(place), {}, {0, 120}, Qt::NoButton, Qt::NoModifier,
                    Qt::NoScrollPhase, false);
  QSpontaneKeyEvent::setSpontaneous(&wheel);
  QApplication::instance()->notify(&strip, &wheel);
  EXPECT_EQ(around.Turned, 0);
}

TEST(TimeStrip, TakesTheRoomThatItsStreamsNeed) {
  QWidget window;
  QVBoxLayout rows(&window);
  TimeStrip strip;
  rows.addWidget(&strip);
  rows.addStretch();
  window.resize(400, 300);
  window.show();
  strip.SetLane(0, Film(10));
  QCoreApplication::processEvents();
  const int one = strip.height();
  strip.SetLane(1, Film(10));
  QCoreApplication::processEvents();
  EXPECT_GT(strip.height(), one);
  strip.SetLane(1, {});
  QCoreApplication::processEvents();
  EXPECT_EQ(strip.height(), one);
  QFont font = strip.font();
  font.setPointSize(2 * font.pointSize());
  strip.setFont(font);
  QCoreApplication::processEvents();
  EXPECT_GT(strip.height(), one);
}

TEST_F(TimeStripTest, ZoomEndsAtTwoSeconds) {
  Strip.SetLane(0, Film(1000));
  Turn(300, 100);
  EXPECT_EQ(Strip.View().Span, 2000);
}

TEST_F(TimeStripTest, TheWheelWithShiftMoves) {
  Strip.SetLane(0, Film(1000));
  Turn(300, 10);
  const TimeView before = Strip.View();
  Turn(300, -2, Qt::ShiftModifier);
  EXPECT_NEAR(Strip.View().Start, before.Start + 0.2 * before.Span, 1);
  EXPECT_EQ(Strip.View().Span, before.Span);
  Turn(300, 1000, Qt::ShiftModifier);
  EXPECT_LE(Strip.View().Start, 0);
}

TEST_F(TimeStripTest, TheWheelThatIsTurnedSidewaysMoves) {
  Strip.SetLane(0, Film(1000));
  Turn(300, 10);
  const TimeView before = Strip.View();
  QWheelEvent wheel(QPointF(300, 5), Strip.mapToGlobal(QPointF(300, 5)), {}, {-120, 0}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&Strip, &wheel);
  EXPECT_NEAR(Strip.View().Start, before.Start + 0.1 * before.Span, 1);
  EXPECT_EQ(Strip.View().Span, before.Span);
}

TEST_F(TimeStripTest, DraggingMovesAndChoosesNothing) {
  Strip.SetLane(0, Film(1000));
  Turn(500, 10);
  const TimeView before = Strip.View();
  QTest::mousePress(&Strip, Qt::LeftButton, {}, {500, 5});
  QTest::mouseMove(&Strip, {400, 5});
  QTest::mouseMove(&Strip, {300, 5});
  QTest::mouseRelease(&Strip, Qt::LeftButton, {}, {300, 5});
  EXPECT_NEAR(Strip.View().Start, before.Start + 0.2 * before.Span, 1);
  EXPECT_THAT(Chosen, IsEmpty());
}

TEST_F(TimeStripTest, PointerThatHoldsNothingMovesNothing) {
  Strip.SetLane(0, Film(1000));
  Turn(500, 10);
  QTest::mousePress(&Strip, Qt::LeftButton, {}, {500, 5});
  QTest::mouseMove(&Strip, {400, 5});
  QTest::mouseRelease(&Strip, Qt::LeftButton, {}, {400, 5});
  const TimeView before = Strip.View();
  const auto move = [this](int x, Qt::MouseButtons buttons) {
    QMouseEvent event(QEvent::MouseMove, QPointF(x, 5), Strip.mapToGlobal(QPointF(x, 5)), Qt::NoButton,
                      buttons, {});
    QApplication::sendEvent(&Strip, &event);
  };
  move(300, Qt::NoButton);
  EXPECT_EQ(Strip.View(), before);
  QTest::mousePress(&Strip, Qt::RightButton, {}, {500, 5});
  move(300, Qt::RightButton);
  EXPECT_EQ(Strip.View(), before);
  QTest::mouseRelease(&Strip, Qt::RightButton, {}, {300, 5});
}

/// What the strip stands in has a menu.
TEST_F(TimeStripTest, OtherButtonsAreLeftToWhatItStandsIn) {
  QMouseEvent press(QEvent::MouseButtonPress, QPointF(9, 9), Strip.mapToGlobal(QPointF(9, 9)),
                    Qt::RightButton, Qt::RightButton, {});
  QApplication::sendEvent(&Strip, &press);
  EXPECT_FALSE(press.isAccepted());
}

TEST_F(TimeStripTest, DraggingBeginsWhereItIsNoClickAnyMore) {
  Strip.SetLane(0, Film(1000));
  const int far = QApplication::startDragDistance();
  QTest::mousePress(&Strip, Qt::LeftButton, {}, {500, 5});
  QTest::mouseMove(&Strip, {500 - far + 1, 5});
  EXPECT_EQ(Strip.cursor().shape(), Qt::ArrowCursor);
  QTest::mouseMove(&Strip, {500 - far, 5});
  EXPECT_EQ(Strip.cursor().shape(), Qt::ClosedHandCursor);
  QTest::mouseRelease(&Strip, Qt::LeftButton, {}, {500 - far, 5});
}

TEST_F(TimeStripTest, HandHoldsTheFilmWhileItIsDragged) {
  Strip.SetLane(0, Film(1000));
  Turn(500, 10);
  QTest::mousePress(&Strip, Qt::LeftButton, {}, {500, 5});
  EXPECT_EQ(Strip.cursor().shape(), Qt::ArrowCursor);
  QTest::mouseMove(&Strip, {400, 5});
  EXPECT_EQ(Strip.cursor().shape(), Qt::ClosedHandCursor);
  QTest::mouseRelease(&Strip, Qt::LeftButton, {}, {400, 5});
  EXPECT_EQ(Strip.cursor().shape(), Qt::ArrowCursor);
}

/// A window that comes up meanwhile may have taken the release.
TEST_F(TimeStripTest, ClickAfterADragWithoutAnEndChooses) {
  Strip.SetLane(0, Film(10));
  QTest::mousePress(&Strip, Qt::LeftButton, {}, {500, 5});
  QTest::mouseMove(&Strip, {400, 5});
  QTest::mouseClick(&Strip, Qt::LeftButton, {}, {At(42), 5});
  EXPECT_THAT(Chosen, ElementsAre(4U));
}

TEST_F(TimeStripTest, DraggingOnInAShorterFilmStaysInIt) {
  Strip.SetLane(0, Film(1000));
  QTest::mousePress(&Strip, Qt::LeftButton, {}, {500, 5});
  QTest::mouseMove(&Strip, {400, 5});
  Strip.SetLane(0, Film(10));
  const TimeView whole = Strip.View();
  QTest::mouseMove(&Strip, {300, 5});
  EXPECT_EQ(Strip.View(), whole);
  QTest::mouseRelease(&Strip, Qt::LeftButton, {}, {300, 5});
}

TEST_F(TimeStripTest, TheCurrentSubtitleIsMovedIntoView) {
  Strip.SetLane(0, Film(1000));
  Turn(0, 20);
  Strip.SetCurrent(700);
  EXPECT_NEAR(TimeAt(Strip.width() / 2), 7000, 0.1);
  const TimeView view = Strip.View();
  Strip.SetCurrent(701);
  EXPECT_EQ(Strip.View(), view);
}

TEST_F(TimeStripTest, WhatBeginsAtTheViewsEndIsNotInIt) {
  Strip.SetLane(0, {BarOf(0, Second), BarOf(99 * Second, 100 * Second), BarOf(100 * Second, 101 * Second),
                    BarOf(101 * Second, 102 * Second), BarOf(200 * Second, 201 * Second)});
  Turn(0, 100);
  Strip.SetCurrent(2);
  EXPECT_EQ(Strip.View(), (TimeView{.Start = 99'000, .Span = 2000}));
  Strip.SetCurrent(1);
  EXPECT_EQ(Strip.View().Start, 99'000);
  Strip.SetCurrent(3);
  EXPECT_EQ(Strip.View().Start, 100'000);
}

TEST_F(TimeStripTest, CurrentSubtitlesOfBothStreamsAreMarked) {
  Strip.SetLane(0, Film(10));
  Strip.SetLane(1, Film(10));
  Strip.resize(1000, Strip.sizeHint().height());
  const int lane = TimeStripRows(Strip.height(), 2, QFontMetrics(Strip.font()).height()).Of(1).Top;
  const auto second = [&] { return Shown().copy(0, lane, 1000, Strip.height() - lane); };
  const QImage plain = second();
  Strip.SetCurrent(4);
  EXPECT_EQ(second(), plain);
  Strip.SetCurrent(4, 7);
  EXPECT_NE(second(), plain);
}

TEST_F(TimeStripTest, BarsStandWhereSubtitlesAreShown) {
  Strip.SetLane(0, Film(10));
  const QRgb ground = Strip.palette().color(QPalette::Base).rgb();
  const int middle = TimeStripRows(Strip.height(), 1, 0).Of(0).BarTop + 2;
  EXPECT_NE(Shown().pixel(At(42), middle), ground);
  EXPECT_EQ(Shown().pixel(At(47), middle), ground);
  EXPECT_NE(Shown().pixel(Strip.width() - 1, middle), ground) << "its edge";
}

/// After each step that is what painting anew gives, and bars stand where their times do.
TEST_F(TimeStripTest, WhatIsOnTheScreenFollows) {
  const auto expectAnew = [this](const char* after) {
    for (int i = 0; i < 3; ++i) {
      QCoreApplication::processEvents();
    }
    const QImage shown = Strip.screen()
                             ->grabWindow(Strip.winId(), 0, 0, Strip.width(), Strip.height())
                             .toImage()
                             .convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(shown, Shown()) << after;
    const QRgb ground = Strip.palette().color(QPalette::Base).rgb();
    const int middle =
        TimeStripRows(Strip.height(), Strip.sizeHint().height() > 60 ? 2 : 1, 0).Of(0).BarTop + 2;
    EXPECT_NE(shown.pixel(At(42), middle), ground) << after;
    EXPECT_EQ(shown.pixel(At(47.5), middle), ground) << after;
  };
  Strip.SetLane(0, Film(10));
  expectAnew("a film");
  Strip.SetMarks(4, With(StreamProblemCode::OddHeight));
  expectAnew("a mark");
  Strip.SetCurrent(4);
  expectAnew("another current one");
  Turn(At(45), 2);
  expectAnew("zooming");
  Turn(At(45), 1, Qt::ShiftModifier);
  expectAnew("moving");
  Strip.SetLane(1, {BarOf(190 * Second, 195 * Second)});
  expectAnew("a longer film");
}

TEST_F(TimeStripTest, OverlapsAreHigherAndPartedLengthwise) {
  Strip.SetLane(0, Film(10));
  const auto plain = Column(At(42));
  Strip.SetMarks(4, With(StreamProblemCode::Overlap));
  const auto overlap = Column(At(42));
  const QRgb ground = Strip.palette().color(QPalette::Base).rgb();
  const auto rows = TimeStripRows(Strip.height(), 1, QFontMetrics(Strip.font()).height()).Of(0);
  const auto at = [](const std::vector<QRgb>& column, int y) { return column[static_cast<std::size_t>(y)]; };
  EXPECT_EQ(at(plain, rows.BarTop - 1), ground);
  EXPECT_NE(at(overlap, rows.BarTop - 1), ground);
  int gaps = 0;
  for (int y = rows.BarTop; y < rows.End; ++y) {
    EXPECT_NE(at(plain, y), ground) << y;
    EXPECT_NE(at(overlap, y), at(plain, y)) << y;
    gaps += at(overlap, y) == ground ? 1 : 0;
  }
  EXPECT_GE(gaps, 1);
  EXPECT_NE(at(overlap, rows.End - 1), ground);
}

TEST_F(TimeStripTest, AWedgeStandsAboveAProblem) {
  Strip.SetLane(0, Film(10));
  const auto rows = TimeStripRows(Strip.height(), 1, 0).Of(0);
  const QRgb ground = Strip.palette().color(QPalette::Base).rgb();
  const QImage plain = Shown();
  EXPECT_EQ(plain.pixel(At(40), rows.BarTop - 2), ground);
  Strip.SetMarks(4, With(StreamProblemCode::OddHeight));
  const QImage marked = Shown();
  EXPECT_NE(marked.pixel(At(40), rows.BarTop - 2), ground);
  EXPECT_NE(marked.pixel(At(42), rows.BarTop + 2), plain.pixel(At(42), rows.BarTop + 2));
  Strip.SetMarks(4, {});
  EXPECT_EQ(Shown(), plain);
}

TEST_F(TimeStripTest, MarksOfOtherSubtitlesThanTheLaneHasAreNothing) {
  Strip.SetLane(0, Film(10));
  const QImage plain = Shown();
  Strip.SetMarks(10, With(StreamProblemCode::Overlap));
  EXPECT_EQ(Shown(), plain);
  QCoreApplication::processEvents();
  EXPECT_EQ(Strip.accessibleDescription(), "10 subtitles from 0:00:00.00 to 0:01:35.00");
}

TEST_F(TimeStripTest, TheSecondStreamHasALaneOfItsOwn) {
  Strip.SetLane(0, Film(10));
  const int height = Strip.sizeHint().height();
  Strip.SetLane(1, {BarOf(47 * Second, 48 * Second)});
  EXPECT_GT(Strip.sizeHint().height(), height);
  Strip.resize(1000, Strip.sizeHint().height());
  const QRgb ground = Strip.palette().color(QPalette::Base).rgb();
  const auto column = Column(At(47.5));
  const auto rows = TimeStripRows(Strip.height(), 2, QFontMetrics(Strip.font()).height());
  EXPECT_EQ(column[static_cast<std::size_t>(rows.Of(0).BarTop + 3)], ground);
  EXPECT_NE(column[static_cast<std::size_t>(rows.Of(1).BarTop + 3)], ground);
  Strip.SetLane(1, {});
  EXPECT_EQ(Strip.sizeHint().height(), height);
}

TEST_F(TimeStripTest, ASubtitleOutsideTheClockDoesNotStretchTheFilm) {
  std::vector<TimeBar> bars = Film(10);
  bars.push_back(BarOf(INT64_MAX, INT64_MAX));
  Strip.SetLane(0, bars);
  EXPECT_LE(Strip.View().Span, 100'000);
  EXPECT_EQ(Strip.SubtitleAt(Strip.width() - 1), 10U);
  // In the margin behind the film, half way.
  const QImage shown = Shown();
  const int middle = TimeStripRows(Strip.height(), 1, 0).Of(0).BarTop + 2;
  EXPECT_NE(shown.pixel(994, middle), shown.pixel(988, middle));
}

TEST_F(TimeStripTest, AFilmOutsideTheClockIsSeenAtItsStart) {
  Strip.SetLane(0, {BarOf(INT64_MAX, INT64_MAX)});
  EXPECT_EQ(Strip.View(), (TimeView{.Start = 0, .Span = 2040}));
  EXPECT_EQ(Strip.accessibleDescription(), "1 subtitle from 0:00:00.00 to 0:00:00.00");
}

TEST_F(TimeStripTest, TipsTellNumberAndTimes) {
  Strip.SetLane(0, Film(10));
  EXPECT_EQ(TipAt({At(42), 5}), "Subtitle 5, 0:00:40.00 to 0:00:45.00");
  Strip.SetMarks(4, With(StreamProblemCode::Overlap));
  EXPECT_EQ(TipAt({At(42), 5}), "Subtitle 5, 0:00:40.00 to 0:00:45.00, overlaps the next one");
  Strip.SetMarks(4, With(StreamProblemCode::OddHeight));
  EXPECT_EQ(TipAt({At(42), 5}), "Subtitle 5, 0:00:40.00 to 0:00:45.00, has a problem");
  EXPECT_TRUE(TipAt({At(47.5), 5}).startsWith("0:00:47.")) << TipAt({At(47.5), 5}).toStdString();
  Strip.SetLane(1, Film(10));
  Strip.resize(1000, Strip.sizeHint().height());
  EXPECT_EQ(TipAt({At(42), Strip.height() / 2 + 3}), "Second stream, subtitle 5, 0:00:40.00 to 0:00:45.00");
}

TEST_F(TimeStripTest, TipOfASubtitleComesAlsoALittleBesideIt) {
  Strip.SetLane(0, {BarOf(0, 5 * Second), BarOf(40 * Second, 40 * Second), BarOf(90 * Second, 95 * Second)});
  EXPECT_EQ(TipAt({At(40) + 3, 5}), "Subtitle 2, 0:00:40.00") << "it is there for no time";
  EXPECT_EQ(TipAt({At(40) - 3, 5}), "Subtitle 2, 0:00:40.00");
  EXPECT_TRUE(TipAt({At(40) + 6, 5}).startsWith("0:00:40.")) << TipAt({At(40) + 6, 5}).toStdString();
  EXPECT_TRUE(TipAt({At(40) - 6, 5}).startsWith("0:00:39.")) << TipAt({At(40) - 6, 5}).toStdString();
}

TEST_F(TimeStripTest, AssistiveToolsAreToldWhatIsThere) {
  EXPECT_EQ(Strip.accessibleName(), "Time of the film");
  EXPECT_EQ(Strip.accessibleDescription(), "No subtitles");
  Strip.SetLane(0, Film(10));
  EXPECT_EQ(Strip.accessibleDescription(), "10 subtitles from 0:00:00.00 to 0:01:35.00");
  Strip.SetLane(1, Film(1));
  Strip.SetMarks(4, With(StreamProblemCode::Overlap));
  Strip.SetMarks(5, With(StreamProblemCode::NoEnd));
  Strip.SetMarks(6, With(StreamProblemCode::NoEnd));
  Strip.SetMarks(6, {});
  Strip.SetCurrent(4);
  QCoreApplication::processEvents();
  EXPECT_EQ(
      Strip.accessibleDescription(),
      "10 subtitles from 0:00:00.00 to 0:01:35.00, 1 overlapping, 1 with problems, 1 subtitle in the second "
      "stream; subtitle 5 at 0:00:40.00");
}

TEST_F(TimeStripTest, AssistiveToolsAreToldOfEachChange) {
  const QString film = "10 subtitles from 0:00:00.00 to 0:01:35.00";
  Strip.SetLane(0, Film(10));
  Strip.SetCurrent(4);
  EXPECT_EQ(Strip.accessibleDescription(), film + "; subtitle 5 at 0:00:40.00");
  Strip.SetCurrent(std::nullopt);
  EXPECT_EQ(Strip.accessibleDescription(), film);
  Strip.SetMarks(4, With(StreamProblemCode::Overlap));
  QCoreApplication::processEvents();
  EXPECT_EQ(Strip.accessibleDescription(), film + ", 1 overlapping");
  Strip.SetMarks(5, With(StreamProblemCode::NoEnd));
  QCoreApplication::processEvents();
  EXPECT_EQ(Strip.accessibleDescription(), film + ", 1 overlapping, 1 with problems");
  Strip.SetLane(1, Film(2));
  EXPECT_EQ(Strip.accessibleDescription(),
            film + ", 1 overlapping, 1 with problems, 2 subtitles in the second stream");
  Strip.SetLane(1, {});
  Strip.SetLane(0, Film(10));
  EXPECT_EQ(Strip.accessibleDescription(), film);
}

TEST_F(TimeStripTest, IsNoStopOfTheTabKey) {
  EXPECT_EQ(Strip.focusPolicy(), Qt::NoFocus);
}

TEST_F(TimeStripTest, IsSeenInLightAndDarkThemes) {
  Strip.SetLane(0, Film(10));
  Strip.SetMarks(3, With(StreamProblemCode::Overlap));
  Strip.SetMarks(4, With(StreamProblemCode::NoEnd));
  const int row = TimeStripRows(Strip.height(), 1, 0).Of(0).BarTop + 1;
  for (const int grey : {239, 45}) {
    Strip.setPalette(QPalette(QColor(grey, grey, grey), QColor(grey, grey, grey)));
    const QImage shown = Shown();
    const QColor ground = Strip.palette().color(QPalette::Base);
    for (const double second : {32.0, 42.0, 52.0}) {
      EXPECT_GE(Contrast(shown.pixelColor(At(second), row), ground), 3) << grey << ' ' << second;
    }
  }
}

/// What stands on the screen after one repaint upon another is what one repaint of everything gives.
class TimeStripScale : public testing::TestWithParam<std::size_t> {};

TEST_P(TimeStripScale, RepaintsNoMoreAndNoLessThanHasChanged) {
  const double scale = ScreenScales[GetParam()];
  QWidget window;
  window.show();
  window.setScreen(QGuiApplication::screens().at(static_cast<qsizetype>(GetParam())));
  window.resize(640, 90);
  TimeStrip strip(&window);
  strip.setGeometry(13, 7, 601, 41);  // begins inside a screen pixel at most scales
  std::vector<TimeBar> bars = Film(200);
  for (std::size_t i = 0; i < bars.size(); i += 7) {
    bars[i].HasProblem = i % 2 == 0;
    bars[i].Overlaps = i % 3 == 0;
  }
  strip.SetLane(0, bars);
  strip.SetLane(1, Film(180));
  strip.show();
  QCoreApplication::processEvents();
  ASSERT_DOUBLE_EQ(window.devicePixelRatioF(), scale);
  const auto onScreen = [&] {
    QCoreApplication::processEvents();
    return window.screen()->grabWindow(window.winId(), 0, 0, window.width(), window.height()).toImage();
  };
  // Every place of the mark beside others, at first of the whole film and then of a part of it that moves
  // along.
  for (std::size_t index = 0; index < bars.size(); ++index) {
    strip.SetCurrent(index, index * 9 / 10);
    const QImage stepwise = onScreen();
    strip.update();
    ASSERT_EQ(stepwise, onScreen()) << index;
    if (index == 100) {
      strip.ZoomAt(100, 3);
    }
  }
}

TEST(TimeStrip, FillsItsPlaceInTheScreensOwnPixels) {
  TimeStrip strip;
  strip.show();
  strip.setScreen(QGuiApplication::screens().at(4));
  strip.resize(300, 41);
  QCoreApplication::processEvents();
  ASSERT_EQ(strip.devicePixelRatioF(), 2);
  const QImage shown = strip.grab().toImage().convertToFormat(QImage::Format_RGB32);
  ASSERT_EQ(shown.size(), QSize(600, 82));
  const QRgb edge = shown.pixel(0, 0);
  EXPECT_NE(edge, strip.palette().color(QPalette::Base).rgb());
  for (const QPoint corner :
       {QPoint(599, 0), QPoint(0, 81), QPoint(599, 81), QPoint(300, 81), QPoint(599, 41)}) {
    EXPECT_EQ(shown.pixel(corner), edge) << corner.x() << ", " << corner.y();
  }
  EXPECT_NE(shown.pixel(597, 5), edge);
}

INSTANTIATE_TEST_SUITE_P(Scales, TimeStripScale, testing::Values(0U, 1U, 4U),
                         [](const auto& test) { return "Screen" + std::to_string(test.param); });

}  // namespace
}  // namespace quillmark::test
