#include <algorithm>
#include <functional>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QStatusBar>

#include "tests/app/ListTest.h"
#include "tests/support/Abandon.h"
#include "tests/support/UnreadableFile.h"

namespace quillmark::test {
namespace {

/// The dialog of a tool, worked as a user does.
class OpenTool {
 public:
  explicit OpenTool(QDialog& dialog) : dialog_(dialog) {}

  template <class Widget>
  [[nodiscard]] Widget& Control(const QString& name) const {
    auto* control = dialog_.findChild<Widget*>(name);
    if (control == nullptr) {
      test::Abandon("no such control: " + name.toStdString());
    }
    return *control;
  }
  void Type(const QString& field, const QString& text) const {
    auto& line = Control<QLineEdit>(field);
    line.selectAll();
    QTest::keyClick(&line, Qt::Key_Delete);
    QTest::keyClicks(&line, text);
    QCoreApplication::processEvents();
  }
  void Check(const QString& button) const {
    Control<QAbstractButton>(button).click();
    QCoreApplication::processEvents();
  }
  void Choose(const QString& list, int row) const {
    Control<QComboBox>(list).setCurrentIndex(row);
    QCoreApplication::processEvents();
  }
  [[nodiscard]] QString Now(int fact) const { return Control<QLabel>(Element("Label_Now", fact)).text(); }
  [[nodiscard]] QString Then(int fact) const { return Control<QLabel>(Element("Label_Then", fact)).text(); }
  [[nodiscard]] QString Outcome() const { return Control<QLabel>("Label_Outcome").text(); }
  [[nodiscard]] QString Left() const { return Control<QPlainTextEdit>("Text_Left").toPlainText(); }
  [[nodiscard]] bool CanRun() const { return Control<QPushButton>("Command_Run").isEnabled(); }
  void Run() const { Control<QPushButton>("Command_Run").click(); }
  void Cancel() const { dialog_.reject(); }

 private:
  QDialog& dialog_;
};

namespace fact {
constexpr int Number = 0;
constexpr int Start = 1;
constexpr int End = 2;
constexpr int Place = 3;
constexpr int Forced = 5;
}  // namespace fact

class Tools : public ListTest {
 protected:
  /// Opens the tool's dialog, does this in it, and comes back when it is closed.
  void In(const QString& tool, const std::function<void(const OpenTool&)>& work) {
    Dialogs.Expect(DialogKind::Other, [work](QDialog& dialog) { work(OpenTool(dialog)); });
    Action(tool).trigger();
    QCoreApplication::processEvents();
    Dialogs.Verify();
  }
  [[nodiscard]] QString Told() const { return Window.statusBar()->currentMessage(); }
};

PacketBuilder At(std::int64_t seconds) {
  return PacketBuilder().Time(seconds * Second).Delay(80).Area(100, 103, 400, 401);
}

/// Now on the left, then on the right, each in its line below what it is.
TEST_F(Tools, FactsOfNowAndThenStandSideBySide) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& dialog) {
    for (const QString& side : {QStringLiteral("Now"), QStringLiteral("Then")}) {
      const auto& first = dialog.Control<QLabel>("Label_" + side + "_0");
      const auto labels = first.parentWidget()->findChildren<QLabel*>();
      const auto heading = std::ranges::find(labels, side, &QLabel::text);
      ASSERT_NE(heading, labels.end()) << side.toStdString();
      EXPECT_LT((*heading)->geometry().bottom(), first.geometry().top()) << side.toStdString();
      EXPECT_EQ((*heading)->geometry().left(), first.geometry().left()) << side.toStdString();
    }
    int above = -1;
    for (int fact = fact::Number; fact <= fact::Forced; ++fact) {
      const QRect now = dialog.Control<QLabel>(Element("Label_Now", fact)).geometry();
      const QRect then = dialog.Control<QLabel>(Element("Label_Then", fact)).geometry();
      EXPECT_LT(now.right(), then.left()) << fact;
      EXPECT_EQ(now.top(), then.top()) << fact;
      EXPECT_GT(now.top(), above) << fact;
      above = now.bottom();
    }
    dialog.Cancel();
  });
}

