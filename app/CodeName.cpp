#include "app/CodeName.h"

#include <array>

#include "app/Ui.h"

namespace quillmark {

QString CodeName(std::size_t code) {
  static constexpr std::array Names = {Ui::Mark("background"), Ui::Mark("pattern"), Ui::Mark("emphasis 1"),
                                       Ui::Mark("emphasis 2")};
  return Ui::Tr(Names[code]);
}

}  // namespace quillmark
