#include "sup/StreamCheck.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <utility>
#include <vector>

#include "sup/ControlSurvey.h"
#include "sup/Salvage.h"
#include "sup/SpuCommand.h"
#include "sup/SpuControl.h"
#include "sup/SupFormat.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;

constexpr std::int32_t UsualSequences = 2;
/// The larger of the two frames: a stream does not say which one it is made for.
constexpr int MaxX = 719;
constexpr int MaxY = 575;

std::string Number(std::int64_t value) {
  return std::to_string(value);
}

std::string Hex(std::uint8_t byte) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  return {'0', 'x', Digits[HighNibble(byte)], Digits[LowNibble(byte)]};
}

/// A packet as the file holds it.
struct Packet {
  std::int64_t Number = 0;  ///< from 1
  std::size_t Offset = 0;
  std::int64_t Time = 0;
  std::uint16_t Size = 0;
  std::uint16_t ControlOffset = 0;
  std::span<const std::uint8_t> Unit;  ///< from its size field on, as far as the file has it

  [[nodiscard]] bool IsCut() const { return Unit.size() < Size; }
  /// The walk from packet to packet never goes on inside the header.
  [[nodiscard]] std::size_t End() const {
    return Offset + UnitStart + std::max<std::size_t>(Size, UnitHeaderSize);
  }
};

/// nullopt when no "SP" stands at `offset`, where at least 14 bytes are left.
std::optional<Packet> ReadPacket(std::span<const std::uint8_t> file, std::size_t offset,
                                 std::int64_t number) {
  const auto header = ReadPacketHeader(file.subspan(offset));
  if (!header) {
    return std::nullopt;
  }
  const auto rest = file.subspan(offset + UnitStart);
  return Packet{.Number = number,
                .Offset = offset,
                .Time = header->Time,
                .Size = header->UnitSize,
                .ControlOffset = header->ControlOffset,
                .Unit = rest.first(std::min<std::size_t>(rest.size(), header->UnitSize))};
}

/// Looks at one packet by itself.
class PacketCheck {
 public:
  PacketCheck(const Packet& packet, const ProblemReporter& report) : packet_(packet), report_(report) {}

  /// What the unit's control sequences say, for a unit that has some.
  std::optional<SpuControl> Run() {
    if (packet_.Time < 0) {
      Report(TimeStart, Code::NegativeTime, "the start time is negative");
    }
    if (!CheckSize() || !CheckControlOffset()) {
      return std::nullopt;
    }
    CheckSequences();
    const SpuControl control = Decode();
    CheckCommands(control);
    CheckPicture(control);
    CheckDelay(control);
    return control;
  }

 private:
  /// As when the stream is loaded: a unit that the file cuts short has zeros in place of what is missing.
  [[nodiscard]] SpuControl Decode() const {
    const auto controlOffset = std::bit_cast<std::int16_t>(packet_.ControlOffset);
    if (!packet_.IsCut()) {
      return DecodeControl(packet_.Unit, controlOffset);
    }
    std::vector<std::uint8_t> padded(packet_.Unit.begin(), packet_.Unit.end());
    padded.resize(packet_.Size, 0);
    return DecodeControl(padded, controlOffset);
  }

  void Report(std::int64_t place, Code code, std::string message) const {
    report_({.Offset = static_cast<std::int64_t>(packet_.Offset) + place,
             .Packet = packet_.Number,
             .Code = code,
             .Message = std::move(message)});
  }

  void ReportInUnit(std::int64_t position, Code code, std::string message) const {
    Report(UnitStart + position, code, std::move(message));
  }