TEST_F(Tools, EveryFactOfTheSubtitleIsTold) {
  LoadStream(Join({At(1).Build(), FourCodes(PacketBuilder().Time(3 * Second), 120, 410)}));
  Click("Command_Next");
  In("Force", [](const OpenTool& dialog) {
    EXPECT_EQ(dialog.Control<QGroupBox>("").title(), "Subtitle 2");
    const char* now[] = {"2", "00:00:03.00", "???", "120, 410", "8x2", "no"};
    const char* then[] = {"2", "00:00:03.00", "???", "120, 410", "8x2", "yes"};
    for (int fact = fact::Number; fact <= fact::Forced; ++fact) {
      EXPECT_EQ(dialog.Now(fact), now[fact]);
      EXPECT_EQ(dialog.Then(fact), then[fact]);
    }
    dialog.Cancel();
  });
}

/// What is now stays to be seen.
TEST_F(Tools, NothingIsToldOfWhatCannotBeDone) {
  LoadStream(Join({At(1).Build(), At(3).Area(100, 103, 570, 571).Build()}));
  In("Move", [](const OpenTool& dialog) {
    dialog.Type("Field_y", "10");
    ASSERT_TRUE(dialog.Control<QWidget>("Text_Left").isVisible());
    dialog.Type("Field_y", "4x");
    EXPECT_FALSE(dialog.Control<QWidget>("Text_Left").isVisible());
    for (int fact = fact::Number; fact <= fact::Forced; ++fact) {
      EXPECT_NE(dialog.Now(fact), "-") << fact;
      EXPECT_EQ(dialog.Then(fact), "-") << fact;
    }
    dialog.Cancel();
  });
}

/// At half the frame's size: where it is now in dots, where it would be in lines.
TEST_F(Tools, FrameShowsBothPlacesOfAMovedSubtitle) {
  LoadStream(At(1).Area(100, 199, 400, 439).Build());
  In("Move", [](const OpenTool& dialog) {
    const auto whites = [&dialog](int y) {
      const QImage frame = dialog.Control<QWidget>("Picture_Trial").grab().toImage();
      int count = 0;
      for (int x = 49; x <= 100; ++x) {
        count += frame.pixelColor(x, y) == Qt::white ? 1 : 0;
      }
      return count;
    };
    constexpr int Now = 199;
    constexpr int Then = 149;
    EXPECT_EQ(whites(Now), 0);
    dialog.Type("Field_y", "-100");
    EXPECT_GT(whites(Now), 10);
    EXPECT_LT(whites(Now), 40);
    EXPECT_EQ(whites(Then), 52);
    dialog.Type("Field_y", "x");
    EXPECT_GT(whites(Now), 10);
    EXPECT_EQ(whites(Then), 0);
    dialog.Cancel();
  });
}

/// In the upper left, one below the other, while the dialog and what is told change.
TEST_F(Tools, FactsKeepTheirPlaces) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& dialog) {
    const auto place = [&dialog](const QString& name) {
      QCoreApplication::processEvents();
      return dialog.Control<QWidget>(name).geometry();
    };
    const QRect now = place("Label_Now_1");
    const QRect last = place("Label_Now_5");
    const QSize picture = place("Picture_Trial").size();
    EXPECT_LT(last.top() - now.top(), 5 * 2 * dialog.Control<QLabel>("Label_Now_1").fontMetrics().height());
    const QRect then = place("Label_Then_1");
    dialog.Type("Field_shift", "36000040");
    EXPECT_EQ(place("Label_Then_1"), then);
    QWidget& window = *dialog.Control<QWidget>("Picture_Trial").window();
    window.resize(window.size() + QSize(0, 300));
    EXPECT_EQ(place("Label_Now_1"), now);
    EXPECT_EQ(place("Label_Now_5"), last);
    window.resize(window.size() + QSize(300, 0));
    EXPECT_EQ(place("Picture_Trial").size(), picture);
    dialog.Cancel();
  });
}

