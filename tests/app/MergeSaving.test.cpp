#include <algorithm>
#include <functional>
#include <utility>

#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>
#include <QMouseEvent>
#include <QRegularExpression>

#include "app/DisplayFrame.h"
#include "files/SystemCalls.h"
#include "tests/app/MergeTest.h"

namespace quillmark::test {
namespace {

/// Lines of one colour, code 0: the rest of the line follows no run.
Bytes BlankLines(std::size_t count) {
  return Bytes(2 * count, 0x00);
}

// FourCodes() at x: x + 2 pixels of code 0, two each of codes 1, 2 and 3, the rest of code 0.
const Bytes LineAt100 = {0x01, 0x98, 0x9A, 0xB0, 0x00, 0x00};
const Bytes LineAt200 = {0x03, 0x28, 0x9A, 0xB0, 0x00, 0x00};

/// The merged packet of a picture at (100, 400) and one that lands at (200, 410), in a frame of 576 lines:
/// 582 bytes of lines 2 to 574, 580 bytes of lines 3 to 573.
Bytes MergedPacket(const Bytes& time, unsigned delay) {
  return Join({{'S', 'P'},
               time,
               {0x04, 0xAF, 0x04, 0x90},
               BlankLines(199),
               LineAt100,
               BlankLines(4),
               LineAt200,
               BlankLines(82),
               BlankLines(199),
               LineAt100,
               BlankLines(4),
               LineAt200,
               BlankLines(81),
               {0x00, 0x00},
               {0x00, 0x00, 0x04, 0xA8, 0x01, 0x03, 0x32, 0x10, 0x04, 0xFF, 0xF0},
               {0x06, 0x00, 0x04, 0x02, 0x4A, 0x05, 0x00, 0x02, 0xCF, 0x00, 0x22, 0x3E, 0xFF},
               U16be(delay),
               {0x04, 0xA8, 0x02, 0xFF, 0xFF}});
}

const Bytes AtOneSecond = {0x90, 0x5F, 0x01, 0x00, 0x00, 0x00, 0x00, 0x00};
const Bytes AtFiveSeconds = {0xD0, 0xDD, 0x06, 0x00, 0x00, 0x00, 0x00, 0x00};

/// The captions that a window gets, and the pointer at that time.
class CaptionRecorder : public QObject {
 public:
  explicit CaptionRecorder(QWidget& window) : window_(window) { window.installEventFilter(this); }

