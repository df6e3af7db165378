#include "containers/MatroskaBlocks.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <string_view>
#include <utility>

#include "base/ByteReader.h"
#include "base/FloorDivision.h"
#include "base/Words.h"
#include "containers/PacketAppender.h"
#include "containers/VobSubIndex.h"
#include "sup/SpuControl.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

/// Units have at most 65,535 bytes; packed ones may have some more, and some programs fill up.
constexpr std::size_t MostBlockBytes = 131072;
constexpr std::size_t MostSettingsBytes = 1048576;
/// A track's number of up to 8 bytes, the time (2) and the flags (1).
constexpr std::size_t MostHeadBytes = 11;

struct BlockHead {
  std::uint64_t Track = 0;
  std::int16_t Time = 0;  ///< from that of the cluster
  bool IsLaced = false;
  std::size_t Length = 0;
};

std::optional<BlockHead> ReadBlockHead(std::span<const std::uint8_t> bytes) {
  ByteReader reader(bytes);
  const auto first = reader.U8();
  if (!first || *first == 0) {
    return std::nullopt;
  }
  // As many zero bits as bytes follow, and a one.
  const int more = std::countl_zero(*first);
  BlockHead head{.Track = *first & (0x7FU >> static_cast<unsigned>(more))};
  for (int i = 0; i < more; ++i) {
    head.Track = head.Track << 8U | reader.U8().value_or(0);
  }
  const auto time = reader.U16be();
  const auto flags = reader.U8();
  if (!time || !flags) {
    return std::nullopt;
  }
  head.Time = std::bit_cast<std::int16_t>(*time);
  head.IsLaced = (*flags & 0x06U) != 0;
  head.Length = reader.Position();
  return head;
}

/// The bytes that a unit's first two say that it has; 0 where these are not there.
std::size_t UnitSizeOf(std::span<const std::uint8_t> bytes) {
  return ByteReader(bytes).U16be().value_or(0);
}

/// A track's private data are an index without its subtitles.
void TakeSettings(MatroskaTrack& facts, Track& track) {
  std::vector<std::uint8_t>& text = facts.PrivateData;
  if (!UndoEncodings(facts.Encodings, EncodedPart::PrivateData, MostSettingsBytes, text)) {
    track.Notes.emplace_back(Words::Tr("its settings cannot be uncompressed, so that it has no palette"));
    return;
  }
  // Some programs count a C string's end with it.
  const std::size_t length = static_cast<std::size_t>(std::ranges::find(text, 0) - text.begin());
  const VobSubIndex settings = ParseVobSubIndex({reinterpret_cast<const char*>(text.data()), length});
  track.Palette = settings.Palette;
  track.Frame = settings.Frame();
  if (settings.Custom.IsOn) {
    track.Notes.emplace_back(Words::Tr("it has custom colours on; the subtitles keep their own"));
  }
}

}  // namespace

MatroskaBlocks::MatroskaBlocks(std::vector<MatroskaTrack> tracks) {
  tracks_.reserve(tracks.size());
  for (MatroskaTrack& track : tracks) {
    if (track.IsDvdSubtitles() && track.Hindrance.empty()) {
      readable_.emplace(track.Number, tracks_.size());
    }
    tracks_.push_back({.Facts = std::move(track)});
  }
}

std::optional<std::size_t> MatroskaBlocks::Take(MatroskaInput& input, const BlockPlace& place) {
  std::array<std::uint8_t, MostHeadBytes> bytes = {};
  const auto wanted =
      static_cast<std::size_t>(std::min<std::uint64_t>(place.End - place.Start, bytes.size()));
  const auto head =
      ReadBlockHead(std::span(bytes).first(input.ReadAt(place.Start, std::span(bytes).first(wanted))));
  if (!head) {
    return std::nullopt;
  }
  const auto found = Find(head->Track);
  if (!found) {
    return std::nullopt;
  }
  Gathered& track = tracks_[*found];
  const std::uint64_t start = place.Start + head->Length;
  if (head->IsLaced) {
    Count(track, Fault::Laced, place);
    return std::nullopt;
  }
  if (place.End - start > MostBlockBytes) {
    Count(track, Fault::TooLong, place);
    return std::nullopt;
  }
  payload_.resize(static_cast<std::size_t>(place.End - start));
  payload_.resize(input.ReadAt(start, payload_));
  if (!UndoEncodings(track.Facts.Encodings, EncodedPart::Blocks, MostBlockBytes, payload_)) {
    Count(track, Fault::NotUnpacked, place);
    return std::nullopt;
  }
  constexpr std::uint64_t Latest = std::numeric_limits<std::int64_t>::max() / 2;
  const auto clusterTime = static_cast<std::int64_t>(std::min(place.ClusterTime, Latest));
  return TakeUnit(track, place, clusterTime + head->Time) ? std::nullopt : found;
}

