#include <QAction>
#include <QActionGroup>

#include "app/DisplayFrame.h"
#include "app/FrameView.h"
#include "app/Ui.h"
#include "app/WindowBody.h"
#include "app/frmTest.h"

namespace quillmark {
namespace {

QString AspectText(DisplayAspect aspect) {
  switch (aspect) {
    case DisplayAspect::FourToThree:
      return QStringLiteral(", 4:3");
    case DisplayAspect::SixteenToNine:
      return QStringLiteral(", 16:9");
    case DisplayAspect::Square:
      break;
  }
  return {};
}

}  // namespace

void frmTest::ConnectView() {
  ConnectZoom();
  ConnectGuides();
  ConnectLoupe();
}

void frmTest::ConnectZoom() {
  FrameView* view = &Body->Frame();
  connect(Action_ZoomIn, &QAction::triggered, view, &FrameView::ZoomIn);
  connect(Action_ZoomOut, &QAction::triggered, view, &FrameView::ZoomOut);
  connect(Action_Zoom100, &QAction::triggered, this, [this, view] {
    view->SetZoom({.Percent = 100, .Fits = false, .Aspect = Picture1->Zoom().Aspect});
  });
  Action_ZoomFit->setCheckable(true);
  connect(Action_ZoomFit, &QAction::triggered, this, [this, view] {
    view->SetZoom({.Percent = 100, .Fits = true, .Aspect = Picture1->Zoom().Aspect});
    ShowZoom();
  });
  connect(view, &FrameView::ZoomChanged, this, &frmTest::ShowZoom);
  auto* aspects = new QActionGroup(this);
  for (const auto& [action, aspect] :
       {std::pair(Action_Square, DisplayAspect::Square), std::pair(Action_4x3, DisplayAspect::FourToThree),
        std::pair(Action_16x9, DisplayAspect::SixteenToNine)}) {
    action->setCheckable(true);
    action->setChecked(aspect == Picture1->Zoom().Aspect);
    aspects->addAction(action);
    connect(action, &QAction::triggered, this, [this, chosen = aspect] { SetAspect(chosen); });
  }
}

void frmTest::SetAspect(DisplayAspect aspect) {
  ViewZoom zoom = Picture1->Zoom();
  zoom.Aspect = aspect;
  Body->Frame().SetZoom(zoom);
}

void frmTest::ShowZoom() {
  const ViewZoom& zoom = Picture1->Zoom();
  Action_ZoomFit->setChecked(zoom.Fits);
  Tell((zoom.Fits ? Ui::Tr("Zoom to fit") : Ui::Tr("Zoom %1 %", {QString::number(zoom.Percent)})) +
       AspectText(zoom.Aspect));
}

}  // namespace quillmark
