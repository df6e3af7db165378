#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "sup/PacketCheck.h"
#include "sup/Salvage.h"
#include "sup/StreamProblem.h"

namespace quillmark {

/// Goes through a file packet by packet, as CheckStream does, in small steps. The file stays where it is
/// while it is looked at.
class StreamChecker {
 public:
  explicit StreamChecker(std::span<const std::uint8_t> file, const CheckOptions& options = {});

  /// Looks at one more packet or, where the next one is being searched for, at one more piece of what is
  /// none, and reports what is wrong with it. False once the end of the file was reached. No step takes
  /// longer than looking at one packet of 64 KB, however damaged the file is.
  bool Step(const ProblemReporter& report);

  /// How many packets were looked at.
  [[nodiscard]] std::size_t Packets() const { return packets_; }
  /// The last one of them.
  [[nodiscard]] const CheckedPacket& LastPacket() const { return last_; }

 private:
  /// The search for the packet with which the walk goes on.
  struct Resync {
    PacketSearch Search;
    std::size_t Lost = 0;    ///< where a packet should have started
    bool IsPastEnd = false;  ///< that place lies after the file's end, which was reported already
  };

  [[nodiscard]] bool HasRoomAt(std::size_t offset) const;
  void GoOnAfter(const StreamPacket& packet);
  void SearchOn(const ProblemReporter& report);

  std::span<const std::uint8_t> file_;
  CheckOptions options_;
  CheckedPacket last_;
  std::optional<Resync> resync_;
  std::size_t offset_ = 0;  // of the next packet
  std::size_t packets_ = 0;
};

/// Walks the file packet by packet and reports whatever is wrong, in file order but for a subtitle's overlap,
/// which is known when the next one was read. After a lost signature the walk goes on at the next plausible
/// packet, inside the packet before it if that one's own size cannot be believed. A unit that cannot be shown
/// has at least one problem. Takes time in proportion to the file's size.
void CheckStream(std::span<const std::uint8_t> file, const ProblemReporter& report,
                 const CheckOptions& options = {});

}  // namespace quillmark
