#pragma once

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "tests/support/FolderTest.h"

/// Elements of EBML, built byte by byte.
namespace quillmark::test {

inline void AppendBytes(Bytes& bytes, const Bytes& more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

inline Bytes Joined(std::initializer_list<Bytes> parts) {
  Bytes all;
  for (const Bytes& part : parts) {
    AppendBytes(all, part);
  }
  return all;
}

/// `count` bytes, high byte first.
inline Bytes BigEndian(std::uint64_t value, std::size_t count) {
  Bytes bytes(count);
  for (std::size_t i = 0; i < count; ++i) {
    bytes[count - 1 - i] = static_cast<std::uint8_t>(value >> (8 * i));
  }
  return bytes;
}

inline Bytes IdBytes(std::uint32_t id) {
  return BigEndian(id, id > 0xFFFFFF ? 4 : id > 0xFFFF ? 3 : id > 0xFF ? 2 : 1);
}

/// Sizes take eight bytes, 01 and seven of the number.
inline Bytes Element(std::uint32_t id, const Bytes& data) {
  return Joined({IdBytes(id), BigEndian(0x0100000000000000U | data.size(), 8), data});
}
inline Bytes Element(std::uint32_t id, const std::string& text) {
  return Element(id, BytesOf(text));
}
inline Bytes NumberElement(std::uint32_t id, std::uint64_t value) {
  return Element(id, BigEndian(value, 8));
}
/// All bits of the size are ones.
inline Bytes UnknownSizeElement(std::uint32_t id, const Bytes& data) {
  return Joined({IdBytes(id), {0x01, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF}, data});
}

inline Bytes EbmlHead() {
  return Element(0x1A45DFA3, Element(0x4282, "matroska"));
}

/// What a track entry is to hold; more elements come behind.
inline Bytes TrackEntry(std::uint64_t number, const std::string& codec, const Bytes& more = {}) {
  return Element(
      0xAE, Joined({NumberElement(0xD7, number), NumberElement(0x83, 0x11), Element(0x86, codec), more}));
}

/// The data of a block or a simple block of one of the first 127 tracks.
inline Bytes BlockData(std::uint8_t track, std::int16_t time, const Bytes& payload, std::uint8_t flags = 0) {
  return Joined({{static_cast<std::uint8_t>(0x80U | track)},
                 BigEndian(static_cast<std::uint16_t>(time), 2),
                 {flags},
                 payload});
}
inline Bytes SimpleBlock(std::uint8_t track, std::int16_t time, const Bytes& payload,
                         std::uint8_t flags = 0) {
  return Element(0xA3, BlockData(track, time, payload, flags));
}
inline Bytes BlockGroup(std::uint8_t track, std::int16_t time, const Bytes& payload, const Bytes& more = {}) {
  return Element(0xA0, Joined({Element(0xA1, BlockData(track, time, payload)), more}));
}

inline Bytes Cluster(std::uint64_t time, const Bytes& blocks) {
  return Element(0x1F43B675, Joined({NumberElement(0xE7, time), blocks}));
}
inline Bytes TrackList(const Bytes& entries) {
  return Element(0x1654AE6B, entries);
}
inline Bytes Info(std::uint64_t scale) {
  return Element(0x1549A966, NumberElement(0x2AD7B1, scale));
}

inline Bytes MatroskaFile(const Bytes& segment) {
  return Joined({EbmlHead(), Element(0x18538067, segment)});
}

/// A unit whose header says that it has these many bytes; the rest is `fill`. One sequence at byte 4, without
/// a delay.
inline Bytes PlainUnit(std::size_t size, std::uint8_t fill = 0xFF) {
  Bytes unit = Joined({BigEndian(size, 2), {0, 4}});
  unit.resize(size, fill);
  return unit;
}

}  // namespace quillmark::test
