#include <QApplication>
#include <QTest>
#include <QWheelEvent>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class Keyboard : public WindowTest {
 protected:
  void SetUp() override { Activate(); }
  /// What a window manager does when a dialog has closed; there is none off screen.
  void Activate() {
    Window.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window));
  }
  /// To whatever has the focus, as the keyboard does.
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    Activate();
    QWidget* focus = QApplication::focusWidget();
    QTest::keyClick(focus == nullptr ? &Window : focus, key, modifiers);
    QCoreApplication::processEvents();
  }
};

TEST_F(Keyboard, WorkBeginsAtLoadSup) {
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command_LoadSup");
}

TEST_F(Keyboard, ControlOLoads) {
  Dialogs.ExpectOpen(Write("movie.sup", ThreeSubtitles()));
  Dialogs.ExpectReport();
  Press(Qt::Key_O, Qt::ControlModifier);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(Keyboard, ControlSSaves) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectSave(Path("new.sup"));
  Press(Qt::Key_S, Qt::ControlModifier);
  EXPECT_EQ(Read(Path("new.sup")), ThreeSubtitles());
}

TEST_F(Keyboard, PageKeysStep) {
  LoadStream(ThreeSubtitles());
  Press(Qt::Key_PageDown);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  Press(Qt::Key_PageUp);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(Keyboard, AltWithArrowsSteps) {
  LoadStream(ThreeSubtitles());
  Press(Qt::Key_Right, Qt::AltModifier);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  Press(Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(Keyboard, PageKeysStepWhereverTheFocusIs) {
  LoadStream(ThreeSubtitles());
  for (const char* name : {"Command_GoTo", "ImageCombo1", "Combo1_2", "Label1_3", "Text1", "Text_SubNum",
                           "Option_Checker", "Text_GraphFile"}) {
    Control<QWidget>(name).setFocus();
    Press(Qt::Key_PageDown);
    EXPECT_EQ(TextOf("Text_SubNum"), "2") << name;
    Control<QWidget>(name).setFocus();
    Press(Qt::Key_PageUp);
    EXPECT_EQ(TextOf("Text_SubNum"), "1") << name;
  }
}

TEST_F(Keyboard, ControlGGoesTo) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectInput("3");
  Press(Qt::Key_G, Qt::ControlModifier);
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
}

TEST_F(Keyboard, F5Resets) {
  LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "7");
  Press(Qt::Key_F5);
  EXPECT_EQ(Chosen("ImageCombo2"), "1");
}

TEST_F(Keyboard, DisabledCommandsIgnoreTheirKeys) {
  Press(Qt::Key_PageDown);
  Press(Qt::Key_PageUp);
  Press(Qt::Key_F5);
  Press(Qt::Key_S, Qt::ControlModifier);
  Press(Qt::Key_G, Qt::ControlModifier);
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  EXPECT_TRUE(Dialogs.Shown().empty());
}

TEST_F(Keyboard, NextStopsAtTheLast) {
  LoadStream(ThreeSubtitles());
  for (int i = 0; i < 5; ++i) {
    Press(Qt::Key_PageDown);
  }
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
}

TEST_F(Keyboard, ControlQQuits) {
  constexpr int NothingHappened = 17;
  const auto quit = [this] {
    Press(Qt::Key_Q, Qt::ControlModifier);
    if (Window.isVisible()) {
      QCoreApplication::exit(NothingHappened);
    }
  };
  QMetaObject::invokeMethod(&Window, quit, Qt::QueuedConnection);
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_FALSE(Window.isVisible());
}

TEST_F(Keyboard, TooltipsTellTheKeys) {
  struct Key {
    const char* Command;
    QKeySequence Keys;
  };
  const Key keys[] = {{"Command_LoadSup", Qt::CTRL | Qt::Key_O}, {"Command_SaveSup", Qt::CTRL | Qt::Key_S},
                      {"Command_Prev", Qt::Key_PageUp},          {"Command_Next", Qt::Key_PageDown},
                      {"Command_GoTo", Qt::CTRL | Qt::Key_G},    {"Command_Reload", Qt::Key_F5}};
  for (const Key& key : keys) {
    const QString tip = Control<QWidget>(key.Command).toolTip();
    EXPECT_TRUE(tip.contains(key.Keys.toString(QKeySequence::NativeText)) ||
                tip.contains(QString(key.Keys.toString()).replace("Pg", "Page")))
        << key.Command << ": " << tip.toStdString();
  }
}

TEST_F(Keyboard, TabReachesEveryGroupInTheOrderOfWork) {
  LoadStream(ThreeSubtitles());
  QStringList order;
  Activate();
  Control<QWidget>("Command_LoadSup").setFocus();
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  for (int i = 0; i < 200; ++i) {
    const QString name = QApplication::focusWidget()->objectName();
    if (order.contains(name)) {
      break;
    }
    order.append(name);
    Press(Qt::Key_Tab);
  }
  EXPECT_LE(order.size(), 32) << order.join(' ').toStdString();
  int before = -1;
  for (const char* name : {"Command_LoadSup", "Command_SaveSup", "Command_Next", "Text_Filter",
                           "Combo_Filter", "List_Subtitles", "Text_Problems", "Label1_0", "ImageCombo1",
                           "Combo1_0", "Command_SetActual", "Command_SetSelected", "Command_SetAll"}) {
    const auto at = static_cast<int>(order.indexOf(name));
    EXPECT_GT(at, before) << name << " in " << order.join(' ').toStdString();
    before = at;
  }
}

TEST_F(Keyboard, FieldsThatCannotBeEditedAreEnteredByAClickOnly) {
  for (const char* name : {"Text1", "Text_SubNum", "Text_StartTime", "Text_Dur", "Text_XPos", "Text_YPos",
                           "Text_Width", "Text_Height"}) {
    EXPECT_EQ(Control<QWidget>(name).focusPolicy(), Qt::ClickFocus) << name;
  }
  EXPECT_TRUE(Control<QWidget>("Text_GraphFile").focusPolicy() & Qt::TabFocus);
}

TEST_F(Keyboard, ArrowKeysMoveAmongTheSwatches) {
  LoadStream(ThreeSubtitles());
  Activate();
  Control<QWidget>("Label1_0").setFocus();
  const std::pair<Qt::Key, const char*> steps[] = {{Qt::Key_Left, "Label1_0"}, {Qt::Key_Right, "Label1_1"},
                                                   {Qt::Key_Down, "Label1_2"}, {Qt::Key_Up, "Label1_1"},
                                                   {Qt::Key_End, "Label1_15"}, {Qt::Key_Right, "Label1_15"},
                                                   {Qt::Key_Left, "Label1_14"}};
  for (const auto& [key, name] : steps) {
    Press(key);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), name);
  }
  Press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "ImageCombo1");
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Label1_14");  // where it was left
  Press(Qt::Key_Home);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Label1_0");
}

