#pragma once

#include <filesystem>
#include <optional>

namespace quillmark {

/// The regular file of that path; where there is none, one of its folder whose name differs in the case of
/// the letters A to Z alone. Of several one whose name before the ending is the same, then the first in the
/// order of their bytes. nullopt where there is none.
[[nodiscard]] std::optional<std::filesystem::path> FileInAnyCase(const std::filesystem::path& path);

}  // namespace quillmark
