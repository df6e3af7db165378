#include "app/SubtitleDelegate.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QWidget>

#include "app/Document.h"
#include "app/PaletteSwatch.h"
#include "app/QtColour.h"
#include "app/SeverityIcon.h"
#include "app/SubtitlePictures.h"
#include "app/Ui.h"
#include "imaging/Blend.h"

namespace quillmark {
namespace {

constexpr int SideMargin = 3;     ///< within a cell, at its left and right
constexpr int PictureMargin = 1;  ///< above and below
constexpr int SwatchSide = 16;
constexpr int PlayMarkWidth = 10;

/// The squares that show through a swatch, and what is between them.
constexpr QRgb CheckerLight = 0xFFFFFFFF;
constexpr QRgb CheckerDark = 0xFFA0A0A0;
constexpr QRgb CheckerMean = 0xFFD0D0D0;

QString Digit(int nibble) {
  return QString::number(nibble, 16).toUpper();
}

QRect Inside(const QRect& cell) {
  return cell.adjusted(SideMargin, 0, -SideMargin, 0);
}

QColor TextColour(const QStyleOptionViewItem& option) {
  const QPalette::ColorGroup group = (option.state & QStyle::State_Enabled) == 0  ? QPalette::Disabled
                                     : (option.state & QStyle::State_Active) == 0 ? QPalette::Inactive
                                                                                  : QPalette::Active;
  const bool isSelected = (option.state & QStyle::State_Selected) != 0;
  return option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
}

/// As wide as the text is at most. Its characters are not fitted to each other, which would take as long as
/// painting them.
int WidthOf(const QString& text, const QFontMetrics& font) {
  int width = 0;
  for (const QChar character : text) {
    width += font.horizontalAdvance(character);
  }
  return width;
}

int BaselineIn(const QRect& cell, const QFontMetrics& font) {
  return cell.top() + (cell.height() - font.height()) / 2 + font.ascent();
}

void PaintText(QPainter& painter, const QStyleOptionViewItem& option, const QRect& where, const QString& text,
               Qt::Alignment alignment = Qt::AlignLeft) {
  if (text.isEmpty()) {
    return;
  }
  const QFontMetrics& font = option.fontMetrics;
  QString shown = text;
  int width = WidthOf(text, font);
  if (width > where.width()) {
    width = font.horizontalAdvance(text);
  }
  if (width > where.width()) {
    shown = font.elidedText(text, Qt::ElideRight, where.width());
    width = font.horizontalAdvance(shown);
  }
  const int x = alignment == Qt::AlignRight ? where.right() + 1 - width : where.left();
  painter.setPen(TextColour(option));
  painter.drawText(x, BaselineIn(where, font), shown);
}

/// Moves what is painted next at `corner` to the nearest whole screen pixel.
void SnapToScreen(QPainter& painter, const QPointF& corner) {
  const QTransform toDevice = painter.deviceTransform();
  const QPointF device = toDevice.map(corner);
  painter.translate(toDevice.inverted().map(QPointF(std::round(device.x()), std::round(device.y()))));
}

/// A triangle that points to the right, as on a button that plays.
void PaintPlayMark(QPainter& painter, const QStyleOptionViewItem& option, const QRect& where) {
  const QPointF middle = QRectF(where).center();
  const double half = PlayMarkWidth / 2.0 - 1;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(TextColour(option));
  painter.drawConvexPolygon(
      QPolygonF({middle + QPointF(-half, -half), middle + QPointF(half, 0), middle + QPointF(-half, half)}));
  painter.restore();
}

void PaintSwatch(QPainter& painter, const QStyleOptionViewItem& option, const QRect& swatch, Rgb colour,
                 int entry, int contrast) {
  const int half = swatch.width() / 2;
  const Argb translucent = GetARGBColor(colour, static_cast<unsigned>(contrast));
  painter.fillRect(swatch, QColor(BlendOver(translucent, CheckerLight)));
  const QColor dark(BlendOver(translucent, CheckerDark));
  painter.fillRect(swatch.x(), swatch.y(), half, half, dark);
  painter.fillRect(swatch.x() + half, swatch.y() + half, half, half, dark);
  const QColor text = TextColour(option);
  painter.setPen(ToQColor(DigitColourOn(FromQColor(QColor(BlendOver(translucent, CheckerMean))))));
  painter.drawText(swatch, Qt::AlignCenter, Digit(entry));
  painter.setPen(text);
  painter.drawRect(swatch.adjusted(0, 0, -1, -1));
  const QRect behind(swatch.right() + 2, option.rect.y(), option.fontMetrics.maxWidth(),
                     option.rect.height());
  painter.drawText(behind, Qt::AlignLeft | Qt::AlignVCenter, Digit(contrast));
}

}  // namespace

SubtitleDelegate::SubtitleDelegate(const Document& document, const SubtitleModel& model,
                                   SubtitlePictures& pictures, QObject* parent)
    : QAbstractItemDelegate(parent), document_(document), model_(model), pictures_(pictures) {}

void SubtitleDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
  const QStyle* style = option.widget != nullptr ? option.widget->style() : QApplication::style();
  style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, option.widget);
  const int row = index.row();
  const bool isSubtitle = model_.SubjectOf(row).IsSubtitle();
  const bool isShown = isSubtitle && model_.FactsAt(row).Described.has_value();
  if (index.column() == SubtitleModel::Number) {
    PaintNumber(*painter, option, row);
  } else if (index.column() == SubtitleModel::Picture && isShown) {
    PaintPicture(*painter, option, row);
  } else if (index.column() == SubtitleModel::Colours && isShown) {
    PaintCodes(*painter, option, row);
  } else {
    PaintText(*painter, option, Inside(option.rect), model_.TextAt(row, index.column()),
              index.column() == SubtitleModel::Duration ? Qt::AlignRight : Qt::AlignLeft);
  }
}

