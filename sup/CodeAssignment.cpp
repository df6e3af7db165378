#include "sup/CodeAssignment.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "sup/EditBuilder.h"
#include "sup/IndexedPacket.h"

namespace quillmark {
namespace {

/// How a command's argument byte changes: the bits of `Kept` stay, those of `Set` are put in.
struct ByteChange {
  std::uint8_t Kept = 0xFF;
  std::uint8_t Set = 0;

  [[nodiscard]] std::uint8_t Of(std::uint8_t old) const {
    return static_cast<std::uint8_t>((old & Kept) | Set);
  }
};

/// What becomes of a command's two argument bytes.
struct ArgumentChange {
  explicit ArgumentChange(const ChosenNibbles& nibbles)
      : IsNeeded(std::ranges::any_of(nibbles, [](const auto& nibble) { return nibble.has_value(); })),
        ReadsOld(!std::ranges::all_of(nibbles, [](const auto& nibble) { return nibble.has_value(); })) {
    CodeNibbles kept = {};
    CodeNibbles set = {};
    for (std::size_t code = 0; code < nibbles.size(); ++code) {
      kept[code] = nibbles[code] ? 0x00 : 0x0F;
      set[code] = nibbles[code].value_or(0);
    }
    const CodeArguments keptBytes = PackCodes(kept);
    const CodeArguments setBytes = PackCodes(set);
    for (std::size_t i = 0; i < Bytes.size(); ++i) {
      Bytes[i] = {.Kept = keptBytes[i], .Set = setBytes[i]};
    }
  }

  /// Both bytes where nothing of the old ones is kept.
  [[nodiscard]] CodeArguments Whole() const { return {Bytes[0].Set, Bytes[1].Set}; }

  bool IsNeeded;
  bool ReadsOld;
  std::array<ByteChange, 2> Bytes = {};
};

/// Where a subtitle's own bytes lie in the file, and with them what may be written for it.
struct PacketBounds {
  PacketBounds(const SupStream& stream, std::size_t index)
      : Start(stream.PacketOffset[index]),
        End(std::min(Start + UnitStart + UnitLength(stream.SpuSize[index]),
                     std::int64_t{stream.FileLength})) {}

  [[nodiscard]] bool Contains(std::int64_t position) const { return position >= Start && position < End; }

  std::int64_t Start;
  std::int64_t End;
};

/// The bytes that one subtitle gets, in the order of their positions and each of them once.
class PacketChange {
 public:
  PacketChange(const SupStream& stream, std::size_t index)
      : bytes_(stream.RawBytes), packet_(stream, index) {}

  /// A byte that was written before is written over.
  void Write(std::int64_t position, const ArgumentChange& change) {
    for (std::size_t i = 0; i < change.Bytes.size(); ++i) {
      const std::int64_t at = position + static_cast<std::int64_t>(i);
      if (packet_.Contains(at)) {
        Put(at, change.Bytes[i], change.ReadsOld);
      }
    }
  }

  void AppendTo(EditBuilder& edit) const {
    for (std::size_t i = 0; i < count_;) {
      std::size_t end = i + 1;
      while (end < count_ && positions_[end] == positions_[end - 1] + 1) {
        ++end;
      }
      edit.Replace(static_cast<std::size_t>(positions_[i]), end - i, std::span(values_).subspan(i, end - i));
      i = end;
    }
  }

 private:
  void Put(std::int64_t position, const ByteChange& change, bool readsOld) {
    std::size_t i = count_;
    while (i > 0 && positions_[i - 1] >= position) {
      --i;
    }
    const bool isThere = i < count_ && positions_[i] == position;
    // Bytes that get both nibbles are not read: reading one byte of every packet of a long film costs more
    // than all the rest.
    const std::uint8_t old = !readsOld ? std::uint8_t{0}
                             : isThere ? values_[i]
                                       : bytes_[static_cast<std::size_t>(position)];
    if (!isThere) {
      std::copy_backward(positions_.begin() + i, positions_.begin() + count_,
                         positions_.begin() + count_ + 1);
      std::copy_backward(values_.begin() + i, values_.begin() + count_, values_.begin() + count_ + 1);
      positions_[i] = position;
      ++count_;
    }
    values_[i] = change.Of(old);
  }

