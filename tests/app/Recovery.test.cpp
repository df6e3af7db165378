#include <memory>

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStatusBar>

#include "app/Document.h"
#include "sup/EditJournal.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// The three subtitles with this entry for code 1.
Bytes Recoloured(unsigned entry) {
  Bytes stream = ThreeSubtitles();
  for (std::size_t i = 0; i < 3; ++i) {
    stream[i * PacketBuilder::Length + ColourArguments + 1] = static_cast<std::uint8_t>(entry * 16);
  }
  return stream;
}

class Recovery : public WindowTest {
 protected:
  template <class Object = QWidget>
  [[nodiscard]] static Object& In(const frmTest& window, const char* name) {
    return *window.findChild<Object*>(name);
  }
  [[nodiscard]] static bool Offers(const frmTest& window) { return In(window, "Strip_Recover").isVisible(); }
  [[nodiscard]] bool Offers() const { return Offers(Window); }
  [[nodiscard]] QString OfferText() const { return In<QWidget>(Window, "Strip_Recover").accessibleName(); }

  [[nodiscard]] static Bytes StreamOf(frmTest& window) {
    const SupStream& stream = window.Content().Primary();
    return {stream.RawBytes.begin(), stream.RawBytes.begin() + stream.FileLength};
  }
  [[nodiscard]] Bytes Stream() { return StreamOf(Window); }

  /// Loads the stream into a window, and there is nothing asked but the report told.
  void LoadInto(frmTest& window, const QString& path) {
    Dialogs.ExpectReport();
    window.OpenCommandLine(path);
    Dialogs.Verify();
  }
  /// One more window, with the stream in it.
  [[nodiscard]] std::unique_ptr<frmTest> OpenAnother(const QString& path) {
    auto window = std::make_unique<frmTest>();
    window->show();
    LoadInto(*window, path);
    return window;
  }
  /// Gives code 1 this entry in all subtitles, or the one shown.
  static void SetAll(frmTest& window, int entry) {
    In<QComboBox>(window, "ImageCombo2").setCurrentIndex(entry);
    In<QAbstractButton>(window, "Command_SetAll").click();
  }
  static void Trigger(frmTest& window, const char* action) { In<QAction>(window, action).trigger(); }

  /// The stream, edited once in a window that is gone without having saved.
  QString LeaveAnEdit(int entry = 7) {
    const QString path = Write("movie.sup", ThreeSubtitles());
    SetAll(*OpenAnother(path), entry);
    return path;
  }

  [[nodiscard]] QDir Journals() const { return QDir(State.Path() + "/quillmark"); }
  [[nodiscard]] QStringList JournalNames() const { return Journals().entryList(QDir::Files, QDir::Name); }
  [[nodiscard]] Bytes OnlyJournal() const {
    const QStringList names = JournalNames();
    EXPECT_EQ(names.size(), 1);
    return Read(Journals().filePath(names.value(0)));
  }
};

TEST_F(Recovery, EditsOfAWindowThatIsGoneAreOffered) {
  const QString path = LeaveAnEdit();
  EXPECT_FALSE(Offers());
  LoadInto(Window, path);
  EXPECT_TRUE(Offers());
  EXPECT_TRUE(OfferText().startsWith("One edit of this stream was not saved")) << OfferText().toStdString();
  EXPECT_EQ(Stream(), ThreeSubtitles());
}

TEST_F(Recovery, RestoreMakesThemAgainAndShowsThem) {
  LoadInto(Window, LeaveAnEdit());
  Click("Command_Recover");
  EXPECT_FALSE(Offers());
  EXPECT_EQ(Stream(), Recoloured(7));
  EXPECT_EQ(Chosen("ImageCombo2"), "7");
  EXPECT_EQ(SavedBytes(), Recoloured(7));
}

