#include <algorithm>

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QSplitter>
#include <QTableView>
#include <QTest>

#include "tests/app/Placing.h"
#include "tests/app/ShapedTexts.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// What a screen of 1366x768 leaves of it: a title bar and borders around the window.
constexpr QSize SmallScreen(1366 - 8, 768 - 40);
/// 1920x1080 at 150 % and 2560x1440 at 200 %.
constexpr QSize ScaledScreen(1280 - 8, 720 - 40);
/// The smallest window that everything is to be reached in.
constexpr QSize SmallestWindow(960, 560);

/// A font of this size for every window, until the test ends.
class ApplicationFont {
 public:
  explicit ApplicationFont(int points) {
    QFont font = before_;
    font.setPointSize(points);
    QApplication::setFont(font);
  }
  ~ApplicationFont() { QApplication::setFont(before_); }
  ApplicationFont(const ApplicationFont&) = delete;
  ApplicationFont& operator=(const ApplicationFont&) = delete;

 private:
  QFont before_ = QApplication::font();
};

class Layout : public ShapedTexts, public WindowTest {
 protected:
  void SetUp() override {
    LoadStream(ThreeSubtitles());
    Click("Option_720x576");
    Resize(SmallScreen);
  }
  void Resize(QSize size) {
    Window.resize(size);
    QCoreApplication::processEvents();
    ASSERT_EQ(Window.size(), size);
  }
  [[nodiscard]] bool IsWhole(const QString& name) const {
    const auto& control = Control<QWidget>(name);
    return control.visibleRegion() == QRegion(control.rect());
  }
  /// The same of one that its own viewport covers: its frame is seen all around.
  [[nodiscard]] bool FrameIsWhole(const QString& name) const {
    const auto& control = Control<QWidget>(name);
    return control.visibleRegion().boundingRect() == control.rect();
  }
  [[nodiscard]] int LeftOf(const QString& name) const {
    return Control<QWidget>(name).mapTo(&Window, QPoint()).x();
  }
  [[nodiscard]] int TopOf(const QString& name) const {
    return Control<QWidget>(name).mapTo(&Window, QPoint()).y();
  }
};

TEST_F(Layout, WindowFitsASmallScreen) {
  EXPECT_LE(Window.minimumSizeHint().width(), SmallScreen.width());
  EXPECT_LE(Window.minimumSizeHint().height(), SmallScreen.height());
  EXPECT_LE(Window.width(), SmallScreen.width());
  EXPECT_LE(Window.height(), SmallScreen.height());
}

TEST_F(Layout, WindowIsAtFirstAsLargeAsAllThatStandsInIt) {
  Resize(Window.sizeHint());
  for (const char* name : {"Picture1", "Frame1", "Frame2", "Frame3", "Command_SetAll", "Label1_0"}) {
    EXPECT_TRUE(IsWhole(name)) << name;
  }
  EXPECT_GT(TopOf("Frame1"), TopOf("Picture1") + 576);
  EXPECT_LT(TopOf("Frame1"), TopOf("Picture1") + 576 + 20);
}

TEST_F(Layout, EveryControlLiesInsideItsParent) {
  for (const QWidget* control : VisibleControls(Window)) {
    EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()))
        << control->metaObject()->className() << ' ' << control->objectName().toStdString();
    EXPECT_FALSE(control->size().isEmpty()) << control->objectName().toStdString();
  }
}

TEST_F(Layout, FrameIsWhole) {
  EXPECT_EQ(Control<QWidget>("Picture1").size(), QSize(720, 576));
  EXPECT_TRUE(IsWhole("Picture1"));
}

TEST_F(Layout, ListStandsBetweenDetailsAndPaletteOnASmallScreen) {
  const auto topOf = [this](const char* name) { return Control<QWidget>(name).mapTo(&Window, QPoint()).y(); };
  EXPECT_TRUE(IsWhole("Picture1"));
  EXPECT_TRUE(FrameIsWhole("List_Subtitles"));
  EXPECT_GT(topOf("List_Subtitles"), topOf("Text_Height"));
  EXPECT_GT(topOf("Text_Problems"), topOf("List_Subtitles"));
  EXPECT_GT(topOf("Label1_0"), topOf("Text_Problems"));
  EXPECT_EQ(LeftOf("List_Subtitles") / 100, LeftOf("Label1_0") / 100);
  const auto& list = Control<QAbstractItemView>("List_Subtitles");
  EXPECT_GE(list.viewport()->height(), 10 * 24);
  EXPECT_EQ(list.visualRect(list.model()->index(1, 0)).height(), 24);
}

