#include <QAction>
#include <QEvent>
#include <QFileInfo>
#include <QStatusBar>

#include "tests/app/MergeTest.h"
#include "tests/support/Abandon.h"

namespace quillmark::test {
namespace {

/// What holds for every command: its action, one at a time, and paths that the dialogs do not take.
class Commands : public MergeTest {
 protected:
  [[nodiscard]] QAction& Action(const QString& command) const {
    auto* action = Window.findChild<QAction*>("Action_" + command);
    if (action == nullptr) {
      test::Abandon("no action of " + command.toStdString());
    }
    return *action;
  }
  [[nodiscard]] QString Told() const { return Window.findChild<QStatusBar*>()->currentMessage(); }
  QString WriteLong(const Bytes& stream) {
    const QString path = LongPath("movie.sup");
    EXPECT_TRUE(QFile::rename(Write("short.sup", stream), path));
    return path;
  }
  void OpenLong() {
    Dialogs.ExpectReport();
    Window.OpenCommandLine(WriteLong(ThreeSubtitles()));
    Dialogs.Verify();
  }
  void ExpectThreeAreCounted() {
    Dialogs.ExpectCancelled(DialogKind::Input);
    Click("Command_GoTo");
    EXPECT_EQ(Dialogs.Last().Text, "Jump to subtitle Nr. (1..3):");
  }
};

/// Does something at each caption that the window gets.
class AtEachCaption : public QObject {
 public:
  AtEachCaption(QWidget& window, std::function<void()> react) : window_(window), react_(std::move(react)) {
    window.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == &window_ && event->type() == QEvent::WindowTitleChange &&
        window_.windowTitle().contains("working")) {
      react_();
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QWidget& window_;
  std::function<void()> react_;
};

const char* const Names[] = {"LoadSup",    "SaveSup",    "LoadPalette", "SavePalette", "Reload",
                             "Prev",       "Next",       "GoTo",        "SetActual",   "SetAll",
                             "LoadSecond", "SaveSecond", "GetGraphics"};

TEST_F(Commands, ButtonAndActionAreEnabledTogether) {
  const auto compare = [this] {
    for (const char* name : Names) {
      EXPECT_EQ(Action(name).isEnabled(), IsEnabled(QString("Command_") + name)) << name;
    }
  };
  compare();
  LoadStream(ThreeSubtitles());
  compare();
  EXPECT_TRUE(Action("SaveSup").isEnabled());
  Merge(SecondaryStream({0}));
  compare();
  EXPECT_FALSE(Action("SaveSup").isEnabled());
}

TEST_F(Commands, ActionDoesWhatItsButtonDoes) {
  LoadStream(ThreeSubtitles());
  Action("Next").trigger();
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
}

TEST_F(Commands, LoadSupOfAPathTooLongForItsDialogSaysSoAndKeepsAll) {
  OpenLong();
  Click("Command_LoadSup");
  EXPECT_TRUE(Told().contains("256")) << Told().toStdString();
  ExpectThreeAreCounted();
}

TEST_F(Commands, SaveSupOfAPathTooLongForItsDialogSaysSo) {
  OpenLong();
  Click("Command_SaveSup");
  EXPECT_TRUE(Told().contains("256")) << Told().toStdString();
}

TEST_F(Commands, ChosenPathTooLongForTheDialogIsToldAndKeepsAll) {
  LoadStream(ThreeSubtitles());
  Merge(SecondaryStream({0}));
  Dialogs.ExpectOpen(WriteLong(ThreeSubtitles()));
  Click("Command_LoadSup");
  EXPECT_TRUE(Told().contains("256")) << Told().toStdString();
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
  EXPECT_FALSE(IsEnabled("Command_SaveSup"));
  ExpectThreeAreCounted();
}

TEST_F(Commands, ChosenPathTooLongForTheDialogLeavesTheSubtitleShownToBeSet) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Dialogs.ExpectOpen(WriteLong(ThreeSubtitles()));
  Click("Command_LoadSup");
  EXPECT_TRUE(IsEnabled("Command_SetActual"));
  EXPECT_TRUE(IsEnabled("Command_SetAll"));
}

TEST_F(Commands, ChosenPathTooLongForTheDialogLeavesSavingDisabledBeforeAnyLoad) {
  Dialogs.ExpectOpen(WriteLong(ThreeSubtitles()));
  Click("Command_LoadSup");
  EXPECT_FALSE(IsEnabled("Command_SaveSup"));
  EXPECT_FALSE(IsEnabled("Command_SavePalette"));
}

TEST_F(Commands, NoneIsEnabledWhileMergedIsSaved) {
  LoadStream(ThreeSubtitles());
  Merge(SecondaryStream({0}));
  int seen = 0;
  const AtEachCaption hook(Window, [&] {
    ++seen;
    for (const char* name : Names) {
      EXPECT_FALSE(IsEnabled(QString("Command_") + name)) << name;
      Action(name).trigger();
    }
    for (const char* name : {"Keys", "About", "AboutQt"}) {
      EXPECT_FALSE(Action(name).isEnabled()) << name;
    }
  });
  MergedBytes();
  EXPECT_EQ(seen, 3);
  EXPECT_TRUE(Action("Keys").isEnabled());
  EXPECT_TRUE(IsEnabled("Command_SaveSecond"));
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(Commands, FocusStaysWhereItWasOverAMergedSave) {
  LoadStream(ThreeSubtitles());
  Merge(SecondaryStream({0}));
  Control<QWidget>("Command_SaveSecond").setFocus();
  MergedBytes();
  EXPECT_EQ(Window.focusWidget(), &Control<QWidget>("Command_SaveSecond"));
}

TEST_F(Commands, LoadInsideALoadDoesNothing) {
  const QString other = Write("other.sup", PacketBuilder().Time(7 * Second).Build());
  Dialogs.ExpectOpen(Write("movie.sup", ThreeSubtitles()));
  Dialogs.ExpectReport();
  QMetaObject::invokeMethod(
      &Window, [&] { Window.OpenCommandLine(other); }, Qt::QueuedConnection);
  Control<QAbstractButton>("Command_LoadSup").click();
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.00");
}

TEST_F(Commands, SecondClickInsideACommandDoesNothing) {
  LoadStream(ThreeSubtitles());
  Dialogs.Expect(DialogKind::Input, [this](QDialog& dialog) {
    Control<QAbstractButton>("Command_Next").click();
    EXPECT_EQ(TextOf("Text_SubNum"), "1");
    dialog.reject();
  });
  Click("Command_GoTo");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

}  // namespace
}  // namespace quillmark::test
