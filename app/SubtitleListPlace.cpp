// Where one is in the list: its current row, the window's subtitle, the selection and the columns.

#include <algorithm>
#include <utility>

#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSplitter>

#include "app/Comparison.h"
#include "app/DrawnSubtitle.h"
#include "app/ProblemFinder.h"
#include "app/RowFollower.h"
#include "app/ShownField.h"
#include "app/SubtitleList.h"
#include "app/SubtitleTable.h"
#include "app/TimeStrip.h"
#include "app/Ui.h"

namespace quillmark {

void SubtitleList::GoToChosen() {
  const auto subject = CurrentSubject();
  if (!subject || !subject->IsSubtitle()) {
    return;
  }
  const auto number = static_cast<std::int64_t>(subject->Index()) + 1;
  if (number != document_.Number()) {
    emit Chosen(number);
    // Where the window could not go there just now, the list is back at what it shows.
    follower_->Follow();
  }
}

void SubtitleList::FollowNumber() {
  const auto shown = SubjectOfDocument();
  strip_->SetCurrent(shown ? std::optional(shown->Index()) : std::nullopt,
                     shown ? SecondaryOver(document_, shown->Index()) : std::nullopt);
  if (!shown || CurrentSubject() == shown) {
    return;
  }
  if (const auto row = model_->RowOf(*shown)) {
    follower_->GoToRow(*row);
  }
}

std::optional<RowSubject> SubtitleList::SubjectOfDocument() const {
  const std::int64_t number = document_.LastTried();
  return number > 0 && number <= document_.Primary().Count
             ? std::optional(RowSubject::Subtitle(static_cast<std::size_t>(number - 1)))
             : std::nullopt;
}

void SubtitleList::GoToSubtitle(std::size_t index) {
  if (const auto row = model_->RowOf(RowSubject::Subtitle(index))) {
    table_->GoToRow(*row);
    follower_->Choose();
  } else {
    emit Chosen(static_cast<std::int64_t>(index) + 1);
  }
}

std::int64_t SubtitleList::ProblemCount() const {
  const StreamSurvey& survey = finder_->Survey();
  const auto count = static_cast<std::size_t>(std::max(document_.Primary().Count, 0));
  if (survey.Marks().size() <= count) {
    return static_cast<std::int64_t>(survey.PacketsWithProblems());
  }
  return std::ranges::count_if(survey.Marks().first(count), &PacketMarks::HasProblems);
}

QString SubtitleList::GoToProblem(bool forward) {
  const auto row = table_->GoToNext(forward, [this](int at) { return model_->SeverityAt(at).has_value(); });
  return row ? model_->SentenceAt(*row) : QString();
}

std::optional<RowSubject> SubtitleList::CurrentSubject() const {
  const QModelIndex current = table_->currentIndex();
  return current.isValid() ? std::optional(model_->SubjectOf(current.row())) : std::nullopt;
}

void SubtitleList::ShowProblems() {
  const QModelIndex current = table_->currentIndex();
  const QString lines = current.isValid() ? model_->ProblemLinesAt(current.row()) : QString();
  if (lines != problems_->toPlainText()) {
    problems_->setPlainText(lines);
  }
  SetPlaceholder(*problems_, !current.isValid()       ? QString()
                             : !finder_->IsFinished() ? Ui::Tr("Looking for problems...")
                                                      : Ui::Tr("No problems"));
}

std::vector<std::size_t> SubtitleList::Selected() const {
  std::vector<std::size_t> subtitles;
  for (const int row : table_->SelectedRows()) {
    if (const RowSubject subject = model_->SubjectOf(row); subject.IsSubtitle()) {
      subtitles.push_back(subject.Index());
    }
  }
  std::ranges::sort(subtitles);
  subtitles.erase(std::unique(subtitles.begin(), subtitles.end()), subtitles.end());
  return subtitles;
}

bool SubtitleList::HasSelection() const {
  return table_->selectionModel()->hasSelection();
}

std::unique_ptr<QMimeData> SubtitleList::Copied() const {
  const std::vector<int> rows = table_->SelectedRows();
  const std::vector<int> columns = table_->ShownColumns();
  if (rows.empty()) {
    return nullptr;
  }
  auto copied = std::make_unique<QMimeData>();
  copied->setText(model_->TabbedText(rows, columns));
  if (rows.size() == 1 && model_->SubjectOf(rows.front()).IsSubtitle()) {
    const QImage picture = PictureOf(document_, model_->SubjectOf(rows.front()).Index());
    if (!picture.isNull()) {
      copied->setImageData(picture);
    }
  }
  return copied;
}

void SubtitleList::ShowColumn(int column, bool shown) {
  if (!shown && std::ranges::none_of(columnActions_, &QAction::isChecked)) {
    columnActions_[column]->setChecked(true);  // one stays
    return;
  }
  table_->setColumnHidden(column, !shown);
  UpdateColumns();
}

void SubtitleList::UpdateColumns() {
  model_->SetSpokenColumn(table_->FirstColumn());
  // The current cell is the one that assistive tools tell.
  if (const QModelIndex current = table_->currentIndex(); current.isValid()) {
    table_->selectionModel()->setCurrentIndex(current.siblingAtColumn(table_->FirstColumn()),
                                              QItemSelectionModel::NoUpdate);
  }
}

void SubtitleList::ShowComparison(const Comparison& comparison) {
  model_->SetComparison(comparison);
  if (comparison.IsOpen() == table_->isColumnHidden(SubtitleModel::Compared)) {
    table_->setColumnHidden(SubtitleModel::Compared, !comparison.IsOpen());
    UpdateColumns();
  }
}

QByteArray SubtitleList::ColumnState() const {
  return table_->horizontalHeader()->saveState();
}

QByteArray SubtitleList::SplitterState() const {
  return splitter_->saveState();
}

void SubtitleList::Restore(const QByteArray& columns, const QByteArray& splitter) {
  splitter_->restoreState(splitter);
  QHeaderView* header = table_->horizontalHeader();
  const QByteArray usual = header->saveState();
  const bool hidesCompared = header->isSectionHidden(SubtitleModel::Compared);
  const bool restored = header->restoreState(columns);
  header->setSectionHidden(SubtitleModel::Compared, true);
  if (restored &&
      (header->count() != SubtitleModel::Columns || header->hiddenSectionCount() >= header->count())) {
    header->restoreState(usual);
  }
  header->setSectionHidden(SubtitleModel::Compared, hidesCompared);
  for (int column = 0; column < SubtitleModel::Compared; ++column) {
    const QSignalBlocker blocked(columnActions_[column]);
    columnActions_[column]->setChecked(!header->isSectionHidden(column));
  }
  UpdateColumns();
}

QList<QWidget*> SubtitleList::TabOrder() const {
  return {text_, kind_, table_, problems_};
}

}  // namespace quillmark
