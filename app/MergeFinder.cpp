#include "app/MergeFinder.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include <QElapsedTimer>
#include <QTimerEvent>

namespace quillmark {
namespace {

/// How long the window's events wait at most, besides the one packet that is being looked at.
constexpr qint64 NanosecondsAtOnce = 3'000'000;
constexpr std::uint32_t NoPair = std::numeric_limits<std::uint32_t>::max();

}  // namespace

MergeFinder::MergeFinder(QObject* parent) : QObject(parent) {}

MergeFinder::~MergeFinder() = default;

void MergeFinder::Start(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                        std::optional<std::size_t> first) {
  first_ = first;
  if (!HasPackets(settings)) {
    Stop();
    mode_ = settings.Mode;
    joinTicks_ = settings.JoinTicks;
  }
  if (mode_ == MergeMode::Split && plan_ == nullptr) {
    plan_ = std::make_shared<SplitPlan>(primary, secondary, joinTicks_);
  }
  reviewer_ = std::make_unique<MergeReviewer>(primary, secondary, settings, plan_);
  counted_ = {};
  lacksMemory_ = false;
  Run();
}

/// Whether those that are kept are packets of such a merge.
bool MergeFinder::HasPackets(const MergeSettings& settings) const {
  return settings.Mode == mode_ && (mode_ == MergeMode::Pairs || settings.JoinTicks == joinTicks_);
}

void MergeFinder::Stop() {
  timer_.stop();
  reviewer_.reset();
  plan_.reset();
  first_.reset();
  pairs_ = {};
  kinds_ = {};
  pairOf_ = {};
  summary_ = {};
  leftOut_ = {};
  hasWhole_ = false;
  emit Finished();
}

void MergeFinder::SetPaused(bool paused) {
  isPaused_ = paused;
  Run();
}

void MergeFinder::Run() {
  if (isPaused_ || reviewer_ == nullptr) {
    timer_.stop();
  } else if (!timer_.isActive()) {
    timer_.start(0, this);
  }
}

std::optional<std::size_t> MergeFinder::PairOf(std::size_t primary) const {
  const std::size_t pair = primary < pairOf_.size() ? pairOf_[primary] : NoPair;
  return pair < pairs_.size() ? std::optional(pair) : std::nullopt;
}

std::optional<std::size_t> MergeFinder::PairAt(std::int64_t startTicks) const {
  const auto pair = std::ranges::lower_bound(pairs_, startTicks, {}, &MergedPair::StartTicks);
  return mode_ == MergeMode::Split && pair != pairs_.end() && pair->StartTicks == startTicks
             ? std::optional(static_cast<std::size_t>(pair - pairs_.begin()))
             : std::nullopt;
}

std::size_t MergeFinder::Looked() const {
  return reviewer_ == nullptr ? pairs_.size() : reviewer_->Looked();
}

std::size_t MergeFinder::Count() const {
  return reviewer_ == nullptr ? pairs_.size() : reviewer_->Count();
}

void MergeFinder::Keep(std::size_t index, const MergedPair& pair) {
  const std::uint32_t kinds = ProblemKindsOf(pair);
  if (index < pairs_.size()) {
    pairs_[index] = pair;
    kinds_[index] = kinds;
  } else {
    pairs_.push_back(pair);
    kinds_.push_back(kinds);
    if (pair.HasPrimary) {
      pairOf_.resize(std::max(pairOf_.size(), pair.Primary + 1), NoPair);
      std::uint32_t& first = pairOf_[pair.Primary];
      first = std::min(first, static_cast<std::uint32_t>(index));
    }
  }
}

/// Which packets there are, and with which subtitles, does not depend on how the pictures are laid over each
/// other.
void MergeFinder::LookAtFirst() {
  const std::size_t index = std::exchange(first_, std::nullopt).value_or(pairs_.size());
  if (index >= pairs_.size()) {
    return;
  }
  std::optional<MergedPair> pair;
  try {
    pair = reviewer_->LookAt(mode_ == MergeMode::Pairs ? pairs_[index].Primary : index);
  } catch (const std::bad_alloc&) {
    // Its turn comes again.
  }
  if (pair) {
    pair->IsUsedBefore = pairs_[index].IsUsedBefore;
    Keep(index, *pair);
    emit Found(index, index + 1);
  }
}

/// Looks on for the time of one slice; false once nothing is left to look at.
bool MergeFinder::LookOn() {
  QElapsedTimer clock;
  clock.start();
  try {
    do {
      const std::size_t found = reviewer_->Pairs().size();
      if (!reviewer_->Step()) {
        return false;
      }
      if (reviewer_->Pairs().size() > found) {
        pairs_.reserve(reviewer_->Pairs().capacity());  // no step copies all that there are
        const MergedPair& pair = reviewer_->Pairs().back();
        counted_.Add(pair);
        Keep(found, pair);
      }
    } while (clock.nsecsElapsed() < NanosecondsAtOnce);
  } catch (const std::bad_alloc&) {
    pairs_.resize(std::min(pairs_.size(), kinds_.size()));
    lacksMemory_ = true;
    return false;
  }
  return true;
}

void MergeFinder::End() {
  const std::size_t found = reviewer_->Pairs().size();
  hasWhole_ = !lacksMemory_;
  summary_ = counted_;
  leftOut_ = reviewer_->LeftOut();
  reviewer_.reset();
  timer_.stop();
  if (hasWhole_) {
    pairs_.resize(std::min(found, pairs_.size()));
    kinds_.resize(pairs_.size());
  } else {
    plan_.reset();  // it may have been what there was no room for
  }
  emit Finished();
}

void MergeFinder::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) {
    QObject::timerEvent(event);
    return;
  }
  if (first_) {
    LookAtFirst();
    return;
  }
  const std::size_t before = reviewer_->Pairs().size();
  const bool goesOn = LookOn();
  const std::size_t found = reviewer_->Pairs().size();
  // Whoever is told may start another search.
  const MergeReviewer* const reviewer = reviewer_.get();
  if (found > before) {
    emit Found(before, found);
  }
  if (!goesOn && reviewer_.get() == reviewer) {
    End();
  }
}

}  // namespace quillmark