TEST_F(Tools, FactsThatBecomeOthersAreBold) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& dialog) {
    const auto isBold = [&dialog](const QString& fact) {
      return dialog.Control<QLabel>("Label_" + fact).font().bold();
    };
    EXPECT_FALSE(isBold("Then_1"));
    dialog.Type("Field_shift", "40");
    EXPECT_TRUE(isBold("Then_1"));
    EXPECT_TRUE(isBold("Then_2"));
    EXPECT_FALSE(isBold("Then_3"));
    EXPECT_FALSE(isBold("Now_1"));
    dialog.Type("Field_shift", "0");
    EXPECT_FALSE(isBold("Then_1"));
    dialog.Cancel();
  });
}

/// It waits for the user; nothing goes on and on.
TEST_F(Tools, DialogComesToRest) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& dialog) {
    dialog.Type("Field_shift", "40");
    QEventLoop loop;
    int turns = 0;
    while (turns < 100 && loop.processEvents()) {
      ++turns;
    }
    EXPECT_LT(turns, 100);
    dialog.Cancel();
  });
}

/// A field's unit stands behind it.
TEST_F(Tools, WhatAFieldCountsStandsBehindIt) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& dialog) {
    const auto& shift = dialog.Control<QLineEdit>("Field_shift");
    const QLabel* unit = nullptr;
    for (const QLabel* label : shift.parentWidget()->findChildren<QLabel*>()) {
      unit = label->text() == "ms, later; a negative number is earlier" ? label : unit;
    }
    ASSERT_NE(unit, nullptr);
    EXPECT_TRUE(unit->isVisible());
    EXPECT_GT(unit->geometry().left(), shift.geometry().right());
    EXPECT_LT(unit->geometry().left(), shift.geometry().right() + 20);
    EXPECT_EQ(shift.accessibleDescription(), unit->text());
    dialog.Cancel();
  });
}

TEST_F(Tools, RetimeWritesTheNewTimesAndNothingElse) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    tool.Run();
  });
  EXPECT_EQ(SavedBytes(), Join({At(1).Time(93600).Build(), At(3).Time(273600).Build()}));
}

TEST_F(Tools, WhatItDidIsTold) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    tool.Run();
  });
  EXPECT_EQ(Told(), "2 subtitles retimed");
}

TEST_F(Tools, WhatWasLeftIsTold) {
  LoadStream(Join({At(1).Build(), At(3).Area(100, 103, 570, 571).Build()}));
  In("Move", [](const OpenTool& tool) {
    tool.Type("Field_y", "10");
    tool.Run();
  });
  EXPECT_EQ(Told(), "1 subtitle moved, 1 left as they are");
}

TEST_F(Tools, OneUndoTakesItBack) {
  const Bytes stream = Join({At(1).Build(), At(3).Build()});
  LoadStream(stream);
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    tool.Run();
  });
  EXPECT_EQ(Action("Undo").text().remove('&'), "Undo Retime");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.04");
  Action("Undo").trigger();
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.00");
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Tools, CancelledDialogChangesNothing) {
  const Bytes stream = At(1).Build();
  LoadStream(stream);
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    tool.Cancel();
  });
  EXPECT_FALSE(Action("Undo").isEnabled());
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Tools, CurrentSubtitleIsShownAsItIsAndAsItWouldBe) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  Click("Command_Next");
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "-500");
    EXPECT_EQ(tool.Now(fact::Number), "2");
    EXPECT_EQ(tool.Now(fact::Start), "00:00:03.00");
    EXPECT_EQ(tool.Then(fact::Start), "00:00:02.50");
    EXPECT_EQ(tool.Now(fact::End), "00:00:03.89");
    EXPECT_EQ(tool.Then(fact::End), "00:00:03.39");
    tool.Cancel();
  });
}

TEST_F(Tools, NegativeStartIsNamedAndCannotBeRun) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "-1500");
    EXPECT_FALSE(tool.CanRun());
    EXPECT_TRUE(tool.Outcome().contains("ubtitle 1")) << tool.Outcome().toStdString();
    tool.Cancel();
  });
}

TEST_F(Tools, WrongValueIsNamedAndCannotBeRun) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "4x");
    EXPECT_FALSE(tool.CanRun());
    EXPECT_EQ(tool.Outcome(), "Shift: '4x' is no number of milliseconds");
    tool.Type("Field_shift", "4");
    EXPECT_TRUE(tool.CanRun());
    tool.Cancel();
  });
}

