#include "app/ReviewPanel.h"

#include <algorithm>
#include <utility>

#include <QComboBox>
#include <QEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>

#include "app/CountText.h"
#include "app/MergeFinder.h"
#include "app/MergedCodesForm.h"
#include "app/PairModel.h"
#include "app/PathText.h"
#include "app/SubtitleTable.h"

namespace quillmark {
namespace {

/// How often the count of a search is shown.
constexpr qint64 BetweenCounts = 100;
/// The entries of the list of kinds that stand before the kinds themselves.
constexpr int EntriesBeforeKinds = 2;
constexpr std::size_t MostRangesNamed = 12;

std::uint32_t KindsOfEntry(int entry) {
  if (entry < 1) {
    return 0;
  }
  return entry < EntriesBeforeKinds ? ~std::uint32_t{0} : std::uint32_t{1} << (entry - EntriesBeforeKinds);
}

/// "3, 7-9 and more".
QString NumbersText(const SubtitleSet& numbers) {
  SubtitleSet named;
  for (const SubtitleRange& range : numbers.Ranges()) {
    if (named.Ranges().size() == MostRangesNamed) {
      break;
    }
    named.Add(range);
  }
  QString text = QString::fromStdString(named.Text()).replace(u',', QStringLiteral(", "));
  return named == numbers ? text : text + QStringLiteral(" and more");
}

QString SecondName(const Document& document) {
  return CutInTheMiddle(QFileInfo(QString::fromStdString(document.Secondary().Path)).fileName());
}

}  // namespace

ReviewPanel::ReviewPanel(const Document& document, QWidget* parent)
    : QWidget(parent),
      document_(document),
      finder_(new MergeFinder(this)),
      model_(new PairModel(*finder_, this)),
      pictures_(document) {
  setObjectName(QStringLiteral("ReviewPanel"));
  Build();
  ConnectDocument();
  ConnectControls();
  ShowHead();
  ShowOffset();
}

ReviewPanel::~ReviewPanel() = default;

void ReviewPanel::ConnectDocument() {
  connect(&document_, &Document::MergeChanged, this, &ReviewPanel::FollowMerge);
  connect(&document_, &Document::CommandsChanged, this, &ReviewPanel::FollowMerge);
  connect(&document_, &Document::FrameLinesChanged, this, &ReviewPanel::FollowMerge);
  connect(&document_, &Document::PaletteChanged, this, &ReviewPanel::FollowMerge);
  connect(&document_, &Document::NumberChanged, this, [this] {
    numberChanged_ = true;
    SettleLater();
  });
  connect(finder_, &MergeFinder::Found, this, &ReviewPanel::FollowPairs);
  connect(finder_, &MergeFinder::Finished, this, &ReviewPanel::FollowEnd);
}

void ReviewPanel::ConnectControls() {
  connect(offset_, &QSpinBox::valueChanged, this, &ReviewPanel::WantOffset);
  connect(slider_, &QSlider::valueChanged, this, &ReviewPanel::WantOffset);
  connect(showsCodes_, &QAbstractButton::toggled, this, [this](bool shown) {
    showsCodes_->setArrowType(shown ? Qt::DownArrow : Qt::RightArrow);
    codes_->setVisible(shown);
  });
  connect(codes_, &MergedCodesForm::Chosen, this, &ReviewPanel::CodesChosen);
  connect(text_, &QLineEdit::textChanged, this, &ReviewPanel::ShowRows);
  connect(kind_, &QComboBox::currentIndexChanged, this, &ReviewPanel::ShowRows);
  connect(table_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, &ReviewPanel::ShowRows);
  connect(table_, &SubtitleTable::NumberTyped, this, [this](std::int64_t number) {
    const auto pair = number > 0 ? finder_->PairOf(static_cast<std::size_t>(number - 1)) : std::nullopt;
    if (const auto row = pair ? model_->RowOf(*pair) : std::nullopt) {
      table_->GoToRow(*row);
    }
  });
  const auto chooseAgain = [this] {
    movedByUser_ = true;
    SettleLater();
  };
  connect(table_, &QAbstractItemView::activated, this, chooseAgain);
  connect(table_, &QAbstractItemView::clicked, this, chooseAgain);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &ReviewPanel::CurrentRowMoved);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ReviewPanel::SelectionChanged);
}

void ReviewPanel::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  FollowMerge();
}

void ReviewPanel::hideEvent(QHideEvent* event) {
  QWidget::hideEvent(event);
  Pause();
}

