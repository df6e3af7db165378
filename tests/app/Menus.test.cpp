#include <QAction>
#include <QCoreApplication>
#include <QHash>
#include <QImage>
#include <QMenu>
#include <QMenuBar>
#include <QSet>

#include "tests/app/MergeTest.h"
#include "tests/support/Abandon.h"

namespace quillmark::test {
namespace {

class Menus : public MergeTest {
 protected:
  [[nodiscard]] QAction& Action(const QString& name) const {
    auto* action = Window.findChild<QAction*>("Action_" + name);
    if (action == nullptr) {
      test::Abandon("no such action: " + name.toStdString());
    }
    return *action;
  }
  /// Chooses an entry, which must be enabled.
  void Pick(const QString& name) {
    ASSERT_TRUE(Action(name).isEnabled()) << name.toStdString();
    Action(name).trigger();
    QCoreApplication::processEvents();
  }
  [[nodiscard]] static QStringList NamesOf(const QMenu& menu) {
    QStringList names;
    for (const QAction* entry : menu.actions()) {
      if (!entry->isSeparator()) {
        names.append(entry->menu() != nullptr ? entry->menu()->objectName()
                                              : entry->objectName().mid(QString("Action_").size()));
      }
    }
    return names;
  }
  [[nodiscard]] QStringList EntriesOf(const QString& menu) const {
    return NamesOf(*Window.findChild<QMenu*>("Menu_" + menu));
  }
  QString WritePicture(const QColor& colour) const {
    QImage picture(8, 8, QImage::Format_RGB32);
    picture.fill(colour);
    EXPECT_TRUE(picture.save(Path("behind.png")));
    return Path("behind.png");
  }
};

using Names = QStringList;

TEST_F(Menus, HoldTheCommands) {
  EXPECT_EQ(EntriesOf("Edit"), (Names{"Undo", "Redo", "Copy", "RevertPreview", "Recover", "Forget"}));
  EXPECT_EQ(EntriesOf("Subtitle"), (Names{"Prev", "Next", "GoTo", "NextProblem", "PrevProblem", "Reload"}));
  EXPECT_EQ(EntriesOf("Colours"), (Names{"SetActual", "SetSelected", "SetAll"}));
  EXPECT_EQ(EntriesOf("View"), (Names{"List",    "Menu_Columns", "Player",           "Play",
                                      "720x480", "720x576",      "Checker",          "File",
                                      "Colour",  "Menu_Ground",  "PictureBehind",    "GetGraphics",
                                      "ZoomIn",  "ZoomOut",      "Zoom100",          "ZoomFit",
                                      "Loupe",   "Menu_Aspect",  "Menu_DisplayMode", "Menu_Guides"}));
  EXPECT_EQ(EntriesOf("Ground"), (Names{"GroundBlack", "GroundWhite", "GroundGrey", "GroundPick"}));
  EXPECT_EQ(EntriesOf("DisplayMode"), (Names{"ModeOff", "Wide", "Letterbox", "PanAndScan"}));
  EXPECT_EQ(EntriesOf("Guides"), (Names{"SafeAreas", "SubtitleArea", "Rulers"}));
  EXPECT_EQ(EntriesOf("Aspect"), (Names{"Square", "4x3", "16x9"}));
  EXPECT_EQ(EntriesOf("Merge"),
            (Names{"LoadSecond", "Offset", "SuggestOffset", "MergeReview", "SaveSecond", "LeaveMerge"}));
  EXPECT_EQ(EntriesOf("Help"), (Names{"Report", "Keys", "About", "AboutQt"}));
  EXPECT_EQ(EntriesOf("File"), (Names{"LoadSup", "Import", "Menu_Recent", "Reopen", "SaveSup", "Export",
                                      "LoadPalette", "SavePalette", "ProgramChains", "Quit"}));
}

TEST_F(Menus, MnemonicsDifferInEachMenu) {
  QList<QWidget*> menus = {Window.menuBar()};
  for (QMenu* menu : Window.menuBar()->findChildren<QMenu*>()) {
    menus.append(menu);
  }
  for (const QWidget* menu : menus) {
    QSet<QChar> letters;
    for (const QAction* entry : menu->actions()) {
      if (!entry->isSeparator()) {
        const QChar letter = entry->text().section(u'&', 1, 1).left(1).toUpper().front();
        EXPECT_FALSE(letters.contains(letter)) << entry->text().toStdString();
        letters.insert(letter);
      }
    }
  }
}

TEST_F(Menus, ButtonsTriggerTheirActions) {
  QHash<QString, DialogKind> asks = {
      {"SaveSup", DialogKind::SaveFile},    {"LoadPalette", DialogKind::OpenFile},
      {"GoTo", DialogKind::Input},          {"SavePalette", DialogKind::SaveFile},
      {"LoadSecond", DialogKind::OpenFile}, {"GetGraphics", DialogKind::OpenFile},
      {"LoadSup", DialogKind::OpenFile}};
  LoadStream(ThreeSubtitles());
  Dialogs.AllowMessages();
  for (const char* name : {"SaveSup", "LoadPalette", "SavePalette", "Reload", "Next", "Prev", "GoTo",
                           "SetActual", "SetAll", "LoadSecond", "SaveSecond", "GetGraphics", "LoadSup"}) {
    int triggered = 0;
    const auto connection =
        QObject::connect(&Action(name), &QAction::triggered, [&triggered] { ++triggered; });
    if (asks.contains(name)) {
      Dialogs.ExpectCancelled(asks[name]);
    }
    Click(QString("Command_") + name);
    EXPECT_EQ(triggered, 1) << name;
    QObject::disconnect(connection);
  }
}

TEST_F(Menus, SizeEntriesPressTheirOptions) {
  Click("Option_720x576");
  Pick("720x480");
  EXPECT_TRUE(IsChecked("Option_720x480"));
  EXPECT_EQ(Frame().height(), 480);
  EXPECT_TRUE(Action("720x480").isChecked());
  Click("Option_720x576");
  EXPECT_TRUE(Action("720x576").isChecked());
  EXPECT_FALSE(Action("720x480").isChecked());
}

TEST_F(Menus, GraphFileEntryWithoutAFileSaysSoAndStaysAtTheChecker) {
  Dialogs.ExpectMessage("Select a valid graphics file first");
  Pick("File");
  EXPECT_TRUE(IsChecked("Option_Checker"));
  EXPECT_TRUE(Action("Checker").isChecked());
  EXPECT_FALSE(Action("File").isChecked());
}

TEST_F(Menus, PictureBehindChoosesAndShowsInOneStep) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectOpen(WritePicture(Qt::red));
  Pick("PictureBehind");
  EXPECT_EQ(TextOf("Text_GraphFile"), Path("behind.png"));
  EXPECT_TRUE(IsChecked("Option_File"));
  EXPECT_TRUE(Action("File").isChecked());
  EXPECT_EQ(FrameColour(10, 10), QColor(Qt::red));
  Pick("Checker");
  EXPECT_EQ(FrameColour(10, 10), QColor(60, 60, 60));
}

TEST_F(Menus, PictureBehindCancelledChangesNothing) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Pick("PictureBehind");
  EXPECT_EQ(TextOf("Text_GraphFile"), "");
  EXPECT_TRUE(IsChecked("Option_Checker"));
}

