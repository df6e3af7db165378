#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>

#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "sup/StreamReport.h"

namespace quillmark {

void frmTest::Command_Report_Click() {
  ShowMessage(this, QString::fromStdString(PrimaryReport(document_->Primary())));
}

void frmTest::Command_Keys_Click() {
  QString lines;
  for (const QAction* action : actions()) {
    if (!action->shortcuts().isEmpty()) {
      lines += action->iconText() + QStringLiteral(": ") +
               QKeySequence::listToString(action->shortcuts(), QKeySequence::NativeText)
                   .replace(QStringLiteral("; "), QStringLiteral(", ")) +
               QStringLiteral("\r\n");
    }
  }
  ShowMessage(this, lines);
}

void frmTest::Command_About_Click() {
  ShowMessage(this, QStringLiteral("Quillmark ") + QCoreApplication::applicationVersion(),
              Ui::Tr("Views and edits DVD subtitle streams, and hands them to authoring tools.\r\n"
                     "MIT licence."));
}

void frmTest::Command_AboutQt_Click() {
  QMessageBox::aboutQt(this, windowTitle());
}

}  // namespace quillmark