/// The wheel scrolls what the offset stands in, unless one is at it.
bool ReviewPanel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
    event->ignore();
    return true;
  }
  return QWidget::eventFilter(watched, event);
}

void ReviewPanel::Pause() {
  finder_->SetPaused(document_.IsBusy() || !isVisible());
}

void ReviewPanel::FollowMerge() {
  ShowOffset();
  if (!document_.HasBothStreams()) {
    if (std::exchange(settings_, std::nullopt)) {
      pictures_.Forget();
      finder_->Stop();
    }
  } else if (isVisible()) {
    if (const MergeSettings settings = document_.SettingsOfMerge(); settings != settings_) {
      settings_ = settings;
      pictures_.Forget();
      model_->TellChanged();
      const std::int64_t number = document_.LastTried();
      finder_->Start(document_.Primary(), document_.Secondary(), settings,
                     number > 0 ? std::optional(static_cast<std::size_t>(number - 1)) : std::nullopt);
      ShowHead();
      ShowCount();
    }
  }
  Pause();
}

void ReviewPanel::FollowPairs(std::size_t first, std::size_t end) {
  model_->Follow(first, end);
  const auto isThere = [&](const std::optional<std::size_t>& pair) {
    return pair && *pair >= first && *pair < end;
  };
  if (isThere(CurrentPair())) {
    ShowProblems();
  }
  if (isThere(PairOfDocument())) {
    numberChanged_ = true;
    SettleLater();
  }
  if (!sinceCount_.isValid() || sinceCount_.hasExpired(BetweenCounts)) {
    ShowCount();
  }
}

void ReviewPanel::FollowEnd() {
  const MergeReviewSummary& summary = finder_->Summary();
  for (std::size_t kind = 0; kind < MergeProblemKinds; ++kind) {
    const std::size_t packets = summary.Of[kind];
    kind_->setItemData(static_cast<int>(kind) + EntriesBeforeKinds,
                       packets == 0
                           ? QVariant()
                           : CountText(static_cast<std::int64_t>(packets)) + QStringLiteral(" packets"),
                       Qt::ToolTipRole);
  }
  ShowRows();
  ShowHead();
}

void ReviewPanel::ShowRows() {
  const auto current = CurrentPair();
  const QHeaderView* header = table_->horizontalHeader();
  {
    const QScopedValueRollback<bool> follows(followsDocument_, true);
    model_->Show(
        MakePairFilter(text_->text().toStdString(), KindsOfEntry(kind_->currentIndex()), document_.Primary()),
        header->sortIndicatorSection(), header->sortIndicatorOrder());
    for (const auto& pair : {current, PairOfDocument()}) {
      const auto row = pair ? model_->RowOf(*pair) : std::nullopt;
      if (row && !table_->currentIndex().isValid()) {
        table_->GoToRow(*row);
      }
    }
  }
  ShowCount();
  ShowProblems();
  emit SelectionChanged();
}

void ReviewPanel::ShowHead() {
  if (!document_.HasBothStreams()) {
    head_->setText(QStringLiteral("No second stream is loaded"));
    leftOut_->clear();
    return;
  }
  QString text = SecondName(document_) + QStringLiteral(", offset ") + QString::number(document_.YOffset()) +
                 QStringLiteral(": ") + SubtitlesText(document_.Secondary().Count);
  QString leftOut = QStringLiteral("Looking through the merge...");
  QString summary;
  if (finder_->HasWhole()) {
    summary = QString::fromStdString(SummaryText(finder_->Summary()));
    text += QStringLiteral("; ") + summary.section(u':', 0, 0);
    const SubtitleSet& numbers = finder_->LeftOut();
    const std::int64_t count = numbers.SizeWithin(document_.Secondary().Count);
    leftOut = count == 0 ? QStringLiteral("Left out: none")
                         : QStringLiteral("Left out: ") + NumbersText(numbers) + QStringLiteral(" (") +
                               SubtitlesText(count) + QStringLiteral(" that no packet shows)");
  }
  head_->setText(text);
  head_->setToolTip(summary.isEmpty() ? text : summary);
  leftOut_->setText(leftOut);
  leftOut_->setToolTip(leftOut);
  for (QLineEdit* line : {head_, leftOut_}) {
    line->setCursorPosition(0);  // what is too long ends out of sight
  }
}

