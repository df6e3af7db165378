#include "app/CompareWindow.h"

#include <utility>

#include <QCheckBox>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QScreen>
#include <QSplitter>
#include <QVBoxLayout>

#include "app/Comparison.h"
#include "app/DifferenceModel.h"
#include "app/Document.h"
#include "app/FramedSubtitle.h"
#include "app/SubtitleFacts.h"
#include "app/SubtitleFrame.h"
#include "app/SubtitleTable.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

constexpr QSize UsualSize(900, 660);
constexpr int TitleLetters = 40;
constexpr int LeastDifferences = 4;  // rows of the list that are always in sight

/// What is told of a subtitle, each with its name.
using FactTexts = std::vector<std::pair<QString, QString>>;

FactTexts FactsOfSubtitle(const FramedSubtitle& subtitle) {
  const SubtitleFacts facts{.Index = static_cast<std::size_t>(subtitle.Number - 1),
                            .StartTicks = subtitle.Start,
                            .Described = subtitle.Described,
                            .Over = std::nullopt};
  const QString start = Ui::Tr("Start");
  if (!facts.Described) {
    return {{start, facts.StartText()}, {QString(), Ui::Tr("cannot be shown")}};
  }
  const QString codes = facts.CodesText();
  return {{start, facts.StartText()},
          {Ui::Tr("End"), facts.EndText()},
          {Ui::Tr("Seconds"), facts.DurationText()},
          {Ui::Tr("Place"), facts.PlaceText()},
          {Ui::Tr("Size"), facts.SizeText()},
          {Ui::Tr("Colours"), codes.section(u' ', 0, 0)},
          {Ui::Tr("Opacities"), codes.section(u' ', 1, 1)},
          {Ui::Tr("Forced"), subtitle.IsForced ? Ui::Tr("yes") : Ui::Tr("no")}};
}

/// As text of a label, in bold where `other` says otherwise.
QString FactsText(const FactTexts& facts, const FactTexts& other) {
  QStringList texts;
  for (std::size_t i = 0; i < facts.size(); ++i) {
    const QString text = (facts[i].first + u' ' + facts[i].second)
                             .trimmed()
                             .toHtmlEscaped()
                             .replace(u' ', QStringLiteral("&nbsp;"));
    const bool differs = !other.empty() && (i >= other.size() || facts[i] != other[i]);
    texts.append(differs ? QStringLiteral("<b>") + text + QStringLiteral("</b>") : text);
  }
  return texts.join(QStringLiteral(" &nbsp; "));
}

}  // namespace

CompareWindow::CompareWindow(const Document& document, Comparison& comparison, QWidget* parent)
    // A tool window leaves the keys of the main window's commands working.
    : QWidget(parent, Qt::Tool | Qt::WindowCloseButtonHint | Qt::WindowMaximizeButtonHint),
      document_(document),
      comparison_(comparison),
      model_(new DifferenceModel(document, comparison, this)) {
  setObjectName(QStringLiteral("CompareWindow"));
  Build();
  resize(sizeHint());
  connect(&comparison_, &Comparison::Changed, this, &CompareWindow::FollowComparison);
  connect(&document_, &Document::NumberChanged, this, &CompareWindow::SettleLater);
  connect(&document_, &Document::PaletteChanged, this, &CompareWindow::ShowPair);
  connect(&document_, &Document::FrameLinesChanged, this, [this] {
    for (const Half& half : halves_) {
      half.Frame->SetLines(document_.FrameLines());
    }
  });
  connect(onlyDifferences_, &QCheckBox::toggled, this, &CompareWindow::ShowRows);
  connect(table_->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
          &CompareWindow::CurrentRowMoved);
  connect(table_, &QAbstractItemView::activated, this, &CompareWindow::ChooseCurrent);
  connect(table_, &QAbstractItemView::clicked, this, &CompareWindow::ChooseCurrent);
  connect(table_, &SubtitleTable::NumberTyped, this, [this](std::int64_t number) {
    const auto compared =
        number > 0 ? comparison_.RowOf(static_cast<std::size_t>(number - 1)) : std::optional<std::size_t>();
    if (const auto row = compared ? model_->RowOf(*compared) : std::nullopt) {
      table_->GoToRow(*row);
    }
  });
}

