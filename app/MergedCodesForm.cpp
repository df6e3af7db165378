#include "app/MergedCodesForm.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>

#include "app/CodeList.h"
#include "app/CodeName.h"
#include "app/ColourName.h"
#include "app/ImageList.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

constexpr int CodesRow = 1;
constexpr int ColoursRow = 2;
constexpr int OpacitiesRow = 3;
constexpr int ButtonColumn = 5;

/// Before the 16 digits stands the entry that keeps what the first stream has.
int RowOfNibble(const std::optional<std::uint8_t>& nibble) {
  return nibble ? *nibble + 1 : 0;
}

std::optional<std::uint8_t> NibbleOfRow(int row) {
  return row > 0 ? std::optional(static_cast<std::uint8_t>(row - 1)) : std::nullopt;
}

void AddNibbles(QComboBox* list) {
  list->addItem(Ui::Tr("as 1st"));
  list->setItemData(0, Ui::Tr("As the first stream has it"), Qt::AccessibleTextRole);
  for (int nibble = 0; nibble < 16; ++nibble) {
    list->addItem(QString::number(nibble, 16).toUpper());
  }
}

}  // namespace

MergedCodesForm::MergedCodesForm(const Document& document, QWidget* parent)
    : QWidget(parent), document_(document), grid_(new QGridLayout(this)) {
  setObjectName(QStringLiteral("Form_MergedCodes"));
  Build();
  ShowPalette();
  ShowCodes();
  connect(&document_, &Document::MergeChanged, this, &MergedCodesForm::ShowCodes);
  connect(&document_, &Document::PaletteChanged, this, &MergedCodesForm::ShowPalette);
  for (const Lists& lists : {codes_, colours_, opacities_}) {
    for (QComboBox* list : lists) {
      connect(list, &QComboBox::currentIndexChanged, this, [this] { Choose(ChosenCodes()); });
    }
  }
  connect(default_, &QAbstractButton::clicked, this, [this] { Choose(MergedCodes()); });
}

QComboBox* MergedCodesForm::AddList(const QString& name, std::size_t code, int row, const QString& inWords) {
  auto* list = new CodeList(this);
  list->setObjectName(QStringLiteral("%1_%2").arg(name).arg(code));
  list->setAccessibleName(inWords);
  list->setToolTip(inWords);
  list->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  list->setMinimumContentsLength(4);
  grid_->addWidget(list, row, static_cast<int>(code) + 1);
  return list;
}

void MergedCodesForm::Build() {
  const int gap = fontMetrics().height() / 3;
  grid_->setContentsMargins(0, 0, 0, 0);
  grid_->setSpacing(gap);
  for (std::size_t code = 0; code < 4; ++code) {
    auto* heading = new QLabel(QStringLiteral("%1 %2").arg(code).arg(CodeName(code)), this);
    grid_->addWidget(heading, 0, static_cast<int>(code) + 1);
    codes_[code] = AddList(QStringLiteral("Combo_SecondaryCode"), code, CodesRow,
                           Ui::Tr("Code that the second stream's %1 becomes").arg(CodeName(code)));
    for (std::size_t becomes = 0; becomes < 4; ++becomes) {
      codes_[code]->addItem(QString::number(becomes));
      codes_[code]->setItemData(static_cast<int>(becomes),
                                QStringLiteral("%1, %2").arg(becomes).arg(CodeName(becomes)),
                                Qt::AccessibleTextRole);
    }
    colours_[code] = AddList(QStringLiteral("Combo_ResultColour"), code, ColoursRow,
                             Ui::Tr("Palette entry of the result's %1").arg(CodeName(code)));
    AddNibbles(colours_[code]);
    opacities_[code] = AddList(QStringLiteral("Combo_ResultOpacity"), code, OpacitiesRow,
                               Ui::Tr("Opacity of the result's %1").arg(CodeName(code)));
    AddNibbles(opacities_[code]);
    grid_->setColumnStretch(static_cast<int>(code) + 1, 1);
  }
  const auto addLabel = [&](int row, const QString& text, QWidget* buddy) {
    auto* label = new QLabel(text, this);
    label->setBuddy(buddy);
    grid_->addWidget(label, row, 0);
  };
  addLabel(CodesRow, Ui::Tr("2nd becomes"), codes_[0]);
  addLabel(ColoursRow, Ui::Tr("Colors"), colours_[0]);
  addLabel(OpacitiesRow, Ui::Tr("Opacities"), opacities_[0]);
  default_ = new QPushButton(Ui::Tr("De&fault"), this);
  default_->setObjectName(QStringLiteral("Command_DefaultCodes"));
  default_->setToolTip(
      Ui::Tr("The second stream's codes stay, in the colours and opacities of the first stream"));
  default_->setAutoDefault(true);  // Return presses it, as Space does
  grid_->addWidget(default_, CodesRow, ButtonColumn);
}

void MergedCodesForm::ShowCodes() {
  const MergedCodes& codes = document_.CodesOfMerge();
  const auto select = [](QComboBox* list, int row) {
    const QSignalBlocker blocked(list);
    list->setCurrentIndex(row);
  };
  for (std::size_t code = 0; code < 4; ++code) {
    select(codes_[code], codes.OfSecondary[code]);
    select(colours_[code], RowOfNibble(codes.Colours[code]));
    select(opacities_[code], RowOfNibble(codes.Contrasts[code]));
  }
}

void MergedCodesForm::ShowPalette() {
  for (std::size_t entry = 0; entry < document_.Palette().size(); ++entry) {
    const Rgb colour = document_.Palette()[entry];
    const QIcon picture(DrawEntryPicture(colour));
    const int row = RowOfNibble(static_cast<std::uint8_t>(entry));
    for (QComboBox* list : colours_) {
      list->setItemIcon(row, picture);
      list->setItemData(row, list->itemText(row) + QStringLiteral(", ") + ColourName(colour),
                        Qt::AccessibleTextRole);
    }
  }
}

void MergedCodesForm::Choose(const MergedCodes& codes) {
  emit Chosen(codes);
  ShowCodes();  // as they were, where they could not be taken just now
}

MergedCodes MergedCodesForm::ChosenCodes() const {
  MergedCodes chosen;
  for (std::size_t code = 0; code < 4; ++code) {
    chosen.OfSecondary[code] = static_cast<std::uint8_t>(codes_[code]->currentIndex());
    chosen.Colours[code] = NibbleOfRow(colours_[code]->currentIndex());
    chosen.Contrasts[code] = NibbleOfRow(opacities_[code]->currentIndex());
  }
  return chosen;
}

QList<QWidget*> MergedCodesForm::TabOrder() const {
  QList<QWidget*> order;
  for (const Lists& lists : {codes_, colours_, opacities_}) {
    order.append(QList<QWidget*>(lists.begin(), lists.end()));
  }
  order.insert(4, default_);
  return order;
}

}  // namespace quillmark
