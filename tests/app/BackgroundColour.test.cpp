#include <QAction>
#include <QCoreApplication>
#include <QRadioButton>

#include "tests/app/MergeTest.h"
#include "tests/app/Streams.h"

namespace quillmark::test {
namespace {

class BackgroundColour : public MergeTest {
 protected:
  void SetUp() override { LoadStream(ThreeSubtitles()); }
  void Pick(const char* action) {
    Window.findChild<QAction*>(action)->trigger();
    QCoreApplication::processEvents();
  }
  /// One colour but for the subtitle's 8x2 pixels at (100, y), of which the first two are clear.
  [[nodiscard]] QImage Expected(const QColor& ground, int y) const {
    QImage frame(720, 576, QImage::Format_RGB32);
    frame.fill(ground);
    for (int line = y; line < y + 2; ++line) {
      for (int x = 0; x < 6; ++x) {
        const QColor codes[] = {QColor(3, 253, 251), QColor(255, 255, 255), QColor(2, 252, 2)};
        frame.setPixelColor(102 + x, line, codes[x / 2]);
      }
    }
    return frame;
  }
  [[nodiscard]] QImage Shown() const { return Frame().convertToFormat(QImage::Format_RGB32); }
};

TEST_F(BackgroundColour, FillsTheFrameFromBlackOn) {
  EXPECT_EQ(Control<QRadioButton>("Option_Colour").text(), "Colour");
  Click("Option_Colour");
  EXPECT_EQ(Shown(), Expected(Qt::black, 400));
  EXPECT_TRUE(Window.findChild<QAction*>("Action_Colour")->isChecked());
}

TEST_F(BackgroundColour, StepsLeaveNothing) {
  Pick("Action_GroundGrey");
  Click("Command_Next");
  Click("Command_Next");
  EXPECT_EQ(Shown(), Expected(QColor(128, 128, 128), 440));
}

TEST_F(BackgroundColour, CheckerComesBack) {
  const QImage before = Shown();
  Pick("Action_GroundWhite");
  EXPECT_EQ(Shown(), Expected(Qt::white, 400));
  Click("Option_Checker");
  EXPECT_EQ(Shown(), before);
  Pick("Action_Colour");
  EXPECT_EQ(Shown(), Expected(Qt::white, 400));
}

TEST_F(BackgroundColour, SquarePicksOne) {
  Dialogs.ExpectColour(QColor(10, 20, 30));
  Click("Label_Ground");
  EXPECT_TRUE(IsChecked("Option_Colour"));
  EXPECT_EQ(Shown(), Expected(QColor(10, 20, 30), 400));
  EXPECT_EQ(Control<QWidget>("Label_Ground").accessibleDescription(), "#0A141E");
  EXPECT_EQ(Control<QWidget>("Label_Ground").grab().toImage().pixelColor(6, 6), QColor(10, 20, 30));
}

TEST_F(BackgroundColour, PickThatIsCancelledChangesNothing) {
  const QImage before = Shown();
  Dialogs.ExpectCancelled(DialogKind::Colour);
  Pick("Action_GroundPick");
  EXPECT_TRUE(IsChecked("Option_Checker"));
  EXPECT_EQ(Shown(), before);
}

TEST_F(BackgroundColour, IsDisabledInMergeModeAsTheOthersAre) {
  Merge(ThreeSubtitles());
  for (const char* name : {"Action_Colour", "Action_GroundBlack", "Action_GroundPick"}) {
    EXPECT_FALSE(Window.findChild<QAction*>(name)->isEnabled()) << name;
  }
  EXPECT_FALSE(IsEnabled("Label_Ground"));
  EXPECT_FALSE(IsEnabled("Option_Colour"));
}

}  // namespace
}  // namespace quillmark::test
