#include "app/Ui.h"

#include <optional>
#include <string>

#include "app/CountText.h"
#include "base/FillIn.h"
#include "base/Words.h"

namespace quillmark {
namespace {

constexpr const char* Context = "Ui";

QString Translated(const char* text, const char* otherwise, const char* many = nullptr,
                   std::int64_t count = -1) {
  const std::optional<std::string> found = TranslationOf(Context, text, many, count);
  return found ? QString::fromStdString(*found) : QString::fromUtf8(otherwise);
}

}  // namespace

QString Ui::Tr(const char* text) {
  return Translated(text, text);
}

QString Ui::Tr(const char* text, std::initializer_list<QString> values) {
  return FillIn(Tr(text), values, QString());
}

QString Ui::Tr(const char* one, const char* many, std::int64_t count, std::initializer_list<QString> values) {
  return FillIn(Translated(one, count == 1 ? one : many, many, count), values, CountText(count));
}

}  // namespace quillmark
