#pragma once

#include <cstdint>
#include <span>

#include <QColor>
#include <QFont>
#include <QSize>

#include "app/TimeColumns.h"

class QPainter;
class QPalette;

namespace quillmark {

/// How high the parts of a strip of the film's time are. Pixels of whatever kind the height is given in.
class TimeStripRows {
 public:
  /// `labels` is the height of the scale's labels; they are left out where there is no room for them.
  TimeStripRows(int height, int lanes, int labels, double ratio = 1);

  struct Lane {
    int Top = 0;     ///< of the wedges
    int BarTop = 0;  ///< of the bars
    int End = 0;     ///< after the bars
  };
  [[nodiscard]] Lane Of(int lane) const;
  [[nodiscard]] int LaneAt(int y) const;
  [[nodiscard]] int LanesEnd() const { return lanesEnd_; }
  [[nodiscard]] bool HasLabels() const { return lanesEnd_ < height_; }

  /// The height with room for everything, in logical pixels.
  [[nodiscard]] static int HeightFor(int lanes, int labels);

 private:
  int height_;
  int lanes_;
  int lanesEnd_;
  double ratio_;
};

/// Draws the strip in screen pixels, from the ground up.
class TimeStripPainter {
 public:
  /// `size` is in screen pixels, of which `ratio` are a logical one.
  TimeStripPainter(QPainter& painter, const QPalette& palette, const QFont& labelFont, double ratio,
                   const QSize& size, int lanes);

  /// The ground and the scale, with labels where there is room.
  void DrawScale(const TimeView& view);
  /// The part of a lane's columns that is seen.
  void DrawLane(int lane, std::span<const std::uint8_t> columns, const ColumnRange& seen);
  /// The current subtitle of a lane.
  void DrawCurrent(int lane, const ColumnRange& columns);
  void DrawFrame();

  /// Logical pixels that the mark of the current subtitle, or a wedge, takes beside its columns.
  static constexpr int MarkMargin = 6;

 private:
  [[nodiscard]] int Pixels(double logical) const;
  /// Tells of each row of columns with the flag where it begins, less a line where a bar begins, and its
  /// width.
  template <typename Draw>
  void DrawRuns(std::span<const std::uint8_t> columns, std::uint8_t flag, const Draw& draw);
  /// A triangle whose tip is at `tip` and whose base lies `height` above it, or below it for negative ones.
  void DrawWedge(double x, double tip, double height, double width, const QColor& colour);

  QPainter& painter_;
  QFont labelFont_;
  double ratio_;
  QSize size_;
  TimeStripRows rows_;
  QColor ground_;
  QColor text_;
  QColor bar_;
  QColor faint_;
  QColor overlap_;
  QColor problem_;
  QColor current_;
};

}  // namespace quillmark
