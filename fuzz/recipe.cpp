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

#include "fuzz/StreamMutation.h"
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

namespace {

/// A step with some of the options that its tool has.
std::string NewStep(Dice& dice) {
  constexpr std::string_view values[] = {
      "1",          "-2",     "\"2-\"",   "\"1-2\"",           "\"25/24\"",
      "\"24\"",     "\"25\"", "\"1.2F\"", "\"1=0:01,2=0:20\"", "480",
      "\"player\"", "40.5",   "\"on\"",   "\"0:00:01.5\"",     "999999999999",
      "1e99",       "\"\"",   "null"};
  const Tool& tool = dice.OneOf(AllTools());
  std::string step = "{\"tool\": \"";
  step += tool.Name;
  step += '"';
  for (const ToolOption& option : tool.Options) {
    if (dice.OneIn(3)) {
      step += ", \"";
      step += option.Name;
      step += "\": ";
      step += option.IsFlag() ? "true" : dice.OneOf(values);
    }
  }
  return step + "}";
}

void MutateRecipe(Bytes& text, Dice& dice) {
  if (dice.OneIn(4)) {
    std::string recipe = "{\"version\": 1, \"steps\": [";
    recipe += NewStep(dice);
    for (std::size_t more = dice.Below(3); more > 0; --more) {
      recipe += ", ";
      recipe += NewStep(dice);
    }
    text = BytesOf(recipe + "]}");
    return;
  }
  Pieces pieces = SplitText(text, ",{}[]:");
  MutatePieces(
      pieces, dice, [&] { return BytesOf(NewStep(dice) + ","); }, [](Bytes& piece) { MutateAny(piece); });
  text = Joined(pieces);
}

}  // namespace

QUILLMARK_MUTATOR(400, [](Bytes& input, Dice& dice) {
  const auto zero = std::ranges::find(input, std::uint8_t{0});
  Bytes text(input.begin(), zero);
  Bytes stream(zero == input.end() ? zero : zero + 1, input.end());
  dice.OneIn(2) ? MutateRecipe(text, dice) : MutateStream(stream, dice);
  input = text;
  input.push_back(0);
  Append(input, stream);
})
