#include <QFile>

#include "app/Document.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

const QString ColoursWarning =
    "The subtitles use different colors.\r\n"
    "This information will be lost,\r\n"
    "if the Set All option is used!\r\n"
    "Continue?";
const QString OpacitiesWarning =
    "The subtitles use different opacities.\r\n"
    "This information will be lost,\r\n"
    "if the Set All option is used!\r\n"
    "Continue?";

/// The bytes that ChooseNewAssignment stands for.
const Bytes NewColours = {0xA2, 0x10};
const Bytes NewContrasts = {0xFF, 0x80};

class Assignment : public WindowTest {
 protected:
  /// Entry 10 for code 3, 2 for 2, 1 for 1 and 0 for 0; contrast F, F, 8 and 0.
  void ChooseNewAssignment() {
    Choose("ImageCombo4", "A");
    Choose("ImageCombo3", "2");
    Choose("ImageCombo2", "1");
    Choose("ImageCombo1", "0");
    Choose("Combo1_3", "F");
    Choose("Combo1_2", "F");
    Choose("Combo1_1", "8");
    Choose("Combo1_0", "0");
  }
  /// The stream with other colour or contrast arguments in the packet that starts at `packet`.
  static Bytes Patched(Bytes stream, std::size_t packet, const Bytes& colours, const Bytes& contrasts) {
    std::copy(colours.begin(), colours.end(), stream.begin() + static_cast<long>(packet + ColourArguments));
    std::copy(contrasts.begin(), contrasts.end(),
              stream.begin() + static_cast<long>(packet + ContrastArguments));
    return stream;
  }
  static Bytes PatchedEverywhere(Bytes stream) {
    for (std::size_t packet = 0; packet + PacketBuilder::Length <= stream.size();
         packet += PacketBuilder::Length) {
      stream = Patched(stream, packet, NewColours, NewContrasts);
    }
    return stream;
  }
};

/// Units that differ from the first one in colours, in opacities, or in both.
const PacketBuilder Usual = PacketBuilder().Time(1 * Second);
const PacketBuilder OtherColours = PacketBuilder().Time(2 * Second).Colour(3, 2, 9, 0);
const PacketBuilder OtherOpacities = PacketBuilder().Time(3 * Second).Contrast(15, 15, 9, 0);

TEST_F(Assignment, EntryThatAListShowsAlreadyRedrawsToo) {
  LoadStream(FourCodes(PacketBuilder().Time(Second)));
  Click("Check_SavePics");
  Click("Command_Reload");
  const QString picture = Path("movie_SubPng/00+00+01+00.png");
  for (const char* list : {"ImageCombo2", "Combo1_1"}) {
    ASSERT_TRUE(QFile::remove(picture)) << list;
    Choose(list, Chosen(list));
    EXPECT_TRUE(QFile::exists(picture)) << list;
    ASSERT_TRUE(QFile::remove(picture)) << list;
    Choose(list, "5");
    EXPECT_TRUE(QFile::exists(picture)) << list;
    ASSERT_TRUE(QFile::remove(picture)) << list;
    Choose(list, "5");
    EXPECT_TRUE(QFile::exists(picture)) << list;
  }
}

TEST_F(Assignment, ColourListRedrawsAtOnce) {
  LoadStream(FourCodes(PacketBuilder()));
  Choose("ImageCombo2", "3");
  EXPECT_EQ(FrameColour(102, 400), QColor(2, 252, 2));
  EXPECT_EQ(FrameColour(104, 400), QColor(255, 255, 255));
}

TEST_F(Assignment, EachColourListStandsForItsCode) {
  LoadStream(FourCodes(PacketBuilder().Contrast(15, 15, 15, 15)));
  Choose("ImageCombo1", "4");
  Choose("ImageCombo2", "5");
  Choose("ImageCombo3", "6");
  Choose("ImageCombo4", "7");
  EXPECT_EQ(FrameColour(100, 400), QColor(253, 255, 4));
  EXPECT_EQ(FrameColour(102, 400), QColor(252, 94, 252));
  EXPECT_EQ(FrameColour(104, 400), QColor(148, 150, 240));
  EXPECT_EQ(FrameColour(106, 400), QColor(251, 99, 251));
}

TEST_F(Assignment, OpacityZeroHidesTheCodeAtOnce) {
  LoadStream(FourCodes(PacketBuilder()));
  Choose("Combo1_1", "0");
  EXPECT_EQ(FrameColour(102, 400), QColor(120, 120, 120));
  EXPECT_EQ(FrameColour(104, 400), QColor(255, 255, 255));
}

