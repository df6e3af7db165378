#include "sup/MoveArea.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <span>
#include <vector>

#include "sup/ColourChanges.h"
#include "sup/ToolRun.h"

namespace quillmark {
namespace {

constexpr std::int32_t FrameWidth = 720;

struct Step {
  std::int32_t X = 0;
  std::int32_t Y = 0;
};

/// The smallest and the largest coordinate of one direction.
struct Extent {
  std::int32_t First = std::numeric_limits<std::int32_t>::max();
  std::int32_t Last = std::numeric_limits<std::int32_t>::min();

  void Include(std::int32_t coordinate) {
    First = std::min(First, coordinate);
    Last = std::max(Last, coordinate);
  }
};

/// Where a unit says where it is in the frame: in areas, and in the lines and columns of colour changes.
/// Places count from the control offset.
class PlacePlan {
 public:
  struct Number {
    std::size_t Place = 0;  ///< of 16 bits, or of 12 bits below a nibble that stays
    bool IsLine = false;
  };

  void Clear(std::size_t controlOffset) {
    controlOffset_ = controlOffset;
    areas_.clear();
    numbers_.clear();
    changesAreSound_ = true;
  }
  void Begin(const ControlSequence& /*sequence*/) {}
  void Take(const ControlCommand& command) {
    if (command.Code == SetDisplayArea) {
      areas_.push_back(PlaceOf(command, 0));
    } else if (command.Code == ChangeColours) {
      changesAreSound_ = TakeChanges(command) && changesAreSound_;
    }
  }

  /// Of six bytes each.
  [[nodiscard]] const std::vector<std::size_t>& Areas() const { return areas_; }
  [[nodiscard]] const std::vector<Number>& Numbers() const { return numbers_; }
  [[nodiscard]] bool ChangesAreSound() const { return changesAreSound_; }

 private:
  [[nodiscard]] std::size_t PlaceOf(const ControlCommand& command, std::size_t argument) const {
    return command.ArgumentAt(argument) - controlOffset_;
  }

  /// False where the groups do not fit the arguments.
  bool TakeChanges(const ControlCommand& command) {
    const auto damagedAt = ForEachColourGroup(command.Arguments, [&](const ColourGroup& group) {
      for (const std::size_t line : {group.Position, group.Position + 2}) {
        numbers_.push_back({.Place = PlaceOf(command, line), .IsLine = true});
      }
      for (std::size_t change = 0; change < group.Changes; ++change) {
        numbers_.push_back({.Place = PlaceOf(command, group.ChangeAt(change)), .IsLine = false});
      }
      return true;
    });
    return !damagedAt;
  }

  std::size_t controlOffset_ = 0;
  std::vector<std::size_t> areas_;
  std::vector<Number> numbers_;
  bool changesAreSound_ = true;
};

/// The four numbers of a display area as they are stored: 12 bits each, the first one highest.
class StoredArea {
 public:
  static constexpr std::size_t Size = 2 * AreaArguments().size();
  using Bytes = std::array<std::uint8_t, Size>;

  explicit StoredArea(const Bytes& bytes) : bytes_(bytes) {
    for (const std::uint8_t byte : bytes) {
      numbers_ = numbers_ << 8U | byte;
    }
  }

  [[nodiscard]] std::int32_t X1() const { return Number(3); }
  [[nodiscard]] std::int32_t X2() const { return Number(2); }
  [[nodiscard]] std::int32_t Y1() const { return Number(1); }
  [[nodiscard]] std::int32_t Y2() const { return Number(0); }
  [[nodiscard]] const Bytes& Stored() const { return bytes_; }

  /// Each number stays one of 12 bits.
  [[nodiscard]] Bytes Moved(const Step& step) const {
    const auto x = static_cast<std::uint64_t>(std::int64_t{step.X});
    const auto y = static_cast<std::uint64_t>(std::int64_t{step.Y});
    // What one number borrows from the next the next one's own step gives back.
    const std::uint64_t numbers = numbers_ + (x << 36U) + (x << 24U) + (y << 12U) + y;
    Bytes bytes = {};
    for (std::size_t i = 0; i < bytes.size(); ++i) {
      bytes[i] = static_cast<std::uint8_t>(numbers >> (8 * (bytes.size() - 1 - i)));
    }
    return bytes;
  }

 private:
  [[nodiscard]] std::int32_t Number(unsigned fromLast) const {
    return static_cast<std::int32_t>(numbers_ >> (12 * fromLast) & 0xFFFU);
  }

