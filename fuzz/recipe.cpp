// A recipe of any text, run on a file of any bytes. The input is the recipe's JSON, a zero byte, and the
// file. Steps of join are left out, for they read files by name.

#include "recipe/Recipe.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "sup/StreamLoader.h"

namespace {

using namespace quillmark;

void Require(bool rule) {
  if (!rule) {
    std::abort();
  }
}

/// What a step does can be taken back, and the stream that comes out is one.
void RunOn(SupStream& stream, const Step& step) {
  if (std::holds_alternative<JoinFile>(step.Options) || !FitsStream(step, stream)) {
    return;
  }
  Result<ToolResult> result = RunStep(step, stream);
  if (!result) {
    return;
  }
  const std::vector<std::uint8_t> before = stream.RawBytes;
  const StreamEdit first = result->Edit;
  Require(ApplyEdit(stream, result->Edit).IsOk());
  Require(ApplyEdit(stream, result->Edit).IsOk());
  Require(stream.RawBytes == before && result->Edit == first);
  Require(ApplyEdit(stream, result->Edit).IsOk());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span input(data, size);
  const auto zero = std::ranges::find(input, std::uint8_t{0});
  const auto length = static_cast<std::size_t>(zero - input.begin());
  const Result<Recipe> recipe = ParseRecipe({reinterpret_cast<const char*>(data), length});
  if (!recipe) {
    Require(!recipe.Reason().empty());
    return 0;
  }
  const Result<Recipe> again = ParseRecipe(RecipeText(*recipe));
  Require(again.IsOk() && again->Steps.size() == recipe->Steps.size());
  const auto file = input.subspan(std::min(length + 1, size));
  Result<LoadedStream> loaded = IndexPrimaryStream({file.begin(), file.end()}, InvalidFirst::IsPassed);
  if (!loaded || loaded->LostSignature) {
    return 0;
  }
  const Result<std::vector<Step>> steps = ReadSteps(*recipe);
  Require(steps.IsOk());
  for (const Step& step : *steps) {
    RunOn(loaded->Stream, step);
  }
  return 0;
}
