// Decoding a film's units to ARGB cells, beside libavcodec and beside painting runs that are known
// beforehand. One iteration is the whole film; the items of a rate are units.

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "bench/Film.h"
#include "render/FieldDecoder.h"
#include "render/RunPainter.h"
#include "sup/SpuControl.h"
#include "sup/StreamLoader.h"
#include "sup/SupFormat.h"
#ifdef QUILLMARK_HAS_LIBAVCODEC
#include "bench/Lavc.h"
#endif

namespace quillmark {
namespace {

constexpr CodeTable<std::uint32_t> colours = {0x00000000, 0xFFE8E8E8, 0xFF101010, 0x80FF0000};

[[noreturn]] void Fail(const char* what, std::size_t unit) {
  std::fprintf(stderr, "unit %zu: %s\n", unit, what);
  std::exit(1);
}

/// A run that is known before it is painted; two bytes, so that reading the list costs as little as it can.
struct KnownRun {
  std::uint16_t Length : 14;
  std::uint16_t Code : 2;
};

struct Unit {
  std::vector<std::uint8_t> Whole;  ///< size field first, padding after it
  std::size_t Size = 0;             ///< without the padding
  std::int16_t ControlOffset = 0;
  SpuControl Control;
  std::vector<std::vector<KnownRun>> Rows;  ///< of every picture line

