#pragma once

#include <QStatusBar>
#include <QString>

class QLabel;

namespace quillmark {

/// The window's status bar: at the left what was told last, at the right how much is wrong with the stream,
/// where one is and whether what is shown is written. Assistive tools say what is told, where one is and the
/// latter.
class StatusLine : public QStatusBar {
 public:
  explicit StatusLine(QWidget* parent);

  /// Stays until something else is told.
  void Tell(const QString& text);
  /// Takes the place of what was told until it is empty.
  void ShowTip(const QString& tip);
  void ShowPlace(const QString& text);
  void ShowProblems(const QString& text);
  /// Whether colours and opacities are shown that are not written; false when that was so before.
  bool ShowPreviewMark(bool isPreview);

 private:
  void AnnouncePlace();

  QString told_;
  QLabel* preview_;
  QLabel* problems_;
  QLabel* place_;
  bool isShowingTip_ = false;
  bool announcing_ = false;
};

}  // namespace quillmark
