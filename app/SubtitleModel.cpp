#include "app/SubtitleModel.h"

#include <algorithm>
#include <array>
#include <utility>

#include <QStringList>

#include "app/CodeName.h"
#include "app/ColourName.h"
#include "app/Comparison.h"
#include "app/Document.h"
#include "app/ProblemFinder.h"
#include "app/SubtitleSentence.h"
#include "app/Ui.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

constexpr std::array<const char*, SubtitleModel::Columns> Headings = {"#",
                                                                      Ui::Mark("Picture"),
                                                                      Ui::Mark("Start"),
                                                                      Ui::Mark("End"),
                                                                      Ui::Mark("Seconds"),
                                                                      Ui::Mark("Place"),
                                                                      Ui::Mark("Size"),
                                                                      Ui::Mark("Colours"),
                                                                      Ui::Mark("Forced"),
                                                                      Ui::Mark("Animated"),
                                                                      Ui::Mark("Problems"),
                                                                      Ui::Mark("Compared")};

constexpr std::array<const char*, SubtitleModel::Columns> HeadingsInWords = {
    Ui::Mark("Number"),
    Ui::Mark("Picture"),
    Ui::Mark("Start"),
    Ui::Mark("End"),
    Ui::Mark("Duration in seconds"),
    Ui::Mark("Place: left and top edge in pixels"),
    Ui::Mark("Size: width and height in pixels"),
    Ui::Mark("Colours and opacities of background, pattern, emphasis 1 and 2"),
    Ui::Mark("Forced: shown even where subtitles are off"),
    Ui::Mark("Animated: fades, moves or changes its colours on a player"),
    Ui::Mark("Problems"),
    Ui::Mark("What differs from the file compared with")};

/// Lines of a tooltip, in which nothing is markup.
QString ToolTipOf(const QStringList& lines) {
  return lines.isEmpty() ? QString()
                         : QStringLiteral("<qt>") +
                               lines.join(u'\n').toHtmlEscaped().replace(u'\n', QStringLiteral("<br>"));
}

}  // namespace

SubtitleModel::SubtitleModel(const Document& document, const ProblemFinder& finder, QObject* parent)
    : QAbstractTableModel(parent), document_(document), finder_(finder) {}

void SubtitleModel::Show(std::vector<RowSubject> rows) {
  beginResetModel();
  rows_ = std::move(rows);
  factsRow_.reset();
  endResetModel();
}

std::optional<int> SubtitleModel::RowOf(RowSubject subject) const {
  const int row = FirstRowFrom(subject);
  return row < rowCount() && SubjectOf(row) == subject ? std::optional(row) : std::nullopt;
}

int SubtitleModel::FirstRowFrom(RowSubject subject) const {
  return static_cast<int>(std::lower_bound(rows_.begin(), rows_.end(), subject) - rows_.begin());
}

void SubtitleModel::TellChanged() {
  factsRow_.reset();
  if (!rows_.empty()) {
    emit dataChanged(index(0, 0), index(rowCount() - 1, Columns - 1));
  }
}

void SubtitleModel::TellMarked(std::size_t first, std::size_t end) {
  const int firstRow = FirstRowFrom(RowSubject::DamageBefore(first));
  const int endRow = FirstRowFrom(RowSubject::DamageBefore(end));
  if (firstRow < endRow) {
    emit dataChanged(index(firstRow, 0), index(endRow - 1, Columns - 1));
  }
}

void SubtitleModel::SetComparison(const Comparison& comparison) {
  comparison_ = &comparison;
  TellChanged();
}

const SubtitleFacts& SubtitleModel::FactsAt(int row) const {
  if (factsRow_ != row) {
    facts_ = FactsOf(document_, SubjectOf(row).Index(), unit_);
    factsRow_ = row;
  }
  return facts_;
}

PacketMarks SubtitleModel::MarksAt(int row) const {
  return finder_.Survey().MarksOf(SubjectOf(row).Index());
}

std::optional<ProblemSeverity> SubtitleModel::SeverityAt(int row) const {
  const RowSubject subject = SubjectOf(row);
  if (subject.IsSubtitle()) {
    return MarksAt(row).Severity();
  }
  const auto damage = finder_.Survey().DamageBefore(subject.Index());
  return damage ? std::optional(SeverityOf(damage->Code)) : std::nullopt;
}

bool SubtitleModel::IsAnimatedAt(int row) const {
  return SubjectOf(row).IsSubtitle() && MarksAt(row).Has(PacketTrait::Animated);
}

QString SubtitleModel::TextAt(int row, int column) const {
  const RowSubject subject = SubjectOf(row);
  if (!subject.IsSubtitle()) {
    return DamageText(subject.Index(), column);
  }
  switch (column) {
    case Number:
      return FactsAt(row).NumberText();
    case Picture:
      return FactsAt(row).Described ? QString() : Ui::Tr("cannot be shown");
    case Start:
      return FactsAt(row).StartText();
    case End:
      return FactsAt(row).EndText();
    case Duration:
      return FactsAt(row).DurationText();
    case Place:
      return FactsAt(row).PlaceText();
    case Size:
      return FactsAt(row).SizeText();
    case Colours:
      return FactsAt(row).CodesText();
    case Forced:
      return MarksAt(row).Has(PacketTrait::Forced) ? Ui::Tr("forced") : QString();
    case Animated:
      return IsAnimatedAt(row) ? Ui::Tr("animated") : QString();
    case Problems: {
      QStringList phrases;
      for (const StreamProblemCode code : MarksAt(row).Problems()) {
        phrases.append(QString::fromStdString(ProblemPhrase(code)));
      }
      return phrases.join(QStringLiteral(", "));
    }
    case Compared:
      return ComparedText(subject.Index());
    default:
      return {};
  }
}