void SubtitleDelegate::PaintNumber(QPainter& painter, const QStyleOptionViewItem& option, int row) const {
  const QRect inside = Inside(option.rect);
  const auto severity = model_.SeverityAt(row);
  if (severity) {
    const int top = inside.y() + (inside.height() - SeverityIconSide) / 2;
    PaintSeverity(painter, QRectF(inside.x(), top, SeverityIconSide, SeverityIconSide), *severity);
  }
  if (model_.IsAnimatedAt(row)) {
    PaintPlayMark(painter, option,
                  QRect(inside.x() + SeverityIconSide, inside.y(), PlayMarkWidth, inside.height()));
  }
  PaintText(painter, option, inside.adjusted(SeverityIconSide + PlayMarkWidth, 0, 0, 0),
            model_.TextAt(row, SubtitleModel::Number), Qt::AlignRight);
}

void SubtitleDelegate::PaintPicture(QPainter& painter, const QStyleOptionViewItem& option, int row) const {
  PaintPicture(painter, option.rect, pictures_, model_.SubjectOf(row).Index());
}

void SubtitleDelegate::PaintPicture(QPainter& painter, const QRect& cell, SubtitlePictures& pictures,
                                    std::size_t subtitle) {
  const QRect inside = Inside(cell).adjusted(0, PictureMargin, 0, -PictureMargin);
  const double scale = painter.device()->devicePixelRatioF();
  const QSize room(std::min(inside.width(), WidestPicture), inside.height());
  pictures.SetRoom({.Pixels = (QSizeF(room) * scale).toSize(), .Scale = scale});
  const QImage picture = pictures.Of(subtitle);
  if (picture.isNull()) {
    return;
  }
  const double height = picture.height() / scale;
  painter.save();
  SnapToScreen(painter, QPointF(inside.x(), inside.y() + (inside.height() - height) / 2));
  painter.drawImage(QPointF(), picture);
  painter.restore();
}

void SubtitleDelegate::PaintCodes(QPainter& painter, const QStyleOptionViewItem& option, int row) const {
  const SpuControl& control = model_.FactsAt(row).Described->Control;
  const auto swatches = Swatches(option.rect, option.fontMetrics);
  painter.save();
  painter.setClipRect(option.rect, Qt::IntersectClip);
  painter.setBrush(Qt::NoBrush);
  for (std::size_t code = 0; code < swatches.size(); ++code) {
    const int entry = control.Colour[code];
    PaintSwatch(painter, option, swatches[code], document_.Palette()[static_cast<std::size_t>(entry)], entry,
                control.Contrast[code]);
  }
  painter.restore();
}

std::array<QRect, 4> SubtitleDelegate::Swatches(const QRect& cell, const QFontMetrics& font) {
  const QRect inside = Inside(cell);
  const int step = SwatchSide + font.horizontalAdvance(u'8') + SideMargin;
  std::array<QRect, 4> swatches;
  for (int code = 0; code < 4; ++code) {
    swatches[static_cast<std::size_t>(code)] = QRect(
        inside.x() + code * step, inside.y() + (inside.height() - SwatchSide) / 2, SwatchSide, SwatchSide);
  }
  return swatches;
}

QSize SubtitleDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
  const auto column = static_cast<SubtitleModel::Column>(index.column());
  const int text = WidthOf(model_.TextAt(index.row(), index.column()), option.fontMetrics) + 2 * SideMargin;
  const bool isDrawn = column == SubtitleModel::Picture || column == SubtitleModel::Colours;
  return {isDrawn ? UsualWidth(column, option.fontMetrics)
                  : text + (column == SubtitleModel::Number ? SeverityIconSide + PlayMarkWidth : 0),
          RowHeight};
}

int SubtitleDelegate::UsualWidth(SubtitleModel::Column column, const QFontMetrics& font) {
  const auto textWidth = [&font](const QString& text) { return WidthOf(text, font) + 2 * SideMargin; };
  switch (column) {
    case SubtitleModel::Number:
      return textWidth(QStringLiteral("0000")) + SeverityIconSide + PlayMarkWidth;
    case SubtitleModel::Picture:
      return 5 * RowHeight - PlayMarkWidth;
    case SubtitleModel::Start:
    case SubtitleModel::End:
      return textWidth(QStringLiteral("00:00:00.00"));
    case SubtitleModel::Duration:
      return textWidth(Ui::Tr("Seconds"));
    case SubtitleModel::Place:
      return textWidth(QStringLiteral("000, 000"));
    case SubtitleModel::Size:
      return textWidth(QStringLiteral("000x000"));
    case SubtitleModel::Colours:
      return Swatches(QRect(), font).back().right() + 1 + font.horizontalAdvance(u'8') + 2 * SideMargin;
    case SubtitleModel::Forced:
      return textWidth(Ui::Tr("Forced"));
    case SubtitleModel::Animated:
      return textWidth(Ui::Tr("Animated"));
    case SubtitleModel::Compared:
      return textWidth(Ui::Tr("moved in time, 000 other pixels"));
    case SubtitleModel::Problems:
    case SubtitleModel::Columns:
      break;
  }
  return textWidth(Ui::Tr("still shown when the next starts"));
}

}  // namespace quillmark
