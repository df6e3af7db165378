#pragma once

#include <array>

#include <QAbstractItemDelegate>

#include "app/SubtitleModel.h"

class QFontMetrics;

namespace quillmark {

class SubtitlePictures;

/// Paints the cells of a SubtitleModel: subtitles small, their colours and opacities, icons for their
/// problems, texts elsewhere.
class SubtitleDelegate : public QAbstractItemDelegate {
  Q_OBJECT

 public:
  static constexpr int RowHeight = 24;  ///< logical pixels
  /// However wide the column is, pictures are not.
  static constexpr int WidestPicture = 10 * RowHeight;

  SubtitleDelegate(const Document& document, const SubtitleModel& model, SubtitlePictures& pictures,
                   QObject* parent);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  /// What a column needs for its usual texts.
  [[nodiscard]] static int UsualWidth(SubtitleModel::Column column, const QFontMetrics& font);
  /// A subtitle of the pictures' document small, at the left of a cell.
  static void PaintPicture(QPainter& painter, const QRect& cell, SubtitlePictures& pictures,
                           std::size_t subtitle);
  /// The swatches of codes 0 to 3 in a cell of the column Colours; the digit of the opacity stands behind
  /// each.
  [[nodiscard]] static std::array<QRect, 4> Swatches(const QRect& cell, const QFontMetrics& font);

 private:
  void PaintPicture(QPainter& painter, const QStyleOptionViewItem& option, int row) const;
  void PaintCodes(QPainter& painter, const QStyleOptionViewItem& option, int row) const;
  void PaintNumber(QPainter& painter, const QStyleOptionViewItem& option, int row) const;

  const Document& document_;
  const SubtitleModel& model_;
  SubtitlePictures& pictures_;
};

}  // namespace quillmark
