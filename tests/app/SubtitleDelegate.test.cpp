#include "app/SubtitleDelegate.h"

#include <algorithm>
#include <numeric>
#include <set>

#include <QCoreApplication>
#include <QPainter>
#include <QStyleOptionViewItem>

#include "app/Document.h"
#include "app/ProblemFinder.h"
#include "app/SeverityIcon.h"
#include "app/SubtitlePictures.h"
#include "tests/app/Streams.h"
#include "tests/support/LoadedStream.h"
#include "tests/support/PlayedUnit.h"

namespace quillmark::test {
namespace {

const QColor Cyan(3, 253, 251);  // entry 1
const QColor PlainWhite(255, 255, 255);
const QColor PlainGreen(2, 252, 2);  // entry 3
const QColor Paper(200, 190, 180);

/// Cells painted on paper, without a window.
class SubtitleDelegateTest : public testing::Test {
 protected:
  /// The row is that of the last one.
  void Open(const Bytes& bytes, std::size_t count = 1) {
    Opened.BeginLoading();
    Opened.SetNumber(1);
    Opened.Open(Index(bytes));
    Finder.Start(Opened.Primary().RawBytes, count);
    while (!Finder.IsFinished()) {
      QCoreApplication::processEvents();
    }
    Model.Show({RowSubject::Subtitle(count - 1)});
  }
  /// A cell of the only row, at (0, 0), in screen pixels.
  [[nodiscard]] QImage Painted(SubtitleModel::Column column, int width, double scale = 1,
                               const QColor& text = Qt::black) const {
    QImage image((QSizeF(width, SubtitleDelegate::RowHeight) * scale).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Paper);
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, width, SubtitleDelegate::RowHeight);
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    option.palette.setColor(QPalette::Text, text);
    QPainter painter(&image);
    Delegate.paint(&painter, option, Model.index(0, column));
    EXPECT_FALSE(painter.testRenderHint(QPainter::Antialiasing)) << "the next cell's too";
    painter.end();
    image.setDevicePixelRatio(1);
    return image;
  }
  /// A cell of 40 pixels with paper behind its end.
  [[nodiscard]] QImage PaintedBesidePaper(SubtitleModel::Column column) const {
    QImage image(200, SubtitleDelegate::RowHeight, QImage::Format_RGB32);
    image.fill(Paper);
    QStyleOptionViewItem option;
    option.rect = QRect(0, 0, 40, SubtitleDelegate::RowHeight);
    option.state = QStyle::State_Enabled | QStyle::State_Active;
    QPainter painter(&image);
    Delegate.paint(&painter, option, Model.index(0, column));
    painter.end();
    return image;
  }

  Document Opened;
  ProblemFinder Finder;
  SubtitleModel Model{Opened, Finder, nullptr};
  SubtitlePictures Pictures{Opened};
  SubtitleDelegate Delegate{Opened, Model, Pictures, nullptr};
};

/// The picture's six visible pixels a line, each `side` screen pixels wide and high, with paper around them.
void ExpectPictureAt(const QImage& cell, QPoint corner, int side) {
  const QColor colours[] = {Cyan, Cyan, PlainWhite, PlainWhite, PlainGreen, PlainGreen};
  for (int y = 0; y < cell.height(); ++y) {
    for (int x = 0; x < cell.width(); ++x) {
      const QPoint inside = QPoint(x, y) - corner;
      const bool isPicture = QRect(0, 0, 6 * side, 2 * side).contains(inside);
      ASSERT_EQ(cell.pixelColor(x, y).name(), (isPicture ? colours[inside.x() / side] : Paper).name())
          << x << ", " << y;
    }
  }
}

TEST_F(SubtitleDelegateTest, PictureStandsInTheMiddleOfItsCell) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  ExpectPictureAt(Painted(SubtitleModel::Picture, 60), {3, 11}, 1);
}

