#include "app/ViewZoom.h"

#include <QAction>
#include <QApplication>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>

#include "tests/app/MergeTest.h"
#include "tests/app/Streams.h"

namespace quillmark::test {
namespace {

TEST(ZoomSteps, GoFrom50To800Percent) {
  EXPECT_EQ(ZoomStepAbove(100), 150);
  EXPECT_EQ(ZoomStepAbove(800), 800);
  EXPECT_EQ(ZoomStepAbove(119.3), 150);
  EXPECT_EQ(ZoomStepAbove(99.7), 150);  // a frame that fits to less than half a percent of 100
  EXPECT_EQ(ZoomStepAbove(99.5), 150);
  EXPECT_EQ(ZoomStepAbove(99.4), 100);
  EXPECT_EQ(ZoomStepBelow(100.5), 75);
  EXPECT_EQ(ZoomStepBelow(100.6), 100);
  EXPECT_EQ(ZoomStepBelow(100), 75);
  EXPECT_EQ(ZoomStepBelow(50), 50);
  EXPECT_EQ(ZoomStepBelow(119.3), 100);
}

TEST(ZoomSteps, AreTheSameUpAndDown) {
  const std::vector<int> steps = {50, 75, 100, 150, 200, 300, 400, 600, 800};
  for (std::size_t i = 1; i < steps.size(); ++i) {
    EXPECT_EQ(ZoomStepAbove(steps[i - 1]), steps[i]);
    EXPECT_EQ(ZoomStepBelow(steps[i]), steps[i - 1]);
  }
}

TEST(SizeOnScreen, AspectsKeepTheLines) {
  EXPECT_EQ(SizeOnScreen(576, 1, DisplayAspect::Square), QSize(720, 576));
  EXPECT_EQ(SizeOnScreen(576, 1, DisplayAspect::FourToThree), QSize(768, 576));
  EXPECT_EQ(SizeOnScreen(576, 1, DisplayAspect::SixteenToNine), QSize(1024, 576));
  EXPECT_EQ(SizeOnScreen(480, 1, DisplayAspect::FourToThree), QSize(640, 480));
  EXPECT_EQ(SizeOnScreen(480, 1, DisplayAspect::SixteenToNine), QSize(853, 480));
  EXPECT_EQ(SizeOnScreen(576, 1.5, DisplayAspect::Square), QSize(1080, 864));
}

TEST(LinePixelsInto, TheShorterSideDecides) {
  EXPECT_DOUBLE_EQ(LinePixelsInto({720, 10000}, 576, DisplayAspect::Square), 1);
  EXPECT_DOUBLE_EQ(LinePixelsInto({10000, 1152}, 576, DisplayAspect::Square), 2);
  EXPECT_DOUBLE_EQ(LinePixelsInto({512, 10000}, 576, DisplayAspect::SixteenToNine), 0.5);
}

class ViewZoomTest : public MergeTest {
 protected:
  void SetUp() override { Resize({1358, 728}); }

