#include <memory>

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScreen>
#include <QStyle>
#include <QStyleFactory>
#include <QTest>

#include "app/PaletteSwatch.h"
#include "tests/app/Pointer.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

class Controls : public WindowTest {
 protected:
  /// A label or a group's title.
  [[nodiscard]] bool ShowsLabel(const QString& text) const {
    for (const QLabel* label : Window.findChildren<QLabel*>()) {
      if (label->text() == text && label->isVisible()) {
        return true;
      }
    }
    for (const QGroupBox* group : Window.findChildren<QGroupBox*>()) {
      if (group->title() == text) {
        return true;
      }
    }
    return false;
  }

  [[nodiscard]] static QString AccessibleName(QWidget& control) {
    QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&control);
    return seen == nullptr ? QString() : seen->text(QAccessible::Name);
  }
};

struct Captioned {
  const char* Name;
  const char* Caption;
};

TEST_F(Controls, WindowIsNamedAndCaptioned) {
  EXPECT_EQ(Window.objectName(), "frmTest");
  EXPECT_EQ(Window.windowTitle(), "Quillmark");
}

TEST_F(Controls, PushButtonsCarryTheirCaptions) {
  static constexpr Captioned Buttons[] = {
      {"Command_LoadSup", "Load SUP"},
      {"Command_SaveSup", "Save SUP"},
      {"Command_LoadPalette", "Load Palette"},
      {"Command_SavePalette", "Save Palette"},
      {"Command_Reload", "Reset"},
      {"Command_Prev", "Prev"},
      {"Command_Next", "Next"},
      {"Command_GoTo", "GoTo"},
      {"Command_SetActual", "Set for actual"},
      {"Command_SetAll", "Set for all"},
      {"Command_LoadSecond", "Load/Merge secondary SUP"},
      {"Command_SaveSecond", "Save merged (prim. + sec.) SUP"},
      {"Command_GetGraphics", "Load Background graphic form file"},
  };
  for (const Captioned& button : Buttons) {
    EXPECT_EQ(Control<QPushButton>(button.Name).text(), button.Caption);
    EXPECT_TRUE(Control<QPushButton>(button.Name).isVisible()) << button.Name;
  }
}

TEST_F(Controls, OptionsAndCheckBoxCarryTheirCaptions) {
  EXPECT_EQ(Control<QCheckBox>("Check_SavePics").text(), "SavePics");
  EXPECT_EQ(Control<QRadioButton>("Option_File").text(), "Graph. File");
  EXPECT_EQ(Control<QRadioButton>("Option_Checker").text(), "Checker");
  EXPECT_EQ(Control<QRadioButton>("Option_720x480").text(), "720x480");
  EXPECT_EQ(Control<QRadioButton>("Option_720x576").text(), "720x576");
}

TEST_F(Controls, FramesAreTitledAndHoldTheirControls) {
  EXPECT_EQ(Control<QGroupBox>("Frame1").title(), "Background");
  EXPECT_EQ(Control<QGroupBox>("Frame2").title(), "Size");
  EXPECT_EQ(Control<QGroupBox>("Frame3").title(), "2nd");
  for (const char* name : {"Option_File", "Option_Checker", "Text_GraphFile", "Command_GetGraphics"}) {
    EXPECT_TRUE(Control<QGroupBox>("Frame1").isAncestorOf(&Control<QWidget>(name))) << name;
  }
  for (const char* name : {"Option_720x480", "Option_720x576"}) {
    EXPECT_TRUE(Control<QGroupBox>("Frame2").isAncestorOf(&Control<QWidget>(name))) << name;
  }
  for (const char* name : {"Command_LoadSecond", "Command_SaveSecond"}) {
    EXPECT_TRUE(Control<QGroupBox>("Frame3").isAncestorOf(&Control<QWidget>(name))) << name;
  }
}

TEST_F(Controls, FieldsAndListsAreLabelled) {
  for (const char* text : {"Sup File:", "SubTitle #", "StartTime", "Duration (sec)", "Position (X,Y)",
                           "Size (W,H)", "Colors", "Opacities", "Palette"}) {
    EXPECT_TRUE(ShowsLabel(text)) << text;
  }
}

TEST_F(Controls, TextFieldsExist) {
  for (const char* name : {"Text1", "Text_SubNum", "Text_StartTime", "Text_Dur", "Text_XPos", "Text_YPos",
                           "Text_Width", "Text_Height", "Text_GraphFile"}) {
    EXPECT_TRUE(Control<QLineEdit>(name).isVisible()) << name;
  }
}

