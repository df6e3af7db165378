#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/Mutation.h"

/// How streams and units are changed: packets whose size fields stay right, sequences of commands that are
/// there with their arguments.
namespace quillmark {

inline std::size_t U16beAt(std::span<const std::uint8_t> bytes, std::size_t at) {
  return at + 2 <= bytes.size() ? bytes[at] * std::size_t{256} + bytes[at + 1] : 0;
}

/// A command with arguments that make sense, in most cases.
inline void AppendCommand(Bytes& unit, std::uint8_t command, Dice& dice) {
  unit.push_back(command);
  const bool isAny = dice.OneIn(8);
  switch (command) {
    case 3:
    case 4:
      Append(unit, Bytes{dice.Byte(), dice.Byte()});
      break;
    case 5:
      for (const std::size_t most : {std::size_t{64}, std::size_t{16}}) {
        const std::size_t first = dice.Below(isAny ? 4096 : 32);
        const std::size_t last = isAny ? dice.Below(4096) : first + dice.Below(most);
        Append(unit,
               Bytes{static_cast<std::uint8_t>(first >> 4U),
                     static_cast<std::uint8_t>(first << 4U | last >> 8U), static_cast<std::uint8_t>(last)});
      }
      break;
    case 6:
      for (int field = 0; field < 2; ++field) {
        AppendU16be(unit, isAny ? dice.Below(0x10000) : 4 + dice.Below(16));
      }
      break;
    case 7: {  // one group of one change
      const std::size_t line = dice.Below(16);
      AppendU16be(unit, isAny ? dice.Below(32) : 16);
      AppendU16be(unit, line);
      AppendU16be(unit, 0x1000 + line + dice.Below(16));
      AppendU16be(unit, dice.Below(64));
      for (int nibbles = 0; nibbles < 2; ++nibbles) {
        AppendU16be(unit, dice.Below(0x10000));
      }
      Append(unit, Bytes{0x0F, 0xFF, 0xFF, 0xFF});
      break;
    }
    default:
      break;
  }
}

inline constexpr std::uint8_t Commands[] = {0, 1, 2, 3, 4, 5, 6, 7, 0xFF};
/// Those that a picture takes.
inline constexpr std::uint8_t DisplayCommands[] = {3, 4, 5, 6, 1};

/// A unit that is in order: two fields, and up to three sequences.
inline Bytes NewUnit(Dice& dice) {
  Bytes unit(4);
  for (std::size_t left = 8 + dice.Below(8); left > 0; --left) {
    unit.push_back(dice.OneIn(3) ? std::uint8_t{0} : dice.Byte());
  }
  PutNumber(unit, 2, unit.size(), 2);
  const std::size_t last = dice.Below(3);
  for (std::size_t sequence = 0; sequence <= last; ++sequence) {
    const std::size_t start = unit.size();
    AppendU16be(unit, sequence == 0 ? 0 : dice.Below(1000));
    AppendU16be(unit, start);
    if (sequence == 0) {
      for (const std::uint8_t command : DisplayCommands) {
        AppendCommand(unit, command, dice);
      }
    } else {
      AppendCommand(unit, dice.OneOf(Commands), dice);
    }
    unit.push_back(0xFF);
    if (sequence < last) {
      PutNumber(unit, start + 2, unit.size(), 2);
    }
  }
  PutNumber(unit, 0, unit.size(), 2);
  return unit;
}

/// One unit, from its size field on, which becomes right in most cases.
inline void MutateUnit(Bytes& unit, Dice& dice) {
  const std::size_t control =
      std::clamp<std::size_t>(U16beAt(unit, 2), std::min<std::size_t>(4, unit.size()), unit.size());
  const std::size_t at = control + dice.Below(unit.size() - control + 1);
  Bytes command;
  AppendCommand(command, dice.OneOf(Commands), dice);
  switch (dice.Below(7)) {
    case 0:
      unit = NewUnit(dice);
      break;
    case 1:
      unit.insert(unit.begin() + static_cast<std::ptrdiff_t>(at), command.begin(), command.end());
      break;
    case 2:
      std::copy_n(command.begin(), std::min(command.size(), unit.size() - at),
                  unit.begin() + static_cast<std::ptrdiff_t>(at));
      break;
    case 3:  // where a sequence or its successor starts
      PutNumber(unit, dice.OneIn(4) ? 2 : at + 2, dice.OneIn(2) ? at : dice.Below(unit.size() + 4), 2);
      break;
    case 4:  // runs
      if (control > 4) {
        unit[4 + dice.Below(control - 4)] = dice.OneIn(3) ? std::uint8_t{0} : dice.Byte();
      }
      break;
    default:
      MutateAny(unit);
  }
  if (!dice.OneIn(16)) {
    PutNumber(unit, 0, unit.size(), 2);
  }
}

inline Bytes NewPacket(Dice& dice) {
  Bytes packet = {'S', 'P', 0, dice.Byte(), dice.Byte(), 0, 0, 0, 0, 0};
  Append(packet, NewUnit(dice));
  return packet;
}

/// As far as the size fields name them; what is left is the last piece.
inline Pieces SplitPackets(std::span<const std::uint8_t> stream) {
  Pieces packets;
  while (!stream.empty()) {
    const std::size_t named = stream.size() < 14 ? stream.size() : U16beAt(stream, 10) + 10;
    const auto packet = stream.first(std::min(named, stream.size()));
    packets.emplace_back(packet.begin(), packet.end());
    stream = stream.subspan(packet.size());
  }
  return packets;
}

inline void MutatePacket(Bytes& packet, Dice& dice) {
  constexpr std::size_t Header = 10;
  if (packet.size() < Header + 4) {
    packet = NewPacket(dice);
  } else if (dice.OneIn(5)) {
    packet[2 + dice.Below(dice.OneIn(4) ? 8 : 3)] = dice.Byte();
  } else {
    Bytes unit(packet.begin() + Header, packet.end());
    MutateUnit(unit, dice);
    packet.resize(Header);
    Append(packet, unit);
  }
}

inline void MutateStream(Bytes& stream, Dice& dice) {
  Pieces packets = SplitPackets(stream);
  MutatePieces(
      packets, dice, [&] { return NewPacket(dice); }, [&](Bytes& packet) { MutatePacket(packet, dice); });
  stream = Joined(packets);
}

/// A stream behind `head` bytes that are something else.
inline void MutateStreamBehind(std::size_t head, Bytes& input, Dice& dice) {
  if (input.size() <= head || dice.OneIn(6)) {
    MutateAny(input);
    return;
  }
  Bytes stream(input.begin() + static_cast<std::ptrdiff_t>(head), input.end());
  MutateStream(stream, dice);
  input.resize(head);
  Append(input, stream);
}

/// Two streams behind `head` bytes, of which the first two are the length of the first stream, big-endian.
inline void MutateTwoStreams(std::size_t head, Bytes& input, Dice& dice) {
  if (input.size() <= head || dice.OneIn(6)) {
    MutateAny(input);
    return;
  }
  const auto streams = std::span(input).subspan(head);
  const std::size_t length = std::min(U16beAt(input, 0), streams.size());
  Bytes first(streams.begin(), streams.begin() + static_cast<std::ptrdiff_t>(length));
  Bytes second(streams.begin() + static_cast<std::ptrdiff_t>(length), streams.end());
  MutateStream(dice.OneIn(2) ? first : second, dice);
  input.resize(head);
  PutNumber(input, 0, first.size(), 2);
  Append(input, first);
  Append(input, second);
}

}  // namespace quillmark
