#pragma once

#include <initializer_list>
#include <vector>

#include "tests/support/PacketBuilder.h"

/// Packets for players: any number of control sequences, with changes of colours within the picture.
namespace quillmark::test {

struct TimedCommands {
  unsigned Delay = 0;
  Bytes Commands = {};  ///< without the end mark
};

/// The sequences one after another from unit byte `at` on, each pointing to the next, the last to itself.
inline Bytes Chain(unsigned at, const std::vector<TimedCommands>& sequences) {
  Bytes chain;
  for (std::size_t i = 0; i < sequences.size(); ++i) {
    const auto length = static_cast<unsigned>(sequences[i].Commands.size()) + 5;
    const bool isLast = i + 1 == sequences.size();
    const Bytes sequence =
        Sequence(sequences[i].Delay, isLast ? at : at + length, {sequences[i].Commands, EndOfSequence});
    chain.insert(chain.end(), sequence.begin(), sequence.end());
    at += length;
  }
  return chain;
}

/// Both fields of `fields` from unit byte 4 on, the sequences right behind them.
inline PacketBuilder Played(const Bytes& fields, const std::vector<TimedCommands>& sequences) {
  const auto control = static_cast<unsigned>(fields.size()) + 4;
  return PacketBuilder().ControlOffset(control).Unit(Join({fields, Chain(control, sequences)}));
}

/// A column, and four nibbles of palette entries and of contrasts, those of code 3 first.
inline Bytes ColourChange(unsigned column, unsigned colours, unsigned contrasts) {
  return Join({U16be(column), U16be(colours), U16be(contrasts)});
}

/// Lines, both ends included, and how many changes they say that they have.
inline Bytes ColourGroup(unsigned first, unsigned last, unsigned count,
                         std::initializer_list<Bytes> changes) {
  return Join({U16be(first), U16be(count << 12U | last), Join(changes)});
}

inline const Bytes NoMoreGroups = {0x0F, 0xFF, 0xFF, 0xFF};

/// Command 0x07 with arguments of these groups, their length before them.
inline Bytes ChangeColours(std::initializer_list<Bytes> groups) {
  const Bytes all = Join(groups);
  return Join({{0x07}, U16be(static_cast<unsigned>(all.size()) + 2), all});
}

}  // namespace quillmark::test