TEST_F(Keyboard, ReturnPressesTheFocusedButton) {
  LoadStream(ThreeSubtitles());
  Activate();
  Control<QWidget>("Command_Next").setFocus();
  Press(Qt::Key_Return);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  Press(Qt::Key_Enter);
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
  Activate();
  Control<QWidget>("Label1_4").setFocus();
  Dialogs.ExpectColour(QColor(10, 20, 30));
  Press(Qt::Key_Return);
  EXPECT_EQ(SwatchColour(4), QColor(10, 20, 30));
  Dialogs.ExpectColour(QColor(30, 20, 10));
  Press(Qt::Key_Enter);
  EXPECT_EQ(SwatchColour(4), QColor(30, 20, 10));
}

TEST_F(Keyboard, StepButtonThatEndsHandsTheFocusToTheOther) {
  LoadStream(Join({FourCodes(PacketBuilder()), FourCodes(PacketBuilder())}));
  Activate();
  Control<QWidget>("Command_Next").setFocus();
  Press(Qt::Key_Space);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command_Prev");
  Press(Qt::Key_Space);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command_Next");
  Press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command_GoTo");
}

TEST_F(Keyboard, TabPassesTheStepButtonsBothWays) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Control<QWidget>("Command_Prev").setFocus();
  Press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command_Next");
  Press(Qt::Key_Backtab, Qt::ShiftModifier);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command_Prev");
}

TEST_F(Keyboard, StepButtonsThatEndTogetherHandTheFocusOn) {
  LoadStream(ThreeSubtitles());
  const QString one = Write("one.sup", FourCodes(PacketBuilder()));
  Activate();
  Control<QWidget>("Command_Next").setFocus();
  Dialogs.ExpectOpen(one);
  Dialogs.ExpectReport();
  Press(Qt::Key_O, Qt::ControlModifier);
  Activate();
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  EXPECT_TRUE(QApplication::focusWidget()->isEnabled());
}

TEST_F(Keyboard, OptionsAreEnteredAtTheChosenOne) {
  LoadStream(ThreeSubtitles());
  for (const char* chosen : {"Option_720x480", "Option_720x576"}) {
    Click(chosen);
    Activate();
    Control<QWidget>("Text_GraphFile").setFocus();
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), chosen);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command_LoadSecond");
  }
}

TEST_F(Keyboard, TabStopsAtTheBackgroundsColourWhileItIsShown) {
  LoadStream(ThreeSubtitles());
  Click("Option_Colour");
  Activate();
  Control<QWidget>("Option_Colour").setFocus();
  for (const char* next : {"Label_Ground", "Command_GetGraphics"}) {
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget()->objectName(), next);
  }
  Click("Option_Checker");
  Activate();
  Control<QWidget>("Option_Checker").setFocus();
  Press(Qt::Key_Tab);
  EXPECT_EQ(QApplication::focusWidget()->objectName(), "Command_GetGraphics");
}

TEST_F(Keyboard, WheelChangesAListOnlyWhenItHasTheFocus) {
  LoadStream(ThreeSubtitles());
  const auto turn = [this](const char* name) {
    auto& list = Control<QWidget>(name);
    const QPointF at = list.rect().center();
    QWheelEvent event(at, list.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&list, &event);
  };
  Activate();
  Control<QWidget>("Command_LoadSup").setFocus();
  for (const char* name : {"ImageCombo2", "Combo1_0"}) {
    const QString before = Chosen(name);
    turn(name);
    EXPECT_EQ(Chosen(name), before);
    EXPECT_FALSE(Control<QWidget>(name).hasFocus());
    Control<QWidget>(name).setFocus();
    turn(name);
    EXPECT_NE(Chosen(name), before);
  }
}

}  // namespace
}  // namespace quillmark::test
