#include "sup/StreamCheck.h"

#include <algorithm>

#include "sup/SupFormat.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;

StreamProblem BetweenPackets(std::size_t offset, Code code, std::size_t number) {
  return {.Offset = static_cast<std::int64_t>(offset),
          .Packet = std::nullopt,
          .Code = code,
          .Numbers = {static_cast<std::int64_t>(number)}};
}

}  // namespace

StreamChecker::StreamChecker(std::span<const std::uint8_t> file, const CheckOptions& options)
    : file_(file), options_(options) {}

bool StreamChecker::Step(const ProblemReporter& report) {
  if (resync_) {
    SearchOn(report);
    return true;
  }
  if (!HasRoomAt(offset_)) {
    if (offset_ < file_.size()) {
      report(BetweenPackets(offset_, Code::TrailingBytes, file_.size() - offset_));
    }
    offset_ = file_.size();
    return false;
  }
  const auto packet = ReadPacket(file_, offset_, static_cast<std::int64_t>(packets_) + 1);
  if (!packet) {
    resync_ = Resync{.Search = PacketSearch(file_, offset_ + 1), .Lost = offset_};
    return true;
  }
  ++packets_;
  const CheckedPacket checked = CheckPacket(*packet, options_, report);
  if (packets_ > 1) {
    CheckTimes(last_, checked, options_, report);
  }
  last_ = checked;
  GoOnAfter(*packet);
  return true;
}

bool StreamChecker::HasRoomAt(std::size_t offset) const {
  return offset <= file_.size() && file_.size() - offset >= PacketHeaderSize;
}

/// A size that leads to no further packet may be what is damaged, so the next one is then looked for inside
/// this one too.
void StreamChecker::GoOnAfter(const StreamPacket& packet) {
  const std::size_t end = packet.End();
  if (HasRoomAt(end) ? StartsWithSignature(file_.subspan(end)) : end <= file_.size()) {
    offset_ = end;
    return;
  }
  resync_ = Resync{.Search = PacketSearch(file_, packet.Offset + 1),
                   .Lost = std::min(end, file_.size()),
                   .IsPastEnd = end > file_.size()};
}

void StreamChecker::SearchOn(const ProblemReporter& report) {
  if (resync_->Search.Step()) {
    return;
  }
  offset_ = resync_->Search.Offset();
  if (offset_ < file_.size() || !resync_->IsPastEnd) {
    report(BetweenPackets(resync_->Lost, Code::LostSignature, offset_ < file_.size() ? offset_ : 0));
  }
  resync_.reset();
}

void CheckStream(std::span<const std::uint8_t> file, const ProblemReporter& report,
                 const CheckOptions& options) {
  StreamChecker checker(file, options);
  while (checker.Step(report)) {
  }
}

}  // namespace quillmark
