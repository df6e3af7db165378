#include <QFileInfo>
#include <QGuiApplication>

#include "tests/app/MergeTest.h"

namespace quillmark::test {
namespace {

class MergeLoading : public MergeTest {
 protected:
  void Refuse(const QString& text) {
    Dialogs.ExpectMessage(text);
    Click("Command_LoadSecond");
    Dialogs.Verify();
  }
  void CancelOpening() {
    Dialogs.ExpectCancelled(DialogKind::OpenFile);
    Click("Command_LoadSecond");
    Dialogs.Verify();
  }
  /// What stood on the screen at the message before the last dialog.
  [[nodiscard]] QString SecondaryReport() const {
    return Dialogs.Shown().at(Dialogs.Shown().size() - 2).Text;
  }
  void ExpectEditingEnabled(bool enabled) const {
    for (const QString& name : EditingControls()) {
      EXPECT_EQ(IsEnabled(name), enabled) << name.toStdString();
    }
  }
  void LoadSecondWithoutSignature() {
    Dialogs.ExpectOpen(Write("second.sup", QByteArray("this is no stream of subtitles")));
    Dialogs.ExpectMessage("Error: No SUP signature found");
    Click("Command_LoadSecond");
    Dialogs.Verify();
  }
};

const QString SeveralText =
    "Error: Primary sup file uses multiple colors or multiple transparancies\r\n"
    "Loading secondary stream not possible.\r\n"
    "Remove the multiple colors and/or multiple transparancies in the primary sup file and retry";

TEST_F(MergeLoading, RefusedWithoutAPrimaryStream) {
  Refuse("Error: No primary sup file loaded");
}

TEST_F(MergeLoading, RefusedAfterLoadingWasCancelled) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  Refuse("Error: No primary sup file loaded");
}

TEST_F(MergeLoading, PrimaryWithSeveralColoursIsRefused) {
  LoadStream(SeveralColours());
  Refuse(SeveralText);
}

TEST_F(MergeLoading, PrimaryWithSeveralOpacitiesIsRefused) {
  LoadStream(SeveralOpacities());
  Refuse(SeveralText);
}

TEST_F(MergeLoading, RefusalChangesNothing) {
  LoadStream(SeveralColours());
  Click("Command_Next");
  const QImage before = Frame();
  Refuse(SeveralText);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_TRUE(IsEnabled("Command_Prev"));
  EXPECT_EQ(Frame(), before);
  ExpectEditingEnabled(true);
}

TEST_F(MergeLoading, FirstSubtitleIsShownBeforeTheFileIsAskedFor) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Click("Command_Next");
  Dialogs.Expect(DialogKind::OpenFile, [this](QDialog& dialog) {
    EXPECT_EQ(TextOf("Text_SubNum"), "1");
    EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.00");
    EXPECT_TRUE(TextIsAt(100, 400));
    EXPECT_FALSE(TextIsAt(100, 440));
    EXPECT_FALSE(IsEnabled("Command_Prev"));
    EXPECT_TRUE(IsEnabled("Command_Next"));
    dialog.reject();
  });
  Click("Command_LoadSecond");
}

TEST_F(MergeLoading, CancelLeavesTheFirstSubtitleShown) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  CancelOpening();
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_TRUE(TextIsAt(100, 400));
}

TEST_F(MergeLoading, CancelLeavesEditingEnabled) {
  LoadStream(ThreeSubtitles());
  CancelOpening();
  ExpectEditingEnabled(true);
}

TEST_F(MergeLoading, CancelLeavesNoSecondaryStream) {
  LoadStream(ThreeSubtitles());
  CancelOpening();
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeLoading, CancelledSecondLoadDropsTheSecondaryStream) {
  LoadStream(ThreeSubtitles());
  Merge(SecondaryStream({0}));
  CancelOpening();
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeLoading, SteppingAfterACancelledSecondLoadShowsThePrimaryAlone) {
  LoadStream(ThreeSubtitles());
  Merge(SecondaryStream({0}));
  CancelOpening();
  Click("Command_Next");
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_TRUE(TextIsAt(100, 420));
  EXPECT_EQ(ShownSecondaries(), std::vector<int>{});
}

