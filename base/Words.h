#pragma once

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

namespace quillmark {

// Texts for users stand in the sources in English. Which language the user reads is the program's matter: it
// installs a translator at its start, and without one every text stays as it is.

/// The translation of `text`, which stands in the catalogue under `context`. `many` is the English of other
/// counts than 1, and nullptr for a text without a count; its `count` is below 0 then. nullopt: it is not
/// translated.
using Translator = std::optional<std::string> (*)(const char* context, const char* text, const char* many,
                                                  int count);

/// For texts that are made from then on; nullptr: English. Not while other threads make texts.
void InstallTranslator(Translator translator);

/// What the installed translator answers; nullopt without one.
[[nodiscard]] std::optional<std::string> TranslationOf(const char* context, const char* text,
                                                       const char* many = nullptr, std::int64_t count = -1);

/// Texts of everything below the window, in UTF-8. The first argument of each function is what lupdate puts
/// into the catalogue, so it is written out where it is called.
class Words {
 public:
  [[nodiscard]] static std::string Tr(const char* text);
  /// With values in place of %1 to %9; what a value has like them stays as it is.
  [[nodiscard]] static std::string Tr(const char* text, std::initializer_list<std::string_view> values);
  /// One text for a count of 1 and another for all others, each with the count in place of %n.
  [[nodiscard]] static std::string Tr(const char* one, const char* many, std::int64_t count,
                                      std::initializer_list<std::string_view> values = {});
  /// Puts a text of a table into the catalogue; Tr translates it where it is shown.
  [[nodiscard]] static constexpr const char* Mark(const char* text) { return text; }
};

}  // namespace quillmark
