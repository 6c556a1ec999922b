#include "storage/main_header.h"

#include "base/code_page.h"
#include "base/format_text.h"

namespace carnetel {
namespace {

constexpr size_t kBannerSize = 32;
// A banner shorter than this plus the version gets blanks in front of the version.
constexpr size_t kShortestBanner = 10;

}  // namespace

MainHeader MainHeader::Template() {
  MainHeader header;
  const std::string version(kMainVersion);
  StorePadded(header.bytes_, 0, kBannerSize, FormatText(86, version));
  StorePadded(header.bytes_, kBannerSize, 2, "\r\n");
  StorePadded(header.bytes_, kDescriptionOffset, kDescriptionSize, FormatText(88, version));
  StorePadded(header.bytes_, 76, 4, std::string_view("\0\r\n\x1A", 4));
  StoreLe32(header.bytes_, kMagicOffset, kStoreMagic);
  StoreLe32(header.bytes_, 84, 256);
  StoreLe32(header.bytes_, kCountPositionOffset, kCountOffset);
  StoreLe32(header.bytes_, 92, kCardSize);
  StoreLe16(header.bytes_, 98, kCardSize);
  return header;
}

std::optional<std::string> MainHeader::Version() const {
  const std::string_view text = AsChars(bytes_);
  const size_t found = text.find("VER");
  if (found == std::string_view::npos || found + 4 + kVersionSize > text.size()) return {};
  return std::string(text.substr(found + 4, kVersionSize));
}

void MainHeader::SetVersionInBanner() {
  const size_t length = CopyFieldText(bytes_, kBannerSize).size();
  size_t position = length < kVersionSize ? 0 : length - kVersionSize;
  if (position < kShortestBanner) {
    StorePadded(bytes_, 0, kShortestBanner, std::string(kShortestBanner, ' '));
    position = kShortestBanner;
  }
  StorePadded(bytes_, position, kVersionSize, kMainVersion);
  StoreU8(bytes_, position + kVersionSize, 0);
}

void MainHeader::BecomeEmpty() {
  set_field_count(kFieldCount);
  set_card_count(0);
  SetVersionInBanner();
  set_description({});
}

CardRecord MainHeader::Block() const {
  CardRecord block;
  std::ranges::copy(bytes_, block.bytes().begin());
  kFieldTable.Store(block.bytes().subspan(kFieldTableOffset, kFieldTableSize));
  return block;
}

void MainHeader::set_description(const OemText& text) {
  StorePadded(bytes_, kDescriptionOffset, kDescriptionSize,
              std::string_view(text.bytes()).substr(0, kDescriptionSize - 1));
}

}  // namespace carnetel
