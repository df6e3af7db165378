#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPushButton>

#include "app/CountText.h"
#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/ListPanel.h"
#include "app/ProblemFinder.h"
#include "app/ReviewPanel.h"
#include "app/StatusLine.h"
#include "app/SubtitleList.h"
#include "app/SubtitleTable.h"
#include "app/Ui.h"
#include "app/WindowBody.h"
#include "app/frmTest.h"

namespace quillmark {

void frmTest::ConnectList() {
  Action_List->setCheckable(true);
  Action_List->setChecked(true);
  connect(Action_List, &QAction::toggled, this, &frmTest::UpdateReview);
  connect(list_, &SubtitleList::Chosen, this, &frmTest::List_Subtitles_Chosen);
  connect(list_, &SubtitleList::SelectionChanged, this, &frmTest::UpdateList);
  connect(list_, &SubtitleList::ProblemsCounted, this, &frmTest::ShowProblemCount);
  list_->Table().setContextMenuPolicy(Qt::ActionsContextMenu);
  list_->Table().addActions({Action_SetSelected, Action_Copy, Action_NextProblem, Action_PrevProblem});
}

void frmTest::UpdateList() {
  const EnabledCommands enabled = document_->Enabled();
  listPanel_->setEnabled(!document_->IsBusy());
  Action_SetSelected->setEnabled(enabled.Change && list_->HasSelection());
  Action_Copy->setEnabled(enabled.List && (ShowsReview() ? review_->HasSelection() : list_->HasSelection()));
  for (QAction* action : {Action_NextProblem, Action_PrevProblem}) {
    action->setEnabled(enabled.List);
  }
  Body->Fold(document_->IsMerging());
}

void frmTest::List_Subtitles_Chosen(std::int64_t number) {
  if (IsBusy() || !document_->Enabled().List) {
    return;
  }
  RunCommand([this, number] {
    if (!document_->GoTo(number)) {
      TellConversionFailed();
    }
  });
}

void frmTest::Command_SetSelected_Click() {
  const std::vector<std::size_t> selected = list_->Selected();
  if (const auto set = document_->SetSelected(selected); !set) {
    ShowMessage(this, QString::fromStdString(set.Reason()));
  }
}

void frmTest::Command_Copy_Click() {
  if (auto copied = ShowsReview() ? review_->Copied() : list_->Copied()) {
    QApplication::clipboard()->setMimeData(copied.release());
  }
}

void frmTest::Command_NextProblem_Click() {
  TellProblem(ShowsReview() ? review_->GoToProblem(true) : list_->GoToProblem(true));
}

void frmTest::Command_PrevProblem_Click() {
  TellProblem(ShowsReview() ? review_->GoToProblem(false) : list_->GoToProblem(false));
}

void frmTest::TellProblem(const QString& sentence) {
  Tell(sentence.isEmpty() ? Ui::Tr("There is no further problem in the list") : sentence);
}

void frmTest::ShowProblemCount() {
  const std::int64_t count = document_->Primary().Count;
  status_->ShowProblems(count < 1 ? QString()
                                  : Ui::Tr("%n subtitle, %1 with problems", "%n subtitles, %1 with problems",
                                           count, {CountText(list_->ProblemCount())}));
}

}  // namespace quillmark