TEST_F(Layout, ListHasAColumnOfItsOwnFrom1600On) {
  Resize({1599, 1000});
  EXPECT_LT(LeftOf("List_Subtitles"), LeftOf("Command_SetAll"));
  Resize({1600, 1000});
  EXPECT_TRUE(IsWhole("Picture1"));
  EXPECT_TRUE(FrameIsWhole("List_Subtitles"));
  EXPECT_TRUE(IsWhole("Command_SetAll"));
  EXPECT_GT(LeftOf("List_Subtitles"), LeftOf("Command_SetAll"));
  Resize(SmallScreen);
  EXPECT_LT(LeftOf("List_Subtitles"), LeftOf("Command_SetAll"));
  EXPECT_TRUE(FrameIsWhole("List_Subtitles"));
}

TEST_F(Layout, WhatRoomIsLeftIsBelowTheCommandsAndTheListsOwn) {
  Resize({1366, 1000});
  EXPECT_LT(TopOf("Frame1"), TopOf("Picture1") + 576 + 40);
  Window.findChild<QAction*>("Action_List")->trigger();
  QCoreApplication::processEvents();
  const int palette = TopOf("Label1_0");
  Resize({1366, 900});
  EXPECT_EQ(TopOf("Label1_0"), palette);
  Window.findChild<QAction*>("Action_List")->trigger();
  Resize({1700, 900});
  const int commands = Control<QWidget>("Command_SetAll").width();
  const int list = Control<QWidget>("List_Subtitles").width();
  Resize({1800, 900});
  EXPECT_EQ(Control<QWidget>("Command_SetAll").width(), commands);
  EXPECT_EQ(Control<QWidget>("List_Subtitles").width(), list + 100);
  EXPECT_EQ(Control<QWidget>("Strip_Time").height(), Control<QWidget>("Strip_Time").sizeHint().height());
}

TEST_F(Layout, NeitherCommandsNorListArePushedAway) {
  Resize({1700, 900});
  auto& splitter = Control<QSplitter>("Splitter_List");
  splitter.setSizes({2000, 0});
  EXPECT_TRUE(FrameIsWhole("List_Subtitles"));
  splitter.setSizes({0, 2000});
  EXPECT_TRUE(IsWhole("Command_SetAll"));
}

TEST_F(Layout, HiddenListLeavesItsPlaceEmpty) {
  Window.findChild<QAction*>("Action_List")->trigger();
  QCoreApplication::processEvents();
  EXPECT_FALSE(Control<QWidget>("List_Subtitles").isVisible());
  EXPECT_FALSE(Control<QWidget>("Text_Filter").isVisible());
  EXPECT_TRUE(IsWhole("Command_SetAll"));
  Window.findChild<QAction*>("Action_List")->trigger();
  EXPECT_TRUE(Control<QWidget>("List_Subtitles").isVisible());
}

TEST_F(Layout, GroupsBelowTheFrameGoToTheCommandsWhereTheFrameNeedsTheirPlace) {
  const int right = LeftOf("Picture1") + 720;
  for (const char* name : {"Frame1", "Frame2", "Frame3"}) {
    EXPECT_LT(LeftOf(name), right) << name;
  }
  Resize(ScaledScreen);
  EXPECT_TRUE(IsWhole("Picture1"));
  EXPECT_LT(TopOf("Frame1"), TopOf("Frame2"));
  EXPECT_EQ(TopOf("Frame2"), TopOf("Frame3"));
  EXPECT_EQ(LeftOf("Frame1"), LeftOf("Frame2"));
  for (const char* name : {"Frame1", "Frame2", "Frame3"}) {
    EXPECT_GE(LeftOf(name), right) << name;
    EXPECT_TRUE(IsWhole(name)) << name;
  }
  Resize(SmallScreen);
  for (const char* name : {"Frame1", "Frame2", "Frame3"}) {
    EXPECT_LT(LeftOf(name), right) << name;
    EXPECT_TRUE(IsWhole(name)) << name;
  }
}

TEST_F(Layout, GroupsBesideTheFrameStandBelowThePaletteFromTheStart) {
  frmTest window;
  window.resize(ScaledScreen);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  QCoreApplication::processEvents();
  ExpectDownwards(window, {"List_Subtitles", "Label1_0", "Frame1", "Frame2"});
  Resize(ScaledScreen);
  ExpectDownwards(Window, {"List_Subtitles", "Label1_0", "Frame1", "Frame2"});
}

