#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include <QString>

namespace quillmark {

/// Notes as lines for a message, the first list's first. Of very many only so many stand there as somebody
/// reads, and how many more there are. Empty where there is nothing to say.
[[nodiscard]] QString NotesText(std::initializer_list<const std::vector<std::string>*> lists);

}  // namespace quillmark
