#include "recipe/Recipe.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "base/Words.h"

namespace quillmark {
namespace {

using Json = nlohmann::ordered_json;

Failure InStep(std::size_t index, std::string_view tool, const std::string& reason) {
  return {StepName(index, tool) + ": " + reason};
}

/// Nothing where the value is neither a text nor a number.
std::optional<std::string> TextOf(const Json& value) {
  if (value.is_string()) {
    return value.get<std::string>();
  }
  return value.is_number() ? std::optional(value.dump()) : std::nullopt;
}

/// Adds one field to the step; why it cannot be, otherwise.
std::optional<std::string> AddField(const Tool& tool, const std::string& name, const Json& value,
                                    StepText& step) {
  const auto option = std::ranges::find(tool.Options, std::string_view(name), &ToolOption::Name);
  if (option == tool.Options.end()) {
    return Words::Tr("unknown field '%1'", {name});
  }
  if (option->IsFlag()) {
    if (!value.is_boolean()) {
      return Words::Tr("'%1' is neither true nor false", {name});
    }
    if (value.get<bool>()) {
      step.Options.emplace_back(name, "true");
    }
    return std::nullopt;
  }
  const auto text = TextOf(value);
  if (!text) {
    return Words::Tr("'%1' is neither a text nor a number", {name});
  }
  step.Options.emplace_back(name, *text);
  return std::nullopt;
}

Result<StepText> ReadStepText(const Json& object, std::size_t index) {
  if (!object.is_object() || !object.contains("tool") || !object["tool"].is_string()) {
    return InStep(index, "", Words::Tr("it is no object with the name of a 'tool'"));
  }
  StepText step{.Tool = object["tool"].get<std::string>(), .Options = {}};
  const Tool* const tool = FindTool(step.Tool);
  if (tool == nullptr) {
    return InStep(index, "", Words::Tr("there is no tool '%1'", {step.Tool}));
  }
  for (const auto& [name, value] : object.items()) {
    const auto wrong = name == "tool" ? std::nullopt : AddField(*tool, name, value, step);
    if (wrong) {
      return InStep(index, step.Tool, *wrong);
    }
  }
  return step;
}

/// What is wrong with everything but the steps themselves.
std::optional<std::string> WrongFrame(const Json& document) {
  if (!document.is_object()) {
    return Words::Tr("it is no JSON object");
  }
  for (const auto& [name, value] : document.items()) {
    if (name != "version" && name != "steps") {
      return Words::Tr("unknown field '%1'", {name});
    }
  }
  if (!document.contains("version") || !document["version"].is_number_integer()) {
    return Words::Tr("it has no 'version', which is %1", {std::to_string(RecipeVersion)});
  }
  if (document["version"] != RecipeVersion) {
    return Words::Tr("its version is %1; this program knows version %2 alone",
                     {document["version"].dump(), std::to_string(RecipeVersion)});
  }
  return document.contains("steps") && document["steps"].is_array()
             ? std::nullopt
             : std::optional(Words::Tr("it has no list of 'steps'"));
}

/// Looks at the names of an object's fields while they are read: the reader would keep one value of those
/// that are told twice, and takes the longer for each field the more there are.
class FieldNames {
 public:
  /// Many times more than a tool has options.
  static constexpr std::size_t Max = 100;

  /// What the reader throws for.
  struct Refused {
    Failure Why;
  };

  void Take(Json::parse_event_t event, const Json& parsed) {
    if (event == Json::parse_event_t::object_start) {
      open_.emplace_back();
    } else if (event == Json::parse_event_t::object_end) {
      open_.pop_back();
    } else if (event == Json::parse_event_t::key) {
      Add(parsed.get_ref<const std::string&>());
    }
  }

