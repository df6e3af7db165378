#pragma once

#include <utility>

#include <gtest/gtest.h>

#include "sup/StreamLoader.h"
#include "tests/support/PacketBuilder.h"

namespace quillmark::test {

/// The stream of a load that is expected to succeed.
inline SupStream StreamOf(Result<LoadedStream> loaded) {
  EXPECT_TRUE(loaded) << loaded.Reason();
  if (!loaded) {
    return {};
  }
  EXPECT_FALSE(loaded->LostSignature);
  return std::move(loaded->Stream);
}

/// The index of a primary file that loads.
inline SupStream Index(Bytes file, InvalidFirst invalidFirst = InvalidFirst::IsPassed) {
  return StreamOf(IndexPrimaryStream(std::move(file), invalidFirst));
}

}  // namespace quillmark::test
