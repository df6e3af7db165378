#include "sup/JoinStreams.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/Ratio.h"
#include "base/Words.h"
#include "sup/StreamLoader.h"
#include "sup/SupFormat.h"
#include "sup/ToolRun.h"

namespace quillmark {
namespace {

/// How many packets the file has whole, and where the last one of them ends.
struct WholePart {
  std::size_t Packets = 0;
  std::size_t End = 0;
};

WholePart WholePartOf(const SupStream& stream) {
  std::size_t count = stream.RawBytes.empty() ? 0 : stream.PacketOffset.size();
  if (count > 0 && PacketOf(stream, count - 1).IsCut) {
    --count;
  }
  return {.Packets = count, .End = count > 0 ? PacketOf(stream, count - 1).End : 0};
}

bool HasMore(const SupStream& stream, const WholePart& part) {
  return part.End < FileOf(stream).size();
}

/// Calls `function` with the index of each good packet.
template <typename Function>
void ForEachGood(const SupStream& stream, const WholePart& part, Function&& function) {
  for (std::size_t index = 0; index < part.Packets; ++index) {
    if (FaultOf(PacketOf(stream, index)) == PacketFault::None) {
      function(index);
    }
  }
}

std::int64_t LastEndOf(const SupStream& stream, const WholePart& part) {
  std::int64_t last = 0;
  ForEachGood(stream, part, [&](std::size_t index) {
    last = std::max({last, stream.StartTime[index], stream.EndTime[index]});
  });
  return last;
}

std::optional<std::int64_t> FirstStartOf(const SupStream& stream, const WholePart& part) {
  std::optional<std::int64_t> first;
  ForEachGood(stream, part, [&](std::size_t index) {
    first = std::min(first.value_or(stream.StartTime[index]), stream.StartTime[index]);
  });
  return first;
}

}  // namespace

Result<ToolResult> JoinStreams(const SupStream& first, const SupStream& second, const JoinOptions& options) {
  const WholePart head = WholePartOf(first);
  const WholePart tail = WholePartOf(second);
  if (HasMore(first, head) && HasMore(second, tail)) {
    return Failure{
        Words::Tr("both streams end with bytes that are no whole packet, which nothing can follow; salvage "
                  "drops them")};
  }
  const auto file = FileOf(second);
  if (file.size() > MaxStreamLength - std::min<std::size_t>(FileOf(first).size(), MaxStreamLength)) {
    return Failure{Words::Tr("together they are too long: a stream may have %1 bytes",
                             {std::to_string(MaxStreamLength)})};
  }
  const auto start = options.At ? options.At : Sum(LastEndOf(first, head), options.Gap);
  const std::int64_t earliest = FirstStartOf(second, tail).value_or(0);
  const auto shift = start ? Difference(*start, earliest) : std::nullopt;

  ToolResult result;
  result.Chosen = static_cast<std::int64_t>(second.PacketOffset.size());
  std::vector<std::uint8_t> bytes(file.begin(), file.end());
  for (std::size_t index = 0; index < second.PacketOffset.size(); ++index) {
    const IndexedPacket packet = PacketOf(second, index);
    const auto number = static_cast<std::int64_t>(head.Packets + index) + 1;
    if (const PacketFault fault = FaultOf(packet); fault != PacketFault::None) {
      result.Left.push_back({.Number = number, .Why = LeftReason::Damaged, .Fault = fault});
      continue;
    }
    const auto time = shift ? Sum(second.StartTime[index], *shift) : std::nullopt;
    if (!time || *time < 0) {
      const std::string subtitle = std::to_string(index + 1);
      return Failure{
          time
              ? Words::Tr("subtitle %1 of what is added would start before 0; nothing is written", {subtitle})
              : Words::Tr("subtitle %1 of what is added would start after the last time that there "
                          "is; nothing is written",
                          {subtitle})};
    }
    std::ranges::copy(PackTime(*time),
                      bytes.begin() + static_cast<std::ptrdiff_t>(packet.Offset) + TimeStart);
    result.Changed.Append(number);
  }
  result.Edit.Replace(head.End, 0, bytes);
  result.Edit.Reindexes = true;
  return result;
}

}  // namespace quillmark
