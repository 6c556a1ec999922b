// Thousands of random changes to an index, each compared byte by byte with a plain account of the
// same change that searches and shifts slot after slot (tests/storage/literal_index.h).
#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "storage/key_index.h"
#include "tests/storage/literal_index.h"

namespace carnetel {
namespace {

constexpr std::string_view kPath = "/ESSAI.I01";
constexpr uint32_t kMainSize = 768 * 5000;

bool Equal(const FileBytes& a, const FileBytes& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size()) == 0;
}

struct Filed {
  IndexKey key;
  uint32_t card_offset;
};

// Works the same change on both sides and compares all that can be seen of it.
class Pair {
 public:
  Pair(std::string_view letters, uint32_t seed) : letters_(letters), random_(seed) {
    EXPECT_TRUE(index_.CreateEmpty());
    index_.Flush();
    literal_ = LiteralIndex(Bytes());
  }

  // Goes on from these bytes, as an opening finds them.
  void StartFrom(const FileBytes& bytes) {
    files_.SetContents(std::string(kPath), bytes);
    literal_ = LiteralIndex(bytes);
    Reopen();
    CollectFiled();
  }

  void Reopen() {
    index_ = KeyIndex(files_, std::string(kPath));
    ASSERT_TRUE(index_.CheckKeyIndex(kMainSize, false));
    literal_.ClearStraySlots(kMainSize);
    ASSERT_TRUE(Equal(literal_.bytes(), Bytes())) << SameBytes(literal_.bytes(), Bytes());
  }

  // `inserts` of a hundred steps insert, the others re-point, remove, search or open again.
  void Run(int steps, int inserts) {
    for (int step = 0; step < steps && !::testing::Test::HasFailure(); ++step) {
      SCOPED_TRACE("step " + std::to_string(step));
      const int chosen = Below(100);
      if (chosen < inserts) {
        Insert();
      } else {
        Other(Below(20));
      }
    }
  }

  FileBytes Bytes() const { return files_.Contents(std::string(kPath)); }
  int Below(int limit) { return static_cast<int>(random_() % static_cast<uint32_t>(limit)); }

 private:
  IndexKey RandomKey() {
    IndexKey key{};
    key[0] = letters_[static_cast<size_t>(Below(static_cast<int>(letters_.size())))];
    // Few enough that many keys are equal; some fill their ten bytes, some hold an accent.
    const std::string_view second = "ABCDEF\x8E";
    const int length = Below(4) == 0 ? 9 : Below(3);
    for (int i = 1; i <= length; ++i) {
      key[static_cast<size_t>(i)] =
          i < 3 ? second[static_cast<size_t>(Below(static_cast<int>(second.size())))] : 'X';
    }
    return key;
  }

  uint32_t RandomOffset() { return CardOffset(static_cast<uint32_t>(1 + Below(4990))); }

  void Insert() {
    const Filed card{RandomKey(), RandomOffset()};
    filed_.push_back(card);
    Apply(card.key, card.card_offset, 0, IndexMode::kInsert);
  }

  void Other(int chosen) {
    if (chosen == 0) return Reopen();
    if (chosen == 1) return Apply(RandomKey(), RandomOffset(), 0, IndexMode::kSearch);
    if (chosen == 2) return Apply(RandomKey(), RandomOffset(), 0, IndexMode::kRepoint);
    if (chosen == 3) return Apply(RandomKey(), RandomOffset(), RandomOffset(), IndexMode::kRemove);
    if (filed_.empty()) return;
    const auto at = filed_.begin() + Below(static_cast<int>(filed_.size()));
    if (chosen < 8) {
      const uint32_t to = RandomOffset();
      Apply(at->key, to, at->card_offset, IndexMode::kRepoint);
      at->card_offset = to;
      return;
    }
    Apply(at->key, at->card_offset, 0, IndexMode::kRemove);
    filed_.erase(at);
  }

