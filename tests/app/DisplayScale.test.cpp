#include <algorithm>
#include <cmath>
#include <utility>

#include <QAction>
#include <QApplication>
#include <QPainter>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <QWindow>

#include "app/DisplayFrame.h"
#include "tests/app/Screens.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

const QRgb DarkRgb = qRgb(60, 60, 60);
const QRgb LightRgb = qRgb(120, 120, 120);
const QRgb Entry2Rgb = qRgb(255, 255, 255);

/// The first pixel that differs.
testing::AssertionResult Same(const QImage& shown, const QImage& expected) {
  if (shown == expected) {
    return testing::AssertionSuccess();
  }
  if (shown.size() != expected.size()) {
    return testing::AssertionFailure() << shown.width() << 'x' << shown.height();
  }
  for (int y = 0; y < shown.height(); ++y) {
    for (int x = 0; x < shown.width(); ++x) {
      if (shown.pixel(x, y) != expected.pixel(x, y)) {
        return testing::AssertionFailure() << "at " << x << ',' << y << ": " << Rgba(shown.pixelColor(x, y));
      }
    }
  }
  return testing::AssertionFailure();
}

/// The window on a screen of each scale. What is compared is what stands on the screen after one repaint upon
/// another, not what the display would paint as a whole.
class DisplayScale : public WindowTest, public testing::WithParamInterface<int> {
 protected:
  void SetUp() override { MoveTo(GetParam()); }

  void MoveTo(int screen) {
    Window.setScreen(QGuiApplication::screens().at(screen));
    // The platform gives away as many screen pixels as the window has logical ones: enough for the frame.
    Window.resize(SideOn(screen) == 1 ? QSize(1366, 768) : QSize(1600, 1300));
    QCoreApplication::processEvents();
    ASSERT_DOUBLE_EQ(Window.devicePixelRatioF(), ScreenScales[screen]);
  }

  [[nodiscard]] static QImage ScreenOf(const QWidget& window) { return ScreenOf(window, window.rect()); }

  /// From a place of the window's on, in its own pixels.
  [[nodiscard]] static QImage ScreenOf(const QWidget& window, const QRect& part) {
    QImage grabbed = window.screen()
                         ->grabWindow(window.winId(), part.x(), part.y(), part.width(), part.height())
                         .toImage();
    grabbed.setDevicePixelRatio(1);
    return grabbed.convertToFormat(QImage::Format_RGB32);
  }

  /// The frame's part of the screen: `side` screen pixels to a frame pixel.
  [[nodiscard]] static QImage FrameOn(const QWidget& window, const QWidget& display, int side, int lines) {
    const QSize onScreen(720 * side, lines * side);
    const QSize size = (QSizeF(onScreen) / window.devicePixelRatioF()).toSize() + QSize(1, 1);
    const QImage screen = ScreenOf(window, QRect(display.mapTo(&window, QPoint()), size));
    return screen.size() == onScreen ? screen : screen.copy(QRect(QPoint(), onScreen));
  }
  [[nodiscard]] QImage FrameOnScreen(int side, int lines = 576) const {
    return FrameOn(Window, Control<QWidget>("Picture1"), side, lines);
  }

  /// A part, in screen pixels, of the checker with one filled rectangle on it, until another is asked for.
  [[nodiscard]] static const QImage& Expected(const QRect& filled, int side, const QRect& part) {
    static QImage frame;
    const QImage checker = Checker(side, part);
    if (frame.size() != checker.size()) {
      frame = checker.copy();
    }
    QPainter painter(&frame);
    painter.drawImage(QPoint(), checker);
    painter.fillRect(QRect(filled.topLeft() * side, filled.size() * side).translated(-part.topLeft()),
                     QColor(Entry2Rgb));
    return frame;
  }
  [[nodiscard]] static const QImage& Expected(const QRect& filled, int side, int lines = 576) {
    return Expected(filled, side, QRect(0, 0, 720 * side, lines * side));
  }