  /// Whether there is a unit to look into.
  [[nodiscard]] bool CheckSize() const {
    if (packet_.Size > MaxReadUnit) {
      Report(UnitStart, Code::UnitTooLarge,
             "the unit's size is " + Number(packet_.Size) + ", and 32768 or more reads as negative");
      return false;
    }
    if (packet_.IsCut()) {
      Report(0, Code::PastEnd,
             "the packet runs " + Number(static_cast<std::int64_t>(packet_.Size - packet_.Unit.size())) +
                 " bytes past the end of the file");
    }
    if (packet_.Size < UnitHeaderSize) {
      Report(UnitStart, Code::UnitTooSmall,
             "the unit's size is " + Number(packet_.Size) + ", less than its header");
      return false;
    }
    return true;
  }

  /// Whether there are control sequences to look at.
  [[nodiscard]] bool CheckControlOffset() const {
    if (packet_.ControlOffset == 0) {
      Report(ControlOffsetStart, Code::ControlOffsetZero,
             "the control offset is 0, so no control sequence is read");
      return false;
    }
    if (packet_.ControlOffset < UnitHeaderSize || packet_.ControlOffset >= packet_.Size) {
      Report(ControlOffsetStart, Code::ControlOffsetOutside,
             "the control offset " + Number(packet_.ControlOffset) + " leads out of the unit of " +
                 Number(packet_.Size) + " bytes");
      return false;
    }
    // Where the file ends before the control sequences, that is all there is to say.
    return packet_.ControlOffset < packet_.Unit.size();
  }

  void CheckSequences() const {
    const ControlSurvey survey = SurveyControl(packet_.Unit, packet_.ControlOffset);
    CheckEnding(survey);
    if (survey.FirstGap != 0) {
      ReportInUnit(survey.FirstGap, Code::ControlGap,
                   "this control sequence does not stand right after the one before it");
    }
    if (survey.Sequences > UsualSequences) {
      ReportInUnit(packet_.ControlOffset, Code::ManySequences,
                   "the unit has " + Number(survey.Sequences) +
                       " control sequences; the last one's delay counts as the end");
    }
    if (survey.UnknownCommands > 0) {
      const auto first = static_cast<std::size_t>(survey.FirstUnknown);
      ReportInUnit(survey.FirstUnknown, Code::UnknownCommand,
                   "unknown command " + Hex(packet_.Unit[first]) +
                       (survey.UnknownCommands > 1
                            ? ", and " + Number(survey.UnknownCommands - 1) + " more in the unit"
                            : "") +
                       "; its arguments, if it has any, are read as commands");
    }
  }

  void CheckEnding(const ControlSurvey& survey) const {
    const auto report = [&](const std::string& what) {
      ReportInUnit(survey.EndPosition, Code::ControlUnfinished, what);
    };
    switch (survey.End) {
      case ControlSurvey::Ending::PointsToItself:
        return;
      case ControlSurvey::Ending::NoEndMark:
        return report("the control sequence runs to the end of the unit without its end mark 0xFF");
      case ControlSurvey::Ending::PointsNowhere:
        return report("the control sequence points to 0 for the next one; the last one points to itself");
      case ControlSurvey::Ending::PointsBackwards:
        return report("the control sequence points backwards for the next one");
      case ControlSurvey::Ending::PointsOutside:
        return report("the control sequence lies outside the unit, or points there for the next one");
      case ControlSurvey::Ending::TooLong:
        return report("the control sequences do not come to an end within " + Number(MaxSurveyedCommands) +
                      " commands");
    }
  }

  void CheckCommands(const SpuControl& control) const {
    const auto missing = [&](bool present, Code code, const char* what) {
      if (!present) {
        ReportInUnit(packet_.ControlOffset, code, std::string("the unit has no command for its ") + what);
      }
    };
    missing(control.ColourPos >= 0, Code::MissingColour, "colours (0x03)");
    missing(control.ContrastPos >= 0, Code::MissingContrast, "contrasts (0x04)");
    missing(control.X1 >= 0, Code::MissingArea, "display area (0x05)");
    missing(control.TopFieldOffset >= 0, Code::MissingFields, "fields' places (0x06)");
  }

