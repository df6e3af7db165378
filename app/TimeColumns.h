#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "sup/PacketMarks.h"

namespace quillmark {

inline constexpr std::int64_t TicksPerMillisecond = 90;

/// When a subtitle is shown, and what is to be seen of it from afar. Milliseconds from the start of the film,
/// up to 26.5 hours, where the clock of a DVD ends.
struct TimeBar {
  std::uint32_t Start = 0;
  std::uint32_t End = 0;    ///< not before the start
  bool Overlaps = false;    ///< still shown when the next one starts
  bool HasProblem = false;  ///< any other one

  void SetMarks(PacketMarks marks);
  bool operator==(const TimeBar&) const = default;
};
static_assert(sizeof(TimeBar) == 12);

/// Of times in 90 kHz ticks. One outside the clock of a DVD stands at its nearer end; an end that is not
/// known, or lies before the start, is the start.
[[nodiscard]] TimeBar BarOf(std::int64_t startTicks, std::int64_t endTicks, PacketMarks marks = {});

/// The part of the film that is seen, in milliseconds.
struct TimeView {
  double Start = 0;
  double Span = 1;

  bool operator==(const TimeView&) const = default;
};

/// What is to be painted in a column of pixels.
struct TimeColumn {
  static constexpr std::uint8_t Bar = 1;
  static constexpr std::uint8_t Overlap = 2;  ///< of a bar that overlaps the next one
  static constexpr std::uint8_t Problem = 4;  ///< of a bar with a problem
  /// The first column of a bar that is wide enough to be told from the one before it.
  static constexpr std::uint8_t BarStart = 8;
  static constexpr std::uint8_t ProblemStart = 16;
};

/// First and last column of a subtitle, which may lie outside those that are seen.
struct ColumnRange {
  std::int64_t First = 0;
  std::int64_t Last = 0;  ///< not before the first
};
/// Where a subtitle stands when the view takes so many columns.
[[nodiscard]] ColumnRange ColumnsOf(const TimeBar& bar, const TimeView& view, int columns);

/// The flags of each column of the view. Each subtitle that is seen, however short, has a column at least.
/// Takes time in proportion to the subtitles and the columns, however many of them a subtitle takes.
[[nodiscard]] std::vector<std::uint8_t> TimeColumns(std::span<const TimeBar> bars, const TimeView& view,
                                                    int columns);

/// The distance between two marks of a scale, in milliseconds: the first one that people count in which takes
/// `pixels` or more where `milliseconds` are one pixel.
[[nodiscard]] std::uint32_t ScaleStep(double millisecondsPerPixel, double pixels);

}  // namespace quillmark