  void Apply(const IndexKey& key, uint32_t card_offset, uint32_t old_offset, IndexMode mode) {
    const IndexUpdate expected = literal_.UpdateIndex(key, card_offset, old_offset, mode);
    const IndexUpdate actual = index_.UpdateIndex(key, card_offset, old_offset, mode);
    index_.Flush();
    SCOPED_TRACE(Hex(AsBytes(KeyView(key))) + " mode " + std::to_string(static_cast<int>(mode)));
    // A re-pointed slot need not be the one that the search met.
    const bool repointed = mode == IndexMode::kRepoint && old_offset != 0 && expected.result != -1;
    if (repointed) {
      EXPECT_NE(actual.result, -1);
    } else {
      EXPECT_EQ(actual.result, expected.result);
    }
    if (mode == IndexMode::kInsert) {
      EXPECT_EQ(actual.previous, expected.previous);
    }
    const FileBytes bytes = Bytes();
    EXPECT_TRUE(Equal(literal_.bytes(), bytes)) << SameBytes(literal_.bytes(), bytes);
  }

  void CollectFiled() {
    filed_.clear();
    index_.ForEachUsed([this](const IndexSlot& slot) {
      filed_.push_back({slot.key, slot.card_offset});
    });
  }

  std::string_view letters_;
  std::mt19937 random_;
  FakeClock clock_;
  MemoryFileSystem files_{clock_};
  KeyIndex index_{files_, std::string(kPath)};
  LiteralIndex literal_{FileBytes()};
  std::vector<Filed> filed_;
};

TEST(KeyIndexDifferentialTest, GrowingChainsOfPlainLetters) {
  for (const uint32_t seed : {1U, 2U, 3U}) {
    SCOPED_TRACE(seed);
    Pair pair("0019AMM", seed);
    pair.Run(1500, 80);
    EXPECT_GT(pair.Bytes().size(), 18216U + 10 * 506U);
  }
}

TEST(KeyIndexDifferentialTest, ChainsThatGrowAndShrink) {
  for (const uint32_t seed : {11U, 12U, 13U, 14U}) {
    SCOPED_TRACE(seed);
    Pair pair("9AB", seed);
    pair.Run(400, 75);
    pair.Run(600, 25);
    pair.Run(300, 60);
  }
}

TEST(KeyIndexDifferentialTest, LettersOutsideTheirPlaces) {
  for (const uint32_t seed : {21U, 22U, 23U}) {
    SCOPED_TRACE(seed);
    Pair pair(std::string_view("09A:@ \x8E\xFF[a\0Y", 12), seed);
    pair.Run(1500, 70);
  }
}

TEST(KeyIndexDifferentialTest, TheLastChainOverflows) {
  for (const uint32_t seed : {31U, 32U, 33U, 34U}) {
    SCOPED_TRACE(seed);
    Pair pair("YZZZ", seed);
    pair.Run(400, 70);
  }
}

enum class Damage { kHole, kWrongLetter, kCopiedPage, kSwappedPages, kLowOffset, kKinds };

void Inflict(Damage damage, FileBytes& bytes, Pair& pair) {
  const int pages = static_cast<int>(bytes.size() / 506);
  const auto page = [&] { return bytes.begin() + 506 * pair.Below(pages); };
  const auto slot = [&] { return page() + 2 + 14 * pair.Below(36); };
  switch (damage) {
    case Damage::kHole:
      std::fill_n(slot(), 14, std::byte{0});
      break;
    case Damage::kWrongLetter:
      *page() = static_cast<std::byte>("0AMZ"[pair.Below(4)]);
      break;
    case Damage::kCopiedPage: {
      const auto from = page();
      const FileBytes copy(from, from + 506);
      bytes.insert(page(), copy.begin(), copy.end());
      break;
    }
    case Damage::kSwappedPages: {
      const auto one = page();
      std::swap_ranges(one, one + 506, page());
      break;
    }
    default:
      // The low half of an offset, which takes it below the first card or past the last one.
      std::fill_n(slot() + 11, 2, static_cast<std::byte>(pair.Below(2) * 0xFF));
  }
}

TEST(KeyIndexDifferentialTest, DamagedIndexes) {
  for (uint32_t seed = 101; seed < 161; ++seed) {
    SCOPED_TRACE(seed);
    Pair pair("0AAMYZ", seed);
    pair.Run(250, 85);
    FileBytes bytes = pair.Bytes();
    for (int count = 1 + pair.Below(8); count > 0; --count) {
      Inflict(static_cast<Damage>(pair.Below(static_cast<int>(Damage::kKinds))), bytes, pair);
    }
    pair.StartFrom(bytes);
    pair.Run(150, 55);
  }
}

}  // namespace
}  // namespace carnetel
