// Little-endian loads and stores over byte spans: every integer on disk goes through here, in
// pairs, so that no record is ever cast from a buffer. Offsets are in bytes from the span's start;
// reading or writing past its end is a programming error.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace carnetel {

using ByteView = std::span<const std::byte>;
using ByteSpan = std::span<std::byte>;

inline uint8_t LoadU8(ByteView bytes, size_t offset) {
  return std::to_integer<uint8_t>(bytes[offset]);
}
inline void StoreU8(ByteSpan bytes, size_t offset, uint8_t value) {
  bytes[offset] = std::byte{value};
}

inline uint16_t LoadLe16(ByteView bytes, size_t offset) {
  return static_cast<uint16_t>(LoadU8(bytes, offset) | (LoadU8(bytes, offset + 1) << 8));
}
inline void StoreLe16(ByteSpan bytes, size_t offset, uint16_t value) {
  StoreU8(bytes, offset, static_cast<uint8_t>(value & 0xFF));
  StoreU8(bytes, offset + 1, static_cast<uint8_t>(value >> 8));
}

inline uint32_t LoadLe32(ByteView bytes, size_t offset) {
  return LoadLe16(bytes, offset) | (static_cast<uint32_t>(LoadLe16(bytes, offset + 2)) << 16);
}
inline void StoreLe32(ByteSpan bytes, size_t offset, uint32_t value) {
  StoreLe16(bytes, offset, static_cast<uint16_t>(value & 0xFFFF));
  StoreLe16(bytes, offset + 2, static_cast<uint16_t>(value >> 16));
}

inline ByteView AsBytes(std::string_view text) {
  return std::as_bytes(std::span(text.data(), text.size()));
}
// The bytes of a span as characters of whatever code page they are in.
inline std::string_view AsChars(ByteView bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

// Stores `text` at `offset` in an area of `size` bytes: cut at `size`, zero filled behind.
inline void StorePadded(ByteSpan bytes, size_t offset, size_t size, std::string_view text) {
  const ByteSpan area = bytes.subspan(offset, size);
  const ByteView source = AsBytes(text.substr(0, size));
  std::fill(std::copy(source.begin(), source.end(), area.begin()), area.end(), std::byte{0});
}

}  // namespace carnetel
