// Program streams.

#include <cstdint>
#include <span>

#include "containers/ProgramTracks.h"
#include "fuzz/ContainerCheck.h"
#include "fuzz/PackMutation.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  quillmark::MemorySource source(std::span(data, size));
  quillmark::CheckContainer(quillmark::ReadProgramTracks(source));
  return 0;
}

QUILLMARK_MUTATOR(2200, quillmark::MutatePacks)