TEST_F(Layout, OneGroupTakesTheRoomThatTheOthersLeave) {
  const auto isAsSmall = [this](const char* name) {
    const auto& group = Control<QWidget>(name);
    return group.width() == group.sizeHint().width();
  };
  EXPECT_TRUE(isAsSmall("Frame2"));
  EXPECT_TRUE(isAsSmall("Frame3"));
  EXPECT_FALSE(isAsSmall("Frame1"));
  Resize(ScaledScreen);
  EXPECT_TRUE(isAsSmall("Frame2"));
  EXPECT_FALSE(isAsSmall("Frame3"));
}

TEST_F(Layout, MovedGroupKeepsTheFocus) {
  Window.activateWindow();
  QCoreApplication::processEvents();
  Control<QWidget>("Text_GraphFile").setFocus();
  Resize(ScaledScreen);
  EXPECT_EQ(QApplication::focusWidget(), &Control<QWidget>("Text_GraphFile"));
}

TEST_F(Layout, SmallestWindowIsSmallEnough) {
  EXPECT_LE(Window.minimumSizeHint().width(), SmallestWindow.width());
  EXPECT_LE(Window.minimumSizeHint().height(), SmallestWindow.height());
}

TEST_F(Layout, SmallestWindowShowsSomethingOfTheFrame) {
  Resize(Window.minimumSizeHint());
  const QWidget& view = *Control<QWidget>("Picture1").parentWidget()->parentWidget();
  EXPECT_GE(view.width(), 10 * view.fontMetrics().height());
  EXPECT_GE(view.height(), 10 * view.fontMetrics().height());
}

TEST_F(Layout, SmallestWindowIsSmallEnoughInALargeFont) {
  const ApplicationFont font(12);
  const frmTest window;
  EXPECT_LE(window.minimumSizeHint().width(), SmallestWindow.width());
  EXPECT_LE(window.minimumSizeHint().height(), SmallestWindow.height());
}

TEST_F(Layout, RowsAreAsHighAsTheirPicturesInAnyFont) {
  for (const int points : {6, 24}) {
    const ApplicationFont font(points);
    const frmTest window;
    const QHeaderView& rows = *window.findChild<QTableView*>("List_Subtitles")->verticalHeader();
    EXPECT_EQ(rows.defaultSectionSize(), 24) << points;
  }
}

TEST_F(Layout, FrameScrollsWhereRoomIsShort) {
  Resize(SmallestWindow);
  EXPECT_FALSE(IsWhole("Picture1"));
  EXPECT_EQ(Control<QWidget>("Picture1").size(), QSize(720, 576));
  const auto& commands = Control<QWidget>("Splitter_List");
  EXPECT_GE(commands.width(), commands.minimumSizeHint().width()) << "they keep what they need";
  EXPECT_TRUE(IsWhole("Command_LoadSup"));
  // The lower middle is what stays in sight.
  EXPECT_TRUE(Control<QWidget>("Picture1").visibleRegion().contains(QPoint(360, 570)));
  Resize(SmallScreen);
  EXPECT_TRUE(IsWhole("Picture1"));
}

TEST_F(Layout, WorkBeginsAtLoadSupAlsoWhereTheFrameScrolls) {
  frmTest window;
  window.resize(SmallestWindow);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  EXPECT_EQ(window.focusWidget()->objectName(), "Command_LoadSup");
}

TEST_F(Layout, GroupsStandBelowTheFrameWhereNothingOfItIsHiddenBySoDoing) {
  bool wasBelow = false;
  bool wasBeside = false;
  const auto look = [&](const QSize& size) {
    Resize(size);
    const bool isBelow = LeftOf("Frame1") < LeftOf("Picture1") + 100;
    (isBelow ? wasBelow : wasBeside) = true;
    if (isBelow) {
      EXPECT_TRUE(IsWhole("Picture1")) << size.width() << ", " << size.height();
      EXPECT_TRUE(IsWhole("Frame1")) << size.width() << ", " << size.height();
      EXPECT_TRUE(IsWhole("Command_SetAll")) << size.width() << ", " << size.height();
    }
  };
  for (int height = 660; height < 760; height += 4) {
    look({SmallScreen.width(), height});
  }
  EXPECT_TRUE(wasBelow && wasBeside);
  wasBelow = wasBeside = false;
  for (int width = 960; width < 1360; width += 4) {
    look({width, SmallScreen.height()});
  }
  EXPECT_TRUE(wasBelow && wasBeside);
}

