// Two streams of any bytes, merged so that at every moment just what both show is shown.
//
// Input: length of the first stream (two bytes, big-endian), offset in lines (one signed byte), gaps to close
// in tenths of a second (one byte), the first stream, the second one.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "fuzz/StreamMutation.h"
#include "imaging/Blend.h"
#include "render/FieldDecoder.h"
#include "render/MergeReview.h"
#include "sup/ControlSequences.h"
#include "sup/StreamLoader.h"
#include "sup/SupFormat.h"
#include "sup/Timecode.h"

namespace {

using namespace quillmark;

/// More displays take too long to be looked for among all of them.
constexpr std::int32_t MostDisplays = 3;
/// Units of one input whose pictures are compared, and pixels of an area that is decoded for it.
constexpr std::size_t MostPictures = 1;
constexpr int LargestArea = 1 << 10;
/// Of the frame: as few as show what is special about its first and last ones.
constexpr std::int64_t Lines = 16;
constexpr std::int64_t TenthOfASecond = TicksPerSecond / 10;

void Require(bool rule) {
  if (!rule) {
    std::abort();
  }
}

using ShownIndex = std::optional<std::size_t>;
using Both = std::pair<ShownIndex, ShownIndex>;

std::vector<OwnDisplay> DisplaysOf(const SupStream& stream) {
  std::vector<OwnDisplay> displays;
  std::vector<std::uint8_t> buffer;
  for (std::size_t i = 0; stream.Holds(i); ++i) {
    const SubtitleUnit unit = UnitOf(stream, i, buffer);
    const SpuControl control = DecodeControl(unit.Bytes, unit.ControlOffset);
    displays.push_back({.Start = stream.StartTime[i], .Delay = static_cast<std::uint16_t>(control.Delay)});
  }
  return displays;
}

/// What one stream shows, looked for among all of its displays.
ShownIndex ShownAt(const std::vector<OwnDisplay>& displays, std::int64_t time) {
  ShownIndex shown;
  bool isLast = true;
  for (std::size_t i = 0; i < displays.size(); ++i) {
    const bool hasStarted = displays[i].Start <= time;
    isLast = isLast && hasStarted;
    if (hasStarted && (!shown || displays[i].Start >= displays[*shown].Start)) {
      shown = i;
    }
  }
  if (!shown) {
    return shown;
  }
  const std::int64_t delay = displays[*shown].Delay;
  const std::int64_t withoutEnd = isLast ? LastSubtitleDelay : 3600 * TicksPerSecond / TicksPerDelayUnit;
  const auto ticks = static_cast<std::uint64_t>((delay != 0 ? delay : withoutEnd) * TicksPerDelayUnit);
  const auto since = static_cast<std::uint64_t>(time) - static_cast<std::uint64_t>(displays[*shown].Start);
  return since < ticks ? shown : std::nullopt;
}

void RequirePlan(const std::vector<OwnDisplay>& first, const std::vector<OwnDisplay>& second,
                 const SplitPlan& plan, std::int64_t join) {
  const auto shownAt = [&](std::int64_t time) { return Both(ShownAt(first, time), ShownAt(second, time)); };
  for (std::size_t i = 0; i < plan.Count(); ++i) {
    const DisplayInterval& unit = plan.Unit(i);
    Require(unit.First || unit.Second);
    Require(unit.Start < unit.End && unit.Delay >= 1 && unit.Delay <= 0x7FFF);
    Require(i == 0 || plan.Unit(i - 1).End <= unit.Start);
    Require(unit.Ticks() >= TicksPerDelayUnit || unit.End == DisplayQueue::Never);
    // What stays for a delay unit before and after a moment is shown at that moment.
    if (join == 0 && unit.Ticks() >= 3 * TicksPerDelayUnit) {
      const std::int64_t time = unit.Start + TicksPerDelayUnit;
      const Both shown = shownAt(time);
      bool isSteady = true;
      for (std::int64_t around = time - TicksPerDelayUnit; around <= time + TicksPerDelayUnit; around += 50) {
        isSteady = isSteady && shownAt(around) == shown;
      }
      Require(!isSteady || shown == Both(unit.First, unit.Second));
    }
  }
}

/// Of the picture's first lines.
std::vector<std::uint8_t> CodesOf(std::span<const std::uint8_t> unit, const SpuControl& control, int lines) {
  std::vector<std::uint8_t> codes(static_cast<std::size_t>(control.Width()) * static_cast<std::size_t>(lines),
                                  std::uint8_t{4});
  DecodeFields<std::uint8_t>(unit, codes, control.Width(), lines, control.TopFieldOffset,
                             control.BottomFieldOffset, {0, 1, 2, 3});
  return codes;
}

/// One picture's pixels by their places in the frame, as far as that goes.
class Layer {
 public:
  Layer(std::span<const std::uint8_t> unit, const SpuControl& control, int moved)
      : control_(control), moved_(moved) {
    isThere_ = control.X1 >= 0 && control.Width() >= 1 && control.Height() >= 1;
    if (isThere_) {
      // Fields end for both of them, so that lines are decoded by pairs.
      const int pairs = std::max(LastMergedRow(static_cast<int>(Lines)) - control.Y1 - moved + 1, 0) / 2;
      lines_ = std::min(2 * pairs, control.Height());
      codes_ = CodesOf(unit, control, lines_);
    }
  }

  /// Its first column and the one after its last.
  [[nodiscard]] int Left() const { return isThere_ ? control_.X1 : MergedWidth; }
  [[nodiscard]] int Right() const { return isThere_ ? control_.X1 + control_.Width() : 0; }

