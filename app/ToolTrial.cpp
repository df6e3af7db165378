#include "app/ToolTrial.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "base/Words.h"
#include "sup/IndexedPacket.h"

namespace quillmark {
namespace {

std::span<const std::uint8_t> BytesOf(const SupStream& stream, std::size_t index) {
  const IndexedPacket packet = PacketOf(stream, index);
  return FileOf(stream).subspan(packet.Offset, packet.End - packet.Offset);
}

/// Where the packet of subtitle `index` went while packets changed places: the first one of the same bytes,
/// unless the one at its own place is.
std::optional<std::size_t> FindSame(const SupStream& stream, std::size_t index, const SupStream& after) {
  const auto bytes = BytesOf(stream, index);
  if (after.Holds(index) && std::ranges::equal(bytes, BytesOf(after, index))) {
    return index;
  }
  for (std::size_t i = 0; i < after.PacketOffset.size(); ++i) {
    if (std::ranges::equal(bytes, BytesOf(after, i))) {
      return i;
    }
  }
  return std::nullopt;
}

/// The subtitle that starts then, at `index` if that one does: packets may have been dropped or sorted.
std::optional<std::size_t> FindStart(const SupStream& stream, std::int64_t start, std::size_t index) {
  if (index < stream.StartTime.size() && stream.StartTime[index] == start) {
    return index;
  }
  const auto found = std::ranges::find(stream.StartTime, start);
  return found == stream.StartTime.end()
             ? std::nullopt
             : std::optional(static_cast<std::size_t>(found - stream.StartTime.begin()));
}

/// The index that subtitle `index` has after the step; none where it is taken out.
std::optional<std::size_t> IndexAfter(const Step& step, const ToolResult& result, const SupStream& stream,
                                      std::size_t index, const SupStream& after) {
  const auto number = static_cast<std::int64_t>(index) + 1;
  if (std::holds_alternative<SortStep>(step.Options)) {
    return FindSame(stream, index, after);
  }
  if (std::holds_alternative<FixStep>(step.Options)) {
    return FindStart(after, stream.StartTime[index], index);
  }
  if (!TakesOut(step)) {
    return index;
  }
  if (result.Changed.Contains(number)) {
    return std::nullopt;
  }
  return index - static_cast<std::size_t>(result.Changed.SizeWithin(number));
}

}  // namespace

Result<ToolTrial> TryStep(const StepText& text, const SupStream& stream, std::size_t index,
                          const DvdPalette& palette) {
  try {
    const Result<Step> step = ReadStep(text);
    if (!step) {
      return step.Why();
    }
    if (Result<void> fits = FitsStream(*step, stream); !fits) {
      return fits.Why();
    }
    Result<ToolResult> result = RunStep(*step, stream);
    if (!result) {
      return result.Why();
    }
    SupStream after = stream;
    if (Result<void> applied = ApplyEdit(after, result->Edit); !applied) {
      return applied.Why();
    }
    ToolTrial trial{.Chosen = result->Chosen,
                    .Changed = result->Changed.SizeWithin(std::numeric_limits<std::int64_t>::max()),
                    .Left = std::move(result->Left),
                    .SubtitlesAfter = after.Count,
                    .After = std::nullopt};
    const auto found = IndexAfter(*step, *result, stream, index, after);
    if (found && after.Holds(*found)) {
      trial.After = LookAt(after, *found, palette);
    }
    return trial;
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory")};
  }
}

}  // namespace quillmark
