#include "containers/AuthoringList.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <span>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "base/FilePath.h"
#include "base/Words.h"
#include "containers/AuthoringXml.h"
#include "containers/ByteSource.h"
#include "containers/ListColours.h"
#include "containers/ListPicture.h"
#include "sup/PictureUnit.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

namespace fs = std::filesystem;

/// A line has some hundred bytes; what is longer than a list of all subtitles of all films is none.
constexpr std::uint64_t MaxListLength = std::uint64_t{64} << 20U;
constexpr std::size_t MaxColoursOfList = 16;
/// Areas have 12 bits for either end.
constexpr int MaxPosition = 4095;

Result<std::string> ReadText(const fs::path& path) {
  const auto source = OpenFileSource(path);
  if (!source) {
    return source.Why();
  }
  if ((*source)->Length() > MaxListLength) {
    return Failure{Words::Tr("it is too long for a list of pictures")};
  }
  std::string text(static_cast<std::size_t>((*source)->Length()), '\0');
  const auto found = (*source)->ReadAt(0, {reinterpret_cast<std::uint8_t*>(text.data()), text.size()});
  if (!found) {
    return found.Why();
  }
  text.resize(*found);
  return text;
}

bool IsFile(const fs::path& path) {
  std::error_code ignored;
  return fs::is_regular_file(path, ignored);
}

/// The file that a line names; what it would be beside the list where there is none.
fs::path FindPicture(const fs::path& list, std::string name) {
#ifndef _WIN32
  if (!IsFile(list.parent_path() / PathFromUtf8(name))) {
    std::ranges::replace(name, '\\', '/');  // lists come from other systems, too
  }
#endif
  const fs::path named = PathFromUtf8(name);
  fs::path beside = list.parent_path() / named;
  for (const fs::path& path :
       {beside, named, list.parent_path() / named.parent_path().filename() / named.filename()}) {
    if (IsFile(path)) {
      return path;
    }
  }
  return beside;
}

struct FoundPalette {
  std::optional<ListPalette> Colours;
  std::string Name;  ///< of its file
};

/// The palette file beside a list, the first one that there is.
FoundPalette FindPalette(const fs::path& list) {
  const std::string stem = Utf8FromPath(list.stem());
  constexpr std::string_view Suffix = "_spu";
  std::vector<std::string> stems = {stem};
  if (stem.ends_with(Suffix)) {
    stems.push_back(stem.substr(0, stem.size() - Suffix.size()));
  }
  for (const std::string& base : stems) {
    for (const char* ending : {".pal", ".rgb", ".PAL", ".RGB"}) {
      const fs::path path = list.parent_path() / PathFromUtf8(base + ending);
      if (!IsFile(path)) {
        continue;
      }
      const auto text = ReadText(path);
      return {.Colours = text ? ReadListPalette(*text, (ending[1] | 0x20) == 'r') : std::nullopt,
              .Name = base + ending};
    }
  }
  return {};
}

/// Makes the units of one list.
class ListEncoder {
 public:
  ListEncoder(fs::path list, const AuthoringListOptions& options)
      : list_(std::move(list)), options_(options) {}

  /// One subtitle more.
  Result<void> Add(const AuthoringSpu& spu, const AuthoringTime& time) {
    if (spu.HasButtons) {
      Note(spu, Words::Tr("its buttons are left out"));
    }
    if (spu.Image.empty()) {
      Note(spu, Words::Tr("it names no picture and is left out"));
      return {};
    }
    const auto picture = ReadListPicture(FindPicture(list_, spu.Image), spu.Transparent, options_.Reduce);
    if (!picture) {
      return Refusal(spu, picture.Reason());
    }
    if (picture->Error) {
      Note(spu, Words::Tr("its colours were taken together to four; the largest error is %1 of 255",
                          {std::to_string(*picture->Error)}));
    }
    const ListColours::Codes codes = colours_.Add(*picture);
    if (colours_.Count() > MaxColoursOfList && !options_.Reduce) {
      return Refusal(spu, Words::Tr("with it the list has %1 colours, of which a palette has 16",
                                    {std::to_string(colours_.Count())}));
    }
    return Encode(spu, time, *picture, codes);
  }

  Track Finish() && {
    const FoundPalette palette = FindPalette(list_);
    const ListColours::Result result = colours_.Finish(palette.Colours);
    for (const Unit& unit : units_) {
      const ListColours::Group& group = result.Groups[unit.Group];
      std::ranges::copy(PackCodes(group.Colour), packets_.begin() + unit.ColourAt);
      std::ranges::copy(PackCodes(group.Contrast), packets_.begin() + unit.ContrastAt);
    }
    if (result.Error) {
      notes_.push_back(Words::Tr(
          "the list has more than 16 colours, which were taken together; the largest error is %1 of 255",
          {std::to_string(*result.Error)}));
    }
    if (!palette.Name.empty() && !palette.Colours) {
      notes_.push_back(Words::Tr("%1 is no palette of 16 colours and was not used", {palette.Name}));
    } else if (result.ChangedPalette) {
      notes_.push_back(Words::Tr("%1 does not have all colours of the pictures; some of its others gave way",
                                 {palette.Name}));
    }
    return {.Id = "1",
            .Language = {},
            .Name = {},
            .Palette = result.Palette,
            .Packets = std::move(packets_),
            .Notes = std::move(notes_)};
  }