TEST_F(Tools, PointsStartAtTheStartsThatAre) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  In("Retime", [](const OpenTool& tool) {
    tool.Choose("Combo_Way", 3);
    EXPECT_EQ(tool.Control<QLineEdit>("Field_points").text(), "1=00:00:01.00,2=00:00:03.00");
    tool.Type("Field_points", "1=2,2=6");
    tool.Run();
  });
  EXPECT_EQ(SavedBytes(), Join({At(2).Delay(160).Build(), At(6).Delay(160).Build()}));
}

TEST_F(Tools, MoveIsShownInTheFrameAndAsNumbers) {
  LoadStream(At(1).Build());
  In("Move", [](const OpenTool& tool) {
    tool.Type("Field_x", "-20");
    tool.Type("Field_y", "100");
    EXPECT_EQ(tool.Now(fact::Place), "100, 400");
    EXPECT_EQ(tool.Then(fact::Place), "80, 500");
    tool.Run();
  });
  EXPECT_EQ(TextOf("Text_XPos"), "80");
  EXPECT_EQ(SavedBytes(), At(1).Area(80, 83, 500, 501).Build());
}

TEST_F(Tools, WhatHasToBeLeftIsCountedAndNamed) {
  LoadStream(Join({At(1).Build(), At(3).Area(100, 103, 570, 571).Build()}));
  In("Move", [](const OpenTool& tool) {
    tool.Type("Field_y", "10");
    EXPECT_EQ(tool.Outcome(), "1 subtitle would be moved, 1 has to be left");
    EXPECT_TRUE(tool.Left().startsWith("Subtitle 2 ")) << tool.Left().toStdString();
    EXPECT_FALSE(tool.Left().contains("more")) << tool.Left().toStdString();
    tool.Check("Field_clamp");
    EXPECT_EQ(tool.Outcome(), "2 subtitles would be moved");
    tool.Run();
  });
  EXPECT_EQ(SavedBytes(),
            Join({At(1).Area(100, 103, 410, 411).Build(), At(3).Area(100, 103, 574, 575).Build()}));
}

/// A line for each of the first thousand.
TEST_F(Tools, OfManyThatHaveToBeLeftTheRestIsCounted) {
  Bytes stream = At(1).Build();
  const Bytes low = At(3).Area(100, 103, 570, 571).Build();
  for (int i = 0; i < 1003; ++i) {
    stream.insert(stream.end(), low.begin(), low.end());
  }
  LoadStream(stream);
  In("Move", [](const OpenTool& tool) {
    tool.Type("Field_y", "10");
    const QStringList lines = tool.Left().split('\n');
    ASSERT_EQ(lines.size(), 1001);
    EXPECT_EQ(lines[0], "Subtitle 2 would leave the frame; it is left as it is");
    EXPECT_EQ(lines[999], "Subtitle 1,001 would leave the frame; it is left as it is");
    EXPECT_EQ(lines[1000], "and 3 more");
    tool.Cancel();
  });
}

TEST_F(Tools, ChoiceOfAValueIsTried) {
  LoadStream(At(1).Build());
  In("Force", [](const OpenTool& tool) {
    tool.Choose("Field_state", 1);
    EXPECT_FALSE(tool.CanRun());
    EXPECT_EQ(tool.Then(fact::Forced), "no");
    tool.Choose("Field_state", 0);
    EXPECT_TRUE(tool.CanRun());
    EXPECT_EQ(tool.Then(fact::Forced), "yes");
    tool.Control<QDialogButtonBox>("").button(QDialogButtonBox::Cancel)->click();
  });
  EXPECT_FALSE(Action("Undo").isEnabled());
}

TEST_F(Tools, AnotherWayIsTried) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    EXPECT_EQ(tool.Then(fact::Start), "00:00:01.04");
    tool.Choose("Combo_Way", 1);  // from 25 to 23.976 pictures a second
    EXPECT_EQ(tool.Then(fact::Start), "00:00:01.08");
    tool.Cancel();
  });
}