  /// The last one is kept: painting it takes longer than a test does.
  [[nodiscard]] static QImage Checker(int side, const QRect& part) {
    static QImage frame;
    static int lastSide = 0;
    static QRect lastPart;
    if (side != lastSide || part != lastPart) {
      lastSide = side;
      lastPart = part;
      frame = QImage(part.size(), QImage::Format_RGB32);
      QPainter painter(&frame);
      painter.translate(-part.topLeft());
      for (int row = 0; row < 36; ++row) {
        for (int column = 0; column < 45; ++column) {
          painter.fillRect(column * 16 * side, row * 16 * side, 16 * side, 16 * side,
                           QColor(column % 2 == row % 2 ? DarkRgb : LightRgb));
        }
      }
    }
    return frame;
  }

  /// The scale rounded down, at least 1.
  [[nodiscard]] static int SideOn(int screen) {
    static constexpr int Sides[] = {1, 1, 1, 1, 2, 2};
    return Sides[screen];
  }

  /// A rectangle of code 2, two lines high: 00 02 fills a line to its end.
  [[nodiscard]] static Bytes FilledAt(unsigned x, unsigned y, unsigned width = 9) {
    return WithFields(PacketBuilder().Contrast(0, 15, 0, 0).Area(x, x + width - 1, y, y + 1).Build(),
                      {0x00, 0x02, 0x00, 0x02});
  }
};

TEST_P(DisplayScale, StepsLeaveNothingOfEarlierSubtitles) {
  Bytes stream;
  std::vector<QRect> areas;
  for (int i = 0; i < 16; ++i) {
    areas.emplace_back(204 + i, 303 + 11 * i, 9 + 2 * i, 2);
    const QRect& area = areas.back();
    stream = Join({stream, FilledAt(static_cast<unsigned>(area.x()), static_cast<unsigned>(area.y()),
                                    static_cast<unsigned>(area.width()))});
  }
  LoadStream(stream);
  const int side = SideOn(GetParam());
  EXPECT_TRUE(Same(FrameOnScreen(side), Expected(areas[0], side)));
  for (int i = 1; i < 16; ++i) {
    Click("Command_Next");
    EXPECT_TRUE(Same(FrameOnScreen(side), Expected(areas[static_cast<std::size_t>(i)], side))) << i;
  }
}

/// Where the display begins decides on how its repainted parts are rounded.
TEST_P(DisplayScale, StepsLeaveNothingWhereverTheDisplayBegins) {
  QWidget host;
  host.setScreen(QGuiApplication::screens().at(GetParam()));
  host.setGeometry(QRect(host.screen()->geometry().topLeft(), QSize(1600, 1300)));
  auto* display = new DisplayFrame(&host);
  host.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&host));
  const int side = SideOn(GetParam());
  for (int i = 0; i < 16; ++i) {
    display->move(9 + i % 4, 9 + i / 4);
    QCoreApplication::processEvents();
    const QRect area(204 + i, 303 + 11 * i, 9 + 2 * i, 2);
    cBitmap picture;
    picture.Create(area.width(), area.height());
    std::ranges::fill(picture.LockPixels(), Entry2Rgb);
    display->Picture().DrawBackground(576, {}, nullptr);
    display->Picture().Draw(picture, area.x(), area.y(), nullptr);
    display->Refresh();
    EXPECT_TRUE(Same(FrameOn(host, *display, side, 576), Expected(area, side))) << i;
  }
}

TEST_P(DisplayScale, FramePixelsAreSquaresOfWholeScreenPixels) {
  LoadStream(FilledAt(301, 403));
  Click("Option_720x480");
  const int side = SideOn(GetParam());
  EXPECT_TRUE(Same(FrameOnScreen(side, 480), Expected(QRect(301, 403, 9, 2), side, 480)));
}

