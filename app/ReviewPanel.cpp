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
#include <QRadioButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>
#include <QToolButton>

#include "app/CountText.h"
#include "app/DrawnSubtitle.h"
#include "app/MergeFinder.h"
#include "app/MergedCodesForm.h"
#include "app/PairModel.h"
#include "app/PathText.h"
#include "app/RowFollower.h"
#include "app/ShownField.h"
#include "app/SubtitleTable.h"
#include "app/Ui.h"

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
  return named == numbers ? text : Ui::Tr("%1 and more", {text});
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
      pictures_([this, reader = std::make_shared<DrawnSubtitleReader>()](std::size_t pair) {
        const MergedPair& shown = finder_->Pairs()[pair];
        return Splits() ? reader->ReadUnit(document_, shown.Planned())
                        : reader->Read(document_, shown.Primary);
      }) {
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
  connect(finder_, &MergeFinder::Found, this, &ReviewPanel::FollowPairs);
  connect(finder_, &MergeFinder::Finished, this, &ReviewPanel::FollowEnd);
}

void ReviewPanel::ConnectControls() {
  connect(offset_, &QSpinBox::valueChanged, this, &ReviewPanel::WantOffset);
  connect(slider_, &QSlider::valueChanged, this, &ReviewPanel::WantOffset);
  connect(showsCodes_, &QAbstractButton::toggled, this, &ReviewPanel::ShowCodes);
  connect(split_, &QAbstractButton::toggled, this, &ReviewPanel::WantTimes);
  connect(join_, &QSpinBox::valueChanged, this, &ReviewPanel::WantTimes);
  connect(text_, &QLineEdit::textChanged, this, &ReviewPanel::ShowRows);
  connect(kind_, &QComboBox::currentIndexChanged, this, &ReviewPanel::ShowRows);
  connect(table_->horizontalHeader(), &QHeaderView::sortIndicatorChanged, this, &ReviewPanel::ShowRows);
  connect(table_, &SubtitleTable::NumberTyped, this, [this](std::int64_t number) {
    const auto pair = number > 0 ? finder_->PairOf(static_cast<std::size_t>(number - 1)) : std::nullopt;
    if (const auto row = pair ? model_->RowOf(*pair) : std::nullopt) {
      table_->GoToRow(*row);
    }
  });
  connect(follower_, &RowFollower::RowMoved, this, &ReviewPanel::ShowProblems);
  connect(follower_, &RowFollower::RowChosen, this, &ReviewPanel::GoToChosen);
  connect(follower_, &RowFollower::DocumentMoved, this, &ReviewPanel::FollowNumber);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &ReviewPanel::SelectionChanged);
}

void ReviewPanel::showEvent(QShowEvent* /*event*/) {
  FollowMerge();
  follower_->Follow();
}

void ReviewPanel::hideEvent(QHideEvent* /*event*/) {
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
  ShowTimes();
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
      finder_->Start(document_.Primary(), document_.Secondary(), settings, PairOfDocument());
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
    follower_->Follow();
  }
  if (!sinceCount_.isValid() || sinceCount_.hasExpired(BetweenCounts)) {
    ShowCount();
  }
}

void ReviewPanel::FollowEnd() {
  const MergeReviewSummary& summary = finder_->Summary();
  for (std::size_t kind = 0; kind < MergeProblemKinds; ++kind) {
    const std::size_t packets = summary.Of[kind];
    kind_->setItemData(
        static_cast<int>(kind) + EntriesBeforeKinds,
        packets == 0 ? QVariant() : Ui::Tr("%1 packets", {CountText(static_cast<std::int64_t>(packets))}),
        Qt::ToolTipRole);
  }
  ShowRows();
  ShowHead();
}