  QStringList Captions;
  QList<bool> Hourglass;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == &window_ && event->type() == QEvent::WindowTitleChange) {
      Captions.append(window_.windowTitle());
      const QCursor* pointer = QGuiApplication::overrideCursor();
      Hourglass.append(pointer != nullptr && pointer->shape() == Qt::WaitCursor);
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QWidget& window_;
};

/// Does something whenever the window is painted.
class OnPaint : public QObject {
 public:
  OnPaint(QWidget& window, std::function<void()> react) : react_(std::move(react)) {
    window.installEventFilter(this);
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint) {
      react_();
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  std::function<void()> react_;
};

class MergeSaving : public MergeTest {
 protected:
  /// One subtitle from 1 s on at (100, 400), with one whose picture lands at (200, 410).
  void MergeSmallPair(unsigned delay = 100) {
    LoadStream(FourCodes(PacketBuilder().Time(Second).Delay(delay), 100, 400));
    Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  }
  void MergeThree() {
    LoadStream(ThreeSubtitles());
    Merge(SecondaryStream({0}));
  }
  void ExpectPointerAndCaptionRestored() {
    EXPECT_EQ(Window.windowTitle(), "Quillmark");
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
  }
  /// Save merged, of which the subtitle of this number (counted from 1) fails; what was written.
  Bytes FailAt(int number) {
    const QString path = Path("merged.sup");
    Dialogs.ExpectSave(path);
    Dialogs.ExpectMessageWith({QString::number(number)});
    Click("Command_SaveSecond");
    Dialogs.Verify();
    const QRegularExpression word("\\b" + QString::number(number) + "\\b");
    EXPECT_TRUE(Dialogs.Last().Text.remove(Folder.path()).contains(word))
        << Dialogs.Last().Text.toStdString();
    ExpectPointerAndCaptionRestored();
    return Read(path);
  }
};

TEST_F(MergeSaving, RefusedWithoutAPrimaryStream) {
  Dialogs.ExpectMessage("Error: No primary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeSaving, RefusedWithoutASecondaryStream) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeSaving, MissingPrimaryIsToldFirst) {
  MergeThree();
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  Dialogs.ExpectMessage("Error: No primary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeSaving, LoadSupDropsTheSecondaryStream) {
  MergeThree();
  Load(Path("movie.sup"));
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(MergeSaving, DialogProposesANewNameBesideTheStream) {
  MergeThree();
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSecond");
  const ShownDialog dialog = Dialogs.Last();
  EXPECT_EQ(dialog.Title, "Quillmark");
  EXPECT_EQ(dialog.Owner, &Window);
  EXPECT_EQ(dialog.Folder, Folder.path());
  EXPECT_EQ(QFileInfo(dialog.Name).fileName(), "movie_new.sup");
  EXPECT_EQ(dialog.Filters, QStringList("SUP Files (*.SUP)"));
  EXPECT_FALSE(dialog.AsksBeforeReplacing);
}

TEST_F(MergeSaving, CancelTouchesNoFile) {
  MergeThree();
  Write("movie_new.sup", QByteArray("old"));
  Dialogs.ExpectCancelled(DialogKind::SaveFile);
  Click("Command_SaveSecond");
  EXPECT_EQ(ReadText(Path("movie_new.sup")), "old");
}

TEST_F(MergeSaving, PacketIsExact) {
  MergeSmallPair();
  EXPECT_EQ(MergedBytes(), MergedPacket(AtOneSecond, 100));
}

TEST_F(MergeSaving, PacketOf480LinesIsExact) {
  LoadStream(FourCodes(PacketBuilder().Time(Second).Delay(100), 100, 400));
  Click("Option_720x480");
  Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  // 486 bytes of lines 2 to 478, 484 bytes of lines 3 to 477.
  EXPECT_EQ(MergedBytes(),
            Join({{'S', 'P'},
                  AtOneSecond,
                  {0x03, 0xEF, 0x03, 0xD0},
                  BlankLines(199),
                  LineAt100,
                  BlankLines(4),
                  LineAt200,
                  BlankLines(34),
                  BlankLines(199),
                  LineAt100,
                  BlankLines(4),
                  LineAt200,
                  BlankLines(33),
                  {0x00, 0x00},
                  {0x00, 0x00, 0x03, 0xE8, 0x01, 0x03, 0x32, 0x10, 0x04, 0xFF, 0xF0},
                  {0x06, 0x00, 0x04, 0x01, 0xEA, 0x05, 0x00, 0x02, 0xCF, 0x00, 0x21, 0xDE, 0xFF},
                  {0x00, 0x64, 0x03, 0xE8, 0x02, 0xFF, 0xFF}}));
}

TEST_F(MergeSaving, TimeFieldIsKeptWhole) {
  LoadStream(FourCodes(PacketBuilder().Time(0x0102030405060708).Delay(100), 100, 400));
  Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  EXPECT_EQ(MergedBytes(), MergedPacket({0x08, 0x07, 0x06, 0x05, 0x04, 0x03, 0x02, 0x01}, 100));
}

TEST_F(MergeSaving, ColourAndContrastAreThePrimarys) {
  LoadStream(FourCodes(PacketBuilder().Colour(7, 6, 5, 4).Contrast(14, 13, 12, 0), 100, 400));
  Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  const Bytes merged = MergedBytes();
  const Bytes commands = {0x03, 0x76, 0x54, 0x04, 0xED, 0xC0, 0x06};
  EXPECT_NE(std::search(merged.begin(), merged.end(), commands.begin(), commands.end()), merged.end());
}

TEST_F(MergeSaving, LastSubtitleWithoutADelayGetsAThousand) {
  MergeSmallPair(0);
  EXPECT_EQ(MergedBytes(), MergedPacket(AtOneSecond, 1000));
}

TEST_F(MergeSaving, SubtitleWithoutADelayLastsUntilTheNext) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second), 100, 400),
                   FourCodes(PacketBuilder().Time(5 * Second).Delay(7), 100, 400)}));
  Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  // Four seconds are 360000 ticks.
  EXPECT_EQ(MergedBytes(), Join({MergedPacket(AtOneSecond, 360), MergedPacket(AtFiveSeconds, 7)}));
}

