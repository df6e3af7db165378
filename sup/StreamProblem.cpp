#include "sup/StreamProblem.h"

#include <algorithm>

#include "base/AsciiCase.h"
#include "base/Words.h"
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
  const char* Phrase = "";
  ProblemSeverity Severity = ProblemSeverity::Untidy;
};

constexpr CodeWords WordsOf(Code code) {
  using enum ProblemSeverity;
  switch (code) {
    case Code::LostSignature:
      return {"lost_signature", Words::Mark("lost signature"), CannotBeShown};
    case Code::TrailingBytes:
      return {"trailing_bytes", Words::Mark("trailing bytes"), Untidy};
    case Code::PastEnd:
      return {"past_end", Words::Mark("cut off by the end of the file"), CannotBeShown};
    case Code::UnitTooLarge:
      return {"unit_too_large", Words::Mark("unit too large"), CannotBeShown};
    case Code::UnitTooSmall:
      return {"unit_too_small", Words::Mark("unit too small"), CannotBeShown};
    case Code::ControlOffsetZero:
      return {"control_offset_zero", Words::Mark("no control sequences"), CannotBeShown};
    case Code::ControlOffsetOutside:
      return {"control_offset_outside", Words::Mark("control sequences outside the unit"), CannotBeShown};
    case Code::ControlUnfinished:
      return {"control_unfinished", Words::Mark("control sequences without an end"), CannotBeShown};
    case Code::ControlGap:
      return {"control_gap", Words::Mark("gap between control sequences"), ShownWrongly};
    case Code::ManySequences:
      return {"many_sequences", Words::Mark("many control sequences"), ShownWrongly};
    case Code::UnknownCommand:
      return {"unknown_command", Words::Mark("unknown command"), ShownWrongly};
    case Code::MissingColour:
      return {"missing_colour", Words::Mark("no colours"), CannotBeShown};
    case Code::MissingContrast:
      return {"missing_contrast", Words::Mark("no contrasts"), CannotBeShown};
    case Code::MissingArea:
      return {"missing_area", Words::Mark("no display area"), CannotBeShown};
    case Code::MissingFields:
      return {"missing_fields", Words::Mark("no fields"), CannotBeShown};
    case Code::FieldOutside:
      return {"field_outside", Words::Mark("field outside the unit"), ShownWrongly};
    case Code::ReversedArea:
      return {"reversed_area", Words::Mark("reversed area"), CannotBeShown};
    case Code::AreaOutsideFrame:
      return {"area_outside_frame", Words::Mark("area outside the frame"), ShownWrongly};
    case Code::OddHeight:
      return {"odd_height", Words::Mark("odd height"), Untidy};
    case Code::NoEnd:
      return {"no_end", Words::Mark("no end of its own"), Untidy};
    case Code::NegativeDelay:
      return {"negative_delay", Words::Mark("ends before it starts"), ShownWrongly};
    case Code::NegativeTime:
      return {"negative_time", Words::Mark("negative time"), ShownWrongly};
    case Code::TimeBackwards:
      return {"time_backwards", Words::Mark("starts before the one before it"), ShownWrongly};
    case Code::Overlap:
      return {"overlap", Words::Mark("overlaps the next one"), ShownWrongly};
    case Code::PlayerUnitSize:
      return {"player_unit_size", Words::Mark("unit too large for players"), CannotBeShown};
    case Code::PlayerControlSize:
      return {"player_control_size", Words::Mark("too long control for players"), CannotBeShown};
    case Code::OddUnitSize:
      return {"odd_unit_size", Words::Mark("odd unit size"), ShownWrongly};
    case Code::MissingStart:
      return {"missing_start", Words::Mark("no start command"), CannotBeShown};
    case Code::MissingStop:
      return {"missing_stop", Words::Mark("no stop command"), ShownWrongly};
    case Code::LateCommand:
      return {"late_command", Words::Mark("command after the first sequence"), ShownWrongly};
    case Code::EarlierDelay:
      return {"earlier_delay", Words::Mark("delays out of order"), ShownWrongly};
    case Code::OutsideSafeFrame:
      return {"outside_safe_frame", Words::Mark("outside the safe lines"), ShownWrongly};
    case Code::OddFirstLine:
      return {"odd_first_line", Words::Mark("odd first line"), Untidy};
    case Code::LongLine:
      return {"long_line", Words::Mark("line of too many bits"), CannotBeShown};
    case Code::RunPastLine:
      return {"run_past_line", Words::Mark("run past the line's end"), CannotBeShown};
    case Code::OtherEntries:
      return {"other_entries", Words::Mark("other palette entries"), Untidy};
    case Code::TooLongForDelay:
      return {"too_long_for_delay", Words::Mark("longer than a delay can say"), ShownWrongly};
    case Code::ShortGap:
      break;
  }
  return {"short_gap", Words::Mark("too close to the next for players"), ShownWrongly};
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
      return Words::Tr("the control sequence runs to the end of the unit without its end mark 0xFF");
    case ControlSurvey::Ending::PointsNowhere:
      return Words::Tr("the control sequence points to 0 for the next one; the last one points to itself");
    case ControlSurvey::Ending::PointsBackwards:
      return Words::Tr("the control sequence points backwards for the next one");
    case ControlSurvey::Ending::PointsOutside:
      return Words::Tr("the control sequence lies outside the unit, or points there for the next one");
    case ControlSurvey::Ending::TooLong:
      return Words::Tr("the control sequences do not come to an end within %1 commands",
                       {Number(MaxControlCommands)});
  }
  return Words::Tr("the control sequences do not come to an end");
}

