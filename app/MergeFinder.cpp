#include "app/MergeFinder.h"

#include <algorithm>
#include <new>

#include <QElapsedTimer>
#include <QTimerEvent>

namespace quillmark {
namespace {

/// How long the window's events wait at most, besides the one packet that is being looked at.
constexpr qint64 NanosecondsAtOnce = 3'000'000;

}  // namespace

MergeFinder::MergeFinder(QObject* parent) : QObject(parent) {}

MergeFinder::~MergeFinder() = default;

void MergeFinder::Start(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
                        std::optional<std::size_t> first) {
  reviewer_ = std::make_unique<MergeReviewer>(primary, secondary, settings);
  counted_ = {};
  first_ = first;
  Run();
}

void MergeFinder::Stop() {
  timer_.stop();
  reviewer_.reset();
  pairs_.clear();
  pairs_.shrink_to_fit();
  kinds_.clear();
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
  const auto pair = std::ranges::lower_bound(pairs_, primary, {}, &MergedPair::Primary);
  return pair != pairs_.end() && pair->Primary == primary
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
  }
}

/// Which packets there are, and with which secondary subtitles, does not depend on the settings.
void MergeFinder::LookAtFirst() {
  const auto index = first_ ? PairOf(*first_) : std::nullopt;
  first_.reset();
  if (!index) {
    return;
  }
  std::optional<MergedPair> pair;
  try {
    pair = reviewer_->LookAt(pairs_[*index].Primary);
  } catch (const std::bad_alloc&) {
    return;  // its turn comes again
  }
  if (pair) {
    pair->IsUsedBefore = pairs_[*index].IsUsedBefore;
    Keep(*index, *pair);
    emit Found(*index, *index + 1);
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
        const MergedPair& pair = reviewer_->Pairs().back();
        counted_.Add(pair);
        Keep(found, pair);
      }
    } while (clock.nsecsElapsed() < NanosecondsAtOnce);
  } catch (const std::bad_alloc&) {
    pairs_.resize(std::min(pairs_.size(), kinds_.size()));
    return false;
  }
  return true;
}

void MergeFinder::End() {
  const std::size_t found = reviewer_->Pairs().size();
  hasWhole_ = reviewer_->Looked() >= reviewer_->Count();
  summary_ = counted_;
  leftOut_ = reviewer_->LeftOut();
  reviewer_.reset();
  timer_.stop();
  if (hasWhole_) {
    pairs_.resize(std::min(found, pairs_.size()));
    kinds_.resize(pairs_.size());
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
