#include "sup/MoveArea.h"

#include <algorithm>
#include <array>
#include <limits>
#include <span>
#include <vector>

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

/// Two 12-bit lines of a group of colour changes, with the nibbles that stand before them.
constexpr std::size_t GroupSize = 4;
/// A column in 16 bits, four palette nibbles and four contrasts.
constexpr std::size_t ChangeSize = 6;

std::uint16_t FieldAt(std::span<const std::uint8_t> bytes, std::size_t at) {
  return static_cast<std::uint16_t>(bytes[at] << 8U | bytes[at + 1]);
}

/// What stands for a place in the frame in a unit: areas, and lines and columns of colour changes.
class Coordinates {
 public:
  struct Area {
    std::size_t Position = 0;  ///< of its six bytes in the unit
    AreaRange X;
    AreaRange Y;
  };
  /// 12 bits below a nibble that stays, or 16 bits.
  struct Number {
    std::size_t Position = 0;  ///< of its two bytes in the unit
    std::uint16_t Value = 0;   ///< with the nibble
    bool IsLine = false;
  };

  void Clear() {
    areas_.clear();
    numbers_.clear();
    x_ = {};
    y_ = {};
    bottom_ = 0;
    changesAreSound_ = true;
  }

  void Begin(const ControlSequence& /*sequence*/) {}
  void Take(const ControlCommand& command) {
    if (command.Code == SetDisplayArea && command.Arguments.size() == 6) {
      TakeArea(command);
    } else if (command.Code == ChangeColours) {
      changesAreSound_ = TakeChanges(command) && changesAreSound_;
    }
  }

  [[nodiscard]] const std::vector<Area>& Areas() const { return areas_; }
  [[nodiscard]] const std::vector<Number>& Numbers() const { return numbers_; }
  [[nodiscard]] bool ChangesAreSound() const { return changesAreSound_; }
  /// Of everything.
  [[nodiscard]] const Extent& X() const { return x_; }
  [[nodiscard]] const Extent& Y() const { return y_; }
  /// The last line of the lowest area.
  [[nodiscard]] std::int32_t Bottom() const { return bottom_; }

 private:
  void TakeArea(const ControlCommand& command) {
    const auto bytes = command.Arguments;
    const Area area{.Position = command.ArgumentAt(0),
                    .X = UnpackRange({bytes[0], bytes[1], bytes[2]}),
                    .Y = UnpackRange({bytes[3], bytes[4], bytes[5]})};
    for (const std::int32_t x : {area.X.First, area.X.Last}) {
      x_.Include(x);
    }
    for (const std::int32_t y : {area.Y.First, area.Y.Last}) {
      y_.Include(y);
      bottom_ = std::max(bottom_, y);
    }
    areas_.push_back(area);
  }

  /// False where the groups do not fit the arguments. They end with 0F FF FF FF, or with the arguments.
  bool TakeChanges(const ControlCommand& command) {
    const auto bytes = command.Arguments;
    std::size_t at = 2;
    while (at + GroupSize <= bytes.size()) {
      if (bytes[at] == 0x0F && bytes[at + 1] == 0xFF && bytes[at + 2] == 0xFF && bytes[at + 3] == 0xFF) {
        return true;
      }
      const std::size_t changes = HighNibble(bytes[at + 2]);
      const bool isGroup =
          HighNibble(bytes[at]) == 0 && changes > 0 && changes * ChangeSize <= bytes.size() - at - GroupSize;
      if (!isGroup) {
        return false;
      }
      TakeLine(command, at);
      TakeLine(command, at + 2);
      at += GroupSize;
      for (std::size_t change = 0; change < changes; ++change, at += ChangeSize) {
        const std::uint16_t column = FieldAt(bytes, at);
        x_.Include(column);
        numbers_.push_back({.Position = command.ArgumentAt(at), .Value = column, .IsLine = false});
      }
    }
    return at == bytes.size();
  }

  void TakeLine(const ControlCommand& command, std::size_t at) {
    const std::uint16_t line = FieldAt(command.Arguments, at);
    y_.Include(line & 0x0FFF);
    numbers_.push_back({.Position = command.ArgumentAt(at), .Value = line, .IsLine = true});
  }

  std::vector<Area> areas_;  // memory reused
  std::vector<Number> numbers_;
  Extent x_;
  Extent y_;
  std::int32_t bottom_ = 0;
  bool changesAreSound_ = true;
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
  Step step{.X = options.X, .Y = options.ToLine ? *options.ToLine - coordinates.Bottom() : options.Y};
  if (options.Clamp) {
    step = {.X = Clamped(step.X, coordinates.X(), FrameWidth),
            .Y = Clamped(step.Y, coordinates.Y(), options.FrameLines)};
  }
  return StaysWithin(step.X, coordinates.X(), FrameWidth) &&
                 StaysWithin(step.Y, coordinates.Y(), options.FrameLines)
             ? std::optional(step)
             : std::nullopt;
}

AreaArguments Moved(const AreaRange& range, std::int32_t step) {
  return PackRange(static_cast<unsigned>(range.First + step), static_cast<unsigned>(range.Last + step));
}

void Write(const IndexedPacket& packet, const Coordinates& coordinates, const Step& step, ToolRun& run) {
  auto number = coordinates.Numbers().begin();
  const auto writeNumbersBefore = [&](std::size_t position) {
    for (; number != coordinates.Numbers().end() && number->Position < position; ++number) {
      // A line that stays within the frame leaves the nibble before it alone.
      const auto value = static_cast<std::uint16_t>(number->Value + (number->IsLine ? step.Y : step.X));
      const std::array<std::uint8_t, 2> bytes = {static_cast<std::uint8_t>(value >> 8U),
                                                 static_cast<std::uint8_t>(value)};
      run.Write(packet.FileOffset(number->Position), bytes);
    }
  };
  for (const Coordinates::Area& area : coordinates.Areas()) {
    writeNumbersBefore(area.Position);
    const std::size_t offset = packet.FileOffset(area.Position);
    if (step.X != 0) {
      run.Write(offset, Moved(area.X, step.X));
    }
    if (step.Y != 0) {
      run.Write(offset + AreaArguments().size(), Moved(area.Y, step.Y));
    }
  }
  writeNumbersBefore(packet.Unit.size());
}

}  // namespace

ToolResult MoveArea(const SupStream& stream, const SubtitleSet& only, const MoveOptions& options) {
  ToolRun run(stream, only);
  Coordinates coordinates;
  run.ForEach([&](std::size_t /*index*/, const IndexedPacket& packet) {
    coordinates.Clear();
    ControlWalk walk;
    if (const PacketFault fault = WalkPacket(packet, coordinates, walk); fault != PacketFault::None) {
      run.LeaveDamaged(fault);
    } else if (coordinates.Areas().empty()) {
      run.Leave(LeftReason::NoArea);
    } else if (!coordinates.ChangesAreSound()) {
      run.Leave(LeftReason::BadColourChange);
    } else if (const auto step = StepOf(coordinates, options)) {
      Write(packet, coordinates, *step, run);
    } else {
      run.Leave(LeftReason::LeavesFrame);
    }
  });
  return run.Finish(true);
}

}  // namespace quillmark
