#include "app/ProgramChainsDialog.h"

#include <algorithm>

#include <QAbstractTableModel>
#include <QCache>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include "app/CountText.h"
#include "app/FramedSubtitle.h"
#include "app/PaletteStrip.h"
#include "app/SubtitleFrame.h"
#include "app/Ui.h"
#include "render/SubtitleDescription.h"
#include "render/Thumbnail.h"

namespace quillmark {
namespace {

struct ChainColumns {
  enum Column { Number, What, Programs, Cells, Colours, Picture, Columns };
};

// In logical pixels.
constexpr QSize PictureRoom(220, 36);
constexpr int RowHeight = 40;
constexpr int MostRows = 7;        ///< in sight at once
constexpr int KeptPictures = 200;  ///< more than are ever in sight

/// A row a program chain. Pictures are drawn when they come into sight: a disc may have some hundred chains.
class ChainModel : public QAbstractTableModel {
 public:
  ChainModel(const IfoInfo& info, const ChainTrial& trial, const QWidget& view)
      : chains_(info.Chains), trial_(trial), view_(view), pictures_(KeptPictures) {}

  [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(chains_.size());
  }
  [[nodiscard]] int columnCount(const QModelIndex& parent) const override {
    return parent.isValid() ? 0 : static_cast<int>(ChainColumns::Columns);
  }
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) {
      return {};
    }
    const QStringList names = {Ui::Tr("Chain"), Ui::Tr("What it is"), Ui::Tr("Programs"),
                               Ui::Tr("Cells"), Ui::Tr("Palette"),    Ui::Tr("Subtitle")};
    return names.value(section);
  }
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
    const ProgramChain& chain = chains_[static_cast<std::size_t>(index.row())];
    switch (role) {
      case Qt::DisplayRole:
        return TextOf(index, chain);
      case Qt::DecorationRole:
        return PictureOf(index, chain);
      case Qt::AccessibleTextRole:
      case Qt::ToolTipRole:
        return index.column() == ChainColumns::Colours ? QVariant(PaletteText(chain.Palette)) : QVariant();
      default:
        return {};
    }
  }

 private:
  [[nodiscard]] static QVariant TextOf(const QModelIndex& index, const ProgramChain& chain) {
    switch (index.column()) {
      case ChainColumns::Number:
        return CountText(index.row() + 1);
      case ChainColumns::What:
        return chain.IsDummy() ? Ui::Tr("%1, no picture", {QString::fromStdString(ChainText(chain))})
                               : QString::fromStdString(ChainText(chain));
      case ChainColumns::Programs:
        return CountText(chain.Programs);
      case ChainColumns::Cells:
        return CountText(chain.Cells);
      default:
        return {};
    }
  }

  [[nodiscard]] QVariant PictureOf(const QModelIndex& index, const ProgramChain& chain) const {
    if (index.column() == ChainColumns::Colours) {
      return Untinted(
          DrawSwatches(chain.Palette, view_.palette().color(QPalette::Mid), view_.devicePixelRatioF()));
    }
    if (index.column() != ChainColumns::Picture || !trial_.Index) {
      return {};
    }
    if (const QIcon* const kept = pictures_.object(index.row())) {
      return *kept;
    }
    const QIcon drawn = Draw(chain.Palette);
    pictures_.insert(index.row(), new QIcon(drawn));
    return drawn;
  }

  [[nodiscard]] QIcon Draw(const DvdPalette& palette) const {
    std::vector<std::uint8_t> buffer;
    const SubtitleUnit unit = UnitOf(trial_.Stream, *trial_.Index, buffer);
    const auto described = DescribeSubtitle(unit);
    if (!described) {
      return {};
    }
    const double scale = view_.devicePixelRatioF();
    return Untinted(QPixmap::fromImage(
        painter_.Paint(unit.Bytes, described->Control, MakeCodeColours(palette, described->Control),
                       {.Pixels = (QSizeF(PictureRoom) * scale).toSize(), .Scale = scale})));
  }

  const std::vector<ProgramChain>& chains_;
  const ChainTrial& trial_;
  const QWidget& view_;
  mutable QCache<int, QIcon> pictures_;
  mutable ThumbnailPainter painter_;
};

}  // namespace