TEST_F(Layout, GroupsStandBelowTheFrameWhereThereIsRoomForTheStripAboveItToo) {
  // The lowest one with room for the groups, but not for the strip.
  for (int height = 640; LeftOf("Frame1") > LeftOf("Picture1") + 100 || height < 660; height += 2) {
    Resize({SmallScreen.width(), height});
  }
  Dialogs.ExpectCancelled(DialogKind::OpenFile);
  Click("Command_LoadSup");
  QCoreApplication::processEvents();
  ASSERT_TRUE(Control<QWidget>("Strip_Closed").isVisible());
  EXPECT_TRUE(IsWhole("Picture1"));
  bool wasBelow = false;
  bool wasBeside = false;
  for (int height = 660; height < 800; height += 4) {
    Resize({SmallScreen.width(), height});
    const bool isBelow = LeftOf("Frame1") < LeftOf("Picture1") + 100;
    (isBelow ? wasBelow : wasBeside) = true;
    if (isBelow) {
      EXPECT_TRUE(IsWhole("Picture1")) << height;
      EXPECT_TRUE(IsWhole("Frame1")) << height;
    }
  }
  EXPECT_TRUE(wasBelow && wasBeside);
  const auto& group = Control<QWidget>("Frame1");
  EXPECT_EQ(group.height(), group.sizeHint().height()) << "what room is left is below";
}

TEST_F(Layout, FrameThatIsWholeLeavesNoRoomForAScrollBar) {
  Resize(ScaledScreen);
  const QWidget& view = *Control<QWidget>("Picture1").parentWidget()->parentWidget();
  bool wasCut = false;
  bool wasWhole = false;
  for (int height = ScaledScreen.height() - 80; height <= ScaledScreen.height(); ++height) {
    Resize({ScaledScreen.width(), height});
    const bool isWhole = IsWhole("Picture1");
    (isWhole ? wasWhole : wasCut) = true;
    EXPECT_EQ(view.width() == 720, isWhole) << height;
    EXPECT_EQ(Control<QWidget>("Picture1").visibleRegion().boundingRect().width(), 720) << height;
  }
  EXPECT_TRUE(wasWhole && wasCut);
}

TEST_F(Layout, FrameThatIsTooWideIsSeenInItsWholeHeight) {
  Resize({SmallestWindow.width(), SmallScreen.height()});
  const QWidget& view = *Control<QWidget>("Picture1").parentWidget()->parentWidget();
  ASSERT_LT(view.width(), 720);
  const int enough = Window.width() + 720 - view.width();
  for (int width = enough - 3; width <= enough + 3; ++width) {
    Resize({width, SmallScreen.height()});
    const bool isWhole = IsWhole("Picture1");
    EXPECT_EQ(isWhole, width >= enough) << width;
    EXPECT_EQ(view.height() == 576, isWhole) << width;
    EXPECT_EQ(Control<QWidget>("Picture1").visibleRegion().boundingRect().height(), 576) << width;
  }
}

TEST_F(Layout, ControlWithTheFocusComesIntoSight) {
  const ApplicationFont font(12);
  Resize(SmallestWindow);
  Window.activateWindow();
  QCoreApplication::processEvents();
  for (const char* name : {"Command_SaveSecond", "Command_LoadSup", "Option_720x576", "Command_SetAll",
                           "Command_GetGraphics", "Label1_0", "Command_LoadSecond", "Check_SavePics"}) {
    Control<QWidget>(name).setFocus();
    QCoreApplication::processEvents();
    EXPECT_TRUE(IsWhole(name)) << name;
  }
}

TEST_F(Layout, EveryCaptionHasRoom) {
  for (QWidget* control : VisibleControls(Window)) {
    const bool hasCaption = qobject_cast<QAbstractButton*>(control) != nullptr ||
                            qobject_cast<QLabel*>(control) != nullptr ||
                            qobject_cast<QComboBox*>(control) != nullptr;
    if (hasCaption && !control->objectName().startsWith("qt_")) {
      EXPECT_GE(control->width(), control->minimumSizeHint().width()) << control->objectName().toStdString();
      EXPECT_GE(control->height(), control->minimumSizeHint().height())
          << control->objectName().toStdString();
    }
    if (qobject_cast<QAbstractButton*>(control) != nullptr && control->objectName().contains('_')) {
      EXPECT_GE(control->width(), control->sizeHint().width()) << control->objectName().toStdString();
      EXPECT_GE(control->height(), control->sizeHint().height()) << control->objectName().toStdString();
    }
  }
}

TEST_F(Layout, DetailFieldsShowTheirTextsWhole) {
  Load(Write("long.sup", FourCodes(PacketBuilder().Time(120 * 3600 * Second).Delay(30000))));
  for (const char* name :
       {"Text_SubNum", "Text_StartTime", "Text_Dur", "Text_XPos", "Text_YPos", "Text_Width", "Text_Height"}) {
    const auto& field = Control<QLineEdit>(name);
    EXPECT_GE(field.contentsRect().width(), field.fontMetrics().horizontalAdvance(field.text()) + 4) << name;
  }
}

