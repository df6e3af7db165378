#include "app/PlayerBar.h"

#include <algorithm>
#include <utility>

#include <QCheckBox>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSlider>

#include "app/Ui.h"

namespace quillmark {
namespace {

/// Between two pictures, in milliseconds: 62 a second.
constexpr int PictureMs = 16;
/// Steps of the slider: a picture of 25 a second, and half a second.
constexpr int SmallStepMs = 40;
constexpr int LargeStepMs = 500;

PlayerBar::Clock RealClock() {
  QElapsedTimer timer;
  timer.start();
  return [timer] { return timer.elapsed(); };
}

QString SecondsText(int ms) {
  return QString::number(ms / 1000.0, 'f', 2);
}

QString TimeText(int ms, int lengthMs) {
  return Ui::Tr("%1 / %2 s").arg(SecondsText(ms), SecondsText(lengthMs));
}

}  // namespace

PlayerBar::PlayerBar(QWidget* parent) : QWidget(parent), clock_(RealClock()) {
  Check_Player = new QCheckBox(Ui::Tr("As a player shows it"), this);
  Check_Player->setObjectName(QStringLiteral("Check_Player"));
  Command_Play = new QPushButton(this);
  Command_Play->setObjectName(QStringLiteral("Command_Play"));
  Command_Play->setAutoDefault(true);
  Slider_Time = new QSlider(Qt::Horizontal, this);
  Slider_Time->setObjectName(QStringLiteral("Slider_Time"));
  Slider_Time->setAccessibleName(Ui::Tr("Time after the subtitle's start in milliseconds"));
  Slider_Time->setToolTip(Ui::Tr("When after the subtitle's start the picture is shown; Space plays"));
  Slider_Time->setSingleStep(SmallStepMs);
  Slider_Time->setPageStep(LargeStepMs);
  Slider_Time->setRange(0, 0);
  Label_Time = new QLabel(this);
  Label_Time->setObjectName(QStringLiteral("Label_Time"));
  Label_Time->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  Label_Time->setMinimumWidth(fontMetrics().horizontalAdvance(TimeText(10'000, 10'000)));
  // As wide with either text.
  for (const bool plays : {true, false}) {
    Command_Play->setText(plays ? Ui::Tr("Pause") : Ui::Tr("Play"));
    Command_Play->setMinimumWidth(std::max(Command_Play->minimumWidth(), Command_Play->sizeHint().width()));
  }
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->addWidget(Check_Player);
  row->addWidget(Command_Play);
  row->addWidget(Slider_Time, 1);
  row->addWidget(Label_Time);
  timer_.setTimerType(Qt::PreciseTimer);
  timer_.setInterval(PictureMs);
  connect(&timer_, &QTimer::timeout, this, &PlayerBar::Advance);
  connect(Check_Player, &QCheckBox::toggled, this, [this](bool on) {
    Update();
    emit Toggled(on);
  });
  connect(Slider_Time, &QSlider::valueChanged, this, [this] {
    if (!advances_) {
      Rebase();
    }
    ShowTime();
    emit TimeChanged();
  });
  Update();
  ShowTime();
}

bool PlayerBar::IsOn() const {
  return Check_Player->isChecked();
}

void PlayerBar::SetOn(bool on) {
  Check_Player->setChecked(on);
}

void PlayerBar::SetAvailable(bool available) {
  if (available != isAvailable_) {
    isAvailable_ = available;
    Update();
  }
}

void PlayerBar::SetMerging(bool merging) {
  if (merging != isMerging_) {
    isMerging_ = merging;
    Update();
  }
}

void PlayerBar::Begin(int lengthMs) {
  Slider_Time->setRange(0, lengthMs);
  Slider_Time->setValue(0);
  ShowTime();
  Rebase();
}

void PlayerBar::SetLength(int lengthMs) {
  Slider_Time->setRange(0, lengthMs);
  ShowTime();
}

int PlayerBar::Time() const {
  return Slider_Time->value();
}

void PlayerBar::TogglePlay() {
  if (IsPlaying()) {
    Stop();
    return;
  }
  if (!isAvailable_) {
    return;
  }
  SetOn(true);
  if (Time() >= Slider_Time->maximum()) {
    Slider_Time->setValue(0);
  }
  Rebase();
  timer_.start();
  Update();
}

void PlayerBar::SetClock(Clock clock) {
  clock_ = std::move(clock);
  Rebase();
}

void PlayerBar::Advance() {
  if (!IsPlaying()) {
    return;
  }
  const QScopedValueRollback<bool> advances(advances_, true);
  const std::int64_t time = clock_() - startedAt_;
  Slider_Time->setValue(static_cast<int>(std::clamp<std::int64_t>(time, 0, Slider_Time->maximum())));
  if (time >= Slider_Time->maximum()) {
    Stop();
  }
}

void PlayerBar::Stop() {
  if (IsPlaying()) {
    timer_.stop();
    Update();
  }
}

void PlayerBar::Rebase() {
  startedAt_ = clock_() - Time();
}

void PlayerBar::Update() {
  const bool isShown = isAvailable_ && IsOn();
  if (!isShown) {
    Stop();
  }
  Check_Player->setEnabled(isAvailable_);
  Command_Play->setEnabled(isAvailable_);
  Slider_Time->setEnabled(isShown);
  Command_Play->setText(IsPlaying() ? Ui::Tr("Pause") : Ui::Tr("Play"));
  const QString whyNot =
      Ui::Tr("Not of a merged subtitle: it is one picture from its start to its stop, the one shown");
  Check_Player->setToolTip(
      isMerging_ ? whyNot
                 : Ui::Tr("Carry out all control sequences at their times: fades, moves, changes of colour"));
  Command_Play->setToolTip(isMerging_ ? whyNot
                           : IsPlaying()
                               ? Ui::Tr("Stop at this moment (Ctrl+P)")
                               : Ui::Tr("Show the subtitle in its own time, as a player does (Ctrl+P)"));
  emit Changed();
}

void PlayerBar::ShowTime() {
  Label_Time->setText(TimeText(Time(), Slider_Time->maximum()));
}

}  // namespace quillmark