TEST_F(MergeSaving, DerivedDelayIsRoundedToTheNearest) {
  for (const auto& [ticks, delay] : {std::pair(4400, 4U), std::pair(4600, 5U)}) {
    LoadStream(Join({FourCodes(PacketBuilder().Time(Second), 100, 400),
                     FourCodes(PacketBuilder().Time(Second + ticks).Delay(7), 100, 400)}));
    Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
    Bytes first = MergedBytes();
    first.resize(first.size() / 2);
    EXPECT_EQ(first, MergedPacket(AtOneSecond, delay)) << ticks;
  }
}

TEST_F(MergeSaving, SecondaryPixelsReplaceThePrimarysInTheUnit) {
  LoadStream(FourCodes(PacketBuilder().Time(Second).Delay(100), 100, 400));
  Merge(FourCodes(PacketBuilder(), 104, 400));
  // 102 of code 0, two of 1, two of 2 (the secondary is transparent there), two of 1, two of 2, two of 3.
  const Bytes merged = MergedBytes();
  const Bytes line = {0x01, 0x98, 0x9A, 0x9A, 0xB0, 0x00, 0x00};
  const auto top = merged.begin() + 14 + 2 * 199;
  EXPECT_EQ(Bytes(top, top + 7), line);
}

TEST_F(MergeSaving, PicturesOnTheFirstTwoLinesAreNotEncoded) {
  LoadStream(FourCodes(PacketBuilder().Time(Second).Delay(100), 100, 0));
  Merge(FourCodes(PacketBuilder(), 200, 0));
  // 287 and 286 blank lines: the size is 574 + 572 + 37.
  const Bytes merged = MergedBytes();
  ASSERT_EQ(merged.size(), 1193U);
  EXPECT_EQ(Bytes(merged.begin() + 10, merged.begin() + 14), (Bytes{0x04, 0x9F, 0x04, 0x80}));
  EXPECT_EQ(Bytes(merged.begin() + 14, merged.begin() + 14 + 1148), Bytes(1148, 0x00));
}

TEST_F(MergeSaving, EveryPrimarySubtitleBecomesAPacketInOrder) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400),
                   FourCodes(PacketBuilder().Time(5 * Second).Delay(20), 100, 400)}));
  Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  EXPECT_EQ(MergedBytes(), Join({MergedPacket(AtOneSecond, 10), MergedPacket(AtFiveSeconds, 20)}));
}

TEST_F(MergeSaving, PrimaryBehindAllSecondariesIsSkipped) {
  // The last subtitle starts before the others, so that the secondary stream ends before the second starts.
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400),
                   FourCodes(PacketBuilder().Time(90 * Second).Delay(10), 100, 400),
                   FourCodes(PacketBuilder().Time(5 * Second).Delay(20), 100, 400)}));
  Merge(Join({FourCodes(PacketBuilder(), 200, 460), FourCodes(PacketBuilder().Time(Second), 200, 460)}),
        "-50");
  EXPECT_EQ(MergedBytes(), Join({MergedPacket(AtOneSecond, 10), MergedPacket(AtFiveSeconds, 20)}));
}

TEST_F(MergeSaving, PrimaryOfNoLengthIsMergedWithAnOnlySecondary) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second), 100, 400),
                   FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400)}));
  Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  EXPECT_EQ(MergedBytes().size(), 2 * MergedPacket(AtOneSecond, 0).size());
}