TEST_F(Tools, NumbersAreTriedWhileTheyAreTyped) {
  LoadStream(Join({At(1).Build(), At(3).Build(), At(5).Build()}));
  In("Cut", [](const OpenTool& tool) {
    tool.Type("Text_Only", "2");
    EXPECT_EQ(tool.Outcome(), "1 subtitle would be taken out");
    tool.Type("Text_Only", "2-");
    EXPECT_EQ(tool.Outcome(), "2 subtitles would be taken out");
    EXPECT_TRUE(tool.CanRun());
    tool.Cancel();
  });
}

TEST_F(Tools, BrowsedStreamIsTheOneToJoin) {
  LoadStream(At(1).Build());
  QDir(Folder.path()).mkdir("other");
  const QString second = Write("other/second.sup", At(0).Build());
  In("Join", [&](const OpenTool& tool) {
    Dialogs.ExpectOpen(second);
    tool.Check("Command_Browse");
    EXPECT_EQ(Dialogs.Last().Folder, Folder.path());
    EXPECT_EQ(tool.Control<QLineEdit>("Field_with").text(), second);
    EXPECT_TRUE(tool.CanRun());
    Dialogs.ExpectCancelled(DialogKind::OpenFile);
    tool.Check("Command_Browse");
    EXPECT_EQ(Dialogs.Last().Folder, Path("other"));
    EXPECT_EQ(tool.Control<QLineEdit>("Field_with").text(), second);
    tool.Cancel();
  });
}

TEST_F(Tools, FrameIsThatOfTheWindowAtFirst) {
  LoadStream(At(1).Build());
  Click("Option_720x480");
  In("Move", [](const OpenTool& tool) {
    EXPECT_EQ(tool.Control<QComboBox>("Field_frame").currentText(), "720x480");
    tool.Cancel();
  });
}

TEST_F(Tools, ForceWorksOnTheSelectedSubtitles) {
  LoadStream(Join({At(1).Build(), At(3).Build(), At(5).Build()}));
  ClickRow(2);
  ClickRow(3, Qt::ControlModifier);
  In("Force", [](const OpenTool& tool) {
    EXPECT_TRUE(tool.Control<QRadioButton>("Option_Selected").isChecked());
    EXPECT_EQ(tool.Outcome(), "2 subtitles would be changed");
    EXPECT_EQ(tool.Now(fact::Forced), "no");
    EXPECT_EQ(tool.Then(fact::Forced), "yes");
    tool.Run();
  });
  // The start command is unit byte 12.
  Bytes stream = Join({At(1).Build(), At(3).Build(), At(5).Build()});
  stream[PacketBuilder::Length + 22] = 0x00;
  stream[2 * PacketBuilder::Length + 22] = 0x00;
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Tools, NoneCanBeUsedOnASelectionThatIsNone) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  ClickRow(2);
  In("Force", [](const OpenTool& tool) {
    EXPECT_TRUE(tool.Control<QRadioButton>("Option_Selected").isEnabled());
    tool.Cancel();
  });
  List().clearSelection();
  In("Force", [](const OpenTool& tool) {
    EXPECT_TRUE(tool.Control<QRadioButton>("Option_All").isChecked());
    EXPECT_FALSE(tool.Control<QRadioButton>("Option_Selected").isEnabled());
    tool.Cancel();
  });
}

TEST_F(Tools, CutTakesTheSubtitleOutAndShowsTheNextOne) {
  LoadStream(Join({At(1).Build(), At(3).Build(), At(5).Build()}));
  Click("Command_Next");
  In("Cut", [](const OpenTool& tool) {
    EXPECT_EQ(tool.Control<QLineEdit>("Text_Only").text(), "2");
    EXPECT_EQ(tool.Then(fact::Number), "-");
    tool.Run();
  });
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:05.00");
  EXPECT_EQ(List().model()->rowCount(), 2);
  EXPECT_EQ(SavedBytes(), Join({At(1).Build(), At(5).Build()}));
}

TEST_F(Tools, CutOfTheLastSubtitleShowsTheOneBefore) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  Click("Command_Next");
  In("Cut", [](const OpenTool& tool) { tool.Run(); });
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_FALSE(IsEnabled("Command_Next"));
  EXPECT_FALSE(IsEnabled("Command_GoTo"));
  Action("Undo").trigger();
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_EQ(SavedBytes(), Join({At(1).Build(), At(3).Build()}));
}

