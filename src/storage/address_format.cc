#include "storage/address_format.h"

#include "base/format_text.h"

namespace carnetel {

AddressHeader AddressHeader::Template() {
  AddressHeader header;
  StorePadded(header.bytes_, 0, 32, FormatText(87));
  StorePadded(header.bytes_, 32, 2, "\r\n");
  StorePadded(header.bytes_, kTextOffset, 42, FormatText(89, std::string(kAddressVersion)));
  StorePadded(header.bytes_, 76, 4, std::string_view("\0\r\n\x1A", 4));
  StoreLe32(header.bytes_, 80, kStoreMagic);
  StoreLe32(header.bytes_, 84, 256);
  StoreLe32(header.bytes_, 88, kAddressCountersOffset);
  StoreLe32(header.bytes_, 92, kAddressEntriesOffset);
  StoreLe16(header.bytes_, 98, kEntrySize);
  return header;
}

std::optional<std::string> AddressHeader::Version() const {
  const std::string_view text = AsChars(bytes_).substr(kTextOffset);
  const size_t found = text.find("ver");
  if (found == std::string_view::npos || found + 4 + kVersionSize > text.size()) return {};
  return std::string(text.substr(found + 4, kVersionSize));
}

void EntrySlot::set_bit(uint8_t number, bool on) {
  const size_t at = kMarksOffset + number / 8;
  const auto mask = static_cast<uint8_t>(1 << (number % 8));
  const uint8_t byte = LoadU8(bytes_, at);
  StoreU8(bytes_, at, static_cast<uint8_t>(on ? byte | mask : byte & ~mask));
}

void EntrySlot::set_number_flags(uint8_t flags) {
  const uint8_t low = LoadU8(bytes_, kFlagsOffset) & 0x0F;
  StoreU8(bytes_, kFlagsOffset, static_cast<uint8_t>((flags & 0xF0) | low));
}

void EntrySlot::TakeMarks(const EntrySlot& other) {
  std::ranges::copy(other.bytes().subspan(kMarksOffset), bytes_.begin() + kMarksOffset);
}

}  // namespace carnetel
