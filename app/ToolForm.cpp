#include "app/ToolForm.h"

#include <algorithm>

namespace quillmark {
namespace {

using Kind = ToolField::Kind;

ToolField Text(std::string_view option, const QString& label, const QString& remark,
               const QString& initial = {}) {
  return {.Option = option, .What = Kind::Text, .Label = label, .Remark = remark, .Initial = initial};
}

ToolField Flag(std::string_view option, const QString& label, bool isGiven = false) {
  return {.Option = option,
          .What = Kind::Flag,
          .Label = label,
          .Remark = {},
          .Initial = isGiven ? QStringLiteral("true") : QString()};
}

ToolField Choice(std::string_view option, const QString& label, const QString& initial,
                 std::vector<std::pair<QString, QString>> choices) {
  return {.Option = option,
          .What = Kind::Choice,
          .Label = label,
          .Remark = {},
          .Initial = initial,
          .Choices = std::move(choices)};
}

std::vector<std::pair<QString, QString>> Speeds() {
  return {{QStringLiteral("23.976, film on NTSC"), QStringLiteral("24000/1001")},
          {QStringLiteral("24, film"), QStringLiteral("24")},
          {QStringLiteral("25, PAL"), QStringLiteral("25")},
          {QStringLiteral("29.97, NTSC"), QStringLiteral("30000/1001")}};
}

ToolForm Retime() {
  const QString milliseconds = QStringLiteral("ms, later; a negative number is earlier");
  return {
      .Tool = "retime",
      .Name = QStringLiteral("Retime"),
      .What = QStringLiteral("Moves or stretches the start times, and the delays with them."),
      .Fields = {Choice("from", QStringLiteral("Ti&med for"), QStringLiteral("25"), Speeds()),
                 Choice("to", QStringLiteral("&Wanted for"), QStringLiteral("24000/1001"), Speeds()),
                 Text("scale", QStringLiteral("Sca&le"), QStringLiteral("times, such as 25/24"),
                      QStringLiteral("1/1")),
                 Text("shift", QStringLiteral("&Shift"), milliseconds, QStringLiteral("0")),
                 Text("points", QStringLiteral("Two &points"), QStringLiteral("number=start time, twice"))},
      .Ways = {{QStringLiteral("By a shift"), {"shift"}},
               {QStringLiteral("From one speed to another"), {"from", "to", "shift"}},
               {QStringLiteral("By a ratio"), {"scale", "shift"}},
               {QStringLiteral("By the starts of two subtitles"), {"points"}}}};
}

ToolForm Move() {
  return {
      .Tool = "move",
      .Name = QStringLiteral("Move"),
      .What = QStringLiteral("Moves the pictures within the frame. They are not encoded anew."),
      .Fields = {Text("x", QStringLiteral("&X"), QStringLiteral("pixels to the right; negative: to the left"),
                      QStringLiteral("0")),
                 Text("y", QStringLiteral("&Y"), QStringLiteral("lines down; negative: up"),
                      QStringLiteral("0")),
                 Text("to-line", QStringLiteral("To &line"), QStringLiteral("of the bottom edge, from 0")),
                 Choice("frame", QStringLiteral("&Frame"), QStringLiteral("576"),
                        {{QStringLiteral("720x480"), QStringLiteral("480")},
                         {QStringLiteral("720x576"), QStringLiteral("576")}}),
                 Flag("clamp", QStringLiteral("&Clamp: move what would leave the frame as far as it goes"))},
      .Ways = {{QStringLiteral("By a distance"), {"x", "y", "frame", "clamp"}},
               {QStringLiteral("To a line of the frame"), {"x", "to-line", "frame", "clamp"}}}};
}

ToolForm Force() {
  return {.Tool = "force",
          .Name = QStringLiteral("Force"),
          .What = QStringLiteral("Forced subtitles are shown even while subtitles are switched off."),
          .Fields = {Choice("state", QStringLiteral("&Forced"), QStringLiteral("on"),
                            {{QStringLiteral("on"), QStringLiteral("on")},
                             {QStringLiteral("off"), QStringLiteral("off")}})}};
}

ToolForm Ends() {
  return {
      .Tool = "ends",
      .Name = QStringLiteral("Ends"),
      .What = QStringLiteral("Gives subtitles ends, and mends those that overlap or come too early."),
      .Fields = {Flag("fill", QStringLiteral("&Fill: the next start where there is no end"), true),
                 Flag("no-overlap", QStringLiteral("&No overlap: no end after the next start"), true),
                 Text("gap", QStringLiteral("&Gap"), QStringLiteral("ms before the next start")),
                 Text("longest", QStringLiteral("&Longest"), QStringLiteral("ms that are filled at most")),
                 Text("shortest", QStringLiteral("&Shortest"), QStringLiteral("ms for every subtitle"))}};
}

ToolForm Cut() {
  return {.Tool = "cut",
          .Name = QStringLiteral("Cut"),
          .What = QStringLiteral("Takes the subtitles out of the stream.")};
}

ToolForm Keep() {
  return {.Tool = "keep",
          .Name = QStringLiteral("Keep"),
          .What = QStringLiteral("Takes all other subtitles out of the stream.")};
}

ToolForm Sort() {
  return {.Tool = "sort",
          .Name = QStringLiteral("Sort"),
          .What = QStringLiteral("Puts the subtitles in the order of their starts.")};
}

ToolForm Join() {
  return {.Tool = "join",
          .Name = QStringLiteral("Join"),
          .What = QStringLiteral("Adds the subtitles of another stream after the last one."),
          .Fields = {{.Option = "with",
                      .What = Kind::Stream,
                      .Label = QStringLiteral("&With"),
                      .Remark = {},
                      .Initial = {}},
                     Text("gap", QStringLiteral("&Gap"), QStringLiteral("ms after the last end"),
                          QStringLiteral("0")),
                     Text("at", QStringLiteral("&At"), QStringLiteral("its start, such as 1:02:03.5"))},
          .Ways = {{QStringLiteral("After the last end"), {"with", "gap"}},
                   {QStringLiteral("At a time"), {"with", "at"}}}};
}

ToolForm Fix() {
  return {.Tool = "fix",
          .Name = QStringLiteral("Fix"),
          .What = QStringLiteral("Mends what can be mended without encoding a picture again."),
          .Fields = {Choice("profile", QStringLiteral("&Profile"), QStringLiteral("spec"),
                            {{QStringLiteral("what this program tells as a problem"), QStringLiteral("spec")},
                             {QStringLiteral("also what players show wrongly"), QStringLiteral("player")}}),
                     Choice("frame", QStringLiteral("&Frame"), QStringLiteral("576"),
                            {{QStringLiteral("720x480"), QStringLiteral("480")},
                             {QStringLiteral("720x576"), QStringLiteral("576")}})}};
}

ToolForm Salvage() {
  return {.Tool = "salvage",
          .Name = QStringLiteral("Salvage"),
          .What = QStringLiteral("Keeps the good packets, and drops the damaged ones and what is between.")};
}

}  // namespace

const std::vector<ToolForm>& ToolForms() {
  static const std::vector<ToolForm> forms = {Retime(), Move(), Force(), Ends(), Cut(),
                                              Keep(),   Sort(), Join(),  Fix(),  Salvage()};
  return forms;
}

const ToolForm& FormOf(std::string_view tool) {
  return *std::ranges::find(ToolForms(), tool, &ToolForm::Tool);
}

}  // namespace quillmark