TEST_F(Layout, ControlsDoNotOverlap) {
  ExpectApart(Window);
}

TEST_F(Layout, ControlsOfAReviewDoNotOverlapAndStandInTheirOrder) {
  const QString second = Write("second.sup", ThreeSubtitles());
  Dialogs.ExpectOpen(second);
  Dialogs.ExpectMessageWith({"Found secondary Subtitles: "});
  Dialogs.ExpectInput("0");
  Click("Command_LoadSecond");
  Dialogs.Verify();
  Click("Check_MergedCodes");
  QCoreApplication::processEvents();
  ExpectApart(Window);
  const auto inOrder = [this](std::initializer_list<const char*> names) {
    int left = -1;
    for (const char* name : names) {
      EXPECT_GE(LeftOf(name), left) << name;
      left = LeftOf(name) + Control<QWidget>(name).width();
    }
  };
  inOrder({"Spin_YOffset", "Slider_YOffset", "Command_SuggestOffset", "Check_MergedCodes"});
  EXPECT_GT(Control<QWidget>("Slider_YOffset").width(), Control<QWidget>("Spin_YOffset").width())
      << "what room is left is the slider's";
  inOrder({"Option_Pairs", "Option_Split", "Spin_Join"});
}

TEST_F(Layout, SidesEndTogetherAndAsFarFromTheEdges) {
  const QWidget& right = Control<QWidget>("Splitter_List");
  const QWidget& left = *Control<QWidget>("Frame1").parentWidget()->parentWidget();
  ASSERT_EQ(left.parentWidget(), right.parentWidget());
  EXPECT_EQ(right.geometry().top(), left.geometry().top());
  EXPECT_EQ(right.geometry().bottom(), left.geometry().bottom());
  const int edge = left.geometry().left();
  EXPECT_EQ(left.geometry().top(), edge);
  EXPECT_EQ(right.geometry().right(), right.parentWidget()->rect().right() - edge);
  EXPECT_EQ(right.geometry().left() - left.geometry().right() - 1, edge);
}

TEST_F(Layout, FrameStandsLeftOfTheCommands) {
  for (const char* name : {"Command_LoadSup", "Command_Next", "Label1_0"}) {
    EXPECT_GE(LeftOf(name), LeftOf("Picture1") + 720) << name;
  }
}

TEST_F(Layout, GroupsStandInTheOrderOfWork) {
  int above = -1;
  for (const char* name :
       {"Command_LoadSup", "Command_Next", "Text_StartTime", "Label1_0", "ImageCombo1", "Combo1_0"}) {
    const int top = TopOf(name);
    EXPECT_GT(top, above) << name;
    above = top;
  }
}

TEST_F(Layout, SwatchesStandInOneRow) {
  const auto& first = Control<QWidget>("Label1_0");
  for (int i = 1; i < 16; ++i) {
    const auto& swatch = Control<QWidget>(Element("Label1", i));
    EXPECT_EQ(swatch.y(), first.y());
    EXPECT_GT(swatch.x(), Control<QWidget>(Element("Label1", i - 1)).x());
  }
}

TEST_F(Layout, ButtonsBeginAndEndWithTheFieldsTheyStandAt) {
  const auto rightOf = [this](const char* name) { return LeftOf(name) + Control<QWidget>(name).width(); };
  const auto labels = Window.findChildren<QLabel*>();
  const auto label = std::find_if(labels.begin(), labels.end(),
                                  [](const QLabel* one) { return one->text() == "Sup File:"; });
  ASSERT_NE(label, labels.end());
  EXPECT_EQ(LeftOf("Command_LoadSup"), (*label)->mapTo(&Window, QPoint()).x());
  EXPECT_EQ(rightOf("Command_SavePalette"), rightOf("Text1"));
  EXPECT_EQ(LeftOf("Text_SubNum"), LeftOf("Text_StartTime"));
  EXPECT_EQ(rightOf("Command_Reload"), rightOf("Check_SavePics"));
  EXPECT_EQ(rightOf("Command_Reload"), rightOf("Text1"));
}

TEST_F(Layout, LargerWindowKeepsEveryControlInside) {
  Window.resize(1900, 1000);
  QCoreApplication::processEvents();
  for (const QWidget* control : VisibleControls(Window)) {
    EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()))
        << control->objectName().toStdString();
  }
  EXPECT_EQ(Control<QWidget>("Picture1").size(), QSize(720, 576));
}

}  // namespace
}  // namespace quillmark::test
