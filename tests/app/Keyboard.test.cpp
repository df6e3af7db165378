#include <QApplication>
#include <QTest>

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
  int before = -1;
  for (const char* name : {"Command_LoadSup", "Command_SaveSup", "Command_Next", "Label1_0", "Label1_15",
                           "ImageCombo1", "Combo1_0", "Command_SetActual", "Command_SetAll"}) {
    const auto at = static_cast<int>(order.indexOf(name));
    EXPECT_GT(at, before) << name << " in " << order.join(' ').toStdString();
    before = at;
  }
}

}  // namespace
}  // namespace quillmark::test
