// A whole file through the stream reader, then everything that later works on what it indexed. The input is
// the file's bytes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "fuzz/StreamMutation.h"
#include "sup/CodeAssignment.h"
#include "sup/StreamLoader.h"
#include "sup/StreamReport.h"
#include "sup/SupStream.h"

namespace {

using namespace quillmark;

/// Ends the run where a rule is broken that holds for every input.
void Require(bool rule) {
  if (!rule) {
    std::abort();
  }
}

void UseEverySubtitle(SupStream& stream) {
  std::vector<std::uint8_t> unit;
  for (std::size_t i = 0; i < stream.SpuSize.size(); ++i) {
    CopyUnit(stream, i, unit);
    const std::int16_t size = stream.SpuSize[i];
    Require(unit.size() == static_cast<std::size_t>(UnitLength(size)));
  }
  const std::vector<std::uint8_t> before = stream.RawBytes;
  StreamEdit edit =
      AssignCodes(stream, 0, static_cast<std::size_t>(stream.Count),
                  {.Colours = AllFour({0, 1, 2, 3}), .Contrasts = {0, std::nullopt, 15, std::nullopt}});
  Require(ApplyEdit(stream, edit).IsOk());
  Require(ApplyEdit(stream, edit).IsOk() && stream.RawBytes == before);
}

/// `report`: one of the two, for making their texts takes longest.
template <typename Report>
void Index(const std::vector<std::uint8_t>& file, InvalidFirst invalidFirst, const Report& report) {
  Result<LoadedStream> loaded = IndexPrimaryStream(file, invalidFirst);
  Require(loaded.IsOk());
  SupStream& stream = loaded->Stream;
  Require(stream.Stats.ParseErrors <= static_cast<std::int64_t>(stream.PacketOffset.size()));
  Require(stream.Count == static_cast<std::int64_t>(stream.PacketOffset.size()));
  Require(stream.RawBytes.size() == file.size() + 1);
  Require(!report(stream).empty());
  UseEverySubtitle(stream);
  Require(stream.RawBytes.back() == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<std::uint8_t> file(data, data + size);
  Index(file, InvalidFirst::IsPassed, PrimaryReport);
  Index(file, InvalidFirst::EndsTheWalk, SecondaryReport);
  return 0;
}

QUILLMARK_MUTATOR(600, MutateStream)
