#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "containers/ListPicture.h"
#include "containers/UnitColour.h"
#include "palette/Colour.h"
#include "sup/SpuCommand.h"

namespace quillmark {

/// The palette file of an authoring project: 16 colours, of which those of a .rgb are exact, and all others
/// Y, Cr, Cb.
struct ListPalette {
  DvdPalette Colours = {};
  bool IsExact = false;
};
/// Its text: numbers of six hexadecimal digits with white space between them, of which the first 16 count;
/// nullopt for anything else.
[[nodiscard]] std::optional<ListPalette> ReadListPalette(std::string_view text, bool isRgb);

/// Gives the pictures of a list their pixel codes, so that as few units as possible differ in what their
/// codes stand for, and the list its palette. What codes stand for is known when all pictures have theirs.
class ListColours {
 public:
  struct Codes {
    std::array<std::uint8_t, 4> CodeOf = {};  ///< for each colour of the picture
    std::size_t Group = 0;                    ///< of units whose codes stand for the same
  };
  [[nodiscard]] Codes Add(const ListPicture& picture);

  /// Colours that a disc tells apart: a palette has 16.
  [[nodiscard]] std::size_t Count() const;

  /// What the codes of each group stand for.
  struct Group {
    CodeNibbles Colour = {};
    CodeNibbles Contrast = {};
  };
  struct Result {
    DvdPalette Palette = {};
    std::vector<Group> Groups;
    bool ChangedPalette = false;  ///< it did not have all of the colours
    std::optional<int> Error;     ///< the largest one, where there were more than 16 colours
  };
  /// Entries of `palette` stay where they are needed, or where no other colour needs the place.
  [[nodiscard]] Result Finish(const std::optional<ListPalette>& palette) const;

 private:
  struct Slots {
    std::array<std::optional<UnitColour>, 4> Colours = {};
  };

  void CountUses(const ListPicture& picture);
  [[nodiscard]] Codes AddTable(const ListPicture& picture);
  [[nodiscard]] static std::optional<Codes> FitInto(const Slots& group, const ListPicture& picture);
  static void Fill(Slots& group, const ListPicture& picture, const Codes& codes);

  std::vector<Slots> groups_;
  std::vector<CountedColour> visible_;       // in the order of their first use, all of contrast 15
  std::map<Rgb, std::size_t> visibleIndex_;  // of visible_
};

}  // namespace quillmark