TEST_F(SubtitleDelegateTest, PictureHasThePixelsOfTheScreen) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  ExpectPictureAt(Painted(SubtitleModel::Picture, 60, 2), {6, 22}, 2);
  // 3.75 and 14 screen pixels; a frame pixel is not drawn larger by a part.
  ExpectPictureAt(Painted(SubtitleModel::Picture, 60, 1.25), {4, 14}, 1);
}

/// Of characters side by side, each in whole pixels.
int AdvanceOf(const QString& text, const QFontMetrics& font) {
  return std::accumulate(text.begin(), text.end(), 0,
                         [&font](int sum, QChar next) { return sum + font.horizontalAdvance(next); });
}

/// A cell with a text at x, in the middle of its height.
QImage Written(const QString& text, int x, QSize cell, const QFont& font) {
  QImage image(cell, QImage::Format_RGB32);
  image.fill(Paper);
  QPainter painter(&image);
  painter.setFont(font);
  const QFontMetrics metrics(font);
  painter.drawText(x, (cell.height() - metrics.height()) / 2 + metrics.ascent(), text);
  return image;
}

/// In fonts of which one has even lines and the other odd ones.
TEST_F(SubtitleDelegateTest, TextsStandInTheMiddleOfTheHeightAtTheirSides) {
  Open(FourCodes(PacketBuilder().Time(Second).Delay(90)));
  for (const int pixels : {11, 12, 13, 14}) {
    QFont font;
    font.setPixelSize(pixels);
    const QFontMetrics metrics(font);
    const auto painted = [&](SubtitleModel::Column column, int width) {
      QImage image(width, SubtitleDelegate::RowHeight, QImage::Format_RGB32);
      image.fill(Paper);
      QStyleOptionViewItem option;
      option.rect = image.rect();
      option.state = QStyle::State_Enabled | QStyle::State_Active;
      option.palette.setColor(QPalette::Text, Qt::black);
      option.font = font;
      option.fontMetrics = metrics;
      QPainter painter(&image);
      painter.setFont(font);
      Delegate.paint(&painter, option, Model.index(0, column));
      return image;
    };
    const QSize cell(120, SubtitleDelegate::RowHeight);
    EXPECT_EQ(painted(SubtitleModel::Start, 120), Written("00:00:01.00", 3, cell, font)) << pixels;
    EXPECT_EQ(painted(SubtitleModel::Place, 120), Written("100, 400", 3, cell, font)) << pixels;
    const QString seconds = Model.TextAt(0, SubtitleModel::Duration);
    EXPECT_EQ(painted(SubtitleModel::Duration, 120),
              Written(seconds, 120 - 3 - AdvanceOf(seconds, metrics), cell, font))
        << pixels;
    EXPECT_EQ(painted(SubtitleModel::Number, 120),
              Written("1", 120 - 3 - metrics.horizontalAdvance('1'), cell, font))
        << pixels;
  }
}

/// The icon and the mark stand left of it, and it stands on neither.
TEST_F(SubtitleDelegateTest, NumberThatLacksRoomIsCutAndStandsOnNothing) {
  Bytes stream;
  for (int i = 0; i < 100; ++i) {
    stream = Join({stream, FourCodes(PacketBuilder().Time(i * Second).Delay(80))});
  }
  Open(stream, 100);
  const QFont font;
  const QFontMetrics metrics(font);
  const int room = AdvanceOf("10", metrics);
  const QString cut = metrics.elidedText("100", Qt::ElideRight, room);
  ASSERT_NE(cut, "100");
  const int width = 3 + 14 + 10 + room + 3;
  EXPECT_EQ(Painted(SubtitleModel::Number, width), Written(cut, width - 3 - metrics.horizontalAdvance(cut),
                                                           {width, SubtitleDelegate::RowHeight}, font));
}