std::string UnknownCommandMessage(std::int64_t command, std::int64_t count) {
  return count > 1
             ? Words::Tr(
                   "unknown command %1, and %2 more in the unit; its arguments, if it has any, are read "
                   "as commands",
                   {Hex(command), Number(count - 1)})
             : Words::Tr("unknown command %1; its arguments, if it has any, are read as commands",
                         {Hex(command)});
}

/// The four ends of the area come first among the numbers, the frame's height after them.
std::string AreaMessage(const StreamProblem& problem) {
  const auto& [x1, x2, y1, y2, frameLines] = problem.Numbers;
  return problem.Code == Code::ReversedArea
             ? Words::Tr("the display area, x %1 to %2 and y %3 to %4, ends before it starts",
                         {Number(x1), Number(x2), Number(y1), Number(y2)})
             : Words::Tr("the display area, x %1 to %2 and y %3 to %4, leaves the frame of 720x%5",
                         {Number(x1), Number(x2), Number(y1), Number(y2), Number(frameLines)});
}

/// `ticks` of the next subtitle that players show this one for; 0 or negative where there is a gap.
std::string ShortGapMessage(std::int64_t ticks) {
  return ticks > 0
             ? Words::Tr(
                   "players, who count a delay in 1024 ticks, show it %1 ticks of 90 kHz into the next "
                   "subtitle",
                   {Number(ticks)})
             : Words::Tr(
                   "players, who count a delay in 1024 ticks, end it %1 ticks of 90 kHz before the next "
                   "subtitle; %2, a millisecond, are the least",
                   {Number(-ticks), Number(MinPlayerGap)});
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
      break;
  }
  return "cannot_be_shown";
}

std::string ProblemPhrase(StreamProblemCode code) {
  return Words::Tr(WordsOf(code).Phrase);
}

