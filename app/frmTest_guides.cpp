// What is shown over the frame: guides, screens, the loupe.

#include <array>
#include <utility>

#include <QAction>
#include <QActionGroup>
#include <QKeyEvent>

#include "app/DisplayFrame.h"
#include "app/FrameInspector.h"
#include "app/frmTest.h"

namespace quillmark {
namespace {

constexpr QLatin1String GuidesPart("guides");

/// What the user has switched on and off by that action.
using GuideSwitch = std::pair<QAction*, bool FrameGuides::*>;

}  // namespace

void frmTest::ConnectGuides() {
  for (const auto& [action, guide] : {GuideSwitch(Action_SafeAreas, &FrameGuides::SafeAreas),
                                      GuideSwitch(Action_SubtitleArea, &FrameGuides::Area),
                                      GuideSwitch(Action_Rulers, &FrameGuides::Rulers)}) {
    action->setCheckable(true);
    connect(action, &QAction::toggled, this, [this, chosen = guide](bool shown) {
      FrameGuides guides = Picture1->Guides();
      guides.*chosen = shown;
      Picture1->SetGuides(guides);
    });
  }
  auto* modes = new QActionGroup(this);
  for (const auto& [action, mode] :
       {std::pair(Action_ModeOff, DisplayMode::Off), std::pair(Action_Wide, DisplayMode::Wide),
        std::pair(Action_Letterbox, DisplayMode::Letterbox),
        std::pair(Action_PanAndScan, DisplayMode::PanAndScan)}) {
    action->setCheckable(true);
    action->setChecked(mode == DisplayMode::Off);
    modes->addAction(action);
    connect(action, &QAction::triggered, this, [this, chosen = mode] { SetMode(chosen); });
  }
}

void frmTest::SetMode(DisplayMode mode) {
  FrameGuides guides = Picture1->Guides();
  guides.Mode = mode;
  Picture1->SetGuides(guides);
}

void frmTest::ConnectLoupe() {
  Action_Loupe->setCheckable(true);
  connect(Action_Loupe, &QAction::triggered, this, [this](bool opens) {
    if (opens) {
      inspector_->OpenLoupe();
    } else {
      inspector_->CloseLoupe();
    }
  });
  connect(inspector_, &FrameInspector::LoupeClosed, Action_Loupe,
          [this] { Action_Loupe->setChecked(false); });
}

void frmTest::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && inspector_->IsLoupeOpen()) {
    inspector_->CloseLoupe();
    return;
  }
  if (PlaysBy(*event)) {
    Action_Play->trigger();
    return;
  }
  QMainWindow::keyPressEvent(event);
}

void frmTest::RestoreView() {
  const QStringList shown = memory_.Arrangement(GuidesPart).toStringList();
  for (QAction* action : {Action_SafeAreas, Action_SubtitleArea, Action_Rulers}) {
    action->setChecked(shown.contains(action->objectName()));
  }
  RestoreGround();
}

void frmTest::KeepView() {
  QStringList shown;
  for (const QAction* action : {Action_SafeAreas, Action_SubtitleArea, Action_Rulers}) {
    if (action->isChecked()) {
      shown.append(action->objectName());
    }
  }
  memory_.SetArrangement(GuidesPart, shown);
  KeepGround();
}

}  // namespace quillmark
