#include "app/CodeName.h"

#include <array>

namespace quillmark {

QString CodeName(std::size_t code) {
  static const std::array<QString, 4> names = {QStringLiteral("background"), QStringLiteral("pattern"),
                                               QStringLiteral("emphasis 1"), QStringLiteral("emphasis 2")};
  return names[code];
}

}  // namespace quillmark