/// 720 and 576 by the side of a frame pixel and the scale, rounded up.
TEST_P(DisplayScale, ZoomGoesInStepsOfTheScreensOwnPixels) {
  const auto zoom = [this](const char* action) {
    Window.findChild<QAction*>(action)->trigger();
    QCoreApplication::processEvents();
    return Control<QWidget>("StatusBar").accessibleName();
  };
  EXPECT_EQ(zoom("Action_ZoomIn"), "Zoom 150 %");
  const int side = SideOn(GetParam());
  EXPECT_EQ(Control<QWidget>("Picture1").width(),
            static_cast<int>(std::ceil(1080 * side / ScreenScales[GetParam()])));
  EXPECT_EQ(zoom("Action_ZoomOut"), "Zoom 100 %");
  EXPECT_EQ(zoom("Action_ZoomOut"), "Zoom 75 %");
}

TEST_P(DisplayScale, GroupsStandBelowTheFrameAsLargeAsItIsThere) {
  const auto place = [this](const char* name) { return Control<QWidget>(name).mapTo(&Window, QPoint()); };
  EXPECT_LT(place("Frame1").x(), place("Picture1").x() + 100);
  EXPECT_GE(place("Frame1").y(), place("Picture1").y() + Control<QWidget>("Picture1").height());
}

TEST_P(DisplayScale, WidgetFollowsTheScreen) {
  static const QSize Sizes[] = {{720, 576}, {576, 461}, {480, 384}, {412, 330}, {720, 576}, {576, 461}};
  const auto& picture = Control<QWidget>("Picture1");
  EXPECT_EQ(picture.size(), Sizes[GetParam()]);
  MoveTo(0);
  EXPECT_EQ(picture.size(), Sizes[0]);
  MoveTo(GetParam());
  EXPECT_EQ(picture.size(), Sizes[GetParam()]);
}

/// What stands under the display ends where the frame does, whatever part of a screen pixel is left.
TEST_P(DisplayScale, NoScreenPixelIsLeftUnpainted) {
  LoadStream(FilledAt(301, 403));
  const int side = SideOn(GetParam());
  const double ratio = ScreenScales[GetParam()];
  const QPoint corner = Control<QWidget>("Picture1").mapTo(&Window, QPoint());
  const QImage screen = ScreenOf(Window);
  const QRgb ground = Window.palette().color(QPalette::Window).rgb();
  const QRect frame(qRound(corner.x() * ratio), qRound(corner.y() * ratio), 720 * side, 576 * side);
  for (int y = frame.top(); y <= frame.bottom(); ++y) {
    ASSERT_EQ(screen.pixel(frame.left() - 1, y), ground) << y;
  }
  for (int x = frame.left(); x <= frame.right(); ++x) {
    ASSERT_EQ(screen.pixel(x, frame.top() - 1), ground) << x;
    ASSERT_EQ(screen.pixel(x, frame.bottom() + 1), ground) << x;
    ASSERT_EQ(screen.pixel(x, frame.bottom() + 2), ground) << x;
  }
}

TEST_P(DisplayScale, ScrollingLeavesNothingBehind) {
  LoadStream(FilledAt(301, 403));
  Window.resize(900, 320);
  QCoreApplication::processEvents();
  auto& picture = Control<QWidget>("Picture1");
  const QWidget& view = *picture.parentWidget();
  auto* area = qobject_cast<QScrollArea*>(view.parentWidget());
  ASSERT_NE(area, nullptr);
  const int side = SideOn(GetParam());
  const double ratio = ScreenScales[GetParam()];
  const auto toScreen = [&](const QPoint& logical) {
    return QPoint(qRound(logical.x() * ratio), qRound(logical.y() * ratio));
  };
  for (const int value : {0, 1, 2, 7, 20, 33, 32}) {
    area->verticalScrollBar()->setValue(value);
    QCoreApplication::processEvents();
    EXPECT_EQ(area->verticalScrollBar()->value(), value);
    const QPoint corner = toScreen(picture.mapTo(&Window, QPoint()));
    const QRect seen(toScreen(view.mapTo(&Window, QPoint())),
                     toScreen(view.mapTo(&Window, QPoint(view.width(), view.height()))) - QPoint(1, 1));
    const QImage screen = ScreenOf(Window);
    const QRect compared = seen & screen.rect() & QRect(corner, QSize(720 * side, 576 * side));
    EXPECT_TRUE(
        Same(screen.copy(compared), Expected(QRect(301, 403, 9, 2), side, compared.translated(-corner))))
        << value;
  }
}

