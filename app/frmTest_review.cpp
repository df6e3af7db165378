#include <new>
#include <optional>

#include <QAction>

#include "app/CountText.h"
#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/ListPanel.h"
#include "app/ReviewPanel.h"
#include "app/SubtitleTable.h"
#include "app/Ui.h"
#include "app/WindowBody.h"
#include "app/frmTest.h"
#include "render/OffsetSearch.h"

namespace quillmark {
namespace {

struct SuggestedOffset {
  int Lines = 0;
  OffsetCost Cost = {};
  OffsetCost CostNow = {};  ///< at the offset that there is
};

std::optional<SuggestedOffset> FindOffset(const Document& document, const Progress& progress) {
  OffsetSearch search(document.Primary(), document.Secondary(), document.SettingsOfMerge());
  while (search.Step()) {
    if (!progress(search.Looked(), search.Count())) {
      return std::nullopt;
    }
  }
  const int best = search.Best();
  return SuggestedOffset{
      .Lines = best, .Cost = search.CostOf(best), .CostNow = search.CostOf(document.YOffset())};
}

QString CostText(const OffsetCost& cost) {
  return Ui::Tr("%1 pixels covered, %2 clipped", {CountText(static_cast<std::int64_t>(cost.Covered)),
                                                  CountText(static_cast<std::int64_t>(cost.Clipped))});
}

}  // namespace

void frmTest::ConnectReview() {
  Action_MergeReview->setCheckable(true);
  Action_MergeReview->setChecked(true);
  connect(Action_MergeReview, &QAction::toggled, this, [this] {
    UpdateReview();
    UpdateList();
  });
  connect(listPanel_, &ListPanel::ReviewChosen, Action_MergeReview, &QAction::setChecked);
  connect(document_, &Document::MergeChanged, this, &frmTest::UpdateReview);
  connect(review_, &ReviewPanel::Chosen, this, &frmTest::List_Subtitles_Chosen);
  connect(review_, &ReviewPanel::SelectionChanged, this, &frmTest::UpdateList);
  connect(review_, &ReviewPanel::OffsetChosen, this, &frmTest::ShowOffset);
  connect(review_, &ReviewPanel::CodesChosen, this, &frmTest::ShowMergedCodes);
  connect(review_, &ReviewPanel::TimesChosen, this, &frmTest::ShowMergeTimes);
  connect(review_, &ReviewPanel::UnitChosen, this, &frmTest::List_Pairs_Chosen);
  review_->Table().setContextMenuPolicy(Qt::ActionsContextMenu);
  review_->Table().addActions({Action_Copy, Action_NextProblem, Action_PrevProblem});
}

void frmTest::UpdateReview() {
  const bool hasReview = document_->HasBothStreams();
  for (QAction* action : {Action_MergeReview, Action_SuggestOffset}) {
    action->setEnabled(hasReview && !document_->IsBusy());
  }
  listPanel_->Arrange(Action_List->isChecked(), hasReview, Action_MergeReview->isChecked());
  if (const bool shown = Action_List->isChecked() || ShowsReview(); shown == listPanel_->isHidden()) {
    Body->ShowList(shown);
  }
}

bool frmTest::ShowsReview() const {
  return listPanel_->ShowsReview();
}

void frmTest::ShowOffset(std::int16_t lines) {
  if (!IsBusy() && document_->HasBothStreams()) {
    document_->SetYOffset(lines);
    document_->ShowAgain();
  }
}

void frmTest::ShowMergedCodes(const MergedCodes& codes) {
  if (!IsBusy() && document_->HasBothStreams()) {
    document_->SetCodesOfMerge(codes);
    document_->ShowAgain();
  }
}

void frmTest::ShowMergeTimes(const MergeTimes& times) {
  if (!IsBusy() && document_->HasBothStreams()) {
    document_->SetTimesOfMerge(times);
    document_->ShowAgain();
  }
}

void frmTest::List_Pairs_Chosen(const DisplayInterval& unit, std::int64_t number) {
  if (IsBusy() || !document_->HasBothStreams()) {
    return;
  }
  RunCommand([this, unit, number] {
    if (!document_->ShowUnit(unit, number)) {
      TellConversionFailed();
    }
  });
}

void frmTest::Command_SuggestOffset_Click() {
  std::optional<SuggestedOffset> found;
  bool lacksMemory = false;
  const Completion ended =
      RunLongWork(this, Ui::Tr("Looking for the best offset"), patience_, [&](const Progress& progress) {
        try {
          found = FindOffset(*document_, progress);
        } catch (const std::bad_alloc&) {
          lacksMemory = true;
        }
      });
  if (lacksMemory) {
    ShowMessage(this, Ui::Tr("There is not enough memory to look for an offset"));
    return;
  }
  if (ended == Completion::Cancelled || !found) {
    Tell(Ui::Tr("The offset stays %1", {QString::number(document_->YOffset())}));
    return;
  }
  const std::int16_t before = document_->YOffset();
  const QString cost = CostText(found->Cost);
  if (found->Lines == before) {
    Tell(Ui::Tr("No offset is better than %1: %2", {QString::number(before), cost}));
    return;
  }
  document_->SetYOffset(static_cast<std::int16_t>(found->Lines));
  document_->ShowAgain();
  Tell(Ui::Tr("Offset %1: %2; at %3 %4",
              {QString::number(found->Lines), cost, QString::number(before), CostText(found->CostNow)}));
}

}  // namespace quillmark