std::string ProblemMessage(const StreamProblem& problem) {
  const auto& numbers = problem.Numbers;
  switch (problem.Code) {
    case Code::LostSignature:
      return numbers[0] > 0
                 ? Words::Tr("no \"SP\" where a packet should start; the next packet was found at offset %1",
                             {Number(numbers[0])})
                 : Words::Tr("no \"SP\" where a packet should start; no further packet was found");
    case Code::TrailingBytes:
      return Words::Tr("%1 bytes at the end of the file are too few for a packet", {Number(numbers[0])});
    case Code::PastEnd:
      return Words::Tr("the packet runs %1 bytes past the end of the file", {Number(numbers[0])});
    case Code::UnitTooLarge:
      return Words::Tr("the unit's size is %1, and 32768 or more reads as negative", {Number(numbers[0])});
    case Code::UnitTooSmall:
      return Words::Tr("the unit's size is %1, less than its header", {Number(numbers[0])});
    case Code::ControlOffsetZero:
      return Words::Tr("the control offset is 0, so no control sequence is read");
    case Code::ControlOffsetOutside:
      return Words::Tr("the control offset %1 leads out of the unit of %2 bytes",
                       {Number(numbers[0]), Number(numbers[1])});
    case Code::ControlUnfinished:
      return EndingMessage(static_cast<ControlSurvey::Ending>(numbers[0]));
    case Code::ControlGap:
      return Words::Tr("this control sequence does not stand right after the one before it");
    case Code::ManySequences:
      return Words::Tr("the unit has %1 control sequences; the last one's delay counts as the end",
                       {Number(numbers[0])});
    case Code::UnknownCommand:
      return UnknownCommandMessage(numbers[0], numbers[1]);
    case Code::MissingColour:
      return Words::Tr("the unit has no command for its colours (0x03)");
    case Code::MissingContrast:
      return Words::Tr("the unit has no command for its contrasts (0x04)");
    case Code::MissingArea:
      return Words::Tr("the unit has no command for its display area (0x05)");
    case Code::MissingFields:
      return Words::Tr("the unit has no command for its fields' places (0x06)");
    case Code::FieldOutside:
      return numbers[0] == 0 ? Words::Tr("the top field's offset %1 leads out of the unit of %2 bytes",
                                         {Number(numbers[1]), Number(numbers[2])})
                             : Words::Tr("the bottom field's offset %1 leads out of the unit of %2 bytes",
                                         {Number(numbers[1]), Number(numbers[2])});
    case Code::ReversedArea:
    case Code::AreaOutsideFrame:
      return AreaMessage(problem);
    case Code::OddHeight:
      return Words::Tr("the height %1 is odd, so the last line is not shown", {Number(numbers[0])});
    case Code::NoEnd:
      return Words::Tr("the subtitle has no end of its own");
    case Code::NegativeDelay:
      return Words::Tr("the delay 0x8000 or more reads as negative: the subtitle ends before it starts");
    case Code::NegativeTime:
      return Words::Tr("the start time is negative");
    case Code::TimeBackwards:
      return Words::Tr("it starts at %1, before the subtitle before it at %2",
                       {FormatTimecode(numbers[0]), FormatTimecode(numbers[1])});
    case Code::Overlap:
      return Words::Tr("it is shown until %1, but the next subtitle starts at %2",
                       {FormatTimecode(numbers[0]), FormatTimecode(numbers[1])});
    case Code::PlayerUnitSize:
      return Words::Tr("the unit's size is %1; players take up to %2",
                       {Number(numbers[0]), Number(MaxPlayerUnit)});
    case Code::PlayerControlSize:
      return Words::Tr("the control sequences take %1 bytes; players take up to %2",
                       {Number(numbers[0]), Number(MaxPlayerControl)});
    case Code::OddUnitSize:
      return Words::Tr("the unit's size %1 is odd; players expect whole pairs of bytes",
                       {Number(numbers[0])});
    case Code::MissingStart:
      return Words::Tr("no command starts the display, so players show nothing");
    case Code::MissingStop:
      return Words::Tr("no command stops the display, so players show it until the next subtitle");
    case Code::LateCommand:
      return Words::Tr("command %1 stands in a later control sequence alone; players expect it in the first",
                       {Hex(numbers[0])});
    case Code::EarlierDelay:
      return Words::Tr(
          "the delay %1 is less than that of the sequence before it, %2; delays count from the subtitle's "
          "start",
          {Number(numbers[0]), Number(numbers[1])});
    case Code::OutsideSafeFrame:
      return Words::Tr("it covers lines %1 to %2 of the frame; players show lines %3 to %4",
                       {Number(numbers[0]), Number(numbers[1]), Number(numbers[2]), Number(numbers[3])});
    case Code::OddFirstLine:
      return Words::Tr(
          "it starts on the odd line %1 of the frame, so its fields change places on an interlaced screen",
          {Number(numbers[0])});
    case Code::LongLine:
      return Words::Tr("line %1 of the picture takes %2 bits; players take up to %3",
                       {Number(numbers[0]), Number(numbers[1]), Number(MaxPlayerLineBits)});
    case Code::RunPastLine:
      return Words::Tr(
          "a run passes the end of line %1 of the picture; this program cuts it, players refuse the picture",
          {Number(numbers[0])});
    case Code::OtherEntries:
      return Words::Tr("its codes 0 to 3 are the palette entries %1, those of the subtitle before it %2",
                       {EntriesText(numbers[1]), EntriesText(numbers[0])});
    case Code::TooLongForDelay:
      return Words::Tr("it has no end, and the next subtitle starts %1 s later; a player's delay can say 745",
                       {Number(numbers[0])});
    case Code::ShortGap:
      break;
  }
  return ShortGapMessage(numbers[0]);
}

std::string ProblemLine(const StreamProblem& problem) {
  return Words::Tr("Offset %1: %2", {Number(problem.Offset), ProblemMessage(problem)});
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
         {name, spaced, ProblemPhrase(code),
          ProblemMessage({.Offset = 0, .Packet = {}, .Code = code, .Numbers = {}})}) {
      if (LowerAscii(text).find(wanted) != std::string::npos) {
        codes |= std::uint64_t{1} << static_cast<unsigned>(i);
      }
    }
  }
  return codes;
}

}  // namespace quillmark
