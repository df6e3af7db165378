// Encoding a film's picture, a composed frame, and making a whole merged subtitle, beside libavcodec. The
// frame is 720x576 with two blocks of two text lines each, the primary's at the bottom and the secondary's at
// the top. Items are subtitles.

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "render/FieldDecoder.h"
#include "render/MergedPicture.h"
#include "sup/MergedPacket.h"
#include "sup/PictureUnit.h"
#include "sup/StreamLoader.h"
#include "sup/SupFormat.h"
#ifdef QUILLMARK_HAS_LIBAVCODEC
#include "bench/Lavc.h"
#include "bench/LavcEncoder.h"
#endif

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int Width = 720;
constexpr int Height = 576;
constexpr int YOffset = -400;
constexpr int PairCount = 20;  // their frames fit the processor's cache, as the one frame of the program does
constexpr CodeColours Colours = {0x00000000, 0xFFE8E8E8, 0xFF101010, 0xFF808080};
constexpr MergedControl Control = {.Delay = 200, .ColourBytes = {0x32, 0x10}, .ContrastBytes = {0xFF, 0xF0}};
constexpr TimeField Time = {};

[[noreturn]] void Fail(const char* what) {
  std::fprintf(stderr, "%s\n", what);
  std::exit(1);
}

struct Unit {
  Bytes Whole;  ///< size field first, padding after it
  std::size_t Size = 0;
  std::int16_t ControlOffset = 0;

  [[nodiscard]] std::span<const std::uint8_t> Unpadded() const { return std::span(Whole).first(Size); }
};

std::vector<Unit> MakeUnits(std::uint32_t seed) {
  const Bytes film = MakeFilm({.Subtitles = PairCount, .Seed = seed});
  const Result<SupStream> index = IndexStream(film);
  if (!index) {
    Fail("the film is not a stream");
  }
  const SupStream& stream = *index;
  std::vector<Unit> units;
  for (std::size_t i = 0; i < stream.PacketOffset.size(); ++i) {
    const auto start = film.begin() + stream.PacketOffset[i] + UnitStart;
    Unit unit = {.Whole = Bytes(start, start + stream.SpuSize[i]),
                 .Size = static_cast<std::size_t>(stream.SpuSize[i]),
                 .ControlOffset = stream.ControlOffset[i]};
    unit.Whole.resize(unit.Size + 64, 0);
    units.push_back(std::move(unit));
  }
  return units;
}

struct Pair {
  Unit Primary;
  Unit Secondary;
};

std::vector<Pair> MakePairs() {
  const std::vector<Unit> primary = MakeUnits(1);
  const std::vector<Unit> secondary = MakeUnits(2);
  std::vector<Pair> pairs;
  for (std::size_t i = 0; i < primary.size(); ++i) {
    pairs.push_back({.Primary = primary[i], .Secondary = secondary[i]});
  }
  return pairs;
}

std::vector<Pair>& Pairs() {
  static std::vector<Pair> pairs = MakePairs();
  return pairs;
}

void ComposePair(const Pair& pair, MergedPicture& picture) {
  const auto primary = pair.Primary.Unpadded();
  const auto secondary = pair.Secondary.Unpadded();
  picture.Compose({.PrimaryUnit = primary,
                   .Primary = DecodeControl(primary, pair.Primary.ControlOffset),
                   .SecondaryUnit = secondary,
                   .Secondary = DecodeControl(secondary, pair.Secondary.ControlOffset),
                   .YOffset = YOffset,
                   .Colours = Colours,
                   .FrameHeight = Height});
}

std::span<const std::uint8_t> Encode(MergedPacketEncoder& encoder, const FrameCells& frame) {
  const auto packet = encoder.Encode(frame, Control, Time);
  if (!packet) {
    Fail("a frame does not fit a unit");
  }
  return *packet;
}

/// The frame's pixel codes.
Bytes FrameCodes(const FrameCells& frame) {
  Bytes codes(frame.Cells.size());
  std::ranges::transform(frame.Cells, codes.begin(), [&](std::uint8_t cell) { return frame.Codes[cell]; });
  return codes;
}

std::vector<Bytes> MakeFrames() {
  std::vector<Bytes> frames;
  MergedPicture picture;
  for (const Pair& pair : Pairs()) {
    ComposePair(pair, picture);
    frames.push_back(FrameCodes(picture.Cells()));
  }
  return frames;
}

