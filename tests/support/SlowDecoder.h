#pragma once

#include <array>
#include <cstdint>
#include <vector>

/// A stream decoded once more, by the rules as they are written down and without any thought of speed: one
/// nibble, one pixel, one byte of a header at a time, everything worked out anew wherever it is needed.
/// Nothing of the code under test is in it.
namespace quillmark::test {

/// One subtitle as the slow decoder reads it.
struct SlowSubtitle {
  std::int64_t Start = 0;  ///< 90 kHz ticks
  std::int64_t End = 0;    ///< 0: not known
  bool IsValid = false;
  int X = -1;
  int Y = -1;
  int Width = 0;
  int Height = 0;
  std::array<int, 4> Colours = {100, 100, 100, 100};
  std::array<int, 4> Contrasts = {100, 100, 100, 100};
  static constexpr std::uint8_t NotReached = 9;
  std::vector<std::uint8_t> Codes;  ///< row by row, NotReached where no run came
};

class SlowDecoder {
 public:
  explicit SlowDecoder(const std::vector<std::uint8_t>& file) : file_(file) {}

  /// Every packet of a file that is whole.
  [[nodiscard]] std::vector<SlowSubtitle> All() const {
    std::vector<SlowSubtitle> all;
    for (std::int64_t packet = 0; packet + 14 <= Length(); packet += Size(packet) + 10) {
      all.push_back(Subtitle(packet));
    }
    for (std::size_t i = 0; i + 1 < all.size(); ++i) {
      if (all[i].End == 0) {
        all[i].End = all[i + 1].Start;
      }
    }
    return all;
  }

 private:
  [[nodiscard]] std::int64_t Length() const { return static_cast<std::int64_t>(file_.size()); }
  [[nodiscard]] int FileByte(std::int64_t at) const { return file_.at(static_cast<std::size_t>(at)); }
  [[nodiscard]] int Size(std::int64_t packet) const {
    return FileByte(packet + 10) * 256 + FileByte(packet + 11);
  }

  /// The unit without its four header bytes, element by element; 0 outside.
  [[nodiscard]] int Element(std::int64_t packet, std::int64_t element) const {
    return element < 0 || element >= Size(packet) - 4 ? 0 : FileByte(packet + 14 + element);
  }
  [[nodiscard]] int Two(std::int64_t packet, std::int64_t element) const {
    return Element(packet, element) * 256 + Element(packet, element + 1);
  }
  /// Two bytes as a signed number.
  static int Signed(int number) { return number < 0x8000 ? number : number - 0x10000; }

  [[nodiscard]] SlowSubtitle Subtitle(std::int64_t packet) const {
    SlowSubtitle found;
    std::uint64_t start = 0;
    for (int i = 7; i >= 0; --i) {
      start = start * 256 + static_cast<std::uint64_t>(FileByte(packet + 2 + i));
    }
    found.Start = static_cast<std::int64_t>(start);
    const int last = Size(packet) - 5;  // element
    int top = -1;
    int bottom = -1;
    int x2 = -1;
    int y2 = -1;
    int delay = 0;
    int next = 0;
    const int first = Signed(FileByte(packet + 12) * 256 + FileByte(packet + 13));
    int current = first;
    int at = first - 4;
    while (at < last - 4 && current != next) {
      delay = Signed(Two(packet, at));
      current = next != 0 ? next : first;
      next = Signed(Two(packet, at + 2));
      at += 4;
      int command = -1;
      while (at < last && command != 0xFF) {
        command = Element(packet, at);
        at += 1;
        if (command == 3 || command == 4) {
          auto& nibbles = command == 3 ? found.Colours : found.Contrasts;
          nibbles = {Element(packet, at + 1) % 16, Element(packet, at + 1) / 16, Element(packet, at) % 16,
                     Element(packet, at) / 16};
          at += 2;
        } else if (command == 5) {
          found.X = Element(packet, at) * 16 + Element(packet, at + 1) / 16;
          x2 = Element(packet, at + 1) % 16 * 256 + Element(packet, at + 2);
          found.Y = Element(packet, at + 3) * 16 + Element(packet, at + 4) / 16;
          y2 = Element(packet, at + 4) % 16 * 256 + Element(packet, at + 5);
          at += 6;
        } else if (command == 6) {
          top = Two(packet, at);
          bottom = Two(packet, at + 2);
          at += 4;
        }
      }
    }
    if (delay != 0) {
      found.End = found.Start + std::int64_t{delay} * 1000;
    }
    found.IsValid = found.Colours[0] < 16 && found.Contrasts[0] < 16 && found.X >= 0 && top >= 0 && next != 0;
    if (found.IsValid) {
      found.Width = x2 - found.X + 1;
      found.Height = y2 - found.Y + 1;
      Decode(packet, top, bottom, found);
    }
    return found;
  }

  /// Of a line that starts at this unit offset: its pixels, and the offset of the next one.
  struct Line {
    std::vector<std::uint8_t> Pixels;
    std::int64_t Next = 0;
  };

  /// The `number`th nibble from a unit offset on. The unit's last byte is never read, nor what follows it:
  /// the byte before comes in its place.
  [[nodiscard]] int Nibble(std::int64_t packet, std::int64_t start, int number) const {
    const std::int64_t element = start - 4 + number / 2;
    const int byte = Element(packet, element < Size(packet) - 5 ? element : element - 1);
    return number % 2 == 0 ? byte / 16 : byte % 16;
  }

  [[nodiscard]] Line DecodeLine(std::int64_t packet, std::int64_t start, int width) const {
    Line line;
    int nibbles = 0;
    while (static_cast<int>(line.Pixels.size()) < width) {
      // A code is as many nibbles as it has zero bits in front, in pairs.
      int value = Nibble(packet, start, nibbles++);
      int run = value / 4;
      for (int longest : {4, 16, 64}) {
        if (value < longest) {
          value = value * 16 + Nibble(packet, start, nibbles++);
          run = value / 4;
        } else {
          break;
        }
      }
      if (run == 0) {
        run = width;
      }
      for (int i = 0; i < run && static_cast<int>(line.Pixels.size()) < width; ++i) {
        line.Pixels.push_back(static_cast<std::uint8_t>(value % 4));
      }
    }
    line.Next = start + (nibbles + 1) / 2;
    return line;
  }

  void Decode(std::int64_t packet, int top, int bottom, SlowSubtitle& found) const {
    if (found.Width < 1 || found.Height < 1) {
      return;
    }
    const auto width = static_cast<std::size_t>(found.Width);
    found.Codes.assign(width * static_cast<std::size_t>(found.Height), SlowSubtitle::NotReached);
    std::int64_t upper = top;
    std::int64_t lower = bottom;
    for (int pair = 0; pair * 2 + 1 < found.Height; ++pair) {
      const Line even = DecodeLine(packet, upper, found.Width);
      const Line odd = DecodeLine(packet, lower, found.Width);
      for (std::size_t x = 0; x < width; ++x) {
        found.Codes[static_cast<std::size_t>(pair) * 2 * width + x] = even.Pixels[x];
        found.Codes[static_cast<std::size_t>(pair) * 2 * width + width + x] = odd.Pixels[x];
      }
      upper = even.Next;
      lower = odd.Next;
      if (upper > bottom || lower > Size(packet)) {
        return;  // what is left was not stored, or belongs to the other field
      }
    }
  }

  const std::vector<std::uint8_t>& file_;
};

}  // namespace quillmark::test
