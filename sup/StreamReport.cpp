#include "sup/StreamReport.h"

#include "base/Words.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

std::string ExtentText(const char* text, std::int32_t largest, std::int32_t smallestStart) {
  return Words::Tr(text, {std::to_string(largest), std::to_string(smallestStart),
                          std::to_string(smallestStart + largest - 1)});
}

std::string Lines(const std::string& heading, const SupStream& stream) {
  const std::string lineEnd = "\r\n";
  const SupStreamStats& stats = stream.Stats;
  std::string report = heading + lineEnd;
  report += Words::Tr("Parse errors: %1", {std::to_string(stats.ParseErrors)}) + lineEnd;
  report +=
      ExtentText(Words::Mark("Max subtitle width: %1 (%2 to %3)"), stats.MaxWidth, stats.MinX) + lineEnd;
  report +=
      ExtentText(Words::Mark("Max subtitle height: %1 (%2 to %3)"), stats.MaxHeight, stats.MinY) + lineEnd;
  report += Words::Tr("Max size (kb): %1", {std::to_string(stats.MaxSpuSize / 1000)}) + lineEnd;
  report += Words::Tr("First timecode: %1", {stats.FirstTimecode()}) + lineEnd;
  report += Words::Tr("Last timecode: %1", {stats.LastTimecode()}) + lineEnd;
  report += Words::Tr("Max duration (seconds): %1", {FormatSeconds(stats.MaxDurationMs)}) + lineEnd;
  report += (stats.HasUntimed ? Words::Tr("Subtitles without duration : Yes")
                              : Words::Tr("Subtitles without duration : No")) +
            lineEnd;
  for (std::size_t code = 0; code < 4; ++code) {
    report += Words::Tr("Color %1 uses palette color: %2  and opacity: %3",
                        {std::to_string(code + 1), UsageList(stats, code), UsageList(stats, code + 4)}) +
              lineEnd;
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
  return Lines(Words::Tr("Found Subtitles: %1", {std::to_string(stream.Count)}), stream);
}

std::string SecondaryReport(const SupStream& stream) {
  std::string report =
      Lines(Words::Tr("Found secondary Subtitles: %1", {std::to_string(stream.Count)}), stream);
  if (stream.Stats.MultipleColours || stream.Stats.MultipleOpacities) {
    report += "\r\n" + Words::Tr(
                           "Warning: Secondary subtitles have multiple colors or multiple transparancies\r\n"
                           "Overlaying may not work properly");
  }
  return report;
}

}  // namespace quillmark
