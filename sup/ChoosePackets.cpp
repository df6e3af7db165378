#include "sup/ChoosePackets.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "sup/ToolRun.h"

namespace quillmark {
namespace {

using Order = std::vector<std::size_t>;

/// For each place of a permutation whether what comes there can stay where it is while the others move around
/// it. As many as can: a longest ascending subsequence.
std::vector<bool> Staying(const Order& order) {
  constexpr auto None = static_cast<std::size_t>(-1);
  Order ends;  // by length of an ascending subsequence, the place where the one with the lowest end ends
  Order before(order.size(), None);
  for (std::size_t place = 0; place < order.size(); ++place) {
    const auto end =
        std::ranges::lower_bound(ends, order[place], {}, [&](std::size_t at) { return order[at]; });
    if (end != ends.begin()) {
      before[place] = *(end - 1);
    }
    if (end == ends.end()) {
      ends.push_back(place);
    } else {
      *end = place;
    }
  }
  std::vector<bool> staying(order.size(), false);
  for (std::size_t place = ends.empty() ? None : ends.back(); place != None; place = before[place]) {
    staying[place] = true;
  }
  return staying;
}

/// The edit by which the packet that stands at index order[i] comes to place i.
StreamEdit Reordered(const SupStream& stream, const Order& order, const std::vector<bool>& staying) {
  const auto file = FileOf(stream);
  StreamEdit edit;
  std::vector<std::uint8_t> movedIn;
  std::size_t goOn = 0;  // index after the packet that stays before the place at hand
  const auto closeGap = [&](std::size_t nextStaying) {
    if (nextStaying == goOn && movedIn.empty()) {
      return;
    }
    // All that stands between two packets that stay moves elsewhere.
    const std::size_t from =
        goOn < order.size() ? PacketOf(stream, goOn).Offset : PacketOf(stream, goOn - 1).End;
    const std::size_t to = nextStaying == goOn ? from : PacketOf(stream, nextStaying - 1).End;
    edit.Replace(from, to - from, movedIn);
    movedIn.clear();
  };
  for (std::size_t place = 0; place < order.size(); ++place) {
    if (staying[place]) {
      closeGap(order[place]);
      goOn = order[place] + 1;
    } else {
      const IndexedPacket packet = PacketOf(stream, order[place]);
      const auto bytes = file.subspan(packet.Offset, packet.End - packet.Offset);
      movedIn.insert(movedIn.end(), bytes.begin(), bytes.end());
    }
  }
  closeGap(order.size());
  return edit;
}

}  // namespace

ToolResult CutPackets(const SupStream& stream, const SubtitleSet& only) {
  ToolRun run(stream, only);
  run.ForEach([&](std::size_t /*index*/, const IndexedPacket& packet) {
    if (packet.End > packet.Offset) {
      run.Replace(packet.Offset, packet.End - packet.Offset, {});
    } else {
      run.LeaveDamaged(packet.Fault);
    }
  });
  return run.Finish(true);
}

ToolResult KeepPackets(const SupStream& stream, const SubtitleSet& only) {
  return CutPackets(stream, only.Others());
}

ToolResult SortPackets(const SupStream& stream, const SubtitleSet& only) {
  ToolRun run(stream, only, 0);
  Order places;
  run.ForEach([&](std::size_t index, const IndexedPacket& packet) {
    if (const PacketFault fault = FaultOf(packet); fault != PacketFault::None) {
      run.LeaveDamaged(fault);
    } else {
      places.push_back(index);
    }
  });
  const auto start = [&](std::size_t index) { return stream.StartTime[index]; };
  if (std::ranges::is_sorted(places, {}, start)) {
    return run.Finish(true);
  }
  Order sorted = places;
  std::ranges::stable_sort(sorted, {}, start);
  Order order(run.Count());
  std::iota(order.begin(), order.end(), std::size_t{0});
  for (std::size_t i = 0; i < places.size(); ++i) {
    order[places[i]] = sorted[i];
  }

  const std::vector<bool> staying = Staying(order);
  ToolResult result = run.Finish(true);
  result.Edit = Reordered(stream, order, staying);
  result.Edit.Reindexes = true;
  Order moved;
  for (std::size_t place = 0; place < order.size(); ++place) {
    if (!staying[place]) {
      moved.push_back(order[place]);
    }
  }
  std::ranges::sort(moved);
  for (const std::size_t index : moved) {
    result.Changed.Append(static_cast<std::int64_t>(index) + 1);
  }
  return result;
}

ToolResult DropDamage(const SupStream& stream) {
  const SubtitleSet all = SubtitleSet::All();
  ToolRun run(stream, all, 0);
  const SalvagedStream salvaged = SalvageStream(FileOf(stream));
  auto range = salvaged.LeftOut.begin();
  SubtitleSet changed;
  run.ForEach([&](std::size_t /*index*/, const IndexedPacket& packet) {
    while (range != salvaged.LeftOut.end() && range->Offset + range->Length <= packet.Offset) {
      ++range;
    }
    if (range != salvaged.LeftOut.end() && range->Offset < packet.End) {
      changed.Append(run.Number());
    }
  });
  ToolResult result = run.Finish(true);
  for (const LeftOutRange& leftOut : salvaged.LeftOut) {
    result.Edit.Replace(leftOut.Offset, leftOut.Length, {});
  }
  result.Changed = std::move(changed);
  return result;
}

}  // namespace quillmark