TEST_F(Recovery, RestoredEditsCanBeUndoneOneByOne) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  {
    const auto another = OpenAnother(path);
    SetAll(*another, 7);
    SetAll(*another, 9);
  }
  LoadInto(Window, path);
  EXPECT_TRUE(OfferText().startsWith("2 edits of this stream were not saved")) << OfferText().toStdString();
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(9));
  EXPECT_EQ(In<QAction>(Window, "Action_Undo").text(), "&Undo Set for all");
  Trigger(Window, "Action_Undo");
  EXPECT_EQ(Stream(), Recoloured(7));
  Trigger(Window, "Action_Undo");
  EXPECT_EQ(Stream(), ThreeSubtitles());
  EXPECT_FALSE(In<QAction>(Window, "Action_Undo").isEnabled());
}

TEST_F(Recovery, UndoneEditIsRestoredAsOneToRedo) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  {
    const auto another = OpenAnother(path);
    SetAll(*another, 7);
    SetAll(*another, 9);
    Trigger(*another, "Action_Undo");
  }
  LoadInto(Window, path);
  EXPECT_TRUE(OfferText().startsWith("One edit ")) << OfferText().toStdString();
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(7));
  Trigger(Window, "Action_Redo");
  EXPECT_EQ(Stream(), Recoloured(9));
}

TEST_F(Recovery, UndoneEditInThePlaceOfAnotherOneIsUndoneInTheJournalToo) {
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 5);
  SetAll(Window, 7);
  Trigger(Window, "Action_Undo");
  SetAll(Window, 9);
  Trigger(Window, "Action_Undo");
  LoadInto(Window, path);
  EXPECT_TRUE(OfferText().startsWith("One edit ")) << OfferText().toStdString();
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(5));
}

TEST_F(Recovery, PaletteIsRestored) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  DvdPalette palette = StartUpPalette;
  palette[1] = MakeRgb(10, 20, 30);
  {
    const auto another = OpenAnother(path);
    ASSERT_TRUE(another->Content().SetPalette(palette, "Load Palette"));
  }
  LoadInto(Window, path);
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
  Click("Command_Recover");
  EXPECT_EQ(SwatchColour(1), QColor(10, 20, 30));
  Trigger(Window, "Action_Undo");
  EXPECT_EQ(SwatchColour(1), QColor(3, 253, 251));
}

// The palette of the window may be that of the journal already; the history has the step all the same.
TEST_F(Recovery, PaletteThatIsThereAlreadyIsRestoredAsAStep) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  DvdPalette palette = StartUpPalette;
  palette[1] = MakeRgb(10, 20, 30);
  ASSERT_TRUE(Window.Content().SetPalette(palette, "Load Palette"));
  {
    const auto another = OpenAnother(path);
    ASSERT_TRUE(another->Content().SetPalette(palette, "Load Palette"));
    SetAll(*another, 7);
  }
  LoadInto(Window, path);
  Click("Command_Recover");
  EXPECT_EQ(Window.Content().History().index(), 2);
  Trigger(Window, "Action_Undo");
  Trigger(Window, "Action_Undo");
  EXPECT_EQ(Stream(), ThreeSubtitles());
  LoadInto(Window, path);
  EXPECT_FALSE(Offers());
}

TEST_F(Recovery, DiscardedEditsAreGone) {
  const QString path = LeaveAnEdit();
  LoadInto(Window, path);
  Click("Command_Forget");
  EXPECT_FALSE(Offers());
  EXPECT_EQ(Stream(), ThreeSubtitles());
  EXPECT_TRUE(JournalNames().isEmpty());
  LoadInto(Window, path);
  EXPECT_FALSE(Offers());
}

TEST_F(Recovery, SavingEndsTheJournal) {
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 7);
  EXPECT_EQ(JournalNames().size(), 1);
  EXPECT_EQ(SavedBytes(), Recoloured(7));
  EXPECT_TRUE(JournalNames().isEmpty());
  LoadInto(Window, path);
  EXPECT_FALSE(Offers());
}

TEST_F(Recovery, SaveThatFailedLeavesTheJournal) {
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 7);
  Dialogs.ExpectSave(Path("missing/new.sup"));
  Dialogs.ExpectMessageWith({"Cannot save"});
  Click("Command_SaveSup");
  Dialogs.Verify();
  LoadInto(Window, path);
  EXPECT_TRUE(Offers());
}

