#include "storage/family_check.h"

#include <map>

#include "base/format_text.h"
#include "storage/address_format.h"
#include "storage/criteria_format.h"
#include "storage/directory_file.h"
#include "storage/file_image.h"
#include "storage/index_format.h"

namespace carnetel {
namespace {

constexpr size_t kToldPerKind = 20;
constexpr size_t kCardsPerRead = 64;
constexpr std::string_view kTooLarge = "le fichier est trop grand pour un carnetel";

// What a card has to look like in the derived files.
struct CardFacts {
  std::array<IndexKey, 2> keys;
  std::array<IndexKey, 2> rebuilt_keys;
  uint8_t number_flags = 0;
};

class FamilyChecker {
 public:
  FamilyChecker(FileSystem& files, const FamilyPaths& paths, int key_field)
      : files_(files), paths_(paths), active_(key_field <= kSte1 ? 0 : 1) {}

  std::vector<Finding> Run() {
    if (CheckMain()) {
      CheckIndex(0, ".I01");
      CheckIndex(1, ".I02");
      CheckAddress();
      CheckCriteria();
    }
    for (const auto& [kind, count] : kinds_) {
      if (count <= kToldPerKind) continue;
      findings_.push_back(
          {kind.first,
           FormatPrintf("%s : %u constats de plus", {kind.second, count - kToldPerKind}),
           {}});
    }
    return std::move(findings_);
  }

 private:
  void Tell(std::string_view extension, std::string_view text,
            std::optional<uint32_t> offset = {}) {
    const std::string file(extension.substr(1));
    if (++kinds_[{file, std::string(text)}] > kToldPerKind) return;
    findings_.push_back({file, std::string(text), offset});
  }

  // False when there is nothing to compare the derived files with.
  bool CheckMain() {
    const std::unique_ptr<File> file = files_.Open(paths_.Main(), OpenMode::kRead);
    if (file == nullptr) {
      Tell(".DAN", "le fichier principal manque ou ne peut être lu");
      return false;
    }
    MainHeader header;
    (void)file->Read(0, header.bytes());
    const std::optional<std::string> version = header.Version();
    if (!version) {
      Tell(".DAN", "l'en-tête ne porte pas de version", 0);
      return false;
    }
    if (*version < kMainVersion) Tell(".DAN", "version antérieure à 05.00", 0);
    const uint64_t size = file->Size();
    if (size > DirectoryFile::kLargestFile) {
      Tell(".DAN", kTooLarge);
      return false;
    }
    if (size % kCardSize != 0) {
      Tell(".DAN", "fiche incomplète à la fin du fichier",
           static_cast<uint32_t>(size / kCardSize * kCardSize));
    }
    if (header.field_count() != kFieldCount) {
      Tell(".DAN", "nombre de champs différent de 31", MainHeader::kFieldCountOffset);
    }
    ReadCards(*file);
    if (header.card_count() != static_cast<uint16_t>(cards_.size())) {
      Tell(".DAN", "le nombre de fiches de l'en-tête ne correspond pas à la taille",
           MainHeader::kCountOffset);
    }
    return true;
  }

  void ReadCards(File& file) {
    std::vector<CardRecord> block(kCardsPerRead);
    uint64_t offset = kCardSize;
    while (const size_t count =
               file.Read(offset, std::as_writable_bytes(std::span(block))) / kCardSize) {
      for (size_t i = 0; i < count; ++i) {
        const CardRecord& card = block[i];
        cards_.push_back({{FiledKey(IndexKeyOf(card, kSte1)), FiledKey(IndexKeyOf(card, kNom))},
                          {FiledKey(RebuildKeyOf(card, kSte1)), FiledKey(RebuildKeyOf(card, kNom))},
                          NumberFlagsOf(card)});
      }
      offset += count * kCardSize;
    }
  }

  bool Load(std::string_view extension, FileImage& image) {
    const std::unique_ptr<File> file = files_.Open(paths_.Of(extension), OpenMode::kRead);
    if (file == nullptr) {
      Tell(extension, "le fichier manque ou ne peut être lu");
      return false;
    }
    if (image.Load(*file)) return true;
    Tell(extension, kTooLarge);
    return false;
  }

  [[nodiscard]] bool NamesCard(uint32_t offset) const {
    return offset >= kCardSize && offset % kCardSize == 0 && offset / kCardSize <= cards_.size();
  }

  void CheckIndex(size_t number, std::string_view extension) {
    FileImage image;
    if (!Load(extension, image)) return;
    if (image.size() % kIndexPageSize != 0) Tell(extension, "page incomplète à la fin du fichier");
    std::vector<bool> filed(cards_.size());
    IndexSlot before;
    unsigned char letter = 0;
    size_t letters = 0;
    for (size_t page = 0; page + kIndexPageSize <= image.size(); page += kIndexPageSize) {
      const unsigned char page_letter = LoadU8(image.bytes(), page);
      const auto at = static_cast<uint32_t>(page);
      if (page_letter < letter) Tell(extension, "page hors de l'ordre des lettres", at);
      if (page_letter != letter) {
        before = {};
        hole_ = false;
        ++letters;
      }
      letter = page_letter;
      CheckPage(number, extension, image, page, &filed, &before);
    }
    if (letters != kIndexLetters.size()) Tell(extension, "des lettres sont sans page");
    for (size_t i = 0; i < filed.size(); ++i) {
      if (!filed[i]) {
        Tell(extension, "fiche absente de l'index", static_cast<uint32_t>(kCardSize * (i + 1)));
      }
    }
  }

