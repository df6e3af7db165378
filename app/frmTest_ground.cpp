// The background of one colour.

#include <utility>

#include <QAction>
#include <QColor>
#include <QRadioButton>

#include "app/ColourSwatch.h"
#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/QtColour.h"
#include "app/Ui.h"
#include "app/frmTest.h"

namespace quillmark {
namespace {

constexpr Rgb BlackGround = 0x000000;
constexpr Rgb WhiteGround = 0xFFFFFF;
constexpr Rgb GreyGround = 0x808080;
constexpr QLatin1String GroundPart("ground");

}  // namespace

void frmTest::ConnectGround() {
  ShowGroundColour(BlackGround);
  Label_Ground->setContextMenuPolicy(Qt::ActionsContextMenu);
  for (const auto& [action, colour] :
       {std::pair(Action_GroundBlack, BlackGround), std::pair(Action_GroundWhite, WhiteGround),
        std::pair(Action_GroundGrey, GreyGround)}) {
    Label_Ground->addAction(action);
    connect(action, &QAction::triggered, this,
            [this, chosen = colour] { RunCommand([this, chosen] { ShowGround(chosen); }); });
  }
  Label_Ground->addAction(Action_GroundPick);
  connect(Action_GroundPick, &QAction::triggered, this,
          [this] { RunCommand([this] { Label_Ground_Click(); }); });
}

void frmTest::Label_Ground_Click() {
  const Rgb before = Label_Ground->Colour();
  const Rgb chosen = ChooseColour(this, before);
  if (chosen != before) {
    ShowGround(chosen);
  }
}

void frmTest::ShowGround(Rgb colour) {
  ShowGroundColour(colour);
  Option_Colour->setChecked(true);
  document_->Preview();
}

void frmTest::ShowGroundColour(Rgb colour) {
  Label_Ground->SetColour(colour, Ui::Tr("Background colour"));
}

void frmTest::RestoreGround() {
  if (const QColor kept(memory_.Arrangement(GroundPart).toString()); kept.isValid()) {
    ShowGroundColour(FromQColor(kept));
  }
}

void frmTest::KeepGround() {
  memory_.SetArrangement(GroundPart, ToQColor(Label_Ground->Colour()).name());
}

}  // namespace quillmark
