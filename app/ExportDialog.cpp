#include "app/ExportDialog.h"

#include <algorithm>
#include <utility>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "app/CountText.h"
#include "app/Dialogs.h"
#include "app/LanguageName.h"
#include "app/PathText.h"
#include "app/SubtitleIndexes.h"
#include "app/Ui.h"

namespace quillmark {
namespace {

/// More names than anybody reads.
constexpr std::size_t MaxNames = 4;

/// "a.idx and a.sub"; many are cut short: "a_001.png, a_002.png, a_003.png, a_004.png and 59 more".
QString NamesText(const std::vector<QString>& paths) {
  QStringList names;
  for (std::size_t i = 0; i < std::min(paths.size(), MaxNames); ++i) {
    names.append(CutInTheMiddle(QFileInfo(paths[i]).fileName()));
  }
  const QString last =
      paths.size() > MaxNames
          ? Ui::Tr("%1 more", {CountText(static_cast<std::int64_t>(paths.size() - MaxNames))})
          : names.takeLast();
  return names.isEmpty() ? last : Ui::Tr("%1 and %2", {names.join(QStringLiteral(", ")), last});
}

QString TwoLetters(QLocale::Language language) {
  return QLocale::languageToCode(language, QLocale::ISO639Part1);
}

/// The names of all languages that have a code of two letters, and the codes.
QList<std::pair<QString, QString>> KnownLanguages() {
  QList<std::pair<QString, QString>> languages;
  for (int i = QLocale::C + 1; i <= QLocale::LastLanguage; ++i) {
    const auto language = static_cast<QLocale::Language>(i);
    if (const QString code = TwoLetters(language); code.size() == 2) {
      languages.append({LanguageName(language), code});
    }
  }
  std::ranges::sort(languages);
  return languages;
}

}  // namespace

ExportDialog::ExportDialog(ExportSubject subject, QWidget* parent)
    : QDialog(parent), subject_(std::move(subject)) {
  setObjectName(QStringLiteral("ExportDialog"));
  setWindowTitle(Ui::Tr("Export"));
  auto* rows = new QVBoxLayout(this);
  auto* form = new QFormLayout;
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  rows->addLayout(form);

  Combo_What = new QComboBox(this);
  Combo_What->setObjectName(QStringLiteral("Combo_What"));
  for (const ExportFormat& format : ExportFormats()) {
    Combo_What->addItem(format.Name, static_cast<int>(format.Kind));
  }
  form->addRow(Ui::Tr("&What"), Combo_What);
  auto* scope = new QHBoxLayout;
  BuildScope(scope);
  form->addRow(Ui::Tr("Subtitles"), scope);
  auto* path = new QHBoxLayout;
  BuildPath(path);
  form->addRow(Ui::Tr("&File"), path);
  static_cast<QLabel*>(form->labelForField(path))->setBuddy(Text_Path);
  BuildLanguages();
  form->addRow(Ui::Tr("&Language"), Combo_Language);

  Label_Files = new QLabel(this);
  Label_Files->setObjectName(QStringLiteral("Label_Files"));
  Label_Files->setTextFormat(Qt::PlainText);
  Label_Files->setWordWrap(true);
  Label_Files->setMinimumHeight(3 * fontMetrics().lineSpacing());
  Label_Files->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  rows->addWidget(Label_Files);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
  Command_Export = buttons->addButton(Ui::Tr("&Export"), QDialogButtonBox::AcceptRole);
  Command_Export->setObjectName(QStringLiteral("Command_Export"));
  Command_Export->setDefault(true);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  rows->addWidget(buttons);

  connect(Combo_What, &QComboBox::currentIndexChanged, this, &ExportDialog::KindChosen);
  connect(Option_All, &QRadioButton::toggled, this, &ExportDialog::ShowFiles);
  connect(Text_Path, &QLineEdit::textChanged, this, &ExportDialog::ShowFiles);
  KindChosen();
}

void ExportDialog::BuildScope(QLayout* line) {
  const auto option = [&](const char* name, const QString& text) {
    auto* button = new QRadioButton(text, this);
    button->setObjectName(QLatin1String(name));
    line->addWidget(button);
    return button;
  };
  const auto selected = static_cast<std::int64_t>(subject_.Selected.size());
  Option_All = option("Option_All", Ui::Tr("&All %1", {CountText(subject_.Stream.Count)}));
  Option_Selected =
      option("Option_Selected", Ui::Tr("Those &selected in the list: %1", {CountText(selected)}));
  Option_Selected->setEnabled(selected > 0);
  (selected > 1 ? Option_Selected : Option_All)->setChecked(true);
}

void ExportDialog::BuildPath(QLayout* line) {
  Text_Path = new QLineEdit(this);
  Text_Path->setObjectName(QStringLiteral("Text_Path"));
  Text_Path->setMinimumWidth(fontMetrics().averageCharWidth() * 60);
  auto* browse = new QPushButton(Ui::Tr("&Browse..."), this);
  browse->setObjectName(QStringLiteral("Command_Browse"));
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &ExportDialog::Browse);
  line->addWidget(Text_Path);
  line->addWidget(browse);
}