void CompareWindow::Build() {
  counts_ = new QLabel(this);
  counts_->setObjectName(QStringLiteral("Label_Differences"));
  counts_->setWordWrap(true);
  counts_->setTextFormat(Qt::PlainText);
  counts_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  onlyDifferences_ = new QCheckBox(Ui::Tr("&Only differences"), this);
  onlyDifferences_->setObjectName(QStringLiteral("Check_OnlyDifferences"));
  onlyDifferences_->setToolTip(Ui::Tr("Leave out the subtitles that are the same in both files"));
  onlyDifferences_->setChecked(true);
  auto* close = new QPushButton(Ui::Tr("&Close"), this);
  close->setObjectName(QStringLiteral("Command_CloseCompare"));
  connect(close, &QAbstractButton::clicked, this, &QWidget::close);

  auto* splitter = new QSplitter(Qt::Vertical, this);
  splitter->setChildrenCollapsible(false);
  table_ = new SubtitleTable(splitter);
  table_->setObjectName(QStringLiteral("List_Differences"));
  table_->setAccessibleName(Ui::Tr("Differences"));
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setModel(model_);
  const QFontMetrics font = fontMetrics();
  table_->setColumnWidth(DifferenceModel::Here,
                         font.horizontalAdvance(Ui::Tr("# here") + QStringLiteral(" 00")));
  table_->setColumnWidth(DifferenceModel::There,
                         font.horizontalAdvance(Ui::Tr("# there") + QStringLiteral(" 00")));
  table_->setColumnWidth(DifferenceModel::Start, font.horizontalAdvance(QStringLiteral("00:00:00.00 00")));
  auto* pictures = new QWidget(splitter);
  auto* sides = new QHBoxLayout(pictures);
  sides->setContentsMargins(0, 0, 0, 0);
  sides->addWidget(BuildHalf(halves_[0], QStringLiteral("Here"), Ui::Tr("Picture here")), 1);
  sides->addWidget(BuildHalf(halves_[1], QStringLiteral("There"), Ui::Tr("Picture in the other file")), 1);
  table_->setMinimumHeight(table_->horizontalHeader()->sizeHint().height() +
                           LeastDifferences * table_->verticalHeader()->defaultSectionSize() +
                           2 * table_->frameWidth());
  splitter->setStretchFactor(0, 2);
  splitter->setStretchFactor(1, 5);

  auto* narrowing = new QHBoxLayout;
  narrowing->addWidget(onlyDifferences_, 1);
  narrowing->addWidget(close);
  auto* column = new QVBoxLayout(this);
  column->addWidget(counts_);
  column->addLayout(narrowing);
  column->addWidget(splitter, 1);
  for (const auto& [before, after] :
       {std::pair<QWidget*, QWidget*>(table_, onlyDifferences_), {onlyDifferences_, close}}) {
    setTabOrder(before, after);
  }
}

QWidget* CompareWindow::BuildHalf(Half& half, const QString& name, const QString& inWords) {
  auto* side = new QWidget(this);
  half.Title = new QLabel(side);
  half.Title->setObjectName(QStringLiteral("Label_Title") + name);
  half.Title->setTextFormat(Qt::PlainText);
  half.Frame = new SubtitleFrame(document_.FrameLines(), side);
  half.Frame->setObjectName(QStringLiteral("Frame_") + name);
  half.Frame->setAccessibleName(inWords);
  half.Facts = new QLabel(side);
  half.Facts->setObjectName(QStringLiteral("Label_Facts") + name);
  half.Facts->setTextFormat(Qt::RichText);
  half.Facts->setWordWrap(true);
  half.Facts->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  // As many lines in each half, whatever is bold in one of them.
  half.Facts->setMinimumHeight(2 * half.Facts->fontMetrics().lineSpacing());
  auto* column = new QVBoxLayout(side);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(half.Title);
  column->addWidget(half.Frame, 1);
  column->addWidget(half.Facts);
  return side;
}

QSize CompareWindow::sizeHint() const {
  return screen() == nullptr ? UsualSize : UsualSize.boundedTo(screen()->availableSize() * 9 / 10);
}

void CompareWindow::closeEvent(QCloseEvent* event) {
  comparison_.Close();
  QWidget::closeEvent(event);
}

