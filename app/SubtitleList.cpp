#include "app/SubtitleList.h"

#include <algorithm>
#include <utility>

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QSplitter>
#include <QVBoxLayout>

#include "app/CountText.h"
#include "app/PicturesAhead.h"
#include "app/ProblemFinder.h"
#include "app/RowFollower.h"
#include "app/SubtitleDelegate.h"
#include "app/SubtitleTable.h"
#include "app/TimeStrip.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

struct KindEntry {
  FilterKind Kind;
  const char* Text;
};

constexpr KindEntry Kinds[] = {{FilterKind::All, Ui::Mark("All")},
                               {FilterKind::WithProblems, Ui::Mark("With problems")},
                               {FilterKind::Invalid, Ui::Mark("Invalid")},
                               {FilterKind::Forced, Ui::Mark("Forced")},
                               {FilterKind::Animated, Ui::Mark("Animated")},
                               {FilterKind::WithoutEnd, Ui::Mark("Without end")},
                               {FilterKind::Overlapping, Ui::Mark("Overlapping")},
                               {FilterKind::OtherCodes, Ui::Mark("Other colours than the first")},
                               {FilterKind::Selected, Ui::Mark("Selected")}};

/// The columns' names with what calls them in a menu.
constexpr const char* ColumnTexts[] = {Ui::Mark("&Number"),   Ui::Mark("&Picture"),  Ui::Mark("&Start"),
                                       Ui::Mark("&End"),      Ui::Mark("&Duration"), Ui::Mark("P&lace"),
                                       Ui::Mark("S&ize"),     Ui::Mark("&Colours"),  Ui::Mark("&Forced"),
                                       Ui::Mark("&Animated"), Ui::Mark("P&roblems")};
static_assert(std::size(ColumnTexts) == SubtitleModel::Compared);

/// Where it is in sight without moving the others.
constexpr int PlaceOfCompared = SubtitleModel::Start + 1;

std::vector<TimeBar> BarsOf(const SupStream& stream) {
  const std::size_t count = std::min(stream.StartTime.size(), stream.EndTime.size());
  std::vector<TimeBar> bars;
  if (stream.Count > 0) {
    bars.reserve(count);
    for (std::size_t i = 0; i < count; ++i) {
      bars.push_back(BarOf(stream.StartTime[i], stream.EndTime[i]));
    }
  }
  return bars;
}

/// Rows of the table that are always in sight, and lines of the problems.
constexpr int LeastRows = 2;
constexpr int UsualRows = 8;
constexpr int UsualLines = 2;
/// Of the list of kinds, which opens as wide as it needs.
constexpr int KindLetters = 14;

int HeightOfLines(const QPlainTextEdit& text, int lines) {
  return lines * text.fontMetrics().lineSpacing() +
         2 * (text.frameWidth() + static_cast<int>(text.document()->documentMargin()));
}

}  // namespace

SubtitleList::SubtitleList(Document& document, QWidget* parent)
    : QWidget(parent),
      document_(document),
      finder_(new ProblemFinder(this)),
      model_(new SubtitleModel(document, *finder_, this)),
      pictures_(document) {
  Build();
  BuildColumns();
  ConnectDocument();
  ConnectControls();
  Filter();
}

SubtitleList::~SubtitleList() = default;

