#include "app/PicturesAhead.h"

#include <QEvent>
#include <QTimerEvent>

#include "app/SubtitleModel.h"
#include "app/SubtitlePictures.h"
#include "app/SubtitleTable.h"

namespace quillmark {

PicturesAhead::PicturesAhead(SubtitleTable& table, const SubtitleModel& model, SubtitlePictures& pictures)
    : QObject(&table), table_(table), model_(model), pictures_(pictures) {
  table.viewport()->installEventFilter(this);
}

bool PicturesAhead::eventFilter(QObject* /*watched*/, QEvent* event) {
  if (event->type() == QEvent::Paint) {
    const int first = table_.RowsInSight().First;
    if (first != firstBefore_) {
      goesUp_ = first < firstBefore_;
      firstBefore_ = first;
    }
    idle_.start(0, this);
  }
  return false;
}

void PicturesAhead::timerEvent(QTimerEvent* event) {
  if (event->timerId() == idle_.timerId() && !DecodeNext()) {
    idle_.stop();
  }
}

bool PicturesAhead::DecodeNext() {
  if (table_.isColumnHidden(SubtitleModel::Picture)) {
    return false;
  }
  const SubtitleTable::RowRange seen = table_.RowsInSight();
  const int page = seen.Last - seen.First + 1;
  for (int ahead = 1; ahead <= page; ++ahead) {
    const int row = goesUp_ ? seen.First - ahead : seen.Last + ahead;
    if (row < 0 || row >= model_.rowCount()) {
      return false;
    }
    const RowSubject subject = model_.SubjectOf(row);
    if (subject.IsSubtitle() && !pictures_.Holds(subject.Index())) {
      static_cast<void>(pictures_.Of(subject.Index()));
      return true;
    }
  }
  return false;
}

}  // namespace quillmark
