#include "app/DifferenceModel.h"

#include <algorithm>

#include "app/Comparison.h"
#include "app/Document.h"
#include "app/Ui.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

QString NumberOf(const std::optional<std::size_t>& index) {
  return index ? QString::number(*index + 1) : QStringLiteral("-");
}

}  // namespace

DifferenceModel::DifferenceModel(const Document& document, const Comparison& comparison, QObject* parent)
    : QAbstractTableModel(parent), document_(document), comparison_(comparison) {}

void DifferenceModel::Show(bool onlyDifferences) {
  beginResetModel();
  rows_.clear();
  const auto rows = comparison_.Rows();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (!onlyDifferences || !rows[i].IsSame()) {
      rows_.push_back(static_cast<std::uint32_t>(i));
    }
  }
  endResetModel();
}

std::optional<int> DifferenceModel::RowOf(std::size_t comparedRow) const {
  const auto row = std::ranges::lower_bound(rows_, comparedRow);
  return row != rows_.end() && *row == comparedRow ? std::optional(static_cast<int>(row - rows_.begin()))
                                                   : std::nullopt;
}

int DifferenceModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int DifferenceModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : Columns;
}

QString DifferenceModel::TextAt(int row, int column) const {
  const ComparedRow& compared = comparison_.Rows()[ComparedRowOf(row)];
  switch (column) {
    case Here:
      return NumberOf(compared.Here());
    case There:
      return NumberOf(compared.There());
    case Start: {
      const SupStream& stream = compared.Here() ? document_.Primary() : comparison_.Other();
      const std::size_t index = compared.Here() ? *compared.Here() : compared.There().value_or(0);
      // An edit may have taken it out just now.
      return stream.Holds(index) ? QString::fromStdString(FormatTimecode(stream.StartTime[index]))
                                 : QString();
    }
    case Differences:
      return compared.IsSame() ? Ui::Tr("the same") : compared.Words();
    default:
      return {};
  }
}

QString DifferenceModel::SentenceAt(int row) const {
  const ComparedRow& compared = comparison_.Rows()[ComparedRowOf(row)];
  const QString here =
      compared.Here() ? Ui::Tr("subtitle %1 here", {NumberOf(compared.Here())}) : Ui::Tr("none here");
  const QString there = compared.There()
                            ? Ui::Tr("subtitle %1 in the other file", {NumberOf(compared.There())})
                            : Ui::Tr("none in the other file");
  QString sentence =
      QStringList{here, there, TextAt(row, Start), TextAt(row, Differences)}.join(QStringLiteral(", "));
  sentence[0] = sentence[0].toUpper();
  return sentence;
}

QVariant DifferenceModel::data(const QModelIndex& index, int role) const {
  if (!checkIndex(index, CheckIndexOption::IndexIsValid) ||
      ComparedRowOf(index.row()) >= comparison_.Rows().size()) {
    return {};
  }
  switch (role) {
    case Qt::DisplayRole:
      return TextAt(index.row(), index.column());
    case Qt::ToolTipRole:
      return index.column() == Differences ? TextAt(index.row(), Differences) : QString();
    case Qt::AccessibleTextRole:
      return index.column() == Here ? SentenceAt(index.row()) : TextAt(index.row(), index.column());
    case Qt::TextAlignmentRole:
      return QVariant::fromValue((index.column() <= There ? Qt::AlignRight : Qt::AlignLeft) |
                                 Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant DifferenceModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) {
    return {};
  }
  if (role == Qt::TextAlignmentRole) {
    return QVariant::fromValue((section <= There ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  }
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole && role != Qt::AccessibleTextRole) {
    return {};
  }
  const bool isShort = role == Qt::DisplayRole;
  switch (section) {
    case Here:
      return isShort ? Ui::Tr("# here") : Ui::Tr("Number here");
    case There:
      return isShort ? Ui::Tr("# there") : Ui::Tr("Number in the other file");
    case Start:
      return isShort ? Ui::Tr("Start") : Ui::Tr("Start here or, where it is added, in the other file");
    case Differences:
      return isShort ? Ui::Tr("Differences") : Ui::Tr("What differs");
    default:
      return {};
  }
}

}  // namespace quillmark
