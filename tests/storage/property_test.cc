// Thousands of random operations against a plain list of cards in the order of the main file, which
// is all that the stores together have to keep.
#include <gmock/gmock.h>

#include <random>

#include "base/format_text.h"
#include "tests/storage/family_check.h"

namespace carnetel {
namespace {

// What a directory is expected to hold: card n of the list lies at 768 x (n + 1).
struct ModelCard {
  CardRecord card;
  bool marked = false;
};

class Player : public StoreFixture {
 protected:
  // Companies and names begin with one of `letters`; fewer letters make longer chains.
  void Start(uint32_t seed, std::string_view letters, size_t most_cards) {
    random_.seed(seed);
    letters_ = letters;
    most_cards_ = most_cards;
    Open();
  }
  int Below(size_t limit) { return static_cast<int>(random_() % limit); }
  size_t AnyCard() { return static_cast<size_t>(Below(model.size())); }

  std::string RandomKey() {
    if (Below(12) == 0) return {};
    std::string key(1, letters_[static_cast<size_t>(Below(letters_.size()))]);
    const int length = Below(14);
    for (int i = 0; i < length; ++i) key += "abcDE 0189-"[Below(11)];
    return key;
  }
  CardRecord RandomCard() {
    CardRecord card = MakeCard(RandomKey(), RandomKey());
    if (card.FieldEmpty(kSte1)) card.SetField(kNom, OemText(std::string(1, letters_[0]) + "x"));
    for (const int field : {kTel1, kTel2, kMtel, kFax, kModem}) {
      if (Below(3) == 0) card.SetField(field, OemText(FormatPrintf("%u", {Below(100000)})));
    }
    return card;
  }
  void AddCard() {
    if (model.size() >= most_cards_) return;
    const ModelCard added{RandomCard(), Below(4) == 0};
    EXPECT_EQ(Add(added.card, added.marked), CardOffset(static_cast<uint32_t>(model.size() + 1)));
    model.push_back(added);
  }
  void DeleteCard() {
    if (model.empty()) return;
    const size_t number = AnyCard();
    (void)Delete(CardOffset(static_cast<uint32_t>(number + 1)));
    model[number] = model.back();
    model.pop_back();
  }
  void RewriteCard() {
    if (model.empty()) return;
    const size_t number = AnyCard();
    CardRecord card = model[number].card;
    card.SetField(Below(2) == 0 ? kTel1 : kFax, OemText(Below(2) == 0 ? "" : "0102"));
    const uint32_t offset = CardOffset(static_cast<uint32_t>(number + 1));
    const ChangedCard changed = ChangeCard(directory(), offset, card);
    EXPECT_EQ(changed.result, ChangeResult::kRewritten);
    model[number].card = card;
  }
  // Only key fields change: the number flags of the old card come back with its marks.
  void ChangeKey() {
    if (model.empty()) return;
    const size_t number = AnyCard();
    CardRecord card = model[number].card;
    card.SetField(Below(2) == 0 ? kSte1 : kNom, OemText(RandomKey() + "n"));
    if (card.SameField(model[number].card, kSte1) && card.SameField(model[number].card, kNom))
      return;
    const uint32_t offset = CardOffset(static_cast<uint32_t>(number + 1));
    const ChangedCard changed = ChangeCard(directory(), offset, card);
    EXPECT_EQ(changed.result, ChangeResult::kMoved);
    EXPECT_EQ(changed.card_offset, CardOffset(static_cast<uint32_t>(model.size())));
    const ModelCard moved{card, model[number].marked};
    model[number] = model.back();
    model.back() = moved;
  }
  void ToggleMark() {
    if (model.empty()) return;
    const size_t number = AnyCard();
    AddressFile& address = directory().address();
    const uint32_t row = address.FindRow(CardOffset(static_cast<uint32_t>(number + 1)));
    ASSERT_LT(row, address.entry_count());
    EntrySlot entry = address.Entry(row);
    model[number].marked = !model[number].marked;
    entry.set_bit(1, model[number].marked);
    address.SetEntry(row, entry);
    directory().set_marked_count(directory().marked_count() + (model[number].marked ? 1 : -1));
    directory().Commit();
  }
  void OneChange() {
    const int chosen = Below(100);
    if (chosen < 45) return AddCard();
    if (chosen < 65) return DeleteCard();
    if (chosen < 80) return RewriteCard();
    ChangeKey();
  }
  void BatchOfChanges() {
    const Directory::Batch batch(directory());
    for (int left = 1 + Below(12); left > 0; --left) OneChange();
  }

