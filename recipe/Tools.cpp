// The table of tools and of their options, and how each tool reads them.

#include <algorithm>
#include <array>

#include "base/Words.h"
#include "recipe/OptionReader.h"
#include "recipe/Step.h"

namespace quillmark {
namespace {

using Options = decltype(Step::Options);

constexpr ToolOption Only = {
    "only", "A-B,...",
    Words::Mark("Subtitles A to B, counted from 1; also A alone, A- for all from A on, and lists of these")};

constexpr std::array RetimeTable = {
    ToolOption{"shift", "MS",
               Words::Mark("Milliseconds, with or without decimals, that are added to start times")},
    ToolOption{"scale", "NUM/DEN",
               Words::Mark("What start times and delays are multiplied by, before --shift is added")},
    ToolOption{"from", "SPEED",
               Words::Mark("The speed that the times were made for: 23.976, 24, 25 or 29.97")},
    ToolOption{"to", "SPEED", Words::Mark("The speed that they are to be for, in place of --scale")},
    ToolOption{
        "points", "A=TIME,B=TIME",
        Words::Mark(
            "Subtitle A starts at TIME, [[h:]m:]s, and B at TIME; the straight line through both for all")},
    Only};
constexpr std::array MoveTable = {
    ToolOption{"x", "PIXELS", Words::Mark("Move to the right; to the left where negative")},
    ToolOption{"y", "LINES", Words::Mark("Move down; up where negative")},
    ToolOption{"to-line", "LINE",
               Words::Mark("Move so that the bottom edge comes to this line of the frame, from 0")},
    ToolOption{"frame", "480|576", Words::Mark("Lines of the frame; 576 where it is not given")},
    ToolOption{"clamp", "", Words::Mark("Move what would leave the frame as far as it goes")},
    Only};
constexpr std::array ForceTable = {
    ToolOption{"state", "on|off", Words::Mark("Whether subtitles are shown also while they are switched off"),
               true},
    Only};
constexpr std::array EndsTable = {
    ToolOption{"fill", "", Words::Mark("Give subtitles without an end one: the next start")},
    ToolOption{"no-overlap", "", Words::Mark("Cut an end after the next start to it")},
    ToolOption{"gap", "MS", Words::Mark("How long before the next start these ends are")},
    ToolOption{"longest", "MS", Words::Mark("How long --fill shows a subtitle at most")},
    ToolOption{"shortest", "MS", Words::Mark("Show a subtitle at least so long")},
    Only};
constexpr std::array ChoiceTable = {Only};
constexpr std::array JoinTable = {
    ToolOption{"with", "FILE", Words::Mark("Stream that is added")},
    ToolOption{"track", "N|LANGUAGE", Words::Mark("Of a file that has several: number or language")},
    ToolOption{"gap", "MS", Words::Mark("How long after the last end the added stream starts")},
    ToolOption{"at", "TIME", Words::Mark("When it starts, [[h:]m:]s, in place of --gap")}};
constexpr std::array FixTable = {
    ToolOption{"profile", "spec|player", Words::Mark("Rules for everybody, or those for players too")},
    ToolOption{"frame", "480|576", Words::Mark("Lines of the frame; 576 where it is not given")}};
constexpr std::array AssignTable = {
    ToolOption{
        "colours", "HHHH",
        Words::Mark(
            "Palette entries, a hexadecimal digit for each pixel code: 0 background, 1 pattern, 2 emphasis "
            "1, 3 emphasis 2; a dot leaves a code as it is")},
    ToolOption{"opacities", "HHHH", Words::Mark("Opacities in the same way, 0 invisible to F opaque")}, Only};

Options ReadRetime(OptionReader& reader) {
  RetimeOptions options;
  options.Shift = reader.Milliseconds("shift").value_or(0);
  options.Scale = reader.Read("scale", ParseRatio, Words::Tr("no ratio such as 25/24")).value_or(Ratio());
  const std::string noSpeed =
      Words::Tr("none of the speeds 24000/1001 (23.976), 24, 25 and 30000/1001 (29.97)");
  const auto from = reader.Read("from", ParseSpeed, noSpeed);
  const auto to = reader.Read("to", ParseSpeed, noSpeed);
  options.Points = reader.Read("points", ParsePoints, Words::Tr("not of the form A=TIME,B=TIME"));
  if (reader.Has("from") != reader.Has("to")) {
    reader.Refuse(Words::Tr("%1 and %2 belong together", {reader.Named("from"), reader.Named("to")}));
  }
  if (reader.Has("from") && reader.Has("scale")) {
    reader.Refuse(Words::Tr("%1 and %2 stand in place of %3",
                            {reader.Named("from"), reader.Named("to"), reader.Named("scale")}));
  }
  if (from && to) {
    options.Scale = Divide(*from, *to).value_or(Ratio());
  }
  const bool hasFactors = reader.Has("shift") || reader.Has("scale") || reader.Has("from");
  if (hasFactors == reader.Has("points")) {
    reader.Refuse(hasFactors ? Words::Tr("%1 stands alone", {reader.Named("points")})
                             : Words::Tr("retime needs %1, %2, %3 and %4, or %5",
                                         {reader.Named("shift"), reader.Named("scale"), reader.Named("from"),
                                          reader.Named("to"), reader.Named("points")}));
  }
  return options;
}

/// Lines of the frame.
int ReadFrame(OptionReader& reader) {
  const std::string* const lines = reader.Text("frame");
  if (lines != nullptr && *lines != "480" && *lines != "576") {
    reader.Refuse(Words::Tr("%1: '%2' is neither 480 nor 576", {reader.Named("frame"), *lines}));
  }
  return lines != nullptr && *lines == "480" ? 480 : 576;
}

Options ReadMove(OptionReader& reader) {
  constexpr std::int64_t Far = 10000;
  MoveOptions options;
  options.X = static_cast<std::int32_t>(reader.Number("x", -Far, Far).value_or(0));
  options.Y = static_cast<std::int32_t>(reader.Number("y", -Far, Far).value_or(0));
  options.FrameLines = ReadFrame(reader);
  if (const auto line = reader.Number("to-line", 0, options.FrameLines - 1)) {
    options.ToLine = static_cast<std::int32_t>(*line);
  }
  options.Clamp = reader.Has("clamp");
  if (reader.Has("y") && reader.Has("to-line")) {
    reader.Refuse(Words::Tr("%1 stands in place of %2", {reader.Named("to-line"), reader.Named("y")}));
  }
  if (!reader.Has("x") && !reader.Has("y") && !reader.Has("to-line")) {
    reader.Refuse(Words::Tr("move needs %1, %2 or %3",
                            {reader.Named("x"), reader.Named("y"), reader.Named("to-line")}));
  }
  return options;
}

Options ReadForce(OptionReader& reader) {
  const std::string* const state = reader.Text("state");
  if (state == nullptr || (*state != "on" && *state != "off")) {
    reader.Refuse(state == nullptr ? Words::Tr("force needs 'on' or 'off'")
                                   : Words::Tr("state: '%1' is neither 'on' nor 'off'", {*state}));
    return DisplayStart::Ordinary;
  }
  return *state == "on" ? DisplayStart::Forced : DisplayStart::Ordinary;
}

/// Longer than any stream; keeps sums of times far from where 64 bits end.
constexpr std::int64_t LongestGap = TicksPerSecond * 3600 * 1000;

Options ReadEnds(OptionReader& reader) {
  EndOptions options;
  options.Fill = reader.Has("fill");
  options.NoOverlap = reader.Has("no-overlap");
  options.Gap = reader.Duration("gap", LongestGap).value_or(0);
  options.Longest = reader.Duration("longest", MaxDisplay);
  options.Shortest = reader.Duration("shortest", MaxDisplay);
  if (options.Longest && *options.Longest < TicksPerDelayUnit) {
    reader.Refuse(Words::Tr("%1: '%2' is shorter than a delay can say, which counts units of 1000 ticks",
                            {reader.Named("longest"), *reader.Text("longest")}));
  }
  if (reader.Has("longest") && !options.Fill) {
    reader.Refuse(Words::Tr("%1 belongs to %2", {reader.Named("longest"), reader.Named("fill")}));
  }
  if (reader.Has("gap") && !options.Fill && !options.NoOverlap) {
    reader.Refuse(Words::Tr("%1 belongs to %2 and %3",
                            {reader.Named("gap"), reader.Named("fill"), reader.Named("no-overlap")}));
  }
  if (!options.Fill && !options.NoOverlap && !options.Shortest) {
    reader.Refuse(Words::Tr("ends needs %1, %2 or %3",
                            {reader.Named("fill"), reader.Named("no-overlap"), reader.Named("shortest")}));
  }
  return options;
}

/// A tool that takes packets away has to be told which.
void NeedOnly(OptionReader& reader, const std::string& tool) {
  if (!reader.Has("only")) {
    reader.Refuse(Words::Tr("%1 needs %2", {tool, reader.Named("only")}));
  }
}

Options ReadCut(OptionReader& reader) {
  NeedOnly(reader, "cut");
  return CutStep();
}

Options ReadKeep(OptionReader& reader) {
  NeedOnly(reader, "keep");
  return KeepStep();
}

Options ReadSort(OptionReader& /*reader*/) {
  return SortStep();
}

Options ReadJoin(OptionReader& reader) {
  JoinFile join;
  const std::string* const file = reader.Text("with");
  if (file == nullptr || file->empty()) {
    reader.Refuse(file == nullptr ? Words::Tr("join needs %1", {reader.Named("with")})
                                  : Words::Tr("%1: '' names no file", {reader.Named("with")}));
  } else {
    join.Path = *file;
  }
  if (const std::string* const track = reader.Text("track")) {
    join.Track = *track;
  }
  join.Options.Gap = reader.Duration("gap", LongestGap).value_or(0);
  join.Options.At = reader.Read("at", ParseTime, Words::Tr("no time such as 1:02:03.5"));
  if (reader.Has("gap") && reader.Has("at")) {
    reader.Refuse(Words::Tr("%1 stands in place of %2", {reader.Named("at"), reader.Named("gap")}));
  }
  return join;
}

Options ReadAssign(OptionReader& reader) {
  const std::string noNibbles = Words::Tr("not four hexadecimal digits or dots");
  CodeAssignment codes;
  codes.Colours = reader.Read("colours", ParseNibbles, noNibbles).value_or(ChosenNibbles());
  codes.Contrasts = reader.Read("opacities", ParseNibbles, noNibbles).value_or(ChosenNibbles());
  codes.NeedsCommands = true;
  if (!reader.Has("colours") && !reader.Has("opacities")) {
    reader.Refuse(
        Words::Tr("assign needs %1, %2 or both", {reader.Named("colours"), reader.Named("opacities")}));
  }
  return codes;
}

Options ReadFix(OptionReader& reader) {
  FixStep fix;
  const std::string* const profile = reader.Text("profile");
  if (profile != nullptr && *profile != "spec" && *profile != "player") {
    reader.Refuse(Words::Tr("%1: '%2' is neither spec nor player", {reader.Named("profile"), *profile}));
  }
  fix.Rules.Profile = profile != nullptr && *profile == "player" ? CheckProfile::Player : CheckProfile::Spec;
  fix.Rules.FrameLines = ReadFrame(reader);
  return fix;
}

Options ReadSalvage(OptionReader& /*reader*/) {
  return SalvageStep();
}

constexpr std::array Tools = {
    Tool{"assign", Words::Mark("Write other colours, opacities or both into the stream"),
         Words::Mark("changed"), AssignTable},
    Tool{"retime", Words::Mark("Move or stretch start times, and delays with them"), Words::Mark("retimed"),
         RetimeTable},
    Tool{"move", Words::Mark("Move subtitles within the frame"), Words::Mark("moved"), MoveTable},
    Tool{"force", Words::Mark("Have subtitles shown also while they are switched off, or no longer"),
         Words::Mark("changed"), ForceTable},
    Tool{"ends", Words::Mark("Give subtitles ends, and mend those that overlap or come too early"),
         Words::Mark("given another end"), EndsTable},
    Tool{"cut", Words::Mark("Take subtitles out of the stream"), Words::Mark("taken out"), ChoiceTable},
    Tool{"keep", Words::Mark("Take all other subtitles out of the stream"), Words::Mark("taken out"),
         ChoiceTable},
    Tool{"sort", Words::Mark("Put subtitles in the order of their start times"), Words::Mark("moved"),
         ChoiceTable},
    Tool{"join", Words::Mark("Add another stream behind the first"), Words::Mark("added"), JoinTable},
    Tool{"fix", Words::Mark("Mend what can be mended without coding pictures again"), Words::Mark("mended"),
         FixTable},
    Tool{"salvage", Words::Mark("Keep the good packets of a damaged stream"), Words::Mark("taken out"), {}}};

/// In the table's order.
constexpr std::array<Options (*)(OptionReader&), Tools.size()> Readers = {
    ReadAssign, ReadRetime, ReadMove, ReadForce, ReadEnds,   ReadCut,
    ReadKeep,   ReadSort,   ReadJoin, ReadFix,   ReadSalvage};

/// Refuses what the tool does not take, and what is given twice.
void CheckNames(const Tool& tool, const StepText& text, OptionReader& reader) {
  for (const auto& [name, value] : text.Options) {
    const auto option = std::ranges::find(tool.Options, std::string_view(name), &ToolOption::Name);
    const auto same = std::ranges::count(text.Options, name, &std::pair<std::string, std::string>::first);
    if (option == tool.Options.end()) {
      reader.Refuse(Words::Tr("%1 takes no '%2'", {text.Tool, reader.Named(name)}));
    } else if (same > 1) {
      reader.Refuse(Words::Tr("%1 is given twice", {reader.Named(name)}));
    }
  }
}

}  // namespace

std::span<const Tool> AllTools() {
  return Tools;
}

Result<Step> ReadStep(const StepText& text, std::string_view dashes) {
  const Tool* const tool = FindTool(text.Tool);
  if (tool == nullptr) {
    return Failure{Words::Tr("there is no tool '%1'", {text.Tool})};
  }
  OptionReader reader(text, dashes);
  CheckNames(*tool, text, reader);
  Step step;
  step.What = tool;
  const auto only = reader.Read("only", SubtitleSet::Parse, Words::Tr("no range such as 3-7, 3 or 3-"));
  step.Only = only.value_or(SubtitleSet::All());
  step.Options = Readers[static_cast<std::size_t>(tool - Tools.data())](reader);
  return reader.Wrong() ? Result<Step>(*reader.Wrong()) : Result<Step>(std::move(step));
}

}  // namespace quillmark
