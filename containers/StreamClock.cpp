#include "containers/StreamClock.h"

#include <algorithm>

#include "base/ByteReader.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

constexpr unsigned NavigationBits = 32;

/// How far `to` is from `from`, both of which count up to so many bits and start again: the shorter way.
std::int64_t Distance(std::int64_t from, std::int64_t to, unsigned bits) {
  const std::int64_t turn = std::int64_t{1} << bits;
  const std::int64_t forward = (to - from) & (turn - 1);
  return forward < turn / 2 ? forward : forward - turn;
}

}  // namespace

void StreamClock::See(const ProgramPacket& packet) {
  if (packet.Clock) {
    SeeClock(*packet.Clock, packet.Stream == PrivateStream2);
  }
  if (packet.Stream == PrivateStream2) {
    SeeNavigation(packet.Payload);
  } else if (packet.Stream >= FirstAudioStream && packet.Stream <= LastVideoStream) {
    hasMedia_ = true;
    if (packet.Stream >= FirstVideoStream && packet.Time && !packet.IsEncrypted) {
      SeeVideo(*packet.Time);
    }
  }
}

std::int64_t StreamClock::UnitEnd() const {
  return unit_->Time + Distance(unit_->Stamp, unitEnd_, NavigationBits);
}

void StreamClock::SeeClock(std::int64_t clock, bool isNavigation) {
  // Packs are sent before they are shown: at the start of a unit its clock is a little behind.
  constexpr std::int64_t MostAhead = 2 * TicksPerSecond;
  if (!clock_) {
    clock_ = {.Stamp = clock, .Time = clock};
    return;
  }
  std::int64_t time = clock_->Time + Distance(clock_->Stamp, clock, TimeStampBits);
  const bool isBack = hasMedia_ && time < clock_->Time - TicksPerSecond;
  if (isBack && !NavigationLeads()) {
    restarts_.push_back(clock_->Time);
    time = clock_->Time;
  } else if (isBack && !isNavigation && Distance(unit_->Stamp, clock, NavigationBits) < -MostAhead) {
    left_ = restarts_.size();
    restarts_.push_back(UnitEnd());
    time = UnitEnd();
  }
  clock_ = {.Stamp = clock, .Time = time};
}

void StreamClock::SeeNavigation(std::span<const std::uint8_t> payload) {
  constexpr std::uint8_t PresentationControl = 0;  // the substream that has the times
  constexpr std::size_t StartAt = 13;
  ByteReader reader(payload);
  if (reader.U8() != PresentationControl || !reader.Seek(StartAt)) {
    return;
  }
  const auto start = reader.U32be();
  const auto end = reader.U32be();
  if (!start || !end || *start == *end) {
    return;
  }
  if (!unit_) {
    unit_ = {.Stamp = *start, .Time = *start};
    origin_ = *start;
  } else {
    std::int64_t time = UnitEnd();
    if (left_ && *start == unitEnd_) {
      restarts_.resize(*left_);  // no more than clock references that were damaged
    } else if (left_) {
      time = clock_->Time + Distance(clock_->Stamp, *start, NavigationBits);
    } else if (*start != unitEnd_) {
      restarts_.push_back(time);
    }
    left_.reset();
    unit_ = {.Stamp = *start, .Time = time};
  }
  unitEnd_ = *end;
}

void StreamClock::SeeVideo(std::int64_t stamp) {
  // Pictures come in the order of decoding: the one that is shown first is among those of the first second.
  if (unit_ || !clock_) {
    return;
  }
  const std::int64_t time = clock_->Time + Distance(clock_->Stamp, stamp, TimeStampBits);
  if (!origin_) {
    origin_ = time;
    firstVideo_ = time;
  } else if (time < *origin_ && time > firstVideo_ - TicksPerSecond) {
    origin_ = time;
  }
}

std::optional<std::int64_t> StreamClock::Now() const {
  if (!clock_ || (!hasMedia_ && !unit_)) {
    return std::nullopt;
  }
  return NavigationLeads() ? unit_->Time + Distance(unit_->Stamp, clock_->Stamp, NavigationBits)
                           : clock_->Time;
}

std::int64_t StreamClock::TimeOf(const ProgramPacket& packet, std::size_t substream) {
  std::optional<Fixed>& last = subtitles_[substream];
  const auto now = Now();
  if (!packet.Time) {
    return now ? *now + ahead_[substream] : last ? last->Time : 0;
  }
  const std::int64_t stamp = *packet.Time;
  std::int64_t time = stamp;
  if (NavigationLeads()) {
    time = unit_->Time + Distance(unit_->Stamp, stamp, NavigationBits);
  } else if (now) {
    time = clock_->Time + Distance(clock_->Stamp, stamp, TimeStampBits);
  } else if (last) {
    std::int64_t step = Distance(last->Stamp, stamp, TimeStampBits);
    if (step < -TicksPerSecond) {
      step = TicksPerSecond;
      restarts_.push_back(last->Time + step);
    }
    time = last->Time + step;
  }
  last = {.Stamp = stamp, .Time = time};
  ahead_[substream] = now ? time - *now : 0;
  return time;
}

}  // namespace quillmark
