#include <QComboBox>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class Loading : public WindowTest {
 protected:
  /// Load SUP on a stream whose walk stops at something that is no packet.
  void LoadWithoutSignature(const Bytes& stream) {
    Dialogs.ExpectOpen(Write("broken.sup", stream));
    Dialogs.ExpectMessage("Error: No SUP signature found");
    Click("Command_LoadSup");
    Dialogs.Verify();
  }
  void LoadWithInvalidFirst(const Bytes& stream) {
    Dialogs.ExpectOpen(Write("broken.sup", stream));
    Dialogs.ExpectMessage("Error converting subtitle!");
    Dialogs.ExpectReport();
    Click("Command_LoadSup");
    Dialogs.Verify();
  }
};

const Bytes NoPacket(20, 'x');

TEST_F(Loading, ReportIsExact) {
  LoadStream(
      Join({PacketBuilder().Time(1 * Second).Delay(100).Build(), PacketBuilder().Time(5 * Second).Build()}));
  EXPECT_EQ(Dialogs.Last().Text,
            "Found Subtitles: 2\r\n"
            "Parse errors: 0\r\n"
            "Max subtitle width: 4 (100 to 103)\r\n"
            "Max subtitle height: 2 (400 to 401)\r\n"
            "Max size (kb): 0\r\n"
            "First timecode: 00:00:01.00\r\n"
            "Last timecode: 00:00:05.00\r\n"
            "Max duration (seconds): 1.12\r\n"
            "Subtitles without duration : Yes\r\n"
            "Color 1 uses palette color: 0  and opacity: 0\r\n"
            "Color 2 uses palette color: 1  and opacity: F\r\n"
            "Color 3 uses palette color: 2  and opacity: F\r\n"
            "Color 4 uses palette color: 3  and opacity: F\r\n");
}

TEST_F(Loading, ReportListsEveryUseOfACode) {
  LoadStream(Join({PacketBuilder().Delay(50).Colour(3, 2, 1, 0).Contrast(15, 15, 15, 0).Build(),
                   PacketBuilder().Delay(50).Colour(3, 2, 10, 0).Contrast(15, 8, 15, 0).Build()}));
  const QString report = Dialogs.Last().Text;
  EXPECT_TRUE(report.contains("Subtitles without duration : No"));
  EXPECT_TRUE(report.contains("Max duration (seconds): .56"));
  EXPECT_TRUE(report.contains("Color 2 uses palette color: 1, A  and opacity: F"));
  EXPECT_TRUE(report.contains("Color 3 uses palette color: 2  and opacity: 8, F"));
}

TEST_F(Loading, ReportCountsInvalidUnits) {
  LoadStream(InvalidSecond());
  EXPECT_TRUE(Dialogs.Last().Text.startsWith("Found Subtitles: 3\r\nParse errors: 1\r\n"));
}

TEST_F(Loading, ReportIsAMessageWithOneOkButton) {
  LoadStream(ThreeSubtitles());
  const ShownDialog report = Dialogs.Last();
  EXPECT_EQ(report.Title, "Quillmark");
  EXPECT_EQ(report.Buttons, QMessageBox::Ok);
  EXPECT_TRUE(report.IsModal);
  EXPECT_EQ(report.Owner, &Window);
}

TEST_F(Loading, HourglassStandsWhileTheFirstSubtitleIsShown) {
  bool stood = false;
  const auto watch =
      QObject::connect(&Control<QLineEdit>("Text_StartTime"), &QLineEdit::textChanged, &Window, [&stood] {
        const QCursor* pointer = QGuiApplication::overrideCursor();
        stood = pointer != nullptr && pointer->shape() == Qt::WaitCursor;
      });
  LoadStream(ThreeSubtitles());
  QObject::disconnect(watch);
  EXPECT_TRUE(stood);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Loading, HourglassIsGoneWhenTheReportComes) {
  LoadStream(ThreeSubtitles());
  EXPECT_TRUE(Dialogs.Last().PointerIsNormal);
}

TEST_F(Loading, HourglassIsGoneWhenAnErrorIsTold) {
  LoadWithoutSignature(NoPacket);
  EXPECT_TRUE(Dialogs.Last().PointerIsNormal);
  LoadWithInvalidFirst(PacketBuilder().WithoutColour().Build());
  EXPECT_TRUE(Dialogs.Shown().at(Dialogs.Shown().size() - 2).PointerIsNormal);
}