TEST_F(MergeSaving, OldFileIsDeletedFirst) {
  MergeSmallPair();
  SaveMergedTo(Write("old.sup", Bytes(5000, 0x77)));
  EXPECT_EQ(Read(Path("old.sup")), MergedPacket(AtOneSecond, 100));
}

TEST_F(MergeSaving, PrimaryFileItselfCanBeSavedOver) {
  MergeSmallPair();
  SaveMergedTo(Path("movie.sup"));
  EXPECT_EQ(Read(Path("movie.sup")), MergedPacket(AtOneSecond, 100));
  EXPECT_EQ(MergedBytes(), MergedPacket(AtOneSecond, 100));
}

TEST_F(MergeSaving, SecondaryFileItselfCanBeSavedOver) {
  MergeSmallPair();
  SaveMergedTo(Path("second.sup"));
  EXPECT_EQ(Read(Path("second.sup")), MergedPacket(AtOneSecond, 100));
  EXPECT_EQ(MergedBytes(), MergedPacket(AtOneSecond, 100));
}

TEST_F(MergeSaving, SavingTwiceGivesTheSameBytes) {
  LoadStream(PrimaryStream({{0, 10}, {100, 100}, {300, 100}}));
  Merge(SecondaryStream({0, 90, 280}), "-17");
  const Bytes first = MergedBytes();
  EXPECT_EQ(MergedBytes(), first);
}

TEST_F(MergeSaving, OffsetAndMergeModeStay) {
  LoadStream(PrimaryStream({{0, 10}, {100, 100}, {300, 100}}));
  Merge(SecondaryStream({0, 90, 280}), "-60");
  MergedBytes();
  EXPECT_FALSE(IsEnabled("Command_SaveSup"));
  GoTo("2");
  EXPECT_TRUE(TextIsAt(200, 160));
}

TEST_F(MergeSaving, DisplayAndNumberStay) {
  MergeThree();
  Click("Command_Next");
  const QImage before = Frame();
  MergedBytes();
  EXPECT_EQ(Frame(), before);
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
}

TEST_F(MergeSaving, CaptionTellsTheProgress) {
  MergeThree();
  const CaptionRecorder recorder(Window);
  MergedBytes();
  EXPECT_EQ(recorder.Captions,
            QStringList({"Quillmark  working on subtitle # 0", "Quillmark  working on subtitle # 1",
                         "Quillmark  working on subtitle # 2", "Quillmark"}));
}

TEST_F(MergeSaving, CaptionStartsWithTheOneBefore) {
  MergeThree();
  Window.setWindowTitle("Mine");
  const CaptionRecorder recorder(Window);
  MergedBytes();
  EXPECT_EQ(recorder.Captions.value(0), "Mine  working on subtitle # 0");
  EXPECT_EQ(Window.windowTitle(), "Mine");
}

TEST_F(MergeSaving, WindowIsPaintedAfterEachCaption) {
  MergeThree();
  QStringList painted;
  const OnPaint paints(Window, [&] { painted.append(Window.windowTitle()); });
  QObject::connect(&Window, &QWidget::windowTitleChanged, &Window, [this] { Window.update(); });
  MergedBytes();
  for (const char* number : {"0", "1", "2"}) {
    EXPECT_TRUE(painted.contains(QStringLiteral("Quillmark  working on subtitle # ") + number)) << number;
  }
}