  void CheckPicture(const SpuControl& control) const {
    if (control.TopFieldOffset >= 0) {
      CheckField(control.TopFieldOffset, "top");
      CheckField(control.BottomFieldOffset, "bottom");
    }
    if (control.X1 >= 0) {
      CheckArea(control);
    }
  }

  void CheckField(std::int32_t offset, const std::string& name) const {
    if (offset < static_cast<std::int32_t>(UnitHeaderSize) || offset >= packet_.Size) {
      ReportInUnit(packet_.ControlOffset, Code::FieldOutside,
                   "the " + name + " field's offset " + Number(offset) + " leads out of the unit of " +
                       Number(packet_.Size) + " bytes");
    }
  }

  void CheckArea(const SpuControl& control) const {
    const std::string area = "the display area, x " + Number(control.X1) + " to " + Number(control.X2) +
                             " and y " + Number(control.Y1) + " to " + Number(control.Y2) + ", ";
    if (control.Width() < 1 || control.Height() < 1) {
      ReportInUnit(packet_.ControlOffset, Code::ReversedArea, area + "ends before it starts");
      return;
    }
    if (control.X2 > MaxX || control.Y2 > MaxY) {
      ReportInUnit(packet_.ControlOffset, Code::AreaOutsideFrame, area + "leaves the frame of 720x576");
    }
    if (control.Height() % 2 != 0) {
      ReportInUnit(packet_.ControlOffset, Code::OddHeight,
                   "the height " + Number(control.Height()) + " is odd, so the last line is not shown");
    }
  }

  void CheckDelay(const SpuControl& control) const {
    if (control.Delay == 0) {
      ReportInUnit(packet_.ControlOffset, Code::NoEnd, "the subtitle has no end of its own");
    } else if (control.Delay < 0) {
      ReportInUnit(packet_.ControlOffset, Code::NegativeDelay,
                   "the delay 0x8000 or more reads as negative: the subtitle ends before it starts");
    }
  }

  const Packet& packet_;
  const ProblemReporter& report_;
};

/// Looks at a packet's place in the order of times; the ones before it are remembered.
class TimeCheck {
 public:
  explicit TimeCheck(const ProblemReporter& report) : report_(report) {}

  void Run(const Packet& packet, const std::optional<SpuControl>& control) {
    if (hasPrevious_ && packet.Time < previous_.Time) {
      Report(packet, Code::TimeBackwards,
             "it starts at " + FormatTimecode(packet.Time) + ", before the subtitle before it at " +
                 FormatTimecode(previous_.Time));
    } else if (hasPrevious_ && previousDelay_ > 0 && TicksSincePrevious(packet) < PreviousDuration()) {
      Report(previous_, Code::Overlap,
             "it is shown until " + FormatTimecode(EndOfDisplay(previous_.Time, previousDelay_)) +
                 ", but the next subtitle starts at " + FormatTimecode(packet.Time));
    }
    hasPrevious_ = true;
    previous_ = packet;
    previousDelay_ = control ? control->Delay : std::int16_t{0};
  }

 private:
  void Report(const Packet& packet, Code code, std::string message) const {
    report_({.Offset = static_cast<std::int64_t>(packet.Offset) + TimeStart,
             .Packet = packet.Number,
             .Code = code,
             .Message = std::move(message)});
  }

  /// Unsigned, since stored times may lie at both ends of the 64-bit range.
  [[nodiscard]] std::uint64_t TicksSincePrevious(const Packet& packet) const {
    return static_cast<std::uint64_t>(packet.Time) - static_cast<std::uint64_t>(previous_.Time);
  }
  [[nodiscard]] std::uint64_t PreviousDuration() const {
    return static_cast<std::uint64_t>(previousDelay_ * TicksPerDelayUnit);
  }

  const ProblemReporter& report_;
  bool hasPrevious_ = false;
  Packet previous_;
  std::int16_t previousDelay_ = 0;
};

