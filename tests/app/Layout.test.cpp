#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// What a screen of 1366x768 leaves of it: a title bar and borders around the window.
constexpr QSize SmallScreen(1366 - 8, 768 - 40);

class Layout : public WindowTest {
 protected:
  void SetUp() override {
    Window.resize(SmallScreen);
    LoadStream(ThreeSubtitles());
    Click("Option_720x576");
    QCoreApplication::processEvents();
  }
  [[nodiscard]] std::vector<QWidget*> VisibleControls() const {
    std::vector<QWidget*> controls;
    for (QWidget* control : Window.findChildren<QWidget*>()) {
      if (control->isVisible() && !control->isWindow()) {
        controls.push_back(control);
      }
    }
    return controls;
  }
};

TEST_F(Layout, WindowFitsASmallScreen) {
  EXPECT_LE(Window.minimumSizeHint().width(), SmallScreen.width());
  EXPECT_LE(Window.minimumSizeHint().height(), SmallScreen.height());
  EXPECT_LE(Window.width(), SmallScreen.width());
  EXPECT_LE(Window.height(), SmallScreen.height());
}

TEST_F(Layout, EveryControlLiesInsideItsParent) {
  for (const QWidget* control : VisibleControls()) {
    EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()))
        << control->metaObject()->className() << ' ' << control->objectName().toStdString();
    EXPECT_FALSE(control->size().isEmpty()) << control->objectName().toStdString();
  }
}

TEST_F(Layout, FrameIsWhole) {
  const auto& picture = Control<QWidget>("Picture1");
  EXPECT_EQ(picture.size(), QSize(720, 576));
  EXPECT_EQ(picture.visibleRegion(), QRegion(picture.rect()));
}

TEST_F(Layout, EveryCaptionHasRoom) {
  for (QWidget* control : VisibleControls()) {
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
  const std::vector<QWidget*> controls = VisibleControls();
  for (const QWidget* one : controls) {
    for (const QWidget* other : controls) {
      if (one < other && one->parentWidget() == other->parentWidget()) {
        EXPECT_FALSE(one->geometry().intersects(other->geometry()))
            << one->objectName().toStdString() << " and " << other->objectName().toStdString();
      }
    }
  }
}

TEST_F(Layout, FrameStandsLeftOfEveryGroup) {
  const auto& picture = Control<QWidget>("Picture1");
  const int right = picture.mapTo(&Window, QPoint(picture.width(), 0)).x();
  for (const char* name : {"Command_LoadSup", "Command_Next", "Label1_0", "Frame1", "Frame2", "Frame3"}) {
    EXPECT_GE(Control<QWidget>(name).mapTo(&Window, QPoint()).x(), right) << name;
  }
}

TEST_F(Layout, GroupsStandInTheOrderOfWork) {
  int above = -1;
  for (const char* name :
       {"Command_LoadSup", "Command_Next", "Label1_0", "ImageCombo1", "Frame1", "Frame3"}) {
    const int top = Control<QWidget>(name).mapTo(&Window, QPoint()).y();
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

TEST_F(Layout, LargerWindowKeepsEveryControlInside) {
  Window.resize(1900, 1000);
  QCoreApplication::processEvents();
  for (const QWidget* control : VisibleControls()) {
    EXPECT_TRUE(control->parentWidget()->rect().contains(control->geometry()))
        << control->objectName().toStdString();
  }
  EXPECT_EQ(Control<QWidget>("Picture1").size(), QSize(720, 576));
}

}  // namespace
}  // namespace quillmark::test
