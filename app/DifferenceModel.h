#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <QAbstractTableModel>

namespace quillmark {

class Comparison;
class Document;

/// The pairs of a comparison as rows, all of them or those that differ. Memory: 4 bytes a row.
class DifferenceModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int { Here, There, Start, Differences, Columns };

  DifferenceModel(const Document& document, const Comparison& comparison, QObject* parent);

  /// Shows the comparison as it is now.
  void Show(bool onlyDifferences);
  /// The comparison's row that a row of this model stands for, and the other way round.
  [[nodiscard]] std::size_t ComparedRowOf(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  [[nodiscard]] std::optional<int> RowOf(std::size_t comparedRow) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QString TextAt(int row, int column) const;
  [[nodiscard]] QString SentenceAt(int row) const;

  const Document& document_;
  const Comparison& comparison_;
  std::vector<std::uint32_t> rows_;
};

}  // namespace quillmark
