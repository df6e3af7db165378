#include "containers/Ifo.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

#include "base/ByteReader.h"
#include "base/Words.h"
#include "containers/ByteSource.h"
#include "palette/PaletteFile.h"

namespace quillmark {
namespace {

constexpr std::string_view TitleSetSignature = "DVDVIDEO-VTS";
constexpr std::string_view VideoManagerSignature = "DVDVIDEO-VMG";
constexpr std::uint64_t SectorSize = 2048;

// Where the first sector's fields stand.
constexpr std::size_t FirstPlayAt = 0x084;          // byte of the chain; video manager
constexpr std::size_t VideoManagerMenusAt = 0x0C8;  // sector
constexpr std::size_t TitleChainsAt = 0x0CC;        // sector; title set
constexpr std::size_t TitleSetMenusAt = 0x0D0;      // sector
constexpr std::size_t MenuVideoAt = 0x100;
constexpr std::size_t MenuSubpicturesAt = 0x154;
constexpr std::size_t TitleVideoAt = 0x200;
constexpr std::size_t TitleSubpicturesAt = 0x254;
constexpr std::size_t SubpictureAttributesSize = 6;
constexpr std::size_t MaxSubpictureStreams = 32;

// A table of chains, and one of the menus' languages: count, 2 bytes unused, last byte, then the entries.
constexpr std::uint64_t TableHeaderSize = 8;
constexpr std::uint64_t TableEntrySize = 8;

// A program chain.
constexpr std::uint64_t ChainSize = 0xEC;
constexpr std::size_t ProgramCountAt = 0x02;
constexpr std::size_t CellCountAt = 0x03;
constexpr std::size_t SubpictureControlAt = 0x1C;
constexpr std::size_t PaletteAt = 0xA4;

std::uint32_t FieldAt(std::span<const std::uint8_t> bytes, std::size_t at, std::size_t size) {
  std::uint32_t number = 0;
  for (const std::uint8_t byte : bytes.subspan(at, size)) {
    number = number << 8U | byte;
  }
  return number;
}

/// Empty unless both bytes are letters of the alphabet.
std::string LanguageOf(std::span<const std::uint8_t> letters) {
  std::string language;
  for (const std::uint8_t byte : letters) {
    const char letter = static_cast<char>(byte | 0x20U);
    if (letter < 'a' || letter > 'z') {
      return "";
    }
    language += letter;
  }
  return language;
}

IfoVideo ReadVideo(std::uint8_t attributes) {
  const unsigned standard = attributes >> 4U & 3U;
  return {.Standard = standard == 0   ? VideoStandard::Ntsc
                      : standard == 1 ? VideoStandard::Pal
                                      : VideoStandard::Unknown,
          .IsWide = (attributes >> 2U & 3U) == 3};
}

std::vector<SubpictureAttributes> ReadSubpictures(std::span<const std::uint8_t> sector, std::size_t at,
                                                  std::size_t most) {
  constexpr unsigned LanguageFollows = 1;
  std::vector<SubpictureAttributes> streams(std::min<std::size_t>(FieldAt(sector, at, 2), most));
  for (std::size_t i = 0; i < streams.size(); ++i) {
    const auto attributes = sector.subspan(at + 2 + i * SubpictureAttributesSize, SubpictureAttributesSize);
    if ((attributes[0] & 3U) == LanguageFollows) {
      streams[i].Language = LanguageOf(attributes.subspan(2, 2));
    }
    streams[i].Extension = attributes[5];
  }
  return streams;
}

SubpictureControl ReadSubpictureControl(std::span<const std::uint8_t> bytes) {
  const auto substream = [bytes](std::size_t form) { return static_cast<std::uint8_t>(bytes[form] & 0x1FU); };
  return {.IsPresent = (bytes[0] & 0x80U) != 0,
          .Normal = substream(0),
          .Wide = substream(1),
          .Letterbox = substream(2),
          .PanScan = substream(3)};
}

/// What `bytes` say, which are ChainSize many.
ProgramChain ReadChain(std::span<const std::uint8_t> bytes) {
  ProgramChain chain;
  chain.Programs = bytes[ProgramCountAt];
  chain.Cells = bytes[CellCountAt];
  for (std::size_t i = 0; i < chain.Subpictures.size(); ++i) {
    chain.Subpictures[i] = ReadSubpictureControl(bytes.subspan(SubpictureControlAt + 4 * i, 4));
  }
  for (std::size_t i = 0; i < chain.Packed.size(); ++i) {
    const auto entry = bytes.subspan(PaletteAt + 4 * i, 4);  // 0, Y, Cr, Cb
    chain.Packed[i] = entry[1] | static_cast<YCrCb>(entry[2]) << 8U | static_cast<YCrCb>(entry[3]) << 16U;
  }
  chain.Palette = ToRgb(chain.Packed);
  return chain;
}

class IfoParser {
 public:
  /// `file` starts with a whole first sector.
  IfoParser(std::span<const std::uint8_t> file, IfoKind kind)
      : file_(file), entriesLeft_(file.size() / TableEntrySize), chainsLeft_(file.size() / ChainSize) {
    info_.Kind = kind;
  }

