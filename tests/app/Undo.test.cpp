#include <random>

#include <QAction>
#include <QStatusBar>
#include <QTest>

#include "tests/app/MergeTest.h"
#include "tests/app/PaletteFiles.h"
#include "tests/support/Abandon.h"

namespace quillmark::test {
namespace {

class Undo : public MergeTest {
 protected:
  [[nodiscard]] QAction& Action(const QString& name) const {
    auto* action = Window.findChild<QAction*>(name);
    if (action == nullptr) {
      test::Abandon("no such action: " + name.toStdString());
    }
    return *action;
  }
  void Press(const char* action) {
    Action(action).trigger();
    QCoreApplication::processEvents();
  }
  /// All that an edit may change, with the first subtitle shown.
  struct Seen {
    Bytes Saved;
    QImage Frame;
    QStringList Lists;
    std::vector<QColor> Swatches;

    bool operator==(const Seen&) const = default;
  };
  Seen Look() {
    GoTo("1");
    Seen seen{.Saved = SavedBytes(), .Frame = Frame(), .Lists = {}, .Swatches = {}};
    for (int code = 0; code < 4; ++code) {
      seen.Lists += Chosen("ImageCombo" + QString::number(code + 1));
      seen.Lists += Chosen(Element("Combo1", code));
    }
    for (int entry = 0; entry < 16; ++entry) {
      seen.Swatches.push_back(SwatchColour(entry));
    }
    return seen;
  }
};

TEST_F(Undo, NothingToUndoAtStartAndAfterLoading) {
  EXPECT_FALSE(Action("Action_Undo").isEnabled());
  LoadStream(ThreeSubtitles());
  EXPECT_FALSE(Action("Action_Undo").isEnabled());
  EXPECT_FALSE(Action("Action_Redo").isEnabled());
}

TEST_F(Undo, SetForAllIsNamedAndTakenBackAtOnce) {
  LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "3");
  Click("Command_SetAll");
  EXPECT_EQ(Action("Action_Undo").text().remove('&'), "Undo Set for all");
  EXPECT_EQ(FrameColour(102, 400), QColor(2, 252, 2));
  Press("Action_Undo");
  EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
  EXPECT_EQ(Chosen("ImageCombo2"), "1");
  EXPECT_EQ(SavedBytes(), ThreeSubtitles());
  EXPECT_EQ(Action("Action_Redo").text().remove('&'), "Redo Set for all");
  Press("Action_Redo");
  EXPECT_EQ(FrameColour(102, 400), QColor(2, 252, 2));
  EXPECT_EQ(Chosen("ImageCombo2"), "3");
}

TEST_F(Undo, SetForActualIsNamed) {
  LoadStream(ThreeSubtitles());
  Choose("Combo1_1", "0");
  Click("Command_SetActual");
  EXPECT_EQ(Action("Action_Undo").text().remove('&'), "Undo Set for actual");
}

TEST_F(Undo, SwatchIsTakenBack) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectColour(QColor(10, 20, 30));
  Click("Label1_1");
  EXPECT_EQ(FrameColour(102, 400), QColor(10, 20, 30));
  Press("Action_Undo");
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
  EXPECT_EQ(FrameColour(102, 400), QColor(3, 253, 251));
}

TEST_F(Undo, LoadedPaletteIsTakenBackWhole) {
  LoadStream(ThreeSubtitles());
  LoadPalette(Write("p.pal", PalWithRed()));
  EXPECT_EQ(Action("Action_Undo").text().remove('&'), "Undo Load Palette");
  Press("Action_Undo");
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
  EXPECT_EQ(SwatchColour(4), QColor(253, 255, 4));
}

TEST_F(Undo, KeysUndoAndRedo) {
  LoadStream(ThreeSubtitles());
  LoadPalette(Write("p.pal", PalWithRed()));
  Window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window));
  QTest::keyClick(&Control<QWidget>("Command_Next"), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
  QTest::keyClick(&Control<QWidget>("Command_Next"), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(SwatchColour(1), QColor(255, 1, 0));
}

TEST_F(Undo, UndoFollowsResetsRulesAtTheQuestionMark) {
  LoadStream(InvalidSecond());
  LoadPalette(Write("p.pal", PalWithRed()));
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  Press("Action_Undo");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
}

TEST_F(Undo, LoadSupStartsANewHistory) {
  LoadStream(ThreeSubtitles());
  LoadPalette(Write("p.pal", PalWithRed()));
  LoadStream(ThreeSubtitles());
  EXPECT_FALSE(Action("Action_Undo").isEnabled());
  EXPECT_EQ(SwatchColour(1), QColor(255, 1, 0));
}

TEST_F(Undo, MergingDisablesTheHistory) {
  LoadStream(ThreeSubtitles());
  LoadPalette(Write("p.pal", PalWithRed()));
  Merge(SecondaryStream({0}));
  EXPECT_FALSE(Action("Action_Undo").isEnabled());
}

TEST_F(Undo, EditsInRandomOrderEndWhereTheyStarted) {
  const QString palette = Write("p.pal", PalWithRed());
  Bytes stream = ThreeSubtitles();
  stream[2 * PacketBuilder::Length + ColourArguments] = 0x54;
  for (const unsigned seed : {11U, 12U}) {
    std::mt19937 random(seed);
    const auto below = [&](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
    LoadStream(stream);
    const Seen start = Look();
    Dialogs.AllowMessages();
    for (int step = 0; step < 25; ++step) {
      GoTo(QString::number(1 + below(3)));
      switch (below(6)) {
        case 0:
          Press("Action_Undo");
          break;
        case 1:
          Press("Action_Redo");
          break;
        case 2:
          LoadPalette(palette);
          break;
        case 3:
          Dialogs.ExpectColour(QColor(below(256), below(256), 9));
          Click(Element("Label1", below(16)));
          break;
        default:
          Choose("ImageCombo" + QString::number(1 + below(4)), QString::number(below(16), 16).toUpper());
          Choose(Element("Combo1", below(4)), QString::number(below(16), 16).toUpper());
          Click(below(2) == 0 ? "Command_SetActual" : "Command_SetAll");
      }
    }
    const Seen end = Look();
    int undone = 0;
    for (; Action("Action_Undo").isEnabled(); ++undone) {
      Press("Action_Undo");
    }
    EXPECT_GT(undone, 3);
    EXPECT_EQ(Look(), start) << "seed " << seed;
    for (; undone > 0; --undone) {
      Press("Action_Redo");
    }
    EXPECT_EQ(Look(), end) << "seed " << seed;
    while (Action("Action_Undo").isEnabled()) {
      Press("Action_Undo");
    }
  }
}

}  // namespace
}  // namespace quillmark::test