void SubtitleList::Build() {
  text_ = new QLineEdit(this);
  text_->setObjectName(QStringLiteral("Text_Filter"));
  text_->setAccessibleName(Ui::Tr("Filter"));
  text_->setPlaceholderText(Ui::Tr("Filter: 12, 100-200, 1:02, words"));
  text_->setToolTip(
      Ui::Tr("Show the subtitles of these numbers (12, 100-200), the one shown at a time "
             "(1:02), or those with a problem in these words"));
  text_->setClearButtonEnabled(true);
  kind_ = new QComboBox(this);
  kind_->setObjectName(QStringLiteral("Combo_Filter"));
  kind_->setAccessibleName(Ui::Tr("Kind of subtitles"));
  kind_->setToolTip(Ui::Tr("Show the subtitles of this kind alone"));
  for (const KindEntry& entry : Kinds) {
    kind_->addItem(Ui::Tr(entry.Text));
  }
  kind_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  kind_->setMinimumContentsLength(KindLetters);
  count_ = new QLabel(this);
  count_->setObjectName(QStringLiteral("Label_Count"));
  strip_ = new TimeStrip(this);
  strip_->setObjectName(QStringLiteral("Strip_Time"));
  splitter_ = new QSplitter(Qt::Vertical, this);
  splitter_->setObjectName(QStringLiteral("Splitter_Problems"));
  table_ = new SubtitleTable(splitter_);
  table_->setObjectName(QStringLiteral("List_Subtitles"));
  table_->setAccessibleName(Ui::Tr("Subtitles"));
  table_->setModel(model_);
  table_->setItemDelegate(new SubtitleDelegate(document_, *model_, pictures_, table_));
  follower_ = new RowFollower(document_, *table_, this);
  new PicturesAhead(*table_, *model_, pictures_);
  problems_ = new QPlainTextEdit(splitter_);
  problems_->setObjectName(QStringLiteral("Text_Problems"));
  problems_->setAccessibleName(Ui::Tr("Problems of the subtitle"));
  problems_->setToolTip(Ui::Tr("What is wrong with the current subtitle, and at which byte of the file"));
  problems_->setReadOnly(true);
  problems_->setTabChangesFocus(true);
  problems_->setUndoRedoEnabled(false);
  problems_->setMinimumHeight(HeightOfLines(*problems_, 1));
  table_->setMinimumHeight(HeightOfRows(LeastRows));
  splitter_->setCollapsible(0, false);
  splitter_->setStretchFactor(0, 1);
  splitter_->setSizes({HeightOfRows(UsualRows), HeightOfLines(*problems_, UsualLines)});

  const int gap = fontMetrics().height() / 3;
  auto* narrowing = new QHBoxLayout;
  narrowing->setSpacing(gap);
  narrowing->addWidget(text_, 1);
  narrowing->addWidget(kind_);
  narrowing->addWidget(count_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(gap);
  column->addLayout(narrowing);
  column->addWidget(strip_);
  column->addWidget(splitter_, 1);
}

int SubtitleList::HeightOfRows(int rows) const {
  return table_->horizontalHeader()->sizeHint().height() + rows * SubtitleDelegate::RowHeight;
}

QSize SubtitleList::sizeHint() const {
  int width = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, table_) + 2 * table_->frameWidth();
  for (int column = 0; column < SubtitleModel::Problems; ++column) {
    width += SubtitleDelegate::UsualWidth(static_cast<SubtitleModel::Column>(column), fontMetrics());
  }
  const int narrowing = layout()->sizeHint().height() - splitter_->sizeHint().height();
  return {width, narrowing + HeightOfRows(UsualRows) + splitter_->handleWidth() +
                     HeightOfLines(*problems_, UsualLines)};
}

void SubtitleList::BuildColumns() {
  QHeaderView* columns = table_->horizontalHeader();
  columns->setObjectName(QStringLiteral("Header_Subtitles"));
  columns->setContextMenuPolicy(Qt::ActionsContextMenu);
  for (int column = 0; column < SubtitleModel::Columns; ++column) {
    table_->setColumnWidth(
        column, SubtitleDelegate::UsualWidth(static_cast<SubtitleModel::Column>(column), fontMetrics()));
  }
  columns->moveSection(SubtitleModel::Compared, PlaceOfCompared);
  table_->setColumnHidden(SubtitleModel::Compared, true);
  for (int column = 0; column < SubtitleModel::Compared; ++column) {
    auto* action = new QAction(Ui::Tr(ColumnTexts[column]), this);
    action->setObjectName(QStringLiteral("Action_Column_") + QString::number(column));
    action->setCheckable(true);
    action->setChecked(true);
    columnActions_.append(action);
    columns->addAction(action);
    connect(action, &QAction::toggled, this, [this, column](bool shown) { ShowColumn(column, shown); });
  }
  connect(columns, &QHeaderView::sectionMoved, this, &SubtitleList::UpdateColumns);
}