  [[nodiscard]] Argb At(int x, int y, const CodeColours& colours) const {
    const int column = x - control_.X1;
    const int line = y - control_.Y1 - moved_;
    if (!isThere_ || column < 0 || line < 0 || column >= control_.Width() || line >= lines_) {
      return 0;
    }
    const std::uint8_t code = codes_[static_cast<std::size_t>(line * control_.Width() + column)];
    return code < colours.size() ? colours[code] : 0;
  }

 private:
  SpuControl control_;
  int moved_;
  int lines_ = 0;  ///< of the picture, that are in the frame or above it
  bool isThere_ = false;
  std::vector<std::uint8_t> codes_;
};

bool IsSmall(const SpuControl& control) {
  return control.Width() < 1 || control.Height() < 1 || control.Width() * control.Height() <= LargestArea;
}

/// The unit shows the composition of both.
void RequirePicture(const MergedStreamEncoder& encoder, const MergeSettings& settings) {
  const MergedInputReader& reader = encoder.Reader();
  if (!IsSmall(reader.PrimaryControl()) || !IsSmall(reader.SecondaryControl()) ||
      encoder.Facts().IsFieldCut || encoder.Facts().Size > MaxReadUnit) {
    return;
  }
  const Layer below(reader.PrimaryUnit(), reader.PrimaryControl(), 0);
  const Layer above(reader.SecondaryUnit(), reader.SecondaryControl(), settings.YOffset);
  const CodeColours colours = MakeCodeColours(settings.Palette, reader.MergedCodes());
  const auto unit = encoder.Packet().subspan(UnitStart);
  const SpuControl control = DecodeControl(unit, static_cast<std::int16_t>(NumberAt(unit, 2)));
  Require(control.IsValid() && control.Delay == static_cast<std::int16_t>(reader.Planned().Delay));
  const Layer found(unit, control, 0);
  const auto visible = [](Argb colour) { return colour >> 24U == 0 ? 0 : colour; };
  // Beside both pictures every column is like the first and the last one.
  const int left = std::clamp(std::min(below.Left(), above.Left()), 1, MergedWidth);
  const int right = std::clamp(std::max(below.Right(), above.Right()), left, MergedWidth);
  std::vector<int> columns = {0, MergedWidth - 1};
  for (int x = left; x < right; ++x) {
    columns.push_back(x);
  }
  for (int y = FirstMergedRow; y < LastMergedRow(static_cast<int>(Lines)); ++y) {
    for (const int x : columns) {
      const Argb composed = BlendOver(above.At(x, y, colours), below.At(x, y, colours));
      Require(visible(found.At(x, y, colours)) == visible(colours[CodeOfColour(visible(composed), colours)]));
    }
  }
}

void RequirePictures(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                     const std::shared_ptr<SplitPlan>& plan) {
  MergedStreamEncoder encoder(primary, secondary, settings, plan);
  Require(encoder.Count() == plan->Count());
  std::size_t pictures = 0;
  for (std::size_t i = 0; i < encoder.Count(); ++i) {
    const MergeOutcome outcome = encoder.Encode(i);
    Require(outcome != MergeOutcome::Skipped);
    if (outcome == MergeOutcome::Encoded && ++pictures <= MostPictures) {
      RequirePicture(encoder, settings);
    }
  }
}

/// The review tells of every unit, and what becomes of one of them.
void RequireReview(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                   const std::shared_ptr<SplitPlan>& plan, std::size_t chosen) {
  MergeReviewer review(primary, secondary, settings, plan);
  MergedStreamEncoder encoder(primary, secondary, settings, plan);
  for (std::size_t i = 0; i < plan->Count(); ++i) {
    Require(review.Step() && review.Pairs().back().Delay == plan->Unit(i).Delay);
    Require(i != chosen % plan->Count() || review.Pairs().back().Outcome == encoder.Encode(i));
  }
  Require(!review.Step());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t Head = 4;
  if (size < Head) {
    return 0;
  }
  const std::span streams(data + Head, size - Head);
  const std::size_t length = std::min<std::size_t>(NumberAt({data, size}, 0), streams.size());
  const auto bytesOf = [](std::span<const std::uint8_t> stream) {
    return std::vector<std::uint8_t>(stream.begin(), stream.end());
  };
  const auto primary = IndexPrimaryStream(bytesOf(streams.first(length)), InvalidFirst::IsPassed);
  if (!primary) {
    return 0;
  }
  const auto secondary = IndexSecondaryStream(bytesOf(streams.subspan(length)), primary->Stream);
  if (!secondary || primary->Stream.Count > MostDisplays || secondary->Stream.Count > MostDisplays) {
    return 0;
  }
  const MergeSettings settings = {.Palette = StartUpPalette,
                                  .YOffset = static_cast<std::int8_t>(data[2]),
                                  .FrameHeight = static_cast<int>(Lines),
                                  .Mode = MergeMode::Split,
                                  .JoinTicks = data[3] * TenthOfASecond};
  const auto plan = std::make_shared<SplitPlan>(primary->Stream, secondary->Stream, settings.JoinTicks);
  while (plan->Step()) {
  }
  RequirePlan(DisplaysOf(primary->Stream), DisplaysOf(secondary->Stream), *plan, settings.JoinTicks);

  // One of both, by the length, so that there are more inputs.
  size % 2 == 0 ? RequirePictures(primary->Stream, secondary->Stream, settings, plan)
                : RequireReview(primary->Stream, secondary->Stream, settings, plan, data[2]);
  return 0;
}

QUILLMARK_MUTATOR(180, [](Bytes& input, Dice& dice) { MutateTwoStreams(4, input, dice); })
