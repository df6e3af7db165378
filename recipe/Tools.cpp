// The table of tools and of their options, and how each tool reads them.

#include <algorithm>
#include <array>

#include "recipe/OptionReader.h"
#include "recipe/Step.h"

namespace quillmark {
namespace {

using Options = decltype(Step::Options);

constexpr ToolOption Only = {
    "only", "A-B,...",
    "Subtitles A to B, counted from 1; also A alone, A- for all from A on, and lists of these"};

constexpr std::array RetimeTable = {
    ToolOption{"shift", "MS", "Milliseconds, with or without decimals, that are added to start times"},
    ToolOption{"scale", "NUM/DEN", "What start times and delays are multiplied by, before --shift is added"},
    ToolOption{"from", "SPEED", "The speed that the times were made for: 23.976, 24, 25 or 29.97"},
    ToolOption{"to", "SPEED", "The speed that they are to be for, in place of --scale"},
    ToolOption{"points", "A=TIME,B=TIME",
               "Subtitle A starts at TIME, [[h:]m:]s, and B at TIME; the straight line through both for all"},
    Only};
constexpr std::array MoveTable = {
    ToolOption{"x", "PIXELS", "Move to the right; to the left where negative"},
    ToolOption{"y", "LINES", "Move down; up where negative"},
    ToolOption{"to-line", "LINE", "Move so that the bottom edge comes to this line of the frame, from 0"},
    ToolOption{"frame", "480|576", "Lines of the frame; 576 where it is not given"},
    ToolOption{"clamp", "", "Move what would leave the frame as far as it goes"},
    Only};
constexpr std::array ForceTable = {
    ToolOption{"state", "on|off", "Whether subtitles are shown also while they are switched off", true},
    Only};
constexpr std::array EndsTable = {ToolOption{"fill", "", "Give subtitles without an end one: the next start"},
                                  ToolOption{"no-overlap", "", "Cut an end after the next start to it"},
                                  ToolOption{"gap", "MS", "How long before the next start these ends are"},
                                  ToolOption{"longest", "MS", "How long --fill shows a subtitle at most"},
                                  ToolOption{"shortest", "MS", "Show a subtitle at least so long"},
                                  Only};
constexpr std::array ChoiceTable = {Only};
constexpr std::array JoinTable = {
    ToolOption{"with", "FILE", "Stream that is added"},
    ToolOption{"track", "N|LANGUAGE", "Of a file that has several: number or language"},
    ToolOption{"gap", "MS", "How long after the last end the added stream starts"},
    ToolOption{"at", "TIME", "When it starts, [[h:]m:]s, in place of --gap"}};
constexpr std::array FixTable = {
    ToolOption{"profile", "spec|player", "Rules for everybody, or those for players too"},
    ToolOption{"frame", "480|576", "Lines of the frame; 576 where it is not given"}};
constexpr std::array AssignTable = {
    ToolOption{
        "colours", "HHHH",
        "Palette entries, a hexadecimal digit for each pixel code: 0 background, 1 pattern, 2 emphasis "
        "1, 3 emphasis 2; a dot leaves a code as it is"},
    ToolOption{"opacities", "HHHH", "Opacities in the same way, 0 invisible to F opaque"}, Only};

Options ReadRetime(OptionReader& reader) {
  RetimeOptions options;
  options.Shift = reader.Milliseconds("shift").value_or(0);
  options.Scale = reader.Read("scale", ParseRatio, "no ratio such as 25/24").value_or(Ratio());
  constexpr std::string_view NoSpeed =
      "none of the speeds 24000/1001 (23.976), 24, 25 and 30000/1001 (29.97)";
  const auto from = reader.Read("from", ParseSpeed, NoSpeed);
  const auto to = reader.Read("to", ParseSpeed, NoSpeed);
  options.Points = reader.Read("points", ParsePoints, "not of the form A=TIME,B=TIME");
  if (reader.Has("from") != reader.Has("to")) {
    reader.Refuse(reader.Named("from") + " and " + reader.Named("to") + " belong together");
  }
  if (reader.Has("from") && reader.Has("scale")) {
    reader.Refuse(reader.Named("from") + " and " + reader.Named("to") + " stand in place of " +
                  reader.Named("scale"));
  }
  if (from && to) {
    options.Scale = Divide(*from, *to).value_or(Ratio());
  }
  const bool hasFactors = reader.Has("shift") || reader.Has("scale") || reader.Has("from");
  if (hasFactors == reader.Has("points")) {
    reader.Refuse(hasFactors ? reader.Named("points") + " stands alone"
                             : "retime needs " + reader.Named("shift") + ", " + reader.Named("scale") + ", " +
                                   reader.Named("from") + " and " + reader.Named("to") + ", or " +
                                   reader.Named("points"));
  }
  return options;
}

/// Lines of the frame.
int ReadFrame(OptionReader& reader) {
  const std::string* const lines = reader.Text("frame");
  if (lines != nullptr && *lines != "480" && *lines != "576") {
    reader.Refuse(reader.Named("frame") + ": '" + *lines + "' is neither 480 nor 576");
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
    reader.Refuse(reader.Named("to-line") + " stands in place of " + reader.Named("y"));
  }
  if (!reader.Has("x") && !reader.Has("y") && !reader.Has("to-line")) {
    reader.Refuse("move needs " + reader.Named("x") + ", " + reader.Named("y") + " or " +
                  reader.Named("to-line"));
  }
  return options;
}

Options ReadForce(OptionReader& reader) {
  const std::string* const state = reader.Text("state");
  if (state == nullptr || (*state != "on" && *state != "off")) {
    reader.Refuse(state == nullptr ? "force needs 'on' or 'off'"
                                   : "state: '" + *state + "' is neither 'on' nor 'off'");
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
    reader.Refuse(reader.Named("longest") + ": '" + *reader.Text("longest") +
                  "' is shorter than a delay can say, which counts units of 1000 ticks");
  }
  if (reader.Has("longest") && !options.Fill) {
    reader.Refuse(reader.Named("longest") + " belongs to " + reader.Named("fill"));
  }
  if (reader.Has("gap") && !options.Fill && !options.NoOverlap) {
    reader.Refuse(reader.Named("gap") + " belongs to " + reader.Named("fill") + " and " +
                  reader.Named("no-overlap"));
  }
  if (!options.Fill && !options.NoOverlap && !options.Shortest) {
    reader.Refuse("ends needs " + reader.Named("fill") + ", " + reader.Named("no-overlap") + " or " +
                  reader.Named("shortest"));
  }
  return options;
}

/// A tool that takes packets away has to be told which.
void NeedOnly(OptionReader& reader, const std::string& tool) {
  if (!reader.Has("only")) {
    reader.Refuse(tool + " needs " + reader.Named("only"));
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
    reader.Refuse(file == nullptr ? "join needs " + reader.Named("with")
                                  : reader.Named("with") + ": '' names no file");
  } else {
    join.Path = *file;
  }
  if (const std::string* const track = reader.Text("track")) {
    join.Track = *track;
  }
  join.Options.Gap = reader.Duration("gap", LongestGap).value_or(0);
  join.Options.At = reader.Read("at", ParseTime, "no time such as 1:02:03.5");
  if (reader.Has("gap") && reader.Has("at")) {
    reader.Refuse(reader.Named("at") + " stands in place of " + reader.Named("gap"));
  }
  return join;
}

Options ReadAssign(OptionReader& reader) {
  constexpr std::string_view NoNibbles = "not four hexadecimal digits or dots";
  CodeAssignment codes;
  codes.Colours = reader.Read("colours", ParseNibbles, NoNibbles).value_or(ChosenNibbles());
  codes.Contrasts = reader.Read("opacities", ParseNibbles, NoNibbles).value_or(ChosenNibbles());
  codes.NeedsCommands = true;
  if (!reader.Has("colours") && !reader.Has("opacities")) {
    reader.Refuse("assign needs " + reader.Named("colours") + ", " + reader.Named("opacities") + " or both");
  }
  return codes;
}

Options ReadFix(OptionReader& reader) {
  FixStep fix;
  const std::string* const profile = reader.Text("profile");
  if (profile != nullptr && *profile != "spec" && *profile != "player") {
    reader.Refuse(reader.Named("profile") + ": '" + *profile + "' is neither spec nor player");
  }
  fix.Rules.Profile = profile != nullptr && *profile == "player" ? CheckProfile::Player : CheckProfile::Spec;
  fix.Rules.FrameLines = ReadFrame(reader);
  return fix;
}

Options ReadSalvage(OptionReader& /*reader*/) {
  return SalvageStep();
}

constexpr std::array Tools = {
    Tool{"assign", "Write other colours, opacities or both into the stream", "changed", AssignTable},
    Tool{"retime", "Move or stretch start times, and delays with them", "retimed", RetimeTable},
    Tool{"move", "Move subtitles within the frame", "moved", MoveTable},
    Tool{"force", "Have subtitles shown also while they are switched off, or no longer", "changed",
         ForceTable},
    Tool{"ends", "Give subtitles ends, and mend those that overlap or come too early", "given another end",
         EndsTable},
    Tool{"cut", "Take subtitles out of the stream", "taken out", ChoiceTable},
    Tool{"keep", "Take all other subtitles out of the stream", "taken out", ChoiceTable},
    Tool{"sort", "Put subtitles in the order of their start times", "moved", ChoiceTable},
    Tool{"join", "Add another stream behind the first", "added", JoinTable},
    Tool{"fix", "Mend what can be mended without coding pictures again", "mended", FixTable},
    Tool{"salvage", "Keep the good packets of a damaged stream", "taken out", {}}};

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
      reader.Refuse(text.Tool + " takes no '" + reader.Named(name) + "'");
    } else if (same > 1) {
      reader.Refuse(reader.Named(name) + " is given twice");
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
    return Failure{"there is no tool '" + text.Tool + "'"};
  }
  OptionReader reader(text, dashes);
  CheckNames(*tool, text, reader);
  Step step;
  step.What = tool;
  const auto only = reader.Read("only", SubtitleSet::Parse, "no range such as 3-7, 3 or 3-");
  step.Only = only.value_or(SubtitleSet::All());
  step.Options = Readers[static_cast<std::size_t>(tool - Tools.data())](reader);
  return reader.Wrong() ? Result<Step>(*reader.Wrong()) : Result<Step>(std::move(step));
}

}  // namespace quillmark