TEST_F(Recovery, NothingIsOfferedOfWhatWasUndone) {
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 7);
  Trigger(Window, "Action_Undo");
  LoadInto(Window, path);
  EXPECT_FALSE(Offers());
  EXPECT_TRUE(JournalNames().isEmpty());
}

TEST_F(Recovery, StreamWithoutEditsHasNoJournal) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  EXPECT_FALSE(Journals().exists());
}

TEST_F(Recovery, LoadingAnotherStreamAsksNothingAndKeepsTheEdits) {
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 7);
  LoadInto(Window, Write("other.sup", InvalidSecond()));
  EXPECT_FALSE(Offers());
  LoadInto(Window, path);
  EXPECT_TRUE(Offers());
}

TEST_F(Recovery, StripGoesWithItsStream) {
  LoadInto(Window, LeaveAnEdit());
  EXPECT_TRUE(Offers());
  LoadInto(Window, Write("other.sup", InvalidSecond()));
  EXPECT_FALSE(Offers());
}

TEST_F(Recovery, StreamThatIsLoadedAgainOffersAgain) {
  const QString path = LeaveAnEdit();
  LoadInto(Window, path);
  LoadInto(Window, path);
  EXPECT_TRUE(Offers());
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(7));
}

TEST_F(Recovery, ContentCountsAndNotTheName) {
  const QString path = LeaveAnEdit();
  Bytes different = ThreeSubtitles();
  different.back() = 0x42;
  LoadInto(Window, Write("movie.sup", different));
  EXPECT_FALSE(Offers());
  LoadInto(Window, Write("renamed.sup", ThreeSubtitles()));
  EXPECT_TRUE(Offers());
}

TEST_F(Recovery, EditsBehindASaveBelongToWhatWasSaved) {
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 7);
  EXPECT_EQ(SavedBytes(), Recoloured(7));
  SetAll(Window, 9);
  LoadInto(Window, path);
  EXPECT_FALSE(Offers());
  LoadInto(Window, Path("saved.sup"));
  ASSERT_TRUE(Offers());
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(9));
}

// From where the stream was saved, undoing is an edit that only the journal's own records can say.
TEST_F(Recovery, UndoBehindASaveIsRestored) {
  LoadStream(ThreeSubtitles());
  SetAll(Window, 5);
  SetAll(Window, 7);
  EXPECT_EQ(SavedBytes(), Recoloured(7));
  Trigger(Window, "Action_Undo");
  EXPECT_EQ(Stream(), Recoloured(5));
  LoadInto(Window, Path("saved.sup"));
  ASSERT_TRUE(Offers());
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(5));
}

TEST_F(Recovery, UndoAndRedoAcrossASaveLeaveNothingToOffer) {
  LoadStream(ThreeSubtitles());
  SetAll(Window, 5);
  SetAll(Window, 7);
  EXPECT_EQ(SavedBytes(), Recoloured(7));
  for (const char* const step :
       {"Action_Undo", "Action_Undo", "Action_Redo", "Action_Undo", "Action_Redo", "Action_Redo"}) {
    Trigger(Window, step);
  }
  EXPECT_EQ(Stream(), Recoloured(7));
  LoadInto(Window, Path("saved.sup"));
  EXPECT_FALSE(Offers());
  EXPECT_TRUE(JournalNames().isEmpty());
}

TEST_F(Recovery, EditAfterUndoingAcrossASaveIsRestored) {
  LoadStream(ThreeSubtitles());
  SetAll(Window, 5);
  EXPECT_EQ(SavedBytes(), Recoloured(5));
  Trigger(Window, "Action_Undo");
  SetAll(Window, 9);
  Trigger(Window, "Action_Undo");
  Trigger(Window, "Action_Redo");
  LoadInto(Window, Path("saved.sup"));
  ASSERT_TRUE(Offers());
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(9));
}

