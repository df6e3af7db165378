#pragma once

#include <cstddef>
#include <initializer_list>

namespace quillmark {

/// `text` with `values` in place of its %1 to %9, and `count`, if it is not empty, in place of %n, in one
/// walk: what a value has like them stays as it is. For texts of bytes and of 16-bit units alike.
template <typename Text, typename Value>
[[nodiscard]] Text FillIn(const Text& text, std::initializer_list<Value> values, const Text& count) {
  const auto unit = [](char16_t ascii) { return static_cast<typename Text::value_type>(ascii); };
  auto room = text.size() + count.size();
  for (const Value& value : values) {
    room += value.size();
  }
  Text filled;
  filled.reserve(room);
  for (auto at = text.begin(); at != text.end(); ++at) {
    const Value* value = nullptr;
    const bool isMark = *at == unit(u'%') && at + 1 != text.end();
    for (std::size_t i = 0; isMark && i < values.size() && i < 9; ++i) {
      if (*(at + 1) == unit(static_cast<char16_t>(u'1' + i))) {
        value = values.begin() + i;
      }
    }
    if (value != nullptr) {
      filled += *value;
      ++at;
    } else if (isMark && *(at + 1) == unit(u'n') && !(count == Text())) {
      filled += count;
      ++at;
    } else {
      filled += *at;
    }
  }
  return filled;
}

}  // namespace quillmark
