#pragma once

#include <cstdint>
#include <functional>

#include <QTimer>
#include <QWidget>

class QCheckBox;
class QLabel;
class QPushButton;
class QSlider;

namespace quillmark {

/// Where one is in the time of the current subtitle, in milliseconds after its start, and playing it in real
/// time.
class PlayerBar : public QWidget {
  Q_OBJECT

 public:
  /// In milliseconds, from any moment on.
  using Clock = std::function<std::int64_t()>;

  explicit PlayerBar(QWidget* parent);

  [[nodiscard]] bool IsOn() const;
  void SetOn(bool on);
  /// Whether there is anything to be shown by a player; nothing plays where there is not.
  void SetAvailable(bool available);
  /// That it is not available because two streams are merged; its tooltips say so.
  void SetMerging(bool merging);
  [[nodiscard]] bool IsAvailable() const { return isAvailable_; }

  /// Another subtitle, of this length: its time starts at 0, and what plays goes on with it.
  void Begin(int lengthMs);
  /// The same subtitle, which may have another length now.
  void SetLength(int lengthMs);
  [[nodiscard]] int Time() const;

  [[nodiscard]] bool IsPlaying() const { return timer_.isActive(); }
  /// Plays, from the start where it is at its end, or stops where it is. Switches the view on.
  void TogglePlay();
  void SetClock(Clock clock);
  /// Moves on to where the clock is; a timer does so while it plays.
  void Advance();

  QCheckBox* Check_Player = nullptr;
  QPushButton* Command_Play = nullptr;
  QSlider* Slider_Time = nullptr;
  QLabel* Label_Time = nullptr;

 signals:
  void Toggled(bool on);
  void TimeChanged();
  /// Whether it is on, plays, or is available.
  void Changed();

 private:
  void Update();
  void ShowTime();
  void Stop();
  /// Playing goes on from the slider's time.
  void Rebase();

  Clock clock_;
  QTimer timer_;
  std::int64_t startedAt_ = 0;  // the clock's time of the slider's 0
  bool isAvailable_ = false;
  bool isMerging_ = false;
  bool advances_ = false;  // the slider moves with the clock
};

}  // namespace quillmark
