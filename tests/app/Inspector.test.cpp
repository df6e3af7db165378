#include <QAction>
#include <QApplication>
#include <QCoreApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "app/DisplayFrame.h"
#include "app/ShownPixels.h"
#include "tests/app/MergeTest.h"
#include "tests/app/Pointer.h"
#include "tests/app/Streams.h"

namespace quillmark::test {
namespace {

SpuControl AreaOf(std::int16_t x, std::int16_t y, int width, int height) {
  SpuControl control;
  control.X1 = x;
  control.X2 = static_cast<std::int16_t>(x + width - 1);
  control.Y1 = y;
  control.Y2 = static_cast<std::int16_t>(y + height - 1);
  control.TopFieldOffset = 4;
  control.BottomFieldOffset = 6;
  return control;
}

constexpr CodeChoice DrawnCodes{.Colours = {0, 1, 2, 3}, .Contrasts = {0, 15, 8, 10}};

TEST(ShownPixels, PixelThatNoRunReachedIsNotCoded) {
  // The last line of an odd height is not decoded: two lines of 89 AB, two pixels of each code.
  const Bytes unit = {0x00, 0x0A, 0x00, 0x08, 0x89, 0xAB, 0x89, 0xAB, 0x00, 0x00};
  ShownPixels pixels;
  pixels.Show(unit, AreaOf(10, 20, 8, 3), DrawnCodes);
  EXPECT_EQ(pixels.TextAt({12, 20}), "12, 20: code 1 (pattern), entry 1, opacity F");
  EXPECT_EQ(pixels.TextAt({17, 21}), "17, 21: code 3 (emphasis 2), entry 3, opacity A");
  EXPECT_EQ(pixels.TextAt({12, 22}), "12, 22: not coded");
  EXPECT_EQ(pixels.TextAt({18, 20}), "18, 20");
}

TEST(ShownPixels, FramesLastLineIsDecodedWithTheOneBelowIt) {
  const Bytes unit = {0x00, 0x0A, 0x00, 0x08, 0x89, 0xAB, 0x89, 0xAB, 0x00, 0x00};
  ShownPixels pixels;
  pixels.Show(unit, AreaOf(10, 575, 8, 2), DrawnCodes);
  EXPECT_EQ(pixels.TextAt({12, 575}), "12, 575: code 1 (pattern), entry 1, opacity F");
}

TEST(ShownPixels, OneLineOrColumnIsAnArea) {
  const Bytes unit = {0x00, 0x0A, 0x00, 0x08, 0x89, 0xAB, 0x89, 0xAB, 0x00, 0x00};
  ShownPixels pixels;
  pixels.Show(unit, AreaOf(10, 20, 8, 1), DrawnCodes);
  EXPECT_EQ(pixels.Areas(), std::vector{QRect(10, 20, 8, 1)});
  EXPECT_EQ(pixels.TextAt({12, 20}), "12, 20: not coded");
  pixels.Show(unit, AreaOf(0, 20, 1, 2), DrawnCodes);
  EXPECT_EQ(pixels.Areas(), std::vector{QRect(0, 20, 1, 2)});
}

TEST(ShownPixels, ReversedAreaHasNone) {
  const Bytes unit = {0x00, 0x0A, 0x00, 0x08, 0x89, 0xAB, 0x89, 0xAB, 0x00, 0x00};
  ShownPixels pixels;
  pixels.Show(unit, AreaOf(10, 20, -8, 3), DrawnCodes);
  EXPECT_EQ(pixels.TextAt({5, 21}), "5, 21");
  EXPECT_TRUE(pixels.Areas().empty());
}

TEST(ShownPixels, OfTwoItIsTheOneThatIsSeen) {
  const Bytes unit = {0x00, 0x0A, 0x00, 0x08, 0x89, 0xAB, 0x89, 0xAB, 0x00, 0x00};
  ShownPixels pixels;
  pixels.Show(unit, AreaOf(10, 20, 8, 2), DrawnCodes);
  pixels.ShowOver(unit, AreaOf(14, 15, 8, 2), 5);
  EXPECT_EQ(pixels.TextAt({14, 20}), "14, 20: code 2 (emphasis 1), entry 2, opacity 8");  // clear above it
  EXPECT_EQ(pixels.TextAt({16, 20}), "16, 20: 2nd, code 1 (pattern), entry 1, opacity F");
  EXPECT_EQ(pixels.TextAt({21, 21}), "21, 21: 2nd, code 3 (emphasis 2), entry 3, opacity A");
}

class Inspector : public MergeTest {
 protected:
  void SetUp() override {
    LoadStream(ThreeSubtitles());
    Window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window));
  }
  /// The middle of a frame pixel, by the display's own place and size.
  void PointAt(int x, int y) {
    auto& picture = Control<QWidget>("Picture1");
    const QPoint place((2 * x + 1) * picture.width() / 1440, (2 * y + 1) * picture.height() / 1152);
    QMouseEvent move(QEvent::MouseMove, place, picture.mapToGlobal(QPointF(place)), Qt::NoButton, {}, {});
    QApplication::sendEvent(&picture, &move);
  }
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus == nullptr ? &Window : focus, key, modifiers);
    QCoreApplication::processEvents();
  }
  [[nodiscard]] QString Pixel() const { return TextOf("Text_Pixel"); }
  [[nodiscard]] QWidget& TheLoupe() const { return Control<QWidget>("Loupe"); }
};

