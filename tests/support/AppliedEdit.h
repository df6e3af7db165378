#pragma once

#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "sup/StreamEdit.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark::test {

/// The file that the edit makes of the stream's; done once more, it has to give the old one again.
inline Bytes Applied(const SupStream& stream, StreamEdit edit) {
  SupStream edited = stream;
  EXPECT_TRUE(ApplyEdit(edited, edit));
  Bytes after = edited.RawBytes;
  EXPECT_TRUE(ApplyEdit(edited, edit));
  EXPECT_EQ(edited.RawBytes, stream.RawBytes);
  if (!after.empty()) {
    after.pop_back();
  }
  return after;
}

/// The bytes that differ, as offset and new value.
inline std::vector<std::pair<std::size_t, int>> Changes(const Bytes& before, const Bytes& after) {
  std::vector<std::pair<std::size_t, int>> changes;
  EXPECT_EQ(before.size(), after.size());
  for (std::size_t i = 0; i < std::min(before.size(), after.size()); ++i) {
    if (before[i] != after[i]) {
      changes.emplace_back(i, after[i]);
    }
  }
  return changes;
}

}  // namespace quillmark::test
