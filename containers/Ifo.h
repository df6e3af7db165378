#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "base/Result.h"
#include "palette/Colour.h"

namespace quillmark {

/// Which of a disc's files it is: a title set's ("DVDVIDEO-VTS"), or the disc's own ("DVDVIDEO-VMG"), which
/// has menus and no titles.
enum class IfoKind : std::uint8_t { TitleSet, VideoManager };
enum class VideoStandard : std::uint8_t { Unknown, Ntsc, Pal };

struct IfoVideo {
  VideoStandard Standard = VideoStandard::Unknown;
  bool IsWide = false;  ///< 16:9, else 4:3
};

/// A subpicture stream as the file announces it. Which substream carries it says the program chain.
struct SubpictureAttributes {
  std::string Language;        ///< two letters; empty: not told
  std::uint8_t Extension = 0;  ///< who it is for: 1 normal, 2 large letters, 3 children, 5-7 the same for
                               ///< captions, 9 forced, 13-15 director's comments
};

/// The substreams (0-31, for 0x20-0x3F) that carry one subpicture stream, one for each form of the picture.
struct SubpictureControl {
  bool IsPresent = false;
  std::uint8_t Normal = 0;  ///< of 4:3 video; the others are of 16:9 video
  std::uint8_t Wide = 0;
  std::uint8_t Letterbox = 0;
  std::uint8_t PanScan = 0;
};

enum class ChainPlace : std::uint8_t { FirstPlay, Menu, Title };

struct ProgramChain {
  ChainPlace Place = ChainPlace::Title;
  bool IsEntry = false;  ///< starts its title or menu
  std::uint8_t TitleOrMenu =
      0;                      ///< the title's number in its set, or the menu's type, as ChainText() names it
  std::string Language = {};  ///< of the menus that it belongs to; two letters, else empty
  int Programs = 0;
  int Cells = 0;
  PackedPalette Packed = {};
  DvdPalette Palette = {};                             ///< the same as RGB
  std::array<SubpictureControl, 32> Subpictures = {};  ///< by the stream's index in its list of attributes

  /// Commands alone: such a chain shows no picture, and its palette is usually all 0.
  [[nodiscard]] bool IsDummy() const { return Cells == 0; }
};

struct IfoInfo {
  IfoKind Kind = IfoKind::TitleSet;
  IfoVideo TitleVideo;  ///< of a title set alone
  IfoVideo MenuVideo;
  std::vector<SubpictureAttributes> TitleSubpictures;  ///< of a title set alone
  std::vector<SubpictureAttributes> MenuSubpictures;
  /// First play, titles, menus, each in its table's order. A chain that several pointers lead to stands here
  /// once.
  std::vector<ProgramChain> Chains;
  std::vector<std::string> Notes;  ///< what is damaged and was left out, in words for the user
};

/// Reads a disc's information file (.IFO, or its copy .BUP). Chains and tables that stand outside the file,
/// or outside their own table, are left out and noted. A file without any chain that can be read is a
/// Failure, as is one of more than MaxIfoLength bytes or one cut within its first sector.
[[nodiscard]] Result<IfoInfo> ReadIfo(std::span<const std::uint8_t> file);
/// The same of the file at `path`; the reason is without the path.
[[nodiscard]] Result<IfoInfo> ReadIfoFile(const std::filesystem::path& path);

/// What the chain is, for people: "title 1", "title 1, goes on", "root menu (en)", "menu (en)", "first play".
[[nodiscard]] std::string ChainText(const ProgramChain& chain);

/// What a title set's file tells of the substreams that its programs hold.
struct SubstreamFacts {
  DvdPalette Palette = {};                ///< of the first title chain that shows a picture and has colours
  std::array<std::string, 32> Languages;  ///< by substream - 0x20; two letters, empty: not told
  std::array<std::string, 32> Names;      ///< "director's comments, letterbox"; empty: nothing special
};
/// nullopt where no title chain shows a picture and has colours.
[[nodiscard]] std::optional<SubstreamFacts> FactsOfSubstreams(const IfoInfo& info);

}  // namespace quillmark
