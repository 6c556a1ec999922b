#include "storage/group_format.h"

#include "base/code_page.h"
#include "base/format_text.h"
#include "storage/address_format.h"

namespace carnetel {
namespace {

constexpr std::string_view kBanner = "CARNETEL (C) DROV SOFTWARE 1992";

}  // namespace

std::array<std::byte, kGroupHeaderSize> NewGroupHeader(const OemText& address_path) {
  std::array<std::byte, kGroupHeaderSize> header{};
  StorePadded(header, 0, 32, kBanner);
  StorePadded(header, 32, 2, "\r\n");
  StorePadded(header, 34, 43, FormatText(89, std::string(kAddressVersion)));
  StorePadded(header, 77, 3, "\r\n\x1A");
  StoreLe32(header, 80, kStoreMagic);
  StoreLe32(header, 84, kGroupHeaderSize + kGroupRowSize);
  StoreLe32(header, 92, kGroupHeaderSize);
  StoreLe16(header, kGroupCountOffset, 1);
  StoreLe16(header, kGroupRowSizeOffset, kGroupRowSize);
  StorePadded(header, kGroupPathOffset, kGroupPathSize, address_path.bytes());
  return header;
}

GroupRecord WholeFileRow(const OemText& address_file_name) {
  GroupRecord row;
  row.set_name(OemFromUtf8Lossy(LoadText(164)));
  row.set_file_name(address_file_name);
  row.set_set_name(AnsiFromUtf8Lossy(LoadText(165)));
  return row;
}

}  // namespace carnetel