TEST_F(SubtitleDelegateTest, SelectedCellHasTheColoursOfASelection) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  QImage image(120, SubtitleDelegate::RowHeight, QImage::Format_RGB32);
  image.fill(Paper);
  QStyleOptionViewItem option;
  option.rect = image.rect();
  option.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Selected;
  option.showDecorationSelected = true;
  option.palette.setColor(QPalette::Highlight, QColor(0, 0, 200));
  QPainter painter(&image);
  Delegate.paint(&painter, option, Model.index(0, SubtitleModel::Start));
  painter.end();
  EXPECT_EQ(image.pixelColor(1, 12), QColor(0, 0, 200));
  EXPECT_EQ(image.pixelColor(118, 12), QColor(0, 0, 200));
}

TEST_F(SubtitleDelegateTest, WidePictureIsAsWideAsTheCellBetweenItsMargins) {
  // To the end of the line in code 1.
  Open(WithFields(PacketBuilder().Delay(10).Area(0, 107, 400, 401).Build(), {0x00, 0x01, 0x00, 0x01}));
  const QImage cell = Painted(SubtitleModel::Picture, 60);
  int first = 60;
  int last = 0;
  for (int y = 0; y < cell.height(); ++y) {
    for (int x = 0; x < cell.width(); ++x) {
      if (cell.pixelColor(x, y) != Paper) {
        first = std::min(first, x);
        last = std::max(last, x);
      }
    }
  }
  EXPECT_EQ(first, 3);
  EXPECT_EQ(last, 56);
}

TEST_F(SubtitleDelegateTest, TextEndsInItsCell) {
  Open(PacketBuilder().Time(90000).Delay(100).Build());
  const QImage image = PaintedBesidePaper(SubtitleModel::Start);
  const auto inked = [&](int from, int to) {
    int count = 0;
    for (int x = from; x < to; ++x) {
      for (int y = 0; y < image.height(); ++y) {
        count += image.pixelColor(x, y) != Paper ? 1 : 0;
      }
    }
    return count;
  };
  EXPECT_GT(inked(0, 40), 20);
  EXPECT_EQ(inked(40, 200), 0);
}

TEST_F(SubtitleDelegateTest, SwatchesShowColoursAndOpacities) {
  Open(FourCodes(PacketBuilder().Delay(10).Colour(3, 2, 1, 4).Contrast(15, 5, 15, 0)));
  const QImage cell = Painted(SubtitleModel::Colours, 140);
  const auto swatches =
      SubtitleDelegate::Swatches(QRect(0, 0, 140, SubtitleDelegate::RowHeight), QFontMetrics(QFont()));
  const auto inner = [&](std::size_t code, int x, int y) {
    return cell.pixelColor(swatches[code].topLeft() + QPoint(x, y));
  };
  // Code 0 is clear: the squares behind it.
  EXPECT_EQ(inner(0, 14, 1), QColor(255, 255, 255));
  EXPECT_EQ(inner(0, 1, 1), QColor(160, 160, 160));
  EXPECT_EQ(inner(1, 1, 1), Cyan);
  EXPECT_EQ(inner(1, 14, 1), Cyan);
  // Opacity 5 is alpha 85: white over 160 is (255 * 85 + 160 * 170) / 255.
  EXPECT_EQ(inner(2, 1, 1), QColor(192, 192, 192));
  EXPECT_EQ(inner(3, 1, 1), PlainGreen);
}