TEST_F(MergeLoading, DialogAsksForSupFilesFromThePrimaryOn) {
  LoadStream(ThreeSubtitles());
  CancelOpening();
  const ShownDialog dialog = Dialogs.Last();
  EXPECT_EQ(dialog.Title, "Quillmark");
  EXPECT_EQ(dialog.Owner, &Window);
  EXPECT_TRUE(dialog.IsModal);
  EXPECT_EQ(dialog.Filters, QStringList("SUP Files (*.SUP)"));
  EXPECT_TRUE(dialog.Offers("a.sup"));
  EXPECT_TRUE(dialog.Offers("a.SUP"));
  EXPECT_FALSE(dialog.Offers("a.pal"));
  EXPECT_EQ(dialog.FileMode, QFileDialog::ExistingFile);
  EXPECT_EQ(dialog.Folder, Folder.path());
  EXPECT_EQ(QFileInfo(dialog.Name).fileName(), "movie.sup");
}

TEST_F(MergeLoading, ReportIsExact) {
  LoadStream(PrimaryStream({{0, 10}}));
  Merge(ThreeSubtitles());
  EXPECT_EQ(SecondaryReport(),
            "Found secondary Subtitles: 3\r\n"
            "Parse errors: 0\r\n"
            "Max subtitle width: 8 (100 to 107)\r\n"
            "Max subtitle height: 2 (400 to 401)\r\n"
            "Max size (kb): 0\r\n"
            "First timecode: 00:00:01.00\r\n"
            "Last timecode: 00:00:09.00\r\n"
            "Max duration (seconds): 1.12\r\n"
            "Subtitles without duration : No\r\n"
            "Color 1 uses palette color: 0  and opacity: 0\r\n"
            "Color 2 uses palette color: 1  and opacity: F\r\n"
            "Color 3 uses palette color: 2  and opacity: F\r\n"
            "Color 4 uses palette color: 3  and opacity: F\r\n");
}

/// The pointer at each painting of a widget.
class PointerAtPaint : public QObject {
 public:
  explicit PointerAtPaint(QWidget& widget) : widget_(widget) { widget.installEventFilter(this); }