/// The same in a view that is zoomed, where not all of the frame is in sight.
class ZoomedDisplay : public DisplayScale {
 protected:
  void Trigger(const char* action) const {
    Window.findChild<QAction*>(action)->trigger();
    QCoreApplication::processEvents();
  }
  /// So far from the upper left corner.
  void Scroll(int x, int y) const {
    const QWidget& view = *Control<QWidget>("Picture1").parentWidget();
    auto* area = qobject_cast<QScrollArea*>(view.parentWidget());
    area->horizontalScrollBar()->setValue(x);
    area->verticalScrollBar()->setValue(y);
    QCoreApplication::processEvents();
  }
  /// What of the screen is the picture's, and where that is in the picture.
  [[nodiscard]] std::pair<QRect, QPoint> PartInSight(QSize onScreen) const {
    const auto& picture = Control<QWidget>("Picture1");
    const QWidget& view = *picture.parentWidget();
    const double ratio = Window.devicePixelRatioF();
    const auto toScreen = [&](const QWidget& widget, const QPoint& place) {
      const QPoint logical = widget.mapTo(&Window, place);
      return QPoint(qRound(logical.x() * ratio), qRound(logical.y() * ratio));
    };
    const QPoint corner = toScreen(picture, {});
    // But for the last screen pixels, which other widgets may begin in.
    const QRect inside(toScreen(view, {}), toScreen(view, {view.width(), view.height()}) - QPoint(2, 2));
    const QRect seen = inside & QRect(QPoint(), Window.size()) & QRect(corner, onScreen);
    return {seen, seen.topLeft() - corner};
  }
};

TEST_P(ZoomedDisplay, WholeStepsAreSharpAndLeaveNothing) {
  Bytes stream;
  std::vector<QRect> areas;
  for (int i = 0; i < 4; ++i) {
    areas.emplace_back(60 + i, 40 + 11 * i, 9 + 2 * i, 2);
    const QRect& area = areas.back();
    stream = Join({stream, FilledAt(static_cast<unsigned>(area.x()), static_cast<unsigned>(area.y()),
                                    static_cast<unsigned>(area.width()))});
  }
  LoadStream(stream);
  int side = SideOn(GetParam());
  for (const int percent : {200, 300}) {
    Trigger("Action_ZoomIn");
    while (Control<DisplayFrame>("Picture1").Percent() < percent) {
      Trigger("Action_ZoomIn");
    }
    Scroll(7, 7);
    side = SideOn(GetParam()) * percent / 100;
    const auto [seen, inPicture] = PartInSight(QSize(720, 576) * side);
    for (const QRect& area : areas) {
      ASSERT_TRUE(
          seen.contains(QRect(seen.topLeft() - inPicture + area.topLeft() * side, area.size() * side)));
      EXPECT_TRUE(Same(ScreenOf(Window).copy(seen), Expected(area, side, QRect(inPicture, seen.size()))))
          << percent << ' ' << area.x();
      if (&area != &areas.back()) {
        Click("Command_Next");
      }
    }
    GoTo("1");
  }
}

/// On the screens that show all of the window.
class EdgeOfZoomedDisplay : public ZoomedDisplay {};