  Result<IfoInfo> Parse() {
    info_.MenuVideo = ReadVideo(file_[MenuVideoAt]);
    info_.MenuSubpictures = ReadSubpictures(file_, MenuSubpicturesAt, 1);
    if (info_.Kind == IfoKind::TitleSet) {
      info_.TitleVideo = ReadVideo(file_[TitleVideoAt]);
      info_.TitleSubpictures = ReadSubpictures(file_, TitleSubpicturesAt, MaxSubpictureStreams);
      ReadTitles(SectorSize * FieldAt(file_, TitleChainsAt, 4));
      ReadMenus(SectorSize * FieldAt(file_, TitleSetMenusAt, 4));
    } else {
      ReadFirstPlay(FieldAt(file_, FirstPlayAt, 4));
      ReadMenus(SectorSize * FieldAt(file_, VideoManagerMenusAt, 4));
    }
    NoteDamage();
    if (info_.Chains.empty()) {
      return Failure{info_.Notes.empty() ? Words::Tr("it has no program chains") : info_.Notes.front()};
    }
    return std::move(info_);
  }

 private:
  /// The bytes from `at` on, a position that the file gave; nullopt where they are not all there.
  [[nodiscard]] std::optional<std::span<const std::uint8_t>> BytesAt(std::uint64_t at,
                                                                     std::uint64_t size) const {
    if (at > file_.size() || size > file_.size() - at) {
      return std::nullopt;
    }
    return file_.subspan(static_cast<std::size_t>(at), static_cast<std::size_t>(size));
  }

  /// Takes the chain unless it was met before; false where it is not all there.
  bool AddChain(std::uint64_t at, ProgramChain facts) {
    const auto bytes = BytesAt(at, ChainSize);
    if (!bytes) {
      return false;
    }
    if (!seenChains_.insert(at).second) {
      return true;
    }
    if (chainsLeft_ == 0) {
      tablesOverlap_ = true;
      return true;
    }
    --chainsLeft_;
    ProgramChain& chain = info_.Chains.emplace_back(ReadChain(*bytes));
    chain.Place = facts.Place;
    chain.IsEntry = facts.IsEntry;
    chain.TitleOrMenu = facts.TitleOrMenu;
    chain.Language = std::move(facts.Language);
    return true;
  }

  void ReadFirstPlay(std::uint64_t at) {
    if (at != 0 && !AddChain(at, {.Place = ChainPlace::FirstPlay})) {
      ++chainsOutside_;
    }
  }

  void ReadTitles(std::uint64_t table) {
    if (table != 0 && !ReadTable(table, ChainPlace::Title, "")) {
      info_.Notes.emplace_back(Words::Tr("its table of title chains stands outside the file"));
    }
  }

  /// The menus of each language have a table of their own.
  void ReadMenus(std::uint64_t table) {
    if (table == 0) {
      return;
    }
    const auto header = BytesAt(table, TableHeaderSize);
    if (!header) {
      info_.Notes.emplace_back(Words::Tr("its table of menu languages stands outside the file"));
      return;
    }
    const std::uint32_t count = FieldAt(*header, 0, 2);
    for (std::uint32_t i = 0; i < count; ++i) {
      const auto entry = BytesAt(table + TableHeaderSize + TableEntrySize * i, TableEntrySize);
      if (!entry) {
        tablesOutside_ += count - i;
        return;
      }
      if (!TakeEntry()) {
        return;
      }
      if (!ReadTable(table + FieldAt(*entry, 4, 4), ChainPlace::Menu, LanguageOf(entry->first(2)))) {
        ++tablesOutside_;
      }
    }
  }