  void Resize(QSize size) {
    Window.resize(size);
    // Parts of the window are laid out one after the other.
    for (int i = 0; i < 5; ++i) {
      QCoreApplication::processEvents();
    }
    ASSERT_EQ(Window.size(), size);
  }
  void Trigger(const char* action) {
    Window.findChild<QAction*>(action)->trigger();
    QCoreApplication::processEvents();
  }
  void Press(Qt::Key key) {
    QTest::keyClick(&Window, key, Qt::ControlModifier);
    QCoreApplication::processEvents();
  }
  [[nodiscard]] QWidget& Picture() const { return Control<QWidget>("Picture1"); }
  [[nodiscard]] QWidget& View() const { return *Picture().parentWidget(); }
  /// `at` is a place of the view.
  void Turn(QPoint at, int steps) {
    const QPoint place = Picture().mapFrom(&View(), at);
    QWheelEvent event(place, Picture().mapToGlobal(place), {}, {0, 120 * steps}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(&Picture(), &event);
    QCoreApplication::processEvents();
  }
  /// The frame pixel in the middle of a place of the view, by the picture's own place and size.
  [[nodiscard]] QPoint PixelAt(QPoint at) const {
    const QPoint place = Picture().mapFrom(&View(), at);
    return {(2 * place.x() + 1) * 720 / (2 * Picture().width()),
            (2 * place.y() + 1) * 576 / (2 * Picture().height())};
  }
  void Drag(QPoint from, QPoint to, Qt::MouseButton button = Qt::LeftButton) {
    const auto place = [this](QPoint at) { return Picture().mapFrom(&View(), at); };
    QTest::mousePress(&Picture(), button, {}, place(from));
    QMouseEvent move(QEvent::MouseMove, place(to), Picture().mapToGlobal(QPointF(place(to))), Qt::NoButton,
                     button, {});
    QApplication::sendEvent(&Picture(), &move);
    QTest::mouseRelease(&Picture(), button, {}, place(to));
    QCoreApplication::processEvents();
  }
};

TEST_F(ViewZoomTest, StartsAt100PercentInSquarePixels) {
  EXPECT_EQ(Picture().size(), QSize(720, 576));
  EXPECT_TRUE(Window.findChild<QAction*>("Action_Square")->isChecked());
  EXPECT_FALSE(Window.findChild<QAction*>("Action_ZoomFit")->isChecked());
}

TEST_F(ViewZoomTest, KeysGoFromStepToStep) {
  Press(Qt::Key_Plus);
  EXPECT_EQ(Picture().size(), QSize(1080, 864));
  Press(Qt::Key_Equal);
  EXPECT_EQ(Picture().size(), QSize(1440, 1152));
  EXPECT_EQ(Control<QWidget>("StatusBar").accessibleName(), "Zoom 200 %");
  Press(Qt::Key_Minus);
  EXPECT_EQ(Picture().size(), QSize(1080, 864));
  Press(Qt::Key_0);
  EXPECT_EQ(Picture().size(), QSize(720, 576));
  Press(Qt::Key_Minus);
  EXPECT_EQ(Picture().size(), QSize(540, 432));
  Press(Qt::Key_9);
  EXPECT_TRUE(Window.findChild<QAction*>("Action_ZoomFit")->isChecked());
  Press(Qt::Key_0);
  EXPECT_FALSE(Window.findChild<QAction*>("Action_ZoomFit")->isChecked());
}

TEST_F(ViewZoomTest, AspectStretchesTheColumns) {
  Trigger("Action_16x9");
  EXPECT_EQ(Picture().size(), QSize(1024, 576));
  Click("Option_720x480");
  EXPECT_EQ(Picture().size(), QSize(853, 480));
  Trigger("Action_4x3");
  EXPECT_EQ(Picture().size(), QSize(640, 480));
  Press(Qt::Key_0);
  EXPECT_EQ(Picture().size(), QSize(640, 480));
  Trigger("Action_Square");
  EXPECT_EQ(Picture().size(), QSize(720, 480));
}

TEST_F(ViewZoomTest, FittingFrameIsWhollyInSightAndAsLargeAsThereIsRoom) {
  for (const QSize size : {QSize(1358, 728), QSize(960, 560), QSize(1900, 1000), QSize(2500, 1300)}) {
    Resize(size);
    for (const char* aspect : {"Action_Square", "Action_4x3", "Action_16x9"}) {
      Trigger(aspect);
      Trigger("Action_ZoomFit");
      const QSize shown = Picture().size();
      EXPECT_EQ(Picture().visibleRegion(), QRegion(Picture().rect())) << size.width() << aspect;
      EXPECT_TRUE(View().width() - shown.width() <= 1 || View().height() - shown.height() <= 1)
          << size.width() << aspect;
    }
  }
}

TEST_F(ViewZoomTest, FittingFrameFollowsTheWindow) {
  Trigger("Action_ZoomFit");
  for (const QSize size : {QSize(960, 560), QSize(1900, 1000), QSize(1358, 728)}) {
    Resize(size);
    EXPECT_EQ(Picture().visibleRegion(), QRegion(Picture().rect())) << size.width();
    EXPECT_TRUE(View().width() - Picture().width() <= 1 || View().height() - Picture().height() <= 1)
        << size.width();
  }
  Trigger("Action_Zoom100");
  Resize({1900, 1000});
  EXPECT_EQ(Picture().size(), QSize(720, 576));
}

TEST_F(ViewZoomTest, FrameFitsBelowWhatIsSaidAboveIt) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  ASSERT_TRUE(Control<QWidget>("Strip_Closed").isVisible());
  for (const QSize size : {QSize(1358, 728), QSize(960, 560), QSize(1900, 1000), QSize(2500, 1300)}) {
    Resize(size);
    Trigger("Action_ZoomFit");
    EXPECT_EQ(Picture().visibleRegion(), QRegion(Picture().rect())) << size.width();
    EXPECT_TRUE(View().width() - Picture().width() <= 1 || View().height() - Picture().height() <= 1)
        << size.width();
  }
}

TEST_F(ViewZoomTest, ZoomTakesNothingOutOfSight) {
  for (const char* action : {"Action_ZoomIn", "Action_ZoomIn", "Action_16x9", "Action_ZoomFit"}) {
    Trigger(action);
    for (const char* name : {"Command_LoadSup", "Command_SetAll", "List_Subtitles", "Option_720x576",
                             "Command_SaveSecond", "Text_GraphFile"}) {
      const auto& control = Control<QWidget>(name);
      EXPECT_EQ(control.visibleRegion().boundingRect(), control.rect()) << action << name;
    }
  }
}

TEST_F(ViewZoomTest, At100PercentEverythingStandsWhereItStood) {
  const QRect before(Picture().mapTo(&Window, QPoint()), Picture().size());
  const QRect list = Control<QWidget>("List_Subtitles").geometry();
  Trigger("Action_ZoomIn");
  Trigger("Action_16x9");
  Trigger("Action_ZoomFit");
  Turn({30, 30}, 2);
  Turn({300, 200}, -1);
  Trigger("Action_Square");
  Trigger("Action_Zoom100");
  EXPECT_EQ(QRect(Picture().mapTo(&Window, QPoint()), Picture().size()), before);
  EXPECT_EQ(Control<QWidget>("List_Subtitles").geometry(), list);
}

TEST_F(ViewZoomTest, WheelWithControlKeepsThePixelUnderThePointer) {
  for (const QSize size : {QSize(1358, 728), QSize(960, 560), QSize(1900, 1000)}) {
    Resize(size);
    Trigger("Action_Zoom100");
    const QRect seen = Picture().geometry() & View().rect();
    for (const QPointF part : {QPointF(0.01, 0.02), QPointF(0.4, 0.5), QPointF(0.97, 0.99)}) {
      const QPoint at = seen.topLeft() + QPoint(static_cast<int>(seen.width() * part.x()),
                                                static_cast<int>(seen.height() * part.y()));
      const QPoint pixel = PixelAt(at);
      for (const int steps : {1, 1, 2, 2, -1, -1, -1}) {
        Turn(at, steps);
        EXPECT_EQ(PixelAt(at), pixel) << size.width() << ' ' << at.x() << ' ' << Picture().width();
      }
      EXPECT_EQ(Picture().width(), 2160);
      Trigger("Action_Zoom100");
    }
  }
}

/// An event of the system's goes on to what the picture stands in, unless it is accepted.
TEST_F(ViewZoomTest, StepOfTheWheelIsTakenOnce) {
  QWheelEvent event(QPointF(9, 9), Picture().mapToGlobal(QPointF(9, 9)), {}, {0, 120}, Qt::NoButton,
                    Qt::ControlModifier, Qt::NoScrollPhase, false);
  QSpontaneKeyEvent::setSpontaneous(&event);
  QApplication::instance()->notify(&Picture(), &event);
  EXPECT_EQ(Picture().width(), 1080);
}

TEST_F(ViewZoomTest, FinePartsOfAWheelsStepAddUp) {
  for (int i = 0; i < 8; ++i) {
    QWheelEvent event(QPointF(9, 9), Picture().mapToGlobal(QPointF(9, 9)), {}, {0, 15}, Qt::NoButton,
                      Qt::ControlModifier, Qt::NoScrollPhase, false);
    EXPECT_EQ(Picture().width(), 720);
    QApplication::sendEvent(&Picture(), &event);
  }
  EXPECT_EQ(Picture().width(), 1080);
}

TEST_F(ViewZoomTest, WheelAloneScrolls) {
  Trigger("Action_ZoomIn");
  const QPoint before = Picture().pos();
  QWheelEvent event(QPointF(200, 200), View().mapToGlobal(QPointF(200, 200)), {}, {0, 120}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&View(), &event);
  EXPECT_EQ(Picture().width(), 1080);
  EXPECT_GT(Picture().y(), before.y());
}

TEST_F(ViewZoomTest, DraggedPixelFollowsThePointer) {
  Turn({300, 300}, 2);
  const QPoint pixel = PixelAt({300, 300});
  Drag({300, 300}, {350, 280});
  EXPECT_EQ(PixelAt({350, 280}), pixel);
  Drag({350, 280}, {330, 310});
  EXPECT_EQ(PixelAt({330, 310}), pixel);
}

TEST_F(ViewZoomTest, DraggingEndsAtThePicturesEdges) {
  Trigger("Action_ZoomIn");
  Drag({10, 10}, {3000, 3000});
  EXPECT_EQ(Picture().pos(), QPoint(0, 0));
  Drag({500, 500}, {-3000, -3000});
  EXPECT_EQ(Picture().geometry().bottomRight(), View().rect().bottomRight());
}

TEST_F(ViewZoomTest, FrameThatIsWhollyInSightIsNotDragged) {
  const QPoint before = Picture().pos();
  Drag({100, 100}, {200, 150});
  EXPECT_EQ(Picture().pos(), before);
}

TEST_F(ViewZoomTest, OtherButtonsMoveNothing) {
  Trigger("Action_ZoomIn");
  const QPoint before = Picture().pos();
  Drag({300, 300}, {320, 310}, Qt::RightButton);
  EXPECT_EQ(Picture().pos(), before);
}

TEST_F(ViewZoomTest, HandIsClosedWhileItHoldsThePicture) {
  Trigger("Action_ZoomIn");
  const QPoint place = Picture().mapFrom(&View(), QPoint(200, 150));
  QTest::mousePress(&Picture(), Qt::LeftButton, {}, place);
  EXPECT_EQ(View().cursor().shape(), Qt::ClosedHandCursor);
  QTest::mouseRelease(&Picture(), Qt::LeftButton, {}, place);
  EXPECT_EQ(View().cursor().shape(), Qt::OpenHandCursor);
}

TEST_F(ViewZoomTest, ScrollBarsStandWhereThePictureWasDragged) {
  for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
    Window.setLayoutDirection(direction);
    Trigger("Action_Zoom100");
    Trigger("Action_ZoomIn");
    Trigger("Action_ZoomIn");
    Drag({300, 300}, {320, 310});
    auto& area = static_cast<QScrollArea&>(*View().parentWidget());
    const QScrollBar& across = *area.horizontalScrollBar();
    EXPECT_GT(across.value(), 0);
    EXPECT_LT(across.value(), across.maximum());
    // From the right to the left the bar begins at the right.
    EXPECT_EQ(direction == Qt::LeftToRight ? -across.value() : across.value() - across.maximum(),
              Picture().x());
    EXPECT_EQ(-area.verticalScrollBar()->value(), Picture().y());
  }
}

/// One that the pointer holds where scrolling does not bring it.
TEST_F(ViewZoomTest, ZoomThatIsAlreadyThereMovesNothing) {
  Resize({1900, 1000});
  Turn(Picture().geometry().bottomLeft() + QPoint(300, -2), 6);
  ASSERT_EQ(Picture().width(), 8 * 720);
  const QPoint before = Picture().pos();
  ASSERT_LT(Picture().geometry().bottom(), View().rect().bottom());
  Trigger("Action_ZoomIn");
  EXPECT_EQ(Picture().pos(), before);
  Turn(View().rect().center(), 1);
  EXPECT_EQ(Picture().pos(), before);
}

TEST_F(ViewZoomTest, KeysZoomAboutTheLowerMiddleThenAboutTheMiddleInSight) {
  Trigger("Action_ZoomIn");
  EXPECT_EQ(Picture().geometry().bottom(), View().rect().bottom());
  EXPECT_LE(std::abs(Picture().geometry().center().x() - View().rect().center().x()), 1);
  Drag({300, 300}, {320, 350});
  const QPoint pixel = PixelAt(View().rect().center());
  Trigger("Action_ZoomIn");
  EXPECT_LE((PixelAt(View().rect().center()) - pixel).manhattanLength(), 2);
}

TEST_F(ViewZoomTest, NarrowerWindowKeepsTheMiddleColumnThatTheScrollBarLeft) {
  Trigger("Action_ZoomIn");
  Trigger("Action_ZoomIn");
  static_cast<QScrollArea&>(*View().parentWidget()).horizontalScrollBar()->setValue(100);
  const int before = View().width();
  const int column = PixelAt(View().rect().center()).x();
  Resize({1200, 728});
  ASSERT_LT(View().width(), before);
  EXPECT_LE(std::abs(PixelAt(View().rect().center()).x() - column), 2);
}

TEST_F(ViewZoomTest, NarrowerWindowKeepsTheMiddleColumnThatThePointerLeft) {
  Trigger("Action_ZoomIn");
  Trigger("Action_ZoomIn");
  Drag({300, 300}, {420, 300});
  const int before = View().width();
  const int column = PixelAt(View().rect().center()).x();
  Resize({1200, 728});
  ASSERT_LT(View().width(), before);
  EXPECT_LE(std::abs(PixelAt(View().rect().center()).x() - column), 2);
}

TEST_F(ViewZoomTest, WindowOfAnotherSizeLeavesThePictureWhereThePointerHoldsIt) {
  Resize({1900, 1000});
  Turn(Picture().geometry().bottomLeft() + QPoint(300, -2), 6);
  const QPoint before = Picture().pos();
  ASSERT_LT(Picture().geometry().bottom(), View().rect().bottom());
  for (const QSize size : {QSize(1880, 1000), QSize(1880, 960), QSize(1900, 1000)}) {
    Resize(size);
    EXPECT_EQ(Picture().pos(), before) << size.width() << ", " << size.height();
  }
}

TEST_F(ViewZoomTest, PictureThatThePointerHoldsDoesNotGoOutOfSight) {
  Resize({1900, 1000});
  Turn(Picture().geometry().topLeft() + QPoint(2, 300), 6);
  Turn({View().width() - 100, 300}, -5);
  ASSERT_EQ(Picture().width(), 1080);
  const int before = Picture().x();
  Resize({1620, 1000});
  ASSERT_GT(before, View().width() - 48);
  EXPECT_EQ(Picture().x(), View().width() - 48);
}

TEST_F(ViewZoomTest, PictureThatIsScrolledOrDraggedIsHeldNoLonger) {
  for (const bool scrolls : {true, false}) {
    Resize({1900, 1000});
    Trigger("Action_Zoom100");
    Turn(Picture().geometry().bottomLeft() + QPoint(300, -2), 6);
    ASSERT_LT(Picture().geometry().bottom(), View().rect().bottom());
    if (scrolls) {
      QScrollBar& bar = *static_cast<QScrollArea&>(*View().parentWidget()).verticalScrollBar();
      bar.setValue(0);
      bar.setValue(bar.maximum());
    } else {
      Drag({300, 300}, {300, -100});
      Drag({300, 300}, {300, 600});
      Drag({300, 300}, {300, -3000});
    }
    EXPECT_EQ(Picture().geometry().bottom(), View().rect().bottom()) << scrolls;
    Resize({1900, 900});
    EXPECT_EQ(Picture().geometry().bottom(), View().rect().bottom()) << scrolls;
  }
}

TEST_F(ViewZoomTest, LowerWindowKeepsTheLowestLineThatTheScrollBarLeft) {
  Resize({1358, 660});
  Trigger("Action_ZoomIn");
  Trigger("Action_ZoomIn");
  QScrollBar& bar = *static_cast<QScrollArea&>(*View().parentWidget()).verticalScrollBar();
  bar.setValue(bar.maximum() - 100);
  const int before = View().height();
  Resize({1358, 600});
  ASSERT_LT(View().height(), before);
  EXPECT_EQ(bar.value(), bar.maximum() - 100);
}

TEST_F(ViewZoomTest, SmallPictureStandsInTheMiddleAtTheTop) {
  Press(Qt::Key_Minus);
  Press(Qt::Key_Minus);
  ASSERT_EQ(Picture().size(), QSize(360, 288));
  ASSERT_GT(View().width(), 362);
  EXPECT_LE(std::abs(Picture().geometry().center().x() - View().rect().center().x()), 1);
  EXPECT_EQ(Picture().y(), 0);
}

TEST_F(ViewZoomTest, WheelBackTo100PercentHoldsNothing) {
  const QPoint before = Picture().pos();
  Turn({30, 30}, 1);
  Turn({500, 400}, -1);
  ASSERT_EQ(Picture().width(), 720);
  EXPECT_EQ(Picture().pos(), before);
}

TEST_F(ViewZoomTest, PictureThatIsTooWideAloneIsDraggedToo) {
  Resize({960, 1000});
  const auto& area = static_cast<QScrollArea&>(*View().parentWidget());
  ASSERT_GT(area.horizontalScrollBar()->maximum(), 0);
  ASSERT_EQ(area.verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(View().cursor().shape(), Qt::OpenHandCursor);
  EXPECT_EQ(area.focusPolicy(), Qt::StrongFocus);
  EXPECT_EQ(area.accessibleName(), "Subtitle frame");
}

TEST_F(ViewZoomTest, PointerIsAHandWhereThePictureCanBeDragged) {
  EXPECT_EQ(View().cursor().shape(), Qt::ArrowCursor);
  EXPECT_EQ(View().parentWidget()->focusPolicy(), Qt::NoFocus);
  Trigger("Action_ZoomIn");
  EXPECT_EQ(View().cursor().shape(), Qt::OpenHandCursor);
  EXPECT_EQ(View().parentWidget()->focusPolicy(), Qt::StrongFocus);
  Trigger("Action_Zoom100");
  EXPECT_EQ(View().cursor().shape(), Qt::ArrowCursor);
}

/// The picture saved, the stream, and both streams in one.
class WhatIsWritten : public ViewZoomTest {
 protected:
  std::vector<Bytes> Written() {
    std::vector<Bytes> written;
    LoadStream(ThreeSubtitles());
    Click("Check_SavePics");
    Click("Command_Next");
    Click("Check_SavePics");
    written.push_back(Read(Path("movie_SubPng/00+00+05+00.png")));
    written.push_back(SavedBytes());
    Merge(ThreeSubtitles());
    written.push_back(MergedBytes());
    return written;
  }
};

TEST_F(WhatIsWritten, IsTheSameHoweverTheFrameIsShown) {
  const std::vector<Bytes> before = Written();
  for (const Bytes& bytes : before) {
    EXPECT_FALSE(bytes.empty());
  }
  Trigger("Action_16x9");
  Turn({100, 100}, 3);
  EXPECT_EQ(Written(), before);
  Trigger("Action_ZoomFit");
  EXPECT_EQ(Written(), before);
}

}  // namespace
}  // namespace quillmark::test
