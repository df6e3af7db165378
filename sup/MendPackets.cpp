#include "sup/MendPackets.h"

#include <algorithm>
#include <optional>

#include "sup/ControlSequences.h"
#include "sup/Salvage.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;
using Span = std::span<const std::uint8_t>;

void WriteNumber(Bytes& bytes, std::size_t at, std::size_t value) {
  bytes[at] = static_cast<std::uint8_t>(value >> 8U);
  bytes[at + 1] = static_cast<std::uint8_t>(value);
}

/// Where sequences and commands start, and the largest field offset.
class Places {
 public:
  void Begin(const ControlSequence& sequence) {
    last_ = sequence;
    runsInto_ = 0;
  }
  void Take(const ControlCommand& command) {
    if (runsInto_ == 0 && command.Position == last_.Header.Next) {
      runsInto_ = command.Position;
    }
    for (std::size_t at = 0; command.Code == SetFieldOffsets && at + 2 <= command.Arguments.size(); at += 2) {
      lastField_ = std::max<std::int32_t>(lastField_, NumberAt(command.Arguments, at));
    }
  }

  /// The sequence that was begun last.
  [[nodiscard]] const ControlSequence& Last() const { return last_; }
  /// Where a command of it stands where the next sequence should; 0 when none does.
  [[nodiscard]] std::int32_t RunsInto() const { return runsInto_; }
  [[nodiscard]] std::int32_t LastField() const { return lastField_; }

 private:
  ControlSequence last_;
  std::int32_t runsInto_ = 0;
  std::int32_t lastField_ = 0;
};

struct Walked {
  Places Found;
  ControlWalk Walk;

  [[nodiscard]] bool IsSound() const { return Walk.End == ControlEnding::PointsToItself; }
};

Walked Walk(Span unit) {
  Walked walked;
  walked.Walk = WalkControl(unit, NumberAt(unit, 2), walked.Found);
  return walked;
}

/// A unit that is put right, with what was done to it.
class UnitMender {
 public:
  explicit UnitMender(Span unit) : unit_(unit.begin(), unit.end()) {}

  void CorrectSize() {
    const std::uint16_t said = NumberAt(unit_, 0);
    if (said != unit_.size()) {
      Note(MendKind::CorrectedSize, said, static_cast<std::int64_t>(unit_.size()));
    }
  }

  void MendSequences() {
    // Each mend takes the walk farther, over one sequence at least.
    for (int i = 0; i < MaxSequences; ++i) {
      const Walked walked = Walk(unit_);
      if (walked.IsSound()) {
        return;
      }
      const bool lacksMark = walked.Walk.End == ControlEnding::NoEndMark || walked.Found.RunsInto() > 0;
      const bool isMended = lacksMark ? AddEndMark(walked) : CloseSequences(walked);
      if (!isMended) {
        break;
      }
    }
    fails_ = !Walk(unit_).IsSound();
  }

  void MakeEven() {
    if (unit_.size() % 2 != 0 && unit_.size() < MaxReadUnit) {
      Note(MendKind::MadeEven, static_cast<std::int64_t>(unit_.size()));
      unit_.push_back(EndOfSequence);
    }
  }

  /// The unit with its size field; nullopt where nothing helped, or it became too long.
  [[nodiscard]] std::optional<Bytes> Finish() {
    if (fails_ || unit_.size() > MaxReadUnit) {
      return std::nullopt;
    }
    WriteNumber(unit_, 0, unit_.size());
    return unit_;
  }
  [[nodiscard]] const std::vector<Mend>& Mends() const { return mends_; }

 private:
  static constexpr int MaxSequences = 16;

  void Note(MendKind kind, std::int64_t first = 0, std::int64_t second = 0) {
    mends_.push_back({.Kind = kind, .Packet = 0, .Numbers = {first, second}});
  }

  /// A sequence without its end mark runs into the one that it points to, or to the unit's end.
  bool AddEndMark(const Walked& walked) {
    const auto& found = walked.Found;
    if (found.Last().Header.Next == found.Last().Position) {
      // The commands come to the unit's end; the last one may be cut short, which nothing mends.
      unit_.push_back(EndOfSequence);
      Note(MendKind::AddedEndMark);
      return Walk(unit_).IsSound();
    }
    const std::int32_t place = found.RunsInto();
    if (place <= found.Last().Position || found.LastField() >= place) {
      return false;
    }
    unit_.insert(unit_.begin() + place, EndOfSequence);
    MovePointers(static_cast<std::size_t>(found.Last().Position), static_cast<std::size_t>(place));
    Note(MendKind::AddedEndMark);
    return true;
  }

  /// After a byte came in at `place`: the pointers, from the sequence at `first` on, that lead there or
  /// after.
  void MovePointers(std::size_t first, std::size_t place) {
    std::size_t sequence = first;
    for (int i = 0; i < MaxSequences && sequence + SequenceHeaderSize <= unit_.size(); ++i) {
      const std::size_t next = NumberAt(unit_, sequence + 2);
      if (next < place) {
        return;
      }
      WriteNumber(unit_, sequence + 2, next + 1);
      if (next + 1 <= sequence) {
        return;
      }
      sequence = next + 1;
    }
  }

