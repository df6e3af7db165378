#include "app/RowFollower.h"

#include <utility>

#include <QItemSelectionModel>
#include <QScopedValueRollback>

#include "app/Document.h"
#include "app/SubtitleTable.h"

namespace quillmark {

RowFollower::RowFollower(const Document& document, SubtitleTable& table, QObject* parent)
    : QObject(parent), table_(table) {
  connect(&document, &Document::NumberChanged, this, &RowFollower::Follow);
  connect(&table, &QAbstractItemView::activated, this, &RowFollower::Choose);
  connect(&table, &QAbstractItemView::clicked, this, &RowFollower::Choose);
  connect(table.selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this] {
    emit RowMoved();
    if (!keeps_) {
      Choose();
    }
  });
}

void RowFollower::GoToRow(int row) {
  Keep([this, row] { table_.GoToRow(row); });
}

void RowFollower::Keep(const std::function<void()>& change) {
  const QScopedValueRollback<bool> keeps(keeps_, true);
  change();
}

void RowFollower::Choose() {
  isChosen_ = true;
  SettleLater();
}

void RowFollower::Follow() {
  follows_ = true;
  SettleLater();
}

void RowFollower::SettleLater() {
  if (!std::exchange(settles_, true)) {
    QMetaObject::invokeMethod(this, &RowFollower::Settle, Qt::QueuedConnection);
  }
}

void RowFollower::Settle() {
  settles_ = false;
  if (std::exchange(isChosen_, false)) {
    emit RowChosen();
  }
  if (std::exchange(follows_, false)) {
    emit DocumentMoved();
  }
}

}  // namespace quillmark
