#include "render/OffsetSearch.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

#include "render/FieldDecoder.h"
#include "sup/RunEncoder.h"

namespace quillmark {
namespace {

/// Pairs of rows that are compared in one step: some of the largest pictures', all of most others'.
constexpr std::size_t RowPairsPerStep = 65536;
/// Rows that areas may reach, whose 12 bits a height of as many is added to.
constexpr std::size_t AreaRows = 8192;

std::size_t OffsetIndex(int yOffset) {
  return static_cast<std::size_t>(yOffset - MinYOffset);
}

bool IsVisibleColour(Argb colour) {
  return colour >> 24U != 0;
}

/// How many bits both have. Counted without the processor's own instruction for it, which not every one has,
/// in a form that compilers make vectors of.
template <std::size_t Count>
std::uint64_t CommonBits(const std::array<std::uint64_t, Count>& a,
                         const std::array<std::uint64_t, Count>& b) {
  static_assert(Count * 8 <= 255);  // the sums of bytes stay within them
  std::uint64_t bytes = 0;
  for (std::size_t i = 0; i < Count; ++i) {
    std::uint64_t bits = a[i] & b[i];
    bits -= bits >> 1U & 0x5555555555555555U;
    bits = (bits & 0x3333333333333333U) + (bits >> 2U & 0x3333333333333333U);
    bytes += (bits + (bits >> 4U)) & 0x0F0F0F0F0F0F0F0FU;
  }
  const std::uint64_t pairs = (bytes & 0x00FF00FF00FF00FFU) + (bytes >> 8U & 0x00FF00FF00FF00FFU);
  return pairs * 0x0001000100010001U >> 48U;
}

}  // namespace

OffsetSearch::OffsetSearch(const SupStream& primary, const SupStream& secondary,
                           const MergeSettings& settings)
    : reader_(primary, secondary, settings),
      today_(std::clamp(settings.YOffset, MinYOffset, MaxYOffset)),
      frameHeight_(settings.FrameHeight),
      covered_(OffsetIndex(MaxYOffset) + 1),
      secondaryIn_(AreaRows) {}

bool OffsetSearch::Step() {
  if (Prepare()) {
    return true;
  }
  if (counted_ < primary_.size()) {
    CountCommon();
    return true;
  }
  if (next_ >= Count()) {
    return false;
  }
  const MergeOutcome read = reader_.Read(next_);
  ++next_;
  primary_.clear();
  counted_ = 0;
  if (read == MergeOutcome::Encoded) {
    TakePrimary(reader_.Input());
    TakeSecondary(reader_.Input());
    CountCommon();
  }
  return true;
}

int OffsetSearch::Best() const {
  const std::vector<std::uint64_t> beforeRow = SecondaryBeforeRow();
  int best = today_;
  std::uint64_t least = CostOf(best, beforeRow).Total();
  for (int offset = MinYOffset; offset <= MaxYOffset; ++offset) {
    const std::uint64_t cost = CostOf(offset, beforeRow).Total();
    const bool isNearer = std::abs(offset - today_) < std::abs(best - today_);
    if (cost < least || (cost == least && isNearer)) {
      best = offset;
      least = cost;
    }
  }
  return best;
}

OffsetCost OffsetSearch::CostOf(int yOffset) const {
  return CostOf(yOffset, SecondaryBeforeRow());
}

OffsetCost OffsetSearch::CostOf(int yOffset, const std::vector<std::uint64_t>& beforeRow) const {
  const auto before = [&](int row) {
    return beforeRow[static_cast<std::size_t>(std::clamp(row - yOffset, 0, static_cast<int>(AreaRows)))];
  };
  const std::uint64_t shown =
      before(std::max(LastMergedRow(frameHeight_) + 1, FirstMergedRow)) - before(FirstMergedRow);
  return {.Covered = covered_[OffsetIndex(yOffset)], .Clipped = primaryClipped_ + secondaryTotal_ - shown};
}

/// Element r is how many pixels the rows before row r have.
std::vector<std::uint64_t> OffsetSearch::SecondaryBeforeRow() const {
  std::vector<std::uint64_t> before(AreaRows + 1);
  for (std::size_t row = 0; row < AreaRows; ++row) {
    before[row + 1] = before[row] + secondaryIn_[row];
  }
  return before;
}

/// Masks of the rows that have visible pixels in the frame's columns. The answer is how many such pixels the
/// whole picture has, wherever they lie.
std::uint64_t OffsetSearch::MaskRows(std::span<const std::uint8_t> unit, const SpuControl& control,
                                     const Visible& isVisible, Masks& masks) {
  masks.clear();
  if (control.Width() < 1 || control.Height() < 1 || control.X1 < 0) {
    return 0;
  }
  const auto width = static_cast<std::size_t>(control.Width());
  const auto height = static_cast<std::size_t>(control.Height());
  const auto left = static_cast<std::size_t>(control.X1);
  const std::size_t inFrame = std::min(width, MergedWidth - std::min<std::size_t>(left, MergedWidth));
  picture_.assign(width * height, 0);
  DecodeFields<std::uint8_t>(unit, picture_, control.Width(), control.Height(), control.TopFieldOffset,
                             control.BottomFieldOffset, isVisible);
  std::uint64_t visible = 0;
  std::array<std::uint8_t, RowWords * BlockSize> flags{};
  for (std::size_t y = 0; y < height; ++y) {
    const auto row = std::span(picture_).subspan(y * width, width);
    visible += static_cast<std::uint64_t>(std::ranges::count(row.subspan(inFrame), 1));
    if (inFrame == 0) {
      continue;
    }
    std::ranges::copy(row.first(inFrame), flags.begin() + static_cast<std::ptrdiff_t>(left));
    RowMask& mask = masks.emplace_back();
    mask.Row = control.Y1 + static_cast<int>(y);
    for (std::size_t word = 0; word < RowWords; ++word) {
      mask.Words[word] = GatherFlags(&flags[word * BlockSize]);
    }
    mask.Pixels = static_cast<std::uint32_t>(CommonBits(mask.Words, mask.Words));
    visible += mask.Pixels;
    if (mask.Pixels == 0) {
      masks.pop_back();
    }
  }
  return visible;
}

void OffsetSearch::TakePrimary(const MergedInput& input) {
  Visible isVisible{};
  std::ranges::transform(input.Colours, isVisible.begin(),
                         [](Argb colour) { return static_cast<std::uint8_t>(IsVisibleColour(colour)); });
  primaryClipped_ += MaskRows(input.PrimaryUnit, input.Primary, isVisible, primary_);
  std::erase_if(primary_, [this](const RowMask& mask) {
    return mask.Row < FirstMergedRow || mask.Row > LastMergedRow(frameHeight_);
  });
  for (const RowMask& mask : primary_) {
    primaryClipped_ -= mask.Pixels;
  }
}

void OffsetSearch::TakeSecondary(const MergedInput& input) {
  Visible isVisible{};
  for (std::size_t code = 0; code < isVisible.size(); ++code) {
    const std::size_t becomes = input.SecondaryCodes[code] % isVisible.size();
    isVisible[code] = static_cast<std::uint8_t>(IsVisibleColour(input.Colours[becomes]));
  }
  secondaryTotal_ += MaskRows(input.SecondaryUnit, input.Secondary, isVisible, secondary_);
  for (const RowMask& mask : secondary_) {
    secondaryIn_[static_cast<std::size_t>(mask.Row)] += mask.Pixels;
  }
}

void OffsetSearch::CountCommon() {
  for (std::size_t pairs = 0; counted_ < primary_.size() && pairs < RowPairsPerStep; ++counted_) {
    const RowMask& below = primary_[counted_];
    for (const RowMask& over : secondary_) {
      covered_[OffsetIndex(below.Row - over.Row)] += CommonBits(below.Words, over.Words);
    }
    pairs += secondary_.size();
  }
}

}  // namespace quillmark
