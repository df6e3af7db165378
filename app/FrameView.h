#pragma once

#include <QPoint>
#include <QScrollArea>

#include "app/ViewZoom.h"

namespace quillmark {

class DisplayFrame;

/// The frame, scrolling when there is too little room for it. What stays in sight then is its lower middle,
/// where subtitles mostly stand, until the user scrolls. Tab stops at it only while it scrolls. The wheel
/// with Ctrl zooms at the pointer: the frame pixel under it stays under it, beyond where scrolling ends if
/// need be.
class FrameView : public QScrollArea {
  Q_OBJECT

 public:
  FrameView(DisplayFrame* picture, QWidget* parent);

  [[nodiscard]] DisplayFrame& Picture() const { return *picture_; }
  /// Keeps the middle of what is in sight where it is, or the picture's lower middle while all of it is.
  void SetZoom(const ViewZoom& zoom);
  /// The next step.
  void ZoomIn();
  void ZoomOut();
  /// What a picture that fits is to fit into.
  void FitInto(QSize room);
  /// The picture's size at 100 %, in square pixels.
  [[nodiscard]] QSize WholeSize() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 signals:
  void ZoomChanged();
  /// sizeHint() is another one.
  void PictureResized();

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;

 private:
  /// Whether the wheel zooms; `at` is a place of the viewport.
  bool TurnWheel(const QWheelEvent& event, QPoint at);
  [[nodiscard]] ViewZoom AtPercent(int percent) const;
  void ZoomPicture(const ViewZoom& zoom);
  /// The same about a place of the viewport.
  void ZoomAt(const ViewZoom& zoom, QPoint at);
  /// Where the picture's corner is to be for `at` to show the frame's place `inFrame`, which is in `pixel`.
  [[nodiscard]] QPoint CornerFor(QPointF inFrame, QPoint at, QPoint pixel) const;
  /// Where scrolling brings the picture's corner to.
  [[nodiscard]] QRect ScrollRange() const;
  void MoveTo(QPoint corner);
  /// Puts the picture where it is held once more, after Qt has placed it.
  void KeepHeld();
  void KeepMiddle();
  void FollowRange();

  DisplayFrame* picture_;
  bool placing_ = false;  // what moves now the user has not scrolled
  bool held_ = false;     // at corner_, whatever scrolling alone would make of it
  QPoint corner_;         // of the picture, in the viewport
  int below_ = 0;         // hidden below what is in sight
  double middle_ = 0.5;   // of the picture's width, in the middle of what is in sight
  int turned_ = 0;        // of a wheel's step
  bool drags_ = false;
  QPoint grabbed_;  // where the pointer went down, less the corner
};

}  // namespace quillmark
