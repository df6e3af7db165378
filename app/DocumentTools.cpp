// What the tools do to a document.

#include <new>

#include "app/Document.h"
#include "base/Words.h"
#include "recipe/Recipe.h"

namespace quillmark {
namespace {

/// What the step does to a stream that has to keep a subtitle.
Result<ToolResult> RunInDocument(const Step& step, const SupStream& stream) {
  if (const Result<void> fits = FitsStream(step, stream); !fits) {
    return fits.Why();
  }
  Result<ToolResult> result = RunStep(step, stream);
  if (result && TakesOut(step) && result->Changed.SizeWithin(stream.Count) == stream.Count) {
    return Failure{Words::Tr("no subtitle would be left")};
  }
  return result;
}

}  // namespace

Result<ToolResult> Document::RunTool(const StepText& text, const QString& name) {
  try {
    const Result<Step> step = ReadStep(text);
    if (!step) {
      return step.Why();
    }
    Result<ToolResult> result = RunInDocument(*step, primary_);
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
    for (std::size_t i = 0; i < steps->size(); ++i) {
      Result<ToolResult> result = RunInDocument((*steps)[i], trial);
      const Result<void> applied = result ? ApplyEdit(trial, result->Edit) : result.Why();
      if (!applied) {
        return Failure{StepName(i, recipe.Steps[i].Tool) + ": " + applied.Reason()};
      }
      left += static_cast<std::int64_t>(result->Left.size());
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