  const std::vector<std::uint8_t>& bytes_;
  PacketBounds packet_;
  std::array<std::int64_t, 4> positions_ = {};
  std::array<std::uint8_t, 4> values_ = {};
  std::size_t count_ = 0;  // invariant: positions_ ascend up to here
};

/// The common case of a unit with both commands, of which all codes are written: appended at once, and
/// quickly, as long films have many of them.
class WholeCodes {
 public:
  WholeCodes(const SupStream& stream, const CodeArguments& colours, const CodeArguments& contrasts)
      : stream_(stream),
        colours_(colours),
        contrasts_(contrasts),
        colourFirst_({colours[0], colours[1], SetContrast, contrasts[0], contrasts[1]}),
        contrastFirst_({contrasts[0], contrasts[1], SetColour, colours[0], colours[1]}) {}

  /// False, and nothing appended, for any other unit.
  bool Append(std::size_t index, EditBuilder& edit) const {
    const PacketBounds packet(stream_, index);
    const std::int64_t colour = stream_.ColourBytesOffset[index];
    const std::int64_t contrast = stream_.ContrastBytesOffset[index];
    const std::int64_t first = std::min(colour, contrast);
    if (first < packet.Start || std::max(colour, contrast) + 2 > packet.End) {
      return false;
    }
    const auto at = static_cast<std::size_t>(first);
    const std::int64_t distance = contrast - colour;
    // Of commands that follow one another, as encoders write them, the code of the second stands between
    // their arguments: named as what it is, it saves a place in each subtitle of the edit.
    if (distance == NextCommand) {
      edit.Write(at, colourFirst_);
    } else if (distance == -NextCommand) {
      edit.Write(at, contrastFirst_);
    } else if (distance > NextCommand) {
      edit.Write(at, colours_);
      edit.Write(static_cast<std::size_t>(contrast), contrasts_);
    } else if (distance < -NextCommand) {
      edit.Write(at, contrasts_);
      edit.Write(static_cast<std::size_t>(colour), colours_);
    } else {
      return false;
    }
    return true;
  }

 private:
  static constexpr std::int64_t NextCommand = CommandSize(SetColour);
  using BothCommands = std::array<std::uint8_t, 2 * CodeArguments().size() + 1>;

