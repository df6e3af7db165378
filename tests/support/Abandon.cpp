#include "tests/support/Abandon.h"

#include <stdexcept>

namespace quillmark::test {

void Abandon(const std::string& why) {
  throw std::runtime_error(why);
}

}  // namespace quillmark::test
