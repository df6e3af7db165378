#include <cmath>

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QWindow>

#include "tests/app/Screens.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

const QRgb Dark = qRgb(60, 60, 60);
const QRgb Light = qRgb(120, 120, 120);
const QRgb Entry2 = qRgb(255, 255, 255);

/// The first pixel that differs.
testing::AssertionResult Same(const QImage& shown, const QImage& expected) {
  if (shown.size() != expected.size()) {
    return testing::AssertionFailure() << shown.width() << 'x' << shown.height();
  }
  for (int y = 0; shown != expected && y < shown.height(); ++y) {
    for (int x = 0; x < shown.width(); ++x) {
      if (shown.pixel(x, y) != expected.pixel(x, y)) {
        return testing::AssertionFailure() << "at " << x << ',' << y << ": " << Rgba(shown.pixelColor(x, y));
      }
    }
  }
  return testing::AssertionSuccess();
}

/// The window on a screen of each scale. What is compared is what stands on the screen after one repaint upon
/// another, not what the display would paint as a whole.
class DisplayScale : public WindowTest, public testing::WithParamInterface<int> {
 protected:
  void SetUp() override { MoveTo(GetParam()); }

  void MoveTo(int screen) {
    Window.setScreen(QGuiApplication::screens().at(screen));
    // The platform gives away as many screen pixels as the window has logical ones: enough for the frame.
    Window.resize(1600, 1300);
    QCoreApplication::processEvents();
    ASSERT_DOUBLE_EQ(Window.devicePixelRatioF(), ScreenScales[screen]);
  }

  [[nodiscard]] QImage Screen() const {
    QImage grabbed =
        Window.screen()->grabWindow(Window.winId(), 0, 0, Window.width(), Window.height()).toImage();
    grabbed.setDevicePixelRatio(1);
    return grabbed.convertToFormat(QImage::Format_RGB32);
  }

  /// The frame's part of the screen: `side` screen pixels to a frame pixel.
  [[nodiscard]] QImage FrameOnScreen(int side, int lines = 576) const {
    const QPoint corner = Control<QWidget>("Picture1").mapTo(&Window, QPoint());
    const double ratio = Window.devicePixelRatioF();
    return Screen().copy(qRound(corner.x() * ratio), qRound(corner.y() * ratio), 720 * side, lines * side);
  }

  /// The checker with one filled rectangle on it.
  [[nodiscard]] static QImage Expected(const QRect& filled, int side, int lines = 576) {
    QImage frame(720 * side, lines * side, QImage::Format_RGB32);
    QPainter painter(&frame);
    for (int row = 0; row < 36; ++row) {
      for (int column = 0; column < 45; ++column) {
        painter.fillRect(column * 16 * side, row * 16 * side, 16 * side, 16 * side,
                         QColor(column % 2 == row % 2 ? Dark : Light));
      }
    }
    painter.fillRect(filled.x() * side, filled.y() * side, filled.width() * side, filled.height() * side,
                     QColor(Entry2));
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
    // Where the display begins decides on how its repainted parts are rounded.
    Control<QWidget>("Picture1").move(9 + i % 4, 9 + i / 4);
    QCoreApplication::processEvents();
    Click("Command_Next");
    EXPECT_TRUE(Same(FrameOnScreen(side), Expected(areas[static_cast<std::size_t>(i)], side))) << i;
  }
}

TEST_P(DisplayScale, FramePixelsAreSquaresOfWholeScreenPixels) {
  LoadStream(FilledAt(301, 403));
  Click("Option_720x480");
  const int side = SideOn(GetParam());
  EXPECT_TRUE(Same(FrameOnScreen(side, 480), Expected(QRect(301, 403, 9, 2), side, 480)));
}

/// 720 and 576 by the side of a frame pixel and the scale, rounded up.
TEST_P(DisplayScale, WidgetFollowsTheScreen) {
  static const QSize Sizes[] = {{720, 576}, {576, 461}, {480, 384}, {412, 330}, {720, 576}, {576, 461}};
  const auto& picture = Control<QWidget>("Picture1");
  EXPECT_EQ(picture.size(), Sizes[GetParam()]);
  MoveTo(0);
  EXPECT_EQ(picture.size(), Sizes[0]);
  MoveTo(GetParam());
  EXPECT_EQ(picture.size(), Sizes[GetParam()]);
}

/// What stands behind the display ends where the frame does, whatever part of a screen pixel is left.
TEST_P(DisplayScale, NoScreenPixelIsLeftUnpainted) {
  LoadStream(FilledAt(301, 403));
  const int side = SideOn(GetParam());
  const double ratio = ScreenScales[GetParam()];
  const QPoint corner = Control<QWidget>("Picture1").mapTo(&Window, QPoint());
  const QImage screen = Screen();
  // Between the menus and the status bar.
  const int top = qRound(Window.centralWidget()->y() * ratio);
  const QRgb ground = screen.pixel(2, top + 2);
  const QRect frame(qRound(corner.x() * ratio), qRound(corner.y() * ratio), 720 * side, 576 * side);
  for (int y = top + 1; y <= frame.bottom() + 3; ++y) {
    ASSERT_EQ(screen.pixel(frame.left() - 1, y), ground) << y;
  }
  for (int x = 1; x <= frame.right() + 1; ++x) {
    ASSERT_EQ(screen.pixel(x, frame.top() - 1), ground) << x;
    ASSERT_EQ(screen.pixel(x, frame.bottom() + 1), ground) << x;
    ASSERT_EQ(screen.pixel(x, frame.bottom() + 2), ground) << x;
  }
}

INSTANTIATE_TEST_SUITE_P(Screens, DisplayScale, testing::Range(0, 6));

}  // namespace
}  // namespace quillmark::test
