#include <array>
#include <optional>
#include <string>

#include "base/Words.h"
#include "cli/Commands.h"
#include "cli/Inputs.h"
#include "cli/Json.h"
#include "render/SubtitleDescription.h"
#include "sup/Timecode.h"

namespace quillmark::cli {
namespace {

/// One subtitle as the index and its control sequences have it.
struct Row {
  std::int64_t Number = 0;
  std::int64_t Offset = 0;
  int Size = 0;
  int ControlOffset = 0;
  std::int64_t Start = 0;
  std::int64_t End = 0;  ///< 0 = no end known
  std::optional<SubtitleDescription> Description;
};

Row ReadRow(const SupStream& stream, std::size_t index, SubtitleReader& reader) {
  return {.Number = static_cast<std::int64_t>(index) + 1,
          .Offset = stream.PacketOffset[index],
          .Size = static_cast<std::uint16_t>(stream.SpuSize[index]),
          .ControlOffset = static_cast<std::uint16_t>(stream.ControlOffset[index]),
          .Start = stream.StartTime[index],
          .End = stream.EndTime[index],
          .Description = reader.Read(index)};
}

/// Seconds as the window shows them.
std::optional<std::string> Duration(const Row& row) {
  return row.Description && row.Description->DurationMs
             ? std::optional(FormatSeconds(*row.Description->DurationMs))
             : std::nullopt;
}

/// Seconds as players show it.
std::optional<std::string> PlayerDuration(const Row& row) {
  return row.Description && row.Description->DurationMs
             ? std::optional(FormatSeconds(PlayerDurationMs(row.Description->Control.Delay)))
             : std::nullopt;
}

std::optional<std::string> EndText(const Row& row) {
  return row.End != 0 ? std::optional(FormatTimecode(row.End)) : std::nullopt;
}

Json OrNull(const std::optional<std::string>& text) {
  return text ? Json(*text) : Json();
}

Json RowObject(const Row& row) {
  Json object = {{"number", row.Number},
                 {"valid", row.Description.has_value()},
                 {"offset", row.Offset},
                 {"size", row.Size},
                 {"control_offset", row.ControlOffset},
                 {"start_ticks", row.Start},
                 {"end_ticks", row.End != 0 ? Json(row.End) : Json()},
                 {"start", FormatTimecode(row.Start)},
                 {"end", OrNull(EndText(row))},
                 {"duration", OrNull(Duration(row))},
                 {"player_duration", OrNull(PlayerDuration(row))},
                 {"x", nullptr},
                 {"y", nullptr},
                 {"width", nullptr},
                 {"height", nullptr},
                 {"colours", nullptr},
                 {"opacities", nullptr}};
  if (row.Description) {
    const SpuControl& control = row.Description->Control;
    object["x"] = control.X1;
    object["y"] = control.Y1;
    object["width"] = control.Width();
    object["height"] = control.Height();
    object["colours"] = control.Colour;
    object["opacities"] = control.Contrast;
  }
  return object;
}

std::string Digits(const std::array<int, 4>& nibbles) {
  std::string digits;
  for (const int nibble : nibbles) {
    digits += "0123456789ABCDEF"[nibble & 0x0F];
  }
  return digits;
}

std::string RowText(const Row& row) {
  std::string text = std::to_string(row.Number) + "  " + FormatTimecode(row.Start) + " - " +
                     EndText(row).value_or("?") + "  ";
  if (!row.Description) {
    return text + Words::Tr("cannot be shown, packet at %1", {std::to_string(row.Offset)});
  }
  const SpuControl& control = row.Description->Control;
  return text + Words::Tr("%1 s  %2x%3 at (%4,%5)  colours %6  opacities %7",
                          {Duration(row).value_or("?"), std::to_string(control.Width()),
                           std::to_string(control.Height()), std::to_string(control.X1),
                           std::to_string(control.Y1), Digits(control.Colour), Digits(control.Contrast)});
}

}  // namespace

CommandResult List(const ListOptions& options, const Console& console) {
  SupStream stream;
  if (CommandResult loaded = LoadStream({options.File, options.Track}, stream, console); !loaded.IsDone()) {
    return loaded;
  }
  SubtitleReader reader(stream);
  if (options.Json) {
    JsonArrayWriter array(console.Out);
    for (std::size_t index = 0; index < stream.PacketOffset.size(); ++index) {
      array.Add(RowObject(ReadRow(stream, index, reader)));
    }
  } else {
    for (std::size_t index = 0; index < stream.PacketOffset.size(); ++index) {
      console.Out << RowText(ReadRow(stream, index, reader)) << '\n';
    }
  }
  return {};
}

}  // namespace quillmark::cli
