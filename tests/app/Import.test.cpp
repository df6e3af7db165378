#include <QAction>
#include <QCoreApplication>
#include <QFile>
#include <QMenu>
#include <QStatusBar>

#include "tests/app/MergeTest.h"

namespace quillmark::test {
namespace {

class Import : public MergeTest {
 protected:
  [[nodiscard]] QAction& Action(const QString& name) const {
    return *Window.findChild<QAction*>("Action_" + name);
  }
  /// Import subtitles: chooses the file. What comes after that is to be expected by `then`.
  void Choose(const QString& path, const std::function<void()>& then) {
    Dialogs.ExpectOpen(path);
    then();
    ASSERT_TRUE(Action("Import").isEnabled());
    Action("Import").trigger();
    QCoreApplication::processEvents();
    Dialogs.Verify();
  }
  void ImportFile(const QString& path) {
    Choose(path, [this] { Dialogs.ExpectReport(); });
  }
  [[nodiscard]] QString Told() const { return Window.statusBar()->currentMessage(); }
  /// Loads three subtitles, goes to the second and changes a colour of it.
  void LoadAndEdit() {
    LoadStream(ThreeSubtitles());
    Click("Command_Next");
    WindowTest::Choose("ImageCombo2", "4");
    Click("Command_SetActual");
    edited_ = SavedBytes();
  }
  void ExpectAsEdited() {
    EXPECT_EQ(TextOf("Text1"), Path("movie.sup"));
    EXPECT_EQ(TextOf("Text_SubNum"), "2");
    EXPECT_EQ(FrameColour(102, 420), QColor(253, 255, 4));
    EXPECT_TRUE(Action("Undo").isEnabled());
    EXPECT_EQ(SavedBytes(), edited_);
  }

 private:
  Bytes edited_;
};

TEST_F(Import, SupFileOpensAsLoadSupDoes) {
  const QString path = Write("movie.sup", ThreeSubtitles());
  ImportFile(path);
  EXPECT_EQ(TextOf("Text1"), path);
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
  EXPECT_EQ(FrameColour(102, 400), TextColour);
  EXPECT_TRUE(IsEnabled("Command_Next"));
  EXPECT_EQ(SavedBytes(), ThreeSubtitles());
}

TEST_F(Import, DialogShowsWhatCanBeRead) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Action("Import").trigger();
  EXPECT_TRUE(Dialogs.Last().Offers("movie.sup"));
  EXPECT_TRUE(Dialogs.Last().Offers("MOVIE.SUP"));
  EXPECT_FALSE(Dialogs.Last().Offers("movie.txt"));
}

TEST_F(Import, CancelledFileDialogChangesNothing) {
  LoadAndEdit();
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Action("Import").trigger();
  ExpectAsEdited();
}

TEST_F(Import, FileThatCannotBeReadChangesNothing) {
  LoadAndEdit();
  const QString path = Write("other.sup", Bytes(20, 'x'));
  Choose(path, [&] { Dialogs.ExpectMessage("Cannot read " + path + ": No SUP signature found"); });
  ExpectAsEdited();
}

TEST_F(Import, SignatureLostOnTheWayChangesNothing) {
  LoadAndEdit();
  const QString path = Write("other.sup", Join({PacketBuilder().Build(), Bytes(20, 'x')}));
  Choose(path, [&] { Dialogs.ExpectMessage("Cannot read " + path + ": No SUP signature found"); });
  ExpectAsEdited();
}

TEST_F(Import, CancelledReadingChangesNothing) {
  LoadAndEdit();
  Window.SetPatience(std::chrono::milliseconds(0));
  Choose(Write("other.sup", PacketBuilder().Build()), [this] { Dialogs.ExpectCancelled(DialogKind::Other); });
  EXPECT_EQ(Told(), "The import was cancelled; nothing has changed");
  ExpectAsEdited();
}

TEST_F(Import, CancelledReadingStaysInMergeMode) {
  LoadStream(PrimaryStream({{0, 100}}));
  Merge(SecondaryStream({0}));
  Window.SetPatience(std::chrono::milliseconds(0));
  Choose(Write("other.sup", PacketBuilder().Build()), [this] { Dialogs.ExpectCancelled(DialogKind::Other); });
  EXPECT_TRUE(Action("LeaveMerge").isEnabled());
  EXPECT_EQ(ShownSecondaries(), std::vector<int>({0}));
}

TEST_F(Import, NewHistoryBegins) {
  LoadAndEdit();
  ImportFile(Write("other.sup", ThreeSubtitles()));
  EXPECT_FALSE(Action("Undo").isEnabled());
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(Import, FirstSubtitleThatCannotBeShownIsToldAsLoadSupDoes) {
  Choose(Write("movie.sup", PacketBuilder().WithoutColour().Build()), [this] {
    Dialogs.ExpectMessage("Error converting subtitle!");
    Dialogs.ExpectReport();
  });
  EXPECT_EQ(TextOf("Text_SubNum"), "0");
}

TEST_F(Import, PaletteThatStaysIsTold) {
  LoadStream(ThreeSubtitles());
  ImportFile(Write("other.sup", ThreeSubtitles()));
  EXPECT_EQ(Told(), "Imported other.sup; it has no palette of its own: the present one stays");
}

}  // namespace
}  // namespace quillmark::test