TEST_F(Menus, RevertPreviewShowsWhatIsWritten) {
  LoadStream(ThreeSubtitles());
  EXPECT_FALSE(Action("RevertPreview").isEnabled());
  Choose("ImageCombo2", "4");
  EXPECT_EQ(FrameColour(102, 400), QColor(253, 255, 4));
  Pick("RevertPreview");
  EXPECT_EQ(Chosen("ImageCombo2"), "1");
  EXPECT_EQ(FrameColour(102, 400), TextColour);
  EXPECT_FALSE(Action("RevertPreview").isEnabled());
}

TEST_F(Menus, OffsetAsksAgainAndMovesTheSecondary) {
  LoadStream(PrimaryStream({{0, 100}}));
  EXPECT_FALSE(Action("Offset").isEnabled());
  Merge(SecondaryStream({0}), "0");
  ASSERT_TRUE(TextIsAt(200, 200));
  Dialogs.ExpectInput("-60");
  Pick("Offset");
  EXPECT_EQ(Dialogs.Last().Title, "Set Offset");
  EXPECT_EQ(Dialogs.Last().Text, "Y-Offset for secondary stream");
  EXPECT_EQ(Dialogs.Last().DefaultText, "-400");
  EXPECT_TRUE(TextIsAt(200, 140));
  EXPECT_FALSE(TextIsAt(200, 200));
  EXPECT_EQ(TextOf("Text_SubNum"), "1");
}

TEST_F(Menus, OffsetThatDoesNotFitStaysAsItWas) {
  LoadStream(PrimaryStream({{0, 100}}));
  Merge(SecondaryStream({0}), "10");
  Dialogs.ExpectInput("40000");
  Dialogs.ExpectMessage("The offset 40000 is not between -32768 and 32767; it stays 10");
  Pick("Offset");
  EXPECT_TRUE(TextIsAt(200, 210));
}

