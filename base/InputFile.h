#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>

#include "base/Result.h"

namespace quillmark {

/// Opens the file at `path` for reading its bytes, and gives its length. Folders are refused, and so are
/// devices and pipes, which nobody waits for. The reason is the system's where it has one, without the path.
[[nodiscard]] Result<std::uintmax_t> OpenInputFile(const std::filesystem::path& path, std::ifstream& file);

}  // namespace quillmark
