#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include <QBasicTimer>
#include <QObject>

#include "render/MergeProblem.h"
#include "render/MergeReview.h"

namespace quillmark {

/// Looks a merge through between the events of the window, a few milliseconds at a time. The streams that it
/// was given stay where they are, as they are, until Start() or Stop().
class MergeFinder : public QObject {
  Q_OBJECT

 public:
  explicit MergeFinder(QObject* parent = nullptr);
  ~MergeFinder() override;

  /// Looks at every packet. Where the same streams were looked at before, and their merge has the same
  /// packets, what was found of each packet then stays until it is looked at again; `first`, one of these
  /// packets, comes before all others.
  void Start(const SupStream& primary, const SupStream& secondary, const MergeSettings& settings,
             std::optional<std::size_t> first);
  /// Forgets everything; nothing of the streams is read from here on.
  void Stop();
  /// While it pauses nothing is looked at.
  void SetPaused(bool paused);

  /// What was found so far, by packets in their order.
  [[nodiscard]] std::span<const MergedPair> Pairs() const { return pairs_; }
  /// Of each of them what is wrong, as ProblemKindsOf().
  [[nodiscard]] std::span<const std::uint32_t> Kinds() const { return kinds_; }
  /// The first packet that shows this primary subtitle, if it was found.
  [[nodiscard]] std::optional<std::size_t> PairOf(std::size_t primary) const;
  /// The packet of a split merge that starts then, if it was found.
  [[nodiscard]] std::optional<std::size_t> PairAt(std::int64_t startTicks) const;
  /// How many primary subtitles, or packets of a split merge, were looked at since Start(), and how many
  /// there are: 0 of a split merge that is not planned yet.
  [[nodiscard]] std::size_t Looked() const;
  [[nodiscard]] std::size_t Count() const;
  /// Whether there is nothing left to look at, or memory did not suffice for more.
  [[nodiscard]] bool IsFinished() const { return reviewer_ == nullptr; }
  /// Of the whole merge, as it was last looked through to its end.
  [[nodiscard]] bool HasWhole() const { return hasWhole_; }
  [[nodiscard]] const MergeReviewSummary& Summary() const { return summary_; }
  [[nodiscard]] const SubtitleSet& LeftOut() const { return leftOut_; }

 signals:
  /// The packets from index `first` to before `end` were looked at.
  void Found(std::size_t first, std::size_t end);
  /// All of them were, or everything is forgotten.
  void Finished();

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  [[nodiscard]] bool HasPackets(const MergeSettings& settings) const;
  bool LookOn();
  void LookAtFirst();
  void Keep(std::size_t index, const MergedPair& pair);
  void Run();
  void End();

  std::unique_ptr<MergeReviewer> reviewer_;  // while it looks
  MergeMode mode_ = MergeMode::Pairs;        // of what is kept, and the gaps that it closes
  std::int64_t joinTicks_ = 0;
  std::shared_ptr<SplitPlan> plan_;  // of a split merge, which packets it has
  std::optional<std::size_t> first_;
  MergeReviewSummary counted_;  // of what the reviewer found
  std::vector<MergedPair> pairs_;
  std::vector<std::uint32_t> kinds_;
  std::vector<std::uint32_t> pairOf_;  // by primary subtitle, as far as any was found
  MergeReviewSummary summary_;
  SubtitleSet leftOut_;
  bool hasWhole_ = false;
  bool lacksMemory_ = false;  // for more than is there
  bool isPaused_ = false;
  QBasicTimer timer_;
};

}  // namespace quillmark
