#include "sup/StreamProblem.h"

#include <algorithm>

#include "base/AsciiCase.h"
#include "sup/ControlSurvey.h"
#include "sup/PlayerCheck.h"
#include "sup/SpuCommand.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

using Code = StreamProblemCode;

/// What is fixed about a code.
struct CodeWords {
  std::string_view Name;
  std::string_view Phrase;
  ProblemSeverity Severity = ProblemSeverity::Untidy;
};

constexpr CodeWords WordsOf(Code code) {
  using enum ProblemSeverity;
  switch (code) {
    case Code::LostSignature:
      return {"lost_signature", "lost signature", CannotBeShown};
    case Code::TrailingBytes:
      return {"trailing_bytes", "trailing bytes", Untidy};
    case Code::PastEnd:
      return {"past_end", "cut off by the end of the file", CannotBeShown};
    case Code::UnitTooLarge:
      return {"unit_too_large", "unit too large", CannotBeShown};
    case Code::UnitTooSmall:
      return {"unit_too_small", "unit too small", CannotBeShown};
    case Code::ControlOffsetZero:
      return {"control_offset_zero", "no control sequences", CannotBeShown};
    case Code::ControlOffsetOutside:
      return {"control_offset_outside", "control sequences outside the unit", CannotBeShown};
    case Code::ControlUnfinished:
      return {"control_unfinished", "control sequences without an end", CannotBeShown};
    case Code::ControlGap:
      return {"control_gap", "gap between control sequences", ShownWrongly};
    case Code::ManySequences:
      return {"many_sequences", "many control sequences", ShownWrongly};
    case Code::UnknownCommand:
      return {"unknown_command", "unknown command", ShownWrongly};
    case Code::MissingColour:
      return {"missing_colour", "no colours", CannotBeShown};
    case Code::MissingContrast:
      return {"missing_contrast", "no contrasts", CannotBeShown};
    case Code::MissingArea:
      return {"missing_area", "no display area", CannotBeShown};
    case Code::MissingFields:
      return {"missing_fields", "no fields", CannotBeShown};
    case Code::FieldOutside:
      return {"field_outside", "field outside the unit", ShownWrongly};
    case Code::ReversedArea:
      return {"reversed_area", "reversed area", CannotBeShown};
    case Code::AreaOutsideFrame:
      return {"area_outside_frame", "area outside the frame", ShownWrongly};
    case Code::OddHeight:
      return {"odd_height", "odd height", Untidy};
    case Code::NoEnd:
      return {"no_end", "no end of its own", Untidy};
    case Code::NegativeDelay:
      return {"negative_delay", "ends before it starts", ShownWrongly};
    case Code::NegativeTime:
      return {"negative_time", "negative time", ShownWrongly};
    case Code::TimeBackwards:
      return {"time_backwards", "starts before the one before it", ShownWrongly};
    case Code::Overlap:
      return {"overlap", "overlaps the next one", ShownWrongly};
    case Code::PlayerUnitSize:
      return {"player_unit_size", "unit too large for players", CannotBeShown};
    case Code::PlayerControlSize:
      return {"player_control_size", "too long control for players", CannotBeShown};
    case Code::OddUnitSize:
      return {"odd_unit_size", "odd unit size", ShownWrongly};
    case Code::MissingStart:
      return {"missing_start", "no start command", CannotBeShown};
    case Code::MissingStop:
      return {"missing_stop", "no stop command", ShownWrongly};
    case Code::LateCommand:
      return {"late_command", "command after the first sequence", ShownWrongly};
    case Code::EarlierDelay:
      return {"earlier_delay", "delays out of order", ShownWrongly};
    case Code::OutsideSafeFrame:
      return {"outside_safe_frame", "outside the safe lines", ShownWrongly};
    case Code::OddFirstLine:
      return {"odd_first_line", "odd first line", Untidy};
    case Code::LongLine:
      return {"long_line", "line of too many bits", CannotBeShown};
    case Code::RunPastLine:
      return {"run_past_line", "run past the line's end", CannotBeShown};
    case Code::OtherEntries:
      return {"other_entries", "other palette entries", Untidy};
    case Code::TooLongForDelay:
      return {"too_long_for_delay", "longer than a delay can say", ShownWrongly};
    case Code::ShortGap:
      return {"short_gap", "too close to the next for players", ShownWrongly};
  }
  return {};
}

std::string Number(std::int64_t value) {
  return std::to_string(value);
}

std::string Hex(std::int64_t byte) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  const auto value = static_cast<std::uint8_t>(byte);
  return {'0', 'x', Digits[HighNibble(value)], Digits[LowNibble(value)]};
}