void ExportDialog::BuildLanguages() {
  Combo_Language = new QComboBox(this);
  Combo_Language->setObjectName(QStringLiteral("Combo_Language"));
  Combo_Language->setToolTip(Ui::Tr("What players call the subtitles; the subtitles are not changed"));
  Combo_Language->setMaxVisibleItems(20);
  Combo_Language->addItem(Ui::Tr("unknown"), QString());
  for (const auto& [name, code] : KnownLanguages()) {
    Combo_Language->addItem(name + QStringLiteral(" (") + code + u')', code);
  }
  const QString tag = QString::fromStdString(subject_.Language).section(u'-', 0, 0).toLower();
  const int known = Combo_Language->findData(TwoLetters(QLocale::codeToLanguage(tag)));
  Combo_Language->setCurrentIndex(tag.isEmpty() ? 0 : std::max(known, 0));
}

ExportKind ExportDialog::Kind() const {
  return static_cast<ExportKind>(Combo_What->currentData().toInt());
}

/// A path that the user chose stays, with the ending of the new kind.
void ExportDialog::KindChosen() {
  const bool isProposed = Text_Path->text() == proposed_;
  const ExportFormat& format = FormatOf(Kind());
  proposed_ = ProposedPath(Kind());
  Text_Path->setText(isProposed ? proposed_ : ReplaceExtension(Text_Path->text(), format.Ending));
  Combo_Language->setEnabled(format.TakesLanguage);
  ShowFiles();
}

QString ExportDialog::ProposedPath(ExportKind kind) const {
  const QString ending = FormatOf(kind).Ending;
  const QString stream = SupPathOrDefault(subject_.Path);
  const QString beside = ReplaceExtension(stream, ending);
  const bool isFree =
      kind != ExportKind::Sup &&
      ExistingPaths(PathsOf({.What = kind, .Path = beside, .Language = {}}, subject_.Stream)).empty();
  // As Save SUP has it.
  return isFree ? beside : ReplaceExtension(stream, QStringLiteral("_new") + ending);
}

void ExportDialog::Browse() {
  const QString path = Order().Path;
  const ExportFormat& format = FormatOf(Kind());
  const QString chosen =
      SaveFileName(this, FolderOf(path), path, format.FileTypes, u'*' + format.Ending.toUpper());
  if (!chosen.isEmpty()) {
    Text_Path->setText(chosen);
  }
}

ExportOrder ExportDialog::Order() const {
  const QString ending = FormatOf(Kind()).Ending;
  QString path = Text_Path->text().trimmed();
  if (!path.isEmpty()) {
    path = QDir(FolderOf(SupPathOrDefault(subject_.Path))).absoluteFilePath(path);
    const bool isPacks =
        Kind() == ExportKind::VobSub && path.endsWith(QLatin1String(".sub"), Qt::CaseInsensitive);
    if (!isPacks && !path.endsWith(ending, Qt::CaseInsensitive)) {
      path += ending;
    }
  }
  return {.What = Kind(),
          .Path = QDir::toNativeSeparators(path),
          .Only = Option_Selected->isChecked() ? SetOf(subject_.Selected) : SubtitleSet::All(),
          .Language = Combo_Language->isEnabled() ? Combo_Language->currentData().toString().toStdString()
                                                  : std::string(),
          .Existing = mayReplace_ ? Overwriting::Allowed : Overwriting::Refused};
}

void ExportDialog::ShowFiles() {
  const ExportOrder order = Order();
  Command_Export->setEnabled(!order.Path.isEmpty());
  if (order.Path.isEmpty()) {
    Label_Files->setText({});
    return;
  }
  const std::vector<QString> paths = PathsOf(order, subject_.Stream);
  const std::vector<QString> existing = ExistingPaths(paths);
  QString text = Ui::Tr("Writes %1", {NamesText(paths)});
  if (!existing.empty()) {
    text += u'\n' + Ui::Tr("There already: %1", {NamesText(existing)});
  }
  Label_Files->setText(text);
}

void ExportDialog::accept() {
  const std::vector<QString> existing = ExistingPaths(PathsOf(Order(), subject_.Stream));
  mayReplace_ =
      !existing.empty() &&
      ConfirmWarning(this, Ui::Tr("There already: %1.\r\nReplace what is there?", {NamesText(existing)}));
  if (existing.empty() || mayReplace_) {
    QDialog::accept();
  }
}

}  // namespace quillmark