class StreamChecker {
 public:
  StreamChecker(std::span<const std::uint8_t> file, const ProblemReporter& report)
      : file_(file), report_(report), times_(report) {}

  void Run() {
    std::size_t offset = 0;
    while (HasRoomAt(offset)) {
      const auto packet = ReadPacket(file_, offset, packets_ + 1);
      if (!packet) {
        offset = GoOnAt(offset, FindPacket(file_, offset + 1));
        continue;
      }
      ++packets_;
      times_.Run(*packet, PacketCheck(*packet, report_).Run());
      offset = After(*packet);
    }
    if (offset < file_.size()) {
      Report(offset, Code::TrailingBytes,
             Number(static_cast<std::int64_t>(file_.size() - offset)) +
                 " bytes at the end of the file are too few for a packet");
    }
  }

 private:
  [[nodiscard]] bool HasRoomAt(std::size_t offset) const {
    return offset <= file_.size() && file_.size() - offset >= PacketHeaderSize;
  }

  /// Where to go on after a packet. A size that leads to no further packet may be what is damaged, so the
  /// next one is then looked for inside this one too.
  [[nodiscard]] std::size_t After(const Packet& packet) const {
    const std::size_t end = packet.End();
    if (HasRoomAt(end) ? ReadPacket(file_, end, 0).has_value() : end <= file_.size()) {
      return end;
    }
    const std::size_t next = FindPacket(file_, packet.Offset + 1);
    return end > file_.size() && next == file_.size() ? next : GoOnAt(std::min(end, file_.size()), next);
  }

  std::size_t GoOnAt(std::size_t lost, std::size_t next) const {
    Report(lost, Code::LostSignature,
           "no \"SP\" where a packet should start; " +
               (next < file_.size()
                    ? "the next packet was found at offset " + Number(static_cast<std::int64_t>(next))
                    : std::string("no further packet was found")));
    return next;
  }

  void Report(std::size_t offset, Code code, std::string message) const {
    report_({.Offset = static_cast<std::int64_t>(offset),
             .Packet = std::nullopt,
             .Code = code,
             .Message = std::move(message)});
  }

  std::span<const std::uint8_t> file_;
  const ProblemReporter& report_;
  TimeCheck times_;
  std::int64_t packets_ = 0;
};

}  // namespace

std::string_view ProblemName(StreamProblemCode code) {
  switch (code) {
    case Code::LostSignature:
      return "lost_signature";
    case Code::TrailingBytes:
      return "trailing_bytes";
    case Code::PastEnd:
      return "past_end";
    case Code::UnitTooLarge:
      return "unit_too_large";
    case Code::UnitTooSmall:
      return "unit_too_small";
    case Code::ControlOffsetZero:
      return "control_offset_zero";
    case Code::ControlOffsetOutside:
      return "control_offset_outside";
    case Code::ControlUnfinished:
      return "control_unfinished";
    case Code::ControlGap:
      return "control_gap";
    case Code::ManySequences:
      return "many_sequences";
    case Code::UnknownCommand:
      return "unknown_command";
    case Code::MissingColour:
      return "missing_colour";
    case Code::MissingContrast:
      return "missing_contrast";
    case Code::MissingArea:
      return "missing_area";
    case Code::MissingFields:
      return "missing_fields";
    case Code::FieldOutside:
      return "field_outside";
    case Code::ReversedArea:
      return "reversed_area";
    case Code::AreaOutsideFrame:
      return "area_outside_frame";
    case Code::OddHeight:
      return "odd_height";
    case Code::NoEnd:
      return "no_end";
    case Code::NegativeDelay:
      return "negative_delay";
    case Code::NegativeTime:
      return "negative_time";
    case Code::TimeBackwards:
      return "time_backwards";
    case Code::Overlap:
      return "overlap";
  }
  return "";
}

void CheckStream(std::span<const std::uint8_t> file, const ProblemReporter& report) {
  StreamChecker(file, report).Run();
}

}  // namespace quillmark
