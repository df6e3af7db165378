#include "app/FrameGuides.h"

#include <set>

#include <QAction>
#include <QCoreApplication>
#include <QFontMetricsF>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>

#include "app/DisplayFrame.h"
#include "tests/app/MergeTest.h"
#include "tests/app/Streams.h"

namespace quillmark::test {
namespace {

TEST(SafeArea, Is90PercentForActionAnd80ForTitles) {
  EXPECT_EQ(SafeArea(90, 576), QRectF(36, 29, 648, 518));
  EXPECT_EQ(SafeArea(80, 576), QRectF(72, 58, 576, 461));
  EXPECT_EQ(SafeArea(80, 480), QRectF(72, 48, 576, 384));
}

TEST(FilmOn, LetterboxHasItInTheMiddleThreeQuartersOfTheLines) {
  EXPECT_EQ(FilmOn(DisplayMode::Letterbox, 576).OnScreen, QRectF(0, 72, 720, 432));
  EXPECT_EQ(FilmOn(DisplayMode::Letterbox, 480).OnScreen, QRectF(0, 60, 720, 360));
  EXPECT_EQ(FilmOn(DisplayMode::Letterbox, 576).OfFilm, QRectF(0, 0, 720, 576));
}

TEST(FilmOn, PanAndScanShowsTheMiddleThreeQuartersOfItsColumns) {
  EXPECT_EQ(FilmOn(DisplayMode::PanAndScan, 576).OnScreen, QRectF(0, 0, 720, 576));
  EXPECT_EQ(FilmOn(DisplayMode::PanAndScan, 576).OfFilm, QRectF(90, 0, 540, 576));
}

/// Guides on a white frame, of one screen pixel a frame pixel where nothing else is said.
class PaintedGuides {
 public:
  explicit PaintedGuides(const FrameGuides& guides, const QRect& inSight = QRect(0, 0, 720, 576),
                         QSize onScreen = QSize(720, 576))
      : picture_(720, 576, QImage::Format_RGB32) {
    picture_.fill(Qt::white);
    QPainter painter(&picture_);
    LineHeight = QFontMetricsF(painter.font()).height();
    PaintGuides(painter, guides, {.Lines = 576, .OnScreen = onScreen, .Ratio = 1, .InSight = inSight});
  }
  /// White is 255; what a label's plate shades, 79.
  [[nodiscard]] int At(double x, double y) const {
    return qGray(picture_.pixel(static_cast<int>(x), static_cast<int>(y)));
  }
  [[nodiscard]] bool IsPlate(double x, double y) const { return At(x, y) == 79; }

  double LineHeight = 0;

