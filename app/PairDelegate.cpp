#include "app/PairDelegate.h"

#include "app/PairModel.h"
#include "app/SubtitleDelegate.h"
#include "app/SubtitlePictures.h"

namespace quillmark {

PairDelegate::PairDelegate(const PairModel& model, SubtitlePictures& pictures, QObject* parent)
    : QStyledItemDelegate(parent), model_(model), pictures_(pictures) {}

void PairDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                         const QModelIndex& index) const {
  QStyledItemDelegate::paint(painter, option, index);
  if (index.column() == PairModel::Picture) {
    SubtitleDelegate::PaintPicture(*painter, option.rect, pictures_, model_.PairOf(index.row()));
  }
}

}  // namespace quillmark
