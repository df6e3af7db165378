#pragma once

#include <string>
#include <string_view>

namespace quillmark {

/// The language of a tag such as "de", "ger", "deu" or "pt-BR": in two letters where it has such, else in its
/// three; empty where that is no tag of a language, or "und".
[[nodiscard]] std::string LanguageCode(std::string_view tag);

}  // namespace quillmark
