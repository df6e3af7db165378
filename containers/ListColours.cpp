#include "containers/ListColours.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace quillmark {
namespace {

constexpr std::size_t EntryCount = 16;
constexpr std::size_t EntryDigits = 6;
constexpr std::uint8_t Opaque = 15;
/// So many groups are looked at for one that a picture fits into, the latest ones.
constexpr std::size_t MaxGroupsTried = 64;

/// The entries of a palette as they are given out.
class EntryTable {
 public:
  explicit EntryTable(const std::optional<ListPalette>& palette) {
    if (palette) {
      Colours = palette->Colours;
      isExact_ = palette->IsExact;
      isGiven_ = true;
    }
  }

  /// An entry of that colour, or of one that is the same on a disc; the latter then has this colour.
  std::optional<std::size_t> Find(Rgb colour) {
    for (std::size_t i = 0; i < EntryCount; ++i) {
      if (Colours[i] == colour && (isGiven_ || taken_[i])) {
        taken_[i] = true;
        return i;
      }
    }
    if (isExact_) {
      return std::nullopt;
    }
    for (std::size_t i = 0; i < EntryCount; ++i) {
      if (isGiven_ && !taken_[i] && RgbToYCrCb(Colours[i]) == RgbToYCrCb(colour)) {
        Colours[i] = colour;
        taken_[i] = true;
        return i;
      }
    }
    return std::nullopt;
  }

  /// One that nobody has taken.
  std::optional<std::size_t> TakeFree(Rgb colour) {
    const auto free = std::ranges::find(taken_, false);
    if (free == taken_.end()) {
      return std::nullopt;
    }
    *free = true;
    const auto entry = static_cast<std::size_t>(free - taken_.begin());
    Colours[entry] = colour;
    return entry;
  }

  /// The one that is nearest.
  [[nodiscard]] std::size_t Nearest(Rgb colour) const {
    const auto error = [&](Rgb entry) { return ErrorOf(entry, colour); };
    return static_cast<std::size_t>(std::ranges::min_element(Colours, {}, error) - Colours.begin());
  }
  [[nodiscard]] static int ErrorOf(Rgb a, Rgb b) {
    return ColourError({.Colour = a, .Contrast = Opaque}, {.Colour = b, .Contrast = Opaque});
  }

  DvdPalette Colours = {};

 private:
  std::array<bool, EntryCount> taken_ = {};
  bool isExact_ = false;
  bool isGiven_ = false;
};

std::optional<std::uint32_t> HexNumber(std::string_view digits) {
  std::uint32_t value = 0;
  for (const char c : digits) {
    const auto byte = static_cast<unsigned char>(c);
    if (std::isxdigit(byte) == 0) {
      return std::nullopt;
    }
    const int digit = c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
    value = value << 4U | static_cast<std::uint32_t>(digit);
  }
  return value;
}

}  // namespace

std::optional<ListPalette> ReadListPalette(std::string_view text, bool isRgb) {
  ListPalette palette{.IsExact = isRgb};
  std::size_t at = 0;
  for (Rgb& colour : palette.Colours) {
    at = text.find_first_not_of(" \t\r\n", at);
    if (at == std::string_view::npos) {
      return std::nullopt;
    }
    const std::size_t end = std::min(text.find_first_of(" \t\r\n", at), text.size());
    const auto number = end - at == EntryDigits ? HexNumber(text.substr(at, EntryDigits)) : std::nullopt;
    if (!number) {
      return std::nullopt;
    }
    const std::uint32_t first = *number >> 16U;
    const std::uint32_t last = *number & 0xFFU;
    const std::uint32_t packed = first | (*number & 0xFF00U) | last << 16U;
    colour = isRgb ? packed : YCrCbToRgb(packed);
    at = end;
  }
  return palette;
}

ListColours::Codes ListColours::Add(const ListPicture& picture) {
  CountUses(picture);
  if (picture.HasCodes) {
    return AddTable(picture);
  }
  for (std::size_t tried = 0; tried < std::min(groups_.size(), MaxGroupsTried); ++tried) {
    const std::size_t group = groups_.size() - 1 - tried;
    if (auto codes = FitInto(groups_[group], picture)) {
      codes->Group = group;
      Fill(groups_[group], picture, *codes);
      return *codes;
    }
  }
  groups_.emplace_back();
  Codes codes = *FitInto(groups_.back(), picture);
  codes.Group = groups_.size() - 1;
  Fill(groups_.back(), picture, codes);
  return codes;
}

std::size_t ListColours::Count() const {
  if (visible_.size() <= EntryCount) {
    return visible_.size();
  }
  std::set<YCrCb> onDisc;
  for (const CountedColour& counted : visible_) {
    onDisc.insert(RgbToYCrCb(counted.Colour.Colour));
  }
  return onDisc.size();
}

