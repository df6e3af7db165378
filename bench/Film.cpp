#include "bench/Film.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <random>
#include <utility>

#include "sup/PacketWriter.h"
#include "sup/SpuCommand.h"
#include "sup/SupFormat.h"

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

struct Run {
  int Length = 0;
  unsigned Code = 0;
};

constexpr unsigned background = 0;
constexpr unsigned letter = 1;
constexpr unsigned outline = 2;

/// The standard distributions differ between libraries; the engine does not.
class Random {
 public:
  explicit Random(std::uint32_t seed) : engine_(seed) {}

  /// Both ends included.
  int Between(int low, int high) {
    return low + static_cast<int>(engine_() % static_cast<std::uint32_t>(high - low + 1));
  }

 private:
  std::mt19937 engine_;
};

/// Writes the runs of one line, which starts and ends on a byte.
class LineWriter {
 public:
  explicit LineWriter(Bytes& bytes) : bytes_(bytes) {}

  void Write(Run run) {
    for (; run.Length > 255; run.Length -= 255) {
      WriteCode(255U << 2U | run.Code);
    }
    WriteCode(static_cast<unsigned>(run.Length) << 2U | run.Code);
  }

  void FillToEnd(unsigned code) {
    WriteNibbles(code, 4);
    if (half_) {
      WriteNibbles(0, 1);
    }
  }

 private:
  void WriteCode(unsigned value) {
    WriteNibbles(value, value < 0x10 ? 1 : value < 0x40 ? 2 : value < 0x100 ? 3 : 4);
  }

  void WriteNibbles(unsigned value, unsigned count) {
    while (count-- > 0) {
      const auto nibble = static_cast<std::uint8_t>(value >> (4 * count) & 0x0FU);
      if (half_) {
        bytes_.back() = static_cast<std::uint8_t>(bytes_.back() | nibble);
      } else {
        bytes_.push_back(PackNibbles(nibble, 0));
      }
      half_ = !half_;
    }
  }

  Bytes& bytes_;
  bool half_ = false;
};

struct Picture {
  int Width = 0;
  int Height = 0;
  Bytes Top;
  Bytes Bottom;
};

/// Within a letter, between letters, between words.
int GapLength(Random& random) {
  const int kind = random.Between(0, 99);
  if (kind < 31) {
    return random.Between(1, 3);
  }
  return kind < 75 ? random.Between(4, 15) : random.Between(16, 50);
}

/// A row through a line of text: outlined strokes and the gaps after them.
void WriteTextRow(Random& random, int width, int margin, LineWriter& line) {
  int x = margin;
  line.Write({margin, background});
  while (true) {
    const std::array<Run, 4> stroke = {Run{random.Between(1, 3), outline}, Run{random.Between(1, 3), letter},
                                       Run{random.Between(1, 3), outline},
                                       Run{GapLength(random), background}};
    for (const Run& run : stroke) {
      x += run.Length;
      if (x >= width - margin) {
        line.FillToEnd(background);
        return;
      }
      line.Write(run);
    }
  }
}

Picture DrawPicture(Random& random) {
  Picture picture{
      .Width = random.Between(380, 520), .Height = 2 * random.Between(23, 27), .Top = {}, .Bottom = {}};
  const std::array<int, 2> margins = {random.Between(4, 8), random.Between(4, 60)};
  const int half = picture.Height / 2;
  for (int y = 0; y < picture.Height; ++y) {
    LineWriter line(y % 2 == 0 ? picture.Top : picture.Bottom);
    if (y % half == half - 1) {
      line.FillToEnd(background);
    } else {
      WriteTextRow(random, picture.Width, margins[static_cast<std::size_t>(y / half)], line);
    }
  }
  return picture;
}

AreaArguments Range(int first, int length) {
  return PackRange(static_cast<unsigned>(first), static_cast<unsigned>(first + length - 1));
}

/// A picture that is shown for `Delay` units of 1000 ticks.
struct Subtitle {
  Picture Shown;
  std::size_t Delay = 0;
};

void AppendPacket(Bytes& film, std::int64_t start, const Subtitle& subtitle) {
  constexpr std::size_t firstSequenceSize =
      SequenceHeaderSize + CommandSize(StartDisplay) + CommandSize(SetColour) + CommandSize(SetContrast) +
      CommandSize(SetDisplayArea) + CommandSize(SetFieldOffsets) + CommandSize(EndOfSequence);
  constexpr std::size_t secondSequenceSize =
      SequenceHeaderSize + CommandSize(StopDisplay) + CommandSize(EndOfSequence);
  const Picture& picture = subtitle.Shown;
  const std::size_t bottomOffset = UnitHeaderSize + picture.Top.size();
  const std::size_t control = bottomOffset + picture.Bottom.size();
  const std::size_t stop = control + firstSequenceSize;
  PacketWriter writer(film);
  WritePacketHeader(writer, PackTime(start), stop + secondSequenceSize, control);
  writer.Bytes(picture.Top);
  writer.Bytes(picture.Bottom);

  WriteSequenceHeader(writer, 0, stop);
  writer.U8(StartDisplay);
  WriteCodes(writer, SetColour, PackCodes({0, 1, 2, 3}));
  WriteCodes(writer, SetContrast, PackCodes({0, 15, 15, 15}));
  WriteArea(writer, Range((720 - picture.Width) / 2, picture.Width),
            Range(560 - picture.Height, picture.Height));
  WriteFieldOffsets(writer, UnitHeaderSize, bottomOffset);
  writer.U8(EndOfSequence);

  WriteSequenceHeader(writer, subtitle.Delay, stop);
  writer.U8(StopDisplay);
  writer.U8(EndOfSequence);
}

}  // namespace

std::vector<std::uint8_t> MakeFilm(const FilmOptions& options) {
  Random random(options.Seed);
  std::vector<Subtitle> subtitles;
  const int distinct = std::clamp(options.DistinctPictures, 1, std::max(options.Subtitles, 1));
  for (int i = 0; i < distinct; ++i) {
    Picture picture = DrawPicture(random);
    subtitles.push_back(
        {.Shown = std::move(picture), .Delay = static_cast<std::size_t>(random.Between(100, 350))});
  }
  Bytes film;
  film.reserve(static_cast<std::size_t>(std::max(options.Subtitles, 0)) * 3000);
  std::int64_t start = options.FirstStart;
  for (int i = 0; i < options.Subtitles; ++i) {
    AppendPacket(film, start, subtitles[static_cast<std::size_t>(i % distinct)]);
    start += std::int64_t{random.Between(360, 500)} * 1000;
  }
  return film;
}

}  // namespace quillmark