TEST_F(Inspector, FieldTellsOfThePixelUnderThePointer) {
  EXPECT_EQ(Pixel(), "");
  PointAt(102, 400);
  EXPECT_EQ(Pixel(), "102, 400: code 1 (pattern), entry 1, opacity F");
  PointAt(100, 401);
  EXPECT_EQ(Pixel(), "100, 401: code 0 (background), entry 0, opacity 0");
  PointAt(12, 30);
  EXPECT_EQ(Pixel(), "12, 30");
  QEvent leave(QEvent::Leave);
  QApplication::sendEvent(&Control<QWidget>("Picture1"), &leave);
  EXPECT_EQ(Pixel(), "");
}

TEST_F(Inspector, FieldFollowsWhatIsShown) {
  PointAt(102, 400);
  Choose("ImageCombo2", "4");
  Choose("Combo1_1", "9");
  EXPECT_EQ(Pixel(), "102, 400: code 1 (pattern), entry 4, opacity 9");
  Click("Command_Next");
  PointAt(102, 400);
  EXPECT_EQ(Pixel(), "102, 400");
  PointAt(104, 421);
  EXPECT_EQ(Pixel(), "104, 421: code 2 (emphasis 1), entry 2, opacity F");
}

TEST_F(Inspector, ZoomedFrameHasItsPixelsWhereItShowsThem) {
  for (const char* action : {"Action_ZoomIn", "Action_ZoomIn", "Action_16x9", "Action_ZoomFit"}) {
    Window.findChild<QAction*>(action)->trigger();
    QCoreApplication::processEvents();
    PointAt(106, 401);
    EXPECT_EQ(Pixel(), "106, 401: code 3 (emphasis 2), entry 3, opacity F") << action;
  }
}

TEST_F(Inspector, FieldTellsOfThePixelThatScrollsUnderThePointer) {
  Window.findChild<QAction*>("Action_ZoomIn")->trigger();
  Window.findChild<QAction*>("Action_ZoomIn")->trigger();
  QCoreApplication::processEvents();
  auto& picture = Control<QWidget>("Picture1");
  auto& area = static_cast<QScrollArea&>(*picture.parentWidget()->parentWidget());
  area.horizontalScrollBar()->setValue(100);
  area.verticalScrollBar()->setValue(100);
  const Pointer pointer;
  pointer.GoTo(picture, {201, 301});
  EXPECT_EQ(Pixel(), "100, 150");
  area.horizontalScrollBar()->setValue(60);
  EXPECT_EQ(Pixel(), "80, 150");
  area.verticalScrollBar()->setValue(110);
  EXPECT_EQ(Pixel(), "80, 155");
}

TEST_F(Inspector, FieldTellsOfTheSecondStream) {
  Merge(SecondaryStream({90}), "10");
  PointAt(202, 210);
  EXPECT_EQ(Pixel(), "202, 210: 2nd, code 1 (pattern), entry 1, opacity F");
  PointAt(102, 400);
  EXPECT_EQ(Pixel(), "102, 400: code 1 (pattern), entry 1, opacity F");
}

TEST_F(Inspector, FieldFollowsWhatIsMerged) {
  Merge(SecondaryStream({90, 450}), "10");  // at the starts of the first two
  Click("Command_Next");
  PointAt(102, 400);
  EXPECT_EQ(Pixel(), "102, 400");
  PointAt(102, 420);
  EXPECT_EQ(Pixel(), "102, 420: code 1 (pattern), entry 1, opacity F");
  PointAt(202, 230);
  EXPECT_EQ(Pixel(), "202, 230: 2nd, code 1 (pattern), entry 1, opacity F");
  Click("Check_MergedCodes");
  Choose("Combo_SecondaryCode_1", "3");
  Choose("Combo_ResultColour_1", "4");
  PointAt(102, 420);
  EXPECT_EQ(Pixel(), "102, 420: code 1 (pattern), entry 4, opacity F");
  PointAt(202, 230);
  EXPECT_EQ(Pixel(), "202, 230: 2nd, code 3 (emphasis 2), entry 3, opacity F");
}