TEST_F(Loading, OpenDialogAsksForSupFilesFromThePathOn) {
  const QString path = LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  EXPECT_EQ(Dialogs.Last().Filters, QStringList("SUP Files (*.SUP)"));
  EXPECT_TRUE(Dialogs.Last().Offers("a.sup"));
  EXPECT_TRUE(Dialogs.Last().Offers("a.SUP"));
  EXPECT_FALSE(Dialogs.Last().Offers("a.pal"));
  EXPECT_EQ(Dialogs.Last().FileMode, QFileDialog::ExistingFile);
  EXPECT_EQ(Dialogs.Last().Folder, Folder.path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "movie.sup");
}

TEST_F(Loading, OpenDialogStartsAtTheDefaultPath) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  EXPECT_EQ(Dialogs.Last().Folder, QFileInfo(InProgramsFolder("test.sup")).path());
  EXPECT_EQ(QFileInfo(Dialogs.Last().Name).fileName(), "test.sup");
}

TEST_F(Loading, ChosenPathIsShown) {
  const QString path = LoadStream(ThreeSubtitles());
  EXPECT_EQ(TextOf("Text1"), path);
}

TEST_F(Loading, FirstSubtitlesDetailsAreShown) {
  LoadStream(Join({PacketBuilder().Time(65 * Second + 43200).Delay(50).Area(100, 103, 400, 401).Build(),
                   PacketBuilder().Time(80 * Second).Build()}));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:01:05.48");
  EXPECT_EQ(TextOf("Text_Dur"), ".56");
  EXPECT_EQ(TextOf("Text_XPos"), "100");
  EXPECT_EQ(TextOf("Text_YPos"), "400");
  EXPECT_EQ(TextOf("Text_Width"), "4");
  EXPECT_EQ(TextOf("Text_Height"), "2");
}

TEST_F(Loading, DurationOfAUnitWithoutDelayIsUnknown) {
  LoadStream(PacketBuilder().Delay(0).Build());
  EXPECT_EQ(TextOf("Text_Dur"), "???");
}

TEST_F(Loading, HundredthsRoundWithoutCarry) {
  LoadStream(PacketBuilder().Time(89999).Build());
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:00.00");
}

TEST_F(Loading, ListsShowTheFirstSubtitlesNibbles) {
  LoadStream(PacketBuilder().Colour(12, 10, 5, 9).Contrast(15, 10, 8, 0).Build());
  EXPECT_EQ(Chosen("ImageCombo1"), "9");
  EXPECT_EQ(Chosen("ImageCombo2"), "5");
  EXPECT_EQ(Chosen("ImageCombo3"), "A");
  EXPECT_EQ(Chosen("ImageCombo4"), "C");
  EXPECT_EQ(Chosen("Combo1_0"), "0");
  EXPECT_EQ(Chosen("Combo1_1"), "8");
  EXPECT_EQ(Chosen("Combo1_2"), "A");
  EXPECT_EQ(Chosen("Combo1_3"), "F");
}

