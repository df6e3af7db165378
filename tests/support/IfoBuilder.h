#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/support/FolderTest.h"

namespace quillmark::test {

/// What a program chain of an IFO file is to hold.
struct ChainSpec {
  std::uint8_t Category = 0x81;  ///< bit 7: entry; the rest: title, or type of the menu
  std::uint8_t Programs = 1;
  std::uint8_t Cells = 1;
  /// Subpicture control of stream 0 and on, four bytes each.
  std::vector<std::array<std::uint8_t, 4>> Subpictures = {};
  /// Y, Cr, Cb of entry 0 and on; the others are 0.
  std::vector<std::array<std::uint8_t, 3>> Palette = {{0xEB, 0x80, 0x80}};
};

inline void PutNumber(Bytes& bytes, std::size_t at, std::uint32_t value, std::size_t size) {
  if (bytes.size() < at + size) {
    bytes.resize(at + size);
  }
  for (std::size_t i = 0; i < size; ++i) {
    bytes[at + i] = static_cast<std::uint8_t>(value >> (8 * (size - 1 - i)));
  }
}

/// The first sector, without any table: "DVDVIDEO-VTS" or "DVDVIDEO-VMG".
inline Bytes IfoHead(const std::string& signature) {
  Bytes file = BytesOf(signature);
  file.resize(2048);
  return file;
}

/// The chain's EC bytes.
inline Bytes IfoChain(const ChainSpec& chain) {
  Bytes bytes(0xEC);
  bytes[2] = chain.Programs;
  bytes[3] = chain.Cells;
  for (std::size_t i = 0; i < chain.Subpictures.size(); ++i) {
    std::copy(chain.Subpictures[i].begin(), chain.Subpictures[i].end(), bytes.data() + 0x1C + 4 * i);
  }
  for (std::size_t i = 0; i < chain.Palette.size(); ++i) {
    std::copy(chain.Palette[i].begin(), chain.Palette[i].end(), bytes.data() + 0xA4 + 4 * i + 1);
  }
  return bytes;
}

/// A table of chains: count, last byte, entries, chains.
inline Bytes IfoTable(const std::vector<ChainSpec>& chains) {
  Bytes table(8 + 8 * chains.size());
  PutNumber(table, 0, static_cast<std::uint32_t>(chains.size()), 2);
  for (std::size_t i = 0; i < chains.size(); ++i) {
    table[8 + 8 * i] = chains[i].Category;
    PutNumber(table, 8 + 8 * i + 4, static_cast<std::uint32_t>(table.size()), 4);
    const Bytes chain = IfoChain(chains[i]);
    table.insert(table.end(), chain.begin(), chain.end());
  }
  PutNumber(table, 4, static_cast<std::uint32_t>(table.size() - 1), 4);
  return table;
}

/// The menus of one language.
struct MenuSpec {
  std::string Language;
  std::vector<ChainSpec> Chains;
};
inline Bytes IfoMenus(const std::vector<MenuSpec>& menus) {
  Bytes unit(8 + 8 * menus.size());
  PutNumber(unit, 0, static_cast<std::uint32_t>(menus.size()), 2);
  for (std::size_t i = 0; i < menus.size(); ++i) {
    std::copy(menus[i].Language.begin(), menus[i].Language.end(), unit.data() + 8 + 8 * i);
    PutNumber(unit, 8 + 8 * i + 4, static_cast<std::uint32_t>(unit.size()), 4);
    const Bytes table = IfoTable(menus[i].Chains);
    unit.insert(unit.end(), table.begin(), table.end());
  }
  PutNumber(unit, 4, static_cast<std::uint32_t>(unit.size() - 1), 4);
  return unit;
}

/// Appends a table as whole sectors; the field at `at` then leads there.
inline void AppendTable(Bytes& file, std::size_t at, const Bytes& table) {
  PutNumber(file, at, static_cast<std::uint32_t>(file.size() / 2048), 4);
  file.insert(file.end(), table.begin(), table.end());
  file.resize((file.size() + 2047) / 2048 * 2048);
}

/// A title set's file: where its tables stand is in bytes CC and D0.
inline Bytes TitleSetFile(const std::vector<ChainSpec>& titles, const std::vector<MenuSpec>& menus = {}) {
  Bytes file = IfoHead("DVDVIDEO-VTS");
  AppendTable(file, 0xCC, IfoTable(titles));
  if (!menus.empty()) {
    AppendTable(file, 0xD0, IfoMenus(menus));
  }
  return file;
}

}  // namespace quillmark::test
