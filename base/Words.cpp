#include "base/Words.h"

#include <algorithm>
#include <atomic>
#include <limits>

#include "base/FillIn.h"

namespace quillmark {
namespace {

std::atomic<Translator> installed = nullptr;

constexpr const char* Context = "Words";

}  // namespace

void InstallTranslator(Translator translator) {
  installed = translator;
}

std::optional<std::string> TranslationOf(const char* context, const char* text, const char* many,
                                         std::int64_t count) {
  const Translator translator = installed;
  if (translator == nullptr) {
    return std::nullopt;
  }
  const std::int64_t most = std::numeric_limits<int>::max();
  return translator(context, text, many, static_cast<int>(std::clamp<std::int64_t>(count, -1, most)));
}

std::string Words::Tr(const char* text) {
  return TranslationOf(Context, text).value_or(text);
}

std::string Words::Tr(const char* text, std::initializer_list<std::string_view> values) {
  return FillIn(Tr(text), values, std::string());
}

std::string Words::Tr(const char* one, const char* many, std::int64_t count,
                      std::initializer_list<std::string_view> values) {
  const std::string text = TranslationOf(Context, one, many, count).value_or(count == 1 ? one : many);
  return FillIn(text, values, std::to_string(count));
}

}  // namespace quillmark
