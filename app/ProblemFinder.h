#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include <QBasicTimer>
#include <QObject>

#include "sup/StreamSurvey.h"

namespace quillmark {

/// Looks a stream through for problems between the events of the window, a few milliseconds at a time. The
/// bytes that it was given stay where they are until Start() or Stop().
class ProblemFinder : public QObject {
  Q_OBJECT

 public:
  explicit ProblemFinder(QObject* parent = nullptr);

  /// Forgets what was found and begins with `file`: another stream, or one whose packets have moved.
  /// `packets` says how many there are, as far as that is known.
  void Start(std::span<const std::uint8_t> file, std::size_t packets, const CheckOptions& options = {});
  /// Bytes of the file have changed, but every packet stands where it stood. Everything is looked at once
  /// more; what was found before stays until that is done.
  void Refresh();
  /// Forgets what was found; nothing of the file is read from here on.
  void Stop();

  /// What was found so far.
  [[nodiscard]] const StreamSurvey& Survey() const { return survey_; }
  /// Whether nothing is left to look at: there is no stream, or all of it was looked at, or memory did not
  /// suffice for more.
  [[nodiscard]] bool IsFinished() const { return !timer_.isActive(); }

 signals:
  /// The marks of the packets from index `first` to before `end` have changed, or the damage before them or
  /// after the last one.
  void Found(std::size_t first, std::size_t end);
  /// A stream was looked through to its end.
  void Finished();

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void Begin(StreamSurvey& survey);

  std::span<const std::uint8_t> file_;
  std::size_t packets_ = 0;
  CheckOptions options_;
  StreamSurvey survey_;
  StreamSurvey next_;  // takes the survey's place when it is complete
  bool isRefreshing_ = false;
  QBasicTimer timer_;
};

}  // namespace quillmark