std::string EndingMessage(ControlSurvey::Ending ending) {
  switch (ending) {
    case ControlSurvey::Ending::PointsToItself:
      break;
    case ControlSurvey::Ending::NoEndMark:
      return "the control sequence runs to the end of the unit without its end mark 0xFF";
    case ControlSurvey::Ending::PointsNowhere:
      return "the control sequence points to 0 for the next one; the last one points to itself";
    case ControlSurvey::Ending::PointsBackwards:
      return "the control sequence points backwards for the next one";
    case ControlSurvey::Ending::PointsOutside:
      return "the control sequence lies outside the unit, or points there for the next one";
    case ControlSurvey::Ending::TooLong:
      return "the control sequences do not come to an end within " + Number(MaxControlCommands) + " commands";
  }
  return "the control sequences do not come to an end";
}

std::string UnknownCommandMessage(std::int64_t command, std::int64_t count) {
  return "unknown command " + Hex(command) +
         (count > 1 ? ", and " + Number(count - 1) + " more in the unit" : "") +
         "; its arguments, if it has any, are read as commands";
}

/// The four ends of the area come first among the numbers, the frame's height after them.
std::string AreaMessage(const StreamProblem& problem) {
  const auto& [x1, x2, y1, y2, frameLines] = problem.Numbers;
  return "the display area, x " + Number(x1) + " to " + Number(x2) + " and y " + Number(y1) + " to " +
         Number(y2) + ", " +
         (problem.Code == Code::ReversedArea ? std::string("ends before it starts")
                                             : "leaves the frame of 720x" + Number(frameLines));
}

/// `ticks` of the next subtitle that players show this one for; 0 or negative where there is a gap.
std::string ShortGapMessage(std::int64_t ticks) {
  return "players, who count a delay in 1024 ticks, " +
         (ticks > 0 ? "show it " + Number(ticks) + " ticks of 90 kHz into the next subtitle"
                    : "end it " + Number(-ticks) + " ticks of 90 kHz before the next subtitle; " +
                          Number(MinPlayerGap) + ", a millisecond, are the least");
}

/// The palette entries of pixel codes 0 to 3 out of a colour command's arguments.
std::string EntriesText(std::int64_t arguments) {
  const CodeNibbles entries =
      UnpackCodes({static_cast<std::uint8_t>(arguments >> 8U), static_cast<std::uint8_t>(arguments)});
  std::string text;
  for (const std::uint8_t entry : entries) {
    text += (text.empty() ? "" : ", ") + Number(entry);
  }
  return text;
}

}  // namespace

ProblemSeverity SeverityOf(StreamProblemCode code) {
  return WordsOf(code).Severity;
}

std::string_view ProblemName(StreamProblemCode code) {
  return WordsOf(code).Name;
}

std::string_view SeverityName(ProblemSeverity severity) {
  switch (severity) {
    case ProblemSeverity::Untidy:
      return "untidy";
    case ProblemSeverity::ShownWrongly:
      return "shown_wrongly";
    case ProblemSeverity::CannotBeShown:
      return "cannot_be_shown";
  }
  return "";
}

std::string_view ProblemPhrase(StreamProblemCode code) {
  return WordsOf(code).Phrase;
}

