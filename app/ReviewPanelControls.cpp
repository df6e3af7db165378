// What the review's panel consists of.

#include <initializer_list>

#include <QAction>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/MergedCodesForm.h"
#include "app/PairDelegate.h"
#include "app/PairModel.h"
#include "app/ReviewPanel.h"
#include "app/RowFollower.h"
#include "app/ShownField.h"
#include "app/SubtitleDelegate.h"
#include "app/SubtitleTable.h"
#include "app/Ui.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// How far the slider goes up and down; the box next to it takes every offset.
constexpr int MostSlid = 576;
constexpr int SliderPage = 16;
constexpr int LeastPairRows = 3;
constexpr int UsualPairRows = 8;
constexpr int UsualMessageLines = 2;
constexpr int PairKindLetters = 14;
constexpr int LongestJoinMs = MaxJoin / (TicksPerSecond / 1000);

QLineEdit* MakeLine(const QString& name, const QString& inWords, QWidget* parent) {
  auto* line = new ShownField({}, parent);
  line->setObjectName(name);
  line->setAccessibleName(inWords);
  return line;
}

int HeightOfMessages(const QPlainTextEdit& text, int lines) {
  return lines * text.fontMetrics().lineSpacing() +
         2 * (text.frameWidth() + static_cast<int>(text.document()->documentMargin()));
}

QString SortActionName(int column) {
  return QStringLiteral("Action_SortPairs_") + QString::number(column);
}

QHBoxLayout* MakeRow(QWidget* parent) {
  auto* row = new QHBoxLayout(parent);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(parent->fontMetrics().height() / 3);
  return row;
}

}  // namespace

void ReviewPanel::Build() {
  head_ = MakeLine(QStringLiteral("Text_Review"), Ui::Tr("Merge"), this);
  leftOut_ = MakeLine(QStringLiteral("Text_LeftOut"), Ui::Tr("Left out"), this);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(fontMetrics().height() / 3);
  column->addWidget(head_);
  column->addWidget(leftOut_);
  column->addWidget(BuildOffset());
  codesPlace_ = new QVBoxLayout();
  column->addLayout(codesPlace_);
  column->addWidget(BuildTimes());
  column->addWidget(BuildNarrowing());
  column->addWidget(BuildTable(), 1);
  BuildSorting();
}

void ReviewPanel::ShowCodes(bool shown) {
  showsCodes_->setArrowType(shown ? Qt::DownArrow : Qt::RightArrow);
  if (codes_ == nullptr) {
    codes_ = new MergedCodesForm(document_, this);
    codesPlace_->addWidget(codes_);
    connect(codes_, &MergedCodesForm::Chosen, this, &ReviewPanel::CodesChosen);
    QWidget* before = showsCodes_;
    for (QWidget* control : codes_->TabOrder()) {
      setTabOrder(before, control);
      before = control;
    }
  }
  codes_->setVisible(shown);
}

QWidget* ReviewPanel::BuildOffset() {
  auto* line = new QWidget(this);
  offset_ = new QSpinBox(line);
  offset_->setObjectName(QStringLiteral("Spin_YOffset"));
  offset_->setAccessibleName(Ui::Tr("Offset of the second stream in lines"));
  offset_->setToolTip(Ui::Tr("Lines that the second stream's subtitles are moved down; less than 0: up"));
  offset_->setRange(MinYOffset, MaxYOffset);
  slider_ = new QSlider(Qt::Horizontal, line);
  slider_->setObjectName(QStringLiteral("Slider_YOffset"));
  slider_->setAccessibleName(offset_->accessibleName());
  slider_->setToolTip(Ui::Tr("Move the second stream's subtitles up and down"));
  slider_->setRange(-MostSlid, MostSlid);
  slider_->setPageStep(SliderPage);
  suggest_ = new QPushButton(Ui::Tr("Su&ggest"), line);
  suggest_->setObjectName(QStringLiteral("Command_SuggestOffset"));
  suggest_->setToolTip(Ui::Tr(
      "Find the offset at which the fewest pixels of the whole merge are covered or clipped, and take it"));
  suggest_->setAutoDefault(true);  // Return presses it, as Space does
  showsCodes_ = new QToolButton(line);
  showsCodes_->setObjectName(QStringLiteral("Check_MergedCodes"));
  showsCodes_->setText(Ui::Tr("Codes"));
  showsCodes_->setToolTip(
      Ui::Tr("Give the second stream's pixel codes others, and the result its own colours"));
  showsCodes_->setAccessibleName(Ui::Tr("Codes and colours of the result"));
  showsCodes_->setCheckable(true);
  showsCodes_->setFocusPolicy(Qt::StrongFocus);
  showsCodes_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  showsCodes_->setArrowType(Qt::RightArrow);
  for (QWidget* control : std::initializer_list<QWidget*>{offset_, slider_}) {
    control->setFocusPolicy(Qt::StrongFocus);
    control->installEventFilter(this);
  }
  auto* label = new QLabel(Ui::Tr("Offset"), line);
  label->setBuddy(offset_);
  QHBoxLayout* row = MakeRow(line);
  row->addWidget(label);
  row->addWidget(offset_);
  row->addWidget(slider_, 1);
  row->addWidget(suggest_);
  row->addWidget(showsCodes_);
  return line;
}

