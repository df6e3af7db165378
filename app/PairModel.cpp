#include "app/PairModel.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include <QPainter>
#include <QPixmap>

#include "app/MergeFinder.h"
#include "app/PaletteStrip.h"
#include "app/SeverityIcon.h"
#include "app/Ui.h"
#include "base/KeyOrder.h"
#include "sup/StreamProblem.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// A heading and what it is in words.
struct PairHeading {
  const char* Short;
  const char* Long;
};

constexpr std::array<PairHeading, PairModel::Columns> PairHeadings = {
    {{"#", Ui::Mark("Number of the first stream's subtitle")},
     {Ui::Mark("2nd #"), Ui::Mark("Number of the second stream's subtitle")},
     {Ui::Mark("Picture"), Ui::Mark("The merged picture")},
     {Ui::Mark("ms"), Ui::Mark("Milliseconds that both are shown together")},
     {Ui::Mark("What there is to know"), Ui::Mark("What there is to know")},
     {Ui::Mark("Bytes"), Ui::Mark("Length of the unit")},
     {Ui::Mark("Covered"), Ui::Mark("Pixels of the second picture that cover the first one")},
     {Ui::Mark("Clipped"), Ui::Mark("Pixels of both pictures that are lost")},
     {Ui::Mark("Recoloured"), Ui::Mark("Pixels that get another colour")},
     {Ui::Mark("Start"), Ui::Mark("When the packet is shown")},
     {Ui::Mark("Duration"), Ui::Mark("How long the packet is shown, in seconds")}}};

/// Of a packet that does not show one of the two.
const QString& NoNumber() {
  static const QString text = QStringLiteral("-");
  return text;
}

QString NumberOrNone(bool isShown, std::size_t index) {
  return isShown ? QString::number(index + 1) : NoNumber();
}

QString DurationText(const MergedPair& pair) {
  return QString::fromStdString(FormatSeconds(DurationMs(static_cast<std::int16_t>(pair.Delay))));
}

QString CountOrNothing(std::int64_t count) {
  return count == 0 ? QString() : QString::number(count);
}

bool IsDamage(const std::optional<StreamProblemCode>& damage, std::uint64_t codes) {
  return damage && (codes >> static_cast<unsigned>(*damage) & 1U) != 0;
}

ProblemSeverity WorstOf(std::uint32_t kinds) {
  ProblemSeverity worst = ProblemSeverity::Untidy;
  for (; kinds != 0; kinds &= kinds - 1) {
    worst = std::max(worst, SeverityOf(static_cast<MergeProblemKind>(std::countr_zero(kinds))));
  }
  return worst;
}

QPixmap DrawSeverity(ProblemSeverity severity) {
  constexpr int Sharp = 3;  // for screens of finer pixels
  QPixmap pixmap(SeverityIconSide * Sharp, SeverityIconSide * Sharp);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.scale(Sharp, Sharp);
  PaintSeverity(painter, QRectF(0, 0, SeverityIconSide, SeverityIconSide), severity);
  painter.end();
  return pixmap;
}

}  // namespace

bool PairFilter::Wants(const MergedPair& pair, std::uint32_t kinds) const {
  return (Kinds == 0 || (Kinds & kinds) != 0) &&
         (!Primaries ||
          (pair.HasPrimary && pair.Primary < Primaries->size() && (*Primaries)[pair.Primary])) &&
         (!Time || Time->WantsTime(pair.StartTicks, pair.Planned().End)) &&
         (!WordKinds || (*WordKinds & kinds) != 0 || IsDamage(pair.PrimaryDamage, WordDamage) ||
          IsDamage(pair.SecondaryDamage, WordDamage));
}

PairFilter MakePairFilter(std::string_view text, std::uint32_t kinds, const SupStream& primary,
                          MergeMode mode) {
  PairFilter filter{.Kinds = kinds};
  const SubtitleFilter read(text);
  if (read.AsksForMarks()) {
    filter.WordKinds = MergeProblemKindsWithWords(text);
    filter.WordDamage = CodesWithWords(text);
  } else if (read.AsksForTime() && mode == MergeMode::Split) {
    filter.Time = read;
  } else if (!read.WantsAll()) {
    std::vector<std::uint32_t> found;
    read.Find(primary, {}, {}, found);
    filter.Primaries.emplace(primary.PacketOffset.size());
    for (const std::uint32_t index : found) {
      (*filter.Primaries)[index] = true;
    }
  }
  return filter;
}

