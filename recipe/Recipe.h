#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/Result.h"
#include "recipe/Step.h"

namespace quillmark {

/// Steps that are done to a stream one after another.
struct Recipe {
  std::vector<StepText> Steps;

  bool operator==(const Recipe&) const = default;
};

/// The version of the form that is read and written.
inline constexpr int RecipeVersion = 1;

/// Reads a recipe from JSON: {"version": 1, "steps": [{"tool": "retime", "shift": "40"}, ...]}. Values are
/// texts or numbers, those of flags true or false. A Failure where the text is no such JSON, or a step has a
/// field or a value that its tool does not take; it names the step and the field.
[[nodiscard]] Result<Recipe> ParseRecipe(std::string_view json);

/// The JSON of a recipe, which ParseRecipe reads.
[[nodiscard]] std::string RecipeText(const Recipe& recipe);

/// The steps as they are run; a Failure names the first one that is wrong.
[[nodiscard]] Result<std::vector<Step>> ReadSteps(const Recipe& recipe);

/// What a step did.
struct StepOutcome {
  const Tool* What = nullptr;
  std::int64_t Changed = 0;
  std::int64_t Chosen = 0;  ///< subtitles that it was asked to look at
  std::vector<LeftSubtitle> Left;
};

/// Runs the steps on `stream`, one after another. A Failure names the first one that cannot be run; the steps
/// before it have changed the stream then.
[[nodiscard]] Result<std::vector<StepOutcome>> RunSteps(const std::vector<Step>& steps, SupStream& stream);

/// "step 2 (retime)", for messages; `index` counts from 0.
[[nodiscard]] std::string StepName(std::size_t index, std::string_view tool);

}  // namespace quillmark