  void CheckPage(size_t number, std::string_view extension, const FileImage& image, size_t page,
                 std::vector<bool>* filed, IndexSlot* before) {
    for (size_t i = 0; i < kSlotsPerPage; ++i) {
      const size_t position = SlotPosition(page, i);
      const auto at = static_cast<uint32_t>(position);
      const IndexSlot slot = IndexSlot::Load(image.At(position, kIndexSlotSize));
      if (slot.key[0] == 0 && slot.card_offset == 0) {
        hole_ = true;
        continue;
      }
      if (hole_) Tell(extension, "case vide à l'intérieur d'une lettre", at);
      hole_ = false;
      if (static_cast<unsigned char>(slot.key[0]) != LoadU8(image.bytes(), page)) {
        Tell(extension, "clé rangée sous une autre lettre", at);
      } else if (before->key[0] != 0 &&
                 CompareKey(KeyView(before->key), KeyView(slot.key), kKeySize) > 0) {
        Tell(extension, "clés hors de l'ordre", at);
      }
      *before = slot;
      CheckSlot(number, extension, slot, at, filed);
    }
  }

  void CheckSlot(size_t number, std::string_view extension, const IndexSlot& slot, uint32_t at,
                 std::vector<bool>* filed) {
    if (!NamesCard(slot.card_offset)) {
      Tell(extension, "case sans fiche", at);
      return;
    }
    const size_t card = slot.card_offset / kCardSize - 1;
    if ((*filed)[card]) Tell(extension, "fiche présente deux fois", at);
    (*filed)[card] = true;
    const CardFacts& facts = cards_[card];
    if (!SameKey(slot.key, facts.keys[number]) && !SameKey(slot.key, facts.rebuilt_keys[number])) {
      Tell(extension, "la clé n'est pas celle de la fiche", at);
    }
    if (number == active_) active_order_.push_back(slot.card_offset);
  }

  void CheckAddress() {
    FileImage image;
    if (!Load(".ADR", image)) return;
    if (image.size() < kAddressEntriesOffset) {
      Tell(".ADR", "fichier trop court");
      return;
    }
    AddressHeader header;
    std::ranges::copy(image.At(0, AddressHeader::kSize), header.bytes().begin());
    const std::optional<std::string> version = header.Version();
    if (!version || *version < kAddressVersion) Tell(".ADR", "version antérieure à 04.10", 0);
    const size_t entries = (image.size() - kAddressEntriesOffset) / kEntrySize;
    if (header.count() != static_cast<uint16_t>(entries) ||
        (image.size() - kAddressEntriesOffset) % kEntrySize != 0) {
      Tell(".ADR", "le nombre d'entrées de l'en-tête ne correspond pas à la taille",
           AddressHeader::kCountOffset);
    }
    if (entries != cards_.size()) {
      Tell(".ADR", "le nombre d'entrées n'est pas celui des fiches", AddressHeader::kCountOffset);
    }
    const uint32_t marked = CheckEntries(image, entries);
    const size_t counter = kAddressCountersOffset + 2;
    if (LoadLe16(image.bytes(), counter) != marked) {
      Tell(".ADR", "le compteur de la sélection ne correspond pas aux marques",
           static_cast<uint32_t>(counter));
    }
  }

  // Answers how many entries are marked.
  uint32_t CheckEntries(const FileImage& image, size_t entries) {
    uint32_t marked = 0;
    for (size_t row = 0; row < entries; ++row) {
      const uint32_t at = EntryPosition(static_cast<uint32_t>(row));
      const EntrySlot entry(image.At(at, kEntrySize));
      if (entry.bit(kWholeFileBit + 1)) ++marked;
      if (row >= active_order_.size() || active_order_[row] != entry.card_offset()) {
        Tell(".ADR", "entrée décalée par rapport à l'index actif", at);
      }
      if (!NamesCard(entry.card_offset())) {
        Tell(".ADR", "entrée sans fiche", at);
        continue;
      }
      if (!entry.bit(kWholeFileBit)) Tell(".ADR", "entrée hors du fichier entier", at);
      if (entry.number_flags() != cards_[entry.card_offset() / kCardSize - 1].number_flags) {
        Tell(".ADR", "les indicateurs de numéros ne sont pas ceux de la fiche", at);
      }
    }
    return marked;
  }

  void CheckCriteria() {
    const std::unique_ptr<File> file = files_.Open(paths_.Of(".CRT"), OpenMode::kRead);
    if (file == nullptr) {
      Tell(".CRT", "le fichier manque ou ne peut être lu");
    } else if (file->Size() < kCriteriaHeaderSize) {
      Tell(".CRT", "fichier trop court");
    }
  }

  FileSystem& files_;
  const FamilyPaths& paths_;
  size_t active_;
  std::vector<CardFacts> cards_;
  std::vector<uint32_t> active_order_;
  std::map<std::pair<std::string, std::string>, size_t> kinds_;
  std::vector<Finding> findings_;
  bool hole_ = false;
};

}  // namespace

std::vector<Finding> CheckFamily(FileSystem& files, const FamilyPaths& paths, int key_field) {
  return FamilyChecker(files, paths, key_field).Run();
}

}  // namespace carnetel
