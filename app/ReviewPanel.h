#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include <QElapsedTimer>
#include <QList>
#include <QWidget>

#include "app/Document.h"
#include "app/SubtitlePictures.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QMenu;
class QMimeData;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QSlider;
class QSpinBox;
class QToolButton;
class QVBoxLayout;

namespace quillmark {

class MergeFinder;
class MergedCodesForm;
class PairModel;
class RowFollower;
class SubtitleTable;

/// The review of a merge: what Save merged would write, packet by packet, what of it is not as in the two
/// streams, and the offset, the codes and the times that decide on it. It follows the document and the
/// subtitle shown, looks the merge through while it is seen, and tells by signals what the user wants.
class ReviewPanel : public QWidget {
  Q_OBJECT

 public:
  ReviewPanel(const Document& document, QWidget* parent);
  ~ReviewPanel() override;

  /// Goes to the next row with problems, or to the one before; its sentence, empty where there is none.
  QString GoToProblem(bool forward);
  [[nodiscard]] bool HasSelection() const;
  /// The selected rows as text; null without any.
  [[nodiscard]] std::unique_ptr<QMimeData> Copied() const;
  [[nodiscard]] SubtitleTable& Table() const { return *table_; }
  [[nodiscard]] QPushButton* SuggestButton() const { return suggest_; }
  /// The controls in the order in which Tab goes through them; those of the codes follow their button when
  /// they are first shown.
  [[nodiscard]] QList<QWidget*> TabOrder() const;

 signals:
  /// The user went to this subtitle of the first stream, counted from 1. No event of the list is in progress.
  void Chosen(std::int64_t number);
  /// The same of a packet of a split merge; `number` is the first stream's subtitle that it shows, or the
  /// last one before it.
  void UnitChosen(const quillmark::DisplayInterval& unit, std::int64_t number);
  void SelectionChanged();
  /// The user moved the second stream's subtitles here. Of several moves at once the last one is told.
  void OffsetChosen(std::int16_t lines);
  void CodesChosen(const quillmark::MergedCodes& codes);
  /// Likewise told once of several at a time.
  void TimesChosen(const quillmark::MergeTimes& times);

 protected:
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // ReviewPanelControls.cpp
  void Build();
  void ShowCodes(bool shown);
  [[nodiscard]] QWidget* BuildOffset();
  [[nodiscard]] QWidget* BuildTimes();
  [[nodiscard]] QWidget* BuildNarrowing();
  [[nodiscard]] QWidget* BuildTable();
  void BuildSorting();
  void ShowTimeColumns(bool shown);

  void ConnectDocument();
  void ConnectControls();
  void FollowMerge();
  void Pause();
  void FollowPairs(std::size_t first, std::size_t end);
  void FollowEnd();
  void ShowRows();
  void ShowHead();
  void ShowCount();
  void ShowProblems();
  void ShowOffset();
  void ShowTimes();
  void WantOffset(int lines);
  void WantTimes();
  void TellLater();
  void Tell();

  // Where one is
  [[nodiscard]] bool Splits() const;
  void GoToChosen();
  void FollowNumber();
  void ChooseUnit(std::size_t pair);
  [[nodiscard]] std::int64_t NumberOf(std::size_t pair) const;
  [[nodiscard]] std::optional<std::size_t> CurrentPair() const;
  [[nodiscard]] std::optional<std::size_t> PairOfDocument() const;

  const Document& document_;
  MergeFinder* finder_;
  PairModel* model_;
  SubtitlePictures pictures_;
  std::optional<MergeSettings> settings_;  // of the merge that is looked through, or was

  QLineEdit* head_ = nullptr;
  QLineEdit* leftOut_ = nullptr;
  QSpinBox* offset_ = nullptr;
  QSlider* slider_ = nullptr;
  QPushButton* suggest_ = nullptr;
  QToolButton* showsCodes_ = nullptr;
  QVBoxLayout* codesPlace_ = nullptr;
  MergedCodesForm* codes_ =
      nullptr;  // made when it is first shown: its twelve lists take a third of the panel's time
  QRadioButton* pairs_ = nullptr;
  QRadioButton* split_ = nullptr;
  QSpinBox* join_ = nullptr;
  QLineEdit* text_ = nullptr;
  QComboBox* kind_ = nullptr;
  QLabel* count_ = nullptr;
  SubtitleTable* table_ = nullptr;
  QMenu* sorting_ = nullptr;
  RowFollower* follower_ = nullptr;
  QPlainTextEdit* problems_ = nullptr;

  QElapsedTimer sinceCount_;                  // since the count was shown
  std::optional<std::int16_t> wantedOffset_;  // chosen and not told yet
  std::optional<MergeTimes> wantedTimes_;     // the same
};

}  // namespace quillmark