TEST_F(Recovery, RestoredEditsStayInTheJournalAndOthersJoinThem) {
  const QString path = LeaveAnEdit(7);
  LoadInto(Window, path);
  Click("Command_Recover");
  SetAll(Window, 9);
  LoadInto(Window, path);
  ASSERT_TRUE(Offers());
  EXPECT_TRUE(OfferText().startsWith("2 edits ")) << OfferText().toStdString();
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(9));
  Trigger(Window, "Action_Undo");
  LoadInto(Window, path);
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(7));
}

// The stream is what it was when it was opened, but its file is not.
TEST_F(Recovery, EditsRestoredBehindASaveThatWasUndoneBelongToWhatWasSaved) {
  const QString path = LeaveAnEdit(7);
  {
    const auto another = OpenAnother(path);
    SetAll(*another, 5);
    Dialogs.ExpectSave(path);
    In<QAbstractButton>(*another, "Command_SaveSup").click();
    EXPECT_EQ(Read(path), Recoloured(5));
    Trigger(*another, "Action_Undo");
    In<QAbstractButton>(*another, "Command_Recover").click();
    EXPECT_EQ(StreamOf(*another), Recoloured(7));
    SetAll(*another, 9);
  }
  EXPECT_EQ(JournalNames().size(), 1);
  LoadInto(Window, path);
  EXPECT_EQ(Stream(), Recoloured(5));
  ASSERT_TRUE(Offers());
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(9));
  Trigger(Window, "Action_Undo");
  EXPECT_EQ(Stream(), Recoloured(7));
}

// Where another edit stood that was undone before.
TEST_F(Recovery, UndoOfWhatWasRestoredBehindASaveIsOneInTheJournalToo) {
  const QString path = LeaveAnEdit(7);
  {
    const auto another = OpenAnother(path);
    SetAll(*another, 5);
    Dialogs.ExpectSave(path);
    In<QAbstractButton>(*another, "Command_SaveSup").click();
    Trigger(*another, "Action_Undo");
    SetAll(*another, 9);
    Trigger(*another, "Action_Undo");
    In<QAbstractButton>(*another, "Command_Recover").click();
    EXPECT_EQ(StreamOf(*another), Recoloured(7));
    Trigger(*another, "Action_Undo");
  }
  LoadInto(Window, path);
  EXPECT_TRUE(OfferText().startsWith("One edit ")) << OfferText().toStdString();
  Click("Command_Recover");
  EXPECT_EQ(Stream(), ThreeSubtitles());
}

TEST_F(Recovery, RestoringWaitsUntilNewEditsAreUndone) {
  const QString path = LeaveAnEdit(7);
  LoadInto(Window, path);
  SetAll(Window, 9);
  EXPECT_TRUE(Offers());
  EXPECT_FALSE(IsEnabled("Command_Recover"));
  EXPECT_TRUE(OfferText().contains("Undo what you changed")) << OfferText().toStdString();
  EXPECT_EQ(JournalNames().size(), 2);
  Trigger(Window, "Action_Undo");
  EXPECT_TRUE(IsEnabled("Command_Recover"));
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(7));
  EXPECT_EQ(JournalNames().size(), 1);
}

TEST_F(Recovery, TwoWindowsOnOneFileDoNotDisturbEachOther) {
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 7);
  {
    const auto another = OpenAnother(path);
    EXPECT_FALSE(Offers(*another));
    SetAll(*another, 9);
    EXPECT_EQ(JournalNames().size(), 2);
    Trigger(*another, "Action_Undo");
  }
  EXPECT_EQ(JournalNames().size(), 1);
  SetAll(Window, 8);
  LoadInto(Window, path);
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(8));
}

TEST_F(Recovery, OfferThatAnotherWindowShowsIsNotMadeTwice) {
  const QString path = LeaveAnEdit();
  {
    const auto another = OpenAnother(path);
    EXPECT_TRUE(Offers(*another));
    LoadInto(Window, path);
    EXPECT_FALSE(Offers());
  }
  LoadInto(Window, path);
  EXPECT_TRUE(Offers());
}

