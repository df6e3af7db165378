#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/CommandResult.h"
#include "cli/Console.h"
#include "sup/SubtitleSet.h"

/// The commands of quillmark-cli, one file each. File names are the bytes of the command line.
namespace quillmark::cli {

struct ReportOptions {
  std::string File = {};
  std::string Track = {};  ///< number or language, where the file has several
  bool Json = false;
};
/// The report that the window shows after loading.
CommandResult Report(const ReportOptions& options, const Console& console);

struct ListOptions {
  std::string File = {};
  std::string Track = {};  ///< number or language, where the file has several
  bool Json = false;
};
/// One row a subtitle.
CommandResult List(const ListOptions& options, const Console& console);

struct PictureOptions {
  std::string File = {};
  std::string Track = {};   ///< number or language, where the file has several
  std::int64_t Number = 1;  ///< from 1
  std::string Out = {};
  std::string Palette = {};         ///< empty: the one of the track, or the start-up palette
  std::optional<int> Frame = {};    ///< 480 or 576 lines; none: as the background asks for
  std::string Background = "none";  ///< "none", "checker", "#rrggbb" or a picture file
  bool Player = false;              ///< as a player shows it, all control sequences at their times
  std::int64_t At = 0;              ///< for it: 90 kHz ticks after the subtitle's own start
};
/// One subtitle's picture: by itself, or in its place in the frame where there is a background or a frame
/// size.
CommandResult Picture(const PictureOptions& options, const Console& console);

struct ExportOptions {
  std::string File = {};
  std::string Track = {};    ///< number or language, where the file has several
  std::string Palette = {};  ///< empty: the one of the track, or the start-up palette
  SubtitleSet Only = SubtitleSet::All();
  std::string Base = {};  ///< empty: the file's name without its last four characters
};
/// Pictures and their list. The list is started afresh; the old one is kept where a picture cannot be
/// written.
CommandResult Export(const ExportOptions& options, const Console& console);

struct PaletteOptions {
  std::string In = {};
  std::string Out = {};
  std::int64_t Chain = 0;  ///< of an IFO file, as Palettes() counts them from 1; 0: as the window loads it
};
/// One palette file as another.
CommandResult ConvertPalette(const PaletteOptions& options, const Console& console);

struct PalettesOptions {
  std::string File = {};
  bool Json = false;
};
/// Every program chain of an IFO file with its palette.
CommandResult Palettes(const PalettesOptions& options, const Console& console);

struct MergeOptions {
  std::string Primary = {};
  std::string Secondary = {};
  std::string Track = {};  ///< of the primary: number or language, where the file has several
  std::string SecondTrack = {};
  std::string Out = {};
  int YOffset = -400;
  bool FindsOffset = false;  ///< the cheapest one, and of several the nearest to YOffset
  int Frame = 576;
  std::string Palette = {};  ///< empty: the one of the track, or the start-up palette
  /// Four digits, code 0 first; a dot, and empty text, leave a code as it is.
  std::string SecondaryCodes = {};  ///< digits 0 to 3
  std::string Colours = {};         ///< hexadecimal, as the others
  std::string Opacities = {};
  bool Splits = false;         ///< packets show just what both streams show, and when
  std::int64_t JoinTicks = 0;  ///< of these packets: gaps of less are closed
  bool DryRun = false;
  bool Json = false;  ///< of a dry run
};
/// A new stream with the secondary's subtitles laid over the primary's; dry, what there is to know of
/// its packets. Not done where the merge would end early or write units that cannot be read.
CommandResult Merge(const MergeOptions& options, const Console& console);

struct CheckOptions {
  std::string File = {};
  std::string Track = {};        ///< number or language, where the file has several
  std::string Profile = "spec";  ///< or "player"
  int Frame = 576;               ///< 480 or 576
  bool Json = false;
};
/// Every problem of the stream. Not done when there is one.
CommandResult Check(const CheckOptions& options, const Console& console);

struct FixOptions {
  std::string File = {};
  std::string Track = {};  ///< number or language, where the file has several
  std::string Out = {};
  std::string Profile = "spec";  ///< or "player"
  int Frame = 576;               ///< 480 or 576
  bool DryRun = false;
  bool Json = false;
};
/// The stream with all mended that can be. Tells what was, and what is left; not done where something is.
CommandResult Fix(const FixOptions& options, const Console& console);

struct DiffOptions {
  std::string First = {};
  std::string Second = {};
  std::string Track = {};  ///< of the first: number or language, where the file has several
  std::string SecondTrack = {};
  bool Json = false;
};
/// What two streams differ in, subtitle by subtitle. Failed where they do, WrongUsage where one cannot be
/// read.
CommandResult Diff(const DiffOptions& options, const Console& console);

struct SalvageOptions {
  std::string File = {};
  std::string Track = {};  ///< number or language, where the file has several
  std::string Out = {};
};
/// A stream of the file's good packets.
CommandResult Salvage(const SalvageOptions& options, const Console& console);

struct TracksOptions {
  std::string File = {};
  bool Json = false;
};
/// What subtitle streams a file of any kind holds.
CommandResult Tracks(const TracksOptions& options, const Console& console);

struct ConvertOptions {
  std::vector<std::string> Files = {};
  std::string Out = {};                     ///< its ending says what is written: .sup, .idx or .xml
  std::string Track = {};                   ///< of each file that has several: number or language
  std::vector<std::string> Languages = {};  ///< of the tracks, in their order
  std::string Palette = {};  ///< empty: the one of the first track that has one, or the start-up palette
  SubtitleSet Only = SubtitleSet::All();
  std::optional<int> Frame = {};  ///< 480 or 576; none: as the track's file says, else 576
  bool Reduces = false;           ///< pictures of a list with more colours than a subtitle can have
};
/// Streams out of files of any kind as a SUP file, a VobSub pair or an authoring project.
CommandResult Convert(const ConvertOptions& options, const Console& console);

}  // namespace quillmark::cli
