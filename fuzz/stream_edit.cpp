// An edit of any kind on bytes and on a stream of any kind. The input is the number of places, 9 bytes for
// each (offset, removed and inserted in 3 bytes each, big-endian), whether the edit asks for a new index, the
// number of bytes that are put in and these, and then the stream's bytes.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <utility>
#include <vector>

#include "base/ByteReader.h"
#include "fuzz/StreamMutation.h"
#include "sup/StreamEdit.h"
#include "sup/StreamLoader.h"

namespace {

using namespace quillmark;

/// Ends the run where a rule is broken that holds for every input.
void Require(bool rule) {
  if (!rule) {
    std::abort();
  }
}

StreamEdit ReadEdit(ByteReader& input) {
  StreamEdit edit;
  for (int places = input.U8().value_or(0); places > 0; --places) {
    const auto offset = input.U24be();
    const auto removed = input.U24be();
    const auto inserted = input.U24be();
    if (!inserted) {
      break;
    }
    edit.Places.Add({.Offset = *offset, .Removed = *removed, .Inserted = *inserted});
  }
  edit.Reindexes = input.U8().value_or(0) % 2 == 1;
  if (const auto bytes = input.Take(input.U8().value_or(0))) {
    edit.Bytes.assign(bytes->begin(), bytes->end());
  }
  return edit;
}

/// An edit that is applied is taken back by its inverse; one that is not changes nothing.
template <typename Edited, typename Same>
void ApplyTwice(Edited edited, const StreamEdit& first, const Same& isSame) {
  const Edited before = edited;
  StreamEdit edit = first;
  if (ApplyEdit(edited, edit)) {
    Require(ApplyEdit(edited, edit).IsOk());
  }
  Require(isSame(edited, before));
  Require(edit == first);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  ByteReader input({data, size});
  const StreamEdit edit = ReadEdit(input);
  const auto rest = input.Take(input.Remaining());
  const std::vector<std::uint8_t> file(rest->begin(), rest->end());
  ApplyTwice(file, edit, [](const auto& a, const auto& b) { return a == b; });
  Result<LoadedStream> loaded = IndexPrimaryStream(file);
  if (!loaded || loaded->LostSignature) {
    return 0;
  }
  ApplyTwice(std::move(loaded->Stream), edit, [](const SupStream& a, const SupStream& b) {
    return a.RawBytes == b.RawBytes && a.FileLength == b.FileLength && a.Count == b.Count &&
           a.PacketOffset == b.PacketOffset && a.StartTime == b.StartTime && a.EndTime == b.EndTime &&
           a.ColourBytesOffset == b.ColourBytesOffset && a.ContrastBytesOffset == b.ContrastBytesOffset;
  });
  return 0;
}

// Places stay few, so that the stream behind them is found again.
QUILLMARK_MUTATOR(400, [](Bytes& input, Dice& dice) {
  constexpr std::size_t PlaceSize = 9;
  const std::size_t places = input.empty() ? 0 : 1 + input[0] * PlaceSize;
  const std::size_t bytes = places + 1 < input.size() ? input[places + 1] : 0;
  MutateStreamBehind(places + 2 + bytes, input, dice);
  if (dice.OneIn(4) && places > 1) {  // to what an edit of this stream may name
    PutNumber(input, 1 + dice.Below(std::max<std::size_t>(3 * input[0], 1)) * 3, dice.Below(input.size()), 3);
  }
})