  Bytes bytes_;
  std::uint64_t numbers_ = 0;
};

/// `bytes` has the whole area.
StoredArea AreaAt(std::span<const std::uint8_t> bytes, std::size_t at) {
  StoredArea::Bytes stored;
  std::memcpy(stored.data(), bytes.data() + at, stored.size());
  return StoredArea(stored);
}

/// Everything that a unit says of its place.
struct Coordinates {
  Coordinates(std::span<const std::uint8_t> control, const PlacePlan& plan) {
    for (const std::size_t area : plan.Areas()) {
      const StoredArea stored = AreaAt(control, area);
      X.Include(stored.X1());
      X.Include(stored.X2());
      Y.Include(stored.Y1());
      Y.Include(stored.Y2());
      Bottom = std::max({Bottom, stored.Y1(), stored.Y2()});
    }
    for (const PlacePlan::Number& number : plan.Numbers()) {
      const std::uint16_t value = NumberAt(control, number.Place);
      if (number.IsLine) {
        Y.Include(value & 0x0FFF);
      } else {
        X.Include(value);
      }
    }
  }

  Extent X;
  Extent Y;
  std::int32_t Bottom = 0;  ///< the last line of the lowest area
};

/// `step`, or as much of it as keeps `extent` below `size`.
std::int32_t Clamped(std::int32_t step, const Extent& extent, std::int32_t size) {
  return step > 0 ? std::clamp(size - 1 - extent.Last, 0, step) : std::clamp(-extent.First, step, 0);
}

bool StaysWithin(std::int32_t step, const Extent& extent, std::int32_t size) {
  return extent.First + step >= 0 && extent.Last + step < size;
}

/// Nothing where the subtitle would leave the frame.
std::optional<Step> StepOf(const Coordinates& coordinates, const MoveOptions& options) {
  Step step{.X = options.X, .Y = options.ToLine ? *options.ToLine - coordinates.Bottom : options.Y};
  if (options.Clamp) {
    step = {.X = Clamped(step.X, coordinates.X, FrameWidth),
            .Y = Clamped(step.Y, coordinates.Y, options.FrameLines)};
  }
  return StaysWithin(step.X, coordinates.X, FrameWidth) &&
                 StaysWithin(step.Y, coordinates.Y, options.FrameLines)
             ? std::optional(step)
             : std::nullopt;
}

/// Writes all of a unit's places, in the order in which they stand in it.
class PlaceWriter {
 public:
  /// `control`: offset of the control sequences in the file.
  PlaceWriter(std::size_t control, const Step& step, ToolRun& run)
      : control_(run.File().subspan(control)), offset_(control), step_(step), run_(run) {}

  void Write(const PlacePlan& plan) {
    auto number = plan.Numbers().begin();
    for (const std::size_t area : plan.Areas()) {
      for (; number != plan.Numbers().end() && number->Place < area; ++number) {
        WriteNumber(*number);
      }
      const StoredArea stored = AreaAt(control_, area);
      run_.Write(offset_ + area, stored.Stored(), stored.Moved(step_));
    }
    for (; number != plan.Numbers().end(); ++number) {
      WriteNumber(*number);
    }
  }

 private:
  void WriteNumber(const PlacePlan::Number& number) {
    // A line that stays within the frame leaves the nibble before it alone.
    const auto value =
        static_cast<std::uint16_t>(NumberAt(control_, number.Place) + (number.IsLine ? step_.Y : step_.X));
    run_.Write(offset_ + number.Place, NumberBytes(value));
  }

  std::span<const std::uint8_t> control_;
  std::size_t offset_;
  Step step_;
  ToolRun& run_;
};

}  // namespace

ToolResult MoveArea(const SupStream& stream, const SubtitleSet& only, const MoveOptions& options) {
  ToolRun run(stream, only);
  PlannedWalk<PlacePlan> plan;
  run.ForEachPlanned(plan, [&](std::size_t /*index*/, const IndexEntry& unit) {
    if (plan.What().Areas().empty()) {
      run.Leave(LeftReason::NoArea);
      return;
    }
    if (!plan.What().ChangesAreSound()) {
      run.Leave(LeftReason::BadColourChange);
      return;
    }
    const std::size_t control = unit.FileOffset(unit.ControlOffset);
    if (const auto step = StepOf(Coordinates(run.File().subspan(control), plan.What()), options)) {
      PlaceWriter(control, *step, run).Write(plan.What());
    } else {
      run.Leave(LeftReason::LeavesFrame);
    }
  });
  return run.Finish(true);
}

}  // namespace quillmark
