#include "app/UserMemory.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QSettings>
#include <QSplitter>

#include "tests/app/PaletteFiles.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// The settings file of a user of the test's own.
class OwnSettings {
 public:
  OwnSettings() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder_.path()); }
  ~OwnSettings() {
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                       qEnvironmentVariable("XDG_CONFIG_HOME"));
  }
  OwnSettings(const OwnSettings&) = delete;
  OwnSettings& operator=(const OwnSettings&) = delete;

  [[nodiscard]] QString File() const { return folder_.filePath("quillmark/quillmark.conf"); }

 private:
  QTemporaryDir folder_;
};

class UserMemoryTest : public testing::Test {
 protected:
  OwnSettings Settings;
};

TEST_F(UserMemoryTest, RecentFilesAreNewestFirstAndOnce) {
  UserMemory memory;
  for (const char* path : {"/a.sup", "/b.sup", "/a.sup"}) {
    memory.AddRecentFile(path);
  }
  EXPECT_EQ(memory.RecentFiles(), QStringList({"/a.sup", "/b.sup"}));
}

TEST_F(UserMemoryTest, TenFilesAreRemembered) {
  UserMemory memory;
  for (int i = 0; i < 12; ++i) {
    memory.AddRecentFile(QString::number(i));
  }
  EXPECT_EQ(memory.RecentFiles().size(), 10);
  EXPECT_EQ(memory.RecentFiles().last(), "2");
}

TEST_F(UserMemoryTest, KeptMemoryIsThereForTheNextRun) {
  const WindowPlace place{.Corner = {-30, 40}, .Size = {1000, 700}, .IsMaximised = true};
  {
    UserMemory memory;
    memory.Keep();
    memory.AddRecentFile("/folder, with comma/a%1&.sup");
    memory.SetFolder("sup", QDir::tempPath());
    memory.SetPlace(place);
  }
  UserMemory memory;
  EXPECT_TRUE(memory.RecentFiles().isEmpty());
  memory.Keep();
  EXPECT_EQ(memory.RecentFiles(), QStringList("/folder, with comma/a%1&.sup"));
  EXPECT_EQ(memory.Folder("sup"), QDir::tempPath());
  EXPECT_EQ(memory.Place(), place);
}

TEST_F(UserMemoryTest, MemoryThatIsNotKeptLeavesNoFile) {
  {
    UserMemory memory;
    memory.AddRecentFile("/a.sup");
    memory.SetPlace({.Corner = {1, 2}, .Size = {3, 4}});
  }
  EXPECT_FALSE(QFile::exists(Settings.File()));
}

TEST_F(UserMemoryTest, MemoryThatIsNotKeptLastsForTheRun) {
  UserMemory memory;
  memory.SetArrangement("columns", 3);
  memory.SetPlace({.Corner = {10, 20}, .Size = {800, 600}});
  EXPECT_EQ(memory.Arrangement("columns"), 3);
  EXPECT_TRUE(memory.Place() == (WindowPlace{.Corner = {10, 20}, .Size = {800, 600}}));
}

TEST_F(UserMemoryTest, FolderThatIsGoneIsNone) {
  UserMemory memory;
  memory.SetFolder("sup", "/no/such/folder");
  EXPECT_EQ(memory.Folder("sup"), "");
  EXPECT_EQ(memory.Folder("palette"), "");
}

TEST_F(UserMemoryTest, DamagedSettingsAreNone) {
  ASSERT_TRUE(QDir().mkpath(QFileInfo(Settings.File()).path()));
  QFile file(Settings.File());
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("[window]\nsize=@Size(x y)\n[[[\nrecent=@Variant(\\0\\0)\n");
  file.close();
  UserMemory memory;
  memory.Keep();
  EXPECT_TRUE(memory.RecentFiles().isEmpty());
  EXPECT_FALSE(memory.Place());
}

TEST_F(UserMemoryTest, FilesOfAnotherWindowStay) {
  UserMemory first;
  UserMemory second;
  first.Keep();
  second.Keep();
  first.AddRecentFile("/a.sup");
  {
    UserMemory gone;  // its end writes nothing of the others
    gone.Keep();
  }
  second.AddRecentFile("/b.sup");
  EXPECT_EQ(second.RecentFiles(), QStringList({"/b.sup", "/a.sup"}));
}