const std::vector<Bytes>& Frames() {
  static const std::vector<Bytes> frames = MakeFrames();
  return frames;
}

/// A film's picture, the area of its unit and no more.
struct Picture {
  Bytes Codes;
  int Width = 0;
  int Height = 0;
};

std::vector<Picture> MakePictures() {
  std::vector<Picture> pictures;
  for (const Pair& pair : Pairs()) {
    const auto unit = pair.Primary.Unpadded();
    const SpuControl control = DecodeControl(unit, pair.Primary.ControlOffset);
    Picture picture = {.Codes = {}, .Width = control.Width(), .Height = control.Height()};
    picture.Codes.resize(static_cast<std::size_t>(picture.Width) * static_cast<std::size_t>(picture.Height));
    DecodeFields<std::uint8_t>(unit, picture.Codes, picture.Width, picture.Height, control.TopFieldOffset,
                               control.BottomFieldOffset, {0, 1, 2, 3});
    pictures.push_back(std::move(picture));
  }
  return pictures;
}

const std::vector<Picture>& Pictures() {
  static const std::vector<Picture> pictures = MakePictures();
  return pictures;
}

std::span<const std::uint8_t> Encode(PictureUnitEncoder& encoder, const Picture& picture) {
  const auto packet = encoder.Encode({.Codes = picture.Codes,
                                      .Width = picture.Width,
                                      .Height = picture.Height,
                                      .Colour = {0, 1, 2, 3},
                                      .Contrast = {0, 15, 15, 15},
                                      .Delay = 200},
                                     Time);
  if (!packet) {
    Fail("a picture does not fit a unit");
  }
  return *packet;
}

void CountPairs(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(Pairs().size()));
}

/// Every row is looked at, as when nothing is known of the frame.
FrameCells WholeFrame(const Bytes& codes) {
  static constexpr std::array<std::uint8_t, 4> sameCodes = {0, 1, 2, 3};
  static const Bytes allRows(Height, 1);
  return {.Height = Height, .Cells = codes, .Codes = sameCodes, .RowInUse = allRows};
}

void EncodeFrame(benchmark::State& state) {
  MergedPacketEncoder encoder;
  const auto& frames = Frames();
  for ([[maybe_unused]] auto _ : state) {
    for (const Bytes& frame : frames) {
      benchmark::DoNotOptimize(Encode(encoder, WholeFrame(frame)).data());
      benchmark::ClobberMemory();
    }
  }
  CountPairs(state);
}
BENCHMARK(EncodeFrame)->Unit(benchmark::kMillisecond);

void EncodePicture(benchmark::State& state) {
  PictureUnitEncoder encoder;
  const auto& pictures = Pictures();
  for ([[maybe_unused]] auto _ : state) {
    for (const Picture& picture : pictures) {
      benchmark::DoNotOptimize(Encode(encoder, picture).data());
      benchmark::ClobberMemory();
    }
  }
  CountPairs(state);
}
BENCHMARK(EncodePicture)->Unit(benchmark::kMillisecond);

void MakeMergedSubtitle(benchmark::State& state) {
  MergedPicture picture;
  MergedPacketEncoder encoder;
  for ([[maybe_unused]] auto _ : state) {
    for (const Pair& pair : Pairs()) {
      ComposePair(pair, picture);
      benchmark::DoNotOptimize(Encode(encoder, picture.Cells()).data());
      benchmark::ClobberMemory();
    }
  }
  CountPairs(state);
}
BENCHMARK(MakeMergedSubtitle)->Unit(benchmark::kMillisecond);

#ifdef QUILLMARK_HAS_LIBAVCODEC
std::span<const std::uint8_t> Encode(LavcEncoder& encoder, const Bytes& codes, int width = Width,
                                     int height = Height) {
  const auto unit = encoder.Encode(codes, width, height, Colours);
  if (!unit) {
    Fail("libavcodec does not encode the picture");
  }
  return *unit;
}

/// libavcodec numbers the codes as it likes; this numbers them in the order in which they come up.
Bytes Renumbered(const LavcPicture& picture) {
  std::array<std::uint8_t, 4> numbers = {};
  std::uint8_t next = 1;
  Bytes codes;
  for (const std::uint8_t code : picture.Codes) {
    auto& number = numbers[code & 3U];
    number = number == 0 ? next++ : number;
    codes.push_back(number);
  }
  return codes;
}

