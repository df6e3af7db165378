#include "sup/PlayerCheck.h"

#include <algorithm>
#include <array>
#include <bit>
#include <utility>

#include "sup/ControlSequences.h"
#include "sup/LineSurvey.h"
#include "sup/SupFormat.h"
#include "sup/Timecode.h"
#include "sup/UnitView.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;

/// What the control sequences say to a player, which goes by their pointers.
class PlayerSurvey {
 public:
  /// A sequence whose delay is less than that of the sequence before it.
  struct StepBack {
    std::int32_t Position = 0;
    std::uint16_t Delay = 0;
    std::uint16_t Before = 0;
  };

  void Begin(const ControlSequence& sequence) {
    if (sequence.Header.Delay < delay_ && !stepBack_) {
      stepBack_ = StepBack{.Position = sequence.Position, .Delay = sequence.Header.Delay, .Before = delay_};
    }
    delay_ = sequence.Header.Delay;
    ++sequences_;
  }

  void Take(const ControlCommand& command) {
    hasStart_ = hasStart_ || command.Code == StartDisplay || command.Code == ForcedStart;
    hasStop_ = hasStop_ || command.Code == StopDisplay;
    if (command.Code < SetColour || command.Code > SetFieldOffsets) {
      return;
    }
    bool& seen = seen_[command.Code - std::size_t{SetColour}];
    if (!seen && sequences_ > 1 && !late_) {
      late_ = command;
    }
    seen = true;
  }

  [[nodiscard]] bool HasStart() const { return hasStart_; }
  [[nodiscard]] bool HasStop() const { return hasStop_; }
  [[nodiscard]] const std::optional<StepBack>& FirstStepBack() const { return stepBack_; }
  /// The first of the commands that describe the picture which the first sequence does not have.
  [[nodiscard]] const std::optional<ControlCommand>& Late() const { return late_; }

 private:
  std::array<bool, 4> seen_ = {};  // of SetColour to SetFieldOffsets
  bool hasStart_ = false;
  bool hasStop_ = false;
  int sequences_ = 0;
  std::uint16_t delay_ = 0;
  std::optional<StepBack> stepBack_;
  std::optional<ControlCommand> late_;
};

class PlayerCheck {
 public:
  PlayerCheck(const StreamPacket& packet, const CheckedPacket& checked, const CheckOptions& options,
              const ProblemReporter& report)
      : packet_(packet), checked_(checked), options_(options), report_(report) {}

  void Run() const {
    CheckSizes();
    if (packet_.ControlOffset < UnitHeaderSize || packet_.ControlOffset >= packet_.Unit.size()) {
      return;
    }
    CheckSequences();
    if (checked_.Control.IsValid() && checked_.Control.Width() >= 1 && checked_.Control.Height() >= 1) {
      CheckArea();
      CheckLines();
    }
  }

 private:
  void Report(std::int64_t place, Code code, std::initializer_list<std::int64_t> numbers) const {
    report_(MakeProblem(packet_.Offset, packet_.Number, place, code, numbers));
  }
  void ReportInUnit(std::int64_t position, Code code, std::initializer_list<std::int64_t> numbers) const {
    Report(UnitStart + position, code, numbers);
  }

  void CheckSizes() const {
    if (packet_.Size > MaxPlayerUnit) {
      Report(UnitStart, Code::PlayerUnitSize, {packet_.Size});
    }
    if (packet_.Size % 2 != 0) {
      Report(UnitStart, Code::OddUnitSize, {packet_.Size});
    }
    const int control = packet_.Size - packet_.ControlOffset;
    if (std::cmp_greater(control, MaxPlayerControl)) {
      Report(ControlOffsetStart, Code::PlayerControlSize, {control});
    }
  }

  void CheckSequences() const {
    PlayerSurvey survey;
    WalkControl(packet_.Unit, packet_.ControlOffset, survey);
    if (!survey.HasStart()) {
      ReportInUnit(packet_.ControlOffset, Code::MissingStart, {});
    }
    if (!survey.HasStop() && checked_.Control.Delay != 0) {
      ReportInUnit(packet_.ControlOffset, Code::MissingStop, {});
    }
    if (const auto& late = survey.Late()) {
      ReportInUnit(late->Position, Code::LateCommand, {late->Code});
    }
    if (const auto& back = survey.FirstStepBack()) {
      ReportInUnit(back->Position, Code::EarlierDelay, {back->Delay, back->Before});
    }
  }

