#include "app/ToolForm.h"

#include <algorithm>

#include "app/Ui.h"

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
  return {{Ui::Tr("23.976, film on NTSC"), QStringLiteral("24000/1001")},
          {Ui::Tr("24, film"), QStringLiteral("24")},
          {Ui::Tr("25, PAL"), QStringLiteral("25")},
          {Ui::Tr("29.97, NTSC"), QStringLiteral("30000/1001")}};
}

ToolForm Retime() {
  const QString milliseconds = Ui::Tr("ms, later; a negative number is earlier");
  return {.Tool = "retime",
          .Name = Ui::Tr("Retime"),
          .What = Ui::Tr("Moves or stretches the start times, and the delays with them."),
          .Fields = {Choice("from", Ui::Tr("Ti&med for"), QStringLiteral("25"), Speeds()),
                     Choice("to", Ui::Tr("&Wanted for"), QStringLiteral("24000/1001"), Speeds()),
                     Text("scale", Ui::Tr("Sca&le"), Ui::Tr("times, such as 25/24"), QStringLiteral("1/1")),
                     Text("shift", Ui::Tr("&Shift"), milliseconds, QStringLiteral("0")),
                     Text("points", Ui::Tr("Two &points"), Ui::Tr("number=start time, twice"))},
          .Ways = {{Ui::Tr("By a shift"), {"shift"}},
                   {Ui::Tr("From one speed to another"), {"from", "to", "shift"}},
                   {Ui::Tr("By a ratio"), {"scale", "shift"}},
                   {Ui::Tr("By the starts of two subtitles"), {"points"}}}};
}

ToolForm Move() {
  return {.Tool = "move",
          .Name = Ui::Tr("Move"),
          .What = Ui::Tr("Moves the pictures within the frame. They are not encoded anew."),
          .Fields = {Text("x", Ui::Tr("&X"), Ui::Tr("pixels to the right; negative: to the left"),
                          QStringLiteral("0")),
                     Text("y", Ui::Tr("&Y"), Ui::Tr("lines down; negative: up"), QStringLiteral("0")),
                     Text("to-line", Ui::Tr("To &line"), Ui::Tr("of the bottom edge, from 0")),
                     Choice("frame", Ui::Tr("&Frame"), QStringLiteral("576"),
                            {{QStringLiteral("720x480"), QStringLiteral("480")},
                             {QStringLiteral("720x576"), QStringLiteral("576")}}),
                     Flag("clamp", Ui::Tr("&Clamp: move what would leave the frame as far as it goes"))},
          .Ways = {{Ui::Tr("By a distance"), {"x", "y", "frame", "clamp"}},
                   {Ui::Tr("To a line of the frame"), {"x", "to-line", "frame", "clamp"}}}};
}

ToolForm Force() {
  return {.Tool = "force",
          .Name = Ui::Tr("Force"),
          .What = Ui::Tr("Forced subtitles are shown even while subtitles are switched off."),
          .Fields = {Choice("state", Ui::Tr("&Forced"), QStringLiteral("on"),
                            {{Ui::Tr("on"), QStringLiteral("on")}, {Ui::Tr("off"), QStringLiteral("off")}})}};
}

ToolForm Ends() {
  return {.Tool = "ends",
          .Name = Ui::Tr("Ends"),
          .What = Ui::Tr("Gives subtitles ends, and mends those that overlap or come too early."),
          .Fields = {Flag("fill", Ui::Tr("&Fill: the next start where there is no end"), true),
                     Flag("no-overlap", Ui::Tr("&No overlap: no end after the next start"), true),
                     Text("gap", Ui::Tr("&Gap"), Ui::Tr("ms before the next start")),
                     Text("longest", Ui::Tr("&Longest"), Ui::Tr("ms that are filled at most")),
                     Text("shortest", Ui::Tr("&Shortest"), Ui::Tr("ms for every subtitle"))}};
}

ToolForm Cut() {
  return {.Tool = "cut", .Name = Ui::Tr("Cut"), .What = Ui::Tr("Takes the subtitles out of the stream.")};
}

ToolForm Keep() {
  return {
      .Tool = "keep", .Name = Ui::Tr("Keep"), .What = Ui::Tr("Takes all other subtitles out of the stream.")};
}

ToolForm Sort() {
  return {.Tool = "sort",
          .Name = Ui::Tr("Sort"),
          .What = Ui::Tr("Puts the subtitles in the order of their starts.")};
}

ToolForm Join() {
  return {
      .Tool = "join",
      .Name = Ui::Tr("Join"),
      .What = Ui::Tr("Adds the subtitles of another stream after the last one."),
      .Fields =
          {{.Option = "with", .What = Kind::Stream, .Label = Ui::Tr("&With"), .Remark = {}, .Initial = {}},
           Text("gap", Ui::Tr("&Gap"), Ui::Tr("ms after the last end"), QStringLiteral("0")),
           Text("at", Ui::Tr("&At"), Ui::Tr("its start, such as 1:02:03.5"))},
      .Ways = {{Ui::Tr("After the last end"), {"with", "gap"}}, {Ui::Tr("At a time"), {"with", "at"}}}};
}

ToolForm Fix() {
  return {.Tool = "fix",
          .Name = Ui::Tr("Fix"),
          .What = Ui::Tr("Mends what can be mended without encoding a picture again."),
          .Fields = {Choice("profile", Ui::Tr("&Profile"), QStringLiteral("spec"),
                            {{Ui::Tr("what this program tells as a problem"), QStringLiteral("spec")},
                             {Ui::Tr("also what players show wrongly"), QStringLiteral("player")}}),
                     Choice("frame", Ui::Tr("&Frame"), QStringLiteral("576"),
                            {{QStringLiteral("720x480"), QStringLiteral("480")},
                             {QStringLiteral("720x576"), QStringLiteral("576")}})}};
}

ToolForm Salvage() {
  return {.Tool = "salvage",
          .Name = Ui::Tr("Salvage"),
          .What = Ui::Tr("Keeps the good packets, and drops the damaged ones and what is between.")};
}

}  // namespace

std::vector<ToolForm> ToolForms() {
  return {Retime(), Move(), Force(), Ends(), Cut(), Keep(), Sort(), Join(), Fix(), Salvage()};
}

ToolForm FormOf(std::string_view tool) {
  const std::vector<ToolForm> forms = ToolForms();
  return *std::ranges::find(forms, tool, &ToolForm::Tool);
}

}  // namespace quillmark
