#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <QString>

#include "cli/CommandResult.h"
#include "palette/Colour.h"
#include "render/SubtitleDescription.h"
#include "sup/PacketCheck.h"
#include "sup/StreamLoader.h"
#include "sup/SubtitleSet.h"
#include "sup/SupStream.h"

namespace quillmark::cli {

/// What went wrong when `file` was loaded; done when nothing did.
CommandResult ResultOf(const Result<LoadedStream>& loaded, const std::string& file);

/// Loads a stream with all of its subtitles, whether the first one can be shown or not.
CommandResult LoadStream(const std::string& file, SupStream& stream);

/// Reads subtitles of a stream one at a time, as the window does; its memory is reused.
class SubtitleReader {
 public:
  explicit SubtitleReader(const SupStream& stream) : stream_(stream) {}

  /// Subtitle `index`, from 0; nullopt when it cannot be shown.
  [[nodiscard]] std::optional<SubtitleDescription> Read(std::size_t index);
  /// The unit read last, whole.
  [[nodiscard]] std::span<const std::uint8_t> Unit() const { return unit_; }

 private:
  const SupStream& stream_;
  std::vector<std::uint8_t> unit_;
};

/// Refuses subtitles that the stream does not have.
CommandResult CheckOnly(const SubtitleSet& only, const std::string& file, const SupStream& stream);

/// "subtitle 12", for messages.
[[nodiscard]] std::string SubtitleText(std::int64_t number);

/// "spec" or "player".
[[nodiscard]] CheckProfile ProfileOf(std::string_view name);

/// Takes the palette file's colours; without a file the ones that the window starts with.
CommandResult LoadPalette(const std::string& file, DvdPalette& palette);

/// File names come as bytes and are used as text where Qt opens them; a name that is not UTF-8 would become
/// another one on the way.
CommandResult ToText(const std::string& file, QString& text);

/// Writes a whole new file beside the old one, if there is one, and has it take its place.
CommandResult WriteFile(const std::string& file, std::span<const std::uint8_t> bytes);

}  // namespace quillmark::cli
