#include "tests/storage/store_fixture.h"

#include "base/format_text.h"

namespace carnetel {

CardRecord MakeCard(std::string_view ste1, std::string_view nom) {
  return MakeCard({{kSte1, ste1}, {kNom, nom}});
}

CardRecord MakeCard(std::initializer_list<std::pair<int, std::string_view>> fields) {
  CardRecord card;
  for (const auto& [field, text] : fields) card.SetField(field, OemText(std::string(text)));
  return card;
}

IndexKey KeyOf(std::string_view text) {
  IndexKey key{};
  std::ranges::copy(text.substr(0, kKeySize), key.begin());
  return key;
}

FileBytes PageBytes(char letter, const ExpectedSlots& slots) {
  FileBytes page(506);
  page[0] = static_cast<std::byte>(letter);
  size_t position = 2;
  for (const ExpectedSlot& slot : slots) {
    StorePadded(page, position, 10, slot.key);
    StoreLe32(page, position + 10, slot.card_offset);
    position += 14;
  }
  return page;
}

IndexBuilder& IndexBuilder::Page(char letter, const ExpectedSlots& slots) {
  chains_[letter].push_back(PageBytes(letter, slots));
  return *this;
}

IndexBuilder& IndexBuilder::Behind(const FileBytes& page) {
  behind_.insert(behind_.end(), page.begin(), page.end());
  return *this;
}

FileBytes IndexBuilder::Bytes() const {
  FileBytes file;
  const auto append = [&file](const FileBytes& page) {
    file.insert(file.end(), page.begin(), page.end());
  };
  for (const char letter : std::string_view("0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ")) {
    const auto chain = chains_.find(letter);
    if (chain == chains_.end()) {
      append(PageBytes(letter, {}));
    } else {
      std::ranges::for_each(chain->second, append);
    }
  }
  append(behind_);
  return file;
}

FileBytes WithoutTimes(FileBytes main_file) {
  constexpr size_t kStamp = 102;
  constexpr size_t kWriteTime = 764;
  if (main_file.size() >= kStamp + 4) StoreLe32(main_file, kStamp, 0);
  for (size_t card = 768; card + 768 <= main_file.size(); card += 768) {
    StoreLe32(main_file, card + kWriteTime, 0);
  }
  return main_file;
}

Directory& StoreFixture::Open(int key_field, AddressMode mode) {
  Close();
  DirectoryOptions options;
  options.path = kStem;
  options.key_field = key_field;
  directory_ = std::make_unique<Directory>(DirectoryServices{files, clock, progress}, options);
  open_result = directory_->OpenDirectory(mode);
  return *directory_;
}

Directory& StoreFixture::Build(uint32_t count) {
  Open();
  for (uint32_t number = 1; number <= count; ++number) {
    Add(FormatPrintf("CARTE %05u", {number}));
  }
  return *directory_;
}

void StoreFixture::Close() {
  if (directory_ != nullptr) directory_->CloseDirectory();
  directory_.reset();
}

uint32_t StoreFixture::Add(const CardRecord& card, bool marked) {
  directory_->context().current = card;
  uint32_t entry_position = 0;
  const uint32_t offset = directory_->main().end_offset();
  return CardDispatch(*directory_).Add(marked, &entry_position) < 0 ? 0 : offset;
}

bool StoreFixture::Delete(uint32_t card_offset) {
  uint32_t moved_from = 0;
  return DeleteCard(*directory_, card_offset, &moved_from);
}

CardRecord StoreFixture::CardAt(uint32_t card_offset) {
  CardRecord card;
  if (!directory_->main().ReadCard(card_offset, card)) card.Clear();
  return card;
}

}  // namespace carnetel
