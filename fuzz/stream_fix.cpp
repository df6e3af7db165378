// A whole file through the mends, by the rules for everybody and by those for players. The input is the
// file's bytes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "fuzz/StreamMutation.h"
#include "sup/StreamFix.h"
#include "sup/StreamLoader.h"

namespace {

using namespace quillmark;

void Require(bool rule) {
  if (!rule) {
    std::abort();
  }
}

/// What comes out is a stream, and is the file again where the mends are taken back.
void FixAndTakeBack(const std::vector<std::uint8_t>& file, const CheckOptions& rules) {
  Result<StreamFix> fix = FixStream(file, rules);
  Require(fix.IsOk());
  std::vector<std::uint8_t> fixed = file;
  Require(ApplyEdit(fixed, fix->Edit).IsOk());
  const auto loaded = IndexPrimaryStream(fixed, InvalidFirst::IsPassed);
  Require(loaded.IsOk() && !loaded->LostSignature);
  Require(ApplyEdit(fixed, fix->Edit).IsOk() && fixed == file);
}

/// What is left is what a check finds, which comes last where there is nothing to mend.
void FixTwice(const std::vector<std::uint8_t>& file, const CheckOptions& rules) {
  Result<StreamFix> fix = FixStream(file, rules);
  Require(fix.IsOk());
  std::vector<std::uint8_t> fixed = file;
  Require(ApplyEdit(fixed, fix->Edit).IsOk());
  const Result<StreamFix> again = FixStream(fixed, rules);
  Require(again.IsOk() && again->Edit.IsEmpty() && again->Mends.empty() && again->Left == fix->Left);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> file(data, data + size);
  // By the length one of both rules, and every fourth time the longer way, so that there are more inputs.
  const CheckOptions rules =
      size % 2 == 0 ? CheckOptions() : CheckOptions{.Profile = CheckProfile::Player, .FrameLines = 480};
  size / 2 % 4 == 0 ? FixTwice(file, rules) : FixAndTakeBack(file, rules);
  return 0;
}

QUILLMARK_MUTATOR(110, MutateStream)