TEST_F(Loading, EditingIsEnabled) {
  LoadStream(ThreeSubtitles());
  for (const char* name : {"Command_LoadPalette", "Command_SavePalette", "Command_SaveSup", "Combo1_0",
                           "Combo1_3", "ImageCombo1", "ImageCombo4", "Frame1", "Frame2", "Label1_0",
                           "Label1_15", "Option_File", "Option_720x480"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
}

TEST_F(Loading, NavigationAndAssignmentAreEnabled) {
  LoadStream(ThreeSubtitles());
  for (const char* name :
       {"Command_Next", "Command_GoTo", "Command_Reload", "Command_SetActual", "Command_SetAll"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
}

TEST_F(Loading, OneSubtitleLeavesNextAndGoToDisabled) {
  LoadStream(PacketBuilder().Build());
  EXPECT_FALSE(IsEnabled("Command_Next"));
  EXPECT_FALSE(IsEnabled("Command_GoTo"));
  EXPECT_TRUE(IsEnabled("Command_Reload"));
}

TEST_F(Loading, OneSubtitleAfterALongerStreamDisablesNextAndGoTo) {
  LoadStream(ThreeSubtitles());
  LoadStream(PacketBuilder().Build());
  EXPECT_FALSE(IsEnabled("Command_Next"));
  EXPECT_FALSE(IsEnabled("Command_GoTo"));
}

TEST_F(Loading, CancelKeepsThePathAndEnablesEditing) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  EXPECT_EQ(TextOf("Text1"), InProgramsFolder("test.sup"));
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  for (const char* name : {"Command_LoadPalette", "Command_SavePalette", "Command_SaveSup", "Combo1_0",
                           "ImageCombo1", "Frame1", "Frame2", "Label1_0"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
  for (const char* name : {"Command_Next", "Command_GoTo", "Command_Reload", "Command_SetActual"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
}

TEST_F(Loading, CancelAfterAStreamKeepsItsPathButCountsNoSubtitles) {
  const QString path = LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  EXPECT_EQ(TextOf("Text1"), path);
  Choose("ImageCombo2", "7");
  Click("Command_SetAll");
  EXPECT_EQ(SavedBytes(), ThreeSubtitles());
}

TEST_F(Loading, SetForActualAfterACancelledLoadStillWritesTheSubtitleShown) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  Choose("ImageCombo2", "7");
  Click("Command_SetActual");
  Bytes expected = ThreeSubtitles();
  expected[ColourArguments + 1] = 0x70;
  EXPECT_EQ(SavedBytes(), expected);
}

TEST_F(Loading, PointerIsNormalWhileAMessageStands) {
  Dialogs.AllowMessages();
  const QString gone = Write("gone.sup", ThreeSubtitles());
  Dialogs.Expect(DialogKind::OpenFile, [&gone](QDialog& dialog) {
    DialogScript::ConfirmFile(gone)(dialog);
    QFile::remove(gone);
  });
  Click("Command_LoadSup");
  Dialogs.ExpectOpen(Write("none.sup", Bytes(20, 'x')));
  Click("Command_LoadSup");
  Dialogs.ExpectOpen(Write("invalid.sup", Join({PacketBuilder().WithoutColour().Build(), Bytes(20, 'x')})));
  Click("Command_LoadSup");
  for (const char* text : {"Cannot read ", "Error: No SUP signature found", "Error converting subtitle!"}) {
    EXPECT_FALSE(Dialogs.MessageTexts().filter(text).isEmpty()) << text;
  }
  for (const ShownDialog& dialog : Dialogs.Shown()) {
    EXPECT_TRUE(dialog.PointerIsNormal) << dialog.Text.toStdString();
  }
}

TEST_F(Loading, FileThatIsGoneWhenItIsReadIsToldAndTheStreamStays) {
  const QString path = LoadStream(ThreeSubtitles());
  const QString gone = Write("%1 %2.sup", ThreeSubtitles());
  Dialogs.Expect(DialogKind::OpenFile, [&gone](QDialog& dialog) {
    DialogScript::ConfirmFile(gone)(dialog);
    QFile::remove(gone);
  });
  Dialogs.ExpectMessage("Cannot read " + gone + ": No such file or directory");
  Click("Command_LoadSup");
  Dialogs.Verify();
  EXPECT_TRUE(Dialogs.Last().PointerIsNormal);
  EXPECT_EQ(TextOf("Text1"), path);
  Click("Command_Next");
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
}

TEST_F(Loading, FileWithoutSignatureShowsOnlyTheError) {
  LoadWithoutSignature(NoPacket);
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  EXPECT_EQ(Dialogs.Last().Buttons, QMessageBox::Ok);
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
  EXPECT_FALSE(IsEnabled("Command_Next"));
}

TEST_F(Loading, BytesOfTheStreamBeforeAreKeptAfterASignatureError) {
  LoadStream(ThreeSubtitles());
  LoadWithoutSignature(Join({PacketBuilder().Time(2 * Second).Build(), NoPacket}));
  EXPECT_EQ(SavedBytes(), ThreeSubtitles());
}

TEST_F(Loading, StreamBeforeAFileThatIsNoneStaysAsItWas) {
  const QString path = LoadStream(ThreeSubtitles());
  Click("Command_Next");
  LoadWithoutSignature(NoPacket);
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  Choose("Combo1_1", "0");
  Click("Command_SetActual");
  Bytes expected = ThreeSubtitles();
  expected[PacketBuilder::Length + ContrastArguments + 1] = 0x00;
  EXPECT_EQ(SavedBytes(), expected);
  Click("Command_Reload");
  EXPECT_EQ(Chosen("Combo1_1"), "0");
  Click("Command_Next");
  EXPECT_EQ(TextOf("Text_SubNum"), "3");
}

TEST_F(Loading, NothingThatNeedsAnIndexIsEnabledWithoutOne) {
  LoadStream(ThreeSubtitles());
  LoadWithoutSignature(Join({PacketBuilder().Time(2 * Second).Build(), NoPacket}));
  for (const char* name : {"Command_Next", "Command_Prev", "Command_GoTo", "Command_Reload",
                           "Command_SetActual", "Command_SetAll"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
  EXPECT_TRUE(IsEnabled("Command_SaveSup"));
}

TEST_F(Loading, FirstSubtitleIsShownEvenIfALaterPacketHasNoSignature) {
  LoadWithoutSignature(Join({PacketBuilder().Time(2 * Second).Build(), NoPacket}));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:02.00");
}

TEST_F(Loading, StreamBeforeStaysUsableWhereTheFileDoesNotStartWithASignature) {
  const QString path = LoadStream(ThreeSubtitles());
  LoadWithoutSignature(NoPacket);
  EXPECT_EQ(TextOf("Text1"), path);
  Click("Command_Reload");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  Click("Command_Next");
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  Choose("ImageCombo4", "A");
  Click("Command_SetActual");
  EXPECT_NE(SavedBytes(), ThreeSubtitles());
}

TEST_F(Loading, CommandsThatCanDoNothingAreDisabledWhereALaterSignatureIsMissing) {
  LoadStream(ThreeSubtitles());
  LoadWithoutSignature(Join({PacketBuilder().Time(2 * Second).Build(), NoPacket}));
  for (const char* name : {"Command_Next", "Command_Prev", "Command_GoTo", "Command_Reload",
                           "Command_SetActual", "Command_SetAll"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
}

TEST_F(Loading, ShortTailIsIgnored) {
  LoadStream(Join({ThreeSubtitles(), Bytes(13, 'x')}));
  EXPECT_TRUE(Dialogs.Last().Text.startsWith("Found Subtitles: 3\r\n"));
}

TEST_F(Loading, InvalidFirstUnitIsToldBeforeTheReport) {
  LoadWithInvalidFirst(Join({PacketBuilder().WithoutColour().Build(), PacketBuilder().Build()}));
  EXPECT_TRUE(Dialogs.Last().Text.startsWith("Found Subtitles: 1\r\nParse errors: 1\r\n"));
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
}

TEST_F(Loading, InvalidFirstUnitLeavesTheStepCommandsDisabled) {
  LoadWithInvalidFirst(Join({PacketBuilder().WithoutArea().Build(), PacketBuilder().Build()}));
  for (const char* name :
       {"Command_Next", "Command_GoTo", "Command_Reload", "Command_SetActual", "Command_SetAll"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
}

TEST_F(Loading, InvalidFirstUnitAfterASoundStreamDisablesAssignmentAndReset) {
  LoadStream(ThreeSubtitles());
  LoadWithInvalidFirst(PacketBuilder().WithoutFields().Build());
  for (const char* name : {"Command_Reload", "Command_SetActual", "Command_SetAll"}) {
    EXPECT_FALSE(IsEnabled(name)) << name;
  }
}

TEST_F(Loading, EveryReasonForAnInvalidFirstUnitIsFound) {
  for (const PacketBuilder& packet :
       {PacketBuilder().WithoutColour(), PacketBuilder().WithoutContrast(), PacketBuilder().WithoutArea(),
        PacketBuilder().WithoutFields(), PacketBuilder().ControlOffset(0)}) {
    LoadWithInvalidFirst(packet.Build());
    EXPECT_EQ(TextOf("Text_SubNum"), "0");
  }
}

TEST_F(Loading, SecondStreamReplacesTheFirst) {
  LoadStream(ThreeSubtitles());
  const Bytes second =
      Join({PacketBuilder().Time(7 * Second).Build(), PacketBuilder().Time(8 * Second).Build()});
  Load(Write("second.sup", second));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:07.00");
  EXPECT_EQ(SavedBytes(), second);
}

}  // namespace
}  // namespace quillmark::test