TEST_F(Controls, SwatchesExplainTheirClick) {
  for (int i = 0; i < 16; ++i) {
    EXPECT_EQ(Control<QAbstractButton>(Element("Label1", i)).toolTip(), "Click color to edit");
    EXPECT_TRUE(Control<QAbstractButton>(Element("Label1", i)).text().isEmpty());
  }
}

TEST_F(Controls, SwatchPicturesAndTheirListExist) {
  for (int i = 0; i < 16; ++i) {
    EXPECT_NE(Window.findChild<QObject*>(Element("Picture2", i)), nullptr) << i;
  }
  EXPECT_NE(Window.findChild<QObject*>("ImageList1"), nullptr);
}

TEST_F(Controls, ColourListsHoldSixteenKeyedEntries) {
  for (const char* name : {"ImageCombo1", "ImageCombo2", "ImageCombo3", "ImageCombo4"}) {
    const auto& list = Control<QComboBox>(name);
    ASSERT_EQ(list.count(), 16) << name;
    for (int i = 0; i < 16; ++i) {
      EXPECT_EQ(list.itemText(i), QString::number(i, 16).toUpper());
      EXPECT_EQ(list.itemData(i).toString(), "test" + QString::number(i));
    }
  }
}

TEST_F(Controls, OpacityListsHoldSixteenDigits) {
  for (int code = 0; code < 4; ++code) {
    const auto& list = Control<QComboBox>(Element("Combo1", code));
    ASSERT_EQ(list.count(), 16);
    for (int i = 0; i < 16; ++i) {
      EXPECT_EQ(list.itemText(i), QString::number(i, 16).toUpper());
    }
  }
}

TEST_F(Controls, ListTooltipsNameTheirCode) {
  static constexpr const char* Codes[] = {"background", "pattern", "emphasis 1", "emphasis 2"};
  for (int code = 0; code < 4; ++code) {
    const QString colours = Control<QWidget>("ImageCombo" + QString::number(code + 1)).toolTip();
    const QString opacities = Control<QWidget>(Element("Combo1", code)).toolTip();
    EXPECT_TRUE(colours.contains(Codes[code], Qt::CaseInsensitive)) << colours.toStdString();
    EXPECT_TRUE(opacities.contains(Codes[code], Qt::CaseInsensitive)) << opacities.toStdString();
  }
}

TEST_F(Controls, EveryControlThatTakesTheFocusHasAnAccessibleName) {
  for (QWidget* control : Window.findChildren<QWidget*>()) {
    if (control->focusPolicy() != Qt::NoFocus && control->isVisible() && !control->objectName().isEmpty() &&
        !control->objectName().startsWith("qt_")) {
      EXPECT_FALSE(AccessibleName(*control).isEmpty()) << control->objectName().toStdString();
    }
  }
}

TEST_F(Controls, ListsTellTheirNamesAndTheirEntriesWithColours) {
  LoadStream(ThreeSubtitles());
  QAccessibleInterface* colours = QAccessible::queryAccessibleInterface(&Control<QComboBox>("ImageCombo2"));
  EXPECT_EQ(colours->text(QAccessible::Name), "Colour of the pattern");
  EXPECT_EQ(colours->role(), QAccessible::ComboBox);
  EXPECT_EQ(colours->text(QAccessible::Value), "1, cyan");
  Choose("ImageCombo2", "4");
  EXPECT_EQ(colours->text(QAccessible::Value), "4, yellow");
  QAccessibleInterface* opacities = QAccessible::queryAccessibleInterface(&Control<QComboBox>("Combo1_1"));
  EXPECT_EQ(opacities->text(QAccessible::Name), "Opacity of the pattern");
  EXPECT_EQ(opacities->text(QAccessible::Value), "F");
}

TEST_F(Controls, EntriesOfAnOpenListTellTheirColours) {
  LoadStream(ThreeSubtitles());
  auto& list = Control<QComboBox>("ImageCombo2");
  QAccessibleInterface* seen = QAccessible::queryAccessibleInterface(&list);
  ASSERT_EQ(seen->childCount(), 1);
  EXPECT_FALSE(seen->state().expanded);
  seen->actionInterface()->doAction(QAccessibleActionInterface::showMenuAction());
  EXPECT_TRUE(seen->state().expanded);
  QAccessibleInterface* entries = seen->child(0);
  ASSERT_EQ(entries->childCount(), 16);
  EXPECT_EQ(entries->child(4)->text(QAccessible::Name), "4, yellow");
  EXPECT_EQ(entries->child(12)->text(QAccessible::Name), "C, grey");
  EXPECT_EQ(seen->indexOfChild(entries), 0);
  EXPECT_EQ(seen->indexOfChild(entries->child(4)), -1);
  seen->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_FALSE(seen->state().expanded);
}