TEST_F(Assignment, EachOpacityListStandsForItsCode) {
  LoadStream(FourCodes(PacketBuilder().Contrast(0, 0, 0, 0)));
  Choose("Combo1_0", "F");
  EXPECT_EQ(FrameColour(100, 400), QColor(0, 0, 0));
  Choose("Combo1_2", "F");
  EXPECT_EQ(FrameColour(104, 400), QColor(255, 255, 255));
  EXPECT_EQ(FrameColour(102, 400), QColor(120, 120, 120));
  Choose("Combo1_3", "F");
  EXPECT_EQ(FrameColour(106, 400), QColor(2, 252, 2));
}

TEST_F(Assignment, ListsLeaveTheStreamAlone) {
  LoadStream(ThreeSubtitles());
  ChooseNewAssignment();
  EXPECT_EQ(SavedBytes(), ThreeSubtitles());
}

TEST_F(Assignment, ListsKeepNumberAndDetails) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Choose("ImageCombo2", "3");
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(TextOf("Text_YPos"), "420");
  EXPECT_EQ(FrameColour(102, 420), QColor(2, 252, 2));
}

TEST_F(Assignment, ListsWithoutAStreamDrawNothing) {
  Click("Check_SavePics");
  const QImage before = Frame();
  ChooseNewAssignment();
  EXPECT_EQ(Frame(), before);
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  EXPECT_EQ(Chosen("ImageCombo4"), "A");
  EXPECT_FALSE(IsEnabled("Command_SetActual"));
  EXPECT_FALSE(IsEnabled("Command_SetAll"));
}

TEST_F(Assignment, SetForActualWritesFourBytesOfTheSubtitleShown) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  ChooseNewAssignment();
  Click("Command_SetActual");
  EXPECT_EQ(SavedBytes(), Patched(ThreeSubtitles(), PacketBuilder::Length, NewColours, NewContrasts));
}

TEST_F(Assignment, SetForActualStaysWhenSteppingBack) {
  LoadStream(ThreeSubtitles());
  ChooseNewAssignment();
  Click("Command_SetActual");
  Click("Command_Next");
  EXPECT_EQ(Chosen("ImageCombo4"), "3");
  Click("Command_Prev");
  EXPECT_EQ(Chosen("ImageCombo4"), "A");
  EXPECT_EQ(Chosen("Combo1_1"), "8");
}

TEST_F(Assignment, SetForActualNeitherAsksNorRedraws) {
  LoadStream(Join({Usual.Build(), OtherColours.Build()}));
  Choose("ImageCombo2", "3");
  const QImage before = Frame();
  const auto dialogs = Dialogs.Shown().size();
  Click("Command_SetActual");
  EXPECT_EQ(Frame(), before);
  EXPECT_EQ(Dialogs.Shown().size(), dialogs);
}

TEST_F(Assignment, SetForActualDoesNothingAtTheQuestionMark) {
  LoadStream(InvalidSecond());
  Choose("ImageCombo2", "7");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  Click("Command_SetActual");
  EXPECT_EQ(SavedBytes(), InvalidSecond());
}

TEST_F(Assignment, SetForAllWritesFourBytesOfEverySubtitle) {
  LoadStream(ThreeSubtitles());
  ChooseNewAssignment();
  Click("Command_SetAll");
  EXPECT_EQ(SavedBytes(), PatchedEverywhere(ThreeSubtitles()));
}

TEST_F(Assignment, SetForAllDoesNotRedraw) {
  LoadStream(ThreeSubtitles());
  Choose("ImageCombo2", "3");
  const QImage before = Frame();
  Click("Command_SetAll");
  EXPECT_EQ(Frame(), before);
}

TEST_F(Assignment, SetForAllWarnsOfDifferentColours) {
  const Bytes stream = Join({Usual.Build(), OtherColours.Build()});
  LoadStream(stream);
  ChooseNewAssignment();
  Dialogs.ExpectMessage(ColoursWarning);
  Click("Command_SetAll");
  EXPECT_EQ(Dialogs.Last().Icon, QMessageBox::Warning);
  EXPECT_EQ(Dialogs.Last().Buttons, QMessageBox::Ok | QMessageBox::Cancel);
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  EXPECT_EQ(SavedBytes(), PatchedEverywhere(stream));
}