  int Hourglasses = 0;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const QCursor* pointer = QGuiApplication::overrideCursor();
    if (watched == &widget_ && event->type() == QEvent::Paint && pointer != nullptr &&
        pointer->shape() == Qt::WaitCursor) {
      ++Hourglasses;
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QWidget& widget_;
};

TEST_F(MergeLoading, HourglassStandsWhileTheStreamIsRead) {
  LoadStream(ThreeSubtitles());
  const PointerAtPaint painted(Window);
  Merge(ThreeSubtitles());
  EXPECT_EQ(painted.Hourglasses, 1);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(MergeLoading, FileThatIsGoneWhenItIsReadIsTold) {
  LoadStream(ThreeSubtitles());
  Merge(SecondaryStream({0}));
  const QString gone = Write("%1 %2.sup", ThreeSubtitles());
  Dialogs.Expect(DialogKind::OpenFile, [&gone](QDialog& dialog) {
    DialogScript::ConfirmFile(gone)(dialog);
    QFile::remove(gone);
  });
  Dialogs.ExpectMessage("Cannot read " + gone + ": No such file or directory");
  Click("Command_LoadSecond");
  Dialogs.Verify();
  EXPECT_TRUE(Dialogs.Last().PointerIsNormal);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeLoading, FileThatIsGoneWhenItIsReadLeavesEditingEnabled) {
  LoadStream(ThreeSubtitles());
  const QString gone = Write("gone.sup", ThreeSubtitles());
  Dialogs.Expect(DialogKind::OpenFile, [&gone](QDialog& dialog) {
    DialogScript::ConfirmFile(gone)(dialog);
    QFile::remove(gone);
  });
  Dialogs.ExpectMessageWith({"Cannot read "});
  Click("Command_LoadSecond");
  Dialogs.Verify();
  ExpectEditingEnabled(true);
}

TEST_F(MergeLoading, HourglassIsGoneWhenTheReportComes) {
  LoadStream(ThreeSubtitles());
  Merge(ThreeSubtitles());
  EXPECT_TRUE(Dialogs.Shown().at(Dialogs.Shown().size() - 2).PointerIsNormal);
}

const QString Warning =
    "\r\n\r\nWarning: Secondary subtitles have multiple colors or multiple transparancies\r\n"
    "Overlaying may not work properly";

TEST_F(MergeLoading, SecondaryWithSeveralColoursIsWarnedAbout) {
  LoadStream(ThreeSubtitles());
  Merge(SeveralColours());
  EXPECT_TRUE(SecondaryReport().contains("Color 2 uses palette color: 1, 5  and opacity: F\r\n"));
  EXPECT_TRUE(SecondaryReport().trimmed().endsWith(Warning.trimmed()));
  EXPECT_TRUE(SecondaryReport().contains(Warning));
}

TEST_F(MergeLoading, SecondaryWithSeveralOpacitiesIsWarnedAbout) {
  LoadStream(ThreeSubtitles());
  Merge(SeveralOpacities());
  EXPECT_TRUE(SecondaryReport().contains(Warning));
}

TEST_F(MergeLoading, WarnedSecondaryIsMergedNevertheless) {
  LoadStream(PrimaryStream({{0, 10}}));
  Merge(SeveralColours());
  EXPECT_TRUE(TextIsAt(100, 100));
  EXPECT_TRUE(TextIsAt(100, 400));
}

TEST_F(MergeLoading, WarningOfAnEarlierSecondaryIsForgotten) {
  LoadStream(ThreeSubtitles());
  Merge(SeveralColours());
  Merge(ThreeSubtitles());
  EXPECT_FALSE(SecondaryReport().contains("Warning"));
}

TEST_F(MergeLoading, SecondaryStatisticsLeaveThePrimaryOnesAlone) {
  LoadStream(ThreeSubtitles());
  Merge(SeveralColours());
  // A second load is refused when the primary stream has several colours.
  Merge(ThreeSubtitles());
}

TEST_F(MergeLoading, ParseErrorsOfTheSecondaryAreCounted) {
  LoadStream(ThreeSubtitles());
  Merge(InvalidSecond());
  EXPECT_TRUE(SecondaryReport().startsWith("Found secondary Subtitles: 3\r\nParse errors: 1\r\n"));
}

TEST_F(MergeLoading, FileWithoutSignatureStopsAfterItsMessage) {
  LoadStream(ThreeSubtitles());
  LoadSecondWithoutSignature();
  EXPECT_EQ(Dialogs.Last().Kind, DialogKind::Message);
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
}

TEST_F(MergeLoading, FileWithoutSignatureLeavesEditingEnabled) {
  LoadStream(ThreeSubtitles());
  LoadSecondWithoutSignature();
  ExpectEditingEnabled(true);
}

TEST_F(MergeLoading, FileWithoutSignatureLeavesThePointerNormal) {
  LoadStream(ThreeSubtitles());
  LoadSecondWithoutSignature();
  EXPECT_TRUE(Dialogs.Last().PointerIsNormal);
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(MergeLoading, FileWithoutSignatureLeavesNoSecondaryStream) {
  LoadStream(ThreeSubtitles());
  Merge(SecondaryStream({0}));
  LoadSecondWithoutSignature();
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeLoading, SignatureMissingAtTheSecondPacketLeavesNoSecondaryStream) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(Write("second.sup", Join({SecondaryStream({0}), Bytes(40, 'x')})));
  Dialogs.ExpectMessage("Error: No SUP signature found");
  Click("Command_LoadSecond");
  Dialogs.Verify();
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeLoading, EmptySecondaryReadsNothing) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(Write("second.sup", Bytes()));
  Dialogs.ExpectMessageWith({"Found secondary Subtitles: 0\r\nParse errors: 0\r\n"});
  Dialogs.Expect(DialogKind::Input, [](QDialog& dialog) { dialog.accept(); });
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_LoadSecond");
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeLoading, InvalidFirstSecondaryIsToldTwiceAndOneSubtitleFound) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(
      Write("second.sup", Join({PacketBuilder().WithoutColour().Build(), SecondaryStream({1, 2})})));
  Dialogs.ExpectMessage("Error converting subtitle!");
  Dialogs.ExpectMessageWith({"Found secondary Subtitles: 1\r\nParse errors: 1\r\n"});
  Dialogs.ExpectInput("0");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_LoadSecond");
  Dialogs.Verify();
}

