#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/StreamMutation.h"

/// How Matroska files are changed: by whole elements, with the sizes of all that hold them.
namespace quillmark {

/// An element's ID and size, and what the size says.
struct EbmlHead {
  std::size_t IdLength = 0;
  std::size_t Length = 0;     ///< of both
  std::uint64_t Content = 0;  ///< bytes, if known
  bool IsUnknown = false;
};

/// With a length of 0 where there is no element.
inline EbmlHead ReadEbmlHead(std::span<const std::uint8_t> bytes) {
  const auto lengthAt = [&](std::size_t at) -> std::size_t {
    return at < bytes.size() && bytes[at] != 0 ? static_cast<std::size_t>(std::countl_zero(bytes[at])) + 1
                                               : 0;
  };
  const std::size_t idLength = lengthAt(0);
  const std::size_t sizeLength = idLength == 0 ? 0 : lengthAt(idLength);
  if (sizeLength == 0 || idLength + sizeLength > bytes.size()) {
    return {};
  }
  std::uint64_t content = bytes[idLength] & (0xFFU >> sizeLength);
  for (std::size_t i = 1; i < sizeLength; ++i) {
    content = content << 8U | bytes[idLength + i];
  }
  const std::uint64_t all = (std::uint64_t{1} << 7U * sizeLength) - 1;
  return {
      .IdLength = idLength, .Length = idLength + sizeLength, .Content = content, .IsUnknown = content == all};
}

inline Pieces SplitElements(std::span<const std::uint8_t> bytes) {
  Pieces elements;
  while (!bytes.empty()) {
    const EbmlHead head = ReadEbmlHead(bytes);
    const std::uint64_t rest = bytes.size() - head.Length;
    const auto content = static_cast<std::size_t>(
        head.Length == 0 || head.IsUnknown ? rest : std::min<std::uint64_t>(head.Content, rest));
    const auto element = bytes.first(head.Length + content);
    elements.emplace_back(element.begin(), element.end());
    bytes = bytes.subspan(element.size());
  }
  return elements;
}

inline Bytes EbmlElement(std::span<const std::uint8_t> id, std::span<const std::uint8_t> content) {
  Bytes element(id.begin(), id.end());
  if (content.size() < 127) {
    element.push_back(static_cast<std::uint8_t>(0x80 | content.size()));
  } else {
    AppendU16be(element, 0x4000 | content.size());
  }
  Append(element, content);
  return element;
}

/// Elements that subtitles are read by, with content that they may have.
inline Bytes NewElement(Dice& dice) {
  const Bytes ids[] = {{0xD7},
                       {0x83},
                       {0x86},
                       {0x63, 0xA2},
                       {0x22, 0xB5, 0x9C},
                       {0x53, 0x6E},
                       {0x55, 0xAA},
                       {0x88},
                       {0x6D, 0x80},
                       {0x62, 0x40},
                       {0x50, 0x31},
                       {0x50, 0x32},
                       {0x50, 0x33},
                       {0x50, 0x34},
                       {0x42, 0x54},
                       {0x42, 0x55},
                       {0x1F, 0x43, 0xB6, 0x75},
                       {0xE7},
                       {0xA0},
                       {0x9B},
                       {0xEC},
                       {0xBF},
                       {0x2A, 0xD7, 0xB1},
                       {0xAE}};
  if (dice.OneIn(3)) {  // a block or a group around it
    Bytes block = {0x81, 0, dice.Byte(), static_cast<std::uint8_t>(dice.OneIn(6) ? dice.Byte() : 0)};
    Append(block, NewUnit(dice));
    return dice.OneIn(2) ? EbmlElement(Bytes{0xA3}, block)
                         : EbmlElement(Bytes{0xA0}, EbmlElement(Bytes{0xA1}, block));
  }
  if (dice.OneIn(6)) {
    return EbmlElement(Bytes{0x86}, BytesOf("S_VOBSUB"));
  }
  Bytes content(dice.Below(4));
  std::ranges::generate(content,
                        [&] { return static_cast<std::uint8_t>(dice.Below(dice.OneIn(2) ? 4 : 256)); });
  return EbmlElement(dice.OneOf(ids), content);
}

/// Those that hold others, by the first byte of the ID and its length.
inline bool HoldsElements(std::span<const std::uint8_t> id) {
  constexpr std::uint32_t ids[] = {0x1A45DFA3, 0x18538067, 0x1549A966, 0x1654AE6B, 0xAE, 0x6D80,
                                   0x6240,     0x5034,     0x5035,     0x1F43B675, 0xA0, 0x1C53BB6B};
  std::uint32_t number = 0;
  for (const std::uint8_t byte : id.first(std::min<std::size_t>(id.size(), 4))) {
    number = number << 8U | byte;
  }
  return std::ranges::find(ids, number) != std::end(ids);
}

inline void MutateEbml(Bytes& bytes, Dice& dice) {
  Pieces elements = SplitElements(bytes);
  MutatePieces(
      elements, dice, [&] { return NewElement(dice); },
      [&](Bytes& element) {
        const EbmlHead head = ReadEbmlHead(element);
        if (head.Length == 0 || dice.OneIn(16)) {
          MutateAny(element);
          return;
        }
        const auto id = std::span(element).first(head.IdLength);
        Bytes content(element.begin() + static_cast<std::ptrdiff_t>(head.Length), element.end());
        HoldsElements(id) ? MutateEbml(content, dice) : MutateAny(content);
        element = EbmlElement(id, content);
      });
  bytes = Joined(elements);
}

}  // namespace quillmark