PairModel::PairModel(const MergeFinder& finder, QObject* parent)
    : QAbstractTableModel(parent), finder_(finder) {}

bool PairModel::IsWanted(std::size_t pair) const {
  return filter_.Wants(finder_.Pairs()[pair], finder_.Kinds()[pair]);
}

std::int64_t PairModel::SortKey(std::size_t pair) const {
  const MergedPair& at = finder_.Pairs()[pair];
  switch (sortColumn_) {
    case Secondary:
      return at.HasSecondary ? static_cast<std::int64_t>(at.Secondary) : -1;
    case Start:
      return at.StartTicks;
    case Duration:
      return at.Delay;
    case Together:
      return at.OverlapMs();
    case Covered:
      return at.Counts.Covered;
    case Clipped:
      return at.ClippedPixels();
    case Recoloured:
      return at.Counts.Recoloured;
    case Bytes:
      return static_cast<std::int64_t>(at.Unit.Size);
    case Problems:
      return std::countr_zero(finder_.Kinds()[pair]);  // the worst first
    default:
      return 0;
  }
}

void PairModel::Show(const PairFilter& filter, int column, Qt::SortOrder order) {
  filter_ = filter;
  sortColumn_ = column;
  order_ = order;
  known_ = finder_.Pairs().size();
  std::vector<SortedRow> wanted;
  wanted.reserve(known_);
  for (std::size_t pair = 0; pair < known_; ++pair) {
    if (IsWanted(pair)) {
      wanted.push_back({.Key = SortKey(pair), .Row = static_cast<std::uint32_t>(pair)});
    }
  }
  SortByKeys(wanted);
  if (order == Qt::DescendingOrder) {
    std::ranges::reverse(wanted);
  }
  std::vector<std::uint32_t> rows(wanted.size());
  std::ranges::transform(wanted, rows.begin(), &SortedRow::Row);
  if (rows == rows_) {
    TellChanged();
    return;
  }
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

void PairModel::Follow(std::size_t first, std::size_t end) {
  if (first < known_ && !rows_.empty()) {
    const bool inOrder = order_ == Qt::AscendingOrder && (sortColumn_ == Primary || sortColumn_ == Picture);
    const auto rowFrom = [&](std::size_t pair) {
      return static_cast<int>(std::ranges::lower_bound(rows_, pair) - rows_.begin());
    };
    const int from = inOrder ? rowFrom(first) : 0;
    const int to = (inOrder ? rowFrom(end) : rowCount()) - 1;
    if (from <= to) {
      emit dataChanged(index(from, 0), index(to, Columns - 1));
    }
  }
  std::vector<std::uint32_t> more;
  for (std::size_t pair = std::max(first, known_); pair < end; ++pair) {
    if (IsWanted(pair)) {
      more.push_back(static_cast<std::uint32_t>(pair));
    }
  }
  known_ = std::max(known_, end);
  if (!more.empty()) {
    beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(more.size()) - 1);
    rows_.insert(rows_.end(), more.begin(), more.end());
    endInsertRows();
  }
}

void PairModel::TellChanged() {
  if (!rows_.empty()) {
    emit dataChanged(index(0, 0), index(rowCount() - 1, Columns - 1));
  }
}

std::optional<int> PairModel::RowOf(std::size_t pair) const {
  const auto row = std::ranges::find(rows_, pair);
  return row == rows_.end() ? std::nullopt : std::optional(static_cast<int>(row - rows_.begin()));
}

const MergedPair& PairModel::PairAt(int row) const {
  return finder_.Pairs()[PairOf(row)];
}

bool PairModel::HasProblems(int row) const {
  return finder_.Kinds()[PairOf(row)] != 0;
}

QString PairModel::JoinedProblems(int row, const QString& separator) const {
  QStringList messages;
  for (const MergeProblem& problem : ProblemsOf(PairAt(row))) {
    messages.append(QString::fromStdString(MergeProblemMessage(problem)));
  }
  return messages.join(separator);
}

