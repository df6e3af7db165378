#pragma once

#include <string>
#include <vector>

#include "cli/Console.h"

namespace quillmark::cli {

/// Runs quillmark-cli with these arguments, the program's name not among them; the answer is its exit code.
[[nodiscard]] int RunCommandLine(const std::vector<std::string>& arguments, const Console& console);

}  // namespace quillmark::cli
