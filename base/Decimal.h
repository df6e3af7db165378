#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillmark {

/// A decimal number with or without a sign in front; nullopt for anything else. One that 64 bits do not hold
/// is the largest or smallest that they do, which is outside of every range that is asked for.
[[nodiscard]] std::optional<std::int64_t> ParseDecimal(std::string_view text);

/// "12", "12.5" or ".5" times `factor`, rounded exactly to nearest, halves up; nullopt for anything else, a
/// sign included, and where 64 bits do not hold it. `factor` is positive.
[[nodiscard]] std::optional<std::int64_t> ScaleDecimal(std::string_view text, std::int32_t factor);

}  // namespace quillmark
