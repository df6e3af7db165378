#include "sup/DisplayQueue.h"

#include <algorithm>
#include <numeric>

#include "base/Ratio.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

constexpr std::int64_t LongestWithoutEnd = 3600 * TicksPerSecond;
/// How many of them one piece of the sorting moves.
constexpr std::size_t MovedAtOnce = 16384;

}  // namespace

void DisplayQueue::Add(const OwnDisplay& display) {
  isSorted_ = isSorted_ && (displays_.empty() || displays_.back().Start <= display.Start);
  displays_.push_back(display);
}

bool DisplayQueue::Sort() {
  if (isBegun_) {
    return false;
  }
  if (isSorted_) {
    isBegun_ = true;
    next_ = {};
    FindShown();
    return false;
  }
  if (order_.empty()) {
    next_.resize(displays_.size());
    order_.resize(displays_.size());
    std::iota(order_.begin(), order_.end(), 0U);
  }
  MergeSome();
  return true;
}

/// Two runs at a time become one, those of equal starts as they stand in the list.
void DisplayQueue::MergeSome() {
  const std::size_t count = order_.size();
  for (std::size_t moved = 0; moved < MovedAtOnce && merged_ < count; ++moved) {
    const std::size_t begin = merged_ / (2 * runLength_) * (2 * runLength_);
    const std::size_t middle = std::min(begin + runLength_, count);
    const std::size_t end = std::min(middle + runLength_, count);
    if (merged_ == begin) {
      left_ = begin;
      right_ = middle;
    }
    const bool isRight =
        left_ == middle || (right_ < end && displays_[order_[right_]].Start < displays_[order_[left_]].Start);
    next_[merged_] = order_[isRight ? right_++ : left_++];
    ++merged_;
  }
  if (merged_ == count) {
    order_.swap(next_);
    merged_ = 0;
    runLength_ *= 2;
    isSorted_ = runLength_ >= count;
  }
}

std::int64_t DisplayQueue::EndOf(std::size_t place) const {
  const OwnDisplay& display = displays_[IndexAt(place)];
  const bool isLast = place + 1 == displays_.size();
  const std::int64_t withoutEnd = isLast ? LastSubtitleDelay * TicksPerDelayUnit : LongestWithoutEnd;
  const std::int64_t shown = display.Delay != 0 ? display.Delay * TicksPerDelayUnit : withoutEnd;
  const std::int64_t end = Sum(display.Start, shown).value_or(Never);
  return isLast ? end : std::min(end, displays_[IndexAt(place + 1)].Start);
}

void DisplayQueue::FindShown() {
  shown_.reset();
  for (; place_ < displays_.size() && !shown_; ++place_) {
    const std::size_t index = IndexAt(place_);
    const std::int64_t start = displays_[index].Start;
    if (const std::int64_t end = EndOf(place_); end > start) {
      shown_ = {.Start = start, .End = end, .Index = index};
    }
  }
}

std::optional<std::size_t> DisplayQueue::ShownAt(std::int64_t time) const {
  return shown_ && shown_->Start <= time ? std::optional(shown_->Index) : std::nullopt;
}

std::int64_t DisplayQueue::ChangeAfter(std::int64_t time) const {
  return shown_ && shown_->Start <= time ? shown_->End : Start();
}

void DisplayQueue::MoveTo(std::int64_t time) {
  if (shown_ && shown_->End <= time) {
    FindShown();
  }
}

}  // namespace quillmark
