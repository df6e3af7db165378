#include <cmath>

#include <QLineEdit>
#include <QPushButton>

#include "app/Dialogs.h"
#include "app/frmTest.h"
#include "base/LeadingNumber.h"
#include "sup/ChooseSecondary.h"

namespace quillmark {

void frmTest::Command_Next_Click() {
  const std::int64_t number = SubtitleNumber() + 1;
  if (!ShowSubtitle(number)) {
    TellConversionFailed();
    return;
  }
  Text_SubNum->setText(QString::number(number));
  if (number == primary_.Count) {
    Command_Next->setEnabled(false);
  }
  Command_Prev->setEnabled(true);
}

void frmTest::Command_Prev_Click() {
  if (Text_SubNum->text() == QLatin1String("?") || SubtitleNumber() <= 1) {
    return;
  }
  const std::int64_t number = SubtitleNumber() - 1;
  if (!ShowSubtitle(number)) {
    TellConversionFailed();
    return;
  }
  Text_SubNum->setText(QString::number(number));
  if (number == 1) {
    Command_Prev->setEnabled(false);
  }
  Command_Next->setEnabled(true);
}

void frmTest::Command_GoTo_Click() {
  const QString reply =
      AskText(this, QStringLiteral("Jump to subtitle"),
              QStringLiteral("Jump to subtitle Nr. (1..%1):").arg(primary_.Count), QStringLiteral("1"));
  if (reply.isEmpty()) {
    return;
  }
  const double number = std::trunc(LeadingNumber(reply.toStdString()));
  if (!(number >= 1 && number <= primary_.Count)) {
    ShowMessage(this, QStringLiteral("Illegal number!"));
    return;
  }
  const auto target = static_cast<std::int64_t>(number);
  Text_SubNum->setText(QString::number(target - 1));
  Command_Next_Click();
  Command_Next->setEnabled(target != primary_.Count);
  Command_Prev->setEnabled(target != 1);
}

void frmTest::Command_Reload_Click() {
  if (Text_SubNum->text() == QLatin1String("0")) {
    return;
  }
  if (Text_SubNum->text() == QLatin1String("?")) {
    Text_SubNum->setText(QStringLiteral("1"));
    return;
  }
  if (!ShowSubtitle(SubtitleNumber())) {
    TellConversionFailed();
  }
}

bool frmTest::ShowSubtitle(std::int64_t number) {
  const std::int64_t index = number - 1;
  if (!primary_.Holds(index)) {
    return false;
  }
  const SubtitleUnit unit = UnitOf(primary_, index, unit_);
  const std::int64_t over =
      mergeMode_ && secondary_.Count >= 1 ? ChooseSecondary(primary_, index, secondary_) : -1;
  return over >= 0 ? ConvertMergedSubtitle(unit, UnitOf(secondary_, over, secondaryUnit_))
                   : ConvertSubtitle(unit, Text1->text());
}

void frmTest::TellConversionFailed() {
  ShowMessage(this, QStringLiteral("Error converting subtitle!"));
  Text_SubNum->setText(QStringLiteral("?"));
}

}  // namespace quillmark