 private:
  QImage picture_;
};

TEST(PaintGuides, AreasLabelStandsAboveItsOutline) {
  FrameGuides guides;
  guides.Area = true;
  guides.Subtitles = {QRect(100, 400, 200, 20)};
  const PaintedGuides painted(guides);
  const double top = 400 - painted.LineHeight - 3;
  EXPECT_TRUE(painted.IsPlate(100, top + 2));
  EXPECT_TRUE(painted.IsPlate(100, 400 - 3 - 2));
  EXPECT_EQ(painted.At(99, top + 2), 255);
  EXPECT_EQ(painted.At(100, top - 2), 255);
  // The text does not touch the plate's edge.
  for (double y = top + 1; y < 400 - 3 - 1; ++y) {
    EXPECT_TRUE(painted.IsPlate(100, y) && painted.IsPlate(101, y)) << y;
  }
}

TEST(PaintGuides, LabelsStayInSight) {
  FrameGuides guides;
  guides.Area = true;
  guides.Subtitles = {QRect(700, 0, 10, 100)};  // with no room above it or at its right
  const PaintedGuides painted(guides);
  EXPECT_TRUE(painted.IsPlate(719, 1));
  EXPECT_TRUE(painted.IsPlate(690, 0));
  EXPECT_TRUE(painted.IsPlate(719, painted.LineHeight - 2));
  EXPECT_EQ(painted.At(719, painted.LineHeight + 2), 255);
  guides.Subtitles = {QRect(0, 500, 10, 10)};  // left of and below what is in sight
  const PaintedGuides part(guides, QRect(200, 100, 400, 300));
  EXPECT_TRUE(part.IsPlate(200, 400 - 2));
  EXPECT_TRUE(part.IsPlate(200, 400 - part.LineHeight + 2));
  EXPECT_EQ(part.At(199, 400 - 2), 255);
}

TEST(PaintGuides, CaptionOfAScreenStandsInTheMiddleBelowTheRuler) {
  FrameGuides guides;
  guides.Mode = DisplayMode::Wide;
  const PaintedGuides alone(guides);
  const double height = alone.LineHeight;
  EXPECT_EQ(alone.At(360, height / 2 - 2), 255);
  EXPECT_NE(alone.At(360, height / 2 + 2), 255);
  EXPECT_NE(alone.At(360, 1.5 * height - 2), 255);
  EXPECT_EQ(alone.At(360, 1.5 * height + 2), 255);
  int left = 0;
  while (alone.At(left, height) == 255) {
    ++left;
  }
  int right = 719;
  while (alone.At(right, height) == 255) {
    --right;
  }
  EXPECT_NEAR((left + right) / 2.0, 360, height / 2);
  guides.Rulers = true;
  const PaintedGuides ruled(guides);
  EXPECT_NE(ruled.At(360, 1.5 * height + 4), 255);
  EXPECT_EQ(ruled.At(365, 2.5 * height + 2), 255);
}

TEST(PaintGuides, RulersHaveLongTicksWhereTheyHaveNumbers) {
  FrameGuides guides;
  guides.Rulers = true;
  const PaintedGuides painted(guides);
  const double end = painted.LineHeight - 2;
  for (const int at : {100, 200, 300, 400, 500}) {
    EXPECT_EQ(painted.At(at, end), 255) << at;
    EXPECT_TRUE(painted.IsPlate(at + 40, end)) << at;
    EXPECT_EQ(painted.At(end, at), 255) << at;
    EXPECT_TRUE(painted.IsPlate(end, at - 40)) << at;
  }
  EXPECT_EQ(painted.At(300, painted.LineHeight + 2), 255) << "the frame, below the plate";
  // Of half the size only each second hundred has a number.
  const PaintedGuides half(guides, QRect(0, 0, 360, 288), QSize(360, 288));
  for (const int at : {200, 400}) {
    EXPECT_EQ(half.At(at / 2, end), 255) << at;
    EXPECT_TRUE(half.IsPlate(at / 2 - 20, end)) << at;
  }
}

/// Behind the tick along the top, and upwards from it along the left, inside what is in sight.
TEST(PaintGuides, NumbersOfRulersStandBesideTheirTicks) {
  FrameGuides guides;
  guides.Rulers = true;
  const QPoint corner(40, 30);
  const PaintedGuides painted(guides, QRect(corner, QSize(600, 500)));
  const int depth = static_cast<int>(painted.LineHeight);
  // Between the short ticks and the ruler's inner edge.
  const auto hasInk = [&](bool isAcross, int from, int to) {
    for (int along = from; along < to; ++along) {
      for (int across = depth / 2; across < depth - 2; ++across) {
        if (!painted.IsPlate(isAcross ? along : corner.x() + across,
                             isAcross ? corner.y() + across : along)) {
          return true;
        }
      }
    }
    return false;
  };
  for (const int at : {100, 200, 300, 400, 500}) {
    EXPECT_TRUE(hasInk(true, at + 4, at + 20)) << at;
    EXPECT_FALSE(hasInk(true, at - 20, at - 4)) << at;
    EXPECT_TRUE(hasInk(false, at - 20, at - 4)) << at;
    EXPECT_FALSE(hasInk(false, at + 4, at + 20)) << at;
  }
}

TEST(PaintGuides, MarkIsAroundOnePixel) {
  FrameGuides guides;
  guides.Mark = QPoint(300, 200);
  const PaintedGuides painted(guides);
  EXPECT_EQ(painted.At(300, 200), 255);
  for (const QPoint step : {QPoint(1, 0), QPoint(-1, 0), QPoint(0, 1), QPoint(0, -1)}) {
    EXPECT_EQ(painted.At(300 + step.x(), 200 + step.y()), 255) << "white";
    EXPECT_EQ(painted.At(300 + 2 * step.x(), 200 + 2 * step.y()), 0) << "black around it";
    EXPECT_EQ(painted.At(300 + 3 * step.x(), 200 + 3 * step.y()), 255);
  }
}

class Guides : public MergeTest {
 protected:
  void SetUp() override {
    // At y = 400 and, in the lower bar of a letterbox, at y = 520; all four codes are opaque.
    LoadStream(Join({FourCodes(PacketBuilder().Contrast(15, 15, 15, 15), 100, 400),
                     FourCodes(PacketBuilder().Contrast(15, 15, 15, 15), 100, 520)}));
  }
  void Pick(const char* action) {
    Window.findChild<QAction*>(action)->trigger();
    QCoreApplication::processEvents();
  }
  [[nodiscard]] const QImage& Picture() const { return Control<DisplayFrame>("Picture1").Picture().Image(); }
};

TEST_F(Guides, ArePaintedOverTheFrameNotIntoIt) {
  const QImage picture = Picture().copy();
  const QImage frame = Frame();
  for (const char* action : {"Action_SafeAreas", "Action_SubtitleArea", "Action_Rulers", "Action_Letterbox",
                             "Action_PanAndScan", "Action_Wide"}) {
    Pick(action);
    EXPECT_NE(Frame(), frame) << action;
    EXPECT_EQ(Picture(), picture) << action;
    Pick(action);
    Pick("Action_ModeOff");
    EXPECT_EQ(Frame(), frame) << action;
  }
}

TEST_F(Guides, SafeAreasAreOutlined) {
  Pick("Action_SafeAreas");
  const QColor white(Qt::white);
  for (const QPoint pixel : {QPoint(35, 300), QPoint(684, 300), QPoint(300, 28), QPoint(300, 547),
                             QPoint(71, 300), QPoint(648, 300), QPoint(300, 57), QPoint(300, 519)}) {
    EXPECT_EQ(FrameColour(pixel.x(), pixel.y()), white) << pixel.x() << ' ' << pixel.y();
  }
}

TEST_F(Guides, OutlinesAreBlackOnTheirOuterSide) {
  Pick("Action_SafeAreas");
  for (const QPoint pixel : {QPoint(34, 300), QPoint(685, 300), QPoint(300, 27), QPoint(300, 548),
                             QPoint(70, 300), QPoint(649, 300), QPoint(300, 56), QPoint(300, 520)}) {
    EXPECT_EQ(FrameColour(pixel.x(), pixel.y()), QColor(Qt::black)) << pixel.x() << ' ' << pixel.y();
  }
}

TEST_F(Guides, RulersHaveATickAtEachHundred) {
  Pick("Action_Rulers");
  for (const int at : {100, 200, 300, 400, 500}) {
    EXPECT_EQ(FrameColour(at, 1), QColor(Qt::white)) << at;
    EXPECT_NE(FrameColour(at - 2, 1), QColor(Qt::white)) << at;
    EXPECT_EQ(FrameColour(1, at), QColor(Qt::white)) << at;
    EXPECT_NE(FrameColour(1, at - 2), QColor(Qt::white)) << at;
  }
}

TEST_F(Guides, AreaFollowsTheSubtitle) {
  const QColor light(120, 120, 120);
  ASSERT_EQ(FrameColour(99, 520), QColor(60, 60, 60));
  Pick("Action_SubtitleArea");
  EXPECT_EQ(FrameColour(99, 400), QColor(Qt::white));
  EXPECT_EQ(FrameColour(108, 401), QColor(Qt::white));
  EXPECT_EQ(FrameColour(104, 402), QColor(Qt::white));
  EXPECT_EQ(FrameColour(100, 400), QColor(0, 0, 0));  // code 0, as drawn
  Click("Command_Next");
  EXPECT_EQ(FrameColour(99, 400), light);
  EXPECT_EQ(FrameColour(99, 520), QColor(Qt::white));
}

TEST_F(Guides, LetterboxSqueezesTheFilmAndLeavesTheSubtitle) {
  Click("Command_Next");
  Pick("Action_Letterbox");
  EXPECT_EQ(FrameColour(10, 71), QColor(0, 0, 0));
  EXPECT_EQ(FrameColour(10, 505), QColor(0, 0, 0));
  EXPECT_EQ(FrameColour(4, 74), QColor(60, 60, 60));  // the first square, now from line 72 to line 83
  EXPECT_EQ(FrameColour(4, 90), QColor(120, 120, 120));
  EXPECT_EQ(FrameColour(102, 520), TextColour);
  EXPECT_EQ(FrameColour(107, 521), QColor(2, 252, 2));
  EXPECT_EQ(FrameColour(108, 520), QColor(0, 0, 0));
}

TEST_F(Guides, SubtitleOnAScreenIsSmoothedWhereItsPixelsAreNoWholeOnes) {
  const auto colours = [this](const QRect& area) {
    const QImage frame = Frame().copy(area);
    std::set<QRgb> found;
    for (int x = 0; x < frame.width(); ++x) {
      found.insert(frame.pixel(x, frame.height() / 2));
    }
    return found.size();
  };
  Pick("Action_Letterbox");
  EXPECT_EQ(colours({100, 400, 8, 2}), 4U);
  Pick("Action_ZoomIn");
  EXPECT_GT(colours({150, 600, 12, 3}), 4U);
  Pick("Action_ZoomIn");
  EXPECT_EQ(colours({200, 800, 16, 4}), 4U);
}

TEST_F(Guides, PanAndScanShowsTheFilmsMiddleAndAllOfTheSubtitle) {
  QImage columns(8, 1, QImage::Format_RGB32);
  for (int x = 0; x < 8; ++x) {
    columns.setPixelColor(x, 0, QColor(30 * x, 0, 0));
  }
  ASSERT_TRUE(columns.scaled(720, 576).save(Path("columns.png")));
  ShowBackground(Path("columns.png"));
  ASSERT_EQ(FrameColour(45, 300), QColor(0, 0, 0));
  Pick("Action_PanAndScan");
  EXPECT_EQ(FrameColour(5, 300), QColor(30, 0, 0));
  EXPECT_EQ(FrameColour(125, 300), QColor(60, 0, 0));
  EXPECT_EQ(FrameColour(715, 300), QColor(180, 0, 0));
  EXPECT_EQ(FrameColour(102, 400), TextColour);
  EXPECT_EQ(FrameColour(107, 401), QColor(2, 252, 2));
}

TEST_F(Guides, RulersStayInSightWhereTheFrameScrolls) {
  Pick("Action_Rulers");
  Pick("Action_ZoomIn");
  Pick("Action_ZoomIn");
  auto& picture = Control<QWidget>("Picture1");
  QWidget* view = picture.parentWidget();
  auto* area = qobject_cast<QScrollArea*>(view->parentWidget());
  const QImage before = view->grab().toImage();
  const QRgb shaded = before.pixel(0, view->height() - 1);
  area->verticalScrollBar()->setValue(area->verticalScrollBar()->value() - 64);
  QCoreApplication::processEvents();
  const QImage after = view->grab().toImage();
  const QRect across(60, 0, view->width() - 60, 4);
  EXPECT_EQ(after.copy(across), before.copy(across));
  EXPECT_EQ(after.pixel(0, view->height() - 1), shaded);
  Pick("Action_Rulers");
  EXPECT_NE(view->grab().toImage().copy(across), after.copy(across)) << "it was a ruler";
}

TEST_F(Guides, NothingOfThemIsWritten) {
  const auto written = [this] {
    LoadStream(ThreeSubtitles());
    Click("Check_SavePics");
    Click("Command_Next");
    Click("Check_SavePics");
    const std::vector<Bytes> alone = {Read(Path("movie_SubPng/00+00+05+00.png")), SavedBytes()};
    Merge(ThreeSubtitles());
    return std::pair(alone, MergedBytes());
  };
  const auto before = written();
  for (const char* action :
       {"Action_SafeAreas", "Action_SubtitleArea", "Action_Rulers", "Action_Letterbox", "Action_Loupe"}) {
    Pick(action);
  }
  EXPECT_EQ(written(), before);
}

}  // namespace
}  // namespace quillmark::test
