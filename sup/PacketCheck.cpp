#include "sup/PacketCheck.h"

#include <algorithm>
#include <bit>
#include <vector>

#include "sup/ControlSurvey.h"
#include "sup/DisplayTimeline.h"
#include "sup/PlayerCheck.h"
#include "sup/SupFormat.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;

constexpr std::int32_t UsualSequences = 2;
constexpr int MaxX = 719;

class PacketCheck {
 public:
  PacketCheck(const StreamPacket& packet, const CheckOptions& options, const ProblemReporter& report)
      : packet_(packet), options_(options), report_(report) {}

  CheckedPacket Run() {
    result_.Number = packet_.Number;
    result_.Offset = packet_.Offset;
    result_.Time = packet_.Time;
    if (packet_.Time < 0) {
      Report(TimeStart, Code::NegativeTime, {});
    }
    if (!CheckSize()) {
      return result_;
    }
    result_.Control = Decode();
    if (!CheckControlOffset()) {
      return result_;
    }
    result_.HasSequences = true;
    CheckSequences();
    CheckCommands();
    CheckPicture();
    CheckDelay();
    return result_;
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

  void Report(std::int64_t place, Code code, std::initializer_list<std::int64_t> numbers) const {
    report_(MakeProblem(packet_.Offset, packet_.Number, place, code, numbers));
  }

  void ReportInUnit(std::int64_t position, Code code, std::initializer_list<std::int64_t> numbers) const {
    Report(UnitStart + position, code, numbers);
  }

  void ReportAtControl(Code code, std::initializer_list<std::int64_t> numbers) const {
    ReportInUnit(packet_.ControlOffset, code, numbers);
  }

  /// Whether there is a unit to look into.
  [[nodiscard]] bool CheckSize() const {
    if (packet_.Size > MaxReadUnit) {
      Report(UnitStart, Code::UnitTooLarge, {packet_.Size});
      return false;
    }
    if (packet_.IsCut()) {
      Report(0, Code::PastEnd, {static_cast<std::int64_t>(packet_.Size - packet_.Unit.size())});
    }
    if (packet_.Size < UnitHeaderSize) {
      Report(UnitStart, Code::UnitTooSmall, {packet_.Size});
      return false;
    }
    return true;
  }

  /// Whether there are control sequences to look at.
  [[nodiscard]] bool CheckControlOffset() const {
    if (packet_.ControlOffset == 0) {
      Report(ControlOffsetStart, Code::ControlOffsetZero, {});
      return false;
    }
    if (packet_.ControlOffset < UnitHeaderSize || packet_.ControlOffset >= packet_.Size) {
      Report(ControlOffsetStart, Code::ControlOffsetOutside, {packet_.ControlOffset, packet_.Size});
      return false;
    }
    // Where the file ends before the control sequences, that is all there is to say.
    return packet_.ControlOffset < packet_.Unit.size();
  }

  void CheckSequences() {
    const ControlSurvey survey = SurveyControl(packet_.Unit, packet_.ControlOffset);
    result_.IsForced = survey.IsForced;
    result_.IsAnimated = IsAnimated(packet_.Unit, packet_.ControlOffset);
    if (survey.End != ControlSurvey::Ending::PointsToItself) {
      ReportInUnit(survey.EndPosition, Code::ControlUnfinished, {static_cast<std::int64_t>(survey.End)});
    }
    if (survey.FirstGap != 0) {
      ReportInUnit(survey.FirstGap, Code::ControlGap, {});
    }
    if (survey.Sequences > UsualSequences) {
      ReportAtControl(Code::ManySequences, {survey.Sequences});
    }
    if (survey.UnknownCommands > 0) {
      const auto first = static_cast<std::size_t>(survey.FirstUnknown);
      ReportInUnit(survey.FirstUnknown, Code::UnknownCommand, {packet_.Unit[first], survey.UnknownCommands});
    }
  }

  void CheckCommands() const {
    const SpuControl& control = result_.Control;
    const auto missing = [&](bool present, Code code) {
      if (!present) {
        ReportAtControl(code, {});
      }
    };
    missing(control.ColourPos >= 0, Code::MissingColour);
    missing(control.ContrastPos >= 0, Code::MissingContrast);
    missing(control.X1 >= 0, Code::MissingArea);
    missing(control.TopFieldOffset >= 0, Code::MissingFields);
  }

  void CheckPicture() const {
    const SpuControl& control = result_.Control;
    if (control.TopFieldOffset >= 0) {
      CheckField(control.TopFieldOffset, 0);
      CheckField(control.BottomFieldOffset, 1);
    }
    if (control.X1 >= 0) {
      CheckArea(control);
    }
  }

  /// `line` is the field's first one: 0 of the top field, 1 of the bottom field.
  void CheckField(std::int32_t offset, int line) const {
    if (offset < static_cast<std::int32_t>(UnitHeaderSize) || offset >= packet_.Size) {
      ReportAtControl(Code::FieldOutside, {line, offset, packet_.Size});
    }
  }

  void CheckArea(const SpuControl& control) const {
    const auto report = [&](Code code) {
      ReportAtControl(code, {control.X1, control.X2, control.Y1, control.Y2, options_.FrameLines});
    };
    if (control.Width() < 1 || control.Height() < 1) {
      report(Code::ReversedArea);
      return;
    }
    if (control.X2 > MaxX || control.Y2 >= options_.FrameLines) {
      report(Code::AreaOutsideFrame);
    }
    if (control.Height() % 2 != 0) {
      ReportAtControl(Code::OddHeight, {control.Height()});
    }
  }

  void CheckDelay() const {
    if (result_.Control.Delay == 0) {
      ReportAtControl(Code::NoEnd, {});
    } else if (result_.Control.Delay < 0) {
      ReportAtControl(Code::NegativeDelay, {});
    }
  }

  const StreamPacket& packet_;
  const CheckOptions& options_;
  const ProblemReporter& report_;
  CheckedPacket result_;
};

}  // namespace