/// Four squares of 8 pixels a side, light and dark in turn, within an edge of the text's colour; the
/// opacity's digit stands behind it.
TEST_F(SubtitleDelegateTest, SwatchesAreEdgedSquaresBeforeTheirOpacities) {
  Open(FourCodes(PacketBuilder().Delay(10).Contrast(0, 0, 0, 0)));
  const QFont font;
  const QFontMetrics metrics(font);
  QImage cell(140, SubtitleDelegate::RowHeight, QImage::Format_RGB32);
  cell.fill(Paper);
  QStyleOptionViewItem option;
  option.rect = cell.rect();
  option.state = QStyle::State_Enabled | QStyle::State_Active;
  const QColor ink(120, 0, 0);
  option.palette.setColor(QPalette::Text, ink);
  QPainter painter(&cell);
  painter.setBrush(Qt::magenta);  // whatever was painted before
  Delegate.paint(&painter, option, Model.index(0, SubtitleModel::Colours));
  painter.end();
  const QColor light(255, 255, 255);
  const QColor dark(160, 160, 160);
  for (int code = 0; code < 4; ++code) {
    const int left = 3 + code * (16 + metrics.horizontalAdvance('8') + 3);
    const auto at = [&](int x, int y) { return cell.pixelColor(left + x, 4 + y); };
    for (int along = 0; along < 16; ++along) {
      for (const QColor& edge : {at(along, 0), at(along, 15), at(0, along), at(15, along)}) {
        EXPECT_EQ(edge, ink) << code << ": " << along;
      }
      EXPECT_EQ(at(along, -1), Paper) << code << ": " << along;
      EXPECT_EQ(at(along, 16), Paper) << code << ": " << along;
      EXPECT_EQ(at(-1, along), Paper) << code << ": " << along;
    }
    for (const int edge : {1, 2, 13, 14}) {
      EXPECT_EQ(at(7, edge), edge < 8 ? dark : light) << code << ": " << edge;
      EXPECT_EQ(at(8, edge), edge < 8 ? light : dark) << code << ": " << edge;
      EXPECT_EQ(at(edge, 7), edge < 8 ? dark : light) << code << ": " << edge;
      EXPECT_EQ(at(edge, 8), edge < 8 ? light : dark) << code << ": " << edge;
    }
    QImage digit(metrics.horizontalAdvance('8') + 2, SubtitleDelegate::RowHeight, QImage::Format_RGB32);
    digit.fill(Paper);
    QPainter writer(&digit);
    writer.setPen(ink);
    writer.drawText(QRect(1, 0, 40, SubtitleDelegate::RowHeight), Qt::AlignLeft | Qt::AlignVCenter, "0");
    writer.end();
    EXPECT_EQ(cell.copy(left + 16, 0, digit.width(), digit.height()), digit) << code;
  }
}

TEST_F(SubtitleDelegateTest, SwatchesEndInTheirCell) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  const QImage image = PaintedBesidePaper(SubtitleModel::Colours);
  const QImage next = image.copy(40, 0, 160, SubtitleDelegate::RowHeight);
  QImage paper(next.size(), QImage::Format_RGB32);
  paper.fill(Paper);
  EXPECT_EQ(next, paper);
}

TEST_F(SubtitleDelegateTest, DigitOfADarkEntryIsPale) {
  Open(FourCodes(PacketBuilder().Delay(10).Colour(3, 2, 1, 0)));
  DvdPalette palette = Opened.Palette();
  palette[1] = {};
  ASSERT_TRUE(Opened.SetPalette(palette, "dark"));
  const QImage cell = Painted(SubtitleModel::Colours, 140, 1, QColor(120, 0, 0));
  const int left = 3 + 16 + QFontMetrics(QFont()).horizontalAdvance('8') + 3;
  int palest = 0;
  for (int y = 5; y < 19; ++y) {
    for (int x = left + 1; x < left + 15; ++x) {
      palest = std::max(palest, qGray(cell.pixel(x, y)));
    }
  }
  EXPECT_GT(palest, 150);
}

