// What the tools do to a document.

#include <new>

#include "app/Document.h"
#include "base/Words.h"
#include "recipe/Recipe.h"

namespace quillmark {

Result<ToolResult> Document::RunTool(const StepText& text, const QString& name) {
  try {
    const Result<Step> step = ReadStep(text);
    if (!step) {
      return step.Why();
    }
    if (const Result<void> fits = FitsStream(*step, primary_); !fits) {
      return fits.Why();
    }
    Result<ToolResult> result = RunStep(*step, primary_);
    if (!result) {
      return result;
    }
    if (const Result<void> made = Make({.Name = name, .What = std::move(result->Edit), .Tool = text});
        !made) {
      return made.Why();
    }
    result->Edit = {};
    return result;
  } catch (const std::bad_alloc&) {
    return Failure{Words::Tr("there is not enough memory")};
  }
}

Result<std::int64_t> Document::RunRecipe(const Recipe& recipe,
                                         const std::function<QString(std::string_view)>& nameOf) {
  std::int64_t left = 0;
  {
    const Result<std::vector<Step>> steps = ReadSteps(recipe);
    if (!steps) {
      return steps.Why();
    }
    SupStream trial = primary_;
    const Result<std::vector<StepOutcome>> outcomes = RunSteps(*steps, trial);
    if (!outcomes) {
      return outcomes.Why();
    }
    for (const StepOutcome& outcome : *outcomes) {
      left += static_cast<std::int64_t>(outcome.Left.size());
    }
  }
  for (const StepText& step : recipe.Steps) {
    if (const Result<ToolResult> done = RunTool(step, nameOf(step.Tool)); !done) {
      return done.Why();
    }
  }
  return left;
}

Recipe Document::StepsDone() const {
  Recipe recipe;
  for (int i = 0; i < history_.index(); ++i) {
    if (const auto& tool = EditAt(i).Tool) {
      recipe.Steps.push_back(*tool);
    }
  }
  return recipe;
}

std::int64_t Document::StepsWithoutTool() const {
  return history_.index() - static_cast<std::int64_t>(StepsDone().Steps.size());
}

}  // namespace quillmark