ProgramChainsDialog::ProgramChainsDialog(const QString& name, const IfoInfo& info, ChainTrial trial,
                                         QWidget* parent)
    : QDialog(parent), info_(info), trial_(trial) {
  setObjectName(QStringLiteral("ProgramChainsDialog"));
  setWindowTitle(Ui::Tr("Palettes of a title"));
  auto* rows = new QVBoxLayout(this);
  auto* label =
      new QLabel(Ui::Tr("Program &chains of %1", {QString(name).replace(u'&', QStringLiteral("&&"))}), this);
  rows->addWidget(label);
  BuildList(name);
  label->setBuddy(List_ProgramChains);
  rows->addWidget(List_ProgramChains);
  if (!info_.Notes.empty()) {
    QStringList notes;
    for (const std::string& note : info_.Notes) {
      notes.append(QString::fromStdString(note));
    }
    auto* damage = new QLabel(notes.join(QStringLiteral("; ")), this);
    damage->setObjectName(QStringLiteral("Label_Notes"));
    damage->setWordWrap(true);
    rows->addWidget(damage);
  }
  Picture_Chain = new SubtitleFrame(trial_.FrameLines, this);
  Picture_Chain->setObjectName(QStringLiteral("Picture_Chain"));
  Picture_Chain->setAccessibleName(Ui::Tr("The current subtitle in the palette of the chosen chain"));
  Picture_Chain->setVisible(trial_.Index.has_value());
  rows->addWidget(Picture_Chain, 1);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  auto* use = buttons->addButton(Ui::Tr("&Use this palette"), QDialogButtonBox::AcceptRole);
  use->setObjectName(QStringLiteral("Command_Use"));
  use->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);

  connect(List_ProgramChains->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &ProgramChainsDialog::ShowChain);
  connect(List_ProgramChains, &QTableView::doubleClicked, this, &QDialog::accept);
  List_ProgramChains->setCurrentIndex(
      List_ProgramChains->model()->index(FirstChoice(), ChainColumns::Number));
  List_ProgramChains->setFocus();
}

void ProgramChainsDialog::BuildList(const QString& name) {
  List_ProgramChains = new QTableView(this);
  auto* model = new ChainModel(info_, trial_, *List_ProgramChains);
  model->setParent(List_ProgramChains);
  List_ProgramChains->setModel(model);
  List_ProgramChains->setObjectName(QStringLiteral("List_ProgramChains"));
  List_ProgramChains->setAccessibleName(Ui::Tr("Program chains of %1", {name}));
  List_ProgramChains->setSelectionBehavior(QAbstractItemView::SelectRows);
  List_ProgramChains->setSelectionMode(QAbstractItemView::SingleSelection);
  List_ProgramChains->setTabKeyNavigation(false);
  List_ProgramChains->setShowGrid(false);
  List_ProgramChains->setWordWrap(false);
  List_ProgramChains->setCornerButtonEnabled(false);
  List_ProgramChains->setIconSize(PictureRoom);
  List_ProgramChains->verticalHeader()->setDefaultSectionSize(RowHeight);
  List_ProgramChains->verticalHeader()->hide();
  QHeaderView& columns = *List_ProgramChains->horizontalHeader();
  columns.setHighlightSections(false);
  columns.setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  List_ProgramChains->setColumnHidden(ChainColumns::Picture, !trial_.Index);
  List_ProgramChains->resizeColumnsToContents();
  columns.setStretchLastSection(true);  // from its contents' width on
  const int frame = 2 * List_ProgramChains->frameWidth();
  List_ProgramChains->setMinimumWidth(columns.length() + frame +
                                      List_ProgramChains->verticalScrollBar()->sizeHint().width());
  List_ProgramChains->setMinimumHeight(columns.sizeHint().height() +
                                       std::min(static_cast<int>(info_.Chains.size()), MostRows) * RowHeight +
                                       frame);
}

/// The chain of the present palette, else the first title that shows a picture.
int ProgramChainsDialog::FirstChoice() const {
  const auto& chains = info_.Chains;
  auto found = std::ranges::find(chains, trial_.Present, &ProgramChain::Palette);
  if (found == chains.end()) {
    found = std::ranges::find_if(chains, [](const ProgramChain& chain) {
      return chain.Place == ChainPlace::Title && !chain.IsDummy();
    });
  }
  return found == chains.end() ? 0 : static_cast<int>(found - chains.begin());
}

const ProgramChain& ProgramChainsDialog::Chosen() const {
  return info_.Chains[static_cast<std::size_t>(std::max(List_ProgramChains->currentIndex().row(), 0))];
}

void ProgramChainsDialog::ShowChain() {
  if (trial_.Index) {
    const FramedSubtitle subtitle = LookAt(trial_.Stream, *trial_.Index, Chosen().Palette);
    Picture_Chain->Show(subtitle.Area(), subtitle.Picture);
  }
}

}  // namespace quillmark