TEST_F(Controls, EntriesFollowThePalette) {
  LoadStream(ThreeSubtitles());
  Dialogs.ExpectColour(QColor(250, 10, 10));
  Click("Label1_1");
  QAccessibleInterface* colours = QAccessible::queryAccessibleInterface(&Control<QComboBox>("ImageCombo2"));
  EXPECT_EQ(colours->text(QAccessible::Value), "1, red");
}

TEST_F(Controls, SwatchesAreNamedByTheDigitsOfTheLists) {
  EXPECT_EQ(AccessibleName(Control<QWidget>("Label1_4")), "Palette entry 4, yellow");
  EXPECT_EQ(AccessibleName(Control<QWidget>("Label1_10")), "Palette entry A, light blue");
  EXPECT_EQ(AccessibleName(Control<QWidget>("Label1_15")), "Palette entry F, black");
}

/// Not all styles have buttons painted anew where the pointer comes.
TEST(Swatch, MarksItsEdgeWhileThePointerIsOverItInAnyStyle) {
  const std::unique_ptr<QStyle> style(QStyleFactory::create("Windows"));
  QWidget window;
  PaletteSwatch swatch(0, 0xFFFFFF, &window);
  swatch.setStyle(style.get());
  swatch.setGeometry(20, 20, 30, 30);
  swatch.setFocusPolicy(Qt::NoFocus);
  window.resize(100, 100);
  window.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
  const auto edge = [&window] {
    // The event of the pointer, and the painting that it asks for.
    for (int i = 0; i < 3; ++i) {
      QCoreApplication::processEvents();
    }
    return window.screen()->grabWindow(window.winId(), 20, 20, 1, 1).toImage().pixelColor(0, 0);
  };
  const Pointer pointer;
  pointer.GoTo(window, {5, 5});
  EXPECT_EQ(edge(), window.palette().color(QPalette::WindowText));
  pointer.GoTo(window, {35, 35});
  EXPECT_EQ(edge(), window.palette().color(QPalette::Highlight));
  pointer.GoTo(window, {5, 5});
  EXPECT_EQ(edge(), window.palette().color(QPalette::WindowText));
}

TEST_F(Controls, PictureIsAGraphicThatTellsItsSubtitle) {
  QAccessibleInterface* picture = QAccessible::queryAccessibleInterface(&Control<QWidget>("Picture1"));
  EXPECT_EQ(picture->role(), QAccessible::Graphic);
  EXPECT_EQ(picture->text(QAccessible::Name), "Subtitle picture");
  EXPECT_EQ(picture->text(QAccessible::Description), "No subtitle is shown");
  LoadStream(ThreeSubtitles());
  Click("Command_Next");
  EXPECT_EQ(picture->text(QAccessible::Description), "Subtitle 2, start 00:00:05.00, duration 1.12 seconds");
  ASSERT_NE(picture->imageInterface(), nullptr);
  EXPECT_EQ(picture->imageInterface()->imageDescription(), picture->text(QAccessible::Description));
  EXPECT_EQ(picture->imageInterface()->imageSize(), QSize(720, 576));
}

TEST_F(Controls, PictureTellsThatASubtitleCannotBeShown) {
  LoadStream(InvalidSecond());
  Dialogs.ExpectMessage("Error converting subtitle!");
  Click("Command_Next");
  QAccessibleInterface* picture = QAccessible::queryAccessibleInterface(&Control<QWidget>("Picture1"));
  EXPECT_EQ(picture->text(QAccessible::Description), "The subtitle cannot be shown");
}

TEST_F(Controls, SwatchNameTellsNumberAndColour) {
  LoadStream(ThreeSubtitles());
  auto& swatch = Control<QWidget>("Label1_7");
  const QString before = AccessibleName(swatch);
  EXPECT_TRUE(before.contains('7')) << before.toStdString();
  Dialogs.ExpectColour(QColor(10, 20, 30));
  Click("Label1_7");
  EXPECT_TRUE(AccessibleName(swatch).contains('7'));
  EXPECT_NE(AccessibleName(swatch), before);
}

}  // namespace
}  // namespace quillmark::test