TEST_F(MergeLoading, InvalidFirstSecondaryLeavesNumberOneAndMergeMode) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(Write("second.sup", PacketBuilder().WithoutColour().Build()));
  Dialogs.ExpectMessage("Error converting subtitle!");
  ExpectSecondaryReport();
  Dialogs.Expect(DialogKind::Input, [this](QDialog& dialog) {
    EXPECT_EQ(TextOf("Text_SubNum"), "0");
    dialog.accept();
  });
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_LoadSecond");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  ExpectEditingEnabled(false);
}

TEST_F(MergeLoading, InvalidFirstSecondaryLeavesThePrimaryShownAlone) {
  LoadStream(ThreeSubtitles());
  const QImage alone = Frame();
  Dialogs.ExpectOpen(Write("second.sup", PacketBuilder().WithoutColour().Build()));
  Dialogs.ExpectMessage("Error converting subtitle!");
  ExpectSecondaryReport();
  Dialogs.ExpectInput("0");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_LoadSecond");
  Dialogs.Verify();
  EXPECT_EQ(Frame(), alone);
}

TEST_F(MergeLoading, InvalidPrimaryIsSurvived) {
  Dialogs.ExpectOpen(Write("movie.sup", PacketBuilder().WithoutColour().Build()));
  Dialogs.ExpectMessage("Error converting subtitle!");
  Dialogs.ExpectReport();
  Click("Command_LoadSup");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Dialogs.ExpectOpen(Write("second.sup", ThreeSubtitles()));
  ExpectSecondaryReport();
  Dialogs.ExpectInput("0");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_LoadSecond");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(MergeLoading, PrimaryPathStaysWhereItIs) {
  const QString path = LoadStream(ThreeSubtitles());
  Merge(ThreeSubtitles());
  EXPECT_EQ(TextOf("Text1"), path);
}

TEST_F(MergeLoading, FilesAreOnlyRead) {
  const QString path = LoadStream(ThreeSubtitles());
  Merge(SecondaryStream({0, 1}));
  EXPECT_EQ(Read(path), ThreeSubtitles());
  EXPECT_EQ(Read(Path("second.sup")), SecondaryStream({0, 1}));
}

TEST_F(MergeLoading, SecondaryMayBeThePrimaryFile) {
  const QString path = LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(path);
  ExpectSecondaryReport();
  Dialogs.ExpectInput("-300");
  Click("Command_LoadSecond");
  EXPECT_TRUE(TextIsAt(100, 400));
  EXPECT_TRUE(TextIsAt(100, 100));
}

// The offset box.

class MergeOffset : public MergeTest {
 protected:
  void SetUp() override { LoadStream(PrimaryStream({{0, 10}})); }
  /// The secondary picture's first line when this is typed; -1 when it is not on the frame.
  int LineFor(const QString& reply) {
    Merge(SecondaryStream({0}), reply);
    return ShownLine();
  }
  [[nodiscard]] int ShownLine() const {
    const QImage frame = Frame();
    for (int y = 0; y < frame.height(); ++y) {
      if (frame.pixelColor(202, y) == TextColour) {
        return y;
      }
    }
    return -1;
  }
  /// A message of the program's own follows the box, and the command ends.
  void ExpectOutOfRange(const QString& reply) {
    Dialogs.ExpectOpen(Write("second.sup", SecondaryStream({0})));
    ExpectSecondaryReport();
    Dialogs.ExpectInput(reply);
    Dialogs.ExpectMessageWith({"-32768", "32767"});
    Click("Command_LoadSecond");
    Dialogs.Verify();
  }
};

