// One frame of a subtitle as a player shows it: a picture that fills 720x576, in runs of 4 to 15 pixels, with
// eight changes of colour in each group of four lines. Beside it Qt draws the same pixels over the same
// frame. Items are frames.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <vector>

#include <QImage>
#include <QPainter>
#include <benchmark/benchmark.h>

#include "render/Composition.h"
#include "render/PlayerPicture.h"

namespace quillmark {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr QSize Frame(FrameWidth, FrameHeight576);
constexpr unsigned GroupLines = 4;

void AddNumber(Bytes& bytes, std::size_t value) {
  bytes.push_back(static_cast<std::uint8_t>(value >> 8U));
  bytes.push_back(static_cast<std::uint8_t>(value));
}

/// A run of 4 to 15 pixels is one byte; the last one of a line reaches its end.
void AddLine(Bytes& bytes, std::mt19937& random) {
  for (unsigned x = 0; x + 15 < unsigned{FrameWidth};) {
    const auto length = static_cast<unsigned>(4 + random() % 12);
    bytes.push_back(static_cast<std::uint8_t>(length << 2U | random() % 4));
    x += length;
  }
  bytes.insert(bytes.end(), {0x00, 0x01});
}

/// Eight changes in every line, other ones in each group.
void AddChanges(Bytes& bytes, std::mt19937& random) {
  constexpr std::size_t groups = FrameHeight576 / GroupLines;
  constexpr std::size_t groupSize = 4 + 8 * 6;
  bytes.push_back(0x07);
  AddNumber(bytes, 2 + groups * groupSize + 4);
  for (std::size_t group = 0; group < groups; ++group) {
    AddNumber(bytes, group * GroupLines);
    AddNumber(bytes, 8U << 12U | (group * GroupLines + GroupLines - 1));
    for (unsigned change = 0; change < 8; ++change) {
      AddNumber(bytes, 40 + change * 80);
      AddNumber(bytes, random() & 0xFFFFU);
      AddNumber(bytes, random() & 0xFFFFU);
    }
  }
  bytes.insert(bytes.end(), {0x0F, 0xFF, 0xFF, 0xFF});
}

/// Two states that differ in all contrasts. In the second one `secondTop` is where the top field starts, so
/// that the fields may have to be decoded for each frame.
Bytes MakeUnit(unsigned secondTop) {
  std::mt19937 random(14);  // NOLINT(cert-msc32-c,cert-msc51-cpp)
  Bytes unit(4);
  std::vector<std::size_t> fields;
  for (int field = 0; field < 2; ++field) {
    fields.push_back(unit.size());
    for (int line = 0; line < FrameHeight576 / 2; ++line) {
      AddLine(unit, random);
    }
  }
  const std::size_t control = unit.size();
  AddNumber(unit, 0);
  const std::size_t pointer = unit.size();
  AddNumber(unit, 0);
  unit.insert(unit.end(),
              {0x01, 0x03, 0x32, 0x10, 0x04, 0x8F, 0xF0, 0x05, 0x00, 0x02, 0xCF, 0x00, 0x02, 0x3F});
  unit.push_back(0x06);
  AddNumber(unit, fields[0]);
  AddNumber(unit, fields[1]);
  AddChanges(unit, random);
  unit.push_back(0xFF);
  const std::size_t second = unit.size();
  AddNumber(unit, 100);
  AddNumber(unit, second);
  unit.insert(unit.end(), {0x04, 0xF8, 0x8F, 0x06});
  AddNumber(unit, fields[0] + secondTop);
  AddNumber(unit, fields[1]);
  unit.push_back(0xFF);
  const auto set = [&unit](std::size_t at, std::size_t value) {
    unit[at] = static_cast<std::uint8_t>(value >> 8U);
    unit[at + 1] = static_cast<std::uint8_t>(value);
  };
  set(0, unit.size());
  set(2, control);
  set(pointer, second);
  if (unit.size() > 0xFFFF) {
    std::fprintf(stderr, "the unit is too long\n");
    std::exit(1);
  }
  return unit;
}

/// Draws the states in turn, as the window does: background, picture, blending.
void ShowStates(benchmark::State& state, const Bytes& unit) {
  const DisplayTimeline timeline = ReadDisplay(unit, static_cast<std::uint16_t>(unit[2] << 8U | unit[3]));
  if (timeline.States.size() != 2 || !timeline.Damage.empty()) {
    std::fprintf(stderr, "the unit is damaged\n");
    std::exit(1);
  }
  PlayerPicture player(unit);
  FramePicture frame;
  cBitmap picture;
  std::size_t shown = 0;
  for ([[maybe_unused]] auto _ : state) {
    const DisplayState& now = timeline.States[++shown % 2];
    player.Draw(now, timeline.ChangesOf(now), StartUpPalette, Frame, picture);
    frame.DrawBackground(FrameHeight576, {}, nullptr);
    frame.Draw(picture, now.Area->X.First, now.Area->Y.First, nullptr);
    benchmark::DoNotOptimize(frame.TakeChanged());
  }
  state.SetItemsProcessed(state.iterations());
}

void NextColours(benchmark::State& state) {
  ShowStates(state, MakeUnit(0));
}
BENCHMARK(NextColours)->Unit(benchmark::kMillisecond);

/// The other field starts at the next line of the first one.
void NextColoursAndFields(benchmark::State& state) {
  const Bytes unit = MakeUnit(0);
  std::size_t line = 1;
  for (std::size_t at = 4; unit[at] != 0; ++at) {
    ++line;
  }
  ShowStates(state, MakeUnit(static_cast<unsigned>(line + 1)));
}
BENCHMARK(NextColoursAndFields)->Unit(benchmark::kMillisecond);

/// The pixels of the first state, ready made.
void QtDrawsTheSame(benchmark::State& state) {
  const Bytes unit = MakeUnit(0);
  const DisplayTimeline timeline = ReadDisplay(unit, static_cast<std::uint16_t>(unit[2] << 8U | unit[3]));
  PlayerPicture player(unit);
  cBitmap picture;
  player.Draw(timeline.States[0], timeline.ChangesOf(timeline.States[0]), StartUpPalette, Frame, picture);
  FramePicture background;
  background.DrawBackground(FrameHeight576, {}, nullptr);
  QImage frame = MakeFrame();
  for ([[maybe_unused]] auto _ : state) {
    QPainter painter(&frame);
    painter.drawImage(0, 0, background.Image());
    painter.drawImage(0, 0, picture.Image());
    benchmark::DoNotOptimize(frame.constBits());
  }
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(QtDrawsTheSame)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace quillmark

BENCHMARK_MAIN();