TEST_F(Inspector, LoupeOpensInTheSubtitleAndIsMovedByKeys) {
  auto& next = Control<QWidget>("Command_Next");
  next.setFocus();
  EXPECT_FALSE(TheLoupe().isVisible());
  Press(Qt::Key_Z);
  ASSERT_TRUE(TheLoupe().isVisible());
  EXPECT_TRUE(TheLoupe().hasFocus());
  EXPECT_EQ(TheLoupe().accessibleDescription(), "103, 400: code 1 (pattern), entry 1, opacity F");
  Press(Qt::Key_Right);
  Press(Qt::Key_Down);
  EXPECT_EQ(TheLoupe().accessibleDescription(), "104, 401: code 2 (emphasis 1), entry 2, opacity F");
  EXPECT_EQ(Pixel(), TheLoupe().accessibleDescription());
  Press(Qt::Key_Left, Qt::ShiftModifier);
  Press(Qt::Key_Up);
  EXPECT_EQ(Pixel(), "94, 400");
  Press(Qt::Key_PageDown);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  Press(Qt::Key_Escape);
  EXPECT_FALSE(TheLoupe().isVisible());
  EXPECT_FALSE(Window.findChild<QAction*>("Action_Loupe")->isChecked());
  EXPECT_TRUE(next.hasFocus());
}

TEST_F(Inspector, LoupeShowsPixelsMagnifiedWherePointedAt) {
  PointAt(102, 400);
  Press(Qt::Key_Z);
  ASSERT_TRUE(TheLoupe().isVisible());
  const auto middle = [this] {
    const QImage loupe = TheLoupe().grab().toImage();
    return loupe.pixelColor(loupe.width() / 2, 2 + 7 * 12 + 6);
  };
  EXPECT_EQ(middle(), TextColour);
  PointAt(106, 400);
  EXPECT_EQ(middle(), QColor(2, 252, 2));
  EXPECT_EQ(TheLoupe().accessibleDescription(), "106, 400: code 3 (emphasis 2), entry 3, opacity F");
  Control<QWidget>("Command_Next").setFocus();
  Press(Qt::Key_Escape);
  EXPECT_FALSE(TheLoupe().isVisible());
  Press(Qt::Key_Z);
  EXPECT_TRUE(TheLoupe().isVisible());
  Press(Qt::Key_Z);
  EXPECT_FALSE(TheLoupe().isVisible());
}

TEST_F(Inspector, LoupeTellsItsPixelInTwoLinesBelowIt) {
  PointAt(102, 400);
  Press(Qt::Key_Z);
  const QImage loupe = TheLoupe().grab().toImage();
  const int top = 2 + 15 * 12;
  const int lineHeight = (loupe.height() - 2 - top) / 2;
  const QRgb ground = loupe.pixel(4, top + 1);
  for (const int line : {0, 1}) {
    int inked = 0;
    for (int y = top + line * lineHeight; y < top + (line + 1) * lineHeight; ++y) {
      for (int x = 4; x < loupe.width() - 4; ++x) {
        inked += loupe.pixel(x, y) != ground ? 1 : 0;
      }
    }
    EXPECT_GT(inked, 20) << line;
  }
}

TEST_F(Inspector, LoupeShowsTheFramesCornerAndNothingBesideIt) {
  PointAt(0, 0);
  Press(Qt::Key_Z);
  QTest::keyClick(&TheLoupe(), Qt::Key_Up);
  EXPECT_EQ(Pixel(), "0, 0");
  const QImage loupe = TheLoupe().grab().toImage();
  const QPoint middle(2 + (loupe.width() - 4 - 15 * 12) / 2 + 7 * 12, 2 + 7 * 12);
  const QColor empty = Window.palette().color(QPalette::Window);
  EXPECT_EQ(loupe.pixelColor(middle + QPoint(5, 5)), QColor(60, 60, 60));
  EXPECT_EQ(loupe.pixelColor(middle + QPoint(-8, 5)), empty);
  EXPECT_EQ(loupe.pixelColor(middle + QPoint(5, -8)), empty);
}

