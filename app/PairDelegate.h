#pragma once

#include <QStyledItemDelegate>

namespace quillmark {

class PairModel;
class SubtitlePictures;

/// Paints the cells of a PairModel: merged pictures small, texts and icons elsewhere.
class PairDelegate : public QStyledItemDelegate {
  Q_OBJECT

 public:
  PairDelegate(const PairModel& model, SubtitlePictures& pictures, QObject* parent);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  const PairModel& model_;
  SubtitlePictures& pictures_;
};

}  // namespace quillmark
