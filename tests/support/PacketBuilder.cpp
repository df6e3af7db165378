#include "tests/support/PacketBuilder.h"

#include <cstddef>

namespace quillmark::test {

Bytes Join(std::initializer_list<Bytes> parts) {
  std::size_t size = 0;
  for (const Bytes& part : parts) {
    size += part.size();
  }
  Bytes all;
  all.reserve(size);
  for (const Bytes& part : parts) {
    all.insert(all.end(), part.begin(), part.end());
  }
  return all;
}

Bytes Sequence(unsigned delay, unsigned next, std::initializer_list<Bytes> commands) {
  return Join({U16be(delay), U16be(next), Join(commands)});
}

Bytes PacketBuilder::UnitBytes() const {
  if (unit_) {
    return *unit_;
  }
  return Join({{0x11, 0x00, 0x12, 0x00},
               Sequence(0, LastSequence, {StartDisplay, colour_, contrast_, area_, fields_, EndOfSequence}),
               Sequence(delay_, LastSequence, {StopDisplay, EndOfSequence})});
}

Bytes PacketBuilder::Build() const {
  const Bytes unit = UnitBytes();
  const auto size = static_cast<unsigned>(unit.size()) + 4;
  Bytes time;
  for (unsigned byte = 0; byte < 8; ++byte) {
    time.push_back(static_cast<std::uint8_t>(static_cast<std::uint64_t>(time_) >> (8U * byte) & 0xFFU));
  }
  return Join({{'S', 'P'}, time, U16be(size_.value_or(size)), U16be(controlOffset_), unit});
}

Bytes PacketBuilder::WholeUnit() const {
  const Bytes packet = Build();
  return {packet.begin() + 10, packet.end()};
}

}  // namespace quillmark::test
