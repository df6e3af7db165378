#include <algorithm>

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

#include "app/PaletteSwatch.h"
#include "tests/app/Contrast.h"
#include "tests/app/Streams.h"
#include "tests/app/WindowTest.h"

namespace quillmark::test {
namespace {

/// The most that any pixel of the image differs from `ground`.
double BestContrast(const QImage& image, const QColor& ground) {
  double best = 1;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      best = std::max(best, Contrast(image.pixelColor(x, y), ground));
    }
  }
  return best;
}

QPalette LightTheme() {
  return {QColor(239, 239, 239), QColor(239, 239, 239)};
}
/// Text, base and the shades follow from the two colours; what empty fields say stays black, as some desktops
/// leave it.
QPalette DarkTheme() {
  QPalette theme(QColor(45, 45, 45), QColor(45, 45, 45));
  theme.setColor(QPalette::PlaceholderText, QColor(0, 0, 0, 128));
  return theme;
}

/// The window in a light and in a dark theme, both set while it is open.
class Themes : public WindowTest, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    QApplication::setPalette(GetParam() ? DarkTheme() : LightTheme());
    QCoreApplication::processEvents();
    LoadStream(ThreeSubtitles());
  }
  void TearDown() override { QApplication::setPalette(QPalette()); }

  [[nodiscard]] QColor Ground() const { return Window.palette().color(QPalette::Window); }
};

TEST_P(Themes, LabelsAndHeadingsAreReadable) {
  for (QLabel* label : Window.findChildren<QLabel*>()) {
    if (label->isVisible() && !label->text().isEmpty()) {
      EXPECT_GE(BestContrast(label->grab().toImage(), Ground()), 4.5) << label->text().toStdString();
    }
  }
}

TEST_P(Themes, FieldsThatCannotBeEditedLookSo) {
  for (const char* name : {"Text1", "Text_SubNum", "Text_StartTime", "Text_Dur", "Text_XPos", "Text_YPos",
                           "Text_Width", "Text_Height"}) {
    const QImage field = Control<QLineEdit>(name).grab().toImage();
    EXPECT_EQ(field.pixelColor(0, 0), Ground()) << name;
    EXPECT_EQ(field.pixelColor(field.width() - 1, field.height() - 1), Ground()) << name;
    EXPECT_GE(BestContrast(field, Ground()), 4.5) << name;
  }
  EXPECT_NE(Control<QLineEdit>("Text_GraphFile").grab().toImage().pixelColor(4, 4), Ground());
}

TEST_P(Themes, HintsOfEmptyFieldsAreReadable) {
  auto& filter = Control<QLineEdit>("Text_Filter");
  ASSERT_TRUE(filter.text().isEmpty());
  const QColor base = filter.palette().color(QPalette::Base);
  // But for the frame around it, which stands out by itself.
  const QImage inside = filter.grab().toImage().copy(filter.rect().adjusted(4, 4, -4, -4));
  EXPECT_GE(BestContrast(inside, base), 3.0);
}

TEST_P(Themes, SwatchesHaveAnEdgeThatIsSeen) {
  for (int i = 0; i < 16; ++i) {
    const QImage swatch = Control<QWidget>(Element("Label1", i)).grab().toImage();
    EXPECT_GE(Contrast(swatch.pixelColor(0, swatch.height() / 2), Ground()), 4.5) << i;
  }
}

TEST_P(Themes, SwatchesBearTheirDigits) {
  QImage other;
  for (int i = 0; i < 16; ++i) {
    const auto& swatch = Control<QWidget>(Element("Label1", i));
    const QImage shown = Control<QWidget>(Element("Label1", i)).grab().toImage();
    const QImage inside = shown.copy(shown.rect().adjusted(2, 2, -2, -2));
    EXPECT_GE(BestContrast(inside, SwatchColour(i)), 4.0) << i;
    EXPECT_GE(swatch.width(), swatch.fontMetrics().height()) << i;
    EXPECT_EQ(swatch.width(), swatch.height());
    EXPECT_NE(inside, other) << i;  // 13 to 15 are of one colour: their digits tell them apart
    other = inside;
  }
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, Themes, testing::Bool());

TEST(PaletteSwatch, DigitIsReadableOnEveryColour) {
  for (unsigned red = 0; red < 256; red += 15) {
    for (unsigned green = 0; green < 256; green += 15) {
      for (unsigned blue = 0; blue < 256; blue += 15) {
        const Rgb digit = DigitColourOn(MakeRgb(red, green, blue));
        const QColor ink = digit == 0 ? Qt::black : Qt::white;
        ASSERT_GE(
            Contrast(ink, QColor(static_cast<int>(red), static_cast<int>(green), static_cast<int>(blue))),
            4.4)
            << red << ' ' << green << ' ' << blue;
      }
    }
  }
}

}  // namespace
}  // namespace quillmark::test
