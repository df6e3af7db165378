#include <algorithm>

#include "app/Document.h"
#include "tests/app/PaletteFiles.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class Navigation : public WindowTest {
 protected:
  /// Steps onto an invalid unit.
  void Fail(const QString& command) {
    Dialogs.ExpectMessage("Error converting subtitle!");
    Click(command);
    Dialogs.Verify();
  }
  void ExpectNumber(const QString& number) const { EXPECT_EQ(TextOf("Text_SubNum"), number); }
};

TEST_F(Navigation, NextShowsTheFollowingSubtitle) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  ExpectNumber("2");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:05.00");
  EXPECT_EQ(TextOf("Text_YPos"), "420");
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_TRUE(IsEnabled("Command_Prev"));
}

TEST_F(Navigation, NextIsDisabledAtTheLast) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Click("Command_Next");
  ExpectNumber("3");
  EXPECT_FALSE(IsEnabled("Command_Next"));
}

TEST_F(Navigation, PrevShowsTheOneBefore) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Click("Command_Next");
  Click("Command_Prev");
  ExpectNumber("2");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:05.00");
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_TRUE(IsEnabled("Command_Prev"));
}

TEST_F(Navigation, PrevIsDisabledAtTheFirst) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Click("Command_Prev");
  ExpectNumber("1");
  EXPECT_FALSE(IsEnabled("Command_Prev"));
  EXPECT_TRUE(IsEnabled("Command_Next"));
}

TEST_F(Navigation, NextOnAnInvalidUnitShowsTheQuestionMark) {
  LoadStream(InvalidSecond());
  Fail("Command_Next");
  ExpectNumber("?");
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  EXPECT_EQ(Dialogs.Last().Buttons, QMessageBox::Ok);
}

TEST_F(Navigation, PrevOnAnInvalidUnitShowsTheQuestionMark) {
  LoadStream(InvalidSecond());
  GoTo("3");
  Fail("Command_Prev");
  ExpectNumber("?");
}

TEST_F(Navigation, FailedStepKeepsPictureAndDetails) {
  LoadStream(InvalidSecond());
  const QImage before = Frame();
  Fail("Command_Next");
  EXPECT_EQ(Frame(), before);
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.00");
  EXPECT_EQ(TextOf("Text_XPos"), "100");
}

TEST_F(Navigation, PrevDoesNothingAtTheQuestionMark) {
  LoadStream(InvalidSecond());
  GoTo("3");
  Fail("Command_Prev");
  Click("Command_Prev");
  ExpectNumber("?");
}

TEST_F(Navigation, GoToAsksWithTheCount) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::Input);
  Click("Command_GoTo");
  EXPECT_EQ(Dialogs.Last().Title, "Jump to subtitle");
  EXPECT_EQ(Dialogs.Last().Text, "Jump to subtitle Nr. (1..3):");
  EXPECT_EQ(Dialogs.Last().DefaultText, "1");
  EXPECT_TRUE(Dialogs.Last().IsModal);
}

TEST_F(Navigation, GoToCancelledChangesNothing) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Dialogs.ExpectCancelled(DialogKind::Input);
  Click("Command_GoTo");
  ExpectNumber("2");
}

TEST_F(Navigation, GoToWithAnEmptyReplyChangesNothing) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  GoTo("");
  ExpectNumber("2");
}

TEST_F(Navigation, GoToTheLastDisablesNext) {
  LoadStream(ThreeSubtitles());
  GoTo("3");
  ExpectNumber("3");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:09.00");
  EXPECT_FALSE(IsEnabled("Command_Next"));
  EXPECT_TRUE(IsEnabled("Command_Prev"));
}

TEST_F(Navigation, GoToTheFirstDisablesPrev) {
  LoadStream(ThreeSubtitles());
  GoTo("3");
  GoTo("1");
  ExpectNumber("1");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.00");
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_FALSE(IsEnabled("Command_Prev"));
}

TEST_F(Navigation, GoToTheMiddleEnablesBoth) {
  LoadStream(ThreeSubtitles());
  GoTo("3");
  GoTo("2");
  ExpectNumber("2");
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_TRUE(IsEnabled("Command_Prev"));
}

TEST_F(Navigation, GoToTruncatesItsNumber) {
  LoadStream(ThreeSubtitles());
  GoTo("2.9");
  ExpectNumber("2");
}

TEST_F(Navigation, GoToOutsideTheStreamIsIllegal) {
  LoadStream(ThreeSubtitles());
  for (const char* reply : {"abc", "0", "4", "-1", "0.9", "99999999999999999999"}) {
    Dialogs.ExpectInput(reply);
    Dialogs.ExpectMessage("Illegal number!");
    Click("Command_GoTo");
    Dialogs.Verify();
    ExpectNumber("1");
  }
}

TEST_F(Navigation, GoToAnInvalidUnitFailsAsNextDoes) {
  LoadStream(InvalidSecond());
  Dialogs.ExpectInput("2");
  Fail("Command_GoTo");
  ExpectNumber("?");
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_TRUE(IsEnabled("Command_Prev"));
}