TEST_F(Tools, CutOfAllCannotBeRun) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  In("Cut", [](const OpenTool& tool) {
    tool.Check("Option_All");
    EXPECT_EQ(tool.Outcome(), "No subtitle would be left");
    EXPECT_FALSE(tool.CanRun());
    tool.Cancel();
  });
}

TEST_F(Tools, SubtitleThatTheStreamLacksIsNamed) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  In("Force", [](const OpenTool& tool) {
    tool.Type("Text_Only", "2-7");
    EXPECT_TRUE(tool.Control<QRadioButton>("Option_These").isChecked());
    EXPECT_TRUE(tool.Outcome().startsWith("There is no subtitle ")) << tool.Outcome().toStdString();
    EXPECT_FALSE(tool.CanRun());
    tool.Cancel();
  });
}

TEST_F(Tools, SortTellsWhereTheSubtitleGoes) {
  LoadStream(Join({At(5).Build(), At(1).Build()}));
  In("Sort", [](const OpenTool& tool) {
    EXPECT_EQ(tool.Now(fact::Number), "1");
    EXPECT_EQ(tool.Then(fact::Number), "2");
    tool.Run();
  });
  EXPECT_EQ(SavedBytes(), Join({At(1).Build(), At(5).Build()}));
}

TEST_F(Tools, JoinAddsAStreamFromItsFile) {
  LoadStream(At(1).Build());
  const QString second = Write("second.sup", At(0).Build());
  In("Join", [&](const OpenTool& tool) {
    EXPECT_FALSE(tool.CanRun());
    tool.Choose("Combo_Way", 1);
    tool.Type("Field_with", second);
    tool.Type("Field_at", "10");
    tool.Run();
  });
  EXPECT_EQ(SavedBytes(), Join({At(1).Build(), At(10).Build()}));
  EXPECT_TRUE(IsEnabled("Command_Next"));
}

TEST_F(Tools, FileThatIsGoneBeforeItIsJoinedChangesNothing) {
  LoadStream(At(1).Build());
  const QString second = Write("second.sup", At(0).Build());
  const QString before = Told();
  In("Join", [&](const OpenTool& tool) {
    tool.Type("Field_with", second);
    ASSERT_TRUE(tool.CanRun());
    QFile::remove(second);
    Dialogs.ExpectMessageWith({"second.sup"});
    tool.Run();
  });
  EXPECT_EQ(Told(), before);
  EXPECT_FALSE(Action("Undo").isEnabled());
  EXPECT_EQ(SavedBytes(), At(1).Build());
}

TEST_F(Tools, FixMendsAndNamesWhatItCannot) {
  // The first one lacks its end, the second its colours.
  LoadStream(Join({At(1).Delay(0).Build(), At(3).WithoutColour().Build(), At(5).Build()}));
  In("Fix", [](const OpenTool& tool) {
    EXPECT_EQ(tool.Outcome(), "1 subtitle would be mended, 1 has to be left");
    EXPECT_TRUE(tool.Left().startsWith("Subtitle 2 ")) << tool.Left().toStdString();
    EXPECT_EQ(tool.Then(fact::End), "00:00:03.00");
    tool.Run();
  });
  EXPECT_EQ(SavedBytes(), Join({At(1).Delay(180).Build(), At(3).WithoutColour().Build(), At(5).Build()}));
}

TEST_F(Tools, ProblemsThatAreMendedAreCountedNoLonger) {
  // The first one is shown below the frame.
  LoadStream(Join({At(1).Area(100, 103, 580, 581).Build(), At(3).Build()}));
  FindProblems();
  EXPECT_EQ(ProblemCount(), "2 subtitles, 1 with problems");
  In("Move", [](const OpenTool& tool) {
    tool.Type("Field_y", "-100");
    tool.Run();
  });
  FindProblems();
  EXPECT_EQ(ProblemCount(), "2 subtitles, 0 with problems");
  Action("Undo").trigger();
  FindProblems();
  EXPECT_EQ(ProblemCount(), "2 subtitles, 1 with problems");
}

