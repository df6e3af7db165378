#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include <QObject>
#include <QString>

#include "app/Document.h"
#include "base/Result.h"
#include "render/StreamDiff.h"

namespace quillmark {

/// A pair of a comparison: the document's subtitle and the other stream's, by index, from 0.
class ComparedRow {
 public:
  explicit ComparedRow(const ComparedPair& pair);

  [[nodiscard]] std::optional<std::size_t> Here() const { return IndexOf(here_); }
  [[nodiscard]] std::optional<std::size_t> There() const { return IndexOf(there_); }
  [[nodiscard]] bool IsSame() const { return differences_ == 0; }
  /// "moved in time, 12 other pixels"; empty where the packets have the same bytes.
  [[nodiscard]] QString Words() const;

 private:
  static constexpr std::uint32_t None = UINT32_MAX;
  [[nodiscard]] static std::optional<std::size_t> IndexOf(std::uint32_t stored) {
    return stored == None ? std::nullopt : std::optional<std::size_t>(stored);
  }

  std::uint32_t here_;
  std::uint32_t there_;
  std::uint32_t otherPixels_;
  std::uint32_t differences_ = 0;  // bit d stands for the SubtitleDifference d
};

/// What a document's primary stream and another one differ in. It is open until the document has another
/// stream or begins to merge; an edit has it made anew once the event that it belongs to is over.
///
/// Memory: the other stream, 16 bytes a pair and 4 a subtitle.
class Comparison : public QObject {
  Q_OBJECT

 public:
  Comparison(const Document& document, QObject* parent);

  /// Compares with `other`, whose name is told with what differs. A Failure where memory is short: then
  /// nothing is open.
  Result<void> Open(SupStream other, const QString& name);
  void Close();

  [[nodiscard]] bool IsOpen() const { return isOpen_; }
  [[nodiscard]] const SupStream& Other() const { return other_; }
  [[nodiscard]] const QString& OtherName() const { return otherName_; }

  /// In the order of both streams, also those that do not differ.
  [[nodiscard]] std::span<const ComparedRow> Rows() const { return rows_; }
  /// The row of the document's subtitle `index`; none while no comparison is open.
  [[nodiscard]] std::optional<std::size_t> RowOf(std::size_t index) const;
  /// What that subtitle differs in; empty where it does not.
  [[nodiscard]] QString WordsOf(std::size_t index) const;
  /// "1,500 subtitles the same, 5 different (3 moved in time, 2 with other pixels), 1 missing, 2 added".
  [[nodiscard]] QString CountsText() const;

 signals:
  /// It was made, made anew or closed.
  void Changed();
  /// It could not be made anew and is closed.
  void Failed(const QString& reason);

 private:
  Result<void> Make();
  void MakeAnewLater();

  const Document& document_;
  SupStream other_;
  QString otherName_;
  std::vector<ComparedRow> rows_;
  std::vector<std::uint32_t> rowOf_;  // of each subtitle of the document
  PairCounts counts_;
  bool hasSameTrailingBytes_ = true;
  bool isOpen_ = false;
  bool isStale_ = false;  // about to be made anew
};

}  // namespace quillmark
