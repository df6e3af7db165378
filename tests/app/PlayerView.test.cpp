#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QSlider>
#include <QStatusBar>
#include <QTest>

#include "app/DisplayFrame.h"
#include "app/PlayerBar.h"
#include "tests/app/MergeTest.h"
#include "tests/app/Placing.h"
#include "tests/support/PlayedUnit.h"

namespace quillmark::test {
namespace {

const QColor DarkSquare(60, 60, 60);
const QColor LightSquare(120, 120, 120);
const QColor Entry1(3, 253, 251);
const QColor Entry2(255, 255, 255);
const QColor Entry4(253, 255, 4);

/// 4x2 pixels of code 1 above code 2 at (100, 400). Code 1 is entry 1, after 10 delay units (113.8 ms) entry
/// 2; after 20 (227.6 ms) the picture moves to (0, 2), after 30 (341.3 ms) it stops. `Still` is what the
/// window shows otherwise: what was set last.
PacketBuilder Moving(std::int64_t start = Second) {
  const Bytes picture = Join({StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                              SetArea(100, 103, 400, 401), SetFields(4, 6)});
  return Played({0x11, 0x00, 0x12, 0x00}, {{.Delay = 0, .Commands = picture},
                                           {.Delay = 10, .Commands = SetColour(3, 2, 2, 0)},
                                           {.Delay = 20, .Commands = SetArea(0, 3, 2, 3)},
                                           {.Delay = 30, .Commands = StopDisplay}})
      .Time(start);
}

class Player : public MergeTest {
 protected:
  void SetUp() override {
    Bar().SetClock([this] { return now_; });
  }

  PlayerBar& Bar() { return *Window.findChild<PlayerBar*>(); }
  QSlider& Slider() { return Control<QSlider>("Slider_Time"); }

  /// Lets so many milliseconds go by.
  void Pass(int ms) {
    now_ += ms;
    Bar().Advance();
  }

