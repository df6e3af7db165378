#include "app/ToolDialog.h"

#include <algorithm>
#include <array>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/CountText.h"
#include "app/Dialogs.h"
#include "app/SubtitleFrame.h"
#include "app/SubtitleIndexes.h"
#include "app/ToolForm.h"
#include "app/ToolTrial.h"
#include "app/Ui.h"
#include "base/Words.h"
#include "sup/Timecode.h"

namespace quillmark {
namespace {

/// More lines than anybody reads; the count is told in any case.
constexpr std::size_t MaxLinesOfLeft = 1000;

QString Named(const char* prefix, std::string_view option) {
  return QString::fromLatin1(prefix) +
         QString::fromUtf8(option.data(), static_cast<qsizetype>(option.size()));
}

/// The first and the last subtitle, at the starts that they have.
QString PresentPoints(const SupStream& stream) {
  const auto point = [&stream](std::int32_t index) {
    return QString::number(index + 1) + u'=' +
           QString::fromStdString(FormatTimecode(stream.StartTime[static_cast<std::size_t>(index)]));
  };
  return stream.Count < 2 ? QString() : point(0) + u',' + point(stream.Count - 1);
}

QString ChangedText(const Tool& tool, const ToolTrial& trial) {
  return Ui::Tr("%n subtitle would be %1", "%n subtitles would be %1", trial.Changed,
                {QString::fromStdString(Words::Tr(tool.Done))});
}

QString OutcomeText(const Tool& tool, const ToolTrial& trial) {
  if (trial.SubtitlesAfter == 0) {
    return Ui::Tr("No subtitle would be left");
  }
  const auto left = static_cast<std::int64_t>(trial.Left.size());
  const QString changed = ChangedText(tool, trial);
  return left == 0 ? changed
                   : changed + QStringLiteral(", ") + Ui::Tr("%n has to be left", "%n have to be left", left);
}

QString LeftLines(const std::vector<LeftSubtitle>& left) {
  QString lines;
  const std::size_t shown = std::min(left.size(), MaxLinesOfLeft);
  for (std::size_t i = 0; i < shown; ++i) {
    lines +=
        Ui::Tr("Subtitle %1 %2", {CountText(left[i].Number), QString::fromStdString(LeftText(left[i]))}) +
        u'\n';
  }
  if (shown < left.size()) {
    lines += Ui::Tr("and %1 more", {CountText(static_cast<std::int64_t>(left.size() - shown))});
  }
  return lines.trimmed();
}

}  // namespace

ToolDialog::ToolDialog(const ToolForm& form, ToolSubject subject, QWidget* parent)
    : QDialog(parent), form_(form), subject_(std::move(subject)), tool_(FindTool(form.Tool)) {
  setWindowTitle(form.Name);
  setObjectName(QStringLiteral("ToolDialog"));
  tryLater_.setSingleShot(true);
  connect(&tryLater_, &QTimer::timeout, this, &ToolDialog::Try);

  auto* columns = new QVBoxLayout(this);
  auto* what = new QLabel(form.What, this);
  what->setWordWrap(true);
  columns->addWidget(what);
  auto* rows = new QFormLayout;
  columns->addLayout(rows);
  BuildFields(rows);
  if (TakesOnly()) {
    columns->addLayout(BuildScope());
  }
  columns->addLayout(BuildTrial());
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  Command_Run = buttons->addButton(form.Name, QDialogButtonBox::AcceptRole);
  Command_Run->setObjectName(QStringLiteral("Command_Run"));
  Command_Run->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  columns->addWidget(buttons);
  const FramedSubtitle now = LookAt(subject_.Stream, subject_.Index, subject_.Palette);
  areaBefore_ = now.Area();
  ShowSubtitle(0, &now);
  ShowWay();
  Try();
}

void ToolDialog::BuildFields(QFormLayout* rows) {
  if (!form_.Ways.empty()) {
    Combo_Way = new QComboBox(this);
    Combo_Way->setObjectName(QStringLiteral("Combo_Way"));
    for (const ToolWay& way : form_.Ways) {
      Combo_Way->addItem(way.Label);
    }
    connect(Combo_Way, &QComboBox::currentIndexChanged, this, &ToolDialog::ShowWay);
    rows->addRow(Ui::Tr("&How"), Combo_Way);
  }
  for (const ToolField& field : form_.Fields) {
    auto* row = new QWidget(this);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    QWidget* editor = MakeEditor(field);
    editor->setObjectName(Named("Field_", field.Option));
    line->addWidget(editor, field.What == ToolField::Kind::Stream ? 1 : 0);
    if (!field.Remark.isEmpty()) {
      line->addWidget(new QLabel(field.Remark, row));
    }
    if (field.What == ToolField::Kind::Stream) {
      auto* browse = new QPushButton(Ui::Tr("&Browse..."), row);
      browse->setObjectName(QStringLiteral("Command_Browse"));
      browse->setAutoDefault(false);
      connect(browse, &QPushButton::clicked, this,
              [this, editor] { BrowseFor(static_cast<QLineEdit*>(editor)); });
      line->addWidget(browse);
    } else {
      line->addStretch();
    }
    if (field.What == ToolField::Kind::Flag) {
      rows->addRow(row);
    } else {
      rows->addRow(field.Label, row);
      static_cast<QLabel*>(rows->labelForField(row))->setBuddy(editor);
      // Qt takes the name from a label that stands in the same widget.
      editor->setAccessibleName(QString(field.Label).remove(u'&'));
    }
    inputs_.push_back({.Field = &field, .Row = row, .Label = rows->labelForField(row), .Editor = editor});
  }
}

QWidget* ToolDialog::MakeEditor(const ToolField& field) {
  const auto changed = [this] { tryLater_.start(); };
  if (field.What == ToolField::Kind::Flag) {
    auto* flag = new QCheckBox(field.Label, this);
    flag->setChecked(!field.Initial.isEmpty());
    connect(flag, &QCheckBox::toggled, this, changed);
    return flag;
  }
  if (field.What == ToolField::Kind::Choice) {
    auto* choice = new QComboBox(this);
    for (const auto& [text, value] : field.Choices) {
      choice->addItem(text, value);
    }
    const QString initial = field.Option == "frame" ? QString::number(subject_.FrameLines) : field.Initial;
    choice->setCurrentIndex(choice->findData(initial));
    connect(choice, &QComboBox::currentIndexChanged, this, changed);
    return choice;
  }
  const bool isPoints = field.Option == "points";
  auto* text = new QLineEdit(isPoints ? PresentPoints(subject_.Stream) : field.Initial, this);
  text->setAccessibleDescription(field.Remark);
  const QFontMetrics metrics = text->fontMetrics();
  text->setMinimumWidth(metrics.horizontalAdvance(
      isPoints ? QStringLiteral("0000=00:00:00.00,0000=00:00:00.00  ") : QStringLiteral("000000000000")));
  connect(text, &QLineEdit::textChanged, this, changed);
  return text;
}

QLayout* ToolDialog::BuildScope() {
  const auto option = [this](const char* name, const QString& text) {
    auto* button = new QRadioButton(text, this);
    button->setObjectName(QLatin1String(name));
    connect(button, &QRadioButton::toggled, this, [this] { tryLater_.start(); });
    return button;
  };
  const auto selected = static_cast<std::int64_t>(subject_.Selected.size());
  Option_All = option("Option_All", Ui::Tr("&All %n subtitle", "&All %n subtitles", subject_.Stream.Count));
  Option_Selected =
      option("Option_Selected", Ui::Tr("Those s&elected in the list: %1", {CountText(selected)}));
  Option_These = option("Option_These", Ui::Tr("Th&ese:"));
  Text_Only = new QLineEdit(QString::number(subject_.Index + 1), this);
  Text_Only->setObjectName(QStringLiteral("Text_Only"));
  Text_Only->setAccessibleName(Ui::Tr("Numbers of the subtitles"));
  Text_Only->setToolTip(Ui::Tr("Numbers and ranges: 3,7-9,20-"));
  connect(Text_Only, &QLineEdit::textEdited, this, [this] {
    Option_These->setChecked(true);
    tryLater_.start();
  });
  Option_Selected->setEnabled(selected > 0);
  const bool takesOut = form_.Tool == "cut" || form_.Tool == "keep";
  (selected > 1 ? Option_Selected : takesOut ? Option_These : Option_All)->setChecked(true);

  auto* line = new QHBoxLayout;
  line->addWidget(Option_All);
  line->addWidget(Option_Selected);
  line->addWidget(Option_These);
  line->addWidget(Text_Only, 1);
  return line;
}

QLayout* ToolDialog::BuildTrial() {
  auto* sides = new QHBoxLayout;
  auto* facts =
      new QGroupBox(Ui::Tr("Subtitle %1", {CountText(static_cast<std::int64_t>(subject_.Index) + 1)}), this);
  auto* grid = new QGridLayout(facts);
  grid->addWidget(new QLabel(Ui::Tr("Now"), facts), 0, 1);
  grid->addWidget(new QLabel(Ui::Tr("Then"), facts), 0, 2);
  const std::array<QString, Facts> names = {Ui::Tr("Number"),         Ui::Tr("Start"),      Ui::Tr("End"),
                                            Ui::Tr("Position (X,Y)"), Ui::Tr("Size (W,H)"), Ui::Tr("Forced")};
  shown_.resize(2 * Facts);
  for (std::size_t i = 0; i < Facts; ++i) {
    const int row = static_cast<int>(i) + 1;
    grid->addWidget(new QLabel(names[i], facts), row, 0);
    for (std::size_t column = 0; column < 2; ++column) {
      auto* label = new QLabel(facts);
      label->setObjectName((column == 0 ? QStringLiteral("Label_Now_") : QStringLiteral("Label_Then_")) +
                           QString::number(i));
      label->setAccessibleName(column == 0 ? Ui::Tr("%1 now", {names[i]}) : Ui::Tr("%1 then", {names[i]}));
      QFont bold = label->font();
      bold.setBold(true);
      label->setMinimumWidth(QFontMetrics(bold).horizontalAdvance(QStringLiteral("00:00:00.00 ")));
      grid->addWidget(label, row, static_cast<int>(column) + 1);
      shown_[column * Facts + i] = label;
    }
  }
  grid->setRowStretch(static_cast<int>(Facts) + 1, 1);
  sides->addWidget(facts);
  Picture_Trial = new SubtitleFrame(subject_.FrameLines, this);
  Picture_Trial->setFixedSize(Picture_Trial->sizeHint());
  Picture_Trial->setAccessibleName(Ui::Tr("The subtitle in the frame"));
  Picture_Trial->setObjectName(QStringLiteral("Picture_Trial"));
  sides->addWidget(Picture_Trial, 0, Qt::AlignTop);

  auto* rows = new QVBoxLayout;
  rows->addLayout(sides);
  Label_Outcome = new QLabel(this);
  Label_Outcome->setObjectName(QStringLiteral("Label_Outcome"));
  Label_Outcome->setWordWrap(true);
  Label_Outcome->setTextFormat(Qt::PlainText);
  rows->addWidget(Label_Outcome);
  Text_Left = new QPlainTextEdit(this);
  Text_Left->setObjectName(QStringLiteral("Text_Left"));
  Text_Left->setAccessibleName(Ui::Tr("Subtitles that have to be left, and why"));
  Text_Left->setReadOnly(true);
  Text_Left->setTabChangesFocus(true);
  Text_Left->setMaximumHeight(5 * fontMetrics().lineSpacing());
  rows->addWidget(Text_Left);
  return rows;
}

void ToolDialog::BrowseFor(QLineEdit* path) {
  const QString chosen =
      OpenFileName(this, path->text().isEmpty() ? QString::fromStdString(subject_.Stream.Path) : path->text(),
                   Ui::Tr("SUP Files (*.SUP)"), QStringLiteral("*.SUP"));
  if (!chosen.isEmpty()) {
    path->setText(chosen);
  }
}

void ToolDialog::ShowWay() {
  for (const Input& input : inputs_) {
    const auto belongs = [&](const ToolWay& way) {
      return std::ranges::find(way.Options, input.Field->Option) != way.Options.end();
    };
    const bool isShown =
        Combo_Way == nullptr || belongs(form_.Ways[static_cast<std::size_t>(Combo_Way->currentIndex())]);
    input.Row->setVisible(isShown);
    if (input.Label != nullptr) {
      input.Label->setVisible(isShown);
    }
  }
  tryLater_.start();
}

bool ToolDialog::TakesOnly() const {
  return std::ranges::find(tool_->Options, std::string_view("only"), &ToolOption::Name) !=
         tool_->Options.end();
}

QString ToolDialog::Only() const {
  if (Option_Selected->isChecked()) {
    return QString::fromStdString(SetOf(subject_.Selected).Text());
  }
  return Option_These->isChecked() ? Text_Only->text() : QString();
}

StepText ToolDialog::Chosen() const {
  StepText step{.Tool = std::string(form_.Tool), .Options = {}};
  for (const Input& input : inputs_) {
    if (input.Row->isHidden()) {
      continue;
    }
    QString value;
    if (const auto* flag = qobject_cast<QCheckBox*>(input.Editor)) {
      value = flag->isChecked() ? QStringLiteral("true") : QString();
    } else if (const auto* choice = qobject_cast<QComboBox*>(input.Editor)) {
      value = choice->currentData().toString();
    } else if (const auto* text = qobject_cast<QLineEdit*>(input.Editor)) {
      value = text->text().trimmed();
    }
    if (!value.isEmpty()) {
      step.Options.emplace_back(input.Field->Option, value.toStdString());
    }
  }
  if (TakesOnly()) {
    const QString only = Only().trimmed();
    if (!Option_All->isChecked() || form_.Tool == "cut" || form_.Tool == "keep") {
      step.Options.emplace_back("only", Option_All->isChecked() ? "1-" : only.toStdString());
    }
  }
  return step;
}

void ToolDialog::Try() {
  const Result<ToolTrial> trial = TryStep(Chosen(), subject_.Stream, subject_.Index, subject_.Palette);
  if (trial) {
    ShowTrial(*trial);
    return;
  }
  QString reason = QString::fromStdString(trial.Reason());
  reason[0] = reason[0].toUpper();
  Label_Outcome->setText(reason);
  Text_Left->hide();
  Picture_Trial->Show({}, {}, areaBefore_);
  ShowSubtitle(1, nullptr);
  Command_Run->setEnabled(false);
}

void ToolDialog::ShowTrial(const ToolTrial& trial) {
  ShowSubtitle(1, trial.After ? &*trial.After : nullptr);
  Picture_Trial->Show(trial.After ? trial.After->Area() : QRect(),
                      trial.After ? trial.After->Picture : QImage(), areaBefore_);
  Label_Outcome->setText(OutcomeText(*tool_, trial));
  Text_Left->setPlainText(LeftLines(trial.Left));
  Text_Left->setVisible(!trial.Left.empty());
  Command_Run->setEnabled(trial.Changed > 0 && trial.SubtitlesAfter > 0);
}

void ToolDialog::ShowSubtitle(std::size_t column, const FramedSubtitle* subtitle) {
  std::array<QString, Facts> texts;
  texts.fill(QStringLiteral("-"));
  if (subtitle != nullptr) {
    texts[0] = CountText(subtitle->Number);
    texts[1] = QString::fromStdString(FormatTimecode(subtitle->Start));
    texts[2] =
        subtitle->End == 0 ? QStringLiteral("???") : QString::fromStdString(FormatTimecode(subtitle->End));
    if (subtitle->Described) {
      const QRect area = subtitle->Area();
      texts[3] = QString::number(area.x()) + QStringLiteral(", ") + QString::number(area.y());
      texts[4] = QString::number(area.width()) + u'x' + QString::number(area.height());
    }
    texts[5] = subtitle->IsForced ? Ui::Tr("yes") : Ui::Tr("no");
  }
  for (std::size_t i = 0; i < Facts; ++i) {
    QLabel* label = shown_[column * Facts + i];
    label->setText(texts[i]);
    QFont font = label->font();
    font.setBold(column == 1 && texts[i] != shown_[i]->text());
    label->setFont(font);
  }
}

}  // namespace quillmark