TEST_F(Tools, FixShowsTheSubtitleItselfAmongThoseOfItsTime) {
  LoadStream(
      Join({At(1).Build(), At(1).Area(300, 303, 400, 401).Build(), At(3).Delay(0).Build(), At(5).Build()}));
  GoTo("2");
  In("Fix", [](const OpenTool& tool) {
    EXPECT_EQ(tool.Now(fact::Place), "300, 400");
    EXPECT_EQ(tool.Then(fact::Place), "300, 400");
    tool.Cancel();
  });
}

TEST_F(Tools, EndsFillsAndPartsWhereNothingElseIsChosen) {
  // The first one lacks its end, the second is still shown when the third begins, two seconds later.
  LoadStream(Join({At(1).Delay(0).Build(), At(3).Delay(250).Build(), At(5).Build()}));
  In("Ends", [](const OpenTool& tool) {
    EXPECT_TRUE(tool.Control<QCheckBox>("Field_fill").isChecked());
    EXPECT_TRUE(tool.Control<QCheckBox>("Field_no-overlap").isChecked());
    tool.Run();
  });
  EXPECT_EQ(SavedBytes(), Join({At(1).Delay(180).Build(), At(3).Delay(180).Build(), At(5).Build()}));
}

TEST_F(Tools, NoneCanBeUsedWhileStreamsAreMerged) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  EXPECT_TRUE(Action("Retime").isEnabled());
  Merge(Join({At(1).Build(), At(3).Build()}), "-400");
  for (const char* tool :
       {"Retime", "Move", "Force", "Ends", "Cut", "Keep", "Sort", "Join", "Fix", "Salvage", "RunRecipe"}) {
    EXPECT_FALSE(Action(tool).isEnabled()) << tool;
  }
}

TEST_F(Tools, NoneCanBeUsedWithoutAStream) {
  for (const char* tool : {"Retime", "Move", "Cut", "SaveRecipe", "RunRecipe"}) {
    EXPECT_FALSE(Action(tool).isEnabled()) << tool;
  }
}

TEST_F(Tools, WhatWasDoneIsSavedAsARecipe) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    tool.Run();
  });
  Choose("ImageCombo2", "3");
  Click("Command_SetActual");
  Dialogs.ExpectSave(Path("steps.json"));
  Action("SaveRecipe").trigger();
  EXPECT_EQ(ReadText(Path("steps.json")),
            "{\n"
            "  \"version\": 1,\n"
            "  \"steps\": [\n"
            "    {\n"
            "      \"tool\": \"retime\",\n"
            "      \"shift\": \"40\"\n"
            "    },\n"
            "    {\n"
            "      \"tool\": \"assign\",\n"
            "      \"colours\": \"0323\",\n"
            "      \"opacities\": \"0FFF\",\n"
            "      \"only\": \"1\"\n"
            "    }\n"
            "  ]\n"
            "}\n");
  EXPECT_EQ(Told(), "Saved steps.json, 2 steps");
}

TEST_F(Tools, StepsThatNoRecipeHoldsAreCounted) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    tool.Run();
  });
  Dialogs.ExpectColour(QColor(10, 20, 30));
  Click("Label1_1");
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Action("SaveRecipe").trigger();
  EXPECT_EQ(Dialogs.Last().Name, "movie.json");
  EXPECT_FALSE(Told().contains("Saved")) << Told().toStdString();
  Dialogs.ExpectSave(Path("steps.json"));
  Action("SaveRecipe").trigger();
  EXPECT_EQ(Told(), "Saved steps.json, 1 step; not in it: 1 of the palette or restored ones");
}

TEST_F(Tools, RecipeTellsWhatItLeftAndIsUndoneByName) {
  LoadStream(Join({At(1).Build(), At(3).Area(100, 103, 570, 571).Build()}));
  const QString recipe = Write("movie.json", QByteArray(R"({"version": 1, "steps": [
      {"tool": "move", "y": "10"}, {"tool": "assign", "colours": "0323", "opacities": "0FFF"}]})"));
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Action("RunRecipe").trigger();
  EXPECT_FALSE(Action("Undo").isEnabled());
  Dialogs.ExpectOpen(recipe);
  Action("RunRecipe").trigger();
  EXPECT_EQ(Told(), "Ran movie.json, 2 steps; 1 subtitle left as they were");
  EXPECT_EQ(TextOf("Text_YPos"), "410");
  EXPECT_EQ(Action("Undo").text().remove('&'), "Undo Assign");
  Action("Undo").trigger();
  EXPECT_EQ(Action("Undo").text().remove('&'), "Undo Move");
}