TEST_F(MergeOffset, BoxIsExact) {
  Merge(SecondaryStream({0}));
  const ShownDialog box = Dialogs.Last();
  EXPECT_EQ(box.Kind, DialogKind::Input);
  EXPECT_EQ(box.Title, "Set Offset");
  EXPECT_EQ(box.Text, "Y-Offset for secondary stream");
  EXPECT_EQ(box.DefaultText, "-400");
  EXPECT_EQ(box.Owner, &Window);
}

TEST_F(MergeOffset, EditingIsDisabledWhenTheBoxComes) {
  Dialogs.ExpectOpen(Write("second.sup", SecondaryStream({0})));
  ExpectSecondaryReport();
  Dialogs.Expect(DialogKind::Input, [this](QDialog& dialog) {
    EXPECT_FALSE(IsEnabled("Command_SaveSup"));
    EXPECT_FALSE(IsEnabled("Frame1"));
    dialog.accept();
  });
  Click("Command_LoadSecond");
}

TEST_F(MergeOffset, DefaultIsMinusFourHundred) {
  Dialogs.ExpectOpen(Write("second.sup", FourCodes(PacketBuilder(), 200, 460)));
  ExpectSecondaryReport();
  Dialogs.Expect(DialogKind::Input, [](QDialog& dialog) { dialog.accept(); });
  Click("Command_LoadSecond");
  EXPECT_EQ(ShownLine(), 60);
}

struct OffsetReply {
  const char* Reply;
  int Offset;
};

class MergeOffsetReply : public MergeOffset, public testing::WithParamInterface<OffsetReply> {};

TEST_P(MergeOffsetReply, MovesTheSecondaryPicture) {
  EXPECT_EQ(LineFor(GetParam().Reply), 200 + GetParam().Offset);
}

INSTANTIATE_TEST_SUITE_P(Replies, MergeOffsetReply,
                         testing::Values(OffsetReply{"0", 0}, OffsetReply{"-150", -150},
                                         OffsetReply{"+150", 150}, OffsetReply{"abc", 0}, OffsetReply{"", 0},
                                         OffsetReply{"12.5", 12}, OffsetReply{"13.5", 14},
                                         OffsetReply{"12.51", 13}, OffsetReply{"-12.5", -12},
                                         OffsetReply{"-13.5", -14}, OffsetReply{".5", 0},
                                         OffsetReply{"1.5", 2}, OffsetReply{"-7 lines", -7},
                                         OffsetReply{"20abc40", 20}, OffsetReply{"-", 0},
                                         OffsetReply{"  30", 30}));

TEST_F(MergeOffset, CancelMeansZero) {
  Dialogs.ExpectOpen(Write("second.sup", SecondaryStream({0})));
  ExpectSecondaryReport();
  Dialogs.ExpectCancelled(DialogKind::Input);
  Click("Command_LoadSecond");
  EXPECT_EQ(ShownLine(), 200);
  EXPECT_FALSE(IsEnabled("Command_SaveSup"));
}

TEST_F(MergeOffset, LimitsOfSixteenBitsAreTaken) {
  for (const char* reply : {"32767", "-32768", "32767.4", "-32768.5"}) {
    EXPECT_EQ(LineFor(reply), -1) << reply;
    EXPECT_FALSE(IsEnabled("Command_SaveSup")) << reply;
  }
}

TEST_F(MergeOffset, BeyondSixteenBitsIsTold) {
  for (const char* reply : {"32768", "-32769", "32767.5", "99999999999999999999", "1e300"}) {
    ExpectOutOfRange(reply);
  }
}

TEST_F(MergeOffset, BeyondSixteenBitsIsToldAsItWasTyped) {
  Merge(SecondaryStream({0}), "50");
  ExpectOutOfRange("40000 %1 %2");
  EXPECT_EQ(Dialogs.Last().Text, "The offset 40000 %1 %2 is not between -32768 and 32767; it stays 50");
}

