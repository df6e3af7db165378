#pragma once

#include <string>

namespace quillmark::test {

/// Ends the test at hand as failed, because it lacks something that it cannot do without.
[[noreturn]] void Abandon(const std::string& why);

}  // namespace quillmark::test