TEST_F(MergeSaving, HourglassStandsDuringTheSave) {
  MergeThree();
  const CaptionRecorder recorder(Window);
  MergedBytes();
  EXPECT_EQ(recorder.Hourglass.mid(0, 3), QList<bool>({true, true, true}));
  EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

/// Has a button clicked whenever a file is closed, as far as an event can.
class ClicksAtClosing {
 public:
  explicit ClicksAtClosing(QWidget& button) : calls_(System()) {
    target = &button;
    closeFile = calls_.Close;
    System().Close = [](int file) {
      for (const auto kind : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const QPoint place = target->rect().center();
        QCoreApplication::postEvent(
            target, new QMouseEvent(kind, place, target->mapToGlobal(place), Qt::LeftButton,
                                    kind == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton, {}));
      }
      return closeFile(file);
    };
  }
  ~ClicksAtClosing() { System() = calls_; }
  ClicksAtClosing(const ClicksAtClosing&) = delete;
  ClicksAtClosing& operator=(const ClicksAtClosing&) = delete;

 private:
  static inline QWidget* target = nullptr;
  static inline int (*closeFile)(int) = nullptr;
  SystemCalls calls_;
};

TEST_F(MergeSaving, ClicksOfTheMeantimeAreLost) {
  MergeThree();
  {
    const ClicksAtClosing clicks(Control<QWidget>("Command_Next"));
    MergedBytes();
  }
  QCoreApplication::processEvents();
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(MergeSaving, UnwritableTargetIsTold) {
  MergeThree();
  Dialogs.ExpectSave(Path("missing/%1 %2.sup"));
  Dialogs.ExpectMessage("Cannot save " + Path("missing/%1 %2.sup") + ": No such file or directory");
  Click("Command_SaveSecond");
  Dialogs.Verify();
  EXPECT_TRUE(Dialogs.Last().PointerIsNormal);
  EXPECT_EQ(Dialogs.Last().Title, "Quillmark");
  EXPECT_FALSE(QFileInfo::exists(Path("missing")));
  ExpectPointerAndCaptionRestored();
}

TEST_F(MergeSaving, ProgramGoesOnAfterAnUnwritableTarget) {
  MergeSmallPair();
  Dialogs.ExpectSave(Path("missing/new.sup"));
  Dialogs.ExpectMessageWith({"new.sup"});
  Click("Command_SaveSecond");
  EXPECT_EQ(MergedBytes(), MergedPacket(AtOneSecond, 100));
}

TEST_F(MergeSaving, InvalidPrimaryEndsTheFileAndIsNamed) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400),
                   PacketBuilder().Time(3 * Second).WithoutColour().Build(),
                   FourCodes(PacketBuilder().Time(5 * Second).Delay(20), 100, 400)}));
  Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  EXPECT_EQ(FailAt(2), MergedPacket(AtOneSecond, 10));
}

TEST_F(MergeSaving, InvalidSecondaryEndsTheFileAndThePrimaryIsNamed) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400),
                   FourCodes(PacketBuilder().Time(5 * Second).Delay(20), 100, 400)}));
  Merge(
      Join({FourCodes(PacketBuilder(), 200, 460), PacketBuilder().Time(4 * Second).WithoutColour().Build()}),
      "-50");
  EXPECT_EQ(FailAt(2), MergedPacket(AtOneSecond, 10));
}

TEST_F(MergeSaving, PrimaryOfAnInvalidSecondaryIsExportedAlone) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400),
                   FourCodes(PacketBuilder().Time(5 * Second).Delay(20), 100, 420)}));
  Merge(
      Join({FourCodes(PacketBuilder(), 200, 460), PacketBuilder().Time(4 * Second).WithoutColour().Build()}),
      "-50");
  const QImage before = Frame();
  Click("Check_SavePics");
  FailAt(2);
  EXPECT_EQ(ReadText(Path("movie_spu.xml")).count("<spu "), 2);
  EXPECT_EQ(QImage(Path("movie_SubPng/00+00+01+00.png")).size(), QSize(720, 576));
  EXPECT_EQ(QImage(Path("movie_SubPng/00+00+05+00.png")).size(), QSize(8, 2));
  // And the window shows again what it showed.
  EXPECT_EQ(Frame(), before);
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:01.00");
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(MergeSaving, PrimaryOfAnInvalidSecondaryLeavesThePictureOfTheSubtitleShown) {
  LoadStream(PrimaryStream({{90, 100}, {450, 100}, {810, 100}}));
  Merge(Join({SecondaryStream({0}), PacketBuilder().Time(400 * 1000).WithoutColour().Build(),
              SecondaryStream({800})}));
  Click("Check_SavePics");
  GoTo("3");
  const QString picture = Path("movie_SubPng/00+00+09+00.png");
  ASSERT_EQ(QImage(picture).size(), QSize(720, 576));
  FailAt(2);
  EXPECT_EQ(QImage(picture).size(), QSize(720, 576));
}