TEST_F(SubtitleDelegateTest, SwatchesBearEntryAndOpacity) {
  Open(FourCodes(PacketBuilder().Delay(10).Colour(3, 2, 1, 4)));
  const QImage before = Painted(SubtitleModel::Colours, 140);
  const auto swatches =
      SubtitleDelegate::Swatches(QRect(0, 0, 140, SubtitleDelegate::RowHeight), QFontMetrics(QFont()));
  const auto colours = [&before](const QRect& part) {
    std::set<QRgb> found;
    for (int y = part.top(); y <= part.bottom(); ++y) {
      for (int x = part.left(); x <= part.right(); ++x) {
        found.insert(before.pixel(x, y));
      }
    }
    return found;
  };
  for (std::size_t code = 0; code < 4; ++code) {
    const QRect swatch = swatches[code];
    const auto inside = colours(swatch.adjusted(1, 1, -1, -1));
    EXPECT_TRUE(std::any_of(inside.begin(), inside.end(), [](QRgb ink) { return qGray(ink) < 100; })) << code;
    const QRect behind(swatch.right() + 2, swatch.top(), 8, swatch.height());
    EXPECT_GT(colours(behind).size(), 1U) << code;
  }
}

TEST_F(SubtitleDelegateTest, TextHasTheColourOfTheTheme) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  const auto closest = [this](const QColor& text) {
    const QImage cell = Painted(SubtitleModel::Start, 120, 1, text);
    int best = 255 * 3;
    for (int y = 0; y < cell.height(); ++y) {
      for (int x = 0; x < cell.width(); ++x) {
        const QColor pixel = cell.pixelColor(x, y);
        best = std::min(best, std::abs(pixel.red() - text.red()) + std::abs(pixel.green() - text.green()) +
                                  std::abs(pixel.blue() - text.blue()));
      }
    }
    return best;
  };
  EXPECT_LT(closest(Qt::black), 90);
  EXPECT_LT(closest(Qt::white), 60);
}

TEST_F(SubtitleDelegateTest, NumberBearsTheIconOfTheWorstProblem) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  const auto hasIcon = [this] {
    return Painted(SubtitleModel::Number, 60).copy(3, 5, 14, 14) != [] {
      QImage paper(14, 14, QImage::Format_RGB32);
      paper.fill(Paper);
      return paper;
    }();
  };
  EXPECT_FALSE(hasIcon());
  Open(FourCodes(PacketBuilder()));
  EXPECT_TRUE(hasIcon());
  // In the middle of the height, and nowhere else.
  const QImage cell = Painted(SubtitleModel::Number, 60);
  for (int x = 3; x < 17; ++x) {
    EXPECT_EQ(cell.pixelColor(x, 4), Paper) << x;
    EXPECT_EQ(cell.pixelColor(x, 19), Paper) << x;
  }
}

QImage Icon(ProblemSeverity severity) {
  QImage icon(SeverityIconSide, SeverityIconSide, QImage::Format_RGB32);
  icon.fill(Qt::black);
  QPainter painter(&icon);
  PaintSeverity(painter, icon.rect(), severity);
  return icon;
}

/// Without an icon for many sequences, which two are not.
Bytes Fading() {
  const Bytes picture = Join({StartDisplay, SetColour(3, 2, 1, 0), SetContrast(15, 15, 15, 0),
                              SetArea(100, 103, 400, 401), SetFields(4, 6)});
  return Played({0x11, 0x00, 0x12, 0x00}, {{.Delay = 0, .Commands = picture},
                                           {.Delay = 90, .Commands = Join({SetContrast(7, 7, 7, 0)})}})
      .Build();
}

TEST_F(SubtitleDelegateTest, NumberOfAnAnimatedSubtitleBearsAMark) {
  Open(FourCodes(PacketBuilder().Delay(90)));
  const QImage still = Painted(SubtitleModel::Number, 80);
  Open(Fading());
  const QImage animated = Painted(SubtitleModel::Number, 80);
  EXPECT_NE(animated.copy(18, 0, 12, animated.height()), still.copy(18, 0, 12, still.height()));
  EXPECT_EQ(animated.copy(32, 0, 48, animated.height()), still.copy(32, 0, 48, still.height()));
}