std::string ProblemMessage(const StreamProblem& problem) {
  const auto& numbers = problem.Numbers;
  switch (problem.Code) {
    case Code::LostSignature:
      return "no \"SP\" where a packet should start; " +
             (numbers[0] > 0 ? "the next packet was found at offset " + Number(numbers[0])
                             : std::string("no further packet was found"));
    case Code::TrailingBytes:
      return Number(numbers[0]) + " bytes at the end of the file are too few for a packet";
    case Code::PastEnd:
      return "the packet runs " + Number(numbers[0]) + " bytes past the end of the file";
    case Code::UnitTooLarge:
      return "the unit's size is " + Number(numbers[0]) + ", and 32768 or more reads as negative";
    case Code::UnitTooSmall:
      return "the unit's size is " + Number(numbers[0]) + ", less than its header";
    case Code::ControlOffsetZero:
      return "the control offset is 0, so no control sequence is read";
    case Code::ControlOffsetOutside:
      return "the control offset " + Number(numbers[0]) + " leads out of the unit of " + Number(numbers[1]) +
             " bytes";
    case Code::ControlUnfinished:
      return EndingMessage(static_cast<ControlSurvey::Ending>(numbers[0]));
    case Code::ControlGap:
      return "this control sequence does not stand right after the one before it";
    case Code::ManySequences:
      return "the unit has " + Number(numbers[0]) +
             " control sequences; the last one's delay counts as the end";
    case Code::UnknownCommand:
      return UnknownCommandMessage(numbers[0], numbers[1]);
    case Code::MissingColour:
      return "the unit has no command for its colours (0x03)";
    case Code::MissingContrast:
      return "the unit has no command for its contrasts (0x04)";
    case Code::MissingArea:
      return "the unit has no command for its display area (0x05)";
    case Code::MissingFields:
      return "the unit has no command for its fields' places (0x06)";
    case Code::FieldOutside:
      return std::string("the ") + (numbers[0] == 0 ? "top" : "bottom") + " field's offset " +
             Number(numbers[1]) + " leads out of the unit of " + Number(numbers[2]) + " bytes";
    case Code::ReversedArea:
    case Code::AreaOutsideFrame:
      return AreaMessage(problem);
    case Code::OddHeight:
      return "the height " + Number(numbers[0]) + " is odd, so the last line is not shown";
    case Code::NoEnd:
      return "the subtitle has no end of its own";
    case Code::NegativeDelay:
      return "the delay 0x8000 or more reads as negative: the subtitle ends before it starts";
    case Code::NegativeTime:
      return "the start time is negative";
    case Code::TimeBackwards:
      return "it starts at " + FormatTimecode(numbers[0]) + ", before the subtitle before it at " +
             FormatTimecode(numbers[1]);
    case Code::Overlap:
      return "it is shown until " + FormatTimecode(numbers[0]) + ", but the next subtitle starts at " +
             FormatTimecode(numbers[1]);
    case Code::PlayerUnitSize:
      return "the unit's size is " + Number(numbers[0]) + "; players take up to " + Number(MaxPlayerUnit);
    case Code::PlayerControlSize:
      return "the control sequences take " + Number(numbers[0]) + " bytes; players take up to " +
             Number(MaxPlayerControl);
    case Code::OddUnitSize:
      return "the unit's size " + Number(numbers[0]) + " is odd; players expect whole pairs of bytes";
    case Code::MissingStart:
      return "no command starts the display, so players show nothing";
    case Code::MissingStop:
      return "no command stops the display, so players show it until the next subtitle";
    case Code::LateCommand:
      return "command " + Hex(numbers[0]) +
             " stands in a later control sequence alone; players expect it in the first";
    case Code::EarlierDelay:
      return "the delay " + Number(numbers[0]) + " is less than that of the sequence before it, " +
             Number(numbers[1]) + "; delays count from the subtitle's start";
    case Code::OutsideSafeFrame:
      return "it covers lines " + Number(numbers[0]) + " to " + Number(numbers[1]) +
             " of the frame; players show lines " + Number(numbers[2]) + " to " + Number(numbers[3]);
    case Code::OddFirstLine:
      return "it starts on the odd line " + Number(numbers[0]) +
             " of the frame, so its fields change places on an interlaced screen";
    case Code::LongLine:
      return "line " + Number(numbers[0]) + " of the picture takes " + Number(numbers[1]) +
             " bits; players take up to " + Number(MaxPlayerLineBits);
    case Code::RunPastLine:
      return "a run passes the end of line " + Number(numbers[0]) +
             " of the picture; this program cuts it, players refuse the picture";
    case Code::OtherEntries:
      return "its codes 0 to 3 are the palette entries " + EntriesText(numbers[1]) +
             ", those of the subtitle before it " + EntriesText(numbers[0]);
    case Code::TooLongForDelay:
      return "it has no end, and the next subtitle starts " + Number(numbers[0]) +
             " s later; a player's delay can say 745";
    case Code::ShortGap:
      return ShortGapMessage(numbers[0]);
  }
  return "";
}

std::string ProblemLine(const StreamProblem& problem) {
  return "Offset " + Number(problem.Offset) + ": " + ProblemMessage(problem);
}

std::uint64_t CodesWithWords(std::string_view words) {
  const std::string wanted = LowerAscii(words);
  std::uint64_t codes = 0;
  for (int i = 0; i < StreamProblemCodes; ++i) {
    const auto code = static_cast<Code>(i);
    const std::string name(ProblemName(code));
    std::string spaced = name;
    std::ranges::replace(spaced, '_', ' ');
    for (const std::string& text :
         {name, spaced, std::string(ProblemPhrase(code)),
          ProblemMessage({.Offset = 0, .Packet = {}, .Code = code, .Numbers = {}})}) {
      if (LowerAscii(text).find(wanted) != std::string::npos) {
        codes |= std::uint64_t{1} << static_cast<unsigned>(i);
      }
    }
  }
  return codes;
}

}  // namespace quillmark