TEST_F(Assignment, SetForAllWarnsOfDifferentOpacities) {
  const Bytes stream = Join({Usual.Build(), OtherOpacities.Build()});
  LoadStream(stream);
  ChooseNewAssignment();
  Dialogs.ExpectMessage(OpacitiesWarning);
  Click("Command_SetAll");
  EXPECT_EQ(Dialogs.Last().Icon, QMessageBox::Warning);
  EXPECT_EQ(Dialogs.Last().Buttons, QMessageBox::Ok | QMessageBox::Cancel);
  EXPECT_EQ(SavedBytes(), PatchedEverywhere(stream));
}

TEST_F(Assignment, ColoursAreWarnedOfBeforeOpacities) {
  const Bytes stream = Join({Usual.Build(), OtherColours.Build(), OtherOpacities.Build()});
  LoadStream(stream);
  ChooseNewAssignment();
  Dialogs.ExpectMessage(ColoursWarning);
  Dialogs.ExpectMessage(OpacitiesWarning);
  Click("Command_SetAll");
  EXPECT_EQ(SavedBytes(), PatchedEverywhere(stream));
}

TEST_F(Assignment, CancellingTheFirstWarningWritesNothing) {
  const Bytes stream = Join({Usual.Build(), OtherColours.Build()});
  LoadStream(stream);
  ChooseNewAssignment();
  Dialogs.ExpectMessage(ColoursWarning, QMessageBox::Cancel);
  Click("Command_SetAll");
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Assignment, CancellingTheSecondWarningWritesNothing) {
  const Bytes stream = Join({Usual.Build(), OtherColours.Build(), OtherOpacities.Build()});
  LoadStream(stream);
  ChooseNewAssignment();
  Dialogs.ExpectMessage(ColoursWarning);
  Dialogs.ExpectMessage(OpacitiesWarning, QMessageBox::Cancel);
  Click("Command_SetAll");
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Assignment, ClosingAWarningCountsAsCancel) {
  const Bytes stream = Join({Usual.Build(), OtherColours.Build()});
  LoadStream(stream);
  ChooseNewAssignment();
  Dialogs.ExpectCancelled(DialogKind::Message);
  Click("Command_SetAll");
  EXPECT_EQ(SavedBytes(), stream);
}

TEST_F(Assignment, WarningComesAgainTheNextTime) {
  LoadStream(Join({Usual.Build(), OtherColours.Build()}));
  for (int time = 0; time < 2; ++time) {
    Dialogs.ExpectMessage(ColoursWarning);
    Click("Command_SetAll");
    Dialogs.Verify();
  }
}

TEST_F(Assignment, UnitWithoutColoursIsWrittenBehindItsHeader) {
  LoadStream(InvalidSecond());
  ChooseNewAssignment();
  Click("Command_SetAll");
  Bytes expected = PatchedEverywhere(InvalidSecond());
  const std::size_t second = PacketBuilder::Length;
  // The second unit has no colour arguments: byte 24 on keeps what stood there, and the low byte of the
  // control offset and the first field byte take the colours.
  expected[second + 24] = StartDisplay[0];
  expected[second + 25] = StartDisplay[0];
  expected[second + 13] = NewColours[0];
  expected[second + 14] = NewColours[1];
  EXPECT_EQ(SavedBytes(), expected);
}

TEST_F(Assignment, TailBehindTheLastPacketIsNotTouched) {
  const Bytes tail(12, 'x');
  LoadStream(Join({ThreeSubtitles(), tail}));
  ChooseNewAssignment();
  Click("Command_SetAll");
  EXPECT_EQ(SavedBytes(), Join({PatchedEverywhere(ThreeSubtitles()), tail}));
}

TEST_F(Assignment, NewAssignmentIsShownAfterReset) {
  LoadStream(FourCodes(PacketBuilder()));
  Choose("ImageCombo2", "3");
  Click("Command_SetAll");
  Click("Command_Reload");
  EXPECT_EQ(Chosen("ImageCombo2"), "3");
  EXPECT_EQ(FrameColour(102, 400), QColor(2, 252, 2));
}

TEST_F(Assignment, ChoiceIsDrawnOnce) {
  LoadStream(ThreeSubtitles());
  int drawn = 0;
  QObject::connect(&Window.Content(), &Document::PreviewShown, &Window, [&drawn] { ++drawn; });
  Choose("ImageCombo2", "4");
  EXPECT_EQ(drawn, 1);
  Choose("Combo1_1", "9");
  EXPECT_EQ(drawn, 2);
}

}  // namespace
}  // namespace quillmark::test