QWidget* ReviewPanel::BuildTimes() {
  auto* line = new QWidget(this);
  pairs_ = new QRadioButton(Ui::Tr("Pairs"), line);
  pairs_->setObjectName(QStringLiteral("Option_Pairs"));
  pairs_->setToolTip(
      Ui::Tr("A packet for each of the first stream's subtitles, with the second stream's one over it "
             "that is shown longest at the same time"));
  pairs_->setChecked(true);
  split_ = new QRadioButton(Ui::Tr("Spl&it"), line);
  split_->setObjectName(QStringLiteral("Option_Split"));
  split_->setToolTip(
      Ui::Tr("Packets for whatever is shown at a time: the first stream's subtitle alone, both, or the "
             "second stream's alone, each until its own end"));
  join_ = new QSpinBox(line);
  join_->setObjectName(QStringLiteral("Spin_Join"));
  join_->setAccessibleName(Ui::Tr("Gaps to close in milliseconds"));
  join_->setToolTip(
      Ui::Tr("Where a split merge shows nothing for less than this, the packet before is shown longer"));
  join_->setRange(0, LongestJoinMs);
  join_->setSuffix(Ui::Tr(" ms"));
  join_->setFocusPolicy(Qt::StrongFocus);
  join_->installEventFilter(this);
  auto* label = new QLabel(Ui::Tr("Close gaps &under"), line);
  label->setBuddy(join_);
  QHBoxLayout* row = MakeRow(line);
  row->addWidget(pairs_);
  row->addWidget(split_);
  row->addStretch(1);
  row->addWidget(label);
  row->addWidget(join_);
  return line;
}

QWidget* ReviewPanel::BuildNarrowing() {
  auto* line = new QWidget(this);
  text_ = new QLineEdit(line);
  text_->setObjectName(QStringLiteral("Text_FilterPairs"));
  text_->setAccessibleName(Ui::Tr("Filter of the review"));
  text_->setPlaceholderText(Ui::Tr("Filter: 12, 100-200, 1:02, words"));
  text_->setToolTip(
      Ui::Tr("Show the first stream's subtitles of these numbers (12, 100-200), the one shown at a "
             "time (1:02), or those with a problem in these words"));
  text_->setClearButtonEnabled(true);
  kind_ = new QComboBox(line);
  kind_->setObjectName(QStringLiteral("Combo_FilterPairs"));
  kind_->setAccessibleName(Ui::Tr("Kind of problem"));
  kind_->setToolTip(Ui::Tr("Show what has this problem alone"));
  kind_->addItem(Ui::Tr("All"));
  kind_->addItem(Ui::Tr("With problems"));
  for (std::size_t kind = 0; kind < MergeProblemKinds; ++kind) {
    QString text = QString::fromStdString(MergeProblemPhrase(static_cast<MergeProblemKind>(kind)));
    text[0] = text[0].toUpper();
    kind_->addItem(text);
  }
  kind_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  kind_->setMinimumContentsLength(PairKindLetters);
  count_ = new QLabel(line);
  count_->setObjectName(QStringLiteral("Label_CountPairs"));
  QHBoxLayout* row = MakeRow(line);
  row->addWidget(text_, 1);
  row->addWidget(kind_);
  row->addWidget(count_);
  return line;
}