/// The frames that stand on the display while the hourglass does.
class FrameRecorder : public QObject {
 public:
  explicit FrameRecorder(DisplayFrame& display) : display_(display) { display.installEventFilter(this); }

  std::vector<QImage> Frames;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (watched == &display_ && event->type() == QEvent::Paint &&
        QGuiApplication::overrideCursor() != nullptr) {
      Frames.push_back(display_.Picture().Image().copy());
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  DisplayFrame& display_;
};

TEST_F(MergeSaving, PrimaryOfAnInvalidSecondaryIsDrawnAloneDuringTheSave) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400),
                   FourCodes(PacketBuilder().Time(5 * Second).Delay(20), 100, 420)}));
  Merge(
      Join({FourCodes(PacketBuilder(), 200, 460), PacketBuilder().Time(4 * Second).WithoutColour().Build()}),
      "-50");
  const FrameRecorder recorder(Control<DisplayFrame>("Picture1"));
  FailAt(2);
  // The second subtitle, and in the end the first one with its secondary again.
  ASSERT_EQ(recorder.Frames.size(), 2U);
  EXPECT_EQ(recorder.Frames[0].pixelColor(102, 420), TextColour);
  EXPECT_NE(recorder.Frames[0].pixelColor(102, 400), TextColour);
  EXPECT_NE(recorder.Frames[0].pixelColor(202, 410), TextColour);
  EXPECT_EQ(recorder.Frames[1].pixelColor(102, 400), TextColour);
  EXPECT_EQ(recorder.Frames[1].pixelColor(202, 410), TextColour);
}

TEST_F(MergeSaving, PrimaryOfAnInvalidSecondaryIsDrawnAlone) {
  LoadStream(FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400));
  Merge(FourCodes(PacketBuilder(), 200, 460), "-50");
  EXPECT_TRUE(TextIsAt(200, 410));
  Dialogs.ExpectOpen(Write("second.sup", PacketBuilder().Time(Second).WithoutColour().Build()));
  Dialogs.ExpectMessage("Error converting subtitle!");
  ExpectSecondaryReport();
  Dialogs.ExpectInput("0");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_LoadSecond");
  Dialogs.Verify();
  FailAt(1);
  EXPECT_TRUE(TextIsAt(100, 400));
  EXPECT_FALSE(TextIsAt(200, 410));
}

TEST_F(MergeSaving, DetailsFollowTheSaveAndComeBack) {
  MergeThree();
  QStringList seen;
  const auto watch = QObject::connect(&Control<QLineEdit>("Text_StartTime"), &QLineEdit::textChanged, &Window,
                                      [&](const QString& text) { seen.append(text); });
  MergedBytes();
  QObject::disconnect(watch);
  EXPECT_EQ(seen, QStringList({"00:00:05.00", "00:00:09.00", "00:00:01.00"}));
}

TEST_F(MergeSaving, InvalidFirstLeavesAnEmptyFile) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(Write("second.sup", PacketBuilder().WithoutColour().Build()));
  Dialogs.ExpectMessage("Error converting subtitle!");
  ExpectSecondaryReport();
  Dialogs.ExpectInput("0");
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_LoadSecond");
  Dialogs.Verify();
  EXPECT_EQ(FailAt(1), Bytes());
}

/// 286 lines of 226 pixels, codes 1 and 2 by turns, one nibble for each: 113 bytes a line. Opaque, at (100,
/// 2).
Bytes Noise(std::int64_t time) {
  constexpr unsigned FieldBytes = 143 * 113;
  constexpr unsigned Control = 4 + 2 * FieldBytes;
  const Bytes commands = Join({StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                               SetArea(100, 325, 2, 287), SetFields(4, 4 + FieldBytes), EndOfSequence});
  return PacketBuilder()
      .Time(time)
      .ControlOffset(Control)
      .Unit(Join({Bytes(2 * FieldBytes, 0x56), Sequence(0, Control + 24, {commands}),
                  Sequence(10, Control + 24, {StopDisplay, EndOfSequence})}))
      .Build();
}