/// Whether what was taken ends by itself, or nothing was.
bool MatroskaBlocks::TakeUnit(Gathered& track, const BlockPlace& place, std::int64_t time) {
  const std::size_t size = UnitSizeOf(payload_);
  if (payload_.size() < static_cast<std::size_t>(UnitHeaderSize) ||
      size < static_cast<std::size_t>(UnitHeaderSize)) {
    Count(track, Fault::NoUnit, place);
    return true;
  }
  if (size > payload_.size()) {
    Count(track, Fault::CutShort, place);
    return true;
  }
  if (size < payload_.size()) {
    Count(track, Fault::HasTail, place);
  }
  const auto unit = std::span<const std::uint8_t>(payload_).first(size);
  track.Times.push_back({.Packet = track.Packets.size(), .Time = time});
  AppendPacket(track.Packets, 0, unit);
  const auto control = static_cast<std::int16_t>(UnitSizeOf(unit.subspan(2)));
  return DecodeControl(unit, control).Delay != 0;
}

void MatroskaBlocks::Finish(std::uint64_t scale, Container& container) {
  for (Gathered& track : tracks_) {
    MatroskaTrack& facts = track.Facts;
    const std::string number = std::to_string(facts.Number);
    if (!facts.IsDvdSubtitles()) {
      container.Notes.push_back(Words::Tr("track %1 is of another kind (%2)", {number, facts.CodecId}));
      continue;
    }
    if (!facts.Hindrance.empty()) {
      container.Notes.push_back(Words::Tr("track %1 %2", {number, facts.Hindrance}));
      continue;
    }
    if (track.Times.empty()) {
      container.Notes.push_back(Words::Tr("track %1 has no subtitles", {number}));
      for (const std::string& note : NotesOf(track)) {
        container.Notes.push_back(Words::Tr("track %1", {number}) + ": " + note);
      }
      continue;
    }
    for (const StoredTime& time : track.Times) {
      std::ranges::copy(PackTime(TicksOfMatroskaTime(time.Time, scale)),
                        track.Packets.begin() + static_cast<std::ptrdiff_t>(time.Packet) + TimeStart);
    }
    Track& made = container.Tracks.emplace_back();
    made.Id = number;
    made.Language = facts.Language;
    made.Name = facts.Name;
    made.Packets = std::move(track.Packets);
    made.Notes = NotesOf(track);
    TakeSettings(facts, made);
  }
}

std::optional<std::size_t> MatroskaBlocks::Find(std::uint64_t number) const {
  const auto found = readable_.find(number);
  return found == readable_.end() ? std::nullopt : std::optional(found->second);
}

void MatroskaBlocks::Count(Gathered& track, Fault fault, const BlockPlace& place) {
  FaultCount& count = track.Faults[static_cast<std::size_t>(fault)];
  if (count.Count++ == 0) {
    count.First = place.Start;
  }
}

/// Of `count` blocks, the first of them at byte `first`.
std::string MatroskaBlocks::FaultText(Fault fault, std::int64_t count, const std::string& first) {
  switch (fault) {
    case Fault::Laced:
      return Words::Tr("%n block left out, laced (several units in one), at byte %1",
                       "%n blocks left out, laced (several units in one), the first at byte %1", count,
                       {first});
    case Fault::TooLong:
      return Words::Tr("%n block left out, longer than a unit can be, at byte %1",
                       "%n blocks left out, longer than a unit can be, the first at byte %1", count, {first});
    case Fault::NotUnpacked:
      return Words::Tr(
          "%n block left out, compressed in a way that it cannot be undone, at byte %1",
          "%n blocks left out, compressed in a way that it cannot be undone, the first at byte %1", count,
          {first});
    case Fault::NoUnit:
      return Words::Tr("%n block left out, without a unit, at byte %1",
                       "%n blocks left out, without a unit, the first at byte %1", count, {first});
    case Fault::CutShort:
      return Words::Tr("%n block left out, the unit cut short, at byte %1",
                       "%n blocks left out, the unit cut short, the first at byte %1", count, {first});
    case Fault::HasTail:
      break;
  }
  return Words::Tr("%n block with bytes behind the unit, which are left out, at byte %1",
                   "%n blocks with bytes behind the unit, which are left out, the first at byte %1", count,
                   {first});
}

std::vector<std::string> MatroskaBlocks::NotesOf(const Gathered& track) {
  std::vector<std::string> notes;
  for (std::size_t i = 0; i < track.Faults.size(); ++i) {
    if (const FaultCount& count = track.Faults[i]; count.Count > 0) {
      notes.push_back(FaultText(static_cast<Fault>(i), static_cast<std::int64_t>(count.Count),
                                std::to_string(count.First)));
    }
  }
  if (track.LostDurations > 0) {
    notes.push_back(Words::Tr("%n subtitle has no end but in the file's own durations, which are not kept",
                              "%n subtitles have no end but in the file's own durations, which are not kept",
                              static_cast<std::int64_t>(track.LostDurations)));
  }
  return notes;
}

std::int64_t TicksOfMatroskaTime(std::int64_t time, std::uint64_t scale) {
  constexpr std::int64_t Divisor = 100000;
  const auto factor = static_cast<std::int64_t>(scale * 9);
  const std::int64_t whole = FloorDivide(time, Divisor);
  const std::int64_t most = std::numeric_limits<std::int64_t>::max() / factor - 1;
  if (whole > most) {
    return std::numeric_limits<std::int64_t>::max();
  }
  if (whole < -most) {
    return std::numeric_limits<std::int64_t>::min();
  }
  return whole * factor + FloorModulo(time, Divisor) * factor / Divisor;
}

}  // namespace quillmark
