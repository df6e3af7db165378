#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/Decimal.h"
#include "base/Words.h"
#include "recipe/OptionText.h"
#include "recipe/Step.h"

namespace quillmark {

/// Reads a step's options; the first one that is wrong is remembered, and what is read after it is of no use.
class OptionReader {
 public:
  OptionReader(const StepText& text, std::string_view dashes) : text_(text), dashes_(dashes) {}

  [[nodiscard]] const std::optional<Failure>& Wrong() const { return wrong_; }
  void Refuse(std::string reason) {
    if (!wrong_) {
      wrong_ = Failure{std::move(reason)};
    }
  }
  /// The option's name as the user knows it.
  [[nodiscard]] std::string Named(std::string_view name) const {
    return std::string(dashes_) + std::string(name);
  }

  [[nodiscard]] const std::string* Text(std::string_view name) const {
    for (const auto& [given, value] : text_.Options) {
      if (given == name) {
        return &value;
      }
    }
    return nullptr;
  }
  [[nodiscard]] bool Has(std::string_view name) const { return Text(name) != nullptr; }

  /// The option's value in the form that `parse` takes; refused with what it is not, "no number".
  template <typename Parse>
  auto Read(std::string_view name, const Parse& parse, std::string_view isNo)
      -> decltype(parse(std::string_view())) {
    const std::string* const text = Text(name);
    if (text == nullptr) {
      return std::nullopt;
    }
    auto value = parse(std::string_view(*text));
    if (!value) {
      Refuse(Words::Tr("%1: '%2' is %3", {Named(name), *text, isNo}));
    }
    return value;
  }

  std::optional<std::int64_t> Number(std::string_view name, std::int64_t first, std::int64_t last) {
    const auto parse = [&](std::string_view text) {
      const auto number = ParseDecimal(text);
      return number && *number >= first && *number <= last ? number : std::nullopt;
    };
    return Read(name, parse,
                Words::Tr("no whole number from %1 to %2", {std::to_string(first), std::to_string(last)}));
  }

  std::optional<std::int64_t> Milliseconds(std::string_view name) {
    return Read(name, ParseMilliseconds, Words::Tr("no number of milliseconds"));
  }
  /// Of those that are not negative and at most `last` ticks.
  std::optional<std::int64_t> Duration(std::string_view name, std::int64_t last) {
    const auto ticks = Milliseconds(name);
    if (ticks && (*ticks < 0 || *ticks > last)) {
      Refuse(Words::Tr("%1: '%2' is not from 0 to %3 milliseconds",
                       {Named(name), *Text(name), std::to_string(last / 90)}));
    }
    return ticks;
  }

 private:
  const StepText& text_;
  std::string_view dashes_;
  std::optional<Failure> wrong_;
};

}  // namespace quillmark