struct Decoded {
  int X, Y, Width, Height;
  Bytes Codes;
  bool operator==(const Decoded&) const = default;
};

Decoded Decode(LavcDecoder& decoder, std::span<const std::uint8_t> unit) {
  Bytes padded(unit.begin(), unit.end());
  padded.resize(unit.size() + LavcDecoder::Padding, 0);
  LavcPicture picture;
  if (!decoder.Decode(std::span(padded).first(unit.size()), picture)) {
    Fail("libavcodec finds no picture");
  }
  return {picture.X, picture.Y, picture.Width, picture.Height, Renumbered(picture)};
}

/// Both encoders' units show the same.
void CheckFrames() {
  LavcDecoder decoder;
  LavcEncoder theirs;
  MergedPacketEncoder ours;
  for (const Bytes& frame : Frames()) {
    const auto packet = Encode(ours, WholeFrame(frame));
    if (Decode(decoder, packet.subspan(UnitStart)) != Decode(decoder, Encode(theirs, frame))) {
      Fail("libavcodec encodes another picture");
    }
  }
}

void EncodePictureWithLibavcodec(benchmark::State& state) {
  LavcDecoder decoder;
  LavcEncoder encoder;
  PictureUnitEncoder ours;
  const auto& pictures = Pictures();
  for (const Picture& picture : pictures) {
    const auto unit = Encode(encoder, picture.Codes, picture.Width, picture.Height);
    if (Decode(decoder, Encode(ours, picture).subspan(UnitStart)) != Decode(decoder, unit)) {
      Fail("libavcodec encodes another picture");
    }
  }
  for ([[maybe_unused]] auto _ : state) {
    for (const Picture& picture : pictures) {
      benchmark::DoNotOptimize(Encode(encoder, picture.Codes, picture.Width, picture.Height).data());
      benchmark::ClobberMemory();
    }
  }
  CountPairs(state);
}
BENCHMARK(EncodePictureWithLibavcodec)->Unit(benchmark::kMillisecond);

void EncodeFrameWithLibavcodec(benchmark::State& state) {
  CheckFrames();
  LavcEncoder encoder;
  const auto& frames = Frames();
  for ([[maybe_unused]] auto _ : state) {
    for (const Bytes& frame : frames) {
      benchmark::DoNotOptimize(Encode(encoder, frame).data());
      benchmark::ClobberMemory();
    }
  }
  CountPairs(state);
}
BENCHMARK(EncodeFrameWithLibavcodec)->Unit(benchmark::kMillisecond);

/// Copies what is visible; all of the film's visible codes are opaque.
void LayOver(LavcDecoder& decoder, Unit& unit, int yOffset, Bytes& frame) {
  LavcPicture picture;
  if (!decoder.Decode({unit.Whole.data(), unit.Size}, picture)) {
    Fail("libavcodec finds no picture");
  }
  for (int y = 0; y < picture.Height; ++y) {
    const std::ptrdiff_t frameY = picture.Y + yOffset + y;
    for (int x = 0; x < picture.Width; ++x) {
      const std::ptrdiff_t frameX = picture.X + x;
      const std::uint8_t code = picture.Codes[std::size_t(y) * std::size_t(picture.Width) + std::size_t(x)];
      if (code != 0 && frameX < Width && frameY >= 0 && frameY < Height) {
        frame[std::size_t(frameY * Width + frameX)] = code;
      }
    }
  }
}

void MakeMergedSubtitleWithLibavcodec(benchmark::State& state) {
  LavcDecoder decoder;
  LavcEncoder encoder;
  Bytes frame;
  const auto merge = [&](Pair& pair) {
    frame.assign(std::size_t{Width} * Height, 0);
    LayOver(decoder, pair.Primary, 0, frame);
    LayOver(decoder, pair.Secondary, YOffset, frame);
    return Encode(encoder, frame);
  };
  for (std::size_t i = 0; i < Pairs().size(); ++i) {
    merge(Pairs()[i]);
    if (frame != Frames()[i]) {
      Fail("libavcodec merges into another picture");
    }
  }
  for ([[maybe_unused]] auto _ : state) {
    for (Pair& pair : Pairs()) {
      benchmark::DoNotOptimize(merge(pair).data());
      benchmark::ClobberMemory();
    }
  }
  CountPairs(state);
}
BENCHMARK(MakeMergedSubtitleWithLibavcodec)->Unit(benchmark::kMillisecond);
#endif

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