TEST(FitToScreens, PlaceOnAScreenIsUsed) {
  const UsablePlace usable =
      FitToScreens({.Corner = {1950, 10}, .Size = {900, 600}}, {{0, 0, 1920, 1080}, {1920, 0, 1920, 1080}});
  EXPECT_EQ(usable.Corner, QPoint(1950, 10));
  EXPECT_EQ(usable.Size, QSize(900, 600));
}

TEST(FitToScreens, PlaceOffTheScreensIsNotUsed) {
  for (const QPoint corner : {QPoint(1950, 10), QPoint(-1, 10), QPoint(1500, 10), QPoint(10, 700)}) {
    EXPECT_FALSE(FitToScreens({.Corner = corner, .Size = {900, 600}}, {{0, 0, 1920, 1080}}).Corner)
        << corner.x();
  }
}

TEST(FitToScreens, SizeFitsTheScreen) {
  EXPECT_EQ(FitToScreens({.Corner = {0, 0}, .Size = {3000, 600}}, {{0, 0, 1920, 1080}}).Size,
            QSize(1920, 600));
}

class Recent : public WindowTest {
 protected:
  [[nodiscard]] QMenu& OpenedMenu() const {
    auto* menu = Window.findChild<QMenu*>("Menu_Recent");
    emit menu->aboutToShow();
    return *menu;
  }
};

TEST_F(Recent, MenuIsDisabledBeforeAnyFile) {
  EXPECT_FALSE(Window.findChild<QMenu*>("Menu_Recent")->isEnabled());
}

TEST_F(Recent, FilesCanBeForgottenWhereThereIsOne) {
  const auto* forget = Window.findChild<QAction*>("Action_ForgetRecent");
  EXPECT_FALSE(forget->isEnabled());
  Load(Write("movie.sup", ThreeSubtitles()));
  EXPECT_TRUE(forget->isEnabled());
}

TEST_F(Recent, LoadedFilesAreListedAndOpened) {
  const QString first = Write("one & %1.sup", ThreeSubtitles());
  Load(first);
  Load(Write("two.sup", InvalidSecond()));
  const QMenu& menu = OpenedMenu();
  EXPECT_TRUE(menu.isEnabled());
  QAction* entry = menu.actions().value(1);
  EXPECT_TRUE(entry->text().startsWith("&2 ")) << entry->text().toStdString();
  EXPECT_TRUE(entry->text().endsWith("one && %1.sup")) << entry->text().toStdString();
  Dialogs.ExpectReport();
  entry->trigger();
  EXPECT_EQ(TextOf("Text1"), first);
  EXPECT_TRUE(OpenedMenu().actions().value(0)->text().endsWith("one && %1.sup"));
}

TEST_F(Recent, FileThatIsGoneIsToldAsByLoadSup) {
  const QString path = Write("gone.sup", ThreeSubtitles());
  Load(path);
  QFile::remove(path);
  Dialogs.ExpectMessageWith({"Cannot read ", path});
  OpenedMenu().actions().value(0)->trigger();
}

TEST_F(Recent, BrokenFileIsNotListed) {
  Dialogs.ExpectOpen(Write("broken.sup", Bytes(20, 'x')));
  Dialogs.ExpectMessage("Error: No SUP signature found");
  Click("Command_LoadSup");
  EXPECT_FALSE(Window.findChild<QMenu*>("Menu_Recent")->isEnabled());
}

TEST_F(Recent, LineStandsBetweenTheFilesAndForgettingThem) {
  LoadStream(ThreeSubtitles());
  const QList<QAction*> entries = OpenedMenu().actions();
  ASSERT_EQ(entries.size(), 3);
  EXPECT_TRUE(entries[1]->isSeparator());
}

TEST_F(Recent, ForgottenFilesAreGone) {
  LoadStream(ThreeSubtitles());
  OpenedMenu().actions().last()->trigger();
  EXPECT_FALSE(Window.findChild<QMenu*>("Menu_Recent")->isEnabled());
}

