#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include <QWidget>

class QCheckBox;
class QLabel;

namespace quillmark {

class Comparison;
class DifferenceModel;
class Document;
class SubtitleFrame;
class SubtitleTable;

/// Shows a comparison beside the main window while it is open: how many subtitles differ, a list of them, and
/// both pictures of one pair. The pair is that of the document's current subtitle, or the row that the user
/// went to. To close the window closes the comparison.
class CompareWindow : public QWidget {
  Q_OBJECT

 public:
  CompareWindow(const Document& document, Comparison& comparison, QWidget* parent);

  [[nodiscard]] QSize sizeHint() const override;

 signals:
  /// The user went to this subtitle of the document, counted from 1.
  void Chosen(std::int64_t number);

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  /// One of the two streams' halves.
  struct Half {
    QLabel* Title = nullptr;
    SubtitleFrame* Frame = nullptr;
    QLabel* Facts = nullptr;
  };

  void Build();
  [[nodiscard]] QWidget* BuildHalf(Half& half, const QString& name, const QString& inWords);
  void FollowComparison();
  void FollowNumber();
  void SettleLater();
  void ShowRows();
  void CurrentRowMoved();
  void ChooseCurrent();
  void SelectShown();
  void ShowPair();

  const Document& document_;
  Comparison& comparison_;
  DifferenceModel* model_;
  QLabel* counts_ = nullptr;
  QCheckBox* onlyDifferences_ = nullptr;
  SubtitleTable* table_ = nullptr;
  std::array<Half, 2> halves_;        // the document's, the other stream's
  std::optional<std::size_t> shown_;  // the comparison's row whose pictures are shown
  bool follows_ = false;              // a row is chosen that the document shows
  bool settling_ = false;             // FollowNumber() is about to be called
};

}  // namespace quillmark
