// The current subtitle as a player shows it. What is drawn for it is never saved.

#include <QAction>
#include <QCheckBox>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

#include "app/Document.h"
#include "app/PlayerBar.h"
#include "app/PlayerView.h"
#include "app/Ui.h"
#include "app/frmTest.h"

namespace quillmark {

void frmTest::BuildPlayer() {
  // Below what is told of the subtitle.
  QWidget* details = Text_SubNum->parentWidget();
  auto* grid = qobject_cast<QGridLayout*>(details->layout());
  playerBar_ = new PlayerBar(details);
  grid->addWidget(playerBar_, grid->rowCount(), 0, 1, grid->columnCount());
  QWidget* previous = Check_SavePics;
  for (QWidget* widget : std::initializer_list<QWidget*>{playerBar_->Check_Player, playerBar_->Command_Play,
                                                         playerBar_->Slider_Time}) {
    setTabOrder(previous, widget);
    previous = widget;
  }
  Action_Player->setCheckable(true);
  connect(Action_Player, &QAction::triggered, playerBar_, &PlayerBar::SetOn);
  connect(Action_Play, &QAction::triggered, playerBar_, &PlayerBar::TogglePlay);
  connect(playerBar_->Command_Play, &QAbstractButton::clicked, Action_Play, &QAction::trigger);
  connect(playerBar_, &PlayerBar::Changed, this, &frmTest::UpdatePlayer);
  connect(playerBar_, &PlayerBar::Toggled, this, &frmTest::DrawAgain);
  playerView_ = new PlayerView(*document_, *Picture1, *inspector_, *playerBar_, this);
  connect(playerView_, &PlayerView::Damaged, this,
          [this](const QString& what) { Tell(Ui::Tr("As a player shows it: %1", {what})); });
  UpdatePlayer();
}

void frmTest::UpdatePlayer() {
  Action_Player->setChecked(playerBar_->IsOn());
  for (QAction* action : {Action_Player, Action_Play}) {
    action->setEnabled(playerBar_->IsAvailable());
  }
}

void frmTest::DrawAgain() {
  if (!playerBar_->IsAvailable()) {
    return;
  }
  std::vector<std::uint8_t> buffer;
  const SubtitleUnit unit =
      UnitOf(document_->Primary(), static_cast<std::size_t>(document_->Number() - 1), buffer);
  RenderSubtitle(unit.Bytes, document_->Control(), document_->Colours(), false);
}

bool frmTest::PlaysBy(const QKeyEvent& event) const {
  return event.key() == Qt::Key_Space && event.modifiers() == Qt::NoModifier && !event.isAutoRepeat() &&
         Action_Play->isEnabled();
}

}  // namespace quillmark