TEST_F(Navigation, GoToLeavesTheQuestionMark) {
  LoadStream(InvalidSecond());
  Fail("Command_Next");
  GoTo("3");
  ExpectNumber("3");
  EXPECT_EQ(TextOf("Text_YPos"), "440");
}

TEST_F(Navigation, ResetShowsTheCurrentSubtitleAgain) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Choose("ImageCombo2", "7");
  Click("Command_Reload");
  ExpectNumber("2");
  EXPECT_EQ(Chosen("ImageCombo2"), "1");
  EXPECT_EQ(FrameColour(102, 420), QColor(3, 253, 251));
}

TEST_F(Navigation, ResetWithoutASubtitleDoesNothing) {
  // A new palette ends in a Reset, also while the number is 0.
  LoadPalette(Write("p.pal", PalWithRed()));
  ExpectNumber("0");
  EXPECT_EQ(SwatchColour(1), QColor(255, 1, 0));
  Dialogs.ExpectOpen(Write("broken.sup", PacketBuilder().WithoutColour().Build()));
  Dialogs.ExpectMessage("Error converting subtitle!");
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
  Dialogs.Verify();
  const QImage before = Frame();
  LoadPalette(Write("p.rgb", QByteArray("FFFFFF\r\n").repeated(16)));
  ExpectNumber("0");
  EXPECT_EQ(Frame(), before);
}

TEST_F(Navigation, ResetOfASubtitleThatIsNoLongerValidIsToldAndShowsTheQuestionMark) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  // The control offset leads into the header: no command is found any more.
  StreamEdit edit;
  const Bytes offset = {0x00, 0x00};
  edit.Replace(PacketBuilder::Length + 12, 2, offset);
  edit.Reindexes = true;
  ASSERT_TRUE(Window.Content().Make({.Name = {}, .What = edit}));
  const QImage before = Frame();
  Fail("Command_Reload");
  ExpectNumber("?");
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  EXPECT_EQ(Dialogs.Last().Buttons, QMessageBox::Ok);
  EXPECT_EQ(Frame(), before);
}

TEST_F(Navigation, LastByteOfAUnitCountsInEveryStep) {
  // One sequence that points to itself; the unit ends in the argument of its last command.
  const Bytes unit = Join({{0x11, 0x00, 0x12, 0x00},
                           Sequence(0, 8,
                                    {StartDisplay, SetColour(3, 2, 1, 0), SetArea(100, 103, 400, 401),
                                     SetFields(4, 6), SetContrast(15, 15, 15, 5)})});
  const Bytes packet = PacketBuilder().Unit(unit).Build();
  LoadStream(Join({packet, packet}));
  EXPECT_EQ(Chosen("Combo1_0"), "5");
  for (const char* step : {"Command_Reload", "Command_Next", "Command_Prev"}) {
    Click(step);
    EXPECT_EQ(Chosen("Combo1_0"), "5") << step;
    EXPECT_EQ(Chosen("Combo1_1"), "F") << step;
  }
}

TEST_F(Navigation, ResetAfterAFailureOnlySetsOne) {
  LoadStream(InvalidSecond());
  GoTo("3");
  Fail("Command_Prev");
  const QImage before = Frame();
  Click("Command_Reload");
  ExpectNumber("1");
  EXPECT_EQ(Frame(), before);
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:09.00");
}

TEST_F(Navigation, NextAfterThatResetShowsTheSecond) {
  const Bytes stream =
      Join({FourCodes(PacketBuilder().Time(1 * Second)), FourCodes(PacketBuilder().Time(5 * Second)),
            PacketBuilder().Time(9 * Second).WithoutContrast().Build(),
            FourCodes(PacketBuilder().Time(13 * Second))});
  LoadStream(stream);
  Click("Command_Next");
  Fail("Command_Next");
  Click("Command_Reload");
  Click("Command_Next");
  ExpectNumber("2");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:05.00");
}

TEST_F(Navigation, ListsAreInertAfterAnInvalidUnit) {
  LoadStream(InvalidSecond());
  Fail("Command_Next");
  Click("Command_Reload");  // the number is 1 again, but no unit has been converted
  const QImage before = Frame();
  Choose("ImageCombo2", "7");
  Choose("Combo1_1", "0");
  EXPECT_EQ(Frame(), before);
}

TEST_F(Navigation, ListsWorkAgainOnceASoundUnitWasShown) {
  LoadStream(InvalidSecond());
  Fail("Command_Next");
  Click("Command_Reload");
  Click("Command_Reload");
  Choose("ImageCombo2", "3");
  EXPECT_EQ(FrameColour(102, 400), QColor(2, 252, 2));
}

TEST_F(Navigation, ListsStayInertWhenALaterStreamStartsInvalid) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(Write("broken.sup", PacketBuilder().WithoutColour().Build()));
  Dialogs.ExpectMessage("Error converting subtitle!");
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
  const QImage before = Frame();
  Choose("ImageCombo2", "7");
  EXPECT_EQ(Frame(), before);
}

}  // namespace
}  // namespace quillmark::test
