#include "app/FrameInspector.h"

#include <utility>

#include <QApplication>
#include <QLineEdit>

#include "app/DisplayFrame.h"
#include "app/FrameView.h"
#include "app/Loupe.h"

namespace quillmark {

FrameInspector::FrameInspector(DisplayFrame* frame, FrameView* view, QLineEdit* field, QObject* parent)
    : QObject(parent), frame_(frame), view_(view), field_(field), loupe_(new Loupe(frame, view)) {
  connect(frame, &DisplayFrame::PointedAt, this, &FrameInspector::Point);
  connect(frame, &DisplayFrame::Refreshed, this, &FrameInspector::Follow);
  connect(loupe_, &Loupe::Asked, this, [this](QPoint pixel) {
    LookAt(pixel);
    const QPoint place = frame_->PlaceOf(pixel + QPointF(0.5, 0.5));
    view_->ensureVisible(place.x(), place.y());
  });
  connect(loupe_, &Loupe::Closed, this, &FrameInspector::CloseLoupe);
}

void FrameInspector::Show(std::span<const std::uint8_t> unit, const SpuControl& control,
                          const CodeChoice& choice) {
  pixels_.Show(unit, control, choice);
  TellAreas();
}

void FrameInspector::ShowOver(std::span<const std::uint8_t> unit, const SpuControl& control, int moved,
                              const CodeMap& codes) {
  pixels_.ShowOver(unit, control, moved, codes);
  TellAreas();
}

void FrameInspector::ShowPlayed(std::shared_ptr<PlayedSubtitle> played, const DisplayState* state) {
  pixels_.ShowPlayed(std::move(played), state);
  TellAreas();
}

void FrameInspector::TellAreas() {
  FrameGuides guides = frame_->Guides();
  guides.Subtitles = pixels_.Areas();
  frame_->SetGuides(guides);
}

void FrameInspector::Point(std::optional<QPoint> pixel) {
  pointed_ = pixel;
  if (pixel && IsLoupeOpen()) {
    LookAt(*pixel);
  } else if (!IsLoupeOpen()) {
    field_->setText(pixel ? pixels_.TextAt(*pixel) : QString());
  }
}

void FrameInspector::LookAt(QPoint pixel) {
  const QString text = pixels_.TextAt(pixel);
  field_->setText(text);
  FrameGuides guides = frame_->Guides();
  guides.Mark = pixel;
  frame_->SetGuides(guides);
  loupe_->LookAt(pixel, text);
}

void FrameInspector::Follow() {
  if (IsLoupeOpen()) {
    LookAt(loupe_->Pixel());
  } else if (pointed_) {
    Point(pointed_);
  }
}

bool FrameInspector::IsLoupeOpen() const {
  return !loupe_->isHidden();
}

QPoint FrameInspector::Middle() const {
  const std::vector<QRect> areas = pixels_.Areas();
  const QRect frame(0, 0, FrameWidth, frame_->Lines());
  const QRect seen = areas.empty() ? frame : areas.front() & frame;
  return seen.isEmpty() ? frame.center() : seen.center();
}

void FrameInspector::OpenLoupe() {
  focusBefore_ = QApplication::focusWidget();
  LookAt(pointed_.value_or(Middle()));
  loupe_->show();
  loupe_->setFocus();
}

void FrameInspector::CloseLoupe() {
  const bool hadFocus = loupe_->hasFocus();
  loupe_->hide();
  if (hadFocus && focusBefore_) {
    focusBefore_->setFocus();
  }
  FrameGuides guides = frame_->Guides();
  guides.Mark.reset();
  frame_->SetGuides(guides);
  Point(pointed_);
  emit LoupeClosed();
}

}  // namespace quillmark
