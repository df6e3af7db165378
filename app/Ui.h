#pragma once

#include <cstdint>
#include <initializer_list>

#include <QString>

namespace quillmark {

/// Texts of the window in the user's language, as base/Words.h says of those below it.
class Ui {
 public:
  [[nodiscard]] static QString Tr(const char* text);
  /// With values in place of %1 to %9; what a value has like them stays as it is.
  [[nodiscard]] static QString Tr(const char* text, std::initializer_list<QString> values);
  /// One text for a count of 1 and another for all others, each with the count in place of %n.
  [[nodiscard]] static QString Tr(const char* one, const char* many, std::int64_t count,
                                  std::initializer_list<QString> values = {});
  /// Puts a text of a table into the catalogue; Tr translates it where it is shown.
  [[nodiscard]] static constexpr const char* Mark(const char* text) { return text; }
};

}  // namespace quillmark