StreamProblem MakeProblem(std::size_t offset, std::int64_t number, std::int64_t place, StreamProblemCode code,
                          std::initializer_list<std::int64_t> numbers) {
  StreamProblem problem{
      .Offset = static_cast<std::int64_t>(offset) + place, .Packet = number, .Code = code, .Numbers = {}};
  std::copy(numbers.begin(), numbers.end(), problem.Numbers.begin());
  return problem;
}

std::size_t StreamPacket::End() const {
  return Offset + UnitStart + std::max<std::size_t>(Size, UnitHeaderSize);
}

std::optional<StreamPacket> ReadPacket(std::span<const std::uint8_t> file, std::size_t offset,
                                       std::int64_t number) {
  if (offset > file.size()) {
    return std::nullopt;
  }
  const auto header = ReadPacketHeader(file.subspan(offset));
  if (!header) {
    return std::nullopt;
  }
  const auto rest = file.subspan(offset + UnitStart);
  return StreamPacket{.Number = number,
                      .Offset = offset,
                      .Time = header->Time,
                      .Size = header->UnitSize,
                      .ControlOffset = header->ControlOffset,
                      .Unit = rest.first(std::min<std::size_t>(rest.size(), header->UnitSize))};
}

CheckedPacket CheckPacket(const StreamPacket& packet, const CheckOptions& options,
                          const ProblemReporter& report) {
  CheckedPacket checked = PacketCheck(packet, options, report).Run();
  if (options.Profile == CheckProfile::Player) {
    CheckPacketForPlayers(packet, checked, options, report);
  }
  return checked;
}

void CheckTimes(const CheckedPacket& earlier, const CheckedPacket& later, const CheckOptions& options,
                const ProblemReporter& report) {
  if (options.Profile == CheckProfile::Player) {
    CheckTimesForPlayers(earlier, later, report);
  }
  if (later.Time < earlier.Time) {
    report(
        MakeProblem(later.Offset, later.Number, TimeStart, Code::TimeBackwards, {later.Time, earlier.Time}));
    return;
  }
  const std::int16_t delay = earlier.HasSequences ? earlier.Control.Delay : std::int16_t{0};
  // Unsigned, since stored times may lie at both ends of the 64-bit range.
  const std::uint64_t between =
      static_cast<std::uint64_t>(later.Time) - static_cast<std::uint64_t>(earlier.Time);
  if (delay > 0 && between < static_cast<std::uint64_t>(delay * TicksPerDelayUnit)) {
    report(MakeProblem(earlier.Offset, earlier.Number, TimeStart, Code::Overlap,
                       {EndOfDisplay(earlier.Time, delay), later.Time}));
  }
}

}  // namespace quillmark