/// A window that remembers its user.
class Remembering : public testing::Test {
 protected:
  OwnSettings Settings;
  QTemporaryDir Folder;
  DialogScript Dialogs;
};

TEST_F(Remembering, WindowComesBackToItsPlace) {
  QRect left;
  {
    frmTest window;
    window.RememberUser();
    window.show();
    window.move(60, 50);
    window.resize(window.size() + QSize(40, 30));
    left = QRect(window.pos(), window.size());
    window.close();
  }
  frmTest window;
  window.RememberUser();
  window.show();
  EXPECT_EQ(QRect(window.pos(), window.size()), left);
}

TEST_F(Remembering, WindowComesBackAsLargeAsTheScreen) {
  QSize usual;
  {
    frmTest window;
    window.RememberUser();
    window.show();
    usual = window.size();
    window.showMaximized();
    QCoreApplication::processEvents();
    window.close();
  }
  frmTest window;
  window.RememberUser();
  window.show();
  EXPECT_TRUE(window.isMaximized());
  EXPECT_EQ(window.normalGeometry().size(), usual);
}

TEST_F(Remembering, ColumnOfTheListIsAsWideAsItWasLeft) {
  const auto columns = [](const frmTest& window) { return window.findChild<QSplitter*>("Splitter_List"); };
  QList<int> left;
  {
    frmTest window;
    window.RememberUser();
    window.resize(1700, 1000);
    window.show();
    QCoreApplication::processEvents();
    const QList<int> usual = columns(window)->sizes();
    columns(window)->setSizes({usual.value(0) + 30, usual.value(1) - 30});
    left = columns(window)->sizes();
    ASSERT_NE(left, usual);
    window.close();
  }
  frmTest window;
  window.RememberUser();
  window.resize(1700, 1000);
  window.show();
  QCoreApplication::processEvents();
  EXPECT_EQ(columns(window)->sizes(), left);
}

TEST_F(Remembering, FirstDialogStartsInTheLastFolder) {
  {
    UserMemory memory;
    memory.Keep();
    memory.SetFolder("sup", Folder.path());
  }
  frmTest window;
  window.RememberUser();
  window.show();
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  window.findChild<QAction*>("Action_LoadSup")->trigger();
  EXPECT_EQ(Dialogs.Last().Folder, Folder.path());
}

TEST_F(Remembering, NextDialogStartsInTheFolderChosenBefore) {
  {
    UserMemory memory;
    memory.Keep();
    memory.SetFolder("palette", QDir::tempPath());
  }
  frmTest window;
  window.RememberUser();
  window.show();
  QFile palette(Folder.filePath("red.pal"));
  ASSERT_TRUE(palette.open(QIODevice::WriteOnly));
  palette.write(PalWithRed());
  palette.close();
  auto* loads = window.findChild<QAction*>("Action_LoadPalette");
  Dialogs.ExpectOpen(palette.fileName());
  loads->trigger();
  EXPECT_EQ(Dialogs.Last().Folder, QDir::tempPath());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  loads->trigger();
  EXPECT_EQ(Dialogs.Last().Folder, Folder.path());
}

TEST_F(Remembering, GuidesAndBackgroundColourComeBackTheZoomDoesNot) {
  {
    frmTest window;
    window.RememberUser();
    window.show();
    for (const char* action :
         {"Action_Rulers", "Action_GroundGrey", "Action_ZoomIn", "Action_16x9", "Action_Letterbox"}) {
      window.findChild<QAction*>(action)->trigger();
    }
    window.close();
  }
  frmTest window;
  window.RememberUser();
  window.show();
  EXPECT_TRUE(window.findChild<QAction*>("Action_Rulers")->isChecked());
  EXPECT_FALSE(window.findChild<QAction*>("Action_SafeAreas")->isChecked());
  EXPECT_EQ(window.findChild<QWidget*>("Label_Ground")->accessibleDescription(), "#808080");
  EXPECT_TRUE(window.findChild<QAction*>("Action_Checker")->isChecked());
  EXPECT_TRUE(window.findChild<QAction*>("Action_ModeOff")->isChecked());
  EXPECT_EQ(window.findChild<QWidget*>("Picture1")->size(), QSize(720, 576));
}

}  // namespace
}  // namespace quillmark::test