/// Right of where an icon stands: # is ink, o three quarters of it, - one quarter.
TEST_F(SubtitleDelegateTest, MarkOfAnAnimatedSubtitleIsATriangleThatPointsToTheRight) {
  Open(Fading());
  const QImage cell = Painted(SubtitleModel::Number, 80);
  const char* triangle[] = {
      "..........",  // 7
      ".o-.......",  //
      ".##o-.....",  //
      ".####o-...",  //
      ".######o-.",  //
      ".######o-.",  //
      ".####o-...",  //
      ".##o-.....",  //
      ".o-.......",  //
      "..........",  // 16
  };
  for (int y = 0; y < 10; ++y) {
    QString row;
    for (int x = 0; x < 10; ++x) {
      const int grey = qGray(cell.pixel(17 + x, 7 + y));
      row += grey < 20 ? '#' : grey < 100 ? 'o' : grey < 175 ? '-' : '.';
    }
    EXPECT_EQ(row, triangle[y]) << y;
  }
}

TEST(SeverityIcon, ShapesDifferWithoutTheirColours) {
  std::set<QString> shapes;
  for (const auto severity :
       {ProblemSeverity::Untidy, ProblemSeverity::ShownWrongly, ProblemSeverity::CannotBeShown}) {
    const QImage icon = Icon(severity);
    QString shape;
    for (int y = 0; y < icon.height(); ++y) {
      for (int x = 0; x < icon.width(); ++x) {
        shape += icon.pixel(x, y) == qRgb(0, 0, 0) ? ' ' : '#';
      }
    }
    EXPECT_GT(shape.count('#'), 70);
    EXPECT_GT(shape.count(' '), 20);
    shapes.insert(shape);
  }
  EXPECT_EQ(shapes.size(), 3U);
}

TEST(SeverityIcon, ColoursTellTheSeverity) {
  const QColor red = Icon(ProblemSeverity::CannotBeShown).pixelColor(7, 2);
  EXPECT_GT(red.red(), 2 * red.blue());
  const QColor amber = Icon(ProblemSeverity::ShownWrongly).pixelColor(4, 11);
  EXPECT_GT(amber.green(), 2 * amber.blue());
  const QColor blue = Icon(ProblemSeverity::Untidy).pixelColor(7, 3);
  EXPECT_GT(blue.blue(), 2 * blue.red());
}

TEST_F(SubtitleDelegateTest, TextOfAWindowBehindAndOfADisabledOneIsOfTheirColours) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  const auto hasInk = [this](QStyle::State state, const QColor& ink) {
    QImage image(120, SubtitleDelegate::RowHeight, QImage::Format_RGB32);
    image.fill(Qt::black);
    QStyleOptionViewItem option;
    option.rect = image.rect();
    option.state = state;
    option.palette.setColor(QPalette::Active, QPalette::Text, QColor(255, 0, 0));
    option.palette.setColor(QPalette::Inactive, QPalette::Text, QColor(0, 255, 0));
    option.palette.setColor(QPalette::Disabled, QPalette::Text, QColor(0, 0, 255));
    QPainter painter(&image);
    Delegate.paint(&painter, option, Model.index(0, SubtitleModel::Start));
    painter.end();
    int most = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QRgb pixel = image.pixel(x, y);
        most = std::max(most, qRed(pixel) * (ink.red() / 255) + qGreen(pixel) * (ink.green() / 255) +
                                  qBlue(pixel) * (ink.blue() / 255));
      }
    }
    return most > 100;
  };
  const QColor red(255, 0, 0);
  const QColor green(0, 255, 0);
  const QColor blue(0, 0, 255);
  EXPECT_TRUE(hasInk(QStyle::State_Enabled | QStyle::State_Active, red));
  EXPECT_TRUE(hasInk(QStyle::State_Enabled, green));
  EXPECT_FALSE(hasInk(QStyle::State_Enabled, red));
  EXPECT_TRUE(hasInk(QStyle::State_Active, blue));
  EXPECT_FALSE(hasInk(QStyle::State_Active, red));
}