void SubtitleList::ConnectDocument() {
  connect(&document_, &Document::StreamChanged, this, &SubtitleList::FollowStream);
  connect(&document_, &Document::PaletteChanged, this, &SubtitleList::FollowPictures);
  connect(&document_, &Document::MergeChanged, this, [this] {
    FollowPictures();
    ShowSecondLane();
    FitNumbers();
  });
  connect(&document_, &Document::FrameLinesChanged, this, &SubtitleList::FollowPictures);
  connect(finder_, &ProblemFinder::Found, this, &SubtitleList::FollowMarks);
  connect(finder_, &ProblemFinder::Finished, this, [this] {
    if (filter_.AsksForMarks() || finder_->Survey().DamageCount() > 0) {
      ShowRows(true);
    }
    ShowProblems();
    emit ProblemsCounted();
  });
}

void SubtitleList::ConnectControls() {
  connect(text_, &QLineEdit::textChanged, this, &SubtitleList::Filter);
  connect(kind_, &QComboBox::currentIndexChanged, this, [this](int index) {
    picked_.clear();
    if (Kinds[index].Kind == FilterKind::Selected) {
      picked_.resize(static_cast<std::size_t>(std::max(document_.Primary().Count, 0)));
      for (const std::size_t subtitle : Selected()) {
        picked_[subtitle] = true;
      }
    }
    Filter();
  });
  connect(strip_, &TimeStrip::Chosen, this, &SubtitleList::GoToSubtitle);
  connect(table_, &SubtitleTable::NumberTyped, this, [this](std::int64_t number) {
    if (number >= 1 && number <= document_.Primary().Count) {
      if (const auto row = model_->RowOf(RowSubject::Subtitle(static_cast<std::size_t>(number - 1)))) {
        table_->GoToRow(*row);
      }
    }
  });
  connect(follower_, &RowFollower::RowMoved, this, &SubtitleList::ShowProblems);
  connect(follower_, &RowFollower::RowChosen, this, &SubtitleList::GoToChosen);
  connect(follower_, &RowFollower::DocumentMoved, this, &SubtitleList::FollowNumber);
  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
    keeps_ = keeps_ && follower_->IsKeeping();
    emit SelectionChanged();
  });
}

void SubtitleList::FollowStream(StreamChange what) {
  const SupStream& stream = document_.Primary();
  const auto count = static_cast<std::size_t>(std::max(stream.Count, 0));
  const auto file = std::span(stream.RawBytes)
                        .first(std::min(stream.RawBytes.size(), static_cast<std::size_t>(stream.FileLength)));
  pictures_.Forget();
  if (what == StreamChange::Bytes) {
    finder_->Refresh();
    model_->TellChanged();
    return;
  }
  if (count > 0) {
    finder_->Start(file, count);
  } else {
    finder_->Stop();
  }
  if (what == StreamChange::Stream) {
    // What was looked for in another stream hides what is in this one.
    const QSignalBlocker blockedText(text_);
    const QSignalBlocker blockedKind(kind_);
    text_->clear();
    kind_->setCurrentIndex(0);
    filter_ = SubtitleFilter();
  }
  ShowStrip();
  ShowRows(what == StreamChange::Packets);
  emit ProblemsCounted();
}

void SubtitleList::FollowMarks(std::size_t first, std::size_t end) {
  model_->TellMarked(first, end);
  const StreamSurvey& survey = finder_->Survey();
  const auto count = static_cast<std::size_t>(std::max(document_.Primary().Count, 0));
  for (std::size_t index = first; index < std::min(end, count); ++index) {
    strip_->SetMarks(index, survey.MarksOf(index));
  }
  const auto current = CurrentSubject();
  if (current && current->Index() >= first && current->Index() < end) {
    ShowProblems();
  }
  emit ProblemsCounted();
}

void SubtitleList::FollowPictures() {
  pictures_.Forget();
  model_->TellChanged();
}

void SubtitleList::ShowStrip() {
  strip_->SetLane(0, BarsOf(document_.Primary()));
  ShowSecondLane();
}

void SubtitleList::ShowSecondLane() {
  const bool hasSecond = document_.IsMerging() && document_.Secondary().Count > 0;
  // A lane that is set again shows the whole film again.
  if (hasSecond != std::exchange(hasSecondLane_, hasSecond)) {
    strip_->SetLane(1, hasSecond ? BarsOf(document_.Secondary()) : std::vector<TimeBar>());
  }
}