TEST_F(Tools, RecipeThatCannotBeWrittenIsNotToldAsSaved) {
  LoadStream(At(1).Build());
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    tool.Run();
  });
  Dialogs.ExpectSave(Path("missing/steps.json"));
  Dialogs.ExpectMessageWith({Path("missing/steps.json")});
  Action("SaveRecipe").trigger();
  EXPECT_EQ(Told(), "1 subtitle retimed");
}

TEST_F(Tools, StepsThatWereUndoneAreNotInTheRecipe) {
  LoadStream(Join({At(1).Build(), At(3).Build()}));
  In("Sort", [](const OpenTool& tool) {
    EXPECT_FALSE(tool.CanRun());
    tool.Cancel();
  });
  In("Retime", [](const OpenTool& tool) {
    tool.Type("Field_shift", "40");
    tool.Run();
  });
  Action("Undo").trigger();
  EXPECT_FALSE(Action("SaveRecipe").isEnabled());
}

TEST_F(Tools, RecipeIsRunStepByStepAndEachIsUndone) {
  const Bytes stream = Join({At(1).Build(), At(3).Build()});
  LoadStream(stream);
  const QString recipe = Write("steps.json", QByteArray(R"({"version": 1, "steps": [
      {"tool": "retime", "shift": "1000"}, {"tool": "cut", "only": "1"}]})"));
  Dialogs.ExpectOpen(recipe);
  Action("RunRecipe").trigger();
  EXPECT_EQ(Told(), "Ran steps.json, 2 steps");
  EXPECT_EQ(SavedBytes(), At(4).Build());
  Action("Undo").trigger();
  Action("Undo").trigger();
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Tools, RecipeThatCannotBeRunToItsEndChangesNothing) {
  const Bytes stream = Join({At(1).Build(), At(3).Build()});
  LoadStream(stream);
  const QString recipe = Write("steps.json", QByteArray(R"({"version": 1, "steps": [
      {"tool": "retime", "shift": "1000"}, {"tool": "cut", "only": "7"}]})"));
  Dialogs.ExpectOpen(recipe);
  Dialogs.ExpectMessageWith({recipe, "step 2 (cut): there is no subtitle 7"});
  Action("RunRecipe").trigger();
  EXPECT_FALSE(Action("Undo").isEnabled());
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Tools, RecipeThatLeavesNoSubtitleOnTheWayChangesNothing) {
  const Bytes stream = Join({At(1).Build(), At(3).Build()});
  LoadStream(stream);
  Write("other.sup", At(5).Build());
  const QString recipe = Write("steps.json", (R"({"version": 1, "steps": [
      {"tool": "retime", "shift": "1000"}, {"tool": "cut", "only": "1-"}, {"tool": "join", "with": ")" +
                                              Path("other.sup") + R"("}]})")
                                                 .toUtf8());
  Dialogs.ExpectOpen(recipe);
  Dialogs.ExpectMessageWith({recipe, "step 2 (cut): no subtitle would be left"});
  Action("RunRecipe").trigger();
  EXPECT_FALSE(Action("Undo").isEnabled());
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Tools, RecipeThatCannotBeReadIsNamed) {
  const QString recipe = Path("steps.json");
  if (!LinkUnreadableFile(recipe.toStdString())) {
    GTEST_SKIP() << NeedsUnreadableFile;
  }
  LoadStream(At(1).Build());
  Dialogs.ExpectOpen(recipe);
  Dialogs.ExpectMessageWith({recipe + ": "});
  Action("RunRecipe").trigger();
}

TEST_F(Tools, FileThatIsNoRecipeIsRefusedByName) {
  LoadStream(At(1).Build());
  const QString recipe = Write("steps.json", QByteArray("{\"version\": 2, \"steps\": []}"));
  Dialogs.ExpectOpen(recipe);
  Dialogs.ExpectMessageWith({recipe, "version is 2"});
  Action("RunRecipe").trigger();
}

}  // namespace
}  // namespace quillmark::test
