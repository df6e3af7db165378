#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "containers/PacketWalk.h"
#include "containers/UnitGatherer.h"

namespace quillmark {

/// Lays the time stamps of a program stream on one clock that never goes back, in ticks of 90 kHz.
///
/// Where there are navigation packets, their times lead: a video object unit that does not start where the
/// last one ended goes on from there. A clock reference that goes back behind the unit, with no navigation
/// packet in its pack, ends that. Else, and after that, the packs' clock references lead, as soon as there is
/// sound or video: one that is more than a second before the last goes on from that. In a stream of subtitles
/// alone, whose clock references are often all the same, a time stamp more than a second before the last of
/// its substream goes on one second after that. A clock that passes its 33 bits goes on, too.
class StreamClock {
 public:
  /// Every packet of the stream is shown to it in turn.
  void See(const ProgramPacket& packet);

  /// When the unit that starts in the packet, which was seen last, is shown. Without a time stamp: about
  /// when, by the pack's clock reference and what the last time stamp of the substream was ahead of its own.
  [[nodiscard]] std::int64_t TimeOf(const ProgramPacket& packet, std::size_t substream);

  /// When the first picture of the video is shown, which is where a film starts; 0 without video.
  [[nodiscard]] std::int64_t Origin() const { return origin_.value_or(0); }

  /// Where the clock was set anew: the times at which it went on.
  [[nodiscard]] const std::vector<std::int64_t>& Restarts() const { return restarts_; }

 private:
  /// A time stamp or reference, and what it is on the one clock.
  struct Fixed {
    std::int64_t Stamp = 0;
    std::int64_t Time = 0;
  };

  /// The last clock reference on the one clock, where there is one that means something.
  [[nodiscard]] std::optional<std::int64_t> Now() const;
  void SeeClock(std::int64_t clock, bool isNavigation);
  void SeeNavigation(std::span<const std::uint8_t> payload);
  void SeeVideo(std::int64_t stamp);

  [[nodiscard]] bool NavigationLeads() const { return unit_ && !left_; }
  [[nodiscard]] std::int64_t UnitEnd() const;

  bool hasMedia_ = false;            // sound or video
  std::optional<Fixed> clock_;       // the last clock reference
  std::optional<Fixed> unit_;        // the start of the current video object unit
  std::uint32_t unitEnd_ = 0;        // its end
  std::optional<std::size_t> left_;  // set while the clock is behind that unit: how many restarts came before
  std::array<std::optional<Fixed>, SubtitleSubstreams> subtitles_;  // the last time stamp of each substream
  std::array<std::int64_t, SubtitleSubstreams> ahead_ = {};         // of that time to Now()
  std::optional<std::int64_t> origin_;
  std::int64_t firstVideo_ = 0;
  std::vector<std::int64_t> restarts_;
};

}  // namespace quillmark