TEST_F(MergeOffset, BeyondSixteenBitsLeavesTheFrameAndTheNumber) {
  const QImage alone = Frame();
  ExpectOutOfRange("40000");
  EXPECT_EQ(Frame(), alone);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(MergeOffset, BeyondSixteenBitsKeepsTheEarlierMerge) {
  Merge(SecondaryStream({0}), "50");
  const Bytes before = MergedBytes();
  ExpectOutOfRange("40000");
  EXPECT_EQ(MergedBytes(), before);
}

TEST_F(MergeOffset, PictureOutsideTheFrameIsNotSeen) {
  EXPECT_EQ(LineFor("-5000"), -1);
  EXPECT_TRUE(TextIsAt(100, 100));
}

TEST_F(MergeOffset, PictureIsCutAtTheFramesTop) {
  // Of the two lines of the picture the lower one is the frame's first.
  EXPECT_EQ(LineFor("-201"), 0);
  EXPECT_NE(FrameColour(202, 1), TextColour);
}

// The first merged subtitle.

class MergeFirst : public MergeTest {};

TEST_F(MergeFirst, BothPicturesAreAtTheirPlaces) {
  LoadStream(PrimaryStream({{0, 10}}));
  const QImage alone = Frame();
  Merge(SecondaryStream({0}), "-30");
  const QImage merged = Frame();
  for (const int y : {100, 101}) {
    EXPECT_EQ(merged.pixelColor(102, y), QColor(3, 253, 251));
    EXPECT_EQ(merged.pixelColor(104, y), QColor(255, 255, 255));
    EXPECT_EQ(merged.pixelColor(106, y), QColor(2, 252, 2));
  }
  for (const int y : {170, 171}) {
    EXPECT_EQ(merged.pixelColor(201, y), alone.pixelColor(201, y));
    EXPECT_EQ(merged.pixelColor(202, y), QColor(3, 253, 251));
    EXPECT_EQ(merged.pixelColor(204, y), QColor(255, 255, 255));
    EXPECT_EQ(merged.pixelColor(206, y), QColor(2, 252, 2));
    EXPECT_EQ(merged.pixelColor(208, y), alone.pixelColor(208, y));
  }
  EXPECT_EQ(merged.pixelColor(202, 169), alone.pixelColor(202, 169));
  EXPECT_EQ(merged.pixelColor(202, 172), alone.pixelColor(202, 172));
  EXPECT_EQ(merged.pixelColor(202, 200), alone.pixelColor(202, 200));
}

TEST_F(MergeFirst, SecondaryLiesOverThePrimary) {
  LoadStream(PrimaryStream({{0, 10}}));
  // From x = 104 on: two transparent pixels over code 2, code 1 over code 3, the rest beside the primary.
  Merge(FourCodes(PacketBuilder(), 104, 100));
  EXPECT_EQ(FrameColour(104, 100), QColor(255, 255, 255));
  EXPECT_EQ(FrameColour(105, 101), QColor(255, 255, 255));
  EXPECT_EQ(FrameColour(106, 100), QColor(3, 253, 251));
  EXPECT_EQ(FrameColour(107, 101), QColor(3, 253, 251));
  EXPECT_EQ(FrameColour(108, 100), QColor(255, 255, 255));
  EXPECT_EQ(FrameColour(111, 101), QColor(2, 252, 2));
}

TEST_F(MergeFirst, SecondaryTakesThePrimarysColours) {
  LoadStream(PrimaryStream({{0, 10}}));
  Merge(FourCodes(PacketBuilder().Colour(5, 5, 5, 5).Contrast(1, 1, 1, 1), 200, 200));
  EXPECT_EQ(FrameColour(202, 200), QColor(3, 253, 251));
  EXPECT_EQ(FrameColour(206, 200), QColor(2, 252, 2));
}

TEST_F(MergeFirst, DetailsAreThePrimarys) {
  LoadStream(PrimaryStream({{1000, 100}}));
  Merge(FourCodes(PacketBuilder().Time(77 * Second).Delay(7).Colour(5, 5, 5, 5), 200, 200));
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:11.11");
  EXPECT_EQ(TextOf("Text_Dur"), "1.12");
  EXPECT_EQ(TextOf("Text_XPos"), "100");
  EXPECT_EQ(TextOf("Text_YPos"), "100");
  EXPECT_EQ(TextOf("Text_Width"), "8");
  EXPECT_EQ(TextOf("Text_Height"), "2");
  EXPECT_EQ(Chosen("ImageCombo2"), "1");
  EXPECT_EQ(Chosen("Combo1_1"), "F");
}

TEST_F(MergeFirst, FirstSecondaryIsTakenWhateverItsTime) {
  // The second one would overlap, the first one is over when the primary starts.
  LoadStream(PrimaryStream({{500, 100}}));
  Merge(SecondaryStream({0, 400, 450}));
  EXPECT_EQ(ShownSecondaries(), std::vector{0});
}

TEST_F(MergeFirst, NumberIsOneAtTheEnd) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Merge(ThreeSubtitles(), "-300");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_TRUE(IsEnabled("Command_Prev"));
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_TRUE(IsEnabled("Command_GoTo"));
}