 private:
  std::int64_t now_ = 1'000'000;
};

TEST_F(Player, IsOffAtFirstAndNeedsASubtitle) {
  EXPECT_FALSE(IsEnabled("Check_Player"));
  EXPECT_FALSE(IsEnabled("Command_Play"));
  LoadStream(Moving().Build());
  EXPECT_TRUE(IsEnabled("Check_Player"));
  EXPECT_FALSE(IsChecked("Check_Player"));
  EXPECT_FALSE(IsEnabled("Slider_Time"));
  EXPECT_EQ(FrameColour(0, 2), Entry2);
}

TEST_F(Player, SliderShowsWhatHoldsAtItsTime) {
  LoadStream(Moving().Build());
  Click("Check_Player");
  EXPECT_EQ(Slider().value(), 0);
  EXPECT_EQ(Slider().maximum(), 342);
  EXPECT_EQ(Control<QLabel>("Label_Time").text(), "0.00 / 0.34 s");
  EXPECT_EQ(FrameColour(100, 400), Entry1);
  EXPECT_EQ(FrameColour(0, 2), DarkSquare);
  Slider().setValue(113);
  EXPECT_EQ(FrameColour(100, 400), Entry1);
  Slider().setValue(114);
  EXPECT_EQ(FrameColour(100, 400), Entry2);
  Slider().setValue(228);
  EXPECT_EQ(FrameColour(100, 400), LightSquare);
  EXPECT_EQ(FrameColour(0, 2), Entry2);
  Slider().setValue(342);
  EXPECT_EQ(FrameColour(0, 2), DarkSquare);
}

TEST_F(Player, PixelsAndAreaAreThoseOfTheTime) {
  LoadStream(Moving().Build());
  Click("Check_Player");
  Window.findChild<QAction*>("Action_Loupe")->trigger();  // in the middle of the subtitle's area
  EXPECT_EQ(TextOf("Text_Pixel"), "101, 400: code 1 (pattern), entry 1, opacity F");
  Slider().setValue(114);
  EXPECT_EQ(TextOf("Text_Pixel"), "101, 400: code 1 (pattern), entry 2, opacity F");
  auto& frame = *dynamic_cast<DisplayFrame*>(&Control<QWidget>("Picture1"));
  EXPECT_EQ(frame.Guides().Subtitles, std::vector{QRect(100, 400, 4, 2)});
  Slider().setValue(228);
  EXPECT_EQ(TextOf("Text_Pixel"), "101, 400");
  EXPECT_EQ(frame.Guides().Subtitles, std::vector{QRect(0, 2, 4, 2)});
  Slider().setValue(342);
  EXPECT_EQ(frame.Guides().Subtitles, std::vector<QRect>{});
  Click("Check_Player");
  EXPECT_EQ(frame.Guides().Subtitles, std::vector{QRect(0, 2, 4, 2)});
}

TEST_F(Player, WhileMergingItSaysWhyItIsOff) {
  LoadStream(Moving().Build());
  EXPECT_TRUE(Control<QCheckBox>("Check_Player").toolTip().startsWith("Carry out"));
  Merge(Moving().Build());
  EXPECT_FALSE(IsEnabled("Check_Player"));
  EXPECT_TRUE(Control<QCheckBox>("Check_Player").toolTip().startsWith("Not of a merged subtitle"));
}

TEST_F(Player, OffAgainTheStillPictureIsThere) {
  LoadStream(Moving().Build());
  const QImage still = Frame();
  Click("Check_Player");
  Click("Check_Player");
  EXPECT_EQ(Frame(), still);
}

TEST_F(Player, PlaysInItsOwnTimeUpToTheEnd) {
  LoadStream(Moving().Build());
  Click("Command_Play");
  EXPECT_TRUE(IsChecked("Check_Player"));
  EXPECT_EQ(Control<QAbstractButton>("Command_Play").text(), "Pause");
  Pass(120);
  EXPECT_EQ(Slider().value(), 120);
  EXPECT_EQ(FrameColour(100, 400), Entry2);
  Slider().setValue(20);  // dragged back
  EXPECT_EQ(FrameColour(100, 400), Entry1);
  Pass(220);
  EXPECT_EQ(Slider().value(), 240);
  EXPECT_EQ(FrameColour(0, 2), Entry2);
  Pass(500);
  EXPECT_EQ(Slider().value(), 342);
  EXPECT_EQ(FrameColour(0, 2), DarkSquare);
  EXPECT_EQ(Control<QAbstractButton>("Command_Play").text(), "Play");
  // Once more, from the start.
  Click("Command_Play");
  EXPECT_EQ(Slider().value(), 0);
  Click("Command_Play");
  Pass(100);
  EXPECT_EQ(Slider().value(), 0);
}

TEST_F(Player, SpacePlaysUnlessAControlTakesIt) {
  LoadStream(Moving().Build());
  Click("Check_Player");
  Slider().setFocus();
  QTest::keyClick(&Slider(), Qt::Key_Space);
  EXPECT_TRUE(Bar().IsPlaying());
  QTest::keyClick(&Slider(), Qt::Key_Space);
  EXPECT_FALSE(Bar().IsPlaying());
  QTest::keyClick(&Control<QCheckBox>("Check_Player"), Qt::Key_Space);
  EXPECT_FALSE(Bar().IsPlaying());
  EXPECT_FALSE(IsChecked("Check_Player"));
}

TEST_F(Player, SpacePlaysAlsoWhileTheLoupeHasTheFocus) {
  LoadStream(Moving().Build());
  Click("Check_Player");
  Window.findChild<QAction*>("Action_Loupe")->trigger();
  auto& loupe = Control<QWidget>("Loupe");
  QTest::keyClick(&loupe, Qt::Key_Space);
  EXPECT_TRUE(Bar().IsPlaying());
}

TEST_F(Player, MenuEntriesAreTheSameCommands) {
  LoadStream(Moving().Build());
  auto* player = Window.findChild<QAction*>("Action_Player");
  auto* play = Window.findChild<QAction*>("Action_Play");
  player->trigger();
  EXPECT_TRUE(IsChecked("Check_Player"));
  Click("Check_Player");
  EXPECT_FALSE(player->isChecked());
  play->trigger();
  EXPECT_TRUE(Bar().IsPlaying());
  EXPECT_TRUE(player->isChecked());
}

TEST_F(Player, NextSubtitleStartsAtItsOwnTimeAndGoesOnPlaying) {
  LoadStream(Join({Moving().Build(), Moving(5 * Second).Build()}));
  Click("Command_Play");
  Pass(300);
  Click("Command_Next");
  EXPECT_EQ(Slider().value(), 0);
  EXPECT_EQ(FrameColour(100, 400), Entry1);
  Pass(120);
  EXPECT_EQ(Slider().value(), 120);
  EXPECT_EQ(FrameColour(100, 400), Entry2);
}

TEST_F(Player, ResetStaysAtItsTime) {
  LoadStream(Moving().Build());
  Click("Check_Player");
  Slider().setValue(240);
  Click("Command_Reload");
  EXPECT_EQ(Slider().value(), 240);
  EXPECT_EQ(FrameColour(0, 2), Entry2);
}

TEST_F(Player, NextSubtitleTakesThePlaceOfTheOneBefore) {
  LoadStream(Join({Moving().Build(), Moving(Second + 9000).Build()}));
  Click("Check_Player");
  EXPECT_EQ(Slider().maximum(), 100);
  Slider().setValue(99);
  EXPECT_EQ(FrameColour(100, 400), Entry1);
  Slider().setValue(100);
  EXPECT_EQ(FrameColour(100, 400), LightSquare);
}

TEST_F(Player, WithoutTheNextSubtitleTheTimeIsLonger) {
  LoadStream(Join({Moving().Build(), Moving(Second + 9000).Build()}));
  Click("Check_Player");
  Slider().setValue(50);
  Dialogs.Expect(DialogKind::Other, [](QDialog& dialog) {
    auto& numbers = *dialog.findChild<QLineEdit*>("Text_Only");
    numbers.selectAll();
    QTest::keyClicks(&numbers, "2");
    QCoreApplication::processEvents();
    dialog.findChild<QAbstractButton*>("Command_Run")->click();
  });
  Window.findChild<QAction*>("Action_Cut")->trigger();
  Dialogs.Verify();
  EXPECT_EQ(Slider().maximum(), 342);
  EXPECT_EQ(Slider().value(), 50);
  EXPECT_EQ(Slider().minimum(), 0);
}

TEST_F(Player, WithoutAnEndTimeGoesOnForTenSeconds) {
  Bytes packet = FourCodes(PacketBuilder().Delay(2));
  packet[10 + 32 + 4] = 0x01;  // in place of "stop display"
  LoadStream(packet);
  Click("Check_Player");
  EXPECT_EQ(Slider().maximum(), 10'023);  // 2 x 1024 ticks are 22.8 ms
  Slider().setValue(Slider().maximum());
  EXPECT_EQ(FrameColour(102, 400), Entry1);
}

/// The choice is written where Set for actual writes it: into the last colours of the unit.
TEST_F(Player, ChoiceIsPreviewed) {
  LoadStream(Moving().Build());
  Click("Check_Player");
  Slider().setValue(120);
  Control<QComboBox>("ImageCombo2").setCurrentIndex(4);
  EXPECT_EQ(Slider().value(), 120);
  EXPECT_EQ(FrameColour(100, 400), Entry4);
  Slider().setValue(0);
  EXPECT_EQ(FrameColour(100, 400), Entry1);
}

TEST_F(Player, BackgroundAndFrameSizeAreTheWindows) {
  LoadStream(Moving().Build());
  QImage picture(8, 8, QImage::Format_RGB32);
  picture.fill(qRgb(10, 20, 30));
  ASSERT_TRUE(picture.save(Path("back.png")));
  Click("Check_Player");
  ShowBackground(Path("back.png"));
  EXPECT_EQ(FrameColour(0, 0), QColor(10, 20, 30));
  EXPECT_EQ(FrameColour(100, 400), Entry1);
  Slider().setValue(240);
  EXPECT_EQ(FrameColour(100, 400), QColor(10, 20, 30));
}

TEST_F(Player, SavedPicturesAreStillOnes) {
  const QString path = LoadStream(Join({Moving().Build(), Moving(5 * Second).Build()}));
  Click("Check_SavePics");
  Click("Check_Player");
  const QDir pictures(Path("movie_SubPng"));
  EXPECT_FALSE(pictures.exists());
  Click("Command_Next");
  const QStringList names = pictures.entryList(QDir::Files);
  ASSERT_EQ(names.size(), 1);
  EXPECT_EQ(QImage(pictures.filePath(names.first())).pixelColor(0, 0), Entry2);
  QFile::remove(pictures.filePath(names.first()));
  Slider().setValue(240);
  Click("Check_Player");
  EXPECT_TRUE(pictures.entryList(QDir::Files).isEmpty());
}

TEST_F(Player, SavedStreamIsTheSame) {
  const Bytes stream = Moving().Build();
  LoadStream(stream);
  Click("Command_Play");
  Pass(120);
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Player, GoesOffWhileStreamsAreMerged) {
  LoadStream(PrimaryStream({{.Start = 1000, .Delay = 100}}));
  Click("Command_Play");
  Merge(SecondaryStream({1000}));
  EXPECT_FALSE(IsChecked("Check_Player"));
  EXPECT_FALSE(IsEnabled("Check_Player"));
  EXPECT_FALSE(Bar().IsPlaying());
  EXPECT_EQ(FrameColour(102, 100), TextColour);
  EXPECT_EQ(FrameColour(202, 200), TextColour);
}

TEST_F(Player, AnotherStreamIsShownFromItsStart) {
  LoadStream(Moving().Build());
  Click("Check_Player");
  Slider().setValue(240);
  LoadStream(ThreeSubtitles());
  EXPECT_TRUE(IsChecked("Check_Player"));
  EXPECT_EQ(Slider().value(), 0);
  EXPECT_EQ(Slider().maximum(), 1138);  // 100 x 1024 ticks
  EXPECT_EQ(FrameColour(102, 400), Entry1);
}

TEST_F(Player, DamageIsTold) {
  Bytes packet = Moving().Build();
  packet[10 + 52 + 3] = 8;  // the last sequence points back to the first
  LoadStream(packet);
  Click("Check_Player");
  EXPECT_EQ(
      Window.statusBar()->currentMessage(),
      "As a player shows it: the control sequence at byte 52 of the unit points backwards for the next one, "
      "which is not followed");
  EXPECT_EQ(Slider().maximum(), 342);
}

TEST_F(Player, SubtitleThatCannotBeShownHasNoTime) {
  LoadStream(InvalidSecond());
  Click("Command_Play");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  Dialogs.Verify();
  EXPECT_FALSE(Bar().IsPlaying());
  EXPECT_FALSE(IsEnabled("Slider_Time"));
}

/// Whatever they say: nothing beside them moves while it plays.
TEST_F(Player, ControlsKeepTheirSizes) {
  LoadStream(Moving().Build());
  Click("Check_Player");
  const auto places = [this] {
    QCoreApplication::processEvents();
    return std::vector{Control<QWidget>("Command_Play").geometry(), Slider().geometry(),
                       Control<QWidget>("Label_Time").geometry()};
  };
  const auto before = places();
  Click("Command_Play");
  EXPECT_EQ(places(), before);
  Pass(300);
  EXPECT_EQ(places(), before);
  EXPECT_TRUE(Control<QLabel>("Label_Time").alignment().testFlag(Qt::AlignRight));
  ExpectAcross(Window, {"Command_Play", "Slider_Time", "Label_Time"});
  LoadStream(PacketBuilder().Build());
  EXPECT_EQ(places(), before);
}

TEST(PlayerBarAlone, TellsTheTimeOfTheLengthThatIs) {
  PlayerBar bar(nullptr);
  const auto* label = bar.findChild<QLabel*>("Label_Time");
  bar.Begin(1000);
  EXPECT_EQ(label->text(), "0.00 / 1.00 s");
  bar.SetLength(2500);
  EXPECT_EQ(label->text(), "0.00 / 2.50 s");
}

}  // namespace
}  // namespace quillmark::test