TEST_F(MergeSaving, UnitThatFitsNoSizeFieldFailsAndIsNamed) {
  LoadStream(Join({FourCodes(PacketBuilder().Time(Second).Delay(10), 100, 400), Noise(3 * Second),
                   FourCodes(PacketBuilder().Time(5 * Second).Delay(20), 100, 400)}));
  // Below the primary's noise: 574 lines of 117 bytes in all.
  Merge(Join({FourCodes(PacketBuilder(), 200, 460), Noise(2 * Second)}), "286");
  const Bytes written = FailAt(2);
  ASSERT_GE(written.size(), 14U);
  EXPECT_EQ(written.size(), std::size_t{written[10]} * 256 + written[11] + 10);
}

TEST_F(MergeSaving, UnitThatFitsItsSizeFieldIsWrittenAndNamedAsTooLongToRead) {
  LoadStream(Noise(Second));
  Merge(FourCodes(PacketBuilder(), 500, 460));
  Dialogs.ExpectSave(Path("merged.sup"));
  Dialogs.ExpectMessage(
      Path("merged.sup") +
      ": subtitle 1 is longer than 32767 bytes; programs, this one included, cannot read it");
  Click("Command_SaveSecond");
  Dialogs.Verify();
  // 143 lines of 117 bytes, one of 8 (its first run, of 502 pixels, is written as two) and 143 of 2 bytes; as
  // many in the other field, less one blank line.
  const Bytes merged = Read(Path("merged.sup"));
  const std::size_t data = (143 * 117 + 8 + 143 * 2) + (143 * 117 + 8 + 142 * 2) + 2;
  ASSERT_EQ(merged.size(), data + 35 + 10);
  EXPECT_EQ(Bytes(merged.begin() + 14, merged.begin() + 17), (Bytes{0x01, 0x90, 0x56}));
}

TEST_F(MergeSaving, MergedFileLoadsWithoutParseErrors) {
  MergeThree();
  MergedBytes();
  LoadMerged();
  EXPECT_TRUE(
      Dialogs.Last().Text.startsWith("Found Subtitles: 3\r\nParse errors: 0\r\n"
                                     "Max subtitle width: 720 (0 to 719)\r\n"
                                     "Max subtitle height: 573 (2 to 574)\r\n"))
      << Dialogs.Last().Text.toStdString();
}

TEST_F(MergeSaving, MergedFileShowsTheComposedPictures) {
  LoadStream(PrimaryStream({{0, 10}, {100, 100}, {300, 100}}));
  Merge(SecondaryStream({0, 90, 280}));
  std::vector<QImage> composed = {Frame()};
  for (int step = 0; step < 2; ++step) {
    Click("Command_Next");
    composed.push_back(Frame());
  }
  MergedBytes();
  LoadMerged();
  EXPECT_EQ(Frame(), composed[0]);
  Click("Command_Next");
  EXPECT_EQ(Frame(), composed[1]);
  Click("Command_Next");
  EXPECT_EQ(Frame(), composed[2]);
}

TEST_F(MergeSaving, MergedFileKeepsTimes) {
  MergeThree();
  MergedBytes();
  LoadMerged();
  Click("Command_Next");
  EXPECT_EQ(TextOf("Text_StartTime"), "00:00:05.00");
  EXPECT_EQ(TextOf("Text_Dur"), "1.12");
}

TEST_F(MergeSaving, MergedFileCanBeMergedAgain) {
  MergeSmallPair();
  MergedBytes();
  LoadMerged();
  Merge(FourCodes(PacketBuilder(), 300, 300));
  EXPECT_TRUE(TextIsAt(100, 400));
  EXPECT_TRUE(TextIsAt(200, 410));
  EXPECT_TRUE(TextIsAt(300, 300));
}

}  // namespace
}  // namespace quillmark::test