void ReviewPanel::ShowRows() {
  const auto current = CurrentPair();
  const QHeaderView* header = table_->horizontalHeader();
  follower_->Keep([&] {
    model_->Show(MakePairFilter(text_->text().toStdString(), KindsOfEntry(kind_->currentIndex()),
                                document_.Primary(), document_.TimesOfMerge().Mode),
                 header->sortIndicatorSection(), header->sortIndicatorOrder());
    for (const auto& pair : {current, PairOfDocument()}) {
      const auto row = pair ? model_->RowOf(*pair) : std::nullopt;
      if (row && !table_->currentIndex().isValid()) {
        table_->GoToRow(*row);
      }
    }
  });
  ShowCount();
  ShowProblems();
  emit SelectionChanged();
}

void ReviewPanel::ShowHead() {
  if (!document_.HasBothStreams()) {
    head_->setText(Ui::Tr("No second stream is loaded"));
    leftOut_->clear();
    return;
  }
  const QString offset = QString::number(document_.YOffset());
  const QString subtitles = SubtitlesText(document_.Secondary().Count);
  QString text = Splits() ? Ui::Tr("%1, offset %2, split: %3", {SecondName(document_), offset, subtitles})
                          : Ui::Tr("%1, offset %2: %3", {SecondName(document_), offset, subtitles});
  QString leftOut = Ui::Tr("Looking through the merge...");
  QString summary;
  if (finder_->HasWhole()) {
    summary = QString::fromStdString(SummaryText(finder_->Summary()));
    text += QStringLiteral("; ") + summary.section(u':', 0, 0);
    const SubtitleSet& numbers = finder_->LeftOut();
    const std::int64_t count = numbers.SizeWithin(document_.Secondary().Count);
    leftOut = count == 0
                  ? Ui::Tr("Left out: none")
                  : Ui::Tr("Left out: %1 (%n subtitle that no packet shows)",
                           "Left out: %1 (%n subtitles that no packet shows)", count, {NumbersText(numbers)});
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
  if (!finder_->IsFinished() && finder_->Count() == 0) {
    count_->setText(Ui::Tr("Reading the times"));
    return;
  }
  if (!finder_->IsFinished()) {
    count_->setText(Ui::Tr("Looked at %1 of %2", {CountText(static_cast<std::int64_t>(finder_->Looked())),
                                                  CountText(static_cast<std::int64_t>(finder_->Count()))}));
    return;
  }
  count_->setText(Ui::Tr("%1 of %2", {CountText(model_->rowCount()),
                                      CountText(static_cast<std::int64_t>(finder_->Pairs().size()))}));
}

void ReviewPanel::ShowProblems() {
  const auto pair = CurrentPair();
  const QString lines = pair ? model_->ProblemLinesAt(table_->currentIndex().row()) : QString();
  if (lines != problems_->toPlainText()) {
    problems_->setPlainText(lines);
  }
  SetPlaceholder(*problems_, pair ? Ui::Tr("No problems") : QString());
}

void ReviewPanel::ShowOffset() {
  const QSignalBlocker blockedOffset(offset_);
  const QSignalBlocker blockedSlider(slider_);
  if (offset_->value() != document_.YOffset()) {
    offset_->setValue(document_.YOffset());
  }
  slider_->setValue(document_.YOffset());
}

void ReviewPanel::ShowTimes() {
  const MergeTimes& times = document_.TimesOfMerge();
  const bool splits = times.Mode == MergeMode::Split;
  {
    const QSignalBlocker blockedSplit(split_);
    const QSignalBlocker blockedJoin(join_);
    (splits ? split_ : pairs_)->setChecked(true);
    if (join_->value() != times.JoinMs) {
      join_->setValue(times.JoinMs);
    }
  }
  join_->setEnabled(splits);
  if (splits == table_->isColumnHidden(PairModel::Start)) {
    ShowTimeColumns(splits);
  }
}

/// Moves that come faster than the picture is drawn are one.
void ReviewPanel::WantOffset(int lines) {
  wantedOffset_ = static_cast<std::int16_t>(lines);
  TellLater();
}

void ReviewPanel::WantTimes() {
  wantedTimes_ = {.Mode = split_->isChecked() ? MergeMode::Split : MergeMode::Pairs,
                  .JoinMs = join_->value()};
  TellLater();
}

/// Of several calls the first finds what was wanted last, and the others nothing.
void ReviewPanel::TellLater() {
  QMetaObject::invokeMethod(this, &ReviewPanel::Tell, Qt::QueuedConnection);
}

void ReviewPanel::Tell() {
  if (const auto lines = std::exchange(wantedOffset_, std::nullopt)) {
    if (*lines != document_.YOffset()) {
      emit OffsetChosen(*lines);
    }
    ShowOffset();
  }
  if (const auto times = std::exchange(wantedTimes_, std::nullopt)) {
    if (*times != document_.TimesOfMerge()) {
      emit TimesChosen(*times);
    }
    ShowTimes();  // as they were, where they could not be taken just now
  }
}

bool ReviewPanel::Splits() const {
  return document_.TimesOfMerge().Mode == MergeMode::Split;
}

void ReviewPanel::GoToChosen() {
  const auto pair = CurrentPair();
  const bool isShown = pair && pair == PairOfDocument() && document_.HasSubtitle();
  if (!pair || isShown) {
    return;
  }
  if (Splits()) {
    ChooseUnit(*pair);
  } else {
    emit Chosen(NumberOf(*pair));
  }
  // Where the window could not go there just now, the list is back at what it shows.
  follower_->Follow();
}

/// Where the window went to a subtitle by its number, what is shown of it in a split merge is its first
/// packet.
void ReviewPanel::FollowNumber() {
  const auto pair = PairOfDocument();
  if (!pair) {
    return;
  }
  if (const auto row = CurrentPair() != pair ? model_->RowOf(*pair) : std::nullopt) {
    follower_->GoToRow(*row);
  }
  if (Splits() && !document_.ShownUnit() && document_.HasSubtitle() && isVisible()) {
    ChooseUnit(*pair);
  }
}

void ReviewPanel::ChooseUnit(std::size_t pair) {
  emit UnitChosen(finder_->Pairs()[pair].Planned(), NumberOf(pair));
}

/// Of the first stream's subtitle of the packet, or else of the last one before it, or the first of all.
std::int64_t ReviewPanel::NumberOf(std::size_t pair) const {
  const auto pairs = finder_->Pairs().first(pair + 1);
  const auto shown =
      std::find_if(pairs.rbegin(), pairs.rend(), [](const MergedPair& shows) { return shows.HasPrimary; });
  return shown == pairs.rend() ? 1 : static_cast<std::int64_t>(shown->Primary) + 1;
}

std::optional<std::size_t> ReviewPanel::CurrentPair() const {
  const QModelIndex current = table_->currentIndex();
  const auto pair = current.isValid() ? std::optional(model_->PairOf(current.row())) : std::nullopt;
  return pair && *pair < finder_->Pairs().size() ? pair : std::nullopt;
}

std::optional<std::size_t> ReviewPanel::PairOfDocument() const {
  if (const auto& unit = document_.ShownUnit()) {
    return finder_->PairAt(unit->Start);
  }
  const std::int64_t number = document_.LastTried();
  return number > 0 ? finder_->PairOf(static_cast<std::size_t>(number - 1)) : std::nullopt;
}

QString ReviewPanel::GoToProblem(bool forward) {
  const auto row = table_->GoToNext(forward, [this](int at) { return model_->HasProblems(at); });
  return row ? model_->SentenceAt(*row) : QString();
}

bool ReviewPanel::HasSelection() const {
  return table_->selectionModel()->hasSelection();
}

std::unique_ptr<QMimeData> ReviewPanel::Copied() const {
  const std::vector<int> rows = table_->SelectedRows();
  if (rows.empty()) {
    return nullptr;
  }
  std::vector<int> columns = table_->ShownColumns();
  std::erase(columns, PairModel::Picture);
  auto copied = std::make_unique<QMimeData>();
  copied->setText(model_->TabbedText(rows, columns));
  return copied;
}

}  // namespace quillmark