  std::vector<std::string>& Notes() { return notes_; }

 private:
  /// What is written when all of the list's colours are known.
  struct Unit {
    std::size_t Group = 0;
    std::ptrdiff_t ColourAt = 0;
    std::ptrdiff_t ContrastAt = 0;
  };

  static std::string Name(const AuthoringSpu& spu) {
    return Words::Tr("line %1", {std::to_string(spu.Line)}) + ": ";
  }
  void Note(const AuthoringSpu& spu, const std::string& what) { notes_.push_back(Name(spu) + what); }
  static Failure Refusal(const AuthoringSpu& spu, const std::string& reason) {
    return Failure{Name(spu) + spu.Image + ": " + reason};
  }

  Result<void> Encode(const AuthoringSpu& spu, const AuthoringTime& time, const ListPicture& picture,
                      const ListColours::Codes& codes) {
    cells_.resize(picture.Cells.size());
    std::ranges::transform(picture.Cells, cells_.begin(),
                           [&](std::uint8_t cell) { return codes.CodeOf[cell & 3U]; });
    const UnitPicture unit{.Codes = cells_,
                           .Width = picture.Width,
                           .Height = picture.Height,
                           .X = spu.X + picture.Left,
                           .Y = spu.Y + picture.Top,
                           .Colour = {},
                           .Contrast = {},
                           .Delay = DelayOf(spu, time),
                           .IsForced = spu.IsForced};
    if (unit.X + unit.Width - 1 > MaxPosition || unit.Y + unit.Height - 1 > MaxPosition) {
      return Refusal(spu, Words::Tr("it ends past 4095 pixels"));
    }
    const auto packet = encoder_.Encode(unit, PackTime(time.Start));
    if (!packet) {
      Note(spu, Words::Tr("%1 is left out: its unit would have more than 32,767 bytes", {spu.Image}));
      return {};
    }
    const auto start = static_cast<std::ptrdiff_t>(packets_.size());
    units_.push_back({.Group = codes.Group,
                      .ColourAt = start + static_cast<std::ptrdiff_t>(encoder_.ColourAt()),
                      .ContrastAt = start + static_cast<std::ptrdiff_t>(encoder_.ContrastAt())});
    packets_.insert(packets_.end(), packet->begin(), packet->end());
    if (picture.Height % 2 != 0) {
      Note(spu, Words::Tr("%1 has four visible colours and an odd height; its last line is not shown here",
                          {spu.Image}));
    }
    return {};
  }

  /// Rounded to nearest; a delay of 0 would mean that there is no end.
  std::optional<std::uint16_t> DelayOf(const AuthoringSpu& spu, const AuthoringTime& time) {
    if (!time.End) {
      return std::nullopt;
    }
    constexpr std::int64_t Longest = std::numeric_limits<std::uint16_t>::max();
    const std::int64_t delay =
        (*time.End - time.Start + TicksPerPlayerDelayUnit / 2) / TicksPerPlayerDelayUnit;
    if (delay > Longest) {
      Note(spu, Words::Tr("it is shown for 745 seconds, the longest that there is"));
    }
    return static_cast<std::uint16_t>(std::clamp<std::int64_t>(delay, 1, Longest));
  }

  fs::path list_;
  const AuthoringListOptions& options_;
  ListColours colours_;
  PictureUnitEncoder encoder_;
  std::vector<std::uint8_t> cells_;
  std::vector<std::uint8_t> packets_;
  std::vector<Unit> units_;
  std::vector<std::string> notes_;
};

}  // namespace

ReadContainerResult ReadAuthoringList(const fs::path& path, const Progress& progress) {
  return ReadAuthoringList(path, AuthoringListOptions(), progress);
}

ReadContainerResult ReadAuthoringList(const fs::path& path, const AuthoringListOptions& options,
                                      const Progress& progress) {
  const auto text = ReadText(path);
  if (!text) {
    return text.Why();
  }
  const auto spus = ParseAuthoringXml(*text);
  if (!spus) {
    return spus.Why();
  }
  ListEncoder encoder(path, options);
  const std::vector<AuthoringTime> times = ResolveTimes(*spus, encoder.Notes());
  for (std::size_t i = 0; i < times.size(); ++i) {
    if (progress && !progress(text->size() * i / times.size(), text->size())) {
      return std::optional<Container>();
    }
    if (const auto added = encoder.Add((*spus)[times[i].Spu], times[i]); !added) {
      return added.Why();
    }
  }
  Container container;
  Track track = std::move(encoder).Finish();
  if (track.Packets.empty()) {
    container.Notes = std::move(track.Notes);
  } else {
    container.Tracks.push_back(std::move(track));
  }
  return std::optional(std::move(container));
}

}  // namespace quillmark
