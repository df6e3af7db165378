#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QList>
#include <QWidget>

#include "app/Document.h"
#include "app/SubtitleModel.h"
#include "app/SubtitlePictures.h"
#include "sup/SubtitleFilter.h"

class QAction;
class QComboBox;
class QLabel;
class QLineEdit;
class QMimeData;
class QPlainTextEdit;
class QSplitter;

namespace quillmark {

class Comparison;
class ProblemFinder;
class RowFollower;
class SubtitleTable;
class TimeStrip;

/// The list of a document's subtitles with what narrows it, the strip of the film's time above it and the
/// problems of its current row below. It follows the document, and tells by signals what the user wants of
/// it.
class SubtitleList : public QWidget {
  Q_OBJECT

 public:
  SubtitleList(Document& document, QWidget* parent);
  ~SubtitleList() override;

  [[nodiscard]] SubtitleTable& Table() const { return *table_; }
  [[nodiscard]] const SubtitleModel& Model() const { return *model_; }
  [[nodiscard]] const ProblemFinder& Finder() const { return *finder_; }
  [[nodiscard]] const SubtitlePictures& Pictures() const { return pictures_; }

  /// The subtitles of the selected rows, ascending, from 0.
  [[nodiscard]] std::vector<std::size_t> Selected() const;
  [[nodiscard]] bool HasSelection() const;
  /// The selected rows as text and, where it is one subtitle, its picture; null without any.
  [[nodiscard]] std::unique_ptr<QMimeData> Copied() const;
  /// How many of the document's subtitles have problems, as far as they were looked at.
  [[nodiscard]] std::int64_t ProblemCount() const;
  /// Goes to the next row with problems, or to the one before; its sentence, empty where there is none.
  QString GoToProblem(bool forward);

  /// Has rows say what they differ in while the comparison is open, in a column that is there no longer.
  void ShowComparison(const Comparison& comparison);
  /// One for each column that the user may hide: whether it is shown.
  [[nodiscard]] const QList<QAction*>& ColumnActions() const { return columnActions_; }
  /// What the user made of the columns and of the room for the problems.
  [[nodiscard]] QByteArray ColumnState() const;
  [[nodiscard]] QByteArray SplitterState() const;
  void Restore(const QByteArray& columns, const QByteArray& splitter);

  /// Every column but the last one, and some rows.
  [[nodiscard]] QSize sizeHint() const override;
  /// The controls in the order in which Tab goes through them.
  [[nodiscard]] QList<QWidget*> TabOrder() const;

 signals:
  /// The user went to this subtitle, counted from 1. No event of the list is in progress.
  void Chosen(std::int64_t number);
  void SelectionChanged();
  /// How many subtitles have problems, so far.
  void ProblemsCounted();

 private:
  void Build();
  void BuildColumns();
  [[nodiscard]] int HeightOfRows(int rows) const;
  void ConnectDocument();
  void ConnectControls();
  void FollowStream(StreamChange what);
  void FollowMarks(std::size_t first, std::size_t end);
  void FollowPictures();
  void ShowStrip();
  void ShowSecondLane();
  /// While merging, a row's number is followed by that of the second stream's subtitle.
  void FitNumbers();

  // Rows
  void Filter();
  [[nodiscard]] std::vector<RowSubject> WantedRows() const;
  void ShowRows(bool keepsSelection);
  void SelectKept();
  void ShowCount();

  // Where one is
  void GoToChosen();
  void FollowNumber();
  void GoToSubtitle(std::size_t index);
  [[nodiscard]] std::optional<RowSubject> CurrentSubject() const;
  /// The subtitle that the window shows, or could not show.
  [[nodiscard]] std::optional<RowSubject> SubjectOfDocument() const;
  void ShowProblems();
  void ShowColumn(int column, bool shown);
  void UpdateColumns();

  Document& document_;
  ProblemFinder* finder_;
  SubtitleModel* model_;
  SubtitlePictures pictures_;
  QLineEdit* text_ = nullptr;
  QComboBox* kind_ = nullptr;
  QLabel* count_ = nullptr;
  TimeStrip* strip_ = nullptr;
  SubtitleTable* table_ = nullptr;
  RowFollower* follower_ = nullptr;
  QPlainTextEdit* problems_ = nullptr;
  QSplitter* splitter_ = nullptr;
  QList<QAction*> columnActions_;

  SubtitleFilter filter_;
  std::vector<bool> picked_;       // what was selected when the filter was set to it
  std::vector<std::size_t> kept_;  // what was selected before rows of it were hidden
  bool keeps_ = false;             // the user selected nothing else since
  bool hasSecondLane_ = false;     // of the strip
};

}  // namespace quillmark