TEST_F(Menus, LeaveMergeModeKeepsThePrimaryAtItsSubtitle) {
  LoadStream(PrimaryStream({{0, 100}, {200, 100}, {400, 100}}));
  EXPECT_FALSE(Action("LeaveMerge").isEnabled());
  Merge(SecondaryStream({0, 200, 400}));
  Click("Command_Next");
  ASSERT_EQ(ShownSecondaries(), std::vector<int>({1}));
  Pick("LeaveMerge");
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_TRUE(TextIsAt(100, 100));
  EXPECT_TRUE(ShownSecondaries().empty());
  for (const QString& name : EditingControls()) {
    EXPECT_TRUE(IsEnabled(name)) << name.toStdString();
  }
  for (const char* name : {"Command_Prev", "Command_Next", "Command_GoTo"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
  EXPECT_FALSE(Action("LeaveMerge").isEnabled());
  EXPECT_FALSE(Action("Offset").isEnabled());
  Dialogs.ExpectMessage("Error: No secondary sup file loaded");
  Click("Command_SaveSecond");
}

TEST_F(Menus, LeaveMergeModeKeepsTheHistory) {
  LoadStream(PrimaryStream({{0, 100}}));
  Choose("ImageCombo2", "4");
  Click("Command_SetAll");
  Merge(SecondaryStream({0}));
  EXPECT_FALSE(Action("Undo").isEnabled());
  Pick("LeaveMerge");
  Pick("Undo");
  EXPECT_EQ(SavedBytes(), PrimaryStream({{0, 100}}));
}

TEST_F(Menus, CancelledLoadSupOffersTheStreamThatWasOpen) {
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  Choose("ImageCombo2", "4");
  Click("Command_SetActual");
  EXPECT_FALSE(Control<QWidget>("Strip_Closed").isVisible());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  auto& strip = Control<QWidget>("Strip_Closed");
  EXPECT_TRUE(strip.isVisible());
  const auto topOf = [](const QWidget& widget) { return widget.mapToGlobal(QPoint()).y(); };
  EXPECT_LT(topOf(strip), topOf(Control<QWidget>("Picture1")));
  EXPECT_TRUE(strip.accessibleName().startsWith("No stream is open. movie.sup "))
      << strip.accessibleName().toStdString();
  Click("Command_Reopen");
  EXPECT_FALSE(strip.isVisible());
  EXPECT_EQ(TextOf("Text_SubNum"), "2");
  EXPECT_EQ(FrameColour(102, 420), QColor(253, 255, 4));
  for (const char* name :
       {"Command_Prev", "Command_Next", "Command_GoTo", "Command_Reload", "Command_SetActual"}) {
    EXPECT_TRUE(IsEnabled(name)) << name;
  }
  Pick("Undo");
  EXPECT_EQ(SavedBytes(), ThreeSubtitles());
}

TEST_F(Menus, StripGoesWhenAnotherStreamIsOpened) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  LoadStream(ThreeSubtitles());
  EXPECT_FALSE(Control<QWidget>("Strip_Closed").isVisible());
  EXPECT_FALSE(Action("Reopen").isEnabled());
}

TEST_F(Menus, CancelledLoadSupWithoutAStreamOffersNone) {
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  EXPECT_FALSE(Control<QWidget>("Strip_Closed").isVisible());
  EXPECT_FALSE(Action("Reopen").isEnabled());
}

TEST_F(Menus, ReportAgainIsTheReportOfLoading) {
  EXPECT_FALSE(Action("Report").isEnabled());
  LoadStream(ThreeSubtitles());
  const QString report = Dialogs.Last().Text;
  Dialogs.ExpectMessage(report);
  Pick("Report");
}

TEST_F(Menus, KeysAreListed) {
  Dialogs.ExpectMessageWith({"Load SUP: Ctrl+O", "Next: PgDown, Alt+Right", "Keys: F1", "Quit: Ctrl+Q"});
  Pick("Keys");
}

TEST_F(Menus, AboutNamesTheProgram) {
  Dialogs.ExpectMessageWith({"Quillmark"});
  Pick("About");
  Dialogs.ExpectMessageWith({"Qt"});
  Pick("AboutQt");
}

TEST_F(Menus, RefusalOfSeveralColoursSaysWhenSetColoursCount) {
  LoadStream(SeveralColours());
  QString remark;
  Dialogs.Expect(DialogKind::Message, [&remark](QDialog& dialog) {
    remark = static_cast<QMessageBox&>(dialog).informativeText();
    dialog.accept();
  });
  Click("Command_LoadSecond");
  EXPECT_TRUE(Dialogs.Last().Text.startsWith("Error: Primary sup file uses multiple colors"));
  EXPECT_TRUE(remark.contains("saved and loaded again")) << remark.toStdString();
}

TEST_F(Menus, OptionThatIsChosenStaysSoWhenItIsChosenAgain) {
  LoadStream(ThreeSubtitles());
  for (const char* name : {"Action_720x576", "Action_Checker", "Action_Square", "Action_ModeOff"}) {
    auto* action = Window.findChild<QAction*>(name);
    ASSERT_TRUE(action->isChecked()) << name;
    action->trigger();
    EXPECT_TRUE(action->isChecked()) << name;
  }
}

}  // namespace
}  // namespace quillmark::test