void ReviewPanel::ShowCount() {
  sinceCount_.start();
  if (!finder_->IsFinished()) {
    count_->setText(QStringLiteral("Looked at ") + CountText(static_cast<std::int64_t>(finder_->Looked())) +
                    QStringLiteral(" of ") + CountText(static_cast<std::int64_t>(finder_->Count())));
    return;
  }
  count_->setText(CountText(model_->rowCount()) + QStringLiteral(" of ") +
                  CountText(static_cast<std::int64_t>(finder_->Pairs().size())));
}

void ReviewPanel::ShowProblems() {
  const auto pair = CurrentPair();
  const QString lines = pair ? model_->ProblemLinesAt(table_->currentIndex().row()) : QString();
  if (lines != problems_->toPlainText()) {
    problems_->setPlainText(lines);
  }
  problems_->setPlaceholderText(pair ? QStringLiteral("No problems") : QString());
}

void ReviewPanel::ShowOffset() {
  const QSignalBlocker blockedOffset(offset_);
  const QSignalBlocker blockedSlider(slider_);
  if (offset_->value() != document_.YOffset()) {
    offset_->setValue(document_.YOffset());
  }
  slider_->setValue(document_.YOffset());
}

/// Moves that come faster than the picture is drawn are one.
void ReviewPanel::WantOffset(int lines) {
  wantedOffset_ = static_cast<std::int16_t>(lines);
  SettleLater();
}

void ReviewPanel::CurrentRowMoved() {
  ShowProblems();
  if (!followsDocument_) {
    movedByUser_ = true;
    SettleLater();
  }
}

/// What the user wants is told when the event is over that it belongs to: showing a subtitle may end in a
/// message, and the document may pass several on its way to one.
void ReviewPanel::SettleLater() {
  if (!std::exchange(settling_, true)) {
    QMetaObject::invokeMethod(this, &ReviewPanel::Settle, Qt::QueuedConnection);
  }
}

void ReviewPanel::Settle() {
  settling_ = false;
  if (const auto lines = std::exchange(wantedOffset_, std::nullopt)) {
    if (*lines != document_.YOffset()) {
      emit OffsetChosen(*lines);
    }
    ShowOffset();
  }
  const auto pair = CurrentPair();
  if (std::exchange(movedByUser_, false) && pair) {
    const auto number = static_cast<std::int64_t>(finder_->Pairs()[*pair].Primary) + 1;
    if (number != document_.Number()) {
      emit Chosen(number);
      // Where the window could not go there just now, the list is back at what it shows.
      numberChanged_ = true;
    }
  }
  if (std::exchange(numberChanged_, false)) {
    FollowNumber();
  }
}

void ReviewPanel::FollowNumber() {
  const auto pair = PairOfDocument();
  if (!pair || CurrentPair() == pair) {
    return;
  }
  if (const auto row = model_->RowOf(*pair)) {
    const QScopedValueRollback<bool> follows(followsDocument_, true);
    table_->GoToRow(*row);
  }
}

std::optional<std::size_t> ReviewPanel::CurrentPair() const {
  const QModelIndex current = table_->currentIndex();
  const auto pair = current.isValid() ? std::optional(model_->PairOf(current.row())) : std::nullopt;
  return pair && *pair < finder_->Pairs().size() ? pair : std::nullopt;
}

std::optional<std::size_t> ReviewPanel::PairOfDocument() const {
  const std::int64_t number = document_.LastTried();
  return number > 0 ? finder_->PairOf(static_cast<std::size_t>(number - 1)) : std::nullopt;
}

QString ReviewPanel::GoToProblem(bool forward) {
  const int rows = model_->rowCount();
  const QModelIndex current = table_->currentIndex();
  const int step = forward ? 1 : -1;
  for (int row = current.isValid() ? current.row() + step : 0; row >= 0 && row < rows; row += step) {
    if (model_->HasProblems(row)) {
      table_->GoToRow(row);
      return model_->SentenceAt(row);
    }
  }
  return {};
}

bool ReviewPanel::HasSelection() const {
  return table_->selectionModel()->hasSelection();
}

std::unique_ptr<QMimeData> ReviewPanel::Copied() const {
  std::vector<int> rows;
  for (const QItemSelectionRange& range : table_->selectionModel()->selection()) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      rows.push_back(row);
    }
  }
  if (rows.empty()) {
    return nullptr;
  }
  std::ranges::sort(rows);
  auto copied = std::make_unique<QMimeData>();
  copied->setText(model_->TabbedText(rows));
  return copied;
}

}  // namespace quillmark