  /// False where there is no table.
  bool ReadTable(std::uint64_t table, ChainPlace place, const std::string& language) {
    const auto header = BytesAt(table, TableHeaderSize);
    if (!header) {
      return false;
    }
    if (!seenTables_.insert(table).second) {
      return true;
    }
    const std::uint32_t count = FieldAt(*header, 0, 2);
    const std::uint64_t end = std::uint64_t{1} + FieldAt(*header, 4, 4);
    for (std::uint32_t i = 0; i < count; ++i) {
      const auto entry = BytesAt(table + TableHeaderSize + TableEntrySize * i, TableEntrySize);
      if (!entry) {
        chainsOutside_ += count - i;
        break;
      }
      if (!TakeEntry()) {
        break;
      }
      const std::uint64_t chain = FieldAt(*entry, 4, 4);
      const bool isEntry = ((*entry)[0] & 0x80U) != 0;
      const auto number =
          static_cast<std::uint8_t>((*entry)[0] & (place == ChainPlace::Menu ? 0x0FU : 0x7FU));
      if (chain + ChainSize > end ||
          !AddChain(table + chain,
                    {.Place = place, .IsEntry = isEntry, .TitleOrMenu = number, .Language = language})) {
        ++chainsOutside_;
      }
    }
    return true;
  }

  /// Tables that do not overlap have no more entries than there is room for in the file. False where these
  /// were all read, so that no file keeps the reader busy.
  bool TakeEntry() {
    if (entriesLeft_ == 0) {
      tablesOverlap_ = true;
      return false;
    }
    --entriesLeft_;
    return true;
  }

  void NoteDamage() {
    if (tablesOutside_ > 0) {
      info_.Notes.push_back(Words::Tr("%n table of menu chains outside the file left out",
                                      "%n tables of menu chains outside the file left out",
                                      static_cast<std::int64_t>(tablesOutside_)));
    }
    if (chainsOutside_ > 0) {
      info_.Notes.push_back(Words::Tr("%n program chain outside the file or its table left out",
                                      "%n program chains outside the file or its table left out",
                                      static_cast<std::int64_t>(chainsOutside_)));
    }
    if (tablesOverlap_) {
      info_.Notes.emplace_back(Words::Tr("its tables overlap; what follows the first of them is left out"));
    }
  }

