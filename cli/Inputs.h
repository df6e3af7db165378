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
#include "cli/Console.h"
#include "containers/Container.h"
#include "palette/Colour.h"
#include "render/SubtitleDescription.h"
#include "sup/PacketCheck.h"
#include "sup/StreamLoader.h"
#include "sup/SubtitleSet.h"
#include "sup/SupStream.h"

namespace quillmark::cli {

/// What went wrong when `file` was loaded; done when nothing did.
CommandResult ResultOf(const Result<LoadedStream>& loaded, const std::string& file);

/// A file that a stream is read from.
struct StreamSource {
  const std::string& File;
  const std::string& Track;  ///< number or language; empty: the only one
};

/// The bytes of a SUP file, or those of a track of a file of another kind, of which what the user has to know
/// is told.
CommandResult ReadStream(const StreamSource& source, Track& track, const Console& console);

/// What becomes of pictures in an authoring list that have more colours than a subtitle can.
enum class Colours { Kept, Reduced };

/// All tracks of the file, or the one that is named; a SUP file is one.
CommandResult ReadTracks(const StreamSource& source, std::vector<Track>& tracks, const Console& console,
                         Colours colours = Colours::Kept);

/// Loads a stream with all of its subtitles, whether the first one can be shown or not. `palette` is that
/// of its track, where there is one.
CommandResult LoadStream(const StreamSource& source, SupStream& stream, const Console& console,
                         std::optional<DvdPalette>* palette = nullptr);

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

/// Takes the palette file's colours; without a file those that came along with a stream, or else the ones
/// that the window starts with.
CommandResult LoadPalette(const std::string& file, const std::optional<DvdPalette>& ofStream,
                          DvdPalette& palette);

/// Takes the colours of one program chain of an IFO file, counted from 1.
CommandResult LoadChainPalette(const std::string& file, std::int64_t number, DvdPalette& palette);

/// File names come as bytes and are used as text where Qt opens them; a name that is not UTF-8 would become
/// another one on the way.
CommandResult ToText(const std::string& file, QString& text);

/// Whether the name ends so, in any case; `ending` is in lower case.
[[nodiscard]] bool NameEndsIn(std::string_view name, std::string_view ending);

/// Writes a whole new file beside the old one, if there is one, and has it take its place.
CommandResult WriteFile(const std::string& file, std::span<const std::uint8_t> bytes);

}  // namespace quillmark::cli
