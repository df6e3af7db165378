#include "app/ProblemFinder.h"

#include <new>
#include <utility>

#include <QElapsedTimer>
#include <QTimerEvent>

namespace quillmark {
namespace {

/// How long the window's events wait at most: this, and as many steps as are taken between two looks at the
/// clock.
constexpr qint64 SliceNanoseconds = 2'000'000;
constexpr int StepsPerLook = 8;

/// Looks on for the time of one slice; false once nothing is left to look at.
bool LookOn(StreamSurvey& survey) {
  QElapsedTimer clock;
  clock.start();
  try {
    do {
      for (int step = 0; step < StepsPerLook; ++step) {
        if (!survey.Step()) {
          return false;
        }
      }
    } while (clock.nsecsElapsed() < SliceNanoseconds);
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

}  // namespace

ProblemFinder::ProblemFinder(QObject* parent) : QObject(parent) {}

void ProblemFinder::Start(std::span<const std::uint8_t> file, std::size_t packets,
                          const CheckOptions& options) {
  Stop();
  file_ = file;
  packets_ = packets;
  options_ = options;
  Begin(survey_);
}

void ProblemFinder::Refresh() {
  if (file_.empty()) {
    return;
  }
  isRefreshing_ = true;
  Begin(next_);
}

void ProblemFinder::Stop() {
  timer_.stop();
  file_ = {};
  survey_ = StreamSurvey();
  next_ = StreamSurvey();
  isRefreshing_ = false;
}

void ProblemFinder::Begin(StreamSurvey& survey) {
  survey = StreamSurvey(file_, options_);
  try {
    survey.Reserve(packets_);
  } catch (const std::bad_alloc&) {
    // Less may do: a stream can end long before its index does not fit.
  }
  timer_.start(0, this);
}

void ProblemFinder::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) {
    QObject::timerEvent(event);
    return;
  }
  StreamSurvey& survey = isRefreshing_ ? next_ : survey_;
  const std::size_t packets = survey.Marks().size();
  const std::size_t damage = survey.DamageCount();
  const bool goesOn = LookOn(survey);
  std::size_t end = survey.Marks().size();
  // The last packet of the slice before may overlap the first one of this.
  std::size_t first = packets > 0 ? packets - 1 : 0;
  bool isNews = end > packets || survey.DamageCount() > damage;
  if (isRefreshing_) {
    isNews = !goesOn;
    first = 0;
  }
  if (!goesOn) {
    timer_.stop();
    if (std::exchange(isRefreshing_, false)) {
      survey_ = std::exchange(next_, StreamSurvey());
    }
  }
  // Whoever is told may start with another stream.
  const auto* const file = file_.data();
  if (isNews) {
    emit Found(first, end);
  }
  if (!goesOn && IsFinished() && file_.data() == file) {
    emit Finished();
  }
}

}  // namespace quillmark