  void CheckArea() const {
    const SpuControl& control = checked_.Control;
    // What leaves the frame is told for everybody.
    if (control.Y2 < options_.FrameLines &&
        (control.Y1 < FirstSafeLine || control.Y2 > LastSafeLine(options_.FrameLines))) {
      ReportInUnit(packet_.ControlOffset, Code::OutsideSafeFrame,
                   {control.Y1, control.Y2, FirstSafeLine, LastSafeLine(options_.FrameLines)});
    }
    if (control.Y1 % 2 != 0) {
      ReportInUnit(packet_.ControlOffset, Code::OddFirstLine, {control.Y1});
    }
  }

  void CheckLines() const {
    const LineSurvey lines =
        SurveyLines(UnitView(packet_.Unit), checked_.Control, packet_.ControlOffset, MaxPlayerLineBits);
    if (lines.FirstLong) {
      ReportInUnit(UnitHeaderSize, Code::LongLine, {lines.FirstLong->Line + 1, lines.FirstLong->Bits});
    }
    if (lines.FirstOverrun) {
      ReportInUnit(UnitHeaderSize, Code::RunPastLine, {lines.FirstOverrun->Line + 1});
    }
  }

  const StreamPacket& packet_;
  const CheckedPacket& checked_;
  const CheckOptions& options_;
  const ProblemReporter& report_;
};

/// Unsigned, since stored times may lie at both ends of the 64-bit range.
std::uint64_t TicksBetween(const CheckedPacket& earlier, const CheckedPacket& later) {
  return static_cast<std::uint64_t>(later.Time) - static_cast<std::uint64_t>(earlier.Time);
}

/// The longest display that a delay can say on a player's clock.
constexpr std::uint64_t MaxPlayerDisplay = std::uint64_t{0xFFFF} * TicksPerPlayerDelayUnit;

/// A player reads the delay as unsigned.
std::uint64_t PlayerDelay(const CheckedPacket& packet) {
  return packet.HasSequences ? std::bit_cast<std::uint16_t>(packet.Control.Delay) : 0U;
}

std::int64_t Entries(const SpuControl& control) {
  CodeNibbles codes = {};
  std::ranges::transform(control.Colour, codes.begin(),
                         [](int entry) { return static_cast<std::uint8_t>(entry); });
  const CodeArguments packed = PackCodes(codes);
  return packed[0] << 8U | packed[1];
}

}  // namespace

void CheckPacketForPlayers(const StreamPacket& packet, const CheckedPacket& checked,
                           const CheckOptions& options, const ProblemReporter& report) {
  PlayerCheck(packet, checked, options, report).Run();
}

void CheckTimesForPlayers(const CheckedPacket& earlier, const CheckedPacket& later,
                          const ProblemReporter& report) {
  const auto problem = [&](const CheckedPacket& packet, std::int64_t place, Code code,
                           std::initializer_list<std::int64_t> numbers) {
    report(MakeProblem(packet.Offset, packet.Number, place, code, numbers));
  };
  if (earlier.Control.IsValid() && later.Control.IsValid() &&
      earlier.Control.Colour != later.Control.Colour) {
    problem(later, UnitStart + later.Control.ColourPos, Code::OtherEntries,
            {Entries(earlier.Control), Entries(later.Control)});
  }
  if (later.Time < earlier.Time) {
    return;
  }
  const std::uint64_t between = TicksBetween(earlier, later);
  const std::uint64_t delay = PlayerDelay(earlier);
  if (delay == 0) {
    if (between > MaxPlayerDisplay) {
      problem(earlier, TimeStart, Code::TooLongForDelay,
              {static_cast<std::int64_t>(between / std::uint64_t{TicksPerSecond})});
    }
    return;
  }
  // What is still shown by this program's clock is told for everybody.
  const bool isOverlap = earlier.Control.Delay > 0 && between < delay * std::uint64_t{TicksPerDelayUnit};
  const std::uint64_t shown = delay * TicksPerPlayerDelayUnit;
  if (!isOverlap && between < shown + MinPlayerGap) {
    problem(earlier, TimeStart, Code::ShortGap,
            {static_cast<std::int64_t>(shown) - static_cast<std::int64_t>(between)});
  }
}

}  // namespace quillmark
