#include <string>

#include <QCoreApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include "tests/app/PaletteFiles.h"
#include "tests/app/ReviewTest.h"

namespace quillmark::test {
namespace {

/// What stands on the screen after each step is what painting the whole window anew gives: nothing of what
/// stood there before is left.
class OnScreen : public ReviewTest {
 protected:
  void SetUp() override {
    LoadStream(ThreeSubtitles());
    Window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window));
  }
  static Bytes OtherTwo() {
    return Join({FourCodes(PacketBuilder().Time(1 * Second).Delay(100), 100, 380),
                 FourCodes(PacketBuilder().Time(5 * Second).Delay(100), 100, 400)});
  }
  void ExpectRepainted(const std::string& after) {
    for (int i = 0; i < 3; ++i) {
      QCoreApplication::processEvents();
    }
    const QImage shown = Window.screen()
                             ->grabWindow(Window.winId(), 0, 0, Window.width(), Window.height())
                             .toImage()
                             .convertToFormat(QImage::Format_RGB32);
    const QImage anew = Window.grab().toImage().convertToFormat(QImage::Format_RGB32);
    ASSERT_EQ(shown.size(), anew.size());
    QRect differs;
    for (int y = 0; y < anew.height(); ++y) {
      for (int x = 0; x < anew.width(); ++x) {
        if (shown.pixel(x, y) != anew.pixel(x, y)) {
          differs |= QRect(x, y, 1, 1);
        }
      }
    }
    EXPECT_TRUE(differs.isEmpty()) << after << ": " << differs.x() << ", " << differs.y() << ", "
                                   << differs.width() << " x " << differs.height();
  }
};

TEST_F(OnScreen, AfterEachStepItIsWhatPaintingAnewGives) {
  ExpectRepainted("loading");
  Click("Command_Next");
  ExpectRepainted("the next subtitle");
  Dialogs.ExpectColour(QColor(10, 20, 30));
  Click("Label1_1");
  Dialogs.Verify();
  ExpectRepainted("another colour of the palette");
  Dialogs.ExpectOpen(Write("red.pal", PalWithRed()));
  Click("Command_LoadPalette");
  Dialogs.Verify();
  ExpectRepainted("another palette");
  Choose("ImageCombo2", "7");
  ExpectRepainted("another colour of a code");
  Choose("Combo1_1", "5");
  ExpectRepainted("another opacity");
  Click("Command_SetAll");
  ExpectRepainted("setting it for all");
  Action("Undo").trigger();
  ExpectRepainted("taking it back");
  Click("Option_Colour");
  ExpectRepainted("another background");
  Click("Option_720x480");
  ExpectRepainted("another frame");
  for (const char* guide : {"SafeAreas", "SubtitleArea", "Rulers", "Letterbox", "ZoomIn", "ZoomOut"}) {
    Action(guide).trigger();
    ExpectRepainted(guide);
  }
  // Without the letterbox, which has no room to scroll.
  for (const char* action : {"Letterbox", "ZoomIn", "ZoomIn"}) {
    Action(action).trigger();
  }
  ExpectRepainted("a larger frame");
  auto* view = qobject_cast<QScrollArea*>(Control<QWidget>("Picture1").parentWidget()->parentWidget());
  ASSERT_NE(view, nullptr);
  for (QScrollBar* bar : {view->verticalScrollBar(), view->horizontalScrollBar()}) {
    ASSERT_GT(bar->maximum(), 64);
    bar->setValue(bar->value() > 64 ? bar->value() - 64 : 64);
    ExpectRepainted("scrolling the frame");
  }
  Click("Command_Prev");
  ExpectRepainted("the subtitle before");
}

TEST_F(OnScreen, WhileWhatIsPaintedOverTheFrameScrollsToo) {
  for (const char* action : {"Rulers", "ZoomIn", "ZoomIn"}) {
    Action(action).trigger();
  }
  const auto* area = qobject_cast<QScrollArea*>(Control<QWidget>("Picture1").parentWidget()->parentWidget());
  for (QScrollBar* bar : {area->verticalScrollBar(), area->horizontalScrollBar()}) {
    const int before = bar->value();
    bar->setValue(before - 37);
    ASSERT_EQ(bar->value(), before - 37);
    ExpectRepainted("scrolling");
  }
  Window.resize(Window.size() - QSize(60, 40));
  ExpectRepainted("a smaller window");
  Window.resize(Window.size() + QSize(60, 40));
  ExpectRepainted("a larger window");
}

/// The caption stands in the middle of what is in sight.
TEST_F(OnScreen, WhileMoreOfAFrameThatStaysComesIntoSightToo) {
  Window.resize(1700, 900);
  for (const char* action : {"PanAndScan", "ZoomIn", "ZoomIn", "ZoomIn"}) {
    Action(action).trigger();
    QCoreApplication::processEvents();
  }
  const auto& picture = Control<QWidget>("Picture1");
  const auto* area = qobject_cast<QScrollArea*>(picture.parentWidget()->parentWidget());
  area->horizontalScrollBar()->setValue(0);
  ExpectRepainted("scrolling");
  const int before = area->viewport()->width();
  Action("List").trigger();
  ExpectRepainted("hiding the list");
  ASSERT_GT(area->viewport()->width(), before);
  EXPECT_EQ(picture.x(), 0);
}

TEST_F(OnScreen, WhileTheLoupeGoesAboutToo) {
  Action("Loupe").trigger();
  ExpectRepainted("the loupe");
  for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Left}) {
    QTest::keyClick(&Control<QWidget>("Loupe"), key);
    ExpectRepainted("another pixel");
  }
  QTest::keyClick(&Control<QWidget>("Loupe"), Qt::Key_Escape);
  ExpectRepainted("no loupe");
}

TEST_F(OnScreen, WhileStreamsAreMergedToo) {
  Merge(OtherTwo(), "20");
  Review();
  ExpectRepainted("merging");
  TypeOffset("-150");
  Review();
  ExpectRepainted("another offset");
  ClickPair(2);
  ExpectRepainted("another row");
  Click("Check_MergedCodes");
  ExpectRepainted("the codes");
  Choose("Combo_SecondaryCode_1", "3");
  Review();
  ExpectRepainted("another code");
  Click("Option_Split");
  Review();
  ExpectRepainted("packets of both");
  Action("LeaveMerge").trigger();
  ExpectRepainted("leaving");
}

}  // namespace
}  // namespace quillmark::test