  /// Without the padding.
  [[nodiscard]] std::span<const std::uint8_t> Unpadded() const { return std::span(Whole).first(Size); }
  [[nodiscard]] std::size_t Cells() const {
    return static_cast<std::size_t>(Control.Width()) * static_cast<std::size_t>(Control.Height());
  }
};

template <typename Cell>
void DecodePicture(const Unit& unit, const SpuControl& control, std::vector<Cell>& cells,
                   const CodeTable<Cell>& table) {
  cells.resize(unit.Cells());
  const int lines = DecodeFields<Cell>(unit.Unpadded(), cells, control.Width(), control.Height(),
                                       control.TopFieldOffset, control.BottomFieldOffset, table);
  std::ranges::fill(std::span(cells).subspan(static_cast<std::size_t>(lines * control.Width())), Cell{0});
}

std::vector<std::vector<KnownRun>> RowsOf(const Unit& unit) {
  std::vector<std::uint8_t> codes;
  DecodePicture<std::uint8_t>(unit, unit.Control, codes, {0, 1, 2, 3});
  const auto width = static_cast<std::size_t>(unit.Control.Width());
  std::vector<std::vector<KnownRun>> rows(static_cast<std::size_t>(unit.Control.Height()));
  for (std::size_t i = 0; i < codes.size(); ++i) {
    auto& row = rows[i / width];
    if (row.empty() || row.back().Code != codes[i]) {
      row.push_back({.Length = 0, .Code = static_cast<std::uint16_t>(codes[i] & 3U)});
    }
    ++row.back().Length;
  }
  return rows;
}

std::vector<Unit> MakeUnits() {
  const std::vector<std::uint8_t> film = MakeFilm({});
  const Result<SupStream> index = IndexStream(film);
  if (!index) {
    Fail("the film is not a stream", 0);
  }
  const SupStream& stream = *index;
  std::vector<Unit> units;
  for (std::size_t i = 0; i < stream.PacketOffset.size(); ++i) {
    Unit unit;
    unit.Size = static_cast<std::size_t>(stream.SpuSize[i]);
    const auto start = film.begin() + stream.PacketOffset[i] + UnitStart;
    unit.Whole.assign(start, start + stream.SpuSize[i]);
    unit.Whole.resize(unit.Size + 64, 0);
    unit.ControlOffset = stream.ControlOffset[i];
    unit.Control = DecodeControl(unit.Unpadded(), unit.ControlOffset);
    if (!unit.Control.IsValid()) {
      Fail("the control sequences are not valid", i);
    }
    unit.Rows = RowsOf(unit);
    units.push_back(std::move(unit));
  }
  return units;
}

std::vector<Unit>& Units() {
  static std::vector<Unit> units = MakeUnits();
  return units;
}

void CountUnits(benchmark::State& state) {
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(Units().size()));
}

/// From the unit's bytes to a picture: control sequences, transparent cells, both fields.
void DecodeToArgb(benchmark::State& state) {
  std::vector<std::uint32_t> cells;
  for ([[maybe_unused]] auto _ : state) {
    for (const Unit& unit : Units()) {
      DecodePicture(unit, DecodeControl(unit.Unpadded(), unit.ControlOffset), cells, colours);
      benchmark::DoNotOptimize(cells.data());
      benchmark::ClobberMemory();
    }
  }
  CountUnits(state);
}
BENCHMARK(DecodeToArgb)->Unit(benchmark::kMillisecond);

#ifdef QUILLMARK_HAS_LIBAVCODEC
void CheckAgainst(const LavcPicture& theirs, const Unit& unit, std::size_t index) {
  std::vector<std::uint8_t> ours;
  DecodePicture<std::uint8_t>(unit, unit.Control, ours, {0, 1, 2, 3});
  std::size_t seen = 0;
  for (int y = 0; y < theirs.Height; ++y) {
    for (int x = 0; x < theirs.Width; ++x) {
      const int column = theirs.X - unit.Control.X1 + x;
      const int row = theirs.Y - unit.Control.Y1 + y;
      if (column < 0 || column >= unit.Control.Width() || row < 0 || row >= unit.Control.Height()) {
        Fail("libavcodec places the picture elsewhere", index);
      }
      const std::int64_t cell = std::int64_t{row} * unit.Control.Width() + column;
      auto& code = ours[static_cast<std::size_t>(cell)];
      if (theirs.Codes[seen++] != code) {
        Fail("libavcodec decodes other codes", index);
      }
      code = 0;
    }
  }
  if (std::ranges::any_of(ours, [](std::uint8_t code) { return code != 0; })) {
    Fail("libavcodec's picture is smaller than what is visible", index);
  }
}

void CheckAllUnits(LavcDecoder& decoder) {
  LavcPicture picture;
  for (std::size_t i = 0; i < Units().size(); ++i) {
    Unit& unit = Units()[i];
    if (!decoder.Decode({unit.Whole.data(), unit.Size}, picture)) {
      Fail("libavcodec finds no picture", i);
    }
    CheckAgainst(picture, unit, i);
  }
}

void DecodeWithLibavcodec(benchmark::State& state) {
  LavcDecoder decoder;
  CheckAllUnits(decoder);
  LavcPicture picture;
  std::vector<std::uint32_t> cells;
  for ([[maybe_unused]] auto _ : state) {
    for (Unit& unit : Units()) {
      if (!decoder.Decode({unit.Whole.data(), unit.Size}, picture)) {
        Fail("libavcodec finds no picture", 0);
      }
      cells.resize(picture.Codes.size());
      std::ranges::transform(picture.Codes, cells.begin(),
                             [](std::uint8_t code) { return colours[code & 3U]; });
      benchmark::DoNotOptimize(cells.data());
      benchmark::ClobberMemory();
    }
  }
  CountUnits(state);
}
BENCHMARK(DecodeWithLibavcodec)->Unit(benchmark::kMillisecond);
#endif

/// The fields alone, into cells that are there.
void DecodeRuns(benchmark::State& state) {
  std::vector<std::uint32_t> cells(1U << 16U);
  for ([[maybe_unused]] auto _ : state) {
    for (const Unit& unit : Units()) {
      DecodeFields<std::uint32_t>(unit.Unpadded(), cells, unit.Control.Width(), unit.Control.Height(),
                                  unit.Control.TopFieldOffset, unit.Control.BottomFieldOffset, colours);
      benchmark::DoNotOptimize(cells.data());
      benchmark::ClobberMemory();
    }
  }
  CountUnits(state);
}
BENCHMARK(DecodeRuns)->Unit(benchmark::kMillisecond);

/// With the decoder's painter, and less care than it must take: rows are painted in order, so a block may
/// reach into the next one.
void PaintKnownRow(const std::vector<KnownRun>& runs, std::uint32_t* cell, int width,
                   const RunPainter<std::uint32_t>& painter) {
  painter.PaintExactly(cell, width, 0);
  for (const KnownRun run : runs) {
    if (run.Length <= painter.BlockCells || run.Code == 0) {
      painter.PaintFreely(cell, run.Code);
    } else {
      painter.PaintExactly(cell, run.Length, run.Code);
    }
    cell += run.Length;
  }
}

/// What is left of DecodeRuns when nothing has to be decoded.
void PaintKnownRuns(benchmark::State& state) {
  std::vector<std::uint32_t> cells(1U << 16U);
  for ([[maybe_unused]] auto _ : state) {
    for (const Unit& unit : Units()) {
      const RunPainter<std::uint32_t> painter(colours);
      const int width = unit.Control.Width();
      std::uint32_t* row = cells.data();
      for (const auto& runs : unit.Rows) {
        PaintKnownRow(runs, row, width, painter);
        row += width;
      }
      benchmark::DoNotOptimize(cells.data());
      benchmark::ClobberMemory();
    }
  }
  CountUnits(state);
}
BENCHMARK(PaintKnownRuns)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
