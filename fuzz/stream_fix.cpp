// A whole file through the mends, by the rules for everybody and by those for players. The input is the
// file's bytes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

#include "fuzz/StreamMutation.h"
#include "sup/StreamCheck.h"
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
  std::vector<StreamProblem> problems;
  CheckStream(
      fixed, [&](const StreamProblem& problem) { problems.push_back(problem); }, rules);
  Require(problems == fix->Left);
  const Result<StreamFix> again = FixStream(fixed, rules);
  Require(again.IsOk() && again->Edit.IsEmpty() && again->Mends.empty());
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

QUILLMARK_MUTATOR(200, MutateStream)
