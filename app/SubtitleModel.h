#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QAbstractTableModel>
#include <QString>

#include "app/SubtitleFacts.h"
#include "sup/PacketMarks.h"

namespace quillmark {

class Comparison;
class Document;
class ProblemFinder;

/// What a row stands for: a subtitle, by its index from 0, or damage that stands before the packet of that
/// index.
class RowSubject {
 public:
  [[nodiscard]] static constexpr RowSubject Subtitle(std::size_t index) {
    return RowSubject(static_cast<std::uint32_t>(index) << 1U | 1U);
  }
  [[nodiscard]] static constexpr RowSubject DamageBefore(std::size_t index) {
    return RowSubject(static_cast<std::uint32_t>(index) << 1U);
  }

  [[nodiscard]] constexpr bool IsSubtitle() const { return (code_ & 1U) != 0; }
  [[nodiscard]] constexpr std::size_t Index() const { return code_ >> 1U; }

  /// In the order of the file.
  [[nodiscard]] constexpr bool operator<(RowSubject other) const { return code_ < other.code_; }
  bool operator==(const RowSubject&) const = default;

 private:
  explicit constexpr RowSubject(std::uint32_t code) : code_(code) {}

  std::uint32_t code_;  // a file has fewer than 2^31 packets
};

/// The subtitles of a document that a list shows, and the damage between them, as rows. Texts are made when
/// they are asked for, out of the unit.
///
/// Memory: 4 bytes a row.
class SubtitleModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column : int {
    Number,
    Picture,
    Start,
    End,
    Duration,
    Place,
    Size,
    Colours,
    Forced,
    Animated,
    Problems,
    Compared,  ///< last, since it is not always there
    Columns
  };

  SubtitleModel(const Document& document, const ProblemFinder& finder, QObject* parent);

  // Rows

  /// Shows these, ascending, instead of what was shown.
  void Show(std::vector<RowSubject> rows);
  [[nodiscard]] std::span<const RowSubject> Rows() const { return rows_; }
  [[nodiscard]] RowSubject SubjectOf(int row) const { return rows_[static_cast<std::size_t>(row)]; }
  [[nodiscard]] std::optional<int> RowOf(RowSubject subject) const;
  /// The first row that stands for this or something after it; the count of rows if there is none.
  [[nodiscard]] int FirstRowFrom(RowSubject subject) const;

  // What has changed in the document

  /// The rows are the same, what they show is not.
  void TellChanged();
  /// The problems of the packets from index `first` to before `end` are others.
  void TellMarked(std::size_t first, std::size_t end);
  /// Rows say what they differ in, as this has it now and from now on.
  void SetComparison(const Comparison& comparison);
  /// The column in which assistive tools find the whole row told in a sentence.
  void SetSpokenColumn(int column) { spokenColumn_ = column; }

  // What a row shows

  /// Of a subtitle's row. Valid until the next call.
  [[nodiscard]] const SubtitleFacts& FactsAt(int row) const;
  [[nodiscard]] std::optional<ProblemSeverity> SeverityAt(int row) const;
  /// Whether a player shows more than one picture of the row's subtitle, as far as is known yet.
  [[nodiscard]] bool IsAnimatedAt(int row) const;
  [[nodiscard]] QString TextAt(int row, int column) const;
  [[nodiscard]] QString SentenceAt(int row) const;
  /// Every problem of the row with its byte offset, a line each.
  [[nodiscard]] QString ProblemLinesAt(int row) const;
  /// The rows in these columns, cells parted by tabs and each row ended by a line feed.
  [[nodiscard]] QString TabbedText(std::span<const int> rows, std::span<const int> columns) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] PacketMarks MarksAt(int row) const;
  [[nodiscard]] QString DamageText(std::size_t index, int column) const;
  [[nodiscard]] QString ToolTipAt(int row, int column) const;
  [[nodiscard]] QString ComparedText(std::size_t index) const;
  [[nodiscard]] QString CodesInWords(const SubtitleFacts& facts) const;

  const Document& document_;
  const ProblemFinder& finder_;
  const Comparison* comparison_ = nullptr;
  std::vector<RowSubject> rows_;
  int spokenColumn_ = Number;
  // The row asked for last: a list asks for one cell after another.
  mutable std::optional<int> factsRow_;
  mutable SubtitleFacts facts_;
  mutable std::vector<std::uint8_t> unit_;
};

}  // namespace quillmark
