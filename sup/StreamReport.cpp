#include "sup/StreamReport.h"

#include "sup/Timecode.h"

namespace quillmark {
namespace {

std::string ExtentText(std::int32_t largest, std::int32_t smallestStart) {
  return std::to_string(largest) + " (" + std::to_string(smallestStart) + " to " +
         std::to_string(smallestStart + largest - 1) + ")";
}

std::string Lines(const std::string& heading, const SupStream& stream) {
  const std::string lineEnd = "\r\n";
  const SupStreamStats& stats = stream.Stats;
  std::string report = heading + std::to_string(stream.Count) + lineEnd;
  report += "Parse errors: " + std::to_string(stats.ParseErrors) + lineEnd;
  report += "Max subtitle width: " + ExtentText(stats.MaxWidth, stats.MinX) + lineEnd;
  report += "Max subtitle height: " + ExtentText(stats.MaxHeight, stats.MinY) + lineEnd;
  report += "Max size (kb): " + std::to_string(stats.MaxSpuSize / 1000) + lineEnd;
  report += "First timecode: " + stats.FirstTimecode() + lineEnd;
  report += "Last timecode: " + stats.LastTimecode() + lineEnd;
  report += "Max duration (seconds): " + FormatSeconds(stats.MaxDurationMs) + lineEnd;
  report += std::string("Subtitles without duration : ") + (stats.HasUntimed ? "Yes" : "No") + lineEnd;
  for (std::size_t code = 0; code < 4; ++code) {
    report += "Color " + std::to_string(code + 1) + " uses palette color: " + UsageList(stats, code) +
              "  and opacity: " + UsageList(stats, code + 4) + lineEnd;
  }
  return report;
}

}  // namespace

std::string UsageList(const SupStreamStats& stats, std::size_t column) {
  std::string list;
  for (std::size_t row = 0; row < stats.Usage.size(); ++row) {
    if (stats.Usage[row][column] == SupStreamStats::UsedCell) {
      list += list.empty() ? "" : ", ";
      list += "0123456789ABCDEF"[row];
    }
  }
  return list;
}

std::string PrimaryReport(const SupStream& stream) {
  return Lines("Found Subtitles: ", stream);
}

std::string SecondaryReport(const SupStream& stream) {
  std::string report = Lines("Found secondary Subtitles: ", stream);
  if (stream.Stats.MultipleColours || stream.Stats.MultipleOpacities) {
    report +=
        "\r\nWarning: Secondary subtitles have multiple colors or multiple transparancies"
        "\r\nOverlaying may not work properly";
  }
  return report;
}

}  // namespace quillmark
