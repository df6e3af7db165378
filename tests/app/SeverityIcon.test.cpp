#include "app/SeverityIcon.h"

#include <string>
#include <vector>

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

namespace quillmark::test {
namespace {

constexpr int Scale = 20;
constexpr QPoint Corner(40, 60);

/// An icon of fourteen units by fourteen, enlarged, and not in the picture's corner.
class SeverityIcon {
 public:
  explicit SeverityIcon(ProblemSeverity severity) : picture_(400, 400, QImage::Format_ARGB32) {
    picture_.fill(Qt::transparent);
    QPainter painter(&picture_);
    PaintSeverity(painter, QRectF(Corner, QSizeF(14 * Scale, 14 * Scale)), severity);
    EXPECT_TRUE(painter.transform().isIdentity());
    EXPECT_EQ(painter.brush(), QBrush());
  }

  void ExpectAt(const std::string& colour, const std::vector<QPointF>& points) const {
    for (const QPointF& point : points) {
      EXPECT_EQ(NameAt(point), colour) << point.x() << ", " << point.y();
    }
  }

 private:
  [[nodiscard]] std::string NameAt(const QPointF& point) const {
    const QRgb pixel = picture_.pixel((Corner + point * Scale).toPoint());
    switch (pixel) {
      case 0x00000000:
        return "nothing";
      case 0xFFFFFFFF:
        return "white";
      case 0xFFF5F5F5:
        return "edge";
      case 0xFF202020:
        return "ink";
      case 0xFFC62828:
        return "red";
      case 0xFFF9A825:
        return "amber";
      case 0xFF1565C0:
        return "blue";
      default:
        return std::to_string(pixel);
    }
  }

  QImage picture_;
};

TEST(PaintSeverity, WhatCannotBeShownIsAWhiteCrossOnARedDisc) {
  const SeverityIcon icon(ProblemSeverity::CannotBeShown);
  icon.ExpectAt("nothing", {{0.5, 0.5}, {13.5, 0.5}, {0.5, 13.5}, {13.5, 13.5}});
  icon.ExpectAt("edge", {{7, 0.5}, {0.5, 7}, {13.5, 7}, {7, 13.5}});
  // Close to the edge, to the ends of the strokes and beside them.
  icon.ExpectAt("red", {{7, 1.3}, {1.3, 7}, {12.7, 7}, {7, 12.7}});
  icon.ExpectAt("red", {{3.9, 3.9}, {10.1, 10.1}, {10.1, 3.9}, {3.9, 10.1}});
  icon.ExpectAt("red", {{7, 8.6}, {7, 5.4}, {5.4, 7}, {8.6, 7}});
  icon.ExpectAt("white", {{7, 7}, {4.5, 4.5}, {9.5, 9.5}, {9.5, 4.5}, {4.5, 9.5}});
  icon.ExpectAt("white", {{7, 8.2}, {7, 5.8}, {5.8, 7}, {8.2, 7}});
}

TEST(PaintSeverity, WhatIsShownWronglyIsAnExclamationMarkOnAnAmberTriangle) {
  const SeverityIcon icon(ProblemSeverity::ShownWrongly);
  icon.ExpectAt("nothing", {{0.5, 0.5}, {13.5, 0.5}, {1.9, 9}, {12.1, 9}, {7, 13.8}});
  icon.ExpectAt("edge", {{7, 13}, {2.7, 9}, {11.3, 9}});
  icon.ExpectAt("amber", {{7, 12.3}, {3.5, 9}, {10.5, 9}});
  icon.ExpectAt("ink", {{7, 4.9}, {7, 8.6}, {6.3, 6}, {7.7, 6}, {7, 10.1}, {7, 11.4}, {6.3, 11}, {7.7, 11}});
  icon.ExpectAt("amber", {{7, 4.2}, {7, 9.3}, {5.9, 6}, {8.1, 6}, {7, 11.9}, {5.9, 11}, {8.1, 11}});
}

TEST(PaintSeverity, WhatIsUntidyIsAWhiteDotOnABlueDiamond) {
  const SeverityIcon icon(ProblemSeverity::Untidy);
  icon.ExpectAt("nothing", {{10.8, 3.2}, {3.2, 3.2}, {3.2, 10.8}, {10.8, 10.8}});
  icon.ExpectAt("edge", {{10.1, 3.9}, {3.9, 3.9}, {3.9, 10.1}, {10.1, 10.1}});
  icon.ExpectAt("blue", {{9.4, 4.6}, {4.6, 4.6}, {4.6, 9.4}, {9.4, 9.4}});
  icon.ExpectAt("blue", {{8.9, 7}, {5.1, 7}, {7, 5.1}, {7, 8.9}});
  icon.ExpectAt("white", {{7, 7}, {8.5, 7}, {5.5, 7}, {7, 5.5}, {7, 8.5}});
}

}  // namespace
}  // namespace quillmark::test