TEST_F(Recovery, EditsOfTwoWindowsAreOfferedOneAfterTheOther) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  {
    const auto first = OpenAnother(path);
    const auto second = OpenAnother(path);
    SetAll(*first, 7);
    SetAll(*second, 9);
  }
  LoadInto(Window, path);
  ASSERT_TRUE(Offers());
  Click("Command_Forget");
  ASSERT_TRUE(Offers());
  Click("Command_Forget");
  EXPECT_FALSE(Offers());
  EXPECT_TRUE(JournalNames().isEmpty());
}

TEST_F(Recovery, MergingDisablesRestoring) {
  LoadInto(Window, LeaveAnEdit());
  Dialogs.ExpectOpen(Write("second.sup", ThreeSubtitles()));
  Dialogs.ExpectMessageWith({"Found secondary Subtitles: "});
  Dialogs.ExpectInput("-100");
  Click("Command_LoadSecond");
  Dialogs.Verify();
  EXPECT_TRUE(Offers());
  EXPECT_FALSE(IsEnabled("Command_Recover"));
}

TEST_F(Recovery, EditIsInTheJournalBeforeItIsShown) {
  LoadStream(ThreeSubtitles());
  std::size_t changes = 0;
  QObject::connect(&Window.Content(), &Document::StreamChanged, &Window, [&] {
    const auto journal = ReadJournal(OnlyJournal());
    changes = journal ? journal->Changes.size() : 0;
  });
  SetAll(Window, 7);
  EXPECT_EQ(changes, 1U);
  SetAll(Window, 9);
  EXPECT_EQ(changes, 2U);
}

TEST_F(Recovery, CutJournalRestoresTheEditsBeforeTheCut) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  {
    const auto another = OpenAnother(path);
    SetAll(*another, 7);
    SetAll(*another, 9);
  }
  const QString journal = Journals().filePath(JournalNames().value(0));
  ASSERT_TRUE(QFile::resize(journal, QFileInfo(journal).size() - 1));
  LoadInto(Window, path);
  ASSERT_TRUE(Offers());
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(7));
  // What was cut off is not in the way of what comes next.
  SetAll(Window, 8);
  LoadInto(Window, path);
  Click("Command_Recover");
  EXPECT_EQ(Stream(), Recoloured(8));
}

TEST_F(Recovery, DamagedJournalIsPutAsideAndTold) {
  const QString path = LeaveAnEdit();
  const QString journal = Journals().filePath(JournalNames().value(0));
  {
    QFile file(journal);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite) && file.seek(60) && file.write("?") == 1);
  }
  LoadInto(Window, path);
  EXPECT_FALSE(Offers());
  EXPECT_EQ(
      Window.statusBar()->currentMessage(),
      "A journal of unsaved edits of this stream is damaged and was put aside: " + journal + ".damaged");
  EXPECT_EQ(JournalNames(), QStringList(QFileInfo(journal).fileName() + ".damaged"));
  SetAll(Window, 9);
  EXPECT_EQ(Stream(), Recoloured(9));
}