void SubtitleList::FitNumbers() {
  const int alone = SubtitleDelegate::UsualWidth(SubtitleModel::Number, fontMetrics());
  const int both = alone + fontMetrics().horizontalAdvance(QStringLiteral(" + 0000"));
  const int now = table_->columnWidth(SubtitleModel::Number);
  // Another width is the user's.
  if (now == alone || now == both) {
    table_->setColumnWidth(SubtitleModel::Number, document_.IsMerging() ? both : alone);
  }
}

void SubtitleList::Filter() {
  filter_ = SubtitleFilter(text_->text().toStdString(), Kinds[kind_->currentIndex()].Kind);
  ShowRows(true);
}

std::vector<RowSubject> SubtitleList::WantedRows() const {
  if (document_.Primary().Count < 1) {
    return {};
  }
  const StreamSurvey& survey = finder_->Survey();
  std::vector<std::uint32_t> found;
  filter_.Find(document_.Primary(), survey.Marks(), picked_, found);
  std::vector<StreamDamage> damages;
  const auto count = static_cast<std::size_t>(document_.Primary().Count);
  for (std::size_t i = 0; i < survey.DamageCount(); ++i) {
    const StreamDamage damage = survey.Damage(i);
    if (damage.Before <= count && filter_.WantsDamage(damage.Problem.Code)) {
      damages.push_back(damage);
    }
  }
  std::vector<RowSubject> rows;
  rows.reserve(found.size() + damages.size());
  auto damage = damages.begin();
  for (const std::uint32_t index : found) {
    for (; damage != damages.end() && damage->Before <= index; ++damage) {
      rows.push_back(RowSubject::DamageBefore(damage->Before));
    }
    rows.push_back(RowSubject::Subtitle(index));
  }
  for (; damage != damages.end(); ++damage) {
    rows.push_back(RowSubject::DamageBefore(damage->Before));
  }
  return rows;
}

void SubtitleList::ShowRows(bool keepsSelection) {
  std::vector<RowSubject> rows = WantedRows();
  if (keepsSelection && std::ranges::equal(rows, model_->Rows())) {
    model_->TellChanged();
    return;
  }
  if (!keepsSelection) {
    kept_.clear();
  } else if (!keeps_) {
    kept_ = Selected();
  }
  const auto current = keepsSelection ? CurrentSubject() : std::nullopt;
  follower_->Keep([&] {
    model_->Show(std::move(rows));
    for (const auto& subject : {current, SubjectOfDocument()}) {
      const auto row = subject ? model_->RowOf(*subject) : std::nullopt;
      if (row && !table_->currentIndex().isValid()) {
        table_->GoToRow(*row);
      }
    }
    SelectKept();
  });
  keeps_ = true;
  if (keepsSelection) {
    follower_->DropFollow();
  } else {
    follower_->Follow();
  }
  ShowCount();
  ShowProblems();
  emit SelectionChanged();
}

void SubtitleList::SelectKept() {
  QItemSelection selection;
  const auto add = [&](int first, int last) {
    selection.append(QItemSelectionRange(model_->index(first, 0), model_->index(last, model_->Columns - 1)));
  };
  std::optional<std::pair<int, int>> run;
  for (const std::size_t subtitle : kept_) {
    const auto row = model_->RowOf(RowSubject::Subtitle(subtitle));
    if (!row) {
      continue;
    }
    if (run && run->second + 1 == *row) {
      run->second = *row;
      continue;
    }
    if (run) {
      add(run->first, run->second);
    }
    run = std::pair(*row, *row);
  }
  if (run) {
    add(run->first, run->second);
  }
  if (!kept_.empty()) {
    table_->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
  }
}

void SubtitleList::ShowCount() {
  const auto shown = std::ranges::count_if(model_->Rows(), &RowSubject::IsSubtitle);
  count_->setText(Ui::Tr("%1 of %2", {CountText(shown), CountText(std::max(document_.Primary().Count, 0))}));
}

}  // namespace quillmark