QString PairModel::ProblemLinesAt(int row) const {
  return JoinedProblems(row, QStringLiteral("\n"));
}

QString PairModel::SubjectText(const MergedPair& pair) {
  const QString first = QString::number(pair.Primary + 1);
  const QString second = QString::number(pair.Secondary + 1);
  if (pair.HasPrimary && pair.HasSecondary) {
    return Ui::Tr("Subtitles %1 and %2, %3 ms together", {first, second, QString::number(pair.OverlapMs())});
  }
  return pair.HasPrimary
             ? Ui::Tr("Subtitle %1 of the first stream alone, %2 s", {first, DurationText(pair)})
             : Ui::Tr("Subtitle %1 of the second stream alone, %2 s", {second, DurationText(pair)});
}

QString PairModel::SentenceAt(int row) const {
  const MergedPair& pair = PairAt(row);
  const QString problems = JoinedProblems(row, QStringLiteral("; "));
  return SubjectText(pair) +
         (pair.HasUnit() ? QStringLiteral(", ") + Ui::Tr("%1 bytes", {TextAt(row, Bytes)}) : QString()) +
         QStringLiteral(": ") + (problems.isEmpty() ? Ui::Tr("no problems") : problems);
}

QString PairModel::TextAt(int row, int column) const {
  const MergedPair& pair = PairAt(row);
  switch (column) {
    case Primary:
      return NumberOrNone(pair.HasPrimary, pair.Primary);
    case Secondary:
      return NumberOrNone(pair.HasSecondary, pair.Secondary);
    case Together:
      return QString::number(pair.OverlapMs());
    case Start:
      return QString::fromStdString(FormatTimecode(pair.StartTicks));
    case Duration:
      return DurationText(pair);
    case Covered:
      return CountOrNothing(pair.Counts.Covered);
    case Clipped:
      return CountOrNothing(pair.ClippedPixels());
    case Recoloured:
      return CountOrNothing(pair.Counts.Recoloured);
    case Bytes:
      return pair.HasUnit() ? QString::number(pair.Unit.Size) : QString();
    case Problems:
      return JoinedProblems(row, QStringLiteral("; "));
    default:
      return {};
  }
}

QString PairModel::TabbedText(std::span<const int> rows, std::span<const int> columns) const {
  QString text;
  for (const int row : rows) {
    for (const int column : columns) {
      text += TextAt(row, column) + (column == columns.back() ? u'\n' : u'\t');
    }
  }
  return text;
}

QVariant PairModel::SeverityAt(int row) const {
  static const std::array<QPixmap, 3> icons = {DrawSeverity(ProblemSeverity::Untidy),
                                               DrawSeverity(ProblemSeverity::ShownWrongly),
                                               DrawSeverity(ProblemSeverity::CannotBeShown)};
  const std::uint32_t kinds = finder_.Kinds()[PairOf(row)];
  return kinds == 0 ? QVariant() : Untinted(icons[static_cast<std::size_t>(WorstOf(kinds))]);
}

int PairModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int PairModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Columns;
}

QVariant PairModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid) || PairOf(index.row()) >= finder_.Pairs().size()) {
    return {};
  }
  const int row = index.row();
  const int column = index.column();
  switch (role) {
    case Qt::DisplayRole:
      return TextAt(row, column);
    case Qt::ToolTipRole:
      return column == Problems ? ProblemLinesAt(row) : QString();
    case Qt::DecorationRole:
      return column == Primary ? SeverityAt(row) : QVariant();
    case Qt::AccessibleTextRole:
      return column == Primary ? SentenceAt(row) : TextAt(row, column);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue((column == Problems ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant PairModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= Columns) {
    return {};
  }
  const PairHeading& heading = PairHeadings[static_cast<std::size_t>(section)];
  switch (role) {
    case Qt::DisplayRole:
      return Ui::Tr(heading.Short);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
      return Ui::Tr(heading.Long);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue(
          (section == Problems || section == Picture ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter);
    default:
      return {};
  }
}

}  // namespace quillmark