 private:
  void Add(const std::string& name) {
    std::vector<std::string>& names = open_.back();
    if (std::ranges::find(names, name) != names.end()) {
      throw Refused{{Words::Tr("'%1' stands twice in one object", {name})}};
    }
    if (names.size() == Max) {
      throw Refused{{Words::Tr("an object of it has more than %1 fields", {std::to_string(Max)})}};
    }
    names.push_back(name);
  }

  std::vector<std::vector<std::string>> open_;
};

Result<Json> ParseJson(std::string_view text) {
  FieldNames names;
  try {
    return Json::parse(text, [&names](int /*depth*/, Json::parse_event_t event, const Json& parsed) {
      names.Take(event, parsed);
      return true;
    });
  } catch (const FieldNames::Refused& refused) {
    return refused.Why;
  } catch (const Json::parse_error& error) {
    return Failure{Words::Tr("it is no JSON: byte %1 does not fit", {std::to_string(error.byte)})};
  } catch (const Json::out_of_range&) {
    return Failure{Words::Tr("it has a number that is too large")};
  }
}

}  // namespace

Result<Recipe> ParseRecipe(std::string_view json) {
  const Result<Json> document = ParseJson(json);
  if (!document) {
    return document.Why();
  }
  if (const auto wrong = WrongFrame(*document)) {
    return Failure{*wrong};
  }
  Recipe recipe;
  for (const Json& object : (*document)["steps"]) {
    Result<StepText> step = ReadStepText(object, recipe.Steps.size());
    if (!step) {
      return step.Why();
    }
    recipe.Steps.push_back(std::move(*step));
  }
  const Result<std::vector<Step>> steps = ReadSteps(recipe);
  return steps ? Result<Recipe>(std::move(recipe)) : Result<Recipe>(steps.Why());
}

std::string RecipeText(const Recipe& recipe) {
  Json steps = Json::array();
  for (const StepText& step : recipe.Steps) {
    const Tool* const tool = FindTool(step.Tool);
    Json object = {{"tool", step.Tool}};
    for (const auto& [name, value] : step.Options) {
      const bool isFlag =
          tool != nullptr && std::ranges::any_of(tool->Options, [&wanted = name](const ToolOption& option) {
            return option.IsFlag() && option.Name == wanted;
          });
      object[name] = isFlag ? Json(true) : Json(value);
    }
    steps.push_back(std::move(object));
  }
  const Json document = {{"version", RecipeVersion}, {"steps", std::move(steps)}};
  return document.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Result<std::vector<Step>> ReadSteps(const Recipe& recipe) {
  std::vector<Step> steps;
  for (const StepText& text : recipe.Steps) {
    Result<Step> step = ReadStep(text);
    if (!step) {
      return InStep(steps.size(), text.Tool, step.Reason());
    }
    steps.push_back(std::move(*step));
  }
  return steps;
}

Result<std::vector<StepOutcome>> RunSteps(const std::vector<Step>& steps, SupStream& stream) {
  std::vector<StepOutcome> outcomes;
  for (const Step& step : steps) {
    const auto inStep = [&](const std::string& reason) {
      return InStep(outcomes.size(), step.What->Name, reason);
    };
    if (const auto fits = FitsStream(step, stream); !fits) {
      return inStep(fits.Reason());
    }
    Result<ToolResult> result = RunStep(step, stream);
    if (!result) {
      return inStep(result.Reason());
    }
    if (const auto applied = ApplyEdit(stream, result->Edit); !applied) {
      return inStep(applied.Reason());
    }
    outcomes.push_back({.What = step.What,
                        .Changed = result->Changed.SizeWithin(std::numeric_limits<std::int64_t>::max()),
                        .Chosen = result->Chosen,
                        .Left = std::move(result->Left)});
  }
  return outcomes;
}

std::string StepName(std::size_t index, std::string_view tool) {
  const std::string number = std::to_string(index + 1);
  return tool.empty() ? Words::Tr("step %1", {number}) : Words::Tr("step %1 (%2)", {number, tool});
}

}  // namespace quillmark
