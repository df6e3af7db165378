#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace quillmark::cli {

/// A decimal number with or without a sign in front; nullopt for anything else. One that 64 bits do not hold
/// is the largest or smallest that they do, which is outside of every range that is asked for.
[[nodiscard]] std::optional<std::int64_t> ParseDecimal(std::string_view text);

}  // namespace quillmark::cli