QString SubtitleModel::ComparedText(std::size_t index) const {
  return comparison_ != nullptr ? comparison_->WordsOf(index) : QString();
}

QString SubtitleModel::DamageText(std::size_t index, int column) const {
  if (column == Picture) {
    return Ui::Tr("damage");
  }
  const auto damage = column == Problems ? finder_.Survey().DamageBefore(index) : std::nullopt;
  return damage ? QString::fromStdString(ProblemPhrase(damage->Code)) : QString();
}

QString SubtitleModel::SentenceAt(int row) const {
  const RowSubject subject = SubjectOf(row);
  if (!subject.IsSubtitle()) {
    const auto damage = finder_.Survey().DamageBefore(subject.Index());
    const auto packets = static_cast<std::size_t>(std::max(document_.Primary().Count, 0));
    return damage ? DamageSentence(subject.Index(), packets, damage->Code) : QString();
  }
  const SubtitleFacts& facts = FactsAt(row);
  SpokenSubtitle spoken{.Number = facts.Index + 1,
                        .StartTicks = facts.StartTicks,
                        .DurationTicks = std::nullopt,
                        .OverNumber = std::nullopt,
                        .Marks = MarksAt(row)};
  if (facts.Described && facts.Described->EndTicks) {
    spoken.DurationTicks = facts.Described->Control.Delay * TicksPerDelayUnit;
  }
  if (facts.Over) {
    spoken.OverNumber = *facts.Over + 1;
  }
  const QString differences = ComparedText(subject.Index());
  return differences.isEmpty() ? SubtitleSentence(spoken)
                               : Ui::Tr("%1, compared: %2", {SubtitleSentence(spoken), differences});
}

QString SubtitleModel::ProblemLinesAt(int row) const {
  const RowSubject subject = SubjectOf(row);
  QStringList lines;
  if (subject.IsSubtitle()) {
    for (const StreamProblem& problem : finder_.Survey().ProblemsOf(subject.Index())) {
      lines.append(QString::fromStdString(ProblemLine(problem)));
    }
  } else if (const auto damage = finder_.Survey().DamageBefore(subject.Index())) {
    lines.append(QString::fromStdString(ProblemLine(*damage)));
  }
  return lines.join(u'\n');
}

QString SubtitleModel::CodesInWords(const SubtitleFacts& facts) const {
  if (!facts.Described) {
    return {};
  }
  QStringList lines;
  for (std::size_t code = 0; code < 4; ++code) {
    const auto entry = static_cast<std::size_t>(facts.Described->Control.Colour[code]);
    const int contrast = facts.Described->Control.Contrast[code];
    lines.append(Ui::Tr("%1: %2, %3, opacity %4",
                        {CodeName(code), QString::number(entry, 16).toUpper(),
                         ColourName(document_.Palette()[entry]), QString::number(contrast, 16).toUpper()}));
  }
  return lines.join(u'\n');
}

QString SubtitleModel::ToolTipAt(int row, int column) const {
  const RowSubject subject = SubjectOf(row);
  QString lines;
  if (column == Colours && subject.IsSubtitle()) {
    lines = CodesInWords(FactsAt(row));
  } else if (column == Compared && subject.IsSubtitle()) {
    lines = ComparedText(subject.Index());
  } else {
    lines = ProblemLinesAt(row);
  }
  return ToolTipOf(lines.split(u'\n', Qt::SkipEmptyParts));
}

QString SubtitleModel::TabbedText(std::span<const int> rows, std::span<const int> columns) const {
  QString text;
  for (const int row : rows) {
    QStringList cells;
    for (const int column : columns) {
      cells.append(TextAt(row, column));
    }
    text += cells.join(u'\t') + u'\n';
  }
  return text;
}

int SubtitleModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int SubtitleModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Columns;
}

QVariant SubtitleModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid)) {
    return {};
  }
  switch (role) {
    case Qt::DisplayRole:
      return TextAt(index.row(), index.column());
    case Qt::ToolTipRole:
      return ToolTipAt(index.row(), index.column());
    case Qt::AccessibleTextRole:
      return index.column() == spokenColumn_ ? SentenceAt(index.row()) : TextAt(index.row(), index.column());
    default:
      return {};
  }
}

QVariant SubtitleModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= Columns) {
    return {};
  }
  const auto column = static_cast<std::size_t>(section);
  switch (role) {
    case Qt::DisplayRole:
      return Ui::Tr(Headings[column]);
    case Qt::ToolTipRole:
    case Qt::AccessibleTextRole:
      return Ui::Tr(HeadingsInWords[column]);
    case Qt::TextAlignmentRole:
      return QVariant::fromValue((section == Number || section == Duration ? Qt::AlignRight : Qt::AlignLeft) |
                                 Qt::AlignVCenter);
    default:
      return {};
  }
}

}  // namespace quillmark