  const SupStream& stream_;
  CodeArguments colours_;
  CodeArguments contrasts_;
  BothCommands colourFirst_;
  BothCommands contrastFirst_;
};

/// A unit without the command is indexed as if its arguments started in the last byte of its header.
bool HasArguments(const SupStream& stream, std::size_t index, const std::vector<std::int32_t>& offsets) {
  return stream.Holds(index) && offsets[index] >= stream.PacketOffset[index] + PacketHeaderSize;
}

/// The edit of so many subtitles, whose indexes `indexAt` gives; they ascend, and the stream holds all of
/// them.
template <typename IndexAt>
StreamEdit AssignCodesTo(const SupStream& stream, std::size_t subtitles, const IndexAt& indexAt,
                         const CodeAssignment& codes) {
  EditBuilder edit;
  const ArgumentChange colours(codes.Colours);
  const ArgumentChange contrasts(codes.Contrasts);
  edit.Expect(subtitles);
  const WholeCodes whole(stream, colours.Whole(), contrasts.Whole());
  const bool allWhole = !colours.ReadsOld && !contrasts.ReadsOld;
  for (std::size_t k = 0; k < subtitles; ++k) {
    const std::size_t i = indexAt(k);
    if (codes.NeedsCommands && !HasCommandsFor(stream, i, codes)) {
      continue;
    }
    if (allWhole && whole.Append(i, edit)) {
      continue;
    }
    PacketChange change(stream, i);
    if (colours.IsNeeded) {
      change.Write(stream.ColourBytesOffset[i], colours);
    }
    if (contrasts.IsNeeded) {
      change.Write(stream.ContrastBytesOffset[i], contrasts);
    }
    change.AppendTo(edit);
  }
  return edit.Finish();
}

}  // namespace

bool HasColourCommand(const SupStream& stream, std::size_t index) {
  return HasArguments(stream, index, stream.ColourBytesOffset);
}

bool HasContrastCommand(const SupStream& stream, std::size_t index) {
  return HasArguments(stream, index, stream.ContrastBytesOffset);
}

bool HasCommandsFor(const SupStream& stream, std::size_t index, const CodeAssignment& codes) {
  return (!ArgumentChange(codes.Colours).IsNeeded || HasColourCommand(stream, index)) &&
         (!ArgumentChange(codes.Contrasts).IsNeeded || HasContrastCommand(stream, index));
}

StreamEdit AssignCodes(const SupStream& stream, std::size_t first, std::size_t end,
                       const CodeAssignment& codes) {
  if (first >= end || !stream.Holds(end - 1)) {
    return {};
  }
  return AssignCodesTo(
      stream, end - first, [first](std::size_t k) { return first + k; }, codes);
}

StreamEdit AssignCodes(const SupStream& stream, std::span<const std::size_t> indexes,
                       const CodeAssignment& codes) {
  const bool ascend = std::ranges::adjacent_find(indexes, std::greater_equal()) == indexes.end();
  if (indexes.empty() || !ascend || !stream.Holds(indexes.back())) {
    return {};
  }
  return AssignCodesTo(
      stream, indexes.size(), [indexes](std::size_t k) { return indexes[k]; }, codes);
}

ToolResult AssignChosen(const SupStream& stream, const SubtitleSet& only, const CodeAssignment& codes) {
  const bool writesColours = ArgumentChange(codes.Colours).IsNeeded;
  const bool writesContrasts = ArgumentChange(codes.Contrasts).IsNeeded;
  const auto file = FileOf(stream);
  ToolResult result;
  result.Chosen = only.SizeWithin(stream.Count);
  std::vector<std::size_t> written;  // indexes
  only.ForEachIndex(file.empty() ? 0 : stream.PacketOffset.size(), [&](std::size_t index) {
    const bool noColour = writesColours && !HasColourCommand(stream, index);
    const bool noContrast = writesContrasts && !HasContrastCommand(stream, index);
    if (noColour || noContrast) {
      result.Left.push_back({.Number = static_cast<std::int64_t>(index) + 1,
                             .Why = noColour && noContrast ? LeftReason::NoColourNoContrast
                                    : noColour             ? LeftReason::NoColour
                                                           : LeftReason::NoContrast});
    } else {
      written.push_back(index);
    }
  });
  const StreamEdit edit = AssignCodes(stream, written, codes);
  EditBuilder differences;
  std::span<const std::uint8_t> fresh = edit.Bytes;
  auto index = written.begin();
  for (const StreamEdit::Place& place : edit.Places) {
    const auto become = fresh.first(place.Inserted);
    fresh = fresh.subspan(place.Inserted);
    if (std::ranges::equal(file.subspan(place.Offset, place.Removed), become)) {
      continue;
    }
    differences.Replace(place.Offset, place.Removed, become);
    // The packet that starts last before the place.
    while (index + 1 != written.end() &&
           static_cast<std::uint32_t>(stream.PacketOffset[*(index + 1)]) <= place.Offset) {
      ++index;
    }
    const auto number = static_cast<std::int64_t>(*index) + 1;
    if (result.Changed.Ranges().empty() || result.Changed.Ranges().back().Last < number) {
      result.Changed.Append(number);
    }
  }
  result.Edit = differences.Finish();
  return result;
}

}  // namespace quillmark
