#include <QAction>
#include <QFileInfo>

#include "app/CountText.h"
#include "app/Dialogs.h"
#include "app/Document.h"
#include "app/PathText.h"
#include "app/SubtitleList.h"
#include "app/ToolDialog.h"
#include "app/ToolForm.h"
#include "app/Ui.h"
#include "app/frmTest.h"
#include "base/Words.h"
#include "files/ReplaceFile.h"
#include "recipe/Recipe.h"
#include "sup/StreamLoader.h"

namespace quillmark {
namespace {

const QString RecipePattern = QStringLiteral("*.JSON");

/// "12 subtitles moved, 2 left as they are".
QString DoneText(const Tool& tool, const ToolResult& result) {
  const std::int64_t changed = result.Changed.SizeWithin(std::numeric_limits<std::int64_t>::max());
  QString text =
      Ui::Tr("%n subtitle %1", "%n subtitles %1", changed, {QString::fromStdString(Words::Tr(tool.Done))});
  if (!result.Left.empty()) {
    text += QStringLiteral(", ") +
            Ui::Tr("%1 left as they are", {CountText(static_cast<std::int64_t>(result.Left.size()))});
  }
  return text;
}

/// What the history calls a tool's step.
QString NameOf(std::string_view tool) {
  const std::vector<ToolForm> forms = ToolForms();
  const auto form = std::ranges::find(forms, tool, &ToolForm::Tool);
  return form != forms.end() ? form->Name : Ui::Tr("Assign");
}

}  // namespace

QList<std::pair<QAction*, std::string_view>> frmTest::ToolActions() const {
  return {{Action_Retime, "retime"},  {Action_Move, "move"}, {Action_Force, "force"},
          {Action_Ends, "ends"},      {Action_Cut, "cut"},   {Action_Keep, "keep"},
          {Action_Sort, "sort"},      {Action_Join, "join"}, {Action_Fix, "fix"},
          {Action_Salvage, "salvage"}};
}

void frmTest::ConnectTools() {
  for (const auto& [action, tool] : ToolActions()) {
    connect(action, &QAction::triggered, this,
            [this, chosen = tool] { RunCommand([this, chosen] { AskForTool(chosen); }); });
  }
}

void frmTest::UpdateTools() {
  const EnabledCommands enabled = document_->Enabled();
  for (const auto& [action, tool] : ToolActions()) {
    action->setEnabled(enabled.Tools);
  }
  Action_RunRecipe->setEnabled(enabled.Tools);
  Action_SaveRecipe->setEnabled(enabled.Tools && !document_->StepsDone().Steps.empty());
}

void frmTest::AskForTool(std::string_view tool) {
  const ToolForm& form = FormOf(tool);
  const std::int64_t number = std::max<std::int64_t>(document_->Number(), 1);
  ToolDialog dialog(form,
                    {.Stream = document_->Primary(),
                     .Palette = document_->Palette(),
                     .FrameLines = document_->FrameLines(),
                     .Index = static_cast<std::size_t>(number - 1),
                     .Selected = list_->Selected()},
                    this);
  if (dialog.exec() != QDialog::Accepted) {
    return;
  }
  const Result<ToolResult> done = document_->RunTool(dialog.Chosen(), form.Name);
  if (!done) {
    ShowMessage(this, QString::fromStdString(done.Reason()));
    return;
  }
  Command_Reload_Click();
  Tell(DoneText(*FindTool(tool), *done));
}

void frmTest::Command_SaveRecipe_Click() {
  const QString path =
      AskToSave(ReplaceExtension(SupPathOrDefault(document_->SupPath()), QStringLiteral(".json")),
                Ui::Tr("Recipes (*.JSON)"), RecipePattern);
  if (path.isEmpty()) {
    return;
  }
  const Recipe recipe = document_->StepsDone();
  const std::string text = RecipeText(recipe);
  const auto bytes = std::span(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  if (const auto written = ReplaceFile(path, bytes); !written) {
    ShowMessage(this, path + QStringLiteral(": ") + QString::fromStdString(written.Reason()));
    return;
  }
  const auto steps = static_cast<std::int64_t>(recipe.Steps.size());
  QString told = Ui::Tr("Saved %1, %n step", "Saved %1, %n steps", steps, {QFileInfo(path).fileName()});
  if (const std::int64_t others = document_->StepsWithoutTool(); others > 0) {
    told +=
        QStringLiteral("; ") + Ui::Tr("not in it: %1 of the palette or restored ones", {CountText(others)});
  }
  Tell(told);
}

void frmTest::Command_RunRecipe_Click() {
  const QString path =
      AskToOpen(ReplaceExtension(SupPathOrDefault(document_->SupPath()), QStringLiteral(".json")),
                Ui::Tr("Recipes (*.JSON)"), RecipePattern);
  if (path.isEmpty()) {
    return;
  }
  const auto refuse = [&](const std::string& reason) {
    ShowMessage(this, path + QStringLiteral(": ") + QString::fromStdString(reason));
  };
  const auto bytes = ReadStreamFile(path.toStdString());
  if (!bytes) {
    refuse(bytes.Reason());
    return;
  }
  const Result<Recipe> recipe = ParseRecipe({reinterpret_cast<const char*>(bytes->data()), bytes->size()});
  if (!recipe) {
    refuse(recipe.Reason());
    return;
  }
  const Result<std::int64_t> left = document_->RunRecipe(*recipe, NameOf);
  if (!left) {
    refuse(left.Reason());
    return;
  }
  Command_Reload_Click();
  const auto steps = static_cast<std::int64_t>(recipe->Steps.size());
  QString told = Ui::Tr("Ran %1, %n step", "Ran %1, %n steps", steps, {QFileInfo(path).fileName()});
  if (*left > 0) {
    told += QStringLiteral("; ") +
            Ui::Tr("%n subtitle left as they were", "%n subtitles left as they were", *left);
  }
  Tell(told);
}

}  // namespace quillmark