TEST(SeverityIcon, EachBearsItsMark) {
  const auto grey = [](ProblemSeverity severity, int x, int y) { return qGray(Icon(severity).pixel(x, y)); };
  // A cross, an exclamation mark whose parts stand apart, and a dot.
  for (const auto& [x, y] : {std::pair(5, 5), {8, 5}, {5, 8}, {8, 8}}) {
    EXPECT_GT(grey(ProblemSeverity::CannotBeShown, x, y), 200) << x << ", " << y;
  }
  EXPECT_LT(grey(ProblemSeverity::CannotBeShown, 3, 6), 160);
  EXPECT_LT(grey(ProblemSeverity::ShownWrongly, 7, 6), 90);
  EXPECT_LT(grey(ProblemSeverity::ShownWrongly, 7, 10), 90);
  EXPECT_GT(grey(ProblemSeverity::ShownWrongly, 4, 11), 120);
  EXPECT_GT(grey(ProblemSeverity::Untidy, 7, 7), 200);
  EXPECT_LT(grey(ProblemSeverity::Untidy, 4, 7), 160);
}

/// With three pixels at each side.
TEST_F(SubtitleDelegateTest, ColumnsHaveRoomForWhatUsuallyStandsInThem) {
  const QFontMetrics font{QFont()};
  const auto width = [&](SubtitleModel::Column column) { return SubtitleDelegate::UsualWidth(column, font); };
  EXPECT_EQ(width(SubtitleModel::Number), 3 + 14 + 10 + AdvanceOf("0000", font) + 3);
  EXPECT_EQ(width(SubtitleModel::Picture), 110);
  EXPECT_EQ(width(SubtitleModel::Start), 3 + AdvanceOf("00:00:00.00", font) + 3);
  EXPECT_EQ(width(SubtitleModel::Place), 3 + AdvanceOf("000, 000", font) + 3);
  EXPECT_EQ(width(SubtitleModel::Size), 3 + AdvanceOf("000x000", font) + 3);
  // Swatches with their digits behind them, and what is between one and the next.
  EXPECT_EQ(width(SubtitleModel::Colours), 3 + 4 * (16 + font.horizontalAdvance('8')) + 3 * 3 + 6);
}

TEST_F(SubtitleDelegateTest, CellsAreAsWideAsWhatStandsInThem) {
  Open(FourCodes(PacketBuilder().Time(Second).Delay(90)));
  const QStyleOptionViewItem option;
  const QFontMetrics& font = option.fontMetrics;
  const auto width = [&](SubtitleModel::Column column) {
    return Delegate.sizeHint(option, Model.index(0, column)).width();
  };
  EXPECT_EQ(width(SubtitleModel::Number), 3 + 14 + 10 + font.horizontalAdvance('1') + 3);
  EXPECT_EQ(width(SubtitleModel::Picture), 110);
  EXPECT_EQ(width(SubtitleModel::Start), 3 + AdvanceOf("00:00:01.00", font) + 3);
  EXPECT_EQ(width(SubtitleModel::Size), 3 + AdvanceOf("8x2", font) + 3);
  EXPECT_EQ(width(SubtitleModel::Colours), 3 + 4 * (16 + font.horizontalAdvance('8')) + 3 * 3 + 6);
}

TEST_F(SubtitleDelegateTest, NumberHasRoomForItsIconAndMark) {
  Open(FourCodes(PacketBuilder().Delay(10)));
  const QStyleOptionViewItem option;
  const auto widthOf = [&](SubtitleModel::Column column) {
    return Delegate.sizeHint(option, Model.index(0, column)).width();
  };
  EXPECT_GE(widthOf(SubtitleModel::Number), option.fontMetrics.horizontalAdvance('1') + 14 + 10);
  EXPECT_LT(widthOf(SubtitleModel::Start), option.fontMetrics.horizontalAdvance("00:00:00.00") + 14);
}

}  // namespace
}  // namespace quillmark::test