  // The main file, byte for byte but for its times.
  void ExpectMainFile() {
    const FileBytes file = WithoutTimes(MainFile());
    FileBytes expected = MainHeader(model.size(), file);
    for (const ModelCard& one : model) {
      expected.insert(expected.end(), one.card.bytes().begin(), one.card.bytes().end());
    }
    ASSERT_TRUE(SameBytes(expected, file));
  }
  void ExpectMarks() {
    const FileBytes address = AddressFileBytes();
    int marked = 0;
    for (size_t entry = 320; entry < address.size(); entry += 16) {
      const size_t number = LoadLe32(address, entry) / 768 - 1;
      const bool mark = (LoadU8(address, entry + 4) & 2) != 0;
      ASSERT_EQ(mark, model[number].marked) << "card " << number;
      marked += mark ? 1 : 0;
    }
    ASSERT_EQ(directory().marked_count(), marked);
  }
  // Every row starts where the entries of the letters in front of it end.
  void ExpectLetterTable() {
    const FileBytes index = IndexFile(1);
    uint32_t starts[36] = {};
    for (size_t page = 0; page < index.size(); page += 506) {
      const int letter = std::to_integer<int>(index[page]);
      const int row = letter <= '9' ? letter - '0' : letter - 'A' + 10;
      for (size_t slot = page + 2; slot < page + 506; slot += 14) {
        if (index[slot] == std::byte{0}) continue;
        for (int later = row + 1; later < 36; ++later) starts[later] += 16;
      }
    }
    for (int row = 0; row < 36; ++row) {
      ASSERT_EQ(directory().address().letters().RowStart(row), 320 + starts[row]) << row;
    }
    ASSERT_EQ(directory().address().letters().RowStart(36), 320 + 16 * model.size());
  }

  std::vector<ModelCard> model;

 private:
  // The header block of this directory with the count of the model.
  static FileBytes MainHeader(size_t count, const FileBytes& file) {
    FileBytes header(file.begin(), file.begin() + std::min<std::ptrdiff_t>(768, std::ssize(file)));
    StoreLe16(header, 96, static_cast<uint16_t>(count));
    return header;
  }

  std::mt19937 random_;
  std::string_view letters_;
  size_t most_cards_ = 0;
};

class PropertyTest : public Player {
 protected:
  void PlayShort() {
    switch (Below(20)) {
      case 0:
        return ReopenUnchanged();
      case 1:
        return BatchOfChanges();
      case 2:
      case 3:
        return ToggleMark();
      default:
        return OneChange();
    }
  }
  void ExpectInStep() {
    ExpectMainFile();
    EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
    ExpectMarks();
    ExpectLetterTable();
  }
  void ReopenUnchanged() {
    Close();
    files.ResetCounts();
    Open();
    EXPECT_EQ(files.counts().writes + files.counts().truncates, 0);
  }
  // Two openings under either key, then one that must find nothing to do.
  void ExpectHealed() {
    for (const int key_field : {kSte1, kSte1, kNom, kNom, kSte1, kSte1}) Open(key_field);
    ReopenUnchanged();
    ExpectMainFile();
    EXPECT_EQ(FamilyFault(ReadFamily(files, kStem), SlotOrder::kAny), "");
    ExpectLetterTable();
  }
};

// Chains of less than a page: everything is in step at every moment, and no opening repairs.
TEST_F(PropertyTest, ShortChains) {
  Start(1, "05AFKMNTYZ\x90-", 34);
  for (int step = 0; step < 2000 && !HasFailure(); ++step) {
    SCOPED_TRACE(step);
    PlayShort();
    ExpectInStep();
  }
  EXPECT_GT(model.size(), 10U);
}

// Chains of several pages: the main file is right at every moment, slots that a delete could not
// reach stay in the indexes, and openings heal.
TEST_F(PropertyTest, LongChains) {
  for (const uint32_t seed : {1U, 2U, 3U, 4U}) {
    SCOPED_TRACE(seed);
    Close();
    for (const std::string& name : files.List("/carnets")) files.Remove("/carnets/" + name);
    model.clear();
    Start(seed, seed % 2 == 0 ? "AM" : "09AMY", 300);
    for (int step = 1; step <= 800 && !HasFailure(); ++step) {
      SCOPED_TRACE(step);
      Below(10) == 0 ? BatchOfChanges() : OneChange();
      ExpectMainFile();
      if (step % 80 == 0) ExpectHealed();
    }
  }
}

// What an import does: one batch of a thousand cards, then another.
TEST_F(PropertyTest, BatchesOfAdds) {
  Start(7, "05AFKMNTY", 2000);
  for (int round = 0; round < 2; ++round) {
    {
      const Directory::Batch batch(directory());
      for (int left = 1000; left > 0; --left) AddCard();
    }
    ExpectMainFile();
    ExpectHealed();
  }
}

}  // namespace
}  // namespace carnetel