Bytes Subtitles(int count) {
  Bytes stream;
  for (int i = 0; i < count; ++i) {
    stream = Join({stream, PrimaryStream({{i * 100, 50}})});
  }
  return stream;
}

TEST_F(MergeFirst, SeventeenPrimarySubtitlesLeaveNextDisabled) {
  LoadStream(Subtitles(17));
  Merge(SecondaryStream({0}));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_FALSE(IsEnabled("Command_Next"));
  EXPECT_TRUE(IsEnabled("Command_Prev"));
}

TEST_F(MergeFirst, SixteenAndEighteenLeaveNextEnabled) {
  for (const int count : {16, 18}) {
    LoadStream(Subtitles(count));
    Merge(SecondaryStream({0}));
    EXPECT_TRUE(IsEnabled("Command_Next")) << count;
  }
}

TEST_F(MergeFirst, PrevAtTheFirstDoesNothing) {
  LoadStream(Subtitles(17));
  Merge(SecondaryStream({0}));
  const QImage before = Frame();
  Click("Command_Prev");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(Frame(), before);
}

TEST_F(MergeFirst, NextBehindAnOnlySubtitleFails) {
  // Returning to the first subtitle has enabled Next, as every Prev does.
  LoadStream(Subtitles(1));
  Merge(SecondaryStream({0}));
  const QImage before = Frame();
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  Dialogs.Verify();
  EXPECT_EQ(TextOf("Text_SubNum"), "?");
  EXPECT_EQ(Frame(), before);
}

TEST_F(MergeFirst, SecondLoadReplacesTheSecondary) {
  LoadStream(PrimaryStream({{0, 10}}));
  Merge(SecondaryStream({0}), "100");
  EXPECT_TRUE(TextIsAt(200, 300));
  Merge(FourCodes(PacketBuilder(), 300, 200), "20");
  EXPECT_FALSE(TextIsAt(200, 300));
  EXPECT_FALSE(TextIsAt(200, 220));
  EXPECT_TRUE(TextIsAt(300, 220));
  EXPECT_TRUE(TextIsAt(100, 100));
}

TEST_F(MergeFirst, SecondLoadAsksForTheOffsetAgain) {
  LoadStream(PrimaryStream({{0, 10}}));
  Merge(SecondaryStream({0}), "100");
  Merge(SecondaryStream({0}), "50");
  EXPECT_EQ(Dialogs.Last().DefaultText, "-400");
}

TEST_F(MergeFirst, FrameOf480LinesIsKept) {
  LoadStream(PrimaryStream({{0, 10}}));
  Click("Option_720x480");
  Merge(SecondaryStream({0}));
  EXPECT_EQ(Frame().size(), QSize(720, 480));
  EXPECT_TRUE(TextIsAt(200, 200));
}

TEST_F(MergeLoading, PointerIsNormalWhileTheFirstSubtitleIsSaidToBeInvalid) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(Write("second.sup", Join({PacketBuilder().WithoutColour().Build(),
                                               FourCodes(PacketBuilder().Time(5 * Second))})));
  Dialogs.ExpectCancelled(DialogKind::Input);
  Dialogs.AllowMessages();
  Click("Command_LoadSecond");
  for (const ShownDialog& dialog : Dialogs.Shown()) {
    EXPECT_TRUE(dialog.PointerIsNormal) << dialog.Text.toStdString();
  }
  EXPECT_TRUE(Dialogs.MessageTexts().contains("Error converting subtitle!"));
}

}  // namespace
}  // namespace quillmark::test