QWidget* ReviewPanel::BuildTable() {
  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->setObjectName(QStringLiteral("Splitter_Pairs"));
  table_ = new SubtitleTable(splitter);
  table_->setObjectName(QStringLiteral("List_Pairs"));
  table_->setAccessibleName(Ui::Tr("Merged subtitles"));
  table_->setModel(model_);
  table_->setItemDelegate(new PairDelegate(*model_, pictures_, table_));
  const QFontMetrics font = fontMetrics();
  const auto setWidth = [&](int column, const QString& widest) {
    table_->setColumnWidth(column, font.horizontalAdvance(widest));
  };
  setWidth(PairModel::Primary, QStringLiteral("00000 000"));
  setWidth(PairModel::Secondary, QStringLiteral("0000000"));
  table_->setColumnWidth(PairModel::Picture, 5 * SubtitleDelegate::RowHeight);
  setWidth(PairModel::Together, QStringLiteral("0000000"));
  setWidth(PairModel::Problems, QStringLiteral("00000 pixels of the second picture cover"));
  setWidth(PairModel::Covered, Ui::Tr("Covered") + QStringLiteral(" 00"));
  setWidth(PairModel::Clipped, Ui::Tr("Clipped") + QStringLiteral(" 00"));
  setWidth(PairModel::Recoloured, Ui::Tr("Recoloured") + QStringLiteral(" 00"));
  setWidth(PairModel::Bytes, QStringLiteral("00000000"));
  setWidth(PairModel::Start, QStringLiteral("00:00:00.00 0"));
  setWidth(PairModel::Duration, Ui::Tr("Duration") + QStringLiteral(" 0"));
  follower_ = new RowFollower(document_, *table_, this);
  problems_ = new QPlainTextEdit(splitter);
  problems_->setObjectName(QStringLiteral("Text_PairProblems"));
  problems_->setAccessibleName(Ui::Tr("What there is to know of the merged subtitle"));
  problems_->setToolTip(Ui::Tr("What there is to know of the current row"));
  problems_->setReadOnly(true);
  problems_->setTabChangesFocus(true);
  problems_->setUndoRedoEnabled(false);
  problems_->setMinimumHeight(HeightOfMessages(*problems_, 1));
  const auto heightOfRows = [this](int rows) {
    return table_->horizontalHeader()->sizeHint().height() + rows * SubtitleDelegate::RowHeight;
  };
  table_->setMinimumHeight(heightOfRows(LeastPairRows));
  splitter->setCollapsible(0, false);
  splitter->setStretchFactor(0, 1);
  splitter->setSizes({heightOfRows(UsualPairRows), HeightOfMessages(*problems_, UsualMessageLines)});
  return splitter;
}

/// By the headings, and by the context menu for who works with the keyboard.
void ReviewPanel::BuildSorting() {
  QHeaderView* header = table_->horizontalHeader();
  header->setSortIndicator(PairModel::Primary, Qt::AscendingOrder);
  header->setSortIndicatorShown(true);
  header->setSectionsClickable(true);
  // Where they are in sight, without moving the others.
  header->moveSection(header->visualIndex(PairModel::Start), PairModel::Picture);
  header->moveSection(header->visualIndex(PairModel::Duration), PairModel::Picture + 1);
  sorting_ = new QMenu(Ui::Tr("S&ort by"), table_);
  sorting_->setObjectName(QStringLiteral("Menu_SortPairs"));
  for (int column = 0; column < PairModel::Columns; ++column) {
    if (column == PairModel::Picture) {
      continue;
    }
    QAction* action =
        sorting_->addAction(model_->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString());
    action->setObjectName(SortActionName(column));
    connect(action, &QAction::triggered, header, [header, column] {
      const bool turns =
          header->sortIndicatorSection() == column && header->sortIndicatorOrder() == Qt::AscendingOrder;
      header->setSortIndicator(column, turns ? Qt::DescendingOrder : Qt::AscendingOrder);
    });
  }
  table_->addAction(sorting_->menuAction());
  ShowTimeColumns(false);
}

/// Packets of pairs have the times of the first stream's subtitles.
void ReviewPanel::ShowTimeColumns(bool shown) {
  QHeaderView* header = table_->horizontalHeader();
  for (const int column : {PairModel::Start, PairModel::Duration}) {
    table_->setColumnHidden(column, !shown);
    sorting_->findChild<QAction*>(SortActionName(column))->setVisible(shown);
    if (!shown && header->sortIndicatorSection() == column) {
      header->setSortIndicator(PairModel::Primary, Qt::AscendingOrder);
    }
  }
}

QList<QWidget*> ReviewPanel::TabOrder() const {
  return {head_,  leftOut_, offset_, slider_, suggest_, showsCodes_, pairs_,
          split_, join_,    text_,   kind_,   table_,   problems_};
}

}  // namespace quillmark