void CompareWindow::keyPressEvent(QKeyEvent* event) {
  if (event->matches(QKeySequence::Cancel)) {
    close();
    return;
  }
  QWidget::keyPressEvent(event);
}

void CompareWindow::FollowComparison() {
  if (!comparison_.IsOpen()) {
    model_->Show(true);
    hide();
    return;
  }
  // "[*]" in a title stands for a mark of changes.
  QString name = comparison_.OtherName();
  setWindowTitle(Ui::Tr("Compared with %1", {name.replace(QStringLiteral("[*]"), QStringLiteral("[*][*]"))}));
  counts_->setText(comparison_.CountsText());
  ShowRows();
  SettleLater();
}

void CompareWindow::ShowRows() {
  {
    const QScopedValueRollback<bool> follows(follows_, true);
    model_->Show(onlyDifferences_->isChecked());
  }
  if (shown_ && *shown_ >= comparison_.Rows().size()) {
    shown_.reset();
  }
  SelectShown();
  ShowPair();
}

/// The document may pass several subtitles on its way to one.
void CompareWindow::SettleLater() {
  if (comparison_.IsOpen() && !std::exchange(settling_, true)) {
    QMetaObject::invokeMethod(this, &CompareWindow::FollowNumber, Qt::QueuedConnection);
  }
}

void CompareWindow::FollowNumber() {
  settling_ = false;
  const std::int64_t number = document_.LastTried();
  shown_ = number > 0 ? comparison_.RowOf(static_cast<std::size_t>(number - 1)) : std::nullopt;
  SelectShown();
  ShowPair();
}

void CompareWindow::SelectShown() {
  const QScopedValueRollback<bool> follows(follows_, true);
  const auto row = shown_ ? model_->RowOf(*shown_) : std::nullopt;
  if (!row) {
    table_->setCurrentIndex({});
  } else if (table_->currentIndex().row() != *row) {
    table_->GoToRow(*row);
  }
}

void CompareWindow::CurrentRowMoved() {
  if (!follows_ && table_->currentIndex().isValid()) {
    ChooseCurrent();
  }
}

void CompareWindow::ChooseCurrent() {
  shown_ = model_->ComparedRowOf(table_->currentIndex().row());
  ShowPair();
  const auto here = comparison_.Rows()[*shown_].Here();
  if (here && static_cast<std::int64_t>(*here) + 1 != document_.Number()) {
    emit Chosen(static_cast<std::int64_t>(*here) + 1);
  }
}

void CompareWindow::ShowPair() {
  const std::array streams = {&document_.Primary(), &comparison_.Other()};
  const std::array names = {Ui::Tr("Here"), comparison_.OtherName()};
  std::array<std::optional<std::size_t>, 2> indexes;
  if (shown_) {
    const ComparedRow& row = comparison_.Rows()[*shown_];
    indexes = {row.Here(), row.There()};
  }
  std::array<std::optional<FramedSubtitle>, 2> subtitles;
  std::array<FactTexts, 2> facts;
  for (std::size_t i = 0; i < subtitles.size(); ++i) {
    // An edit may have taken it out just now.
    if (indexes[i] && streams[i]->Holds(*indexes[i])) {
      subtitles[i] = LookAt(*streams[i], *indexes[i], document_.Palette());
      facts[i] = FactsOfSubtitle(*subtitles[i]);
    }
  }
  const auto areaOf = [&](std::size_t i) { return subtitles[i] ? subtitles[i]->Area() : QRect(); };
  for (std::size_t i = 0; i < subtitles.size(); ++i) {
    const Half& half = halves_[i];
    const QString number = subtitles[i] ? Ui::Tr("subtitle %1", {QString::number(subtitles[i]->Number)})
                           : shown_     ? Ui::Tr("none")
                                        : QString();
    const QString name =
        fontMetrics().elidedText(names[i], Qt::ElideMiddle, TitleLetters * fontMetrics().averageCharWidth());
    half.Title->setText(number.isEmpty() ? name : name + QStringLiteral(": ") + number);
    half.Frame->Show(areaOf(i), subtitles[i] ? subtitles[i]->Picture : QImage(), areaOf(1 - i));
    half.Frame->setAccessibleDescription(number);
    half.Facts->setText(FactsText(facts[i], facts[1 - i]));
  }
}

}  // namespace quillmark