  /// What follows the last sequence with an end mark is too little for another one, or filling alone.
  bool CloseSequences(const Walked& walked) {
    const auto after = static_cast<std::size_t>(walked.Walk.After);
    const ControlSequence& last = walked.Found.Last();
    if (after <= static_cast<std::size_t>(last.Position) || walked.Walk.End == ControlEnding::TooLong) {
      return false;
    }
    const auto rest = std::span(unit_).subspan(std::min(after, unit_.size()));
    const bool isFilling =
        std::ranges::all_of(rest, [](std::uint8_t byte) { return byte == 0 || byte == 0xFF; });
    if (!isFilling) {
      return false;
    }
    WriteNumber(unit_, static_cast<std::size_t>(last.Position) + 2, static_cast<std::size_t>(last.Position));
    Note(MendKind::ClosedSequences, last.Header.Next);
    return true;
  }

  Bytes unit_;
  std::vector<Mend> mends_;
  bool fails_ = false;
};

/// Whether control sequences come to an end in this much of a unit, whatever its size field says.
bool ComesToAnEnd(Span unit) {
  return unit.size() >= UnitHeaderSize && unit.size() <= MaxReadUnit && NumberAt(unit, 2) >= UnitHeaderSize &&
         NumberAt(unit, 2) < unit.size() && Walk(unit).IsSound();
}

class FileMender {
 public:
  explicit FileMender(Span file) : file_(file) {}

  PacketMends Run() {
    std::size_t offset = 0;
    while (offset < file_.size()) {
      offset = Go(offset);
    }
    return std::move(result_);
  }

 private:
  /// Where to go on.
  std::size_t Go(std::size_t offset) {
    if (file_.size() - offset < PacketHeaderSize) {
      return Drop(offset, file_.size());
    }
    if (!StartsWithSignature(file_.subspan(offset))) {
      return Drop(offset, FindPacket(file_, offset + 1));
    }
    const std::size_t size = NumberAt(file_, offset + UnitStart);
    const std::size_t end = offset + UnitStart + std::max<std::size_t>(size, UnitHeaderSize);
    if (end <= file_.size() &&
        (file_.size() - end < PacketHeaderSize || StartsWithSignature(file_.subspan(end)))) {
      return Take(offset, end);
    }
    return TakeUpToTheNext(offset, end);
  }

  /// The packet's size leads neither to another packet nor to the end of the file.
  std::size_t TakeUpToTheNext(std::size_t offset, std::size_t end) {
    const std::size_t next = FindPacket(file_, offset + 1);
    const std::size_t unit = offset + UnitStart;
    if (end <= file_.size() && next >= end && ComesToAnEnd(file_.subspan(unit, end - unit))) {
      return Take(offset, end);
    }
    if (next >= unit && ComesToAnEnd(file_.subspan(unit, next - unit))) {
      return Take(offset, next);
    }
    if (next == file_.size() && end > file_.size()) {
      // The last packet is cut off; this much of it can still be indexed.
      return next;
    }
    return Drop(offset, next);
  }

  std::size_t Drop(std::size_t offset, std::size_t end) {
    Note({.Kind = MendKind::DroppedBytes,
          .Packet = 0,
          .Numbers = {static_cast<std::int64_t>(offset), static_cast<std::int64_t>(end - offset)}});
    result_.Edit.Replace(offset, end - offset, {});
    return end;
  }

  /// The unit between `offset` and `end` is one; most need nothing.
  std::size_t Take(std::size_t offset, std::size_t end) {
    ++packets_;
    const Span unit = file_.subspan(offset + UnitStart, end - offset - UnitStart);
    if (unit.size() > MaxReadUnit || NumberAt(unit, 2) < UnitHeaderSize || NumberAt(unit, 2) >= unit.size()) {
      return end;
    }
    if (unit.size() % 2 == 0 && NumberAt(unit, 0) == unit.size() && Walk(unit).IsSound()) {
      return end;
    }
    Mended(offset + UnitStart, unit);
    return end;
  }

  void Mended(std::size_t start, Span unit) {
    UnitMender mender(unit);
    mender.CorrectSize();
    mender.MendSequences();
    mender.MakeEven();
    const std::optional<Bytes> mended = mender.Finish();
    if (!mended) {
      return;
    }
    for (const Mend& mend : mender.Mends()) {
      Note(mend);
      result_.Mends.back().Packet = packets_;
    }
    // The size field, and what lies between the first and the last byte that changed.
    const Span fresh(*mended);
    if (!std::ranges::equal(fresh.first(2), unit.first(2))) {
      result_.Edit.Replace(start, 2, fresh.first(2));
    }
    std::size_t first = 2;
    while (first < unit.size() && unit[first] == fresh[first]) {
      ++first;
    }
    std::size_t same = 0;
    while (same < unit.size() - first && unit[unit.size() - 1 - same] == fresh[fresh.size() - 1 - same]) {
      ++same;
    }
    if (first + same < fresh.size()) {
      result_.Edit.Replace(start + first, unit.size() - first - same,
                           fresh.subspan(first, fresh.size() - first - same));
    }
  }

  void Note(const Mend& mend) { result_.Mends.push_back(mend); }

  Span file_;
  PacketMends result_;
  std::int64_t packets_ = 0;
};

}  // namespace

PacketMends MendPackets(std::span<const std::uint8_t> file) {
  return FileMender(file).Run();
}

}  // namespace quillmark
