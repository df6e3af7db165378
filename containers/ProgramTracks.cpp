#include "containers/ProgramTracks.h"

#include <array>
#include <optional>
#include <string>
#include <utility>

#include "base/Words.h"
#include "containers/PacketWalk.h"
#include "containers/StreamClock.h"
#include "sup/StreamLoader.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

Track TrackOf(std::size_t number, GatheredSubstream substream, std::int64_t origin) {
  Track track;
  track.Id = SubstreamName(number);
  track.Notes = substream.Notes();
  for (const GatheredUnit& unit : substream.Units) {
    substream.SetTime(unit, unit.Time - origin);
  }
  track.Packets = std::move(substream.Bytes);
  return track;
}

std::string RestartNote(const std::vector<std::int64_t>& restarts, std::int64_t origin) {
  const std::string first = FormatTimecode(restarts.front() - origin);
  return restarts.size() == 1 ? Words::Tr("the clock restarts at %1; times go on", {first})
                              : Words::Tr("the clock restarts %1 times, first at %2; times go on",
                                          {std::to_string(restarts.size()), first});
}

}  // namespace

bool IsTooMuch(const UnitGatherer& gatherer) {
  return gatherer.Size() > MaxStreamLength;
}

std::string SubstreamName(std::size_t substream) {
  constexpr const char* Digits = "0123456789ABCDEF";
  const std::size_t value = FirstSubtitleSubstream + substream;
  return std::string("0x") + Digits[value / 16] + Digits[value % 16];
}

ReadContainerResult ReadProgramTracks(ByteSource& source, const Progress& progress) {
  ForwardReader reader(source, progress);
  PacketWalk walk(reader);
  StreamClock clock;
  UnitGatherer gatherer;
  Tally encrypted;
  for (ProgramPacket packet; walk.Next(packet);) {
    clock.See(packet);
    if (packet.IsEncrypted) {
      encrypted.Add(packet.Position);
    }
    if (const auto substream = SubtitleSubstreamOf(packet)) {
      gatherer.Add(packet, clock.TimeOf(packet, *substream));
      if (IsTooMuch(gatherer)) {
        return Failure{Words::Tr(TooMuchReason)};
      }
    }
  }
  if (reader.IsCancelled()) {
    return std::optional<Container>();
  }
  if (!reader.Status()) {
    return reader.Status().Why();
  }
  if (!walk.FoundPack()) {
    return Failure{Words::Tr(NoPackReason)};
  }
  Container container;
  auto substreams = gatherer.Finish();
  for (std::size_t i = 0; i < substreams.size(); ++i) {
    if (!substreams[i].Units.empty()) {
      container.Tracks.push_back(TrackOf(i, std::exchange(substreams[i], {}), clock.Origin()));
    } else {
      for (const std::string& note : substreams[i].Notes()) {
        container.Notes.push_back(SubstreamName(i) + ": " + note);
      }
    }
  }
  if (container.Tracks.empty() && encrypted.Count > 0) {
    container.Notes.insert(container.Notes.begin(), Words::Tr(EncryptedNote));
  }
  if (!clock.Restarts().empty()) {
    container.Notes.push_back(RestartNote(clock.Restarts(), clock.Origin()));
  }
  return std::optional(std::move(container));
}

}  // namespace quillmark
