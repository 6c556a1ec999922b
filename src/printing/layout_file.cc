#include "printing/layout_file.h"

#include <vector>

#include "base/format_text.h"
#include "printing/list_layout.h"

namespace carnetel {
namespace {

constexpr int kBannerText = 86;
constexpr std::string_view kVersion = "05.00";
constexpr size_t kBannerSize = 32;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kTextEnd = "\r\n\x1A";
constexpr uint32_t kMagic = 0x0106A9D6;
constexpr size_t kSpecSize = 8;
constexpr size_t kCompositionSize = kSpecSize * kStoredColumns;
constexpr size_t kFactoryOffset = 128;
constexpr size_t kUserOffset = 248;

using LayoutImage = std::array<std::byte, LayoutFile::kSize>;

void StoreComposition(ByteSpan area, const Composition& composition) {
  for (size_t i = 0; i < kStoredColumns; ++i) {
    StoreLe32(area, kSpecSize * i, composition[i].choice);
    StoreLe32(area, kSpecSize * i + 4, composition[i].width);
  }
}

Composition ReadComposition(ByteView area) {
  Composition composition;
  for (size_t i = 0; i < kStoredColumns; ++i) {
    composition[i] = {LoadLe32(area, kSpecSize * i), LoadLe32(area, kSpecSize * i + 4)};
  }
  return composition;
}

LayoutImage NewLayout() {
  LayoutImage image{};
  StorePadded(image, 0, kBannerSize, FormatText(kBannerText, kVersion));
  StorePadded(image, 32, kLineEnd.size(), kLineEnd);
  StorePadded(image, 77, kTextEnd.size(), kTextEnd);
  StoreLe32(image, 80, kMagic);
  StoreLe32(image, 84, 131123);
  StoreLe32(image, 88, 96);
  StoreLe32(image, 92, 128);
  StoreLe16(image, 102, 6);
  StoreLe16(image, 104, 23);
  const Composition factory = FactoryComposition();
  StoreComposition(ByteSpan(image).subspan(kFactoryOffset, kCompositionSize), factory);
  StoreComposition(ByteSpan(image).subspan(kUserOffset, kCompositionSize), factory);
  return image;
}

}  // namespace

Composition FactoryComposition() {
  Composition composition{};
  composition[0] = {ChoiceOfField(kSte1), 30};
  composition[1] = {ChoiceOfField(kAdr1), 30};
  composition[2] = {ChoiceOfField(kPostalCode), 5};
  composition[3] = {ChoiceOfField(kFax), 12};
  return composition;
}

Composition LayoutFile::LoadComposition(CompositionCopy copy) {
  const size_t offset = copy == CompositionCopy::kFactory ? kFactoryOffset : kUserOffset;
  const std::unique_ptr<File> file = files_->Open(path_, OpenMode::kRead);
  std::array<std::byte, kCompositionSize> area{};
  if (file == nullptr || file->Size() != kSize || file->Read(offset, area) != area.size()) {
    CreateLayoutFile();
    return FactoryComposition();
  }
  return ReadComposition(area);
}

bool LayoutFile::SaveComposition(const Composition& composition) {
  const std::unique_ptr<File> file = files_->Open(path_, OpenMode::kReadWrite);
  std::array<std::byte, kCompositionSize> area{};
  StoreComposition(area, composition);
  return file != nullptr && file->Write(kUserOffset, area);
}

void LayoutFile::CreateLayoutFile() {
  const std::unique_ptr<File> file = files_->Open(path_, OpenMode::kCreateOrEmpty);
  if (file != nullptr) file->Write(0, NewLayout());
}

}  // namespace carnetel
