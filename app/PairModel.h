#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include <QAbstractTableModel>
#include <QIcon>
#include <QString>

#include "render/MergeProblem.h"
#include "sup/SubtitleFilter.h"

namespace quillmark {

class Document;
class MergeFinder;

/// Which packets of a merge are wanted: those of the primary subtitles that a text names by numbers or a
/// time, of a split merge those that are shown at that time, or those with a problem in its words; and of
/// these the ones that have a problem of some kinds.
struct PairFilter {
  std::optional<std::vector<bool>> Primaries = {};  ///< by index; none: all
  std::optional<SubtitleFilter> Time = {};          ///< when the packet is shown
  std::optional<std::uint32_t> WordKinds = {};      ///< one of these problems, if there are any
  std::uint64_t WordDamage = 0;                     ///< or one of these kinds of damage
  std::uint32_t Kinds = 0;                          ///< one of these problems; 0: whatever it has

  [[nodiscard]] bool Wants(const MergedPair& pair, std::uint32_t kinds) const;
};
/// `text` as SubtitleFilter reads it.
[[nodiscard]] PairFilter MakePairFilter(std::string_view text, std::uint32_t kinds, const SupStream& primary,
                                        MergeMode mode);

/// The packets of a merge that a list shows, as rows. Texts are made when they are asked for.
///
/// Memory: 4 bytes a row.
class PairModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int {
    Primary,
    Secondary,
    Picture,
    Together,
    Problems,
    Bytes,
    Covered,
    Clipped,
    Recoloured,
    Start,     ///< of a split merge
    Duration,  ///< likewise
    Columns
  };

  PairModel(const MergeFinder& finder, QObject* parent);

  /// Shows what the finder has by now: the wanted packets in the order of a column.
  void Show(const PairFilter& filter, int column, Qt::SortOrder order);
  /// The packets from index `first` to before `end` were looked at: rows change, or come after the others
  /// whatever the order.
  void Follow(std::size_t first, std::size_t end);
  /// The rows are the same, what they show is not.
  void TellChanged();
  /// The packet that a row stands for, and the other way round.
  [[nodiscard]] std::size_t PairOf(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  [[nodiscard]] std::optional<int> RowOf(std::size_t pair) const;

  [[nodiscard]] const MergedPair& PairAt(int row) const;
  [[nodiscard]] bool HasProblems(int row) const;
  /// Every problem of the row, a line each.
  [[nodiscard]] QString ProblemLinesAt(int row) const;
  [[nodiscard]] QString SentenceAt(int row) const;
  [[nodiscard]] QString TextAt(int row, int column) const;
  /// Cells of these rows as texts, parted by tabs, each row ended by a line feed.
  [[nodiscard]] QString TabbedText(std::span<const int> rows, std::span<const int> columns) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] bool IsWanted(std::size_t pair) const;
  [[nodiscard]] std::int64_t SortKey(std::size_t pair) const;
  [[nodiscard]] static QString SubjectText(const MergedPair& pair);
  [[nodiscard]] QString JoinedProblems(int row, const QString& separator) const;
  [[nodiscard]] QVariant SeverityAt(int row) const;

  const MergeFinder& finder_;
  PairFilter filter_;
  int sortColumn_ = Primary;
  Qt::SortOrder order_ = Qt::AscendingOrder;
  std::size_t known_ = 0;  // packets that rows_ were chosen out of
  std::vector<std::uint32_t> rows_;
};

}  // namespace quillmark
