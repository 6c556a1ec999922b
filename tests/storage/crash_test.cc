// A crash, a full disk or a killed process at any write may cost derived files, never a card that
// was there. Every operation is cut short at each of its changing calls and inside each of its
// writes; what is left is opened again and must hold every card that was not the one under change,
// and that one in its old or its new form.
#include <gmock/gmock.h>

#include <functional>

#include "base/format_text.h"
#include "platform/fault_file_system.h"
#include "tests/storage/family_check.h"

namespace carnetel {
namespace {

constexpr std::string_view kStem = "/carnets/ESSAI";
// Byte counts of torn writes: inside a count, a header, a card, a page, a whole index.
constexpr size_t kKeptBytes[] = {1, 97, 98, 300, 505, 4000, 12000};

struct Change {
  CardRecord old_form;
  CardRecord new_form;
};

// One operation and what it does to the cards that lie in the directory before.
struct CrashCase {
  std::string name;
  std::vector<CardRecord> cards;
  std::function<void(Directory&)> run;
  std::vector<Change> changes = {};
  std::vector<CardRecord> deletions = {};
  std::vector<CardRecord> additions = {};
  // For openings that repair: what is done to the files first. The disk then fails from the opening
  // on, not only behind it.
  std::function<void(MemoryFileSystem&)> damage = {};
};

void PrintTo(const CrashCase& test_case, std::ostream* out) {
  *out << test_case.name;
}

CardRecord Card(std::string_view ste1, std::string_view nom, std::string_view tel1 = {}) {
  return MakeCard({{kSte1, ste1}, {kNom, nom}, {kTel1, tel1}, {kVille, "Lille"}});
}

std::vector<CardRecord> FiveCards() {
  return {Card("ALPHA", "ZOLA"), Card("MIKE", "HUGO", "1"), Card("DELTA", "CAMUS"),
          Card("MIKADO", "", "2"), Card("TANGO", "BALZAC")};
}

std::vector<CardRecord> ManyCards(int count) {
  std::vector<CardRecord> cards;
  for (int n = 1; n <= count; ++n) {
    cards.push_back(Card(FormatPrintf("M%02d", {n}), FormatPrintf("N%02d", {n})));
  }
  return cards;
}

CardRecord With(CardRecord card, int field, std::string_view text) {
  card.SetField(field, OemText(std::string(text)));
  return card;
}

void AddCard(Directory& directory, const CardRecord& card) {
  directory.context().current = card;
  uint32_t position = 0;
  CardDispatch(directory).Add(false, &position);
}

uint32_t OffsetOf(Directory& directory, const CardRecord& card) {
  CardRecord there;
  for (uint32_t offset = 768; directory.main().ReadCard(offset, there); offset += 768) {
    if (Timeless(there) == card) return offset;
  }
  return 0;
}

void RemoveCard(Directory& directory, const CardRecord& card) {
  uint32_t moved_from = 0;
  (void)DeleteCard(directory, OffsetOf(directory, card), &moved_from);
}

CrashCase AddCase(std::string name, std::vector<CardRecord> cards, const CardRecord& card) {
  CrashCase made{std::move(name), std::move(cards),
                 [card](Directory& directory) { AddCard(directory, card); }};
  made.additions = {card};
  return made;
}

CrashCase DeleteCase(std::string name, std::vector<CardRecord> cards, size_t number) {
  const CardRecord card = cards[number];
  CrashCase made{std::move(name), std::move(cards),
                 [card](Directory& directory) { RemoveCard(directory, card); }};
  made.deletions = {card};
  return made;
}

CrashCase ChangeCase(std::string name, std::vector<CardRecord> cards, size_t number, int field) {
  const Change change{cards[number], With(cards[number], field, "ROMEO")};
  CrashCase made{std::move(name), std::move(cards), [change](Directory& directory) {
                   (void)ChangeCard(directory, OffsetOf(directory, change.old_form),
                                    change.new_form);
                 }};
  made.changes = {change};
  return made;
}

CrashCase BatchOfAdds() {
  CrashCase made{"BatchOfAdds", FiveCards(), {}};
  made.additions = ManyCards(100);
  made.run = [cards = made.additions](Directory& directory) {
    const Directory::Batch batch(directory);
    for (const CardRecord& card : cards) AddCard(directory, card);
  };
  return made;
}

CrashCase BatchOfDeletes() {
  CrashCase made{"BatchOfDeletes", FiveCards(), {}};
  made.deletions = {made.cards[0], made.cards[4], made.cards[2]};
  made.run = [cards = made.deletions](Directory& directory) {
    const Directory::Batch batch(directory);
    for (const CardRecord& card : cards) RemoveCard(directory, card);
  };
  return made;
}

CrashCase BatchOfChanges(std::string name, int field) {
  CrashCase made{std::move(name), FiveCards(), {}};
  for (const size_t number : {4U, 0U, 2U}) {
    made.changes.push_back({made.cards[number], With(made.cards[number], field, "ROMEO")});
  }
  made.run = [changes = made.changes](Directory& directory) {
    const Directory::Batch batch(directory);
    for (const Change& change : changes) {
      (void)ChangeCard(directory, OffsetOf(directory, change.old_form), change.new_form);
    }
  };
  return made;
}

CrashCase MixedBatch() {
  CrashCase made{"MixedBatch", FiveCards(), {}};
  made.additions = {Card("NOVEMBER", "N"), Card("OSCAR", "O")};
  made.deletions = {made.cards[1]};
  made.changes = {{made.cards[0], With(made.cards[0], kSte1, "ROMEO")},
                  {made.cards[3], With(made.cards[3], kFax, "ROMEO")}};
  made.run = [made](Directory& directory) {
    const Directory::Batch batch(directory);
    AddCard(directory, made.additions[0]);
    for (const Change& change : made.changes) {
      (void)ChangeCard(directory, OffsetOf(directory, change.old_form), change.new_form);
    }
    RemoveCard(directory, made.deletions[0]);
    AddCard(directory, made.additions[1]);
  };
  return made;
}

CrashCase OpeningWithout(std::string name, std::vector<std::string> extensions, int cards = 5) {
  CrashCase made{std::move(name), cards == 5 ? FiveCards() : ManyCards(cards), [](Directory&) {}};
  made.damage = [extensions](MemoryFileSystem& files) {
    for (const std::string& extension : extensions) files.Remove(std::string(kStem) + extension);
  };
  return made;
}

CrashCase OpeningOfALongerMainFile() {
  CrashCase made{"OpeningOfALongerMainFile", FiveCards(), [](Directory&) {}};
  const CardRecord card = Card("NOVEMBER", "N");
  made.additions = {card};
  made.damage = [card](MemoryFileSystem& files) {
    const std::string path = std::string(kStem) + ".DAN";
    FileBytes file = files.Contents(path);
    file.insert(file.end(), card.bytes().begin(), card.bytes().end());
    files.SetContents(path, file);
  };
  return made;
}

std::vector<CrashCase> AllCases() {
  const std::vector<CardRecord> one = {Card("ALPHA", "ZOLA", "1")};
  return {
      AddCase("Add", FiveCards(), Card("NOVEMBER", "N")),
      AddCase("AddToAnEmptyDirectory", {}, Card("NOVEMBER", "N")),
      AddCase("AddBehindAFullPage", ManyCards(36), Card("M99", "N")),
      AddCase("AddIntoAFullPage", ManyCards(36), Card("M15B", "N50B")),
      ChangeCase("RewriteFirst", FiveCards(), 0, kTel1),
      ChangeCase("RewriteMiddle", FiveCards(), 2, kFax),
      ChangeCase("RewriteLast", FiveCards(), 4, kModem),
      ChangeCase("RewriteOnly", one, 0, kMtel),
      ChangeCase("NewKeyFirst", FiveCards(), 0, kSte1),
      ChangeCase("NewKeyMiddle", FiveCards(), 2, kSte1),
      ChangeCase("NewKeyLast", FiveCards(), 4, kNom),
      ChangeCase("NewKeyOnly", one, 0, kSte1),
      ChangeCase("NewKeyBeyondAPage", ManyCards(40), 38, kSte1),
      DeleteCase("DeleteFirst", FiveCards(), 0),
      DeleteCase("DeleteMiddle", FiveCards(), 2),
      DeleteCase("DeleteLast", FiveCards(), 4),
      DeleteCase("DeleteOnly", one, 0),
      DeleteCase("DeleteFirstOfAChain", ManyCards(40), 0),
      DeleteCase("DeleteBeyondAPage", ManyCards(40), 38),
      BatchOfAdds(),
      BatchOfDeletes(),
      BatchOfChanges("BatchOfRewrites", kFax),
      BatchOfChanges("BatchOfNewKeys", kSte1),
      MixedBatch(),
      OpeningWithout("OpeningWithoutFirstIndex", {".I01"}),
      OpeningWithout("OpeningWithoutSecondIndex", {".I02"}),
      OpeningWithout("OpeningWithoutAddressFile", {".ADR"}),
      OpeningWithout("OpeningWithoutAnyDerivedFile", {".I01", ".I02", ".ADR", ".CRT"}),
      OpeningWithout("OpeningOfManyWithoutIndexes", {".I01", ".I02"}, 60),
      OpeningOfALongerMainFile(),
  };
}

class CrashTest : public ::testing::TestWithParam<CrashCase> {
 protected:
  void SetUp() override {
    Directory directory({original_, clock_, progress_}, Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kCreated);
    for (const CardRecord& card : GetParam().cards) AddCard(directory, card);
    directory.CloseDirectory();
    if (GetParam().cards.size() > 36) Reopen(original_);
    if (GetParam().damage) GetParam().damage(original_);
    MemoryFileSystem copy = original_.Snapshot();
    changes_ = Run(copy, [](FaultFileSystem&) {});
  }
  static DirectoryOptions Options() {
    DirectoryOptions options;
    options.path = kStem;
    return options;
  }
  OpenResult Reopen(MemoryFileSystem& files) {
    Directory directory({files, clock_, progress_}, Options());
    const OpenResult result = directory.OpenDirectory();
    directory.CloseDirectory();
    return result;
  }
  // Runs the operation on `files` with the fault that `arm` sets; answers its changing calls.
  int Run(MemoryFileSystem& files, const std::function<void(FaultFileSystem&)>& arm) {
    FaultFileSystem faulty(files);
    const bool from_the_start = static_cast<bool>(GetParam().damage);
    if (from_the_start) arm(faulty);
    Directory directory({faulty, clock_, progress_}, Options());
    const OpenResult opened = directory.OpenDirectory();
    const int before = from_the_start ? 0 : faulty.changes();
    if (!from_the_start) {
      EXPECT_EQ(opened, OpenResult::kOpened);
      arm(faulty);
    }
    if (directory.is_open()) {
      GetParam().run(directory);
      directory.CloseDirectory();
    }
    return faulty.changes() - before;
  }
  static bool Holds(const std::vector<CardRecord>& cards, const CardRecord& card) {
    return std::ranges::find(cards, card) != cards.end();
  }
  static std::string MissingCard(const std::vector<CardRecord>& there) {
    std::vector<CardRecord> open_ended = GetParam().deletions;
    for (const Change& change : GetParam().changes) {
      open_ended.push_back(change.old_form);
      if (!Holds(there, change.old_form) && !Holds(there, change.new_form)) {
        return "neither form of " + change.old_form.FieldText(kSte1).bytes();
      }
    }
    for (const CardRecord& card : GetParam().cards) {
      if (!Holds(open_ended, card) && !Holds(there, card)) {
        return "no longer " + card.FieldText(kSte1).bytes();
      }
    }
    return {};
  }
  // Cards that nobody ever wrote.
  static size_t Mixed(const std::vector<CardRecord>& there) {
    std::vector<CardRecord> known = GetParam().cards;
    for (const Change& change : GetParam().changes) known.push_back(change.new_form);
    known.insert(known.end(), GetParam().additions.begin(), GetParam().additions.end());
    return static_cast<size_t>(
        std::ranges::count_if(there, [&](const CardRecord& card) { return !Holds(known, card); }));
  }
  // Cuts the operation short and looks at what is left, before and after it was opened again.
  std::string FaultAfter(const std::function<void(FaultFileSystem&)>& arm, size_t mixed_allowed) {
    MemoryFileSystem files = original_.Snapshot();
    Run(files, arm);
    for (int opening = 0; opening <= 2; ++opening) {
      const FamilyBytes family = ReadFamily(files, kStem);
      const std::vector<CardRecord> there = CardsOf(family.main);
      const std::string missing = MissingCard(there);
      if (!missing.empty()) return "opening " + std::to_string(opening) + ": " + missing;
      if (Mixed(there) > mixed_allowed) return "mixed cards";
      if (opening == 2) return FamilyFault(family);
      if (Reopen(files) != OpenResult::kOpened) return "does not open";
    }
    return {};
  }

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem original_{clock_};
  SilentProgress progress_;
  int changes_ = 0;
};

TEST_P(CrashTest, WholeRun) {
  EXPECT_EQ(FaultAfter([](FaultFileSystem&) {}, 0), "");
}

TEST_P(CrashTest, StoppedAtEveryChange) {
  ASSERT_GT(changes_, 0);
  for (int change = 0; change <= changes_; ++change) {
    EXPECT_EQ(FaultAfter([change](FaultFileSystem& disk) { disk.StopAfter(change); }, 0), "")
        << "after " << change << " of " << changes_;
  }
}

// Of the card that a torn write was to replace, a mixture may stay behind.
TEST_P(CrashTest, TornInEveryWrite) {
  for (int write = 1; write <= changes_; ++write) {
    for (const size_t kept : kKeptBytes) {
      EXPECT_EQ(FaultAfter([&](FaultFileSystem& disk) { disk.TearWrite(write, kept); }, 1), "")
          << "write " << write << " torn at " << kept;
    }
  }
}

TEST_P(CrashTest, FullDisk) {
  EXPECT_EQ(FaultAfter([](FaultFileSystem& disk) { disk.FillDisk(); }, 0), "");
}

INSTANTIATE_TEST_SUITE_P(Operations, CrashTest, ::testing::ValuesIn(AllCases()),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace carnetel
