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

void Fix(const std::vector<std::uint8_t>& file, const CheckOptions& rules) {
  Result<StreamFix> fix = FixStream(file, rules);
  Require(fix.IsOk());
  std::vector<std::uint8_t> fixed = file;
  Require(ApplyEdit(fixed, fix->Edit).IsOk());
  const auto loaded = IndexPrimaryStream(fixed, InvalidFirst::IsPassed);
  Require(loaded.IsOk() && !loaded->LostSignature);
  // What is left is what a check finds, which comes last where there is nothing to mend.
  const Result<StreamFix> again = FixStream(fixed, rules);
  Require(again.IsOk() && again->Edit.IsEmpty() && again->Mends.empty() && again->Left == fix->Left);
  Require(ApplyEdit(fixed, fix->Edit).IsOk() && fixed == file);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> file(data, data + size);
  // One of both, so that there are twice as many inputs.
  Fix(file,
      size % 2 == 0 ? CheckOptions() : CheckOptions{.Profile = CheckProfile::Player, .FrameLines = 480});
  return 0;
}

QUILLMARK_MUTATOR(150, MutateStream)
