#include "app/SeverityIcon.h"

#include <array>

#include <QPainter>
#include <QPolygonF>

namespace quillmark {
namespace {

constexpr QRgb Red = 0xFFC62828;
constexpr QRgb Amber = 0xFFF9A825;
constexpr QRgb Blue = 0xFF1565C0;
constexpr QRgb Edge = 0xFFF5F5F5;
constexpr QRgb Ink = 0xFF202020;

}  // namespace

void PaintSeverity(QPainter& painter, const QRectF& where, ProblemSeverity severity) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.translate(where.topLeft());
  painter.scale(where.width() / SeverityIconSide, where.height() / SeverityIconSide);
  const auto fill = [&painter](QRgb colour) {
    painter.setPen(QPen(QColor(Edge), 1));
    painter.setBrush(QColor(colour));
  };
  switch (severity) {
    case ProblemSeverity::CannotBeShown:
      fill(Red);
      painter.drawEllipse(QRectF(0.5, 0.5, 13, 13));
      painter.setPen(QPen(Qt::white, 2, Qt::SolidLine, Qt::FlatCap));
      painter.drawLine(QPointF(4.2, 4.2), QPointF(9.8, 9.8));
      painter.drawLine(QPointF(9.8, 4.2), QPointF(4.2, 9.8));
      break;
    case ProblemSeverity::ShownWrongly:
      fill(Amber);
      painter.drawPolygon(QPolygonF({{7, 0.8}, {13.4, 13}, {0.6, 13}}));
      painter.setPen(QPen(QColor(Ink), 1.8, Qt::SolidLine, Qt::FlatCap));
      painter.drawLine(QPointF(7, 4.6), QPointF(7, 8.8));
      painter.drawLine(QPointF(7, 9.9), QPointF(7, 11.6));
      break;
    case ProblemSeverity::Untidy:
      fill(Blue);
      painter.drawPolygon(QPolygonF({{7, 0.8}, {13.2, 7}, {7, 13.2}, {0.8, 7}}));
      painter.setPen(Qt::NoPen);
      painter.setBrush(Qt::white);
      painter.drawEllipse(QPointF(7, 7), 1.7, 1.7);
      break;
  }
  painter.restore();
}

}  // namespace quillmark