TEST_P(EdgeOfZoomedDisplay, StepsReachTheLastColumn) {
  const QRect area(656, 40, 64, 2);
  LoadStream(Join({FilledAt(700, 40), FilledAt(656, 40, 64)}));
  const int side = 2 * SideOn(GetParam());
  while (Control<DisplayFrame>("Picture1").Percent() < 200) {
    Trigger("Action_ZoomIn");
  }
  Scroll(720 * side, 7);
  Click("Command_Next");
  const auto [seen, inPicture] = PartInSight(QSize(720, 576) * side);
  ASSERT_GT(inPicture.x() + seen.width(), 719 * side);
  EXPECT_TRUE(Same(ScreenOf(Window).copy(seen), Expected(area, side, QRect(inPicture, seen.size()))));
}

/// The most that two bytes differ, of pictures of one size.
int MostDifference(const QImage& one, const QImage& other) {
  int most = 0;
  const qsizetype length = one.bytesPerLine();
  for (int y = 0; y < one.height() && most <= 2; ++y) {
    const uchar* const line = one.constScanLine(y);
    const uchar* const otherLine = other.constScanLine(y);
    if (std::equal(line, line + length, otherLine)) {
      continue;
    }
    for (qsizetype i = 0; i < length; ++i) {
      most = std::max(most, std::abs(line[i] - otherLine[i]));
    }
  }
  return most;
}

TEST_P(ZoomedDisplay, SmoothedStepsLeaveNothing) {
  LoadStream(Join({FilledAt(101, 103, 40), FilledAt(121, 122, 9)}));
  for (const char* action : {"Action_ZoomFit", "Action_16x9", "Action_ZoomIn"}) {
    Trigger(action);
    Scroll(11, 11);
    const QRect seen = PartInSight(Control<QWidget>("Picture1").size() * Window.devicePixelRatioF()).first;
    for (const char* step : {"Command_Next", "Command_Prev"}) {
      const QImage before = ScreenOf(Window).copy(seen);
      Click(step);
      const QImage after = ScreenOf(Window).copy(seen);
      EXPECT_NE(before, after) << action;
      Control<QWidget>("Picture1").repaint();
      // Smoothing may round otherwise where a part begins elsewhere.
      EXPECT_LE(MostDifference(after, ScreenOf(Window).copy(seen)), 2) << action << ' ' << step;
    }
  }
}

TEST_P(ZoomedDisplay, WheelKeepsThePixelUnderThePointer) {
  LoadStream(FilledAt(301, 403));
  auto& picture = Control<DisplayFrame>("Picture1");
  for (const QPoint inPicture : {QPoint(10, 20), QPoint(201, 133), QPoint(333, 217)}) {
    const QPoint at = picture.pos() + inPicture;
    const QPoint pixel = picture.PixelAt(inPicture);
    for (const int turn : {120, 120, 120, 240, -120, -120, -120}) {
      const QPoint place = at - picture.pos();
      QWheelEvent event(place, picture.mapToGlobal(place), {}, {0, turn}, Qt::NoButton, Qt::ControlModifier,
                        Qt::NoScrollPhase, false);
      QApplication::sendEvent(&picture, &event);
      QCoreApplication::processEvents();
      // Widgets begin at logical pixels: where those are larger than the frame's at 150 %, the next one is
      // near enough.
      const QPoint off = picture.PixelAt(at - picture.pos()) - pixel;
      EXPECT_LE(std::max(std::abs(off.x()), std::abs(off.y())), ScreenScales[GetParam()] == 1.75 ? 1 : 0)
          << at.x() << ' ' << picture.Percent();
    }
    EXPECT_EQ(picture.Percent(), 200);
    Trigger("Action_Zoom100");
  }
}

INSTANTIATE_TEST_SUITE_P(Screens, ZoomedDisplay, testing::Range(0, 6));
INSTANTIATE_TEST_SUITE_P(Screens, EdgeOfZoomedDisplay, testing::Range(0, 3));
INSTANTIATE_TEST_SUITE_P(Screens, DisplayScale, testing::Range(0, 6));

}  // namespace
}  // namespace quillmark::test
