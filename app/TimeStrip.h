#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <QPoint>
#include <QWidget>

#include "app/TimeColumns.h"

namespace quillmark {

/// The time of a whole film from left to right, each subtitle as a bar: the stream in the upper lane, the one
/// laid over it in the lower. Where subtitles overlap there are two bars, one above the other; a wedge stands
/// above one with a problem; both have colours of their own. A line stands at the current subtitle. A click
/// goes to the subtitle there, the wheel zooms at the pointer, dragging and the wheel with Shift move what is
/// seen. No stop of the Tab key: the list of the subtitles is the keyboard's way.
///
/// Painting takes time in proportion to the width. The subtitles are gone through once after a change of
/// them, of the zoom or of the width. Memory: 12 bytes a subtitle.
class TimeStrip : public QWidget {
  Q_OBJECT

 public:
  explicit TimeStrip(QWidget* parent = nullptr);

  /// Lane 0 is the stream, lane 1 the one over it; without bars it is not shown. The whole film is seen
  /// again.
  void SetLane(std::size_t lane, std::vector<TimeBar> bars);
  /// Of the subtitle with this index in lane 0.
  void SetMarks(std::size_t index, PacketMarks marks);
  /// The subtitle that is shown, by its index from 0, and the one over it. What is seen moves to it.
  void SetCurrent(std::optional<std::size_t> index, std::optional<std::size_t> over = {});

  [[nodiscard]] TimeView View() const { return view_; }
  /// Shows more detail by a factor above 1 and less by one below; the time at the logical coordinate x stays.
  void ZoomAt(double x, double factor);
  /// Moves what is seen by so many logical pixels, to later times where they are above 0.
  void Scroll(double pixels);
  /// The subtitle of lane 0 at the logical coordinate x, or the nearest one.
  [[nodiscard]] std::optional<std::size_t> SubtitleAt(double x) const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 signals:
  /// A subtitle of lane 0 was clicked.
  void Chosen(std::size_t index);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  struct Lane {
    std::vector<TimeBar> Bars;
    std::vector<std::uint8_t> Columns;  ///< empty when they have to be made anew
    std::optional<std::size_t> Current;
  };

  void FitFilm();
  void SetView(TimeView view);
  [[nodiscard]] double TimeAt(double x) const;
  /// The nearest subtitle of a lane.
  [[nodiscard]] std::optional<std::size_t> Nearest(const Lane& lane, double time) const;
  [[nodiscard]] const TimeBar* CurrentBar(const Lane& lane) const;
  [[nodiscard]] int Lanes() const { return lanes_[1].Bars.empty() ? 1 : 2; }
  /// The logical pixels that the marks of the current subtitles take.
  [[nodiscard]] QRect MarkArea() const;
  void ForgetColumns();
  void Describe();
  void DescribeLater();
  [[nodiscard]] QString TipAt(const QPoint& place) const;

  std::array<Lane, 2> lanes_;
  std::uint32_t first_ = 0;  // start, milliseconds
  std::uint32_t last_ = 0;   // end
  TimeView film_;            // from the first start to the last end, with a margin
  TimeView view_;
  std::size_t overlaps_ = 0;  // in lane 0, as are the problems
  std::size_t problems_ = 0;
  bool isDescribing_ = false;

  std::optional<QPoint> pressed_;
  TimeView pressedView_;
  bool isDragging_ = false;
};

}  // namespace quillmark