  std::span<const std::uint8_t> file_;
  IfoInfo info_;
  std::set<std::uint64_t> seenTables_;
  std::set<std::uint64_t> seenChains_;
  std::uint64_t entriesLeft_;
  std::uint64_t chainsLeft_;
  std::size_t tablesOutside_ = 0;
  std::size_t chainsOutside_ = 0;
  bool tablesOverlap_ = false;
};

std::string MenuName(std::uint8_t type) {
  switch (type) {
    case 2:
      return Words::Tr("title menu");
    case 3:
      return Words::Tr("root menu");
    case 4:
      return Words::Tr("subpicture menu");
    case 5:
      return Words::Tr("audio menu");
    case 6:
      return Words::Tr("angle menu");
    case 7:
      return Words::Tr("chapter menu");
    default:
      return Words::Tr("menu");
  }
}

std::string ExtensionName(std::uint8_t extension) {
  switch (extension) {
    case 2:
      return Words::Tr("large letters");
    case 3:
      return Words::Tr("for children");
    case 5:
      return Words::Tr("captions");
    case 6:
      return Words::Tr("captions, large letters");
    case 7:
      return Words::Tr("captions for children");
    case 9:
      return Words::Tr("forced");
    case 13:
      return Words::Tr("director's comments");
    case 14:
      return Words::Tr("director's comments, large letters");
    case 15:
      return Words::Tr("director's comments for children");
    default:
      return "";
  }
}

bool HasColours(const ProgramChain& chain) {
  return std::ranges::any_of(chain.Packed, [](YCrCb entry) { return entry != 0; });
}

/// Tells what the streams of `chain` are of the substreams that nothing is known of yet.
void AddSubstreams(const ProgramChain& chain, const IfoInfo& info, std::array<bool, 32>& known,
                   SubstreamFacts& facts) {
  struct Form {
    std::uint8_t SubpictureControl::*Substream;
    const char* Name;
  };
  static constexpr std::array<Form, 3> WideForms = {
      Form{&SubpictureControl::Wide, ""}, Form{&SubpictureControl::Letterbox, Words::Mark("letterbox")},
      Form{&SubpictureControl::PanScan, Words::Mark("pan and scan")}};
  static constexpr std::array<Form, 1> NormalForms = {Form{&SubpictureControl::Normal, ""}};
  const std::span<const Form> forms =
      info.TitleVideo.IsWide ? std::span<const Form>(WideForms) : std::span<const Form>(NormalForms);
  // All streams of one form first: a form that a stream does not have reads as substream 0.
  for (const Form& form : forms) {
    for (std::size_t i = 0; i < info.TitleSubpictures.size(); ++i) {
      const SubpictureControl& control = chain.Subpictures[i];
      const std::size_t substream = control.*form.Substream;
      if (control.IsPresent && !std::exchange(known[substream], true)) {
        const std::string extension = ExtensionName(info.TitleSubpictures[i].Extension);
        facts.Languages[substream] = info.TitleSubpictures[i].Language;
        facts.Names[substream] = extension;
        if (*form.Name != '\0') {
          facts.Names[substream] += (extension.empty() ? "" : ", ") + Words::Tr(form.Name);
        }
      }
    }
  }
}

}  // namespace

Result<IfoInfo> ReadIfo(std::span<const std::uint8_t> file) {
  if (file.size() > MaxIfoLength) {
    return Failure{Words::Tr("it is too long: an IFO file has at most 1,048,576 bytes")};
  }
  const auto startsWith = [file](std::string_view signature) {
    return file.size() >= signature.size() && std::ranges::equal(file.first(signature.size()), signature);
  };
  const bool isTitleSet = startsWith(TitleSetSignature);
  if (!isTitleSet && !startsWith(VideoManagerSignature)) {
    return Failure{Words::Tr("it is no IFO file: it starts with neither DVDVIDEO-VTS nor DVDVIDEO-VMG")};
  }
  if (file.size() < SectorSize) {
    return Failure{
        Words::Tr("it is cut short: of its first 2,048 bytes there are %1", {std::to_string(file.size())})};
  }
  return IfoParser(file, isTitleSet ? IfoKind::TitleSet : IfoKind::VideoManager).Parse();
}

Result<IfoInfo> ReadIfoFile(const std::filesystem::path& path) {
  const auto source = OpenFileSource(path);
  if (!source) {
    return source.Why();
  }
  // One byte more than is taken tells a file that is too long, whatever its length.
  std::vector<std::uint8_t> bytes(
      static_cast<std::size_t>(std::min<std::uint64_t>((*source)->Length(), MaxIfoLength + 1)));
  const auto found = (*source)->ReadAt(0, bytes);
  if (!found) {
    return found.Why();
  }
  return ReadIfo(std::span(bytes).first(*found));
}

std::string ChainText(const ProgramChain& chain) {
  if (chain.Place == ChainPlace::FirstPlay) {
    return Words::Tr("first play");
  }
  if (chain.Place == ChainPlace::Title) {
    const std::string title = std::to_string(chain.TitleOrMenu);
    return chain.IsEntry ? Words::Tr("title %1", {title}) : Words::Tr("title %1, goes on", {title});
  }
  return MenuName(chain.TitleOrMenu) + (chain.Language.empty() ? "" : " (" + chain.Language + ")");
}

std::optional<SubstreamFacts> FactsOfSubstreams(const IfoInfo& info) {
  const auto isUsable = [](const ProgramChain& chain) {
    return chain.Place == ChainPlace::Title && !chain.IsDummy() && HasColours(chain);
  };
  const auto first = std::ranges::find_if(info.Chains, isUsable);
  if (first == info.Chains.end()) {
    return std::nullopt;
  }
  SubstreamFacts facts{.Palette = first->Palette, .Languages = {}, .Names = {}};
  std::array<bool, 32> known = {};
  for (const ProgramChain& chain : info.Chains) {
    if (isUsable(chain)) {
      AddSubstreams(chain, info, known, facts);
    }
  }
  return facts;
}

}  // namespace quillmark