void ListColours::CountUses(const ListPicture& picture) {
  std::array<std::uint64_t, 4> uses = {};
  for (const std::uint8_t cell : picture.Cells) {
    ++uses[cell & 3U];
  }
  for (std::size_t i = 0; i < picture.Colours.size(); ++i) {
    const UnitColour& colour = picture.Colours[i];
    if (!colour.IsVisible() || uses[i] == 0) {
      continue;
    }
    const auto [known, isNew] = visibleIndex_.try_emplace(colour.Colour, visible_.size());
    if (isNew) {
      visible_.push_back({.Colour = {.Colour = colour.Colour, .Contrast = Opaque}, .Count = 0});
    }
    visible_[known->second].Count += uses[i];
  }
}

ListColours::Codes ListColours::AddTable(const ListPicture& picture) {
  Codes codes{.CodeOf = {0, 1, 2, 3}, .Group = 0};
  Slots group;
  std::ranges::copy(picture.Colours, group.Colours.begin());
  for (std::size_t tried = 0; tried < std::min(groups_.size(), MaxGroupsTried); ++tried) {
    codes.Group = groups_.size() - 1 - tried;
    if (groups_[codes.Group].Colours == group.Colours) {
      return codes;
    }
  }
  groups_.push_back(group);
  codes.Group = groups_.size() - 1;
  return codes;
}

/// A colour takes the code that has it, else a free one: what is transparent code 0, what is visible the
/// others as long as there are any.
std::optional<ListColours::Codes> ListColours::FitInto(const Slots& group, const ListPicture& picture) {
  Codes codes;
  Slots filled = group;
  const auto place = [&](std::size_t i, const auto& fits) {
    const UnitColour& colour = picture.Colours[i];
    constexpr std::array<std::uint8_t, 4> Visible = {1, 2, 3, 0};
    constexpr std::array<std::uint8_t, 4> Invisible = {0, 3, 2, 1};
    for (const std::uint8_t code : colour.IsVisible() ? Visible : Invisible) {
      if (fits(filled.Colours[code], colour)) {
        filled.Colours[code] = colour;
        codes.CodeOf[i] = code;
        return true;
      }
    }
    return false;
  };
  const auto has = [](const std::optional<UnitColour>& slot, const UnitColour& colour) {
    return slot && slot->LooksLike(colour);
  };
  const auto isFree = [](const std::optional<UnitColour>& slot, const UnitColour& /*colour*/) {
    return !slot;
  };
  std::vector<std::size_t> newOnes;
  for (std::size_t i = 0; i < picture.Colours.size(); ++i) {
    if (!place(i, has)) {
      newOnes.push_back(i);
    }
  }
  const bool fit = std::ranges::all_of(newOnes, [&](std::size_t i) { return place(i, isFree); });
  return fit ? std::optional(codes) : std::nullopt;
}

void ListColours::Fill(Slots& group, const ListPicture& picture, const Codes& codes) {
  for (std::size_t i = 0; i < picture.Colours.size(); ++i) {
    auto& slot = group.Colours[codes.CodeOf[i]];
    if (!slot) {
      slot = picture.Colours[i];
    }
  }
}

ListColours::Result ListColours::Finish(const std::optional<ListPalette>& palette) const {
  Result result;
  EntryTable entries(palette);
  const bool hasTooMany = Count() > EntryCount;
  const std::vector<std::size_t> becomes = TakeTogether(visible_, hasTooMany ? EntryCount : visible_.size());
  std::vector<std::optional<std::size_t>> entryOf(visible_.size());
  // Those that the palette has come first, so that no other takes their place.
  for (std::size_t i = 0; i < visible_.size(); ++i) {
    if (becomes[i] == i) {
      entryOf[i] = entries.Find(visible_[i].Colour.Colour);
    }
  }
  for (std::size_t i = 0; i < visible_.size(); ++i) {
    if (becomes[i] == i && !entryOf[i]) {
      entryOf[i] = entries.TakeFree(visible_[i].Colour.Colour);
      result.ChangedPalette = palette.has_value();
    }
  }
  for (std::size_t i = 0; i < visible_.size(); ++i) {
    const Rgb colour = visible_[i].Colour.Colour;
    if (!entryOf[i]) {
      entryOf[i] = entries.Nearest(colour);
    }
    if (hasTooMany) {
      result.Error =
          std::max(result.Error.value_or(0), EntryTable::ErrorOf(entries.Colours[*entryOf[i]], colour));
    }
  }
  const auto nibbleOf = [&](const UnitColour& colour) {
    const auto known = visibleIndex_.find(colour.Colour);
    if (known != visibleIndex_.end()) {
      return *entryOf[known->second];
    }
    // No pixel has it; it takes no place from one that does.
    auto entry = entries.Find(colour.Colour);
    if (!entry && !palette) {
      entry = entries.TakeFree(colour.Colour);
    }
    return entry ? *entry : entries.Nearest(colour.Colour);
  };
  for (const Slots& group : groups_) {
    Group& codes = result.Groups.emplace_back();
    for (std::size_t code = 0; code < codes.Colour.size(); ++code) {
      if (const auto& slot = group.Colours[code]) {
        codes.Colour[code] = static_cast<std::uint8_t>(nibbleOf(*slot));
        codes.Contrast[code] = slot->Contrast;
      }
    }
  }
  result.Palette = entries.Colours;
  return result;
}

}  // namespace quillmark