TEST_F(Inspector, LoupeIsDrawnInTheThemesColours) {
  PointAt(102, 400);
  Press(Qt::Key_Z);
  ASSERT_TRUE(TheLoupe().hasFocus());
  const QPalette& theme = TheLoupe().palette();
  EXPECT_EQ(TheLoupe().grab().toImage().pixelColor(0, 0), theme.color(QPalette::Highlight));
  Control<QWidget>("Command_Next").setFocus();
  const QImage loupe = TheLoupe().grab().toImage();
  EXPECT_EQ(loupe.pixelColor(0, 0), theme.color(QPalette::WindowText));
  int inText = 0;
  for (int y = 2 + 15 * 12; y < loupe.height() - 2; ++y) {
    for (int x = 4; x < loupe.width() - 4; ++x) {
      inText += loupe.pixelColor(x, y) == theme.color(QPalette::WindowText) ? 1 : 0;
    }
  }
  EXPECT_GT(inText, 20);
}

TEST_F(Inspector, LetterZIsTypedInFields) {
  auto& filter = Control<QLineEdit>("Text_Filter");
  filter.setFocus();
  Press(Qt::Key_Z);
  EXPECT_EQ(filter.text(), "z");
  EXPECT_FALSE(TheLoupe().isVisible());
}

TEST_F(Inspector, LoupeStopsAtTheEdgesOfTheFrame) {
  Press(Qt::Key_Z);
  const auto goFar = [this](Qt::Key key) {
    for (int i = 0; i < 80; ++i) {
      QTest::keyClick(&TheLoupe(), key, Qt::ShiftModifier);
    }
  };
  goFar(Qt::Key_Left);
  EXPECT_EQ(Pixel(), "0, 400");
  goFar(Qt::Key_Up);
  EXPECT_EQ(Pixel(), "0, 0");
  goFar(Qt::Key_Right);
  EXPECT_EQ(Pixel(), "719, 0");
  goFar(Qt::Key_Down);
  EXPECT_EQ(Pixel(), "719, 575");
}

TEST_F(Inspector, PixelOfTheLoupeComesIntoSight) {
  for (int i = 0; i < 4; ++i) {
    Window.findChild<QAction*>("Action_ZoomIn")->trigger();
  }
  QCoreApplication::processEvents();
  PointAt(102, 400);
  Press(Qt::Key_Z);
  for (int i = 0; i < 80; ++i) {
    QTest::keyClick(&TheLoupe(), Qt::Key_Up, Qt::ShiftModifier);
    QTest::keyClick(&TheLoupe(), Qt::Key_Left, Qt::ShiftModifier);
  }
  EXPECT_EQ(Pixel(), "0, 0");
  EXPECT_TRUE(Control<QWidget>("Picture1").visibleRegion().contains(QPoint(0, 0)) ||
              Control<QWidget>("Picture1").pos() == QPoint(0, 0));
}

TEST_F(Inspector, LoupeFramesItsPixelAndGoesOutOfTheWay) {
  PointAt(102, 400);
  Press(Qt::Key_Z);
  const QImage loupe = TheLoupe().grab().toImage();
  // Fifteen pixels of 12 screen pixels each, below an edge of two; a white frame in a black one around the
  // eighth.
  const int left = 2 + (loupe.width() - 4 - 15 * 12) / 2;
  const QPoint middle(left + 7 * 12, 2 + 7 * 12);
  EXPECT_EQ(loupe.pixelColor(middle), TextColour);
  EXPECT_EQ(loupe.pixelColor(middle - QPoint(1, 0)), QColor(Qt::white));
  EXPECT_EQ(loupe.pixelColor(middle - QPoint(2, 0)), QColor(Qt::black));
  EXPECT_EQ(loupe.pixelColor(middle + QPoint(12, 11)), QColor(Qt::white));
  EXPECT_EQ(loupe.pixelColor(middle + QPoint(13, 11)), QColor(Qt::black));
  // No sixteenth pixel beside them.
  ASSERT_GT(left, 4);
  const QColor empty = Window.palette().color(QPalette::Window);
  EXPECT_EQ(loupe.pixelColor(left - 2, 20), empty);
  EXPECT_EQ(loupe.pixelColor(left + 15 * 12 + 1, 20), empty);
  EXPECT_EQ(TheLoupe().pos(), QPoint(8, 8));
  PointAt(20, 20);
  EXPECT_EQ(TheLoupe().geometry().top(), 8);
  EXPECT_EQ(TheLoupe().geometry().right(), TheLoupe().parentWidget()->width() - 9);
}

}  // namespace
}  // namespace quillmark::test
