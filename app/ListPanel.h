#pragma once

#include <QList>
#include <QWidget>

class QTabBar;

namespace quillmark {

class ReviewPanel;
class SubtitleList;

/// The list's place in the window: the subtitle list or, while two streams are loaded, the review of their
/// merge, with tabs to choose between them.
class ListPanel : public QWidget {
  Q_OBJECT

 public:
  ListPanel(SubtitleList& list, ReviewPanel& review, QWidget* parent);

  /// Whether there is a list and a review, and which of the two is shown where there are both. The focus
  /// stays with what is shown.
  void Arrange(bool hasList, bool hasReview, bool showsReview);
  [[nodiscard]] bool ShowsReview() const { return showsReview_; }
  /// The controls in the order in which Tab goes through them.
  [[nodiscard]] QList<QWidget*> TabOrder() const;

 signals:
  /// The user chose the list or the review.
  void ReviewChosen(bool shown);

 private:
  SubtitleList& list_;
  ReviewPanel& review_;
  QTabBar* tabs_;
  bool showsReview_ = false;
};

}  // namespace quillmark