// Sound by its hashes, and yet no edit of this stream.
TEST_F(Recovery, JournalThatDoesNotFitTheStreamChangesNothing) {
  const QString path = LeaveAnEdit();
  const QString journal = Journals().filePath(JournalNames().value(0));
  Bytes record;
  StreamEdit edit;
  edit.Replace(100'000, 1, Bytes{1});
  WriteJournalEdit("Set for all", edit, record);
  {
    QFile file(journal);
    ASSERT_TRUE(file.open(QIODevice::Append));
    file.write(reinterpret_cast<const char*>(record.data()), static_cast<qint64>(record.size()));
  }
  LoadInto(Window, path);
  ASSERT_TRUE(Offers());
  Click("Command_Recover");
  EXPECT_FALSE(Offers());
  EXPECT_EQ(Stream(), ThreeSubtitles());
  EXPECT_FALSE(In<QAction>(Window, "Action_Undo").isEnabled());
  EXPECT_TRUE(Window.statusBar()->currentMessage().startsWith("The unsaved edits cannot be restored"))
      << Window.statusBar()->currentMessage().toStdString();
  EXPECT_EQ(JournalNames(), QStringList(QFileInfo(journal).fileName() + ".damaged"));
}

TEST_F(Recovery, EditThatDoesNotFitLeavesNoTrace) {
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 7);
  const Bytes before = OnlyJournal();
  StreamEdit edit;
  edit.Replace(100'000, 1, Bytes{1});
  EXPECT_FALSE(Window.Content().Make({.Name = "Wrong", .What = edit}).IsOk());
  EXPECT_EQ(OnlyJournal(), before);
  Trigger(Window, "Action_Undo");
  LoadInto(Window, path);
  EXPECT_FALSE(Offers());
}

TEST_F(Recovery, FirstEditThatDoesNotFitLeavesNothingToRestore) {
  const QString path = LoadStream(ThreeSubtitles());
  StreamEdit edit;
  edit.Replace(100'000, 1, Bytes{1});
  EXPECT_FALSE(Window.Content().Make({.Name = "Wrong", .What = edit}).IsOk());
  LoadInto(Window, path);
  EXPECT_FALSE(Offers());
  SetAll(Window, 7);
  EXPECT_EQ(Stream(), Recoloured(7));
}

TEST_F(Recovery, FolderThatCannotBeWrittenIsToldOnceAndCostsNothingElse) {
  ASSERT_TRUE(QFile(State.Path() + "/quillmark").open(QIODevice::WriteOnly));
  const QString path = LoadStream(ThreeSubtitles());
  SetAll(Window, 7);
  QCoreApplication::processEvents();
  EXPECT_TRUE(Window.statusBar()->currentMessage().startsWith("Unsaved edits cannot be kept"))
      << Window.statusBar()->currentMessage().toStdString();
  EXPECT_EQ(Stream(), Recoloured(7));
  Window.Tell("something else");
  SetAll(Window, 9);
  Trigger(Window, "Action_Undo");
  LoadInto(Window, path);
  SetAll(Window, 8);
  QCoreApplication::processEvents();
  EXPECT_EQ(Window.statusBar()->currentMessage(), "something else");
  EXPECT_EQ(SavedBytes(), Recoloured(8));
}

// A palette edit has something to tell itself.
TEST_F(Recovery, FolderThatCannotBeWrittenIsToldOfAPaletteEditToo) {
  ASSERT_TRUE(QFile(State.Path() + "/quillmark").open(QIODevice::WriteOnly));
  LoadStream(ThreeSubtitles());
  ASSERT_TRUE(Window.Content().SetPalette(DvdPalette{}, "Load Palette"));
  QCoreApplication::processEvents();
  EXPECT_TRUE(Window.statusBar()->currentMessage().startsWith("Unsaved edits cannot be kept"))
      << Window.statusBar()->currentMessage().toStdString();
}

TEST_F(Recovery, NothingIsRestoredWhileNoStreamIsOpen) {
  LoadInto(Window, LeaveAnEdit());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  EXPECT_FALSE(IsEnabled("Command_Recover"));
}

TEST_F(Recovery, StripIsReachedByKeyAndNamed) {
  LoadInto(Window, LeaveAnEdit());
  EXPECT_EQ(Control<QAbstractButton>("Command_Recover").text(), "Restore");
  EXPECT_EQ(Control<QAbstractButton>("Command_Forget").text(), "Discard");
  for (const char* const name : {"Command_Recover", "Command_Forget"}) {
    EXPECT_TRUE((Control<QWidget>(name).focusPolicy() & Qt::TabFocus) != 0) << name;
  }
  EXPECT_FALSE(OfferText().isEmpty());
  // Above the frame, and in nobody's way.
  EXPECT_LE(Control<QWidget>("Strip_Recover").mapTo(&Window, QPoint()).y(),
            Control<QWidget>("Picture1").mapTo(&Window, QPoint()).y());
  EXPECT_FALSE(Control<QWidget>("Command_Recover").hasFocus());
}

}  // namespace
}  // namespace quillmark::test
